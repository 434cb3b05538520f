// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page of a chart: a fixed form of narrow cells in which a row's role follows from its number.
// Rows 1 to 3 are the title, odd rows from 5 hold chords, even rows from 6 the lyrics below them.
#pragma once

#include <QString>

#include <functional>

class SheetGrid;

constexpr int ChartCols = 37;
constexpr int ChartRows = 42;
constexpr double ChartColWidth = 2.5;     // in the grid's character units
constexpr double ChartRowHeight = 14.88;  // points
constexpr double FirstPagePoints = 9.75;  // font size
constexpr double AddedPagePoints = 10;

// The rows of a page. A lyric row is the one below its chord row.
namespace ChartRow {
enum {
    Title = 1,
    LastTitle = 3,
    Spacer = 4,
    FirstChord = 5,
    FirstLyric = 6,
    LastChord = 39,
    LastLyric = 40,
    LastOdd = 41,  // one cell, but transposed like a chord row
    Last = ChartRows,
};
}

namespace ChartColumn {
enum {
    Text = 1,  // of the rows that are one cell over the whole width: titles and lyrics
    FirstChord = 1,
    Last = ChartCols,
};
}

// Sets the size, the font and the joined rows of a chart's first page on a grid of one page.
void setUpChart(SheetGrid& chart);

// Formats charts that are stacked on one sheet, for the print of a set. Splits their own joined
// cells first; joins the titles of the first two charts only.
void formatStackedCharts(SheetGrid& charts);

// Adds a page at the end and shows it. Calls `status` with the name of each step.
void addChartPage(SheetGrid& chart, const std::function<void(const QString&)>& status);

// Empties the page `Sheet` and removes the formats of its rows; other pages stay as they are.
void clearChartPage(SheetGrid& chart);

// Formats every page of a grid for a copy of a chart, and shows the last one.
void formatChartCopy(SheetGrid& copy);

// Adds the rows of one more page below the last row, in a chart's format and after a page break.
void addRowsOfPage(SheetGrid& chart);

// Removes the rows that were added below a page of `Sheet`, and their page break.
void dropAddedRows(SheetGrid& chart);
