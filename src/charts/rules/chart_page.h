// The page of a chart: a fixed form of narrow cells in which a row's role follows from its number.
// Rows 1 to 3 are the title, odd rows from 5 hold chords, even rows from 6 the lyrics under them.
#pragma once

#include <QString>

#include <functional>

class SheetGrid;

constexpr int ChartCols = 37;
constexpr int ChartRows = 42;
constexpr double ChartColWidth = 2.5;     // in the grid's character units
constexpr double ChartRowHeight = 14.88;  // points
constexpr int LastTitleRow = 3;
constexpr int FirstChordRow = 5;
constexpr int FirstLyricRow = 6;

// Gives a grid of one page the size, the font and the joined rows of a chart's first page.
void setUpChart(SheetGrid& chart);

// Formats charts that lie one under the other on one sheet as what is printed of a set. Their own
// joined cells are parted first; titles are joined on the first two pages only.
void formatStackedCharts(SheetGrid& charts);

// Adds a page at the end and puts it on view. `status` is told what is being done.
void addChartPage(SheetGrid& chart, const std::function<void(const QString&)>& status);

// Empties the page `Sheet` and takes its rows' formats off; other pages stay as they are.
void clearChartPage(SheetGrid& chart);

// Formats every page of a grid for a copy of a chart, and leaves the last one on view.
void formatChartCopy(SheetGrid& copy);

// Puts the rows of one more page under the last row, in a chart's format and behind a page break.
void addRowsOfPage(SheetGrid& chart);

// Takes the rows that were put under a page of `Sheet` off again, and their page break.
void dropAddedRows(SheetGrid& chart);
