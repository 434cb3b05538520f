// A spreadsheet grid without a screen: every list, form and document of the program.
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

// All format properties of one cell, looked up through the cell's own format and the defaults of
// its row, its column and its sheet.
struct CellFormat {
    CellKind kind = CellKind::Edit;
    int backColor = White;
    int foreColor = Black;
    bool hasForeColor = false;  // false where no one has set the text's colour
    QString fontName;           // empty: the desktop's font
    double fontSize = 0;        // points; 0: the desktop's size
    bool fontBold = false;
    HAlign hAlign = HAlign::Left;
    bool dateCentury = false;  // show a four-digit year
    int dateFormat = 2;        // 2: month, day, year
    bool spin = false;         // date cell with spin buttons
    QString comboList;         // items, with tabs between them
    int comboMaxDrop = 8;      // lines that an open combo cell shows
    CellBorder left, right, top, bottom;
    bool operator==(const CellFormat&) const = default;
};

// A rectangle of joined cells; the anchor is its top left one.
struct CellSpan {
    int col = 0;
    int row = 0;
    int cols = 0;
    int rows = 0;
    bool operator==(const CellSpan&) const = default;
};

struct FormatPatch;  // in sheet_grid_data.h, as is
struct SheetData;    // one page's cells

// A block of cells as a value: texts, formats, pictures and spans, without widths and heights.
class CellBlock {
public:
    CellBlock();
    ~CellBlock();
    CellBlock(CellBlock&&) noexcept;
    CellBlock& operator=(CellBlock&&) noexcept;
    bool isEmpty() const { return !m_sheet; }

private:
    friend class SheetGrid;
    std::unique_ptr<SheetData> m_sheet;
};

// What has changed since a view last looked.
struct GridDirt {
    bool any = false;     // also where only the focus has moved
    bool layout = false;  // sizes, spans, hidden flags, widths, sheets: everything has to be redone
    int firstRow = 0;     // the rows of ActiveSheet whose cells have changed, 0 for the heads
    int lastRow = -1;
};

// Rows and columns count from 1; row 0 holds the column heads and column 0 the row heads. -1 as a
// row or column of an address means "all", as an end it means "to the last". Cell calls address
// the sheet `Sheet`. Reading beyond the grid's size yields no text and the plain format; writing
// there has no effect. Nothing here raises an error unless its comment says so. A grid starts with
// one sheet of 500 x 500 plain cells.
class SheetGrid : public PrintSettings {
public:
    SheetGrid();
    virtual ~SheetGrid();
    SheetGrid(const SheetGrid&) = delete;
    SheetGrid& operator=(const SheetGrid&) = delete;

    // --- Sheets and size -----------------------------------------------------------------------

    // Sizes of `Sheet`. Raising adds empty cells, lowering drops cells with their spans and
    // formats; 0 is legal. Negative values count as 0, the upper bound is 10,000,000 rows and
    // 16,384 columns.
    int MaxRows() const;
    void MaxRows(int count);
    int MaxCols() const;
    void MaxCols(int count);

    // The last row that holds a text or a picture; 0 where none does.
    int DataRowCnt() const;

    // Number of sheets, 1 to 4096. Added sheets have the size of sheet 1 and plain formats.
    int SheetCount() const;
    void SheetCount(int count);

    // The sheet that cell calls address. Setting it leaves the view. Numbers beyond 1 to
    // SheetCount change nothing.
    int Sheet() const;
    void Sheet(int number);

    // The sheet on view. Setting it sets `Sheet` too.
    int ActiveSheet() const;
    void ActiveSheet(int number);

    // Whether a view shows the page tabs.
    TabStrip TabStripPolicy() const;
    void TabStripPolicy(TabStrip policy);

    // Removes `count` sheets from `first` on; one sheet always stays.
    void DeleteSheets(int first, int count);

    // Puts `count` plain rows before `row`. MaxRows stays: rows pushed past the end are dropped.
    // Spans, heights, hidden flags and page breaks move with their rows.
    void InsertRows(int row, int count);

    // Removes `count` rows from `row` on; the rows below move up, MaxRows stays.
    void DeleteRows(int row, int count);

    // Empties a block; -1 as a start is the first data cell, so that heads go only where 0 names
    // them. With dataOnly true only texts and pictures go. With false the spans and the cells' own
    // formats go too, and the defaults of rows and columns that lie in the block as a whole.
    void ClearRange(int col, int row, int col2, int row2, bool dataOnly);

    // --- Cells ---------------------------------------------------------------------------------

    // The cell's text. False, and an empty `value`, where there is none.
    bool GetText(int col, int row, QString& value) const;
    QString GetText(int col, int row) const;

    // Writes a cell or a head. A date cell takes a date from 1/1/1990 to 12/31/2100, which it
    // shows as "mm/dd/yy", or the empty text; any other text leaves it as it was. -1 writes all
    // data cells of a row, a column or the sheet.
    void SetText(int col, int row, const QString& value);

    // The current cell, and with BlockMode true the block from (Col, Row) to (Col2, Row2) that
    // writes of cell properties go to. The state stays between calls.
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

    // Text of the current cell; a write goes to the block, by the rules of SetText.
    QString Text() const;
    void Text(const QString& text);

    // The cell with the focus; (0, 0) where none has it. The focus is lost where its cell goes;
    // cells beyond the sheet on view cannot have it.
    int ActiveCol() const { return m_activeCol; }
    int ActiveRow() const { return m_activeRow; }
    void SetActiveCell(int col, int row);

    // Format properties of the current cell, looked up in the cell, then in its row's, its
    // column's and its sheet's default. A write with -1 as column, row or both sets the default of
    // that row, column or sheet and drops what was set under it; where a row and a column cross,
    // the last write shows. Heads have the format of the head row (-1, 0) or column (0, -1) alone.
    // Values that do not exist are left out, numbers are cut to their range: sizes 0 to 1000
    // points, colours 24 bits, 0 to 1000 lines.
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
    void CellType(CellKind kind);  // never touches the text
    bool TypeDateCentury() const;
    void TypeDateCentury(bool on);
    int TypeDateFormat() const;
    void TypeDateFormat(int format);
    bool TypeSpin() const;
    void TypeSpin(bool on);
    QString TypeComboBoxList() const;
    void TypeComboBoxList(const QString& tabbedItems);
    int TypeComboBoxMaxDrop() const;
    void TypeComboBoxMaxDrop(int lines);

    // Index of the item that the current cell's text is, from 0; -1 where it is none of the list.
    // Setting it writes the item's text; an index beyond the list empties the cell.
    int TypeComboBoxCurSel() const;
    void TypeComboBoxCurSel(int index);

    // Picture of the current cell, as the bytes of an image file; empty for none.
    QByteArray Picture() const;
    void Picture(const QByteArray& imageFile);

    // Joins data cells. A block that meets spans already there dissolves them. Sizes below 1 and
    // blocks beyond the grid are cut to it; a block of one cell makes no span.
    void AddCellSpan(int col, int row, int numCols, int numRows);

    // The span that covers a cell. False, and the cell itself as 1 x 1, where none does.
    bool GetCellSpan(int col, int row, int& anchorCol, int& anchorRow, int& numCols,
                     int& numRows) const;
    void RemoveCellSpan(int anchorCol, int anchorRow);

    // Borders on every cell of a block; types can be added up. Style None takes them away.
    void SetCellBorder(int col, int row, int col2, int row2, BorderType type, int colour,
                       BorderStyle style);

    // The first row from rowStart to rowEnd (-1: the last with data) whose text in the column is
    // `text`, case ignored; -1 where there is none.
    int SearchCol(int col, int rowStart, int rowEnd, const QString& text, int flags = 0) const;

    // --- Columns and rows ----------------------------------------------------------------------

    // Width in units of the width of "0" in Arial 10, 8 at first; -1 writes all columns but the
    // row heads'. 0 to 1000.
    double ColWidth(int col) const;
    void ColWidth(int col, double width);

    // Height in points, 20 at first; -1 writes all rows but the heads'. 0 to 1000.
    double RowHeight(int row) const;
    void RowHeight(int row, double height);

    // Hidden flag of the column `Col`, the row `Row`, or of the block's; -1 writes all.
    bool ColHidden() const;
    void ColHidden(bool hidden);
    bool RowHidden() const;
    void RowHidden(bool hidden);

    // A forced page break behind the row `Row` in print.
    bool RowPageBreak() const;
    void RowPageBreak(bool on);

    bool ColHeadersShow() const;
    void ColHeadersShow(bool on);
    bool RowHeadersShow() const;
    void RowHeadersShow(bool on);
    bool GridShowHoriz() const;
    void GridShowHoriz(bool on);
    bool GridShowVert() const;
    void GridShowVert(bool on);

    // Text runs over into empty neighbours.
    bool AllowCellOverflow() const;
    void AllowCellOverflow(bool on);

    // Typing replaces a cell's text instead of adding to it.
    bool EditModeReplace() const;
    void EditModeReplace(bool on);

    // --- Sorting -------------------------------------------------------------------------------

    // The n-th key's column, and its order. n counts from 1 to 3; others are ignored.
    int SortKey(int n) const;
    void SortKey(int n, int col);
    SortOrder SortKeyOrder(int n) const;
    void SortKeyOrder(int n, SortOrder order);

    // Sorts whole rows from row to row2 by the keys. Stable; empty cells come last in both orders,
    // date cells compare as dates, two plain numbers as numbers, everything else as text by
    // locale without case. Spans of the rows are dropped. `col` and `col2` have no effect.
    void Sort(int col, int row, int col2, int row2, SortBy by);

    // What a click on the head of `col` does in every list: sorts ascending first, and flips the
    // order at each further click, also when the column is another one.
    void SortByHead(int col);

    // --- Files and memory ----------------------------------------------------------------------

    // Writes the whole grid with all sheets; the file is replaced whole or left as it was. With
    // dataOnly true only sizes, texts and pictures go out. False where it failed, or where the
    // grid holds more than 8 million cells.
    bool SaveToFile(const QString& path, bool dataOnly) const;

    // What SaveToFile writes for the whole grid; empty where it holds more than 8 million cells.
    QByteArray fileBytes() const;

    // Replaces the whole grid by a file's, with its ActiveSheet; Col, Row and BlockMode stay, no
    // cell has the focus. False, and the grid as it was, where the file is
    // missing, damaged, too large for its own counts or of a later version.
    bool LoadFromFile(const QString& path);

    // Copies a block of `Sheet` out, and in at (col, row). False where the block is empty or has
    // no place in the grid; what lies beyond the grid's edge is cut off.
    bool SaveBlockToBuffer(int col, int row, int col2, int row2, CellBlock& buffer) const;
    bool LoadBlockFromBuffer(int col, int row, const CellBlock& buffer);

    // Writes a block of `Sheet` as a page of HTML with one table, a line a row, with colours,
    // fonts, alignment, borders and spans; the lines of the grid where they are shown. Hidden rows
    // and columns stay out. An end row below 1 is the last row with data, a block that ends above
    // its start is empty. The file is replaced whole, or added to where `append` is true. The name
    // of a log is taken and not used. False where the file cannot be written.
    bool ExportRangeToHTML(int col, int row, int col2, int row2, const QString& path, bool append,
                           const QString& logFile) const;

    // --- For views, printing and export: any sheet, without the addressing state ---------------

    QString textAt(int sheet, int col, int row) const;
    CellFormat formatAt(int sheet, int col, int row) const;
    QByteArray pictureAt(int sheet, int col, int row) const;
    CellSpan spanAt(int sheet, int col, int row) const;  // cols 0 where no span covers the cell
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
    // Called at the first change after takeDirt, so that a view can plan one look for any number
    // of writes.
    virtual void becameDirty() {}

    // What has changed, and forgets it.
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
