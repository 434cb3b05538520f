// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/frm_splash.h"

#include "platform/theme/theme.h"

#include <QApplication>
#include <QKeyEvent>

QString programVersion() {
    return QStringLiteral("%1.%2.%3")
        .arg(LORVANITE_VERSION_MAJOR)
        .arg(LORVANITE_VERSION_MINOR)
        .arg(LORVANITE_VERSION_REVISION);
}

frmSplash::frmSplash(QWidget* over) : QFrame(over, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setBackgroundRole(QPalette::Base);
    t.setInterval(3000);
    onEvent(this, &t, &QTimer::timeout, &frmSplash::t_Timer);
    Image1->setPixmap(themedIcon(QStringLiteral("app")).pixmap(Image1->minimumSize()));
    // If the font of the design is missing, the desktop's font in the same weight.
    QFont font = lblVersion->font();
    font.setFamilies({font.family(), QApplication::font().family()});
    font.setWeight(QFont::Black);
    lblVersion->setFont(font);
    lblVersion->setText(QStringLiteral("Version ") + programVersion());
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
