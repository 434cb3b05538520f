// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The user's edits of a grid's texts, and finding.
#include "platform/grid_view/sheet_view_parts.h"

#include <QApplication>
#include <QClipboard>
#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>

// --- The editor --------------------------------------------------------------------------------

void SheetView::commitEdit() {
    const QPointer<QWidget> editor = m->delegate.editor();
    if (!editor || m->committing) return;
    const QPointer<SheetView> alive(this);
    m->committing = true;
    commitData(editor);
    if (!alive) return;
    m->committing = false;
    if (editor && editor == m->delegate.editor()) {
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

bool SheetView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // Deliberate: behaviour 16.
    m->delegate.setContinuing(trigger == AnyKeyPressed && !EditModeReplace());
    const bool wasOpen = m->delegate.editor();
    const bool opened = QTableView::edit(index, trigger, event);
    m->delegate.setContinuing(false);
    if (!wasOpen) m->delegate.setTyped(trigger == AnyKeyPressed);
    return opened;
}

void SheetView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    // A handler of its text may have closed it already.
    if (editor != m->delegate.editor()) return;
    const Cell cell{m->delegate.cell().col, m->delegate.cell().row};
    m->delegate.forget();
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    viewport()->update();
    flush();
    // Moves on from the cell, unless the program has made another one active.
    if (currentIndex() != m->model.indexOf(cell.col, cell.row)) return;
    switch (hint) {
        case QAbstractItemDelegate::EditNextItem:
            tabToNext(true);
            break;
        case QAbstractItemDelegate::EditPreviousItem:
            tabToNext(false);
            break;
        case QAbstractItemDelegate::SubmitModelCache:
            moveActive(0, 1);
            break;
        default:
            break;
    }
}

// --- Edits -------------------------------------------------------------------------------------

void SheetView::enter(int sheet, std::vector<CellEdit> edits) {
    std::erase_if(edits, [this](const CellEdit& edit) {
        return edit.before == edit.after || m->model.isLocked(edit.col, edit.row);
    });
    if (edits.empty()) return;
    flush();
    const auto step = std::make_shared<EditStep>(EditStep{sheet, std::move(edits)});
    {
        const QScopedValueRollback byUser(m->byUser, true);
        if (!step->apply(*this, true)) return;
    }
    m->history.add(step);
    raiseChanges(*step, true);
}

void SheetView::undoStep(bool forward) {
    flush();
    // A step whose cells hold other texts by now does nothing; the next one follows.
    while (const EditHistory::StepPointer step = m->history.take(forward)) {
        if (step->edits.empty()) continue;
        ActiveSheet(step->sheet);
        flush();
        {
            const QScopedValueRollback byUser(m->byUser, true);
            if (!step->apply(*this, forward)) continue;
        }
        setCurrent({step->edits.front().col, step->edits.front().row});
        const QPointer<SheetView> alive(this);
        m->undoing = true;
        raiseChanges(*step, forward);
        if (alive) m->undoing = false;
        return;
    }
}

// The caller keeps the step alive: a handler may load another grid.
void SheetView::raiseChanges(EditStep& step, bool forward) {
    const QPointer<SheetView> alive(this);
    m->byUser = true;
    const std::vector<CellEdit> edits = step.edits;
    for (const CellEdit& edit : edits) {
        Q_EMIT Change(edit.col, edit.row);
        if (!alive) return;
    }
    flush();
    m->byUser = false;
    // What the handlers made of the texts is part of the edit.
    step.recordNow(*this, forward);
}

bool SheetView::isUndoing() const { return m->undoing; }

// What the program writes ends the undo of its cells: they belong to another record now.
void SheetView::textsWritten(int sheet, const GridArea& area) {
    if (!m->byUser) m->history.forget(sheet, area);
    if (area.row2 > 0) showOrder(false);
}

void SheetView::rowsMoved(int sheet, int row, int count) {
    m->history.moveRows(sheet, row, count, rowsOf(sheet));
    if (count > 0) showOrder(false);
}

void SheetView::contentReplaced() {
    m->history.clear();
    showOrder(false);
}

void SheetView::rowsSorted() { showOrder(true); }

// Cells on view that hold texts of their own; what is hidden is not the user's to touch.
std::vector<CellEdit> SheetView::selectedCells() const {
    std::vector<CellEdit> cells;
    const int sheet = ActiveSheet();
    QModelIndexList indexes = selectionModel()->selectedIndexes();
    if (indexes.isEmpty() && currentIndex().isValid()) indexes << currentIndex();
    std::sort(indexes.begin(), indexes.end());
    for (const QModelIndex& index : indexes) {
        const Cell cell{index.column() + 1, index.row() + 1};
        if (isColumnHidden(index.column()) || isRowHidden(index.row())) continue;
        const CellSpan span = spanAt(sheet, cell.col, cell.row);
        if (span.cols > 0 && cell != Cell{span.col, span.row}) continue;
        const QString text = textAt(sheet, cell.col, cell.row);
        cells.push_back({cell.col, cell.row, text, text});
    }
    return cells;
}

void SheetView::copySelection() {
    TextRows rows;
    int row = 0;
    for (const CellEdit& cell : selectedCells()) {
        if (rows.empty() || cell.row != row) rows.emplace_back();
        row = cell.row;
        rows.back().push_back(cell.before);
    }
    if (!rows.empty()) QApplication::clipboard()->setText(toClipboardText(rows));
}

void SheetView::clearSelectedCells() {
    std::vector<CellEdit> edits = selectedCells();
    for (CellEdit& edit : edits) edit.after.clear();
    enter(ActiveSheet(), std::move(edits));
}

void SheetView::paste() {
    const TextRows rows = fromClipboardText(QApplication::clipboard()->text());
    std::vector<CellEdit> selected = selectedCells();
    if (rows.empty() || selected.empty()) return;
    std::vector<CellEdit> edits;
    if (rows.size() == 1 && rows.front().size() == 1) {
        // One text goes into every selected cell.
        edits = std::move(selected);
        for (CellEdit& edit : edits) edit.after = rows.front().front();
    } else {
        const int sheet = ActiveSheet();
        int row = selected.front().row;
        for (const std::vector<QString>& texts : rows) {
            while (row <= rowsOf(sheet) && isRowHidden(row - 1)) ++row;
            if (row > rowsOf(sheet)) break;
            int col = selected.front().col;
            for (const QString& text : texts) {
                while (col <= colsOf(sheet) && isColumnHidden(col - 1)) ++col;
                if (col > colsOf(sheet)) break;
                const CellSpan span = spanAt(sheet, col, row);
                const bool seen = span.cols == 0 || (span.col == col && span.row == row);
                if (seen) edits.push_back({col, row, textAt(sheet, col, row), text});
                ++col;
            }
            ++row;
        }
    }
    enter(ActiveSheet(), std::move(edits));
}

// --- Find --------------------------------------------------------------------------------------

void SheetView::find(const QString& text, int step) {
    flush();
    const int sheet = ActiveSheet();
    const int cols = colsOf(sheet);
    const qint64 cells = qint64(rowsOf(sheet)) * cols;
    if (text.isEmpty() || cells == 0) {
        m->findBar->setFound(true);
        return;
    }
    const QModelIndex from = currentIndex();
    const qint64 start = from.isValid() ? qint64(from.row()) * cols + from.column() + step
                                        : (step < 0 ? cells - 1 : 0);
    for (qint64 n = 0; n < cells; ++n) {
        const qint64 at = (start + (step < 0 ? -n : n) + 2 * cells) % cells;
        const Cell cell{int(at % cols) + 1, int(at / cols) + 1};
        if (isColumnHidden(cell.col - 1) || isRowHidden(cell.row - 1)) continue;
        if (!textAt(sheet, cell.col, cell.row).contains(text, Qt::CaseInsensitive)) continue;
        setCurrent(cell);
        m->findBar->setFound(true);
        return;
    }
    m->findBar->setFound(false);
}
