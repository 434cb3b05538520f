// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/grid_file.h"
#include "core/grid/grid_file_keys.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <tuple>

namespace {

QJsonArray asArray(const CellBorder& border) { return {int(border.style), border.colour}; }

QJsonObject asObject(const FormatPatch& patch) {
    const CellFormat& v = patch.values;
    QJsonObject object;
    const auto add = [&](FormatBit bit, QLatin1String key, const QJsonValue& value) {
        if (patch.bits & bit) object.insert(key, value);
    };
    add(KindBit, GridKey::Kind, int(v.kind));
    add(BackColorBit, GridKey::Back, v.backColor);
    add(ForeColorBit, GridKey::Fore, v.hasForeColor ? QJsonValue(v.foreColor) : QJsonValue());
    add(FontNameBit, GridKey::Font, v.fontName);
    add(FontSizeBit, GridKey::Size, v.fontSize);
    add(FontBoldBit, GridKey::Bold, v.fontBold);
    add(HAlignBit, GridKey::Align, int(v.hAlign));
    add(DateCenturyBit, GridKey::Century, v.dateCentury);
    add(DateFormatBit, GridKey::DateFormat, v.dateFormat);
    add(SpinBit, GridKey::Spin, v.spin);
    add(ComboListBit, GridKey::List, v.comboList);
    add(ComboMaxDropBit, GridKey::Drop, v.comboMaxDrop);
    add(LeftBit, GridKey::Left, asArray(v.left));
    add(RightBit, GridKey::Right, asArray(v.right));
    add(TopBit, GridKey::Top, asArray(v.top));
    add(BottomBit, GridKey::Bottom, asArray(v.bottom));
    return object;
}

int flagsOf(const GridSection& section) {
    return (section.hidden ? GridKey::HiddenFlag : 0) |
           (section.pageBreak ? GridKey::PageBreakFlag : 0);
}

// The cells of each format as rectangles: a run that the row above has too extends the rectangle of
// that run.
class FormatRuns {
public:
    struct Run {
        int row, rows, col, cols, format;
    };

    void add(int row, int col, int cols, int format) {
        if (row != m_row) {
            m_above = row == m_row + 1 ? std::move(m_here) : Open();
            m_here.clear();
            m_row = row;
        }
        const auto key = std::make_tuple(col, cols, format);
        const auto above = m_above.find(key);
        if (above == m_above.end()) {
            m_here.emplace(key, m_runs.size());
            m_runs.push_back({row, 1, col, cols, format});
        } else {
            ++m_runs[above->second].rows;
            m_here.insert(*above);
        }
    }

    const std::vector<Run>& runs() const { return m_runs; }

private:
    using Open = std::map<std::tuple<int, int, int>, size_t>;
    Open m_above, m_here;
    int m_row = -2;
    std::vector<Run> m_runs;
};

class GridWriter {
public:
    explicit GridWriter(bool dataOnly) : m_dataOnly(dataOnly) {}

    QJsonObject write(const GridData& data);
    bool fits() const { return m_rows <= MaxFileRows && m_cells <= MaxFileCells; }

private:
    QJsonObject write(const SheetData& sheet);
    void writeCells(const SheetData& sheet, QJsonObject& object);
    void writeLooks(const SheetData& sheet, QJsonObject& object);
    QJsonArray write(const GridSections& sections, const GridSection& plain,
                     const GridSection& plainHead, const SheetData& sheet);
    int formatNumber(const SheetData& sheet, int format) {
        return format < 0 ? -1 : m_tables.intern(sheet.formats[size_t(format)]);
    }

    bool m_dataOnly;
    SheetData m_tables;  // the formats and pictures of all sheets, in the order of their first use
    qint64 m_rows = 0;
    qint64 m_cells = 0;
};

QJsonArray GridWriter::write(const GridSections& sections, const GridSection& plain,
                             const GridSection& plainHead, const SheetData& sheet) {
    QJsonArray array;
    for (const auto& [number, section] : sections) {
        if (section == (number == 0 ? plainHead : plain)) continue;
        array.append(QJsonArray{number, section.size, flagsOf(section),
                                formatNumber(sheet, section.format)});
    }
    return array;
}

void insertUnlessEmpty(QJsonObject& object, QLatin1String key, const QJsonArray& array) {
    if (!array.isEmpty()) object.insert(key, array);
}

void GridWriter::writeLooks(const SheetData& sheet, QJsonObject& object) {
    object.insert(GridKey::PlainRow, QJsonArray{sheet.plainRow.size, flagsOf(sheet.plainRow)});
    object.insert(GridKey::PlainCol, QJsonArray{sheet.plainCol.size, flagsOf(sheet.plainCol)});
    if (sheet.format >= 0) object.insert(GridKey::Default, formatNumber(sheet, sheet.format));
    insertUnlessEmpty(object, GridKey::ColSections,
                      write(sheet.colSections, sheet.plainCol, plainRowHead, sheet));
    insertUnlessEmpty(object, GridKey::RowSections,
                      write(sheet.rowSections, sheet.plainRow, plainColHead, sheet));
    QJsonArray spans;
    for (const CellSpan& span : sheet.spans)
        spans.append(QJsonArray{span.col, span.row, span.cols, span.rows});
    insertUnlessEmpty(object, GridKey::Spans, spans);
}

void GridWriter::writeCells(const SheetData& sheet, QJsonObject& object) {
    QJsonArray texts;
    QJsonArray pictures;
    FormatRuns formats;
    int keptRows = 0;
    for (int row = 0; row < int(sheet.rows.size()); ++row) {
        const GridRow& cells = sheet.rows[size_t(row)];
        const int end = int(cells.size());
        int keptCols = 0;
        const auto keep = [&](int col) { keptCols = std::max(keptCols, col + 1); };
        for (int col = 0; col < end; ++col) {
            if (cells[size_t(col)].text.isEmpty()) continue;
            QJsonArray run{row, col};
            for (; col < end && !cells[size_t(col)].text.isEmpty(); ++col)
                run.append(cells[size_t(col)].text);
            keep(col - 1);
            texts.append(run);
        }
        for (int col = 0; col < end; ++col) {
            const int picture = cells[size_t(col)].picture;
            if (picture < 0) continue;
            const QByteArray& bytes = sheet.pictures[size_t(picture)];
            pictures.append(QJsonArray{row, col, m_tables.internPicture(bytes)});
            keep(col);
        }
        for (int col = 0; col < end && !m_dataOnly;) {
            const int format = cells[size_t(col)].format;
            const int first = col;
            while (col < end && cells[size_t(col)].format == format) ++col;
            if (format < 0) continue;
            formats.add(row, first, col - first, formatNumber(sheet, format));
            keep(col - 1);
        }
        m_cells += keptCols == 0 ? 0 : sheet.rowCapacity(keptCols - 1);
        if (keptCols > 0) keptRows = row + 1;
    }
    m_rows += keptRows;
    insertUnlessEmpty(object, GridKey::Texts, texts);
    insertUnlessEmpty(object, GridKey::CellPictures, pictures);
    QJsonArray runs;
    for (const FormatRuns::Run& run : formats.runs())
        runs.append(QJsonArray{run.row, run.rows, run.col, run.cols, run.format});
    insertUnlessEmpty(object, GridKey::CellFormats, runs);
}

QJsonObject GridWriter::write(const SheetData& sheet) {
    QJsonObject object{{GridKey::Rows, sheet.maxRows}, {GridKey::Cols, sheet.maxCols}};
    if (!m_dataOnly) writeLooks(sheet, object);
    writeCells(sheet, object);
    return object;
}

QJsonObject GridWriter::write(const GridData& data) {
    QJsonObject object{{GridKey::ActiveSheet, data.activeSheet}};
    QJsonArray sheets;
    for (const SheetData& sheet : data.sheets) sheets.append(write(sheet));
    object.insert(GridKey::Sheets, sheets);
    QJsonArray pictures;
    for (const QByteArray& picture : m_tables.pictures)
        pictures.append(QString::fromLatin1(picture.toBase64()));
    insertUnlessEmpty(object, GridKey::Pictures, pictures);
    if (m_dataOnly) return object;
    QJsonArray formats;
    for (const FormatPatch& patch : m_tables.formats) formats.append(asObject(patch));
    insertUnlessEmpty(object, GridKey::Formats, formats);
    QJsonArray sortKeys;
    for (const GridSortKey& key : data.sortKeys)
        sortKeys.append(QJsonArray{key.col, int(key.order)});
    object.insert(GridKey::SortKeys, sortKeys);
    object.insert(GridKey::TabStrip, int(data.tabStrip));
    object.insert(GridKey::ColHeaders, data.colHeadersShow);
    object.insert(GridKey::RowHeaders, data.rowHeadersShow);
    object.insert(GridKey::LinesHoriz, data.gridShowHoriz);
    object.insert(GridKey::LinesVert, data.gridShowVert);
    object.insert(GridKey::Overflow, data.allowCellOverflow);
    object.insert(GridKey::EditReplace, data.editModeReplace);
    return object;
}

}  // namespace

QByteArray writeGridFile(const GridData& data, bool dataOnly) {
    GridWriter writer(dataOnly);
    const QJsonObject object = writer.write(data);
    if (!writer.fits()) return {};
    const QByteArray body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    const QByteArray sum = QCryptographicHash::hash(body, QCryptographicHash::Sha1).toHex();
    QByteArray bytes;
    bytes.reserve(body.size() + 128);
    const auto quoted = [](QLatin1String word) { return '"' + QByteArray(word.latin1()) + '"'; };
    bytes += '{' + quoted(GridKey::Format) + ':' + quoted(GridKey::FormatName) + ',';
    bytes += quoted(GridKey::VersionKey) + ':' + QByteArray::number(GridKey::Version) + ',';
    bytes += quoted(GridKey::Sum) + ":\"" + sum + "\",";
    bytes += quoted(GridKey::Grid) + ':' + body + "}\n";
    return bytes.size() <= MaxGridFileSize ? bytes : QByteArray();
}
