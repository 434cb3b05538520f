// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Who is offered for which date, and the set lists of the weeks.
#include "team/schedule_test.h"

class TestAvailability : public ScheduleTest {
    Q_OBJECT

    QStringList songs(int first, int last) {
        QStringList texts;
        for (int row = first; row <= last; ++row)
            texts.append(frmSchedule::instance().fpSchedule->GetText(ScheduleColumn::Songs, row));
        return texts;
    }

private Q_SLOTS:
    void offersAreRolesWithNamesSorted() {
        addPlayed("Long ago", "01/01/90");
        addPerson(
            {.first = "Zoe", .last = "Adams", .role = "piano", .role2 = "Alto", .role3 = "Oboe"});
        addPerson({.first = "Abe", .last = "Zorn", .role = "Piano"});
        addPerson({.first = "X", .last = "", .role = "Éclair", .role3 = "Bass"});
        frmSchedule& w = showWeeks({"11/22/26"});
        QCOMPARE(offersIn(dateRowOf(1)),
                 (QStringList{"Alto:Zoe Adams", "Bass:X ", "Éclair:X ", "Oboe:Zoe Adams",
                              "Piano:Abe Zorn", "piano:Zoe Adams"}));
        // A tab follows each item, the last one too.
        QVERIFY(
            w.fpSchedule->formatAt(1, ScheduleColumn::Team, lastRowOf(1)).comboList.endsWith('\t'));
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Team, lastRowOf(1)).comboMaxDrop, 6);
        QCOMPARE(offersIn(headRowOf(2)), QStringList{"no drop-down"});
        // All 31 weeks that fit the grid have them.
        QCOMPARE(offersIn(lastRowOf(31)).size(), 6);
        QCOMPARE(offersIn(500), QStringList{"no drop-down"});
    }

    void roleTypedInATeamCellOffersItsPeople() {
        addTheLeast();  // Anna Berg plays the piano
        addPerson({.first = "Bob", .last = "Cole", .role = "Piano"});
        addPerson({.first = "Dan", .last = "Eck", .role = "Guitar"});
        frmSchedule& w = showWeeks({"11/22/26"});
        const auto type = [&w](int row, const char* text) {
            w.fpSchedule->SetActiveCell(ScheduleColumn::Team, row);
            w.fpSchedule->flush();
            w.fpSchedule->setFocus();
            QTest::keyClick(QApplication::focusWidget(), text[0]);
            QTest::keyClicks(QApplication::focusWidget(), text + 1);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        };
        const int row = dateRowOf(1);
        type(row, "gui");
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, row),
                 QStringLiteral("Guitar:Dan Eck"));
        type(row + 1, "Piano");
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, row + 1), QString());
        QWidget* list = QApplication::activePopupWidget();
        QVERIFY(list);
        QTest::keyClick(list->findChild<QAbstractItemView*>(), Qt::Key_Down);
        QTest::keyClick(list->findChild<QAbstractItemView*>(), Qt::Key_Return);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, row + 1),
                 QStringLiteral("Piano:Bob Cole"));
    }

    // Deliberate: behaviour 87.
    void vacationTakesOutOneDateOnly() {
        addTheLeast();
        addPerson(
            {.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "06/12/05:07/03/05"});
        // A date in another form excludes nobody.
        addPerson({.first = "Dan", .last = "Eck", .role = "Vocals", .vacation = "6/12/05"});
        showWeeks({"06/12/05", "06/19/05", "07/03/05", "06/12/06"});
        QCOMPARE(offersIn(dateRowOf(1)), (QStringList{"Piano:Anna Berg", "Vocals:Dan Eck"}));
        QCOMPARE(offersIn(dateRowOf(2)),
                 (QStringList{"Drums:Bob Cole", "Piano:Anna Berg", "Vocals:Dan Eck"}));
        QCOMPARE(offersIn(dateRowOf(3)), (QStringList{"Piano:Anna Berg", "Vocals:Dan Eck"}));
        QCOMPARE(offersIn(dateRowOf(4)),
                 (QStringList{"Drums:Bob Cole", "Piano:Anna Berg", "Vocals:Dan Eck"}));
    }

    // Deliberate: behaviour 87.
    void emptyDateOffersThoseWithoutAnyVacation() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "06/12/05"});
        showWeeks({"11/22/26"});
        QCOMPARE(offersIn(dateRowOf(2)), QStringList{"Piano:Anna Berg"});
        QCOMPARE(offersIn(dateRowOf(1)), (QStringList{"Drums:Bob Cole", "Piano:Anna Berg"}));
    }

    // Deliberate: behaviour 88.
    void excludedPersonIsInNoListAndStaysInTheCell() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1),
                              QStringLiteral("Piano:Anna Berg"));
        pick("Anna Berg");
        toggle(w.chkExclude);
        click(w.cmdAddPlayer);
        QVERIFY(offersIn(dateRowOf(1)).isEmpty());
        // Without an offer, the list is empty.
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Team, dateRowOf(1)).kind,
                 CellKind::Combo);
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Team, dateRowOf(1)).comboMaxDrop, 0);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, dateRowOf(1)),
                 QStringLiteral("Piano:Anna Berg"));
    }

    void nullsAndOtherFlagsAreNotOffered() {
        addTheLeast();
        addPerson({.first = "Nil", .last = "A", .role = "B", .vacation = "NULL"});
        addPerson({.first = "Nil", .last = "B", .role = "B", .vacation = "", .excluded = "NULL"});
        addPerson({.first = "Nil", .last = "C", .role = "B", .vacation = "", .excluded = ""});
        world->sql(
            "INSERT INTO personell (fName, vDays, excludeScheduling) VALUES ('Only', '', '0')");
        showWeeks({"11/22/26"});
        QCOMPARE(offersIn(dateRowOf(1)), (QStringList{":Only ", "Piano:Anna Berg"}));
        QCOMPARE(offersIn(dateRowOf(2)), (QStringList{":Only ", "Piano:Anna Berg"}));
    }

    void namesakesAreOfferedSeparately() {
        addPlayed("Long ago", "01/01/90");
        addPerson({.first = "Jo", .last = "Hill", .role = "Bass", .vacation = "11/22/26"});
        addPerson({.first = "Jo", .last = "Hill", .role = "Bass"});
        showWeeks({"11/22/26", "11/29/26"});
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"Bass:Jo Hill"});
        QCOMPARE(offersIn(dateRowOf(2)), (QStringList{"Bass:Jo Hill", "Bass:Jo Hill"}));
    }

    void twentySixOffersOpenAListOfTwentyFiveLines() {
        addPlayed("Long ago", "01/01/90");
        for (int i = 1; i <= 25; ++i)
            addPerson({.first = QString::number(i), .last = "P", .role = "Choir"});
        frmSchedule& w = showWeeks({"11/22/26"});
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Team, dateRowOf(1)).comboMaxDrop, 25);
        addPerson({.first = "26", .last = "P", .role = "Choir"});
        click(w.cmdRefresh);
        QCOMPARE(offersIn(dateRowOf(1)).size(), 26);
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Team, dateRowOf(1)).comboMaxDrop, 25);
    }

    // Deliberate: behaviour 86.
    void newScheduleOffersOnlyPeopleWithoutVacationDays() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "01/01/99"});
        frmSchedule& w = makeSchedule("6/12/05", "2");
        // The lists begin three rows below the date, and none has Bob.
        for (int row : {dateRowOf(1), dateRowOf(1) + 1, dateRowOf(1) + 2, dateRowOf(2) + 2})
            QCOMPARE(offersIn(row), QStringList{"no drop-down"});
        for (int row : {dateRowOf(1) + 3, dateRowOf(2) + 1, dateRowOf(2) + 3, dateRowOf(3) + 1})
            QCOMPARE(offersIn(row), QStringList{"Piano:Anna Berg"});
        click(w.cmdRefresh);
        for (int row : {dateRowOf(1), lastRowOf(1), dateRowOf(2), lastRowOf(2)})
            QCOMPARE(offersIn(row), (QStringList{"Drums:Bob Cole", "Piano:Anna Berg"}));
    }

    // Deliberate: behaviour 88.
    void offerIsPickedFromTheListAndTypedByHand() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums"});
        frmSchedule& w = showWeeks({"11/22/26"});
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1), "Drums:Bob Cole");
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, dateRowOf(1)),
                 QStringLiteral("Drums:Bob Cole"));
        typeInCell(w.fpSchedule, ScheduleColumn::Team, dateRowOf(1) + 1, "Guest from afar");
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, dateRowOf(1) + 1),
                 QStringLiteral("Guest from afar"));
        click(w.cmdRefresh);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, dateRowOf(1) + 1),
                 QStringLiteral("Guest from afar"));
    }

    // Deliberate: behaviour 94.
    void recordedSongsAreListedFromTheDateRowInTableOrder() {
        addTheLeast();
        for (const char* title : {"Zion", "Amen", "Älv"})
            addPlayed(QString::fromUtf8(title), "11/22/26");
        addPlayed("Other form", "11/22/2026");
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        QCOMPARE(songs(dateRowOf(1), dateRowOf(1) + 3), (QStringList{"Zion", "Amen", "Älv", ""}));
        QVERIFY(songs(dateRowOf(2), dateRowOf(2)).value(0).isEmpty());
        // Cells that no title is written to stay.
        w.fpSchedule->SetText(ScheduleColumn::Songs, dateRowOf(1) + 3, QStringLiteral("typed"));
        world->sql("DELETE FROM played_on WHERE title IN ('Amen', 'Älv')");
        click(w.cmdRefresh);
        QCOMPARE(songs(dateRowOf(1), dateRowOf(1) + 3),
                 (QStringList{"Zion", "Amen", "Älv", "typed"}));
    }

    // Deliberate: behaviour 95.
    void sixteenthSongReplacesTheNextHead() {
        addTheLeast();
        for (int i = 1; i <= 17; ++i) addPlayed(QStringLiteral("Song %1").arg(i), "11/22/26");
        addPlayed("Next", "11/29/26");
        showWeeks({"11/22/26", "11/29/26"});
        QCOMPARE(songs(lastRowOf(1), dateRowOf(2) + 1),
                 (QStringList{"Song 15", "Song 16", "Next", ""}));
    }

    void newScheduleShowsTheSongsOfItsDates() {
        addTheLeast();
        addPlayed("Amen", "06/19/05");
        addPlayed("Zion", "06/19/05");
        makeSchedule("6/12/05", "2");
        QCOMPARE(songs(headRowOf(2), dateRowOf(2) + 2),
                 (QStringList{"Set List", "Amen", "Zion", ""}));
        QVERIFY(songs(dateRowOf(1), dateRowOf(1)).value(0).isEmpty());
    }

    void songsBeyondTheEndOfTheGridAreCutOff() {
        addTheLeast();
        for (int i = 1; i <= 30; ++i) addPlayed(QStringLiteral("Song %1").arg(i), "01/08/06");
        frmSchedule& w = makeSchedule("6/12/05", "31");
        click(w.cmdRefresh);
        QCOMPARE(songs(dateRowOf(31), 500).last(), QStringLiteral("Song 17"));
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
    }

    // Deliberate: behaviour 97.
    void refreshWithoutPeopleFailsAndSaysWhatIsMissing() {
        addPlayed("Long ago", "01/01/90");
        frmSchedule& w = open();
        world->answers.runTimeError(3021, "no person");
        click(w.cmdRefresh);
        QCOMPARE(world->endStatus, 1);
    }

    // Deliberate: behaviour 97.
    void refreshWithoutRecordedSongsFailsAndSaysWhatIsMissing() {
        addPerson({.first = "Anna", .last = "Berg", .role = "Piano"});
        frmSchedule& w = open();
        world->answers.runTimeError(3021, "no song recorded");
        click(w.cmdRefresh);
        QCOMPARE(world->endStatus, 1);
    }

    // Deliberate: behaviour 97.
    void openingWithoutPeopleOrSongsReportsNothing() {
        open();
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"no drop-down"});
        close();
        addPerson({.first = "Anna", .last = "Berg", .role = "Piano"});
        open();
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"no drop-down"});
        close();
        addPlayed("Long ago", "01/01/90");
        open();
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"Piano:Anna Berg"});
        QCOMPARE(world->endStatus, -1);
    }

    void allCellsOfAWeekShareOneList() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        QVERIFY(offersIn(dateRowOf(1)).size() == 1);
        const QString first =
            w.fpSchedule->formatAt(1, ScheduleColumn::Team, dateRowOf(1)).comboList;
        for (int row = dateRowOf(1) + 1; row <= lastRowOf(1); ++row)
            QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Team, row).comboList.constData(),
                     first.constData());
    }
};

LORVANITE_TEST(TestAvailability)
#include "test_availability.moc"
