// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/copy_writer.h"

#include "core/data/database_handle.h"
#include "core/data/run_time_error.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace {

constexpr qint64 BlockSize = qint64(1024) * 1024;

// Pages that are read from the database at once: it is locked for so short a time that nobody
// waits for it.
constexpr int PagesAtOnce = 512;

// How long the database may be locked, or may change again and again, in milliseconds.
constexpr int DatabaseWait = 60'000;
constexpr int PieceWait = 100;

constexpr QFile::Permissions OwnerOnly = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions OwnerFolder = OwnerOnly | QFile::ExeOwner;

const QLatin1String DatabaseName("db1.mdb");

QString joined(const QString& folder, const QString& relative) {
    return folder + QLatin1Char('/') + relative;
}

[[noreturn]] void failWrite(const QString& path, const QFileDevice& file) {
    throw RunTimeError(RunTimeError::PermissionDenied,
                       QStringLiteral("The file \"%1\" cannot be written: %2.")
                           .arg(QDir::toNativeSeparators(path), file.errorString()));
}

// A new file with a time and rights, on the disk when it is committed.
class NewFile {
public:
    explicit NewFile(const QString& path) : m_file(path) {
        if (!m_file.open(QIODevice::WriteOnly)) fail();
    }

    void append(const QByteArray& bytes) {
        if (m_file.write(bytes) != bytes.size()) fail();
    }

    void commit(const QDateTime& time) {
        if (!m_file.flush()) fail();
        // A file system may know neither rights nor times.
        m_file.setPermissions(OwnerOnly);
        m_file.setFileTime(time, QFileDevice::FileModificationTime);
        if (!m_file.commit()) fail();
    }

private:
    [[noreturn]] void fail() { failWrite(m_file.fileName(), m_file); }

    QSaveFile m_file;
};

}  // namespace

void failCopy(const QString& sentence, const QString& path) {
    throw RunTimeError(RunTimeError::PermissionDenied,
                       sentence.arg(QDir::toNativeSeparators(path)));
}

void makePrivateFolder(const QString& path) {
    if (QFileInfo(path).isDir()) return;
    if (!QDir().mkdir(path, OwnerFolder) && !QFileInfo(path).isDir())
        failCopy(QStringLiteral("The folder \"%1\" cannot be made."), path);
}

void syncFolder(const QString& path) {
    const int folder = open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY);
    if (folder < 0) return;
    fsync(folder);
    close(folder);
}

CopyWriter::CopyWriter(const QString& folder, const QString& target, const QString& previous,
                       const CopyStep& step)
    : m_folder(folder), m_target(target), m_previous(previous), m_step(step) {}

bool CopyWriter::write() {
    makePrivateFolder(m_target);
    if (!writeDatabase()) return false;
    for (const char* name : {"saved sets", "set designs", "schedules", "sheetmusic"})
        if (!writeFolder(QLatin1String(name), {})) return false;
    const QString settings = QStringLiteral("config/mail.ini");
    if (QFileInfo(joined(m_folder, settings)).isFile()) {
        makePrivateFolder(joined(m_target, QStringLiteral("config")));
        if (!writeFile(settings)) return false;
        syncFolder(joined(m_target, QStringLiteral("config")));
    }
    syncFolder(m_target);
    return true;
}

// Through memory, so that a slow disk does not hold the database locked.
bool CopyWriter::writeDatabase() {
    if (!goesOn(DatabaseName)) return false;
    const QString path = joined(m_folder, DatabaseName);
    if (!QFileInfo(path).isFile())
        throw RunTimeError(RunTimeError::FileNotFound,
                           QStringLiteral("The file \"%1\" is missing.").arg(path));
    const StoreHandle source = openStore(path.toUtf8().constData(), SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(source.get(), PieceWait);
    const StoreHandle copy = openStore(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    const QDateTime time = QFileInfo(path).lastModified();
    sqlite3_backup* backup = sqlite3_backup_init(copy.get(), "main", source.get(), "main");
    if (!backup) failStore(copy.get());
    const QDeadlineTimer deadline(DatabaseWait);
    int result = SQLITE_OK;
    bool wanted = true;
    while (result == SQLITE_OK || (result == SQLITE_BUSY && !deadline.hasExpired())) {
        // One that changes all the time is read at once in the end.
        result = sqlite3_backup_step(backup, deadline.hasExpired() ? -1 : PagesAtOnce);
        wanted = result == SQLITE_DONE || goesOn(DatabaseName);
        if (!wanted) break;
    }
    sqlite3_backup_finish(backup);
    if (!wanted) return false;
    if (result != SQLITE_DONE)
        failStore(QStringLiteral("The database cannot be read: %1.")
                      .arg(QString::fromUtf8(sqlite3_errstr(result))));
    const QByteArray bytes = bytesOfStore(copy.get());
    QFile before(joined(m_previous, DatabaseName));
    if (!m_previous.isEmpty() && before.open(QIODevice::ReadOnly) &&
        QFileInfo(before).lastModified() == time && before.readAll() == bytes &&
        linkTo(DatabaseName))
        return true;
    NewFile file(joined(m_target, DatabaseName));
    for (qsizetype at = 0; at < bytes.size(); at += BlockSize) {
        if (!goesOn(DatabaseName)) return false;
        file.append(bytes.mid(at, BlockSize));
    }
    file.commit(time);
    return true;
}

// `above` holds the real paths of the folders above, so that a link among them ends somewhere.
bool CopyWriter::writeFolder(const QString& relative, QStringList above) {
    const QFileInfo folder(joined(m_folder, relative));
    if (!folder.isDir() || above.contains(folder.canonicalFilePath())) return true;
    above.append(folder.canonicalFilePath());
    if (!goesOn(relative)) return false;
    makePrivateFolder(joined(m_target, relative));
    const auto entries =
        QDir(folder.filePath())
            .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& entry : entries) {
        const QString name = joined(relative, entry.fileName());
        if (entry.isDir() ? !writeFolder(name, above) : entry.isFile() && !writeFile(name))
            return false;
    }
    syncFolder(joined(m_target, relative));
    return true;
}

bool CopyWriter::writeFile(const QString& relative) {
    if (!goesOn(relative)) return false;
    QFile source(joined(m_folder, relative));
    if (!source.open(QIODevice::ReadOnly)) {
        // A temporary file, of a save that has ended since the folder was listed.
        if (!source.exists()) return true;
        failCopy(QStringLiteral("The file \"%1\" cannot be read."), source.fileName());
    }
    if (isAsBefore(relative, QFileInfo(source)) && linkTo(relative)) return true;
    const QDateTime time = source.fileTime(QFileDevice::FileModificationTime);
    NewFile target(joined(m_target, relative));
    while (!source.atEnd()) {
        const QByteArray block = source.read(BlockSize);
        if (block.isEmpty()) break;
        if (!goesOn(relative)) return false;
        target.append(block);
    }
    if (source.error() != QFileDevice::NoError)
        failCopy(QStringLiteral("The file \"%1\" cannot be read."), source.fileName());
    target.commit(time);
    return true;
}

// A link to the previous copy's file in its place. False where the file system has none.
bool CopyWriter::linkTo(const QString& relative) const {
    std::error_code error;
    std::filesystem::create_hard_link(joined(m_previous, relative).toStdU16String(),
                                      joined(m_target, relative).toStdU16String(), error);
    return !error;
}

// The time alone would not do: file systems of USB sticks count in steps of two seconds.
bool CopyWriter::isAsBefore(const QString& relative, const QFileInfo& source) const {
    if (m_previous.isEmpty()) return false;
    QFile before(joined(m_previous, relative));
    const QFileInfo info(before);
    if (!info.isFile() || info.isSymLink() || info.size() != source.size() ||
        info.lastModified() != source.lastModified())
        return false;
    QFile now(source.filePath());
    if (!before.open(QIODevice::ReadOnly) || !now.open(QIODevice::ReadOnly)) return false;
    while (!now.atEnd()) {
        const QByteArray block = now.read(BlockSize);
        if (block.isEmpty() || block != before.read(BlockSize)) return false;
    }
    return before.atEnd();
}
