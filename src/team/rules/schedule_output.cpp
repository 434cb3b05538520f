// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/schedule_output.h"

#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"
#include "team/rules/schedule_grid.h"

#include <vector>

namespace {

// Twips.
constexpr int InchMargin = 1440;
constexpr int HalfInchMargin = 720;

bool isBlank(const SheetGrid& grid, int row) {
    for (int col = 1; col <= grid.MaxCols(); ++col)
        if (!grid.GetText(col, row).isEmpty()) return false;
    return true;
}

void setSchedulePrint(SheetGrid& schedule) {
    setTeamPrint(schedule);
    schedule.PrintColHeaders(false);
    schedule.PrintGrid(false);
    schedule.PrintMarginTop(InchMargin);
    schedule.PrintMarginBottom(InchMargin);
}

}  // namespace

void deleteBlankRows(SheetGrid& schedule) {
    // Each number allows for the deletions before it.
    std::vector<int> blankRows;
    for (int row = ScheduleRow::FirstHead; row <= schedule.MaxRows(); ++row)
        if (isBlank(schedule, row)) blankRows.push_back(row - int(blankRows.size()));
    for (const int row : blankRows) schedule.DeleteRows(row, 1);
}

int rowOfDate(const SheetGrid& schedule, const QString& date) {
    return schedule.SearchCol(ScheduleColumn::Date, 1, schedule.DataRowCnt(), date);
}

// Deliberate: behaviours 110 and 111.
RowRange weeksBetween(const SheetGrid& schedule, int from, int to) {
    const int nextHead =
        schedule.SearchCol(ScheduleColumn::Date, to, schedule.MaxRows(), QStringLiteral("Date"));
    return {from - 1, nextHead - 1};
}

QString mailedLine(QString line) {
    line.remove(QLatin1String("WIDTH=692"));
    if (line.contains(QLatin1String("<TABLE CELLSPACING=0 CELLPADDING=0")))
        line.replace(QLatin1String("CELLPADDING=0"), QLatin1String("CELLPADDING=1"));
    return line;
}

void joinNoteLines(SheetGrid& schedule) {
    for (int row = ScheduleRow::FirstHead; row <= schedule.MaxRows(); ++row) {
        for (const char lineEnd : {'\r', '\n'}) {
            QString note = schedule.GetText(ScheduleColumn::Notes, row);
            if (!note.contains(QLatin1Char(lineEnd))) continue;
            schedule.SetText(ScheduleColumn::Notes, row, note.remove(QLatin1Char(lineEnd)));
        }
    }
}

QString proposedExportName(const SheetGrid& schedule) {
    QString name = schedule.GetText(1, ScheduleRow::Title);
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    name.remove(QLatin1Char(':')).remove(QLatin1Char(' '));
    name = safeFileName(name);
    if (name.isEmpty()) name = QStringLiteral("Schedule");
    return name + QStringLiteral(".html");
}

void removePageBreaks(SheetGrid& schedule) {
    for (int row = 1; row <= schedule.MaxRows(); ++row) {
        schedule.Row(row);
        schedule.RowPageBreak(false);
    }
}

void setWholePrint(SheetGrid& schedule) {
    schedule.PrintType(PrintTypes::All);
    // Deliberate: behaviour 112.
    schedule.PrintColor(false);
    setSchedulePrint(schedule);
}

void setWeeksPrint(SheetGrid& schedule, const RowRange& rows) {
    schedule.Col(1);
    schedule.Col2(ScheduleColumn::Last);
    schedule.Row(rows.first);
    schedule.Row2(rows.last);
    schedule.PrintType(PrintTypes::Block);
    schedule.PrintColor(true);
    setSchedulePrint(schedule);
}

void setTeamPrint(SheetGrid& grid) {
    grid.PrintJobName(QStringLiteral("Worship Schedule"));
    grid.PrintFooter(QStringLiteral("/cPage /p Of /pc"));
    grid.PrintBorder(false);
    grid.PrintRowHeaders(false);
    grid.PrintShadows(false);
    grid.PrintMarginLeft(HalfInchMargin);
    grid.PrintMarginRight(HalfInchMargin);
    grid.PrintSmartPrint(true);
    grid.PrintUseDataMax(true);
}
