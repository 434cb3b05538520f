// What a user's editing does to a grid's texts: one step of undo for each act.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QUndoCommand>

#include <utility>
#include <vector>

// Cell calls address a sheet while this lives, and the former one after it.
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

// One act of the user on some cells of one sheet. A cell that no longer holds the text that was
// recorded is left alone; a step that finds none of its cells is dropped.
class EditCommand : public QUndoCommand {
public:
    // `changed` receives the places of the cells that each redo or undo has changed.
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

// Rows of texts as a clipboard carries them between spreadsheets: tabs between cells, a line a
// row; a text with tabs, line ends or a leading quotation mark stands in quotation marks.
using TextRows = std::vector<std::vector<QString>>;
QString toClipboardText(const TextRows& rows);
TextRows fromClipboardText(const QString& text);
