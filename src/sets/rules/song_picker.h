// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The song picker: the searches that fill its list of songs, and what it knows of one song.
#pragma once

#include <QString>

class SheetGrid;

// The columns of the list of songs found.
namespace PickerColumn {
enum { ID = 1, Title, Artist, Key, LastPlayed, Sound };
}

// What the song picker searches for. Without a second category the first one alone counts.
struct CategorySearch {
    QString category1;
    QString category2;
    QString playlist;  // "Current" or "Past"
};

// Gives a grid the columns of the list, empty.
void setUpPickerList(SheetGrid& list);

// Lists the songs of the categories that are in the playlist, each with its greatest played date
// as text. Raises RunTimeError::FileNotFound at the first song with a sound file if the sound
// picture is missing, RunTimeError::TypeMismatch at a played date that is not a date, and what a
// failing statement raises; the rows so far stay.
void listByCategory(SheetGrid& list, const CategorySearch& search);

// Lists the songs of any playlist whose title contains the text in any case, each with its smallest
// played date as text. If none does, the list stays as it was. Raises RunTimeError::ObjectIsOpen at
// the first hit behind one without a played date; the rows so far stay.
void listByTitle(SheetGrid& list, const QString& text);

// The 30 smallest played dates of a song as text, each with a carriage return behind it and the
// greatest on top. Empty if there are not two of them.
QString playedDateHistory(const QString& songID);

// Moves a song to a playlist, "Current" or "Past".
void moveToPlaylist(const QString& songID, const QString& playlist);

// The path of a song's sound file. Raises RunTimeError::NoCurrentRecord if there is no such song.
QString soundFileOf(const QString& songID);
