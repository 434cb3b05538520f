// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Steps that the tests of grids on the screen share.
#pragma once

#include "platform/grid_view/sheet_view.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

// Gives each cell a text that names it: "column,row".
inline void fillGrid(SheetGrid& grid, int cols, int rows) {
    grid.MaxCols(cols);
    grid.MaxRows(rows);
    for (int row = 1; row <= rows; ++row) {
        for (int col = 1; col <= cols; ++col) {
            grid.SetText(col, row, QStringLiteral("%1,%2").arg(col).arg(row));
        }
    }
}

// A cell's middle in the viewport's coordinates.
inline QPoint middleOf(SheetView& view, int col, int row) {
    return view.viewport()->mapFrom(&view, view.cellRect(col, row).center());
}

// Shows a grid at a middling size.
inline void showGrid(SheetView& view) {
    view.resize(500, 300);
    view.show();
    view.flush();
}

// The arguments of the last signal; empty where there was none.
inline QList<QVariant> lastOf(QSignalSpy& spy) {
    return spy.isEmpty() ? QList<QVariant>() : spy.takeLast();
}

// A click on a cell, or on a head where the column or the row is 0.
inline void clickCell(SheetView& view, int col, int row, Qt::MouseButton button = Qt::LeftButton) {
    if (row == 0 || col == 0) {
        QHeaderView* head = row == 0 ? view.horizontalHeader() : view.verticalHeader();
        const QPoint place = head->viewport()->mapFrom(&view, view.cellRect(col, row).center());
        QTest::mouseClick(head->viewport(), button, {}, place);
    } else {
        QTest::mouseClick(view.viewport(), button, {}, middleOf(view, col, row));
    }
}
