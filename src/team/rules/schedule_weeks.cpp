// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/schedule_weeks.h"

#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"
#include "team/rules/availability.h"
#include "team/rules/schedule_grid.h"

#include <algorithm>

namespace {

constexpr int DaysOfWeek = 7;
constexpr int FirstYear = 100;
constexpr int LastYear = 9999;
constexpr double MostWeeks = 1e6;  // beyond the calendar's last year

// Above every row: a loop over the rows of the block ends at once.
constexpr int NoBlock = -1;

// Raises RunTimeError::Overflow beyond the calendar's years.
QDate daysLater(const QDate& date, qint64 days) {
    const QDate later = date.addDays(days);
    if (later.year() < FirstYear || later.year() > LastYear)
        throw RunTimeError(RunTimeError::Overflow,
                           QStringLiteral("Overflow: the schedule would go beyond the year %1. "
                                          "Enter fewer weeks in \"# Weeks\".")
                               .arg(LastYear));
    return later;
}

[[noreturn]] void failInput(const QString& head, const QString& text, const QString& example) {
    throw RunTimeError(
        RunTimeError::TypeMismatch,
        QStringLiteral("Type mismatch: \"%1\" holds \"%2\". Enter %3.").arg(head, text, example));
}

double weeksOf(const QString& text) {
    try {
        return std::clamp(toNumber(text), -MostWeeks, MostWeeks);
    } catch (const RunTimeError&) {
        failInput(QStringLiteral("# Weeks"), text, QStringLiteral("a number such as 4"));
    }
}

QDate startOf(const QString& text) {
    if (const auto date = parseDate(text)) return *date;
    failInput(QStringLiteral("Start Date"), text, QStringLiteral("a date such as 06/12/05"));
}

// Writes the dates to rows 1, 17, 33 and so on; the title moves them down later.
void writeDates(SheetGrid& schedule, const QDate& start, double weeks) {
    const auto drawBorder = [&](int row, BorderType side) {
        schedule.SetCellBorder(1, row, ScheduleColumn::Last, row, side, Black, BorderStyle::Solid);
    };
    QDate date = start;
    int row = 1;
    for (int week = 1; week <= weeks; ++week) {
        if (week > 1) row += WeekRows;
        schedule.SetText(ScheduleColumn::Date, row, formatDate(date));
        date = daysLater(date, DaysOfWeek);
        if (week == 1)
            drawBorder(row, BorderType::Top);
        else
            drawBorder(row - 1, BorderType::Bottom);
    }
}

void writeTitle(SheetGrid& schedule, const QDate& start, double weeks) {
    schedule.InsertRows(1, ScheduleRow::FirstHead);
    schedule.AddCellSpan(1, ScheduleRow::Title, ScheduleColumn::Last, 1);
    schedule.Col(1);
    schedule.Row(ScheduleRow::Title);
    schedule.TypeHAlign(HAlign::Centre);
    schedule.FontSize(14);
    schedule.FontBold(true);
    const QDate end = daysLater(start, DaysOfWeek * qint64(weeks - 1));
    schedule.SetText(1, ScheduleRow::Title,
                     QStringLiteral("Schedule For: ") + formatDate(start) + QStringLiteral(" to ") +
                         formatDate(end));
}

// Returns the last content row of the block that a row belongs to, or NoBlock if there is no
// "Personell" head in the row or the 17 rows above it. The search runs downwards, so that from a
// head row or a date row it finds the week before.
// Deliberate: behaviours 90 and 92.
int lastRowOfBlock(const SheetGrid& schedule, int row) {
    const int from = row <= lastRowOf(1) ? ScheduleRow::FirstHead : row - WeekRows - 1;
    for (int head = from; head <= row; ++head)
        if (schedule.GetText(ScheduleColumn::Team, head) == PersonellHead)
            return head + ContentRows;
    return NoBlock;
}

}  // namespace

void makeSchedule(SheetGrid& schedule, SheetGrid& offers, const QString& start,
                  const QString& weeks) {
    clearSchedule(schedule);
    setNewScheduleWidths(schedule);
    const double count = weeksOf(weeks);
    const QDate first = startOf(start);
    writeDates(schedule, first, count);
    // The dates are not in their rows yet.
    // Deliberate: behaviour 86.
    updateAvailability(schedule, offers);
    fillSetLists(schedule, 1, int(std::min(count, double(schedule.MaxRows()))));
    writeTitle(schedule, first, count);
    // Even a schedule without weeks has a head.
    // Deliberate: behaviour 89.
    writeHead(schedule, headRowOf(1), TeamHead);
    int head = headRowOf(1);
    for (int week = 2; week <= count; ++week) {
        head += WeekRows;
        writeHead(schedule, head, TeamHead);
    }
}

bool rewriteDate(SheetGrid& schedule, int row) {
    const auto date = parseDate(schedule.GetText(ScheduleColumn::Date, row));
    if (date) schedule.SetText(ScheduleColumn::Date, row, formatDate(*date));
    return date.has_value();
}

void deleteEntry(SheetGrid& schedule, int col, int row) {
    if (row < 1) return;
    schedule.SetText(col, row, QString());
    if (col != ScheduleColumn::Team) return;
    const int last = lastRowOfBlock(schedule, row);
    for (int i = row; i <= last; ++i) {
        const QString below = schedule.GetText(ScheduleColumn::Team, i + 1);
        if (!schedule.GetText(ScheduleColumn::Team, i).isEmpty() || below.isEmpty() ||
            below == PersonellHead)
            continue;
        schedule.SetText(ScheduleColumn::Team, i, below);
        schedule.SetText(ScheduleColumn::Team, i + 1, QString());
    }
}

void insertPlayer(SheetGrid& schedule, int row) {
    // Deliberate: behaviour 91.
    for (int i = lastRowOfBlock(schedule, row); i >= row; --i) {
        if (schedule.GetText(ScheduleColumn::Team, i + 1) == PersonellHead) continue;
        const QString text = schedule.GetText(ScheduleColumn::Team, i);
        schedule.SetText(ScheduleColumn::Team, i, QString());
        schedule.SetText(ScheduleColumn::Team, i + 1, text);
    }
}

bool insertWeek(SheetGrid& schedule, int row) {
    if (!isHeadRow(schedule, row)) return false;
    // Neither the title nor any date is changed.
    // Deliberate: behaviour 93.
    schedule.InsertRows(row, WeekRows);
    writeHead(schedule, row, PersonellHead);
    schedule.SetCellBorder(1, row, ScheduleColumn::Last, row, BorderType::Top, Black,
                           BorderStyle::Solid);
    schedule.SetCellBorder(1, row, ScheduleColumn::Songs, row + WeekRows, BorderType::Right, Black,
                           BorderStyle::Solid);
    return true;
}
