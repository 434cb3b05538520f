// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The head row and the head column of a grid on the screen.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QHeaderView>

// Shows the texts of row 0 or column 0 and lets the user drag the widths of columns. Sections count
// from 0; positions are those in this widget.
class SheetHead : public QHeaderView {
    Q_OBJECT

public:
    SheetHead(Qt::Orientation orientation, const SheetGrid& grid, QWidget* parent);

    QSize sizeHint() const override;

    // Shows the order of the rows in the head of a column, from 1; column 0 shows none.
    void setOrder(int col, SortOrder order);

    // The column whose head shows an order; 0 for none.
    int orderedCol() const { return m_orderedCol; }
    SortOrder order() const { return m_order; }

Q_SIGNALS:
    // The left button was pressed and released on the same head without dragging a border.
    void clicked(int section);
    // The right button was clicked.
    void rightClicked(int section, const QPoint& place);
    // Any button was released.
    void buttonReleased(QMouseEvent* event);
    // A mouse event or a paint event is about to be handled; pending changes have to be shown
    // first.
    void aboutToAct();
    void aboutToPaint();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QSize sectionSizeFromContents(int section) const override;

private:
    int sectionAt(const QPoint& place) const;
    void paintHead(QPainter& painter, int section, const QRect& rect) const;
    void paintOrder(QPainter& painter, const QRect& room) const;
    QFont headFont() const;
    QRect textRoom(int section, const QRect& rect) const;

    const SheetGrid& m_grid;
    int m_orderedCol = 0;
    SortOrder m_order = SortOrder::None;
    int m_pressed = -1;
    int m_rightPressed = -1;
    bool m_rightReported = false;
    bool m_resized = false;
};
