// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/chart_layout.h"

#include "charts/rules/chart_page.h"
#include "core/grid/sheet_grid.h"
#include "exchange/chart_ruler.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr int RowsOfPage = (ChartRow::LastLyric - ChartRow::FirstLyric) / 2 + 1;
// A verse that is split starts on a page that has at least so many rows left.
constexpr int LeastRowsOfSplit = 4;

QString inParentheses(const QString& text) {
    const bool has = text.startsWith(QLatin1Char('(')) && text.endsWith(QLatin1Char(')'));
    return has ? text : QLatin1Char('(') + text + QLatin1Char(')');
}

// A line as the page shows it: with the singers before the text, comments in parentheses.
SongLine shownLine(const SongLine& line) {
    SongLine shown = line;
    for (SongChord& chord : shown.chords)
        if (chord.annotation) chord.name = inParentheses(chord.name);
    if (line.kind == SongLine::Kind::Comment && !line.text.isEmpty())
        shown.text = inParentheses(line.text);
    if (!line.part.isEmpty()) {
        const QString part = inParentheses(line.part) + QLatin1Char(' ');
        shown.text.prepend(part);
        for (SongChord& chord : shown.chords) chord.column += int(part.size());
    }
    return shown;
}

bool hasRoom(const ChartRuler& ruler, const SongLine& line) {
    const int columns = std::accumulate(
        line.chords.begin(), line.chords.end(), 0,
        [&](int sum, const SongChord& chord) { return sum + ruler.columnsOf(chord.name); });
    return ruler.fits(line.text) && columns <= ChartCols;
}

// The place at which a line is split: the blank that is nearest to its middle, or its middle.
qsizetype splitPlace(const SongLine& line) {
    if (line.text.isEmpty()) return line.chords[line.chords.size() / 2].column;
    const qsizetype middle = line.text.size() / 2;
    for (qsizetype i = 0; i < middle; ++i) {
        if (line.text[middle - i].isSpace()) return middle - i + 1;
        if (middle + i + 1 < line.text.size() && line.text[middle + i].isSpace())
            return middle + i + 1;
    }
    return line.text[middle].isLowSurrogate() ? middle - 1 : middle;
}

// Splits a line that the page has no room for.
void addPieces(const ChartRuler& ruler, const SongLine& line, QList<SongLine>& pieces) {
    const bool canSplit = line.text.size() > 1 || (line.text.isEmpty() && line.chords.size() > 1);
    if (!canSplit || hasRoom(ruler, line)) {
        pieces.append(line);
        return;
    }
    const qsizetype place = std::max<qsizetype>(1, splitPlace(line));
    SongLine left = line;
    SongLine right = line;
    left.text = line.text.left(place);
    while (left.text.endsWith(QLatin1Char(' '))) left.text.chop(1);
    right.text = line.text.mid(place);
    const auto isLeft = [&](const SongChord& chord) { return chord.column < place; };
    right.chords.removeIf(isLeft);
    left.chords.removeIf([&](const SongChord& chord) { return !isLeft(chord); });
    for (SongChord& chord : right.chords) chord.column -= int(place);
    addPieces(ruler, left, pieces);
    addPieces(ruler, right, pieces);
}

// The rows of a verse, its label first.
QList<SongLine> rowsOfVerse(const ChartRuler& ruler, const SongVerse& verse) {
    QList<SongLine> rows;
    for (const SongLine& line : verse.lines) addPieces(ruler, shownLine(line), rows);
    const auto isEmpty = [](const SongLine& row) {
        return row.text.isEmpty() && row.chords.isEmpty();
    };
    while (!rows.isEmpty() && isEmpty(rows.last())) rows.removeLast();
    while (!rows.isEmpty() && isEmpty(rows.first())) rows.removeFirst();
    if (!verse.label.isEmpty() && !rows.isEmpty()) {
        SongLine label;
        // Brackets distinguish an unusual label from words.
        const QString bare = bareLabel(verse.label);
        label.text = verseName(bare) ? bare : QLatin1Char('[') + bare + QLatin1Char(']');
        rows.prepend(label);
    }
    return rows;
}

// The words are centred by themselves; chords before them keep their distance.
SongLine withoutIndent(SongLine line) {
    qsizetype blanks = 0;
    while (blanks < line.text.size() && line.text[blanks] == QLatin1Char(' ')) ++blanks;
    line.text.remove(0, blanks);
    for (SongChord& chord : line.chords) chord.column -= int(blanks);
    return line;
}

QString creditsOf(const Song& song) {
    QStringList credits;
    const auto add = [&credits](const char* name, const QString& value) {
        if (!value.isEmpty()) credits.append(QLatin1String(name) + value);
    };
    add("Tempo: ", song.tempo);
    add("Time: ", song.time);
    add("Capo: ", song.capo);
    add("", song.copyright);
    return credits.join(QStringLiteral(" | "));
}

// Writes rows to pages, and adds pages where needed.
class PageWriter {
public:
    PageWriter(const Song& song, SheetGrid& chart)
        : m_song(&song), m_chart(&chart), m_ruler(FirstPagePoints) {
        setUpChart(chart);
        writeTitle();
        chart.SetText(ChartColumn::Text, ChartRow::Title + 1, authorNames(song));
        chart.SetText(ChartColumn::Text, ChartRow::LastTitle, creditsOf(song));
    }

    void writeVerse(const QList<SongLine>& rows, bool hasLabel) {
        if (rows.isEmpty()) return;
        // The chord row above a label is free already.
        const int gap = m_used > 0 && !hasLabel ? 1 : 0;
        const int left = RowsOfPage - m_used - gap;
        const bool fitsOnAPage = rows.size() <= RowsOfPage;
        if (rows.size() <= left || (!fitsOnAPage && left >= LeastRowsOfSplit))
            m_used += gap;
        else if (m_used > 0)
            addPage();
        for (const SongLine& row : rows) writeRow(row);
    }

private:
    void writeTitle() { m_chart->SetText(ChartColumn::Text, ChartRow::Title, m_song->title()); }

    void addPage() {
        addChartPage(*m_chart, [](const QString&) {});
        m_chart->AllowCellOverflow(true);
        m_ruler = ChartRuler(AddedPagePoints);
        m_used = 0;
        writeTitle();
    }

    void writeRow(const SongLine& row) {
        if (m_used == RowsOfPage) addPage();
        const int chordRow = ChartRow::FirstChord + 2 * m_used;
        const SongLine line = withoutIndent(row);
        const QList<int> columns = m_ruler.columnsOver(line);
        for (qsizetype i = 0; i < columns.size(); ++i)
            m_chart->SetText(columns[i], chordRow, line.chords[i].name);
        m_chart->SetText(ChartColumn::Text, chordRow + 1, line.text);
        ++m_used;
    }

    const Song* m_song;
    SheetGrid* m_chart;
    ChartRuler m_ruler;
    int m_used = 0;  // rows of the page
};

}  // namespace

bool hasLyrics(const Song& song) {
    return std::any_of(song.verses.begin(), song.verses.end(), [](const SongVerse& verse) {
        return std::any_of(verse.lines.begin(), verse.lines.end(), [](const SongLine& line) {
            return !line.text.isEmpty() || !line.chords.isEmpty();
        });
    });
}

void layOutChart(const Song& song, SheetGrid& chart) {
    // The larger of the two fonts, so that a line is split the same on every page.
    const ChartRuler widest(AddedPagePoints);
    PageWriter writer(song, chart);
    for (const SongVerse& verse : song.verses)
        writer.writeVerse(rowsOfVerse(widest, verse), !verse.label.isEmpty());
    chart.ActiveSheet(1);
}
