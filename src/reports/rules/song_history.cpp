// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/rules/song_history.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/grid/sheet_grid.h"

namespace {

constexpr int YearsOffered = 10;

// How often a song was played in a year, given by its last two digits. Deliberate: behaviours 150
// and 153.
int timesPlayed(const QString& songID, const QString& twoDigits) {
    int count = 0;
    Recordset rs =
        select(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") + songID);
    for (; !rs.EOF_(); rs.MoveNext())
        if (QStringView(rs.Fields("played_date")).mid(6, 2) == twoDigits) ++count;
    rs.Close();
    return count;
}

}  // namespace

QStringList historyYears(int thisYear) {
    QStringList years;
    // Deliberate: behaviour 151.
    for (int i = 0; i < YearsOffered; ++i) years += QString::number(thisYear - 1 + i);
    return years;
}

void listYear(SheetGrid& list, const QString& year,
              const std::function<void(int done, int total)>& onProgress) {
    list.MaxRows(0);
    Recordset songs = select(QStringLiteral("Select id, title FROM songs ORDER BY title"));
    int total = 0;
    for (; !songs.EOF_(); songs.MoveNext()) ++total;
    if (total >= 1) songs.MoveFirst();
    const QString twoDigits = year.mid(2, 2);
    for (int done = 1; !songs.EOF_(); songs.MoveNext(), ++done) {
        const QString id = songs.Fields("ID");
        const int count = timesPlayed(id, twoDigits);
        if (count >= 1) list.AddRow({id, songs.Fields("Title"), QString::number(count)});
        onProgress(done, total);
    }
    songs.Close();
    list.SetText(HistoryColumn::SongName, 0, QStringLiteral("Song Name"));
    list.SetText(HistoryColumn::TimesPlayed, 0, QStringLiteral("# Times Played"));
}

std::array<int, MonthsInYear> timesPlayedByMonth(const QString& songID) {
    std::array<int, MonthsInYear> counts{};
    // Deliberate: behaviour 152.
    Recordset rs = select(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") +
                          songID + QStringLiteral(" ORDER BY played_date"));
    for (; !rs.EOF_(); rs.MoveNext()) ++counts[toDate(rs.Fields("played_date")).month() - 1];
    rs.Close();
    return counts;
}
