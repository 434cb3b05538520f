// What the tests of the set window share.
#pragma once

#include "sets/frm_set_list.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

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

    // Picks an item of a category box by the keyboard, as a person does.
    void pick(QComboBox* box, const QString& item);

    // Types a text into a category box, which starts nothing.
    void type(QComboBox* box, const QString& text);

    // Writes a design with these labels below the date row, and makes it the default.
    QString makeDefaultDesign(const QStringList& labels);
};
