// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/frm_set_list.h"

#include "platform/desktop/desktop.h"
#include "platform/desktop/item_completion.h"
#include "platform/grid_view/kept_controls.h"
#include "platform/theme/theme.h"
#include "sets/rules/set_grid.h"
#include "sets/rules/song_picker.h"

frmSetList::frmSetList() {
    setupUi(this);
    optPlayList = {optPlayList_0, optPlayList_1};
    // Deliberate: behaviour 50. Only a choice from the list starts a search.
    for (QComboBox* box : {cmbCat1, cmbCat2}) {
        new ItemCompletion(*box);
        disconnect(box->lineEdit(), &QLineEdit::editingFinished, box, nullptr);
    }
    setUpMenus();
    setUpGrids();
    wirePicker();
    wireSet();
    setUpPlayer();
    addKey(cmdSaveSetList, QKeySequence::Save);
    addKey(Command13, QKeySequence::Open);
    addKey(Command3, QKeySequence::Print);
    cmdPersonellAvail->setIcon(themedIcon(QStringLiteral("people")));
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
    m_kept = keepGrid(*this, UnsavedKind::Set, *fpSet, [this] {
        setUpDateCell(*fpSet);
        setUpSetWidths(*fpSet);
        forgetRows();
    });
}

frmSetList::~frmSetList() { clearStatusText(m_inHand); }

void frmSetList::wirePicker() {
    onEvent(this, cmbCat1, &QComboBox::activated, &frmSetList::cmbCat1_Click);
    onEvent(this, cmbCat2, &QComboBox::activated, &frmSetList::cmbCat2_Click);
    onEvent(this, Command8, &QPushButton::clicked, &frmSetList::Command8_Click);
    for (QRadioButton* item : optPlayList)
        onEvent(this, item, &QRadioButton::clicked, &frmSetList::optPlayList_Click);
    onEvent(this, cmdSearchTitle, &QPushButton::clicked, &frmSetList::cmdSearchTitle_Click);
    onEvent(this, txtSearch, &QLineEdit::returnPressed, &frmSetList::cmdSearchTitle_Click);
    onEvent(this, fpSongList1, &SheetView::Click, &frmSetList::fpSongList1_Click);
    onEvent(this, fpSongList1, &SheetView::RightClick, &frmSetList::fpSongList1_RightClick);
    onEvent(this, &mnuPastPlaylist, &QAction::triggered, &frmSetList::mnuPastPlaylist_Click);
    onEvent(this, &mnuCurrentPlaylist, &QAction::triggered, &frmSetList::mnuCurrentPlaylist_Click);
}

void frmSetList::wireSet() {
    onEvent(this, fpSet, &SheetView::Click, &frmSetList::fpSet_Click);
    onEvent(this, fpSet, &SheetView::Change, &frmSetList::fpSet_Change);
    onEvent(this, fpSet, &SheetView::RightClick, &frmSetList::fpSet_RightClick);
    onEvent(this, &mnuDeleteFPSet, &QAction::triggered, &frmSetList::mnuDeleteFPSet_Click);
    onEvent(this, &mnuAddRow, &QAction::triggered, &frmSetList::mnuAddRow_Click);
    onEvent(this, &mnuDeleteRow, &QAction::triggered, &frmSetList::mnuDeleteRow_Click);
    onEvent(this, &mnuSaveDesign, &QAction::triggered, &frmSetList::designSave);
    onEvent(this, &mnuLoadDesign, &QAction::triggered, &frmSetList::designLoad);
    onEvent(this, &mnuClearDesign, &QAction::triggered, &frmSetList::designClear);
    onEvent(this, &mnuSetDefault, &QAction::triggered, &frmSetList::designSetDefault);
    onEvent(this, Command6, &QPushButton::clicked, &frmSetList::Command6_Click);
    onEvent(this, Command9, &QPushButton::clicked, &frmSetList::Command9_Click);
    onEvent(this, Command13, &QPushButton::clicked, &frmSetList::Command13_Click);
    onEvent(this, cmdPersonellAvail, &QToolButton::clicked, &frmSetList::cmdPersonellAvail_Click);
    onEvent(this, cmdSaveSetList, &QPushButton::clicked, &frmSetList::cmdSaveSetList_Click);
    onEvent(this, Command3, &QPushButton::clicked, &frmSetList::Command3_Click);
    onEvent(this, cmdExportText, &QPushButton::clicked, &frmSetList::cmdExportText_Click);
    onEvent(this, cmdEmailSet, &QPushButton::clicked, &frmSetList::cmdEmailSet_Click);
    onEvent(this, cmdCollectSongs, &QPushButton::clicked, &frmSetList::cmdCollectSongs_Click);
}

void frmSetList::setUpMenus() {
    mnuPastPlaylist.setText(QStringLiteral("Move To Past Playlist"));
    mnuPlaylistPast.addAction(&mnuPastPlaylist);
    mnuCurrentPlaylist.setText(QStringLiteral("Move To Current Playlist"));
    mnuPlaylistCurrent.addAction(&mnuCurrentPlaylist);
    mnuSaveDesign.setText(QStringLiteral("Save Design"));
    mnuLoadDesign.setText(QStringLiteral("Load Design"));
    mnuClearDesign.setText(QStringLiteral("Clear Design"));
    mnuSetDefault.setText(QStringLiteral("Set Default"));
    mnuSetD.addActions({&mnuSaveDesign, &mnuLoadDesign, &mnuClearDesign, &mnuSetDefault});
    mnuDeleteFPSet.setText(QStringLiteral("Delete Text"));
    mnuAddRow.setText(QStringLiteral("Add Row"));
    mnuDeleteRow.setText(QStringLiteral("Delete Row"));
    mnuDel.addActions({&mnuDeleteFPSet, &mnuAddRow, &mnuDeleteRow});
}

void frmSetList::setUpGrids() {
    setUpPickerList(*fpSongList1);
    fpSongList1->setReadOnly(true);
    fpSongList1->setSpoken([this](int col, int row) {
        return fpSongList1->pictureAt(1, col, row).isEmpty() ? QString()
                                                             : QStringLiteral("plays the song");
    });
    fpSongList1->setFillColumn(SheetView::AllColumns);
    setUpSet(*fpSet);
    fpSet->ColWidth(SetColumn::Label, 19.25);
    fpSet->setFillColumn(SheetView::AllColumns);
    fpSet->setSpoken([this](int col, int row) {
        return fpSet->formatAt(1, col, row).backColor == SheetMusicGreen
                   ? QStringLiteral("has sheet music")
                   : QString();
    });
    fpSet->setTypingStart(SetColumn::Title, SetRow::Date);
    fpSet->setLocked([this](int col, int row) { return isDateLabel(*fpSet, col, row); });
}

// Deliberate: behaviour 65. The set of the window closed before is offered, not shown.
void frmSetList::load() {
    takeFocusOff();
    forgetRows();
    loadCategoryCombos(QStringLiteral("list"));
    fpSet->ColWidth(SetColumn::Title, TitleWidth);
    loadDefaultDesign(*fpSet);
    fpSet->SetActiveCell(0, 0);
    fpSet->ColWidth(SetColumn::Title, TitleWidth);
}

void frmSetList::forgetRows() {
    selectedSongRow = 0;
    clickedSetRow = 0;
    showInHand();
}

// The status bar names the song that the next click in the set places.
void frmSetList::showInHand() {
    const QString title = selectedSongRow > 0
                              ? fpSongList1->GetText(PickerColumn::Title, selectedSongRow)
                              : QString();
    clearStatusText(m_inHand);
    m_inHand.clear();
    if (title.isEmpty()) return;
    m_inHand = QStringLiteral("In hand: %1. Click its place in the set.").arg(title);
    setStatusText(m_inHand);
}

void frmSetList::takeFocusOff() {
    fpSongList1->SetActiveCell(0, 0);
    fpSet->SetActiveCell(0, 0);
}
