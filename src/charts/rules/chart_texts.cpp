// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/chart_texts.h"

#include "charts/rules/chart_page.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"

QString proposedFileName(const SheetGrid& chart, const QString& extension) {
    const QString title = safeFileName(chart.GetText(ChartColumn::Text, ChartRow::Title));
    return (title.isEmpty() ? QStringLiteral("Song") : title) + extension;
}

bool writePageAsHtml(const SheetGrid& chart, const QString& path) {
    return chart.ExportRangeToHTML(1, 1, chart.MaxCols(), chart.MaxRows(), path, false,
                                   QStringLiteral("lsl"));
}

void eraseChords(SheetGrid& chart) {
    for (int row = ChartRow::FirstChord; row <= chart.MaxRows(); row += 2)
        chart.ClearRange(1, row, chart.MaxCols(), row, true);
}

QStringList lyricsOfPage(const SheetGrid& chart) {
    QStringList lyrics;
    for (int row = ChartRow::FirstLyric; row <= chart.MaxRows(); row += 2)
        lyrics.append(chart.GetText(ChartColumn::Text, row));
    return lyrics;
}
