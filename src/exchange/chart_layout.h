// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A song's lyrics and chords as a chart.
#pragma once

#include "exchange/rules/song.h"

class SheetGrid;

// Whether a song has anything to lay out.
bool hasLyrics(const Song& song);

// Lays a song out on a new grid: the title and the authors in the first two rows, what else is
// known of it in the third, then a row for each verse's label and a pair of rows for each line,
// chords over lyrics. A line that is wider than the page goes on in the next row. A verse that does
// not fit on the rest of a page begins the next one; one that fits on no page is split. Further
// pages repeat the title. An annotation among the chords gets parentheses, which transposing
// leaves alone.
void layOutChart(const Song& song, SheetGrid& chart);
