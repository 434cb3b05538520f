// A new schedule, typed dates, the commands of the pop-up menu.
#include "team/schedule_test.h"

namespace {

constexpr int Head = RGB(238, 232, 216);

}  // namespace

class TestScheduleWeeks : public ScheduleTest {
    Q_OBJECT

    QString cell(int col, int row) { return frmSchedule::instance().fpSchedule->GetText(col, row); }

    void verifyHead(int row, const QString& team) {
        QCOMPARE(cell(1, row), QStringLiteral("Date"));
        QCOMPARE(cell(2, row), QStringLiteral("Rehearsal Notes"));
        QCOMPARE(cell(3, row), QStringLiteral("Set List"));
        QCOMPARE(cell(4, row), team);
        for (int col = 1; col <= 4; ++col) {
            const CellFormat format = frmSchedule::instance().fpSchedule->formatAt(1, col, row);
            QVERIFY(format.fontBold);
            QCOMPARE(format.backColor, Head);
        }
    }

    // Column 4 of some rows, for the gaps.
    QStringList team(int first, int last) {
        QStringList texts;
        for (int row = first; row <= last; ++row) texts.append(cell(4, row));
        return texts;
    }

    // A schedule of inserted weeks ("Personell" heads) on view.
    frmSchedule& showWeeks(const QStringList& dates) {
        SheetGrid grid;
        fillSchedule(grid, dates, "Personell");
        showAtStart(writeFile(grid, "weeks.scd"));
        return open();
    }

private Q_SLOTS:
    void newScheduleHasTitleHeadsAndDates() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "5");
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(cell(1, 1), QStringLiteral("Schedule For: 06/12/05 to 07/10/05"));
        int col = 0;
        int row = 0;
        int cols = 0;
        int rows = 0;
        QVERIFY(w.fpSchedule->GetCellSpan(3, 1, col, row, cols, rows));
        QCOMPARE((QList<int>{col, row, cols, rows}), (QList<int>{1, 1, 4, 1}));
        const CellFormat title = w.fpSchedule->formatAt(1, 1, 1);
        QCOMPARE(title.hAlign, HAlign::Centre);
        QCOMPARE(title.fontSize, 14.0);
        QVERIFY(title.fontBold);
        const QStringList dates = {"06/12/05", "06/19/05", "06/26/05", "07/03/05", "07/10/05"};
        for (int week = 0; week < 5; ++week) {
            verifyHead(3 + 16 * week, "Worship Team");
            QCOMPARE(cell(1, 4 + 16 * week), dates[week]);
        }
        QVERIFY(cell(1, 83).isEmpty());
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(w.fpSchedule->ColWidth(1), 8.0);
        QCOMPARE(w.fpSchedule->ColWidth(2), 31.0);
        QCOMPARE(w.fpSchedule->ColWidth(3), 26.87);
        QCOMPARE(w.fpSchedule->ColWidth(4), 18.37);
    }

    void newScheduleRunsItsStatementsInOrder() {
        addTheLeast();
        frmSchedule& w = open();
        typeInCell(w.fpPickDate, 1, 1, "6/12/05");
        typeInCell(w.fpPickDate, 2, 1, "2");
        click(w.cmdLoadDates);
        QCOMPARE(world->statements,
                 (QStringList{"SELECT fName, lName, role, role2, role3, vDays, excludeScheduling "
                              "FROM personell ORDER BY role [1]",
                              "SELECT title, played_date FROM played_on [1]",
                              "SELECT title, played_date FROM played_on [1]"}));
    }

    void rulesStandBetweenColumnsAndWeeks() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "2");
        const auto format = [&](int col, int row) { return w.fpSchedule->formatAt(1, col, row); };
        QCOMPARE(format(1, 10).right.style, BorderStyle::Solid);
        QCOMPARE(format(3, 10).left.style, BorderStyle::Solid);
        QCOMPARE(format(4, 500).left.style, BorderStyle::Solid);
        // The first week's rule is drawn on row 1, the next on the row above its date, and both
        // move down with the title.
        QCOMPARE(format(2, 4).top.style, BorderStyle::Solid);
        QCOMPARE(format(2, 19).bottom.style, BorderStyle::Solid);
    }

    void missingStartOrWeeksShowsTheGridAndAsks() {
        addTheLeast();
        frmSchedule& w = open();
        const QString please =
            QStringLiteral("Please select the starting date and the number of weeks to the left.");
        world->answers.box(please, QMessageBox::Information);
        click(w.cmdLoadDates);
        QVERIFY(w.fpSchedule->isVisible());
        typeInCell(w.fpPickDate, 1, 1, "6/12/05");
        world->answers.box(please, QMessageBox::Information);
        click(w.cmdLoadDates);
        // A start that is no date is never taken.
        typeInCell(w.fpPickDate, 1, 1, "");
        for (const char* bad : {"sunday", "13/01/05", "02/30/05", "1/1/1989"})
            typeInCell(w.fpPickDate, 1, 1, QString::fromLatin1(bad));
        typeInCell(w.fpPickDate, 2, 1, "2");
        world->answers.box(please, QMessageBox::Information);
        click(w.cmdLoadDates);
        QVERIFY(world->statements.isEmpty());
        QVERIFY(cell(1, 1).isEmpty());
    }

    void badNumberOfWeeksEndsTheProgram() {
        addTheLeast();
        for (const char* weeks : {"two", "1O", "nan"}) {
            world->endStatus = -1;
            world->answers.runTimeError(13);
            makeSchedule("6/12/05", QString::fromLatin1(weeks));
            QCOMPARE(world->endStatus, 1);
        }
        world->answers.runTimeError(6);
        makeSchedule("6/12/05", "99999999999999999999");
    }

    void noWeekAtAllMakesATitleAndOneHead() {
        addTheLeast();
        makeSchedule("6/12/05", "0");
        QCOMPARE(cell(1, 1), QStringLiteral("Schedule For: 06/12/05 to 06/05/05"));
        verifyHead(3, "Worship Team");
        QVERIFY(cell(1, 4).isEmpty());
    }

    void oneWeek() {
        addTheLeast();
        makeSchedule("12/31/06", "1");
        QCOMPARE(cell(1, 1), QStringLiteral("Schedule For: 12/31/06 to 12/31/06"));
        QCOMPARE(cell(1, 4), QStringLiteral("12/31/06"));
        QVERIFY(cell(1, 19).isEmpty());
    }

    void onlyThirtyOneWeeksFitTheGrid_data() {
        QTest::addColumn<int>("weeks");
        QTest::addColumn<QString>("end");
        QTest::newRow("31") << 31 << "01/08/06";
        QTest::newRow("32") << 32 << "01/15/06";
        QTest::newRow("1000") << 1000 << "08/04/24";
    }

    void onlyThirtyOneWeeksFitTheGrid() {
        QFETCH(int, weeks);
        QFETCH(QString, end);
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", QString::number(weeks));
        QCOMPARE(cell(1, 1), QStringLiteral("Schedule For: 06/12/05 to ") + end);
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(cell(1, 484), QStringLiteral("01/08/06"));
        verifyHead(483, "Worship Team");
        QCOMPARE(cell(1, 499), weeks == 31 ? QString() : QStringLiteral("Date"));
        QCOMPARE(offersIn(498).size(), 1);
        QCOMPARE(offersIn(500), QStringList{"Piano:Anna Berg"});
        QCOMPARE(cell(1, 500), weeks == 31 ? QString() : QStringLiteral("01/15/06"));
    }

    void secondNewReplacesTheFirst() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "3");
        w.fpSchedule->SetText(4, 5, QStringLiteral("Piano:Anna Berg"));
        w.fpSchedule->SetText(2, 5, QStringLiteral("Note"));
        click(w.cmdRefresh);
        typeInCell(w.fpPickDate, 1, 1, "9/4/05");
        click(w.cmdLoadDates);
        QCOMPARE(cell(1, 1), QStringLiteral("Schedule For: 09/04/05 to 09/18/05"));
        QVERIFY(cell(4, 5).isEmpty());
        QVERIFY(cell(2, 5).isEmpty());
        for (int week = 0; week < 3; ++week) verifyHead(3 + 16 * week, "Worship Team");
        QCOMPARE(cell(1, 20), QStringLiteral("09/11/05"));
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(w.fpSchedule->formatAt(1, 4, 7).kind, CellKind::Combo);
        // Rows 4 to 6 have theirs from the first schedule: the second's own begin at row 7.
        for (const int row : {4, 5, 6}) QCOMPARE(offersIn(row), QStringList{"Piano:Anna Berg"});
    }

    void insertPlayerOnTheColumnHeadMovesNothing() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(4, 0, QStringLiteral("Personell"));
        clickCell(w.fpSchedule, 4, 0, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuD, w.mnuInsertPlayer));
        QCOMPARE(cell(4, 0), QStringLiteral("Personell"));
        QVERIFY(cell(4, 1).isEmpty());
    }

    void typedDateIsRewritten() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        typeInCell(w.fpSchedule, 1, 4, "June 19, 2005");
        QCOMPARE(cell(1, 4), QStringLiteral("06/19/05"));
        typeInCell(w.fpSchedule, 2, 5, "no date needed");
        QCOMPARE(cell(2, 5), QStringLiteral("no date needed"));
        // Typing replaces what stands there.
        w.fpSchedule->SetActiveCell(2, 5);
        w.fpSchedule->flush();
        w.fpSchedule->setFocus();
        QTest::keyClick(w.fpSchedule, Qt::Key_X);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        QCOMPARE(cell(2, 5).toUpper(), QStringLiteral("X"));
    }

    void longNotesBreakIntoLinesOnTheScreenOnly() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        const int before = w.fpSchedule->cellRect(2, 4).height();
        const double height = w.fpSchedule->RowHeight(4);
        typeInCell(w.fpSchedule, 2, 4,
                   "Bring the hymnals; rehearsal at seven, and the choir stays for supper");
        QVERIFY(w.fpSchedule->cellRect(2, 4).height() > before);
        QCOMPARE(w.fpSchedule->cellRect(2, 5).height(), before);
        QCOMPARE(w.fpSchedule->RowHeight(4), height);
        typeInCell(w.fpSchedule, 2, 4, "short");
        QCOMPARE(w.fpSchedule->cellRect(2, 4).height(), before);
    }

    void windowFitsTheMainWindow() {
        world->start();
        click(world->main().cmdScheduling);
        const QWidget* frame = frmSchedule::instance().parentWidget();
        QVERIFY2(frame->parentWidget()->rect().contains(frame->geometry()),
                 qPrintable(QStringLiteral("%1 x %2").arg(frame->width()).arg(frame->height())));
    }

    void wrongOrEmptiedDateDrawsTheMessage() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        const QString format = QStringLiteral("Format date as mm/dd/yy (06/12/05)");
        world->answers.box(format, QMessageBox::Information);
        typeInCell(w.fpSchedule, 1, 4, "next week");
        QVERIFY(cell(1, 4).isEmpty());
        typeInCell(w.fpSchedule, 1, 4, "6/19/05");
        world->answers.box(format, QMessageBox::Information);
        typeInCell(w.fpSchedule, 1, 4, "");
        QVERIFY(cell(1, 4).isEmpty());
    }

    void deleteOfADateSaysNothing() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        menu(1, 4, w.mnuDelete);
        QVERIFY(cell(1, 4).isEmpty());
    }

    void deleteClosesTheGapUnderAPersonellHead() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        for (int row = 4; row <= 18; ++row)
            w.fpSchedule->SetText(4, row, QStringLiteral("R:%1").arg(row));
        menu(4, 6, w.mnuDelete);
        QCOMPARE(team(4, 8), (QStringList{"R:4", "R:5", "R:7", "R:8", "R:9"}));
        QCOMPARE(team(17, 19), (QStringList{"R:18", "", "Personell"}));
        // One run of moves: a gap that was there already moves up by one.
        w.fpSchedule->SetText(4, 9, QString());
        w.fpSchedule->SetText(4, 10, QString());
        menu(4, 8, w.mnuDelete);
        QCOMPARE(team(7, 12), (QStringList{"R:8", "", "", "R:12", "R:13", "R:14"}));
    }

    void deleteInOtherColumnsMovesNothing() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(2, 5, QStringLiteral("note"));
        w.fpSchedule->SetText(2, 6, QStringLiteral("below"));
        menu(2, 5, w.mnuDelete);
        QCOMPARE(cell(2, 5), QString());
        QCOMPARE(cell(2, 6), QStringLiteral("below"));
    }

    void deleteOnALaterDateRowFindsTheWeekBeforeAndOnlyBlanks() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        w.fpSchedule->SetText(4, 20, QStringLiteral("R:20"));
        w.fpSchedule->SetText(4, 21, QStringLiteral("R:21"));
        w.fpSchedule->SetText(4, 22, QStringLiteral("R:22"));
        menu(4, 20, w.mnuDelete);
        QCOMPARE(team(20, 22), (QStringList{"", "R:21", "R:22"}));
        // One row lower the week's own head is the first one found.
        menu(4, 21, w.mnuDelete);
        QCOMPARE(team(20, 22), (QStringList{"", "R:22", ""}));
    }

    void deleteUnderAWorshipTeamHeadOnlyBlanks() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        w.fpSchedule->SetText(4, 5, QStringLiteral("R:5"));
        w.fpSchedule->SetText(4, 6, QStringLiteral("R:6"));
        menu(4, 5, w.mnuDelete);
        QCOMPARE(team(5, 6), (QStringList{"", "R:6"}));
    }

    void insertPlayerMovesTheListDownAndLosesTheLast() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        for (int row = 4; row <= 18; ++row)
            w.fpSchedule->SetText(4, row, QStringLiteral("R:%1").arg(row));
        menu(4, 6, w.mnuInsertPlayer);
        QCOMPARE(team(4, 8), (QStringList{"R:4", "R:5", "", "R:6", "R:7"}));
        QCOMPARE(team(17, 19), (QStringList{"R:16", "R:17", "Personell"}));
        menu(2, 6, w.mnuInsertPlayer);
        QCOMPARE(team(4, 8), (QStringList{"R:4", "R:5", "", "R:6", "R:7"}));
    }

    void insertPlayerUnderAWorshipTeamHeadMovesNothing() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        w.fpSchedule->SetText(4, 5, QStringLiteral("R:5"));
        menu(4, 5, w.mnuInsertPlayer);
        QCOMPARE(team(5, 6), (QStringList{"R:5", ""}));
    }

    void insertWeekWantsAHeadRow() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        world->answers.box("Please select a row where the first column name is 'Date'",
                           QMessageBox::Information);
        menu(1, 4, w.mnuInsertWeek);
        QCOMPARE(cell(1, 4), QStringLiteral("06/12/05"));
    }

    void insertWeekOnTheFirstHeadKeepsTheTitle() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "2");
        menu(2, 3, w.mnuInsertWeek);
        QCOMPARE(cell(1, 1), QStringLiteral("Schedule For: 06/12/05 to 06/19/05"));
        verifyHead(3, "Personell");
        verifyHead(19, "Worship Team");
        QVERIFY(cell(1, 4).isEmpty());
        QCOMPARE(cell(1, 20), QStringLiteral("06/12/05"));
        QCOMPARE(cell(1, 36), QStringLiteral("06/19/05"));
        const CellFormat head = w.fpSchedule->formatAt(1, 2, 3);
        QCOMPARE(head.top.style, BorderStyle::Solid);
        QCOMPARE(w.fpSchedule->formatAt(1, 1, 19).right.style, BorderStyle::Solid);
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
    }

    void insertedWeekBetweenTwoOthersIsAWeekForTheOffers() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "06/15/05"});
        frmSchedule& w = makeSchedule("6/12/05", "2");
        menu(3, 19, w.mnuInsertWeek);
        QCOMPARE(offersIn(20), QStringList{"no drop-down"});
        typeInCell(w.fpSchedule, 1, 20, "6/15/05");
        click(w.cmdRefresh);
        QCOMPARE(offersIn(20), QStringList{"Piano:Anna Berg"});
        QCOMPARE(offersIn(34), QStringList{"Piano:Anna Berg"});
        QCOMPARE(offersIn(36), (QStringList{"Drums:Bob Cole", "Piano:Anna Berg"}));
    }
};

LORVANITE_TEST(TestScheduleWeeks)
#include "test_schedule_weeks.moc"
