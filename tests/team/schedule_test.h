// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the tests of the schedule window share.
#pragma once

#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"
#include "team/rules/personnel.h"
#include "team/rules/schedule_grid.h"

// A person to be stored; the value "NULL" stores none.
struct NewPerson {
    QString first, last, role;
    QString role2 = QString(), role3 = QString(), vacation = QString();
    QString excluded = QStringLiteral("0");
};

class ScheduleTest : public WindowTest {
    Q_OBJECT

protected:
    // The ID that the person gets.
    int addPerson(const NewPerson& person);
    void addPlayed(const QString& title, const QString& date);

    // Adds a person and a played song, which the availability needs.
    void addTheLeast();

    // Opens the window with its button and clears the statement log.
    frmSchedule& open();
    void close();

    // Types start and weeks and clicks "New".
    frmSchedule& makeSchedule(const QString& start, const QString& weeks);

    // Right-clicks a cell of the schedule and picks a command of the menu.
    void menu(int col, int row, QAction& command);

    // Picks a person in the combo box by keyboard.
    void pick(const QString& name);

    // Types fields of the person's grid one by one: row and text.
    void typePerson(const std::vector<std::pair<int, QString>>& fields);

    // Toggles a check box, or selects a radio button, by keyboard.
    void toggle(QAbstractButton* box);

    // The items of the drop-down list in column 4 of a row.
    QStringList offersIn(int row);

    // Saves a grid to a file in the folder "schedules" and returns its path.
    QString writeFile(const SheetGrid& grid, const QString& name);

    // Sets the start-up schedule.
    void showAtStart(const QString& path);

    // Opens the window with a schedule of these weeks.
    frmSchedule& showWeeks(const QStringList& dates, const QString& head = "Personell");

    // Answers the next file dialog with a file that cannot be written, and the message about it.
    void answerNotSaved(const QString& name);

    // The print settings that the schedule and the roster have in common: sets them to other
    // values, and compares them with the right ones.
    static void setWrongPrintSettings(SheetGrid& grid);
    static void compareCommonPrintSettings(const SheetGrid& grid);

    // Makes a schedule as a file holds it: a week for each date, with this head in column 4.
    void fillSchedule(SheetGrid& grid, const QStringList& dates, const QString& head);
};
