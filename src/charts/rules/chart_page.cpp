// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/chart_page.h"

#include "core/grid/sheet_grid.h"

namespace {

void setSizes(SheetGrid& chart) {
    chart.MaxCols(ChartCols);
    chart.ColWidth(-1, ChartColWidth);
    chart.MaxRows(ChartRows);
    chart.RowHeight(-1, ChartRowHeight);
}

void setFont(SheetGrid& chart, double points) {
    chart.FontName(QStringLiteral("Arial"));
    chart.FontSize(points);
    chart.FontBold(true);
}

void setFontOfAll(SheetGrid& chart, double points) {
    chart.Col(-1);
    chart.Row(-1);
    setFont(chart, points);
}

void hideHeads(SheetGrid& chart) {
    chart.ColHeadersShow(false);
    chart.RowHeadersShow(false);
}

void spanRow(SheetGrid& chart, int row) {
    chart.AddCellSpan(ChartColumn::Text, row, chart.MaxCols(), 1);
}

void centreRow(SheetGrid& chart, int row) {
    chart.Col(ChartColumn::Text);
    chart.Row(row);
    chart.TypeHAlign(HAlign::Centre);
}

void joinRow(SheetGrid& chart, int row) {
    spanRow(chart, row);
    centreRow(chart, row);
}

// Joins the rows of the page that begins below the row `above`.
void joinTitleAndLyrics(SheetGrid& chart, int above = 0) {
    for (int row = above + 1; row <= above + ChartRow::LastTitle; ++row) joinRow(chart, row);
    for (int row = above + ChartRow::FirstLyric; row <= chart.MaxRows(); row += 2)
        joinRow(chart, row);
}

void joinLastRows(SheetGrid& chart) {
    spanRow(chart, chart.MaxRows() - 1);
    centreRow(chart, chart.MaxRows());
    centreRow(chart, chart.MaxRows() - 1);
}

void beginRows(SheetGrid& chart, int row, int row2) {
    chart.Col(1);
    chart.Col2(chart.MaxCols());
    chart.Row(row);
    chart.Row2(row2);
    chart.BlockMode(true);
}

void alignRows(SheetGrid& chart, int row, int row2, HAlign align) {
    beginRows(chart, row, row2);
    chart.TypeHAlign(align);
    chart.BlockMode(false);
}

}  // namespace

void setUpChart(SheetGrid& chart) {
    setSizes(chart);
    // Deliberate: behaviour 120.
    setFontOfAll(chart, FirstPagePoints);
    hideHeads(chart);
    chart.AllowCellOverflow(true);
    joinTitleAndLyrics(chart);
    joinLastRows(chart);
}

void formatStackedCharts(SheetGrid& charts) {
    const std::vector<CellSpan> joined = charts.spansOf(charts.Sheet());
    for (const CellSpan& span : joined) charts.RemoveCellSpan(span.col, span.row);
    for (int col = 1; col <= ChartCols; ++col) charts.ColWidth(col, ChartColWidth);
    charts.RowHeight(-1, ChartRowHeight);
    setFontOfAll(charts, AddedPagePoints);
    charts.MaxCols(ChartCols);
    charts.TypeHAlign(HAlign::Centre);
    charts.AllowCellOverflow(true);
    const int pages = charts.MaxRows() / ChartRows;
    if (pages > 0) {
        // Joins the lyric rows down to the end of the sheet.
        joinTitleAndLyrics(charts);
        joinLastRows(charts);
    }
    // Deliberate: behaviour 131.
    if (pages > 1)
        for (int row = 1; row <= ChartRow::LastTitle; ++row) joinRow(charts, ChartRows + row);
    hideHeads(charts);
}

void addChartPage(SheetGrid& chart, const std::function<void(const QString&)>& status) {
    status(QStringLiteral("Loading New Page"));
    chart.TabStripPolicy(TabStrip::Never);
    chart.SheetCount(chart.SheetCount() + 1);
    chart.ActiveSheet(chart.SheetCount());
    status(QStringLiteral("Resizing Columns And Rows"));
    setSizes(chart);
    status(QStringLiteral("Setting Font Information"));
    setFontOfAll(chart, AddedPagePoints);
    chart.TypeHAlign(HAlign::Centre);
    status(QStringLiteral("Adding Cell Formats"));
    joinTitleAndLyrics(chart);
    alignRows(chart, 1, ChartRow::LastTitle, HAlign::Centre);
    joinLastRows(chart);
    // The last odd row counts as a chord row here. Deliberate: behaviour 120.
    for (int row = ChartRow::FirstChord; row <= chart.MaxRows(); row += 2)
        alignRows(chart, row, row, HAlign::Left);
    hideHeads(chart);
    chart.TabStripPolicy(TabStrip::AsNeeded);
}

void clearChartPage(SheetGrid& chart) {
    chart.ClearRange(1, 1, chart.MaxCols(), chart.MaxRows(), true);
    const int rows = chart.MaxRows();
    chart.MaxRows(0);
    chart.MaxRows(rows);
    joinTitleAndLyrics(chart);
    // The last row, not the one above it. Deliberate: behaviour 122.
    joinRow(chart, chart.MaxRows());
}

void formatChartCopy(SheetGrid& copy) {
    for (int page = 1; page <= copy.SheetCount(); ++page) {
        copy.Sheet(page);
        copy.ActiveSheet(page);
        copy.TabStripPolicy(TabStrip::Never);
        setSizes(copy);
        setFontOfAll(copy, AddedPagePoints);
        copy.TypeHAlign(HAlign::Centre);
        copy.TypeHAlign(HAlign::Left);
        joinTitleAndLyrics(copy);
        joinLastRows(copy);
        hideHeads(copy);
        copy.TabStripPolicy(TabStrip::AsNeeded);
        copy.AllowCellOverflow(true);
    }
}

void addRowsOfPage(SheetGrid& chart) {
    const int above = chart.MaxRows();
    chart.Row(above);
    chart.RowPageBreak(true);
    chart.MaxRows(above + ChartRows);
    for (int row = above + 1; row <= chart.MaxRows(); ++row) chart.RowHeight(row, ChartRowHeight);
    beginRows(chart, above + 1, chart.MaxRows());
    setFont(chart, AddedPagePoints);
    chart.MaxCols(ChartCols);
    chart.TypeHAlign(HAlign::Centre);
    chart.BlockMode(false);
    joinTitleAndLyrics(chart, above);
    for (int row = chart.MaxRows(); row > chart.MaxRows() - 3; --row) joinRow(chart, row);
}

void dropAddedRows(SheetGrid& chart) {
    chart.MaxRows(ChartRows);
    chart.Row(ChartRows);
    chart.RowPageBreak(false);
}
