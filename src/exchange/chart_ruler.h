// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The places of a lyric row's characters on a chart's page, and the columns over them.
#pragma once

#include "exchange/rules/song.h"

// Measures texts in the chart's font, Arial bold, of a size in points. Lyric rows are centred over
// the page's 37 columns.
class ChartRuler {
public:
    explicit ChartRuler(double points);

    // Whether a text is not wider than the page.
    bool fits(const QString& text) const;

    // The number of columns that a chord's name and a gap behind it take.
    int columnsOf(const QString& chord) const;

    // The column, 1 to 37, over the character of a lyric row that has `position` characters before
    // it. Positions before the start and behind the end count blanks.
    int columnOver(const QString& lyrics, int position) const;

    // The columns of a row's chords, in their order. Each is as near to columnOver as the names
    // before and behind it allow; a row that is too full lets names run into each other. Chords
    // over no text are centred on the page, a character as wide as a digit.
    QList<int> columnsOver(const SongLine& line) const;

private:
    double width(const QString& text) const;
    double offset(const QString& lyrics, int position) const;
    int columnAt(double points) const;

    double m_scale;        // of the measured pixels to points
    double m_columnWidth;  // points
};
