// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/chart_ruler.h"

#include "charts/rules/chart_page.h"
#include "platform/grid_view/cell_look.h"

#include <QFontMetricsF>
#include <QHash>

#include <algorithm>
#include <cmath>

namespace {

// So large that rounding to whole pixels does not matter.
constexpr int RulerPixels = 1000;
constexpr double PointsPerPixel = 72.0 / 96;
constexpr double GapPoints = 2;  // behind a chord's name

QFont rulerFont() {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(RulerPixels);
    font.setBold(true);
    return font;
}

// Letters that the font draws one beside the other. Other scripts join and stack theirs.
bool isPlain(QChar c) {
    return c.unicode() < 0x300 || (c.unicode() >= 0x2010 && c.unicode() <= 0x2027);
}

// The width of plain letters is that of each of them: kerning is less than chords are apart.
double rulerWidth(const QString& text) {
    static const QFontMetricsF metrics(rulerFont());
    static QHash<QChar, double> widths;
    if (!std::all_of(text.begin(), text.end(), isPlain)) return metrics.horizontalAdvance(text);
    double sum = 0;
    for (const QChar c : text) {
        auto width = widths.constFind(c);
        if (width == widths.constEnd()) width = widths.insert(c, metrics.horizontalAdvance(c));
        sum += *width;
    }
    return sum;
}

}  // namespace

ChartRuler::ChartRuler(double points)
    : m_scale(points / RulerPixels),
      m_columnWidth(pixelsPerUnit() * PointsPerPixel * ChartColWidth) {}

double ChartRuler::width(const QString& text) const { return rulerWidth(text) * m_scale; }

bool ChartRuler::fits(const QString& text) const {
    return width(text) <= m_columnWidth * ChartCols;
}

int ChartRuler::columnsOf(const QString& chord) const {
    return std::max(1, int(std::ceil((width(chord) + GapPoints) / m_columnWidth)));
}

// The distance of a character from the page's left edge.
double ChartRuler::offset(const QString& lyrics, int position) const {
    const double left = (m_columnWidth * ChartCols - width(lyrics)) / 2;
    const int behind = std::max(0, position - int(lyrics.size()));
    const int blanks = std::min(0, position) + behind;
    return left + width(lyrics.left(std::max(0, position))) + blanks * width(QStringLiteral(" "));
}

int ChartRuler::columnAt(double points) const {
    return std::clamp(1 + int(std::lround(points / m_columnWidth)), 1, ChartCols);
}

int ChartRuler::columnOver(const QString& lyrics, int position) const {
    return columnAt(offset(lyrics, position));
}

QList<int> ChartRuler::columnsOver(const SongLine& line) const {
    const double digit = m_columnWidth / ChartColWidth;
    const auto place = [&](const SongChord& chord) {
        if (!line.text.isEmpty()) return columnOver(line.text, chord.column);
        const SongChord& last = line.chords.last();
        const double room = m_columnWidth * ChartCols - digit * (last.column + last.name.size());
        return columnAt(std::max(0.0, room / 2) + digit * chord.column);
    };
    QList<int> columns;
    int next = 1;
    for (const SongChord& chord : line.chords) {
        columns.append(std::max(next, place(chord)));
        next = columns.last() + columnsOf(chord.name);
    }
    // What was pushed past the end goes back, and what is before it makes room.
    int room = ChartCols + 1;
    for (qsizetype i = columns.size(); i-- > 0;) {
        columns[i] = std::min(columns[i], room - columnsOf(line.chords[i].name));
        columns[i] = std::clamp(columns[i], int(std::min<qsizetype>(i + 1, ChartCols)), ChartCols);
        room = columns[i];
    }
    return columns;
}
