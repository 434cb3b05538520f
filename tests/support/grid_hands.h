// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Clicks and keys in a grid, as from a user.
#pragma once

#include <QString>
#include <QStringList>
#include <Qt>

class SheetView;

// Clicks a cell of a grid (row 0: a column head, column 0: a row head).
void clickCell(SheetView* grid, int col, int row, Qt::MouseButton button = Qt::LeftButton);

// Replaces the text of a cell with keys, and leaves the cell with Enter.
void typeInCell(SheetView* grid, int col, int row, const QString& text);

// Types a text, one key after the other, into what has the keyboard focus.
void typeKeys(const QString& text);

// Tries to change a cell in all the ways a person has: typing, F2, a double click, Delete, cutting
// and pasting.
void tryToChange(SheetView* grid, int col, int row);

// The texts of a column of a grid, rows 1 to MaxRows.
QStringList columnOf(SheetView* grid, int col);
