// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/file_links.h"

#include "core/data/paths.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace {

// Names are compared as they look: without case, composed and decomposed letters as the same.
QString comparable(const QString& path) {
    QString plain = path.normalized(QString::NormalizationForm_C).toCaseFolded();
    return plain.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

// The files below the program's folder, by the comparable form of their paths and their names.
class FolderIndex {
public:
    explicit FolderIndex(const QString& folder) : m_folder(folder) { add(QString(), {}); }

    QStringList candidates(const QString& lostPath) const {
        const QStringList parts = comparable(lostPath).split(QLatin1Char('/'), Qt::SkipEmptyParts);
        // The last part alone is a name, which may be in any folder.
        for (qsizetype first = 0; first + 1 < parts.size(); ++first) {
            QStringList found = m_byPath.value(parts.mid(first).join(QLatin1Char('/')));
            if (!found.isEmpty()) return found;
        }
        return parts.isEmpty() ? QStringList() : m_byName.value(parts.last());
    }

private:
    // `above` holds the real paths of the folders above, so that a link among them ends somewhere.
    void add(const QString& relative, QStringList above) {
        static const QStringList left = {QStringLiteral("copies"), QStringLiteral("unsaved"),
                                         QStringLiteral("delivered")};
        const QFileInfo folder(m_folder + QLatin1Char('/') + relative);
        if (above.contains(folder.canonicalFilePath())) return;
        above.append(folder.canonicalFilePath());
        const auto entries =
            QDir(folder.filePath())
                .entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
        for (const QFileInfo& entry : entries) {
            const QString name = relative + entry.fileName();
            if (entry.isDir()) {
                if (!left.contains(name)) add(name + QLatin1Char('/'), above);
                continue;
            }
            const QString path = QDir::toNativeSeparators(m_folder + QLatin1Char('/') + name);
            m_byPath[comparable(name)].append(path);
            m_byName[comparable(entry.fileName())].append(path);
        }
    }

    QString m_folder;
    QHash<QString, QStringList> m_byPath;
    QHash<QString, QStringList> m_byName;
};

}  // namespace

std::vector<BrokenLink> brokenLinks(const std::vector<SongFiles>& songs, const QString& folder) {
    const FolderIndex index(folder);
    std::vector<BrokenLink> broken;
    for (const SongFiles& song : songs) {
        const auto look = [&](LinkedFile file, const QString& path) {
            if (!path.isEmpty() && !QFileInfo(resolvedPath(path)).isFile())
                broken.push_back({song.id, song.title, file, path, index.candidates(path)});
        };
        look(LinkedFile::Chart, song.fileLoco);
        look(LinkedFile::Sound, song.soundFile);
    }
    return broken;
}
