// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Special music: songs that somebody performs on a date, outside the ordinary set.
#pragma once

#include <QString>

class SheetGrid;

// The columns of the list; ID and Weeks are hidden.
namespace SpecialMusicColumn {
enum { ID = 1, Title, PlayOn, Reminder, Weeks, Last = Weeks };
}

// An item as the fields of the window hold it.
struct SpecialMusicItem {
    QString title;
    QString playOn;    // "mm/dd/yy" or empty
    QString reminder;  // "Yes" or "No"
    QString weeks;     // before the performance
};

// Gives a grid the columns of the list and no rows.
void setUpSpecialMusic(SheetGrid& list);

// Lists all items, in the order of the table. Raises what a failing statement raises, as the
// functions below do.
void listSpecialMusic(SheetGrid& list);

void insertSpecialMusic(const SpecialMusicItem& item);

// Gives every item of the table these values.
void updateSpecialMusic(const SpecialMusicItem& item);

void deleteSpecialMusic(int id);
