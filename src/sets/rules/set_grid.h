// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The grid that holds a set: its cells, its shape and its design.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QString>
#include <QStringList>

// The columns of a set. The date is in the column of the titles.
namespace SetColumn {
enum { Label = 1, Title };
}

// The rows of a set. Titles below LastRecorded are saved but not recorded as played.
namespace SetRow {
enum { Date = 1, FirstTitle, LastRecorded = 25 };
}

// The green of a title whose song has sheet music on file.
constexpr int SheetMusicGreen = RGB(180, 255, 180);

// Gives a grid the shape of an empty set: 2 columns, 25 rows, heads, label and date cell.
void setUpSet(SheetGrid& set);

// Whether a cell is the label of the date. A design may have another text there.
bool isDateLabel(const SheetGrid& set, int col, int row);

// Makes the cell of the date a date cell.
void setUpDateCell(SheetGrid& set);

// The width of the column of the titles.
constexpr double TitleWidth = 32.88;

// Gives a set the column widths it has after a clear or a load.
void setUpSetWidths(SheetGrid& set);

// The text of the date cell.
QString dateOfSet(const SheetGrid& set);

// The names of the special music of a date, each with a blank before it. Empty if there is none.
QString specialMusicOn(const QString& date);

// The people who serve on a date, each as "instrument : player" with a carriage return behind it.
QString personnelOn(const QString& date);

// Writes a song's title into a row, and colours it green if the song has sheet music. Raises
// RunTimeError::NoCurrentRecord if there is no song of that ID; the title is written.
void writeSong(SheetGrid& set, int row, const QString& title, int songID);

// Empties a cell and makes it white. Column heads stay.
void deleteText(SheetGrid& set, int col, int row);

// Inserts an empty row above a row. The set gets another row if its last one is in use, so that
// nothing is lost.
void addRow(SheetGrid& set, int row);

// Empties all rows below the date.
void clearDesign(SheetGrid& set);

// Empties the set and loads the default design.
void clearSetGrid(SheetGrid& set);

// Loads the default design if one is set.
void loadDefaultDesign(SheetGrid& set);

// Loads a set or a design. A file that cannot be loaded leaves the grid as it was.
void loadSetFile(SheetGrid& set, const QString& path);

// The set as lines of text, each with the label, three blanks and the title of a row.
QString setAsText(const SheetGrid& set);

// The titles on any colour but white, from the first row to the last.
QStringList highlightedTitles(const SheetGrid& set);

// The name proposed for a set of this date: "Set For 10_05_03". Empty if the date does not have 7
// or 8 characters.
QString defaultSetName(const QString& date);
