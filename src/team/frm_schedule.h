// Scheduling: the team's people on the left, the schedule of the coming weeks on the right.
#pragma once

#include "core/grid/sheet_grid.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_choose_email_panel.h"
#include "ui_frm_schedule.h"

#include <QAction>
#include <QDate>
#include <QMenu>

#include <array>
#include <vector>

class frmSchedule : public Form<frmSchedule>, public Ui::frmSchedule, public Ui::ChooseEmailPanel {
public:
    frmSchedule();

    // The offers of one date, sorted: column 1, a row an offer; and the sheet that the roster is
    // printed from. Never on the screen.
    SheetGrid fpTemp;

    // The menu of a right click on fpSchedule.
    QMenu mnuD;
    QAction mnuDelete, mnuInsertPlayer, mnuInsertWeek;

    // The panel's choice: a range of weeks, or the whole schedule.
    std::array<QRadioButton*, 2> optEmail{};

    // What stripApostrophes has let through since it was last emptied.
    QString cleaned;

    // --- People ---

    // Fills cmbPersonell, by last name.
    void loadPersonnelList();

    // Shows one person's record; an ID that no one has leaves lblHidPersonID. Raises 13 where a
    // stored vacation day is no date.
    void showPerson(int id);

    // Appends the text to `cleaned`, without its apostrophes.
    void stripApostrophes(const QString& text);

    // --- The schedule ---

    // Offers in every week's column 4 who can serve on its date, and writes the recorded songs of
    // the date into column 3. Raises 3021 where no person is entered or no song recorded.
    void refreshAvailability();

    // Shows the schedule of the start-up, if one is wanted, with its reminder lines. Raises what a
    // bad date or interval of the special music raises.
    void showStartSchedule();

    // --- What goes out of it ---

    // Takes the blank rows below the title out of the grid, which the file config/temp.scd keeps
    // as it was.
    void compactForOutput();

    // Mails or prints what the panel asks for, and puts the grid back as it was. Stops with a
    // message where a date of the range is wrong; the grid stays compacted then. Mail raises 53 or
    // 75 where the staging file cannot be read or written.
    void mailSchedule();
    void printSchedule();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void wirePeople();
    void wireSchedule();
    void setUpMenu();
    void setUpPeopleGrids();
    void setUpSchedule();
    void load();
    void paintBars();

    // People: frm_schedule_people.cpp
    void cmbPersonell_Click(int item);
    void cmdAddPlayer_Click();
    void cmdDeletePlayer_Click();
    void cmdClrPlayer_Click();
    void storePerson(const QStringList& values);
    QStringList readFields();
    QString readVacation();
    void selectShownPerson();

    // Weeks: frm_schedule_weeks.cpp
    void cmdLoadDates_Click();
    void fpSchedule_Change(int col, int row);
    void fpSchedule_RightClick(int clickType, int col, int row, int x, int y);
    void mnuDelete_Click();
    void mnuInsertPlayer_Click();
    void mnuInsertWeek_Click();
    void dropTitle();
    void writeDates(const QDate& start, double weeks);
    void writeTitle(const QDate& start, double weeks);
    void writeHead(int row, const QString& headOfTeam);
    void setColumnWidths(double notes, double songs, double team);
    void showSchedule(bool on);
    int lastRowOfBlock(int row) const;

    // Availability: frm_schedule_availability.cpp
    void cmdRefresh_Click();
    bool isAvailabilityKnown();
    void offerPeople();
    void offerInWeek(int dateRow);
    void fillSetLists(int firstRow, int weeks);
    int weeksOfGrid() const;

    // Files: frm_schedule_files.cpp
    void cmdSaveSched_Click();
    void cmdLoadSched_Click();
    void cmdClearSched_Click();
    void chkShow_MouseUp(bool ticked);
    void finalise();
    void finaliseWeek(int row, const QString& date);
    QString proposedName() const;
    void refreshSetListOf(int row, const QString& date);
    bool chooseFile(void (CommonDialog::*show)(), const QString& proposed,
                    const QString& filter = QStringLiteral("SCD Files|*.scd"));
    void showFile(const QString& path);

    // Reminders: frm_schedule_reminders.cpp
    void writeReminders();
    void writeRemindersOf(int row, const QDate& date);

    // Output: frm_schedule_output.cpp
    void setUpChooseEmail();
    void wireOutput();
    std::array<QWidget*, 4> rangeParts() const;
    void optEmail_Click(int index);
    bool isRangeMode() const;
    void cmdEmailSchedule_Click();
    void cmdPrintSched_Click();
    void Command4_Click();
    void cmdSend_Click();
    void cmdExportText_Click();
    void toggleChooseEmail(QPushButton* opener, const QString& range, const QString& whole,
                           const QString& send);
    void hideChooseEmail();
    void placeChooseEmail();
    void hideForOutput();
    void restoreAfterOutput();
    bool findWeeks(int& first, int& last, bool letsEventsThrough);
    void joinNoteLines();
    static void applyPrintSettings(SheetGrid& grid);

    QPushButton* m_opener = nullptr;  // the button that has shown the panel

    // The roster: frm_schedule_roster.cpp
    void cmdPrintRoster_Click();
    void addToRoster(int id);
    void printRoster();
};
