// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The keys that reach the button bar from inside any window.
#pragma once

#include <QObject>
#include <QPointer>
#include <QShortcut>
#include <QWidget>

#include <vector>

class QMainWindow;
class QMdiArea;
class QToolButton;

// F10 moves the keyboard focus to the bar and back. F6 goes round the bar, the window and its
// grids, Shift+F6 the other way. Alt with a letter presses a button of the bar, wherever the window
// in use has no such letter itself; on the bar the letter alone does. The letters that work are
// underlined.
class BarKeys : public QObject {
    Q_OBJECT

public:
    BarKeys(QMainWindow* window, QWidget* bar, QMdiArea* area);

    // Gives a button of the bar a letter of its caption.
    void setLetter(QToolButton* button, QChar letter);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Letter {
        QToolButton* button;
        QChar letter;
        QShortcut* key;
    };

    void focusMoved(QWidget* from, QWidget* to);
    void underline();
    void toBar();
    void toWindow();
    void goRound(bool forward);
    QWidget* form() const;

    QWidget* m_bar;
    QMdiArea* m_area;
    std::vector<Letter> m_letters;
    QPointer<QWidget> m_lastOnBar;
};
