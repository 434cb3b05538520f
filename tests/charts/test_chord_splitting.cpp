// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Transposes many chords to every key, checked by a second implementation of the split.
#include "charts/rules/chart_page.h"
#include "charts/rules/transposer.h"
#include "core/grid/sheet_grid.h"
#include "support/registry.h"
#include "support/world.h"

#include <QRegularExpression>

namespace {

// Chord names as players write them, with some words and mistakes among them.
QStringList chordNames() {
    QStringList names;
    const QStringList roots = {"C",  "C#", "Db", "D",  "D#", "Eb", "E",  "F", "F#",
                               "Gb", "G",  "G#", "Ab", "A",  "A#", "Bb", "B"};
    const QStringList kinds = {"",     "m",     "7",   "m7",      "maj7", "Maj7", "sus", "sus2",
                               "sus4", "7sus4", "dim", "dim7",    "aug",  "add9", "2",   "4",
                               "5",    "6",     "m6",  "9",       "m9",   "11",   "13",  "6/9",
                               "m7b5", "7#9",   "7b9", "maj7#11", "+",    "(no3)"};
    for (const QString& root : roots)
        for (const QString& kind : kinds) names.append(root + kind);
    const QStringList basses = {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"};
    for (const QString root : {"C", "Dm7", "Ebmaj7", "F#m", "G", "Am", "Bb", "Bsus4"})
        for (const QString& bass : basses) names.append(root + QLatin1Char('/') + bass);
    names << "am"
          << "H"
          << "H/C"
          << "C/H"
          << "C/"
          << "/"
          << "//"
          << "A/B/C"
          << "D/F#/A"
          << "Chorus"
          << "Bridge"
          << "Verse"
          << "Cb"
          << "Fb"
          << "E#"
          << "B#"
          << "N.C."
          << " C"
          << "C "
          << "%"
          << "b"
          << "#"
          << "Bbb"
          << "G##"
          << "Ab/Gb"
          << "F/bb"
          << "\u266d"
          << "C\u266f";
    return names;
}

// The position of a note in the delivered row "rootnote", worked out by hand.
int positionByHand(const QString& note) {
    static const QHash<QString, int> known = {
        {"C", 0},  {"C#", 1}, {"Db", 1}, {"D", 2},   {"D#", 1}, {"Eb", 3},
        {"E", 4},  {"F", 5},  {"F#", 6}, {"G", 7},   {"Gb", 8}, {"G#", 8},
        {"Ab", 8}, {"A", 9},  {"A#", 8}, {"Bb", 10}, {"B", 11}};
    return known.value(note, -1);
}

// Transposes a side of a chord with patterns. "#" or "b" anywhere makes its note two characters
// long.
QString sideByPattern(const QString& side, const QStringList& key, bool* moved) {
    static const QRegularExpression plain("^([^#b])([^#b]*)$");
    static const QRegularExpression signedNote("^(?=.*[#b])(..?)(.*)$");
    auto match = plain.match(side);
    if (!match.hasMatch()) match = signedNote.match(side);
    const int position = match.hasMatch() ? positionByHand(match.captured(1)) : -1;
    *moved = position >= 0;
    return *moved ? key[position] + match.captured(2) : QString();
}

// Transposes a cell with patterns.
QString cellByPattern(const QString& text, const QStringList& key) {
    static const QRegularExpression slash("^([^/]*)/(.*)$");
    const auto match = slash.match(text);
    bool moved = false;
    if (!match.hasMatch()) {
        const QString whole = sideByPattern(text, key, &moved);
        return moved ? whole : text;
    }
    const QString left = sideByPattern(match.captured(1), key, &moved);
    const QString first = moved ? left : text;
    const QString bass = sideByPattern(match.captured(2), key, &moved);
    return moved ? first + '/' + bass : first;
}

}  // namespace

class TestChordSplitting : public WindowTest {
    Q_OBJECT

    QString noteValue(const QString& row) {
        return world->rows(QString("SELECT noteValue FROM transpose WHERE colName = '%1'").arg(row))
            .value(0);
    }

    // Fills the chord rows of a chart with texts.
    static void fill(SheetGrid& chart, const QStringList& texts) {
        setUpChart(chart);
        int page = 1;
        int row = ChartRow::FirstChord;
        int col = 1;
        for (const QString& text : texts) {
            if (row > ChartRow::LastChord) {
                addChartPage(chart, [](const QString&) {});
                ++page;
                row = ChartRow::FirstChord;
            }
            chart.SetText(col, row, text);
            if (++col > ChartCols) {
                col = 1;
                row += 2;
            }
        }
        chart.ActiveSheet(1);
    }

    static QStringList chordsOf(const SheetGrid& chart, qsizetype count) {
        QStringList texts;
        for (int page = 1; page <= chart.SheetCount(); ++page)
            for (int row = ChartRow::FirstChord; row <= ChartRow::LastChord; row += 2)
                for (int col = 1; col <= ChartCols && texts.size() < count; ++col)
                    texts.append(chart.textAt(page, col, row));
        return texts;
    }

private Q_SLOTS:
    void chordsAreSplit_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("note");
        QTest::addColumn<QString>("suffix");
        const QStringList rows = {
            "G|G|",           "Gsus4|G|sus4", "F#m7|F#|m7",         "Bb|Bb|", "Bm|B|m", "Dm7|D|m7",
            "Ebmaj7|Eb|maj7", "Am7b5|Am|7b5", "Cmaj7#11|Cm|aj7#11", "||",     "b|b|"};
        for (const QString& row : rows) {
            const QStringList parts = row.split('|');
            QTest::newRow(qPrintable("<" + parts[0] + ">")) << parts[0] << parts[1] << parts[2];
        }
    }
    void chordsAreSplit() {
        // Deliberate: behaviour 138.
        QFETCH(QString, text);
        QFETCH(QString, note);
        QFETCH(QString, suffix);
        QCOMPARE(splitChord(text), (ChordSplit{note, suffix}));
    }

    void chordsAreTransposedToEveryKey_data() {
        QTest::addColumn<QString>("row");
        for (int n = 1; n <= 12; ++n) {
            QTest::addRow("up %d", n) << QString("p%1").arg(n);
            QTest::addRow("down %d", n) << QString("n%1").arg(n);
        }
    }
    void chordsAreTransposedToEveryKey() {
        QFETCH(QString, row);
        const QStringList names = chordNames();
        QVERIFY(names.size() >= 300);
        SheetGrid chart;
        fill(chart, names);
        Transposer transposer;
        transposer.setRootNotes(noteValue("rootnote"));
        transposer.setKeyNotes(noteValue(row));
        transposer.transposeChart(chart);
        const QStringList key = noteValue(row).split(',');
        QStringList wanted;
        for (const QString& name : names) wanted.append(cellByPattern(name, key));
        const QStringList found = chordsOf(chart, names.size());
        for (qsizetype i = 0; i < names.size(); ++i)
            QVERIFY2(found[i] == wanted[i],
                     qPrintable(names[i] + ": " + found[i] + ", not " + wanted[i]));
        QCOMPARE(chart.ActiveSheet(), 1);
    }

    void upAndDownAgainRestoresTheChart() {
        QStringList names;
        for (const QString root : {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"})
            for (const QString kind : {"", "m", "7", "sus4", "maj7", "/G", "m7/F#"})
                names.append(root + QString(kind));
        for (int n = 1; n <= 12; ++n) {
            SheetGrid chart;
            fill(chart, names);
            Transposer transposer;
            transposer.setRootNotes(noteValue("rootnote"));
            for (const char* way : {"p", "n"}) {
                transposer.setKeyNotes(noteValue(way + QString::number(n)));
                transposer.transposeChart(chart);
            }
            QCOMPARE(chordsOf(chart, names.size()), names);
        }
    }

    void emptyKeysRaiseNothingWithoutChords() {
        SheetGrid chart;
        fill(chart, {});
        Transposer transposer;
        transposer.setRootNotes("");
        transposer.setKeyNotes("");
        transposer.transposeChart(chart);
        QCOMPARE(chart.DataRowCnt(), 0);
        QVERIFY(transposer.keyNotes.isEmpty());
    }
};

LORVANITE_TEST(TestChordSplitting)
#include "test_chord_splitting.moc"
