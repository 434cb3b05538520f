// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Prepares a schedule for mail, print and export.
#pragma once

#include <QString>

class SheetGrid;

// Rows of the grid. A last row below 1 stands for the last row with data.
struct RowRange {
    int first = 1;
    int last = -1;
};

// Removes the blank rows below the title. The weeks no longer have 16 rows then.
void deleteBlankRows(SheetGrid& schedule);

// The row of the first date with just this text; 0 or less if there is none.
int rowOfDate(const SheetGrid& schedule, const QString& date);

// The rows from the head above a date row down to the last row before the head that follows
// another date row. The last row may be above the first.
RowRange weeksBetween(const SheetGrid& schedule, int from, int to);

// The text of a line of the exported table without its fixed width and with padded cells, as mail
// readers need it.
QString mailedLine(QString line);

// Removes the line ends from the Rehearsal Notes.
void joinNoteLines(SheetGrid& schedule);

// The file name that is proposed for the export: the title without ":" and blanks, "/" as "_";
// "Schedule.html" without a title.
QString proposedExportName(const SheetGrid& schedule);

// Removes all forced page breaks.
void removePageBreaks(SheetGrid& schedule);

// Sets the print settings of a schedule: of the whole, in black, or of some rows, in colour.
void setWholePrint(SheetGrid& schedule);
void setWeeksPrint(SheetGrid& schedule, const RowRange& rows);

// Sets the print settings that a schedule and the roster have in common.
void setTeamPrint(SheetGrid& grid);
