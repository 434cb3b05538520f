#include "core/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <algorithm>

namespace {

QString g_folder;

bool canWriteIn(const QString& folder) {
    QTemporaryFile probe(folder + QStringLiteral("/.write-XXXXXX"));
    return probe.open();
}

QString chooseFolder() {
    const QString own = QCoreApplication::applicationDirPath();
    if (canWriteIn(own)) return own;
    const QString users = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                          QStringLiteral("/lorvanite");
    copyTree(own, users);
    return users;
}

}  // namespace

QString programFolder() {
    if (g_folder.isEmpty()) g_folder = chooseFolder();
    return g_folder;
}

void setProgramFolder(const QString& folder) { g_folder = folder; }

void copyTree(const QString& from, const QString& to) {
    QDir().mkpath(to);
    const auto entries = QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        const QString target = to + QLatin1Char('/') + entry.fileName();
        if (entry.isDir()) {
            copyTree(entry.filePath(), target);
        } else if (!entry.isExecutable() && !QFile::exists(target)) {
            QFile::copy(entry.filePath(), target);
            QFile(target).setPermissions(QFile::permissions(target) | QFile::WriteOwner);
        }
    }
}

QString resolvedPath(const QString& path) {
    if (QFile::exists(path)) return path;
    QString plain = path;
    plain.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return plain;
}

QString fileNameOf(const QString& path) {
    const qsizetype cut =
        std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return path.mid(cut + 1);
}

bool replaceFile(const QString& path, const QByteArray& content) {
    QSaveFile file(resolvedPath(path));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.commit();
}
