// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalogue/rules/played_dates.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

[[noreturn]] void failWithoutSong(const QString& date, int row) {
    throw RunTimeError(
        RunTimeError::TypeMismatch,
        QStringLiteral("Type mismatch: the date \"%1\" in row %2 of the dates. The song is stored, "
                       "but a new song cannot have dates yet. Reload the list and click the song "
                       "to enter its dates.")
            .arg(date)
            .arg(row));
}

}  // namespace

void setUpPlayedDates(SheetGrid& dates) {
    dates.MaxCols(PlayedDateColumn::SongID);
    dates.MaxRows(1);
    dates.RowHeadersShow(false);
    dates.SetText(PlayedDateColumn::ID, 0, QStringLiteral("id"));
    dates.SetText(PlayedDateColumn::Date, 0, QStringLiteral("Date Played"));
    dates.SetText(PlayedDateColumn::SongID, 0, QStringLiteral("songid"));
}

void clearPlayedDates(SheetGrid& dates) {
    dates.ClearRange(1, 1, dates.MaxCols(), dates.MaxRows(), true);
    dates.MaxRows(1);
}

void showPlayedDates(SheetGrid& dates, const QString& songID) {
    Recordset rs = select(QStringLiteral("SELECT * FROM played_on WHERE songID = ") + songID);
    for (int row = 1; !rs.EOF_(); rs.MoveNext(), ++row) {
        if (row > dates.MaxRows()) dates.MaxRows(row);
        dates.SetText(PlayedDateColumn::ID, row, rs.Fields("ID"));
        dates.SetText(PlayedDateColumn::Date, row, rs.Fields("played_date"));
        dates.SetText(PlayedDateColumn::SongID, row, rs.Fields("songID"));
    }
    rs.Close();
    // Deliberate: behaviour 38.
    dates.SetText(PlayedDateColumn::Date, 0, QStringLiteral("Last Played"));
    offerSpareRow(dates);
}

void matchPlayedDates(SheetGrid& dates, const QString& songID) {
    std::map<QString, QString> stored;  // dates by their IDs
    Recordset rs = select(QStringLiteral("SELECT * FROM played_on WHERE songID = ") + songID);
    for (; !rs.EOF_(); rs.MoveNext()) stored[rs.Fields("ID")] = rs.Fields("played_date");
    rs.Close();
    std::vector<int> lost;
    for (int row = 1; row <= dates.MaxRows(); ++row)
        if (stored.erase(dates.GetText(PlayedDateColumn::ID, row)) == 0) lost.push_back(row);
    for (const int row : lost) {
        const QString date = dates.GetText(PlayedDateColumn::Date, row);
        const auto same = std::find_if(stored.begin(), stored.end(), [&](const auto& entry) {
            return !date.isEmpty() && formatDate(entry.second) == formatDate(date);
        });
        dates.SetText(PlayedDateColumn::ID, row, same == stored.end() ? QString() : same->first);
        if (same != stored.end()) stored.erase(same);
    }
}

void offerSpareRow(SheetGrid& dates) {
    const int last = dates.MaxRows();
    if (!dates.GetText(PlayedDateColumn::ID, last).isEmpty() ||
        !dates.GetText(PlayedDateColumn::Date, last).isEmpty())
        dates.MaxRows(last + 1);
}

// Deliberate: behaviours 35, 36 and 37.
void storePlayedDates(const SheetGrid& dates, const QString& title, const QString& songID) {
    for (int row = 1; row <= dates.MaxRows(); ++row) {
        const QString dateID = dates.GetText(PlayedDateColumn::ID, row);
        const QString date = dates.GetText(PlayedDateColumn::Date, row);
        // A new song has no ID yet. The conversion fails before the row of another song is deleted.
        if (!date.isEmpty() && songID.isEmpty()) failWithoutSong(date, row);
        const int number = date.isEmpty() ? 0 : toLong(songID);
        if (!dateID.isEmpty())
            execute(QStringLiteral("DELETE FROM played_on WHERE ID = ") + dateID);
        if (date.isEmpty()) continue;
        execute(QStringLiteral("INSERT INTO played_on (title, played_date, songID) VALUES ('") +
                title + QStringLiteral("', '") + date + QStringLiteral("', ") +
                QString::number(number) + QStringLiteral(");"));
    }
}
