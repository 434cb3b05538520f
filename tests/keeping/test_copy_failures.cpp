// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Copies that are killed, find the disk full or may not write: complete or absent.
#include "core/data/database.h"
#include "core/data/database_backup.h"
#include "core/data/file_copy.h"
#include "core/data/run_time_error.h"
#include "keeping/copies.h"
#include "keeping/copies_hands.h"
#include "keeping/daily_copy.h"
#include "support/full_disk.h"
#include "support/other_process.h"
#include "support/registry.h"

#include <QCoreApplication>
#include <QDir>
#include <QObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>
#include <unistd.h>

class TestCopyFailures : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    const QDate day{2026, 11, 21};
    static constexpr int Cancelled = 1;
    static constexpr int Raised = 2;

    QString folder() const { return m_dir->path(); }
    QString path(const QString& relative) const { return m_dir->filePath(relative); }
    QStringList names() const {
        return QDir(path("copies"))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    // 0 for a copy that is made.
    int statusOf(const CopyStep& step) const {
        try {
            return makeDailyCopy(folder(), day, step) == CopyOutcome::Made ? 0 : Cancelled;
        } catch (const RunTimeError& error) {
            return error.number() == RunTimeError::PermissionDenied &&
                           error.description().endsWith('.')
                       ? Raised
                       : error.number();
        }
    }

    // What a copy needs in the way of work: an earlier one, of which some files have changed.
    void prepare() {
        QCOMPARE(makeDailyCopy(folder(), day.addDays(-1)), CopyOutcome::Made);
        writeRound(folder(), 2);
    }

    QString failureOf(const QString& program) {
        DailyCopy daily(program);
        QSignalSpy failed(&daily, &DailyCopy::failed);
        daily.start(day);
        return failed.wait() ? failed[0][0].toString() : QString();
    }

private Q_SLOTS:
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        writeRound(folder(), 1);
    }

    void copyKilledAtAnyStepIsAbsentAndTheNextOneIsMade() {
        prepare();
        int kills = 0;
        for (bool made = false; !made;) {
            int left = kills + 1;
            made = inOtherProcess([&] {
                       return statusOf([&](const QString&) {
                           if (--left == 0) _exit(9);
                           return true;
                       });
                   }) == 0;
            if (made) break;
            ++kills;
            QVERIFY(!QFile::exists(path("copies/2026-11-21")));
            QCOMPARE(newestCopy(folder()), path("copies/2026-11-20"));
            QCOMPARE(roundOf(newestCopy(folder())), 1);
        }
        QVERIFY2(kills > 20, qPrintable(QString::number(kills)));
        QCOMPARE(roundOf(path("copies/2026-11-21")), 2);
        QCOMPARE(names(), (QStringList{"2026-11-20", "2026-11-21"}));
    }

    void diskThatIsFullFromAnyStepOnLeavesNoCopyAndIsReported() {
        prepare();
        int failures = 0;
        for (int status = -1; status != 0; ++failures) {
            int left = failures + 1;
            status = inOtherProcess([&] {
                std::optional<FullDisk> full;
                return statusOf([&](const QString&) {
                    if (--left == 0) full.emplace(0);
                    return true;
                });
            });
            if (status == 0) break;
            QCOMPARE(status, Raised);
            QCOMPARE(names(), QStringList{"2026-11-20"});
            QCOMPARE(roundOf(path("copies/2026-11-20")), 1);
        }
        QVERIFY2(failures > 10, qPrintable(QString::number(failures)));
        QCOMPARE(roundOf(path("copies/2026-11-21")), 2);
    }

    void diskThatIsFullInTheMiddleOfAnyFileLeavesNoCopyAndIsReported() {
        prepare();
        const auto largest = rlim_t(QFileInfo(path("db1.mdb")).size());
        for (rlim_t most = 0; most < largest; most = most * 3 / 2 + 1) {
            const int status = inOtherProcess([&] {
                const FullDisk full(most);
                return statusOf({});
            });
            QCOMPARE(status, Raised);
            QCOMPARE(names(), QStringList{"2026-11-20"});
        }
        QCOMPARE(statusOf({}), 0);
        QCOMPARE(roundOf(path("copies/2026-11-21")), 2);
    }

    void folderThatCannotBeWrittenIsReported() {
        QVERIFY(QFile::setPermissions(
            folder(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
        QCOMPARE(asOtherUser([&] { return statusOf({}); }), Raised);
        QFile::setPermissions(folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(!QFile::exists(path("copies")));
    }

    void folderOfCopiesThatCannotBeWrittenIsReported() {
        prepare();
        QFile::setPermissions(folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                            QFile::ReadOther | QFile::ExeOther);
        QVERIFY(QFile::setPermissions(path("copies"), QFile::ReadOwner | QFile::ExeOwner |
                                                          QFile::ReadOther | QFile::ExeOther));
        QCOMPARE(asOtherUser([&] { return statusOf({}); }), Raised);
        QFile::setPermissions(path("copies"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(names(), QStringList{"2026-11-20"});
    }

    void fileThatMayNotBeReadIsReportedAndNoCopyIsMade() {
        const QString secret = path("saved sets/secret.set");
        QFile file(secret);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("set") == 3);
        file.close();
        QVERIFY(file.setPermissions({}));
        constexpr auto toAll =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(QFile::setPermissions(folder(), toAll | QFile::ExeOwner | QFile::ExeOther));
        QVERIFY(QFile::setPermissions(path("db1.mdb"), toAll));
        QCOMPARE(
            asOtherUser([&] {
                try {
                    makeDailyCopy(folder(), day);
                } catch (const RunTimeError& error) {
                    return error.description() ==
                                   QStringLiteral("The file \"%1\" cannot be read.").arg(secret)
                               ? 1
                               : 2;
                }
                return 0;
            }),
            1);
        QCOMPARE(newestCopy(folder()), QString());
    }

    void fileInTheWayIsReportedWithItsName() {
        QFile file(path("copies"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(failureOf(folder()),
                 QStringLiteral("The folder \"%1\" cannot be made.").arg(path("copies")));
    }

    void missingDatabaseIsReportedAndNoCopyIsMade() {
        QVERIFY(QFile::remove(path("db1.mdb")));
        QCOMPARE(failureOf(folder()),
                 QStringLiteral("The file \"%1\" is missing.").arg(path("db1.mdb")));
        QCOMPARE(names(), QStringList());
    }

    void damagedDatabaseIsReportedAndNoCopyIsMade() {
        QFile file(path("db1.mdb"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("no database at all ").repeated(1000));
        file.close();
        QCOMPARE(failureOf(folder()),
                 QStringLiteral("The database cannot be read: file is not a database."));
        QCOMPARE(names(), QStringList());
    }

    void setAsideThatFailsRaisesAndLeavesNothing() {
        QVERIFY(QFile::remove(path("db1.mdb")));
        try {
            setAside(folder(), day, SetAsideReason::BeforeReset);
            QFAIL("nothing was raised");
        } catch (const RunTimeError& error) {
            QCOMPARE(error.number(), int(RunTimeError::FileNotFound));
        }
        QCOMPARE(names(), QStringList());
    }

    void removalKilledAtItsRenameLeavesNoHalfCopy() {
        // What a process that is killed leaves behind.
        prepare();
        QVERIFY(QDir().rename(path("copies/2026-11-20"), path("copies/.removed")));
        QVERIFY(QFile::remove(path("copies/.removed/db1.mdb")));
        QVERIFY(QDir().mkpath(path("copies/.unfinished/sheetmusic/hymns")));
        QCOMPARE(newestCopy(folder()), QString());
        QCOMPARE(statusOf({}), 0);
        QCOMPARE(names(), QStringList{"2026-11-21"});
    }

    void killsDuringTheDailyCopyLeaveTheNewestOneWhole_data() {
        QTest::addColumn<int>("kills");
        for (int row = 0; row < 8; ++row) QTest::addRow("25 kills, %d", row) << 25;
    }

    void killsDuringTheDailyCopyLeaveTheNewestOneWhole() {
        QFETCH(const int, kills);
        QCOMPARE(makeDailyCopy(folder(), day), CopyOutcome::Made);
        int interrupted = 0;
        for (int kill = 0; kill < kills; ++kill) {
            QProcess copier;
            copier.start(QCoreApplication::applicationFilePath(),
                         {QStringLiteral("--copy-for-ever"), folder()});
            QVERIFY2(copier.waitForReadyRead(60'000), copier.readAllStandardError().constData());
            QTest::qSleep(QRandomGenerator::global()->bounded(60));
            copier.kill();
            QVERIFY(copier.waitForFinished());
            interrupted += copier.readAllStandardOutput().endsWith("start\n");
            for (const QString& copy : copiesIn(folder()))
                QVERIFY2(roundOf(copy) > 0, qPrintable(copy));
            QVERIFY(copiesIn(folder()).size() <= 10 + 12 + 1);
        }
        QVERIFY2(interrupted > kills / 4, qPrintable(QString::number(interrupted)));
        // It restores.
        const QString newest = newestCopy(folder());
        Connection connection;
        connection.Open(path("db1.mdb"));
        restoreDatabase(connection, newest + "/db1.mdb");
        connection.Close();
        for (const char* name : {"saved sets", "set designs", "schedules", "sheetmusic", "config"})
            copyFolder(newest + '/' + name, path(name));
        QCOMPARE(roundOf(folder()), roundOf(newest));
    }
};

LORVANITE_TEST(TestCopyFailures)
#include "test_copy_failures.moc"
