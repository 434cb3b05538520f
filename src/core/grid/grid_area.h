// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A rectangle of a grid's cells.
#pragma once

class SheetGrid;

// A block from (col, row) to (col2, row2); empty if it ends before it starts.
struct GridArea {
    int col = 0;
    int row = 0;
    int col2 = -1;
    int row2 = -1;
    bool isEmpty() const { return col2 < col || row2 < row; }
    bool operator==(const GridArea&) const = default;
};

// The part of a block that is printed or exported: without heads and without what lies outside the
// sheet. An end row below 1 means the last row with data, an end column of -1 the last column.
GridArea outputArea(const SheetGrid& grid, int sheet, GridArea asked);
