// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The import of a text file into a chart, line by line as the user has marked them.
#pragma once

#include "core/grid/sheet_grid.h"

#include <functional>

// The column of fpLoad, the lines of the file.
namespace ImportColumn {
enum { Line = 1 };
}

// The background colours that mark a line of the list. Any other colour is not a mark.
constexpr int TitleMark = RGB(200, 255, 200);
constexpr int ChordMark = RGB(200, 200, 255);
constexpr int LyricMark = RGB(255, 200, 200);

constexpr int ImportRows = 500;  // rows of the list

// Replaces the texts of the list by the lines of a file, one per row. Leaves out empty lines and
// the lines that do not fit into the list. Background colours stay. Accepts all line ends, and
// UTF-8, UTF-16 with a byte order mark, or code page 1252. A file that cannot be read has no lines.
void listLines(SheetGrid& list, const QString& path);

// Marks a cell of the list by the mode: "title", "chords" or "lyrics". Any other mode does nothing.
void markLine(SheetGrid& list, int col, int row, const QString& importMode);

// Removes the marks of the rows that hold a line.
void clearMarks(SheetGrid& list);

// What the user has to know before the import: a sentence for the first marked line below row 100,
// and for each line marked as chords that has more than 30. Empty if everything can be imported.
QStringList importNotes(SheetGrid& list);

// Writes the marked lines to the page `Sheet` of the chart and to the pages that `addPage` adds and
// shows. Raises RunTimeError::SubscriptOutOfRange for a mark below row 100, before anything is
// written, and for more than 30 chords in a line.
void layMarkedLines(SheetGrid& list, SheetGrid& chart, const std::function<void()>& addPage);
