// How a sheet lies on its pages.
#pragma once

#include "core/grid/grid_area.h"
#include "platform/grid_view/cell_look.h"

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QSizeF>

#include <vector>

constexpr int TwipsPerInch = 1440;

// How narrow a text is set that has less room than it wants, where texts run over.
constexpr double LeastStretch = 0.6;

// Lengths are twips. What is on the sheet is measured unscaled.
struct PrintFace {
    QFont font;  // its pixel size is in twips
    QFontMetricsF metrics;

    // How a text breaks into lines in a room: between words, within them where one is too long.
    int wrapFlags(const QString& text, double room) const;
};

// The fonts of cells as they are on paper.
class PrintFaces {
public:
    const PrintFace& of(const CellFormat& format);

private:
    QHash<QString, PrintFace> m_faces;
};

// A part of the sheet on one page.
struct PrintedPage {
    int firstRow = 0;  // lastRow < firstRow: nothing but the lines at the page's head and foot
    int lastRow = -1;
    int firstCol = 0;
    int lastCol = -1;
    double skipped = 0;  // how much of firstRow stood on the page before
};

// The pages of the sheet on view by the grid's print settings, on paper of a size in twips.
class PrintLayout {
public:
    PrintLayout(const SheetGrid& grid, const QSizeF& paper, PrintFaces& faces);

    const std::vector<PrintedPage>& pages() const { return m_pages; }
    const GridArea& area() const { return m_area; }
    int sheet() const { return m_sheet; }

    // The place on the paper for heads and cells.
    const QRectF& body() const { return m_body; }
    double scale() const { return m_scale; }

    // Widths and heights of what is printed; 0 where it is hidden. Index 0 is the heads.
    double width(int col) const;
    double height(int row) const;

    // Room between a cell's edge and its text.
    static double padding(double width);

private:
    GridArea areaToPrint(const SheetGrid& grid) const;
    void measure(const SheetGrid& grid, PrintFaces& faces);
    double neededHeight(const SheetGrid& grid, PrintFaces& faces, int col, int row) const;
    void fit(const SheetGrid& grid);
    void fitGrownRows(const SheetGrid& grid);
    std::vector<std::pair<int, int>> columnRuns(double room) const;
    void breakIntoPages(const SheetGrid& grid);

    const int m_sheet;
    QRectF m_body;
    double m_scale = 1;
    GridArea m_area;
    double m_headWidth = 0;
    double m_headHeight = 0;
    std::vector<double> m_widths;
    std::vector<double> m_heights;
    std::vector<PrintedPage> m_pages;
};
