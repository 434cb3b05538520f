// The panel in which categories are defined, and the list that gives one to a song.
#include "catalogue/frm_song_admin.h"
#include "platform/desktop/message_box.h"

namespace {

// Columns of fpCat.
enum CategoryColumn { CategoryID = 1, CategoryName, CategoryDescription };

// Only these two spellings are kept back: this is meant.
bool isReserved(const QString& name) {
    return name == QLatin1String("hymns") || name == QLatin1String("Hymns");
}

void removeApostrophes(QLineEdit& box) { box.setText(box.text().remove(QLatin1Char('\''))); }

}  // namespace

void frmSongAdmin::wireCategories() {
    onEvent(this, cmdDefineCat, &QPushButton::clicked, &frmSongAdmin::cmdDefineCat_Click);
    onEvent(this, fpCat, &SheetView::Click, &frmSongAdmin::fpCat_Click);
    onEvent(this, cmdAddCat, &QPushButton::clicked, &frmSongAdmin::cmdAddCat_Click);
    onEvent(this, cmdDelCat, &QPushButton::clicked, &frmSongAdmin::cmdDelCat_Click);
    onEvent(this, Command1, &QPushButton::clicked, &frmSongAdmin::Command1_Click);
    onEvent(this, Command4, &QPushButton::clicked, &frmSongAdmin::Command4_Click);
    onEvent(this, txtCats, &PopUpList::Click, &frmSongAdmin::txtCats_Click);
}

// The panel and the song take turns in one place.
void frmSongAdmin::showPanel(bool on) {
    songPane->setHidden(on);
    frmCat->setHidden(!on);
}

void frmSongAdmin::loadCategories() {
    Recordset rs = select(QStringLiteral("Select * from categories"));
    for (int row = 1; !rs.EOF_(); rs.MoveNext(), ++row) {
        if (row > fpCat->MaxRows()) fpCat->MaxRows(row);
        fpCat->SetText(CategoryID, row, rs.Fields("ID"));
        fpCat->SetText(CategoryName, row, rs.Fields("Name"));
        fpCat->SetText(CategoryDescription, row, rs.Fields("Description"));
    }
    rs.Close();
}

void frmSongAdmin::cmdDefineCat_Click() {
    fpCat->SetActiveCell(0, 0);
    fpCat->Col(CategoryID);
    fpCat->ColHidden(true);
    loadCategories();
    showPanel(frmCat->isHidden());
    if (!frmCat->isHidden()) txtName->setFocus();
}

void frmSongAdmin::fpCat_Click(int col, int row) {
    if (row == 0) fpCat->SortByHead(col);
    if (row <= 0) return;
    txtName->setText(fpCat->GetText(CategoryName, row));
    txtDesc->setText(fpCat->GetText(CategoryDescription, row));
    lblID->setText(fpCat->GetText(CategoryID, row));
    lblOldName->setText(fpCat->GetText(CategoryName, row));
}

void frmSongAdmin::cmdAddCat_Click() {
    if (txtName->text().isEmpty()) {
        messageBox(QStringLiteral("Provide a name for the category."));
        return;
    }
    if (isReserved(txtName->text())) {
        messageBox(QStringLiteral("Hymns is a reserved category, you can not add it."));
        return;
    }
    removeApostrophes(*txtName);
    removeApostrophes(*txtDesc);
    const QString name = txtName->text();
    const QString description = txtDesc->text();
    if (lblID->text().isEmpty()) {
        execute(QStringLiteral("INSERT INTO categories (name, description) VALUES ('") + name +
                QStringLiteral("', '") + description + QStringLiteral("');"));
    } else {
        execute(QStringLiteral("UPDATE categories SET name = '") + name +
                QStringLiteral("', description = '") + description +
                QStringLiteral("' WHERE ID = ") + lblID->text());
        for (const char* slot : {"cat1", "cat2", "cat3", "cat4", "cat5"}) {
            const QLatin1String column(slot);
            execute(QStringLiteral("UPDATE songs SET ") + column + QStringLiteral(" = '") + name +
                        QStringLiteral("' WHERE ") + column + QStringLiteral(" = '") +
                        lblOldName->text() + QLatin1Char('\''),
                    LockType::BatchOptimistic);
        }
    }
    txtName->clear();
    txtDesc->clear();
    lblID->clear();
    loadCategories();
}

void frmSongAdmin::cmdDelCat_Click() {
    if (txtName->text().isEmpty()) {
        messageBox(QStringLiteral("Provide a name for the category."));
        return;
    }
    if (isReserved(txtName->text())) {
        messageBox(QStringLiteral("Hymns is a reserved category, you can not delete it."));
        return;
    }
    if (lblID->text().isEmpty()) {
        messageBox(QStringLiteral("Select a category to delete first."));
        return;
    }
    // Songs keep the name of a category that is gone: this is meant.
    execute(QStringLiteral("DELETE FROM categories WHERE ID = ") + lblID->text());
    clearCategory();
    fpCat->ClearRange(1, 1, fpCat->MaxCols(), fpCat->MaxRows(), true);
    loadCategories();
}

void frmSongAdmin::clearCategory() {
    lblID->clear();
    lblOldName->clear();
    txtName->clear();
    txtDesc->clear();
}

void frmSongAdmin::Command1_Click() { clearCategory(); }

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
    const QString songID = fpSongList2->GetText(1, row);
    // The fifth look is at cat4 again, so that this list fills four at most: this is meant.
    constexpr const char* slots_[] = {"cat1", "cat2", "cat3", "cat4", "cat4"};
    const char* free = nullptr;
    Recordset rs = select(QStringLiteral("SELECT * FROM songs WHERE ID = ") + songID);
    for (const char* slot : slots_)
        if (!free && rs.Fields(slot).isEmpty()) free = slot;
    rs.Close();
    if (free)
        execute(QStringLiteral("UPDATE songs SET ") + QLatin1String(free) + QStringLiteral(" = '") +
                category + QStringLiteral("' WHERE ID = ") + songID);
    else
        messageBox(QStringLiteral("Selected song has 5 categories assigned.  Edit on the left to "
                                  "change."),
                   BoxIcon::Information, QStringLiteral("Lorvanit"));
    txtCats->dismiss();
    txtCats->setCurrentItem(nullptr);
    showSong(1, row);
}
