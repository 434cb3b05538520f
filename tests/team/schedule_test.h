// What the tests of the schedule window share.
#pragma once

#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_rows.h"

// A person as the row is written; "NULL" as a value stores none.
struct PersonRow {
    QString first, last, role;
    QString role2 = QString(), role3 = QString(), vacation = QString();
    QString excluded = QStringLiteral("0");
};

class ScheduleTest : public WindowTest {
    Q_OBJECT

protected:
    // The ID that the person gets.
    int addPerson(const PersonRow& person);
    void addPlayed(const QString& title, const QString& date);

    // A person and a played song, so that the availability pass has what it needs.
    void addTheLeast();

    // Opens the window from the button bar and clears the statement log.
    frmSchedule& open();
    void close();

    // Types start and weeks and presses "New".
    frmSchedule& makeSchedule(const QString& start, const QString& weeks);

    // Right-clicks a cell of the schedule and picks a command of the menu.
    void menu(int col, int row, QAction& command);

    // Picks a person in the box by the keyboard.
    void pick(const QString& name);

    // Fields of the person's grid, typed one by one: row and text.
    void typePerson(const std::vector<std::pair<int, QString>>& fields);

    // Toggles a box, or picks an option, by the keyboard.
    void toggle(QAbstractButton* box);

    // The lines that a drop-down of column 4 offers.
    QStringList offersIn(int row);

    // Saves a grid as this file of the folder "schedules" and gives its path.
    QString writeFile(const SheetGrid& grid, const QString& name);

    // Makes this file the schedule of the start-up.
    void showAtStart(const QString& path);

    // Opens the window on a schedule of these weeks.
    frmSchedule& showWeeks(const QStringList& dates, const QString& head = "Personell");

    // Answers the next file dialog with a file that cannot be written, and the box about it.
    void answerNotSaved(const QString& name);

    // The print settings that the schedule and the roster share, all set as neither prints; and as
    // both do.
    static void setWrongPrintSettings(SheetGrid& grid);
    static void compareCommonPrintSettings(const SheetGrid& grid);

    // A schedule as it lies in a file: one date a week, heads named `head`.
    void fillSchedule(SheetGrid& grid, const QStringList& dates, const QString& head);
};
