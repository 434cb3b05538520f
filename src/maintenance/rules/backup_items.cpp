// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/rules/backup_items.h"

#include "core/data/database.h"
#include "core/data/database_backup.h"
#include "core/data/file_copy.h"
#include "core/data/paths.h"

namespace {

QString databaseIn(const QString& folder) { return folder + QStringLiteral("/db1.mdb"); }

QString programFolderOf(const BackupItem& item) {
    return programFolder() + QLatin1String(item.folder);
}

}  // namespace

const std::array<BackupItem, BackupIndex::Count> BackupItems{{
    {"",
     {"Copy Database Here", "Copied Database To: "},
     {"Restore Database From", "Restored Database To: "}},
    {"\\saved sets",
     {"Copy Saved Sets Here", "Copied Saved Sets To: "},
     {"Restore Saved Sets From", "Restored Saved Sets To: "}},
    {"\\set designs",
     {"Copy Set Designs Here", "Copied Set Designs To: "},
     {"Restore Set Designs From", "Restored Set Designs To: "}},
    {"\\schedules",
     {"Copy Schedules Here", "Copied Schedules To: "},
     {"Restore Schedules From", "Restored Schedules To: "}},
}};

void backUpItem(const BackupItem& item, const QString& folder) {
    if (item.isDatabase())
        backUpDatabase(dbConn, databaseIn(folder));
    else
        copyFolder(programFolderOf(item), folder + QLatin1String(item.folder));
}

void restoreItem(const BackupItem& item, const QString& folder) {
    if (item.isDatabase())
        restoreDatabase(dbConn, databaseIn(folder));  // Deliberate: behaviour 186.
    else
        copyFolder(folder, programFolderOf(item),
                   FolderCopy::AsOne);  // Deliberate: behaviours 182 and 185.
}

void finishRestores() {
    for (const BackupItem& item : BackupItems)
        if (!item.isDatabase()) finishFolderCopy(programFolderOf(item));
}

void emptyDatabase() {
    // Deliberate: behaviour 187.
    for (const char* statement :
         {"DELETE * FROM songs", "DELETE * FROM categories", "DELETE * FROM played_on",
          "DELETE * FROM schedule", "DELETE * FROM personell", "DELETE * FROM vacation"})
        execute(QLatin1String(statement), LockType::BatchOptimistic);
}
