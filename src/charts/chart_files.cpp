#include "charts/chart_files.h"

#include "core/data/database.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"

namespace {

const QString SongLocation = QStringLiteral("Song Location: ");

void listSongs(SheetGrid& fpAttach) {
    Recordset rs = select(QStringLiteral("SELECT ID, title FROM songs ORDER BY title"));
    // Rows of an earlier use stay, so each use lists all songs once more: this is meant.
    for (; !rs.EOF_(); rs.MoveNext()) {
        const int row = fpAttach.MaxRows() + 1;
        fpAttach.MaxRows(row);
        fpAttach.SetText(1, row, rs.Fields("ID"));
        fpAttach.SetText(2, row, rs.Fields("Title"));
    }
    rs.Close();
}

void raiseFor(const QString& file, QFrame* frmAssign, Ui::AssignPanel& panel) {
    panel.fpAttach->Col(1);
    panel.fpAttach->ColHidden(true);
    panel.lblAssign->setText(SongLocation + file);
    panel.lblAssign->setToolTip(file);
    raisePanel(frmAssign);
}

}  // namespace

bool chooseMusicFile(const QString& filter, void (CommonDialog::*show)()) {
    CommonDialog& dialog = commonDlg();
    return chooseFileIn(QStringLiteral("sheetmusic"), dialog, show, dialog.FileName, filter);
}

bool chooseChart(void (CommonDialog::*show)()) {
    return chooseMusicFile(QStringLiteral("STP Files|*.stp"), show);
}

void raisePanel(QWidget* panel) {
    panel->setEnabled(true);
    panel->raise();
    // Keys go to the panel's list, where the focus alone makes no row the active one.
    if (auto* list = panel->findChild<SheetView*>()) list->setFocus();
}

void sendToBottom(QWidget* panel) {
    panel->lower();
    // What lies behind the grid takes no keys.
    panel->setEnabled(false);
}

void setUpAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel) {
    panel.setupUi(frmAssign);
    panel.fpAttach->MaxCols(2);
    panel.fpAttach->MaxRows(0);
    panel.fpAttach->ColHeadersShow(false);
    panel.fpAttach->RowHeadersShow(false);
    panel.fpAttach->GridShowVert(false);
    panel.fpAttach->setReadOnly(true);
    panel.fpAttach->setFillColumn(2);
    panel.cmdSaveAssigned->setIcon(themedIcon(QStringLiteral("assign")));
    panel.cmdCloseAssign->setIcon(themedIcon(QStringLiteral("close")));
    sendToBottom(frmAssign);
}

void saveChart(const SheetGrid& chart, QFrame* frmAssign, Ui::AssignPanel& panel) {
    if (!chooseChart(&CommonDialog::ShowSave)) return;
    const QString file = commonDlg().FileName;
    // A save that failed does not end the command: this is meant.
    if (!chart.SaveToFile(file, false)) tellNotSaved();
    if (messageBox(
            QStringLiteral("Would you like to associate this music to a song in the database?"),
            BoxIcon::None, QStringLiteral("Lorvanite"), BoxButtons::YesNo) == BoxAnswer::No)
        return;
    try {
        listSongs(*panel.fpAttach);
    } catch (const RunTimeError&) {
        // From the dialog on errors do not stop the command.
    }
    raiseFor(file, frmAssign, panel);
}

void showAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel) {
    listSongs(*panel.fpAttach);
    raiseFor(commonDlg().FileName, frmAssign, panel);
}

void saveAssigned(const Ui::AssignPanel& panel) {
    const QString id = panel.fpAttach->GetText(1, panel.fpAttach->ActiveRow());
    const QString location = panel.lblAssign->text().mid(SongLocation.size());
    if (id.toInt() <= 0) {
        messageBox(QStringLiteral("Please select a song title to assign this file to."),
                   BoxIcon::Information);
        return;
    }
    execute(QStringLiteral("UPDATE songs SET fileLoco = '") + location +
            QStringLiteral("' WHERE ID = ") + id);
    messageBox(QStringLiteral("Done!"), BoxIcon::Information);
}
