// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/schedule_grid.h"

#include "core/grid/sheet_grid.h"
#include "core/grid/sheet_grid_dates.h"

namespace {

constexpr int ScheduleRows = 500;
constexpr int TitleRows = ScheduleRow::FirstHead;

// The background of the head rows, the only colour of a schedule.
constexpr int HeadColour = RGB(238, 232, 216);

const QString DateHead = QStringLiteral("Date");

void setWidths(SheetGrid& schedule, double notes, double songs, double team) {
    schedule.ColWidth(ScheduleColumn::Date, 8.0);
    schedule.ColWidth(ScheduleColumn::Notes, notes);
    schedule.ColWidth(ScheduleColumn::Songs, songs);
    schedule.ColWidth(ScheduleColumn::Team, team);
}

void writeHeadTexts(SheetGrid& schedule, int row, const QString& teamHead) {
    schedule.SetText(ScheduleColumn::Date, row, DateHead);
    schedule.SetText(ScheduleColumn::Notes, row, QStringLiteral("Rehearsal Notes"));
    schedule.SetText(ScheduleColumn::Songs, row, QStringLiteral("Set List"));
    schedule.SetText(ScheduleColumn::Team, row, teamHead);
}

}  // namespace

void setUpPickDate(SheetGrid& pickDate) {
    pickDate.MaxCols(PickDateColumn::Last);
    pickDate.MaxRows(1);
    pickDate.RowHeadersShow(false);
    pickDate.SetText(PickDateColumn::StartDate, 0, QStringLiteral("Start Date"));
    pickDate.SetText(PickDateColumn::Weeks, 0, QStringLiteral("# Weeks"));
    setUpDateCells(pickDate, PickDateColumn::StartDate, 1);
    pickDate.ColWidth(PickDateColumn::StartDate, 14);
    pickDate.ColWidth(PickDateColumn::Weeks, 6.75);
    pickDate.EditModeReplace(true);
}

void setUpSchedule(SheetGrid& schedule) {
    schedule.MaxCols(ScheduleColumn::Last);
    schedule.MaxRows(ScheduleRows);
    schedule.RowHeadersShow(false);
    writeHeadTexts(schedule, 0, PersonellHead);
    const auto drawBorder = [&](int col, BorderType side) {
        schedule.SetCellBorder(col, 1, col, ScheduleRows, side, Black, BorderStyle::Solid);
    };
    drawBorder(ScheduleColumn::Date, BorderType::Right);
    drawBorder(ScheduleColumn::Songs, BorderType::Left);
    drawBorder(ScheduleColumn::Team, BorderType::Left);
}

void setNewScheduleWidths(SheetGrid& schedule) { setWidths(schedule, 31.0, 26.87, 18.37); }

// Deliberate: behaviour 104.
void setPastScheduleWidths(SheetGrid& schedule) { setWidths(schedule, 26.88, 27.0, 18.38); }

void writeHead(SheetGrid& schedule, int row, const QString& teamHead) {
    writeHeadTexts(schedule, row, teamHead);
    schedule.BlockMode(true);
    schedule.Col(1);
    schedule.Col2(ScheduleColumn::Last);
    schedule.Row(row);
    schedule.Row2(row);
    schedule.FontBold(true);
    schedule.BackColor(HeadColour);
    schedule.BlockMode(false);
}

bool isHeadRow(const SheetGrid& schedule, int row) {
    return schedule.GetText(ScheduleColumn::Date, row) == DateHead;
}

void clearSchedule(SheetGrid& schedule) {
    schedule.ClearRange(1, 1, -1, -1, true);
    int col = 0;
    int row = 0;
    int cols = 0;
    int rows = 0;
    if (schedule.GetCellSpan(1, ScheduleRow::Title, col, row, cols, rows))
        schedule.DeleteRows(ScheduleRow::Title, TitleRows);
}
