// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The appearance of cells, for the screen and for print.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QColor>

// The space between a cell's edge and its text on the screen, in pixels.
constexpr int CellPadding = 6;

// The width of a unit of column width, that of "0" in Arial 10, in pixels of 1/96 inch.
double pixelsPerUnit();

// Converts points to pixels of 1/96 inch.
int pixelsOfPoints(double points);

// Converts a colour of a grid.
QColor screenColour(int gridColour);

// A text with "\n" as line ends and none at its end.
QString withLineEnds(QString text);

// Whether a neighbour's text may run over into a cell, because it is empty.
bool takesOverflow(const SheetGrid& grid, int sheet, int col, int row);
