// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/database_backup.h"

#include "core/data/database.h"
#include "core/data/database_handle.h"
#include "core/data/database_upgrade.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "database_schema.h"

#include <QFileInfo>

#include <filesystem>

namespace {

// How long a copy waits for another program's lock, in milliseconds: longer than a statement, since
// a busy writer leaves only short gaps.
constexpr int CopyWait = 15000;

// Lets a connection wait longer for locks during its own lifetime.
class Patience {
public:
    explicit Patience(sqlite3* handle) : m_handle(handle) {
        sqlite3_busy_timeout(m_handle, CopyWait);
    }
    ~Patience() { sqlite3_busy_timeout(m_handle, LockWait); }
    Patience(const Patience&) = delete;
    Patience& operator=(const Patience&) = delete;

private:
    sqlite3* m_handle;
};

bool isBusy(int result) { return result == SQLITE_BUSY || result == SQLITE_LOCKED; }

// Replaces the whole content of one database by another's, in one transaction. Returns SQLite's
// result.
int copyWhole(sqlite3* from, sqlite3* to) {
    sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
    if (!backup) return SQLITE_LOCKED;  // a statement runs on the target
    const int step = sqlite3_backup_step(backup, -1);
    const int end = sqlite3_backup_finish(backup);
    return step == SQLITE_DONE ? end : step;
}

QString reasonOf(int result) { return QString::fromUtf8(sqlite3_errstr(result)); }

// `what` tells the user, `why` the one who is asked for help.
[[noreturn]] void failToRestore(const char* what, const QString& why) {
    failStore(QStringLiteral("%1 and was not restored; your songs are as they were. (%2)")
                  .arg(QLatin1String(what), why));
}

[[noreturn]] void failDamaged(const QString& why) { failToRestore("This copy is damaged", why); }

// SQLite fills a page that lacks its end with zeros and takes the file for whole.
void checkHasItsLength(sqlite3* handle, const QString& file) {
    const qint64 pages = firstColumnInStore(handle, "PRAGMA page_count").value(0).toLongLong();
    const qint64 size = firstColumnInStore(handle, "PRAGMA page_size").value(0).toLongLong();
    const qint64 length = QFileInfo(file).size();
    // With a write-ahead log the last pages may still be in the log.
    if (length >= pages * size || QFileInfo(file + QStringLiteral("-wal")).size() > 0) return;
    failDamaged(QStringLiteral("the file has %1 of %2 bytes").arg(length).arg(pages * size));
}

void checkIsWhole(sqlite3* handle) {
    const QString verdict =
        firstColumnInStore(handle, "PRAGMA integrity_check(1)").join(QLatin1Char(' '));
    if (verdict != QLatin1String("ok")) failDamaged(verdict.simplified());
}

// Reads a whole database file into memory and checks it.
StoreHandle readCopy(const QString& file) {
    if (!QFileInfo(file).isReadable())
        failToRestore("This copy cannot be read", QStringLiteral("permission denied"));
    StoreHandle copy = openMemoryStore();
    try {
        const StoreHandle source = openStore(file.toUtf8().constData(), SQLITE_OPEN_READONLY);
        const Patience patience(source.get());
        const int result = copyWhole(source.get(), copy.get());
        if (isBusy(result))
            failToRestore("This copy is in use by another program", reasonOf(result));
        if (result != SQLITE_OK) failDamaged(reasonOf(result));
        checkHasItsLength(source.get(), file);
        checkIsWhole(copy.get());
    } catch (const RunTimeError& error) {
        if (error.description().startsWith(QLatin1String("This copy"))) throw;
        failDamaged(error.description());
    }
    const QString encoding = firstColumnInStore(copy.get(), "PRAGMA encoding").value(0);
    if (encoding != QLatin1String("UTF-8"))
        failToRestore("This copy was written by another program",
                      QStringLiteral("its texts are in ") + encoding);
    return copy;
}

// Every table of the delivered database has to be there with its columns: a statement that names
// them all can be prepared.
void checkHasAllTables(sqlite3* handle, sqlite3* delivered) {
    const QStringList needed = firstColumnInStore(
        delivered,
        "SELECT 'SELECT ' || group_concat(c.name) || ' FROM ' || t.name FROM sqlite_master AS t, "
        "pragma_table_info(t.name) AS c WHERE t.type = 'table' AND t.name NOT LIKE 'sqlite_%' "
        "GROUP BY t.name");
    for (const QString& statement : needed) prepareInStore(handle, statement.toUtf8().constData());
}

// The windows need every row of prefs. Those that a copy lacks are delivered.
void addMissingPreferences(sqlite3* handle, sqlite3* delivered) {
    const QStringList additions = firstColumnInStore(
        delivered,
        "SELECT 'INSERT INTO prefs (var_name, var_value) SELECT ' || quote(var_name) || ', ' || "
        "quote(var_value) || ' WHERE NOT EXISTS (SELECT 1 FROM prefs WHERE var_name = ' || "
        "quote(var_name) || ')' FROM prefs ORDER BY rowid");
    for (const QString& addition : additions) runInStore(handle, addition.toUtf8().constData());
}

bool isSameFile(const QString& a, const QString& b) {
    std::error_code error;
    return std::filesystem::equivalent(a.toStdU16String(), b.toStdU16String(), error);
}

}  // namespace

void backUpDatabase(const Connection& connection, const QString& file) {
    if (!connection.isOpen()) throw RunTimeError(RunTimeError::ObjectIsClosed);
    const QString target = resolvedPath(file);
    const QString folder = QFileInfo(target).path();
    if (!QFileInfo(folder).isDir())
        throw RunTimeError(RunTimeError::PathNotFound,
                           QStringLiteral("The folder \"%1\" is missing.").arg(folder));
    const QString own = QString::fromUtf8(sqlite3_db_filename(connection.handle(), "main"));
    if (isSameFile(own, target))
        throw RunTimeError(RunTimeError::PermissionDenied,
                           QStringLiteral("The database cannot be copied onto itself."));
    // What was read whole into memory is written: a USB stick that is pulled out in between cannot
    // hold up the database.
    const StoreHandle copy = openMemoryStore();
    const Patience patience(connection.handle());
    const int result = copyWhole(connection.handle(), copy.get());
    if (isBusy(result))
        failStore(QStringLiteral("The database is in use by another program and was not copied. "
                                 "Please try again. (%1)")
                      .arg(reasonOf(result)));
    if (result != SQLITE_OK) failStore(reasonOf(result));
    if (!replaceFile(target, bytesOfStore(copy.get())))
        throw RunTimeError(RunTimeError::PathAccess,
                           QStringLiteral("The file \"%1\" cannot be written.").arg(target));
}

void restoreDatabase(Connection& connection, const QString& file) {
    if (!connection.isOpen()) throw RunTimeError(RunTimeError::ObjectIsClosed);
    const QString source = resolvedPath(file);
    if (!QFileInfo(source).isFile())
        throw RunTimeError(RunTimeError::FileNotFound,
                           QStringLiteral("The file \"%1\" is missing.").arg(source));
    // What was checked is what is restored, even if the file changes in between.
    const StoreHandle copy = readCopy(source);
    try {
        upgradeTables(copy.get(), source);
    } catch (const RunTimeError& error) {
        failToRestore("This copy cannot be used by this version of Lorvanite", error.description());
    }
    const StoreHandle delivered = openMemoryStore();
    runInStore(delivered.get(), DatabaseSchema);
    try {
        checkHasAllTables(copy.get(), delivered.get());
    } catch (const RunTimeError& error) {
        failToRestore("This copy is not a whole database of Lorvanite", error.description());
    }
    addMissingPreferences(copy.get(), delivered.get());
    const Patience patience(connection.handle());
    const int result = copyWhole(copy.get(), connection.handle());
    if (isBusy(result))
        failStore(QStringLiteral("The database is in use, so the copy was not restored; your songs "
                                 "are as they were. (%1)")
                      .arg(reasonOf(result)));
    if (result != SQLITE_OK) failToRestore("This copy cannot be written", reasonOf(result));
}
