// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A chart as a song: the pages of a chart turned back into verses with chords at their syllables.
#pragma once

#include "exchange/rules/song.h"

#include <QHash>

class SheetGrid;

// Reads charts. One reader for many charts, because it keeps the widths of characters.
class ChartReader {
public:
    // The song of a chart with all its pages: the first title row as title, the two below it as
    // authors, key, copyright and the like, then the verses. A chord belongs to the character that
    // is under it in print, at a word's start where one is as near as half a cell. A lyric line
    // that begins right of its first chords begins with blanks. Texts among the chords that are no
    // chords become annotations.
    Song read(const SheetGrid& chart);

private:
    friend class ChartPageReader;
    double widthOf(const QString& fontName, double points, bool bold, uint code);

    QHash<QString, QHash<uint, double>> m_widths;
};
