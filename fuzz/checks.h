// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What must hold whatever bytes come. The fuzz targets try them on bytes of their own making, the
// tests on the kept corpus.
#pragma once

#include <QByteArray>
#include <QString>

// Each gives the empty text, or what does not hold.

// The bytes of a grid file: what the reader takes comes back the same after writing and reading.
QString checkGridFile(const QByteArray& bytes);

// Eight bytes that mark the lines, and a text or RTF file: it is listed and laid out on a chart as
// marked, or refused with error 9.
QString checkChartImport(const QByteArray& bytes);

// The bytes of a grid file: each sheet is exported as one table of HTML, whose reader finds every
// cell's text in its place.
QString checkHtmlExport(const QByteArray& bytes);

// A text, in UTF-16 behind a byte 0xFF and in UTF-8 otherwise: it is a date that is written and
// read again, or no date anywhere.
QString checkDates(const QByteArray& bytes);

// A statement, which is also taken as a value and, cut at line ends, as three texts to order: it
// is run or refused, and leaves the tables as they are.
QString checkStatements(const QByteArray& bytes);

// Bytes of files that may hold songs in XML, songs in text, tables or cards, or a song database:
// what is read is clean, and a song's words and the columns of its chords come back after writing.
QString checkSongXml(const QByteArray& bytes);
QString checkSongText(const QByteArray& bytes);
QString checkExchangeTables(const QByteArray& bytes);
QString checkSongDatabase(const QByteArray& bytes);
