// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/chart_import.h"
#include "charts/rules/chart_page.h"
#include "checks.h"
#include "core/data/run_time_error.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

namespace {

constexpr qsizetype MarkBytes = 8;
constexpr int LyricsOfPage = 18;

// What each row of the list is marked as.
QString modeOf(const QByteArray& bytes, int row) {
    switch ((bytes[row % MarkBytes] >> (row / MarkBytes % 4 * 2)) & 3) {
        case 0:
            return QStringLiteral("lyrics");
        case 1:
            return QStringLiteral("chords");
        case 2:
            return QStringLiteral("title");
        default:
            return {};
    }
}

QString checkList(SheetGrid& list) {
    if (list.MaxRows() != ImportRows) return QStringLiteral("the list's size has changed");
    for (int row = 1; row <= list.DataRowCnt(); ++row) {
        const QString line = list.GetText(1, row);
        if (line.isEmpty()) return QStringLiteral("row %1 is empty").arg(row);
        if (line.contains(QLatin1Char('\n')) || line.contains(QLatin1Char('\r')))
            return QStringLiteral("row %1 is not one line").arg(row);
    }
    return {};
}

QString checkLyrics(SheetGrid& chart, const QStringList& lyrics) {
    const int pages = int(lyrics.size()) / LyricsOfPage + 1;
    // A page is added before the next line is looked at, also where it is the last.
    if (chart.SheetCount() != pages && chart.SheetCount() != pages - 1)
        return QStringLiteral("%1 pages for %2 lyric lines")
            .arg(chart.SheetCount())
            .arg(lyrics.size());
    for (int k = 0; k < int(lyrics.size()); ++k) {
        chart.Sheet(k / LyricsOfPage + 1);
        const int row = ChartRow::FirstLyric + 2 * (k % LyricsOfPage);
        if (chart.GetText(ChartColumn::Text, row) != lyrics[k])
            return QStringLiteral("lyric line %1 is not in row %2").arg(k + 1).arg(row);
    }
    return {};
}

}  // namespace

QString checkChartImport(const QByteArray& bytes) {
    if (bytes.size() < MarkBytes) return {};
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("song.txt")));
    if (!file.open(QIODevice::WriteOnly)) return QStringLiteral("no room for the file");
    file.write(bytes.constData() + MarkBytes, bytes.size() - MarkBytes);
    file.close();

    SheetGrid list;
    list.MaxCols(1);
    list.MaxRows(ImportRows);
    listLines(list, file.fileName());
    const QString wrong = checkList(list);
    if (!wrong.isEmpty()) return wrong;

    QStringList lyrics;
    int titles = 0;
    bool marksBeyond = false;
    for (int row = 1; row <= list.DataRowCnt(); ++row) {
        const QString mode = modeOf(bytes, row);
        markLine(list, 1, row, mode);
        if (mode == QLatin1String("lyrics")) lyrics += list.GetText(1, row).trimmed();
        if (mode == QLatin1String("title")) ++titles;
        if (row > 100 && !mode.isEmpty()) marksBeyond = true;
    }
    SheetGrid chart;
    setUpChart(chart);
    try {
        layMarkedLines(list, chart, [&] { addChartPage(chart, [](const QString&) {}); });
    } catch (const RunTimeError& error) {
        if (error.number() != RunTimeError::SubscriptOutOfRange)
            return QStringLiteral("error ") + QString::number(error.number());
        if (marksBeyond && (chart.DataRowCnt() > 0 || chart.SheetCount() > 1))
            return QStringLiteral("something was laid out before the refusal");
        return {};
    }
    if (marksBeyond) return QStringLiteral("a mark below row 100 was taken");
    // Titles without number run on over the rows of the chords and the lyrics.
    return titles < ChartRow::FirstLyric ? checkLyrics(chart, lyrics) : QString();
}
