// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/database_handle.h"

#include "core/data/run_time_error.h"

void failStore(const QString& why) { throw RunTimeError(RunTimeError::StoreFailed, why); }

void failStore(sqlite3* handle) { failStore(QString::fromUtf8(sqlite3_errmsg(handle))); }

void failToOpen(const QString& file, const QString& why) {
    failStore(QStringLiteral("The database \"%1\" cannot be opened: %2.").arg(file, why));
}

StoreHandle openStore(const char* name, int flags) {
    sqlite3* raw = nullptr;
    const int result = sqlite3_open_v2(name, &raw, flags, nullptr);
    StoreHandle handle(raw);
    if (result != SQLITE_OK) failStore(handle.get());
    return handle;
}

StoreHandle openMemoryStore() {
    return openStore(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

StoreStatement prepareInStore(sqlite3* handle, const char* text) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(handle, text, -1, &raw, nullptr) != SQLITE_OK) failStore(handle);
    return StoreStatement(raw);
}

void runInStore(sqlite3* handle, const char* text) {
    if (sqlite3_exec(handle, text, nullptr, nullptr, nullptr) != SQLITE_OK) failStore(handle);
}

void makeDurable(sqlite3* handle) {
    runInStore(handle, "PRAGMA journal_mode = DELETE; PRAGMA synchronous = EXTRA");
}

QStringList firstColumnInStore(sqlite3* handle, const char* query) {
    const StoreStatement statement = prepareInStore(handle, query);
    QStringList texts;
    int result = SQLITE_ROW;
    while ((result = sqlite3_step(statement.get())) == SQLITE_ROW)
        texts.append(QString::fromUtf8(
            reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0))));
    if (result != SQLITE_DONE) failStore(handle);
    return texts;
}

QByteArray bytesOfStore(sqlite3* handle) {
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, void (*)(void*)> bytes(
        sqlite3_serialize(handle, "main", &size, 0), sqlite3_free);
    if (!bytes) failStore(handle);
    return QByteArray(reinterpret_cast<const char*>(bytes.get()), qsizetype(size));
}
