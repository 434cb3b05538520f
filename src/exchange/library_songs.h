// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The songs, people, played dates and services of the database, as the writers of other forms take
// them.
#pragma once

#include "exchange/chart_reader.h"
#include "exchange/rules/writer.h"

// A song of the catalogue.
struct LibrarySong {
    int id = 0;
    // The path of its chart as the catalogue has it. Empty if it has none.
    QString chart;
    // What the catalogue knows of it: title, artist, key, CCLI number, categories. No verses.
    Song song;
};

// All songs in the order of their titles. Raises what a failing statement raises, as all functions
// of this file do.
QList<LibrarySong> librarySongs();

// The songs with these titles in their order, each once. Titles that the catalogue does not have
// are added to `missing`.
QList<LibrarySong> librarySongs(const QStringList& titles, QStringList& missing);

// The titles of a saved set from the row below its date on, each once. Nothing if the file is no
// set.
QStringList titlesOfSetFile(const QString& path);

// Loads the file of a song's chart. False without chart, and if the file is missing or damaged.
[[nodiscard]] bool loadChart(const LibrarySong& song, SheetGrid& chart);

// The whole song, with the verses of its chart. What the catalogue knows comes before what the
// chart says; a title of the chart that has its apostrophes comes before the catalogue's, which
// lost them. `hasChart` is whether the chart could be loaded.
Song wholeSong(const LibrarySong& song, ChartReader& reader, bool& hasChart);

QList<Contact> libraryPeople();

// The dates of these songs, by song and date. An empty list stands for all songs, deleted ones
// included. Texts that are no dates are counted in `unreadable`.
QList<PlayedDate> libraryPlayed(const QList<LibrarySong>& songs, int& unreadable);

// The finalised schedule with the recorded songs of its dates, in the order of the dates. Texts
// that are no dates are counted in `unreadable`.
QList<ServiceDate> libraryServices(int& unreadable);
