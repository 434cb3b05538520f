// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The bar for finding a text in a grid.
#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;

// Covers the upper right corner of its parent. Typing, Enter, F3 and Down find the next match,
// Shift+Enter and Up the previous one; Escape closes the bar.
class FindBar : public QFrame {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent);

    // Shows the bar in the corner of an area, with its text selected.
    void openOver(const QRect& area);

    // Moves the bar to the corner of an area.
    void follow(const QRect& area);

    // Shows whether the last search has found something.
    void setFound(bool found);

Q_SIGNALS:
    // step: 0 searches from the current cell on, 1 after it, -1 before it.
    void searched(const QString& text, int step);
    void closed();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void end();

    QLineEdit* m_text;
    QLabel* m_state;
};
