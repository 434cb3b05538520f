#include "core/data/database_upgrade.h"

#include "core/data/database_handle.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QFile>
#include <QFileInfo>

#include <functional>
#include <iterator>

namespace {

// Step i brings tables of version i to version i + 1. A step that a release has carried out stays
// as it is: changes come as a new one, and db1.sql makes at once what all steps make in the end.
constexpr const char* Steps[] = {
    // The files of the time before versions were counted; the oldest lack the index.
    "CREATE INDEX IF NOT EXISTS played_on_song ON played_on (songID)",
};

int versionOf(sqlite3* handle) {
    const StoreStatement statement = prepareInStore(handle, "PRAGMA user_version");
    if (sqlite3_step(statement.get()) != SQLITE_ROW) failStore(handle);
    return sqlite3_column_int(statement.get(), 0);
}

void refuseLater(int version, const QString& file) {
    if (version >= 0 && version <= databaseVersion()) return;
    failToOpen(file, QStringLiteral("a later version of Lorvanite has made it (its tables are of "
                                    "version %1, and this program knows those up to %2). It was "
                                    "left as it is")
                         .arg(version)
                         .arg(databaseVersion()));
}

// Runs the missing steps in a transaction, with `before` ahead of the first. Nothing has happened
// where it raises.
void runSteps(sqlite3* handle, const QString& file,
              const std::function<void(int version)>& before) {
    runInStore(handle, "BEGIN IMMEDIATE");
    try {
        // Another program may have done it since the first look.
        const int version = versionOf(handle);
        refuseLater(version, file);
        if (version < databaseVersion()) before(version);
        for (int i = version; i < databaseVersion(); ++i) runInStore(handle, Steps[i]);
        runInStore(
            handle,
            qPrintable(QStringLiteral("PRAGMA user_version = %1; COMMIT").arg(databaseVersion())));
    } catch (const RunTimeError&) {
        sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

bool holds(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() == bytes.size() && file.readAll() == bytes;
}

// Writes a copy under a name that is free. One that was set aside before and is the same does.
void setAside(const QByteArray& bytes, const QString& file, int version) {
    const QFileInfo info(file);
    const QString name = QStringLiteral("%1/%2 version %3 %4")
                             .arg(info.path(), info.completeBaseName(), QString::number(version),
                                  today().toString(Qt::ISODate));
    const QString ending = QLatin1Char('.') + info.suffix();
    QString path = name + ending;
    for (int n = 2; QFile::exists(path); ++n) {
        if (holds(path, bytes)) return;
        path = QStringLiteral("%1 (%2)%3").arg(name, QString::number(n), ending);
    }
    if (!replaceFile(path, bytes))
        failStore(QStringLiteral("the copy \"%1\" cannot be written").arg(path));
}

}  // namespace

int databaseVersion() { return static_cast<int>(std::size(Steps)); }

void upgradeTables(sqlite3* handle, const QString& file) {
    const int version = versionOf(handle);
    refuseLater(version, file);
    if (version < databaseVersion()) runSteps(handle, file, [](int) {});
}

void upgradeDatabase(const QString& path) {
    const QString file = resolvedPath(path);
    StoreHandle handle;
    int version = 0;
    try {
        handle = openStore(file.toUtf8().constData(), SQLITE_OPEN_READWRITE);
        sqlite3_busy_timeout(handle.get(), LockWait);
        version = versionOf(handle.get());
    } catch (const RunTimeError& error) {
        failToOpen(file, error.description());
    }
    // Nothing may be written before this look: a later version's file stays as it is.
    refuseLater(version, file);
    if (version == databaseVersion()) return;
    try {
        runInStore(handle.get(), "PRAGMA journal_mode = DELETE; PRAGMA synchronous = EXTRA");
        runSteps(handle.get(), file,
                 [&](int from) { setAside(bytesOfStore(handle.get()), file, from); });
    } catch (const RunTimeError& error) {
        failToOpen(file, QStringLiteral("it is of an earlier version and cannot be brought up to "
                                        "this one (%1). It was left as it is")
                             .arg(error.description()));
    }
}
