// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Date cells.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QDate>

// The first and the last date that a date cell takes.
inline const QDate FirstCellDate(1990, 1, 1);
inline const QDate LastCellDate(2100, 12, 31);

// Turns a cell into a date cell that shows "mm/dd/yy" and can be stepped from day to day. -1 as
// column or row means all. Makes the cell the grid's current one.
void setUpDateCells(SheetGrid& grid, int col, int row);
