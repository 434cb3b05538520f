// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/sheet_data.h"

#include <QHashFunctions>

namespace {

const CellFormat plainFormat;

template <class T>
void copyIf(bool wanted, T& to, const T& from) {
    if (wanted) to = from;
}

size_t hashOf(const FormatPatch& patch) {
    const CellFormat& v = patch.values;
    return qHashMulti(0, patch.bits, int(v.kind), v.backColor, v.foreColor, v.fontName, v.fontSize,
                      v.fontBold, int(v.hAlign), v.comboList, v.comboMaxDrop);
}

}  // namespace

void copyProperties(CellFormat& to, const CellFormat& from, uint32_t bits) {
    copyIf(bits & KindBit, to.kind, from.kind);
    copyIf(bits & BackColorBit, to.backColor, from.backColor);
    copyIf(bits & ForeColorBit, to.foreColor, from.foreColor);
    copyIf(bits & ForeColorBit, to.hasForeColor, from.hasForeColor);
    copyIf(bits & FontNameBit, to.fontName, from.fontName);
    copyIf(bits & FontSizeBit, to.fontSize, from.fontSize);
    copyIf(bits & FontBoldBit, to.fontBold, from.fontBold);
    copyIf(bits & HAlignBit, to.hAlign, from.hAlign);
    copyIf(bits & DateCenturyBit, to.dateCentury, from.dateCentury);
    copyIf(bits & DateFormatBit, to.dateFormat, from.dateFormat);
    copyIf(bits & SpinBit, to.spin, from.spin);
    copyIf(bits & ComboListBit, to.comboList, from.comboList);
    copyIf(bits & ComboMaxDropBit, to.comboMaxDrop, from.comboMaxDrop);
    copyIf(bits & LeftBit, to.left, from.left);
    copyIf(bits & RightBit, to.right, from.right);
    copyIf(bits & TopBit, to.top, from.top);
    copyIf(bits & BottomBit, to.bottom, from.bottom);
}

uint32_t differingProperties(const CellFormat& a, const CellFormat& b) {
    uint32_t bits = 0;
    const auto note = [&bits](bool differs, FormatBit bit) {
        if (differs) bits |= bit;
    };
    note(a.kind != b.kind, KindBit);
    note(a.backColor != b.backColor, BackColorBit);
    note(a.foreColor != b.foreColor || a.hasForeColor != b.hasForeColor, ForeColorBit);
    note(a.fontName != b.fontName, FontNameBit);
    note(a.fontSize != b.fontSize, FontSizeBit);
    note(a.fontBold != b.fontBold, FontBoldBit);
    note(a.hAlign != b.hAlign, HAlignBit);
    note(a.dateCentury != b.dateCentury, DateCenturyBit);
    note(a.dateFormat != b.dateFormat, DateFormatBit);
    note(a.spin != b.spin, SpinBit);
    note(a.comboList != b.comboList, ComboListBit);
    note(a.comboMaxDrop != b.comboMaxDrop, ComboMaxDropBit);
    note(a.left != b.left, LeftBit);
    note(a.right != b.right, RightBit);
    note(a.top != b.top, TopBit);
    note(a.bottom != b.bottom, BottomBit);
    return bits;
}

void FormatPatch::set(const CellFormat& from, uint32_t which) {
    copyProperties(values, from, which);
    bits |= which;
}

void FormatPatch::drop(uint32_t which) {
    copyProperties(values, plainFormat, which);
    bits &= ~which;
}

int SheetData::intern(const FormatPatch& patch) {
    if (patch.bits == 0) return -1;
    if ((patch.bits & KindBit) && patch.values.kind == CellKind::Date) m_anyDate = true;
    const size_t hash = hashOf(patch);
    const auto [first, last] = m_formatOfHash.equal_range(hash);
    for (auto it = first; it != last; ++it)
        if (formats[size_t(it->second)] == patch) return it->second;
    formats.push_back(patch);
    const int number = int(formats.size()) - 1;
    m_formatOfHash.emplace(hash, number);
    return number;
}

int SheetData::internPicture(const QByteArray& imageFile) {
    if (imageFile.isEmpty()) return -1;
    const size_t hash = qHash(imageFile);
    const auto [first, last] = m_pictureOfHash.equal_range(hash);
    for (auto it = first; it != last; ++it)
        if (pictures[size_t(it->second)] == imageFile) return it->second;
    pictures.push_back(imageFile);
    const int number = int(pictures.size()) - 1;
    m_pictureOfHash.emplace(hash, number);
    return number;
}

const CellFormat* SheetData::setting(int col, int row, uint32_t bit) const {
    if (col > maxCols || row > maxRows) return nullptr;
    const auto in = [&](int number) -> const CellFormat* {
        if (number < 0 || !(formats[size_t(number)].bits & bit)) return nullptr;
        return &formats[size_t(number)].values;
    };
    if (const GridCell* own = cell(col, row))
        if (const CellFormat* found = in(own->format)) return found;
    if (row == 0) return in(rowSection(0).format);
    if (col == 0) return in(colSection(0).format);
    if (const CellFormat* found = in(rowSection(row).format)) return found;
    if (const CellFormat* found = in(colSection(col).format)) return found;
    return in(format);
}

CellKind SheetData::kindOf(int col, int row) const {
    const CellFormat* found = setting(col, row, KindBit);
    return found ? found->kind : CellKind::Edit;
}

CellFormat SheetData::inherited(int col, int row) const {
    CellFormat result;
    if (col > maxCols || row > maxRows) return result;
    const auto add = [&](int number) {
        if (number >= 0)
            copyProperties(result, formats[size_t(number)].values, formats[size_t(number)].bits);
    };
    if (row == 0) {
        add(rowSection(0).format);
    } else if (col == 0) {
        add(colSection(0).format);
    } else {
        add(format);
        add(colSection(col).format);
        add(rowSection(row).format);
    }
    return result;
}

CellFormat SheetData::resolved(int col, int row) const {
    CellFormat result = inherited(col, row);
    const GridCell* own = cell(col, row);
    if (own && own->format >= 0) {
        const FormatPatch& patch = formats[size_t(own->format)];
        copyProperties(result, patch.values, patch.bits);
    }
    return result;
}

void SheetData::changeFormat(int& number, const FormatPatch& change, std::map<int, int>& known) {
    const auto [entry, isNew] = known.emplace(number, -1);
    if (isNew) {
        FormatPatch patch = number < 0 ? FormatPatch() : formats[size_t(number)];
        patch.set(change.values, change.bits);
        entry->second = intern(patch);
    }
    number = entry->second;
}

void SheetData::dropFromFormat(int& number, uint32_t bits, std::map<int, int>& known) {
    if (number < 0) return;
    const auto [entry, isNew] = known.emplace(number, -1);
    if (isNew) {
        FormatPatch patch = formats[size_t(number)];
        patch.drop(bits);
        entry->second = intern(patch);
    }
    number = entry->second;
}

void SheetData::setInCells(const GridArea& area, const FormatPatch& change) {
    std::map<int, int> known;
    for (int row = area.row; row <= area.row2; ++row)
        for (int col = area.col; col <= area.col2; ++col)
            changeFormat(cellForWriting(col, row).format, change, known);
}

void SheetData::setDefault(int col, int row, const FormatPatch& change) {
    std::map<int, int> changed;
    std::map<int, int> dropped;
    const auto drop = [&](int& number) { dropFromFormat(number, change.bits, dropped); };
    visitStoredCells(area(col, row, col, row), [&](GridCell& cell) { drop(cell.format); });
    if (col >= 0) {
        changeFormat(colSectionForWriting(col).format, change, changed);
        if (col == 0) return;
        // The default of a row has priority over that of a column, but the last write has to show.
        for (const auto& [number, section] : GridSections(rowSections)) {
            if (number == 0 || section.format < 0) continue;
            FormatPatch crossing;
            crossing.set(change.values, change.bits & formats[size_t(section.format)].bits);
            if (crossing.bits) setInCells({col, number, col, number}, crossing);
        }
    } else if (row >= 0) {
        changeFormat(rowSectionForWriting(row).format, change, changed);
    } else {
        changeFormat(format, change, changed);
        for (auto& [number, section] : rowSections)
            if (number > 0) drop(section.format);
        for (auto& [number, section] : colSections)
            if (number > 0) drop(section.format);
    }
}

void SheetData::dropFormats(const GridArea& area) {
    visitStoredCells(area, [](GridCell& cell) { cell.format = -1; });
    const bool allRows = area.row <= 1 && area.row2 == maxRows;
    const bool allCols = area.col <= 1 && area.col2 == maxCols;
    if (allRows && allCols) format = -1;
    for (auto& [number, section] : colSections)
        if (allRows && number >= area.col && number <= area.col2) section.format = -1;
    for (auto& [number, section] : rowSections)
        if (allCols && number >= area.row && number <= area.row2) section.format = -1;
}

namespace {

// Keeps the marked entries of a table and gives each its new index.
template <class T>
void keepMarked(std::vector<T>& table, std::vector<int>& numbers) {
    int kept = 0;
    for (size_t i = 0; i < table.size(); ++i) {
        if (numbers[i] < 0) continue;
        if (size_t(kept) != i) table[size_t(kept)] = std::move(table[i]);
        numbers[i] = kept++;
    }
    table.resize(size_t(kept));
}

}  // namespace

template <class Visit>
void SheetData::visitFormatNumbers(Visit visit) {
    visit(format);
    for (auto& [number, section] : rowSections) visit(section.format);
    for (auto& [number, section] : colSections) visit(section.format);
    for (GridRow& row : rows)
        for (GridCell& cell : row) visit(cell.format);
}

void SheetData::collectGarbage() {
    if (formats.size() >= m_formatsWorthCollecting) {
        std::vector<int> numbers(formats.size(), -1);
        visitFormatNumbers([&](int& number) {
            if (number >= 0) numbers[size_t(number)] = 0;
        });
        keepMarked(formats, numbers);
        visitFormatNumbers([&](int& number) {
            if (number >= 0) number = numbers[size_t(number)];
        });
        m_formatOfHash.clear();
        for (size_t i = 0; i < formats.size(); ++i)
            m_formatOfHash.emplace(hashOf(formats[i]), int(i));
        m_formatsWorthCollecting = std::max<size_t>(4096, 2 * formats.size());
    }
    if (pictures.size() >= m_picturesWorthCollecting) {
        std::vector<int> numbers(pictures.size(), -1);
        for (const GridRow& row : rows)
            for (const GridCell& cell : row)
                if (cell.picture >= 0) numbers[size_t(cell.picture)] = 0;
        keepMarked(pictures, numbers);
        for (GridRow& row : rows)
            for (GridCell& cell : row)
                if (cell.picture >= 0) cell.picture = numbers[size_t(cell.picture)];
        m_pictureOfHash.clear();
        for (size_t i = 0; i < pictures.size(); ++i)
            m_pictureOfHash.emplace(qHash(pictures[i]), int(i));
        m_picturesWorthCollecting = std::max<size_t>(256, 2 * pictures.size());
    }
}

void SheetData::copyRow(int row, int col, const SheetData& from, int fromRow, int fromCol,
                        int count) {
    // Neighbours mostly have the same format: it is worked out once for a run of cells.
    struct Look {
        int own = -2;
        int fromDefault = -2;
        int toDefault = -2;
        bool operator==(const Look&) const = default;
    } last;
    int number = -1;
    for (int i = 0; i < count; ++i) {
        const GridCell* source = from.cell(fromCol + i, fromRow);
        const Look look{source ? source->format : -1, from.colSection(fromCol + i).format,
                        colSection(col + i).format};
        if (look != last) {
            const CellFormat wanted = from.resolved(fromCol + i, fromRow);
            FormatPatch patch;
            patch.set(wanted, differingProperties(wanted, inherited(col + i, row)));
            number = intern(patch);
            last = look;
        }
        if (!source && number < 0 && !cell(col + i, row)) continue;
        const bool hasPicture = source && source->picture >= 0;
        const int picture = hasPicture ? internPicture(from.pictures[size_t(source->picture)]) : -1;
        cellForWriting(col + i, row) = {source ? source->text : QString(), number, picture};
    }
}

void SheetData::copySpans(const SheetData& from, const GridArea& area, int col, int row) {
    for (const CellSpan& span : from.spans) {
        const int firstCol = std::max(span.col, area.col);
        const int firstRow = std::max(span.row, area.row);
        const int endCol = std::min(span.col + span.cols, area.col2 + 1);
        const int endRow = std::min(span.row + span.rows, area.row2 + 1);
        if (firstCol >= endCol || firstRow >= endRow) continue;
        addSpan({firstCol - area.col + col, firstRow - area.row + row, endCol - firstCol,
                 endRow - firstRow});
    }
}
