// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The people of the team: picking, showing, storing, deleting.
#include "team/schedule_test.h"

class TestPersonnel : public ScheduleTest {
    Q_OBJECT

    QStringList people(const QString& columns) {
        return world->rows(QStringLiteral("SELECT %1 FROM personell ORDER BY ID").arg(columns));
    }

    QStringList itemsOf(QComboBox* box) {
        QStringList items;
        for (int i = 0; i < box->count(); ++i) items.append(box->itemText(i));
        return items;
    }

    // Picks a person, types one field and clicks "Add/Update".
    void change(const QString& name, int row, const QString& text) {
        pick(name);
        typePerson({{row, text}});
        click(frmSchedule::instance().cmdAddPlayer);
    }

    void addFinalised(const QString& player, const QString& role, const QString& date) {
        world->sql(QStringLiteral("INSERT INTO schedule (player, instrument, pdate) VALUES "
                                  "('%1', '%2', '%3')")
                       .arg(player, role, date));
    }

private Q_SLOTS:
    void windowOpensEmptyOnAFreshDatabase() {
        frmSchedule& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("Scheduling"));
        QCOMPARE(w.cmbPersonell->count(), 0);
        QVERIFY(!w.fpSchedule->isVisible());
        QVERIFY(w.lblNoSchedule->isVisible());
        QCOMPARE(w.fpPerson->GetText(0, PersonRow::Email), QStringLiteral("e-Mail"));
        QCOMPARE(w.fpVacation->ColWidth(2), 7.0);
        QVERIFY(!w.frmChooseEmail->isVisible());
    }

    void nextPersonIsTypedRightAfterTheLastOne() {
        addTheLeast();
        frmSchedule& w = open();
        typePerson({{PersonRow::FirstName, "Anna"}, {PersonRow::Role1, "Piano"}});
        click(w.cmdAddPlayer);
        // The fields of the last one stay until they are replaced.
        for (const char* text : {"Ben", "Cole", "Bass"}) {
            typeKeys(QLatin1String(text));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        click(w.cmdAddPlayer);
        QCOMPARE(world->rows("SELECT fName, lName, role FROM personell ORDER BY ID").mid(1),
                 (QStringList{"Anna||Piano", "Ben|Cole|Bass"}));
        click(w.cmdClrPlayer);
        typeKeys("Cora");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(w.fpPerson->GetText(1, PersonRow::FirstName), QStringLiteral("Cora"));
    }

    void openingRunsItsStatementsInOrder() {
        addTheLeast();
        world->start();
        world->statements.clear();
        click(world->main().cmdScheduling);
        QCOMPARE(world->statements.first(),
                 QStringLiteral("SELECT ID, fName, lName, role FROM personell ORDER BY lName [1]"));
        QCOMPARE(world->statements[1],
                 QStringLiteral("SELECT * FROM prefs WHERE var_name = 'SchedOnStartUp' [1]"));
        QCOMPARE(world->statements.last(),
                 QStringLiteral("SELECT title, played_date FROM played_on [1]"));
        QCOMPARE(world->statements[world->statements.size() - 2],
                 QStringLiteral("SELECT fName, lName, role, role2, role3, vDays, excludeScheduling "
                                "FROM personell ORDER BY role [1]"));
    }

    void personIsTypedAfterTab() {
        frmSchedule& w = open();
        w.cmbPersonell->setFocus();
        QTest::keyClick(w.cmbPersonell, Qt::Key_Tab);
        QVERIFY(w.fpPerson->hasFocus());
        for (const char* field : {"Ann", "Lee", "Piano"}) {
            QTest::keyClick(QApplication::focusWidget(), field[0]);
            QTest::keyClicks(QApplication::focusWidget(), field + 1);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        click(w.cmdAddPlayer);
        QCOMPARE(people("fName, lName, role"), QStringList{"Ann|Lee|Piano"});
    }

    void comboBoxListsPeopleByLastName() {
        addPerson({.first = "Zoe", .last = "Adams", .role = "Bass"});
        addPerson({.first = "Abe", .last = "Zorn", .role = "Bass"});
        addPerson({.first = "Mia", .last = "kane", .role = "Bass"});
        frmSchedule& w = open();
        QCOMPARE(itemsOf(w.cmbPersonell), (QStringList{"Zoe Adams", "Mia kane", "Abe Zorn"}));
        QCOMPARE(w.cmbPersonell->currentIndex(), -1);
        QCOMPARE(w.cmbPersonell->itemData(2).toInt(), 2);
    }

    // Deliberate: behaviours 82 and 84.
    void firstPersonOfANewDatabaseIsStoredWithoutAMessage() {
        frmSchedule& w = open();
        typePerson({{PersonRow::FirstName, "Anna"},
                    {PersonRow::LastName, "Berg"},
                    {PersonRow::Role1, "Piano"},
                    {PersonRow::Address, "Elm St. 1"},
                    {PersonRow::Email, "a@example.org"}});
        click(w.cmdAddPlayer);
        QCOMPARE(world->statements,
                 (QStringList{"INSERT INTO personell (fName, lName, role, role2, role3, address, "
                              "city, state, zip, phone, cell, email, vDays, excludeScheduling) "
                              "VALUES ('Anna', 'Berg', 'Piano', '', '', 'Elm St. 1', '', '', '', "
                              "'', '', 'a@example.org', '', '0') [3]",
                              "UPDATE schedule SET player = 'Anna Berg' WHERE player = ' ' [3]",
                              "SELECT ID, fName, lName, role FROM personell ORDER BY lName [1]"}));
        QCOMPARE(itemsOf(w.cmbPersonell), QStringList{"Anna Berg"});
        QVERIFY(w.lblHidPersonID->text().isEmpty());
        QCOMPARE(world->endStatus, -1);
        // The fields stay, and a second click stores the person again.
        click(w.cmdAddPlayer);
        QCOMPARE(itemsOf(w.cmbPersonell), (QStringList{"Anna Berg", "Anna Berg"}));
    }

    // Deliberate: behaviour 99.
    void storeWithoutFirstNameOrFirstRoleIsRefused() {
        frmSchedule& w = open();
        typePerson({{PersonRow::LastName, "Berg"}, {PersonRow::Role1, "Piano"}});
        world->answers.box("First Name and  1 Role field is required.", QMessageBox::Information,
                           "Missing Information");
        click(w.cmdAddPlayer);
        typePerson({{PersonRow::FirstName, "Anna"}});
        w.fpPerson->SetText(1, PersonRow::Role1, QString());
        world->answers.box("First Name and  1 Role field is required.", QMessageBox::Information,
                           "Missing Information");
        click(w.cmdAddPlayer);
        // An apostrophe alone counts as empty.
        typePerson({{PersonRow::Role1, "'"}});
        world->answers.box("First Name and  1 Role field is required.", QMessageBox::Information,
                           "Missing Information");
        click(w.cmdAddPlayer);
        QVERIFY(world->statements.isEmpty());
        QVERIFY(people("ID").isEmpty());
    }

    void updateRunsItsStatementsInOrderAndRefreshesTheOffers() {
        addTheLeast();
        frmSchedule& w = open();
        pick("Anna Berg");
        QCOMPARE(w.lblHidPersonID->text(), QStringLiteral("1"));
        QCOMPARE(world->statements, QStringList{"SELECT * FROM personell WHERE ID = 1 [1]"});
        world->statements.clear();
        typePerson({{PersonRow::LastName, "Berger"}, {PersonRow::Role2, "Alto"}});
        typeInCell(w.fpVacation, 1, 1, "6/12/05");
        toggle(w.chkExclude);
        click(w.cmdAddPlayer);
        QCOMPARE(world->statements,
                 (QStringList{"SELECT fName, lName FROM personell WHERE ID = 1 [1]",
                              "UPDATE personell SET fName = 'Anna', lName = 'Berger', role = "
                              "'Piano', role2 = 'Alto', role3 = '', address = '', city = '', state "
                              "= '', zip = '', phone = '', cell = '', email = '', vDays = "
                              "'06/12/05', excludeScheduling = '1' WHERE ID = 1 [3]",
                              "UPDATE schedule SET player = 'Anna Berger' WHERE player = 'Anna "
                              "Berg' [3]",
                              "SELECT ID, fName, lName, role FROM personell ORDER BY lName [1]",
                              "SELECT * FROM personell WHERE ID = 1 [1]",
                              "SELECT fName, lName, role, role2, role3, vDays, excludeScheduling "
                              "FROM personell ORDER BY role [1]",
                              "SELECT title, played_date FROM played_on [1]"}));
        QCOMPARE(w.cmbPersonell->currentText(), QStringLiteral("Anna Berger"));
        QVERIFY(w.chkExclude->isChecked());
    }

    void apostrophesAreRemovedFromAllTwelveFields() {
        addTheLeast();
        addFinalised("Anna Berg", "Piano", "11/22/26");
        frmSchedule& w = open();
        pick("Anna Berg");
        typePerson({{PersonRow::FirstName, "D'Arcy"},
                    {PersonRow::LastName, "O'Brien"},
                    {PersonRow::Role1, "'Pi'ano'"},
                    {PersonRow::Role2, "a'"},
                    {PersonRow::Role3, "'b"},
                    {PersonRow::Address, "c'd"},
                    {PersonRow::City, "e'f"},
                    {PersonRow::State, "g'h"},
                    {PersonRow::Zip, "i'j"},
                    {PersonRow::Phone, "k'l"},
                    {PersonRow::Cell, "m'n"},
                    {PersonRow::Email, "o''p"}});
        click(w.cmdAddPlayer);
        QCOMPARE(people("fName, lName, role, role2, role3, address, city, state, zip, phone, cell, "
                        "email"),
                 QStringList{"DArcy|OBrien|Piano|a|b|cd|ef|gh|ij|kl|mn|op"});
        QCOMPARE(world->rows("SELECT player, instrument FROM schedule"),
                 QStringList{"DArcy OBrien|Piano"});
    }

    // Deliberate: behaviour 80.
    void onlyNineOfTwelveVacationDaysAreShown() {
        addTheLeast();
        frmSchedule& w = open();
        pick("Anna Berg");
        QStringList typed;
        for (int row = 1; row <= 12; ++row) {
            typed.append(QStringLiteral("%1/03/27").arg(row, 2, 10, QLatin1Char('0')));
            typeInCell(w.fpVacation, 1, row, typed.back());
        }
        click(w.cmdAddPlayer);
        QCOMPARE(people("vDays"), QStringList{typed.join(':')});
        QStringList shown;
        for (int col = 1; col <= 3; ++col) {
            for (int row = 1; row <= 3; ++row) shown.append(w.fpVacation->GetText(col, row));
            QVERIFY(w.fpVacation->GetText(col, 4).isEmpty());
        }
        QCOMPARE(shown, typed.mid(0, 9));
        click(w.cmdAddPlayer);
        QCOMPARE(people("vDays"), QStringList{typed.mid(0, 9).join(':')});
    }

    void allThirtySixVacationDaysAreStored() {
        addTheLeast();
        frmSchedule& w = open();
        pick("Anna Berg");
        typeInCell(w.fpVacation, 3, 12, "12/31/26");
        click(w.cmdAddPlayer);
        QCOMPARE(people("vDays"), QStringList{"12/31/26"});
        QCOMPARE(w.fpVacation->GetText(1, 1), QStringLiteral("12/31/26"));
        QStringList all;
        for (int col = 1; col <= 3; ++col)
            for (int row = 1; row <= 12; ++row) {
                all.append(QStringLiteral("%1/%2/28")
                               .arg(row, 2, 10, QLatin1Char('0'))
                               .arg(col, 2, 10, QLatin1Char('0')));
                typeInCell(w.fpVacation, col, row, all.back());
            }
        click(w.cmdAddPlayer);
        QCOMPARE(people("vDays"), QStringList{all.join(':')});
        QCOMPARE(w.fpVacation->GetText(3, 3), all[8]);
        QVERIFY(w.fpVacation->GetText(1, 12).isEmpty());
    }

    void vacationCellsTakeDatesOnly() {
        addTheLeast();
        frmSchedule& w = open();
        pick("Anna Berg");
        for (const char* text : {"soon", "13/13/26", "02/30/26", "01/01/2101"})
            typeInCell(w.fpVacation, 1, 1, QString::fromLatin1(text));
        QVERIFY(w.fpVacation->GetText(1, 1).isEmpty());
        click(w.cmdAddPlayer);
        QCOMPARE(people("vDays"), QStringList{""});
    }

    void storedVacationDayThatIsNoDateEndsTheProgram() {
        addPerson({.first = "Anna", .last = "Berg", .role = "Piano", .vacation = "06/12/05:soon"});
        addPlayed("Long ago", "01/01/90");
        frmSchedule& w = open();
        world->answers.runTimeError(13);
        pick("Anna Berg");
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(w.fpVacation->GetText(1, 1), QStringLiteral("06/12/05"));
        QVERIFY(w.lblHidPersonID->text().isEmpty());
    }

    void spacerRowsNeverReachTheDatabase() {
        addTheLeast();
        frmSchedule& w = open();
        pick("Anna Berg");
        typePerson({{6, "six"}, {11, "eleven"}});
        click(w.cmdAddPlayer);
        QVERIFY(!world->statements.filter("UPDATE personell").value(0).contains("six"));
        QVERIFY(!people("*").value(0).contains("eleven"));
        QVERIFY(w.fpPerson->GetText(1, 6).isEmpty());
    }

    void personWithoutALastNameIsRenamedWithTheBlank() {
        addPerson({.first = "Cher", .last = "", .role = "Vocals"});
        addPlayed("Long ago", "01/01/90");
        addFinalised("Cher ", "Vocals", "11/22/26");
        addFinalised("Cher", "Vocals", "11/29/26");
        open();
        change("Cher ", PersonRow::FirstName, "Bo");
        QVERIFY(world->statements.contains(
            "UPDATE schedule SET player = 'Bo ' WHERE player = 'Cher ' [3]"));
        QCOMPARE(world->rows("SELECT player FROM schedule"), (QStringList{"Bo ", "Cher"}));
    }

    // Deliberate: behaviour 82.
    void namesakesAreRenamedTogether() {
        addPerson({.first = "Jo", .last = "Hill", .role = "Bass"});
        addPerson({.first = "Jo", .last = "Hill", .role = "Drums"});
        addPlayed("Long ago", "01/01/90");
        addFinalised("Jo Hill", "Bass", "11/22/26");
        addFinalised("Jo Hill", "Drums", "11/22/26");
        open();
        change("Jo Hill", PersonRow::LastName, "Hall");
        QCOMPARE(world->rows("SELECT player FROM schedule"), (QStringList{"Jo Hall", "Jo Hall"}));
        QCOMPARE(people("lName"), (QStringList{"Hall", "Hill"}));
    }

    // Deliberate: behaviour 83.
    void changedRoleDoesNotReachFinalisedRows() {
        addTheLeast();
        addFinalised("Anna Berg", "Piano", "11/22/26");
        open();
        change("Anna Berg", PersonRow::Role1, "Organ");
        QCOMPARE(world->rows("SELECT player, instrument FROM schedule"),
                 QStringList{"Anna Berg|Piano"});
    }

    // Deliberate: behaviour 83.
    void deletedPersonStaysInFinalisedRows() {
        addTheLeast();
        addFinalised("Anna Berg", "Piano", "11/22/26");
        frmSchedule& w = open();
        pick("Anna Berg");
        typeInCell(w.fpVacation, 2, 5, "6/12/05");
        world->statements.clear();
        click(w.cmdDeletePlayer);
        QCOMPARE(world->statements,
                 (QStringList{"DELETE * FROM personell WHERE ID = 1 [3]",
                              "SELECT ID, fName, lName, role FROM personell ORDER BY lName [1]"}));
        QVERIFY(people("ID").isEmpty());
        QCOMPARE(world->rows("SELECT player FROM schedule"), QStringList{"Anna Berg"});
        QCOMPARE(columnOf(w.fpPerson, 1).join(""), QString());
        QVERIFY(w.fpVacation->GetText(2, 5).isEmpty());
        QVERIFY(w.lblHidPersonID->text().isEmpty());
        // The drop-down lists keep the person until the next refresh.
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"Piano:Anna Berg"});
        world->statements.clear();
        click(w.cmdDeletePlayer);
        QVERIFY(world->statements.isEmpty());
    }

    // Deliberate: behaviour 85.
    void clearKeepsTheTickForTheNextNewPerson() {
        addTheLeast();
        frmSchedule& w = open();
        pick("Anna Berg");
        typePerson({{PersonRow::Cell, "555"}});
        typeInCell(w.fpVacation, 3, 12, "6/12/05");
        toggle(w.chkExclude);
        click(w.cmdClrPlayer);
        QCOMPARE(columnOf(w.fpPerson, 1).join(""), QString());
        QVERIFY(w.fpVacation->GetText(3, 12).isEmpty());
        QVERIFY(w.lblHidPersonID->text().isEmpty());
        QVERIFY(w.chkExclude->isChecked());
        typePerson({{PersonRow::FirstName, "Bob"}, {PersonRow::Role1, "Drums"}});
        click(w.cmdAddPlayer);
        QCOMPARE(people("fName, excludeScheduling"), (QStringList{"Anna|0", "Bob|1"}));
    }

    // Deliberate: behaviour 81.
    void missingPersonKeepsTheShownNumber() {
        addTheLeast();
        const int second = addPerson({.first = "Bob", .last = "Zorn", .role = "Drums"});
        frmSchedule& w = open();
        pick("Anna Berg");
        typePerson({{PersonRow::Cell, "555"}});
        world->sql(QStringLiteral("DELETE FROM personell WHERE ID = %1").arg(second));
        pick("Bob Zorn");
        QCOMPARE(w.lblHidPersonID->text(), QStringLiteral("1"));
        QVERIFY(w.fpPerson->GetText(1, PersonRow::FirstName).isEmpty());
        QCOMPARE(w.fpPerson->GetText(1, PersonRow::Cell), QStringLiteral("555"));
    }

    void nullsAndOtherScriptsAreShown() {
        world->sql("INSERT INTO personell (fName) VALUES ('Ö')");
        addPlayed("Long ago", "01/01/90");
        addPerson({.first = "李", .last = "明", .role = "二胡", .vacation = "NULL"});
        frmSchedule& w = open();
        pick("Ö ");
        QCOMPARE(columnOf(w.fpPerson, 1).join(""), QStringLiteral("Ö"));
        QVERIFY(!w.chkExclude->isChecked());
        pick("李 明");
        QCOMPARE(w.fpPerson->GetText(1, PersonRow::Role1), QStringLiteral("二胡"));
        w.fpPerson->SetText(1, PersonRow::Role2, QStringLiteral("é"));
        click(w.cmdAddPlayer);
        QCOMPARE(people("role2").value(1), QStringLiteral("é"));
        QCOMPARE(world->endStatus, -1);
    }

    void failingStatementEndsTheProgram() {
        addTheLeast();
        frmSchedule& w = open();
        pick("Anna Berg");
        typePerson({{PersonRow::LastName, "Berger"}});
        world->sql("DROP TABLE schedule");
        world->answers.runTimeError(-2147217900);
        click(w.cmdAddPlayer);
        QCOMPARE(world->endStatus, 1);
        // What was stored before the failure stays.
        QCOMPARE(people("lName"), QStringList{"Berger"});
    }

    // Deliberate: behaviour 97.
    void updateWithoutARecordedSongFailsAndSaysWhatIsMissing() {
        addPerson({.first = "Anna", .last = "Berg", .role = "Piano"});
        frmSchedule& w = open();
        pick("Anna Berg");
        world->answers.runTimeError(3021, "no song recorded");
        click(w.cmdAddPlayer);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"Piano:Anna Berg"});
    }
};

LORVANITE_TEST(TestPersonnel)
#include "test_personnel.moc"
