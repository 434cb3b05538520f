#include "core/database_backup.h"

#include "core/database.h"
#include "core/paths.h"
#include "core/run_time_error.h"

#include <QFileInfo>

#include <filesystem>
#include <memory>
#include <sqlite3.h>

namespace {

// What a database needs for the program to work on it.
constexpr const char* NeededColumns[] = {
    "SELECT ID, title, artist, dakey, cat1, cat2, cat3, cat4, cat5, playlist, fileLoco, CCLI, "
    "soundFile FROM songs",
    "SELECT ID, name, description FROM categories",
    "SELECT ID, title, played_date, songID FROM played_on",
    "SELECT ID, song_name, play_date, remind_schedule, remind_interval FROM special_music",
    "SELECT var_name, var_value FROM prefs",
    "SELECT ID, post_date, notes, notify_date FROM notes",
    "SELECT ID, fName, lName, role, role2, role3, address, city, state, zip, phone, cell, email, "
    "vDays, excludeScheduling FROM personell",
    "SELECT player, instrument, pdate FROM schedule",
    "SELECT * FROM vacation",
    "SELECT colName, noteValue FROM transpose",
};

struct Closer {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

[[noreturn]] void fail(const QString& why) { throw RunTimeError(RunTimeError::StoreFailed, why); }

[[noreturn]] void fail(sqlite3* handle) { fail(QString::fromUtf8(sqlite3_errmsg(handle))); }

Handle openHandle(const char* name, int flags) {
    sqlite3* raw = nullptr;
    const int result = sqlite3_open_v2(name, &raw, flags, nullptr);
    Handle handle(raw);
    if (result != SQLITE_OK) fail(handle.get());
    return handle;
}

// A database in memory for one copy between two files: what was checked is what is written, and a
// stick that is pulled out in between holds nothing up.
Handle openMemory() { return openHandle(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE); }

// All of one database over all of another, as one transaction of the other.
void copyWhole(sqlite3* from, sqlite3* to) {
    sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
    if (!backup) fail(to);
    const int step = sqlite3_backup_step(backup, -1);
    const int end = sqlite3_backup_finish(backup);
    if (step != SQLITE_DONE) fail(QString::fromUtf8(sqlite3_errstr(step)));
    if (end != SQLITE_OK) fail(to);
}

Statement prepare(sqlite3* handle, const char* text) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(handle, text, -1, &raw, nullptr) != SQLITE_OK) fail(handle);
    return Statement(raw);
}

void checkIsWhole(sqlite3* handle) {
    const Statement statement = prepare(handle, "PRAGMA integrity_check(1)");
    if (sqlite3_step(statement.get()) != SQLITE_ROW) fail(handle);
    const QString verdict =
        QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
    if (verdict != QLatin1String("ok"))
        fail(QStringLiteral("The file is damaged: ") + verdict.simplified());
}

void checkHasAllTables(sqlite3* handle) {
    for (const char* needed : NeededColumns) prepare(handle, needed);
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
    const Handle copy = openMemory();
    copyWhole(connection.handle(), copy.get());
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, void (*)(void*)> bytes(
        sqlite3_serialize(copy.get(), "main", &size, 0), sqlite3_free);
    if (!bytes) fail(copy.get());
    const auto* start = reinterpret_cast<const char*>(bytes.get());
    if (!replaceFile(target, QByteArray::fromRawData(start, qsizetype(size))))
        throw RunTimeError(RunTimeError::PathAccess,
                           QStringLiteral("The file \"%1\" cannot be written.").arg(target));
}

void restoreDatabase(Connection& connection, const QString& file) {
    if (!connection.isOpen()) throw RunTimeError(RunTimeError::ObjectIsClosed);
    const QString source = resolvedPath(file);
    if (!QFileInfo(source).isFile())
        throw RunTimeError(RunTimeError::FileNotFound,
                           QStringLiteral("The file \"%1\" is missing.").arg(source));
    const Handle copy = openMemory();
    copyWhole(openHandle(source.toUtf8().constData(), SQLITE_OPEN_READONLY).get(), copy.get());
    checkIsWhole(copy.get());
    checkHasAllTables(copy.get());
    copyWhole(copy.get(), connection.handle());
}
