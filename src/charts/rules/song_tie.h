// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tie between a song and its chart: the chart's path in the song's record.
#pragma once

#include <QString>

class SheetGrid;

// The columns of fpAttach, the songs that a chart can be assigned to.
namespace AttachColumn {
enum { ID = 1, Title };
}

// Adds all songs to the list, below the rows that it already has.
void listSongsToTie(SheetGrid& fpAttach);

// The text of the panel for the file to assign, and the file of such a text.
QString songLocation(const QString& file);
QString fileOfSongLocation(const QString& text);

// The text of the panel for the song in a row of the list.
QString assignTo(const SheetGrid& fpAttach, int row);

// Stores the file's path in the record of the list's active song. Returns false if no song is
// active. Raises RunTimeError::StatementRefused if the path has an apostrophe.
[[nodiscard]] bool tieToActiveSong(const SheetGrid& fpAttach, const QString& file);
