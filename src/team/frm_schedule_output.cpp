// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The output of a schedule: mail, paper, a page of HTML.
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "mail/frm_email.h"
#include "mail/mail_hand_over.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/kept_work.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "platform/paper/printing.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_grid.h"
#include "team/rules/schedule_output.h"

#include <QFile>
#include <QKeyEvent>
#include <QScopeGuard>

#include <tuple>
#include <utility>

namespace {

constexpr int PanelGap = 8;  // pixels

// Holds the whole schedule while the grid is compacted.
QString scratchFile() { return programFolder() + QStringLiteral("/config/temp.scd"); }

void tellWrongDate() {
    messageBox(QStringLiteral("Wrong date formatting.  Please enter a valid date."),
               BoxIcon::Information);
}

// Rewrites the staging file as one line, and returns that line.
QString rewriteStagedTable() {
    QString html;
    for (const QString& line : linesOf(mailStagingFile())) html += mailedLine(line);
    if (!replaceFile(mailStagingFile(), html.toUtf8() + "\r\n"))
        throw RunTimeError(RunTimeError::PathAccess);
    return html;
}

}  // namespace

// --- The panel ---------------------------------------------------------------------------------

void frmSchedule::cmdEmailSchedule_Click() {
    frmChooseEmail->toggle(ChooseEmailPanel::Output::Mail, cmdEmailSchedule);
    placeChooseEmail();
}

void frmSchedule::cmdPrintSched_Click() {
    frmChooseEmail->toggle(ChooseEmailPanel::Output::Print, cmdPrintSched);
    placeChooseEmail();
}

// Over the lower right corner of the schedule, above the buttons that show it.
void frmSchedule::placeChooseEmail() {
    frmChooseEmail->adjustSize();
    const QPoint corner = cmdExportText->geometry().topRight();
    frmChooseEmail->move(corner.x() + 1 - frmChooseEmail->width(),
                         corner.y() - PanelGap - frmChooseEmail->height());
}

void frmSchedule::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    placeChooseEmail();
}

void frmSchedule::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && frmChooseEmail->isVisible())
        frmChooseEmail->hidePanel();
    else
        FormBase::keyPressEvent(event);
}

void frmSchedule::cmdSend_Click() {
    const auto end = qScopeGuard([this] { endOutput(); });
    if (frmChooseEmail->output() == ChooseEmailPanel::Output::Mail)
        mailSchedule();
    else
        printSchedule();
}

// --- The compacted grid ------------------------------------------------------------------------

// The hidden schedule keeps its place, so that nothing else in the window moves.
void frmSchedule::hideForOutput() {
    QSizePolicy policy = fpSchedule->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    fpSchedule->setSizePolicy(policy);
    fpSchedule->hide();
}

bool frmSchedule::compactForOutput() {
    const bool wasShown = !fpSchedule->isHidden();
    hideForOutput();
    const bool saved = fpSchedule->SaveToFile(scratchFile(), false);
    if (saved) {
        m_keptSchedule->keeper().keepNow();
        m_isCompacted = true;
        deleteBlankRows(*fpSchedule);
    }
    showSchedule(saved || wasShown);
    if (!saved)
        messageBox(
            QStringLiteral(
                "The schedule could not be saved to the file \"temp.scd\" in the folder "
                "\"config\", so it was not mailed, printed or exported. The schedule is "
                "unchanged.\r\rMake sure that there is space on the disk and that the folder can "
                "be written to, and try again."),
            BoxIcon::Exclamation);
    return saved;
}

void frmSchedule::restoreAfterOutput() {
    const bool loaded = fpSchedule->LoadFromFile(scratchFile());
    m_isCompacted = !loaded;
    showSchedule(true);
    if (loaded)
        QFile::remove(resolvedPath(scratchFile()));
    else
        messageBox(QStringLiteral("The schedule could not be loaded back from the file "
                                  "\"temp.scd\" in the folder \"config\". It is shown without its "
                                  "blank rows.\r\rDo not save it in this form. Use \"Load Past\" "
                                  "to load a saved schedule."),
                   BoxIcon::Exclamation);
}

// A grid that stays compacted is other work; the whole one was kept.
void frmSchedule::endOutput() {
    if (std::exchange(m_isCompacted, false)) m_keptSchedule->loaded();
}

// The rows of the range of weeks; none, after a message, if one of its dates is not found.
std::optional<RowRange> frmSchedule::findWeeks(bool letsEventsThrough) {
    const int from = rowOfDate(*fpSchedule, frmChooseEmail->txtFrom->text());
    if (letsEventsThrough) doEvents();
    const int to = rowOfDate(*fpSchedule, frmChooseEmail->txtto->text());
    if (letsEventsThrough) doEvents();
    if (from > 0 && to > 0) return weeksBetween(*fpSchedule, from, to);
    tellWrongDate();
    showSchedule(true);
    setMousePointer(MousePointer::Arrow);
    return std::nullopt;
}

// --- Mail --------------------------------------------------------------------------------------

// Each early stop leaves the grid compacted and the scratch file in its place.
// Deliberate: behaviour 107.
void frmSchedule::mailSchedule() {
    if (!compactForOutput()) return;
    const bool ofRange = frmChooseEmail->isRangeMode();
    if (ofRange && (!parseDate(frmChooseEmail->txtFrom->text()) ||
                    !parseDate(frmChooseEmail->txtto->text()))) {
        tellWrongDate();
        return;
    }
    setMousePointer(MousePointer::Hourglass);
    fpSchedule->PrintUseDataMax(true);
    setNewScheduleWidths(*fpSchedule);
    // Deliberate: behaviour 108.
    if (fpSchedule->GetText(1, ScheduleRow::Title).isEmpty()) return;
    hideForOutput();
    doEvents();
    RowRange rows{ScheduleRow::Title, fpSchedule->DataRowCnt()};
    if (ofRange) {
        const auto weeks = findWeeks(false);
        if (!weeks) return;
        rows = *weeks;
    }
    // Deliberate: behaviour 109.
    std::ignore = fpSchedule->ExportRangeToHTML(1, rows.first, ScheduleColumn::Last, rows.last,
                                                mailStagingFile(), false, QStringLiteral("lsl"));
    fillMail(rewriteStagedTable());
    // Deliberate: behaviour 113.
    joinNoteLines(*fpSchedule);
    showSchedule(true);
    doEvents();
    frmEmail::instance().Show();
    setMousePointer(MousePointer::Arrow);
    frmChooseEmail->hidePanel();
    restoreAfterOutput();
}

// --- Paper -------------------------------------------------------------------------------------

void frmSchedule::printSchedule() {
    if (!compactForOutput()) return;
    removePageBreaks(*fpSchedule);
    if (frmChooseEmail->isRangeMode()) {
        const auto weeks = findWeeks(true);
        if (!weeks) return;
        setWeeksPrint(*fpSchedule, *weeks);
    } else {
        setWholePrint(*fpSchedule);
    }
    PrintSheet(*fpSchedule, 1);
    frmChooseEmail->hidePanel();
    restoreAfterOutput();
}

// --- A page of HTML ----------------------------------------------------------------------------

void frmSchedule::cmdExportText_Click() {
    const auto end = qScopeGuard([this] { endOutput(); });
    if (!compactForOutput()) return;
    // Deliberate: behaviour 107.
    if (!chooseFileIn(QStringLiteral("schedules"), commonDlg(), &CommonDialog::ShowSave,
                      proposedExportName(*fpSchedule), QStringLiteral("HTML Files|*.html")))
        return;
    if (fpSchedule->ExportRangeToHTML(1, 1, fpSchedule->MaxCols(), fpSchedule->DataRowCnt(),
                                      commonDlg().FileName, false, QStringLiteral("lsl")))
        tellSaved(commonDlg().FileName);
    else
        tellNotSaved();
    restoreAfterOutput();
}
