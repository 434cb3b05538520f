// A panel that is dragged by the mouse.
#pragma once

#include <QFrame>

class QRubberBand;

// While the mouse drags the panel's ground an outline goes with the pointer; the panel itself
// stays. Whoever it is dropped on moves it.
class DragPanel : public QFrame {
    Q_OBJECT

public:
    explicit DragPanel(QWidget* parent = nullptr);

Q_SIGNALS:
    // The panel was let go with the pointer at this place of the screen.
    void dropped(const QPoint& place);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QPoint m_pressed;
    QRubberBand* m_outline = nullptr;
};
