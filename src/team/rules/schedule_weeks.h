// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The weeks of a schedule: a new one, typed dates, and the commands of the pop-up menu.
#pragma once

#include <QString>

class SheetGrid;

// Replaces the schedule by a new one of so many weeks from a date on, with the offers and the
// recorded songs of its weeks. `offers` is the work grid of updateAvailability. Raises
// RunTimeError::TypeMismatch if `weeks` is no number or `start` no date, RunTimeError::Overflow
// beyond the year 9999, and what updateAvailability raises; the schedule is incomplete then.
void makeSchedule(SheetGrid& schedule, SheetGrid& offers, const QString& start,
                  const QString& weeks);

// Rewrites the date of a row as "mm/dd/yy". Returns false, and leaves the text, if it is no date.
bool rewriteDate(SheetGrid& schedule, int row);

// Empties a cell that is no column head. In column 4 of a week with a "Personell" head, moves the
// cells below up.
void deleteEntry(SheetGrid& schedule, int col, int row);

// Empties a cell of column 4 in a week with a "Personell" head by moving its text and those below
// down; the text of the week's last row is lost.
void insertPlayer(SheetGrid& schedule, int row);

// Inserts a week without a date above a head row, under a "Personell" head. Returns false if the
// row is no head row.
bool insertWeek(SheetGrid& schedule, int row);
