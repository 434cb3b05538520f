// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Fills the sample's database.
#include "core/data/dates.h"
#include "make_sample.h"

#include <sqlite3.h>
#include <utility>

namespace {

// The reminder date of a note without a reminder, as the notes window writes it.
const QLatin1String NoReminder("12/30/99");

// The database file. All changes are made in one transaction.
class Store {
public:
    using Values = std::vector<std::pair<QString, QString>>;

    explicit Store(const QString& path) {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr) !=
            SQLITE_OK) {
            const QString why = QString::fromUtf8(sqlite3_errmsg(m_db));
            sqlite3_close(m_db);
            throw SampleError(QStringLiteral("%1: %2").arg(path, why));
        }
        run(QStringLiteral("BEGIN"), {});
    }
    ~Store() { sqlite3_close(m_db); }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    void commit() { run(QStringLiteral("COMMIT"), {}); }

    // Adds a row and returns its ID.
    qint64 add(const QString& table, const Values& row) {
        QStringList names;
        QStringList marks;
        QStringList values;
        for (const auto& [name, value] : row) {
            names.append(name);
            marks.append(QStringLiteral("?"));
            values.append(value);
        }
        run(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                .arg(table, names.join(QLatin1Char(',')), marks.join(QLatin1Char(','))),
            values);
        return sqlite3_last_insert_rowid(m_db);
    }

    // Runs a statement and returns the number of its rows.
    int run(const QString& source, const QStringList& values) {
        sqlite3_stmt* statement = nullptr;
        int result = sqlite3_prepare_v2(m_db, source.toUtf8().constData(), -1, &statement, nullptr);
        for (qsizetype i = 0; result == SQLITE_OK && i < values.size(); ++i)
            result = sqlite3_bind_text(statement, int(i) + 1, values[i].toUtf8().constData(), -1,
                                       SQLITE_TRANSIENT);
        int rows = 0;
        while (result == SQLITE_OK || result == SQLITE_ROW) {
            result = sqlite3_step(statement);
            if (result == SQLITE_ROW) ++rows;
        }
        sqlite3_finalize(statement);
        if (result != SQLITE_DONE)
            throw SampleError(
                QStringLiteral("%1: %2").arg(source, QString::fromUtf8(sqlite3_errmsg(m_db))));
        return rows;
    }

private:
    sqlite3* m_db = nullptr;
};

QString pathOf(const Sample& sample, const char* name) {
    return QStringLiteral("%1/%2.txt").arg(sample.texts, QLatin1String(name));
}

// The date of a Sunday. "+1" is a week after the coming Sunday.
QString sundayOf(const Sample& sample, const QString& weeks, const char* where) {
    return formatDate(
        sample.comingSunday.addDays(7 * numberOf(weeks.trimmed(), QLatin1String(where))));
}

void addCategories(Store& store, const Sample& sample) {
    for (const QStringList& fields : tableOf(pathOf(sample, "categories"), 2, 2))
        store.add(QStringLiteral("categories"), {{"name", fields[0]}, {"description", fields[1]}});
}

void addSongsAndDates(Store& store, const Sample& sample) {
    std::map<QString, qint64> ids;
    for (const SampleSong& song : sample.songs) {
        Store::Values row = {{"title", song.title},    {"artist", song.author},
                             {"dakey", song.key},      {"playlist", song.playlist},
                             {"fileLoco", song.chart}, {"CCLI", song.number},
                             {"soundFile", song.sound}};
        for (int i = 0; i < 5; ++i)
            row.push_back({QStringLiteral("cat%1").arg(i + 1), song.categories.value(i)});
        ids[song.title] = store.add(QStringLiteral("songs"), row);
    }
    // The oldest service was recorded first.
    for (auto service = sample.services.rbegin(); service != sample.services.rend(); ++service) {
        QStringList recorded;
        for (const QString& title : service->titles) {
            if (title.isEmpty() || recorded.contains(title)) continue;
            recorded.append(title);
            store.add(QStringLiteral("played_on"), {{"title", title},
                                                    {"played_date", formatDate(service->date)},
                                                    {"songID", QString::number(ids.at(title))}});
        }
    }
}

// Returns the names of all.
QStringList addPeople(Store& store, const Sample& sample) {
    QStringList names;
    for (const QStringList& fields : tableOf(pathOf(sample, "people"), 10, 11)) {
        QStringList days;
        for (const QString& weeks : fields[9].split(QLatin1Char(','), Qt::SkipEmptyParts))
            days.append(sundayOf(sample, weeks, "people.txt"));
        QStringList roles;
        for (const QString& role : fields[2].split(QLatin1Char(','))) roles.append(role.trimmed());
        store.add(
            QStringLiteral("personell"),
            {{"fName", fields[0]},
             {"lName", fields[1]},
             {"role", roles.value(0)},
             {"role2", roles.value(1)},
             {"role3", roles.value(2)},
             {"address", fields[3]},
             {"city", fields[4]},
             {"state", fields[5]},
             {"zip", fields[6]},
             {"phone", fields[7]},
             {"cell", fields[8]},
             {"email",
              QStringLiteral("%1.%2@example.org").arg(fields[0].toLower(), fields[1].toLower())},
             {"vDays", days.join(QLatin1Char(':'))},
             {"excludeScheduling", fields.value(10).isEmpty() ? "0" : "1"}});
        names.append(fields[0] + QLatin1Char(' ') + fields[1]);
    }
    return names;
}

void addSchedule(Store& store, const Sample& sample, const QStringList& people) {
    for (const QStringList& fields : tableOf(pathOf(sample, "schedule"), 2, 2)) {
        if (!people.contains(fields[1]))
            throw SampleError(
                QStringLiteral("schedule.txt: %1 is not in people.txt").arg(fields[1]));
        store.add(QStringLiteral("schedule"), {{"player", fields[1]},
                                               {"instrument", fields[0]},
                                               {"pdate", formatDate(sample.comingSunday)}});
    }
}

void addNotes(Store& store, const Sample& sample) {
    const auto day = [&](const QString& days) {
        return formatDate(sample.base.addDays(numberOf(days, QStringLiteral("notes.txt"))));
    };
    for (const QStringList& fields : tableOf(pathOf(sample, "notes"), 3, 3))
        store.add(QStringLiteral("notes"),
                  {{"post_date", day(fields[0])},
                   {"notes", fields[2]},
                   {"notify_date",
                    fields[1] == QLatin1String("-") ? QString(NoReminder) : day(fields[1])}});
}

void addSpecialMusic(Store& store, const Sample& sample) {
    for (const QStringList& fields : tableOf(pathOf(sample, "special_music"), 3, 3)) {
        const bool reminds = fields[2] != QLatin1String("-");
        store.add(QStringLiteral("special_music"),
                  {{"song_name", fields[1]},
                   {"play_date", sundayOf(sample, fields[0], "special_music.txt")},
                   {"remind_schedule", reminds ? "Yes" : "No"},
                   {"remind_interval", reminds ? fields[2] : QStringLiteral("0")}});
    }
}

}  // namespace

void fillDatabase(const Sample& sample) {
    Store store(sample.target + QStringLiteral("/db1.mdb"));
    if (store.run(QStringLiteral("SELECT ID FROM songs LIMIT 1"), {}) != 0)
        throw SampleError(QStringLiteral("the delivered database has songs already"));
    addCategories(store, sample);
    addSongsAndDates(store, sample);
    addSchedule(store, sample, addPeople(store, sample));
    addNotes(store, sample);
    addSpecialMusic(store, sample);
    store.run(QStringLiteral("UPDATE prefs SET var_value = ? WHERE var_name = 'DefaultSetList'"),
              {QStringLiteral("%1/set designs/%2.sdl").arg(sample.target, sample.defaultDesign)});
    store.commit();
}
