// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A spreadsheet grid without a screen. Every list, form and document of the program is one.
#pragma once

#include "core/grid/print_settings.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

enum class CellKind { Date = 0, Edit = 1, Button = 7, Combo = 8, Picture = 9 };
enum class HAlign { Left = 0, Right = 1, Centre = 2 };
enum class SortOrder { None = 0, Ascending = 1, Descending = 2 };
enum class SortBy { Rows = 0 };
enum class BorderType { Left = 1, Right = 2, Top = 4, Bottom = 8 };
enum class BorderStyle { None = 0, Solid = 1 };
enum class TabStrip { AsNeeded = 0, Always = 1, Never = 2 };

// A colour as a whole number: red + 256 x green + 65536 x blue, each part 0 to 255.
constexpr int RGB(int red, int green, int blue) { return red + 256 * green + 65536 * blue; }
constexpr int White = RGB(255, 255, 255);
constexpr int Black = 0;

// One border of a cell.
struct CellBorder {
    BorderStyle style = BorderStyle::None;
    int colour = Black;
    bool operator==(const CellBorder&) const = default;
};

// All format properties that a cell shows: its own, or the defaults of its row, column or sheet.
struct CellFormat {
    CellKind kind = CellKind::Edit;
    int backColor = White;
    int foreColor = Black;
    bool hasForeColor = false;  // false if the text has the colour of the theme
    QString fontName;           // empty: the desktop's font
    double fontSize = 0;        // points; 0: the desktop's size
    bool fontBold = false;
    HAlign hAlign = HAlign::Left;
    bool dateCentury = false;  // the year has four digits
    int dateFormat = 2;        // saved, but not used: dates are shown as month, day, year
    bool spin = false;         // Up and Down step the date
    QString comboList;         // items, separated by tabs
    int comboMaxDrop = 8;      // items that an open combo cell shows at once
    CellBorder left, right, top, bottom;
    bool operator==(const CellFormat&) const = default;
};

// A rectangle of joined cells. Its anchor, the top left cell, is the one that shows.
struct CellSpan {
    int col = 0;
    int row = 0;
    int cols = 0;
    int rows = 0;
    bool operator==(const CellSpan&) const = default;
};

struct FormatPatch;
struct GridArea;
struct SheetData;

// A copy of a block of cells: texts, formats, pictures and spans, without widths and heights.
class CellBlock {
public:
    CellBlock();
    ~CellBlock();
    bool isEmpty() const { return !m_sheet; }

private:
    friend class SheetGrid;
    std::unique_ptr<SheetData> m_sheet;
};

// The changes since a view last showed the grid.
struct GridDirt {
    bool any = false;     // true even if only the active cell is another
    bool layout = false;  // sizes, spans, hidden flags or sheets have changed: redo everything
    int firstRow = 0;     // the rows of ActiveSheet whose cells have changed; 0 is the head row
    int lastRow = -1;
};

// Rows and columns count from 1; row 0 holds the column heads and column 0 the row heads. As a row
// or column -1 means all, as the end of a block it means the last one. Cell calls address the sheet
// `Sheet`. Reading outside the grid yields no text and the plain format; writing there has no
// effect. No member raises an error. A new grid has one sheet of 500 x 500 plain cells.
// Deliberate: behaviour 10.
class SheetGrid : public PrintSettings {
public:
    SheetGrid();
    virtual ~SheetGrid();
    SheetGrid(const SheetGrid&) = delete;
    SheetGrid& operator=(const SheetGrid&) = delete;

    // --- Sheets and size -----------------------------------------------------------------------

    // Size of `Sheet`: 0 to 10,000,000 rows and 0 to 16,384 columns; other values are clamped.
    // Raising adds empty cells, lowering removes cells with their spans and formats.
    int MaxRows() const;
    void MaxRows(int count);
    int MaxCols() const;
    void MaxCols(int count);

    // The last row with a text or a picture; 0 if there is none.
    int DataRowCnt() const;

    // Number of sheets, 1 to 4096. Added sheets have the size of sheet 1 and plain formats.
    int SheetCount() const;
    void SheetCount(int count);

    // The sheet that cell calls address, from 1. Setting it does not change the sheet on view;
    // numbers outside 1 to SheetCount are ignored.
    int Sheet() const;
    void Sheet(int number);

    // The sheet on view, from 1. Setting it sets `Sheet` as well. Deliberate: behaviour 14.
    int ActiveSheet() const;
    void ActiveSheet(int number);

    // Whether a view shows tabs for the sheets.
    TabStrip TabStripPolicy() const;
    void TabStripPolicy(TabStrip policy);

    // Removes `count` sheets from `first` on; one sheet always stays.
    void DeleteSheets(int first, int count);

    // Inserts `count` plain rows before `row`. Spans, heights, hidden flags and page breaks move
    // with their rows. MaxRows does not change: rows moved past the end are lost.
    // Deliberate: behaviour 13.
    void InsertRows(int row, int count);

    // Removes `count` rows from `row` on; the rows below move up. MaxRows does not change.
    void DeleteRows(int row, int count);

    // Clears the texts and pictures of a block. With dataOnly false it also removes the spans, the
    // formats of the cells, and the defaults of the rows and columns that lie wholly in the block.
    // A start of -1 is the first row or column after the heads; 0 includes the heads.
    void ClearRange(int col, int row, int col2, int row2, bool dataOnly);

    // --- Cells ---------------------------------------------------------------------------------

    // Gets a cell's text. Returns false and an empty `value` if it has none.
    bool GetText(int col, int row, QString& value) const;
    QString GetText(int col, int row) const;

    // Sets the text of a cell or head; -1 writes all cells of a column, a row or the sheet except
    // the heads. A date cell takes a date from FirstCellDate to LastCellDate, which it shows as
    // "mm/dd/yy", and the empty text; any other text leaves it unchanged.
    void SetText(int col, int row, const QString& value);

    // Raises MaxRows by one and writes these texts to the new row from column 1 on, like SetText.
    template <size_t Count>
    void AddRow(QString (&&texts)[Count]) {
        appendRow(texts, int(Count));
    }

    // Raises MaxRows by one.
    void AddRow() { appendRow(nullptr, 0); }

    // The current cell, which the properties below read and write. With BlockMode true they write
    // the block from (Col, Row) to (Col2, Row2). This state is kept until it is set again.
    // Deliberate: behaviour 12.
    int Col() const { return m_col; }
    void Col(int col) { m_col = col; }
    int Row() const { return m_row; }
    void Row(int row) { m_row = row; }
    int Col2() const { return m_col2; }
    void Col2(int col) { m_col2 = col; }
    int Row2() const { return m_row2; }
    void Row2(int row) { m_row2 = row; }
    bool BlockMode() const { return m_blockMode; }
    void BlockMode(bool on) { m_blockMode = on; }

    // The text of the current cell or block, like GetText and SetText.
    QString Text() const;
    void Text(const QString& text);

    // The active cell of the sheet on view, which the program takes for the selected row; (0, 0) if
    // there is none, also after its cell was removed. Addresses outside the sheet are ignored.
    int ActiveCol() const { return m_activeCol; }
    int ActiveRow() const { return m_activeRow; }
    void SetActiveCell(int col, int row);

    // Format properties of the current cell: its own, or the default of its row, its column or its
    // sheet, in this order. Writing with a row of -1 sets the default of the column, with a column
    // of -1 that of the row, with both that of the sheet, and removes the property from everything
    // it covers, so that the last write shows. Heads follow the head row (-1, 0) or the head column
    // (0, -1) only. Unknown enum values are ignored; numbers are clamped: font sizes to 0 to 1000
    // points, TypeComboBoxMaxDrop to 0 to 1000 items. Colours are masked to 24 bits.
    int BackColor() const;
    void BackColor(int colour);
    int ForeColor() const;
    void ForeColor(int colour);
    QString FontName() const;
    void FontName(const QString& name);
    double FontSize() const;
    void FontSize(double points);
    bool FontBold() const;
    void FontBold(bool bold);
    HAlign TypeHAlign() const;
    void TypeHAlign(HAlign align);
    CellKind CellType() const;
    void CellType(CellKind kind);  // does not change the text
    bool TypeDateCentury() const;  // dates written from now on have a year of four digits
    void TypeDateCentury(bool on);
    int TypeDateFormat() const;  // 0 to 99; saved with the grid, but changes nothing that is shown
    void TypeDateFormat(int format);
    bool TypeSpin() const;  // Up, Down and the mouse wheel step a date while it is edited
    void TypeSpin(bool on);
    QString TypeComboBoxList() const;  // items, separated by tabs
    void TypeComboBoxList(const QString& tabbedItems);
    int TypeComboBoxMaxDrop() const;
    void TypeComboBoxMaxDrop(int items);

    // Index of the item that equals the current cell's text, from 0; -1 if there is none. Setting
    // it writes the item's text; an index outside the list clears the text.
    int TypeComboBoxCurSel() const;
    void TypeComboBoxCurSel(int index);

    // Picture of the current cell as the bytes of an image file; empty for none.
    QByteArray Picture() const;
    void Picture(const QByteArray& imageFile);

    // Joins cells into a span and removes the spans that it overlaps. Sizes below 1 count as 1, and
    // what lies outside the grid is cut off; one cell alone makes no span. Covered cells keep their
    // texts, but do not show them. Deliberate: behaviour 18.
    void AddCellSpan(int col, int row, int numCols, int numRows);

    // Gets the span that covers a cell. Returns false and the cell itself as 1 x 1 if there is
    // none.
    bool GetCellSpan(int col, int row, int& anchorCol, int& anchorRow, int& numCols,
                     int& numRows) const;

    // Removes the span with this anchor, if there is one.
    void RemoveCellSpan(int anchorCol, int anchorRow);

    // Sets borders of every cell of a block; the types can be added. BorderStyle::None removes
    // them.
    void SetCellBorder(int col, int row, int col2, int row2, BorderType type, int colour,
                       BorderStyle style);

    // The first row from rowStart to rowEnd (-1: the last row with data) whose text in the column
    // equals `text`, ignoring case; -1 if there is none. The flags have no effect.
    int SearchCol(int col, int rowStart, int rowEnd, const QString& text, int flags = 0) const;

    // --- Columns and rows ----------------------------------------------------------------------

    // Width in units of the width of "0" in Arial 10, 0 to 1000, initially 8. -1 writes all columns
    // except the row heads.
    double ColWidth(int col) const;
    void ColWidth(int col, double width);

    // Height in points, 0 to 1000, initially 20. -1 writes all rows except the column heads.
    double RowHeight(int row) const;
    void RowHeight(int row, double height);

    // Hides the column `Col` or the row `Row`, with BlockMode those of the block; -1 means all.
    bool ColHidden() const;
    void ColHidden(bool hidden);
    bool RowHidden() const;
    void RowHidden(bool hidden);

    // A page break after the row `Row` in print; with BlockMode after each row of the block.
    bool RowPageBreak() const;
    void RowPageBreak(bool on);

    // Whether the column heads and the row heads are shown; initially true.
    bool ColHeadersShow() const;
    void ColHeadersShow(bool on);
    bool RowHeadersShow() const;
    void RowHeadersShow(bool on);

    // Whether the grid lines between rows and between columns are shown; initially true.
    bool GridShowHoriz() const;
    void GridShowHoriz(bool on);
    bool GridShowVert() const;
    void GridShowVert(bool on);

    // Whether a text that is too long for its cell runs over into empty neighbours; initially
    // false.
    bool AllowCellOverflow() const;
    void AllowCellOverflow(bool on);

    // Whether typing in a view replaces a cell's text; initially false. If false, typing continues
    // the text at its end. The value of a date or combo cell is always replaced.
    // Deliberate: behaviour 16.
    bool EditModeReplace() const;
    void EditModeReplace(bool on);

    // --- Sorting -------------------------------------------------------------------------------

    // Column and order of the n-th sort key, n from 1 to 3; other numbers are ignored.
    int SortKey(int n) const;
    void SortKey(int n, int col);
    SortOrder SortKeyOrder(int n) const;
    void SortKeyOrder(int n, SortOrder order);

    // Sorts whole rows from row to row2 by the sort keys, and removes the spans of these rows. The
    // sort is stable. Date cells compare as dates, plain numbers as numbers, other texts like
    // compareTexts; empty cells come last in both orders. `col` and `col2` have no effect. The
    // active cell moves with its row.
    // Deliberate: behaviour 19.
    void Sort(int col, int row, int col2, int row2, SortBy by);

    // Sorts by `col` as a click on its head does in every list: ascending at first, and in the
    // other order than before at each further click, even on another column.
    // Deliberate: behaviour 7.
    void SortByHead(int col);

    // --- Files and memory ----------------------------------------------------------------------

    // Saves the grid with all sheets. The file is replaced whole or left as it was. With dataOnly
    // true it holds only sizes, texts and pictures. Returns false if the file cannot be written or
    // the grid holds more than 8 million cells.
    [[nodiscard]] bool SaveToFile(const QString& path, bool dataOnly) const;

    // The bytes that SaveToFile writes with dataOnly false; empty if the grid holds more than 8
    // million cells.
    QByteArray fileBytes() const;

    // A check sum of the sizes, texts and pictures of all sheets. Looks, widths and the page on
    // view do not count.
    QByteArray contentSum() const;

    // Replaces the whole grid by the one in a file. Its ActiveSheet becomes `Sheet`, and no cell is
    // active; Col, Row and BlockMode do not change. Returns false and leaves the grid as it was if
    // the file is missing, damaged, larger than its own numbers say or of a later version.
    bool LoadFromFile(const QString& path);

    // Copies a block of `Sheet` into a buffer, and a buffer into `Sheet` with its first cell at
    // (col, row). What lies outside the grid is cut off. Returns false if nothing is left.
    bool SaveBlockToBuffer(int col, int row, int col2, int row2, CellBlock& buffer) const;
    bool LoadBlockFromBuffer(int col, int row, const CellBlock& buffer);

    // Writes a block of `Sheet` as an HTML page with one table, one line of text per row, with
    // colours, fonts, alignment, borders, spans and the grid lines that are shown. Hidden rows and
    // columns are left out. An end row below 1 is the last row with data; a block that ends above
    // its start is empty. The file is replaced whole, or appended to if `append` is true. No log is
    // written. Returns false if the file cannot be written. Deliberate: behaviour 17.
    [[nodiscard]] bool ExportRangeToHTML(int col, int row, int col2, int row2, const QString& path,
                                         bool append, const QString& logFile) const;

    // --- Reading any sheet, for views, printing and export -------------------------------------

    QString textAt(int sheet, int col, int row) const;
    CellFormat formatAt(int sheet, int col, int row) const;
    QByteArray pictureAt(int sheet, int col, int row) const;
    CellSpan spanAt(int sheet, int col, int row) const;  // cols is 0 if no span covers the cell
    const std::vector<CellSpan>& spansOf(int sheet) const;
    int rowsOf(int sheet) const;
    int colsOf(int sheet) const;
    int dataRowsOf(int sheet) const;  // DataRowCnt of any sheet
    double widthOf(int sheet, int col) const;
    double heightOf(int sheet, int row) const;
    bool isColHidden(int sheet, int col) const;
    bool isRowHidden(int sheet, int row) const;
    bool hasPageBreak(int sheet, int row) const;

protected:
    // Called at the first change after takeDirt, so that a view can show any number of writes at
    // once.
    virtual void becameDirty() {}

    // Called after the texts of a block of a sheet were written or cleared, after rows were
    // inserted (count above 0) or deleted (count below 0) at a row, and after the grid was loaded,
    // sorted or lost rows, columns or sheets. A view keeps its list of undo steps by them.
    virtual void textsWritten(int sheet, const GridArea& area);
    virtual void rowsMoved(int sheet, int row, int count);
    virtual void contentReplaced() {}

    // Called after Sort has moved rows.
    virtual void rowsSorted() {}

    // Returns the changes since the last call.
    GridDirt takeDirt();

private:
    struct Private;

    void touchRows(int first, int last);
    void touchLayout();
    void leaveLostCell();
    void writeFormat(int col, int row, int col2, int row2, const FormatPatch& change);
    void writeFormat(const FormatPatch& change);
    template <class T>
    void writeProperty(uint32_t bit, T CellFormat::*property, const T& value);
    template <class T>
    T readProperty(uint32_t bit, T CellFormat::*property) const;
    void writeText(int col, int row, const QString& value);
    void storeText(int col, int row, const QString& value);
    void appendRow(QString* texts, int count);
    template <class Write>
    void writeCells(Write write);
    template <class Change>
    void changeCols(int first, int last, Change change);
    template <class Change>
    void changeRows(int first, int last, Change change);

    std::unique_ptr<Private> d;
    int m_col = 1;
    int m_row = 1;
    int m_col2 = 1;
    int m_row2 = 1;
    int m_activeCol = 0;
    int m_activeRow = 0;
    bool m_blockMode = false;
};
