// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Showing a song that was found elsewhere.
#pragma once

#include <QString>

// Selects a song in the list of songs that is open and was used last, or, if no list has it, opens
// its chart in SheetMusic; asks before another chart there gives way. Returns false if there is
// neither.
bool showSong(int songID, const QString& chart);
