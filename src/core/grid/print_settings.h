// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Print settings of a grid.
#pragma once

#include <QString>

#include <algorithm>

enum class PrintOrientations { Portrait = 1, Landscape = 2 };
enum class PrintTypes { All = 0, Block = 1 };
enum class PrintScaling { AsItIs = 1, BestFit = 3 };

// How a grid is printed. The settings are kept between prints, but not saved with the grid.
class PrintSettings {
public:
    // Whether each page has a frame around its cells; initially false.
    bool PrintBorder() const { return m_border; }
    void PrintBorder(bool on) { m_border = on; }

    // Whether each page shows the column heads and the row heads; initially true.
    bool PrintColHeaders() const { return m_colHeaders; }
    void PrintColHeaders(bool on) { m_colHeaders = on; }
    bool PrintRowHeaders() const { return m_rowHeaders; }
    void PrintRowHeaders(bool on) { m_rowHeaders = on; }

    // Whether grid lines are printed; initially true.
    bool PrintGrid() const { return m_grid; }
    void PrintGrid(bool on) { m_grid = on; }

    // Whether the heads have a shaded background; initially true.
    bool PrintShadows() const { return m_shadows; }
    void PrintShadows(bool on) { m_shadows = on; }

    // Whether colours are printed; if not, everything is black on white. Initially true.
    bool PrintColor() const { return m_color; }
    void PrintColor(bool on) { m_color = on; }

    // Whether the print ends with the last row and column that have a text or a picture; if not,
    // the whole sheet is printed. Initially true.
    bool PrintUseDataMax() const { return m_useDataMax; }
    void PrintUseDataMax(bool on) { m_useDataMax = on; }

    // Margins in twips (1440 to the inch), 0 to 14400, initially 720.
    int PrintMarginTop() const { return m_top; }
    void PrintMarginTop(int twips) { m_top = margin(twips); }
    int PrintMarginBottom() const { return m_bottom; }
    void PrintMarginBottom(int twips) { m_bottom = margin(twips); }
    int PrintMarginLeft() const { return m_left; }
    void PrintMarginLeft(int twips) { m_left = margin(twips); }
    int PrintMarginRight() const { return m_right; }
    void PrintMarginRight(int twips) { m_right = margin(twips); }

    PrintOrientations PrintOrientation() const { return m_orientation; }
    void PrintOrientation(PrintOrientations orientation) { m_orientation = orientation; }

    // Prints the whole sheet, or the block from (Col, Row) to (Col2, Row2) of the grid.
    PrintTypes PrintType() const { return m_type; }
    void PrintType(PrintTypes type) { m_type = type; }

    // With PrintScaling::BestFit the columns are shrunk to PrintBestFitPagesWide pages across, at
    // least 1 and initially 1; they are never enlarged.
    PrintScaling PrintScalingMethod() const { return m_scaling; }
    void PrintScalingMethod(PrintScaling method) { m_scaling = method; }
    int PrintBestFitPagesWide() const { return m_pagesWide; }
    void PrintBestFitPagesWide(int pages) { m_pagesWide = std::max(pages, 1); }

    // Whether a sheet that is slightly too wide for its paper is shrunk, to no less than two thirds
    // of its size, so that no column spills over to another page. Initially false.
    bool PrintSmartPrint() const { return m_smart; }
    void PrintSmartPrint(bool on) { m_smart = on; }

    // The name of the print job; if it is empty, the texts of the first row that has any.
    const QString& PrintJobName() const { return m_jobName; }
    void PrintJobName(const QString& name) { m_jobName = name; }

    // A line of text at the top and at the bottom of each page. "/c" centres what follows it, "/p"
    // is the page number, "/pc" the number of pages.
    const QString& PrintHeader() const { return m_header; }
    void PrintHeader(const QString& text) { m_header = text; }
    const QString& PrintFooter() const { return m_footer; }
    void PrintFooter(const QString& text) { m_footer = text; }

private:
    static int margin(int twips) { return std::clamp(twips, 0, 14400); }

    bool m_border = false;
    bool m_colHeaders = true;
    bool m_rowHeaders = true;
    bool m_grid = true;
    bool m_shadows = true;
    bool m_color = true;
    bool m_useDataMax = true;
    bool m_smart = false;
    int m_top = 720;
    int m_bottom = 720;
    int m_left = 720;
    int m_right = 720;
    int m_pagesWide = 1;
    PrintOrientations m_orientation = PrintOrientations::Portrait;
    PrintTypes m_type = PrintTypes::All;
    PrintScaling m_scaling = PrintScaling::AsItIs;
    QString m_jobName;
    QString m_header;
    QString m_footer;
};
