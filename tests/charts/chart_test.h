// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Shared by the tests of the chart windows.
#pragma once

#include "charts/frm_transpose.h"
#include "charts/rules/chart_import.h"
#include "charts/rules/chart_page.h"
#include "charts/rules/song_tie.h"
#include "charts/sheet_music.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

inline const QString ChartNotSaved =
    QStringLiteral("File did not save, try again or contact Lorvanite.");
inline const QString TieQuestion =
    QStringLiteral("Would you like to associate this music to a song in the database?");
inline const QString NoSongToTie =
    QStringLiteral("Please select a song title to assign this file to.");

class ChartTest : public WindowTest {
    Q_OBJECT

protected:
    // Opens the chart window from the button bar and clears the statement log.
    SheetMusic& open();

    // Picks an item of the window's menu bar with clicks.
    void pick(QMenu* menu, QAction* item);

    // Opens the chart in the transpose window with the menu.
    frmTranspose& openTranspose(SheetMusic& window);

    // Adds pages to the chart of one page until it has so many, and writes some text to each.
    static void write(SheetMusic& window, int pages);

    // Everything that a chart's file must keep, as text.
    static QString stateOf(const SheetGrid* chart);

    // Writes a file of the program's folder; returns its path.
    QString makeFile(const QString& relative, const QByteArray& bytes);

    // Adds a song; returns its ID.
    QString addSong(const QString& title);
    QString fileLocoOf(const QString& id);

    // Returns true if a panel is in front of its window's grid, false if it is behind it.
    static bool isOnTop(const QWidget* panel);

    // Types a text into a cell of the page shown.
    void type(SheetView* grid, int col, int row, const QString& text);

    // The texts of a page's row, without empty cells.
    static QStringList rowOf(const SheetGrid* grid, int page, int row);

    // The texts of a page's lyric rows, up to the last that is not empty.
    static QStringList lyricsOf(const SheetGrid* grid, int page);
};
