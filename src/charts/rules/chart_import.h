// Brings the lines of a text file into a chart, as the user has marked them.
#pragma once

#include "core/grid/sheet_grid.h"

#include <functional>

// The grounds that mark a line of the list; any other ground is no mark.
constexpr int TitleMark = RGB(200, 255, 200);
constexpr int ChordMark = RGB(200, 200, 255);
constexpr int LyricMark = RGB(255, 200, 200);

constexpr int ImportRows = 500;  // lines that the list takes

// Replaces the list's text by the lines of a file, one to a row; empty lines are left out, lines
// beyond the list's last row are cut off. Grounds stay. Takes any line ends, and UTF-8, UTF-16 with
// its mark, or code page 1252. A file that cannot be read gives no lines.
void listLines(SheetGrid& list, const QString& path);

// Marks a cell of the list by the mode: "title", "chords" or "lyrics"; any other does nothing.
void markLine(SheetGrid& list, int col, int row, const QString& importMode);

// Takes the marks off the rows that hold a line.
void clearMarks(SheetGrid& list);

// Lays the marked lines out on the chart's page `Sheet` and on pages that `addPage` adds and puts
// on view. Raises 9 for a mark beyond row 100, before anything is written, and for more than 30
// chords on a line.
void layMarkedLines(SheetGrid& list, SheetGrid& chart, const std::function<void()>& addPage);
