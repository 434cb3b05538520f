// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A grid on the screen.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QTableView>

#include <functional>
#include <memory>
#include <vector>

struct CellEdit;
struct EditedCell;
struct EditStep;
struct SheetLook;

// A grid that is shown and can be edited like a spreadsheet. It is both the view and the SheetGrid.
// Changes are shown together when the event loop runs next, however many there are.
class SheetView : public QTableView, public SheetGrid {
    Q_OBJECT

public:
    using QTableView::isRowHidden;
    using SheetGrid::isRowHidden;

    explicit SheetView(QWidget* parent = nullptr);
    ~SheetView() override;

    // Makes the grid a list: cells cannot be edited, and Enter and Space act as a click on the
    // active cell. In a grid that can be edited Ctrl+Enter does. F6 and Shift+F6 move the keyboard
    // focus out of any grid.
    void setReadOnly(bool on);
    bool isReadOnly() const;

    // Sets which cells of a grid the user cannot edit, such as labels. What the program writes is
    // not affected.
    void setLocked(std::function<bool(int col, int row)> isLocked);

    // Sets what a screen reader says of a cell besides its text and its heads, where a colour or a
    // picture says it on the screen; empty for nothing.
    void setSpoken(std::function<QString(int col, int row)> spoken);

    // Where typing begins while no cell is active: in the first empty cell at or right of `col`,
    // from `row` downwards, or else in the first one that takes text. Initially (1, 1).
    void setTypingStart(int col, int row);

    // Whether a click below the last row raises Click as well, with the row MaxRows + 1; initially
    // false.
    void setClicksBelowRows(bool on);

    // Whether Change is being raised because the user has undone or redone an edit.
    bool isUndoing() const;

    // Sets the column that takes up the remaining width of the view; AllColumns shares it between
    // the columns in proportion to their widths, 0 leaves it empty. ColWidth does not change.
    static constexpr int AllColumns = -1;
    void setFillColumn(int col);

    // Sets the column whose texts are wrapped, 0 for none. Rows grow with them; RowHeight does not
    // change.
    void setWrapColumn(int col);

    // Sets the factor between a column's width on the screen and ColWidth, for texts in the
    // desktop's font; initially 1. -1 sets it for all columns.
    void setColumnZoom(int col, double factor);

    // Shows pending changes now.
    void flush();

    // Takes over the text of the open editor and closes it. Clicks, shortcuts and the loss of the
    // focus do so as well.
    void commitEdit();

    // The rectangle of a cell or head in this widget, after flush(); for pop-ups and tests.
    QRect cellRect(int col, int row);

Q_SIGNALS:
    // A cell (row 0: a column head, column 0: a row head) was clicked with the left button.
    void Click(int col, int row);
    // The user has changed a cell's text by typing, picking, pasting, deleting, undo or redo.
    void Change(int col, int row);
    // What the grid shows may have changed, by the user or by the program. Comes once for all
    // changes that are shown together.
    void ContentChanged();
    // A button cell, or the button of a cell that carries one, was pressed.
    void ButtonClicked(int col, int row, bool buttonDown);
    // Right click or menu key; x and y in pixels in this widget.
    void RightClick(int clickType, int col, int row, int x, int y);
    // A mouse button was released: 1 left, 2 right, 4 middle.
    void MouseUp(int button, int shift, int x, int y);

protected:
    void becameDirty() override;
    void textsWritten(int sheet, const GridArea& area) override;
    void rowsMoved(int sheet, int row, int count) override;
    void contentReplaced() override;
    void rowsSorted() override;

    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QList<int>& roles) override;
    using QTableView::edit;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    struct Cell {
        int col = -1;
        int row = -1;
        bool isCell() const { return col > 0 && row > 0; }
        bool operator==(const Cell&) const = default;
    };
    struct Parts;

    // Following the grid (sheet_view.cpp).
    void setUpHeads();
    void applyLayout();
    void applySpans();
    void applySizes();
    void applyFill();
    void shareWidth();
    void applyWrap(int firstRow, int lastRow);
    double zoomOf(int col) const;
    double unitsOf(int col) const;
    int columnPixels(int col) const;
    void settleScrollBars();
    void applyTabs();
    void applyActiveCell();
    void dropLostEditor();
    bool isActive(const EditedCell& cell) const;
    void placeOverlays();
    void showOrder(bool on);
    SheetLook look() const;
    void colDragged(int col, int width);
    void tabPicked(int tab);

    // Mouse and keyboard (sheet_view_input.cpp).
    Cell cellAt(const QPoint& place) const;
    QRect handleRect(Cell cell) const;
    void handlePressed(Cell cell);
    void raiseClick(Cell cell);
    void raiseClickBelow(const QPoint& place);
    void raiseRightClick(Cell cell, const QPoint& place, bool byKey);
    void raiseMouseUp(const QMouseEvent& event, const QWidget& from);
    bool wantsShortcut(const QKeyEvent& event) const;
    bool runShortcut(QKeyEvent* event);
    bool keyInList(const QKeyEvent& event);
    bool keyInForm(const QKeyEvent& event);
    bool activateFirstCell();
    QModelIndex nextTo(int cols, int rows);
    bool moveActive(int cols, int rows);
    bool leaveByArrow(int cols, int rows);
    bool tabToNext(bool forward);
    void setCurrent(Cell cell);

    // The user's edits (sheet_view_user.cpp).
    std::vector<CellEdit> selectedCells() const;
    void enter(int sheet, std::vector<CellEdit> edits);
    void undoStep(bool forward);
    void raiseChanges(EditStep& step, bool forward);
    void copySelection();
    void clearSelectedCells();
    void paste();
    void find(const QString& text, int step);

    std::unique_ptr<Parts> m;
};
