// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Which songs were played in a year, and in which months a song was played.
#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <functional>

class SheetGrid;

// The columns of the list of songs.
namespace HistoryColumn {
enum { SongID = 1, SongName, TimesPlayed };
}

constexpr int MonthsInYear = 12;

// The years that can be chosen, ascending.
QStringList historyYears(int thisYear);

// Lists the songs played in a year, by title, each with how often it was played, and writes the
// heads. `onProgress` is called after each song of the catalogue. Raises what a failing statement
// raises; the rows listed so far stay.
void listYear(SheetGrid& list, const QString& year,
              const std::function<void(int done, int total)>& onProgress);

// How often a song was played in each month, January first. Raises RunTimeError::TypeMismatch if a
// date cannot be parsed, and what a failing statement raises.
std::array<int, MonthsInYear> timesPlayedByMonth(const QString& songID);
