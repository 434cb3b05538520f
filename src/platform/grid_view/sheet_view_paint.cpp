// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/sheet_view_paint.h"

#include "platform/desktop/whole_text.h"
#include "platform/theme/theme.h"
#include "platform/theme/theme_paint.h"

#include <QPainter>

#include <algorithm>
#include <set>
#include <utility>

namespace {

constexpr int LinesPadding = 8;
constexpr int NarrowPadding = 2;
constexpr int NarrowColumn = 40;
constexpr int HandleWidth = 22;
constexpr int ButtonWidth = 28;
constexpr int MaxPictures = 64;
constexpr int MaxShown = 8192;  // characters; no screen is wider
constexpr double ReadableContrast = 4.5;

int paddingOf(const QRect& cell) {
    return cell.width() < NarrowColumn ? NarrowPadding : CellPadding;
}

// The part of a text that can be visible, with "\n" as line ends.
QString shown(QString text) {
    text.truncate(MaxShown);
    return withLineEnds(text);
}

}  // namespace

struct SheetPainter::Pass {
    QPainter& painter;
    const SheetLook& look;
    const ThemeColours& colours;
    int sheet;
    int firstRow;
    int lastRow;
    int firstCol;
    int lastCol;
    int cols;

    // The active row of a list has the accent colour, except cells with their own background.
    bool standsOut(int row, const CellFormat& format) const {
        return look.list && row == look.activeRow && format.backColor == White;
    }
};

void SheetPainter::paint(QPainter& painter, const QRect& dirty, const SheetLook& look) {
    const ThemeColours& colours = themeColours(m_view.palette());
    painter.fillRect(dirty, colours.base);
    const int rows = m_view.model()->rowCount();
    const int cols = m_view.model()->columnCount();
    if (rows == 0 || cols == 0) return;
    const int lastRow = m_view.rowAt(dirty.bottom());
    const int rightmost = m_view.columnAt(dirty.right());
    const int leftmost = m_view.columnAt(dirty.left());
    // Beside the columns is where the last one ends, on the left from right to left.
    const int edge = cols - 1;
    Pass pass{painter,
              look,
              colours,
              m_grid.ActiveSheet(),
              m_view.rowAt(dirty.top()) + 1,
              (lastRow < 0 ? rows - 1 : lastRow) + 1,
              (leftmost < 0 ? edge : leftmost) + 1,
              (rightmost < 0 ? edge : rightmost) + 1,
              cols};
    if (pass.firstRow < 1) return;  // below the last row
    if (pass.firstCol > pass.lastCol) std::swap(pass.firstCol, pass.lastCol);
    paintGrounds(pass);
    paintBorders(pass);
    for (int row = pass.firstRow; row <= pass.lastRow; ++row) {
        if (!m_view.isRowHidden(row - 1)) paintTexts(pass, row);
    }
    paintActive(pass);
}

QRect SheetPainter::cellRect(int col, int row) const {
    return QRect(m_view.columnViewportPosition(col - 1), m_view.rowViewportPosition(row - 1),
                 m_view.columnWidth(col - 1), m_view.rowHeight(row - 1));
}

void SheetPainter::paintGrounds(Pass& pass) {
    std::set<std::pair<int, int>> painted;  // spans' anchors
    for (int row = pass.firstRow; row <= pass.lastRow; ++row) {
        if (m_view.isRowHidden(row - 1)) continue;
        for (int col = pass.firstCol; col <= pass.lastCol; ++col) {
            if (m_view.isColumnHidden(col - 1)) continue;
            const CellSpan span = m_grid.spanAt(pass.sheet, col, row);
            if (span.cols == 0) {
                paintGround(pass, col, row, cellRect(col, row));
            } else if (painted.emplace(span.col, span.row).second) {
                const QModelIndex anchor = m_view.model()->index(span.row - 1, span.col - 1);
                paintGround(pass, span.col, span.row, m_view.visualRect(anchor));
            }
        }
    }
}

void SheetPainter::paintGround(Pass& pass, int col, int row, const QRect& rect) {
    const CellFormat format = m_grid.formatAt(pass.sheet, col, row);
    const ThemeColours& colours = pass.colours;
    QColor ground = screenColour(format.backColor);
    if (format.backColor == White) {
        ground = pass.look.list && row % 2 == 0 ? colours.alternate : colours.base;
    }
    if (pass.standsOut(row, format)) {
        ground = colours.accent;
    } else if (!pass.look.list && !(col == pass.look.activeCol && row == pass.look.activeRow) &&
               m_view.selectionModel()->isSelected(m_view.model()->index(row - 1, col - 1))) {
        ground = blend(ground, colours.accent, 0.16);
    }
    pass.painter.fillRect(rect, ground);
    const QColor line = pass.standsOut(row, format) ? ground : colours.line;
    if (m_grid.GridShowHoriz()) {
        pass.painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), line);
    }
    if (m_grid.GridShowVert()) {
        pass.painter.fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), line);
    }
    const QByteArray file = m_grid.pictureAt(pass.sheet, col, row);
    if (!file.isEmpty()) {
        const QPixmap pixmap = picture(file);
        const QRect room = rect.adjusted(2, 2, -3, -3);
        const QSize size =
            pixmap.deviceIndependentSize().toSize().scaled(room.size(), Qt::KeepAspectRatio);
        QRect place(QPoint(), size);
        place.moveCenter(room.center());
        pass.painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (!pixmap.isNull()) pass.painter.drawPixmap(place, pixmap);
    }
    paintHandle(pass, format, handleRect(format, rect, pass.look.list));
}

QRect SheetPainter::handleRect(const CellFormat& format, const QRect& cell, bool list) const {
    const bool opens = format.kind == CellKind::Combo || format.kind == CellKind::Date;
    if (format.kind != CellKind::Button && (list || !opens)) return {};
    const int width = opens ? HandleWidth : ButtonWidth;
    if (cell.width() < 2 * width) return {};
    QRect handle = cell.adjusted(0, 0, -1, -1);
    if (m_view.isRightToLeft()) {
        handle.setWidth(width);
    } else {
        handle.setLeft(handle.right() - width + 1);
    }
    return handle;
}

void SheetPainter::paintHandle(Pass& pass, const CellFormat& format, const QRect& handle) {
    if (handle.isEmpty()) return;
    const QColor ink = format.backColor == White ? pass.colours.muted : QColor(Qt::black);
    if (format.kind != CellKind::Button) {
        paintChevron(pass.painter, handle, ink);
        return;
    }
    const QRectF button = QRectF(handle).adjusted(2.5, 2.5, -2.5, -2.5);
    pass.painter.save();
    pass.painter.setRenderHint(QPainter::Antialiasing);
    pass.painter.setPen(pass.colours.line);
    pass.painter.setBrush(pass.colours.button);
    pass.painter.drawRoundedRect(button, 3, 3);
    pass.painter.setPen(Qt::NoPen);
    pass.painter.setBrush(pass.colours.text);
    for (const int step : {-1, 0, 1}) {
        pass.painter.drawEllipse(button.center() + QPointF(5 * step, 0), 1.3, 1.3);
    }
    pass.painter.restore();
}

void SheetPainter::paintBorders(Pass& pass) {
    for (int row = pass.firstRow; row <= pass.lastRow; ++row) {
        if (m_view.isRowHidden(row - 1)) continue;
        for (int col = pass.firstCol; col <= pass.lastCol; ++col) {
            if (m_view.isColumnHidden(col - 1)) continue;
            const CellFormat format = m_grid.formatAt(pass.sheet, col, row);
            const CellSpan span = m_grid.spanAt(pass.sheet, col, row);
            const bool joined = span.cols > 0;
            const QRect rect = cellRect(col, row);
            const auto line = [&](const CellBorder& border, bool inside, const QRect& place) {
                if (border.style == BorderStyle::None || inside) return;
                const bool plainInk = border.colour == Black && format.backColor == White;
                pass.painter.fillRect(place,
                                      plainInk ? pass.colours.text : screenColour(border.colour));
            };
            line(format.left, joined && col > span.col,
                 QRect(rect.left(), rect.top(), 1, rect.height()));
            line(format.top, joined && row > span.row,
                 QRect(rect.left(), rect.top(), rect.width(), 1));
            line(format.right, joined && col < span.col + span.cols - 1,
                 QRect(rect.right(), rect.top(), 1, rect.height()));
            line(format.bottom, joined && row < span.row + span.rows - 1,
                 QRect(rect.left(), rect.bottom(), rect.width(), 1));
        }
    }
}

void SheetPainter::paintTexts(Pass& pass, int row) {
    int first = pass.firstCol;
    int last = pass.lastCol;
    if (m_grid.AllowCellOverflow()) {
        // The nearest text on either side may run over into this area.
        while (first > 1 && takesOverflow(m_grid, pass.sheet, first, row)) --first;
        while (last < pass.cols && takesOverflow(m_grid, pass.sheet, last, row)) ++last;
    }
    std::pair<int, int> painted{0, 0};
    for (int col = first; col <= last; ++col) {
        if (m_view.isColumnHidden(col - 1)) continue;
        int anchorCol = col;
        int anchorRow = row;
        const CellSpan span = m_grid.spanAt(pass.sheet, col, row);
        if (span.cols > 0) {
            anchorCol = span.col;
            anchorRow = span.row;
            if (painted == std::pair(anchorCol, anchorRow)) continue;
            painted = {anchorCol, anchorRow};
            // The text of a span is painted with the first of its rows that is painted.
            if (row != std::max(anchorRow, pass.firstRow)) continue;
        }
        const QString text = shown(m_grid.textAt(pass.sheet, anchorCol, anchorRow));
        if (text.isEmpty()) continue;
        const CellFormat format = m_grid.formatAt(pass.sheet, anchorCol, anchorRow);
        if (format.kind != CellKind::Picture) paintText(pass, anchorCol, anchorRow, format, text);
    }
}

QRect SheetPainter::overflowRect(int col, int row, HAlign align, int wanted, QRect rect) const {
    const int cols = m_view.model()->columnCount();
    const auto lacking = [&] { return wanted - rect.width(); };
    const auto grow = [&](int step, int enough) {
        const bool towardsRight = (step > 0) != m_view.isRightToLeft();
        for (int next = col + step; next >= 1 && next <= cols && enough > 0; next += step) {
            if (m_view.isColumnHidden(next - 1)) continue;
            if (!takesOverflow(m_grid, m_grid.ActiveSheet(), next, row)) break;
            const int width = m_view.columnWidth(next - 1);
            enough -= width;
            if (towardsRight) {
                rect.setRight(rect.right() + width);
            } else {
                rect.setLeft(rect.left() - width);
            }
        }
    };
    if (align == HAlign::Left) grow(1, lacking());
    if (align == HAlign::Right) grow(-1, lacking());
    if (align == HAlign::Centre) {
        const int half = (lacking() + 1) / 2;
        grow(1, half);
        grow(-1, half);
    }
    return rect;
}

QColor SheetPainter::textColour(const Pass& pass, int row, const CellFormat& format) const {
    const ThemeColours& colours = pass.colours;
    if (pass.standsOut(row, format)) return colours.accentText;
    const bool plainGround = format.backColor == White;
    if (!format.hasForeColor) return plainGround ? colours.text : themeColours(false).text;
    const QColor wanted = screenColour(format.foreColor);
    // A colour that was chosen for white has to be readable on a dark background.
    if (plainGround && contrast(wanted, colours.base) < ReadableContrast &&
        contrast(wanted, Qt::white) >= ReadableContrast) {
        return wanted.saturation() < 40 ? colours.text : blend(wanted, Qt::white, 0.55);
    }
    return wanted;
}

SheetPainter::Placed SheetPainter::place(const SheetLook& look, int col, int row,
                                         const CellFormat& format, const QString& text) {
    const QFontMetrics& metrics = face(format).metrics;
    const bool joined = m_grid.spanAt(m_grid.ActiveSheet(), col, row).cols > 0;
    const QRect cell = m_view.visualRect(m_view.model()->index(row - 1, col - 1));
    const int padding = paddingOf(cell);
    Placed placed;
    placed.rect = cell.adjusted(padding, 0, -padding, -1);
    const QRect handle = handleRect(format, cell, look.list);
    if (!handle.isEmpty()) {
        if (m_view.isRightToLeft()) {
            placed.rect.setLeft(handle.right() + 1);
        } else {
            placed.rect.setRight(handle.left() - 1);
        }
    }
    placed.clip = placed.rect;
    const bool wraps = col == look.wrapCol;
    placed.lines = wraps || text.contains(QLatin1Char('\n'));
    if (placed.lines) {
        const QSize size = metrics
                               .boundingRect(QRect(0, 0, placed.rect.width(), 0),
                                             wraps ? Qt::TextWordWrap : 0, text)
                               .size();
        placed.cut = size.width() > placed.rect.width() || size.height() > placed.rect.height();
        return placed;
    }
    const int wanted = metrics.horizontalAdvance(text) + 1;
    if (wanted <= placed.rect.width()) return placed;
    if (m_grid.AllowCellOverflow() && !joined && handle.isEmpty()) {
        placed.runsOver = true;
        placed.clip = overflowRect(col, row, format.hAlign, wanted, placed.rect);
        const int middle = placed.rect.center().x();
        placed.rect = placed.clip;
        if (format.hAlign == HAlign::Centre) {
            // The text stays centred in its cell when it runs over.
            placed.rect.setLeft(middle - wanted / 2);
            placed.rect.setWidth(wanted);
        }
    }
    placed.cut = wanted > placed.clip.width();
    return placed;
}

QString SheetPainter::cutText(int col, int row, const SheetLook& look) {
    const QString text = shown(m_grid.textAt(m_grid.ActiveSheet(), col, row));
    const CellFormat format = m_grid.formatAt(m_grid.ActiveSheet(), col, row);
    if (text.isEmpty() || format.kind == CellKind::Picture) return {};
    return place(look, col, row, format, text).cut ? text : QString();
}

void SheetPainter::paintText(Pass& pass, int col, int row, const CellFormat& format,
                             const QString& text) {
    if (col == pass.look.editCol && row == pass.look.editRow) return;  // its editor shows it
    const Face& type = face(format);
    const Placed placed = place(pass.look, col, row, format, text);
    const QString visible = placed.cut && !placed.lines && !placed.runsOver
                                ? elidedText(type.metrics, text, placed.rect.width())
                                : text;
    int flags = format.hAlign == HAlign::Left    ? Qt::AlignLeft
                : format.hAlign == HAlign::Right ? Qt::AlignRight
                                                 : Qt::AlignHCenter;
    const bool wraps = col == pass.look.wrapCol;
    flags |= wraps ? int(Qt::TextWordWrap) : placed.lines ? 0 : int(Qt::TextSingleLine);
    const int lineCount = int(text.count(QLatin1Char('\n'))) + 1;
    flags |= lineCount * type.metrics.lineSpacing() > placed.rect.height() && placed.lines
                 ? Qt::AlignTop
                 : Qt::AlignVCenter;
    pass.painter.save();
    pass.painter.setClipRect(placed.clip.adjusted(-1, 0, 1, 1), Qt::IntersectClip);
    pass.painter.setFont(type.font);
    pass.painter.setPen(textColour(pass, row, format));
    pass.painter.drawText(
        placed.rect,
        QStyle::visualAlignment(m_view.layoutDirection(), Qt::Alignment(flags & 0xff)) |
            (flags & ~0xff),
        visible);
    pass.painter.restore();
}

void SheetPainter::paintActive(Pass& pass) {
    const QModelIndex active =
        m_view.model()->index(pass.look.activeRow - 1, pass.look.activeCol - 1);
    if (!active.isValid()) return;
    const QRect rect = m_view.visualRect(active);
    if (rect.isEmpty()) return;
    pass.painter.save();
    pass.painter.setRenderHint(QPainter::Antialiasing, false);
    const int width = pass.look.focus ? 2 : 1;
    if (!pass.look.list) {
        paintEdges(pass.painter, rect, pass.colours.accent, width);
    } else if (!pass.standsOut(pass.look.activeRow, m_grid.formatAt(pass.sheet, pass.look.activeCol,
                                                                    pass.look.activeRow))) {
        paintEdges(pass.painter, rect.adjusted(0, 0, -1, -1), themeColours(false).accent, width);
    } else if (pass.look.focus) {
        paintEdges(pass.painter, rect.adjusted(1, 1, -2, -2),
                   blend(pass.colours.accent, pass.colours.accentText, 0.6));
    }
    pass.painter.restore();
}

const SheetPainter::Face& SheetPainter::face(const CellFormat& format) {
    if (m_facesFor != m_view.font()) {
        m_faces.clear();
        m_facesFor = m_view.font();
    }
    const QString key = format.fontName + QLatin1Char('|') + QString::number(format.fontSize) +
                        QLatin1Char(format.fontBold ? 'b' : '-');
    const auto found = m_faces.constFind(key);
    if (found != m_faces.constEnd()) return *found;
    QFont font = m_facesFor;
    if (!format.fontName.isEmpty()) font.setFamily(format.fontName);
    if (format.fontSize > 0) font.setPointSizeF(format.fontSize);
    font.setBold(format.fontBold);
    return *m_faces.insert(key, Face{font, QFontMetrics(font)});
}

QPixmap SheetPainter::picture(const QByteArray& file) {
    const auto found = m_pictures.constFind(file.constData());
    if (found != m_pictures.constEnd() && found->file.size() == file.size()) return found->pixmap;
    if (m_pictures.size() >= MaxPictures) m_pictures.clear();
    QPixmap pixmap;
    pixmap.loadFromData(file);
    m_pictures.insert(file.constData(), {file, pixmap});
    return pixmap;
}

int SheetPainter::wrappedHeight(int col, int row, int width) {
    const int sheet = m_grid.ActiveSheet();
    const QString text = shown(m_grid.textAt(sheet, col, row));
    if (text.isEmpty()) return 0;
    const QRect room(0, 0, std::max(width - 2 * CellPadding, 1), 0);
    const QRect needed =
        face(m_grid.formatAt(sheet, col, row)).metrics.boundingRect(room, Qt::TextWordWrap, text);
    return needed.height() + LinesPadding;
}

int SheetPainter::wantedWidth(int col, int row) {
    const int sheet = m_grid.ActiveSheet();
    const CellFormat format = m_grid.formatAt(sheet, col, row);
    const QString text = shown(m_grid.textAt(sheet, col, row));
    const bool handle = format.kind == CellKind::Combo || format.kind == CellKind::Button ||
                        format.kind == CellKind::Date;
    return face(format).metrics.size(0, text).width() + 2 * CellPadding + 2 +
           (handle ? ButtonWidth : 0);
}
