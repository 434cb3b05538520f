// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/rules/song_collection.h"

#include "core/data/database.h"
#include "core/data/paths.h"

namespace {

// Stands for a "|" that is part of a path, as long as the paths are joined.
const QChar JoinedBar(0x1F);

QStringList piecesOf(const QString& joined) {
    QStringList pieces = joined.split(QLatin1Char('|'));
    pieces.replaceInStrings(QString(JoinedBar), QStringLiteral("|"));
    return pieces;
}

QString chartFileOf(const QString& title) {
    Recordset rs = select(QStringLiteral("SELECT fileLoco FROM songs WHERE title = '") + title +
                          QStringLiteral("'"));
    const QString file = rs.Fields("fileloco");
    rs.Close();
    return file;
}

}  // namespace

QString joinedChartPaths(const QStringList& titles) {
    QString joined;
    for (const QString& title : titles)
        joined += chartFileOf(title).replace(QLatin1Char('|'), JoinedBar) + QLatin1Char('|');
    return joined;
}

QStringList chartPathsOf(const QString& joined) {
    QStringList paths = piecesOf(joined);
    paths.removeLast();
    return paths;
}

QString chartNamesOf(const QString& joined) {
    QString names;
    for (const QString& path : piecesOf(joined)) names += fileNameOf(path) + QLatin1Char('\n');
    return names;
}
