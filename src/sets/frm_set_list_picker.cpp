// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The left half of the window: finding songs.
#include "catalogue/rules/categories.h"
#include "platform/desktop/message_box.h"
#include "sets/frm_set_list.h"
#include "sets/rules/song_picker.h"

#include <QScopeGuard>

void frmSetList::loadCategoryCombos(const QString& mode) {
    cmbCat1->clear();
    cmbCat2->clear();
    const QStringList names = categoryNames();
    // Deliberate: behaviour 57. No other mode fills the boxes.
    if (mode == QLatin1String("list")) {
        cmbCat1->addItems(names);
        cmbCat2->addItems(names);
    }
    cmbCat1->setCurrentIndex(-1);
    cmbCat2->setCurrentIndex(-1);
    fpSongList1->Col(PickerColumn::ID);
    fpSongList1->ColHidden(true);
}

void frmSetList::searchByCategory() {
    if (cmbCat1->currentText().isEmpty()) {
        messageBox(QStringLiteral("The first category box must be selected."));
        return;
    }
    // Another song may be in its row now, also after a failure.
    const auto shown = qScopeGuard([this] { showInHand(); });
    listByCategory(*fpSongList1, {cmbCat1->currentText(), cmbCat2->currentText(),
                                  optPlayList[0]->isChecked() ? QStringLiteral("Current")
                                                              : QStringLiteral("Past")});
}

void frmSetList::searchByTitle() {
    const auto shown = qScopeGuard([this] { showInHand(); });
    if (!txtSearch->text().isEmpty()) listByTitle(*fpSongList1, txtSearch->text());
}

void frmSetList::cmbCat1_Click() { searchByCategory(); }

void frmSetList::cmbCat2_Click() { searchByCategory(); }

// Deliberate: behaviour 50.
void frmSetList::Command8_Click() { cmbCat2->setEditText(QString()); }

void frmSetList::optPlayList_Click() {
    takeFocusOff();
    searchByCategory();
}

void frmSetList::cmdSearchTitle_Click() { searchByTitle(); }

void frmSetList::fpSongList1_Click(int col, int row) {
    const QString id = fpSongList1->GetText(PickerColumn::ID, row);
    fpSet->SetActiveCell(0, 0);
    if (row == 0) {
        sortSongs(col);
        return;
    }
    if (col == PickerColumn::Sound &&
        !fpSongList1->pictureAt(fpSongList1->ActiveSheet(), col, row).isEmpty())
        openPlayer(row);
    if (col == PickerColumn::LastPlayed) showPlayedDates(id);
    selectedSongRow = row;
    showInHand();
}

// The song that waits for its place keeps waiting, in whatever row it is then.
void frmSetList::sortSongs(int col) {
    const QString waiting =
        selectedSongRow > 0 ? fpSongList1->GetText(PickerColumn::ID, selectedSongRow) : QString();
    fpSongList1->SortByHead(col);
    if (!waiting.isEmpty())
        selectedSongRow = fpSongList1->SearchCol(PickerColumn::ID, 1, -1, waiting, 0);
}

void frmSetList::showPlayedDates(const QString& id) {
    const QString dates = playedDateHistory(id);
    if (!dates.isEmpty()) messageBox(dates, BoxIcon::None, QStringLiteral("Played Date History"));
}

void frmSetList::fpSongList1_RightClick(int, int col, int row, int x, int y) {
    fpSongList1->SetActiveCell(col, row);
    QMenu& menu = optPlayList[0]->isChecked() ? mnuPlaylistPast : mnuPlaylistCurrent;
    menu.popup(fpSongList1->mapToGlobal(QPoint(x, y)));
}

void frmSetList::mnuPastPlaylist_Click() { movePlaylist(QStringLiteral("Past")); }

void frmSetList::mnuCurrentPlaylist_Click() { movePlaylist(QStringLiteral("Current")); }

void frmSetList::movePlaylist(const QString& playlist) {
    moveToPlaylist(fpSongList1->GetText(PickerColumn::ID, fpSongList1->ActiveRow()), playlist);
    searchByCategory();  // Deliberate: behaviour 58.
}
