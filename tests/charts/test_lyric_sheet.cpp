// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The lyric sheet: the lyrics of a page in large type, as RTF.
#include "charts/chart_test.h"
#include "support/files.h"
#include "support/rtf_reader.h"

#include <QFile>

namespace {

const QString Sheet = QStringLiteral("sheetmusic/sheet.rtf");

}  // namespace

class TestLyricSheet : public ChartTest {
    Q_OBJECT

    // Makes the sheet; returns its lines as another program reads them.
    QStringList makeSheet() {
        SheetMusic& w = SheetMusic::instance();
        QFile::remove(world->path(Sheet));
        world->answers.file(world->path(Sheet));
        pick(w.mnuSend, w.mnuLyrics);
        return rtfLines(bytesOf(world->path(Sheet)));
    }

    // An empty first line, the 18 lyric rows and row 42.
    static QStringList linesWith(const QStringList& lyrics) {
        QStringList lines{QString()};
        lines += lyrics;
        while (lines.size() < 20) lines += QString();
        return lines;
    }

private Q_SLOTS:
    void everyLyricRowGivesALine() {
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Title, "Abide");
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Title + 1, "a free line");
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "Abide with me");
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric + 4,
                          QString::fromUtf8("Großer Gott \\ {wir} loben dich – €"));
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Last, "the end");
        QStringList wanted = linesWith(
            {"Abide with me", "", QString::fromUtf8("Großer Gott \\ {wir} loben dich – €")});
        wanted[19] = "the end";
        QCOMPARE(makeSheet(), wanted);
        QVERIFY(!w.rtb->isVisible());
    }

    void linesAreLargeBoldAndCentred() {
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "Abide with me");
        makeSheet();
        const auto paragraphs = rtfParagraphs(bytesOf(world->path(Sheet)));
        QCOMPARE(paragraphs.size(), size_t(20));
        for (const RtfParagraph& paragraph : paragraphs) {
            QCOMPARE(paragraph.align, QStringLiteral("qc"));
            QCOMPARE(paragraph.end, (RtfRun{"", "Arial", 24, true, false}));
        }
        QCOMPARE(paragraphs[1].runs.at(0), (RtfRun{"Abide with me", "Arial", 24, true, false}));
    }

    void sheetIsNamedAfterTheTitle_data() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("proposed");
        QTest::newRow("Abide") << "Abide"
                               << "Abide.rtf";
        QTest::newRow("no title") << ""
                                  << "Song.rtf";
        QTest::newRow("slash") << "Holy / Holy"
                               << "Holy _ Holy.rtf";
        QTest::newRow("backslash") << "Holy\\Holy"
                                   << "Holy_Holy.rtf";
        QTest::newRow("folders") << "../../x"
                                 << "_.._x.rtf";
    }
    void sheetIsNamedAfterTheTitle() {
        QFETCH(QString, title);
        QFETCH(QString, proposed);
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Title, title);
        world->answers.fileAsProposed();
        pick(w.mnuSend, w.mnuLyrics);
        const auto& dialog = world->answers.fileDialogs().at(0);
        QCOMPARE(dialog.proposed, proposed);
        QVERIFY(dialog.saves);
        QCOMPARE(dialog.folder, world->path("sheetmusic"));
        QCOMPARE(dialog.filters, QStringList{"RTF Files (*.rtf)"});
        QVERIFY(QFile::exists(world->path("sheetmusic/" + proposed)));
    }

    void sheetErasesTheChordsOfThePage() {
        // Deliberate: behaviour 146.
        SheetMusic& w = open();
        write(w, 3);
        for (int page = 1; page <= 3; ++page) {
            w.fpSong->ActiveSheet(page);
            w.fpSong->SetText(7, ChartRow::LastChord, "G");
            w.fpSong->SetText(ChartColumn::Text, ChartRow::LastOdd, "last");
            w.fpSong->SetText(1, ChartRow::Spacer, "spacer");
        }
        w.fpSong->ActiveSheet(2);
        const QStringList lines = makeSheet();
        QCOMPARE(lines.value(1), QString::fromUtf8("Großer Gott, wir loben dich €"));
        QCOMPARE(lines.value(19), QStringLiteral("foot 2"));
        for (int page = 1; page <= 3; ++page) {
            const bool taken = page == 2;
            QCOMPARE(rowOf(w.fpSong, page, ChartRow::FirstChord).isEmpty(), taken);
            QCOMPARE(rowOf(w.fpSong, page, ChartRow::LastChord).isEmpty(), taken);
            QCOMPARE(rowOf(w.fpSong, page, ChartRow::LastOdd).isEmpty(), taken);
            QCOMPARE(rowOf(w.fpSong, page, ChartRow::Title),
                     QStringList{QString("Title %1").arg(page)});
            QCOMPARE(rowOf(w.fpSong, page, ChartRow::Spacer), QStringList{"spacer"});
            QCOMPARE(lyricsOf(w.fpSong, page).size(), 19);
        }
        QCOMPARE(w.fpSong->ActiveSheet(), 2);
        QVERIFY(w.fpSong->GridShowHoriz() && w.fpSong->GridShowVert());
    }

    void cancelKeepsTheChordsAndLeavesTheGridLinesHidden() {
        // Deliberate: behaviour 145.
        SheetMusic& w = open();
        write(w, 1);
        const QString before = stateOf(w.fpSong);
        world->answers.cancelFile();
        pick(w.mnuSend, w.mnuLyrics);
        QCOMPARE(stateOf(w.fpSong), before);
        QVERIFY(!w.fpSong->GridShowHoriz() && !w.fpSong->GridShowVert());
        QVERIFY(w.rtb->toPlainText().isEmpty());
        world->answers.file(world->path("sheetmusic/page.htm"));
        pick(w.mnuSend, w.mnuToHTML);
        QVERIFY(w.fpSong->GridShowHoriz() && w.fpSong->GridShowVert());
    }

    void secondSheetBeginsWithTheFirst() {
        // Deliberate: behaviour 147.
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "first");
        const QStringList first = makeSheet();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "second");
        const QStringList both = makeSheet();
        QCOMPARE(both, first + linesWith({"second"}).mid(1));
        QCOMPARE(rtfParagraphs(bytesOf(world->path(Sheet))).at(20).runs.at(0),
                 (RtfRun{"second", "Arial", 24, true, false}));
        // A new window begins without lines.
        w.Unload();
        settle();
        open();
        QCOMPARE(makeSheet(), linesWith({}));
    }

    void failingSaveIsReportedInTheStatusBarOnly() {
        // Deliberate: behaviour 146.
        SheetMusic& w = open();
        write(w, 1);
        answerWithLostFolder(world->answers, world->path("sheetmusic"), "sheet.rtf");
        pick(w.mnuSend, w.mnuLyrics);
        QVERIFY(rowOf(w.fpSong, 1, ChartRow::FirstChord).isEmpty());
        QVERIFY(w.fpSong->GridShowHoriz() && w.fpSong->GridShowVert());
        QCOMPARE(world->endStatus, -1);
        QCOMPARE(world->main().SB->SimpleText(),
                 "The lyric sheet could not be written to " +
                     QDir::toNativeSeparators(world->path("sheetmusic/gone/sheet.rtf")));
    }

    void importListsASheetWithItsMarkup() {
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "Abide with me");
        makeSheet();
        world->answers.file(world->path(Sheet));
        pick(w.mnuFile, w.mnuImport);
        const QStringList lines = columnOf(w.fpLoad, ImportColumn::Line);
        QVERIFY(lines.first().startsWith("{\\rtf1"));
        QCOMPARE(lines.filter("Abide with me\\par").size(), 1);
    }

    void pageOfAnotherHeightHasItsOwnLines() {
        SheetMusic& w = open();
        w.fpSong->MaxRows(60);
        w.fpSong->SetText(1, 60, "far below");
        QCOMPARE(makeSheet().size(), 29);
        w.fpSong->MaxRows(0);
        QCOMPARE(makeSheet().size(), 29);
    }
};

LORVANITE_TEST(TestLyricSheet)
#include "test_lyric_sheet.moc"
