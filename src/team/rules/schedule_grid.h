// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The layout of a schedule in its grid: columns, weeks, title and heads.
#pragma once

#include <QString>

class SheetGrid;

namespace ScheduleColumn {
enum { Date = 1, Notes, Songs, Team, Last = Team };
}

// The grid for the start date and the number of weeks of a new schedule, in row 1.
namespace PickDateColumn {
enum { StartDate = 1, Weeks, Last = Weeks };
}

// The rows of a finished schedule. Row 2 is empty.
namespace ScheduleRow {
enum { Title = 1, FirstHead = 3, FirstDate };
}

// A week is a head row and 15 rows of content, the first of which is its date row.
constexpr int WeekRows = 16;
constexpr int ContentRows = WeekRows - 1;

// The rows of a week of a finished schedule; weeks count from 1.
constexpr int headRowOf(int week) { return ScheduleRow::FirstHead + (week - 1) * WeekRows; }
constexpr int dateRowOf(int week) { return headRowOf(week) + 1; }
constexpr int lastRowOf(int week) { return headRowOf(week) + ContentRows; }

// Column 4 of a head row: in the weeks of a new schedule, and in an inserted week. Deleting,
// inserting and finalising treat the two differently.
// Deliberate: behaviours 90, 99 and 100.
inline const QString TeamHead = QStringLiteral("Worship Team");
inline const QString PersonellHead = QStringLiteral("Personell");

void setUpPickDate(SheetGrid& pickDate);

// Gives a grid the shape of an empty schedule: 4 columns, 500 rows, column heads and the borders
// between the columns.
void setUpSchedule(SheetGrid& schedule);

// Sets the column widths of a new schedule, of the start-up schedule and of a mail.
void setNewScheduleWidths(SheetGrid& schedule);

// Sets the column widths of a schedule loaded with "Load Past".
void setPastScheduleWidths(SheetGrid& schedule);

// Makes a row a head row: writes the four heads, bold, with the background of a head row.
void writeHead(SheetGrid& schedule, int row, const QString& teamHead);

// Whether a row is the head row of a week.
bool isHeadRow(const SheetGrid& schedule, int row);

// Empties all cells, and removes the three rows of the title if there is one. Formats stay.
void clearSchedule(SheetGrid& schedule);
