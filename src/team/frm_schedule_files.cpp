// Finalising, the schedule's files, the schedule of the start-up.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_rows.h"

namespace {

QString scheduleToUse() { return preference(QStringLiteral("ScedToUse")); }

// Runs a step whose failure changes nothing about the steps behind it.
template <typename Step>
void ignoringFailure(Step step) {
    try {
        step();
    } catch (const RunTimeError&) {
        // Meant: a load goes on with whatever it can do.
        return;
    }
}

}  // namespace

bool frmSchedule::chooseFile(void (CommonDialog::*show)(), const QString& proposed,
                             const QString& filter) {
    return chooseFileIn(QStringLiteral("schedules"), commonDlg(), show, proposed, filter);
}

// --- Saving ------------------------------------------------------------------------------------

void frmSchedule::cmdSaveSched_Click() {
    if (messageBox(
            QStringLiteral("Would you like to finalize this schedule and save the players list?"),
            BoxIcon::None, QStringLiteral("Save Players List"),
            BoxButtons::YesNo) == BoxAnswer::Yes)
        finalise();
    if (!chooseFile(&CommonDialog::ShowSave, proposedName())) return;
    if (!fpSchedule->SaveToFile(commonDlg().FileName, false)) tellNotSaved();
}

void frmSchedule::finalise() {
    const int last = fpSchedule->DataRowCnt();
    for (int row = FirstHeadRow; row <= last; ++row) {
        int col = 0;
        int anchor = 0;
        int cols = 0;
        int rows = 0;
        if (fpSchedule->GetCellSpan(NotesColumn, row, col, anchor, cols, rows))
            fpSchedule->RemoveCellSpan(col, anchor);
        if (const auto date = parseDate(fpSchedule->GetText(DateColumn, row)))
            finaliseWeek(row, formatDate(*date));
    }
}

// A date is always finalised anew. The look goes one row beyond the week, to the head of the next
// one: a "Personell" head is passed over, and a "Worship Team" head fails as any text without a
// colon does, with this week's rows stored. This is meant.
void frmSchedule::finaliseWeek(int row, const QString& date) {
    execute(QStringLiteral("DELETE FROM schedule WHERE pdate = '") + date + QLatin1Char('\''));
    for (int k = row; k < row + WeekRows; ++k) {
        const QString text = fpSchedule->GetText(TeamColumn, k);
        if (text.isEmpty() || text == QLatin1String("Personell")) continue;
        const qsizetype colon = text.indexOf(QLatin1Char(':'));
        if (colon < 0) throw RunTimeError(RunTimeError::InvalidCall);
        execute(QStringLiteral("INSERT INTO schedule (player, instrument, pdate) VALUES ('") +
                text.mid(colon + 1) + QStringLiteral("', '") + text.left(colon) +
                QStringLiteral("', '") + date + QStringLiteral("')"));
    }
}

// The dates of the title: "06_12_05 to 07_03_05". Raises 5 where the title has none.
QString frmSchedule::proposedName() const {
    QString title = fpSchedule->GetText(1, 1);
    const qsizetype slash = title.indexOf(QLatin1Char('/'));
    if (slash < 2) throw RunTimeError(RunTimeError::InvalidCall);
    return title.mid(slash - 2).replace(QLatin1Char('/'), QLatin1Char('_'));
}

// --- Loading -----------------------------------------------------------------------------------

void frmSchedule::cmdLoadSched_Click() {
    if (!chooseFile(&CommonDialog::ShowOpen, QString())) return;
    fpSchedule->LoadFromFile(commonDlg().FileName);
    // Not the widths of a new schedule: this is meant.
    setColumnWidths(26.88, 27.0, 18.38);
    ignoringFailure([this] { refreshAvailability(); });
    const int last = fpSchedule->DataRowCnt();
    for (int row = 1; row <= last; ++row) {
        if (const auto date = parseDate(fpSchedule->GetText(DateColumn, row)))
            ignoringFailure([&] { refreshSetListOf(row, formatDate(*date)); });
    }
    showSchedule(true);
}

void frmSchedule::refreshSetListOf(int row, const QString& date) {
    Recordset rs =
        select(QStringLiteral("SELECT played_date, title FROM played_on WHERE played_date = '") +
               date + QLatin1Char('\''));
    for (; !rs.EOF_(); rs.MoveNext()) fpSchedule->SetText(SongsColumn, row++, rs.Fields("title"));
}

void frmSchedule::cmdClearSched_Click() {
    fpSchedule->ClearRange(1, 1, -1, -1, true);
    dropTitle();
    showSchedule(false);
}

// --- The start-up ------------------------------------------------------------------------------

void frmSchedule::showFile(const QString& path) {
    // A file that is missing or damaged leaves the grid as it is, without a word: this is meant.
    fpSchedule->LoadFromFile(path);
    showSchedule(true);
    fpSchedule->SetActiveCell(0, 0);
}

void frmSchedule::chkShow_MouseUp(bool ticked) {
    if (!ticked) {
        showSchedule(false);
    } else if (messageBox(QStringLiteral("Would you like to pick a schedule to display?"),
                          BoxIcon::None, QStringLiteral("Lorvanite"),
                          BoxButtons::YesNo) == BoxAnswer::Yes) {
        if (!chooseFile(&CommonDialog::ShowOpen, QString())) return;
        const QString path = commonDlg().FileName;
        showFile(path);
        storePreference(QStringLiteral("ScedToUse"), path);
    } else {
        showFile(scheduleToUse());
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
        writeReminders();
        setColumnWidths(31.0, 26.87, 18.37);
    }
    fpSchedule->EditModeReplace(true);
    // The first person and the first set have to be entered in a program that opens.
    if (isAvailabilityKnown()) refreshAvailability();
}
