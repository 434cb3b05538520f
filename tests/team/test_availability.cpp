// Who is offered for which date, and the set lists of the weeks.
#include "team/schedule_test.h"

class TestAvailability : public ScheduleTest {
    Q_OBJECT

    // A schedule of these dates on view.
    frmSchedule& show(const QStringList& dates) {
        SheetGrid grid;
        fillSchedule(grid, dates, "Personell");
        showAtStart(writeFile(grid, "dates.scd"));
        return open();
    }

    QStringList songs(int first, int last) {
        QStringList texts;
        for (int row = first; row <= last; ++row)
            texts.append(frmSchedule::instance().fpSchedule->GetText(SongsColumn, row));
        return texts;
    }

private Q_SLOTS:
    void offersAreRolesWithNamesSorted() {
        addPlayed("Long ago", "01/01/90");
        addPerson(
            {.first = "Zoe", .last = "Adams", .role = "piano", .role2 = "Alto", .role3 = "Oboe"});
        addPerson({.first = "Abe", .last = "Zorn", .role = "Piano"});
        addPerson({.first = "X", .last = "", .role = "Éclair", .role3 = "Bass"});
        frmSchedule& w = show({"11/22/26"});
        QCOMPARE(offersIn(4), (QStringList{"Alto:Zoe Adams", "Bass:X ", "Éclair:X ",
                                           "Oboe:Zoe Adams", "Piano:Abe Zorn", "piano:Zoe Adams"}));
        // Each line is followed by a tab, the last one too.
        QVERIFY(w.fpSchedule->formatAt(1, 4, 18).comboList.endsWith('\t'));
        QCOMPARE(w.fpSchedule->formatAt(1, 4, 18).comboMaxDrop, 6);
        QCOMPARE(offersIn(19), QStringList{"no drop-down"});
        // All 31 weeks have them, on view or not.
        QCOMPARE(offersIn(498).size(), 6);
        QCOMPARE(offersIn(500), QStringList{"no drop-down"});
    }

    void vacationTakesOutOneDateOnly() {
        addTheLeast();
        addPerson(
            {.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "06/12/05:07/03/05"});
        // Another form of a date never takes anyone out.
        addPerson({.first = "Dan", .last = "Eck", .role = "Vocals", .vacation = "6/12/05"});
        show({"06/12/05", "06/19/05", "07/03/05", "06/12/06"});
        QCOMPARE(offersIn(4), (QStringList{"Piano:Anna Berg", "Vocals:Dan Eck"}));
        QCOMPARE(offersIn(20),
                 (QStringList{"Drums:Bob Cole", "Piano:Anna Berg", "Vocals:Dan Eck"}));
        QCOMPARE(offersIn(36), (QStringList{"Piano:Anna Berg", "Vocals:Dan Eck"}));
        QCOMPARE(offersIn(52),
                 (QStringList{"Drums:Bob Cole", "Piano:Anna Berg", "Vocals:Dan Eck"}));
    }

    void emptyDateOffersThoseWithoutAnyVacation() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "06/12/05"});
        show({"11/22/26"});
        QCOMPARE(offersIn(20), QStringList{"Piano:Anna Berg"});
        QCOMPARE(offersIn(4), (QStringList{"Drums:Bob Cole", "Piano:Anna Berg"}));
    }

    void excludedPersonIsInNoListAndStaysInTheCell() {
        addTheLeast();
        frmSchedule& w = show({"11/22/26"});
        w.fpSchedule->SetText(4, 4, QStringLiteral("Piano:Anna Berg"));
        pick("Anna Berg");
        toggle(w.chkExclude);
        click(w.cmdAddPlayer);
        QVERIFY(offersIn(4).isEmpty());
        // With no one the drop-down is an empty list.
        QCOMPARE(w.fpSchedule->formatAt(1, 4, 4).kind, CellKind::Combo);
        QCOMPARE(w.fpSchedule->formatAt(1, 4, 4).comboMaxDrop, 0);
        QCOMPARE(w.fpSchedule->GetText(4, 4), QStringLiteral("Piano:Anna Berg"));
    }

    void nullsAndOtherFlagsAreNotOffered() {
        addTheLeast();
        addPerson({.first = "Nil", .last = "A", .role = "B", .vacation = "NULL"});
        addPerson({.first = "Nil", .last = "B", .role = "B", .vacation = "", .excluded = "NULL"});
        addPerson({.first = "Nil", .last = "C", .role = "B", .vacation = "", .excluded = ""});
        world->sql(
            "INSERT INTO personell (fName, vDays, excludeScheduling) VALUES ('Only', '', '0')");
        show({"11/22/26"});
        QCOMPARE(offersIn(4), (QStringList{":Only ", "Piano:Anna Berg"}));
        QCOMPARE(offersIn(20), (QStringList{":Only ", "Piano:Anna Berg"}));
    }

    void namesakesAreOfferedEachForThemselves() {
        addPlayed("Long ago", "01/01/90");
        addPerson({.first = "Jo", .last = "Hill", .role = "Bass", .vacation = "11/22/26"});
        addPerson({.first = "Jo", .last = "Hill", .role = "Bass"});
        show({"11/22/26", "11/29/26"});
        QCOMPARE(offersIn(4), QStringList{"Bass:Jo Hill"});
        QCOMPARE(offersIn(20), (QStringList{"Bass:Jo Hill", "Bass:Jo Hill"}));
    }

    void twentySixOffersOpenTwentyFiveLinesTall() {
        addPlayed("Long ago", "01/01/90");
        for (int i = 1; i <= 25; ++i)
            addPerson({.first = QString::number(i), .last = "P", .role = "Choir"});
        frmSchedule& w = show({"11/22/26"});
        QCOMPARE(w.fpSchedule->formatAt(1, 4, 4).comboMaxDrop, 25);
        addPerson({.first = "26", .last = "P", .role = "Choir"});
        click(w.cmdRefresh);
        QCOMPARE(offersIn(4).size(), 26);
        QCOMPARE(w.fpSchedule->formatAt(1, 4, 4).comboMaxDrop, 25);
    }

    void firstPassOfANewScheduleLooksAtDatesThatAreNotThereYet() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "01/01/99"});
        frmSchedule& w = makeSchedule("6/12/05", "2");
        // Rows 4 to 6 stay plain; the drop-downs moved down with the title, Bob is in none.
        for (int row : {4, 5, 6, 22}) QCOMPARE(offersIn(row), QStringList{"no drop-down"});
        for (int row : {7, 21, 23, 37}) QCOMPARE(offersIn(row), QStringList{"Piano:Anna Berg"});
        click(w.cmdRefresh);
        for (int row : {4, 18, 20, 34})
            QCOMPARE(offersIn(row), (QStringList{"Drums:Bob Cole", "Piano:Anna Berg"}));
    }

    void offerIsPickedFromTheListAndTypedByHand() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums"});
        frmSchedule& w = show({"11/22/26"});
        typeInCell(w.fpSchedule, 4, 4, "Drums:Bob Cole");
        QCOMPARE(w.fpSchedule->GetText(4, 4), QStringLiteral("Drums:Bob Cole"));
        typeInCell(w.fpSchedule, 4, 5, "Guest from afar");
        QCOMPARE(w.fpSchedule->GetText(4, 5), QStringLiteral("Guest from afar"));
        click(w.cmdRefresh);
        QCOMPARE(w.fpSchedule->GetText(4, 5), QStringLiteral("Guest from afar"));
    }

    void recordedSongsStandFromTheDateRowOnInTableOrder() {
        addTheLeast();
        for (const char* title : {"Zion", "Amen", "Älv"})
            addPlayed(QString::fromUtf8(title), "11/22/26");
        addPlayed("Other form", "11/22/2026");
        frmSchedule& w = show({"11/22/26", "11/29/26"});
        QCOMPARE(songs(4, 7), (QStringList{"Zion", "Amen", "Älv", ""}));
        QVERIFY(songs(20, 20).value(0).isEmpty());
        // What no new title falls on stays.
        w.fpSchedule->SetText(3, 7, QStringLiteral("typed"));
        world->sql("DELETE FROM played_on WHERE title IN ('Amen', 'Älv')");
        click(w.cmdRefresh);
        QCOMPARE(songs(4, 7), (QStringList{"Zion", "Amen", "Älv", "typed"}));
    }

    void sixteenthSongStandsOverTheNextHead() {
        addTheLeast();
        for (int i = 1; i <= 17; ++i) addPlayed(QStringLiteral("Song %1").arg(i), "11/22/26");
        addPlayed("Next", "11/29/26");
        show({"11/22/26", "11/29/26"});
        QCOMPARE(songs(18, 21), (QStringList{"Song 15", "Song 16", "Next", ""}));
    }

    void newScheduleShowsTheSongsOfItsDates() {
        addTheLeast();
        addPlayed("Amen", "06/19/05");
        addPlayed("Zion", "06/19/05");
        makeSchedule("6/12/05", "2");
        QCOMPARE(songs(19, 22), (QStringList{"Set List", "Amen", "Zion", ""}));
        QVERIFY(songs(4, 4).value(0).isEmpty());
    }

    void songsAtTheEndOfTheGridAreCut() {
        addTheLeast();
        for (int i = 1; i <= 30; ++i) addPlayed(QStringLiteral("Song %1").arg(i), "01/08/06");
        frmSchedule& w = makeSchedule("6/12/05", "31");
        click(w.cmdRefresh);
        QCOMPARE(songs(484, 500).last(), QStringLiteral("Song 17"));
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
    }

    void refreshFailsWithoutPeopleAndTheBoxSaysSo() {
        addPlayed("Long ago", "01/01/90");
        frmSchedule& w = open();
        world->answers.runTimeError(3021, "no person");
        click(w.cmdRefresh);
        QCOMPARE(world->endStatus, 1);
    }

    void refreshFailsWithoutRecordedSongsAndTheBoxSaysSo() {
        addPerson({.first = "Anna", .last = "Berg", .role = "Piano"});
        frmSchedule& w = open();
        world->answers.runTimeError(3021, "no song recorded");
        click(w.cmdRefresh);
        QCOMPARE(world->endStatus, 1);
    }

    void openingIsQuietWhereThePeopleOrTheSongsAreMissing() {
        open();
        QCOMPARE(offersIn(4), QStringList{"no drop-down"});
        close();
        addPerson({.first = "Anna", .last = "Berg", .role = "Piano"});
        open();
        QCOMPARE(offersIn(4), QStringList{"no drop-down"});
        close();
        addPlayed("Long ago", "01/01/90");
        open();
        QCOMPARE(offersIn(4), QStringList{"Piano:Anna Berg"});
        QCOMPARE(world->endStatus, -1);
    }

    void allCellsOfAWeekShareOneList() {
        addTheLeast();
        frmSchedule& w = show({"11/22/26"});
        QVERIFY(offersIn(4).size() == 1);
        const QString first = w.fpSchedule->formatAt(1, 4, 4).comboList;
        for (int row = 5; row <= 18; ++row)
            QCOMPARE(w.fpSchedule->formatAt(1, 4, row).comboList.constData(), first.constData());
    }
};

LORVANITE_TEST(TestAvailability)
#include "test_availability.moc"
