// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/reminders.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"
#include "team/rules/schedule_grid.h"

#include <cstdlib>

namespace {

// The number of Sundays after the one date, up to and including the other.
qint64 sundaysBetween(const QDate& from, const QDate& to) {
    const auto week = [](const QDate& date) { return (date.toJulianDay() + 1) / 7; };
    return std::abs(week(to) - week(from));
}

// The line is always written to the date row.
// Deliberate: behaviour 115.
void writeRemindersOf(SheetGrid& schedule, int dateRow, const QDate& date) {
    Recordset rs = select(QStringLiteral("SELECT * FROM special_music"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        if (rs.Fields("remind_schedule") != QLatin1String("Yes")) continue;
        const QDate playDate = toDate(rs.Fields("play_date"));
        if (date > playDate) continue;
        const QString song = rs.Fields("song_name");
        const auto weeks = double(sundaysBetween(date, playDate));
        if (weeks <= toNumber(rs.Fields("remind_interval")) && weeks > 0)
            schedule.SetText(ScheduleColumn::Notes, dateRow, QStringLiteral("Rehearse ") + song);
        else if (date == playDate)
            schedule.SetText(ScheduleColumn::Notes, dateRow, QStringLiteral("Perform ") + song);
    }
    rs.Close();
}

}  // namespace

void writeReminders(SheetGrid& schedule) {
    for (int row = ScheduleRow::FirstDate; row <= schedule.MaxRows(); row += WeekRows)
        if (const auto date = parseDate(schedule.GetText(ScheduleColumn::Date, row)))
            writeRemindersOf(schedule, row, *date);
}
