// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program started twice on one folder, and what it does at its start.
#include "core/data/file_copy.h"
#include "keeping/copies.h"
#include "support/files.h"
#include "support/registry.h"
#include "trees.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

class TestOneProgram : public QObject {
    Q_OBJECT

    static constexpr int Wait = 180'000;

    std::unique_ptr<QTemporaryDir> m_folder;
    QTemporaryDir m_runTime;

    QString path(const QString& relative) const { return m_folder->filePath(relative); }

    std::unique_ptr<QProcess> startOne(const QString& end = QStringLiteral("idle")) const {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_RUNTIME_DIR", m_runTime.path());
        process->setProcessEnvironment(environment);
        process->start(QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--work-and-end"), m_folder->path(), end});
        return process;
    }

    static QByteArray readUntil(QProcess& process, const QByteArray& word) {
        QByteArray said;
        while (!said.contains(word) && process.waitForReadyRead(Wait))
            said += process.readAllStandardOutput();
        return said;
    }

    static void expectQuietEnd(QProcess& process) {
        QVERIFY(process.state() == QProcess::NotRunning || process.waitForFinished(Wait));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
        QCOMPARE(process.readAllStandardError(), QByteArray());
    }

    static void end(QProcess& process) {
        process.terminate();
        QVERIFY(process.waitForFinished(Wait));
    }

    void lockFromTheVestry() const {
        QFile file(path(".lorvanite.lock"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.write("1234\nlorvanite\nvestry\n");
        file.flush();
        QVERIFY(file.setFileTime(QDateTime(QDate(2026, 11, 20), QTime(9, 30)),
                                 QFileDevice::FileModificationTime));
    }

private Q_SLOTS:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        copyFolder(QStringLiteral(PROGRAM_TREE), m_folder->path(), FolderCopy::FillIn);
    }

    void secondStartBringsTheFirstToTheFrontAndEndsQuietly() {
        auto first = startOne();
        QVERIFY(readUntil(*first, "worked\n").contains("worked\n"));
        auto second = startOne();
        expectQuietEnd(*second);
        QCOMPARE(readUntil(*first, "called\n"), QByteArray("called\n"));
        QCOMPARE(first->state(), QProcess::Running);
        end(*first);
    }

    void fiftyStartsAtTheSameMomentGiveOneProgramAndFortyNineQuietEnds() {
        std::vector<std::unique_ptr<QProcess>> starts;
        for (int i = 0; i < 50; ++i) starts.push_back(startOne());
        const auto running = [&] {
            return std::count_if(starts.begin(), starts.end(), [](const auto& start) {
                return start->state() != QProcess::NotRunning;
            });
        };
        QTRY_COMPARE_WITH_TIMEOUT(running(), 1, 2 * Wait);
        QProcess* owner = nullptr;
        for (const auto& start : starts) {
            if (start->state() != QProcess::NotRunning) {
                owner = start.get();
                continue;
            }
            expectQuietEnd(*start);
            if (QTest::currentTestFailed()) return;
        }
        QVERIFY(owner);
        QTRY_VERIFY_WITH_TIMEOUT(owner->bytesAvailable() > 0, Wait);
        end(*owner);
    }

    void programThatWasKilledStopsNobody() {
        auto first = startOne();
        readUntil(*first, "worked\n");
        first->kill();
        QVERIFY(first->waitForFinished(Wait));
        QVERIFY(QFile::exists(path(".lorvanite.lock")));
        auto second = startOne();
        QCOMPARE(readUntil(*second, "worked\n"), QByteArray("worked\n"));
        end(*second);
    }

    void folderOfAnotherComputerIsLeftToItByDefault() {
        lockFromTheVestry();
        auto program = startOne();
        QVERIFY(program->waitForFinished(Wait));
        QCOMPARE(program->exitCode(), 0);
        const QByteArray said = program->readAllStandardOutput();
        QVERIFY2(said.startsWith("Lorvanite is already running on this folder, on the computer "
                                 "\"vestry\", since 11/20/26, 9:30 AM.\n"),
                 said.constData());
        QVERIFY(!said.contains("worked"));
        QVERIFY(bytesOf(path(".lorvanite.lock")).contains("vestry"));
    }

    void folderOfAnotherComputerCanBeUsedAllTheSame() {
        lockFromTheVestry();
        auto program = startOne("start");
        QVERIFY(readUntil(*program, "worked\n").contains("\"vestry\""));
        QVERIFY(!bytesOf(path(".lorvanite.lock")).contains("vestry"));
        end(*program);
    }

    void copyOfTheDayIsMadeWhileTheProgramRuns() {
        QVERIFY(QDir().mkpath(path("sheetmusic/old")));
        for (const char* name : {"saved sets/a.set", "sheetmusic/old/b.stp"}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(name);
        }
        auto program = startOne();
        const QString copy = path("copies/" + QDate::currentDate().toString(Qt::ISODate));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(copy), Wait);
        QCOMPARE(bytesOf(copy + "/saved sets/a.set"), QByteArray("saved sets/a.set"));
        QCOMPARE(bytesOf(copy + "/sheetmusic/old/b.stp"), QByteArray("sheetmusic/old/b.stp"));
        QVERIFY(QFile::exists(copy + "/db1.mdb"));
        end(*program);
    }

    void copyThatFailsIsOneLineInTheStatusBar() {
        QFile inTheWay(path("copies"));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        auto program = startOne("status");
        const QByteArray said = readUntil(*program, "\n");
        QVERIFY2(said.startsWith("No copy was made today. The f"), said.constData());
        end(*program);
    }

    void restoreThatWasKilledIsFinishedAtTheStart() {
        QVERIFY(QDir().rename(path("saved sets"), path(".saved sets.old")));
        QVERIFY(QDir().mkpath(path(".saved sets.new")));
        auto program = startOne();
        readUntil(*program, "worked\n");
        QVERIFY(QFile::exists(path("saved sets")));
        QVERIFY(!QFile::exists(path(".saved sets.old")));
        QVERIFY(!QFile::exists(path(".saved sets.new")));
        end(*program);
    }
};

LORVANITE_TEST(TestOneProgram)
#include "test_one_program.moc"
