// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What is brought in and taken out: songs, people, and the dates on which songs were played.
#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

// A chord over a line.
struct SongChord {
    // The number of the line's characters (QChar) before it. May lie beyond the end of the text.
    int column = 0;
    QString name;
    // A word to the players that stands among the chords, for example "softly".
    bool annotation = false;

    bool operator==(const SongChord&) const = default;
};

struct SongLine {
    enum class Kind { Lyrics, Comment };

    Kind kind = Kind::Lyrics;
    // One line without trailing blanks. Empty where only chords are played.
    QString text;
    // In the order of their columns.
    QList<SongChord> chords;
    // Who sings it, for example "men". Empty for all.
    QString part;

    bool operator==(const SongLine&) const = default;
};

enum class VerseKind { Verse, Chorus, PreChorus, Bridge, Intro, Ending, Solo, Middle, Other };

struct SongVerse {
    VerseKind kind = VerseKind::Verse;
    // What the verse order calls it: "v1", "c", "b2". Unique in a song, translations excepted.
    QString name;
    // What stands above it, as the source has it: "Verse 1". Empty where nothing does.
    QString label;
    // The language of a translation, for example "de". Empty for the song's own.
    QString language;
    QList<SongLine> lines;

    bool operator==(const SongVerse&) const = default;
};

struct SongAuthor {
    enum class Work { Any, Words, Music, Translation, Arrangement };

    QString name;
    Work work = Work::Any;

    bool operator==(const SongAuthor&) const = default;
};

struct Songbook {
    QString name;
    // The song's number there. May have letters, may be empty.
    QString entry;

    bool operator==(const Songbook&) const = default;
};

struct Song {
    // The first is the title, the others are further ones.
    QStringList titles;
    QList<SongAuthor> authors;
    QString key;
    // Digits only, or empty.
    QString ccli;
    QString copyright;
    QStringList themes;
    QList<Songbook> songbooks;
    // Beats a minute, or a word.
    QString tempo;
    // For example "3/4".
    QString time;
    // The fret, or empty.
    QString capo;
    // The names of the verses in the order of singing. Empty where the source has no order.
    QStringList verseOrder;
    QList<SongVerse> verses;
    QStringList comments;
    // What the source holds and this does not, one sentence each.
    QStringList unread;

    // The title, or the empty text.
    QString title() const { return titles.value(0); }

    bool operator==(const Song&) const = default;
};

// A person of the team.
struct Contact {
    QString firstName;
    QString lastName;
    QStringList roles;
    QString address;
    QString city;
    QString state;
    QString zip;
    QString phone;
    QString cell;
    QString email;

    bool operator==(const Contact&) const = default;
};

// A song was played on a date. It is known by its CCLI number, its title, or both.
struct PlayedDate {
    QString title;
    QString ccli;
    QDate date;

    bool operator==(const PlayedDate&) const = default;
};
