// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/paths.h"
#include "core/grid/grid_file.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace {

double asSize(double size) { return size >= 0 ? std::min(size, MaxSectionSize) : 0; }

// Changes the plain row or column and all that differ from it.
template <class Change>
void changeAll(GridSection& plain, GridSections& sections, Change change) {
    change(plain);
    for (auto& [number, section] : sections)
        if (number > 0) change(section);
}

}  // namespace

// --- Widths, heights and flags -----------------------------------------------------------------

template <class Change>
void SheetGrid::changeCols(int first, int last, Change change) {
    SheetData& sheet = d->current();
    const GridArea area = sheet.area(first, -1, last, -1);
    if (first == -1)
        changeAll(sheet.plainCol, sheet.colSections, change);
    else
        for (int col = area.col; col <= area.col2; ++col) change(sheet.colSectionForWriting(col));
    touchLayout();
}

template <class Change>
void SheetGrid::changeRows(int first, int last, Change change) {
    SheetData& sheet = d->current();
    const GridArea area = sheet.area(-1, first, -1, last);
    if (first == -1)
        changeAll(sheet.plainRow, sheet.rowSections, change);
    else
        for (int row = area.row; row <= area.row2; ++row) change(sheet.rowSectionForWriting(row));
    touchLayout();
}

double SheetGrid::ColWidth(int col) const { return widthOf(d->sheet, col); }

void SheetGrid::ColWidth(int col, double width) {
    changeCols(col, col, [size = asSize(width)](GridSection& section) { section.size = size; });
}

double SheetGrid::RowHeight(int row) const { return heightOf(d->sheet, row); }

void SheetGrid::RowHeight(int row, double height) {
    changeRows(row, row, [size = asSize(height)](GridSection& section) { section.size = size; });
}

bool SheetGrid::ColHidden() const { return isColHidden(d->sheet, m_col); }

void SheetGrid::ColHidden(bool hidden) {
    changeCols(m_col, m_blockMode ? m_col2 : m_col,
               [hidden](GridSection& section) { section.hidden = hidden; });
}

bool SheetGrid::RowHidden() const { return isRowHidden(d->sheet, m_row); }

void SheetGrid::RowHidden(bool hidden) {
    changeRows(m_row, m_blockMode ? m_row2 : m_row,
               [hidden](GridSection& section) { section.hidden = hidden; });
}

bool SheetGrid::RowPageBreak() const { return hasPageBreak(d->sheet, m_row); }

void SheetGrid::RowPageBreak(bool on) {
    changeRows(m_row, m_blockMode ? m_row2 : m_row,
               [on](GridSection& section) { section.pageBreak = on; });
}

// --- Rows in and out ---------------------------------------------------------------------------

void SheetGrid::InsertRows(int row, int count) {
    d->current().insertRows(row, count);
    if (row > 0 && count > 0) rowsMoved(d->sheet, row, count);
    touchLayout();
}

void SheetGrid::DeleteRows(int row, int count) {
    d->current().deleteRows(row, count);
    if (row > 0 && count > 0) rowsMoved(d->sheet, row, -count);
    touchLayout();
}

void SheetGrid::ClearRange(int col, int row, int col2, int row2, bool dataOnly) {
    SheetData& sheet = d->current();
    const GridArea area = sheet.area(col, row, col2, row2);
    if (area.isEmpty()) return;
    sheet.visitStoredCells(area, [](GridCell& cell) {
        cell.text.clear();
        cell.picture = -1;
    });
    textsWritten(d->sheet, area);
    if (!dataOnly) {
        sheet.dropFormats(area);
        sheet.dropSpansIn(area);
        touchLayout();
    }
    touchRows(area.row, area.row2);
}

// --- Blocks ------------------------------------------------------------------------------------

bool SheetGrid::SaveBlockToBuffer(int col, int row, int col2, int row2, CellBlock& buffer) const {
    const SheetData& from = d->current();
    const GridArea area = from.area(std::max(col, 1), std::max(row, 1), col2, row2);
    if (area.isEmpty()) return false;
    auto block = std::make_unique<SheetData>();
    block->maxCols = area.col2 - area.col + 1;
    block->maxRows = area.row2 - area.row + 1;
    for (int r = 1; r <= block->maxRows; ++r)
        block->copyRow(r, 1, from, area.row + r - 1, area.col, block->maxCols);
    block->copySpans(from, area, 1, 1);
    buffer.m_sheet = std::move(block);
    return true;
}

bool SheetGrid::LoadBlockFromBuffer(int col, int row, const CellBlock& buffer) {
    SheetData& to = d->current();
    if (!buffer.m_sheet || col < 1 || row < 1 || !to.contains(col, row)) return false;
    const SheetData& block = *buffer.m_sheet;
    const GridArea target = to.area(col, row, std::min(to.maxCols, col + block.maxCols - 1),
                                    std::min(to.maxRows, row + block.maxRows - 1));
    to.collectGarbage();
    for (int r = target.row; r <= target.row2; ++r)
        to.copyRow(r, col, block, r - row + 1, 1, target.col2 - col + 1);
    to.dropSpansIn(target);
    to.copySpans(block, {1, 1, target.col2 - col + 1, target.row2 - row + 1}, col, row);
    textsWritten(d->sheet, target);
    touchLayout();
    return true;
}

// --- Files -------------------------------------------------------------------------------------

bool SheetGrid::SaveToFile(const QString& path, bool dataOnly) const {
    const QByteArray bytes = writeGridFile(d->data, dataOnly);
    return !bytes.isEmpty() && replaceFile(path, bytes);
}

QByteArray SheetGrid::fileBytes() const { return writeGridFile(d->data, false); }

QByteArray SheetGrid::contentSum() const {
    QCryptographicHash sum(QCryptographicHash::Sha1);
    const auto add = [&](int number) {
        sum.addData(QByteArrayView(reinterpret_cast<const char*>(&number), sizeof number));
    };
    for (const SheetData& sheet : d->data.sheets) {
        add(sheet.maxCols);
        add(sheet.maxRows);
        for (size_t row = 0; row < sheet.rows.size(); ++row) {
            for (size_t col = 0; col < sheet.rows[row].size(); ++col) {
                const GridCell& cell = sheet.rows[row][col];
                if (cell.text.isEmpty() && cell.picture < 0) continue;
                add(int(row));
                add(int(col));
                add(int(cell.text.size()));
                sum.addData(QByteArrayView(reinterpret_cast<const char*>(cell.text.constData()),
                                           cell.text.size() * qsizetype(sizeof(QChar))));
                if (cell.picture >= 0) sum.addData(sheet.pictures[size_t(cell.picture)]);
            }
        }
        add(-1);  // between the sheets
    }
    return sum.result();
}

bool SheetGrid::LoadFromFile(const QString& path) {
    QFile file(resolvedPath(path));
    if (!QFileInfo(file).isFile() || file.size() > MaxGridFileSize ||
        !file.open(QIODevice::ReadOnly))
        return false;
    auto data = readGridFile(file.readAll());
    if (!data) return false;
    d->data = std::move(*data);
    d->sheet = d->data.activeSheet;
    m_activeCol = 0;
    m_activeRow = 0;
    contentReplaced();
    touchLayout();
    return true;
}
