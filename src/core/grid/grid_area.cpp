// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/grid_area.h"

#include "core/grid/sheet_grid.h"

#include <algorithm>

GridArea outputArea(const SheetGrid& grid, int sheet, GridArea asked) {
    GridArea area;
    area.col = std::max(asked.col, 1);
    area.row = std::max(asked.row, 1);
    area.col2 = asked.col2 == -1 ? grid.colsOf(sheet) : std::min(asked.col2, grid.colsOf(sheet));
    area.row2 = asked.row2 < 1 ? grid.dataRowsOf(sheet) : std::min(asked.row2, grid.rowsOf(sheet));
    return area;
}
