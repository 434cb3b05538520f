// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// One program on one folder.
#include "keeping/folder_lock.h"
#include "support/other_process.h"
#include "support/registry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QObject>
#include <QProcess>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <csignal>
#include <memory>
#include <thread>
#include <vector>

class TestFolderLock : public QObject {
    Q_OBJECT

    using Result = FolderLock::Result;
    static constexpr int Wait = 60'000;

    std::unique_ptr<QTemporaryDir> m_folder;
    QTemporaryDir m_runTime;

    QString lockFile() const { return m_folder->filePath(".lorvanite.lock"); }

    std::unique_ptr<QProcess> startOne() const {
        auto process = std::make_unique<QProcess>();
        // Qt complains where it is missing.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_RUNTIME_DIR", m_runTime.path());
        process->setProcessEnvironment(environment);
        process->start(QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--want-folder"), m_folder->path()});
        return process;
    }

    std::unique_ptr<QProcess> startOwner() const {
        auto owner = startOne();
        if (!owner->waitForReadyRead(Wait) || owner->readAllStandardOutput() != "owned\n")
            qFatal("no owner: %s", owner->readAllStandardError().constData());
        return owner;
    }

    // A lock file as a program writes it.
    void writeLock(qint64 process, const QString& program, const QString& host) const {
        QFile file(lockFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("%1\n%2\n%3\n").arg(process).arg(program, host).toUtf8());
    }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void folderHasOneOwnerUntilItIsGone() {
        auto first = std::make_unique<FolderLock>(m_folder->path());
        QCOMPARE(first->acquire(), Result::Owned);
        QVERIFY(QFile::exists(lockFile()));
        FolderLock second(m_folder->path());
        first.reset();
        QVERIFY(!QFile::exists(lockFile()));
        QCOMPARE(second.acquire(), Result::Owned);
    }

    void laterStartCallsTheOwnerUnderAnyPathAndEnds() {
        const QTemporaryDir other;
        QVERIFY(QFile::link(m_folder->path(), other.filePath("link")));
        auto owner = startOwner();
        FolderLock later(other.filePath("link"));
        QCOMPARE(later.acquire(Wait), Result::OwnerCalled);
        owner->closeWriteChannel();
        QVERIFY(owner->waitForFinished(Wait));
        QCOMPARE(owner->readAllStandardOutput(), QByteArray("1 calls\n"));
    }

    void ownersOfTwoFoldersKnowNothingOfEachOther() {
        const QTemporaryDir other;
        FolderLock first(m_folder->path());
        FolderLock second(other.path());
        QSignalSpy calls(&first, &FolderLock::called);
        QCOMPARE(first.acquire(), Result::Owned);
        QCOMPARE(second.acquire(), Result::Owned);
        QVERIFY(!calls.wait(100));
    }

    void fiftyStartsAtTheSameMomentGiveOneOwnerAndFortyNineQuietEnds() {
        std::vector<std::unique_ptr<QProcess>> starts;
        for (int i = 0; i < 50; ++i) starts.push_back(startOne());
        QProcess* owner = nullptr;
        for (const auto& start : starts) {
            QVERIFY(start->state() != QProcess::NotRunning || start->waitForStarted(Wait));
            QByteArray said;
            while (!said.endsWith('\n') && start->waitForReadyRead(Wait))
                said += start->readAllStandardOutput();
            if (said == "owned\n") {
                QVERIFY2(!owner, "two owners");
                owner = start.get();
                continue;
            }
            QCOMPARE(said, QByteArray("called\n"));
            QVERIFY(start->state() == QProcess::NotRunning || start->waitForFinished(Wait));
            QCOMPARE(start->exitStatus(), QProcess::NormalExit);
            QCOMPARE(start->exitCode(), 0);
            QCOMPARE(start->readAllStandardError(), QByteArray());
        }
        QVERIFY(owner);
        owner->closeWriteChannel();
        QVERIFY(owner->waitForFinished(Wait));
        QCOMPARE(owner->readAllStandardOutput(), QByteArray("49 calls\n"));
    }

    void lockOfAKilledOwnerIsTakenOver() {
        auto owner = startOwner();
        owner->kill();
        QVERIFY(owner->waitForFinished(Wait));
        QVERIFY(QFile::exists(lockFile()));
        FolderLock next(m_folder->path());
        QCOMPARE(next.acquire(0), Result::Owned);
        // It can be called as any owner.
        QSignalSpy called(&next, &FolderLock::called);
        auto later = startOne();
        QVERIFY(called.wait(Wait));
        QVERIFY(later->waitForFinished(Wait));
        QCOMPARE(later->readAllStandardOutput(), QByteArray("called\n"));
    }

    void lockWhoseProcessNumberIsAnotherProgramsNowIsTakenOver() {
        QProcess other;
        other.start("sleep", {"60"});
        QVERIFY(other.waitForStarted());
        writeLock(other.processId(), "lorvanite", QSysInfo::machineHostName());
        FolderLock lock(m_folder->path());
        QCOMPARE(lock.acquire(0), Result::Owned);
        other.kill();
        other.waitForFinished();
    }

    void lockThatAPowerFailureHasLeftEmptyIsTakenOver() {
        for (const char* content : {"", "x", "x\ny\nz\n", "99999999999999999999\n"}) {
            QFile file(lockFile());
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
            file.flush();
            QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-10),
                                     QFileDevice::FileModificationTime));
            file.close();
            FolderLock lock(m_folder->path());
            QCOMPARE(lock.acquire(0), Result::Owned);
            QCOMPARE(lock.ownerHost(), QSysInfo::machineHostName());
        }
    }

    void lockThatIsBeingWrittenIsWaitedFor() {
        QFile file(lockFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        FolderLock lock(m_folder->path());
        QCOMPARE(lock.acquire(50), Result::OutOfReach);
        QVERIFY(QFile::exists(lockFile()));
    }

    void lockOfAnotherComputerNamesItAndTheTime() {
        writeLock(1234, "lorvanite", "vestry");
        QFile file(lockFile());
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime time(QDate(2026, 11, 20), QTime(9, 30));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        file.close();
        FolderLock lock(m_folder->path());
        QCOMPARE(lock.acquire(50), Result::OutOfReach);
        QCOMPARE(lock.ownerHost(), QStringLiteral("vestry"));
        QCOMPARE(lock.ownedSince(), time);
        QVERIFY(QFile::exists(lockFile()));
    }

    void lockOfAnotherComputerGoesToWhoTakesItOver() {
        writeLock(1234, "lorvanite", "vestry");
        FolderLock lock(m_folder->path());
        QCOMPARE(lock.acquire(0), Result::OutOfReach);
        QVERIFY(lock.takeOver());
        QSignalSpy called(&lock, &FolderLock::called);
        auto later = startOne();
        QVERIFY(called.wait(Wait));
        QVERIFY(later->waitForFinished(Wait));
        QCOMPARE(later->readAllStandardOutput(), QByteArray("called\n"));
    }

    void ownerThatHangsIsOutOfReachAndKeepsItsLock() {
        auto owner = startOwner();
        ::kill(pid_t(owner->processId()), SIGSTOP);
        FolderLock later(m_folder->path());
        QCOMPARE(later.acquire(300), Result::OutOfReach);
        QCOMPARE(later.ownerHost(), QSysInfo::machineHostName());
        QVERIFY(qAbs(later.ownedSince().secsTo(QDateTime::currentDateTime())) < 60);
        QVERIFY(!later.takeOver());
        ::kill(pid_t(owner->processId()), SIGCONT);
        QCOMPARE(later.acquire(Wait), Result::OwnerCalled);
        owner->closeWriteChannel();
        QVERIFY(owner->waitForFinished(Wait));
    }

    void ownerThatEndsWhileItIsCalledLeavesTheFolderToTheCaller() {
        auto owner = startOwner();
        ::kill(pid_t(owner->processId()), SIGSTOP);
        std::thread killer([process = owner->processId()] {
            QThread::msleep(300);
            ::kill(pid_t(process), SIGKILL);
        });
        FolderLock later(m_folder->path());
        // A process that nobody has waited for counts as running; this one waits at its end.
        const Result atOnce = later.acquire(2000);
        killer.join();
        QVERIFY(atOnce != Result::OwnerCalled);
        QVERIFY(owner->waitForFinished(Wait));
        QVERIFY(atOnce == Result::Owned || later.acquire(Wait) == Result::Owned);
    }

    void folderThatCannotBeWrittenHasNoOwner() {
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner |
                                                            QFile::ReadOther | QFile::ExeOther));
        QCOMPARE(asOtherUser([&] {
                     FolderLock lock(m_folder->path());
                     return lock.acquire(0) == Result::NotPossible ? 7 : 1;
                 }),
                 7);
        QFile::setPermissions(m_folder->path(),
                              QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    }
};

LORVANITE_TEST(TestFolderLock)
#include "test_folder_lock.moc"
