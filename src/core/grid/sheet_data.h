// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The data of a grid. For SheetGrid and the file format alone.
#pragma once

#include "core/grid/grid_area.h"
#include "core/grid/sheet_grid.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>

// One bit for each property that a cell or the default of a row, column or sheet can set.
enum FormatBit : uint32_t {
    KindBit = 1U << 0,
    BackColorBit = 1U << 1,
    ForeColorBit = 1U << 2,  // foreColor and hasForeColor
    FontNameBit = 1U << 3,
    FontSizeBit = 1U << 4,
    FontBoldBit = 1U << 5,
    HAlignBit = 1U << 6,
    DateCenturyBit = 1U << 7,
    DateFormatBit = 1U << 8,
    SpinBit = 1U << 9,
    ComboListBit = 1U << 10,
    ComboMaxDropBit = 1U << 11,
    LeftBit = 1U << 12,
    RightBit = 1U << 13,
    TopBit = 1U << 14,
    BottomBit = 1U << 15,
    AllFormatBits = (1U << 16) - 1,
};

// Copies the properties whose bits are set.
void copyProperties(CellFormat& to, const CellFormat& from, uint32_t bits);

// The properties in which two formats differ.
uint32_t differingProperties(const CellFormat& a, const CellFormat& b);

// Some properties of a format: those whose bits are set. The others have their plain values.
struct FormatPatch {
    uint32_t bits = 0;
    CellFormat values;

    void set(const CellFormat& from, uint32_t which);
    void drop(uint32_t which);
    bool operator==(const FormatPatch&) const = default;
};

struct GridCell {
    QString text;
    int format = -1;   // index in SheetData::formats; -1 for none
    int picture = -1;  // index in SheetData::pictures; -1 for none
};

// The cells of a row up to the last one that was written. Few rows have a head of their own, so its
// cell takes no room until it is written.
class GridRow {
public:
    GridRow() = default;
    GridRow(const GridRow& other);
    GridRow(GridRow&& other) noexcept { swap(other); }
    GridRow& operator=(GridRow other) noexcept {
        swap(other);
        return *this;
    }
    ~GridRow() = default;

    size_t size() const { return m_size; }  // with the head
    const GridCell& operator[](size_t col) const {
        return col < m_first ? plainCell : m_cells[col - m_first];
    }

    // A cell to write. If the row ends before it, it gets `size` cells.
    GridCell& forWriting(size_t col, size_t size) {
        if (col < m_first || col >= m_size) makeRoom(col, size);
        return m_cells[col - m_first];
    }

    // Removes the cells from a column on.
    void cutAt(size_t col) { keep(m_first, std::min<size_t>(col, m_size)); }

    // The cells that take room, and the column of the first of them.
    size_t first() const { return m_first; }
    GridCell* begin() { return m_cells.get(); }
    GridCell* end() { return begin() + (m_size - m_first); }
    const GridCell* begin() const { return m_cells.get(); }
    const GridCell* end() const { return begin() + (m_size - m_first); }

private:
    static const GridCell plainCell;

    void makeRoom(size_t col, size_t size);
    void keep(size_t first, size_t size);
    void swap(GridRow& other) noexcept;

    std::unique_ptr<GridCell[]> m_cells;
    uint32_t m_first = 0;
    uint32_t m_size = 0;
};

// The properties of a whole row or column.
struct GridSection {
    double size = 0;  // height in points, width in units
    int format = -1;
    bool hidden = false;
    bool pageBreak = false;
    bool operator==(const GridSection&) const = default;
};

using GridSections = std::map<int, GridSection>;  // those that differ from the plain one

constexpr int MaxGridRows = 10'000'000;
constexpr int MaxGridCols = 16'384;
constexpr int MaxSheets = 4096;
constexpr double MaxSectionSize = 1000;
constexpr int MaxDateFormat = 99;
constexpr int MaxComboDrop = 1000;
constexpr double PlainColWidth = 8;
constexpr double PlainRowHeight = 20;

// Whether a value is one of the enumerators; a caller may have cast any number.
constexpr bool isKnown(CellKind kind) {
    return kind == CellKind::Date || kind == CellKind::Edit || kind == CellKind::Button ||
           kind == CellKind::Combo || kind == CellKind::Picture;
}
constexpr bool isKnown(HAlign align) { return align >= HAlign::Left && align <= HAlign::Centre; }
constexpr bool isKnown(TabStrip policy) {
    return policy >= TabStrip::AsNeeded && policy <= TabStrip::Never;
}
constexpr bool isKnown(SortOrder order) {
    return order >= SortOrder::None && order <= SortOrder::Descending;
}

// The head row and the head column as long as nothing was set for them.
inline const GridSection plainColHead{PlainRowHeight};
inline const GridSection plainRowHead{PlainColWidth};

struct SheetData {
    int maxRows = 500;
    int maxCols = 500;
    std::vector<GridRow> rows;  // up to the last row that was written; 0 is the head row
    GridSections rowSections;
    GridSections colSections;
    GridSection plainRow{PlainRowHeight};  // of the rows that rowSections does not hold
    GridSection plainCol{PlainColWidth};
    int format = -1;  // default of the sheet
    std::vector<CellSpan> spans;
    std::vector<FormatPatch> formats;
    std::vector<QByteArray> pictures;

    // Whether an address is a cell or a head of the sheet.
    bool contains(int col, int row) const {
        return col >= 0 && row >= 0 && col <= maxCols && row <= maxRows;
    }
    const GridCell* cell(int col, int row) const;  // null if nothing was written there
    GridCell& cellForWriting(int col, int row);    // the address has to be inside the sheet
    // How many cells a row holds after a write to a column: some more than needed, because rows are
    // usually filled from left to right.
    int rowCapacity(int col) const { return std::min(maxCols + 1, (col / 8 + 1) * 8); }

    // Resolves an address in which a start of -1 means all and an end of -1 the last.
    GridArea area(int col, int row, int col2, int row2) const;

    int lastDataRow() const;

    // --- Formats (sheet_data_formats.cpp) ---

    // The index of a format or picture, which is added to the table if it is new; -1 for an empty
    // one.
    int intern(const FormatPatch& patch);
    int internPicture(const QByteArray& imageFile);

    // The format that decides one property of a cell: its own or the default of its row, column or
    // sheet; null if none sets it. Heads have the default of the head row or head column only.
    const CellFormat* setting(int col, int row, uint32_t bit) const;
    // All properties that a cell shows.
    CellFormat resolved(int col, int row) const;
    // All properties that a cell without its own format would show.
    CellFormat inherited(int col, int row) const;
    bool isDateCell(int col, int row) const {
        return m_anyDate && kindOf(col, row) == CellKind::Date;
    }
    CellKind kindOf(int col, int row) const;

    // Sets properties in every cell of an area.
    void setInCells(const GridArea& area, const FormatPatch& change);
    // Sets the default of a column (row -1), a row (col -1) or the sheet (both -1), and removes
    // these properties from everything it covers.
    void setDefault(int col, int row, const FormatPatch& change);
    // Removes the formats of the cells of an area and the defaults of the rows and columns that lie
    // wholly in it.
    void dropFormats(const GridArea& area);

    // Copies cells of a row of another sheet so that they show the same properties here.
    void copyRow(int row, int col, const SheetData& from, int fromRow, int fromCol, int count);
    // Adds the spans of an area, cut to it and moved so that its first cell is (col, row).
    void copySpans(const SheetData& from, const GridArea& area, int col, int row);

    // Frees formats and pictures that are no longer used, once there are many.
    void collectGarbage();

    // --- Rows and columns (sheet_data_rows.cpp) ---

    void resizeRows(int count);
    void resizeCols(int count);
    void insertRows(int row, int count);
    void deleteRows(int row, int count);
    // Puts the rows from `first` on into another order: row order[i] moves to first + i.
    void reorderRows(int first, const std::vector<int>& order);
    // The last row that was written or has properties.
    int lastKeptRow() const;

    const GridSection& rowSection(int row) const;
    const GridSection& colSection(int col) const;
    GridSection& rowSectionForWriting(int row);
    GridSection& colSectionForWriting(int col);

    // The span that covers a cell; null if there is none.
    const CellSpan* spanAt(int col, int row) const;
    // Cuts a span to the sheet; cols is 0 if less than two cells are left.
    CellSpan cutSpan(CellSpan span) const;
    // Adds a span and removes those that it overlaps.
    void addSpan(CellSpan span);
    void dropSpansIn(const GridArea& area);
    void cutSpans();

    // Calls visit(cell) for the cells of an area that were written.
    template <class Visit>
    void visitStoredCells(const GridArea& area, Visit visit) {
        const int lastRow = std::min(area.row2, int(rows.size()) - 1);
        for (int row = area.row; row <= lastRow; ++row) {
            GridRow& cells = rows[size_t(row)];
            const int first = int(cells.first());
            const int lastCol = std::min(area.col2, int(cells.size()) - 1);
            for (int col = std::max(area.col, first); col <= lastCol; ++col)
                visit(cells.begin()[col - first]);
        }
    }

private:
    template <class Visit>
    void visitFormatNumbers(Visit visit);
    // Change the format with this index; `known` keeps what each index became.
    void changeFormat(int& number, const FormatPatch& change, std::map<int, int>& known);
    void dropFromFormat(int& number, uint32_t bits, std::map<int, int>& known);

    std::unordered_multimap<size_t, int> m_formatOfHash;
    std::unordered_multimap<size_t, int> m_pictureOfHash;
    size_t m_formatsWorthCollecting = 4096;
    size_t m_picturesWorthCollecting = 256;
    bool m_anyDate = false;
};

struct GridSortKey {
    int col = 0;
    SortOrder order = SortOrder::None;
    bool operator==(const GridSortKey&) const = default;
};

// Everything that a file holds.
struct GridData {
    std::vector<SheetData> sheets = std::vector<SheetData>(1);
    int activeSheet = 1;
    TabStrip tabStrip = TabStrip::AsNeeded;
    bool colHeadersShow = true;
    bool rowHeadersShow = true;
    bool gridShowHoriz = true;
    bool gridShowVert = true;
    bool allowCellOverflow = false;
    bool editModeReplace = false;
    std::array<GridSortKey, 3> sortKeys;
};

struct SheetGrid::Private {
    GridData data;
    GridDirt dirt;
    int sheet = 1;

    SheetData& current() { return data.sheets[size_t(sheet - 1)]; }
    const SheetData& current() const { return data.sheets[size_t(sheet - 1)]; }
    // A sheet by its number; null if there is none.
    const SheetData* at(int number) const;
};
