// What a person's hands do with a grid.
#pragma once

#include <QString>
#include <QStringList>
#include <Qt>

class SheetView;

// Clicks a cell of a grid (row 0: a column head, column 0: a row head).
void clickCell(SheetView* grid, int col, int row, Qt::MouseButton button = Qt::LeftButton);

// Types a text into a cell as a person does, and leaves it with Enter.
void typeInCell(SheetView* grid, int col, int row, const QString& text);

// Tries to change a cell in all the ways a person has: typing, F2, a double click, Delete, cutting
// and pasting.
void tryToChange(SheetView* grid, int col, int row);

// The texts of a column of a grid, rows 1 to MaxRows.
QStringList columnOf(SheetView* grid, int col);
