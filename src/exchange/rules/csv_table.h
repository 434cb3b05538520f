// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tables of separated values.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct CsvRow {
    // The line of the file at which the row starts; 1 is the first.
    int line = 0;
    QStringList cells;
};

// Reads a table whose cells are separated by comma, semicolon or tab, whichever its first line
// shows; "sep=;" in the first line says so. Cells in quotes may hold line ends, separators and
// doubled quotes. A quote that nothing closes is text. Empty rows are left out.
QList<CsvRow> csvRows(const QString& text);

// A table with commas, CR LF and UTF-8 with a byte order mark, as spreadsheets take it.
QByteArray csvBytes(const QList<QStringList>& rows);
