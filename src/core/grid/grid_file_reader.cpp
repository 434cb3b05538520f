// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/grid_file.h"
#include "core/grid/grid_file_keys.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

// Reads a grid's JSON. isGood() is false after the first error; the results are meaningless then.
class GridReader {
public:
    bool isGood() const { return m_good; }
    GridData read(const QJsonObject& object);

private:
    using Bounds = std::pair<int, int>;

    bool require(bool condition) { return m_good = m_good && condition; }
    int number(const QJsonValue& value, int low, int high);
    double size(const QJsonValue& value);
    bool flag(const QJsonObject& object, QLatin1String key, bool plain);
    QString text(const QJsonValue& value);
    QJsonArray array(const QJsonObject& object, QLatin1String key);
    // The numbers of an array of exactly this length, each within its bounds.
    std::vector<int> numbers(const QJsonValue& value, std::initializer_list<Bounds> bounds);

    CellBorder border(const QJsonValue& value);
    FormatPatch format(const QJsonObject& object);
    SheetData sheet(const QJsonObject& object);
    GridSection section(const QJsonValue& sectionSize, const QJsonValue& flagNumber);
    void plainSection(const QJsonObject& object, QLatin1String key, GridSection& to);
    void sections(const QJsonArray& entries, int last, SheetData& sheet, GridSections& to);
    void texts(const QJsonArray& runs, SheetData& sheet);
    void cellFormats(const QJsonArray& runs, SheetData& sheet);
    void cellPictures(const QJsonArray& entries, SheetData& sheet);
    void spans(const QJsonArray& entries, SheetData& sheet);
    int formatNumber(int number, SheetData& sheet);
    GridCell* place(SheetData& sheet, int col, int row);

    bool m_good = true;
    std::vector<FormatPatch> m_formats;
    std::vector<QByteArray> m_pictures;
    std::vector<int> m_numberInSheet;  // of each format; -2 if the sheet has not used it yet
    qint64 m_rows = 0;
    qint64 m_cells = 0;
    qint64 m_formatted = 0;
};

int GridReader::number(const QJsonValue& value, int low, int high) {
    const double number = value.toDouble(low - 1.0);
    const bool good = number >= low && number <= high && number == std::floor(number);
    return require(good) ? int(number) : low;
}

double GridReader::size(const QJsonValue& value) {
    const double size = value.toDouble(-1);
    return require(size >= 0 && size <= MaxSectionSize) ? size : 0;
}

bool GridReader::flag(const QJsonObject& object, QLatin1String key, bool plain) {
    const QJsonValue value = object.value(key);
    require(value.isBool() || value.isUndefined());
    return value.toBool(plain);
}

QString GridReader::text(const QJsonValue& value) {
    require(value.isString());
    QString text = value.toString();
    // A lone surrogate could not be written as UTF-8 again.
    if (!text.isValidUtf16()) text = QString::fromUtf8(text.toUtf8());
    return text;
}

QJsonArray GridReader::array(const QJsonObject& object, QLatin1String key) {
    const QJsonValue value = object.value(key);
    require(value.isArray() || value.isUndefined());
    return value.toArray();
}

std::vector<int> GridReader::numbers(const QJsonValue& value,
                                     std::initializer_list<Bounds> bounds) {
    const QJsonArray array = value.toArray();
    std::vector<int> result;
    if (require(value.isArray() && size_t(array.size()) == bounds.size()))
        for (const auto& [low, high] : bounds)
            result.push_back(number(array[qsizetype(result.size())], low, high));
    result.resize(bounds.size());
    return result;
}

CellBorder GridReader::border(const QJsonValue& value) {
    const std::vector<int> parts = numbers(value, {{0, 1}, {0, White}});
    return {BorderStyle(parts[0]), parts[1]};
}

FormatPatch GridReader::format(const QJsonObject& object) {
    FormatPatch patch;
    CellFormat& v = patch.values;
    const auto has = [&](QLatin1String key, FormatBit bit) {
        if (object.contains(key)) patch.bits |= bit;
        return (patch.bits & bit) != 0;
    };
    const auto integer = [&](QLatin1String key, int high) {
        return number(object.value(key), 0, high);
    };
    if (has(GridKey::Kind, KindBit)) {
        v.kind = CellKind(integer(GridKey::Kind, int(CellKind::Picture)));
        require(isKnown(v.kind));
    }
    if (has(GridKey::Back, BackColorBit)) v.backColor = integer(GridKey::Back, White);
    if (has(GridKey::Fore, ForeColorBit) && !object.value(GridKey::Fore).isNull()) {
        v.foreColor = integer(GridKey::Fore, White);
        v.hasForeColor = true;
    }
    if (has(GridKey::Font, FontNameBit)) v.fontName = text(object.value(GridKey::Font));
    if (has(GridKey::Size, FontSizeBit)) v.fontSize = size(object.value(GridKey::Size));
    if (has(GridKey::Bold, FontBoldBit)) v.fontBold = flag(object, GridKey::Bold, false);
    if (has(GridKey::Align, HAlignBit))
        v.hAlign = HAlign(integer(GridKey::Align, int(HAlign::Centre)));
    if (has(GridKey::Century, DateCenturyBit))
        v.dateCentury = flag(object, GridKey::Century, false);
    if (has(GridKey::DateFormat, DateFormatBit))
        v.dateFormat = integer(GridKey::DateFormat, MaxDateFormat);
    if (has(GridKey::Spin, SpinBit)) v.spin = flag(object, GridKey::Spin, false);
    if (has(GridKey::List, ComboListBit)) v.comboList = text(object.value(GridKey::List));
    if (has(GridKey::Drop, ComboMaxDropBit)) v.comboMaxDrop = integer(GridKey::Drop, MaxComboDrop);
    if (has(GridKey::Left, LeftBit)) v.left = border(object.value(GridKey::Left));
    if (has(GridKey::Right, RightBit)) v.right = border(object.value(GridKey::Right));
    if (has(GridKey::Top, TopBit)) v.top = border(object.value(GridKey::Top));
    if (has(GridKey::Bottom, BottomBit)) v.bottom = border(object.value(GridKey::Bottom));
    return patch;
}

// The sheet's index of one of the file's formats; -1 for none.
int GridReader::formatNumber(int number, SheetData& sheet) {
    if (!m_good || number < 0) return -1;
    int& own = m_numberInSheet[size_t(number)];
    if (own == -2) own = sheet.intern(m_formats[size_t(number)]);
    return own;
}

// A cell to fill; null if the file fills more cells than the limits allow.
GridCell* GridReader::place(SheetData& sheet, int col, int row) {
    const auto keptRows = qint64(sheet.rows.size());
    m_rows += std::max<qint64>(0, row + 1 - keptRows);
    const qint64 keptCells = row < keptRows ? qint64(sheet.rows[size_t(row)].size()) : 0;
    if (col >= keptCells) m_cells += sheet.rowCapacity(col) - keptCells;
    if (!require(m_rows <= MaxFileRows && m_cells <= MaxFileCells)) return nullptr;
    return &sheet.cellForWriting(col, row);
}

void GridReader::texts(const QJsonArray& runs, SheetData& sheet) {
    for (const QJsonValue& value : runs) {
        const QJsonArray run = value.toArray();
        if (!require(run.size() > 2)) return;
        const int row = number(run[0], 0, sheet.maxRows);
        const int col = number(run[1], 0, sheet.maxCols);
        if (!require(run.size() - 2 <= sheet.maxCols - col + 1)) return;
        // Backwards, so that the row gets its full length at once.
        for (qsizetype i = run.size() - 1; i >= 2; --i) {
            GridCell* cell = place(sheet, col + int(i) - 2, row);
            if (!cell) return;
            cell->text = text(run[i]);
        }
    }
}

void GridReader::cellFormats(const QJsonArray& runs, SheetData& sheet) {
    for (const QJsonValue& value : runs) {
        const std::vector<int> run = numbers(value, {{0, sheet.maxRows},
                                                     {1, sheet.maxRows + 1},
                                                     {0, sheet.maxCols},
                                                     {1, sheet.maxCols + 1},
                                                     {0, int(m_formats.size()) - 1}});
        const int endRow = run[0] + run[1];
        const int endCol = run[2] + run[3];
        if (!require(endRow <= sheet.maxRows + 1 && endCol <= sheet.maxCols + 1)) return;
        m_formatted += qint64(run[1]) * run[3];
        if (!require(m_formatted <= MaxFileCells)) return;
        const int format = formatNumber(run[4], sheet);
        for (int row = run[0]; row < endRow; ++row) {
            for (int col = endCol - 1; col >= run[2]; --col) {
                GridCell* cell = place(sheet, col, row);
                if (!cell) return;
                cell->format = format;
            }
        }
    }
}

void GridReader::cellPictures(const QJsonArray& entries, SheetData& sheet) {
    for (const QJsonValue& value : entries) {
        const std::vector<int> entry = numbers(
            value, {{0, sheet.maxRows}, {0, sheet.maxCols}, {0, int(m_pictures.size()) - 1}});
        GridCell* cell = isGood() ? place(sheet, entry[1], entry[0]) : nullptr;
        if (!cell) return;
        cell->picture = sheet.internPicture(m_pictures[size_t(entry[2])]);
    }
}

GridSection GridReader::section(const QJsonValue& sectionSize, const QJsonValue& flagNumber) {
    const int flags = number(flagNumber, 0, GridKey::HiddenFlag | GridKey::PageBreakFlag);
    GridSection section;
    section.size = size(sectionSize);
    section.hidden = flags & GridKey::HiddenFlag;
    section.pageBreak = flags & GridKey::PageBreakFlag;
    return section;
}

void GridReader::plainSection(const QJsonObject& object, QLatin1String key, GridSection& to) {
    if (!object.contains(key)) return;
    const QJsonArray parts = array(object, key);
    if (require(parts.size() == 2)) to = section(parts[0], parts[1]);
}

void GridReader::sections(const QJsonArray& entries, int last, SheetData& sheet, GridSections& to) {
    for (const QJsonValue& value : entries) {
        const QJsonArray entry = value.toArray();
        if (!require(entry.size() == 4)) return;
        GridSection& added = to[number(entry[0], 0, last)];
        added = section(entry[1], entry[2]);
        added.format = formatNumber(number(entry[3], -1, int(m_formats.size()) - 1), sheet);
    }
    require(to.size() == size_t(entries.size()));
}

// Whether no two spans overlap. Goes down the rows and keeps the spans that cross the current one.
bool areApart(std::vector<CellSpan> spans) {
    std::sort(spans.begin(), spans.end(),
              [](const CellSpan& a, const CellSpan& b) { return a.row < b.row; });
    std::map<int, int> endOfCol;          // of the spans in the current row, by their first column
    std::multimap<int, int> colOfEndRow;  // the row after a span, and its first column
    for (const CellSpan& span : spans) {
        while (!colOfEndRow.empty() && colOfEndRow.begin()->first <= span.row) {
            endOfCol.erase(colOfEndRow.begin()->second);
            colOfEndRow.erase(colOfEndRow.begin());
        }
        const auto right = endOfCol.lower_bound(span.col + span.cols);
        if (right != endOfCol.begin() && std::prev(right)->second > span.col) return false;
        endOfCol.emplace(span.col, span.col + span.cols);
        colOfEndRow.emplace(span.row + span.rows, span.col);
    }
    return true;
}

void GridReader::spans(const QJsonArray& entries, SheetData& sheet) {
    for (const QJsonValue& value : entries) {
        const std::vector<int> parts = numbers(
            value,
            {{1, sheet.maxCols}, {1, sheet.maxRows}, {1, sheet.maxCols}, {1, sheet.maxRows}});
        const CellSpan span{parts[0], parts[1], parts[2], parts[3]};
        if (!require(isGood() && sheet.cutSpan(span) == span)) return;
        sheet.spans.push_back(span);
    }
    require(areApart(sheet.spans));
}

SheetData GridReader::sheet(const QJsonObject& object) {
    SheetData sheet;
    sheet.maxRows = number(object.value(GridKey::Rows), 0, MaxGridRows);
    sheet.maxCols = number(object.value(GridKey::Cols), 0, MaxGridCols);
    m_numberInSheet.assign(m_formats.size(), -2);
    plainSection(object, GridKey::PlainRow, sheet.plainRow);
    plainSection(object, GridKey::PlainCol, sheet.plainCol);
    if (object.contains(GridKey::Default))
        sheet.format = formatNumber(
            number(object.value(GridKey::Default), 0, int(m_formats.size()) - 1), sheet);
    sections(array(object, GridKey::ColSections), sheet.maxCols, sheet, sheet.colSections);
    sections(array(object, GridKey::RowSections), sheet.maxRows, sheet, sheet.rowSections);
    if (m_good) texts(array(object, GridKey::Texts), sheet);
    if (m_good) cellPictures(array(object, GridKey::CellPictures), sheet);
    if (m_good) cellFormats(array(object, GridKey::CellFormats), sheet);
    if (m_good) spans(array(object, GridKey::Spans), sheet);
    return sheet;
}

GridData GridReader::read(const QJsonObject& object) {
    GridData data;
    if (object.contains(GridKey::TabStrip))
        data.tabStrip = TabStrip(number(object.value(GridKey::TabStrip), 0, int(TabStrip::Never)));
    data.colHeadersShow = flag(object, GridKey::ColHeaders, true);
    data.rowHeadersShow = flag(object, GridKey::RowHeaders, true);
    data.gridShowHoriz = flag(object, GridKey::LinesHoriz, true);
    data.gridShowVert = flag(object, GridKey::LinesVert, true);
    data.allowCellOverflow = flag(object, GridKey::Overflow, false);
    data.editModeReplace = flag(object, GridKey::EditReplace, false);
    const QJsonArray keys = array(object, GridKey::SortKeys);
    require(size_t(keys.size()) <= data.sortKeys.size());
    for (qsizetype i = 0; m_good && i < keys.size(); ++i) {
        const std::vector<int> key = numbers(keys[i], {{0, MaxGridCols}, {0, 2}});
        data.sortKeys[size_t(i)] = {key[0], SortOrder(key[1])};
    }
    for (const QJsonValue& value : array(object, GridKey::Formats)) {
        require(value.isObject());
        m_formats.push_back(format(value.toObject()));
    }
    for (const QJsonValue& value : array(object, GridKey::Pictures)) {
        const auto decoded = QByteArray::fromBase64Encoding(
            text(value).toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        require(bool(decoded) && !decoded.decoded.isEmpty());
        m_pictures.push_back(decoded.decoded);
    }
    const QJsonArray sheets = array(object, GridKey::Sheets);
    if (!require(!sheets.isEmpty() && sheets.size() <= MaxSheets)) return data;
    data.sheets.clear();
    for (const QJsonValue& value : sheets) {
        if (!require(value.isObject())) return data;
        data.sheets.push_back(sheet(value.toObject()));
    }
    data.activeSheet = number(object.value(GridKey::ActiveSheet), 1, int(sheets.size()));
    return data;
}

// Whether the body is the one that was written. It stands between its key and the last brace.
bool isSumRight(const QByteArray& bytes, const QJsonValue& sum) {
    if (sum.isUndefined()) return true;
    const QByteArray key = "\"grid\":";
    const qsizetype start = bytes.indexOf(key) + key.size();
    const qsizetype end = bytes.lastIndexOf('}');
    if (start > end) return false;
    const QByteArray body = QByteArray::fromRawData(bytes.constData() + start, end - start);
    return QCryptographicHash::hash(body, QCryptographicHash::Sha1).toHex() ==
           sum.toString().toLatin1();
}

}  // namespace

std::optional<GridData> readGridFile(const QByteArray& bytes) {
    if (bytes.size() > MaxGridFileSize) return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    const QJsonObject file = document.object();
    if (file.value(GridKey::Format).toString() != GridKey::FormatName ||
        file.value(GridKey::VersionKey).toDouble() != GridKey::Version ||
        !file.value(GridKey::Grid).isObject() || !isSumRight(bytes, file.value(GridKey::Sum)))
        return std::nullopt;
    GridReader reader;
    GridData data = reader.read(file.value(GridKey::Grid).toObject());
    if (!reader.isGood()) return std::nullopt;
    return data;
}
