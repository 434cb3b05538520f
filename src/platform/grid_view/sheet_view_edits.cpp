// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/sheet_view_edits.h"

bool EditStep::apply(SheetGrid& grid, bool forward) {
    const AddressedSheet here(grid, sheet);
    if (grid.Sheet() != sheet) edits.clear();
    std::vector<CellEdit> changed;
    for (CellEdit& edit : edits) {
        const QString& from = forward ? edit.before : edit.after;
        QString& to = forward ? edit.after : edit.before;
        if (grid.GetText(edit.col, edit.row) != from) continue;
        grid.SetText(edit.col, edit.row, to);
        const QString now = grid.GetText(edit.col, edit.row);
        if (now == from) continue;
        to = now;  // a date cell changes the form of a date
        changed.push_back(edit);
    }
    edits = std::move(changed);
    return !edits.empty();
}

void EditStep::recordNow(const SheetGrid& grid, bool forward) {
    for (CellEdit& edit : edits)
        (forward ? edit.after : edit.before) = grid.textAt(sheet, edit.col, edit.row);
    std::erase_if(edits, [](const CellEdit& edit) { return edit.before == edit.after; });
}

void EditHistory::add(StepPointer step) {
    m_steps.resize(m_done);
    m_steps.push_back(std::move(step));
    ++m_done;
}

EditHistory::StepPointer EditHistory::take(bool forward) {
    if (forward) return m_done < m_steps.size() ? m_steps[m_done++] : nullptr;
    return m_done > 0 ? m_steps[--m_done] : nullptr;
}

void EditHistory::clear() {
    m_steps.clear();
    m_done = 0;
}

void EditHistory::forget(int sheet, const GridArea& area) {
    for (const StepPointer& step : m_steps) {
        if (step->sheet != sheet) continue;
        std::erase_if(step->edits, [&area](const CellEdit& edit) {
            return edit.col >= area.col && edit.col <= area.col2 && edit.row >= area.row &&
                   edit.row <= area.row2;
        });
    }
}

void EditHistory::moveRows(int sheet, int row, int count, int lastRow) {
    for (const StepPointer& step : m_steps) {
        if (step->sheet != sheet) continue;
        std::erase_if(step->edits, [=](const CellEdit& edit) {
            return count < 0 && edit.row >= row && edit.row < row - count;
        });
        for (CellEdit& edit : step->edits)
            if (edit.row >= row) edit.row += count;
        std::erase_if(step->edits, [=](const CellEdit& edit) { return edit.row > lastRow; });
    }
}

QString toClipboardText(const TextRows& rows) {
    QString text;
    for (const std::vector<QString>& row : rows) {
        if (&row != &rows.front()) text += QLatin1Char('\n');
        for (const QString& cell : row) {
            if (&cell != &row.front()) text += QLatin1Char('\t');
            const bool quoted =
                cell.contains(QLatin1Char('\t')) || cell.contains(QLatin1Char('\n')) ||
                cell.contains(QLatin1Char('\r')) || cell.startsWith(QLatin1Char('"'));
            if (!quoted) {
                text += cell;
                continue;
            }
            QString doubled = cell;
            doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
            text += QLatin1Char('"') + doubled + QLatin1Char('"');
        }
    }
    return text;
}

TextRows fromClipboardText(const QString& text) {
    TextRows rows;
    std::vector<QString> row;
    QString cell;
    const qsizetype end = text.size();
    qsizetype at = 0;
    const auto takeQuoted = [&] {
        // The cell has to end after the closing mark; otherwise the marks are part of the text.
        QString inner;
        for (qsizetype i = at + 1; i < end; ++i) {
            if (text[i] != QLatin1Char('"')) {
                inner += text[i];
            } else if (i + 1 < end && text[i + 1] == QLatin1Char('"')) {
                inner += text[i++];
            } else {
                const bool closes = i + 1 == end || text[i + 1] == QLatin1Char('\t') ||
                                    text[i + 1] == QLatin1Char('\n') ||
                                    text[i + 1] == QLatin1Char('\r');
                if (!closes) return;
                cell = inner;
                at = i + 1;
                return;
            }
        }
    };
    bool open = false;  // a row was begun
    while (at < end) {
        if (cell.isEmpty() && text[at] == QLatin1Char('"')) {
            const qsizetype start = at;
            takeQuoted();
            open = true;
            if (at > start) continue;
        }
        const QChar c = text[at++];
        if (c == QLatin1Char('\t')) {
            row.push_back(std::exchange(cell, {}));
            open = true;
        } else if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
            if (c == QLatin1Char('\r') && at < end && text[at] == QLatin1Char('\n')) ++at;
            row.push_back(std::exchange(cell, {}));
            rows.push_back(std::exchange(row, {}));
            open = false;
        } else {
            cell += c;
            open = true;
        }
    }
    if (open) {
        row.push_back(cell);
        rows.push_back(std::move(row));
    }
    return rows;
}
