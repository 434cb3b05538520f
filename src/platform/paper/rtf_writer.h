// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Rich Text Format for word processors.
#pragma once

#include <QByteArray>

class QTextDocument;

// A document as an RTF file: its paragraphs with their alignment, and their text with font, size,
// bold and italic. The file is ASCII: characters of code page 1252 are written as its bytes, all
// others as UTF-16 code units. Pictures are left out; the texts of tables become paragraphs.
QByteArray rtfOf(const QTextDocument& document);
