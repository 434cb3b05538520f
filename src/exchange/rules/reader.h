// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Reads songs, people and played dates from a file's bytes, whatever of the known forms they have.
#pragma once

#include "exchange/rules/song.h"

enum class ExchangeForm {
    Unknown,
    OpenSong,
    OpenLyrics,
    ChordPro,
    // Lyrics, with chords in lines of their own where there are some.
    PlainText,
    SongSelectText,
    SongSelectUsr,
    // A song database in SQLite.
    SongDatabase,
    SongsCsv,
    PlayedCsv,
    PeopleCsv,
    VCard,
};

// What was found in a file. Songs beside a reason are what could be read of a damaged file.
struct ExchangeContent {
    ExchangeForm form = ExchangeForm::Unknown;
    QList<Song> songs;
    QList<Contact> people;
    QList<PlayedDate> played;
    // Why nothing, or not all, could be read: one sentence. Empty where all was read.
    QString reason;
    // Rows that could not be read, one sentence each; at most MaxExchangeNotes.
    QStringList unread;

    bool isEmpty() const { return songs.isEmpty() && people.isEmpty() && played.isEmpty(); }
};

// Larger files are refused: a song database, and any other file.
constexpr qsizetype MaxDatabaseBytes = qsizetype(512) * 1024 * 1024;
constexpr qsizetype MaxTextBytes = qsizetype(32) * 1024 * 1024;
constexpr qsizetype MaxExchangeNotes = 200;

// Reads a file's bytes. The form is known by the content; the file's name, with or without folders,
// gives a title to a text that has none, and distinguishes a text without any mark from a song by
// its ending. Never fails otherwise than by `reason`, reads nothing but `bytes`.
ExchangeContent readExchangeFile(const QByteArray& bytes, const QString& fileName);
