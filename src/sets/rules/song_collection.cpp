#include "sets/rules/song_collection.h"

#include "core/data/database.h"
#include "core/data/paths.h"

namespace {

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
    for (const QString& title : titles) joined += chartFileOf(title) + QLatin1Char('|');
    return joined;
}

QStringList chartPathsOf(const QString& joined) {
    QStringList paths = joined.split(QLatin1Char('|'));
    paths.removeLast();
    return paths;
}

QString chartNamesOf(const QString& joined) {
    QString names;
    for (const QString& path : joined.split(QLatin1Char('|')))
        names += fileNameOf(path) + QLatin1Char('\n');
    return names;
}
