// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/paths.h"
#include "core/grid/sheet_data.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace {

// Mail programs may use wider fonts, so a unit of width is wider than on the screen. But if texts
// run over into neighbours, the letters of a row stand over those of the next one, and a unit is as
// wide as in print: the width of "0" in Arial 10.
constexpr double PixelsPerUnit = 8.215;
constexpr double PixelsPerOverflowUnit = 1139.0 / 2048 * 10 * 96 / 72;
constexpr double PixelsPerPoint = 96.0 / 72;

QByteArray colourName(int colour) {
    const int value = (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
    return '#' + QByteArray::number(value, 16).rightJustified(6, '0');
}

constexpr qsizetype LongestEscape = 6;

// Whether a character is written as it stands wherever it stands. Most are.
bool isOrdinary(char16_t c) { return (c > '>' && c < 0x80) || (c > '&' && c < '<'); }

// What is written for a character that is no blank; null if it stays as it is.
const char* escaped(char16_t c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\r':
        case '\n':
            return "<BR>";
        default:
            return c < ' ' ? "" : nullptr;
    }
}

// Both write to a buffer and return where the next bytes go.
char* put(char* end, QByteArrayView bytes) { return std::copy(bytes.begin(), bytes.end(), end); }

// Writes a text with its line ends as breaks and all its blanks. The buffer has to have room for
// LongestEscape bytes a character.
char* putText(char* end, QStringView text) {
    char16_t before = ' ';  // blanks at the start of a line are kept as well
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (isOrdinary(c) || (c == ' ' && before != ' ')) {
            *end++ = char(before = c);
            continue;
        }
        if (c >= 0x80) {
            const qsizetype first = i;
            while (i + 1 < text.size() && text[i + 1].unicode() >= 0x80) ++i;
            end = put(end, text.sliced(first, i - first + 1).toUtf8());
            before = c;
            continue;
        }
        const bool isBlank = c == ' ' || c == '\t';
        const bool endsLine = c == '\r' || c == '\n';
        const char* instead = escaped(c);
        if (isBlank) instead = before == ' ' ? "&nbsp;" : " ";
        if (c == '\n' && i > 0 && text[i - 1] == u'\r') instead = "";
        before = isBlank || endsLine ? ' ' : c;
        if (instead)
            end = put(end, instead);
        else
            *end++ = char(c);
    }
    return end;
}

QByteArray borderStyle(const char* side, const CellBorder& border) {
    if (border.style == BorderStyle::None) return {};
    return QByteArray("border-") + side + ":1px solid " + colourName(border.colour) + ';';
}

// What all cells of one format share: the opening tag without its ">", and what stands between it
// and the text and after the text.
struct CellTag {
    QByteArray open;
    QByteArray before = ">";
    QByteArray after = "</TD>";
};

CellTag tagOf(const CellFormat& format) {
    CellTag tag;
    tag.open = "<TD";
    if (format.hAlign == HAlign::Centre) tag.open += " ALIGN=CENTER";
    if (format.hAlign == HAlign::Right) tag.open += " ALIGN=RIGHT";
    if (format.backColor != White) tag.open += " BGCOLOR=\"" + colourName(format.backColor) + '"';
    QByteArray style;
    if (format.hasForeColor) style += "color:" + colourName(format.foreColor) + ';';
    // Dark on light even if the mail program's own text is light.
    else if (format.backColor != White)
        style += "color:#000000;";
    if (!format.fontName.isEmpty()) {
        QString name = format.fontName;
        for (const char* no : {"'", "\"", "&", "<", ">", ";"}) name.remove(QLatin1String(no));
        style += "font-family:'" + name.toUtf8() + "',sans-serif;";
    }
    if (format.fontSize > 0) style += "font-size:" + QByteArray::number(format.fontSize) + "pt;";
    style += borderStyle("left", format.left) + borderStyle("top", format.top) +
             borderStyle("right", format.right) + borderStyle("bottom", format.bottom);
    if (!style.isEmpty()) tag.open += " STYLE=\"" + style + '"';
    if (format.fontBold) {
        tag.before = "><B>";
        tag.after = "</B></TD>";
    }
    return tag;
}

// A number with at most four significant digits.
QByteArray numbered(double value) { return QByteArray::number(value, 'g', 4); }

class HtmlTable {
public:
    HtmlTable(const SheetGrid& grid, const SheetData& data, const GridArea& area, QIODevice& file);

    // Writes the page. Returns false if the file fails.
    bool write();

private:
    char* room(qsizetype bytes);
    void keepUpTo(const char* end) { m_used = end - m_html.constData(); }
    void append(QByteArrayView bytes) { keepUpTo(put(room(bytes.size()), bytes)); }
    void flush();
    void appendTitle(const QString& text);
    void appendOpening();
    void appendRow(int row);
    void appendCell(int col, int row, const GridCell* cell);
    const CellTag& tag(int col, int row, const GridCell* cell);
    QString firstText() const;

    struct Col {
        bool hidden;
        int format;
        double width;
    };

    const SheetGrid& m_grid;
    const SheetData& m_data;
    const GridArea m_area;
    QIODevice& m_file;
    std::vector<Col> m_cols;
    int m_rowFormat = -1;
    double m_rowHeight = -1;
    QByteArray m_rowTag;  // of a row of that height
    QByteArray m_html;    // its first m_used bytes are not in the file yet
    qsizetype m_used = 0;
    bool m_isWritten = true;
    std::map<std::array<int, 3>, CellTag> m_tags;
    std::array<int, 3> m_lastKey{};
    const CellTag* m_lastTag = nullptr;  // of m_lastKey; most cells look like the one before
};

HtmlTable::HtmlTable(const SheetGrid& grid, const SheetData& data, const GridArea& area,
                     QIODevice& file)
    : m_grid(grid), m_data(data), m_area(area), m_file(file) {
    for (int col = area.col; col <= area.col2; ++col) {
        const GridSection& section = data.colSection(col);
        m_cols.push_back({section.hidden, section.format, section.hidden ? 0 : section.size});
    }
}

// The title of the page: its first text.
QString HtmlTable::firstText() const {
    for (int row = m_area.row; row <= m_area.row2; ++row)
        for (int col = m_area.col; col <= m_area.col2; ++col) {
            const GridCell* cell = m_data.cell(col, row);
            if (cell && !cell->text.isEmpty()) return cell->text;
        }
    return QStringLiteral("Lorvanite");
}

// The tags "<HTML>", "<TABLE ...>" and "</TABLE>" are lines of their own, because the mail windows
// process the file line by line.
bool HtmlTable::write() {
    constexpr qsizetype bytesAtOnce = 131072;
    append(
        "<HTML>\n<HEAD>\n<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; "
        "charset=utf-8\">\n<TITLE>");
    appendTitle(firstText().simplified());
    append("</TITLE>\n</HEAD>\n<BODY BGCOLOR=\"#ffffff\">\n");
    appendOpening();
    for (int row = m_area.row; row <= m_area.row2; ++row) {
        if (!m_data.rowSection(row).hidden) appendRow(row);
        if (m_used > bytesAtOnce) flush();
    }
    append("</TABLE>\n</BODY>\n</HTML>\n");
    flush();
    return m_isWritten;
}

// Where so many more bytes can be written.
char* HtmlTable::room(qsizetype bytes) {
    if (m_html.size() - m_used < bytes) m_html.resize(2 * (m_used + bytes));
    return m_html.data() + m_used;
}

void HtmlTable::appendTitle(const QString& text) {
    keepUpTo(putText(room(text.size() * LongestEscape), text));
}

void HtmlTable::flush() {
    m_isWritten = m_file.write(m_html.constData(), m_used) == m_used && m_isWritten;
    m_used = 0;
}

void HtmlTable::appendOpening() {
    double units = 0;
    for (const Col& col : m_cols) units += col.width;
    const double unit = m_grid.AllowCellOverflow() ? PixelsPerOverflowUnit : PixelsPerUnit;
    const int width = int(std::lround(units * unit));
    append("<TABLE CELLSPACING=0 CELLPADDING=0 BORDER=0 WIDTH=" + QByteArray::number(width) +
           " STYLE=\"border-collapse:collapse;color:#000000;font-family:Arial,sans-serif;"
           "font-size:10pt");
    if (m_grid.AllowCellOverflow()) append(";table-layout:fixed;white-space:nowrap");
    append("\">\n");
    for (const Col& col : m_cols) {
        if (!col.hidden && units > 0)
            append("<COL WIDTH=\"" + numbered(100 * col.width / units) + "%\">");
    }
    append("\n");
}

void HtmlTable::appendRow(int row) {
    const GridSection& section = m_data.rowSection(row);
    m_rowFormat = section.format;
    if (section.size != m_rowHeight) {
        m_rowHeight = section.size;
        m_rowTag =
            "<TR STYLE=\"height:" + QByteArray::number(std::lround(m_rowHeight * PixelsPerPoint)) +
            "px\">";
    }
    append(m_rowTag);
    for (int col = m_area.col; col <= m_area.col2; ++col) {
        if (!m_cols[size_t(col - m_area.col)].hidden) appendCell(col, row, m_data.cell(col, row));
    }
    append("</TR>\n");
}

void HtmlTable::appendCell(int col, int row, const GridCell* cell) {
    const CellSpan* span = m_data.spanAt(col, row);
    int cols = 1;
    int rows = 1;
    if (span) {
        // The first visible cell of a span stands for the whole span.
        const int lastCol = std::min(span->col + span->cols - 1, m_area.col2);
        const int lastRow = std::min(span->row + span->rows - 1, m_area.row2);
        for (int c = std::max(span->col, m_area.col); c < col; ++c)
            if (!m_cols[size_t(c - m_area.col)].hidden) return;
        for (int r = std::max(span->row, m_area.row); r < row; ++r)
            if (!m_data.rowSection(r).hidden) return;
        for (int c = col + 1; c <= lastCol; ++c) cols += !m_cols[size_t(c - m_area.col)].hidden;
        for (int r = row + 1; r <= lastRow; ++r) rows += !m_data.rowSection(r).hidden;
        col = span->col;
        row = span->row;
        cell = m_data.cell(col, row);
    }
    const CellTag& look = tag(col, row, cell);
    constexpr qsizetype mostForSpan = 64;
    const QStringView text = cell ? QStringView(cell->text) : QStringView();
    char* end = room(look.open.size() + mostForSpan + look.before.size() +
                     (text.size() + 1) * LongestEscape + look.after.size());
    end = put(end, look.open);
    if (cols > 1) end = put(end, " COLSPAN=" + QByteArray::number(cols));
    if (rows > 1) end = put(end, " ROWSPAN=" + QByteArray::number(rows));
    if (text.isEmpty()) {
        end = put(end, ">&nbsp;</TD>");
    } else {
        end = put(end, look.before);
        end = putText(end, text);
        end = put(end, look.after);
    }
    keepUpTo(end);
}

const CellTag& HtmlTable::tag(int col, int row, const GridCell* cell) {
    const int colFormat =
        col >= m_area.col ? m_cols[size_t(col - m_area.col)].format : m_data.colSection(col).format;
    const int rowFormat = row >= m_area.row ? m_rowFormat : m_data.rowSection(row).format;
    const std::array<int, 3> key{cell ? cell->format : -1, rowFormat, colFormat};
    if (m_lastTag && key == m_lastKey) return *m_lastTag;
    m_lastKey = key;
    const auto known = m_tags.find(key);
    if (known != m_tags.end()) return *(m_lastTag = &known->second);
    CellFormat format = m_data.resolved(col, row);
    const CellBorder gridLine{BorderStyle::Solid, RGB(216, 210, 195)};
    if (m_grid.GridShowHoriz() && format.bottom.style == BorderStyle::None)
        format.bottom = gridLine;
    if (m_grid.GridShowVert() && format.right.style == BorderStyle::None) format.right = gridLine;
    m_lastTag = &m_tags.emplace(key, tagOf(format)).first->second;
    return *m_lastTag;
}

}  // namespace

bool SheetGrid::ExportRangeToHTML(int col, int row, int col2, int row2, const QString& path,
                                  bool append, const QString&) const {
    const GridArea area = outputArea(*this, Sheet(), {col, row, col2, row2});
    const auto write = [&](QIODevice& file) {
        return HtmlTable(*this, d->current(), area, file).write();
    };
    if (!append) return replaceFile(path, write);
    QFile file(resolvedPath(path));
    return file.open(QIODevice::Append) && write(file) && file.flush();
}
