// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Finalising, saving, loading, the start-up schedule.
#include "sets/frm_set_list.h"
#include "team/schedule_test.h"

#include <QFile>

namespace {

const QString Finalise =
    QStringLiteral("Would you like to finalize this schedule and save the players list?");
const QString Players = QStringLiteral("Save Players List");
const QString PickOne = QStringLiteral("Would you like to pick a schedule to display?");

}  // namespace

class TestScheduleFiles : public ScheduleTest {
    Q_OBJECT

    QStringList finalised() {
        return world->rows("SELECT player, instrument, pdate FROM schedule ORDER BY rowid");
    }

    QStringList settings() {
        return world->rows(
            "SELECT var_value FROM prefs WHERE var_name IN ('SchedOnStartUp', "
            "'ScedToUse') ORDER BY var_name DESC");
    }

    void finaliseOnly(frmSchedule& w) {
        world->answers.question(Finalise, QMessageBox::Yes, Players);
        world->answers.cancelFile();
        click(w.cmdSaveSched);
    }

private Q_SLOTS:
    void saveFinalisesAndWritesTheFile() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1),
                              QStringLiteral("Piano:Anna Berg"));
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 3,
                              QStringLiteral("Sound:left:Bob"));
        w.fpSchedule->SetText(ScheduleColumn::Team, lastRowOf(2),
                              QStringLiteral("Piano:Anna Berg"));
        world->statements.clear();
        world->answers.question(Finalise, QMessageBox::Yes, Players);
        world->answers.fileAsProposed();
        click(w.cmdSaveSched);
        QCOMPARE(
            world->statements,
            (QStringList{"DELETE FROM schedule WHERE pdate = '11/22/26' [3]",
                         "INSERT INTO schedule (player, instrument, pdate) VALUES ('Anna Berg', "
                         "'Piano', '11/22/26') [3]",
                         "INSERT INTO schedule (player, instrument, pdate) VALUES ('left:Bob', "
                         "'Sound', '11/22/26') [3]",
                         "DELETE FROM schedule WHERE pdate = '11/29/26' [3]",
                         "INSERT INTO schedule (player, instrument, pdate) VALUES ('Anna Berg', "
                         "'Piano', '11/29/26') [3]"}));
        const auto& dialog = world->answers.fileDialogs().back();
        QCOMPARE(dialog.proposed, QStringLiteral("11_22_26 to 11_29_26"));
        QCOMPARE(dialog.folder, world->path("schedules"));
        QCOMPARE(dialog.filters, QStringList{"SCD Files (*.scd)"});
        QVERIFY(dialog.saves);
        SheetGrid read;
        QVERIFY(read.LoadFromFile(world->path("schedules/11_22_26 to 11_29_26.scd")));
        QCOMPARE(read.GetText(ScheduleColumn::Team, dateRowOf(1) + 3),
                 QStringLiteral("Sound:left:Bob"));
    }

    void everythingOfAScheduleSurvivesTheFile() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "5");
        click(w.cmdRefresh);
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 1,
                              QStringLiteral("Bring the bells\u00a0— früh"));
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1), "Piano:Anna Berg");
        world->answers.question(Finalise, QMessageBox::No, Players);
        world->answers.fileAsProposed();
        click(w.cmdSaveSched);
        SheetGrid read;
        QVERIFY(read.LoadFromFile(world->path("schedules/06_12_05 to 07_10_05.scd")));
        QCOMPARE(read.MaxRows(), 500);
        QCOMPARE(read.MaxCols(), 4);
        for (int row = 0; row <= 500; ++row)
            for (int col = 0; col <= 4; ++col) {
                QCOMPARE(read.GetText(col, row), w.fpSchedule->GetText(col, row));
                QVERIFY(read.formatAt(1, col, row) == w.fpSchedule->formatAt(1, col, row));
            }
        QVERIFY(read.spansOf(1) == w.fpSchedule->spansOf(1));
        for (int col = 1; col <= 4; ++col)
            QCOMPARE(read.ColWidth(col), w.fpSchedule->ColWidth(col));
    }

    void saveAnsweredNoStillOffersTheFile() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1),
                              QStringLiteral("Piano:Anna Berg"));
        world->answers.question(Finalise, QMessageBox::No, Players);
        world->answers.file(world->path("schedules/mine.scd"));
        click(w.cmdSaveSched);
        QVERIFY(finalised().isEmpty());
        QVERIFY(QFile::exists(world->path("schedules/mine.scd")));
    }

    void cancelledSaveHasFinalisedTheSchedule() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1),
                              QStringLiteral("Piano:Anna Berg"));
        finaliseOnly(w);
        QCOMPARE(finalised(), QStringList{"Anna Berg|Piano|11/22/26"});
        QVERIFY(!QFile::exists(world->path("schedules/11_22_26 to 11_22_26.scd")));
    }

    // Deliberate: behaviour 101.
    void weekWithoutADateIsNotFinalisedAndItsOldRowsStay() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1),
                              QStringLiteral("Piano:Anna Berg"));
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(2),
                              QStringLiteral("Piano:Anna Berg"));
        finaliseOnly(w);
        menu(ScheduleColumn::Date, dateRowOf(1), w.mnuDelete);
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1),
                              QStringLiteral("Piano:Someone Else"));
        finaliseOnly(w);
        QCOMPARE(finalised(),
                 (QStringList{"Anna Berg|Piano|11/22/26", "Anna Berg|Piano|11/29/26"}));
    }

    void finalisingAgainRemovesDeletedNames() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1),
                              QStringLiteral("Piano:Anna Berg"));
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 1,
                              QStringLiteral("Alto:Anna Berg"));
        finaliseOnly(w);
        // One person in two cells gives two rows.
        QCOMPARE(finalised(), (QStringList{"Anna Berg|Piano|11/22/26", "Anna Berg|Alto|11/22/26"}));
        menu(ScheduleColumn::Team, dateRowOf(1), w.mnuDelete);
        finaliseOnly(w);
        QCOMPARE(finalised(), QStringList{"Anna Berg|Alto|11/22/26"});
    }

    // Deliberate: behaviour 101.
    void dateThatOccursTwiceKeepsItsSecondWeek() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1), QStringLiteral("Piano:First"));
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(2), QStringLiteral("Piano:Second"));
        finaliseOnly(w);
        QCOMPARE(finalised(), QStringList{"Second|Piano|11/22/26"});
    }

    void enterDoesNotFinalise() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1), "Piano:Anna Berg");
        world->answers.custom("question", [](QWidget* box) {
            QCOMPARE(qobject_cast<QMessageBox*>(box)->text(), Finalise);
            QTest::keyClick(box, Qt::Key_Return);
        });
        world->answers.cancelFile();
        click(w.cmdSaveSched);
        QVERIFY(finalised().isEmpty());
    }

    // Deliberate: behaviour 100.
    void finalisingANewScheduleOfTwoWeeksStopsAfterTheFirst() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "2");
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1), "Piano:Anna Berg");
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(2), "Piano:Anna Berg");
        world->answers.question(Finalise, QMessageBox::Yes, Players);
        world->answers.runTimeError(5,
                                    "The week of 06/12/05 is finalised; the head \"Worship Team\"");
        click(w.cmdSaveSched);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(finalised(), QStringList{"Anna Berg|Piano|06/12/05"});
        QVERIFY(!QFile::exists(world->path("schedules/06_12_05 to 06_19_05.scd")));
    }

    void newScheduleOfOneWeekIsFinalised() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1), "Piano:Anna Berg");
        finaliseOnly(w);
        QCOMPARE(finalised(), QStringList{"Anna Berg|Piano|06/12/05"});
        QCOMPARE(world->endStatus, -1);
    }

    void textWithoutAColonEndsTheProgram() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1), "A guest");
        world->answers.question(Finalise, QMessageBox::Yes, Players);
        world->answers.runTimeError(5, "The team of 11/22/26 has the entry \"A guest\".");
        click(w.cmdSaveSched);
        QCOMPARE(world->endStatus, 1);
    }

    void joinedNotesAreSplit() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 2, QStringLiteral("joined"));
        w.fpSchedule->AddCellSpan(ScheduleColumn::Notes, dateRowOf(1) + 2, 2, 3);
        finaliseOnly(w);
        QCOMPARE(w.fpSchedule->spansOf(1).size(), size_t(1));
        QCOMPARE(w.fpSchedule->spansOf(1)[0].row, 1);
    }

    // Deliberate: behaviour 102.
    void titleWithoutADateEndsTheProgram() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(1, ScheduleRow::Title, QStringLiteral("Our plan"));
        world->answers.question(Finalise, QMessageBox::No, Players);
        world->answers.runTimeError(5, "The title in row 1 has no date");
        click(w.cmdSaveSched);
        QCOMPARE(world->endStatus, 1);
    }

    void fileThatCannotBeWrittenIsReported() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        world->answers.question(Finalise, QMessageBox::No, Players);
        answerNotSaved("a.scd");
        click(w.cmdSaveSched);
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 104.
    void loadShowsTheFileWithItsOwnWidthsAndFreshSetLists() {
        addTheLeast();
        addPlayed("Amen", "11/22/26");
        addPlayed("Zion", "11/22/26");
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26", "11/29/26"}, "Worship Team");
        grid.SetText(ScheduleColumn::Songs, dateRowOf(1), QStringLiteral("stale"));
        grid.SetText(ScheduleColumn::Songs, dateRowOf(1) + 2, QStringLiteral("kept"));
        grid.SetText(ScheduleColumn::Date, dateRowOf(2) + 5, QStringLiteral("11/22/26"));
        const QString path = writeFile(grid, "past.scd");
        frmSchedule& w = open();
        world->answers.file(path);
        click(w.cmdLoadSched);
        QVERIFY(!world->answers.fileDialogs().back().saves);
        QCOMPARE(world->answers.fileDialogs().back().proposed, QString());
        QCOMPARE(world->statements,
                 (QStringList{
                     "SELECT fName, lName, role, role2, role3, vDays, excludeScheduling FROM "
                     "personell ORDER BY role [1]",
                     "SELECT title, played_date FROM played_on [1]",
                     "SELECT played_date, title FROM played_on WHERE played_date = '11/22/26' [1]",
                     "SELECT played_date, title FROM played_on WHERE played_date = '11/29/26' [1]",
                     "SELECT played_date, title FROM played_on WHERE played_date = '11/22/26' "
                     "[1]"}));
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Songs, dateRowOf(1)),
                 QStringLiteral("Amen"));
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Songs, dateRowOf(1) + 1),
                 QStringLiteral("Zion"));
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Songs, dateRowOf(1) + 2),
                 QStringLiteral("kept"));
        // Any row with a date gets its songs, not only those of the weeks.
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Songs, dateRowOf(2) + 6),
                 QStringLiteral("Zion"));
        QCOMPARE(w.fpSchedule->ColWidth(ScheduleColumn::Notes), 26.88);
        QCOMPARE(w.fpSchedule->ColWidth(ScheduleColumn::Songs), 27.0);
        QCOMPARE(w.fpSchedule->ColWidth(ScheduleColumn::Team), 18.38);
    }

    // Deliberate: behaviour 105.
    void loadFillsTheSetListsWithoutPeople() {
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26"}, "Personell");
        const QString path = writeFile(grid, "past.scd");
        addPlayed("Amen", "11/22/26");
        frmSchedule& w = open();
        world->answers.file(path);
        click(w.cmdLoadSched);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Songs, dateRowOf(1)),
                 QStringLiteral("Amen"));
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 105.
    void loadGoesOnWhereThePlayedSongsCannotBeRead() {
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26", "11/29/26"}, "Personell");
        grid.SetText(ScheduleColumn::Songs, dateRowOf(2), QStringLiteral("kept"));
        const QString path = writeFile(grid, "past.scd");
        frmSchedule& w = open();
        world->sql(QStringLiteral("ALTER TABLE played_on RENAME TO gone"));
        world->answers.file(path);
        click(w.cmdLoadSched);
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Date, dateRowOf(2)),
                 QStringLiteral("11/29/26"));
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Songs, dateRowOf(2)),
                 QStringLiteral("kept"));
        QCOMPARE(world->endStatus, -1);
    }

    void cancelledLoadChangesNothing() {
        addTheLeast();
        frmSchedule& w = open();
        world->answers.cancelFile();
        click(w.cmdLoadSched);
        QVERIFY(world->statements.isEmpty());
        QVERIFY(!w.fpSchedule->isVisible());
    }

    // Deliberate: behaviour 105.
    void damagedFileLeavesTheGridAsItWas() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 1, QStringLiteral("Note"));
        QFile file(world->path("schedules/bad.scd"));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("{\"format\": \"");
        file.close();
        world->answers.file(file.fileName());
        click(w.cmdLoadSched);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Date, dateRowOf(1)),
                 QStringLiteral("11/22/26"));
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(1) + 1),
                 QStringLiteral("Note"));
        QCOMPARE(world->endStatus, -1);
    }

    void clearEmptiesAndHidesTheGrid() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "2");
        world->statements.clear();
        click(w.cmdClearSched);
        QVERIFY(!w.fpSchedule->isVisible());
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(w.fpSchedule->DataRowCnt(), 0);
        QVERIFY(w.fpSchedule->spansOf(1).empty());
        // The former head rows keep their format until the next "New".
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Date, headRowOf(2) - 3).backColor,
                 RGB(238, 232, 216));
        click(w.cmdClearSched);
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Date, headRowOf(2) - 3).backColor,
                 RGB(238, 232, 216));
    }

    void tickWithAChosenFileStoresPathAndFlag() {
        addTheLeast();
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26"}, "Personell");
        const QString path = writeFile(grid, "a.scd");
        frmSchedule& w = open();
        world->answers.question(PickOne, QMessageBox::Yes);
        world->answers.file(path);
        QTest::mouseClick(w.chkShow, Qt::LeftButton, {}, QPoint(8, w.chkShow->height() / 2));
        settle();
        QCOMPARE(world->statements,
                 (QStringList{
                     "UPDATE prefs SET var_value = '" + path + "' WHERE var_name = 'ScedToUse' [3]",
                     "UPDATE prefs SET var_value = 'true' WHERE var_name = "
                     "'SchedOnStartUp' [3]"}));
        QCOMPARE(settings(), (QStringList{"true", path}));
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(w.fpSchedule->ActiveRow(), 0);
        close();
        frmSchedule& again = open();
        QVERIFY(again.chkShow->isChecked());
        QCOMPARE(again.fpSchedule->GetText(ScheduleColumn::Date, dateRowOf(1)),
                 QStringLiteral("11/22/26"));
        QCOMPARE(again.fpSchedule->ColWidth(ScheduleColumn::Notes), 31.0);
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"Piano:Anna Berg"});
    }

    void cancelledTickChangesNoSetting() {
        addTheLeast();
        frmSchedule& w = open();
        world->answers.question(PickOne, QMessageBox::Yes);
        world->answers.cancelFile();
        // The keyboard works like the mouse.
        toggle(w.chkShow);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(settings(), (QStringList{"false", ""}));
        QVERIFY(!w.fpSchedule->isVisible());
    }

    void tickAnsweredNoWithoutAScheduleShowsNothingNextTime() {
        addTheLeast();
        frmSchedule& w = open();
        world->answers.question(PickOne, QMessageBox::No);
        toggle(w.chkShow);
        QCOMPARE(world->statements,
                 (QStringList{"SELECT * FROM prefs WHERE var_name = 'ScedToUse' [1]",
                              "UPDATE prefs SET var_value = 'true' WHERE var_name = "
                              "'SchedOnStartUp' [3]"}));
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(settings(), (QStringList{"true", ""}));
        close();
        frmSchedule& again = open();
        QVERIFY(!again.chkShow->isChecked());
        QVERIFY(!again.fpSchedule->isVisible());
    }

    void untickHidesTheGridAndStoresTheFlag() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        QVERIFY(w.fpSchedule->isVisible());
        toggle(w.chkShow);
        QVERIFY(!w.fpSchedule->isVisible());
        QCOMPARE(world->statements, QStringList{"UPDATE prefs SET var_value = 'false' WHERE "
                                                "var_name = 'SchedOnStartUp' [3]"});
    }

    void tickAnsweredNoShowsThePreviousSchedule() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        toggle(w.chkShow);
        w.fpSchedule->SetText(ScheduleColumn::Date, dateRowOf(1), QStringLiteral("changed"));
        world->answers.question(PickOne, QMessageBox::No);
        toggle(w.chkShow);
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Date, dateRowOf(1)),
                 QStringLiteral("11/22/26"));
    }

    void pathWithAnApostropheEndsTheProgram() {
        addTheLeast();
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26"}, "Personell");
        const QString path = writeFile(grid, "Anna's.scd");
        frmSchedule& w = open();
        world->answers.question(PickOne, QMessageBox::Yes);
        world->answers.file(path);
        world->answers.runTimeError(-2147217900);
        toggle(w.chkShow);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(settings(), (QStringList{"false", ""}));
    }

    // Deliberate: behaviour 103.
    void missingStartScheduleShowsAnEmptyGridWithoutAMessage() {
        addTheLeast();
        showAtStart(world->path("schedules/gone.scd"));
        frmSchedule& w = open();
        QVERIFY(w.chkShow->isChecked());
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(w.fpSchedule->DataRowCnt(), 0);
    }

    void setWindowShowsWhoServesInAFinalisedWeek() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1), "Piano:Anna Berg");
        finaliseOnly(w);
        click(world->main().cmdSetList);
        frmSetList& sets = frmSetList::instance();
        typeInCell(sets.fpSet, 2, 1, "11/22/26");
        world->answers.custom("who serves", [](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box && box->text().contains("Anna Berg") && box->text().contains("Piano"));
            box->button(QMessageBox::Ok)->click();
        });
        click(sets.cmdPersonellAvail);
    }
};

LORVANITE_TEST(TestScheduleFiles)
#include "test_schedule_files.moc"
