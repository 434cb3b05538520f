// Grids on paper.
#pragma once

#include <QPageSize>
#include <QString>

class SheetGrid;

// The print settings of a set, of every report of one list and of a chart.
void applySetPrintSettings(SheetGrid& grid);

// Prints the sheet on view by the grid's print settings; flags 1 means at once, without a
// question. The job goes to the desktop's default printer, or to its first where none is the
// default. A machine without any gets a PDF in the folder "printed" beside the program, named after
// the job and the time, and the status line says where. What cannot be written is told in a box.
void PrintSheet(const SheetGrid& grid, int flags);

// Lets a test take every further job as a PDF file on the paper it names; an empty path gives the
// printer back. Each job replaces the file.
void setPrintTarget(const QString& pdfPath, QPageSize::PageSizeId paper = QPageSize::A4);
