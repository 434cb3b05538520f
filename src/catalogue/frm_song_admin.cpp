#include "catalogue/frm_song_admin.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

#include <algorithm>

namespace {

// Rows of fpSMsong.
enum SongRow {
    RowID = 1,
    RowTitle,
    RowArtist,
    RowKey,
    RowCategory1,
    RowCategory5 = RowCategory1 + 4,
    RowSheetMusic,
    RowPlaylist,
    RowCCLI,
    RowSoundFile,
    SongRows = RowSoundFile,
};

// Columns of fpSongList2.
enum ListColumn { ListID = 1, ListTitle, ListArtist, ListKey, ListLastPlayed };

// Columns of fpdp.
enum DateColumn { DateID = 1, DatePlayed, DateSongID };

constexpr int MostDropLines = 25;
constexpr int ButtonRight = 2;

// The columns of songs that stand in rows 5 to 13 of fpSMsong.
constexpr const char* ShownFields[] = {"cat1",     "cat2",     "cat3", "cat4",     "cat5",
                                       "fileloco", "playlist", "CCLI", "soundFile"};

void clear(SheetGrid& grid) { grid.ClearRange(1, 1, grid.MaxCols(), grid.MaxRows(), true); }

void hideColumn(SheetGrid& grid, int col) {
    grid.Col(col);
    grid.ColHidden(true);
}

void setHeads(SheetGrid& grid, std::initializer_list<const char*> heads) {
    grid.MaxCols(int(heads.size()));
    int col = 0;
    for (const char* head : heads) grid.SetText(++col, 0, QLatin1String(head));
    grid.RowHeadersShow(false);
}

void setKind(SheetGrid& grid, int col, int row, CellKind kind) {
    grid.Col(col);
    grid.Row(row);
    grid.CellType(kind);
}

QString withoutFirstApostrophe(QString text) {
    const qsizetype at = text.indexOf(QLatin1Char('\''));
    return at < 0 ? text : text.remove(at, 1);
}

QString withoutApostrophes(QString text) { return text.remove(QLatin1Char('\'')); }

// The latest of a song's dates as it stands in the table, whose text order is by month first.
QString lastPlayed(const QString& songID) {
    Recordset rs = select(QStringLiteral("SELECT played_date FROM played_on WHERE (songID = ") +
                          songID + QLatin1Char(')'));
    if (rs.EOF_()) return {};
    QString latest = rs.Fields("played_date");
    rs.MoveNext();
    if (rs.EOF_()) return latest;
    auto latestDate = parseDate(latest);
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString text = rs.Fields("played_date");
        const auto date = parseDate(text);
        if (!date || (latestDate && *date <= *latestDate)) continue;
        latest = text;
        latestDate = date;
    }
    return latest;
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
    setDesignSize(size());

    fpSMsong->Row(RowID);
    fpSMsong->RowHidden(true);
    // All fields are on view, and the dates take the rest of the height.
    fpSMsong->setFixedHeight(fpSMsong->cellRect(1, SongRows).bottom() + 1 + fpSMsong->frameWidth());
    hideColumn(*fpdp, DateID);
    hideColumn(*fpdp, DateSongID);
    for (SheetView* grid : {fpSongList2, fpSMsong, fpdp, fpCat}) grid->SetActiveCell(0, 0);
}

void frmSongAdmin::setUpGrids() {
    setHeads(*fpSongList2, {"", "Title", "Artist", "Key", "Last Played"});
    fpSongList2->MaxRows(0);
    fpSongList2->ColWidth(ListArtist, 19);
    fpSongList2->ColWidth(ListKey, 6);
    fpSongList2->ColWidth(ListLastPlayed, 13);
    fpSongList2->setReadOnly(true);
    fpSongList2->setFillColumn(ListTitle);

    static const char* const labels[] = {"ID",         "Title",      "Artist",     "Key",
                                         "Category 1", "Category 2", "Category 3", "Category 4",
                                         "Category 5", "SheetMusic", "Playlist",   "CCLI #",
                                         "Sound File"};
    fpSMsong->MaxCols(1);
    fpSMsong->MaxRows(SongRows);
    for (int row = 1; row <= SongRows; ++row)
        fpSMsong->SetText(0, row, QLatin1String(labels[row - 1]));
    fpSMsong->ColHeadersShow(false);
    fpSMsong->ColWidth(0, 13);
    fpSMsong->setFillColumn(1);
    for (int row = RowCategory1; row <= RowCategory5; ++row)
        setKind(*fpSMsong, 1, row, CellKind::Combo);
    setKind(*fpSMsong, 1, RowSheetMusic, CellKind::Button);
    setKind(*fpSMsong, 1, RowPlaylist, CellKind::Combo);
    fpSMsong->TypeComboBoxList(QStringLiteral("Current\tPast"));
    setKind(*fpSMsong, 1, RowSoundFile, CellKind::Button);

    setHeads(*fpdp, {"id", "Date Played", "songid"});
    fpdp->MaxRows(1);
    fpdp->setFillColumn(DatePlayed);

    setHeads(*fpCat, {"", "Name", "Description"});
    fpCat->MaxRows(0);
    fpCat->ColWidth(2, 20);
    fpCat->setReadOnly(true);
    fpCat->setFillColumn(3);
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
    for (SheetView* grid : {fpSongList2, fpSMsong, fpdp}) grid->SetActiveCell(0, 0);
    clear(*fpSMsong);
    txtCats->clear();
    QString list;
    Recordset rs = select(QStringLiteral("SELECT name FROM categories"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString name = rs.Fields("name");
        list += name + QLatin1Char('\t');
        txtCats->addItem(name);
    }
    rs.Close();
    fpSMsong->Col(1);
    for (int row = RowCategory1; row <= RowCategory5; ++row) {
        fpSMsong->Row(row);
        fpSMsong->TypeComboBoxList(list);
        fpSMsong->TypeComboBoxMaxDrop(std::clamp(txtCats->count(), 1, MostDropLines));
    }
    clear(*fpdp);
    fpdp->MaxRows(1);
    loadSongList();
}

void frmSongAdmin::loadSongList() {
    setMousePointer(MousePointer::Hourglass);
    clear(*fpSMsong);
    clear(*fpSongList2);
    Recordset rs = select(QStringLiteral("SELECT * FROM songs ORDER BY title"));
    fpSongList2->MaxRows(0);
    int count = 0;
    for (; !rs.EOF_(); rs.MoveNext()) ++count;
    if (count >= 1) rs.MoveFirst();
    // Dates come in as they were stored, and as date cells they sort by time.
    setKind(*fpSongList2, ListLastPlayed, -1, CellKind::Edit);
    for (int row = 1; !rs.EOF_(); rs.MoveNext(), ++row) {
        fpSongList2->MaxRows(row);
        const QString songID = rs.Fields("ID");
        const QString played = lastPlayed(songID);
        fpSongList2->SetText(ListID, row, songID);
        fpSongList2->SetText(ListTitle, row, rs.Fields("Title"));
        fpSongList2->SetText(ListArtist, row, rs.Fields("artist"));
        fpSongList2->SetText(ListKey, row, rs.Fields("dakey"));
        fpSongList2->SetText(ListLastPlayed, row, played);
        setStatusText(QStringLiteral("Loading....") + QString::number(100LL * row / count) +
                      QStringLiteral("% Complete"));
    }
    rs.Close();
    setKind(*fpSongList2, ListLastPlayed, -1, CellKind::Date);
    lblStat->setText(QString::number(count) + QStringLiteral(" Songs In The Database"));
    hideColumn(*fpSongList2, ListID);
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
    clear(*fpSMsong);
    clear(*fpdp);
    fpdp->MaxRows(1);
    for (int field = RowID; field <= RowKey; ++field)
        fpSMsong->SetText(1, field, fpSongList2->GetText(field, row));
    const QString songID = fpSMsong->GetText(1, RowID);
    Recordset rs = select(QStringLiteral("SELECT * FROM songs WHERE ID = ") + songID);
    int field = RowCategory1;
    for (const char* name : ShownFields) fpSMsong->SetText(1, field++, rs.Fields(name));
    rs.Close();
    showDates(songID);
}

void frmSongAdmin::showDates(const QString& songID) {
    Recordset rs = select(QStringLiteral("SELECT * FROM played_on WHERE songID = ") + songID);
    for (int row = 1; !rs.EOF_(); rs.MoveNext(), ++row) {
        if (row > fpdp->MaxRows()) fpdp->MaxRows(row);
        fpdp->SetText(DateID, row, rs.Fields("ID"));
        fpdp->SetText(DatePlayed, row, rs.Fields("played_date"));
        fpdp->SetText(DateSongID, row, rs.Fields("songID"));
    }
    rs.Close();
    fpdp->SetText(DatePlayed, 0, QStringLiteral("Last Played"));
    offerSpareRow();
}

// A row to type a further date in.
void frmSongAdmin::offerSpareRow() {
    const int last = fpdp->MaxRows();
    if (!fpdp->GetText(DateID, last).isEmpty() || !fpdp->GetText(DatePlayed, last).isEmpty())
        fpdp->MaxRows(last + 1);
}

void frmSongAdmin::storeDates(const QString& title, const QString& songID) {
    for (int row = 1; row <= fpdp->MaxRows(); ++row) {
        const QString dateID = fpdp->GetText(DateID, row);
        const QString date = fpdp->GetText(DatePlayed, row);
        // A new song has no ID yet: its dates fail here, before a date of another song is gone.
        const int number = date.isEmpty() ? 0 : toLong(songID);
        if (!dateID.isEmpty())
            execute(QStringLiteral("DELETE FROM played_on WHERE ID = ") + dateID);
        if (date.isEmpty()) continue;
        execute(QStringLiteral("INSERT INTO played_on (title, played_date, songID) VALUES ('") +
                title + QStringLiteral("', '") + date + QStringLiteral("', ") +
                QString::number(number) + QStringLiteral(");"));
    }
}

void frmSongAdmin::cmdAdd_Click() {
    const auto value = [this](int row) { return fpSMsong->GetText(1, row); };
    if (value(RowTitle).isEmpty() || value(RowCategory1).isEmpty()) {
        messageBox(QStringLiteral("Title and Category 1 must be filled in."));
        return;
    }
    // The artist is shown and never stored: this is meant.
    const struct {
        const char* column;
        QString value;
    } fields[] = {
        {"title", withoutFirstApostrophe(value(RowTitle))},
        {"dakey", withoutFirstApostrophe(value(RowKey))},
        {"cat1", value(RowCategory1)},
        {"cat2", value(RowCategory1 + 1)},
        {"cat3", value(RowCategory1 + 2)},
        {"cat4", value(RowCategory1 + 3)},
        {"cat5", value(RowCategory5)},
        {"playlist", value(RowPlaylist)},
        {"fileLoco", withoutApostrophes(value(RowSheetMusic))},
        {"CCLI", withoutApostrophes(value(RowCCLI))},
        {"soundFile", value(RowSoundFile)},
    };
    const QString songID = value(RowID);
    QStringList columns;
    QStringList values;
    QStringList assignments;
    for (const auto& field : fields) {
        columns.append(QLatin1String(field.column));
        values.append(field.value);
        assignments.append(columns.last() + QStringLiteral(" = '") + field.value +
                           QLatin1Char('\''));
    }
    if (songID.isEmpty())
        execute(QStringLiteral("INSERT INTO songs (") + columns.join(QStringLiteral(", ")) +
                QStringLiteral(") VALUES ('") + values.join(QStringLiteral("', '")) +
                QStringLiteral("');"));
    else
        execute(QStringLiteral("UPDATE songs SET ") + assignments.join(QStringLiteral(", ")) +
                QStringLiteral(" WHERE ID = ") + songID);
    if (fpdp->MaxRows() > 0) storeDates(fields[0].value, songID);
    // The list keeps its old rows until it is reloaded: this is meant.
    clear(*fpSMsong);
    hideColumn(*fpSongList2, ListID);
}

void frmSongAdmin::cmdDel_Click() {
    const QString songID = fpSMsong->GetText(1, RowID);
    if (songID.isEmpty()) {
        messageBox(QStringLiteral("Select a song to delete first."));
        return;
    }
    // No question is asked, and the song's dates stay in played_on: this is meant.
    execute(QStringLiteral("DELETE FROM songs WHERE ID = ") + songID);
    loadSongList();
    hideColumn(*fpSongList2, ListID);
}

// The dates keep their rows: this is meant.
void frmSongAdmin::cmdClear_Click() { clear(*fpSMsong); }

void frmSongAdmin::Command12_Click() { loadSongList(); }

void frmSongAdmin::fpSongList2_Click(int col, int row) { showSong(col, row); }

void frmSongAdmin::fpSMsong_Click(int, int row) { fpSMsong->SetActiveCell(1, row); }

// The menu acts on the row at the mouse, also where that is a label.
void frmSongAdmin::fpSMsong_RightClick(int, int, int row, int, int) {
    fpSMsong->SetActiveCell(1, row);
}

void frmSongAdmin::fpSMsong_MouseUp(int button, int, int x, int y) {
    if (button == ButtonRight) mnuDel.popup(fpSMsong->mapToGlobal(QPoint(x, y)));
}

void frmSongAdmin::mnuDeleteDoIt_Click() {
    const int row = fpSMsong->ActiveRow();
    if (row > 0) fpSMsong->ClearRange(1, row, 1, row, true);
}

void frmSongAdmin::fpSMsong_ButtonClicked(int, int row, bool) {
    if (row == RowSheetMusic)
        commonDlg().InitDir = programFolder() + QStringLiteral("\\sheetmusic\\");
    if (row == RowSheetMusic || row == RowSoundFile) chooseFile(row);
}

void frmSongAdmin::chooseFile(int row) {
    CommonDialog& dialog = commonDlg();
    dialog.FileName.clear();
    // Any file: what another window has asked for last does not count here.
    dialog.Filter.clear();
    dialog.DialogTitle.clear();
    if (dialog.chosen(&CommonDialog::ShowOpen)) fpSMsong->SetText(1, row, dialog.FileName);
}

void frmSongAdmin::fpdp_Change(int, int) { offerSpareRow(); }
