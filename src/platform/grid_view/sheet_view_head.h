// The head row and the head column of a grid on the screen.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QHeaderView>

// Shows the texts of row 0 or column 0 and lets the user drag column widths. Reports the mouse in
// sections from 0, places in this widget's coordinates.
class SheetHead : public QHeaderView {
    Q_OBJECT

public:
    SheetHead(Qt::Orientation orientation, const SheetGrid& grid, QWidget* parent);

    QSize sizeHint() const override;

Q_SIGNALS:
    // The left button went down and up on the same head, without a drag.
    void clicked(int section);
    // The right button; once for each press.
    void rightClicked(int section, const QPoint& place);
    // Any button went up.
    void buttonReleased(QMouseEvent* event);
    // The mouse is about to be looked at: what is pending has to be done first.
    void aboutToAct();
    void aboutToPaint();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    int sectionAt(const QPoint& place) const;
    void paintHead(QPainter& painter, int section, const QRect& rect) const;

    const SheetGrid& m_grid;
    int m_pressed = -1;
    int m_rightPressed = -1;
    bool m_rightReported = false;
    bool m_resized = false;
};
