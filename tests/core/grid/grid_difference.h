// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Whether two grids hold the same.
#pragma once

#include "core/grid/sheet_data.h"

// The first thing in which two grids differ, for a message; empty where they are the same.
inline QString differenceOf(const SheetData& a, const SheetData& b) {
    if (a.maxRows != b.maxRows || a.maxCols != b.maxCols) return QStringLiteral("size");
    if (a.spans != b.spans) return QStringLiteral("spans");
    const auto picture = [](const SheetData& sheet, const GridCell* cell) {
        return cell && cell->picture >= 0 ? sheet.pictures[size_t(cell->picture)] : QByteArray();
    };
    const auto lines = [](const SheetData& x, const SheetData& y) {
        for (const auto& [number, section] : x.rowSections) {
            const GridSection& other = y.rowSection(number);
            if (section.size != other.size || section.hidden != other.hidden ||
                section.pageBreak != other.pageBreak)
                return false;
        }
        for (const auto& [number, section] : x.colSections) {
            const GridSection& other = y.colSection(number);
            if (section.size != other.size || section.hidden != other.hidden) return false;
        }
        return true;
    };
    if (!lines(a, b) || !lines(b, a)) return QStringLiteral("heights, widths or flags");
    if (a.rowSection(a.maxRows + 1).size != b.rowSection(b.maxRows + 1).size)
        return QStringLiteral("plain height");
    if (a.resolved(a.maxCols, a.maxRows) != b.resolved(b.maxCols, b.maxRows))
        return QStringLiteral("last cell's format");
    const int rows = int(std::max(a.rows.size(), b.rows.size()));
    for (int row = 0; row < rows; ++row) {
        const auto length = [row](const SheetData& sheet) {
            return size_t(row) < sheet.rows.size() ? sheet.rows[size_t(row)].size() : 0;
        };
        const int cols = int(std::max(length(a), length(b)));
        for (int col = 0; col < cols; ++col) {
            const GridCell* x = a.cell(col, row);
            const GridCell* y = b.cell(col, row);
            const bool same = (x ? x->text : QString()) == (y ? y->text : QString()) &&
                              picture(a, x) == picture(b, y) &&
                              ((x ? x->format : -1) == -1 && (y ? y->format : -1) == -1
                                   ? true
                                   : a.resolved(col, row) == b.resolved(col, row));
            if (!same) return QStringLiteral("cell (%1, %2)").arg(col).arg(row);
        }
    }
    return {};
}

inline QString differenceOf(const GridData& a, const GridData& b) {
    if (a.sheets.size() != b.sheets.size()) return QStringLiteral("number of sheets");
    for (size_t i = 0; i < a.sheets.size(); ++i) {
        const QString difference = differenceOf(a.sheets[i], b.sheets[i]);
        if (!difference.isEmpty()) return QStringLiteral("sheet %1: ").arg(i + 1) + difference;
    }
    if (a.activeSheet != b.activeSheet) return QStringLiteral("active sheet");
    if (a.sortKeys != b.sortKeys) return QStringLiteral("sort keys");
    const bool same = a.tabStrip == b.tabStrip && a.colHeadersShow == b.colHeadersShow &&
                      a.rowHeadersShow == b.rowHeadersShow && a.gridShowHoriz == b.gridShowHoriz &&
                      a.gridShowVert == b.gridShowVert &&
                      a.allowCellOverflow == b.allowCellOverflow &&
                      a.editModeReplace == b.editModeReplace;
    return same ? QString() : QStringLiteral("flags");
}
