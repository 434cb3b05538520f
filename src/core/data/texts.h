// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Conversions of texts, and text files read line by line.
#pragma once

#include <QString>
#include <QStringList>

// Converts a text to a whole number. Raises RunTimeError::TypeMismatch if it is not a number,
// RunTimeError::Overflow if it does not fit into 32 bits.
int toLong(const QString& text);

// Converts a text to a number. Raises RunTimeError::TypeMismatch if it is not a finite number.
double toNumber(const QString& text);

// Replaces every CR LF and every single CR by LF.
QString withUnixLineEnds(QString text);

// Splits a text at its line ends of any kind. A line end at the very end of the text does not
// start another line; an empty text has no lines.
QStringList textLines(const QString& text);

// Converts text in code page 1252, also known as Windows-1252. The five bytes that have no
// character there become the control characters of Latin-1.
QString fromCodePage1252(QByteArrayView bytes);

// Returns a character's byte in code page 1252, or 0 if it has none.
uchar toCodePage1252(QChar c);

// Reads the lines of a UTF-8 text file. Raises RunTimeError::FileNotFound if there is no such file,
// RunTimeError::PathAccess if it cannot be read.
QStringList linesOf(const QString& path);

// Reads the lines of a text file and joins them with nothing in between. Raises like linesOf.
QString joinedLinesOf(const QString& path);
