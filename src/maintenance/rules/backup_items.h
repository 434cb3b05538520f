// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What "Backup Files" can copy, and the copying.
#pragma once

#include <QString>

#include <array>

// The title of a command's dialog, and its report ahead of the folder.
struct BackupTexts {
    const char* title;
    const char* report;
};

struct BackupItem {
    const char* folder;  // below the program's folder; empty for the database
    BackupTexts backup;
    BackupTexts restore;

    bool isDatabase() const { return !*folder; }
};

// The indexes of the items, in the order of the window's boxes.
namespace BackupIndex {
enum { Database, SavedSets, SetDesigns, Schedules, Count };
}

// The items by their index. Deliberate: behaviour 181.
extern const std::array<BackupItem, BackupIndex::Count> BackupItems;

// Copies an item into a folder of the user's choice. Raises what backUpDatabase and copyFolder
// raise.
void backUpItem(const BackupItem& item, const QString& folder);

// Copies an item back from a folder of the user's choice. If it fails or the process is killed, the
// item is as it was. Raises what restoreDatabase and
// copyFolder raise.
void restoreItem(const BackupItem& item, const QString& folder);

// Tidies up after a restore that was killed. To be called at the start of the program.
void finishRestores();

// Empties the tables of songs, categories, dates and people. Raises what a failing statement
// raises; the tables before it stay empty.
void emptyDatabase();
