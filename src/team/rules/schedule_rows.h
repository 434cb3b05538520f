// How a schedule lies in its grid, and what the windows of the team share.
#pragma once

#include <QString>

// A week is a head row and 15 rows of content.
constexpr int WeekRows = 16;
constexpr int ContentRows = WeekRows - 1;

// The first week's head row and date row in a finished schedule, below the title.
constexpr int FirstHeadRow = 3;
constexpr int FirstDateRow = 4;

// The columns of a schedule.
enum ScheduleColumn { DateColumn = 1, NotesColumn = 2, SongsColumn = 3, TeamColumn = 4 };

// The number that a typed text stands for. Raises 13 where it stands for none.
double toNumber(const QString& text);
