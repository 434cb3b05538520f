// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What is a chord, and its parts.
#pragma once

#include "exchange/rules/song.h"

#include <optional>

// A chord's name in parts: "F#m7/A" is "F#", "m7" and "A".
struct ChordParts {
    QString root;
    QString suffix;
    QString bass;
};

// The parts of a name such as "Am7", "C#sus4/G#", "(D)", "Fis" or "H7". Nothing for other texts.
std::optional<ChordParts> chordParts(const QString& name);

// Whether a text between brackets is a chord: also small letters, numbers of degrees ("4m", "b7"),
// sol-fa names and "N.C.".
bool isBracketChord(const QString& name);

// The chords of a line that holds nothing but chords, bars and repeats, in their columns. Empty
// where the line is something else.
QList<SongChord> chordsOfLine(const QString& line);

// The chords of a remark that is nothing but chords, the first at column 0. Empty for words.
QList<SongChord> chordsOfRemark(const QString& remark);

// Moves chords off each other where no text tells their places (from column `textEnd` on), so that
// each keeps room for its name and a blank.
void spreadChords(QList<SongChord>& chords, int textEnd);

// Whether a song's chords are written with H for B, or with names such as "Fis".
bool usesGermanChords(const Song& song);

// A root in English of one in German, and back: "H" and "B", "B" and "Bb", "Fis" and "F#".
QString englishRoot(const QString& german);
QString germanRoot(const QString& english);

// A suffix as the structure that OpenLyrics writes: "m7" is "min7", "7sus4" is "4-5-m7".
// Empty for a major chord.
QString chordStructure(const QString& suffix);

// The suffix of such a structure. A text that is none comes back as it stands.
QString chordSuffix(const QString& structure);
