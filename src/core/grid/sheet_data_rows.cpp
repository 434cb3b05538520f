// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/sheet_data.h"

namespace {

// The number of a row after rows were inserted (count above 0) or deleted (count below 0) at `at`;
// -1 if it was deleted.
int movedSection(int number, int at, int count) {
    if (number < at) return number;
    if (count < 0 && number < at - count) return -1;
    return number + count;
}

void moveSections(GridSections& sections, int at, int count, int last) {
    GridSections moved;
    for (const auto& [number, section] : sections) {
        const int to = movedSection(number, at, count);
        if (to >= 0 && to <= last) moved.emplace_hint(moved.end(), to, section);
    }
    sections = std::move(moved);
}

bool meets(const CellSpan& span, const GridArea& area) {
    return span.col <= area.col2 && span.col + span.cols > area.col && span.row <= area.row2 &&
           span.row + span.rows > area.row;
}

const GridSection& sectionIn(const GridSections& sections, int number, const GridSection& plain) {
    const auto it = sections.find(number);
    return it == sections.end() ? plain : it->second;
}

}  // namespace

const GridCell GridRow::plainCell;

GridRow::GridRow(const GridRow& other) {
    keep(other.m_first, other.m_size);
    std::copy(other.begin(), other.end(), begin());
}

void GridRow::swap(GridRow& other) noexcept {
    m_cells.swap(other.m_cells);
    std::swap(m_first, other.m_first);
    std::swap(m_size, other.m_size);
}

void GridRow::makeRoom(size_t col, size_t size) {
    keep(std::min<size_t>(col, m_cells ? m_first : 1), std::max<size_t>(size, m_size));
}

// Keeps the cells of the columns from `first` to before `size`, and adds plain ones.
void GridRow::keep(size_t first, size_t size) {
    GridRow kept;
    if (first < size) {
        kept.m_cells = std::make_unique<GridCell[]>(size - first);
        kept.m_first = uint32_t(first);
        kept.m_size = uint32_t(size);
        const size_t end = std::min<size_t>(size, m_size);
        for (size_t col = std::max<size_t>(first, m_first); col < end; ++col)
            kept.m_cells[col - first] = std::move(m_cells[col - m_first]);
    }
    swap(kept);
}

const GridCell* SheetData::cell(int col, int row) const {
    if (row < 0 || size_t(row) >= rows.size()) return nullptr;
    const GridRow& cells = rows[size_t(row)];
    return col < 0 || size_t(col) >= cells.size() ? nullptr : &cells[size_t(col)];
}

GridCell& SheetData::cellForWriting(int col, int row) {
    if (size_t(row) == rows.size()) rows.emplace_back();
    if (size_t(row) > rows.size()) rows.resize(size_t(row) + 1);
    return rows[size_t(row)].forWriting(size_t(col), size_t(rowCapacity(col)));
}

GridArea SheetData::area(int col, int row, int col2, int row2) const {
    if (col < -1 || row < -1) return {};
    const auto end = [](int wanted, int last) {
        return wanted == -1 ? last : std::min(wanted, last);
    };
    return {col == -1 ? 1 : col, row == -1 ? 1 : row, end(col2, maxCols), end(row2, maxRows)};
}

int SheetData::lastDataRow() const {
    for (size_t row = rows.size(); row > 1; --row) {
        const GridRow& cells = rows[row - 1];
        for (size_t col = 1; col < cells.size(); ++col)
            if (!cells[col].text.isEmpty() || cells[col].picture >= 0) return int(row) - 1;
    }
    return 0;
}

const GridSection& SheetData::rowSection(int row) const {
    return sectionIn(rowSections, row, row == 0 ? plainColHead : plainRow);
}

const GridSection& SheetData::colSection(int col) const {
    return sectionIn(colSections, col, col == 0 ? plainRowHead : plainCol);
}

GridSection& SheetData::rowSectionForWriting(int row) {
    return rowSections.emplace(row, rowSection(row)).first->second;
}

GridSection& SheetData::colSectionForWriting(int col) {
    return colSections.emplace(col, colSection(col)).first->second;
}

void SheetData::resizeRows(int count) {
    const bool lowers = count < maxRows;
    maxRows = count;
    if (!lowers) return;
    if (rows.size() > size_t(count) + 1) rows.resize(size_t(count) + 1);
    rowSections.erase(rowSections.upper_bound(count), rowSections.end());
    cutSpans();
}

void SheetData::resizeCols(int count) {
    const bool lowers = count < maxCols;
    maxCols = count;
    if (!lowers) return;
    for (GridRow& cells : rows)
        if (cells.size() > size_t(count) + 1) cells.cutAt(size_t(count) + 1);
    colSections.erase(colSections.upper_bound(count), colSections.end());
    cutSpans();
}

void SheetData::insertRows(int row, int count) {
    if (row < 1 || row > maxRows || count < 1) return;
    count = std::min(count, maxRows - row + 1);
    if (rows.size() > size_t(row)) {
        const size_t kept = std::min(rows.size(), size_t(maxRows - count) + 1);
        rows.resize(std::max(kept, size_t(row)));
        rows.insert(rows.begin() + row, size_t(count), GridRow());
    }
    moveSections(rowSections, row, count, maxRows);
    for (CellSpan& span : spans) {
        if (span.row >= row)
            span.row += count;
        else if (span.row + span.rows > row)
            span.rows += count;
    }
    cutSpans();
}

void SheetData::deleteRows(int row, int count) {
    if (row < 1 || row > maxRows || count < 1) return;
    count = std::min(count, maxRows - row + 1);
    if (rows.size() > size_t(row)) {
        const auto first = rows.begin() + row;
        rows.erase(first, first + std::min<ptrdiff_t>(count, rows.end() - first));
    }
    moveSections(rowSections, row, -count, maxRows);
    for (CellSpan& span : spans) {
        const int end = span.row + span.rows;
        const int gone = std::min(end, row + count) - std::max(span.row, row);
        if (gone > 0) span.rows -= gone;
        if (span.row >= row) span.row = std::max(row, span.row - count);
    }
    cutSpans();
}

int SheetData::lastKeptRow() const {
    const int lastLine = rowSections.empty() ? 0 : rowSections.rbegin()->first;
    return std::max(int(rows.size()) - 1, lastLine);
}

void SheetData::reorderRows(int first, const std::vector<int>& order) {
    const int end = first + int(order.size());
    if (rows.size() < size_t(end)) rows.resize(size_t(end));
    std::vector<GridRow> moved;
    moved.reserve(order.size());
    for (const int from : order) moved.push_back(std::move(rows[size_t(from)]));
    std::move(moved.begin(), moved.end(), rows.begin() + first);

    GridSections sections(rowSections.begin(), rowSections.lower_bound(first));
    for (size_t i = 0; i < order.size(); ++i) {
        const auto section = rowSections.find(order[i]);
        if (section != rowSections.end()) sections.emplace(first + int(i), section->second);
    }
    sections.insert(rowSections.lower_bound(end), rowSections.end());
    rowSections = std::move(sections);
}

const CellSpan* SheetData::spanAt(int col, int row) const {
    for (const CellSpan& span : spans)
        if (meets(span, {col, row, col, row})) return &span;
    return nullptr;
}

CellSpan SheetData::cutSpan(CellSpan span) const {
    if (span.col < 1 || span.row < 1 || span.col > maxCols || span.row > maxRows) return {};
    span.cols = std::clamp(span.cols, 1, maxCols - span.col + 1);
    span.rows = std::clamp(span.rows, 1, maxRows - span.row + 1);
    return span.cols == 1 && span.rows == 1 ? CellSpan() : span;
}

void SheetData::cutSpans() {
    for (CellSpan& span : spans) span = span.rows > 0 ? cutSpan(span) : CellSpan();
    std::erase_if(spans, [](const CellSpan& span) { return span.cols == 0; });
}

void SheetData::addSpan(CellSpan span) {
    span = cutSpan(span);
    if (span.cols == 0) return;
    dropSpansIn({span.col, span.row, span.col + span.cols - 1, span.row + span.rows - 1});
    spans.push_back(span);
}

void SheetData::dropSpansIn(const GridArea& area) {
    std::erase_if(spans, [&area](const CellSpan& span) { return meets(span, area); });
}
