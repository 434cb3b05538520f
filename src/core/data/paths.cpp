// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/paths.h"

#include "core/data/file_copy.h"
#include "core/data/run_time_error.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <algorithm>

namespace {

QString g_folder;
QStringList g_filesNotUpdated;
QString g_readOnlyFolder;
bool g_isReadOnly = false;

bool canWriteIn(const QString& folder) {
    QTemporaryFile probe(folder + QStringLiteral("/.write-XXXXXX"));
    return probe.open();
}

qsizetype lastSeparator(const QString& path) {
    return std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The delivered files of config, the guide above all, are those of the program's version. What the
// program writes there itself has other names. Returns the files that could not be updated.
QStringList updateConfig(const QString& delivered, const QString& folder) {
    QStringList failed;
    const QDir from(delivered + QStringLiteral("/config"));
    const QDir to(folder + QStringLiteral("/config"));
    QDirIterator files(from.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString target = to.filePath(from.relativeFilePath(file));
        if (contentOf(file) == contentOf(target)) continue;
        try {
            copyFile(file, target);
        } catch (const RunTimeError&) {
            failed.append(target);
        }
    }
    return failed;
}

QString chooseFolder() {
    const QString own = QCoreApplication::applicationDirPath();
    // A package keeps the delivered tree in a separate folder, so that a newer one can be unpacked
    // over it without touching the user's files.
    QString delivered = own + QStringLiteral("/delivered");
    if (!QFileInfo(delivered).isDir()) delivered = own;
    // An installed program never keeps data beside itself, not even for the superuser, who could
    // write there: they would be removed with the program.
    const bool installed = QFile::exists(own + QStringLiteral("/.installed"));
    g_readOnlyFolder = installed || canWriteIn(own) ? QString() : own;
    QString folder = own;
    if (installed || !g_readOnlyFolder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                 QStringLiteral("/lorvanite");
    if (folder != delivered) {
        copyFolder(delivered, folder, FolderCopy::FillIn);
        g_filesNotUpdated = updateConfig(delivered, folder);
    }
    g_isReadOnly = folder != own && !canWriteIn(folder);
    return folder;
}

bool replaceWith(const QString& path, const std::function<bool(QIODevice& file)>& write) {
    QSaveFile file(path);
    // commit() does not notice that the last, buffered part could not be written.
    return file.open(QIODevice::WriteOnly) && write(file) && file.flush() && file.commit();
}

}  // namespace

QString programFolder() {
    if (g_folder.isEmpty()) g_folder = chooseFolder();
    return g_folder;
}

void setProgramFolder(const QString& folder) { g_folder = folder; }

QStringList filesNotUpdated() { return g_filesNotUpdated; }

QString readOnlyFolder() { return g_readOnlyFolder; }

bool isProgramFolderReadOnly() { return g_isReadOnly; }

QString resolvedPath(const QString& path) {
    if (QFile::exists(path)) return path;
    QString plain = path;
    plain.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return plain;
}

QString fileNameOf(const QString& path) { return path.mid(lastSeparator(path) + 1); }

QString nameOfFile(const QString& path) { return QFileInfo(fileNameOf(path)).completeBaseName(); }

QString safeFileName(const QString& text) {
    constexpr qsizetype mostBytes = 200;  // which leaves room for a time and an ending
    QString name;
    for (const char32_t c : text.toUcs4()) {
        const bool reserved =
            c < 0x80 && QStringLiteral("/\\:*?\"<>|").contains(QChar(char16_t(c)));
        const bool shown = QChar::category(c) == QChar::Other_Format || QChar::isPrint(c);
        name += reserved || !shown ? QStringLiteral("_") : QString::fromUcs4(&c, 1);
    }
    while (name.startsWith(QLatin1Char('.'))) name.remove(0, 1);
    name.truncate(mostBytes);  // a unit takes a byte at least
    while (name.toUtf8().size() > mostBytes) name.chop(name.back().isLowSurrogate() ? 2 : 1);
    static const QRegularExpression device(
        QStringLiteral("^(CON|PRN|AUX|NUL|COM\\d|LPT\\d)(\\.|$)"),
        QRegularExpression::CaseInsensitiveOption);
    return device.match(name).hasMatch() ? QLatin1Char('_') + name : name;
}

bool liesIn(const QString& path, const QString& folder) {
    return folder.endsWith(QLatin1Char('/'))
               ? path.startsWith(folder)
               : (path + QLatin1Char('/')).startsWith(folder + QLatin1Char('/'));
}

bool replaceFile(const QString& path, const QByteArray& content) {
    return replacePlainFile(resolvedPath(path), content);
}

bool replacePlainFile(const QString& path, const QByteArray& content) {
    return replaceWith(
        path, [&content](QIODevice& file) { return file.write(content) == content.size(); });
}

bool replaceFile(const QString& path, const std::function<bool(QIODevice& file)>& write) {
    return replaceWith(resolvedPath(path), write);
}
