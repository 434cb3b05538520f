// The right half of the window: the set and its design.
#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"

#include <tuple>

void frmSetList::placeSong(int row) {
    clickedSetRow = row;
    if (selectedSongRow > 0) {
        const QString title = fpSongList1->GetText(2, selectedSongRow);
        if (!title.isEmpty()) {
            fpSet->SetText(2, clickedSetRow, title);
            const int id = toLong(fpSongList1->GetText(1, selectedSongRow));
            Recordset rs = select(QStringLiteral("SELECT fileLoco FROM songs WHERE ID = ") +
                                  QString::number(id));
            // The green is only ever set here: a cell that was green stays so for a song without
            // sheet music. This is meant.
            if (!rs.Fields("fileloco").isEmpty()) {
                fpSet->Col(2);
                fpSet->Row(clickedSetRow);
                fpSet->BackColor(SheetMusicGreen);
            }
            rs.Close();
        }
    }
    selectedSongRow = 0;
}

void frmSetList::fpSet_Click(int, int row) { placeSong(row); }

void frmSetList::fpSet_Change(int col, int row) {
    if (col != 2 || row != 1) return;
    Recordset rs =
        select(QStringLiteral("SELECT song_name FROM special_music WHERE play_date = '") +
               fpSet->GetText(2, 1) + QStringLiteral("'"));
    QString names;
    for (; !rs.EOF_(); rs.MoveNext()) names += QLatin1Char(' ') + rs.Fields("song_name");
    rs.Close();
    if (names.isEmpty()) {
        lblSpecialMusic->setText(QString());
        return;
    }
    messageBox(QStringLiteral("Special Music Scheduled For This Date\r") + names,
               BoxIcon::Information);
    lblSpecialMusic->setText(QStringLiteral("Special Music: ") +
                             names.mid(names.indexOf(QLatin1Char(':')) + 1));
}

void frmSetList::fpSet_RightClick(int, int col, int row, int x, int y) {
    fpSet->SetActiveCell(col, row);
    mnuDel.popup(fpSet->mapToGlobal(QPoint(x, y)));
}

void frmSetList::mnuDeleteFPSet_Click() {
    fpSet->Col(fpSet->ActiveCol());
    fpSet->Row(fpSet->ActiveRow());
    if (fpSet->BackColor() != White) fpSet->BackColor(White);
    fpSet->Text(QString());
}

void frmSetList::mnuAddRow_Click() { fpSet->InsertRows(fpSet->ActiveRow(), 1); }

void frmSetList::mnuDeleteRow_Click() { fpSet->DeleteRows(fpSet->ActiveRow(), 1); }

void frmSetList::Command6_Click() {
    mnuSetD.popup(Command6->mapToGlobal(QPoint(0, Command6->height())));
}

bool frmSetList::chooseDesign(void (CommonDialog::*show)()) {
    CommonDialog& dialog = commonDlg();
    dialog.Filter = QStringLiteral("SDL Files|*.sdl");
    dialog.InitDir = programFolder() + QStringLiteral("\\set designs");
    dialog.FileName = QString();
    dialog.Flags = 0;
    return dialog.chosen(show);
}

void frmSetList::designSave() {
    takeFocusOff();
    if (!chooseDesign(&CommonDialog::ShowSave)) return;
    // A file that cannot be written is not reported, like every error after the dialog.
    std::ignore = fpSet->SaveToFile(commonDlg().FileName, false);
}

void frmSetList::designLoad() {
    takeFocusOff();
    if (!chooseDesign(&CommonDialog::ShowOpen)) return;
    fpSet->LoadFromFile(commonDlg().FileName);
}

void frmSetList::designClear() { fpSet->ClearRange(1, 2, 2, fpSet->MaxRows(), true); }

void frmSetList::designSetDefault() {
    if (!chooseDesign(&CommonDialog::ShowOpen)) return;
    const QString name = commonDlg().FileName;
    storePreference(QStringLiteral("DefaultSetList"), name);
    fpSet->LoadFromFile(name);
    takeFocusOff();
}

void frmSetList::clearSet() {
    takeFocusOff();
    fpSet->ClearRange(2, 1, 2, fpSet->MaxRows(), true);
    fpSet->MaxRows(0);
    fpSet->MaxRows(50);
    setUpDateCell(*fpSet);
    setUpSetWidths(*fpSet);
    fpSet->LoadFromFile(preference(QStringLiteral("DefaultSetList")));
    fpSet->Col(1);
    fpSet->Col2(1);
    fpSet->Row(1);
    fpSet->Row2(fpSet->MaxRows());
    fpSet->BlockMode(true);
    fpSet->BackColor(White);
    fpSet->BlockMode(false);
}

void frmSetList::Command9_Click() { clearSet(); }

void frmSetList::cmdPersonellAvail_Click() {
    const QString date = fpSet->GetText(2, 1);
    if (date.isEmpty()) {
        messageBox(QStringLiteral("Please select a date in order to view personell for that date."),
                   BoxIcon::Information);
        return;
    }
    Recordset rs =
        select(QStringLiteral("SELECT player, instrument FROM schedule WHERE pdate = '") + date +
               QStringLiteral("'"));
    QString text;
    for (; !rs.EOF_(); rs.MoveNext())
        text += rs.Fields("instrument") + QStringLiteral(" : ") + rs.Fields("player") +
                QLatin1Char('\r');
    rs.Close();
    messageBox(
        QStringLiteral("Personell For ") + date + QStringLiteral("\r\r") + text + QLatin1Char('\r'),
        BoxIcon::Information, QStringLiteral("Personell"));
}
