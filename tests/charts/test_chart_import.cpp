// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Importing the lines of a text file that the user has marked.
#include "charts/chart_test.h"

#include <QRandomGenerator>

namespace {

QByteArray numbered(const QString& word, int from, int to) {
    QByteArray lines;
    for (int i = from; i <= to; ++i) lines += QStringLiteral("%1 %2\n").arg(word).arg(i).toUtf8();
    return lines;
}

int colourOf(SheetView* grid, int row) {
    grid->Col(1);
    grid->Row(row);
    return grid->BackColor();
}

}  // namespace

class TestChartImport : public ChartTest {
    Q_OBJECT

    void import(SheetMusic& w, const QByteArray& bytes, const QString& name = "song.txt") {
        world->answers.file(makeFile("sheetmusic/" + name, bytes));
        pick(w.mnuFile, w.mnuImport);
    }

    SheetMusic& openWith(const QByteArray& bytes) {
        SheetMusic& w = open();
        import(w, bytes);
        return w;
    }

    // Marks rows with the button of a mode and clicks.
    static void mark(SheetMusic& w, QPushButton* mode, const QList<int>& rows) {
        click(mode);
        for (const int row : rows) clickCell(w.fpLoad, ImportColumn::Line, row);
    }

    static void markRange(SheetMusic& w, QPushButton* mode, int first, int last) {
        click(mode);
        for (int row = first; row <= last; ++row)
            markLine(*w.fpLoad, ImportColumn::Line, row, w.importMode);
    }

    static QStringList linesOf(SheetMusic& w) {
        QStringList lines = columnOf(w.fpLoad, ImportColumn::Line);
        while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
        return lines;
    }

private Q_SLOTS:
    void importListsTheLinesAndRaisesThePanel() {
        SheetMusic& w = open();
        QVERIFY(!isOnTop(w.frmImport));
        import(w, "Abide with me\r\n\r\nD  A7\r\nAbide with me\r\n");
        QVERIFY(isOnTop(w.frmImport));
        QCOMPARE(linesOf(w), (QStringList{"Abide with me", "D  A7", "Abide with me"}));
        QCOMPARE(w.fpLoad->MaxRows(), 500);
        QCOMPARE(w.fpLoad->MaxCols(), 1);
        const auto& dialog = world->answers.fileDialogs().at(0);
        QVERIFY(!dialog.saves);
        QCOMPARE(dialog.filters, QStringList{"Text Files (*.txt *.rtf)"});
        QCOMPARE(dialog.folder, world->path("sheetmusic"));
        QCOMPARE(world->main().CommonDlg.Filter,
                 QStringLiteral("Text Files(*.txt, *.rtf)|*.txt;*.rtf"));
    }

    void panelShowsTheActiveMark() {
        SheetMusic& w = openWith(numbered("line", 1, 3));
        const auto shown = [&] {
            return QList<bool>{w.Command2->isChecked(), w.Command3->isChecked(),
                               w.FlatBttn2->isChecked()};
        };
        QCOMPARE(shown(), (QList<bool>{false, false, false}));
        click(w.Command3);
        QCOMPARE(shown(), (QList<bool>{false, true, false}));
        // A second click on the same button keeps the mark.
        click(w.Command3);
        QCOMPARE(shown(), (QList<bool>{false, true, false}));
        QCOMPARE(w.importMode, QStringLiteral("chords"));
        click(w.FlatBttn2);
        QCOMPARE(shown(), (QList<bool>{false, false, true}));
        click(w.cmdDone);
        // The mark is still active at the next import.
        import(w, numbered("line", 1, 3));
        QCOMPARE(shown(), (QList<bool>{false, false, true}));
        click(w.FlatBttn1);
        QCOMPARE(shown(), (QList<bool>{false, false, false}));
    }

    void cancelClosesThePanelAndKeepsTheChart() {
        for (const bool byKey : {false, true}) {
            SheetMusic& w = openWith("one\ntwo\n");
            w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "mine");
            mark(w, w.FlatBttn2, {1, 2});
            QApplication::setActiveWindow(w.window());  // the dialog has taken it
            if (byKey)
                QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
            else
                click(w.cmdCancelImport);
            QVERIFY(!isOnTop(w.frmImport));
            QCOMPARE(w.focusWidget(), w.fpSong);
            QCOMPARE(lyricsOf(w.fpSong, 1), QStringList{"mine"});
            w.Unload();
            settle();
        }
    }

    void panelSaysWhenThePageIsNotEmpty() {
        SheetMusic& w = openWith("one\n");
        QVERIFY(!w.lblImport->isVisible());
        mark(w, w.FlatBttn2, {1});
        click(w.cmdDone);
        import(w, "two\n");
        QVERIFY(w.lblImport->isVisible());
        QVERIFY(w.lblImport->text().contains("not empty"));
        // Deliberate: behaviour 133. The import writes over it all the same.
        click(w.cmdDone);
        QCOMPARE(lyricsOf(w.fpSong, 1), QStringList{"two"});
    }

    void panelSaysWhatCannotBeImported() {
        SheetMusic& w = openWith(numbered("line", 1, 101) + QByteArray("C ").repeated(31) + "\n");
        const auto markLyric = [&](int row) {
            w.fpLoad->scrollTo(w.fpLoad->model()->index(row - 1, 0));
            mark(w, w.FlatBttn2, {row});
        };
        markLyric(100);
        QVERIFY(!w.lblImport->isVisible());
        markLyric(101);
        QVERIFY2(w.lblImport->text().contains("Line 101 is marked"),
                 qPrintable(w.lblImport->text()));
        markLyric(101);
        QVERIFY(!w.lblImport->isVisible());
        import(w, "C D\n" + QByteArray("C ").repeated(31) + "\n");
        mark(w, w.Command3, {1});
        QVERIFY(!w.lblImport->isVisible());
        mark(w, w.Command3, {2});
        QVERIFY2(w.lblImport->text().contains("Line 2 has 31 chords"),
                 qPrintable(w.lblImport->text()));
        click(w.FlatBttn1);
        QVERIFY(!w.lblImport->isVisible());
    }

    void markedLinesGoToTheirRows() {
        SheetMusic& w = openWith(
            "Abide with me\n  words: Lyte  \nD  A7/C#   Bm\nAbide with me\n"
            "not used\n  fast falls  the eventide \n");
        mark(w, w.Command2, {1, 2});
        QCOMPARE(w.importMode, QStringLiteral("title"));
        mark(w, w.Command3, {3});
        mark(w, w.FlatBttn2, {4, 6});
        QCOMPARE(colourOf(w.fpLoad, 1), 13172680);
        QCOMPARE(colourOf(w.fpLoad, 3), 16763080);
        QCOMPARE(colourOf(w.fpLoad, 4), 13158655);
        click(w.cmdDone);
        QVERIFY(!isOnTop(w.frmImport));
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::Title),
                 QStringLiteral("Abide with me"));
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::Title + 1),
                 QStringLiteral("words: Lyte"));
        for (int k = 1; k <= 3; ++k)
            QCOMPARE(w.fpSong->GetText(k, ChartRow::FirstChord),
                     QStringList({"D", "A7/C#", "Bm"})[k - 1]);
        QCOMPARE(lyricsOf(w.fpSong, 1), (QStringList{"Abide with me", "fast falls  the eventide"}));
        QCOMPARE(w.fpSong->SheetCount(), 1);
        QCOMPARE(w.importMode, QStringLiteral("lyrics"));
    }

    void twentyLyricLinesFillASecondPage() {
        SheetMusic& w = openWith(numbered("line", 1, 20));
        markRange(w, w.FlatBttn2, 1, 20);
        click(w.cmdDone);
        QCOMPARE(w.fpSong->SheetCount(), 2);
        QCOMPARE(w.fpSong->ActiveSheet(), 2);
        const QStringList first = lyricsOf(w.fpSong, 1);
        QCOMPARE(first.size(), 18);
        QCOMPARE(w.fpSong->textAt(1, ChartColumn::Text, ChartRow::LastLyric),
                 QStringLiteral("line 18"));
        QCOMPARE(w.fpSong->textAt(1, ChartColumn::Text, ChartRow::Last), QString());
        QCOMPARE(lyricsOf(w.fpSong, 2), (QStringList{"line 19", "line 20"}));
    }

    void eighteenLyricLinesAddAPageToo() {
        // Deliberate: behaviour 136.
        SheetMusic& w = openWith(numbered("line", 1, 18));
        markRange(w, w.FlatBttn2, 1, 18);
        click(w.cmdDone);
        QCOMPARE(w.fpSong->SheetCount(), 2);
        QVERIFY(lyricsOf(w.fpSong, 2).isEmpty());
    }

    void newPageIsAddedAtTheEndAndShown() {
        SheetMusic& w = open();
        w.addPage();
        w.addPage();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "third");
        w.fpSong->ActiveSheet(2);
        import(w, numbered("line", 1, 19));
        markRange(w, w.FlatBttn2, 1, 19);
        click(w.cmdDone);
        QCOMPARE(w.fpSong->SheetCount(), 4);
        QCOMPARE(w.fpSong->ActiveSheet(), 4);
        QCOMPARE(lyricsOf(w.fpSong, 2).size(), 18);
        QCOMPARE(lyricsOf(w.fpSong, 3), QStringList{"third"});
        QCOMPARE(lyricsOf(w.fpSong, 4), QStringList{"line 19"});
        QVERIFY(lyricsOf(w.fpSong, 1).isEmpty());
    }

    void unmarkedRowsLeaveNoGap() {
        SheetMusic& w = openWith(numbered("line", 1, 9));
        mark(w, w.FlatBttn2, {2, 5, 9});
        click(w.cmdDone);
        QCOMPARE(lyricsOf(w.fpSong, 1), (QStringList{"line 2", "line 5", "line 9"}));
    }

    void tabsBlanksAndColonsSeparateChords() {
        // Deliberate: behaviour 135.
        SheetMusic& w = openWith("G\tC\t\tD7\nG C  D7\nG:C::D7\n \t G \t:C: D7 : \n");
        mark(w, w.Command3, {1, 2, 3, 4});
        click(w.cmdDone);
        for (const int row : {5, 7, 9, 11}) {
            QCOMPARE(rowOf(w.fpSong, 1, row), (QStringList{"G", "C", "D7"}));
            QCOMPARE(w.fpSong->GetText(3, row), QStringLiteral("D7"));
        }
    }

    void titleKeepsItsInnerBlanks() {
        SheetMusic& w = openWith("   Be   Thou  my Vision   \n");
        mark(w, w.Command2, {1});
        click(w.cmdDone);
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::Title),
                 QStringLiteral("Be   Thou  my Vision"));
    }

    void titleRowsHaveNoLimit() {
        // Deliberate: behaviour 137.
        SheetMusic& w = openWith(numbered("title", 1, 5) + "A B\n");
        mark(w, w.Command2, {1, 2, 3, 4, 5});
        click(w.cmdDone);
        for (int row = 1; row <= 5; ++row)
            QCOMPARE(w.fpSong->GetText(1, row), QString("title %1").arg(row));
    }

    void chordLinesAreNotPairedWithLyrics() {
        // Deliberate: behaviour 136.
        SheetMusic& w = openWith("C\none\ntwo\nG\nthree\n");
        mark(w, w.Command3, {1, 4});
        mark(w, w.FlatBttn2, {2, 3, 5});
        click(w.cmdDone);
        QCOMPARE(w.fpSong->GetText(1, ChartRow::FirstChord + 2), QStringLiteral("G"));
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::FirstLyric + 4),
                 QStringLiteral("three"));
    }

    void secondClickRemovesAllMarksButATitle() {
        // Deliberate: behaviour 132.
        SheetMusic& w = openWith(numbered("line", 1, 3));
        mark(w, w.Command2, {1, 1});
        QCOMPARE(colourOf(w.fpLoad, 1), TitleMark);
        mark(w, w.Command3, {2, 2});
        QCOMPARE(colourOf(w.fpLoad, 2), White);
        mark(w, w.FlatBttn2, {3, 3});
        QCOMPARE(colourOf(w.fpLoad, 3), White);
        // A new mark replaces another one.
        mark(w, w.Command3, {1});
        QCOMPARE(colourOf(w.fpLoad, 1), ChordMark);
        mark(w, w.FlatBttn2, {1});
        QCOMPARE(colourOf(w.fpLoad, 1), LyricMark);
    }

    void clearRemovesMarksAndMode() {
        SheetMusic& w = openWith(numbered("line", 1, 3));
        mark(w, w.Command2, {1});
        mark(w, w.FlatBttn2, {2, 3});
        click(w.FlatBttn1);
        for (int row = 1; row <= 3; ++row) QCOMPARE(colourOf(w.fpLoad, row), White);
        QVERIFY(w.importMode.isEmpty());
        clickCell(w.fpLoad, ImportColumn::Line, 2);
        QCOMPARE(colourOf(w.fpLoad, 2), White);
        click(w.cmdDone);
        QCOMPARE(w.fpSong->DataRowCnt(), 0);
    }

    void secondImportKeepsTheMarks() {
        // Deliberate: behaviour 133.
        SheetMusic& w = openWith(numbered("old", 1, 4));
        mark(w, w.FlatBttn2, {2, 4});
        click(w.cmdDone);
        import(w, numbered("new", 1, 3));
        QVERIFY(isOnTop(w.frmImport));
        QCOMPARE(linesOf(w), (QStringList{"new 1", "new 2", "new 3"}));
        QCOMPARE(colourOf(w.fpLoad, 2), LyricMark);
        QCOMPARE(colourOf(w.fpLoad, 4), LyricMark);
        QCOMPARE(w.importMode, QStringLiteral("lyrics"));
        click(w.cmdDone);
        QCOMPARE(lyricsOf(w.fpSong, 1), (QStringList{"new 2", "old 4"}));
        // "Clear" removes the marks of rows that hold a line only.
        import(w, numbered("new", 1, 3));
        click(w.FlatBttn1);
        QCOMPARE(colourOf(w.fpLoad, 2), White);
        QCOMPARE(colourOf(w.fpLoad, 4), LyricMark);
    }

    void emptyLinesAreLeftOut() {
        SheetMusic& w = openWith("\n\none\n\n\n\ntwo\r\n\r\nthree\n\n");
        QCOMPARE(linesOf(w), (QStringList{"one", "two", "three"}));
    }

    void lineWithOnlyAByteOrderMarkIsLeftOut() {
        SheetMusic& w = openWith("one\n\xEF\xBB\xBF\ntwo\n");
        QCOMPARE(linesOf(w), (QStringList{"one", "two"}));
    }

    void allLineEndsAreAccepted_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("LF") << QByteArray("a\nb\nc\n");
        QTest::newRow("CRLF") << QByteArray("a\r\nb\r\nc\r\n");
        QTest::newRow("CR") << QByteArray("a\rb\rc");
        QTest::newRow("mixed") << QByteArray("a\r\nb\rc\n");
        QTest::newRow("no end") << QByteArray("a\nb\nc");
    }
    void allLineEndsAreAccepted() {
        QFETCH(QByteArray, bytes);
        QCOMPARE(linesOf(openWith(bytes)), (QStringList{"a", "b", "c"}));
    }

    void encodingsAreRecognised_data() {
        QTest::addColumn<QByteArray>("bytes");
        const QString text = QString::fromUtf8("„Größe“ – Señor’s €\n");
        QTest::newRow("UTF-8") << text.toUtf8();
        QTest::newRow("UTF-8 with a byte order mark") << "\xef\xbb\xbf" + text.toUtf8();
        QByteArray wide("\xff\xfe");
        for (const QChar c : text) wide.append(char(c.cell())).append(char(c.row()));
        QTest::newRow("UTF-16") << wide;
        QTest::newRow("Windows") << QByteArray(
            "\x84Gr\xf6\xdf"
            "e\x93 \x96 Se\xf1or\x92s \x80\n");
    }
    void encodingsAreRecognised() {
        QFETCH(QByteArray, bytes);
        QCOMPARE(linesOf(openWith(bytes)), QStringList{QString::fromUtf8("„Größe“ – Señor’s €")});
    }

    void rtfIsListedWithItsMarkup() {
        // Deliberate: behaviour 135.
        SheetMusic& w = open();
        const QByteArray rtf = "{\\rtf1\\ansi\r\n{\\b Abide}\\par\r\nwith me\\par\r\n}\r\n";
        import(w, rtf, "song.rtf");
        QCOMPARE(linesOf(w),
                 (QStringList{"{\\rtf1\\ansi", "{\\b Abide}\\par", "with me\\par", "}"}));
    }

    void cancelledImportChangesNothing() {
        SheetMusic& w = openWith("one\n");
        mark(w, w.FlatBttn2, {1});
        click(w.cmdDone);
        world->answers.cancelFile();
        pick(w.mnuFile, w.mnuImport);
        QVERIFY(!isOnTop(w.frmImport));
        QCOMPARE(linesOf(w), QStringList{"one"});
    }

    void missingFileHasNoLines() {
        SheetMusic& w = openWith("one\n");
        const QString path = makeFile("sheetmusic/gone.txt", "x");
        world->answers.custom("file that disappears", [path](QWidget* dialog) {
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(path);
            QMetaObject::invokeMethod(dialog, "accept");
            QFile::remove(path);
        });
        pick(w.mnuFile, w.mnuImport);
        QVERIFY(linesOf(w).isEmpty());
        QVERIFY(isOnTop(w.frmImport));
        QCOMPARE(world->endStatus, -1);
    }

    void helpShowsHowToMark() {
        SheetMusic& w = openWith("one\n");
        world->answers.box(
            "To import a song you must assign the rows  \r"
            "in the imported song to be a title, chord, or lyric row.  \r"
            "To do so, click on the Title button, then click on your \r"
            "imported songs' title.  Click on the Chords button then \r"
            "click on all of the chord rows in the song.  Do the same \r"
            "for Lyrics: Click on the Lyric button then click on all \r"
            "of the lyric lines in the song.  When finished, click done.",
            QMessageBox::Information);
        click(w.Command11);
    }

    void linesBeyond500AreCut() {
        SheetMusic& w = openWith(numbered("line", 1, 700));
        const QStringList lines = linesOf(w);
        QCOMPARE(lines.size(), 500);
        QCOMPARE(lines.last(), QStringLiteral("line 500"));
    }

    void markBelowRow100EndsTheProgramAndKeepsTheChart() {
        // Deliberate: behaviour 134.
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "stays");
        import(w, numbered("line", 1, 150));
        mark(w, w.FlatBttn2, {1});
        w.fpLoad->SetActiveCell(ImportColumn::Line, 101);
        clickCell(w.fpLoad, ImportColumn::Line, 101);
        QCOMPARE(colourOf(w.fpLoad, 101), LyricMark);
        world->answers.runTimeError(9);
        click(w.cmdDone);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(lyricsOf(w.fpSong, 1), QStringList{"stays"});
    }

    void row100IsTheLastToBeImported() {
        SheetMusic& w = openWith(numbered("line", 1, 150));
        markRange(w, w.FlatBttn2, 100, 100);
        click(w.cmdDone);
        QCOMPARE(lyricsOf(w.fpSong, 1), QStringList{"line 100"});
        QCOMPARE(world->endStatus, -1);
    }

    void thirtyChordsFitAndOneMoreEndsTheProgram() {
        // Deliberate: behaviour 134.
        QByteArray thirty;
        for (int i = 1; i <= 30; ++i) thirty += "C" + QByteArray::number(i) + ' ';
        SheetMusic& w = openWith(thirty + "\n" + thirty + "Z\n");
        mark(w, w.Command3, {1});
        click(w.cmdDone);
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord).size(), 30);
        QCOMPARE(w.fpSong->GetText(30, ChartRow::FirstChord), QStringLiteral("C30"));
        pick(w.mnuFile, w.mnuNew);
        import(w, "D\n" + thirty + "Z\n");
        mark(w, w.Command3, {2});
        world->answers.runTimeError(9);
        click(w.cmdDone);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord),
                 QStringList{"D"});  // written before the failure
        QVERIFY(rowOf(w.fpSong, 1, ChartRow::FirstChord + 2).isEmpty());
    }

    void importOverwritesThePageShown() {
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "old");
        w.fpSong->SetText(4, ChartRow::FirstChord, "E");
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric + 2, "stays");
        import(w, "A B\nnew\n");
        mark(w, w.Command3, {1});
        mark(w, w.FlatBttn2, {2});
        click(w.cmdDone);
        QCOMPARE(lyricsOf(w.fpSong, 1), (QStringList{"new", "stays"}));
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord), (QStringList{"A", "B", "E"}));
    }

    void bigAndBinaryFilesNeitherHangNorTouchTheChart_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("10 MB of lines") << numbered("a line of a long file", 1, 400000);
        QTest::newRow("10 MB of empty lines") << QByteArray(10 << 20, '\n');
        QTest::newRow("10 MB in one line") << QByteArray(10 << 20, 'x');
        QTest::newRow("10 MB of zeros") << QByteArray(10 << 20, '\0');
        QByteArray noise(10 << 20, Qt::Uninitialized);
        QRandomGenerator random(7);
        for (char& c : noise) c = char(random.bounded(256));
        QTest::newRow("10 MB of noise") << noise;
    }
    void bigAndBinaryFilesNeitherHangNorTouchTheChart() {
        QFETCH(QByteArray, bytes);
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "stays");
        w.fpSong->SetText(3, ChartRow::FirstChord, "F#");
        import(w, bytes, "big.txt");
        QVERIFY(isOnTop(w.frmImport));
        QVERIFY(linesOf(w).size() <= 500);
        w.fpLoad->grab();
        click(w.FlatBttn1);
        click(w.cmdDone);
        QCOMPARE(lyricsOf(w.fpSong, 1), QStringList{"stays"});
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord), QStringList{"F#"});
    }

    void keyboardMarksLikeTheMouse() {
        SheetMusic& w = openWith(numbered("line", 1, 4));
        click(w.FlatBttn2);
        w.fpLoad->SetActiveCell(ImportColumn::Line, 1);
        w.fpLoad->setFocus();
        QTest::keyClick(w.fpLoad, Qt::Key_Down);
        QTest::keyClick(w.fpLoad, Qt::Key_Space);
        QCOMPARE(colourOf(w.fpLoad, 2), LyricMark);
        QCOMPARE(colourOf(w.fpLoad, 1), White);
    }
};

LORVANITE_TEST(TestChartImport)
#include "test_chart_import.moc"
