// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the tests of the set window share.
#pragma once

#include "core/data/run_time_error.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "sets/rules/song_picker.h"
#include "support/grid_hands.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"

#include <QPageSize>

// A row of songs. Members that are left out are empty.
struct TestSong {
    QString title = {};
    QString cat1 = {}, cat2 = {}, cat3 = {}, cat4 = {}, cat5 = {};
    QString playlist = QStringLiteral("Current");
    QString fileLoco = {}, soundFile = {}, artist = {}, key = {};
};

class SetListTest : public WindowTest {
    Q_OBJECT

protected:
    // Returns the ID of the song.
    QString addSong(const TestSong& song);
    void addPlayed(const QString& id, const QStringList& dates);
    void addCategories(const QStringList& names);

    // Opens the window from the button bar and clears the statement log.
    frmSetList& open();

    // The same, with a date and with these titles from row 2.
    frmSetList& openWith(const QString& date, const QStringList& titles);
    void fill(frmSetList& w, const QString& date, const QStringList& titles);

    // Clicks a button that prints. Returns the path of the PDF.
    QString printedBy(QPushButton* button, QPageSize::PageSizeId paper = QPageSize::A4);

    // Sets all print settings of a set to other values, and checks that they are right.
    static void spoilPrintSettings(SheetGrid& grid);
    static void seeSetPrintSettings(const SheetGrid& grid);

    // The content of a file in the program folder. Fails if there is no such file.
    QByteArray bytesOf(const QString& relative);

    // Colours the title of a row.
    static void paint(SheetGrid& set, int row, int colour = SheetMusicGreen);

    // Chooses an item of a category box with the keyboard.
    void pick(QComboBox* box, const QString& item);

    // Types a text into a category box.
    void type(QComboBox* box, const QString& text);

    // Saves a design with these labels below the row of the date and makes it the default. Returns
    // its path.
    QString makeDefaultDesign(const QStringList& labels);
};
