// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A new schedule, typed dates, the commands of the pop-up menu.
#include "core/data/run_time_error.h"
#include "team/rules/schedule_weeks.h"
#include "team/schedule_test.h"

#include <QScrollBar>

namespace {

constexpr int Head = RGB(238, 232, 216);

}  // namespace

class TestScheduleWeeks : public ScheduleTest {
    Q_OBJECT

    QString cell(int col, int row) { return frmSchedule::instance().fpSchedule->GetText(col, row); }

    void verifyHead(int row, const QString& team) {
        QCOMPARE(cell(ScheduleColumn::Date, row), QStringLiteral("Date"));
        QCOMPARE(cell(ScheduleColumn::Notes, row), QStringLiteral("Rehearsal Notes"));
        QCOMPARE(cell(ScheduleColumn::Songs, row), QStringLiteral("Set List"));
        QCOMPARE(cell(ScheduleColumn::Team, row), team);
        for (int col = 1; col <= 4; ++col) {
            const CellFormat format = frmSchedule::instance().fpSchedule->formatAt(1, col, row);
            QVERIFY(format.fontBold);
            QCOMPARE(format.backColor, Head);
        }
    }

    // The texts of column 4 in some rows.
    QStringList team(int first, int last) {
        QStringList texts;
        for (int row = first; row <= last; ++row) texts.append(cell(ScheduleColumn::Team, row));
        return texts;
    }

private Q_SLOTS:
    void newScheduleHasTitleHeadsAndDates() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "5");
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(cell(1, ScheduleRow::Title), QStringLiteral("Schedule For: 06/12/05 to 07/10/05"));
        int col = 0;
        int row = 0;
        int cols = 0;
        int rows = 0;
        QVERIFY(w.fpSchedule->GetCellSpan(3, 1, col, row, cols, rows));
        QCOMPARE((QList<int>{col, row, cols, rows}), (QList<int>{1, 1, 4, 1}));
        const CellFormat title = w.fpSchedule->formatAt(1, 1, ScheduleRow::Title);
        QCOMPARE(title.hAlign, HAlign::Centre);
        QCOMPARE(title.fontSize, 14.0);
        QVERIFY(title.fontBold);
        const QStringList dates = {"06/12/05", "06/19/05", "06/26/05", "07/03/05", "07/10/05"};
        for (int week = 0; week < 5; ++week) {
            verifyHead(headRowOf(week + 1), "Worship Team");
            QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(week + 1)), dates[week]);
        }
        QVERIFY(cell(ScheduleColumn::Date, headRowOf(6)).isEmpty());
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(w.fpSchedule->ColWidth(ScheduleColumn::Date), 8.0);
        QCOMPARE(w.fpSchedule->ColWidth(ScheduleColumn::Notes), 31.0);
        QCOMPARE(w.fpSchedule->ColWidth(ScheduleColumn::Songs), 26.87);
        QCOMPARE(w.fpSchedule->ColWidth(ScheduleColumn::Team), 18.37);
    }

    void newScheduleRunsItsStatementsInOrder() {
        addTheLeast();
        frmSchedule& w = open();
        typeInCell(w.fpPickDate, PickDateColumn::StartDate, 1, "6/12/05");
        typeInCell(w.fpPickDate, PickDateColumn::Weeks, 1, "2");
        click(w.cmdLoadDates);
        QCOMPARE(world->statements,
                 (QStringList{"SELECT fName, lName, role, role2, role3, vDays, excludeScheduling "
                              "FROM personell ORDER BY role [1]",
                              "SELECT title, played_date FROM played_on [1]",
                              "SELECT title, played_date FROM played_on [1]"}));
    }

    void bordersSeparateColumnsAndWeeks() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "2");
        const auto format = [&](int col, int row) { return w.fpSchedule->formatAt(1, col, row); };
        QCOMPARE(format(ScheduleColumn::Date, dateRowOf(1) + 6).right.style, BorderStyle::Solid);
        QCOMPARE(format(ScheduleColumn::Songs, dateRowOf(1) + 6).left.style, BorderStyle::Solid);
        QCOMPARE(format(ScheduleColumn::Team, 500).left.style, BorderStyle::Solid);
        // The border of the first week is drawn at row 1, the next one above its date, and both
        // move down with the title.
        QCOMPARE(format(ScheduleColumn::Notes, dateRowOf(1)).top.style, BorderStyle::Solid);
        QCOMPARE(format(ScheduleColumn::Notes, headRowOf(2)).bottom.style, BorderStyle::Solid);
    }

    void missingStartOrWeeksShowsTheGridAndAsks() {
        addTheLeast();
        frmSchedule& w = open();
        const QString please =
            QStringLiteral("Please select the starting date and the number of weeks to the left.");
        world->answers.box(please, QMessageBox::Information);
        click(w.cmdLoadDates);
        QVERIFY(w.fpSchedule->isVisible());
        typeInCell(w.fpPickDate, PickDateColumn::StartDate, 1, "6/12/05");
        world->answers.box(please, QMessageBox::Information);
        click(w.cmdLoadDates);
        // A start that is no date is not accepted.
        typeInCell(w.fpPickDate, PickDateColumn::StartDate, 1, "");
        for (const char* bad : {"sunday", "13/01/05", "02/30/05", "1/1/1989"})
            typeInCell(w.fpPickDate, PickDateColumn::StartDate, 1, QString::fromLatin1(bad));
        typeInCell(w.fpPickDate, PickDateColumn::Weeks, 1, "2");
        world->answers.box(please, QMessageBox::Information);
        click(w.cmdLoadDates);
        QVERIFY(world->statements.isEmpty());
        QVERIFY(cell(1, ScheduleRow::Title).isEmpty());
    }

    void badNumberOfWeeksEndsTheProgram() {
        addTheLeast();
        for (const char* weeks : {"two", "1O", "nan"}) {
            world->endStatus = -1;
            world->answers.runTimeError(
                13, QStringLiteral("\"# Weeks\" holds \"%1\"").arg(QLatin1String(weeks)));
            makeSchedule("6/12/05", QString::fromLatin1(weeks));
            QCOMPARE(world->endStatus, 1);
        }
        world->answers.runTimeError(6, "Enter fewer weeks in \"# Weeks\"");
        makeSchedule("6/12/05", "99999999999999999999");
    }

    void startThatIsNoDateRaises() {
        SheetGrid schedule, offers;
        QString why;
        try {
            ::makeSchedule(schedule, offers, QStringLiteral("someday"), QStringLiteral("2"));
        } catch (const RunTimeError& error) {
            why = error.description();
        }
        QCOMPARE(why,
                 QStringLiteral("Type mismatch: \"Start Date\" holds \"someday\". Enter a date "
                                "such as 06/12/05."));
    }

    // Deliberate: behaviour 89.
    void zeroWeeksMakeATitleAndOneHead() {
        addTheLeast();
        makeSchedule("6/12/05", "0");
        QCOMPARE(cell(1, ScheduleRow::Title), QStringLiteral("Schedule For: 06/12/05 to 06/05/05"));
        verifyHead(headRowOf(1), "Worship Team");
        QVERIFY(cell(ScheduleColumn::Date, dateRowOf(1)).isEmpty());
    }

    void oneWeekStartsAndEndsOnTheSameDate() {
        addTheLeast();
        makeSchedule("12/31/06", "1");
        QCOMPARE(cell(1, ScheduleRow::Title), QStringLiteral("Schedule For: 12/31/06 to 12/31/06"));
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(1)), QStringLiteral("12/31/06"));
        QVERIFY(cell(ScheduleColumn::Date, headRowOf(2)).isEmpty());
    }

    void onlyThirtyOneWeeksFitTheGrid_data() {
        QTest::addColumn<int>("weeks");
        QTest::addColumn<QString>("end");
        QTest::newRow("31") << 31 << "01/08/06";
        QTest::newRow("32") << 32 << "01/15/06";
        QTest::newRow("1000") << 1000 << "08/04/24";
    }

    // Deliberate: behaviour 89.
    void onlyThirtyOneWeeksFitTheGrid() {
        QFETCH(int, weeks);
        QFETCH(QString, end);
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", QString::number(weeks));
        QCOMPARE(cell(1, ScheduleRow::Title), QStringLiteral("Schedule For: 06/12/05 to ") + end);
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(31)), QStringLiteral("01/08/06"));
        verifyHead(headRowOf(31), "Worship Team");
        QCOMPARE(cell(ScheduleColumn::Date, headRowOf(32)),
                 weeks == 31 ? QString() : QStringLiteral("Date"));
        QCOMPARE(offersIn(lastRowOf(31)).size(), 1);
        QCOMPARE(offersIn(500), QStringList{"Piano:Anna Berg"});
        QCOMPARE(cell(ScheduleColumn::Date, 500),
                 weeks == 31 ? QString() : QStringLiteral("01/15/06"));
    }

    // Deliberate: behaviour 98.
    void secondNewReplacesTheFirst() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "3");
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 1,
                              QStringLiteral("Piano:Anna Berg"));
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 1, QStringLiteral("Note"));
        click(w.cmdRefresh);
        typeInCell(w.fpPickDate, PickDateColumn::StartDate, 1, "9/4/05");
        click(w.cmdLoadDates);
        QCOMPARE(cell(1, ScheduleRow::Title), QStringLiteral("Schedule For: 09/04/05 to 09/18/05"));
        QVERIFY(cell(ScheduleColumn::Team, dateRowOf(1) + 1).isEmpty());
        QVERIFY(cell(ScheduleColumn::Notes, dateRowOf(1) + 1).isEmpty());
        for (int week = 0; week < 3; ++week) verifyHead(headRowOf(week + 1), "Worship Team");
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(2)), QStringLiteral("09/11/05"));
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Team, dateRowOf(1) + 3).kind,
                 CellKind::Combo);
        // The first three rows have the lists of the first schedule.
        for (const int row : {dateRowOf(1), dateRowOf(1) + 1, dateRowOf(1) + 2})
            QCOMPARE(offersIn(row), QStringList{"Piano:Anna Berg"});
    }

    void insertPlayerOnTheColumnHeadMovesNothing() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, 0, QStringLiteral("Personell"));
        clickCell(w.fpSchedule, ScheduleColumn::Team, 0, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuD, w.mnuInsertPlayer));
        QCOMPARE(cell(ScheduleColumn::Team, 0), QStringLiteral("Personell"));
        QVERIFY(cell(ScheduleColumn::Team, 1).isEmpty());
    }

    void deleteOnTheColumnHeadChangesNothing() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, 0, QStringLiteral("Personell"));
        clickCell(w.fpSchedule, ScheduleColumn::Team, 0, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuD, w.mnuDelete));
        QCOMPARE(cell(ScheduleColumn::Team, 0), QStringLiteral("Personell"));
    }

    void refusedDateAndTitleComeBackByUndo() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Date, ScheduleRow::Title, QStringLiteral("Autumn"));
        const auto undo = [&w] {
            w.fpSchedule->setFocus();
            QTest::keyClick(w.fpSchedule, Qt::Key_Z, Qt::ControlModifier);
        };
        const QString format = QStringLiteral("Format date as mm/dd/yy (06/12/05)");
        typeInCell(w.fpSchedule, ScheduleColumn::Notes, dateRowOf(1) + 1, "a note");
        for (const int row : {int(ScheduleRow::Title), dateRowOf(1)}) {
            const QString before = cell(ScheduleColumn::Date, row);
            world->answers.box(format, QMessageBox::Information);
            typeInCell(w.fpSchedule, ScheduleColumn::Date, row, "soon");
            QCOMPARE(cell(ScheduleColumn::Date, row), QString());
            undo();
            QCOMPARE(cell(ScheduleColumn::Date, row), before);
        }
        typeInCell(w.fpSchedule, ScheduleColumn::Date, dateRowOf(1), "June 19, 2005");
        undo();
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(1)), QStringLiteral("11/22/26"));
        QCOMPARE(cell(ScheduleColumn::Notes, dateRowOf(1) + 1), QStringLiteral("a note"));
    }

    void typedDateIsRewritten() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        typeInCell(w.fpSchedule, ScheduleColumn::Date, dateRowOf(1), "June 19, 2005");
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(1)), QStringLiteral("06/19/05"));
        typeInCell(w.fpSchedule, ScheduleColumn::Notes, dateRowOf(1) + 1, "no date needed");
        QCOMPARE(cell(ScheduleColumn::Notes, dateRowOf(1) + 1), QStringLiteral("no date needed"));
        // Typing replaces the text of the cell.
        w.fpSchedule->SetActiveCell(ScheduleColumn::Notes, dateRowOf(1) + 1);
        w.fpSchedule->flush();
        w.fpSchedule->setFocus();
        QTest::keyClick(w.fpSchedule, Qt::Key_X);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        QCOMPARE(cell(ScheduleColumn::Notes, dateRowOf(1) + 1).toUpper(), QStringLiteral("X"));
    }

    void longNotesAreWrappedOnTheScreenOnly() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        const int before = w.fpSchedule->cellRect(ScheduleColumn::Notes, dateRowOf(1)).height();
        const double height = w.fpSchedule->RowHeight(dateRowOf(1));
        typeInCell(w.fpSchedule, ScheduleColumn::Notes, dateRowOf(1),
                   "Bring the hymnals; rehearsal at seven, and the choir stays for supper");
        QVERIFY(w.fpSchedule->cellRect(ScheduleColumn::Notes, dateRowOf(1)).height() > before);
        QCOMPARE(w.fpSchedule->cellRect(ScheduleColumn::Notes, dateRowOf(1) + 1).height(), before);
        QCOMPARE(w.fpSchedule->RowHeight(dateRowOf(1)), height);
        typeInCell(w.fpSchedule, ScheduleColumn::Notes, dateRowOf(1), "short");
        QCOMPARE(w.fpSchedule->cellRect(ScheduleColumn::Notes, dateRowOf(1)).height(), before);
    }

    void headRowsOfWeeksCannotBeTypedOver() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "2");
        for (int col = ScheduleColumn::Date; col <= ScheduleColumn::Last; ++col)
            tryToChange(w.fpSchedule, col, headRowOf(1));
        verifyHead(headRowOf(1), "Worship Team");
        verifyHead(headRowOf(2), "Worship Team");
    }

    void columnHeadSurvivesDelete() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        clickCell(w.fpSchedule, ScheduleColumn::Notes, 0, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuD, w.mnuDelete));
        QCOMPARE(cell(ScheduleColumn::Notes, 0), QStringLiteral("Rehearsal Notes"));
    }

    void columnsShareTheViewByTheirWidths() {
        addTheLeast();
        world->start();
        world->main().resize(1280, 800);
        frmSchedule& w = makeSchedule("6/12/05", "1");
        const auto width = [&](int col) {
            return w.fpSchedule->cellRect(col, dateRowOf(1)).width();
        };
        const double unit = width(ScheduleColumn::Notes) / 31.0;
        QVERIFY(qAbs(width(ScheduleColumn::Songs) - 26.87 * unit) < 2);
        QVERIFY(qAbs(width(ScheduleColumn::Team) - 18.37 * unit) < 2);
        const int margins = 12;
        QVERIFY(width(ScheduleColumn::Date) >=
                w.fpSchedule->fontMetrics().horizontalAdvance(QStringLiteral("06/12/05")) +
                    margins);
        QVERIFY(!w.fpSchedule->horizontalScrollBar()->isVisible());
    }

    void windowFitsTheMainWindow() {
        world->start();
        click(world->main().cmdScheduling);
        const QWidget* frame = frmSchedule::instance().parentWidget();
        QVERIFY2(frame->parentWidget()->rect().contains(frame->geometry()),
                 qPrintable(QStringLiteral("%1 x %2").arg(frame->width()).arg(frame->height())));
    }

    // Deliberate: behaviour 96.
    void wrongOrEmptiedDateShowsAMessage() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        const QString format = QStringLiteral("Format date as mm/dd/yy (06/12/05)");
        world->answers.box(format, QMessageBox::Information);
        typeInCell(w.fpSchedule, ScheduleColumn::Date, dateRowOf(1), "next week");
        QVERIFY(cell(ScheduleColumn::Date, dateRowOf(1)).isEmpty());
        typeInCell(w.fpSchedule, ScheduleColumn::Date, dateRowOf(1), "6/19/05");
        world->answers.box(format, QMessageBox::Information);
        typeInCell(w.fpSchedule, ScheduleColumn::Date, dateRowOf(1), "");
        QVERIFY(cell(ScheduleColumn::Date, dateRowOf(1)).isEmpty());
    }

    // Deliberate: behaviour 96.
    void deletedDateShowsNoMessage() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        menu(ScheduleColumn::Date, dateRowOf(1), w.mnuDelete);
        QVERIFY(cell(ScheduleColumn::Date, dateRowOf(1)).isEmpty());
    }

    void deleteClosesTheGapUnderAPersonellHead() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        for (int row = dateRowOf(1); row <= lastRowOf(1); ++row)
            w.fpSchedule->SetText(ScheduleColumn::Team, row, QStringLiteral("R:%1").arg(row));
        menu(ScheduleColumn::Team, dateRowOf(1) + 2, w.mnuDelete);
        QCOMPARE(team(dateRowOf(1), dateRowOf(1) + 4),
                 (QStringList{"R:4", "R:5", "R:7", "R:8", "R:9"}));
        QCOMPARE(team(dateRowOf(1) + 13, headRowOf(2)), (QStringList{"R:18", "", "Personell"}));
        // The cells move up once: a gap that was there before moves up by one row.
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 5, QString());
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 6, QString());
        menu(ScheduleColumn::Team, dateRowOf(1) + 4, w.mnuDelete);
        QCOMPARE(team(dateRowOf(1) + 3, dateRowOf(1) + 8),
                 (QStringList{"R:8", "", "", "R:12", "R:13", "R:14"}));
    }

    void deleteInOtherColumnsMovesNothing() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26"});
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 1, QStringLiteral("note"));
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 2, QStringLiteral("below"));
        menu(ScheduleColumn::Notes, dateRowOf(1) + 1, w.mnuDelete);
        QCOMPARE(cell(ScheduleColumn::Notes, dateRowOf(1) + 1), QString());
        QCOMPARE(cell(ScheduleColumn::Notes, dateRowOf(1) + 2), QStringLiteral("below"));
    }

    // Deliberate: behaviour 92.
    void deleteOnALaterDateRowFindsTheWeekBeforeAndOnlyBlanks() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(2), QStringLiteral("R:20"));
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(2) + 1, QStringLiteral("R:21"));
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(2) + 2, QStringLiteral("R:22"));
        menu(ScheduleColumn::Team, dateRowOf(2), w.mnuDelete);
        QCOMPARE(team(dateRowOf(2), dateRowOf(2) + 2), (QStringList{"", "R:21", "R:22"}));
        // One row lower, the week's own head is found first.
        menu(ScheduleColumn::Team, dateRowOf(2) + 1, w.mnuDelete);
        QCOMPARE(team(dateRowOf(2), dateRowOf(2) + 2), (QStringList{"", "R:22", ""}));
    }

    // Deliberate: behaviour 90.
    void deleteUnderAWorshipTeamHeadOnlyBlanks() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 1, QStringLiteral("R:5"));
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 2, QStringLiteral("R:6"));
        menu(ScheduleColumn::Team, dateRowOf(1) + 1, w.mnuDelete);
        QCOMPARE(team(dateRowOf(1) + 1, dateRowOf(1) + 2), (QStringList{"", "R:6"}));
    }

    // Deliberate: behaviour 91.
    void insertPlayerMovesTheListDownAndLosesTheLast() {
        addTheLeast();
        frmSchedule& w = showWeeks({"11/22/26", "11/29/26"});
        for (int row = dateRowOf(1); row <= lastRowOf(1); ++row)
            w.fpSchedule->SetText(ScheduleColumn::Team, row, QStringLiteral("R:%1").arg(row));
        menu(ScheduleColumn::Team, dateRowOf(1) + 2, w.mnuInsertPlayer);
        QCOMPARE(team(dateRowOf(1), dateRowOf(1) + 4),
                 (QStringList{"R:4", "R:5", "", "R:6", "R:7"}));
        QCOMPARE(team(dateRowOf(1) + 13, headRowOf(2)), (QStringList{"R:16", "R:17", "Personell"}));
        menu(ScheduleColumn::Notes, dateRowOf(1) + 2, w.mnuInsertPlayer);
        QCOMPARE(team(dateRowOf(1), dateRowOf(1) + 4),
                 (QStringList{"R:4", "R:5", "", "R:6", "R:7"}));
    }

    // Deliberate: behaviour 90.
    void insertPlayerUnderAWorshipTeamHeadMovesNothing() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        w.fpSchedule->SetText(ScheduleColumn::Team, dateRowOf(1) + 1, QStringLiteral("R:5"));
        menu(ScheduleColumn::Team, dateRowOf(1) + 1, w.mnuInsertPlayer);
        QCOMPARE(team(dateRowOf(1) + 1, dateRowOf(1) + 2), (QStringList{"R:5", ""}));
    }

    void insertWeekNeedsAHeadRow() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "1");
        world->answers.box("Please select a row where the first column name is 'Date'",
                           QMessageBox::Information);
        menu(ScheduleColumn::Date, dateRowOf(1), w.mnuInsertWeek);
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(1)), QStringLiteral("06/12/05"));
    }

    // Deliberate: behaviour 93.
    void insertWeekOnTheFirstHeadKeepsTheTitle() {
        addTheLeast();
        frmSchedule& w = makeSchedule("6/12/05", "2");
        menu(ScheduleColumn::Notes, headRowOf(1), w.mnuInsertWeek);
        QCOMPARE(cell(1, ScheduleRow::Title), QStringLiteral("Schedule For: 06/12/05 to 06/19/05"));
        verifyHead(headRowOf(1), "Personell");
        verifyHead(headRowOf(2), "Worship Team");
        QVERIFY(cell(ScheduleColumn::Date, dateRowOf(1)).isEmpty());
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(2)), QStringLiteral("06/12/05"));
        QCOMPARE(cell(ScheduleColumn::Date, dateRowOf(3)), QStringLiteral("06/19/05"));
        const CellFormat head = w.fpSchedule->formatAt(1, ScheduleColumn::Notes, headRowOf(1));
        QCOMPARE(head.top.style, BorderStyle::Solid);
        QCOMPARE(w.fpSchedule->formatAt(1, ScheduleColumn::Date, headRowOf(2)).right.style,
                 BorderStyle::Solid);
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
    }

    void insertedWeekGetsOffersLikeTheOthers() {
        addTheLeast();
        addPerson({.first = "Bob", .last = "Cole", .role = "Drums", .vacation = "06/15/05"});
        frmSchedule& w = makeSchedule("6/12/05", "2");
        menu(ScheduleColumn::Songs, headRowOf(2), w.mnuInsertWeek);
        QCOMPARE(offersIn(dateRowOf(2)), QStringList{"no drop-down"});
        typeInCell(w.fpSchedule, ScheduleColumn::Date, dateRowOf(2), "6/15/05");
        click(w.cmdRefresh);
        QCOMPARE(offersIn(dateRowOf(2)), QStringList{"Piano:Anna Berg"});
        QCOMPARE(offersIn(lastRowOf(2)), QStringList{"Piano:Anna Berg"});
        QCOMPARE(offersIn(dateRowOf(3)), (QStringList{"Drums:Bob Cole", "Piano:Anna Berg"}));
    }
};

LORVANITE_TEST(TestScheduleWeeks)
#include "test_schedule_weeks.moc"
