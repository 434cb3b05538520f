// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A full chart for the benchmarks of the charts.
#pragma once

#include "charts/rules/chart_page.h"
#include "core/grid/sheet_grid.h"

#include <QStringList>

// Writes chords to every third cell and lyrics to every lyric row of the page `Sheet`.
inline void fillPage(SheetGrid& chart) {
    const QStringList chords = {"C",    "Am7", "F#m7", "Ebmaj7/Bb", "Gsus4",
                                "D/F#", "Bb",  "E7",   "Cadd9"};
    constexpr int cellsBetweenChords = 3;
    int next = 0;
    for (int row = ChartRow::FirstChord; row <= ChartRow::LastChord; row += 2) {
        for (int col = 1; col <= ChartCols; col += cellsBetweenChords)
            chart.SetText(col, row, chords[next++ % chords.size()]);
        chart.SetText(
            ChartColumn::Text, row + 1,
            QStringLiteral("Abide with me, fast falls the eventide, the darkness deepens"));
    }
    for (int row = ChartRow::Title; row <= ChartRow::LastTitle; ++row)
        chart.SetText(ChartColumn::Text, row, QStringLiteral("A title"));
}

inline void fillChart(SheetGrid& chart, int pages) {
    setUpChart(chart);
    fillPage(chart);
    for (int page = 2; page <= pages; ++page) {
        addChartPage(chart, [](const QString&) {});
        fillPage(chart);
    }
}
