// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/finalising.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/grid/sheet_grid.h"
#include "team/rules/schedule_grid.h"

namespace {

// Reads one row beyond the week, to the head of the next one: a "Personell" head is skipped, and a
// "Worship Team" head fails like any text without a colon.
// Deliberate: behaviours 100 and 101.
void finaliseWeek(const SheetGrid& schedule, int dateRow, const QString& date) {
    execute(QStringLiteral("DELETE FROM schedule WHERE pdate = '") + date + QLatin1Char('\''));
    for (int row = dateRow; row < dateRow + WeekRows; ++row) {
        const QString entry = schedule.GetText(ScheduleColumn::Team, row);
        if (entry.isEmpty() || entry == PersonellHead) continue;
        const qsizetype colon = entry.indexOf(QLatin1Char(':'));
        if (colon < 0) throw RunTimeError(RunTimeError::InvalidCall);
        execute(QStringLiteral("INSERT INTO schedule (player, instrument, pdate) VALUES ('") +
                entry.mid(colon + 1) + QStringLiteral("', '") + entry.left(colon) +
                QStringLiteral("', '") + date + QStringLiteral("')"));
    }
}

}  // namespace

void finaliseSchedule(SheetGrid& schedule) {
    const int last = schedule.DataRowCnt();
    for (int row = ScheduleRow::FirstHead; row <= last; ++row) {
        int col = 0;
        int anchor = 0;
        int cols = 0;
        int rows = 0;
        if (schedule.GetCellSpan(ScheduleColumn::Notes, row, col, anchor, cols, rows))
            schedule.RemoveCellSpan(col, anchor);
        if (const auto date = parseDate(schedule.GetText(ScheduleColumn::Date, row)))
            finaliseWeek(schedule, row, formatDate(*date));
    }
}

QString proposedScheduleName(const SheetGrid& schedule) {
    QString title = schedule.GetText(1, ScheduleRow::Title);
    const qsizetype slash = title.indexOf(QLatin1Char('/'));
    // Deliberate: behaviour 102.
    if (slash < 2) throw RunTimeError(RunTimeError::InvalidCall);
    return safeFileName(title.mid(slash - 2));
}
