// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The readers of the single forms. readExchangeFile() chooses among them.
#pragma once

#include "exchange/rules/reader.h"

// Each fills in songs, people or played dates, and the reason where it had to stop.
void readOpenSong(const QString& text, ExchangeContent& content);
void readOpenLyrics(const QString& text, ExchangeContent& content);
void readChordPro(const QString& text, ExchangeContent& content);
void readSongText(const QString& text, ExchangeContent& content);
void readSongSelectUsr(const QString& text, ExchangeContent& content);
void readSongDatabase(const QByteArray& bytes, ExchangeContent& content);
void readCsv(const QString& text, ExchangeContent& content);
void readVCards(const QByteArray& bytes, ExchangeContent& content);

// What the lyrics column of a song database holds: XML with verses, or plain text.
void readDatabaseLyrics(const QString& lyrics, Song& song);

// A line of lyrics with chords in brackets, as ChordPro has it. What stands in brackets and is no
// chord becomes an annotation. \uXXXX becomes its character where `escapes`.
SongLine bracketLine(const QString& line, bool escapes);

// The form of a text by its first lines: OpenSong, OpenLyrics, or Unknown with a reason.
ExchangeForm xmlFormOf(const QString& text, QString& reason);
// SongsCsv, PlayedCsv, PeopleCsv, or Unknown.
ExchangeForm csvFormOf(const QString& text);
bool looksLikeChordPro(const QString& text);
// SongSelectText, PlainText where chord lines or labels show a song, or Unknown.
ExchangeForm textFormOf(const QString& text);

// Takes a line that tells of the song: "CCLI Song # 22025", "© 1990 ...", "Key: G | Tempo: 72",
// "For use solely with ...". False for any other line.
bool takeCreditLine(Song& song, const QString& line);

// Adds a note unless there are many.
void addNote(QStringList& notes, const QString& note);
