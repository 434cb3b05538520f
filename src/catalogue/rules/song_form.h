// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The form of one song: a grid with one field a row, read from and written to the table songs.
#pragma once

#include <QString>

#include <vector>

class SheetGrid;

// The columns of the form. The labels are the row heads.
namespace SongFormColumn {
enum { Label = 0, Value };
}

// The rows of the form.
namespace SongRow {
enum {
    ID = 1,
    Title,
    Artist,
    Key,
    Category1,
    Category2,
    Category3,
    Category4,
    Category5,
    SheetMusic,
    Playlist,
    CCLI,
    SoundFile,
    Last = SoundFile,
};
}

// Gives a grid the rows, labels and cell types of the form.
void setUpSongForm(SheetGrid& form);

// Offers the categories in rows 5 to 9 of the form. An open list shows at most 25 of them.
void offerCategories(SheetGrid& form, const QStringList& categories);

// The value of a row of the form.
QString songValue(const SheetGrid& form, int row);

// Fills the rows from category 1 down from the table. Raises RunTimeError::NoCurrentRecord if there
// is no song of that ID.
void showSongFields(SheetGrid& form, const QString& songID);

// A song as the form stores it, its texts cleaned of the apostrophes that a statement cannot take.
struct SongRecord {
    struct Field {
        QString column;
        QString value;
    };
    QString id;                 // empty for a new song
    QString title;              // as in `fields`
    std::vector<Field> fields;  // in the order of the statement
};

// Reads the form. A form without a title or a first category is not complete.
SongRecord readSong(const SheetGrid& form);
bool isSongComplete(const SheetGrid& form);

// Inserts a song without an ID and updates any other. Raises RunTimeError::StatementRefused if an
// apostrophe is left in a value.
void storeSong(const SongRecord& song);

// Whether there is a song of that ID. An empty ID is none.
bool songExists(const QString& songID);

// Deletes a song; its dates stay in played_on.
void deleteSong(const QString& songID);
