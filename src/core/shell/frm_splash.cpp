// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/frm_splash.h"

#include "platform/theme/theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QKeyEvent>

QString programVersion() {
    return QStringLiteral("%1.%2.%3")
        .arg(LORVANITE_VERSION_MAJOR)
        .arg(LORVANITE_VERSION_MINOR)
        .arg(LORVANITE_VERSION_REVISION);
}

// A window whose type is Qt::SplashScreen would be painted within show(), before the main window
// comes up.
frmSplash::frmSplash(QWidget* over) : QFrame(over, Qt::Dialog | Qt::FramelessWindowHint) {
    setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setBackgroundRole(QPalette::Base);
    t.setInterval(3000);
    onEvent(this, &t, &QTimer::timeout, &frmSplash::t_Timer);
    Image1->setPixmap(themedIcon(QStringLiteral("app")).pixmap(Image1->minimumSize()));
    QFont font = lblVersion->font();
    // If the font of the design is missing, the program's font in the same weight. Giving both to
    // Qt would let it look for substitutes of the first one, which takes longer.
    if (!QFontDatabase::families().contains(font.family()))
        font.setFamily(QApplication::font().family());
    font.setWeight(QFont::Black);
    lblVersion->setFont(font);
    lblVersion->setText(QStringLiteral("Version ") + programVersion());
    // The design is made for 96 dots per inch.
    const double scale = logicalDpiY() / 96.0;
    resize(size() * scale);
    for (QLabel* label : {Image1, lblName, lblVersion}) {
        const QRect place = label->geometry();
        label->setGeometry(QRect(place.topLeft() * scale, place.size() * scale));
    }
    move(over->geometry().topLeft() +
         QPoint((over->width() - width()) / 2, (over->height() - height()) / 2));
    t.start();
}

void frmSplash::t_Timer() {
    t.stop();
    Unload();
}

void frmSplash::Unload() {
    t.stop();
    hide();
    deleteLater();
}

void frmSplash::mousePressEvent(QMouseEvent*) { Unload(); }

void frmSplash::keyPressEvent(QKeyEvent*) { Unload(); }
