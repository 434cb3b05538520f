// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Printing of grids.
#pragma once

#include <QPageSize>
#include <QString>

class SheetGrid;

// Sets the print settings of sets, reports and charts.
void applySetPrintSettings(SheetGrid& grid);

// Prints the sheet on view by the grid's print settings, without asking; the flags have no effect.
// The job goes to the desktop's default printer, or to the first one if there is no default.
// Without a printer it becomes a PDF in the folder "printed" of the program's folder, named after
// the job and the time. The status bar shows where the job went, a message box if it failed.
void PrintSheet(const SheetGrid& grid, int flags);

// Makes every further job replace a PDF file, for tests; an empty path ends this.
void setPrintTarget(const QString& pdfPath, QPageSize::PageSizeId paper = QPageSize::A4);
