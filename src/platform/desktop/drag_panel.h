// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A panel that can be dragged with the mouse.
#pragma once

#include <QFrame>

class QRubberBand;

// While the user drags the panel an outline follows the pointer. The panel itself does not move;
// whoever handles dropped() moves it.
class DragPanel : public QFrame {
    Q_OBJECT

public:
    explicit DragPanel(QWidget* parent = nullptr);

Q_SIGNALS:
    // The panel was dropped with the pointer at this position of the screen.
    void dropped(const QPoint& place);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QPoint m_pressed;
    QRubberBand* m_outline = nullptr;
};
