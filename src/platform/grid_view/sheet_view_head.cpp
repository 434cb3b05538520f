// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/sheet_view_head.h"

#include "platform/desktop/whole_text.h"
#include "platform/grid_view/sheet_view_paint.h"
#include "platform/theme/theme.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int OrderWidth = 14;  // pixels

}  // namespace

SheetHead::SheetHead(Qt::Orientation orientation, const SheetGrid& grid, QWidget* parent)
    : QHeaderView(orientation, parent), m_grid(grid) {
    setMinimumSectionSize(5);
    setSectionsClickable(true);
    setHighlightSections(false);
    setSectionResizeMode(orientation == Qt::Horizontal ? Interactive : Fixed);
    connect(this, &QHeaderView::sectionResized, this, [this] { m_resized = true; });
    // Not emitted if the press begins to drag a border.
    connect(this, &QHeaderView::sectionPressed, this, [this](int section) { m_pressed = section; });
}

QSize SheetHead::sizeHint() const {
    const int sheet = m_grid.ActiveSheet();
    if (orientation() == Qt::Horizontal) return {0, pixelsOfPoints(m_grid.heightOf(sheet, 0))};
    return {int(std::lround(m_grid.widthOf(sheet, 0) * pixelsPerUnit())), 0};
}

void SheetHead::paintEvent(QPaintEvent* event) {
    Q_EMIT aboutToPaint();
    QPainter painter(viewport());
    const ThemeColours& colours = themeColours(palette());
    const QRect dirty = event->rect();
    const bool across = orientation() == Qt::Horizontal;
    painter.fillRect(dirty, across ? colours.head : colours.base);
    if (!across) painter.fillRect(0, 0, width(), length() - offset(), colours.head);
    const int from = across ? dirty.left() : dirty.top();
    const int to = across ? dirty.right() : dirty.bottom();
    const int first = std::max(visualIndexAt(std::min(from, to)), 0);
    for (int visual = first; visual < count(); ++visual) {
        const int section = logicalIndex(visual);
        if (isSectionHidden(section)) continue;
        const int place = sectionViewportPosition(section);
        if (!isRightToLeft() && place > to) break;
        const QRect rect = across ? QRect(place, 0, sectionSize(section), height())
                                  : QRect(0, place, width(), sectionSize(section));
        if (rect.intersects(dirty)) paintHead(painter, section, rect);
    }
    if (across)
        painter.fillRect(0, height() - 1, width(), 1, colours.line);
    else
        painter.fillRect(width() - 1, 0, 1, length() - offset(), colours.line);
}

void SheetHead::paintHead(QPainter& painter, int section, const QRect& rect) const {
    const ThemeColours& colours = themeColours(palette());
    const bool across = orientation() == Qt::Horizontal;
    const int col = across ? section + 1 : 0;
    const int row = across ? 0 : section + 1;
    const CellFormat format = m_grid.formatAt(m_grid.ActiveSheet(), col, row);
    const bool plain = format.backColor == White;
    if (!plain) painter.fillRect(rect, screenColour(format.backColor));
    const int shorter = plain ? 6 : 0;
    if (across)
        painter.fillRect(rect.right(), rect.top() + shorter, 1, rect.height() - 2 * shorter,
                         colours.line);
    else
        painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, colours.line);
    painter.setPen(plain ? colours.text : themeColours(false).text);
    if (across && col == orderedCol()) paintOrder(painter, rect);
    const QString text = m_grid.textAt(m_grid.ActiveSheet(), col, row);
    if (text.isEmpty()) return;
    painter.setFont(headFont());
    const QRect room = textRoom(section, rect);
    const bool centred =
        across && m_grid.formatAt(m_grid.ActiveSheet(), col, 1).hAlign == HAlign::Centre;
    painter.drawText(room, int(centred ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter),
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
}

QFont SheetHead::headFont() const {
    QFont font = this->font();
    font.setWeight(QFont::DemiBold);
    return font;
}

QRect SheetHead::textRoom(int section, const QRect& rect) const {
    const bool ordered = orientation() == Qt::Horizontal && section + 1 == orderedCol();
    const int arrow = ordered ? OrderWidth : 0;
    return isRightToLeft() ? rect.adjusted(CellPadding + arrow, 0, -CellPadding, 0)
                           : rect.adjusted(CellPadding, 0, -CellPadding - arrow, 0);
}

// What a double click on its border gives a column at least.
QSize SheetHead::sectionSizeFromContents(int section) const {
    const QString text = m_grid.textAt(m_grid.ActiveSheet(), section + 1, 0);
    const int room =
        sectionSize(section) - textRoom(section, QRect(0, 0, sectionSize(section), 1)).width();
    return {QFontMetrics(headFont()).horizontalAdvance(text) + room, height()};
}

// A triangle: upwards for an ascending order.
void SheetHead::paintOrder(QPainter& painter, const QRect& rect) const {
    const int middle = isRightToLeft() ? rect.left() + CellPadding + OrderWidth / 2
                                       : rect.right() - CellPadding - OrderWidth / 2;
    const QPointF at(middle, rect.center().y() + 0.5);
    const double rise = m_order == SortOrder::Ascending ? 2.5 : -2.5;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(painter.pen().color());
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(
        QPolygonF({at + QPointF(-4, rise), at + QPointF(4, rise), at + QPointF(0, -rise)}));
    painter.restore();
}

void SheetHead::setOrder(int col, SortOrder order) {
    if (m_orderedCol == col && m_order == order) return;
    m_orderedCol = col;
    m_order = order;
    viewport()->update();
}

bool SheetHead::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const int section = sectionAt(help.pos());
    const bool across = orientation() == Qt::Horizontal;
    const QString text = section < 0 ? QString()
                                     : m_grid.textAt(m_grid.ActiveSheet(), across ? section + 1 : 0,
                                                     across ? 0 : section + 1);
    const int size = section < 0 ? 0 : sectionSize(section);
    const QRect rect = across ? QRect(0, 0, size, height()) : QRect(0, 0, width(), size);
    const bool cut =
        QFontMetrics(headFont()).horizontalAdvance(text) > textRoom(section, rect).width();
    showWholeText(help.globalPos(), cut ? text : QString(), *viewport());
    return true;
}

int SheetHead::sectionAt(const QPoint& place) const {
    return logicalIndexAt(orientation() == Qt::Horizontal ? place.x() : place.y());
}

void SheetHead::mousePressEvent(QMouseEvent* event) {
    Q_EMIT aboutToAct();
    m_resized = false;
    m_rightReported = false;
    const int section = sectionAt(event->position().toPoint());
    m_pressed = -1;
    m_rightPressed = event->button() == Qt::RightButton ? section : -1;
    QHeaderView::mousePressEvent(event);
}

void SheetHead::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<SheetHead> alive(this);
    QHeaderView::mouseReleaseEvent(event);
    const bool dragged = m_resized;
    Q_EMIT aboutToAct();
    if (!alive) return;
    const QPoint place = event->position().toPoint();
    const int section = sectionAt(place);
    const int pressed = std::exchange(m_pressed, -1);
    const int rightPressed = std::exchange(m_rightPressed, -1);
    Q_EMIT buttonReleased(event);
    if (!alive || section < 0) return;
    if (event->button() == Qt::LeftButton && section == pressed && !dragged) {
        Q_EMIT clicked(section);
    } else if (event->button() == Qt::RightButton && section == rightPressed &&
               !std::exchange(m_rightReported, true)) {
        Q_EMIT rightClicked(section, place);
    }
}

// A right click comes as button events, as a context menu event, or as both.
void SheetHead::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    Q_EMIT aboutToAct();
    const int section = sectionAt(event->pos());
    if (section < 0) return;
    const bool pressing = m_rightPressed >= 0;
    if (std::exchange(m_rightReported, pressing)) return;
    Q_EMIT rightClicked(section, event->pos());
}
