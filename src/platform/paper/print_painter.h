// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Drawing of the pages of a grid, for printers and PDF files.
#pragma once

#include "platform/paper/print_layout.h"

#include <functional>

class QPagedPaintDevice;
class QPainter;

// Draws the pages of the sheet on view by the grid's print settings. The device needs its page size
// and orientation set and has to be without margins. Returns false if the device fails.
[[nodiscard]] bool drawSheet(QPagedPaintDevice& device, const SheetGrid& grid);

// The same on a device that is being painted on, from its current page on. The painter's unit is
// the device's. `pageDrawn` is called on each page once its cells are there.
[[nodiscard]] bool drawSheet(QPainter& painter, QPagedPaintDevice& device, const SheetGrid& grid,
                             const std::function<void()>& pageDrawn);
