// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/database_upgrade.h"

#include "core/data/database_handle.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QFile>
#include <QFileInfo>

#include <functional>
#include <iterator>
#include <tuple>

namespace {

// Step i upgrades tables of version i to version i + 1. A step that was released never changes:
// later changes are added as a new step, and db1.sql creates what all steps together lead to.
constexpr const char* Steps[] = {
    // Files from before the versions were counted; the oldest ones lack the index.
    "CREATE INDEX IF NOT EXISTS played_on_song ON played_on (songID)",
};

int versionOf(sqlite3* handle) {
    const StoreStatement statement = prepareInStore(handle, "PRAGMA user_version");
    if (sqlite3_step(statement.get()) != SQLITE_ROW) failStore(handle);
    return sqlite3_column_int(statement.get(), 0);
}

void refuseOtherVersion(int version, const QString& file) {
    if (version >= 0 && version <= databaseVersion()) return;
    if (version < 0)
        failToOpen(file, QStringLiteral("it was not created by Lorvanite (its tables have version "
                                        "%1). The file was not changed")
                             .arg(version));
    failToOpen(file, QStringLiteral("it was created by a later version of Lorvanite (its tables "
                                    "have version %1, and this program supports versions up to "
                                    "%2). The file was not changed")
                         .arg(version)
                         .arg(databaseVersion()));
}

// Runs the missing steps in one transaction, with `before` ahead of the first. If it raises, the
// database is unchanged.
void runSteps(sqlite3* handle, const QString& file,
              const std::function<void(int version)>& before) {
    runInStore(handle, "BEGIN IMMEDIATE");
    try {
        // Another program may have upgraded the file since its version was read.
        const int version = versionOf(handle);
        refuseOtherVersion(version, file);
        if (version < databaseVersion()) before(version);
        for (int i = version; i < databaseVersion(); ++i) runInStore(handle, Steps[i]);
        runInStore(
            handle,
            qPrintable(QStringLiteral("PRAGMA user_version = %1; COMMIT").arg(databaseVersion())));
    } catch (const RunTimeError&) {
        // The first error counts. If the rollback fails as well, the next opening does it.
        std::ignore = sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

bool holds(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() == bytes.size() && file.readAll() == bytes;
}

// Writes a copy under a free name, unless an identical copy exists already.
void keepCopy(const QByteArray& bytes, const QString& file, int version) {
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
    refuseOtherVersion(version, file);
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
    // Nothing may be written before this check: the file of a later version stays as it is.
    refuseOtherVersion(version, file);
    if (version == databaseVersion()) return;
    try {
        makeDurable(handle.get());
        runSteps(handle.get(), file,
                 [&](int from) { keepCopy(bytesOfStore(handle.get()), file, from); });
    } catch (const RunTimeError& error) {
        failToOpen(file, QStringLiteral("it comes from an earlier version and cannot be "
                                        "upgraded (%1). The file was not changed")
                             .arg(error.description()));
    }
}
