// What every window that shows a set knows of its grid.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QString>

// The song that was clicked in the picker and not yet placed, and the row of the set that was
// clicked last; 0 for none. Both are the whole program's.
inline int selectedSongRow = 0;
inline int clickedSetRow = 0;

// The green of a title whose song has sheet music on file.
constexpr int SheetMusicGreen = RGB(180, 255, 180);

// Gives a grid the shape of an empty set: 2 columns, 25 rows, heads, label and date cell.
void setUpSet(SheetGrid& grid);

// Makes (2, 1) the date cell.
void setUpDateCell(SheetGrid& grid);

// The widths that a set has after a clear or a load.
void setUpSetWidths(SheetGrid& grid);

// The name under which a set of this date is saved: "Set For 10_05_03". Empty where the date text
// has neither 7 nor 8 characters.
QString defaultSetName(const QString& date);
