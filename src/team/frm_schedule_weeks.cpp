// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The schedule: its weeks, its pop-up menu, its files and the start-up schedule.
#include "core/data/database.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/kept_work.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "team/frm_schedule.h"
#include "team/rules/availability.h"
#include "team/rules/finalising.h"
#include "team/rules/reminders.h"
#include "team/rules/schedule_grid.h"
#include "team/rules/schedule_weeks.h"

namespace {

bool chooseSchedule(void (CommonDialog::*show)(), const QString& proposed) {
    return chooseFileIn(QStringLiteral("schedules"), commonDlg(), show, proposed,
                        QStringLiteral("SCD Files|*.scd"));
}

QString scheduleToUse() { return preference(QStringLiteral("ScedToUse")); }

}  // namespace

void frmSchedule::showSchedule(bool on) {
    QSizePolicy policy = fpSchedule->sizePolicy();
    policy.setRetainSizeWhenHidden(false);
    fpSchedule->setSizePolicy(policy);
    fpSchedule->setVisible(on);
    lblNoSchedule->setVisible(!on);
}

// --- Weeks -------------------------------------------------------------------------------------

void frmSchedule::refreshAvailability() { updateAvailability(*fpSchedule, fpTemp); }

void frmSchedule::cmdRefresh_Click() { refreshAvailability(); }

void frmSchedule::cmdLoadDates_Click() {
    const QString weeks = fpPickDate->GetText(PickDateColumn::Weeks, 1);
    const QString start = fpPickDate->GetText(PickDateColumn::StartDate, 1);
    showSchedule(true);
    if (weeks.isEmpty() || start.isEmpty()) {
        messageBox(
            QStringLiteral("Please select the starting date and the number of weeks to the left."),
            BoxIcon::Information);
        return;
    }
    // Deliberate: behaviour 98.
    m_keptSchedule->replaceBy([&] { makeSchedule(*fpSchedule, fpTemp, start, weeks); });
    nameFile(QString());
    showSchedule(true);
}

void frmSchedule::fpSchedule_Change(int col, int row) {
    // Undo brings back a text that was there before, which may be the title.
    if (col != ScheduleColumn::Date || fpSchedule->isUndoing() || rewriteDate(*fpSchedule, row))
        return;
    // An emptied date is no date either.
    // Deliberate: behaviour 96.
    messageBox(QStringLiteral("Format date as mm/dd/yy (06/12/05)"), BoxIcon::Information);
    fpSchedule->SetText(col, row, QString());
}

void frmSchedule::fpSchedule_RightClick(int, int col, int row, int x, int y) {
    fpSchedule->SetActiveCell(col, row);
    mnuD.popup(fpSchedule->mapToGlobal(QPoint(x, y)));
}

void frmSchedule::mnuDelete_Click() {
    if (fpSchedule->ActiveRow() < 1) return;
    deleteEntry(*fpSchedule, fpSchedule->ActiveCol(), fpSchedule->ActiveRow());
}

void frmSchedule::mnuInsertPlayer_Click() {
    if (fpSchedule->ActiveCol() == ScheduleColumn::Team)
        insertPlayer(*fpSchedule, fpSchedule->ActiveRow());
}

void frmSchedule::mnuInsertWeek_Click() {
    if (!insertWeek(*fpSchedule, fpSchedule->ActiveRow()))
        messageBox(QStringLiteral("Please select a row where the first column name is 'Date'"),
                   BoxIcon::Information);
}

// --- Files -------------------------------------------------------------------------------------

void frmSchedule::cmdSaveSched_Click() {
    if (messageBox(
            QStringLiteral("Would you like to finalize this schedule and save the players list?"),
            BoxIcon::None, QStringLiteral("Save Players List"),
            BoxButtons::YesNo) == BoxAnswer::Yes)
        finaliseSchedule(*fpSchedule);
    if (!chooseSchedule(&CommonDialog::ShowSave, proposedScheduleName(*fpSchedule))) return;
    if (!fpSchedule->SaveToFile(commonDlg().FileName, false)) {
        tellNotSaved();
        return;
    }
    m_keptSchedule->saved();
    nameFile(commonDlg().FileName);
    tellSaved(commonDlg().FileName);
}

void frmSchedule::cmdLoadSched_Click() {
    if (!chooseSchedule(&CommonDialog::ShowOpen, QString())) return;
    m_keptSchedule->leave();
    // No failure stops the load.
    // Deliberate: behaviour 105.
    if (fpSchedule->LoadFromFile(commonDlg().FileName)) nameFile(commonDlg().FileName);
    fpSchedule->EditModeReplace(true);
    setPastScheduleWidths(*fpSchedule);
    try {
        refreshAvailability();
    } catch (const RunTimeError&) {
    }
    refreshSetLists(*fpSchedule);
    m_keptSchedule->loaded();
    showSchedule(true);
}

void frmSchedule::cmdClearSched_Click() {
    m_keptSchedule->replaceBy([this] { clearSchedule(*fpSchedule); });
    nameFile(QString());
    showSchedule(false);
}

// --- The start-up schedule ---------------------------------------------------------------------

void frmSchedule::showFile(const QString& path) {
    // Deliberate: behaviour 103.
    if (fpSchedule->LoadFromFile(path)) nameFile(path);
    fpSchedule->EditModeReplace(true);
    showSchedule(true);
    fpSchedule->SetActiveCell(0, 0);
}

void frmSchedule::chkShow_MouseUp(bool ticked) {
    if (!ticked) {
        showSchedule(false);
    } else if (messageBox(QStringLiteral("Would you like to pick a schedule to display?"),
                          BoxIcon::None, QStringLiteral("Lorvanite"),
                          BoxButtons::YesNo) == BoxAnswer::Yes) {
        if (!chooseSchedule(&CommonDialog::ShowOpen, QString())) return;
        const QString path = commonDlg().FileName;
        m_keptSchedule->replaceBy([&] { showFile(path); });
        storePreference(QStringLiteral("ScedToUse"), path);
    } else {
        m_keptSchedule->replaceBy([this] { showFile(scheduleToUse()); });
    }
    storePreference(QStringLiteral("SchedOnStartUp"),
                    ticked ? QStringLiteral("true") : QStringLiteral("false"));
}

void frmSchedule::showStartSchedule() {
    QString path;
    if (preference(QStringLiteral("SchedOnStartUp")) == QLatin1String("true"))
        path = scheduleToUse();
    chkShow->setChecked(!path.isEmpty());
    if (path.isEmpty()) {
        showSchedule(false);
    } else {
        showFile(path);
        // Deliberate: behaviour 116.
        writeReminders(*fpSchedule);
        setNewScheduleWidths(*fpSchedule);
    }
    fpSchedule->EditModeReplace(true);
    // The first person and the first set can be entered only in a window that opens.
    // Deliberate: behaviour 97.
    if (isAvailabilityKnown()) refreshAvailability();
}
