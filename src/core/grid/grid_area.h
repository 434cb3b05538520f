// A rectangle of a grid's cells.
#pragma once

class SheetGrid;

// A block of cells; empty where an end lies before its start.
struct GridArea {
    int col = 0;
    int row = 0;
    int col2 = -1;
    int row2 = -1;
    bool isEmpty() const { return col2 < col || row2 < row; }
    bool operator==(const GridArea&) const = default;
};

// A block as it goes out on paper or as HTML: heads stay out, a last row below 1 is the
// last with data, a last column -1 the last; what lies beyond the sheet is cut off.
GridArea outputArea(const SheetGrid& grid, int sheet, GridArea asked);
