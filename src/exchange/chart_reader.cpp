// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/chart_reader.h"

#include "charts/rules/chart_page.h"
#include "core/grid/sheet_grid.h"
#include "exchange/rules/chord_names.h"
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"
#include "platform/grid_view/cell_look.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

// Widths are in units of a column's width, that of "0" in Arial 10.
constexpr int MeasuredPixels = 1000;  // so that rounding to whole pixels does not matter
constexpr double PixelsPerPoint = 96.0 / 72;
constexpr double PlainPoints = 10;
constexpr double NarrowestLine = 0.6;  // of a line that is too wide for its row

QString cellText(const QString& text) {
    return cleanField(QString(text).replace(u'\n', u' ').replace(u'\r', u' '));
}

struct PlacedChord {
    double x = 0;
    QString name;
};

// A lyric line and where its characters stand.
struct PlacedLine {
    QString text;
    std::vector<double> edges;  // the left edge of each character, and the right edge of the last
    double blank = 0;

    int columnAt(double x, double window, int after) const;
};

// The character whose left edge is nearest to a place, a word's start before others. Below 0 and
// beyond the text it counts blanks. `after` is the column of the chord before.
int PlacedLine::columnAt(double x, double window, int after) const {
    const auto blanksFrom = [&](double edge) { return int(std::lround((x - edge) / blank)); };
    // The first chord may begin a little before the words.
    if (x < edges.front() && (after >= 0 || x > edges.front() - 3 * window))
        return std::max(after, 0);
    if (x < edges.front()) return blanksFrom(edges.front());
    const int size = int(text.size());
    if (x > edges.back() + window / 2) return size + std::max(1, blanksFrom(edges.back()));
    int nearest = 0, start = -1;
    for (int i = 0; i <= size; ++i) {
        const double distance = std::abs(edges[size_t(i)] - x);
        if (distance < std::abs(edges[size_t(nearest)] - x)) nearest = i;
        const bool starts = i < size && !text[i].isSpace() && (i == 0 || text[i - 1].isSpace());
        if (!starts || distance > window || i <= after) continue;
        if (start < 0 || distance < std::abs(edges[size_t(start)] - x)) start = i;
    }
    return start >= 0 ? start : nearest;
}

}  // namespace

// Reads one chart into a builder.
class ChartPageReader {
public:
    ChartPageReader(ChartReader& reader, const SheetGrid& chart, Song& song)
        : m_reader(reader), m_chart(chart), m_song(song), m_builder(song) {}

    void read() {
        for (m_sheet = 1; m_sheet <= m_chart.SheetCount(); ++m_sheet) {
            placeColumns();
            readTitles();
            const int rows = std::min(m_chart.rowsOf(m_sheet),
                                      std::max<int>(ChartRow::Last, m_chart.dataRowsOf(m_sheet)));
            for (int row = ChartRow::FirstChord; row <= rows; row += 2) {
                const bool below = row > ChartRow::LastChord;
                // The rows below the last line of a page are empty as a rule, which says nothing.
                if (!below || !isEmptyRow(row) || !isEmptyRow(row + 1)) readLine(row);
            }
        }
        m_builder.finish();
    }

private:
    void placeColumns();
    void readTitles();
    void readLine(int row);
    std::vector<PlacedChord> chordsOf(int row);
    PlacedLine lineOf(int row);
    QString rowText(int row) const;
    bool isEmptyRow(int row) const { return rowText(row).isEmpty(); }
    bool isCovered(int col, int row) const;
    int columns() const { return std::min(m_chart.colsOf(m_sheet), ChartCols); }

    ChartReader& m_reader;
    const SheetGrid& m_chart;
    Song& m_song;
    SongBuilder m_builder;
    int m_sheet = 1;
    std::vector<double> m_lefts;  // of the columns from 1 on, and the right edge
};

void ChartPageReader::placeColumns() {
    m_lefts = {0};
    for (int col = 1; col <= columns(); ++col) {
        const double width = m_chart.isColHidden(m_sheet, col) ? 0 : m_chart.widthOf(m_sheet, col);
        m_lefts.push_back(m_lefts.back() + width);
    }
}

bool ChartPageReader::isCovered(int col, int row) const {
    const CellSpan span = m_chart.spanAt(m_sheet, col, row);
    return span.cols > 0 && (span.col != col || span.row != row);
}

// The texts of a row in one line.
QString ChartPageReader::rowText(int row) const {
    QStringList texts;
    for (int col = 1; col <= columns(); ++col) {
        if (isCovered(col, row)) continue;
        const QString text = cellText(m_chart.textAt(m_sheet, col, row));
        if (!text.isEmpty()) texts += text;
    }
    return texts.join(u' ');
}

void ChartPageReader::readTitles() {
    for (int row = ChartRow::Title; row <= ChartRow::Spacer; ++row) {
        const QString text = rowText(row);
        if (text.isEmpty()) continue;
        if (m_sheet > 1 || row == ChartRow::Spacer) {
            // Most charts repeat their title on each page.
            bool repeated = false;
            for (int first = ChartRow::Title; first <= ChartRow::LastTitle; ++first)
                repeated =
                    repeated || cellText(m_chart.textAt(1, ChartColumn::Text, first)) == text;
            if (!repeated) m_builder.addComment(text);
        } else if (row == ChartRow::Title) {
            m_song.titles = {text};
        } else if (!takeCreditLine(m_song, text)) {
            if (m_song.authors.isEmpty())
                addAuthors(m_song, text);
            else
                m_song.comments += text;
        }
    }
}

std::vector<PlacedChord> ChartPageReader::chordsOf(int row) {
    std::vector<PlacedChord> placed;
    for (int col = 1; col <= columns(); ++col) {
        if (isCovered(col, row)) continue;
        const QString text = cellText(m_chart.textAt(m_sheet, col, row));
        if (text.isEmpty()) continue;
        const double left = m_lefts[size_t(col - 1)];
        const QList<SongChord> several =
            isBracketChord(text) ? QList<SongChord>() : chordsOfLine(text);
        for (const SongChord& chord : several) placed.push_back({left + chord.column, chord.name});
        // Words among the chords are in parentheses, which transposing leaves alone.
        const bool words = !isBracketChord(text) && text.size() > 2 && text.startsWith(u'(') &&
                           text.endsWith(u')');
        if (several.isEmpty())
            placed.push_back({left, words ? text.sliced(1, text.size() - 2) : text});
    }
    return placed;
}

PlacedLine ChartPageReader::lineOf(int row) {
    PlacedLine line;
    line.text = rowText(row);
    const CellFormat format = m_chart.formatAt(m_sheet, ChartColumn::Text, row);
    const double points = format.fontSize > 0 ? format.fontSize : PlainPoints;
    const auto widthOf = [&](uint code) {
        return m_reader.widthOf(format.fontName, points, format.fontBold, code);
    };
    line.blank = widthOf(u' ');
    double width = 0;
    for (qsizetype i = 0; i < line.text.size(); ++i) {
        line.edges.push_back(width);
        const bool pair = line.text[i].isHighSurrogate() && i + 1 < line.text.size() &&
                          line.text[i + 1].isLowSurrogate();
        if (pair) {
            line.edges.push_back(width);
            ++i;
            width += widthOf(QChar::surrogateToUcs4(line.text[i - 1], line.text[i]));
        } else {
            width += widthOf(line.text[i].unicode());
        }
    }
    line.edges.push_back(width);
    const double room = m_lefts.back();
    const double stretch = width > room ? std::max(NarrowestLine, room / width) : 1;
    double left = 0;
    if (format.hAlign == HAlign::Centre) left = std::max(0.0, (room - width * stretch) / 2);
    if (format.hAlign == HAlign::Right) left = std::max(0.0, room - width * stretch);
    for (double& edge : line.edges) edge = left + edge * stretch;
    return line;
}

void ChartPageReader::readLine(int row) {
    std::vector<PlacedChord> chords = chordsOf(row);
    const PlacedLine line = lineOf(row + 1);
    // A label may stand among the chords, in front of them.
    if (!chords.empty() && !isBracketChord(chords.front().name) && verseName(chords.front().name)) {
        m_builder.startVerse(chords.front().name);
        chords.erase(chords.begin());
        if (chords.empty() && line.text.isEmpty()) return;
    }
    if (chords.empty() && line.text.isEmpty()) return m_builder.addBlank();
    const bool bracketed = line.text.startsWith(u'[') && line.text.endsWith(u']');
    if (chords.empty() && (verseName(line.text) || bracketed))
        return m_builder.startVerse(line.text);
    QList<SongChord> placed;
    if (line.text.isEmpty()) {
        // Nothing under the chords: a column is as wide as a digit.
        for (const PlacedChord& chord : chords)
            placed += {int(std::lround(chord.x - chords.front().x)), chord.name, false};
        return m_builder.addLine({}, placed);
    }
    const double window = (m_lefts.size() > 1 ? m_lefts[1] : ChartColWidth) / 2;
    int last = -1, blanks = 0;
    for (const PlacedChord& chord : chords) {
        const int column = line.columnAt(chord.x, window, last);
        placed += {column, chord.name, false};
        last = column;
        blanks = std::max(blanks, -column);
    }
    for (SongChord& chord : placed) chord.column += blanks;
    m_builder.addLine(QString(blanks, u' ') + line.text, placed);
}

double ChartReader::widthOf(const QString& fontName, double points, bool bold, uint code) {
    const QString name = fontName.isEmpty() ? u"Arial"_s : fontName;
    QHash<uint, double>& widths = m_widths[name + (bold ? u'b' : u'-')];
    const double unit = pixelsPerUnit();
    const auto known = widths.constFind(code);
    if (known != widths.cend()) return *known * points;
    QFont font(name);
    font.setPixelSize(MeasuredPixels);
    font.setBold(bold);
    const double pixels = QFontMetricsF(font).horizontalAdvance(
                              QString::fromUcs4(reinterpret_cast<const char32_t*>(&code), 1)) /
                          MeasuredPixels * PixelsPerPoint;
    return *widths.insert(code, pixels / unit) * points;
}

Song ChartReader::read(const SheetGrid& chart) {
    Song song;
    ChartPageReader(*this, chart, song).read();
    return song;
}
