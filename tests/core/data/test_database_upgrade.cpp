// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Databases of earlier and of later versions.
#include "core/data/database.h"
#include "core/data/database_upgrade.h"
#include "core/data/run_time_error.h"
#include "support/dying_store.h"
#include "support/files.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString Copy = QStringLiteral("db1 version 0 2026-11-21.mdb");
constexpr int StoreFailed = -2147467259;
constexpr int Songs = 400;

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

// What upgrading a file says; the empty text where it says nothing.
QString failureOf(const QString& file) {
    try {
        upgradeDatabase(file);
    } catch (const RunTimeError& error) {
        if (error.number() != StoreFailed)
            QTest::qFail(qPrintable(QString::number(error.number())), __FILE__, __LINE__);
        return error.description();
    }
    return {};
}

// Runs something in a separate process. Returns its exit status, or -1 if it was killed.
int statusOf(const std::function<void()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        body();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

class TestDatabaseUpgrade : public WindowTest {
    Q_OBJECT

    QString file() const { return world->path("db1.mdb"); }
    QString copy() const { return world->path(Copy); }

    // Makes the database one of the time before versions were counted.
    void makeOld() {
        world->sql(QStringLiteral("DROP INDEX played_on_song; PRAGMA user_version = 0; "
                                  "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                                  "WHERE i < %1) INSERT INTO songs (title) SELECT 'Größe ' || i "
                                  "FROM n; INSERT INTO played_on (title, songID) SELECT title, ID "
                                  "FROM songs")
                       .arg(Songs));
    }

    // Files in the program's folder, those beside the database.
    QStringList files() const {
        return QDir(world->folder()).entryList(QDir::Files | QDir::Hidden);
    }

    void expectSongs() {
        QCOMPARE(world->rows("PRAGMA integrity_check"), QStringList{"ok"});
        QCOMPARE(world->rows("SELECT count(*), max(length(title)) FROM songs"),
                 QStringList{QStringLiteral("%1|9").arg(Songs)});
    }

    bool isBroughtUp() { return world->rows("PRAGMA user_version") == QStringList{"1"}; }

    // The database is what it was, or brought up whole with the old one beside it.
    void expectOldOrNew(const QByteArray& before) {
        if (isBroughtUp()) {
            QCOMPARE(world->rows("SELECT count(*) FROM sqlite_master WHERE type = 'index'"),
                     QStringList{"1"});
            QVERIFY(read(copy()) == before);
        } else {
            QCOMPARE(world->rows("SELECT count(*) FROM sqlite_master WHERE type = 'index'"),
                     QStringList{"0"});
            QVERIFY(!QFile::exists(copy()) || read(copy()) == before);
        }
        expectSongs();
    }

    // Puts the old database back as the only one.
    void putBack(const QByteArray& before) {
        for (const QString& name : files()) QFile::remove(world->path(name));
        writeBytes(file(), before);
    }

private Q_SLOTS:
    void olderDatabaseIsBroughtUpAtTheStartAndItsCopySetAside() {
        const QStringList delivered =
            world->rows("SELECT type, name, sql FROM sqlite_master ORDER BY name");
        makeOld();
        const QByteArray before = read(file());
        world->start();
        QVERIFY(world->main().isVisible());
        QVERIFY(isBroughtUp());
        expectSongs();
        QCOMPARE(world->rows("SELECT type, name, sql FROM sqlite_master ORDER BY name"), delivered);
        QCOMPARE(files(), (QStringList{Copy, "db1.mdb"}));
        QVERIFY(read(copy()) == before);
        // The next start finds nothing to do.
        world->stop();
        const QByteArray after = read(file());
        world->start();
        world->stop();
        QVERIFY(read(file()) == after);
        QCOMPARE(files(), (QStringList{Copy, "db1.mdb"}));
    }

    void deliveredDatabaseIsOfThisVersionAndLeftAlone() {
        QCOMPARE(world->rows("PRAGMA user_version"),
                 QStringList{QString::number(databaseVersion())});
        const QByteArray before = read(file());
        QCOMPARE(failureOf(file()), QString());
        QVERIFY(read(file()) == before);
        QCOMPARE(files(), QStringList{"db1.mdb"});
    }

    void laterDatabaseIsRefusedAndLeftByteForByte_data() {
        QTest::addColumn<QString>("statements");
        QTest::newRow("next version") << "PRAGMA user_version = 2";
        QTest::newRow("far version") << "PRAGMA user_version = 2000000000";
        QTest::newRow("other journal") << "PRAGMA user_version = 2; PRAGMA journal_mode = WAL";
        QTest::newRow("other tables") << "DROP TABLE prefs; CREATE TABLE prefs (a, b, c); "
                                         "PRAGMA user_version = 7";
    }
    void laterDatabaseIsRefusedAndLeftByteForByte() {
        QFETCH(QString, statements);
        world->sql(statements);
        const QByteArray before = read(file());
        world->answers.runTimeError(StoreFailed, "created by a later version of Lorvanite");
        atEdge(OnFailure::EndsProgram, [] { openDatabase(); });
        QCOMPARE(world->endStatus, 1);
        QVERIFY(!dbConn.isOpen());
        QVERIFY(read(file()) == before);
        QCOMPARE(files(), QStringList{"db1.mdb"});
    }

    void databaseWithANegativeVersionIsRefusedAsForeign() {
        world->sql("PRAGMA user_version = -1");
        const QByteArray before = read(file());
        world->answers.runTimeError(StoreFailed, "not created by Lorvanite");
        atEdge(OnFailure::EndsProgram, [] { openDatabase(); });
        QCOMPARE(world->endStatus, 1);
        QVERIFY(!dbConn.isOpen());
        QVERIFY(read(file()) == before);
        QCOMPARE(files(), QStringList{"db1.mdb"});
    }

    void startOnALaterDatabaseEndsTheProgramWithAClearBox() {
        world->sql("PRAGMA user_version = 2");
        const QByteArray before = read(file());
        world->answers.box(
            QStringLiteral("Run-time error '%1':\r\rThe database \"%2\" cannot be opened: it was "
                           "created by a later version of Lorvanite (its tables have version 2, "
                           "and this program supports versions up to 1). The file was not "
                           "changed.")
                .arg(StoreFailed)
                .arg(file()),
            QMessageBox::Critical);
        atEdge(OnFailure::EndsProgram, [this] { world->start(); });
        QCOMPARE(world->endStatus, 1);
        QVERIFY(read(file()) == before);
    }

    void fileThatIsMissingOrNoDatabaseIsTold_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("why");
        QTest::newRow("missing") << QByteArray() << "unable to open database file";
        QTest::newRow("letter") << QByteArray("Dear all,\n").repeated(500)
                                << "file is not a database";
    }
    void fileThatIsMissingOrNoDatabaseIsTold() {
        QFETCH(QByteArray, content);
        QFETCH(QString, why);
        QFile::remove(file());
        if (!content.isEmpty()) writeBytes(file(), content);
        QCOMPARE(failureOf(file()),
                 QStringLiteral("The database \"%1\" cannot be opened: %2.").arg(file(), why));
        QCOMPARE(files().size(), content.isEmpty() ? 0 : 1);
        if (!content.isEmpty()) QVERIFY(read(file()) == content);
    }

    void databaseThatCannotBeBroughtUpStandsAsItWas() {
        makeOld();
        world->sql("DROP TABLE played_on");
        const QByteArray before = read(file());
        const QString failure = failureOf(file());
        QVERIFY2(failure.contains("comes from an earlier version and cannot be upgraded") &&
                     failure.contains("no such table: main.played_on"),
                 qPrintable(failure));
        QVERIFY(read(file()) == before);
        QVERIFY(read(copy()) == before);
        // Trying again makes no second copy of the same.
        QVERIFY(!failureOf(file()).isEmpty());
        QCOMPARE(files(), (QStringList{Copy, "db1.mdb"}));
    }

    void copyIsNeverWrittenOverAnother() {
        makeOld();
        const QByteArray before = read(file());
        writeBytes(copy(), "something dear");
        QCOMPARE(failureOf(file()), QString());
        QCOMPARE(read(copy()), QByteArray("something dear"));
        QVERIFY(read(world->path("db1 version 0 2026-11-21 (2).mdb")) == before);
        QVERIFY(isBroughtUp());
    }

    void changesStillInAJournalComeAlong() {
        makeOld();
        // Another program was killed with its changes in a journal of the other form.
        QCOMPARE(statusOf([this] {
                     sqlite3* db = nullptr;
                     sqlite3_open(qPrintable(file()), &db);
                     sqlite3_exec(db,
                                  "PRAGMA journal_mode = WAL; DELETE FROM songs WHERE ID > 1; "
                                  "UPDATE songs SET title = 'in the journal'",
                                  nullptr, nullptr, nullptr);
                     _exit(7);
                 }),
                 7);
        QVERIFY(QFile::exists(file() + "-wal"));
        QCOMPARE(failureOf(file()), QString());
        QVERIFY(isBroughtUp());
        QCOMPARE(world->rows("SELECT title FROM songs"), QStringList{"in the journal"});
        QCOMPARE(files(), (QStringList{Copy, "db1.mdb"}));
        QVERIFY(read(copy()).contains("in the journal"));
    }

    void databaseThatAnotherProgramWritesIsToldAndLeft() {
        makeOld();
        const QByteArray before = read(file());
        Connection other;
        other.Open(file());
        // A statement that hands rows out keeps its change open until it is closed.
        Recordset writing;
        writing.Open("UPDATE prefs SET var_value = '' RETURNING var_name", other,
                     CursorType::Dynamic, LockType::Optimistic);
        const QString failure = failureOf(file());
        QVERIFY2(failure.contains("database is locked"), qPrintable(failure));
        QVERIFY(!QFile::exists(copy()));
        writing.Close();
        QCOMPARE(failureOf(file()), QString());
        QVERIFY(isBroughtUp());
    }

    void folderThatCannotBeWrittenLeavesTheDatabaseAsItIs() {
        makeOld();
        const QByteArray before = read(file());
        const auto reading = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        const auto entering = reading | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
        QVERIFY(QFile::setPermissions(
            file(), reading | QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther));
        for (const QString& folder : {QFileInfo(world->folder()).path(), world->folder()})
            QVERIFY(QFile::setPermissions(folder, entering));
        // A folder's mode does not bind the superuser, so somebody else tries.
        QCOMPARE(statusOf([this] {
                     if (geteuid() == 0 && setuid(65534) != 0) _exit(3);
                     _exit(failureOf(file()).contains("cannot be written") ? 8 : 4);
                 }),
                 8);
        for (const QString& folder : {QFileInfo(world->folder()).path(), world->folder()})
            QVERIFY(QFile::setPermissions(folder, entering | QFile::WriteOwner));
        QVERIFY(read(file()) == before);
        QCOMPARE(files(), QStringList{"db1.mdb"});
    }

    void fullDiskLeavesTheOldOrTheNewOne_data() {
        QTest::addColumn<bool>("dies");
        QTest::newRow("the write fails") << false;
        QTest::newRow("the write kills") << true;
    }
    void fullDiskLeavesTheOldOrTheNewOne() {
        QFETCH(bool, dies);
        makeOld();
        const QByteArray before = read(file());
        int broughtUp = 0;
        int left = 0;
        for (qsizetype room = 0; room < before.size() + 20000; room += 4096) {
            // Files may grow to this size only.
            const int status = statusOf([&] {
                const rlim_t most = static_cast<rlim_t>(room);
                const rlimit limit = {most, most};
                signal(SIGXFSZ, dies ? SIG_DFL : SIG_IGN);
                if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(3);
                _exit(failureOf(file()).isEmpty() ? 0 : 8);
            });
            QVERIFY(status == 0 || status == (dies ? -1 : 8));
            // A journal that was left is taken back at the next look.
            expectOldOrNew(before);
            QCOMPARE(isBroughtUp(), status == 0);
            if (QTest::currentTestFailed()) return;
            ++(status == 0 ? broughtUp : left);
            putBack(before);
        }
        QVERIFY(broughtUp >= 1);
        QVERIFY2(left > 5, qPrintable(QString::number(left)));
    }

    void upgradeKilledAtAnyPointLeavesTheOldOrTheNewOne() {
        makeOld();
        const QByteArray before = read(file());
        int oldSeen = 0;
        int newSeen = 0;
        bool finished = false;
        for (int callsLeft = 1; !finished; ++callsLeft) {
            finished = survives(callsLeft, [this] { upgradeDatabase(file()); });
            expectOldOrNew(before);
            if (QTest::currentTestFailed()) return;
            ++(isBroughtUp() ? newSeen : oldSeen);
            // The next start brings up what was left.
            QCOMPARE(failureOf(file()), QString());
            QVERIFY(isBroughtUp());
            expectSongs();
            putBack(before);
        }
        QVERIFY2(oldSeen > 5, qPrintable(QString::number(oldSeen)));
        QVERIFY(newSeen >= 1);
    }

    void twoProgramsAtOnceBringItUpOnce() {
        makeOld();
        const QByteArray before = read(file());
        for (int round = 0; round < 10; ++round) {
            QList<pid_t> children;
            for (int i = 0; i < 3; ++i) {
                const pid_t child = fork();
                if (child == 0) _exit(failureOf(file()).isEmpty() ? 0 : 8);
                children.append(child);
            }
            for (const pid_t child : children) {
                int status = 0;
                waitpid(child, &status, 0);
                QCOMPARE(status, 0);
            }
            QVERIFY(isBroughtUp());
            QCOMPARE(files(), (QStringList{Copy, "db1.mdb"}));
            QVERIFY(read(copy()) == before);
            putBack(before);
        }
    }
};

LORVANITE_TEST(TestDatabaseUpgrade)
#include "test_database_upgrade.moc"
