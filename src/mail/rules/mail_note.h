// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The note above the body of a message, in the lines of the staging file.
#pragma once

#include <QString>
#include <QStringList>

// The note as HTML: each line end becomes "<BR>".
QString noteWithBreaks(const QString& note);

// Inserts the note into each line that contains "<HTML>".
QStringList linesWithNote(const QStringList& lines, const QString& note);

// Removes each line that contains the note or the end of a table.
QStringList linesWithoutNote(const QStringList& lines);
