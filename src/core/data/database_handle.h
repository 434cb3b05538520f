// SQLite's handles, let go by themselves, and its errors as run-time errors. For the store alone.
#pragma once

#include <QByteArray>
#include <QString>

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

// Raises -2147467259 with a reason of our own or with SQLite's last one.
[[noreturn]] void failStore(const QString& why);
[[noreturn]] void failStore(sqlite3* handle);

// Raises it with a file's name before the reason.
[[noreturn]] void failToOpen(const QString& file, const QString& why);

// Opens a file by SQLite's flags. Raises as above.
StoreHandle openStore(const char* name, int flags);

// A statement, ready for its first step; statements run to their ends. Both raise as above.
StoreStatement prepareInStore(sqlite3* handle, const char* text);
void runInStore(sqlite3* handle, const char* text);

// All of the database as the bytes of its file, as the handle sees it. Raises as above.
QByteArray bytesOfStore(sqlite3* handle);
