// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The user's edits of a grid's texts, and their undo.
#pragma once

#include "core/grid/grid_area.h"
#include "core/grid/sheet_grid.h"

#include <memory>
#include <utility>
#include <vector>

// Makes cell calls address a sheet during its own lifetime.
class AddressedSheet {
public:
    AddressedSheet(SheetGrid& grid, int sheet) : m_grid(grid), m_former(grid.Sheet()) {
        m_grid.Sheet(sheet);
    }
    ~AddressedSheet() { m_grid.Sheet(m_former); }
    AddressedSheet(const AddressedSheet&) = delete;
    AddressedSheet& operator=(const AddressedSheet&) = delete;

private:
    SheetGrid& m_grid;
    int m_former;
};

// One cell's text before and after an edit.
struct CellEdit {
    int col = 0;
    int row = 0;
    QString before;
    QString after;
};

// One edit of cells of a sheet, which is undone and redone as a whole.
struct EditStep {
    int sheet = 0;
    std::vector<CellEdit> edits;

    // Writes the texts after the edit (forward) or before it. An edit whose cell no longer holds
    // the recorded text is removed. Returns whether a cell has changed.
    bool apply(SheetGrid& grid, bool forward);

    // Records what the cells hold now as the texts after the edit (forward) or before it, and
    // removes edits that change nothing.
    void recordNow(const SheetGrid& grid, bool forward);
};

// The edits that can be undone or redone. Edits of cells that the program has written since, or
// that have gone, are forgotten: they belong to another record.
class EditHistory {
public:
    using StepPointer = std::shared_ptr<EditStep>;

    // Adds a step that was done; steps that could be redone are forgotten.
    void add(StepPointer step);

    // The step to redo (forward) or undo next, which then counts as done or undone; null if there
    // is none.
    StepPointer take(bool forward);

    void clear();
    void forget(int sheet, const GridArea& area);
    // Follows rows that were inserted (count above 0) or deleted (count below 0) at `row`.
    void moveRows(int sheet, int row, int count, int lastRow);

private:
    std::vector<StepPointer> m_steps;
    size_t m_done = 0;  // the steps before this one can be undone, the others redone
};

// Texts as spreadsheets put them on the clipboard: tabs between cells and a line for each row. A
// text with tabs, line ends or a leading quotation mark is quoted.
using TextRows = std::vector<std::vector<QString>>;
QString toClipboardText(const TextRows& rows);
TextRows fromClipboardText(const QString& text);
