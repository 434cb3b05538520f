// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Mouse and keyboard input in a grid.
#include "platform/grid_view/sheet_view_parts.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace {

bool isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool typesText(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.isEmpty()) return false;
    const char32_t first = text.toUcs4().front();
    return QChar::isPrint(first) && !QChar::isSpace(first) &&
           !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

}  // namespace

// --- Places ------------------------------------------------------------------------------------

// A cell in a span counts as the anchor of the span, whose text is visible.
SheetView::Cell SheetView::cellAt(const QPoint& place) const {
    const int col = columnAt(place.x()) + 1;
    const int row = rowAt(place.y()) + 1;
    if (col < 1 || row < 1) return {};
    const CellSpan span = spanAt(ActiveSheet(), col, row);
    return span.cols > 0 ? Cell{span.col, span.row} : Cell{col, row};
}

QRect SheetView::handleRect(Cell cell) const {
    return m->painter.handleRect(formatAt(ActiveSheet(), cell.col, cell.row),
                                 visualRect(m->model.indexOf(cell.col, cell.row)), isReadOnly());
}

void SheetView::setCurrent(Cell cell) {
    const QModelIndex index = m->model.indexOf(cell.col, cell.row);
    if (index.isValid()) setCurrentIndex(index);
}

// --- The mouse ---------------------------------------------------------------------------------

// After a signal the view may be gone, because a handler may close the window, and it may show
// another grid, because a handler may load one.

void SheetView::mousePressEvent(QMouseEvent* event) {
    const QPointer<SheetView> alive(this);
    commitEdit();
    if (!alive) return;
    flush();
    const QPoint place = event->position().toPoint();
    const Cell cell = cellAt(place);
    m->pressed = m->pressedHandle = m->rightPressed = {};
    m->pressedBelow = m->rightReported = false;
    if (event->button() == Qt::LeftButton) {
        const bool onHandle = cell.isCell() && handleRect(cell).contains(place);
        (onHandle ? m->pressedHandle : m->pressed) = cell;
        m->pressedBelow = rowAt(place.y()) < 0;
    } else if (event->button() == Qt::RightButton) {
        m->rightPressed = cell;
    }
    QTableView::mousePressEvent(event);
}

void SheetView::mouseMoveEvent(QMouseEvent* event) {
    // Dragging over a list does not change the active row.
    if (!isReadOnly()) QTableView::mouseMoveEvent(event);
}

void SheetView::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<SheetView> alive(this);
    flush();
    QTableView::mouseReleaseEvent(event);
    const QPoint place = event->position().toPoint();
    const Cell cell = cellAt(place);
    const Cell pressed = std::exchange(m->pressed, {});
    const Cell pressedHandle = std::exchange(m->pressedHandle, {});
    const Cell rightPressed = std::exchange(m->rightPressed, {});
    const bool onHandle = cell.isCell() && handleRect(cell).contains(place);
    const bool pressedBelow = std::exchange(m->pressedBelow, false);
    raiseMouseUp(*event, *viewport());
    if (!alive) return;
    if (event->button() == Qt::LeftButton && pressedBelow) raiseClickBelow(place);
    if (!alive || !cell.isCell()) return;
    if (event->button() == Qt::LeftButton && cell == pressed) {
        raiseClick(cell);
    } else if (event->button() == Qt::LeftButton && cell == pressedHandle && onHandle) {
        handlePressed(cell);
    } else if (event->button() == Qt::RightButton && cell == rightPressed &&
               !std::exchange(m->rightReported, true)) {
        raiseRightClick(cell, viewport()->mapTo(this, place), false);
    }
}

void SheetView::mouseDoubleClickEvent(QMouseEvent* event) {
    // The second press of a double click edits and does not count as another click.
    const QPointer<SheetView> alive(this);
    commitEdit();
    if (!alive) return;
    flush();
    m->pressed = m->pressedHandle = {};
    const QPoint place = event->position().toPoint();
    const Cell cell = cellAt(place);
    if (event->button() != Qt::LeftButton || !cell.isCell()) return;
    setCurrent(cell);
    if (handleRect(cell).contains(place)) {
        m->pressedHandle = cell;
    } else if (m->model.flags(currentIndex()) & Qt::ItemIsEditable) {
        edit(currentIndex());
    }
}

// A right click comes as button events, as a context menu event, or as both.
void SheetView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    flush();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        const QModelIndex index = currentIndex();
        if (!index.isValid()) return;
        const QPoint middle = visualRect(index).center();
        raiseRightClick({index.column() + 1, index.row() + 1}, viewport()->mapTo(this, middle),
                        true);
        return;
    }
    const Cell cell = cellAt(event->pos());
    if (!cell.isCell()) return;
    const bool pressing = m->rightPressed.isCell();
    if (std::exchange(m->rightReported, pressing)) return;
    raiseRightClick(cell, viewport()->mapTo(this, event->pos()), false);
}

void SheetView::raiseClick(Cell cell) { Q_EMIT Click(cell.col, cell.row); }

void SheetView::raiseClickBelow(const QPoint& place) {
    if (!m->clicksBelow || !viewport()->rect().contains(place) || rowAt(place.y()) >= 0) return;
    raiseClick({std::max(columnAt(place.x()) + 1, 1), rowsOf(ActiveSheet()) + 1});
}

void SheetView::raiseRightClick(Cell cell, const QPoint& place, bool byKey) {
    const QPointer<SheetView> alive(this);
    Q_EMIT RightClick(0, cell.col, cell.row, place.x(), place.y());
    // A menu that opens when the button is released opens with the menu key as well.
    if (alive && byKey) Q_EMIT MouseUp(2, 0, place.x(), place.y());
}

void SheetView::raiseMouseUp(const QMouseEvent& event, const QWidget& from) {
    const int button = event.button() == Qt::LeftButton    ? 1
                       : event.button() == Qt::RightButton ? 2
                                                           : 4;
    const Qt::KeyboardModifiers keys = event.modifiers();
    const int shift = (keys & Qt::ShiftModifier ? 1 : 0) | (keys & Qt::ControlModifier ? 2 : 0) |
                      (keys & Qt::AltModifier ? 4 : 0);
    const QPoint place = from.mapTo(this, event.position().toPoint());
    Q_EMIT MouseUp(button, shift, place.x(), place.y());
}

void SheetView::handlePressed(Cell cell) {
    if (formatAt(ActiveSheet(), cell.col, cell.row).kind == CellKind::Button) {
        Q_EMIT ButtonClicked(cell.col, cell.row, true);
        return;
    }
    edit(m->model.indexOf(cell.col, cell.row));
    m->delegate.drop();
}

// --- The keyboard ------------------------------------------------------------------------------

bool SheetView::wantsShortcut(const QKeyEvent& event) const {
    if (event.matches(QKeySequence::Copy) || event.matches(QKeySequence::Find)) return true;
    if (isReadOnly()) return false;
    return event.matches(QKeySequence::Cut) || event.matches(QKeySequence::Paste) ||
           event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo) ||
           event.matches(QKeySequence::Delete) ||
           (event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier);
}

bool SheetView::runShortcut(QKeyEvent* event) {
    if (!wantsShortcut(*event)) return false;
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (event->matches(QKeySequence::Find)) {
        m->findBar->openOver(viewport()->geometry());
    } else if (event->matches(QKeySequence::Cut)) {
        copySelection();
        clearSelectedCells();
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (event->matches(QKeySequence::Undo)) {
        undoStep(false);
    } else if (event->matches(QKeySequence::Delete)) {
        clearSelectedCells();
    } else {
        undoStep(true);
    }
    event->accept();
    return true;
}

void SheetView::keyPressEvent(QKeyEvent* event) {
    flush();
    const bool enters = isEnter(*event) && !(event->modifiers() & Qt::ControlModifier);
    if (enters || typesText(*event) || event->key() == Qt::Key_F2 ||
        event->matches(QKeySequence::Paste)) {
        if (activateFirstCell() && enters) return;
    }
    if (runShortcut(event)) return;
    const bool forward = event->key() == Qt::Key_Tab;
    if ((forward || event->key() == Qt::Key_Backtab) &&
        !(event->modifiers() & ~Qt::ShiftModifier)) {
        // Tab on the last cell leaves the grid.
        event->setAccepted(tabKeyNavigation() && tabToNext(forward));
        return;
    }
    if (event->key() == Qt::Key_F6 && !(event->modifiers() & ~Qt::ShiftModifier)) {
        // Leaves a large grid without passing through its cells.
        const bool back = event->modifiers() & Qt::ShiftModifier;
        event->setAccepted(QAbstractScrollArea::focusNextPrevChild(!back));
        return;
    }
    const bool page = event->key() == Qt::Key_PageDown || event->key() == Qt::Key_PageUp;
    if (page && event->modifiers() == Qt::ControlModifier && m->tabs->isVisibleTo(this)) {
        const int step = event->key() == Qt::Key_PageDown ? 1 : -1;
        m->tabs->setCurrentIndex(
            std::clamp(m->tabs->currentIndex() + step, 0, m->tabs->count() - 1));
        return;
    }
    if (isReadOnly() ? keyInList(*event) : keyInForm(*event)) return;
    const bool opens = event->key() == Qt::Key_F2;
    QTableView::keyPressEvent(event);
    // F2 continues the text.
    if (opens) {
        if (auto* line = qobject_cast<QLineEdit*>(m->delegate.editor())) line->end(false);
    }
}

bool SheetView::keyInList(const QKeyEvent& event) {
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    if (isEnter(event) && ctrl && ColHeadersShow()) {
        // A click on the head, which sorts the list.
        int col = currentIndex().isValid() ? currentIndex().column() : 0;
        while (col < m->model.columnCount() && isColumnHidden(col)) ++col;
        if (col < m->model.columnCount()) raiseClick({col + 1, 0});
        return true;
    }
    const bool clicks = isEnter(event) || event.key() == Qt::Key_Space;
    if (!clicks || ctrl || !currentIndex().isValid()) return false;
    raiseClick({currentIndex().column() + 1, currentIndex().row() + 1});
    return true;
}

bool SheetView::keyInForm(const QKeyEvent& event) {
    const QModelIndex index = currentIndex();
    if (!index.isValid()) return false;
    const Cell cell{index.column() + 1, index.row() + 1};
    const bool alt = event.modifiers() & Qt::AltModifier;
    const bool drops = (event.key() == Qt::Key_Down && alt) || event.key() == Qt::Key_F4;
    if (drops) {
        const CellKind kind = formatAt(ActiveSheet(), cell.col, cell.row).kind;
        if (kind == CellKind::Edit || kind == CellKind::Picture) return false;
        handlePressed(cell);
        return true;
    }
    if (!isEnter(event)) return false;
    if (event.modifiers() & Qt::ControlModifier) {
        raiseClick(cell);
        return true;
    }
    return moveActive(0, event.modifiers() & Qt::ShiftModifier ? -1 : 1);
}

void SheetView::inputMethodEvent(QInputMethodEvent* event) {
    flush();
    if (!event->preeditString().isEmpty() || !event->commitString().isEmpty()) activateFirstCell();
    QTableView::inputMethodEvent(event);
}

// Makes the cell active in which typing begins, if none is. Returns whether it has done so.
bool SheetView::activateFirstCell() {
    if (isReadOnly() || currentIndex().isValid()) return false;
    const int sheet = ActiveSheet();
    Cell first;
    for (int row = m->typingStart.row; row <= rowsOf(sheet); ++row) {
        for (int col = m->typingStart.col; col <= colsOf(sheet); ++col) {
            if (isColumnHidden(col - 1) || isRowHidden(row - 1)) continue;
            const CellSpan span = spanAt(sheet, col, row);
            if (span.cols > 0 && (span.col != col || span.row != row)) continue;
            if (!(m->model.flags(m->model.indexOf(col, row)) & Qt::ItemIsEditable)) continue;
            if (!first.isCell()) first = {col, row};
            if (!textAt(sheet, col, row).isEmpty()) continue;
            setCurrent({col, row});
            return true;
        }
    }
    setCurrent(first);
    return first.isCell();
}

// The index of the cell beside or above or below the active one; the active one itself at an edge.
QModelIndex SheetView::nextTo(int cols, int rows) {
    const CursorAction action = rows > 0   ? MoveDown
                                : rows < 0 ? MoveUp
                                : cols > 0 ? MoveRight
                                           : MoveLeft;
    return moveCursor(action, Qt::NoModifier);
}

bool SheetView::moveActive(int cols, int rows) {
    const QModelIndex next = nextTo(cols, rows);
    if (!next.isValid() || next == currentIndex()) return false;
    setCurrentIndex(next);
    return true;
}

// Takes over the open editor's text and moves on. At an edge the editor keeps the key.
bool SheetView::leaveByArrow(int cols, int rows) {
    const QModelIndex next = nextTo(cols, rows);
    if (!next.isValid() || next == currentIndex()) return false;
    const QPointer<SheetView> alive(this);
    const QPersistentModelIndex cell = currentIndex();
    commitEdit();
    // The program may have made another cell active, or closed the window.
    if (alive && cell == currentIndex()) moveActive(cols, rows);
    return true;
}

bool SheetView::tabToNext(bool forward) {
    const QModelIndex from = currentIndex();
    if (!from.isValid()) return false;
    const QModelIndex next = moveCursor(forward ? MoveNext : MovePrevious, Qt::NoModifier);
    if (!next.isValid()) return false;
    const auto order = [](const QModelIndex& index) {
        return std::pair(index.row(), index.column());
    };
    if (forward ? order(next) <= order(from) : order(next) >= order(from)) return false;
    setCurrentIndex(next);
    return true;
}

void SheetView::focusInEvent(QFocusEvent* event) {
    // The keyboard focus alone makes no cell active: commands would take it for a selection.
    const bool none = !currentIndex().isValid();
    const QScopedValueRollback applying(m->applying, true);
    QTableView::focusInEvent(event);
    if (none && currentIndex().isValid()) selectionModel()->clear();
    if (none) setAttribute(Qt::WA_InputMethodEnabled, !isReadOnly());
    update();
    viewport()->update();
}

void SheetView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    update();
    viewport()->update();
}
