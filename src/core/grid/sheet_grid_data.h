// What a grid holds. Only the grid itself and its file form look in here.
#pragma once

#include "core/grid/grid_area.h"
#include "core/grid/sheet_grid.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>

// One bit for each property that a cell, or the default of a row, column or sheet, can set.
enum FormatBit : uint32_t {
    KindBit = 1U << 0,
    BackColorBit = 1U << 1,
    ForeColorBit = 1U << 2,  // with hasForeColor
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

// Copies the named properties.
void copyProperties(CellFormat& to, const CellFormat& from, uint32_t bits);

// The properties in which two formats differ.
uint32_t differingProperties(const CellFormat& a, const CellFormat& b);

// Some properties of a format: those of `bits`. The others have their plain values.
struct FormatPatch {
    uint32_t bits = 0;
    CellFormat values;

    void set(const CellFormat& from, uint32_t which);
    void drop(uint32_t which);
    bool operator==(const FormatPatch&) const = default;
};

struct GridCell {
    QString text;
    int format = -1;   // in SheetData::formats; -1 for none of its own
    int picture = -1;  // in SheetData::pictures
};

using GridRow = std::vector<GridCell>;  // as long as its last cell that was written

// A row or a column as a whole.
struct GridLine {
    double size = 0;
    int format = -1;
    bool hidden = false;
    bool pageBreak = false;
    bool operator==(const GridLine&) const = default;
};

using GridLines = std::map<int, GridLine>;  // those that differ from the sheet's default line

constexpr int MaxGridRows = 10'000'000;
constexpr int MaxGridCols = 16'384;
constexpr int MaxSheetDatas = 4096;
constexpr double MaxLineSize = 1000;
constexpr int MaxDateFormat = 99;
constexpr int MaxComboDrop = 1000;
constexpr double PlainColWidth = 8;
constexpr double PlainRowHeight = 20;

// Whether a number that came in as one of these is one of them.
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

// The head row and the head column, as long as nothing is set for them.
inline const GridLine plainColHead{PlainRowHeight};
inline const GridLine plainRowHead{PlainColWidth};

struct SheetData {
    int maxRows = 500;
    int maxCols = 500;
    std::vector<GridRow> rows;  // as many as have been written; 0 is the head row
    GridLines rowLines;
    GridLines colLines;
    GridLine plainRow{PlainRowHeight};  // of the data rows that have no line of their own
    GridLine plainCol{PlainColWidth};
    int format = -1;  // the sheet's default
    std::vector<CellSpan> spans;
    std::vector<FormatPatch> formats;
    std::vector<QByteArray> pictures;

    // Whether an address is a cell or a head of the sheet.
    bool contains(int col, int row) const {
        return col >= 0 && row >= 0 && col <= maxCols && row <= maxRows;
    }
    const GridCell* cell(int col, int row) const;  // null where nothing was written
    GridCell& cellForWriting(int col, int row);    // the address has to be inside
    // How many cells a row has after a write to a column: rows are filled from left to right, and
    // the next few cells are made along with the first.
    int rowCapacity(int col) const { return std::min(maxCols + 1, (col / 8 + 1) * 8); }

    // An address with -1 for "all" or "to the last", as data cells of the sheet; 0 is a head.
    GridArea area(int col, int row, int col2, int row2) const;

    int lastDataRow() const;

    // --- Formats (sheet_grid_formats.cpp) ---

    // The number of a format or picture, taken into the table if it is new; -1 for an empty one.
    int intern(const FormatPatch& patch);
    int internPicture(const QByteArray& imageFile);

    // The nearest setting of one property for a cell: its own, its row's, its column's, its
    // sheet's; null where it is plain. Heads take their head row's or head column's alone.
    const CellFormat* setting(int col, int row, uint32_t bit) const;
    CellFormat resolved(int col, int row) const;
    // What a cell without a format of its own would show.
    CellFormat inherited(int col, int row) const;
    bool isDateCell(int col, int row) const {
        return m_anyDate && kindOf(col, row) == CellKind::Date;
    }
    CellKind kindOf(int col, int row) const;

    // Sets properties of every cell of an area.
    void setInCells(const GridArea& area, const FormatPatch& change);
    // Sets the default of a column, a row (one of them -1) or the sheet (both -1), and drops the
    // properties under it.
    void setDefault(int col, int row, const FormatPatch& change);
    // Drops the formats that an area's cells have of their own, and the defaults of rows and
    // columns that lie in it as a whole.
    void dropFormats(const GridArea& area);

    // Copies cells of a row with the looks they have there, in whatever way they came by them.
    void copyRow(int row, int col, const SheetData& from, int fromRow, int fromCol, int count);
    // Adds the spans of an area, moved so that its first cell is (col, row), cut to the area.
    void copySpans(const SheetData& from, const GridArea& area, int col, int row);

    // Frees formats and pictures that no cell has any more, once they are many.
    void collectGarbage();

    // --- Rows and columns (sheet_grid_lines.cpp) ---

    void resizeRows(int count);
    void resizeCols(int count);
    void insertRows(int row, int count);
    void deleteRows(int row, int count);
    // Puts the rows from `first` on in another order: order[i] is the row that goes to first + i.
    void reorderRows(int first, const std::vector<int>& order);
    // The last row of which anything is kept.
    int lastKeptRow() const;

    const GridLine& rowLine(int row) const;
    const GridLine& colLine(int col) const;
    GridLine& rowLineForWriting(int row);
    GridLine& colLineForWriting(int col);

    // The span that covers a cell; null where none does.
    const CellSpan* spanAt(int col, int row) const;
    // Cuts a span to the grid; cols 0 where nothing of it is left to join.
    CellSpan cutSpan(CellSpan span) const;
    // Adds a span, which swallows those that it meets.
    void addSpan(CellSpan span);
    void dropSpansIn(const GridArea& area);
    void cutSpans();

    // Calls visit(cell) for the cells of an area that have been written.
    template <class Visit>
    void visitStoredCells(const GridArea& area, Visit visit) {
        const int lastRow = std::min(area.row2, int(rows.size()) - 1);
        for (int row = area.row; row <= lastRow; ++row) {
            GridRow& cells = rows[size_t(row)];
            const int lastCol = std::min(area.col2, int(cells.size()) - 1);
            for (int col = area.col; col <= lastCol; ++col) visit(cells[size_t(col)]);
        }
    }

private:
    template <class Visit>
    void visitFormatNumbers(Visit visit);
    // Changes a format number; `known` remembers what each number became.
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

// Everything that a saved file holds.
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
    // Null where there is no such sheet.
    const SheetData* at(int number) const;
};
