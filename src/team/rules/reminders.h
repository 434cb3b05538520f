// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The reminder lines that special music writes into a schedule.
#pragma once

class SheetGrid;

// Writes "Rehearse" or "Perform" and the song into the Rehearsal Notes of the date row of each week
// that an item with a reminder is due for. Raises RunTimeError::TypeMismatch if the date or the
// number of weeks of such an item is invalid.
void writeReminders(SheetGrid& schedule);
