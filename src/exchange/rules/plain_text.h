// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Bytes of unknown origin as text, and the cleaning of such texts.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Decodes bytes by their byte order mark, by their zero bytes, or as UTF-8. Where they are not
// UTF-8, `claimed` (the name of an encoding, or empty) is tried. Otherwise each line that is not
// UTF-8 is read as Windows-1252, so that files of mixed origin come out right. Every line end
// becomes LF.
QString decodedText(const QByteArray& bytes, const QByteArray& claimed = {});

// The text of a property for which an encoding is declared, or of lines in UTF-8 or Windows-1252.
QString decodedPiece(const QByteArray& bytes, const QByteArray& charset);

// Splits at line ends of all kinds, the vertical tab and form feed included.
QStringList linesOfText(const QString& text);

// One line without control characters, byte order marks and trailing blanks. The number of
// characters before any other character stays, except that tabs become blanks up to the next
// multiple of `tabWidth` columns.
QString cleanLine(const QString& line, int tabWidth = 8);

// One line of text: cleaned, with single blanks and none at the ends.
QString cleanField(const QString& text);

// The digits of a CCLI number such as "CCLI Song # 22025" or "22025.0". Empty where it has none.
QString ccliDigits(const QString& text);

// Splits a list that is separated by any of the given characters. Drops empty and repeated entries.
QStringList splitList(const QString& text, QStringView separators);
