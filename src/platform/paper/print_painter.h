// Draws the pages of a grid, on paper and into PDF files alike.
#pragma once

#include "platform/paper/print_layout.h"

class QPagedPaintDevice;

// Draws the sheet on view by the grid's print settings on every page of a device whose margins are
// none and whose page size and orientation are set. False where the device fails.
bool drawSheet(QPagedPaintDevice& device, const SheetGrid& grid);
