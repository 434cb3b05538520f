// The user's edits of a grid's texts, and their undo.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QUndoCommand>

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

using CellPlaces = std::vector<std::pair<int, int>>;  // column, row

// An edit of cells of one sheet as one step of undo. A cell that no longer holds the recorded text
// is left alone; a step that changes no cell is removed.
class EditCommand : public QUndoCommand {
public:
    // Each redo and undo appends the addresses of the changed cells to `changed`.
    EditCommand(SheetGrid& grid, int sheet, std::vector<CellEdit> edits, CellPlaces& changed)
        : m_grid(grid), m_sheet(sheet), m_edits(std::move(edits)), m_changed(changed) {}

    int sheet() const { return m_sheet; }
    void redo() override { run(&CellEdit::before, &CellEdit::after); }
    void undo() override { run(&CellEdit::after, &CellEdit::before); }

private:
    void run(QString CellEdit::*from, QString CellEdit::*to);

    SheetGrid& m_grid;
    int m_sheet;
    std::vector<CellEdit> m_edits;
    CellPlaces& m_changed;
};

// Texts as spreadsheets put them on the clipboard: tabs between cells and a line for each row. A
// text with tabs, line ends or a leading quotation mark is quoted.
using TextRows = std::vector<std::vector<QString>>;
QString toClipboardText(const TextRows& rows);
TextRows fromClipboardText(const QString& text);
