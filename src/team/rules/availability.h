// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Who can serve on which date, and which songs are recorded for it.
#pragma once

class SheetGrid;

// True if a person is entered and a song recorded, as updateAvailability needs it. Raises what a
// failing statement raises, as all functions below do.
bool isAvailabilityKnown();

// Offers in column 4 of every week that the grid has room for who can serve on its date, and
// writes the recorded songs of the date into column 3. Texts in column 4 stay. `offers` is a work
// grid, whose column 1 holds the offers of the last week afterwards. Raises
// RunTimeError::NoCurrentRecord, with what the database lacks, if no person is entered or no song
// is recorded.
void updateAvailability(SheetGrid& schedule, SheetGrid& offers);

// Writes the recorded songs of so many weeks into column 3, from the date row of each week on. The
// first week's date is in `firstRow`. Raises like updateAvailability if no song is recorded.
void fillSetLists(SheetGrid& schedule, int firstRow, int weeks);

// Writes into column 3 of every row with a date the songs recorded for it, from that row on. A
// failing statement ends the songs of its date only.
void refreshSetLists(SheetGrid& schedule);
