// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Special music, and its reminders in the start-up schedule.
#include "sets/frm_set_list.h"
#include "team/frm_special_music.h"
#include "team/rules/special_music.h"
#include "team/schedule_test.h"

class TestSpecialMusic : public ScheduleTest {
    Q_OBJECT

    void addItem(const QString& song, const QString& date, const QString& flag,
                 const QString& weeks) {
        world->sql(QStringLiteral("INSERT INTO special_music (song_name, play_date, "
                                  "remind_schedule, remind_interval) VALUES ('%1', '%2', '%3', "
                                  "'%4')")
                       .arg(song, date, flag, weeks));
    }

    frmSpecialMusic& openMusic() {
        if (!world->isRunning()) world->start();
        click(world->main().Command10);
        if (!pickMenuItem(world->main().mnuUtilities, world->main().mnuSpecialMusic))
            QTest::qFail("no menu item", __FILE__, __LINE__);
        world->statements.clear();
        return frmSpecialMusic::instance();
    }

    QStringList items() {
        return world->rows(
            "SELECT song_name, play_date, remind_schedule, remind_interval FROM "
            "special_music ORDER BY ID");
    }

    void type(QLineEdit* line, const QString& text) {
        line->setFocus();
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, text);
    }

    // The rehearsal notes of the date rows, once the window has opened with such a schedule.
    QStringList notesOf(const QStringList& dates) {
        SheetGrid grid;
        fillSchedule(grid, dates, "Personell");
        grid.SetText(ScheduleColumn::Notes, dateRowOf(1), QStringLiteral("by hand"));
        showAtStart(writeFile(grid, "plan.scd"));
        frmSchedule& w = open();
        QStringList notes;
        for (int week = 0; week < dates.size(); ++week)
            notes.append(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(week + 1)));
        return notes;
    }

private Q_SLOTS:
    void listShowsTheItemsInTableOrder() {
        addItem("Zion", "12/24/26", "Yes", "4");
        addItem("Amen", "", "No", "0");
        frmSpecialMusic& w = openMusic();
        QCOMPARE(w.windowTitle(), QStringLiteral("Special Music Schedule"));
        QCOMPARE(columnOf(w.fpSMusic, SpecialMusicColumn::Title), (QStringList{"Zion", "Amen"}));
        QCOMPARE(columnOf(w.fpSMusic, SpecialMusicColumn::Weeks), (QStringList{"4", "0"}));
        for (int col : {SpecialMusicColumn::ID, SpecialMusicColumn::Weeks})
            QVERIFY(w.fpSMusic->isColHidden(1, col));
        QCOMPARE(w.fpSMusic->ColWidth(SpecialMusicColumn::Title), 20.37);
        QCOMPARE(w.fpSMusic->GetText(SpecialMusicColumn::Reminder, 0), QStringLiteral("Reminder"));
        QVERIFY(!w.txtInterval->isEnabled());
    }

    // Deliberate: behaviour 119.
    void newItemIsStoredAndStoredAgainAtTheNextClick() {
        frmSpecialMusic& w = openMusic();
        type(w.txtTitle, "Silent Night");
        typeInCell(w.fpDate, 1, 1, "12/24/2026");
        toggle(w.chkNote);
        QVERIFY(w.txtInterval->isEnabled());
        type(w.txtInterval, "4");
        click(w.cmdAddCat);
        QCOMPARE(world->statements,
                 (QStringList{"INSERT INTO special_music (song_name, play_date, remind_schedule, "
                              "remind_interval) VALUES ('Silent Night', '12/24/26', 'Yes', '4'); "
                              "[3]",
                              "SELECT * FROM special_music [1]"}));
        QVERIFY(w.lblHidID->text().isEmpty());
        click(w.cmdAddCat);
        QCOMPARE(items(),
                 (QStringList{"Silent Night|12/24/26|Yes|4", "Silent Night|12/24/26|Yes|4"}));
        QCOMPARE(w.fpSMusic->MaxRows(), 2);
    }

    // Deliberate: behaviours 99 and 119.
    void missingTitleOrWeeksAreReported() {
        frmSpecialMusic& w = openMusic();
        world->answers.box("Please provide a song title", QMessageBox::Information);
        click(w.cmdAddCat);
        type(w.txtTitle, "Amen");
        toggle(w.chkNote);
        world->answers.box(
            "Provide the number of weeks to set a reminder in the schedule to continute");
        click(w.cmdAddCat);
        QVERIFY(items().isEmpty());
        toggle(w.chkNote);
        QVERIFY(!w.txtInterval->isEnabled());
        // Neither the date nor the weeks are checked.
        click(w.cmdAddCat);
        QCOMPARE(items(), QStringList{"Amen||No|0"});
        QCOMPARE(w.txtInterval->text(), QStringLiteral("0"));
    }

    // Deliberate: behaviour 117.
    void updateMakesEveryItemTheSame() {
        addItem("Zion", "12/24/26", "Yes", "4");
        addItem("Amen", "12/31/26", "No", "0");
        addItem("Other", "01/01/27", "Yes", "2");
        frmSpecialMusic& w = openMusic();
        clickCell(w.fpSMusic, SpecialMusicColumn::PlayOn, 2);
        QCOMPARE(w.lblHidID->text(), QStringLiteral("2"));
        type(w.txtTitle, "Hosanna");
        click(w.cmdAddCat);
        QCOMPARE(world->statements.first(),
                 QStringLiteral("UPDATE special_music SET song_name = 'Hosanna', play_date = "
                                "'12/31/26', remind_schedule = 'No', remind_interval = '0' [3]"));
        QCOMPARE(items(), QStringList(3, "Hosanna|12/31/26|No|0"));
        QCOMPARE(columnOf(w.fpSMusic, SpecialMusicColumn::Title), QStringList(3, "Hosanna"));
        QCOMPARE(w.lblHidID->text(), QStringLiteral("2"));
    }

    // Deliberate: behaviour 118.
    void itemWithoutReminderKeepsTheTickOfTheItemBefore() {
        addItem("Zion", "12/24/26", "Yes", "4");
        addItem("Amen", "12/31/26", "No", "0");
        frmSpecialMusic& w = openMusic();
        clickCell(w.fpSMusic, SpecialMusicColumn::Title, 1);
        QVERIFY(w.chkNote->isChecked());
        QVERIFY(w.txtInterval->isEnabled());
        QCOMPARE(w.fpDate->GetText(1, 1), QStringLiteral("12/24/26"));
        clickCell(w.fpSMusic, SpecialMusicColumn::Title, 2);
        QCOMPARE(w.txtTitle->text(), QStringLiteral("Amen"));
        QVERIFY(w.chkNote->isChecked());
        QCOMPARE(w.txtInterval->text(), QStringLiteral("4"));
    }

    void clickOnTheHeadDoesNothing() {
        addItem("Zion", "12/24/26", "Yes", "4");
        frmSpecialMusic& w = openMusic();
        clickCell(w.fpSMusic, SpecialMusicColumn::Title, 0);
        QVERIFY(w.txtTitle->text().isEmpty());
        QVERIFY(w.lblHidID->text().isEmpty());
    }

    void deleteRemovesTheItemAndKeepsTheFields() {
        addItem("Zion", "12/24/26", "Yes", "4");
        addItem("Amen", "12/31/26", "No", "0");
        frmSpecialMusic& w = openMusic();
        click(w.cmdDelCat);
        QVERIFY(world->statements.isEmpty());
        clickCell(w.fpSMusic, SpecialMusicColumn::Title, 1);
        click(w.cmdDelCat);
        QCOMPARE(world->statements, (QStringList{"DELETE FROM special_music WHERE ID = 1 [3]",
                                                 "SELECT * FROM special_music [1]"}));
        QCOMPARE(items(), QStringList{"Amen|12/31/26|No|0"});
        QCOMPARE(w.txtTitle->text(), QStringLiteral("Zion"));
        QCOMPARE(w.lblHidID->text(), QStringLiteral("1"));
    }

    void clearEmptiesTheFields() {
        addItem("Zion", "12/24/26", "Yes", "4");
        frmSpecialMusic& w = openMusic();
        clickCell(w.fpSMusic, SpecialMusicColumn::Title, 1);
        click(w.Command1);
        QVERIFY(w.txtTitle->text().isEmpty());
        QVERIFY(w.fpDate->GetText(1, 1).isEmpty());
        QVERIFY(!w.chkNote->isChecked());
        QVERIFY(!w.txtInterval->isEnabled());
        QVERIFY(w.txtInterval->text().isEmpty());
        QVERIFY(w.lblHidID->text().isEmpty());
    }

    void titleWithAnApostropheEndsTheProgram() {
        frmSpecialMusic& w = openMusic();
        type(w.txtTitle, "Angel's Song");
        world->answers.runTimeError(-2147217900);
        click(w.cmdAddCat);
        QCOMPARE(world->endStatus, 1);
        QVERIFY(items().isEmpty());
    }

    void weeksBeforeAPerformanceGetARehearsal() {
        addTheLeast();
        addItem("Silent Night", "12/20/26", "Yes", "4");
        QCOMPARE(notesOf({"11/15/26", "11/22/26", "11/29/26", "12/06/26", "12/13/26", "12/20/26",
                          "12/27/26"}),
                 (QStringList{"by hand", "Rehearse Silent Night", "Rehearse Silent Night",
                              "Rehearse Silent Night", "Rehearse Silent Night",
                              "Perform Silent Night", ""}));
    }

    void weeksAreCountedOverSundays() {
        addTheLeast();
        // From a Saturday there is a Sunday up to the performance, from the days of that same week
        // there is none.
        addItem("Carol", "12/23/26", "Yes", "1");
        QCOMPARE(
            notesOf({"12/12/26", "12/13/26", "12/19/26", "12/20/26", "12/22/26", "12/23/26"}),
            (QStringList{"by hand", "Rehearse Carol", "Rehearse Carol", "", "", "Perform Carol"}));
    }

    // Deliberate: behaviour 115.
    void laterItemOfTheTableRemains() {
        addTheLeast();
        addItem("First", "11/22/26", "Yes", "2");
        addItem("Second", "11/29/26", "Yes", "2");
        QCOMPARE(notesOf({"11/22/26", "11/29/26"}),
                 (QStringList{"Rehearse Second", "Perform Second"}));
    }

    void intervalZeroOnlyPerforms() {
        addTheLeast();
        addItem("Amen", "11/29/26", "Yes", "0");
        QCOMPARE(notesOf({"11/22/26", "11/29/26"}), (QStringList{"by hand", "Perform Amen"}));
    }

    void itemWithoutReminderIsShownInTheSetWindowOnly() {
        addTheLeast();
        addItem("Amen", "11/22/26", "No", "4");
        QCOMPARE(notesOf({"11/22/26"}), QStringList{"by hand"});
        click(world->main().cmdSetList);
        frmSetList& sets = frmSetList::instance();
        world->answers.box("Special Music Scheduled For This Date\r Amen",
                           QMessageBox::Information);
        typeInCell(sets.fpSet, 2, 1, "11/22/26");
        QCOMPARE(sets.lblSpecialMusic->text(), QStringLiteral("Special Music:  Amen"));
    }

    // Deliberate: behaviour 115.
    void reminderReplacesTheNoteOfTheDateRowOnly() {
        addTheLeast();
        addItem("Amen", "11/22/26", "Yes", "1");
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26"}, "Personell");
        grid.SetText(ScheduleColumn::Notes, dateRowOf(1), QStringLiteral("by hand"));
        grid.SetText(ScheduleColumn::Notes, dateRowOf(1) + 1, QStringLiteral("below"));
        showAtStart(writeFile(grid, "plan.scd"));
        frmSchedule& w = open();
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(1)),
                 QStringLiteral("Perform Amen"));
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(1) + 1),
                 QStringLiteral("below"));
        // The note is lost once the schedule is saved.
        const QString saved = world->path("schedules/after.scd");
        world->answers.question(
            "Would you like to finalize this schedule and save the players list?", QMessageBox::No,
            "Save Players List");
        world->answers.file(saved);
        click(w.cmdSaveSched);
        SheetGrid read;
        QVERIFY(read.LoadFromFile(saved));
        QCOMPARE(read.GetText(ScheduleColumn::Notes, dateRowOf(1)), QStringLiteral("Perform Amen"));
    }

    void remindersRunOneStatementPerDate() {
        addTheLeast();
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26", "11/29/26", "gap"}, "Personell");
        showAtStart(writeFile(grid, "plan.scd"));
        world->start();
        world->statements.clear();
        click(world->main().cmdScheduling);
        QCOMPARE(world->statements.count("SELECT * FROM special_music [1]"), 2);
        QCOMPARE(world->statements.mid(1, 3),
                 (QStringList{"SELECT * FROM prefs WHERE var_name = 'SchedOnStartUp' [1]",
                              "SELECT * FROM prefs WHERE var_name = 'ScedToUse' [1]",
                              "SELECT * FROM special_music [1]"}));
    }

    void badDateOrIntervalEndsTheProgramAtTheOpening() {
        addTheLeast();
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26"}, "Personell");
        showAtStart(writeFile(grid, "plan.scd"));
        addItem("No date", "", "Yes", "1");
        world->answers.runTimeError(13);
        open();
        QCOMPARE(world->endStatus, 1);
        close();
        world->endStatus = -1;
        world->sql("UPDATE special_music SET play_date = '11/29/26', remind_interval = 'two'");
        world->answers.runTimeError(13);
        open();
        QCOMPARE(world->endStatus, 1);
        close();
        // An item without a reminder is not checked, nor the weeks of one in the past.
        world->endStatus = -1;
        world->sql("UPDATE special_music SET play_date = '11/15/26'");
        world->sql("INSERT INTO special_music (song_name, remind_schedule) VALUES ('x', 'No')");
        open();
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 116.
    void loadedOrPickedScheduleHasNoReminders() {
        addTheLeast();
        addItem("Amen", "11/22/26", "Yes", "1");
        SheetGrid grid;
        fillSchedule(grid, {"11/22/26"}, "Personell");
        const QString path = writeFile(grid, "plan.scd");
        frmSchedule& w = open();
        world->answers.file(path);
        click(w.cmdLoadSched);
        QVERIFY(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(1)).isEmpty());
        world->answers.question("Would you like to pick a schedule to display?", QMessageBox::Yes);
        world->answers.file(path);
        toggle(w.chkShow);
        QVERIFY(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(1)).isEmpty());
    }

    void shortScheduleHasNoDropDownLists() {
        SheetGrid grid;
        grid.MaxCols(4);
        grid.MaxRows(10);
        showAtStart(writeFile(grid, "small.scd"));
        addTheLeast();
        frmSchedule& w = open();
        QCOMPARE(w.fpSchedule->MaxRows(), 10);
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"no drop-down"});
        QCOMPARE(world->endStatus, -1);
    }
};

LORVANITE_TEST(TestSpecialMusic)
#include "test_special_music.moc"
