// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalogue/rules/song_list.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/grid/sheet_grid.h"

namespace {

// Looks at every date, as the text order of "mm/dd/yy" is by month first.
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

void setLastPlayedType(SheetGrid& list, CellKind kind) {
    list.Col(SongListColumn::LastPlayed);
    list.Row(-1);
    list.CellType(kind);
}

}  // namespace

void setUpSongList(SheetGrid& list) {
    list.MaxCols(SongListColumn::LastPlayed);
    list.MaxRows(0);
    list.RowHeadersShow(false);
    list.SetText(SongListColumn::Title, 0, QStringLiteral("Title"));
    list.SetText(SongListColumn::Artist, 0, QStringLiteral("Artist"));
    list.SetText(SongListColumn::Key, 0, QStringLiteral("Key"));
    list.SetText(SongListColumn::LastPlayed, 0, QStringLiteral("Last Played"));
    list.ColWidth(SongListColumn::Artist, 19);
    list.ColWidth(SongListColumn::Key, 6);
    list.ColWidth(SongListColumn::LastPlayed, 13);
}

int loadSongs(SheetGrid& list, const std::function<void(int percent)>& progress) {
    Recordset rs = select(QStringLiteral("SELECT * FROM songs ORDER BY title"));
    list.MaxRows(0);
    int count = 0;
    for (; !rs.EOF_(); rs.MoveNext()) ++count;
    if (count >= 1) rs.MoveFirst();
    // An edit cell takes a date of any form as it was stored; a date cell then sorts it by time.
    setLastPlayedType(list, CellKind::Edit);
    for (int done = 1; !rs.EOF_(); rs.MoveNext(), ++done) {
        const QString songID = rs.Fields("ID");
        list.AddRow({songID, rs.Fields("Title"), rs.Fields("artist"), rs.Fields("dakey"),
                     lastPlayed(songID)});
        progress(int(100LL * done / count));
    }
    rs.Close();
    setLastPlayedType(list, CellKind::Date);
    return count;
}
