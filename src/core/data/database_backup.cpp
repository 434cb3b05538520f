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

// Replaces the whole content of one database by another's, in one transaction.
void copyWhole(sqlite3* from, sqlite3* to) {
    sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
    if (!backup) failStore(to);
    const int step = sqlite3_backup_step(backup, -1);
    const int end = sqlite3_backup_finish(backup);
    if (step != SQLITE_DONE) failStore(QString::fromUtf8(sqlite3_errstr(step)));
    if (end != SQLITE_OK) failStore(to);
}

void checkIsWhole(sqlite3* handle) {
    const QString verdict =
        firstColumnInStore(handle, "PRAGMA integrity_check(1)").join(QLatin1Char(' '));
    if (verdict != QLatin1String("ok"))
        failStore(QStringLiteral("The file is damaged: ") + verdict.simplified());
}

// Every table of the delivered database has to be there with its columns: a statement that names
// them all can be prepared.
void checkHasAllTables(sqlite3* handle) {
    const StoreHandle delivered = openMemoryStore();
    runInStore(delivered.get(), DatabaseSchema);
    const QStringList needed = firstColumnInStore(
        delivered.get(),
        "SELECT 'SELECT ' || group_concat(c.name) || ' FROM ' || t.name FROM sqlite_master AS t, "
        "pragma_table_info(t.name) AS c WHERE t.type = 'table' AND t.name NOT LIKE 'sqlite_%' "
        "GROUP BY t.name");
    for (const QString& statement : needed) prepareInStore(handle, statement.toUtf8().constData());
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
    // What was checked is what is restored, even if the file changes in between.
    const StoreHandle copy = openMemoryStore();
    copyWhole(openStore(source.toUtf8().constData(), SQLITE_OPEN_READONLY).get(), copy.get());
    checkIsWhole(copy.get());
    upgradeTables(copy.get(), source);
    checkHasAllTables(copy.get());
    copyWhole(copy.get(), connection.handle());
}
