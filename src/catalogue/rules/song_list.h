// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The list of all songs with the date on which each was last played.
#pragma once

#include <functional>

class SheetGrid;

// The columns of the list.
namespace SongListColumn {
enum { ID = 1, Title, Artist, Key, LastPlayed };
}

// Gives a grid the columns of the list.
void setUpSongList(SheetGrid& list);

// Replaces the rows of the list by all songs in title order and returns their number. After each
// song `progress` is called with the percentage done. Raises what a failing statement raises.
int loadSongs(SheetGrid& list, const std::function<void(int percent)>& progress);
