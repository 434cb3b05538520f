// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Scheduling: the people of the team on the left, the schedule of the coming weeks on the right.
#pragma once

#include "core/grid/sheet_grid.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_schedule.h"

#include <QAction>
#include <QMenu>

#include <optional>

class KeptWork;
struct RowRange;

class frmSchedule : public Form<frmSchedule>, public Ui::frmSchedule {
public:
    frmSchedule();

    // The work grid: in column 1 what is offered on one date, or the roster. It is never shown.
    SheetGrid fpTemp;

    // The pop-up menu of fpSchedule.
    QMenu mnuD;
    QAction mnuDelete, mnuInsertPlayer, mnuInsertWeek;

    // What stripApostrophes has appended since it was last emptied.
    QString cleaned;

    // --- People ---

    // Fills cmbPersonell, by last name.
    void loadPersonnelList();

    // Shows the record of a person. If there is no such person, lblHidPersonID stays. Raises
    // RunTimeError::TypeMismatch at a stored vacation day that is no date.
    void showPerson(int id);

    // Appends the text without its apostrophes to `cleaned`.
    void stripApostrophes(const QString& text);

    // --- The schedule ---

    // Updates the offers and the set lists of all weeks. Raises like updateAvailability.
    void refreshAvailability();

    // Shows the start-up schedule, if one is chosen, with its reminders. Raises like
    // writeReminders and updateAvailability.
    void showStartSchedule();

    // --- Output ---

    // Saves the grid to config/temp.scd and removes its blank rows. If it cannot be saved, shows a
    // message, leaves the grid as it was and returns false.
    [[nodiscard]] bool compactForOutput();

    // Mail or print what the panel asks for, and restore the grid. At a wrong date of the range
    // they stop with a message, and the grid stays compacted. Mail raises
    // RunTimeError::FileNotFound or RunTimeError::PathAccess if the staging file cannot be read or
    // written.
    void mailSchedule();
    void printSchedule();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void wire();
    void setUpMenu();
    void setUpGrids();
    void load();
    void paintBars();

    // People: frm_schedule_people.cpp
    void cmbPersonell_Click(int item);
    void cmdAddPlayer_Click();
    void cmdDeletePlayer_Click();
    void cmdClrPlayer_Click();
    void cmdPrintRoster_Click();
    QStringList readFields();
    void selectShownPerson();
    void keepPerson();
    void startPerson();

    // Weeks and files: frm_schedule_weeks.cpp
    void cmdLoadDates_Click();
    void cmdRefresh_Click();
    void fpSchedule_Change(int col, int row);
    void fpSchedule_RightClick(int clickType, int col, int row, int x, int y);
    void mnuDelete_Click();
    void mnuInsertPlayer_Click();
    void mnuInsertWeek_Click();
    void cmdSaveSched_Click();
    void cmdLoadSched_Click();
    void cmdClearSched_Click();
    void chkShow_MouseUp(bool ticked);
    void showSchedule(bool on);
    void showFile(const QString& path);

    // Output: frm_schedule_output.cpp
    void cmdEmailSchedule_Click();
    void cmdPrintSched_Click();
    void cmdSend_Click();
    void cmdExportText_Click();
    void placeChooseEmail();
    void hideForOutput();
    void restoreAfterOutput();
    void endOutput();
    std::optional<RowRange> findWeeks(bool letsEventsThrough);

    KeptWork* m_keptSchedule = nullptr;
    KeptWork* m_keptPerson = nullptr;
    bool m_isCompacted = false;  // for output
};
