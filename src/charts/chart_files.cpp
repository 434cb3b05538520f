// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/chart_files.h"

#include "charts/rules/song_tie.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/form.h"
#include "platform/desktop/kept_work.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"

namespace {

void raiseFor(const QString& file, QFrame* frmAssign, Ui::AssignPanel& panel) {
    panel.fpAttach->Col(AttachColumn::ID);
    panel.fpAttach->ColHidden(true);
    panel.lblAssign->setText(songLocation(file));
    panel.lblAssign->setToolTip(Qt::convertFromPlainText(file));
    raisePanel(frmAssign);
}

}  // namespace

bool chooseMusicFile(const QString& filter, void (CommonDialog::*show)(), const QString& proposed) {
    CommonDialog& dialog = commonDlg();
    const QString last = dialog.FileName;
    if (chooseFileIn(QStringLiteral("sheetmusic"), dialog, show, proposed, filter)) return true;
    // "Attach To DB" takes the file that was chosen last.
    dialog.FileName = last;
    return false;
}

bool chooseChart(void (CommonDialog::*show)()) {
    return chooseMusicFile(QStringLiteral("STP Files|*.stp"), show);
}

void raisePanel(QWidget* panel) {
    panel->setEnabled(true);
    panel->raise();
    // The keyboard focus goes to the panel's list. It makes no row the active one.
    if (auto* list = panel->findChild<SheetView*>()) list->setFocus();
}

void sendToBottom(QWidget* panel) {
    panel->lower();
    // What is behind the grid must not get the keyboard focus.
    panel->setEnabled(false);
}

void setUpAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel) {
    panel.setupUi(frmAssign);
    panel.fpAttach->MaxCols(AttachColumn::Title);
    panel.fpAttach->MaxRows(0);
    panel.fpAttach->ColHeadersShow(false);
    panel.fpAttach->RowHeadersShow(false);
    panel.fpAttach->GridShowVert(false);
    panel.fpAttach->setReadOnly(true);
    panel.fpAttach->setFillColumn(AttachColumn::Title);
    panel.cmdSaveAssigned->setIcon(themedIcon(QStringLiteral("assign")));
    panel.cmdCloseAssign->setIcon(themedIcon(QStringLiteral("close")));
    sendToBottom(frmAssign);
}

void saveChart(const SheetGrid& chart, FormBase& window, KeptWork& kept, QFrame* frmAssign,
               Ui::AssignPanel& panel) {
    if (!chooseChart(&CommonDialog::ShowSave)) return;
    const QString file = commonDlg().FileName;
    // Deliberate: behaviour 127.
    if (chart.SaveToFile(file, false)) {
        kept.saved();
        window.nameFile(file);
        tellSaved(file);
    } else {
        tellNotSaved();
    }
    if (messageBox(
            QStringLiteral("Would you like to associate this music to a song in the database?"),
            BoxIcon::None, QStringLiteral("Lorvanite"), BoxButtons::YesNo) == BoxAnswer::No)
        return;
    try {
        listSongsToTie(*panel.fpAttach);
    } catch (const RunTimeError&) {
        // Once the dialog has been shown, errors do not stop this command.
    }
    raiseFor(file, frmAssign, panel);
}

void showAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel) {
    listSongsToTie(*panel.fpAttach);
    // Deliberate: behaviour 129.
    raiseFor(commonDlg().FileName, frmAssign, panel);
}

void saveAssigned(const Ui::AssignPanel& panel) {
    const bool tied = tieToActiveSong(*panel.fpAttach, fileOfSongLocation(panel.lblAssign->text()));
    messageBox(tied ? QStringLiteral("Done!")
                    : QStringLiteral("Please select a song title to assign this file to."),
               BoxIcon::Information);
}
