// The versions of the database's tables, and how an earlier one is brought up to this program's.
#pragma once

#include <QString>

struct sqlite3;

// The version that this program works on. A file carries its own in "user_version".
int databaseVersion();

// Brings a database file up to this program's version, in one step: whatever happens, the file is
// afterwards what it was before or is brought up whole. Before that a copy of it is set aside in
// its folder, named by its version and the day. A file of this version is left alone, one of a
// later version too: raises -2147467259 for that, and where the file cannot be opened, copied or
// brought up.
void upgradeDatabase(const QString& file);

// Brings the tables of an open database up, in one transaction and without a copy. `file` is named
// in what it raises: -2147467259 for a later version, or where the tables cannot be brought up.
void upgradeTables(sqlite3* handle, const QString& file);
