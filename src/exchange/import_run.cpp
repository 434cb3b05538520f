// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/import_run.h"

#include "catalogue/rules/categories.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "core/data/transaction.h"
#include "core/grid/sheet_grid.h"
#include "exchange/chart_layout.h"
#include "keeping/copies.h"
#include "team/rules/personnel.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSet>

#include <sqlite3.h>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

QString chartFolder() { return programFolder() + u"/sheetmusic"_s; }

// Lists the charts of an import while it runs, one name a line.
QString journalPath() { return chartFolder() + u"/.import"_s; }

// Waits until the charts are on the disk, all at once.
void syncCharts() {
#ifdef Q_OS_LINUX
    const int folder = ::open(QFile::encodeName(chartFolder()).constData(), O_RDONLY | O_DIRECTORY);
    if (folder < 0) return;
    ::syncfs(folder);
    ::close(folder);
#endif
}

[[noreturn]] void failChart(const QString& path) {
    throw RunTimeError(RunTimeError::PermissionDenied, u"The chart \"%1\" cannot be written."_s.arg(
                                                           QDir::toNativeSeparators(path)));
}

// The charts of one import. Removes them at its end unless they are kept.
class NewCharts {
public:
    NewCharts() {
        QDir().mkpath(chartFolder());
        const QStringList names =
            QDir(chartFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
        for (const QString& name : names) m_taken.insert(name.toCaseFolded());
    }
    ~NewCharts() {
        if (m_kept) return;
        for (const QString& path : m_written) QFile::remove(path);
        removeJournal();
    }
    NewCharts(const NewCharts&) = delete;
    NewCharts& operator=(const NewCharts&) = delete;

    // Writes a song's chart and returns its path.
    QString write(const Song& song, const QString& title) {
        const QString path = chartFolder() + u'/' + freeName(title);
        note(path);
        SheetGrid chart;
        layOutChart(song, chart);
        const QByteArray bytes = chart.fileBytes();
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) failChart(path);
        m_written.append(path);
        if (bytes.isEmpty() || file.write(bytes) != bytes.size() || !file.flush()) failChart(path);
        return QDir::toNativeSeparators(path);
    }

    void sync() const {
        if (!m_written.isEmpty()) syncCharts();
    }

    void keep() {
        m_kept = true;
        removeJournal();
    }

private:
    // An open file that cannot be written, on a full disk, would not remove itself.
    void removeJournal() {
        m_journal.close();
        QFile::remove(m_journal.fileName());
    }

    // Deliberate: behaviour 202.
    QString freeName(const QString& title) {
        QString base = safeFileName(title);
        // Windows takes no such ends.
        while (base.endsWith(u'.') || base.endsWith(u' ')) base.chop(1);
        if (base.isEmpty()) base = u"Song"_s;
        QString name = base + u".stp"_s;
        for (int n = 2; m_taken.contains(name.toCaseFolded()); ++n)
            name = u"%1 (%2).stp"_s.arg(base).arg(n);
        m_taken.insert(name.toCaseFolded());
        return name;
    }

    void note(const QString& path) {
        if (!m_journal.isOpen() && !m_journal.open(QIODevice::WriteOnly | QIODevice::Truncate))
            failChart(path);
        const QByteArray line = QFileInfo(path).fileName().toUtf8() + '\n';
        if (m_journal.write(line) != line.size() || !m_journal.flush()) failChart(path);
    }

    QSet<QString> m_taken;
    QStringList m_written;
    QFile m_journal{journalPath()};
    bool m_kept = false;
};

int lastInsertedId() { return int(sqlite3_last_insert_rowid(dbConn.handle())); }

void insertRow(const QString& table, const QMap<QString, QString>& values) {
    execute(u"INSERT INTO %1 ("_s.arg(table) + values.keys().join(u", "_s) + u") VALUES ('"_s +
            values.values().join(u"', '"_s) + u"')"_s);
}

void updateRow(const QString& table, const QMap<QString, QString>& values, int id) {
    if (values.isEmpty()) return;
    QStringList assignments;
    for (auto value = values.begin(); value != values.end(); ++value)
        assignments.append(value.key() + u" = '"_s + value.value() + u'\'');
    execute(u"UPDATE %1 SET "_s.arg(table) + assignments.join(u", "_s) + u" WHERE ID = "_s +
            QString::number(id));
}

// Every column has a text, as the windows store it.
QMap<QString, QString> newSong(const QMap<QString, QString>& values) {
    QMap<QString, QString> row;
    for (const char* column : {"title", "artist", "dakey", "cat1", "cat2", "cat3", "cat4", "cat5",
                               "playlist", "fileLoco", "CCLI", "soundFile"})
        row.insert(QLatin1String(column), QString());
    row.insert(values);
    return row;
}

int storeSongChange(const SongChange& change, NewCharts& charts) {
    QMap<QString, QString> values = change.values;
    if (hasLyrics(change.chart))
        values.insert(u"fileLoco"_s, charts.write(change.chart, change.title));
    if (change.id != 0) {
        updateRow(u"songs"_s, values, change.id);
        return change.id;
    }
    insertRow(u"songs"_s, newSong(values));
    return lastInsertedId();
}

void storePersonChange(const PersonChange& change) {
    if (change.id != 0) return updateRow(u"personell"_s, change.values, change.id);
    PersonRecord person;
    for (const PersonField& field : PersonFields)
        person.fields.append(change.values.value(QLatin1String(field.column)));
    insertPerson(person);
}

void storeDate(const DateChange& change, const QList<int>& songIds) {
    const int id = change.change >= 0 ? songIds[change.change] : change.songId;
    execute(u"INSERT INTO played_on (title, played_date, songID) VALUES ('"_s +
            QString(change.title).remove(u'\'') + u"', '"_s + formatDate(change.date) + u"', "_s +
            QString::number(id) + u")"_s);
}

}  // namespace

bool runImport(const ImportPlan& plan, const ImportProgress& progress) {
    if (plan.isEmpty()) return true;
    const int all = int(plan.songs.size() + plan.people.size() + plan.dates.size());
    int done = 0;
    const auto goesOn = [&] { return !progress || progress(done++, all); };
    if (!goesOn()) return false;
    cleanUpAfterKilledImport();
    setAside(programFolder(), today(), SetAsideReason::BeforeImport);
    NewCharts charts;
    Transaction transaction(dbConn);
    for (const QString& name : plan.newCategories) storeCategory({{}, name, {}}, {});
    QList<int> songIds;
    for (const SongChange& change : plan.songs) {
        songIds.append(storeSongChange(change, charts));
        if (!goesOn()) return false;
    }
    for (const PersonChange& change : plan.people) {
        storePersonChange(change);
        if (!goesOn()) return false;
    }
    for (const DateChange& change : plan.dates) {
        storeDate(change, songIds);
        if (!goesOn()) return false;
    }
    charts.sync();
    transaction.commit();
    charts.keep();
    return true;
}

void cleanUpAfterKilledImport() {
    QFile journal(journalPath());
    if (!journal.open(QIODevice::ReadOnly)) return;
    const QStringList names = QString::fromUtf8(journal.readAll()).split(u'\n', Qt::SkipEmptyParts);
    QSet<QString> tied;
    Recordset rs = select(u"SELECT fileLoco FROM songs WHERE fileLoco > ''"_s);
    for (; !rs.EOF_(); rs.MoveNext()) tied.insert(fileNameOf(rs.Fields("fileLoco")));
    rs.Close();
    const QDateTime end = journal.fileTime(QFileDevice::FileModificationTime).addSecs(10);
    for (const QString& name : names) {
        // After the commit the songs have their charts, and what is newer is not the import's.
        const QFileInfo chart(chartFolder() + u'/' + name);
        if (chart.fileName() == name && chart.isFile() && !tied.contains(name) &&
            chart.lastModified() <= end)
            QFile::remove(chart.filePath());
    }
    journal.close();
    journal.remove();
}

QString chartsNotPossible() {
    if (!programFolder().contains(u'\'')) return {};
    return u"No charts can be made: the program's folder has an apostrophe in its path."_s;
}
