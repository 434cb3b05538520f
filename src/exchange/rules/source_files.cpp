// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/source_files.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

struct FoundFile {
    QString path;
    QString shown;
};

class FileList {
public:
    QList<FoundFile> files;

    void add(const QString& path) {
        const QFileInfo info(path);
        if (info.isDir())
            addFolder(info);
        else
            addFile(path, info.fileName());
    }

private:
    void addFile(const QString& path, const QString& shown) {
        const QString canonical = QFileInfo(path).canonicalFilePath();
        const QString& known = canonical.isEmpty() ? path : canonical;
        if (m_known.contains(known)) return;
        m_known.insert(known);
        files.append({path, shown});
    }

    void addFolder(const QFileInfo& folder) {
        const QString root = folder.canonicalFilePath() + u'/';
        const QDir top(folder.filePath());
        QStringList paths;
        QDirIterator all(folder.filePath(), QDir::Files, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString path = all.next();
            const QFileInfo info(path);
            if (info.isSymLink() && !info.canonicalFilePath().startsWith(root)) continue;
            paths.append(path);
        }
        paths.sort();
        for (const QString& path : paths) addFile(path, top.relativeFilePath(path));
    }

    QSet<QString> m_known;
};

ExchangeContent refused(const QString& reason) {
    ExchangeContent content;
    content.reason = reason;
    return content;
}

ExchangeContent readOne(const FoundFile& found) {
    const QFileInfo info(found.path);
    if (!info.exists()) return refused(u"There is no such file."_s);
    // A pipe or a device might never end.
    if (!info.isFile()) return refused(u"This is not a file."_s);
    if (info.size() > MaxDatabaseBytes) return refused(u"The file is too large."_s);
    QFile file(found.path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(u"The file cannot be opened: %1."_s.arg(file.errorString()));
    if (file.size() > MaxTextBytes && !file.peek(16).startsWith("SQLite format 3"))
        return refused(u"The file is too large."_s);
    // QFile::read allocates what it is asked for, so not more than the file has.
    const QByteArray bytes = file.read(file.size());
    if (file.error() != QFileDevice::NoError)
        return refused(u"The file cannot be read: %1."_s.arg(file.errorString()));
    return readExchangeFile(bytes, found.shown);
}

}  // namespace

QList<ImportSource> readSources(const QStringList& paths, const FilesRead& progress) {
    FileList list;
    for (const QString& path : paths) list.add(path);
    QList<ImportSource> sources;
    sources.reserve(list.files.size());
    for (const FoundFile& found : list.files) {
        if (progress && !progress(int(sources.size()), int(list.files.size()))) return {};
        sources.append({found.shown, readOne(found)});
    }
    return sources;
}
