// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The dates on which one song was played: rows of played_on in a grid, and written back from it.
#pragma once

class QString;
class SheetGrid;

// The columns of the grid of dates.
namespace PlayedDateColumn {
enum { ID = 1, Date, SongID };
}

// Gives a grid the columns of the dates and one empty row.
void setUpPlayedDates(SheetGrid& dates);

// Empties the grid down to one empty row.
void clearPlayedDates(SheetGrid& dates);

// Fills an empty grid with the dates of a song in the table's order, and offers a spare row.
void showPlayedDates(SheetGrid& dates, const QString& songID);

// Gives rows that come from an earlier time the IDs that their dates have now; a date that is no
// longer there gets none. Raises what a failing statement raises.
void matchPlayedDates(SheetGrid& dates, const QString& songID);

// Adds an empty row for a further date unless the last row is empty.
void offerSpareRow(SheetGrid& dates);

// Writes all rows back: each is deleted and inserted again under the title, an emptied one only
// deleted. Raises RunTimeError::TypeMismatch at the first date if the song has no ID yet, and what
// a failing statement raises; the rows before it are written.
void storePlayedDates(const SheetGrid& dates, const QString& title, const QString& songID);
