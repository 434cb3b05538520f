// How a grid is printed.
#pragma once

#include <QString>

#include <algorithm>

enum class PrintOrientations { Portrait = 1, Landscape = 2 };
enum class PrintTypes { All = 0, Block = 1 };
enum class PrintScaling { AsItIs = 1, BestFit = 3 };

// The print settings of a grid. They stay between prints and are no part of a saved file.
class PrintSettings {
public:
    // A frame around what is printed on each page; off at first.
    bool PrintBorder() const { return m_border; }
    void PrintBorder(bool on) { m_border = on; }

    // The column heads on each page, and the row heads; on at first.
    bool PrintColHeaders() const { return m_colHeaders; }
    void PrintColHeaders(bool on) { m_colHeaders = on; }
    bool PrintRowHeaders() const { return m_rowHeaders; }
    void PrintRowHeaders(bool on) { m_rowHeaders = on; }

    // Lines between the cells; on at first.
    bool PrintGrid() const { return m_grid; }
    void PrintGrid(bool on) { m_grid = on; }

    // A shaded ground under the heads; on at first.
    bool PrintShadows() const { return m_shadows; }
    void PrintShadows(bool on) { m_shadows = on; }

    // The cells' colours; without it black on white. On at first.
    bool PrintColor() const { return m_color; }
    void PrintColor(bool on) { m_color = on; }

    // Only the rows and columns up to the last with a text or a picture; else all. On at first.
    bool PrintUseDataMax() const { return m_useDataMax; }
    void PrintUseDataMax(bool on) { m_useDataMax = on; }

    // Margins in twips (1440 an inch), 720 at first, 0 to 14400.
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

    // All, or the block from (Col, Row) to (Col2, Row2) of the grid.
    PrintTypes PrintType() const { return m_type; }
    void PrintType(PrintTypes type) { m_type = type; }

    // With BestFit the columns are made to fit PrintBestFitPagesWide pages across (1 at first, at
    // least 1): shrunk, never enlarged.
    PrintScaling PrintScalingMethod() const { return m_scaling; }
    void PrintScalingMethod(PrintScaling method) { m_scaling = method; }
    int PrintBestFitPagesWide() const { return m_pagesWide; }
    void PrintBestFitPagesWide(int pages) { m_pagesWide = std::max(pages, 1); }

    // A sheet that is a little too wide for its paper is shrunk to it, to no less than two thirds,
    // instead of spilling a column over to a page of its own. Off at first.
    bool PrintSmartPrint() const { return m_smart; }
    void PrintSmartPrint(bool on) { m_smart = on; }

    // The job's name; where it is empty the first row of the sheet with a text is taken.
    const QString& PrintJobName() const { return m_jobName; }
    void PrintJobName(const QString& name) { m_jobName = name; }

    // A line at the head or foot of each page. "/c" centres what follows it, "/p" is the page's
    // number and "/pc" the count of pages.
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
