// What the tests of the chart windows share.
#pragma once

#include "charts/frm_transpose.h"
#include "charts/sheet_music.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

class ChartTest : public WindowTest {
    Q_OBJECT

protected:
    // Opens the chart window from the button bar and clears the statement log.
    SheetMusic& open();

    // Picks an item of the window's menu bar by clicks.
    void pick(QMenu* menu, QAction* item);

    // Opens the chart in the transpose window by the menu.
    frmTranspose& openTranspose(SheetMusic& window);

    // Writes the chart's first page and some of each further one.
    static void write(SheetMusic& window, int pages);

    // Everything that a chart's file has to keep, as text.
    static QString stateOf(const SheetGrid* chart);

    // A file of the program's folder with these bytes; its path.
    QString makeFile(const QString& relative, const QByteArray& bytes);

    // Adds a song; its ID.
    QString addSong(const QString& title);
    QString fileLocoOf(const QString& id);

    // Whether a panel lies over the grid of its window, or behind it.
    static bool isOnTop(const QWidget* panel);

    // Types texts into the chart's cells of the page on view.
    void type(SheetView* grid, int col, int row, const QString& text);

    // The texts of a page's row, cells without one left out.
    static QStringList rowOf(const SheetGrid* grid, int page, int row);

    // The texts of column 1 of a page's lyric rows, up to the last that has one.
    static QStringList lyricsOf(const SheetGrid* grid, int page);
};
