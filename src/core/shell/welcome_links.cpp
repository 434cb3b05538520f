// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/welcome_links.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QResizeEvent>
#include <QToolButton>
#include <QVBoxLayout>

WelcomeLinks::WelcomeLinks(QMdiArea* area) : QFrame(area) {
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    lnkFirstSunday =
        addLink(QStringLiteral("Your first Sunday"),
                QStringLiteral("Opens the guide at the first steps"), QStringLiteral("lnkSunday"));
    lnkExchange = addLink(QStringLiteral("Coming from another program"),
                          QStringLiteral("Brings in songs, people and what was played"),
                          QStringLiteral("lnkExchange"));
    lnkRestore = addLink(QStringLiteral("Bring back a copy"),
                         QStringLiteral("Restores a backup, for example from a USB stick"),
                         QStringLiteral("lnkRestore"));
    area->installEventFilter(this);
    connect(area, &QMdiArea::subWindowActivated, this, [this](const QMdiSubWindow* window) {
        if (window) deleteLater();
    });
    centreIn(area->size());
}

QToolButton* WelcomeLinks::addLink(const QString& text, const QString& toolTip,
                                   const QString& name) {
    auto* link = new QToolButton(this);
    link->setObjectName(name);
    link->setText(text);
    link->setAccessibleName(text);
    link->setToolTip(toolTip);
    link->setAutoRaise(true);
    link->setFocusPolicy(Qt::StrongFocus);
    link->setCursor(Qt::PointingHandCursor);
    QFont font = link->font();
    font.setUnderline(true);
    link->setFont(font);
    layout()->addWidget(link);
    layout()->setAlignment(link, Qt::AlignHCenter);
    return link;
}

bool WelcomeLinks::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Resize) centreIn(static_cast<QResizeEvent*>(event)->size());
    return QFrame::eventFilter(object, event);
}

void WelcomeLinks::centreIn(const QSize& room) {
    const QSize size = sizeHint();
    setGeometry((room.width() - size.width()) / 2, (room.height() - size.height()) / 2,
                size.width(), size.height());
}
