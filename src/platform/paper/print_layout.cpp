// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/paper/print_layout.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace {

constexpr double TwipsPerPoint = 20;
constexpr double TwipsPerPixel = 15;
constexpr double NarrowPrintColumn = 600;
constexpr double NarrowPrintPadding = 10;
constexpr double PrintPadding = 50;
constexpr double LeastMarginWithLine = 540;  // if it contains a header or footer
constexpr double LeastSmartScale = 2.0 / 3;
constexpr double LeastScale = 0.1;
constexpr double PlainFontSize = 10;  // points

}  // namespace

double PrintFace::widthOf(const QString& text) const {
    const auto known = m_widths.constFind(text);
    if (known != m_widths.constEnd()) return *known;
    return *m_widths.insert(text, metrics.horizontalAdvance(text));
}

int PrintFace::wrapFlags(const QString& text, double room) const {
    const QStringList words = text.split(QRegularExpression(QStringLiteral("\\s")));
    const bool fit = std::all_of(words.begin(), words.end(),
                                 [&](const QString& word) { return widthOf(word) <= room; });
    return fit ? Qt::TextWordWrap : Qt::TextWrapAnywhere;
}

const PrintFace& PrintFaces::of(const CellFormat& format) {
    const double points = format.fontSize > 0 ? format.fontSize : PlainFontSize;
    const QString name = format.fontName.isEmpty() ? QStringLiteral("Arial") : format.fontName;
    const auto key = std::make_tuple(name, points, format.fontBold);
    const auto found = m_faces.find(key);
    if (found != m_faces.end()) return found->second;
    QFont font(name);
    font.setPixelSize(std::max(1, int(points * TwipsPerPoint)));
    font.setBold(format.fontBold);
    return m_faces.emplace(key, PrintFace(font)).first->second;
}

PrintLayout::PrintLayout(const SheetGrid& grid, const QSizeF& paper, PrintFaces& faces)
    : m_sheet(grid.ActiveSheet()), m_spansOfRow(size_t(grid.rowsOf(m_sheet)) + 1) {
    for (const CellSpan& span : grid.spansOf(m_sheet))
        for (int row = span.row; row < span.row + span.rows; ++row)
            m_spansOfRow[size_t(row)].push_back(span);
    double top = grid.PrintMarginTop();
    double bottom = grid.PrintMarginBottom();
    if (!grid.PrintHeader().isEmpty()) top = std::max(top, LeastMarginWithLine);
    if (!grid.PrintFooter().isEmpty()) bottom = std::max(bottom, LeastMarginWithLine);
    m_body = QRectF(QPointF(0, 0), paper)
                 .adjusted(grid.PrintMarginLeft(), top, -grid.PrintMarginRight(), -bottom);
    // Margins that leave no room are ignored.
    constexpr double leastBody = 720;
    if (m_body.width() < leastBody || m_body.height() < leastBody) {
        m_body = QRectF(QPointF(0, 0), paper);
    }
    m_area = areaToPrint(grid);
    measure(grid, faces);
    fit(grid);
    breakIntoPages(grid);
}

double PrintLayout::padding(double width) {
    return width < NarrowPrintColumn ? NarrowPrintPadding : PrintPadding;
}

double PrintLayout::width(int col) const {
    if (col == 0) return m_headWidth;
    const bool inside = col >= m_area.col && col <= m_area.col2;
    return inside ? m_widths[size_t(col - m_area.col)] : 0;
}

double PrintLayout::height(int row) const {
    if (row == 0) return m_headHeight;
    const bool inside = row >= m_area.row && row <= m_area.row2;
    return inside ? m_heights[size_t(row - m_area.row)] : 0;
}

const CellSpan* PrintLayout::spanAt(int col, int row) const {
    for (const CellSpan& span : m_spansOfRow[size_t(row)])
        if (col >= span.col && col < span.col + span.cols) return &span;
    return nullptr;
}

GridArea PrintLayout::areaToPrint(const SheetGrid& grid) const {
    const int rows = grid.PrintUseDataMax() ? 0 : grid.rowsOf(m_sheet);
    GridArea area = outputArea(grid, m_sheet, {1, 1, -1, rows});
    if (grid.PrintType() == PrintTypes::Block)
        area = outputArea(grid, m_sheet, {grid.Col(), grid.Row(), grid.Col2(), grid.Row2()});
    if (!grid.PrintUseDataMax()) return area;
    area.row2 = std::min(area.row2, grid.dataRowsOf(m_sheet));
    int used = 0;
    const int firstRow = grid.PrintColHeaders() ? 0 : area.row;
    for (int row = firstRow; row <= area.row2; row = std::max(row + 1, area.row)) {
        for (int col = area.col2; col > used; --col) {
            // Joined cells are as wide as all of them, and hold what their first one holds.
            const CellSpan* span = spanAt(col, row);
            const CellSpan cell = span ? *span : CellSpan{col, row, 1, 1};
            if (grid.textAt(m_sheet, cell.col, cell.row).isEmpty() &&
                grid.pictureAt(m_sheet, cell.col, cell.row).isEmpty())
                continue;
            used = cell.col + cell.cols - 1;
            break;
        }
    }
    area.col2 = std::min(area.col2, used);
    return area;
}

void PrintLayout::measure(const SheetGrid& grid, PrintFaces& faces) {
    const double unit = pixelsPerUnit() * TwipsPerPixel;
    for (int col = m_area.col; col <= m_area.col2; ++col) {
        const bool hidden = grid.isColHidden(m_sheet, col);
        m_widths.push_back(hidden ? 0 : grid.widthOf(m_sheet, col) * unit);
    }
    const auto highest = [&](int row, double given) {
        if (row > 0 && m_headWidth > 0) given = std::max(given, neededHeight(grid, faces, 0, row));
        for (int col = m_area.col; col <= m_area.col2; ++col)
            given = std::max(given, neededHeight(grid, faces, col, row));
        return given;
    };
    if (grid.PrintRowHeaders()) m_headWidth = grid.widthOf(m_sheet, 0) * unit;
    for (int row = m_area.row; row <= m_area.row2; ++row) {
        const double given = grid.heightOf(m_sheet, row) * TwipsPerPoint;
        m_heights.push_back(grid.isRowHidden(m_sheet, row) ? 0 : highest(row, given));
    }
    if (grid.PrintColHeaders())
        m_headHeight = highest(0, grid.heightOf(m_sheet, 0) * TwipsPerPoint);
}

// The height that a cell's text needs. In print a text that is wider than its cell is wrapped, and
// its row grows. If texts run over into neighbours, a single cell is wrapped at its own line ends
// only, and joined cells and heads if the text is too wide even when condensed.
double PrintLayout::neededHeight(const SheetGrid& grid, PrintFaces& faces, int col, int row) const {
    const QString text = withLineEnds(grid.textAt(m_sheet, col, row));
    if (text.isEmpty()) return 0;
    const bool lines = text.contains(QLatin1Char('\n'));
    const bool overflows = grid.AllowCellOverflow() && !lines;
    const CellSpan* span = spanAt(col, row);
    if (overflows && !span && row > 0) return 0;
    double room = width(col);
    if (span) {
        if (span->col != col || span->row != row || span->rows > 1) return 0;
        for (int c = col + 1; c < col + span->cols; ++c) room += width(c);
    }
    if (room <= 0) return 0;
    room -= 2 * padding(room);
    if (overflows) room /= LeastStretch;
    CellFormat format = grid.formatAt(m_sheet, col, row);
    if (row == 0 || col == 0) format.fontBold = true;  // as heads are printed
    const PrintFace& face = faces.of(format);
    if (!lines && face.widthOf(text) <= room) return 0;
    const QRectF needed = face.metrics.boundingRect(QRectF(0, 0, std::max(room, 1.0), 1e9),
                                                    face.wrapFlags(text, room), text);
    return needed.height() + 2 * NarrowPrintPadding;
}

// The columns of each page across, as first and last.
std::vector<std::pair<int, int>> PrintLayout::columnRuns(double room) const {
    std::vector<std::pair<int, int>> runs;
    double used = 0;
    constexpr double rounding = 0.5;
    for (int col = m_area.col; col <= m_area.col2; ++col) {
        if (runs.empty() || (used + width(col) > room + rounding && used > 0)) {
            runs.push_back({col, col});
            used = 0;
        }
        runs.back().second = col;
        used += width(col);
    }
    return runs;
}

void PrintLayout::fit(const SheetGrid& grid) {
    double total = 0;
    for (const double width : m_widths) total += width;
    if (total <= 0) return;
    const auto roomAt = [&](double scale) { return m_body.width() / scale - m_headWidth; };
    if (grid.PrintScalingMethod() == PrintScaling::BestFit) {
        const size_t wanted = size_t(grid.PrintBestFitPagesWide());
        while (m_scale > LeastScale && columnRuns(roomAt(m_scale)).size() > wanted) m_scale *= 0.99;
    } else if (grid.PrintSmartPrint()) {
        const double fitting = m_body.width() / (total + m_headWidth);
        if (fitting < 1 && fitting >= LeastSmartScale) m_scale = fitting;
        if (grid.AllowCellOverflow()) fitGrownRows(grid);
    }
}

// Rows that had to grow for their texts do not push the last ones to another page.
void PrintLayout::fitGrownRows(const SheetGrid& grid) {
    double given = 0;
    double grown = 0;
    for (int row = m_area.row; row <= m_area.row2; ++row) {
        if (!grid.isRowHidden(m_sheet, row)) given += grid.heightOf(m_sheet, row) * TwipsPerPoint;
        grown += height(row);
        if (row < m_area.row2 && !grid.hasPageBreak(m_sheet, row)) continue;
        const double room = m_body.height() / m_scale - m_headHeight;
        if (given <= room && grown > room)
            m_scale = std::max(m_body.height() / (grown + m_headHeight), LeastSmartScale);
        given = 0;
        grown = 0;
    }
}

void PrintLayout::breakIntoPages(const SheetGrid& grid) {
    const auto runs = columnRuns(m_body.width() / m_scale - m_headWidth);
    const double room = std::max(m_body.height() / m_scale - m_headHeight, 1.0);
    constexpr double rounding = 0.5;
    struct Slice {
        int first;
        int last;
        double skipped;
    };
    std::vector<Slice> slices;
    double used = 0;
    bool broken = true;
    for (int row = m_area.row; row <= m_area.row2; ++row) {
        if (broken || (used > 0 && used + height(row) > room + rounding)) {
            slices.push_back({row, row, 0});
            used = 0;
        }
        slices.back().last = row;
        used += height(row);
        // A row that is higher than a page continues on the next ones.
        for (double shown = room; used > room + rounding; shown += room) {
            slices.push_back({row, row, shown});
            used -= room;
        }
        broken = grid.hasPageBreak(m_sheet, row);
    }
    for (const auto& [first, last] : runs)
        for (const Slice& slice : slices)
            m_pages.push_back({slice.first, slice.last, first, last, slice.skipped});
    if (m_pages.empty()) m_pages.push_back({});
}
