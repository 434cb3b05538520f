// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Several statements as one.
#include "core/data/run_time_error.h"
#include "core/data/transaction.h"
#include "support/dying_store.h"
#include "support/full_disk.h"
#include "support/registry.h"
#include "support/world.h"

#include <QFileInfo>

#include <sqlite3.h>

namespace {

void addSong(const QString& title) {
    execute(QStringLiteral("INSERT INTO songs (title) VALUES ('%1')").arg(title));
}

int errorOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

}  // namespace

class TestTransaction : public WindowTest {
    Q_OBJECT

    QStringList titles() { return world->rows("SELECT title FROM songs ORDER BY rowid"); }

private Q_SLOTS:
    void otherProgramsSeeAllOrNothing() {
        openDatabase();
        Transaction transaction(dbConn);
        addSong("one");
        addSong("two");
        QCOMPARE(titles(), QStringList());
        transaction.commit();
        QCOMPARE(titles(), (QStringList{"one", "two"}));
    }

    void changesWithoutCommitAreRolledBack() {
        openDatabase();
        addSong("before");
        {
            Transaction transaction(dbConn);
            addSong("one");
            execute("DELETE FROM songs WHERE title = 'before'");
        }
        QCOMPARE(titles(), QStringList{"before"});
    }

    void errorRollsBackOnItsWayOut() {
        openDatabase();
        QCOMPARE(errorOf([] {
                     Transaction transaction(dbConn);
                     addSong("one");
                     execute("INSERT INTO nowhere (title) VALUES ('two')");
                     transaction.commit();
                 }),
                 int(RunTimeError::StatementRefused));
        QCOMPARE(titles(), QStringList());
        addSong("after");
        QCOMPARE(titles(), QStringList{"after"});
    }

    void openSelectDoesNotPreventCommitOrRollback() {
        openDatabase();
        for (const char* title : {"one", "two", "three"}) addSong(title);
        Recordset rows = select("SELECT title FROM songs ORDER BY rowid");
        { const Transaction transaction(dbConn); }
        rows.MoveNext();
        Transaction transaction(dbConn);
        addSong("four");
        transaction.commit();
        rows.MoveNext();
        QCOMPARE(rows.Fields("title"), QString("three"));
        QCOMPARE(titles().size(), 4);
    }

    void statementsStillBeginNone() {
        openDatabase();
        QCOMPARE(errorOf([] { execute("BEGIN"); }), int(RunTimeError::StatementRefused));
        Transaction transaction(dbConn);
        for (const char* statement : {"COMMIT", "ROLLBACK", "SAVEPOINT here", "BEGIN"})
            QCOMPARE(errorOf([&] { execute(statement); }), int(RunTimeError::StatementRefused));
        addSong("one");
        transaction.commit();
        QCOMPARE(titles(), QStringList{"one"});
        QCOMPARE(errorOf([] { execute("BEGIN"); }), int(RunTimeError::StatementRefused));
    }

    void logOfStatementsHoldsOnlyStatements() {
        openDatabase();
        world->statements.clear();
        Transaction transaction(dbConn);
        addSong("one");
        transaction.commit();
        QCOMPARE(world->statements, QStringList{"INSERT INTO songs (title) VALUES ('one') [3]"});
    }

    void secondOneOnTheConnectionIsRefused() {
        openDatabase();
        Transaction first(dbConn);
        addSong("one");
        QCOMPARE(errorOf([] { Transaction second(dbConn); }), int(RunTimeError::StatementRefused));
        first.commit();
        QCOMPARE(titles(), QStringList{"one"});
        QCOMPARE(errorOf([&] { first.commit(); }), int(RunTimeError::StatementRefused));
    }

    void closedConnectionIsReported() {
        QCOMPARE(errorOf([] { Transaction transaction(dbConn); }),
                 int(RunTimeError::ObjectIsClosed));
        openDatabase();
        {
            Transaction transaction(dbConn);
            addSong("one");
            dbConn.Close();
            QCOMPARE(errorOf([&] { transaction.commit(); }), int(RunTimeError::ObjectIsClosed));
        }
        QCOMPARE(titles(), QStringList());
    }

    void anotherProgramsTransactionIsReported() {
        openDatabase();
        Connection other;
        other.Open(world->path("db1.mdb"));
        Transaction theirs(other);
        QCOMPARE(errorOf([] { Transaction ours(dbConn); }), int(RunTimeError::StatementRefused));
    }

    void fullDiskChangesNothing() {
        openDatabase();
        addSong("before");
        const qint64 size = QFileInfo(world->path("db1.mdb")).size();
        {
            const FullDisk disk(rlim_t(size + 8192));
            QVERIFY(errorOf([] {
                Transaction transaction(dbConn);
                for (int i = 0; i < 2000; ++i) addSong(QString(500, QLatin1Char('x')));
                transaction.commit();
            }));
        }
        QCOMPARE(titles(), QStringList{"before"});
    }

    void deathAnywhereLeavesAllOrNothing() {
        openDatabase();
        addSong("before");
        dbConn.Close();
        bool wasWhole = false;
        int calls = 0;
        while (!wasWhole) {
            QVERIFY(++calls < 200);
            wasWhole = survives(calls, [] {
                openDatabase();
                Transaction transaction(dbConn);
                addSong("one");
                addSong("two");
                transaction.commit();
            });
            const QStringList found = titles();
            QVERIFY2(
                found == QStringList{"before"} || found == (QStringList{"before", "one", "two"}),
                qPrintable(found.join(' ')));
            world->sql("DELETE FROM songs WHERE title <> 'before'");
        }
        QVERIFY(calls > 5);
    }
};

LORVANITE_TEST(TestTransaction)
#include "test_transaction.moc"
