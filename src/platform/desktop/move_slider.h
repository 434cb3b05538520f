// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A slider that reports a move as a whole.
#pragma once

#include <QSlider>
#include <QTimer>

#include <optional>

// A slider that reports each move of the user once: a drag when the button is released, a run of
// keys or of the wheel when it rests, and in any case before the user acts elsewhere. A click
// beside the handle goes there.
class MoveSlider : public QSlider {
    Q_OBJECT

public:
    explicit MoveSlider(QWidget* parent = nullptr);

Q_SIGNALS:
    // The user has moved the slider to another value. setValue does not emit it.
    void moved(int value);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void actionTaken(int action);
    void showPosition(int position);
    void report();

    QTimer m_rest;
    std::optional<int> m_from;  // the value before the move that is not reported yet
    bool m_held = false;        // by the mouse
    bool m_turning = false;     // by the wheel
};
