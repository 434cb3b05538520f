// A grid on the screen.
#pragma once

#include "core/sheet_grid.h"

#include <QTableView>

#include <memory>

// Draws a SheetGrid and lets a person edit it like a spreadsheet. It is the grid: cell calls go to
// it, and it shows them at the next turn of the event loop, one look for any number of writes.
class SheetView : public QTableView, public SheetGrid {
    Q_OBJECT

public:
    explicit SheetView(QWidget* parent = nullptr);
    ~SheetView() override;

    // A list: cells cannot be edited; Enter and Space count as a click on the active cell.
    // (In a grid that can be edited Ctrl+Enter does.)
    void setReadOnly(bool on);
    bool isReadOnly() const;

    // The column that takes the width that the others leave over, on the screen only (ColWidth
    // stays); 0 for none.
    void setFillColumn(int col);

    // Shows pending changes now.
    void flush();

    // A cell's or head's place in this widget's coordinates, for pop-ups and tests; flushes first.
    QRect cellRect(int col, int row);

Q_SIGNALS:
    // A cell (row 0: a column head, column 0: a row head) was clicked with the left button.
    void Click(int col, int row);
    // The user has changed a cell's text: typed, picked, pasted, deleted, undone or redone.
    void Change(int col, int row);
    // A button cell, or the button of a cell that carries one, was pressed.
    void ButtonClicked(int col, int row, bool buttonDown);
    // Right click or menu key; x and y in pixels in this widget.
    void RightClick(int clickType, int col, int row, int x, int y);
    // A mouse button was released: 1 left, 2 right, 4 middle.
    void MouseUp(int button, int shift, int x, int y);

protected:
    void becameDirty() override;
};
