// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalogue/frm_song_admin.h"

#include "catalogue/rules/categories.h"
#include "catalogue/rules/played_dates.h"
#include "catalogue/rules/song_form.h"
#include "catalogue/rules/song_list.h"
#include "core/data/paths.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/grid_view/kept_controls.h"

namespace {

constexpr int ButtonRight = 2;

void clear(SheetGrid& grid) { grid.ClearRange(1, 1, grid.MaxCols(), grid.MaxRows(), true); }

void hideColumn(SheetGrid& grid, int col) {
    grid.Col(col);
    grid.ColHidden(true);
}

}  // namespace

frmSongAdmin::frmSongAdmin() {
    setupUi(this);
    mnuDeleteDoIt.setText(QStringLiteral("Delete"));
    mnuDel.addAction(&mnuDeleteDoIt);
    setUpGrids();
    txtCats->hide();
    lblID->hide();
    lblOldName->hide();
    showPanel(false);
    wireSongs();
    wireCategories();
    for (QPushButton* button : {cmdAdd, cmdAddCat}) addKey(button, QKeySequence::Save);
    setDesignSize(size());

    fpSMsong->Row(SongRow::ID);
    fpSMsong->RowHidden(true);
    // All fields are visible; the dates take the rest of the height.
    const QRect lastField = fpSMsong->cellRect(SongFormColumn::Value, SongRow::Last);
    fpSMsong->setFixedHeight(lastField.bottom() + 1 + fpSMsong->frameWidth());
    hideColumn(*fpdp, PlayedDateColumn::ID);
    hideColumn(*fpdp, PlayedDateColumn::SongID);
    for (SheetView* grid : {fpSongList2, fpSMsong, fpdp, fpCat}) grid->SetActiveCell(0, 0);
    keepSong();
}

// A song that was deleted since can be stored as a new one, without dates.
void frmSongAdmin::keepSong() {
    KeptControls controls;
    controls.add(QStringLiteral("fpSMsong"), fpSMsong);
    controls.add(QStringLiteral("fpdp"), fpdp);
    m_kept = keepControls(*this, UnsavedKind::Song, controls, [this] {
        const QString songID = songValue(*fpSMsong, SongRow::ID);
        if (songExists(songID)) {
            matchPlayedDates(*fpdp, songID);
        } else {
            fpSMsong->SetText(SongFormColumn::Value, SongRow::ID, QString());
            clearPlayedDates(*fpdp);
        }
    });
}

void frmSongAdmin::setUpGrids() {
    setUpSongList(*fpSongList2);
    fpSongList2->setReadOnly(true);
    fpSongList2->setFillColumn(SongListColumn::Title);
    setUpSongForm(*fpSMsong);
    fpSMsong->setFillColumn(SongFormColumn::Value);
    setUpPlayedDates(*fpdp);
    fpdp->setFillColumn(PlayedDateColumn::Date);
    setUpCategories(*fpCat);
    fpCat->setReadOnly(true);
    fpCat->setFillColumn(CategoryColumn::Description);
}

void frmSongAdmin::wireSongs() {
    onEvent(this, fpSongList2, &SheetView::Click, &frmSongAdmin::fpSongList2_Click);
    onEvent(this, fpSongList2, &SheetView::RightClick, &frmSongAdmin::fpSongList2_RightClick);
    onEvent(this, fpSMsong, &SheetView::Click, &frmSongAdmin::fpSMsong_Click);
    onEvent(this, fpSMsong, &SheetView::ButtonClicked, &frmSongAdmin::fpSMsong_ButtonClicked);
    onEvent(this, fpSMsong, &SheetView::RightClick, &frmSongAdmin::fpSMsong_RightClick);
    onEvent(this, fpSMsong, &SheetView::MouseUp, &frmSongAdmin::fpSMsong_MouseUp);
    onEvent(this, fpdp, &SheetView::Change, &frmSongAdmin::fpdp_Change);
    onEvent(this, cmdAdd, &QPushButton::clicked, &frmSongAdmin::cmdAdd_Click);
    onEvent(this, cmdDel, &QPushButton::clicked, &frmSongAdmin::cmdDel_Click);
    onEvent(this, cmdClear, &QPushButton::clicked, &frmSongAdmin::cmdClear_Click);
    onEvent(this, Command12, &QPushButton::clicked, &frmSongAdmin::Command12_Click);
    onEvent(this, &mnuDeleteDoIt, &QAction::triggered, &frmSongAdmin::mnuDeleteDoIt_Click);
}

void frmSongAdmin::loadSongMgmt() {
    m_kept->leave();
    for (SheetView* grid : {fpSongList2, fpSMsong, fpdp}) grid->SetActiveCell(0, 0);
    clear(*fpSMsong);
    const QStringList categories = categoryNames();
    txtCats->clear();
    txtCats->addItems(categories);
    offerCategories(*fpSMsong, categories);
    clearPlayedDates(*fpdp);
    m_kept->loaded();
    loadSongList();
}

void frmSongAdmin::loadSongList() {
    m_kept->leave();
    setMousePointer(MousePointer::Hourglass);
    clear(*fpSMsong);
    m_kept->loaded();
    clear(*fpSongList2);
    const int count = loadSongs(*fpSongList2, [](int percent) {
        setStatusText(QStringLiteral("Loading....") + QString::number(percent) +
                      QStringLiteral("% Complete"));
    });
    lblStat->setText(QString::number(count) + QStringLiteral(" Songs In The Database"));
    hideColumn(*fpSongList2, SongListColumn::ID);
    doEvents();
    if (!isVisible()) Show();
    setMousePointer(MousePointer::Arrow);
}

void frmSongAdmin::showSong(int col, int row) {
    txtCats->hide();
    fpSMsong->SetActiveCell(0, 0);
    fpdp->SetActiveCell(0, 0);
    if (row == 0) {
        fpSongList2->SortByHead(col);
        return;
    }
    m_kept->leave();
    clear(*fpSMsong);
    clearPlayedDates(*fpdp);
    // The list's first columns are the form's first rows.
    for (int field = SongRow::ID; field <= SongRow::Key; ++field)
        fpSMsong->SetText(SongFormColumn::Value, field, fpSongList2->GetText(field, row));
    const QString songID = songValue(*fpSMsong, SongRow::ID);
    showSongFields(*fpSMsong, songID);
    showPlayedDates(*fpdp, songID);
    m_kept->loaded();
}

void frmSongAdmin::cmdAdd_Click() {
    if (!isSongComplete(*fpSMsong)) {
        messageBox(QStringLiteral("Title and Category 1 must be filled in."));
        return;
    }
    const SongRecord song = readSong(*fpSMsong);
    storeSong(song);
    if (fpdp->MaxRows() > 0) storePlayedDates(*fpdp, song.title, song.id);
    clear(*fpSMsong);
    m_kept->saved();
    // Deliberate: behaviours 31 and 33. The list and the dates stay.
    hideColumn(*fpSongList2, SongListColumn::ID);
    setStatusText(QStringLiteral("Stored: %1. Reload shows it in the list.").arg(song.title));
    startSong();
}

void frmSongAdmin::startSong() {
    fpSMsong->setFocus();
    fpSMsong->SetActiveCell(SongFormColumn::Value, SongRow::Title);
}

void frmSongAdmin::cmdDel_Click() {
    const QString songID = songValue(*fpSMsong, SongRow::ID);
    if (songID.isEmpty()) {
        messageBox(QStringLiteral("Select a song to delete first."));
        return;
    }
    deleteSong(songID);
    m_kept->saved();
    loadSongList();
    hideColumn(*fpSongList2, SongListColumn::ID);
}

// Deliberate: behaviour 33.
void frmSongAdmin::cmdClear_Click() {
    m_kept->replaceBy([this] { clear(*fpSMsong); });
    startSong();
}

void frmSongAdmin::Command12_Click() { loadSongList(); }

void frmSongAdmin::fpSongList2_Click(int col, int row) { showSong(col, row); }

void frmSongAdmin::fpSMsong_Click(int, int row) {
    fpSMsong->SetActiveCell(SongFormColumn::Value, row);
}

// The menu acts on the row under the mouse, even if the label was clicked.
void frmSongAdmin::fpSMsong_RightClick(int, int, int row, int, int) {
    fpSMsong->SetActiveCell(SongFormColumn::Value, row);
}

void frmSongAdmin::fpSMsong_MouseUp(int button, int, int x, int y) {
    if (button == ButtonRight) mnuDel.popup(fpSMsong->mapToGlobal(QPoint(x, y)));
}

void frmSongAdmin::mnuDeleteDoIt_Click() {
    const int row = fpSMsong->ActiveRow();
    if (row > 0) fpSMsong->ClearRange(SongFormColumn::Value, row, SongFormColumn::Value, row, true);
}

void frmSongAdmin::fpSMsong_ButtonClicked(int, int row, bool) {
    // Deliberate: behaviour 43.
    if (row == SongRow::SheetMusic)
        commonDlg().InitDir = programFolder() + QStringLiteral("\\sheetmusic\\");
    if (row == SongRow::SheetMusic || row == SongRow::SoundFile) chooseFile(row);
}

void frmSongAdmin::chooseFile(int row) {
    CommonDialog& dialog = commonDlg();
    dialog.FileName.clear();
    // Another window may have left its filter and title.
    dialog.Filter.clear();
    dialog.DialogTitle.clear();
    if (dialog.chosen(&CommonDialog::ShowOpen))
        fpSMsong->SetText(SongFormColumn::Value, row, dialog.FileName);
}

void frmSongAdmin::fpdp_Change(int, int) { offerSpareRow(*fpdp); }
