// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Chords are distinguished from words, and their suffixes and structures mean the same.
#include "exchange/rules/chord_names.h"
#include "support/registry.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QString shownChords(const QList<SongChord>& chords) {
    QStringList all;
    for (const SongChord& chord : chords)
        all += QString::number(chord.column) + (chord.annotation ? u'*' : u':') + chord.name;
    return all.join(u' ');
}

}  // namespace

class TestChordNames : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void suffixGivesItsStructure_data() {
        QTest::addColumn<QString>("structure");
        const auto row = [](const char* suffix, const char* structure) {
            QTest::newRow(suffix) << QString::fromLatin1(structure);
        };
        row("", "");
        row("(no3)", "5");
        row("no5", "3");
        row("7no5", "3-m7");
        row("7omit3", "5-m7");
        row("maj11", "3-5-7-9-11");
        row("9b5", "3-d5-m7-9");
        row("m7#5", "m3-a5-m7");
        row("m13", "m3-5-m7-9-13");
        row("dim9", "m3-d5-d7-9");
        row("\u00f8"
            "9",
            "halfdim9");
        row("7alt", "3-a5-m7-m9");
        row("aug9", "3-a5-m7-9");
        row("m2", "2-m3-5");
        row("m4", "m3-4-5");
        row("maj4", "4-5");
        row("m7sus4", "4-5-m7");
        row("9sus", "4-5-m7-9");
        row("13sus2", "2-5-m7-9-13");
        row("7/6", "3-5-6-m7");
        row("m5", "m3-5");
        row("add#11", "3-5-a11");
        row("7(b9,#11)", "3-5-m7-m9-a11");
        row("7add13", "3-5-m7-13");
        row("m\u266d"
            "6",
            "m3-5-m6");
        row("+11", "3-5-a11");
    }

    void suffixGivesItsStructure() {
        QFETCH(QString, structure);
        QCOMPARE(chordStructure(QString::fromUtf8(QTest::currentDataTag())), structure);
    }

    // What is written for a structure is a chord, and is the same structure again.
    void structureIsTheSameAfterItsSuffix_data() {
        QTest::addColumn<QString>("structure");
        for (const char* structure :
             {"5-m7",          "3",          "m3",           "3-m7",        "3-5-7-9-11",
              "3-d5-m7-9",     "m3-a5-m7",   "m3-5-m7-9-13", "m3-d5-d7-9",  "3-d5",
              "3-5-m9",        "3-a5-m7-m9", "2-m3-5",       "m3-4-5",      "3-5-a11",
              "3-5-m7-m9-a11", "3-5-m7-13",  "4-5-m7-9",     "2-5-m7-9-13", "3-5-6-m7",
              "m3-5-11",       "3-5-7-a11",  "m3-d5-d7-a11"})
            QTest::newRow(structure) << QString::fromLatin1(structure);
    }

    void structureIsTheSameAfterItsSuffix() {
        QFETCH(QString, structure);
        const QString suffix = chordSuffix(structure);
        QVERIFY2(chordParts(u'C' + suffix), qPrintable(suffix));
        QCOMPARE(chordParts(u'C' + suffix)->suffix, suffix);
        QCOMPARE(chordStructure(suffix), structure);
    }

    void structureIsWrittenAsAPlayerReadsIt_data() {
        QTest::addColumn<QString>("suffix");
        const auto row = [](const char* structure, const char* suffix) {
            QTest::newRow(structure) << QString::fromLatin1(suffix);
        };
        row("major", "");
        row("dim7", "dim7");
        row("m3-d5-d7-9", "dim7add9");
        row("3-d5", "(b5)");
        row("3-5-m9-a11", "(b9#11)");
        row("3-5-d7", "6");
        row("m3-5-d7", "m6");
        row("3-5-7-9-11", "maj11");
        row("2-m3-5", "madd2");
        row("3-m7", "7no5");
        row("5-m7", "7no3");
        row("6", "6");
        row("no structure", "no structure");
    }

    void structureIsWrittenAsAPlayerReadsIt() {
        QFETCH(QString, suffix);
        QCOMPARE(chordSuffix(QString::fromLatin1(QTest::currentDataTag())), suffix);
    }

    void lineOfChordsIsToldFromWords_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("chords");
        const auto row = [](const char* name, const char* line, const char* chords) {
            QTest::newRow(name) << QString::fromUtf8(line) << QString::fromUtf8(chords);
        };
        row("blank", "   ", "");
        row("no chord", "N.C.  G", "0:N.C. 6:G");
        row("no chord alone", "  (nc)", "2:(nc)");
        row("in brackets", "[G] [D/F#]", "0:G 4:D/F#");
        row("bars", "| G / / / | C |", "2:G 12:C");
        row("repeats", "G C (x2) 3x", "0:G 2:C 4*(x2) 9*3x");
        row("joined", "G-D-Em |C|D|", "0:G 2:D 4:Em 8:C 10:D");
        row("the word As", "As", "");
        row("As among chords", "As Des", "0:As 3:Des");
        row("words", "A mighty fortress", "");
        row("joined words", "G-string", "");
        row("dashes alone", "--- ---", "");
        row("without end", QByteArray("G-").repeated(101).constData(), "");
    }

    void lineOfChordsIsToldFromWords() {
        QFETCH(QString, line);
        QFETCH(QString, chords);
        QCOMPARE(shownChords(chordsOfLine(line)), chords);
    }

    void longNameIsNoChord() {
        const QString longest = u"C"_s + u"7"_s.repeated(23);
        QVERIFY(chordParts(longest));
        QVERIFY(!chordParts(longest + u'7'));
        QVERIFY(!isBracketChord(longest + u'7'));
    }

    void germanRootsComeBack() {
        for (const char* german : {"C", "Cis", "Des", "D", "Dis", "Es", "E", "F", "Fis", "Ges", "G",
                                   "Gis", "As", "A", "Ais", "B", "H", "His", "Ces"}) {
            const QString english = englishRoot(QLatin1String(german));
            QVERIFY2(chordParts(english), german);
            QVERIFY2(!english.contains(u's') && !english.contains(u'H'), german);
            QCOMPARE(germanRoot(english), QLatin1String(german));
        }
    }
};

LORVANITE_TEST(TestChordNames)
#include "test_chord_names.moc"
