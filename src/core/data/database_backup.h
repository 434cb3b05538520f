// Copies of the whole database, taken and brought back while it is open.
#pragma once

#include <QString>

class Connection;

// Writes all of the open database to a file, also while a statement runs on it. The file is
// replaced whole or left as it was. Raises 76 where its folder is missing, 70 where the file is
// the open database itself, 75 where it cannot be written, -2147467259 where the database cannot
// be read, 3704 where it is closed.
void backUpDatabase(const Connection& connection, const QString& file);

// Makes all of a file the content of the open database, in one step: whatever happens, the
// database holds afterwards what it held before or what the file holds. Raises 53 where the file
// is missing, -2147467259 where it is no database, is damaged, lacks a table or column of the
// program's, is of a later version, or where the open database is in use, 3704 where it is closed.
// An earlier version's is brought up on the way; the file itself stays as it is.
void restoreDatabase(Connection& connection, const QString& file);
