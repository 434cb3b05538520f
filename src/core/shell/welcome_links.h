// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The links on the empty ground of the main window, for a program that has no songs yet.
#pragma once

#include <QFrame>

class QMdiArea;
class QToolButton;

// Three links in the middle of an area. They go for good when the first window opens in it.
class WelcomeLinks : public QFrame {
    Q_OBJECT

public:
    explicit WelcomeLinks(QMdiArea* area);

    QToolButton* lnkFirstSunday;
    QToolButton* lnkExchange;
    QToolButton* lnkRestore;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QToolButton* addLink(const QString& text, const QString& toolTip, const QString& name);
    void centreIn(const QSize& room);
};
