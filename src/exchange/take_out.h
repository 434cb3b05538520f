// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Taking songs, people, played dates and the schedule out to files. The page Take Out and the
// command lorvanite-exchange both use it.
#pragma once

#include "exchange/song_book.h"

enum class TakeOutForm {
    ChordPro,
    OpenLyrics,
    Text,
    SongsCsv,
    PlayedCsv,
    CcliReport,
    PeopleCsv,
    Calendar,
    PersonCalendars,
    SongBook,
};

// The names of a form for the user and on the command line.
struct TakeOutFormInfo {
    TakeOutForm form;
    const char* word;  // on the command line: "chordpro"
    const char* name;  // "ChordPro"
    const char* file;  // the extension of its files: "cho"
    const char* stem;  // the name proposed for its only file; null if it writes one for each song
                       // or person
    bool ofSongs;      // whether it is of chosen songs
    bool ofPeriod;     // whether it needs a period
};

// In the order in which they are offered.
const QList<TakeOutFormInfo>& takeOutForms();
const TakeOutFormInfo& takeOutForm(TakeOutForm form);

struct TakeOutOrder {
    TakeOutForm form = TakeOutForm::ChordPro;
    // Of forms of songs; in the order of the book.
    QList<LibrarySong> songs;
    // Whether `songs` are all songs of the catalogue: played dates of deleted ones are taken too.
    bool allSongs = true;
    // Of the CCLI report, both included.
    QDate from;
    QDate to;
    QPageSize::PageSizeId paper = QPageSize::A4;
    QString bookTitle;
    // A file, or for one file a song or person, an existing folder.
    QString target;
    // Whether files in that folder may be replaced. A single file always is.
    bool replace = false;
    // Nothing is written.
    bool dryRun = false;
};

struct TakeOutResult {
    // The paths of what was written, or would be.
    QStringList files;
    // What was left out and why, a sentence each.
    QStringList notes;
    // Whether something is left out that is in the database.
    bool isPartial = false;
    // Why nothing more was written. Empty if all was.
    QString problem;
    // Files that are there already; nothing is written unless they may be replaced.
    QStringList existing;
    bool cancelled = false;
};

// The songs of a saved set, in its order or in that of the titles.
struct SetSongs {
    QList<LibrarySong> songs;
    // Titles that the catalogue does not have.
    QStringList missing;
};
SetSongs songsOfSetFile(const QString& path, bool byTitle);

// A sentence on the result for the user: "12 files were written to ...".
QString takeOutSummary(const TakeOutOrder& order, const TakeOutResult& result);

// Carries out an order. Each file is replaced whole. Raises what a failing statement raises.
TakeOutResult takeOut(const TakeOutOrder& order, const ExchangeProgress& progress);
