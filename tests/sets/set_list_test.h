// What the tests of the set window share.
#pragma once

#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "sets/rules/song_picker.h"
#include "support/grid_hands.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"

#include <QPageSize>

// A song as its row is written; members that are left out are empty.
struct Song {
    QString title = {};
    QString cat1 = {}, cat2 = {}, cat3 = {}, cat4 = {}, cat5 = {};
    QString playlist = QStringLiteral("Current");
    QString fileLoco = {}, soundFile = {}, artist = {}, key = {};
};

class SetListTest : public WindowTest {
    Q_OBJECT

protected:
    // The ID that the song gets.
    QString addSong(const Song& song);
    void addPlayed(const QString& id, const QStringList& dates);
    void addCategories(const QStringList& names);

    // Opens the window from the button bar and clears the statement log.
    frmSetList& open();

    // The window with a date and these titles in rows 2, 3, ...
    frmSetList& openWith(const QString& date, const QStringList& titles);
    void fill(frmSetList& w, const QString& date, const QStringList& titles);

    // The PDF that a click on a button prints.
    QString printedBy(QPushButton* button, QPageSize::PageSizeId paper = QPageSize::A4);

    // Sets each print setting of a set to what it is not to be, and looks whether all are right.
    static void spoilPrintSettings(SheetGrid& grid);
    static void seeSetPrintSettings(const SheetGrid& grid);

    // The bytes of a file of the program's folder, which has to be there.
    QByteArray bytesOf(const QString& relative);

    // Colours the title of a row.
    static void paint(SheetGrid& set, int row, int colour = SheetMusicGreen);

    // Picks an item of a category box by the keyboard, as a person does.
    void pick(QComboBox* box, const QString& item);

    // Types a text into a category box, which starts nothing.
    void type(QComboBox* box, const QString& text);

    // Writes a design with these labels below the date row, and makes it the default.
    QString makeDefaultDesign(const QStringList& labels);
};
