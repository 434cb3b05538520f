// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/sheet_grid_dates.h"

void setUpDateCells(SheetGrid& grid, int col, int row) {
    grid.Col(col);
    grid.Row(row);
    grid.CellType(CellKind::Date);
    grid.TypeDateCentury(false);
    grid.TypeDateFormat(2);
    grid.TypeSpin(true);
}
