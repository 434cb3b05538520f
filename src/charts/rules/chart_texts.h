// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Output of one page of a chart: the name proposed for its file, its HTML and its lyrics.
#pragma once

#include <QString>
#include <QStringList>

class SheetGrid;

// The name that is proposed for a file of the page `Sheet`: its title, made a file name, and the
// extension (".htm"), or "Song" and the extension if nothing remains of the title.
QString proposedFileName(const SheetGrid& chart, const QString& extension);

// Writes the page `Sheet` with all its rows as HTML. Returns false if the file cannot be written.
[[nodiscard]] bool writePageAsHtml(const SheetGrid& chart, const QString& path);

// Erases the chords of the page `Sheet`.
void eraseChords(SheetGrid& chart);

// The texts of all lyric rows of the page `Sheet`, empty ones too.
QStringList lyricsOfPage(const SheetGrid& chart);
