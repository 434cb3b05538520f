// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes the charts on their pages.
#include "charts/rules/chart_page.h"
#include "core/grid/sheet_grid.h"
#include "make_sample.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// The widths of the characters from the blank to "~" in Arial bold, in thousandths of the font
// size.
constexpr std::array<int, 95> BoldWidths = {
    278, 333, 474, 556, 556, 889, 722, 238, 333, 333, 389, 584, 278, 333, 278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 333, 333, 584, 584, 584, 611, 975, 722, 722, 722, 722, 667,
    611, 778, 722, 278, 556, 722, 611, 833, 722, 778, 667, 778, 722, 667, 611, 722, 667, 944, 667,
    667, 611, 333, 278, 333, 584, 556, 333, 556, 611, 556, 611, 556, 333, 611, 611, 278, 278, 556,
    278, 889, 611, 611, 611, 611, 389, 556, 333, 611, 556, 778, 556, 556, 500, 389, 280, 389, 584};
// The unit of a grid's widths is the width of "0" in Arial 10.
constexpr int PlainDigitWidth = 556;
constexpr double UnitPoints = 10;

// The width of a text, in cells.
double cellsOf(QStringView text, double points) {
    int width = 0;
    for (const QChar c : text) {
        const int code = c.unicode();
        width += code >= 32 && code < 127 ? BoldWidths[size_t(code - 32)] : PlainDigitWidth;
    }
    return width * points / (PlainDigitWidth * UnitPoints) / ChartColWidth;
}

struct Chord {
    QString name;
    qsizetype at;  // index of the character below it
};

struct LyricLine {
    QString text;
    std::vector<Chord> chords;
};

LyricLine lyricLine(const QString& source) {
    LyricLine line;
    for (qsizetype i = 0; i < source.size(); ++i) {
        const qsizetype end = source.indexOf(QLatin1Char(']'), i);
        if (source[i] == QLatin1Char('[') && end > i) {
            line.chords.push_back({source.mid(i + 1, end - i - 1), line.text.size()});
            i = end;
        } else {
            line.text += source[i];
        }
    }
    return line;
}

// Puts each chord into the cell whose left edge is nearest to its syllable, or further to the right
// if there is no room.
void writeLine(SheetGrid& grid, int chordRow, const LyricLine& line, double points) {
    const QString lyric = line.text.trimmed();
    grid.SetText(ChartColumn::Text, chordRow + 1, lyric);
    const double left = (ChartCols - cellsOf(lyric, points)) / 2;
    int free = ChartColumn::FirstChord;
    for (const Chord& chord : line.chords) {
        const double at = left + cellsOf(QStringView(lyric).left(chord.at), points);
        const int col = std::max(free, ChartColumn::FirstChord + int(std::lround(at)));
        if (col > ChartCols)
            throw SampleError(QStringLiteral("the line \"%1\" is too long").arg(lyric));
        grid.SetText(col, chordRow, chord.name);
        free = col + int(std::ceil(cellsOf(chord.name, points)));
    }
}

void writeChart(const QStringList& lines, const QString& path) {
    SheetGrid grid;
    setUpChart(grid);
    grid.SetText(ChartColumn::Text, ChartRow::Title, lines.value(0));
    grid.SetText(ChartColumn::Text, ChartRow::Title + 1, lines.value(1));
    double points = FirstPagePoints;
    int row = ChartRow::FirstChord;
    for (qsizetype i = 3; i < lines.size(); ++i) {
        if (row > ChartRow::LastChord) {
            addChartPage(grid, [](const QString&) {});
            grid.SetText(ChartColumn::Text, ChartRow::Title, lines[0]);
            points = AddedPagePoints;
            row = ChartRow::FirstChord;
            if (lines[i].isEmpty()) continue;
        }
        if (!lines[i].isEmpty()) writeLine(grid, row, lyricLine(lines[i]), points);
        row += 2;
    }
    grid.ActiveSheet(1);
    saveGrid(grid, path);
}

}  // namespace

void writeCharts(Sample& sample) {
    QDir(sample.target).mkpath(QStringLiteral("sheetmusic"));
    for (SampleSong& song : sample.songs) {
        const QString text = QStringLiteral("%1/charts/%2.txt").arg(sample.texts, song.title);
        if (!QFile::exists(text)) continue;
        song.chart = QStringLiteral("%1/sheetmusic/%2.stp").arg(sample.target, song.title);
        writeChart(sampleLines(text), song.chart);
    }
}
