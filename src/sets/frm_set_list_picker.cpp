// The left half of the window: finding songs.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/message_box.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"

#include <QFile>

namespace {

constexpr int MostDatesShown = 30;

const std::array<const char*, 5> CategoryColumns = {"cat1", "cat2", "cat3", "cat4", "cat5"};

QByteArray soundPicture() {
    QFile file(resolvedPath(programFolder() + QStringLiteral("/config/sound.jpg")));
    if (!file.open(QIODevice::ReadOnly)) throw RunTimeError(RunTimeError::FileNotFound);
    return file.readAll();
}

QString searchStatement(const QString& c1, const QString& c2) {
    if (c2.isEmpty())
        return QStringLiteral("SELECT * FROM songs WHERE (cat1 = '") + c1 +
               QStringLiteral("') OR (cat2 = '") + c1 + QStringLiteral("') OR (cat3 = '") + c1 +
               QStringLiteral("') OR (cat4 = '") + c1 + QStringLiteral("') OR (cat5 = '") + c1 +
               QStringLiteral("') ORDER BY title;");
    return QStringLiteral("SELECT * FROM songs WHERE ((cat1 = '") + c1 +
           QStringLiteral("') OR (cat2 = '") + c1 + QStringLiteral("') OR (cat3 = '") + c1 +
           QStringLiteral("') OR (cat4 = '") + c1 + QStringLiteral("') OR (cat5 = '") + c1 +
           QStringLiteral("')) AND ((cat1 = '") + c2 + QStringLiteral("') or (cat2 = '") + c2 +
           QStringLiteral("') OR (cat3 = '") + c2 + QStringLiteral("') OR (cat4 = '") + c2 +
           QStringLiteral("') OR (cat5 = '") + c2 + QStringLiteral("')) ORDER BY title;");
}

// The greatest date as text, which is not always the latest day: this is meant.
QString greatestPlayedDate(const QString& id) {
    Recordset dates;
    dates.Open(QStringLiteral("SELECT DISTINCT played_date FROM played_on WHERE (songID = ") + id +
                   QStringLiteral(") ORDER BY played_date DESC"),
               dbConn, CursorType::Dynamic, LockType::ReadOnly);
    if (dates.EOF_()) return {};
    return formatDate(toDate(dates.Fields("played_date")));
}

bool isHymn(const Recordset& song) {
    bool hymn = false;
    for (const char* column : CategoryColumns)
        hymn = song.Fields(column) == QLatin1String("Hymns") || hymn;
    return hymn;
}

// Columns 1 to 4 of a row.
void setSong(SheetGrid& list, int row, const Recordset& song) {
    list.SetText(1, row, song.Fields("ID"));
    list.SetText(2, row, song.Fields("Title"));
    list.SetText(3, row, song.Fields("artist"));
    list.SetText(4, row, song.Fields("dakey"));
}

}  // namespace

void frmSetList::loadCategoryCombos(const QString& mode) {
    cmbCat1->clear();
    cmbCat2->clear();
    QString names;
    Recordset rs = select(QStringLiteral("SELECT name FROM categories"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString name = rs.Fields("Name");
        if (mode == QLatin1String("list")) {
            cmbCat1->addItem(name);
            cmbCat2->addItem(name);
        } else {
            // "manage" gathers the names and drops them: this is meant.
            names += name + QLatin1Char('\t');
        }
    }
    rs.Close();
    cmbCat1->setCurrentIndex(-1);
    cmbCat2->setCurrentIndex(-1);
    fpSongList1->Col(1);
    fpSongList1->ColHidden(true);
}

void frmSetList::searchByCategory() {
    if (cmbCat1->currentText().isEmpty()) {
        messageBox(QStringLiteral("The first category box must be selected."));
        return;
    }
    const QString c1 = cmbCat1->currentText();
    const QString c2 = cmbCat2->currentText();
    const QString wanted =
        optPlayList[0]->isChecked() ? QStringLiteral("Current") : QStringLiteral("Past");
    const bool hymnsAsked = c1 == QLatin1String("Hymns") || c2 == QLatin1String("Hymns");
    Recordset songs;
    songs.Open(searchStatement(c1, c2), dbConn, CursorType::Dynamic, LockType::ReadOnly);
    fpSongList1->ClearRange(1, 1, fpSongList1->MaxCols(), fpSongList1->MaxRows(), true);
    fpSongList1->MaxRows(0);
    QByteArray picture;
    for (; !songs.EOF_(); songs.MoveNext()) {
        const bool hymn = isHymn(songs);
        const QString lastPlayed = greatestPlayedDate(songs.Fields("ID"));
        const bool fits = songs.Fields("playlist") == wanted;
        if (!fits || (hymn && !hymnsAsked)) continue;
        const int row = fpSongList1->MaxRows() + 1;
        fpSongList1->MaxRows(row);
        setSong(*fpSongList1, row, songs);
        fpSongList1->SetText(5, row, lastPlayed);
        // A hymn shows no sound picture, even where it has a sound file: this is meant.
        if (hymn || songs.Fields("soundFile").isEmpty()) continue;
        if (picture.isEmpty()) picture = soundPicture();
        fpSongList1->Col(6);
        fpSongList1->Row(row);
        fpSongList1->Picture(picture);
    }
    songs.Close();
}

void frmSetList::searchByTitle() {
    const QString piece = txtSearch->text();
    if (piece.isEmpty()) return;
    Recordset songs;
    songs.Open(QStringLiteral("SELECT * FROM SONGS"), dbConn, CursorType::Dynamic,
               LockType::ReadOnly);
    int n = 0;
    // One query object for the whole search, closed only where it found a row. A hit without a
    // date thus ends the search at the next hit: this is meant.
    Recordset dates;
    for (; !songs.EOF_(); songs.MoveNext()) {
        if (!songs.Fields("Title").toUpper().contains(piece.toUpper())) continue;
        // The first hit cuts the old list back; row 1 keeps what the new song does not write.
        fpSongList1->MaxRows(++n);
        setSong(*fpSongList1, n, songs);
        dates.Open(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") +
                       songs.Fields("ID") + QStringLiteral(" ORDER BY played_date"),
                   dbConn, CursorType::Dynamic, LockType::ReadOnly);
        if (dates.EOF_()) continue;
        // The smallest date as text, where the other search shows the greatest: this is meant.
        // It comes in as it was stored; as a date cell it sorts by time.
        fpSongList1->Col(5);
        fpSongList1->Row(n);
        fpSongList1->CellType(CellKind::Edit);
        fpSongList1->SetText(5, n, dates.Fields("played_date"));
        fpSongList1->CellType(CellKind::Date);
        dates.Close();
    }
}

void frmSetList::cmbCat1_Click() { searchByCategory(); }

void frmSetList::cmbCat2_Click() { searchByCategory(); }

void frmSetList::Command8_Click() { cmbCat2->setEditText(QString()); }

void frmSetList::optPlayList_Click() {
    takeFocusOff();
    searchByCategory();
}

void frmSetList::cmdSearchTitle_Click() { searchByTitle(); }

void frmSetList::fpSongList1_Click(int col, int row) {
    const QString id = fpSongList1->GetText(1, row);
    fpSet->SetActiveCell(0, 0);
    if (row == 0) {
        fpSongList1->SortByHead(col);
        return;
    }
    if (col == 6 && !fpSongList1->pictureAt(fpSongList1->ActiveSheet(), col, row).isEmpty())
        openPlayer(row);
    if (col == 5) showPlayedDates(id);
    selectedSongRow = row;
}

void frmSetList::showPlayedDates(const QString& id) {
    Recordset rs =
        select(QStringLiteral("SELECT DISTINCT played_date FROM played_on WHERE (songID = ") + id +
               QStringLiteral(") ORDER BY played_date"));
    QString text;
    for (int k = 0; !rs.EOF_() && k < MostDatesShown; ++k, rs.MoveNext())
        text = rs.Fields("played_date") + QLatin1Char('\r') + text;
    rs.Close();
    // A single date shows no box: this is meant.
    if (text.size() > 10) messageBox(text, BoxIcon::None, QStringLiteral("Played Date History"));
}

void frmSetList::fpSongList1_RightClick(int, int col, int row, int x, int y) {
    fpSongList1->SetActiveCell(col, row);
    QMenu& menu = optPlayList[0]->isChecked() ? mnuPlaylistPast : mnuPlaylistCurrent;
    menu.popup(fpSongList1->mapToGlobal(QPoint(x, y)));
}

void frmSetList::mnuPastPlaylist_Click() {
    movePlaylist(QStringLiteral("UPDATE songs SET playlist = 'Past' WHERE ID = "));
}

void frmSetList::mnuCurrentPlaylist_Click() {
    movePlaylist(QStringLiteral("UPDATE songs SET playlist = 'Current' WHERE ID = "));
}

void frmSetList::movePlaylist(const QString& statement) {
    execute(statement + fpSongList1->GetText(1, fpSongList1->ActiveRow()));
    searchByCategory();
}
