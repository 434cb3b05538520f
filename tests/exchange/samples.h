// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The sample files, and songs as short texts to compare.
#pragma once

#include "exchange/rules/reader.h"
#include "support/files.h"
#include "trees.h"

// All of a sample file.
inline QByteArray sampleBytes(const QString& name) {
    return bytesOf(QStringLiteral(SOURCE_TREE "/tests/exchange/samples/") + name);
}

inline ExchangeContent readSample(const QString& name) {
    return readExchangeFile(sampleBytes(name), name);
}

// A line with its chords in brackets at their places: "[G]Amazing [*softly]grace". A comment stands
// in braces.
inline QString shown(const SongLine& line) {
    if (line.kind == SongLine::Kind::Comment) return u'{' + line.text + u'}';
    QString text = line.text;
    for (qsizetype i = line.chords.size(); i-- > 0;) {
        const SongChord& chord = line.chords[i];
        if (chord.column > text.size()) text += QString(chord.column - text.size(), u' ');
        text.insert(chord.column, (chord.annotation ? QStringLiteral("[*") : QStringLiteral("[")) +
                                      chord.name + u']');
    }
    return text;
}

// "v1 Verse 1: line / line".
inline QString shown(const SongVerse& verse) {
    QStringList lines;
    for (const SongLine& line : verse.lines) lines += shown(line);
    const QString label = verse.label.isEmpty() ? QString() : u' ' + verse.label;
    const QString language =
        verse.language.isEmpty() ? QString() : QStringLiteral(" (") + verse.language + u')';
    return verse.name + label + language + QStringLiteral(": ") + lines.join(QStringLiteral(" / "));
}

inline QStringList shownVerses(const Song& song) {
    QStringList verses;
    for (const SongVerse& verse : song.verses) verses += shown(verse);
    return verses;
}
