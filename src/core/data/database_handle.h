// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Owning handles for SQLite, and its errors as run-time errors. For the files of this folder alone.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <sqlite3.h>

// How long a statement waits for another program's lock, in milliseconds.
constexpr int LockWait = 2000;

struct StoreCloser {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};
using StoreHandle = std::unique_ptr<sqlite3, StoreCloser>;

struct StoreFinalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StoreStatement = std::unique_ptr<sqlite3_stmt, StoreFinalizer>;

// Raises RunTimeError::StoreFailed, with the given reason or with SQLite's last one.
[[noreturn]] void failStore(const QString& why);
[[noreturn]] void failStore(sqlite3* handle);

// Raises RunTimeError::StoreFailed with the file's name before the reason.
[[noreturn]] void failToOpen(const QString& file, const QString& why);

// Opens a file with SQLite's flags. Raises RunTimeError::StoreFailed.
StoreHandle openStore(const char* name, int flags);

// Opens an empty database in memory. Raises RunTimeError::StoreFailed.
StoreHandle openMemoryStore();

// Prepares a statement for its first step. Raises RunTimeError::StoreFailed.
StoreStatement prepareInStore(sqlite3* handle, const char* text);

// Runs statements to their ends. Raises RunTimeError::StoreFailed.
void runInStore(sqlite3* handle, const char* text);

// Sets the journal and the synchronisation with which every commit is on the disk, with nothing
// left in the folder, before its statement returns. Raises RunTimeError::StoreFailed.
void makeDurable(sqlite3* handle);

// The texts in the first column of a query's rows. Raises RunTimeError::StoreFailed.
QStringList firstColumnInStore(sqlite3* handle, const char* query);

// The whole database as the bytes of its file, as the handle sees it. Raises
// RunTimeError::StoreFailed.
QByteArray bytesOfStore(sqlite3* handle);
