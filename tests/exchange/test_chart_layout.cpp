// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A song's lyrics and chords are laid out on a chart's pages as the chart window has them.
#include "charts/rules/chart_page.h"
#include "core/grid/sheet_grid.h"
#include "exchange/chart_layout.h"
#include "exchange/chart_ruler.h"
#include "support/registry.h"

#include <QFontMetricsF>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

SongLine layoutLine(const QString& text, const QList<SongChord>& chords = {}) {
    SongLine line;
    line.text = text;
    line.chords = chords;
    return line;
}

SongVerse layoutVerse(const QString& label, int lines, const QString& word = u"line"_s) {
    SongVerse verse;
    verse.label = label;
    for (int i = 1; i <= lines; ++i) verse.lines += layoutLine(word + u' ' + QString::number(i));
    return verse;
}

Song layoutSong(const QList<SongVerse>& verses) {
    Song song;
    song.titles = {u"Amazing Grace"_s};
    song.verses = verses;
    return song;
}

// The lyric rows of a page, without those that are empty at its end.
QStringList lyricRows(const SheetGrid& chart, int page) {
    QStringList rows;
    for (int row = ChartRow::FirstLyric; row <= ChartRow::LastLyric; row += 2)
        rows += chart.textAt(page, ChartColumn::Text, row);
    while (!rows.isEmpty() && rows.last().isEmpty()) rows.removeLast();
    return rows;
}

// "1 G, 12 C/E".
QString chordNames(const SheetGrid& chart, int page, int row) {
    QStringList names;
    for (int col = 1; col <= ChartCols; ++col)
        if (!chart.textAt(page, col, row).isEmpty())
            names += QString::number(col) + u' ' + chart.textAt(page, col, row);
    return names.join(u", "_s);
}

}  // namespace

class TestChartLayout : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void titleAuthorsAndCreditsStandInTheFirstThreeRows() {
        Song song = layoutSong({layoutVerse({}, 1)});
        song.authors = {{u"John Newton"_s, SongAuthor::Work::Words},
                        {u"Edwin Excell"_s, SongAuthor::Work::Music}};
        song.tempo = u"72"_s;
        song.time = u"3/4"_s;
        song.copyright = u"Public Domain"_s;
        SheetGrid chart;
        layOutChart(song, chart);
        QCOMPARE(chart.GetText(1, 1), u"Amazing Grace"_s);
        QCOMPARE(chart.GetText(1, 2), u"John Newton, Edwin Excell"_s);
        QCOMPARE(chart.GetText(1, 3), u"Tempo: 72 | Time: 3/4 | Public Domain"_s);
        QCOMPARE(chart.MaxCols(), ChartCols);
        QCOMPARE(chart.MaxRows(), int(ChartRows));
        QCOMPARE(chart.spanAt(1, 1, 6).cols, int(ChartCols));
        QCOMPARE(chart.formatAt(1, 1, 6).hAlign, HAlign::Centre);
        QVERIFY(chart.AllowCellOverflow());
    }

    void labelsStandInRowsOfTheirOwnAndOthersAreBracketed() {
        SheetGrid chart;
        layOutChart(
            layoutSong({layoutVerse(u"Verse 1"_s, 2), layoutVerse(u"Chorus:"_s, 1, u"praise"_s),
                        layoutVerse(u"Odd Section"_s, 1, u"word"_s)}),
            chart);
        QCOMPARE(lyricRows(chart, 1),
                 QStringList({u"Verse 1"_s, u"line 1"_s, u"line 2"_s, u"Chorus"_s, u"praise 1"_s,
                              u"[Odd Section]"_s, u"word 1"_s}));
    }

    void versesWithoutLabelsAreSetApart() {
        SheetGrid chart;
        layOutChart(layoutSong({layoutVerse({}, 1), layoutVerse({}, 1, u"next"_s)}), chart);
        QCOMPARE(lyricRows(chart, 1), QStringList({u"line 1"_s, QString(), u"next 1"_s}));
    }

    void chordsStandOverTheirSyllables_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::newRow("first") << u"Amazing grace how sweet the sound"_s << 0;
        QTest::newRow("middle") << u"Amazing grace how sweet the sound"_s << 14;
        QTest::newRow("narrow letters") << u"illi illi illi illi illi illi illi"_s << 20;
        QTest::newRow("wide letters") << u"WWMM WWMM WWMM WWMM WWMM"_s << 15;
        QTest::newRow("end") << u"Amen"_s << 4;
    }

    // Measured here once more, with the font's own metrics at its real size.
    void chordsStandOverTheirSyllables() {
        QFETCH(QString, text);
        QFETCH(int, position);
        SongVerse verse;
        verse.lines = {layoutLine(text, {{position, u"G"_s, false}})};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        QFont bold(u"Arial"_s);
        bold.setPixelSize(975);
        bold.setBold(true);
        QFont plain(u"Arial"_s);
        plain.setPixelSize(1000);
        const double column = QFontMetricsF(plain).horizontalAdvance(u'0') * ChartColWidth;
        const QFontMetricsF metrics(bold);
        const double place = (column * ChartCols - metrics.horizontalAdvance(text)) / 2 +
                             metrics.horizontalAdvance(text.left(position));
        int found = 0;
        for (int col = 1; col <= ChartCols; ++col)
            if (chart.GetText(col, 5) == u"G"_s) found = col;
        QVERIFY(found > 0);
        QVERIFY2(std::abs((found - 1) * column - place) <= column * 0.51,
                 qPrintable(u"column %1, place %2"_s.arg(found).arg(place / column + 1)));
    }

    void crowdedChordsKeepRoomForTheirNames() {
        SongVerse verse;
        verse.lines = {layoutLine(
            u"O"_s, {{0, u"F#m7/A"_s, false}, {0, u"Gmaj7"_s, false}, {1, u"D"_s, false}})};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        const ChartRuler ruler(FirstPagePoints);
        QList<int> columns;
        for (int col = 1; col <= ChartCols; ++col)
            if (!chart.GetText(col, 5).isEmpty()) columns += col;
        QCOMPARE(columns.size(), 3);
        QVERIFY(columns[1] - columns[0] >= ruler.columnsOf(u"F#m7/A"_s));
        QVERIFY(columns[2] - columns[1] >= ruler.columnsOf(u"Gmaj7"_s));
    }

    void chordsBeyondTheEndStayOnThePage() {
        SongVerse verse;
        QList<SongChord> many;
        for (int i = 0; i < 6; ++i) many += {200 + i, u"Dsus4"_s, false};
        verse.lines = {layoutLine(u"Amen"_s, many)};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        int count = 0, last = 0;
        for (int col = 1; col <= ChartCols; ++col) {
            if (chart.GetText(col, 5).isEmpty()) continue;
            ++count;
            QVERIFY(last == 0 || col - last >= ChartRuler(FirstPagePoints).columnsOf(u"Dsus4"_s));
            last = col;
        }
        QCOMPARE(count, 6);
    }

    void fortyChordsInALineAreAllThere() {
        SongVerse verse;
        QList<SongChord> many;
        for (int i = 0; i < 40; ++i) many += {i * 3, u"C#m7"_s, false};
        verse.lines = {layoutLine({}, many)};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        int count = 0;
        for (int row = ChartRow::FirstChord; row <= ChartRow::LastChord; row += 2)
            for (int col = 1; col <= ChartCols; ++col)
                count += chart.GetText(col, row) == u"C#m7"_s ? 1 : 0;
        QCOMPARE(count, 40);
    }

    void lineWiderThanThePageGoesOnInTheNextRow() {
        QStringList words;
        for (int i = 0; i < 40; ++i) words += u"word%1"_s.arg(i);
        const QString text = words.join(u' ');
        SongVerse verse;
        verse.lines = {
            layoutLine(text, {{0, u"G"_s, false}, {int(text.size()) - 6, u"D"_s, false}})};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        const QStringList rows = lyricRows(chart, 1);
        QVERIFY(rows.size() > 1);
        for (const QString& row : rows) QVERIFY(ChartRuler(FirstPagePoints).fits(row));
        QCOMPARE(rows.join(u' '), text);
        QVERIFY(chordNames(chart, 1, 5).endsWith(u"G"_s));
        QVERIFY(chordNames(chart, 1, 5 + 2 * (int(rows.size()) - 1)).endsWith(u"D"_s));
    }

    void wordWiderThanThePageIsSplit() {
        SongVerse verse;
        verse.lines = {layoutLine(QString(400, u'W'))};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        QString all;
        for (const QString& row : lyricRows(chart, 1)) {
            QVERIFY(ChartRuler(FirstPagePoints).fits(row));
            all += row;
        }
        QCOMPARE(all.size(), 400);
    }

    void verseThatDoesNotFitBeginsTheNextPage() {
        SheetGrid chart;
        layOutChart(
            layoutSong({layoutVerse(u"Verse 1"_s, 9), layoutVerse(u"Verse 2"_s, 9, u"second"_s)}),
            chart);
        QCOMPARE(chart.SheetCount(), 2);
        QCOMPARE(lyricRows(chart, 1).size(), 10);
        QCOMPARE(lyricRows(chart, 2).first(), u"Verse 2"_s);
        QCOMPARE(lyricRows(chart, 2).size(), 10);
        QCOMPARE(chart.textAt(2, 1, 1), u"Amazing Grace"_s);
        QCOMPARE(chart.ActiveSheet(), 1);
        QCOMPARE(chart.formatAt(2, 1, 6).fontSize, AddedPagePoints);
    }

    void versesFillAPageToItsLastRow() {
        SheetGrid chart;
        layOutChart(layoutSong({layoutVerse(u"Verse 1"_s, 8), layoutVerse(u"Verse 2"_s, 8)}),
                    chart);
        QCOMPARE(chart.SheetCount(), 1);
        QCOMPARE(chart.GetText(1, ChartRow::LastLyric), u"line 8"_s);
    }

    void verseOfSixtyLinesGoesOverFourPages() {
        SheetGrid chart;
        layOutChart(
            layoutSong({layoutVerse(u"Verse 1"_s, 60), layoutVerse(u"Chorus"_s, 3, u"praise"_s)}),
            chart);
        QCOMPARE(chart.SheetCount(), 4);
        QStringList all;
        for (int page = 1; page <= 4; ++page) all += lyricRows(chart, page);
        QCOMPARE(all.size(), 1 + 60 + 1 + 3);
        QCOMPARE(all[60], u"line 60"_s);
    }

    void commentsAnnotationsAndSingersStandInParentheses() {
        SongVerse verse;
        SongLine comment = layoutLine(u"Repeat"_s);
        comment.kind = SongLine::Kind::Comment;
        SongLine men = layoutLine(u"Holy"_s, {{0, u"Gently"_s, true}});
        men.part = u"men"_s;
        verse.lines = {comment, men};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        QCOMPARE(lyricRows(chart, 1), QStringList({u"(Repeat)"_s, u"(men) Holy"_s}));
        QVERIFY(chordNames(chart, 1, 7).endsWith(u" (Gently)"_s));
    }

    void chordsWithoutWordsKeepTheirOrderAndTheMiddle() {
        SongVerse verse;
        verse.label = u"Intro"_s;
        verse.lines = {
            layoutLine({}, {{0, u"G"_s, false}, {8, u"C"_s, false}, {16, u"D"_s, false}})};
        SheetGrid chart;
        layOutChart(layoutSong({verse}), chart);
        QList<int> columns;
        for (int col = 1; col <= ChartCols; ++col)
            if (!chart.GetText(col, 7).isEmpty()) columns += col;
        QCOMPARE(columns.size(), 3);
        QVERIFY2(std::abs(columns[0] + columns[2] - ChartCols - 1) <= 2, "not in the middle");
        QCOMPARE(columns[1] - columns[0], 3);
    }
};

LORVANITE_TEST(TestChartLayout)
#include "test_chart_layout.moc"
