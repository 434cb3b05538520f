// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/sheet_grid.h"

#include "core/grid/sheet_data.h"

SheetGrid::SheetGrid() : d(std::make_unique<Private>()) {}
SheetGrid::~SheetGrid() = default;

CellBlock::CellBlock() = default;
CellBlock::~CellBlock() = default;

const SheetData* SheetGrid::Private::at(int number) const {
    const bool exists = number >= 1 && size_t(number) <= data.sheets.size();
    return exists ? &data.sheets[size_t(number - 1)] : nullptr;
}

// --- Changes for the view ------------------------------------------------------------------------

void SheetGrid::textsWritten(int, const GridArea&) {}

void SheetGrid::rowsMoved(int, int, int) {}

GridDirt SheetGrid::takeDirt() { return std::exchange(d->dirt, {}); }

// A write to a sheet that is not on view changes nothing on the screen.
void SheetGrid::touchRows(int first, int last) {
    if (d->sheet != d->data.activeSheet || last < first) return;
    GridDirt& dirt = d->dirt;
    if (dirt.lastRow < dirt.firstRow) {
        dirt.firstRow = first;
        dirt.lastRow = last;
    } else {
        dirt.firstRow = std::min(dirt.firstRow, first);
        dirt.lastRow = std::max(dirt.lastRow, last);
    }
    if (std::exchange(dirt.any, true)) return;
    becameDirty();
}

void SheetGrid::touchLayout() {
    d->dirt.layout = true;
    if (std::exchange(d->dirt.any, true)) return;
    becameDirty();
}

// --- Sheets and size ----------------------------------------------------------------------------

int SheetGrid::MaxRows() const { return d->current().maxRows; }

void SheetGrid::MaxRows(int count) {
    count = std::clamp(count, 0, MaxGridRows);
    if (count == MaxRows()) return;
    const int former = MaxRows();
    d->current().resizeRows(count);
    if (count < former) rowsMoved(d->sheet, count + 1, count - former);
    leaveLostCell();
    touchLayout();
}

int SheetGrid::MaxCols() const { return d->current().maxCols; }

void SheetGrid::MaxCols(int count) {
    count = std::clamp(count, 0, MaxGridCols);
    const int former = MaxCols();
    if (count == former) return;
    d->current().resizeCols(count);
    if (count < former) textsWritten(d->sheet, {count + 1, 0, former, MaxRows()});
    leaveLostCell();
    touchLayout();
}

int SheetGrid::DataRowCnt() const { return d->current().lastDataRow(); }

int SheetGrid::SheetCount() const { return int(d->data.sheets.size()); }

void SheetGrid::SheetCount(int count) {
    count = std::clamp(count, 1, MaxSheets);
    if (count == SheetCount()) return;
    if (count < SheetCount()) {
        DeleteSheets(count + 1, SheetCount() - count);
        return;
    }
    SheetData plain;
    plain.maxRows = d->data.sheets.front().maxRows;
    plain.maxCols = d->data.sheets.front().maxCols;
    d->data.sheets.resize(size_t(count), plain);
    touchLayout();
}

int SheetGrid::Sheet() const { return d->sheet; }

void SheetGrid::Sheet(int number) {
    if (d->at(number)) d->sheet = number;
}

int SheetGrid::ActiveSheet() const { return d->data.activeSheet; }

void SheetGrid::ActiveSheet(int number) {
    if (!d->at(number)) return;
    d->sheet = number;
    if (std::exchange(d->data.activeSheet, number) == number) return;
    leaveLostCell();
    touchLayout();
}

TabStrip SheetGrid::TabStripPolicy() const { return d->data.tabStrip; }

void SheetGrid::TabStripPolicy(TabStrip policy) {
    if (!isKnown(policy)) return;
    if (std::exchange(d->data.tabStrip, policy) != policy) touchLayout();
}

void SheetGrid::DeleteSheets(int first, int count) {
    if (!d->at(first) || count < 1) return;
    count = std::min(count, SheetCount() - first + 1);
    if (count == SheetCount()) {  // one sheet always stays
        ++first;
        --count;
    }
    const auto begin = d->data.sheets.begin() + (first - 1);
    d->data.sheets.erase(begin, begin + count);
    const auto moved = [&](int number) {
        if (number >= first + count) return number - count;
        return std::min(number, std::min(first, SheetCount()));
    };
    contentReplaced();
    d->sheet = moved(d->sheet);
    d->data.activeSheet = moved(d->data.activeSheet);
    leaveLostCell();
    touchLayout();
}

// --- The active cell ----------------------------------------------------------------------------

// The active cell always exists in the sheet on view.
void SheetGrid::leaveLostCell() {
    if (d->at(ActiveSheet())->contains(m_activeCol, m_activeRow)) return;
    m_activeCol = 0;
    m_activeRow = 0;
}

void SheetGrid::SetActiveCell(int col, int row) {
    if (!d->at(ActiveSheet())->contains(col, row)) return;
    if (m_activeCol == col && m_activeRow == row) return;
    m_activeCol = col;
    m_activeRow = row;
    if (std::exchange(d->dirt.any, true)) return;
    becameDirty();
}

// --- Properties of the whole grid ---------------------------------------------------------------

bool SheetGrid::ColHeadersShow() const { return d->data.colHeadersShow; }

void SheetGrid::ColHeadersShow(bool on) {
    if (std::exchange(d->data.colHeadersShow, on) != on) touchLayout();
}

bool SheetGrid::RowHeadersShow() const { return d->data.rowHeadersShow; }

void SheetGrid::RowHeadersShow(bool on) {
    if (std::exchange(d->data.rowHeadersShow, on) != on) touchLayout();
}

bool SheetGrid::GridShowHoriz() const { return d->data.gridShowHoriz; }

void SheetGrid::GridShowHoriz(bool on) {
    if (std::exchange(d->data.gridShowHoriz, on) != on) touchLayout();
}

bool SheetGrid::GridShowVert() const { return d->data.gridShowVert; }

void SheetGrid::GridShowVert(bool on) {
    if (std::exchange(d->data.gridShowVert, on) != on) touchLayout();
}

bool SheetGrid::AllowCellOverflow() const { return d->data.allowCellOverflow; }

void SheetGrid::AllowCellOverflow(bool on) {
    if (std::exchange(d->data.allowCellOverflow, on) != on) touchLayout();
}

bool SheetGrid::EditModeReplace() const { return d->data.editModeReplace; }
void SheetGrid::EditModeReplace(bool on) { d->data.editModeReplace = on; }

// --- Reading any sheet --------------------------------------------------------------------------

QString SheetGrid::textAt(int sheet, int col, int row) const {
    const SheetData* data = d->at(sheet);
    const GridCell* cell = data ? data->cell(col, row) : nullptr;
    return cell ? cell->text : QString();
}

CellFormat SheetGrid::formatAt(int sheet, int col, int row) const {
    const SheetData* data = d->at(sheet);
    return data ? data->resolved(col, row) : CellFormat();
}

QByteArray SheetGrid::pictureAt(int sheet, int col, int row) const {
    const SheetData* data = d->at(sheet);
    const GridCell* cell = data ? data->cell(col, row) : nullptr;
    return cell && cell->picture >= 0 ? data->pictures[size_t(cell->picture)] : QByteArray();
}

CellSpan SheetGrid::spanAt(int sheet, int col, int row) const {
    const SheetData* data = d->at(sheet);
    const CellSpan* span = data ? data->spanAt(col, row) : nullptr;
    return span ? *span : CellSpan();
}

const std::vector<CellSpan>& SheetGrid::spansOf(int sheet) const {
    static const std::vector<CellSpan> none;
    const SheetData* data = d->at(sheet);
    return data ? data->spans : none;
}

int SheetGrid::rowsOf(int sheet) const { return d->at(sheet) ? d->at(sheet)->maxRows : 0; }
int SheetGrid::colsOf(int sheet) const { return d->at(sheet) ? d->at(sheet)->maxCols : 0; }
int SheetGrid::dataRowsOf(int sheet) const {
    return d->at(sheet) ? d->at(sheet)->lastDataRow() : 0;
}

double SheetGrid::widthOf(int sheet, int col) const {
    return d->at(sheet) ? d->at(sheet)->colSection(col).size : 0;
}

double SheetGrid::heightOf(int sheet, int row) const {
    return d->at(sheet) ? d->at(sheet)->rowSection(row).size : 0;
}

bool SheetGrid::isColHidden(int sheet, int col) const {
    return d->at(sheet) && d->at(sheet)->colSection(col).hidden;
}

bool SheetGrid::isRowHidden(int sheet, int row) const {
    return d->at(sheet) && d->at(sheet)->rowSection(row).hidden;
}

bool SheetGrid::hasPageBreak(int sheet, int row) const {
    return d->at(sheet) && d->at(sheet)->rowSection(row).pageBreak;
}
