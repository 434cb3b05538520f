// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/paper/print_painter.h"

#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace {

constexpr double LineWidth = 10;
const QColor GridLine(0xB8, 0xB2, 0xA4);
const QColor HeadGround(0xEE, 0xE8, 0xD8);

// Whether a text has no tabs or line ends, which only a layout can place.
bool isOneLine(const QString& text) {
    return std::none_of(text.begin(), text.end(), [](QChar c) {
        return c < QLatin1Char(' ') || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
    });
}

class SheetDrawing {
public:
    SheetDrawing(QPainter& painter, const SheetGrid& grid, const QSizeF& paper)
        : m_painter(painter), m_grid(grid), m_paper(paper), m_layout(grid, paper, m_faces) {}

    int pageCount() const { return int(m_layout.pages().size()); }
    void draw(int number);

private:
    void placeCells();
    void drawHeads();
    void drawHead(int col, int row, const QRectF& rect);
    void drawCells();
    void drawGround(const CellFormat& format, const QRectF& rect, int col, int row);
    void drawBorders(const CellFormat& format, int col, int row);
    void drawFrame();
    void drawText(int col, int row, const CellFormat& format, const QRectF& cell);
    void drawFitting(const PrintFace& face, const QColor& colour, HAlign align, const QRectF& rect,
                     const QString& text);
    QRectF overflowRect(int col, int row, HAlign align, double wanted, QRectF rect) const;
    void drawLine(const QString& codes, int number, double middle);

    double left(int col) const { return m_lefts[size_t(col - m_page.firstCol)]; }
    double top(int row) const { return m_tops[size_t(row - m_page.firstRow)]; }
    QRectF cellRect(int col, int row) const {
        return {left(col), top(row), m_layout.width(col), m_layout.height(row)};
    }
    QRectF spanRect(const CellSpan& span) const;

    QPainter& m_painter;
    const SheetGrid& m_grid;
    const QSizeF m_paper;
    PrintFaces m_faces;
    PrintLayout m_layout;
    PrintedPage m_page;
    const PrintFace* m_face = nullptr;  // whose font the painter has, if drawFitting has set it
    std::vector<double> m_lefts;        // of the page's columns, and the right edge
    std::vector<double> m_tops;         // of the page's rows, and the bottom edge
};

void SheetDrawing::draw(int number) {
    m_page = m_layout.pages()[size_t(number - 1)];
    m_face = nullptr;
    m_painter.save();
    const QRectF body = m_layout.body();
    m_painter.setClipRect(body.adjusted(-LineWidth, -LineWidth, LineWidth, LineWidth));
    m_painter.translate(body.topLeft());
    m_painter.scale(m_layout.scale(), m_layout.scale());
    if (m_page.lastRow >= m_page.firstRow) {
        placeCells();
        drawHeads();
        drawCells();
        drawFrame();
    }
    m_painter.restore();
    drawLine(m_grid.PrintHeader(), number, body.top() / 2);
    drawLine(m_grid.PrintFooter(), number, (body.bottom() + m_paper.height()) / 2);
}

void SheetDrawing::placeCells() {
    m_lefts = {m_layout.width(0)};
    for (int col = m_page.firstCol; col <= m_page.lastCol; ++col)
        m_lefts.push_back(m_lefts.back() + m_layout.width(col));
    m_tops = {m_layout.height(0) - m_page.skipped};
    for (int row = m_page.firstRow; row <= m_page.lastRow; ++row)
        m_tops.push_back(m_tops.back() + m_layout.height(row));
}

// The part of a span that is on this page.
QRectF SheetDrawing::spanRect(const CellSpan& span) const {
    const int firstCol = std::max(span.col, m_page.firstCol);
    const int lastCol = std::min(span.col + span.cols - 1, m_page.lastCol);
    const int firstRow = std::max(span.row, m_page.firstRow);
    const int lastRow = std::min(span.row + span.rows - 1, m_page.lastRow);
    return QRectF(QPointF(left(firstCol), top(firstRow)),
                  QPointF(left(lastCol + 1), top(lastRow + 1)));
}

void SheetDrawing::drawHeads() {
    const double width = m_layout.width(0);
    const double height = m_layout.height(0);
    if (height > 0) {
        if (width > 0) drawHead(0, 0, {0, 0, width, height});
        for (int col = m_page.firstCol; col <= m_page.lastCol; ++col)
            drawHead(col, 0, {left(col), 0, m_layout.width(col), height});
        // A row that continues from the page before must not cover the heads.
        const QRectF rest(-LineWidth, height, left(m_page.lastCol) + m_paper.width(),
                          m_layout.body().height());
        m_painter.setClipRect(rest, Qt::IntersectClip);
    }
    if (width <= 0) return;
    for (int row = m_page.firstRow; row <= m_page.lastRow; ++row)
        drawHead(0, row, {0, top(row), width, m_layout.height(row)});
}

void SheetDrawing::drawHead(int col, int row, const QRectF& rect) {
    if (rect.isEmpty()) return;
    CellFormat format = m_grid.formatAt(m_layout.sheet(), col, row);
    format.fontBold = true;
    if (m_grid.PrintShadows()) m_painter.fillRect(rect, HeadGround);
    drawGround(format, rect, col, row);
    QString text = m_grid.textAt(m_layout.sheet(), col, row);
    if (!text.isEmpty()) drawText(col, row, format, rect);
}

void SheetDrawing::drawCells() {
    const int sheet = m_layout.sheet();
    // Each cell of the page is looked at three times.
    std::vector<CellFormat> formats;
    for (int row = m_page.firstRow; row <= m_page.lastRow; ++row)
        for (int col = m_page.firstCol; col <= m_page.lastCol; ++col)
            formats.push_back(m_grid.formatAt(sheet, col, row));
    const auto eachCell = [&](const auto& visit) {
        auto format = formats.cbegin();
        for (int row = m_page.firstRow; row <= m_page.lastRow; ++row)
            for (int col = m_page.firstCol; col <= m_page.lastCol; ++col, ++format)
                if (m_layout.height(row) > 0 && m_layout.width(col) > 0) visit(col, row, *format);
    };
    // A span is drawn with its first cell on the page.
    const auto eachPlace = [&](const auto& draw) {
        eachCell([&](int col, int row, const CellFormat& format) {
            const CellSpan* span = m_layout.spanAt(col, row);
            if (!span) {
                draw(format, cellRect(col, row), col, row);
            } else if (col == std::max(span->col, m_page.firstCol) &&
                       row == std::max(span->row, m_page.firstRow)) {
                draw(m_grid.formatAt(sheet, span->col, span->row), spanRect(*span), span->col,
                     span->row);
            }
        });
    };
    eachPlace([&](const CellFormat& format, const QRectF& rect, int col, int row) {
        if (!rect.isEmpty()) drawGround(format, rect, col, row);
    });
    eachCell([&](int col, int row, const CellFormat& format) { drawBorders(format, col, row); });
    eachPlace([&](const CellFormat& format, const QRectF& rect, int col, int row) {
        if (!rect.isEmpty()) drawText(col, row, format, rect);
    });
}

void SheetDrawing::drawGround(const CellFormat& format, const QRectF& rect, int col, int row) {
    if (m_grid.PrintColor() && format.backColor != White)
        m_painter.fillRect(rect, screenColour(format.backColor));
    if (m_grid.PrintGrid()) {
        m_painter.setPen(QPen(GridLine, LineWidth / 2));
        m_painter.drawRect(rect);
    }
    const QByteArray file = m_grid.pictureAt(m_layout.sheet(), col, row);
    if (file.isEmpty()) return;
    QPixmap pixmap;
    if (!pixmap.loadFromData(file)) return;
    const QRectF room = rect.adjusted(LineWidth, LineWidth, -LineWidth, -LineWidth);
    QRectF place(QPointF(), QSizeF(pixmap.size()).scaled(room.size(), Qt::KeepAspectRatio));
    place.moveCenter(room.center());
    m_painter.drawPixmap(place, pixmap, QRectF(pixmap.rect()));
}

void SheetDrawing::drawBorders(const CellFormat& format, int col, int row) {
    const CellSpan* span = m_layout.spanAt(col, row);
    const QRectF rect = cellRect(col, row);
    const auto line = [&](const CellBorder& border, bool inside, QPointF from, QPointF to) {
        if (border.style == BorderStyle::None || inside) return;
        m_painter.setPen(
            QPen(m_grid.PrintColor() ? screenColour(border.colour) : Qt::black, LineWidth));
        m_painter.drawLine(from, to);
    };
    line(format.left, span && col > span->col, rect.topLeft(), rect.bottomLeft());
    line(format.top, span && row > span->row, rect.topLeft(), rect.topRight());
    line(format.right, span && col < span->col + span->cols - 1, rect.topRight(),
         rect.bottomRight());
    line(format.bottom, span && row < span->row + span->rows - 1, rect.bottomLeft(),
         rect.bottomRight());
}

void SheetDrawing::drawFrame() {
    if (!m_grid.PrintBorder()) return;
    m_painter.setPen(QPen(Qt::black, LineWidth));
    const double bottom = std::min(m_tops.back(), m_layout.body().height() / m_layout.scale());
    m_painter.drawRect(QRectF(QPointF(0, 0), QPointF(m_lefts.back(), bottom)));
}

// Texts run over into empty neighbours, as on the screen, and past the last column with data.
QRectF SheetDrawing::overflowRect(int col, int row, HAlign align, double wanted,
                                  QRectF rect) const {
    const auto room = [&](int step, double enough) {
        double found = 0;
        for (int next = col + step; next >= m_page.firstCol && found < enough; next += step) {
            if (next > m_page.lastCol) {
                const double edge = m_layout.body().width() / m_layout.scale();
                return std::max(found, edge - rect.right());
            }
            if (!takesOverflow(m_grid, m_layout.sheet(), next, row)) break;
            found += m_layout.width(next);
        }
        return found;
    };
    const double lacking = wanted - rect.width();
    if (align == HAlign::Left) rect.setRight(rect.right() + room(1, lacking));
    if (align == HAlign::Right) rect.setLeft(rect.left() - room(-1, lacking));
    if (align == HAlign::Centre) {
        // What has no room on one side goes to the other.
        const auto grow = [&](int step, double by) { return std::min(room(step, by), by); };
        const double left = grow(-1, lacking / 2);
        const double right = grow(1, lacking - left);
        rect.adjust(-grow(-1, lacking - right), 0, right, 0);
    }
    return rect;
}

void SheetDrawing::drawText(int col, int row, const CellFormat& format, const QRectF& cell) {
    const QString text = withLineEnds(m_grid.textAt(m_layout.sheet(), col, row));
    if (text.isEmpty() || format.kind == CellKind::Picture) return;
    const PrintFace& face = m_faces.of(format);
    const double padding = PrintLayout::padding(cell.width());
    QRectF rect = cell.adjusted(padding, 0, -padding, 0);
    const double wanted = face.widthOf(text);
    const bool lines = text.contains(QLatin1Char('\n'));
    const bool single = row > 0 && !m_layout.spanAt(col, row);
    int flags = format.hAlign == HAlign::Left    ? Qt::AlignLeft
                : format.hAlign == HAlign::Right ? Qt::AlignRight
                                                 : Qt::AlignHCenter;
    const bool overflows = m_grid.AllowCellOverflow() && !lines;
    if (overflows && single && wanted > rect.width())
        rect = overflowRect(col, row, format.hAlign, wanted, rect);
    // A text is set narrower before it is cut between filled neighbours, or breaks into lines.
    const double fitting = wanted > 0 ? rect.width() / wanted : 1;
    const double stretch = overflows ? std::clamp(fitting, LeastStretch, 1.0) : 1;
    if (lines || (fitting < stretch && !(overflows && single))) {
        flags |= face.wrapFlags(text, rect.width() / stretch) | Qt::AlignTop;
        rect.adjust(0, LineWidth, 0, 0);
    } else {
        flags |= Qt::TextSingleLine | Qt::AlignVCenter;
    }
    const bool coloured = m_grid.PrintColor() && format.hasForeColor;
    const QColor colour = coloured ? screenColour(format.foreColor) : QColor(Qt::black);
    if (stretch == 1 && isOneLine(text) && wanted <= rect.width() &&
        face.metrics.height() <= rect.height()) {
        drawFitting(face, colour, format.hAlign, rect, text);
        return;
    }
    m_painter.save();
    if (wanted * stretch > rect.width() + 1) m_painter.setClipRect(rect, Qt::IntersectClip);
    m_painter.setFont(face.font);
    m_painter.setPen(colour);
    m_painter.translate(rect.topLeft());
    m_painter.scale(stretch, 1);
    m_painter.drawText(QRectF(0, 0, rect.width() / stretch, rect.height()), flags, text);
    m_painter.restore();
}

// Draws a text in the middle of a cell that has room for it. This is what most cells need, and
// takes the least: no painter state is saved, and the text is not measured again.
void SheetDrawing::drawFitting(const PrintFace& face, const QColor& colour, HAlign align,
                               const QRectF& rect, const QString& text) {
    const double spare = rect.width() - face.widthOf(text);
    const double left = align == HAlign::Left ? 0 : align == HAlign::Right ? spare : spare / 2;
    const double top = (rect.height() - face.metrics.height()) / 2;
    // To the painter even the same font is a new one.
    if (m_face != &face) m_painter.setFont(face.font);
    m_face = &face;
    m_painter.setPen(colour);
    m_painter.drawText(rect.topLeft() + QPointF(left, top + face.metrics.ascent()), text);
}

// Draws a header or footer. What follows "/c" is centred, the rest is at the left.
void SheetDrawing::drawLine(const QString& codes, int number, double middle) {
    if (codes.isEmpty()) return;
    QString atLeft;
    QString centred;
    QString* part = &atLeft;
    for (qsizetype i = 0; i < codes.size();) {
        const QStringView rest = QStringView(codes).mid(i);
        if (rest.startsWith(QLatin1String("/pc"))) {
            *part += QString::number(pageCount());
            i += 3;
        } else if (rest.startsWith(QLatin1String("/p"))) {
            *part += QString::number(number);
            i += 2;
        } else if (rest.startsWith(QLatin1String("/c"))) {
            part = &centred;
            i += 2;
        } else {
            *part += codes[i++];
        }
    }
    const PrintFace& face = m_faces.of({});
    const QRectF body = m_layout.body();
    const double height = face.metrics.height();
    const QRectF rect(body.left(), middle - height / 2, body.width(), height);
    m_painter.setFont(face.font);
    m_painter.setPen(Qt::black);
    m_painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, atLeft);
    m_painter.drawText(rect, Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine, centred);
}

}  // namespace

bool drawSheet(QPagedPaintDevice& device, const SheetGrid& grid) {
    QPainter painter;
    if (!painter.begin(&device)) return false;
    return drawSheet(painter, device, grid, [] {}) && painter.end();
}

bool drawSheet(QPainter& painter, QPagedPaintDevice& device, const SheetGrid& grid,
               const std::function<void()>& pageDrawn) {
    const double scale = double(device.logicalDpiX()) / TwipsPerInch;
    const QSizeF paper = device.pageLayout().fullRect(QPageLayout::Inch).size() * TwipsPerInch;
    SheetDrawing drawing(painter, grid, paper);
    for (int number = 1; number <= drawing.pageCount(); ++number) {
        if (number > 1 && !device.newPage()) return false;
        painter.save();
        painter.scale(scale, scale);
        drawing.draw(number);
        painter.restore();
        pageDrawn();
    }
    return true;
}
