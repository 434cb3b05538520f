// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The transpose window: its copy of the chart and its slider.
#include "charts/chart_test.h"

#include <QFile>
#include <QWheelEvent>

namespace {

QString keyStatement(const QString& name) {
    return QStringLiteral("SELECT noteValue FROM transpose WHERE colName = '%1' [1]").arg(name);
}

QString changedBy(int steps) { return QStringLiteral("Changed By %1 Semi-Tones").arg(steps); }

}  // namespace

class TestTranspose : public ChartTest {
    Q_OBJECT

    // Opens the transpose window for a chart with these chords in its first chord row.
    frmTranspose& openWith(const QStringList& chords) {
        SheetMusic& w = open();
        for (int i = 0; i < chords.size(); ++i)
            w.fpSong->SetText(i + 1, ChartRow::FirstChord, chords[i]);
        return openTranspose(w);
    }

    // Presses arrow keys and lets them rest, which is one move of the slider.
    static void press(frmTranspose& t, int steps) {
        t.Slider1->setFocus();
        for (int i = 0; i < qAbs(steps); ++i)
            QTest::keyClick(t.Slider1, steps < 0 ? Qt::Key_Left : Qt::Key_Right);
        const QString label = changedBy(t.Slider1->value());
        QTRY_COMPARE_WITH_TIMEOUT(t.lblNumSteps->text(), label, 60000);
    }

    // Moves the slider with the arrow keys; each step transposes.
    static void step(frmTranspose& t, int steps) {
        for (int i = 0; i < qAbs(steps); ++i) press(t, steps < 0 ? -1 : 1);
    }

    // Moves the slider in one step, like a drag that is reported once.
    static void moveTo(frmTranspose& t, int value) {
        t.Slider1->setSliderPosition(value);
        settle();
    }

    static QString cell(frmTranspose& t, int col, int row = 5, int page = 1) {
        return t.fpPreview->textAt(page, col, row);
    }

    void setRow(const QString& name, const QString& value) {
        world->sql(QStringLiteral("UPDATE transpose SET noteValue = '%2' WHERE colName = '%1'")
                       .arg(name, value));
    }

private Q_SLOTS:
    void windowShowsACopyOfTheChart() {
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Title, "Abide");
        w.fpSong->SetText(4, ChartRow::FirstChord, "D");
        w.addPage();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "second");
        w.fpSong->ActiveSheet(1);
        frmTranspose& t = openTranspose(w);
        QVERIFY(t.isVisible());
        QCOMPARE(t.windowTitle(), QStringLiteral("Transpose SheetMusic"));
        QCOMPARE(world->statements, QStringList{keyStatement("rootnote")});
        QCOMPARE(t.fpPreview->SheetCount(), 2);
        QCOMPARE(t.fpPreview->ActiveSheet(), 1);
        QCOMPARE(w.fpSong->ActiveSheet(), 2);  // deliberate: behaviour 143
        for (int page = 1; page <= 2; ++page) {
            QCOMPARE(t.fpPreview->colsOf(page), 37);
            QCOMPARE(t.fpPreview->rowsOf(page), 42);
            for (int row = 1; row <= 42; ++row) {
                QCOMPARE(rowOf(t.fpPreview, page, row), rowOf(w.fpSong, page, row));
                QCOMPARE(t.fpPreview->spanAt(page, 9, row), w.fpSong->spanAt(page, 9, row));
                QCOMPARE(t.fpPreview->formatAt(page, 9, row), w.fpSong->formatAt(page, 9, row));
                QCOMPARE(t.fpPreview->heightOf(page, row), 14.88);
            }
        }
        QVERIFY(t.fpPreview->AllowCellOverflow() && t.fpPreview->isVisible());
        QVERIFY(!t.fpPreview->ColHeadersShow() && !t.fpPreview->RowHeadersShow());
        QCOMPARE(t.Slider1->value(), 0);
        QCOMPARE(t.Slider1->minimum(), -12);
        QCOMPARE(t.Slider1->maximum(), 12);
        QCOMPARE(t.lblNumSteps->text(), QString());
        QCOMPARE(t.Label2->text().remove('&'),
                 QStringLiteral("Lower Key (By semi-tones or half steps.)"));
        QCOMPARE(t.Label3->text().remove('&'),
                 QStringLiteral("Raise Key (By semi-tones or half steps.)"));
        QVERIFY(!isOnTop(t.frmAssign));
    }

    void sliderTransposesAndShowsTheDistance() {
        frmTranspose& t = openWith({"C", "Am7", "F/G"});
        world->statements.clear();
        moveTo(t, 3);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord), (QStringList{"Eb", "Cm7", "Ab/Bb"}));
        QCOMPARE(t.lblNumSteps->text(), changedBy(3));
        QCOMPARE(world->statements, QStringList{keyStatement("p3")});  // read once
        QCOMPARE(SheetMusic::instance().fpSong->GetText(1, ChartRow::FirstChord),
                 QStringLiteral("C"));
        moveTo(t, -3);
        QCOMPARE(t.lblNumSteps->text(), QStringLiteral("Changed By -3 Semi-Tones"));
        QCOMPARE(world->statements.last(), keyStatement("n3"));
    }

    void movesAddUp() {
        // Deliberate: behaviour 141.
        frmTranspose& t = openWith({"C"});
        moveTo(t, 2);
        moveTo(t, 3);
        QCOMPARE(cell(t, 1), QStringLiteral("F"));
        QCOMPARE(t.lblNumSteps->text(), changedBy(3));
        click(t.cmdReset);
        step(t, 3);  // 1, 2 and 3 semi-tones
        QCOMPARE(cell(t, 1), QStringLiteral("F#"));
        QCOMPARE(t.lblNumSteps->text(), changedBy(3));
    }

    void runOfKeysIsOneMove() {
        frmTranspose& t = openWith({"C"});
        world->statements.clear();
        press(t, 3);
        QCOMPARE(cell(t, 1), QStringLiteral("Eb"));
        QCOMPARE(world->statements, QStringList{keyStatement("p3")});
    }

    void runOfKeysIsDoneBeforeAnotherCommand() {
        frmTranspose& t = openWith({"C"});
        t.Slider1->setFocus();
        for (int i = 0; i < 2; ++i) QTest::keyClick(t.Slider1, Qt::Key_Right);
        world->answers.file(world->path("sheetmusic/c.stp"));
        world->answers.question(TieQuestion, QMessageBox::No);
        click(t.cmdSaveSetList);
        QCOMPARE(cell(t, 1), QStringLiteral("D"));
        SheetGrid saved;
        QVERIFY(saved.LoadFromFile(world->path("sheetmusic/c.stp")));
        QCOMPARE(saved.GetText(1, ChartRow::FirstChord), QStringLiteral("D"));
    }

    void runBackToItsStartIsNoMove() {
        frmTranspose& t = openWith({"C"});
        world->statements.clear();
        t.Slider1->setFocus();
        QTest::keyClick(t.Slider1, Qt::Key_Right);
        QTest::keyClick(t.Slider1, Qt::Key_Left);
        click(t.fpPreview->viewport());
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(cell(t, 1), QStringLiteral("C"));
    }

    void clickBesideTheHandleGoesThereInOneMove() {
        frmTranspose& t = openWith({"C"});
        world->statements.clear();
        const QPoint place(t.Slider1->width() * 3 / 4, t.Slider1->height() / 2);
        QTest::mouseClick(t.Slider1, Qt::LeftButton, {}, place);
        settle();
        const int value = t.Slider1->value();
        QVERIFY2(value >= 5 && value <= 7, qPrintable(QString::number(value)));
        QCOMPARE(world->statements, QStringList{keyStatement(QStringLiteral("p%1").arg(value))});
        QCOMPARE(t.lblNumSteps->text(), changedBy(value));
    }

    void turnOfTheWheelIsOneMove() {
        frmTranspose& t = openWith({"C"});
        world->statements.clear();
        t.Slider1->setFocus();
        const QPoint place = t.Slider1->rect().center();
        for (const int angle : {120, 120, -120}) {
            QWheelEvent turn(place, t.Slider1->mapToGlobal(place), QPoint(), QPoint(0, angle),
                             Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(t.Slider1, &turn);
        }
        const int value = t.Slider1->value();
        QVERIFY(value > 0);
        QVERIFY(world->statements.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(t.lblNumSteps->text(), changedBy(value), 60000);
        QCOMPARE(world->statements, QStringList{keyStatement(QStringLiteral("p%1").arg(value))});
    }

    void dragIsReportedOnItsRelease() {
        frmTranspose& t = openWith({"C"});
        world->statements.clear();
        const QPoint middle = t.Slider1->rect().center();
        QTest::mousePress(t.Slider1, Qt::LeftButton, {}, middle);
        for (const int eighths : {1, 2, 3}) {
            const QPoint place = middle + QPoint(t.Slider1->width() * eighths / 8, 0);
            QMouseEvent move(QEvent::MouseMove, place, t.Slider1->mapToGlobal(place), Qt::NoButton,
                             Qt::LeftButton, {});
            QCoreApplication::sendEvent(t.Slider1, &move);
        }
        QVERIFY(t.Slider1->value() > 6);
        QVERIFY(world->statements.isEmpty());
        QTest::mouseRelease(t.Slider1, Qt::LeftButton, {},
                            middle + QPoint(t.Slider1->width() * 3 / 8, 0));
        QCOMPARE(world->statements,
                 QStringList{keyStatement(QStringLiteral("p%1").arg(t.Slider1->value()))});
    }

    void positionZeroWritesTheRootNotesUnchanged() {
        // Deliberate: behaviour 142.
        frmTranspose& t = openWith({"C#m", "D", "Ab/Db"});
        moveTo(t, 5);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord), (QStringList{"F#m", "G", "C#/F#"}));
        world->statements.clear();
        moveTo(t, 0);
        QCOMPARE(world->statements, QStringList{keyStatement("rootnote")});
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord),
                 (QStringList{"F#m", "G", "C#:Db/F#"}));
        QCOMPARE(t.lblNumSteps->text(), changedBy(0));
    }

    void resetMakesAFreshCopyWithoutTransposing() {
        frmTranspose& t = openWith({"C", "G"});
        moveTo(t, 4);
        SheetMusic::instance().fpSong->SetText(3, ChartRow::FirstChord, "D");
        world->statements.clear();
        click(t.cmdReset);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord), (QStringList{"C", "G", "D"}));
        QCOMPARE(t.lblNumSteps->text(), QString());
        QCOMPARE(t.Slider1->value(), 0);
        QVERIFY(world->statements.isEmpty());
    }

    void resetEmptiesCellsThatAreEmptyInTheChart() {
        frmTranspose& t = openWith({"C"});
        type(t.fpPreview, 4, ChartRow::FirstChord, "Am7");
        type(t.fpPreview, ChartColumn::Text, ChartRow::FirstLyric + 2, "a line of the copy");
        click(t.cmdReset);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord), QStringList{"C"});
        QVERIFY(lyricsOf(t.fpPreview, 1).isEmpty());
    }

    void secondCallKeepsSliderAndLabel() {
        // Deliberate: behaviour 143.
        frmTranspose& t = openWith({"C"});
        moveTo(t, 2);
        openTranspose(SheetMusic::instance());
        QCOMPARE(cell(t, 1), QStringLiteral("C"));
        QCOMPARE(t.Slider1->value(), 2);
        QCOMPARE(t.lblNumSteps->text(), changedBy(2));
        // Setting the value by program does not transpose.
        world->statements.clear();
        t.Slider1->setValue(7);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(cell(t, 1), QStringLiteral("C"));
    }

    void keyAtTheEndOfTheSliderDoesNotTranspose() {
        frmTranspose& t = openWith({"C"});
        moveTo(t, 12);
        world->statements.clear();
        step(t, 1);
        QVERIFY(world->statements.isEmpty());
    }

    void pagesOfALongerChartStayInTheCopy() {
        // Deliberate: behaviour 143.
        SheetMusic& w = open();
        w.addPage();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "second");
        frmTranspose& t = openTranspose(w);
        world->answers.question("Delete the selected page?", QMessageBox::Yes);
        pick(w.mnuPage, w.mnuDelPage);
        QCOMPARE(w.fpSong->SheetCount(), 1);
        openTranspose(w);
        QCOMPARE(t.fpPreview->SheetCount(), 2);
        QCOMPARE(lyricsOf(t.fpPreview, 2), QStringList{"second"});
    }

    void allPagesAreTransposedAtOnce() {
        SheetMusic& w = open();
        for (int page = 1; page <= 3; ++page) {
            if (page > 1) w.addPage();
            w.fpSong->SetText(page, ChartRow::LastChord, "G");
        }
        frmTranspose& t = openTranspose(w);
        t.fpPreview->ActiveSheet(2);
        world->statements.clear();
        moveTo(t, 2);
        for (int page = 1; page <= 3; ++page)
            QCOMPARE(cell(t, page, ChartRow::LastChord, page), QString("A"));
        QCOMPARE(world->statements.size(), 1);
        QCOMPARE(t.fpPreview->Sheet(), 2);
        QCOMPARE(t.fpPreview->ActiveSheet(), 2);
    }

    void onlyChordRowsAreTransposed() {
        SheetMusic& w = open();
        for (int row = 1; row <= 42; ++row) w.fpSong->SetText(1, row, "A");
        frmTranspose& t = openTranspose(w);
        moveTo(t, 2);
        for (int row = 1; row <= 42; ++row) {
            const bool chords = row >= 5 && row % 2 == 1;
            QCOMPARE(cell(t, 1, row), chords ? QStringLiteral("B") : QStringLiteral("A"));
        }
        QCOMPARE(cell(t, 1, ChartRow::LastOdd), QStringLiteral("B"));
        QCOMPARE(cell(t, 1, ChartRow::Last), QStringLiteral("A"));
    }

    void cellsAreTransposed_data() {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");  // two semi-tones up
        const QStringList pairs = {"G=A",           "Gsus4=Asus4",
                                   "F#m7=Abm7",     "Bb=C",
                                   "Bm=C#m",        "Dm7/C=Em7/D",
                                   "D/F#=E/Ab",     "Ebmaj7/Bb=Fmaj7/C",
                                   "Am7b5=Am7b5",   "Cmaj7#11=Cmaj7#11",
                                   "am=am",         " C= C",
                                   "Cb=Cb",         "Fb=Fb",
                                   "E#=E#",         "B#=B#",
                                   "Chorus=Dhorus", "H/C=H/C/D",
                                   "C/H=D",         "C/=D",
                                   "A/B/C=B/C#/C",  "7=7",
                                   "C#=Eb",         "Db=Eb",
                                   "N.C.=N.C.",     "/=/",
                                   "/C=/C/D",       "b=b"};
        for (const QString& pair : pairs) {
            const QStringList sides = pair.split('=');
            QTest::newRow(qPrintable("<" + sides[0] + ">")) << sides[0] << sides[1];
        }
    }
    void cellsAreTransposed() {
        // Deliberate: behaviours 138 and 140.
        QFETCH(QString, before);
        QFETCH(QString, after);
        frmTranspose& t = openWith({before});
        moveTo(t, 2);
        QCOMPARE(cell(t, 1), after);
    }

    void firstMatchingEntryWins() {
        // Deliberate: behaviour 139.
        setRow("rootnote", "C,C#:Db,D,D#:Eb,E,F,F#,G,G#:Ab,A,Bb,B");
        setRow("p1", "n0,n1,n2,n3,n4,n5,n6,n7,n8,n9,n10,n11");
        frmTranspose& t = openWith({"D#", "Eb", "C#", "Db", "G#", "A#", "Gb"});
        QCOMPARE(t.rootNotes[1], QStringLiteral("C#/Db"));
        moveTo(t, 1);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord),
                 (QStringList{"n1", "n3", "n1", "n1", "n8", "n8", "n8"}));
    }

    void missingKeyRowEndsTheProgram() {
        world->sql("DELETE FROM transpose WHERE colName = 'p4'");
        frmTranspose& t = openWith({"C"});
        world->answers.runTimeError(3021);
        moveTo(t, 4);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(cell(t, 1), QStringLiteral("C"));
    }

    void shortKeyRowEndsTheProgramAtTheMissingNote() {
        setRow("p1", "C#,D,Eb");
        frmTranspose& t = openWith({"C", "D", "E", "C"});
        world->answers.runTimeError(9);
        moveTo(t, 1);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord), (QStringList{"C#", "Eb", "E", "C"}));
    }

    void shortKeyRowTransposesTheOtherNotes() {
        setRow("p1", "C#,D,Eb");
        frmTranspose& t = openWith({"C", "C#", "D", "word"});
        moveTo(t, 1);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord),
                 (QStringList{"C#", "D", "Eb", "word"}));
    }

    void thirteenRootNotesEndTheProgram() {
        setRow("rootnote", "C,C#:Db,D,Eb,E,F,F#,G,G#:Ab,A,Bb,B,C");
        SheetMusic& w = open();
        world->answers.runTimeError(9);
        pick(w.mnuView, w.mnuTranspose);
        QCOMPARE(world->endStatus, 1);
    }

    void fewerRootNotesKeepTheOtherCells() {
        setRow("rootnote", "C,C#:Db,D");
        frmTranspose& t = openWith({"C", "D", "E", "Bb"});
        moveTo(t, 1);
        QCOMPARE(rowOf(t.fpPreview, 1, ChartRow::FirstChord), (QStringList{"C#", "Eb", "E", "Bb"}));
    }

    void missingRootRowEndsTheProgram() {
        world->sql("DELETE FROM transpose WHERE colName = 'rootnote'");
        SheetMusic& w = open();
        world->answers.runTimeError(3021);
        pick(w.mnuView, w.mnuTranspose);
        QCOMPARE(world->endStatus, 1);
    }

    void chartWithoutCellsIsReportedAndNotShown() {
        SheetMusic& w = open();
        w.fpSong->MaxRows(0);
        world->answers.box("save to buffer failed");
        pick(w.mnuView, w.mnuTranspose);
        QVERIFY(frmTranspose::isLoaded());
        QVERIFY(!frmTranspose::instance().isVisible());
        frmTranspose::instance().Unload();
    }

    void windowsThatWereNeverShownAreUnloadedAtTheEnd() {
        SheetMusic& w = open();
        frmTranspose& t = openTranspose(w);
        w.Unload();
        settle();
        // The copy is taken from the chart window, which comes into being for it.
        click(t.cmdReset);
        QVERIFY(!SheetMusic::instance().isVisible());
        t.Unload();
        settle();
        SheetMusic::instance().fpSong->MaxRows(0);
        world->answers.box("save to buffer failed");
        SheetMusic::instance().copyToTranspose();
        QVERIFY(!frmTranspose::instance().isVisible());
        const QPointer<QWidget> chart = &SheetMusic::instance();
        const QPointer<QWidget> copy = &frmTranspose::instance();
        world->stop();
        QVERIFY(!SheetMusic::isLoaded());
        QVERIFY(!frmTranspose::isLoaded());
        QVERIFY(!chart && !copy);
    }

    void copyIsSavedAsAnotherChartAndAssigned() {
        world->sql("INSERT INTO songs (title, fileLoco) VALUES ('Abide', 'old.stp')");
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Title, "Abide");
        w.fpSong->SetText(2, ChartRow::FirstChord, "D/F#");
        w.addPage();
        frmTranspose& t = openTranspose(w);
        moveTo(t, 3);
        const QString path = world->path("sheetmusic/abide in F.stp");
        world->answers.file(path);
        world->answers.question(TieQuestion, QMessageBox::Yes);
        click(t.cmdSaveSetList);
        QVERIFY(world->answers.fileDialogs().at(0).saves);
        QVERIFY(isOnTop(t.frmAssign));
        QCOMPARE(t.lblAssign->text(), "Song Location: " + QDir::toNativeSeparators(path));
        QCOMPARE(columnOf(t.fpAttach, AttachColumn::Title), QStringList{"Abide"});
        // Deliberate: behaviour 130.
        clickCell(t.fpAttach, AttachColumn::Title, 1);
        QCOMPARE(t.lblAssignSong->text(), QString());
        click(t.cmdCloseAssign);
        QVERIFY(isOnTop(t.frmAssign));
        world->answers.box("Done!", QMessageBox::Information);
        click(t.cmdSaveAssigned);
        QCOMPARE(world->rows("SELECT fileLoco FROM songs"),
                 QStringList{QDir::toNativeSeparators(path)});
        world->answers.file(path);
        pick(w.mnuFile, w.mnuOpen);
        QCOMPARE(w.fpSong->SheetCount(), 2);
        QCOMPARE(w.fpSong->textAt(1, 2, ChartRow::FirstChord), QStringLiteral("F/A"));
        QCOMPARE(w.fpSong->textAt(1, ChartColumn::Text, ChartRow::Title), QStringLiteral("Abide"));
    }

    void withoutASongTheUserIsAskedToSelectOne() {
        frmTranspose& t = openWith({"C"});
        world->answers.file(world->path("sheetmusic/c.stp"));
        world->answers.question(TieQuestion, QMessageBox::Yes);
        click(t.cmdSaveSetList);
        world->answers.box(NoSongToTie, QMessageBox::Information);
        click(t.cmdSaveAssigned);
    }

    void mouseMovesTheSlider() {
        frmTranspose& t = openWith({"C"});
        world->statements.clear();
        // Drags the handle from the middle to the right end in one move.
        const QPoint middle = t.Slider1->rect().center() - QPoint(0, 4);
        const QPoint end = middle + QPoint(t.Slider1->width() / 2, 0);
        QTest::mousePress(t.Slider1, Qt::LeftButton, {}, middle);
        QMouseEvent move(QEvent::MouseMove, end, t.Slider1->mapToGlobal(end), Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(t.Slider1, &move);
        QTest::mouseRelease(t.Slider1, Qt::LeftButton, {}, end);
        settle();
        QCOMPARE(world->statements.size(), 1);
        QCOMPARE(t.Slider1->value(), 12);
        QCOMPARE(t.lblNumSteps->text(), changedBy(12));
    }
};

LORVANITE_TEST(TestTranspose)
#include "test_transpose.moc"
