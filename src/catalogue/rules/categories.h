// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Categories: their table, and their names in the five category columns of songs.
#pragma once

#include <QString>
#include <QStringList>

class SheetGrid;

// The columns of the grid of categories.
namespace CategoryColumn {
enum { ID = 1, Name, Description };
}

// A row of the table categories.
struct Category {
    QString id;  // empty for a new one
    QString name;
    QString description;
};

// Gives a grid the columns of the categories.
void setUpCategories(SheetGrid& grid);

// Lists the categories in the table's order. Rows below the last one stay as they are.
void listCategories(SheetGrid& grid);

// The names of all categories in the table's order.
QStringList categoryNames();

// Whether a name is kept for the hymns, which the song picker treats in a way of its own.
bool isReservedCategory(const QString& name);

// Inserts a category without an ID. Updates any other, and gives its new name to every song that
// has the old one in any of the five columns. Raises what a failing statement raises; what was
// stored before stays.
void storeCategory(const Category& category, const QString& oldName);

// Deletes a category. Songs keep its name.
void deleteCategory(const QString& id);

// Puts a category into the first free one of a song's columns cat1 to cat4. False if none is free.
// Raises RunTimeError::NoCurrentRecord if there is no song of that ID.
[[nodiscard]] bool giveCategory(const QString& songID, const QString& category);
