// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Backup and restore of the whole database while it is open.
#pragma once

#include <QString>

class Connection;

// Writes the whole open database to a file, even while a statement runs on it. The file is replaced
// whole or left as it was. Raises RunTimeError::ObjectIsClosed if the database is closed,
// PathNotFound if the file's folder is missing, PermissionDenied if the file is the open database
// itself, PathAccess if it cannot be written, StoreFailed if the database cannot be read.
void backUpDatabase(const Connection& connection, const QString& file);

// Replaces the whole content of the open database by that of a file, in one transaction. The
// content of an earlier version is upgraded, and missing rows of prefs are added; the file itself
// is never changed. Raises RunTimeError::ObjectIsClosed if the database is closed, FileNotFound if
// the file is missing, StoreFailed if the file is not a database, is damaged or cut, lacks a table
// or column of the delivered database, is not in UTF-8, or comes from a later version or another
// program, or if the open database is in use. If it raises, the database holds what it held before.
void restoreDatabase(Connection& connection, const QString& file);
