// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/chart_sheets.h"

#include "charts/rules/chart_page.h"
#include "core/grid/sheet_grid.h"

namespace {

// Saves the page `Sheet` in a buffer.
bool savePage(const SheetGrid& chart, CellBlock& buffer, const TellFailure& tell) {
    if (chart.SaveBlockToBuffer(1, 1, chart.MaxCols(), chart.MaxRows(), buffer)) return true;
    tell(QStringLiteral("save to buffer failed"));
    return false;
}

}  // namespace

bool copyChart(SheetGrid& chart, SheetGrid& copy, const std::function<void()>& formatCopy,
               const TellFailure& tell) {
    // Deliberate: behaviour 143.
    if (chart.SheetCount() > 1) copy.SheetCount(chart.SheetCount());
    formatCopy();
    for (int page = 1; page <= chart.SheetCount(); ++page) {
        for (SheetGrid* grid : {&chart, &copy}) grid->Sheet(page);
        for (SheetGrid* grid : {&chart, &copy}) grid->ActiveSheet(page);
        CellBlock buffer;
        if (!savePage(chart, buffer, tell)) return false;
        if (!copy.LoadBlockFromBuffer(1, 1, buffer))
            tell(QStringLiteral("Load from buffer failed"));
        copy.AllowCellOverflow(true);
    }
    copy.ActiveSheet(1);
    return true;
}

bool mergePages(SheetGrid& chart, const TellFailure& tell) {
    chart.SetActiveCell(0, 0);
    for (int page = 2; page <= chart.SheetCount(); ++page) {
        chart.ActiveSheet(1);
        addRowsOfPage(chart);
        chart.ActiveSheet(page);
        CellBlock buffer;
        // Deliberate: behaviour 144.
        if (!savePage(chart, buffer, tell)) return false;
        chart.ActiveSheet(1);
        if (!chart.LoadBlockFromBuffer(1, chart.MaxRows() - ChartRows + 1, buffer))
            tell(QStringLiteral("load from buffer failed"));
    }
    return true;
}

void splitMergedPages(SheetGrid& chart) {
    if (chart.SheetCount() == 1) return;
    chart.ActiveSheet(1);
    dropAddedRows(chart);
}
