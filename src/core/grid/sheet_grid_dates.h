// Date cells, as the windows' date pickers have them.
#pragma once

#include "core/grid/sheet_grid.h"

// Makes a cell take dates alone, shown as "mm/dd/yy", with buttons that step them. -1 as column or
// row means all. Moves the grid's current cell there.
void setUpDateCells(SheetGrid& grid, int col, int row);
