// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The schedule in the database: who serves in which role on which date.
#pragma once

#include <QString>

class SheetGrid;

// Replaces in the table schedule the rows of each date of the grid by the entries of its week, and
// splits joined cells of column 2. Raises RunTimeError::InvalidCall at an entry without a colon,
// and what a failing statement raises; what was stored before it stays.
void finaliseSchedule(SheetGrid& schedule);

// The file name that is proposed for a schedule, made of the dates of its title: "06_12_05 to
// 07_03_05". Raises RunTimeError::InvalidCall if the title has no date.
QString proposedScheduleName(const SheetGrid& schedule);
