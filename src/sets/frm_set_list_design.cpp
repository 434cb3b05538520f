// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The right half of the window: the set and its design.
#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/data/texts.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/kept_work.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "sets/rules/song_picker.h"

#include <tuple>

void frmSetList::placeSong(int row) {
    clickedSetRow = row;
    if (selectedSongRow > 0) {
        const QString title = fpSongList1->GetText(PickerColumn::Title, selectedSongRow);
        // Deliberate: behaviour 59. The row decides alone, the heads and the date included.
        if (!title.isEmpty())
            writeSong(*fpSet, clickedSetRow, title,
                      toLong(fpSongList1->GetText(PickerColumn::ID, selectedSongRow)));
    }
    selectedSongRow = 0;
    showInHand();
}

void frmSetList::fpSet_Click(int, int row) { placeSong(row); }

void frmSetList::fpSet_Change(int col, int row) {
    if (col != SetColumn::Title || row != SetRow::Date) return;
    const QString names = specialMusicOn(dateOfSet(*fpSet));
    if (names.isEmpty()) {
        lblSpecialMusic->setText(QString());
        return;
    }
    // Deliberate: behaviour 61.
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
    if (fpSet->ActiveRow() < 1) return;
    deleteText(*fpSet, fpSet->ActiveCol(), fpSet->ActiveRow());
}

void frmSetList::mnuAddRow_Click() { addRow(*fpSet, fpSet->ActiveRow()); }

// Deliberate: behaviour 62.
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
    if (fpSet->SaveToFile(commonDlg().FileName, false))
        tellSaved(commonDlg().FileName);
    else
        tellNotSaved();
}

void frmSetList::designLoad() {
    takeFocusOff();
    if (!chooseDesign(&CommonDialog::ShowOpen)) return;
    m_kept->replaceBy([this] { loadSetFile(*fpSet, commonDlg().FileName); });
    nameFile(QString());
}

void frmSetList::designClear() {
    m_kept->replaceBy([this] { clearDesign(*fpSet); });
    nameFile(QString());
}

void frmSetList::designSetDefault() {
    if (!chooseDesign(&CommonDialog::ShowOpen)) return;
    const QString name = commonDlg().FileName;
    storePreference(QStringLiteral("DefaultSetList"), name);
    m_kept->replaceBy([&] { loadSetFile(*fpSet, name); });
    nameFile(QString());
    setStatusText(QStringLiteral("The window opens with this design: ") + nameOfFile(name));
    takeFocusOff();
}

void frmSetList::clearSet() {
    takeFocusOff();
    m_kept->replaceBy([this] { clearSetGrid(*fpSet); });
    nameFile(QString());
}

void frmSetList::Command9_Click() { clearSet(); }

void frmSetList::cmdPersonellAvail_Click() {
    const QString date = dateOfSet(*fpSet);
    if (date.isEmpty()) {
        messageBox(QStringLiteral("Please select a date in order to view personell for that date."),
                   BoxIcon::Information);
        return;
    }
    messageBox(QStringLiteral("Personell For ") + date + QStringLiteral("\r\r") +
                   personnelOn(date) + QLatin1Char('\r'),
               BoxIcon::Information, QStringLiteral("Personell"));
}
