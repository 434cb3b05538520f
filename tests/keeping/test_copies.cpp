// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Copies of the user's work: what is in them, which stay, and their names.
#include "core/data/database.h"
#include "core/data/database_backup.h"
#include "core/data/file_copy.h"
#include "core/data/run_time_error.h"
#include "keeping/copies.h"
#include "keeping/copies_hands.h"
#include "keeping/daily_copy.h"
#include "support/files.h"
#include "support/registry.h"

#include <QDir>
#include <QDirIterator>
#include <QObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <memory>
#include <sqlite3.h>

class TestCopies : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    static constexpr const char* Chart = "sheetmusic/hymns/old/Öde.stp";

    const QDate day{2026, 11, 21};

    QString folder() const { return m_dir->path(); }
    QString path(const QString& relative) const { return m_dir->filePath(relative); }
    QStringList names() const {
        return QDir(path("copies"))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    // Whether two paths are one file on the disk.
    bool areOneFile(const QString& a, const QString& b) const {
        return std::filesystem::equivalent(path(a).toStdU16String(), path(b).toStdU16String());
    }

    void write(const QString& relative, const QByteArray& content) const {
        QFile file(path(relative));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void setTime(const QString& relative, const QDateTime& time) const {
        QFile file(path(relative));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    }

    QDateTime timeOf(const QString& relative) const {
        return QFileInfo(path(relative)).lastModified();
    }

    CopyOutcome copy(int dayAfter = 0) const {
        return makeDailyCopy(folder(), day.addDays(dayAfter));
    }

private Q_SLOTS:
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        writeRound(folder(), 1);
    }

    void copyHoldsAllOfTheUsersWorkAndNothingElse() {
        write("config/email.html", "a mail");
        write("notes.txt", "something else");
        QCOMPARE(copy(), CopyOutcome::Made);
        QCOMPARE(roundOf(path("copies/2026-11-21")), 1);
        QStringList files;
        QDirIterator all(path("copies/2026-11-21"), QDir::Files | QDir::Hidden,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) files.append(all.next());
        QCOMPARE(files.size(), roundFiles().size() + 1);
        QCOMPARE(names(), QStringList{"2026-11-21"});
    }

    void copyIsReadByItsOwnerAlone() {
        copy();
        QDirIterator all(path("copies"), QDir::AllEntries | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                            QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
        QVERIFY(!(QFileInfo(path("copies")).permissions() & others));
        while (all.hasNext()) {
            const QString each = all.next();
            QVERIFY2(!(QFileInfo(each).permissions() & others), qPrintable(each));
        }
    }

    void timesOfFilesAreKept() {
        const QDateTime time(QDate(2011, 5, 8), QTime(9, 30, 15, 250));
        const QStringList files = roundFiles() + QStringList{"db1.mdb"};
        for (const QString& file : files) setTime(file, time);
        copy();
        for (const QString& file : files) QCOMPARE(timeOf("copies/2026-11-21/" + file), time);
    }

    void secondCopyOfADayIsNotMade() {
        QCOMPARE(copy(), CopyOutcome::Made);
        writeRound(folder(), 2);
        QCOMPARE(copy(), CopyOutcome::AlreadyThere);
        QCOMPARE(roundOf(path("copies/2026-11-21")), 1);
    }

    void unchangedFilesAreLinksAndChangedOnesAreNot() {
        copy();
        write("saved sets/Advent.set", "changed");
        copy(1);
        for (const QString& file : roundFiles() + QStringList{"db1.mdb"})
            QCOMPARE(areOneFile("copies/2026-11-21/" + file, "copies/2026-11-22/" + file),
                     file != "saved sets/Advent.set");
        QCOMPARE(bytesOf(path("copies/2026-11-22/saved sets/Advent.set")), QByteArray("changed"));
        // The program's own file is never one of them: writing it would change the copies.
        QVERIFY(!areOneFile(Chart, QStringLiteral("copies/2026-11-22/") + Chart));
    }

    void fileOfTheSameSizeAndTimeButOtherContentIsCopied() {
        copy();
        const QDateTime time = timeOf(Chart);
        QByteArray content = bytesOf(path(Chart));
        content[content.size() - 1] = '!';
        write(Chart, content);
        setTime(Chart, time);
        copy(1);
        QCOMPARE(bytesOf(path(QStringLiteral("copies/2026-11-22/") + Chart)), content);
        QVERIFY(bytesOf(path(QStringLiteral("copies/2026-11-21/") + Chart)) != content);
    }

    void fileOfTheSameContentButAnotherTimeKeepsItsTime() {
        copy();
        const QDateTime first = timeOf(Chart);
        setTime(Chart, first.addDays(1));
        copy(1);
        QCOMPARE(timeOf(QStringLiteral("copies/2026-11-21/") + Chart), first);
        QCOMPARE(timeOf(QStringLiteral("copies/2026-11-22/") + Chart), first.addDays(1));
    }

    void filesAreCopiedWhereTheyCannotBeLinked() {
        copy();
        // The earlier copy is on another file system.
        const QTemporaryDir elsewhere("/dev/shm/copies-XXXXXX");
        QVERIFY(elsewhere.isValid());
        copyFolder(path("copies/2026-11-21"), elsewhere.filePath("2026-11-21"));
        for (const QString& file : roundFiles())
            setTime(file, QDateTime::currentDateTime().addDays(-1));
        QVERIFY(QDir(path("copies/2026-11-21")).removeRecursively());
        QVERIFY(QFile::link(elsewhere.filePath("2026-11-21"), path("copies/2026-11-21")));
        for (const QString& file : roundFiles()) setTime("copies/2026-11-21/" + file, timeOf(file));
        copy(1);
        QCOMPARE(roundOf(path("copies/2026-11-22")), 1);
        QVERIFY(!areOneFile(QStringLiteral("copies/2026-11-21/") + Chart,
                            QStringLiteral("copies/2026-11-22/") + Chart));
    }

    void missingFoldersAndLinksThatLeadNowhereAreLeftOut() {
        QVERIFY(QDir(path("schedules")).removeRecursively());
        QVERIFY(QFile::remove(path("config/mail.ini")));
        QVERIFY(QFile::link(path("nowhere"), path("sheetmusic/broken.stp")));
        QVERIFY(QFile::link(path("sheetmusic"), path("sheetmusic/hymns/round")));
        QCOMPARE(copy(), CopyOutcome::Made);
        QCOMPARE(QDir(path("copies/2026-11-21")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 (QStringList{"db1.mdb", "saved sets", "set designs", "sheetmusic"}));
        QVERIFY(!QFile::exists(path("copies/2026-11-21/sheetmusic/hymns/round")));
    }

    void tenDaysAndTheFirstOfEachOfTwelveMonthsStay() {
        // Every third day of two years.
        QDate first(2024, 11, 2);
        for (QDate date = first; date < day; date = date.addDays(3))
            QVERIFY(QDir().mkpath(path("copies/" + date.toString(Qt::ISODate))));
        QVERIFY(QDir().mkpath(path("copies/2024-12-24 before restore")));
        QVERIFY(QDir().mkpath(path("copies/my own")));
        copy();
        QCOMPARE(names(), (QStringList{"2024-12-24 before restore",
                                       "2025-12-03",
                                       "2026-01-02",
                                       "2026-02-01",
                                       "2026-03-03",
                                       "2026-04-02",
                                       "2026-05-02",
                                       "2026-06-01",
                                       "2026-07-01",
                                       "2026-08-03",
                                       "2026-09-02",
                                       "2026-10-02",
                                       "2026-10-26",
                                       "2026-10-29",
                                       "2026-11-01",
                                       "2026-11-04",
                                       "2026-11-07",
                                       "2026-11-10",
                                       "2026-11-13",
                                       "2026-11-16",
                                       "2026-11-19",
                                       "2026-11-21",
                                       "my own"}));
    }

    void copyOfADayLongPastStaysAndRemovesNoneThatCounts() {
        for (int i = 1; i <= 30; ++i)
            QVERIFY(QDir().mkpath(path("copies/" + day.addDays(i).toString(Qt::ISODate))));
        // The computer's clock has lost its time.
        QCOMPARE(makeDailyCopy(folder(), QDate(1980, 1, 1)), CopyOutcome::Made);
        QCOMPARE(roundOf(path("copies/1980-01-01")), 1);
        QVERIFY(names().contains("2026-12-21"));
        QVERIFY(names().contains("2026-12-12"));
    }

    void setAsideIsACopyUnderANameOfItsOwn() {
        copy();
        writeRound(folder(), 2);
        const auto before = SetAsideReason::BeforeRestore;
        QCOMPARE(setAside(folder(), day, before), path("copies/2026-11-21 before restore"));
        writeRound(folder(), 3);
        QCOMPARE(setAside(folder(), day, before), path("copies/2026-11-21 before restore (2)"));
        QCOMPARE(setAside(folder(), day, before), path("copies/2026-11-21 before restore (3)"));
        QCOMPARE(setAside(folder(), day, SetAsideReason::BeforeReset),
                 path("copies/2026-11-21 before reset"));
        QCOMPARE(setAside(folder(), day, SetAsideReason::BeforeImport),
                 path("copies/2026-11-21 before import"));
        QCOMPARE(roundOf(path("copies/2026-11-21")), 1);
        QCOMPARE(roundOf(path("copies/2026-11-21 before restore")), 2);
        QCOMPARE(roundOf(path("copies/2026-11-21 before restore (2)")), 3);
        QCOMPARE(roundOf(path("copies/2026-11-21 before import")), 3);
    }

    void tenNewestOfThoseSetAsideStay() {
        copy(-20);
        for (int i = 0; i < 12; ++i)
            setAside(folder(), day.addDays(i), SetAsideReason::BeforeImport);
        const QStringList left = names();
        QCOMPARE(left.filter("before import").size(), 10);
        QVERIFY(!left.contains("2026-11-22 before import"));
        QVERIFY(left.contains("2026-11-23 before import"));
        QVERIFY(left.contains(day.addDays(-20).toString(Qt::ISODate)));
    }

    void setAsideWhileTheProgramReadsAndWritesIsWhole() {
        Connection connection;
        connection.Open(path("db1.mdb"));
        Recordset reading;
        reading.Open("SELECT * FROM songs", connection, CursorType::Dynamic, LockType::ReadOnly);
        for (int i = 0; i < 10; ++i) reading.MoveNext();
        const QString made = setAside(folder(), day, SetAsideReason::BeforeReset);
        reading.MoveNext();
        QCOMPARE(roundOf(made), 1);
        Recordset deleting;
        deleting.Open("DELETE * FROM songs", connection, CursorType::Dynamic, LockType::Optimistic);
        QCOMPARE(roundOf(made), 1);
    }

    void newestCopyIsTheLastOneMadeOfTheNewestDay() {
        QCOMPARE(newestCopy(folder()), QString());
        copy(-1);
        setAside(folder(), day.addDays(-1), SetAsideReason::BeforeReset);
        QCOMPARE(newestCopy(folder()), path("copies/2026-11-20 before reset"));
        copy();
        QCOMPARE(newestCopy(folder()), path("copies/2026-11-21"));
        setAside(folder(), day, SetAsideReason::BeforeImport);
        QTest::qSleep(20);
        setAside(folder(), day, SetAsideReason::BeforeImport);
        QCOMPARE(copiesIn(folder()),
                 (QStringList{path("copies/2026-11-21 before import (2)"),
                              path("copies/2026-11-21 before import"), path("copies/2026-11-21"),
                              path("copies/2026-11-20 before reset"), path("copies/2026-11-20")}));
    }

    void copyRestoresByTheCommandsOfTheBackupWindow() {
        copy();
        const QString newest = newestCopy(folder());
        writeRound(folder(), 2);
        Connection connection;
        connection.Open(path("db1.mdb"));
        restoreDatabase(connection, newest + "/db1.mdb");
        connection.Close();
        for (const char* name : {"saved sets", "set designs", "schedules", "sheetmusic", "config"})
            copyFolder(newest + '/' + name, path(name));
        QCOMPARE(roundOf(folder()), 1);
    }

    void threadMakesTheCopyAndReportsItInTheCallersThread() {
        DailyCopy daily(folder());
        QSignalSpy finished(&daily, &DailyCopy::finished);
        QSignalSpy failed(&daily, &DailyCopy::failed);
        QSignalSpy progressed(&daily, &DailyCopy::progressed);
        QThread* thread = nullptr;
        connect(&daily, &DailyCopy::finished, [&] { thread = QThread::currentThread(); });
        daily.start(day);
        QVERIFY(daily.isRunning());
        daily.start(day);
        QVERIFY(finished.wait());
        QVERIFY(!daily.isRunning());
        QCOMPARE(thread, QThread::currentThread());
        QCOMPARE(finished[0][0].value<CopyOutcome>(), CopyOutcome::Made);
        QVERIFY(!progressed.isEmpty());
        QCOMPARE(roundOf(path("copies/2026-11-21")), 1);
        daily.start(day);
        QVERIFY(finished.wait());
        QCOMPARE(finished[1][0].value<CopyOutcome>(), CopyOutcome::AlreadyThere);
        QVERIFY(failed.isEmpty());
    }

    void copyWaitsForALockOfTheDatabase() {
        sqlite3* other = nullptr;
        sqlite3_open(path("db1.mdb").toUtf8().constData(), &other);
        QCOMPARE(sqlite3_exec(other, "BEGIN EXCLUSIVE; UPDATE songs SET title = '1'", nullptr,
                              nullptr, nullptr),
                 SQLITE_OK);
        DailyCopy daily(folder());
        QSignalSpy finished(&daily, &DailyCopy::finished);
        daily.start(day);
        QVERIFY(!finished.wait(400));
        QVERIFY(daily.isRunning());
        sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(other);
        QVERIFY(finished.wait());
        QCOMPARE(roundOf(path("copies/2026-11-21")), 1);
    }

    void copyThatIsCancelledLeavesNothing() {
        sqlite3* other = nullptr;
        sqlite3_open(path("db1.mdb").toUtf8().constData(), &other);
        sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
        {
            DailyCopy daily(folder());
            QSignalSpy finished(&daily, &DailyCopy::finished);
            daily.start(day);
            QTest::qSleep(50);
            daily.cancel();
            QVERIFY(finished.wait());
            QCOMPARE(finished[0][0].value<CopyOutcome>(), CopyOutcome::Cancelled);
            QCOMPARE(names(), QStringList());
            daily.start(day);
            QTest::qSleep(50);
        }
        // The end of the program cancels it too.
        QCOMPARE(names(), QStringList());
        sqlite3_close(other);
    }

    void copyThatIsEndedAtAnyStepLeavesNothing() {
        for (int last = 0;; ++last) {
            int steps = 0;
            const auto step = [&](const QString&) { return ++steps <= last; };
            if (makeDailyCopy(folder(), day, step) == CopyOutcome::Made) break;
            QCOMPARE(steps, last + 1);
            QCOMPARE(names(), QStringList());
        }
        QCOMPARE(roundOf(path("copies/2026-11-21")), 1);
    }

    void copyWaitsForAnotherThatIsBeingMade() {
        DailyCopy daily(folder());
        QSignalSpy finished(&daily, &DailyCopy::finished);
        sqlite3* other = nullptr;
        sqlite3_open(path("db1.mdb").toUtf8().constData(), &other);
        sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
        daily.start(day);
        QTRY_VERIFY(QFile::exists(path("copies/.unfinished")));
        int asked = 0;
        const auto step = [&](const QString&) {
            if (++asked == 3) sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
            return true;
        };
        QCOMPARE(makeDailyCopy(folder(), day.addDays(1), step), CopyOutcome::Made);
        QVERIFY(asked > 3);
        QVERIFY(finished.count() > 0 || finished.wait());
        QCOMPARE(roundOf(path("copies/2026-11-21")), 1);
        QCOMPARE(roundOf(path("copies/2026-11-22")), 1);
        sqlite3_close(other);
    }
};

LORVANITE_TEST(TestCopies)
#include "test_copies.moc"
