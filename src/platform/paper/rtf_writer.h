// Rich text for other programs' word processors.
#pragma once

#include <QByteArray>

class QTextDocument;

// A document as an RTF file: its paragraphs with their alignment, and their text with font, size,
// bold and italic. Signs beyond ASCII are written by their UTF-16 units, so that every reader takes
// them. Pictures are left out; a table's texts stand as paragraphs.
QByteArray rtfOf(const QTextDocument& document);
