// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The record of what was played on a set's date: read from a set's grid, kept in played_on.
#pragma once

#include <QString>

#include <array>

class SheetGrid;

// The number of titles that a set can record.
constexpr int MostTitles = 23;

// The titles of a set, each once, with empty texts behind the last.
using Titles = std::array<QString, MostTitles>;

// Whether a title in rows 2 to 25 of the set is in the catalogue. Raises
// RunTimeError::StatementRefused if a title has an apostrophe.
bool holdsKnownTitle(const SheetGrid& set);

// The titles in rows 2 to 25 of the set without duplicates. A title that is part of one above it
// is a duplicate. Raises RunTimeError::SubscriptOutOfRange at a 24th title, duplicates included.
Titles titlesToRecord(const SheetGrid& set);

// The number of rows of played_on that have this date and one of the titles.
int countRecorded(const Titles& titles, const QString& date);

// Replaces all rows of the date by these titles. Raises what a failing statement raises; what was
// written before stays.
void recordPlayed(const Titles& titles, const QString& date);
