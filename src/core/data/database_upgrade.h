// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Versions of the database's tables, and the upgrade of earlier ones.
#pragma once

#include <QString>

struct sqlite3;

// The version of the tables that this program works on. A file keeps its own in "user_version".
int databaseVersion();

// Upgrades a database file to this program's version in one transaction. Before that it writes a
// copy of the file into the same folder, named after the version and the day. A file of this
// version is left alone. Raises RunTimeError::StoreFailed, with the file as it was, if the file
// comes from a later version or another program, or cannot be opened, copied or upgraded.
void upgradeDatabase(const QString& file);

// Upgrades the tables of an open database in one transaction, without a copy. `file` is the name
// for the error texts. Raises RunTimeError::StoreFailed if the tables are those of a later version
// or of another program, or cannot be upgraded.
void upgradeTables(sqlite3* handle, const QString& file);
