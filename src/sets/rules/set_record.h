// The record of what was played on a set's date: read off a set's grid, kept in played_on.
#pragma once

#include <QString>

#include <array>

class SheetGrid;

// A set records at most so many titles.
constexpr int MostTitles = 23;

// The titles of a set, each once, and empty texts behind the last.
using Titles = std::array<QString, MostTitles>;

// True where a title of the set, rows 2 to 25, is a song's. Raises what a failing statement
// raises, as an apostrophe in a title makes it.
bool holdsKnownTitle(const SheetGrid& set);

// The titles of rows 2 to 25, doubles left out: one that is a piece of those above it is a double.
// Raises 9 at a 24th title, doubles counted.
Titles titlesToRecord(const SheetGrid& set);

// How many of the titles are recorded for the date, each row counted; below MostTitles the record
// may be written anew. An empty title counts rows without one.
int countRecorded(const Titles& titles, const QString& date);

// Replaces the whole record of the date by these titles. Raises what a failing statement raises,
// with the rows before it in force.
void recordPlayed(const Titles& titles, const QString& date);
