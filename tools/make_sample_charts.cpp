// Writes the charts on their pages.
#include "core/grid/sheet_grid.h"
#include "make_sample.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int PageCols = 37;
constexpr int PageRows = 42;
constexpr int FirstChordRow = 5;
constexpr int LastChordRow = 39;
constexpr double CellWidth = 2.5;  // in widths of "0" in Arial 10
constexpr double FirstPagePoints = 9.75;
constexpr double AddedPagePoints = 10;

// Widths of the characters from the blank to "~" in Arial bold, in thousandths of the font's size.
constexpr std::array<int, 95> BoldWidths = {
    278, 333, 474, 556, 556, 889, 722, 238, 333, 333, 389, 584, 278, 333, 278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 333, 333, 584, 584, 584, 611, 975, 722, 722, 722, 722, 667,
    611, 778, 722, 278, 556, 722, 611, 833, 722, 778, 667, 778, 722, 667, 611, 722, 667, 944, 667,
    667, 611, 333, 278, 333, 584, 556, 333, 556, 611, 556, 611, 556, 333, 611, 611, 278, 278, 556,
    278, 889, 611, 611, 611, 611, 389, 556, 333, 611, 556, 778, 556, 556, 500, 389, 280, 389, 584};
constexpr int PlainDigitWidth = 556;

// Width of a text, in cells.
double cellsOf(QStringView text, double points) {
    int width = 0;
    for (const QChar c : text) {
        const int code = c.unicode();
        width += code >= 32 && code < 127 ? BoldWidths[size_t(code - 32)] : PlainDigitWidth;
    }
    return width * points / (PlainDigitWidth * 10.0) / CellWidth;
}

struct Chord {
    QString name;
    qsizetype at;  // index of the character that it stands over
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

void spanCentred(SheetGrid& grid, int row) {
    grid.AddCellSpan(1, row, PageCols, 1);
    grid.Col(1);
    grid.Row(row);
    grid.TypeHAlign(HAlign::Centre);
}

void spanRows(SheetGrid& grid) {
    for (int row = 1; row <= 3; ++row) spanCentred(grid, row);
    for (int row = 6; row <= PageRows; row += 2) spanCentred(grid, row);
    spanCentred(grid, PageRows - 1);
}

void sizePage(SheetGrid& grid, double points, HAlign align) {
    grid.MaxCols(PageCols);
    grid.ColWidth(-1, CellWidth);
    grid.MaxRows(PageRows);
    grid.RowHeight(-1, 14.88);
    grid.Col(-1);
    grid.Row(-1);
    grid.FontName(QStringLiteral("Arial"));
    grid.FontSize(points);
    grid.FontBold(true);
    grid.TypeHAlign(align);
}

void layOutFirstPage(SheetGrid& grid) {
    sizePage(grid, FirstPagePoints, HAlign::Left);
    spanRows(grid);
    grid.ColHeadersShow(false);
    grid.RowHeadersShow(false);
    grid.AllowCellOverflow(true);
}

void addPage(SheetGrid& grid) {
    grid.SheetCount(grid.SheetCount() + 1);
    grid.ActiveSheet(grid.SheetCount());
    sizePage(grid, AddedPagePoints, HAlign::Centre);
    spanRows(grid);
    grid.BlockMode(true);
    grid.Col(1);
    grid.Col2(PageCols);
    // Row 41 too ends up left-aligned on added pages: this is meant.
    for (int row = FirstChordRow; row <= PageRows; row += 2) {
        grid.Row(row);
        grid.Row2(row);
        grid.TypeHAlign(HAlign::Left);
    }
    grid.BlockMode(false);
}

// Puts each chord into the cell whose left edge is nearest to its syllable; a chord that finds
// the place taken moves on to the right.
void writeLine(SheetGrid& grid, int chordRow, const LyricLine& line, double points) {
    const QString lyric = line.text.trimmed();
    grid.SetText(1, chordRow + 1, lyric);
    const double left = (PageCols - cellsOf(lyric, points)) / 2;
    int free = 1;
    for (const Chord& chord : line.chords) {
        const double at = left + cellsOf(QStringView(lyric).left(chord.at), points);
        const int col = std::max(free, 1 + int(std::lround(at)));
        if (col > PageCols)
            throw SampleError(QStringLiteral("the line \"%1\" is too long").arg(lyric));
        grid.SetText(col, chordRow, chord.name);
        free = col + int(std::ceil(cellsOf(chord.name, points)));
    }
}

void writeChart(const QStringList& lines, const QString& path) {
    SheetGrid grid;
    layOutFirstPage(grid);
    grid.SetText(1, 1, lines.value(0));
    grid.SetText(1, 2, lines.value(1));
    double points = FirstPagePoints;
    int row = FirstChordRow;
    for (qsizetype i = 3; i < lines.size(); ++i) {
        if (row > LastChordRow) {
            addPage(grid);
            grid.SetText(1, 1, lines[0]);
            points = AddedPagePoints;
            row = FirstChordRow;
            if (lines[i].isEmpty()) continue;
        }
        if (!lines[i].isEmpty()) writeLine(grid, row, lyricLine(lines[i]), points);
        row += 2;
    }
    grid.ActiveSheet(1);
    if (!grid.SaveToFile(path, false))
        throw SampleError(QStringLiteral("%1 cannot be written").arg(path));
}

}  // namespace

void writeCharts(Sample& sample) {
    QDir(sample.target).mkpath(QStringLiteral("sheetmusic"));
    for (Song& song : sample.songs) {
        const QString text = QStringLiteral("%1/charts/%2.txt").arg(sample.texts, song.title);
        if (!QFile::exists(text)) continue;
        song.chart = QStringLiteral("%1/sheetmusic/%2.stp").arg(sample.target, song.title);
        writeChart(sampleLines(text), song.chart);
    }
}
