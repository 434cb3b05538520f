#include "core/data/database_backup.h"

#include "core/data/database.h"
#include "core/data/database_handle.h"
#include "core/data/database_upgrade.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QFileInfo>

#include <filesystem>

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

// A database in memory for one copy between two files: what was checked is what is written, and a
// stick that is pulled out in between holds nothing up.
StoreHandle openMemory() {
    return openStore(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

// All of one database over all of another, as one transaction of the other.
void copyWhole(sqlite3* from, sqlite3* to) {
    sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
    if (!backup) failStore(to);
    const int step = sqlite3_backup_step(backup, -1);
    const int end = sqlite3_backup_finish(backup);
    if (step != SQLITE_DONE) failStore(QString::fromUtf8(sqlite3_errstr(step)));
    if (end != SQLITE_OK) failStore(to);
}

void checkIsWhole(sqlite3* handle) {
    const StoreStatement statement = prepareInStore(handle, "PRAGMA integrity_check(1)");
    if (sqlite3_step(statement.get()) != SQLITE_ROW) failStore(handle);
    const QString verdict =
        QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
    if (verdict != QLatin1String("ok"))
        failStore(QStringLiteral("The file is damaged: ") + verdict.simplified());
}

void checkHasAllTables(sqlite3* handle) {
    for (const char* needed : NeededColumns) prepareInStore(handle, needed);
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
    const StoreHandle copy = openMemory();
    copyWhole(connection.handle(), copy.get());
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
    const StoreHandle copy = openMemory();
    copyWhole(openStore(source.toUtf8().constData(), SQLITE_OPEN_READONLY).get(), copy.get());
    checkIsWhole(copy.get());
    upgradeTables(copy.get(), source);
    checkHasAllTables(copy.get());
    copyWhole(copy.get(), connection.handle());
}
