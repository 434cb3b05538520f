// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The panel that defines categories, and the list that gives one to a song.
#include "catalogue/frm_song_admin.h"
#include "catalogue/rules/categories.h"
#include "catalogue/rules/song_list.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

namespace {

void removeApostrophes(QLineEdit& box) { box.setText(box.text().remove(QLatin1Char('\''))); }

}  // namespace

void frmSongAdmin::wireCategories() {
    onEvent(this, cmdDefineCat, &QPushButton::clicked, &frmSongAdmin::cmdDefineCat_Click);
    onEvent(this, fpCat, &SheetView::Click, &frmSongAdmin::fpCat_Click);
    onEvent(this, cmdAddCat, &QPushButton::clicked, &frmSongAdmin::cmdAddCat_Click);
    onEvent(this, cmdDelCat, &QPushButton::clicked, &frmSongAdmin::cmdDelCat_Click);
    onEvent(this, Command1, &QPushButton::clicked, &frmSongAdmin::Command1_Click);
    onEvent(this, Command4, &QPushButton::clicked, &frmSongAdmin::Command4_Click);
    for (QLineEdit* box : {txtName, txtDesc})
        onEvent(this, box, &QLineEdit::returnPressed, &frmSongAdmin::cmdAddCat_Click);
    onEscape(this, frmCat, &frmSongAdmin::Command4_Click);
    onEvent(this, txtCats, &PopUpList::Click, &frmSongAdmin::txtCats_Click);
}

// The panel takes the place of the song.
void frmSongAdmin::showPanel(bool on) {
    songPane->setHidden(on);
    frmCat->setHidden(!on);
}

void frmSongAdmin::cmdDefineCat_Click() {
    fpCat->SetActiveCell(0, 0);
    fpCat->Col(CategoryColumn::ID);
    fpCat->ColHidden(true);
    listCategories(*fpCat);
    showPanel(frmCat->isHidden());
    if (!frmCat->isHidden()) startCategory();
}

void frmSongAdmin::startCategory() { txtName->setFocus(); }

void frmSongAdmin::fpCat_Click(int col, int row) {
    if (row == 0) fpCat->SortByHead(col);
    if (row <= 0) return;
    txtName->setText(fpCat->GetText(CategoryColumn::Name, row));
    txtDesc->setText(fpCat->GetText(CategoryColumn::Description, row));
    lblID->setText(fpCat->GetText(CategoryColumn::ID, row));
    lblOldName->setText(fpCat->GetText(CategoryColumn::Name, row));
}

void frmSongAdmin::cmdAddCat_Click() {
    if (txtName->text().isEmpty()) {
        messageBox(QStringLiteral("Provide a name for the category."));
        return;
    }
    if (isReservedCategory(txtName->text())) {
        messageBox(QStringLiteral("Hymns is a reserved category, you can not add it."));
        return;
    }
    removeApostrophes(*txtName);
    removeApostrophes(*txtDesc);
    storeCategory({lblID->text(), txtName->text(), txtDesc->text()}, lblOldName->text());
    setStatusText(QStringLiteral("Stored: ") + txtName->text());
    txtName->clear();
    txtDesc->clear();
    lblID->clear();
    listCategories(*fpCat);
    startCategory();
}

void frmSongAdmin::cmdDelCat_Click() {
    if (txtName->text().isEmpty()) {
        messageBox(QStringLiteral("Provide a name for the category."));
        return;
    }
    if (isReservedCategory(txtName->text())) {
        messageBox(QStringLiteral("Hymns is a reserved category, you can not delete it."));
        return;
    }
    if (lblID->text().isEmpty()) {
        messageBox(QStringLiteral("Select a category to delete first."));
        return;
    }
    deleteCategory(lblID->text());
    clearCategory();
    fpCat->ClearRange(1, 1, fpCat->MaxCols(), fpCat->MaxRows(), true);
    listCategories(*fpCat);
}

void frmSongAdmin::clearCategory() {
    lblID->clear();
    lblOldName->clear();
    txtName->clear();
    txtDesc->clear();
}

void frmSongAdmin::Command1_Click() {
    clearCategory();
    startCategory();
}

void frmSongAdmin::Command4_Click() {
    showPanel(false);
    loadSongMgmt();
}

void frmSongAdmin::fpSongList2_RightClick(int, int col, int row, int x, int y) {
    if (row < 1) return;
    fpSongList2->SetActiveCell(col, row);
    txtCats->popUp(fpSongList2->pos() + QPoint(x, y));
}

void frmSongAdmin::txtCats_Click() {
    const QString category = txtCats->Text();
    if (category.isEmpty()) {
        txtCats->dismiss();
        return;
    }
    const int row = fpSongList2->ActiveRow();
    // Deliberate: behaviour 42.
    if (!giveCategory(fpSongList2->GetText(SongListColumn::ID, row), category))
        messageBox(QStringLiteral("Selected song has 5 categories assigned.  Edit on the left to "
                                  "change."),
                   BoxIcon::Information, QStringLiteral("Lorvanit"));
    txtCats->dismiss();
    txtCats->setCurrentItem(nullptr);
    showSong(SongListColumn::ID, row);
}
