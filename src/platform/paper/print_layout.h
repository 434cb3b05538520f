// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The layout of a sheet on printed pages.
#pragma once

#include "core/grid/grid_area.h"
#include "platform/grid_view/cell_look.h"

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QSizeF>

#include <map>
#include <tuple>
#include <vector>

constexpr int TwipsPerInch = 1440;

// How far a text that is too wide for its cell is condensed, if texts run over into neighbours.
constexpr double LeastStretch = 0.6;

// Lengths are in twips. Widths and heights of cells are those before scaling.
struct PrintFace {
    explicit PrintFace(const QFont& inTwips) : font(inTwips), metrics(inTwips) {}

    QFont font;  // its pixel size is in twips
    QFontMetricsF metrics;

    // The width of a text in one line. Each text is measured once: chords and cities come often.
    double widthOf(const QString& text) const;

    // The flags for wrapping a text to a width: between words, or anywhere if a word is too long.
    int wrapFlags(const QString& text, double room) const;

private:
    mutable QHash<QString, double> m_widths;
};

// The fonts of cells in print.
class PrintFaces {
public:
    const PrintFace& of(const CellFormat& format);

private:
    std::map<std::tuple<QString, double, bool>, PrintFace> m_faces;
};

// The part of the sheet on one page.
struct PrintedPage {
    int firstRow = 0;  // lastRow < firstRow: only the header and the footer
    int lastRow = -1;
    int firstCol = 0;
    int lastCol = -1;
    double skipped = 0;  // the height of firstRow that is on the pages before
};

// The pages of the sheet on view for the grid's print settings and a paper size in twips.
class PrintLayout {
public:
    PrintLayout(const SheetGrid& grid, const QSizeF& paper, PrintFaces& faces);

    const std::vector<PrintedPage>& pages() const { return m_pages; }
    const GridArea& area() const { return m_area; }
    int sheet() const { return m_sheet; }

    // The rectangle on the paper for heads and cells.
    const QRectF& body() const { return m_body; }
    double scale() const { return m_scale; }

    // Printed width of a column and height of a row, 0 if hidden. Number 0 means the heads.
    double width(int col) const;
    double height(int row) const;

    // The span that covers a cell; null if there is none.
    const CellSpan* spanAt(int col, int row) const;

    // The distance between a cell's edge and its text.
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
    std::vector<std::vector<CellSpan>> m_spansOfRow;
    QRectF m_body;
    double m_scale = 1;
    GridArea m_area;
    double m_headWidth = 0;
    double m_headHeight = 0;
    std::vector<double> m_widths;
    std::vector<double> m_heights;
    std::vector<PrintedPage> m_pages;
};
