// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Puts a song together line by line, for the readers of line-based forms.
#pragma once

#include "exchange/rules/song.h"

// Collects verses and lines in the order of the source.
class SongBuilder {
public:
    explicit SongBuilder(Song& song) : m_song(&song) {}

    // Starts a verse under a label. A label that verseName() does not know makes a verse of kind
    // Other, or of kind `otherwise`.
    void startVerse(const QString& label, VerseKind otherwise = VerseKind::Other);

    // Adds a line of the song to the verse, and starts one without label where there is none. Text
    // that stands under no letter is cut to size: trailing blanks go, and so do the blanks that
    // stand before both the text and the chords.
    void addLine(QString text, QList<SongChord> chords = {}, const QString& part = {});

    // Adds a line that is not sung. One that is nothing but chords becomes a line of chords.
    void addComment(const QString& text);

    // An empty line. Between lines it ends the verse unless the verse is held open.
    void addBlank();

    // While a verse is held open, empty lines stay inside it.
    void holdOpen(bool hold) { m_held = hold; }

    // The next line starts another verse.
    void endVerse() { m_open = false; }

    // The last chorus is sung again here. Without a chorus, a comment says so.
    void recallChorus();

    // Gives the verse another label as long as it has no lines; otherwise starts one.
    void label(const QString& label);

    // Whether a verse of a kind has been started and has no lines yet.
    bool isEmptyVerse(VerseKind kind) const;

    // Whether the verse has lines.
    bool hasLines() const;

    // Names the verses and makes the verse order from recalls. A verse without lines that repeats
    // an earlier label counts as a recall.
    void finish();

private:
    SongVerse& verse();

    Song* m_song;
    bool m_open = false;
    bool m_held = false;
    // How many verses there were, and the index of the one that is sung again.
    QList<std::pair<qsizetype, qsizetype>> m_recalls;
};

// Splits names of authors: at "|", ";" and line ends, and at commas where each piece is a full
// name. "Words: A" and "Music: B" say who did what, "Last, First" is turned round where `turn`.
void addAuthors(Song& song, const QString& text, SongAuthor::Work work = SongAuthor::Work::Any,
                bool turn = false);

// The names of all authors, joined by ", ".
QString authorNames(const Song& song);
