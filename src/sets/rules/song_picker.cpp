// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/rules/song_picker.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/grid/list_columns.h"
#include "core/grid/sheet_grid.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace {

constexpr int MostDatesShown = 30;
constexpr int LongestSingleDate = 10;  // with its carriage return

constexpr std::array<const char*, 5> CategoryColumns = {"cat1", "cat2", "cat3", "cat4", "cat5"};

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

// Deliberate: behaviour 51.
QString greatestPlayedDate(const QString& songID) {
    Recordset dates;
    dates.Open(QStringLiteral("SELECT DISTINCT played_date FROM played_on WHERE (songID = ") +
                   songID + QStringLiteral(") ORDER BY played_date DESC"),
               dbConn, CursorType::Dynamic, LockType::ReadOnly);
    if (dates.EOF_()) return {};
    return formatDate(toDate(dates.Fields("played_date")));
}

// Deliberate: behaviour 52. Only this spelling counts.
bool isHymns(const QString& category) { return category == QLatin1String("Hymns"); }

bool isHymn(const Recordset& song) {
    return std::any_of(CategoryColumns.begin(), CategoryColumns.end(),
                       [&song](const char* column) { return isHymns(song.Fields(column)); });
}

}  // namespace

void setUpPickerList(SheetGrid& list) {
    setUpList(list, PickerColumn::Sound,
              {{PickerColumn::ID, "", 2.37},
               {PickerColumn::Title, "Title", 21.75},
               {PickerColumn::Artist, "Artist", 10},
               {PickerColumn::Key, "Key", 3.5},
               {PickerColumn::LastPlayed, "Last Played", 8.83},
               {PickerColumn::Sound, " ", 2.75}});
    list.Row(-1);
    list.Col(PickerColumn::LastPlayed);
    list.CellType(CellKind::Date);
    list.Col(PickerColumn::Sound);
    list.CellType(CellKind::Picture);
}

void listByCategory(SheetGrid& list, const CategorySearch& search) {
    const bool wantsHymns = isHymns(search.category1) || isHymns(search.category2);
    Recordset songs;
    songs.Open(searchStatement(search.category1, search.category2), dbConn, CursorType::Dynamic,
               LockType::ReadOnly);
    list.ClearRange(1, 1, list.MaxCols(), list.MaxRows(), true);
    list.MaxRows(0);
    QByteArray picture;
    for (; !songs.EOF_(); songs.MoveNext()) {
        const bool hymn = isHymn(songs);
        const QString lastPlayed = greatestPlayedDate(songs.Fields("ID"));
        const bool fits = songs.Fields("playlist") == search.playlist;
        if (!fits || (hymn && !wantsHymns)) continue;
        list.AddRow({songs.Fields("ID"), songs.Fields("Title"), songs.Fields("artist"),
                     songs.Fields("dakey"), lastPlayed});
        // Deliberate: behaviour 53.
        if (hymn || songs.Fields("soundFile").isEmpty()) continue;
        if (picture.isEmpty()) picture = soundPicture();
        list.Col(PickerColumn::Sound);
        list.Row(list.MaxRows());
        list.Picture(picture);
    }
    songs.Close();
}

void listByTitle(SheetGrid& list, const QString& text) {
    const QString wanted = text.toUpper();
    Recordset songs;
    songs.Open(QStringLiteral("SELECT * FROM SONGS"), dbConn, CursorType::Dynamic,
               LockType::ReadOnly);
    int row = 0;
    // Deliberate: behaviour 55. A hit without a date leaves it open.
    Recordset dates;
    for (; !songs.EOF_(); songs.MoveNext()) {
        if (!songs.Fields("Title").toUpper().contains(wanted)) continue;
        // Deliberate: behaviour 54. The first hit cuts the old list back to row 1.
        list.MaxRows(++row);
        list.SetText(PickerColumn::ID, row, songs.Fields("ID"));
        list.SetText(PickerColumn::Title, row, songs.Fields("Title"));
        list.SetText(PickerColumn::Artist, row, songs.Fields("artist"));
        list.SetText(PickerColumn::Key, row, songs.Fields("dakey"));
        dates.Open(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") +
                       songs.Fields("ID") + QStringLiteral(" ORDER BY played_date"),
                   dbConn, CursorType::Dynamic, LockType::ReadOnly);
        if (dates.EOF_()) continue;
        // Deliberate: behaviour 51. An edit cell takes the date as it was stored; a date cell then
        // sorts it by time.
        list.Col(PickerColumn::LastPlayed);
        list.Row(row);
        list.CellType(CellKind::Edit);
        list.SetText(PickerColumn::LastPlayed, row, dates.Fields("played_date"));
        list.CellType(CellKind::Date);
        dates.Close();
    }
}

QString playedDateHistory(const QString& songID) {
    Recordset rs =
        select(QStringLiteral("SELECT DISTINCT played_date FROM played_on WHERE (songID = ") +
               songID + QStringLiteral(") ORDER BY played_date"));
    QString text;
    for (int k = 0; !rs.EOF_() && k < MostDatesShown; ++k, rs.MoveNext())
        text = rs.Fields("played_date") + QLatin1Char('\r') + text;
    rs.Close();
    // Deliberate: behaviour 56.
    return text.size() > LongestSingleDate ? text : QString();
}

void moveToPlaylist(const QString& songID, const QString& playlist) {
    execute(QStringLiteral("UPDATE songs SET playlist = '") + playlist +
            QStringLiteral("' WHERE ID = ") + songID);
}

QString soundFileOf(const QString& songID) {
    Recordset rs = select(QStringLiteral("Select soundFile FROM songs WHERE ID = ") + songID);
    const QString soundFile = rs.Fields("soundFile");
    rs.Close();
    return soundFile;
}
