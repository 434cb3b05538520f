// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Copies of the whole database beside a running program.
#include "core/data/database.h"
#include "core/data/database_backup.h"
#include "core/data/run_time_error.h"
#include "support/dying_store.h"
#include "support/other_process.h"
#include "support/registry.h"
#include "trees.h"

#include <QFile>
#include <QObject>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <functional>
#include <sqlite3.h>
#include <thread>
#include <unistd.h>

namespace {

void run(Connection& connection, const QString& statement) {
    Recordset rs;
    rs.Open(statement, connection, CursorType::Dynamic, LockType::Optimistic);
}

QString value(Connection& connection, const QString& query) {
    Recordset rs;
    rs.Open(query, connection, CursorType::Dynamic, LockType::ReadOnly);
    return rs.Fields("v");
}

void fill(Connection& connection, const QString& title, int count) {
    run(connection, QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                                   "WHERE i < %1) INSERT INTO songs (title) SELECT '%2' FROM n")
                        .arg(count)
                        .arg(title));
}

// Number of the error that a body raises, 0 for none.
int errorOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

// What the error that a body raises says; empty for none.
QString descriptionOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const RunTimeError& error) {
        return error.description();
    }
    return {};
}

}  // namespace

class TestDatabaseBackup : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;

    QString path(const QString& name) const { return m_folder->filePath(name); }

    QString newDatabase(const QString& name) const {
        QFile::copy(QStringLiteral(PROGRAM_TREE "/db1.mdb"), path(name));
        return path(name);
    }

    // A whole database with one title in all its rows.
    void expectWhole(const QString& file, const QString& title, int count) {
        Connection copy;
        copy.Open(file);
        QCOMPARE(value(copy, "SELECT min(title) || max(title) || count(*) AS v FROM songs"),
                 title + title + QString::number(count));
        sqlite3_set_authorizer(copy.handle(), nullptr, nullptr);
        QCOMPARE(value(copy, "SELECT integrity_check AS v FROM pragma_integrity_check"),
                 QStringLiteral("ok"));
    }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void backupWhileAStatementRunsIsAWholeDatabase() {
        Connection connection;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "a", 3000);
        Recordset reading;
        reading.Open("SELECT * FROM songs", connection, CursorType::Dynamic, LockType::ReadOnly);
        for (int i = 0; i < 100; ++i) reading.MoveNext();
        backUpDatabase(connection, path("copy.mdb"));
        reading.MoveNext();
        expectWhole(path("copy.mdb"), "a", 3000);
        run(connection, "DELETE FROM songs");
    }

    void backupWhileAnotherProgramWritesIsAWholeDatabase() {
        Connection connection, other;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "a", 10);
        other.Open(path("db1.mdb"));
        // A statement that hands rows out keeps its change open until it is closed.
        Recordset writing;
        writing.Open("UPDATE songs SET title = 'b' RETURNING title", other, CursorType::Dynamic,
                     LockType::Optimistic);
        backUpDatabase(connection, path("copy.mdb"));
        expectWhole(path("copy.mdb"), "a", 10);
        writing.Close();
        backUpDatabase(connection, path("copy.mdb"));
        expectWhole(path("copy.mdb"), "b", 10);
    }

    void backupReplacesAnOlderOneAndLeavesNothingElse() {
        Connection connection;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "a", 5000);
        backUpDatabase(connection, path("copy.mdb"));
        run(connection, "DELETE FROM songs");
        fill(connection, "b", 1);
        backUpDatabase(connection, path("copy.mdb"));
        expectWhole(path("copy.mdb"), "b", 1);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"copy.mdb", "db1.mdb"}));
    }

    void backupOntoTheOpenFileIsRefusedUnderAnyName() {
        Connection connection;
        connection.Open(newDatabase("db1.mdb"));
        QVERIFY(QFile::link(path("db1.mdb"), path("link.mdb")));
        QCOMPARE(link(qPrintable(path("db1.mdb")), qPrintable(path("hard.mdb"))), 0);
        for (const char* name : {"db1.mdb", "link.mdb", "hard.mdb"})
            QCOMPARE(errorOf([&] { backUpDatabase(connection, path(QLatin1String(name))); }), 70);
        fill(connection, "a", 1);
        expectWhole(path("db1.mdb"), "a", 1);
    }

    void backupWithoutAFolderOrARightToWriteIsTold() {
        Connection connection;
        QCOMPARE(errorOf([&] { backUpDatabase(connection, path("a")); }), 3704);
        QCOMPARE(errorOf([&] { restoreDatabase(connection, path("a")); }), 3704);
        connection.Open(newDatabase("db1.mdb"));
        QCOMPARE(errorOf([&] { backUpDatabase(connection, path("none/copy.mdb")); }), 76);
        QVERIFY(QDir().mkpath(path("copy.mdb")));
        QCOMPARE(errorOf([&] { backUpDatabase(connection, path("copy.mdb")); }), 75);
    }

    void restoreTakesAnyPageSizeAndJournalForm() {
        Connection connection, other;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "old", 500);
        other.Open(newDatabase("other.mdb"));
        fill(other, "new", 900);
        sqlite3_set_authorizer(other.handle(), nullptr, nullptr);
        sqlite3_exec(other.handle(), "PRAGMA page_size = 1024; VACUUM; PRAGMA journal_mode = WAL",
                     nullptr, nullptr, nullptr);
        restoreDatabase(connection, path("other.mdb"));
        other.Close();
        QCOMPARE(value(connection, "SELECT count(*) AS v FROM songs WHERE title = 'new'"),
                 QStringLiteral("900"));
        fill(connection, "new", 1);
        backUpDatabase(connection, path("copy.mdb"));
        connection.Close();
        expectWhole(path("db1.mdb"), "new", 901);
        expectWhole(path("copy.mdb"), "new", 901);
        QVERIFY(!QFile::exists(path("db1.mdb-wal")));
    }

    void copyWaitsForAWriterLongerThanAStatement() {
        const QString file = newDatabase("db1.mdb");
        Connection connection;
        connection.Open(file);
        fill(connection, "a", 10);
        sqlite3* writer = nullptr;
        QCOMPARE(sqlite3_open(file.toUtf8().constData(), &writer), SQLITE_OK);
        QCOMPARE(sqlite3_exec(writer, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
        std::thread other([writer] {
            std::this_thread::sleep_for(std::chrono::seconds(4));
            sqlite3_exec(writer, "COMMIT", nullptr, nullptr, nullptr);
        });
        const int error = errorOf([&] { backUpDatabase(connection, path("copy.mdb")); });
        other.join();
        sqlite3_close(writer);
        QCOMPARE(error, 0);
        connection.Close();
        expectWhole(path("copy.mdb"), "a", 10);
    }

    void restoreWhileAStatementRunsIsToldAndChangesNothing() {
        Connection connection, other;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "old", 10);
        other.Open(newDatabase("other.mdb"));
        fill(other, "new", 10);
        Recordset reading;
        reading.Open("SELECT * FROM songs", connection, CursorType::Dynamic, LockType::ReadOnly);
        QCOMPARE(errorOf([&] { restoreDatabase(connection, path("other.mdb")); }), -2147467259);
        reading.Close();
        QCOMPARE(value(connection, "SELECT max(title) AS v FROM songs"), QStringLiteral("old"));
        restoreDatabase(connection, path("other.mdb"));
        QCOMPARE(value(connection, "SELECT max(title) AS v FROM songs"), QStringLiteral("new"));
    }

    void restoreFromTheOpenFileItselfChangesNothing() {
        Connection connection;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "a", 100);
        restoreDatabase(connection, path("db1.mdb"));
        connection.Close();
        expectWhole(path("db1.mdb"), "a", 100);
    }

    void backupThatMayNotBeReadIsToldAndChangesNothing() {
        Connection connection;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "old", 10);
        connection.Close();
        const QString secret = newDatabase("secret.mdb");
        // The superuser may read anything, so another user restores.
        constexpr auto toAll =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(QFile::setPermissions(secret, QFile::WriteOwner));
        QVERIFY(QFile::setPermissions(path("db1.mdb"), toAll));
        QVERIFY(QFile::setPermissions(m_folder->path(), toAll | QFile::ExeOwner | QFile::ExeOther));
        const int outcome = asOtherUser([&] {
            Connection own;
            own.Open(path("db1.mdb"));
            const QString why = descriptionOf([&] { restoreDatabase(own, secret); });
            return why == "This copy cannot be read and was not restored; your songs are as they "
                          "were. (permission denied)" &&
                           value(own, "SELECT max(title) AS v FROM songs") == "old"
                       ? 1
                       : 0;
        });
        QCOMPARE(outcome, 1);
    }

    void backupWithDamagedTablesIsToldAndChangesNothing() {
        Connection connection;
        connection.Open(newDatabase("db1.mdb"));
        fill(connection, "old", 10);
        const QString damaged = newDatabase("damaged.mdb");
        sqlite3* handle = nullptr;
        QCOMPARE(sqlite3_open(damaged.toUtf8().constData(), &handle), SQLITE_OK);
        QCOMPARE(sqlite3_exec(handle,
                              "PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = "
                              "'CREATE TABLE notes (' WHERE name = 'notes'",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        sqlite3_close(handle);
        const QString why = descriptionOf([&] { restoreDatabase(connection, damaged); });
        QVERIFY2(why.startsWith("This copy is damaged and was not restored; your songs are as they "
                                "were. (malformed database schema"),
                 qPrintable(why));
        QCOMPARE(value(connection, "SELECT max(title) AS v FROM songs"), QStringLiteral("old"));
    }

    void restoreLeavesTheBackupAsItIs() {
        Connection connection;
        connection.Open(newDatabase("db1.mdb"));
        backUpDatabase(connection, path("copy.mdb"));
        QFile copy(path("copy.mdb"));
        QVERIFY(copy.open(QIODevice::ReadOnly));
        const QByteArray before = copy.readAll();
        copy.setPermissions(QFile::ReadOwner);
        restoreDatabase(connection, path("copy.mdb"));
        QVERIFY(copy.seek(0));
        QCOMPARE(copy.readAll(), before);
        QVERIFY(!QFile::exists(path("copy.mdb-journal")));
    }

    void restoreKilledAtAnyPointLeavesTheOldOrTheNewOne() {
        const QString seed = newDatabase("seed.mdb");
        const QString other = newDatabase("other.mdb");
        {
            Connection connection;
            connection.Open(seed);
            fill(connection, "old", 2000);
            Connection second;
            second.Open(other);
            fill(second, "new", 1200);
        }
        int oldSeen = 0;
        int newSeen = 0;
        bool finished = false;
        for (int callsLeft = 1; !finished; ++callsLeft) {
            QFile::remove(path("db1.mdb"));
            QFile::remove(path("db1.mdb-journal"));
            QVERIFY(QFile::copy(seed, path("db1.mdb")));
            finished = survives(callsLeft, [&] {
                Connection connection;
                connection.Open(path("db1.mdb"));
                restoreDatabase(connection, other);
            });
            Connection connection;
            connection.Open(path("db1.mdb"));
            const bool isNew =
                value(connection, "SELECT max(title) AS v FROM songs") == QLatin1String("new");
            connection.Close();
            ++(isNew ? newSeen : oldSeen);
            expectWhole(path("db1.mdb"), isNew ? "new" : "old", isNew ? 1200 : 2000);
            if (QTest::currentTestFailed()) return;
        }
        QVERIFY2(oldSeen > 20, qPrintable(QString::number(oldSeen)));
        QVERIFY(newSeen >= 1);
    }
};

LORVANITE_TEST(TestDatabaseBackup)
#include "test_database_backup.moc"
