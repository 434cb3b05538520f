// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/collation.h"
#include "core/data/dates.h"
#include "core/grid/sheet_data.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace {

// What a cell compares as. Dates come before numbers and numbers before texts; empty cells come
// last in both orders.
struct SortValue {
    enum Kind { Date, Number, Text, Empty } kind = Empty;
    double number = 0;
    std::string text;
};

// Digits with an optional sign and decimal point, as the program writes numbers.
bool isPlainNumber(const QString& text) {
    bool digit = false;
    bool point = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const ushort c = text[i].unicode();
        if (c >= '0' && c <= '9')
            digit = true;
        else if (c == '.' && !point)
            point = true;
        else if (i > 0 || (c != '-' && c != '+'))
            return false;
    }
    return digit;
}

SortValue valueOf(const SheetData& sheet, int col, int row) {
    const GridCell* cell = sheet.cell(col, row);
    if (!cell || cell->text.isEmpty()) return {};
    if (sheet.isDateCell(col, row))
        if (const auto date = parseDate(cell->text))
            return {SortValue::Date, double(date->toJulianDay()), {}};
    if (isPlainNumber(cell->text)) return {SortValue::Number, cell->text.toDouble(), {}};
    return {SortValue::Text, 0, cell->text.toStdString()};
}

int compare(const SortValue& a, const SortValue& b, SortOrder order) {
    if (a.kind == SortValue::Empty || b.kind == SortValue::Empty)
        return (a.kind == SortValue::Empty) - (b.kind == SortValue::Empty);
    int result = 0;
    if (a.kind != b.kind)
        result = a.kind < b.kind ? -1 : 1;
    else if (a.kind == SortValue::Text)
        result = compareTexts(a.text, b.text);
    else
        result = (a.number > b.number) - (a.number < b.number);
    return order == SortOrder::Descending ? -result : result;
}

}  // namespace

int SheetGrid::SortKey(int n) const {
    return n >= 1 && n <= 3 ? d->data.sortKeys[size_t(n - 1)].col : 0;
}

void SheetGrid::SortKey(int n, int col) {
    if (n >= 1 && n <= 3) d->data.sortKeys[size_t(n - 1)].col = std::clamp(col, 0, MaxGridCols);
}

SortOrder SheetGrid::SortKeyOrder(int n) const {
    return n >= 1 && n <= 3 ? d->data.sortKeys[size_t(n - 1)].order : SortOrder::None;
}

void SheetGrid::SortKeyOrder(int n, SortOrder order) {
    if (n >= 1 && n <= 3 && isKnown(order)) d->data.sortKeys[size_t(n - 1)].order = order;
}

void SheetGrid::Sort(int, int row, int, int row2, SortBy) {
    SheetData& sheet = d->current();
    GridArea area = sheet.area(-1, std::max(row, -1), -1, row2);
    area.row = std::max(area.row, 1);
    std::vector<GridSortKey> keys;
    for (const GridSortKey& key : d->data.sortKeys)
        if (key.col >= 1 && key.col <= sheet.maxCols && key.order != SortOrder::None)
            keys.push_back(key);
    // The rows after the last kept one are empty and stay where they are.
    const int count = std::min(area.row2, sheet.lastKeptRow()) - area.row + 1;
    if (keys.empty() || count < 1) return;

    std::vector<SortValue> values;
    values.reserve(size_t(count) * keys.size());
    for (int r = area.row; r < area.row + count; ++r)
        for (const GridSortKey& key : keys) values.push_back(valueOf(sheet, key.col, r));
    const auto isBefore = [&](int a, int b) {
        for (size_t k = 0; k < keys.size(); ++k) {
            const int order =
                compare(values[size_t(a - area.row) * keys.size() + k],
                        values[size_t(b - area.row) * keys.size() + k], keys[k].order);
            if (order != 0) return order < 0;
        }
        return false;
    };
    std::vector<int> order(static_cast<size_t>(count));
    std::iota(order.begin(), order.end(), area.row);
    std::stable_sort(order.begin(), order.end(), isBefore);
    sheet.dropSpansIn({1, area.row, sheet.maxCols, area.row2});
    sheet.reorderRows(area.row, order);
    // The active cell goes along with its row.
    const auto active = std::find(order.begin(), order.end(), m_activeRow);
    if (active != order.end() && Sheet() == ActiveSheet())
        m_activeRow = area.row + int(active - order.begin());
    contentReplaced();
    rowsSorted();
    touchLayout();
}

void SheetGrid::SortByHead(int col) {
    SortKey(1, col);
    // Deliberate: behaviour 7.
    SortKeyOrder(
        1, SortKeyOrder(1) == SortOrder::Ascending ? SortOrder::Descending : SortOrder::Ascending);
    Sort(-1, -1, -1, -1, SortBy::Rows);
}
