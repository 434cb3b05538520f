// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/file_copy.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <tuple>

namespace {

[[noreturn]] void fail(RunTimeError::Number number, const char* why, const QString& path) {
    throw RunTimeError(number, QString::fromLatin1(why).arg(QDir::toNativeSeparators(path)));
}

void requireFolder(const QString& path) {
    if (!QFileInfo(path).isDir())
        fail(RunTimeError::PathNotFound, "Path not found: the folder \"%1\" is missing.", path);
}

// Copies a file with its time. The paths are taken as they are: a name may contain a backslash.
void copyPlain(const QFileInfo& from, const QString& to) {
    QFile file(from.filePath());
    if (!file.open(QIODevice::ReadOnly))
        fail(RunTimeError::PermissionDenied, "Permission denied: \"%1\" cannot be read.",
             from.filePath());
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError || !replacePlainFile(to, content))
        fail(RunTimeError::PermissionDenied, "Permission denied: \"%1\" cannot be written.", to);
    QFile copy(to);
    // Some file systems keep no times. The copy is whole all the same.
    if (copy.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        std::ignore = copy.setFileTime(from.lastModified(), QFileDevice::FileModificationTime);
}

// `open` holds the folders that are being copied. A link that leads back into one of them is left
// out: its copy would never end.
void copyEntries(const QString& source, const QString& target, FolderCopy how, QStringList open) {
    if (!QDir().mkpath(target))
        fail(RunTimeError::PermissionDenied,
             "Permission denied: the folder \"%1\" cannot be created.", target);
    open.append(QFileInfo(source).canonicalFilePath());
    const bool fillsIn = how == FolderCopy::FillIn;
    const QDir::Filters hidden = fillsIn ? QDir::Filters() : QDir::Hidden;
    const auto entries =
        QDir(source).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | hidden);
    for (const QFileInfo& entry : entries) {
        const QString copy = target + QLatin1Char('/') + entry.fileName();
        if (entry.isDir()) {
            if (!open.contains(entry.canonicalFilePath()))
                copyEntries(entry.filePath(), copy, how, open);
        } else if (!fillsIn || (!entry.isExecutable() && !QFile::exists(copy))) {
            copyPlain(entry, copy);
        }
    }
}

// Where the next content of a folder is put together, and where its content is while the two are
// exchanged. Both are beside it, on the same file system.
QString besideFolder(const QString& folder, const char* ending) {
    const QFileInfo info(folder);
    return info.path() + QStringLiteral("/.") + info.fileName() + QLatin1String(ending);
}
QString nextOf(const QString& folder) { return besideFolder(folder, ".new"); }
QString previousOf(const QString& folder) { return besideFolder(folder, ".old"); }

// Gives a new folder what another one holds, as links where the file system has them. Links of the
// user stay links.
void linkEntries(const QString& source, const QString& target) {
    if (!QDir().mkpath(target))
        fail(RunTimeError::PermissionDenied,
             "Permission denied: the folder \"%1\" cannot be created.", target);
    const auto entries = QDir(source).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot |
                                                    QDir::Hidden | QDir::System);
    for (const QFileInfo& entry : entries) {
        const QString copy = target + QLatin1Char('/') + entry.fileName();
        if (entry.isDir() && !entry.isSymLink()) {
            linkEntries(entry.filePath(), copy);
            continue;
        }
        std::error_code error;
        std::filesystem::create_hard_link(entry.filePath().toStdU16String(), copy.toStdU16String(),
                                          error);
        if (error) copyPlain(entry, copy);
    }
    QFile::setPermissions(target, QFile::permissions(source));
}

void exchangeFolders(const QString& next, const QString& folder) {
    const QByteArray from = QFile::encodeName(next);
    const QByteArray to = QFile::encodeName(folder);
    if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_EXCHANGE) == 0)
        return;
    // The file system of a USB stick cannot, or there is no such folder yet.
    const QString previous = previousOf(folder);
    const bool isThere = QFileInfo::exists(folder);
    if (!isThere || QDir().rename(folder, previous)) {
        if (QDir().rename(next, folder)) return;
        if (isThere) QDir().rename(previous, folder);
    }
    fail(RunTimeError::PermissionDenied, "Permission denied: the folder \"%1\" cannot be replaced.",
         folder);
}

void copyAsOne(const QString& source, const QString& target) {
    const QFileInfo info(target);
    // The user may have put a link in the folder's place.
    const QString folder = info.exists() ? info.canonicalFilePath() : target;
    finishFolderCopy(folder);
    try {
        if (info.exists()) linkEntries(folder, nextOf(folder));
        copyEntries(source, nextOf(folder), FolderCopy::Replace, {});
        exchangeFolders(nextOf(folder), folder);
    } catch (const RunTimeError&) {
        finishFolderCopy(folder);
        throw;
    }
    finishFolderCopy(folder);
}

// The nearest folder above a path, or the path itself, that exists.
QString existingFolder(QString path) {
    while (!QFileInfo::exists(path) && QFileInfo(path).path() != path)
        path = QFileInfo(path).path();
    return QFileInfo(path).canonicalFilePath();
}

}  // namespace

void copyFile(const QString& source, const QString& target) {
    const QFileInfo from(resolvedPath(source));
    const QFileInfo to(resolvedPath(target));
    if (!from.isFile())
        fail(RunTimeError::FileNotFound, "File not found: \"%1\".", from.filePath());
    requireFolder(to.path());
    if (to.exists() && from.canonicalFilePath() == to.canonicalFilePath())
        fail(RunTimeError::PermissionDenied,
             "Permission denied: \"%1\" cannot be copied onto itself.", from.filePath());
    copyPlain(from, to.filePath());
}

void copyFolder(const QString& source, const QString& target, FolderCopy how) {
    const QString from = resolvedPath(source);
    const QString to = resolvedPath(target);
    requireFolder(from);
    if (how != FolderCopy::FillIn) requireFolder(QFileInfo(to).path());
    // The copy of a folder into itself would never end.
    if (liesIn(existingFolder(to), QFileInfo(from).canonicalFilePath()))
        fail(RunTimeError::PermissionDenied,
             "Permission denied: the folder \"%1\" cannot be copied into itself.", from);
    if (how == FolderCopy::AsOne)
        copyAsOne(from, to);
    else
        copyEntries(from, to, how, {});
}

void finishFolderCopy(const QString& target) {
    const QString folder = resolvedPath(target);
    const QString previous = previousOf(folder);
    if (!QFileInfo::exists(folder) && QFileInfo::exists(previous)) QDir().rename(previous, folder);
    for (const QString& left : {nextOf(folder), previous})
        if (QFileInfo::exists(left)) QDir(left).removeRecursively();
}
