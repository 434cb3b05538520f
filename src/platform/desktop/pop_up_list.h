// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A list that pops up at the mouse pointer.
#pragma once

#include <QListWidget>
#include <QPointer>

// Lets the user pick a text. It closes with Escape and when it loses the keyboard focus.
class PopUpList : public QListWidget {
    Q_OBJECT

public:
    explicit PopUpList(QWidget* parent = nullptr);

    // Shows the list with its top left corner at a position of the parent, but inside the parent,
    // and gives it the keyboard focus.
    void popUp(const QPoint& place);

    // Hides the list and returns the keyboard focus to the widget that had it before.
    void dismiss();

    // The selected text; empty if there is none.
    QString Text() const;

Q_SIGNALS:
    // The list was clicked, on a text or below them, or Enter was pressed.
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void fitToItems();

    QPointer<QWidget> m_before;  // had the keyboard focus before the list
};
