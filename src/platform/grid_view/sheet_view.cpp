// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/sheet_view.h"

#include "platform/desktop/whole_text.h"
#include "platform/grid_view/sheet_view_parts.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

const QEvent::Type ShowChanges = QEvent::Type(QEvent::registerEventType());
constexpr int SmallestSection = 5;

int pixelsOfUnits(double units) { return int(std::lround(units * pixelsPerUnit())); }

}  // namespace

SheetView::SheetView(QWidget* parent) : QTableView(parent), m(std::make_unique<Parts>(*this)) {
    setUpHeads();
    setModel(&m->model);
    setItemDelegate(&m->delegate);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setEditTriggers(AnyKeyPressed | EditKeyPressed);
    setReadOnly(false);
    EditModeReplace(true);
    m->tabs->setShape(QTabBar::RoundedSouth);
    m->tabs->setDrawBase(false);
    m->tabs->setExpanding(false);
    m->tabs->setAccessibleName(QStringLiteral("Pages"));
    m->tabs->hide();
    setHorizontalScrollBar(m->pageBar);
    addScrollBarWidget(m->tabs, Qt::AlignLeft);
    connect(m->tabs, &QTabBar::currentChanged, this, &SheetView::tabPicked);
    connect(
        &m->delegate, &SheetDelegate::entered, this,
        [this](const EditedCell& cell, const QString& text) {
            const QPointer<SheetView> alive(this);
            m->entering = true;
            enter(cell.sheet, {{cell.col, cell.row, textAt(cell.sheet, cell.col, cell.row), text}});
            if (alive) m->entering = false;
        });
    m->delegate.setArrows([this](int cols, int rows) { return leaveByArrow(cols, rows); });
    connect(&m->delegate, &SheetDelegate::opened, viewport(), qOverload<>(&QWidget::update));
    connect(&m->delegate, &SheetDelegate::actedOutside, this, &SheetView::commitEdit);
    connect(m->findBar, &FindBar::searched, this, &SheetView::find);
    connect(m->findBar, &FindBar::closed, this, [this] { setFocus(Qt::OtherFocusReason); });
    becameDirty();
}

SheetView::~SheetView() {
    m->applying = true;
    m->delegate.forget();
    setModel(nullptr);
}

void SheetView::setUpHeads() {
    setHorizontalHeader(m->cols);
    setVerticalHeader(m->rows);
    for (SheetHead* head : {m->cols, m->rows}) {
        // The program handles clicks on heads; they select nothing.
        disconnect(head, &QHeaderView::sectionPressed, this, nullptr);
        disconnect(head, &QHeaderView::sectionEntered, this, nullptr);
        const bool across = head == m->cols;
        const auto cell = [across](int section) {
            return across ? Cell{section + 1, 0} : Cell{0, section + 1};
        };
        connect(head, &SheetHead::aboutToAct, this, [this] {
            commitEdit();
            flush();
        });
        connect(head, &SheetHead::aboutToPaint, this, &SheetView::flush);
        connect(head, &SheetHead::clicked, this,
                [this, cell](int section) { raiseClick(cell(section)); });
        connect(head, &SheetHead::rightClicked, this,
                [this, cell, head](int section, const QPoint& place) {
                    raiseRightClick(cell(section), head->viewport()->mapTo(this, place), false);
                });
        connect(head, &SheetHead::buttonReleased, this, [this, head](const QMouseEvent* event) {
            raiseMouseUp(*event, *head->viewport());
        });
    }
    connect(m->cols, &QHeaderView::sectionResized, this,
            [this](int section, int, int width) { colDragged(section + 1, width); });
}

void SheetView::setReadOnly(bool on) {
    m->model.setReadOnly(on);
    setTabKeyNavigation(!on);
    setSelectionBehavior(on ? SelectRows : SelectItems);
    setSelectionMode(on ? SingleSelection : ContiguousSelection);
    viewport()->update();
}

bool SheetView::isReadOnly() const { return m->model.isReadOnly(); }

void SheetView::setLocked(std::function<bool(int col, int row)> isLocked) {
    m->model.setLocked(std::move(isLocked));
}

void SheetView::setFillColumn(int col) {
    m->fillCol = col;
    becameDirty();
    m->spans.clear();
    m->layoutWanted = true;
}

void SheetView::setWrapColumn(int col) {
    m->wrapCol = col;
    m->layoutWanted = true;
    becameDirty();
}

void SheetView::setSpoken(std::function<QString(int col, int row)> spoken) {
    m->model.setSpoken(std::move(spoken));
}

void SheetView::setTypingStart(int col, int row) { m->typingStart = {col, row}; }

void SheetView::setClicksBelowRows(bool on) { m->clicksBelow = on; }

void SheetView::setColumnZoom(int col, double factor) {
    if (col == -1) {
        m->zoom = factor;
        m->colZooms.clear();
    } else {
        m->colZooms[col] = factor;
    }
    m->layoutWanted = true;
    becameDirty();
}

double SheetView::zoomOf(int col) const {
    const auto own = m->colZooms.find(col);
    return own == m->colZooms.end() ? m->zoom : own->second;
}

double SheetView::unitsOf(int col) const { return widthOf(ActiveSheet(), col) * zoomOf(col); }

int SheetView::columnPixels(int col) const { return pixelsOfUnits(unitsOf(col)); }

// --- Following the grid ------------------------------------------------------------------------

void SheetView::becameDirty() {
    m->pending = true;
    QCoreApplication::postEvent(this, new QEvent(ShowChanges));
}

void SheetView::flush() {
    if (!m->pending || m->applying) return;
    m->pending = false;
    // If the program makes another cell active, the user's text is taken over first.
    const bool leaves = m->delegate.editor() && !isActive(m->delegate.cell());
    const GridDirt dirt = takeDirt();
    {
        const QScopedValueRollback applying(m->applying, true);
        if (std::exchange(m->layoutWanted, false) || dirt.layout) {
            applyLayout();
            viewport()->update();
        } else if (dirt.firstRow <= dirt.lastRow) {
            m->model.announceRows(dirt.firstRow, dirt.lastRow);
            applyWrap(dirt.firstRow, dirt.lastRow);
        }
    }
    if (leaves) commitEdit();
    {
        const QScopedValueRollback applying(m->applying, true);
        applyActiveCell();
    }
    if (dirt.layout || dirt.firstRow <= dirt.lastRow) Q_EMIT ContentChanged();
}

void SheetView::applyLayout() {
    setUpdatesEnabled(false);
    dropLostEditor();
    m->model.resizeToGrid();
    applySpans();
    m->cols->setVisible(ColHeadersShow());
    m->rows->setVisible(RowHeadersShow());
    applyTabs();
    applySizes();
    settleScrollBars();
    applyFill();
    if (m->fillCol != 0) settleScrollBars();
    applyWrap(1, m->model.rowCount());
    setUpdatesEnabled(true);
    m->cols->viewport()->update();
    m->rows->viewport()->update();
}

// An editor stays open as long as its cell is on view, is active, and holds the text that the user
// began with; otherwise the program has written something else there.
void SheetView::dropLostEditor() {
    QWidget* editor = m->delegate.editor();
    if (!editor) return;
    const EditedCell& cell = m->delegate.cell();
    // While the user's own text is being taken over, the editor decides where the cursor goes next.
    const bool there = cell.sheet == ActiveSheet() && isActive(cell) &&
                       (m->entering || textAt(cell.sheet, cell.col, cell.row) == cell.before);
    if (!there) closeEditor(editor, QAbstractItemDelegate::NoHint);
}

bool SheetView::isActive(const EditedCell& cell) const {
    return cell.col == ActiveCol() && cell.row == ActiveRow();
}

void SheetView::applySpans() {
    const std::vector<CellSpan>& spans = spansOf(ActiveSheet());
    if (spans == m->spans) return;
    clearSpans();
    for (const CellSpan& span : spans) setSpan(span.row - 1, span.col - 1, span.rows, span.cols);
    m->spans = spans;
}

void SheetView::applySizes() {
    const int sheet = ActiveSheet();
    const int rows = rowsOf(sheet);
    const int usual = rows > 0 ? pixelsOfPoints(heightOf(sheet, rows)) : SmallestSection;
    if (m->rows->defaultSectionSize() != usual) m->rows->setDefaultSectionSize(usual);
    for (int row = 1; row <= rows; ++row) {
        const bool hidden = isRowHidden(sheet, row);
        if (m->rows->isSectionHidden(row - 1) != hidden) m->rows->setSectionHidden(row - 1, hidden);
        const int height = std::max(pixelsOfPoints(heightOf(sheet, row)), SmallestSection);
        if (!hidden && m->rows->sectionSize(row - 1) != height) {
            m->rows->resizeSection(row - 1, height);
        }
    }
    for (int col = 1; col <= colsOf(sheet); ++col) {
        const bool hidden = isColHidden(sheet, col);
        if (m->cols->isSectionHidden(col - 1) != hidden) m->cols->setSectionHidden(col - 1, hidden);
        const int width = std::max(columnPixels(col), SmallestSection);
        const bool fills = m->fillCol == AllColumns || col == m->fillCol;
        if (!hidden && !fills && m->cols->sectionSize(col - 1) != width) {
            m->cols->resizeSection(col - 1, width);
        }
    }
}

// Shows or hides the scroll bars now instead of when the event loop runs next.
void SheetView::settleScrollBars() {
    updateGeometries();
    QEvent relayout(QEvent::LayoutRequest);
    QCoreApplication::sendEvent(this, &relayout);
}

void SheetView::applyFill() {
    if (m->fillCol == AllColumns) {
        shareWidth();
        return;
    }
    const int col = m->fillCol;
    if (col < 1 || col > m->model.columnCount() || isColumnHidden(col - 1)) return;
    const int others = m->cols->length() - m->cols->sectionSize(col - 1);
    const int own = columnPixels(col);
    // In a narrow view the column keeps at least half of its width.
    const int width = std::max({viewport()->width() - others, own / 2, SmallestSection});
    if (m->cols->sectionSize(col - 1) == width) return;
    const QScopedValueRollback applying(m->applying, true);
    m->cols->resizeSection(col - 1, width);
    applyWrap(1, m->model.rowCount());
}

// Makes rows as high as their wrapped texts, and at least as high as RowHeight.
void SheetView::applyWrap(int firstRow, int lastRow) {
    if (m->wrapCol < 1 || m->wrapCol > m->model.columnCount()) return;
    const int sheet = ActiveSheet();
    const int width = m->cols->sectionSize(m->wrapCol - 1);
    for (int row = std::max(firstRow, 1); row <= std::min(lastRow, m->model.rowCount()); ++row) {
        if (isRowHidden(sheet, row)) continue;
        const int height = std::max({pixelsOfPoints(heightOf(sheet, row)), SmallestSection,
                                     m->painter.wrappedHeight(m->wrapCol, row, width)});
        if (m->rows->sectionSize(row - 1) != height) m->rows->resizeSection(row - 1, height);
    }
}

// Gives every column its share of the view's width, but not less than its own width.
void SheetView::shareWidth() {
    const QScopedValueRollback applying(m->applying, true);
    double units = 0;
    for (int col = 1; col <= m->model.columnCount(); ++col)
        if (!isColumnHidden(col - 1)) units += unitsOf(col);
    if (units <= 0) return;
    const double unit = std::max(viewport()->width() / units, pixelsPerUnit());
    double right = 0;
    for (int col = 1; col <= m->model.columnCount(); ++col) {
        if (isColumnHidden(col - 1)) continue;
        const double left = right;
        right += unitsOf(col) * unit;
        const int width = std::max(int(right) - int(left), SmallestSection);
        if (m->cols->sectionSize(col - 1) != width) m->cols->resizeSection(col - 1, width);
    }
    applyWrap(1, m->model.rowCount());
}

void SheetView::applyTabs() {
    const bool wanted = TabStripPolicy() == TabStrip::Always ||
                        (TabStripPolicy() == TabStrip::AsNeeded && SheetCount() > 1);
    while (m->tabs->count() > SheetCount()) m->tabs->removeTab(m->tabs->count() - 1);
    while (m->tabs->count() < SheetCount()) {
        m->tabs->addTab(QStringLiteral("Page %1").arg(m->tabs->count() + 1));
    }
    m->tabs->setCurrentIndex(ActiveSheet() - 1);
    m->tabs->setVisible(wanted);
    // The tabs are beside the scroll bar, so it is shown as long as they are.
    m->pageBar->setBeside(wanted ? m->tabs : nullptr);
    setHorizontalScrollBarPolicy(wanted ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded);
}

// The head of the column by which the rows are sorted shows the order.
void SheetView::showOrder(bool on) {
    const int col = on && SortKeyOrder(1) != SortOrder::None ? SortKey(1) : 0;
    m->cols->setOrder(col, SortKeyOrder(1));
    m->model.setOrder(col, SortKeyOrder(1));
}

void SheetView::placeOverlays() {
    m->tabs->setMaximumWidth(std::max(width() * 2 / 3, 0));
    m->findBar->follow(viewport()->geometry());
}

void SheetView::applyActiveCell() {
    QModelIndex wanted = m->model.indexOf(ActiveCol(), ActiveRow());
    const CellSpan span = spanAt(ActiveSheet(), ActiveCol(), ActiveRow());
    if (span.cols > 0) wanted = m->model.indexOf(span.col, span.row);
    if (isReadOnly() && wanted.isValid() && isColumnHidden(wanted.column())) {
        // The keyboard continues from a visible column.
        wanted = moveCursor(MoveHome, Qt::NoModifier).siblingAtRow(wanted.row());
    }
    if (wanted == currentIndex()) return;
    if (!wanted.isValid()) {
        selectionModel()->clear();
        return;
    }
    selectionModel()->setCurrentIndex(
        wanted, QItemSelectionModel::ClearAndSelect |
                    (isReadOnly() ? QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate));
}

void SheetView::colDragged(int col, int width) {
    if (m->applying) return;
    const bool shown = !m->pending;
    const AddressedSheet here(*this, ActiveSheet());
    // A width that the user sets stays.
    if (col == m->fillCol) m->fillCol = 0;
    if (m->fillCol == AllColumns) {
        m->fillCol = 0;
        for (int other = 1; other <= m->model.columnCount(); ++other)
            if (!isColumnHidden(other - 1))
                ColWidth(other, m->cols->sectionSize(other - 1) / pixelsPerUnit() / zoomOf(other));
    }
    ColWidth(col, width / pixelsPerUnit() / zoomOf(col));
    if (shown) {
        // The screen shows this change already.
        takeDirt();
        m->pending = false;
    }
    applyFill();
    applyWrap(1, m->model.rowCount());
    viewport()->update();
}

void SheetView::tabPicked(int tab) {
    if (m->applying || tab < 0) return;
    commitEdit();
    ActiveSheet(tab + 1);
    flush();
}

// --- The widget --------------------------------------------------------------------------------

QRect SheetView::cellRect(int col, int row) {
    flush();
    if (col < 0 || row < 0) return {};
    const auto along = [this](SheetHead* head, int section, bool across) {
        if (!head->isVisibleTo(this) || section >= head->count()) return QRect();
        const int from = head->sectionViewportPosition(section);
        const int size = head->sectionSize(section);
        const QRect rect =
            across ? QRect(from, 0, size, head->height()) : QRect(0, from, head->width(), size);
        return rect.translated(head->viewport()->mapTo(this, QPoint()));
    };
    if (row == 0 && col > 0) return along(m->cols, col - 1, true);
    if (col == 0 && row > 0) return along(m->rows, row - 1, false);
    const QRect rect = visualRect(m->model.indexOf(col, row));
    return rect.isEmpty() ? QRect() : rect.translated(viewport()->mapTo(this, QPoint()));
}

bool SheetView::event(QEvent* event) {
    if (event->type() == ShowChanges) {
        flush();
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride &&
        wantsShortcut(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

bool SheetView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
    flush();
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const Cell cell = cellAt(help.pos());
    const QString text = cell.isCell() ? m->painter.cutText(cell.col, cell.row, look()) : QString();
    showWholeText(help.globalPos(), text, *viewport());
    return true;
}

void SheetView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    const bool look = event->type() == QEvent::PaletteChange ||
                      event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange;
    if (!look || !m) return;
    viewport()->update();
    m->layoutWanted = true;
    becameDirty();
}

void SheetView::closeEvent(QCloseEvent* event) {
    commitEdit();
    QTableView::closeEvent(event);
}

void SheetView::resizeEvent(QResizeEvent* event) {
    flush();
    QTableView::resizeEvent(event);
    applyFill();
    placeOverlays();
}

void SheetView::paintEvent(QPaintEvent* event) {
    flush();
    QPainter painter(viewport());
    m->painter.paint(painter, event->rect(), look());
}

SheetLook SheetView::look() const {
    SheetLook look;
    look.list = isReadOnly();
    look.wrapCol = m->wrapCol;
    look.focus = hasFocus() || (m->delegate.editor() && m->delegate.editor()->hasFocus());
    if (currentIndex().isValid()) {
        look.activeCol = currentIndex().column() + 1;
        look.activeRow = currentIndex().row() + 1;
    }
    if (m->delegate.editor()) {
        look.editCol = m->delegate.cell().col;
        look.editRow = m->delegate.cell().row;
    }
    return look;
}

void SheetView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    const bool list = isReadOnly();
    QTableView::currentChanged(current, previous);
    for (const QModelIndex& index : {current, previous}) {
        if (!index.isValid()) continue;
        // In a list the whole row is highlighted.
        QRect place = visualRect(index).adjusted(-1, -1, 1, 1);
        if (list) place = QRect(0, place.top(), viewport()->width(), place.height());
        viewport()->update(place);
    }
    if (m->applying) return;
    SetActiveCell(current.isValid() ? current.column() + 1 : 0,
                  current.isValid() ? current.row() + 1 : 0);
}

void SheetView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    viewport()->update();
}

// A change repaints the whole row, because texts may run over into other cells.
void SheetView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                            const QList<int>& roles) {
    Q_UNUSED(roles);
    const int top = rowViewportPosition(topLeft.row());
    const int bottom = rowViewportPosition(bottomRight.row()) + rowHeight(bottomRight.row());
    viewport()->update(QRect(0, top, viewport()->width(), bottom - top));
    if (!QAccessible::isActive()) return;
    QAccessibleTableModelChangeEvent change(this, QAccessibleTableModelChangeEvent::DataChanged);
    change.setFirstRow(topLeft.row());
    change.setLastRow(bottomRight.row());
    change.setFirstColumn(topLeft.column());
    change.setLastColumn(bottomRight.column());
    QAccessible::updateAccessibility(&change);
}
