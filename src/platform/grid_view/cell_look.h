// What the screen and the paper share of a cell's looks.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QColor>

// The space between a cell's edge and its text on the screen, in pixels.
constexpr int CellPadding = 6;

// Width of a grid's column of one unit: that of "0" in Arial 10, in pixels of 1/96 inch.
double pixelsPerUnit();

// Height in such pixels of a row of so many points.
int pixelsOfPoints(double points);

// A colour of a grid as one of the screen.
QColor screenColour(int gridColour);

// A text with its carriage returns as line ends, without those at its end.
QString withLineEnds(QString text);

// Whether a cell is empty, so that a neighbour's text may run over into it.
bool takesOverflow(const SheetGrid& grid, int sheet, int col, int row);
