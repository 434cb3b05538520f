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

[[noreturn]] void failEntry(const QString& entry, const QString& date) {
    const QString why = QStringLiteral("Invalid procedure call or argument. ");
    if (entry == TeamHead)
        throw RunTimeError(
            RunTimeError::InvalidCall,
            why + QStringLiteral("The week of %1 is finalised; the head \"%2\" of the "
                                 "next week stops the rest, and the file is not "
                                 "saved. Save again and answer \"No\".")
                      .arg(date, entry));
    throw RunTimeError(RunTimeError::InvalidCall,
                       why + QStringLiteral("The team of %1 has the entry \"%2\". Enter a role, a "
                                            "colon and a name, such as Piano:Anna Berg.")
                                 .arg(date, entry));
}

// Reads one row beyond the week, to the head of the next one: a "Personell" head is skipped, and a
// "Worship Team" head fails like any text without a colon.
// Deliberate: behaviours 100 and 101.
void finaliseWeek(const SheetGrid& schedule, int dateRow, const QString& date) {
    execute(QStringLiteral("DELETE FROM schedule WHERE pdate = '") + date + QLatin1Char('\''));
    for (int row = dateRow; row < dateRow + WeekRows; ++row) {
        const QString entry = schedule.GetText(ScheduleColumn::Team, row);
        if (entry.isEmpty() || entry == PersonellHead) continue;
        const qsizetype colon = entry.indexOf(QLatin1Char(':'));
        if (colon < 0) failEntry(entry, date);
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
    if (slash < 2)
        throw RunTimeError(
            RunTimeError::InvalidCall,
            QStringLiteral(
                "Invalid procedure call or argument. The title in row 1 has no date, and "
                "the file is named after it. Enter one, such as 06/12/05."));
    return safeFileName(title.mid(slash - 2));
}
