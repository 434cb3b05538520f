// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/file_copy.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    if (how == FolderCopy::Replace) requireFolder(QFileInfo(to).path());
    // The copy of a folder into itself would never end.
    if (liesIn(existingFolder(to), QFileInfo(from).canonicalFilePath()))
        fail(RunTimeError::PermissionDenied,
             "Permission denied: the folder \"%1\" cannot be copied into itself.", from);
    copyEntries(from, to, how, {});
}
