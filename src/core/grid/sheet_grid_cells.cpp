// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/dates.h"
#include "core/grid/sheet_data.h"
#include "core/grid/sheet_grid_dates.h"

#include <QStringList>

// --- Texts -------------------------------------------------------------------------------------

namespace {

// Gives in `shown` what a date cell shows of a text. Returns false if it does not take the text.
bool takesDate(const QString& text, bool century, QString& shown) {
    shown.clear();
    if (text.isEmpty()) return true;
    const auto date = parseDate(text);
    if (!date || *date < FirstCellDate || *date > LastCellDate) return false;
    shown = formatDate(*date);
    if (century) shown = shown.left(6) + QString::number(date->year());
    return true;
}

double atMost(double value, double bound) { return value >= 0 ? std::min(value, bound) : 0; }

int asColour(int colour) { return colour & 0xFFFFFF; }

}  // namespace

bool SheetGrid::GetText(int col, int row, QString& value) const {
    const GridCell* cell = d->current().cell(col, row);
    value = cell ? cell->text : QString();
    return !value.isEmpty();
}

QString SheetGrid::GetText(int col, int row) const {
    QString value;
    GetText(col, row, value);
    return value;
}

// The address has to be inside the sheet.
void SheetGrid::writeText(int col, int row, const QString& value) {
    storeText(col, row, value);
    textsWritten(d->sheet, {col, row, col, row});
}

void SheetGrid::storeText(int col, int row, const QString& value) {
    SheetData& sheet = d->current();
    if (sheet.isDateCell(col, row)) {
        const CellFormat* century = sheet.setting(col, row, DateCenturyBit);
        QString shown;
        // Deliberate: behaviour 11.
        if (takesDate(value, century && century->dateCentury, shown))
            sheet.cellForWriting(col, row).text = shown;
    } else {
        sheet.cellForWriting(col, row).text = value;
    }
}

void SheetGrid::SetText(int col, int row, const QString& value) {
    SheetData& sheet = d->current();
    if (sheet.contains(col, row)) {
        writeText(col, row, value);
        touchRows(row, row);
    } else if (col == -1 || row == -1) {
        const GridArea area = sheet.area(col, row, col, row);
        for (int r = area.row; r <= area.row2; ++r)
            for (int c = area.col; c <= area.col2; ++c) writeText(c, r, value);
        touchRows(area.row, area.row2);
    }
}

// A list is filled with many rows: each moves its texts in and does nothing twice.
void SheetGrid::appendRow(QString* texts, int count) {
    SheetData& sheet = d->current();
    if (sheet.maxRows == MaxGridRows) return;
    const int row = ++sheet.maxRows;
    touchLayout();
    const int cols = std::min(count, sheet.maxCols);
    if (cols == 0) return;
    GridCell* cells = &sheet.cellForWriting(cols, row) - (cols - 1);  // from column 1 on
    for (int col = 1; col <= cols; ++col) {
        QString& text = texts[col - 1];
        if (sheet.isDateCell(col, row))
            storeText(col, row, text);
        else
            cells[col - 1].text = std::move(text);
    }
    textsWritten(d->sheet, {1, row, cols, row});
    touchRows(row, row);
}

// Calls write(col, row) for the current cell, or with BlockMode for each cell of the block.
template <class Write>
void SheetGrid::writeCells(Write write) {
    const int col2 = m_blockMode ? m_col2 : m_col;
    const int row2 = m_blockMode ? m_row2 : m_row;
    const GridArea area = d->current().area(m_col, m_row, col2, row2);
    if (area.isEmpty()) return;
    for (int row = area.row; row <= area.row2; ++row)
        for (int col = area.col; col <= area.col2; ++col) write(col, row);
    touchRows(area.row, area.row2);
}

QString SheetGrid::Text() const { return GetText(m_col, m_row); }

void SheetGrid::Text(const QString& text) {
    writeCells([&](int col, int row) { writeText(col, row, text); });
}

int SheetGrid::SearchCol(int col, int rowStart, int rowEnd, const QString& text, int) const {
    const SheetData& sheet = d->current();
    if (col < 0 || col > sheet.maxCols) return -1;
    const int last = rowEnd == -1 ? sheet.lastDataRow() : std::min(rowEnd, sheet.maxRows);
    const QString wanted = text.toCaseFolded();
    for (int row = std::max(rowStart, 1); row <= last; ++row) {
        const GridCell* cell = sheet.cell(col, row);
        if (cell ? cell->text.toCaseFolded() == wanted : wanted.isEmpty()) return row;
    }
    return -1;
}

// --- Formats -----------------------------------------------------------------------------------

void SheetGrid::writeFormat(int col, int row, int col2, int row2, const FormatPatch& change) {
    SheetData& sheet = d->current();
    const GridArea area = sheet.area(col, row, col2, row2);
    // A default can be set even if the sheet has no cell yet to show it.
    const bool anyCol = col == -1 || area.col <= area.col2;
    const bool anyRow = row == -1 || area.row <= area.row2;
    if (!anyCol || !anyRow) return;
    sheet.collectGarbage();
    if (col == -1 && row == -1) {
        sheet.setDefault(-1, -1, change);
    } else if (row == -1) {
        for (int c = area.col; c <= area.col2; ++c) sheet.setDefault(c, -1, change);
    } else if (col == -1) {
        for (int r = area.row; r <= area.row2; ++r) sheet.setDefault(-1, r, change);
    } else {
        sheet.setInCells(area, change);
    }
    touchRows(area.row, area.row2);
}

void SheetGrid::writeFormat(const FormatPatch& change) {
    writeFormat(m_col, m_row, m_blockMode ? m_col2 : m_col, m_blockMode ? m_row2 : m_row, change);
}

template <class T>
void SheetGrid::writeProperty(uint32_t bit, T CellFormat::*property, const T& value) {
    CellFormat format;
    format.*property = value;
    FormatPatch change;
    change.set(format, bit);
    writeFormat(change);
}

template <class T>
T SheetGrid::readProperty(uint32_t bit, T CellFormat::*property) const {
    const CellFormat* found = d->current().setting(m_col, m_row, bit);
    return found ? found->*property : CellFormat().*property;
}

int SheetGrid::BackColor() const { return readProperty(BackColorBit, &CellFormat::backColor); }

void SheetGrid::BackColor(int colour) {
    writeProperty(BackColorBit, &CellFormat::backColor, asColour(colour));
}

int SheetGrid::ForeColor() const { return readProperty(ForeColorBit, &CellFormat::foreColor); }

void SheetGrid::ForeColor(int colour) {
    CellFormat format;
    format.foreColor = asColour(colour);
    format.hasForeColor = true;
    FormatPatch change;
    change.set(format, ForeColorBit);
    writeFormat(change);
}

QString SheetGrid::FontName() const { return readProperty(FontNameBit, &CellFormat::fontName); }

void SheetGrid::FontName(const QString& name) {
    writeProperty(FontNameBit, &CellFormat::fontName, name);
}

double SheetGrid::FontSize() const { return readProperty(FontSizeBit, &CellFormat::fontSize); }

void SheetGrid::FontSize(double points) {
    writeProperty(FontSizeBit, &CellFormat::fontSize, atMost(points, MaxSectionSize));
}

bool SheetGrid::FontBold() const { return readProperty(FontBoldBit, &CellFormat::fontBold); }
void SheetGrid::FontBold(bool bold) { writeProperty(FontBoldBit, &CellFormat::fontBold, bold); }

HAlign SheetGrid::TypeHAlign() const { return readProperty(HAlignBit, &CellFormat::hAlign); }

void SheetGrid::TypeHAlign(HAlign align) {
    if (isKnown(align)) writeProperty(HAlignBit, &CellFormat::hAlign, align);
}

CellKind SheetGrid::CellType() const { return readProperty(KindBit, &CellFormat::kind); }

void SheetGrid::CellType(CellKind kind) {
    if (isKnown(kind)) writeProperty(KindBit, &CellFormat::kind, kind);
}

bool SheetGrid::TypeDateCentury() const {
    return readProperty(DateCenturyBit, &CellFormat::dateCentury);
}

void SheetGrid::TypeDateCentury(bool on) {
    writeProperty(DateCenturyBit, &CellFormat::dateCentury, on);
}

int SheetGrid::TypeDateFormat() const {
    return readProperty(DateFormatBit, &CellFormat::dateFormat);
}

void SheetGrid::TypeDateFormat(int format) {
    writeProperty(DateFormatBit, &CellFormat::dateFormat, std::clamp(format, 0, MaxDateFormat));
}

bool SheetGrid::TypeSpin() const { return readProperty(SpinBit, &CellFormat::spin); }
void SheetGrid::TypeSpin(bool on) { writeProperty(SpinBit, &CellFormat::spin, on); }

// --- Combo cells and pictures ------------------------------------------------------------------

QString SheetGrid::TypeComboBoxList() const {
    return readProperty(ComboListBit, &CellFormat::comboList);
}

void SheetGrid::TypeComboBoxList(const QString& tabbedItems) {
    writeProperty(ComboListBit, &CellFormat::comboList, tabbedItems);
}

int SheetGrid::TypeComboBoxMaxDrop() const {
    return readProperty(ComboMaxDropBit, &CellFormat::comboMaxDrop);
}

void SheetGrid::TypeComboBoxMaxDrop(int lines) {
    writeProperty(ComboMaxDropBit, &CellFormat::comboMaxDrop, std::clamp(lines, 0, MaxComboDrop));
}

int SheetGrid::TypeComboBoxCurSel() const {
    const QString list = TypeComboBoxList();
    return list.isEmpty() ? -1 : int(list.split(QLatin1Char('\t')).indexOf(Text()));
}

void SheetGrid::TypeComboBoxCurSel(int index) {
    writeCells([&](int col, int row) {
        const CellFormat* found = d->current().setting(col, row, ComboListBit);
        const QStringList items = found ? found->comboList.split(QLatin1Char('\t')) : QStringList();
        writeText(col, row, items.value(index));
    });
}

QByteArray SheetGrid::Picture() const { return pictureAt(d->sheet, m_col, m_row); }

void SheetGrid::Picture(const QByteArray& imageFile) {
    d->current().collectGarbage();
    const int number = d->current().internPicture(imageFile);
    writeCells([&](int col, int row) { d->current().cellForWriting(col, row).picture = number; });
}

// --- Spans and borders -------------------------------------------------------------------------

void SheetGrid::AddCellSpan(int col, int row, int numCols, int numRows) {
    d->current().addSpan({col, row, numCols, numRows});
    touchLayout();
}

bool SheetGrid::GetCellSpan(int col, int row, int& anchorCol, int& anchorRow, int& numCols,
                            int& numRows) const {
    const CellSpan* span = d->current().spanAt(col, row);
    anchorCol = span ? span->col : col;
    anchorRow = span ? span->row : row;
    numCols = span ? span->cols : 1;
    numRows = span ? span->rows : 1;
    return span != nullptr;
}

void SheetGrid::RemoveCellSpan(int anchorCol, int anchorRow) {
    std::erase_if(d->current().spans, [&](const CellSpan& span) {
        return span.col == anchorCol && span.row == anchorRow;
    });
    touchLayout();
}

void SheetGrid::SetCellBorder(int col, int row, int col2, int row2, BorderType type, int colour,
                              BorderStyle style) {
    const CellBorder border{style == BorderStyle::Solid ? style : BorderStyle::None,
                            style == BorderStyle::Solid ? asColour(colour) : Black};
    CellFormat format;
    format.left = format.right = format.top = format.bottom = border;
    uint32_t bits = 0;
    const auto add = [&](BorderType side, FormatBit bit) {
        if (int(type) & int(side)) bits |= bit;
    };
    add(BorderType::Left, LeftBit);
    add(BorderType::Right, RightBit);
    add(BorderType::Top, TopBit);
    add(BorderType::Bottom, BottomBit);
    if (bits == 0) return;
    FormatPatch change;
    change.set(format, bits);
    writeFormat(col, row, col2, row2, change);
}
