// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program as a separate process.
#include "core/data/file_copy.h"
#include "support/files.h"
#include "support/other_process.h"
#include "support/registry.h"
#include "trees.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

class TestProgram : public QObject {
    Q_OBJECT

    // Lays out a folder with the delivered tree and the executable.
    static void install(const QString& folder) {
        QDir().mkpath(folder);
        copyFolder(QStringLiteral(PROGRAM_TREE), folder, FolderCopy::FillIn);
        QVERIFY(QFile::copy(QStringLiteral(PROGRAM_TREE "/lorvanite"),
                            folder + QStringLiteral("/lorvanite")));
    }

    // Lays out a folder as a package does, with the delivered tree in the folder "delivered".
    static void installPackage(const QString& folder) {
        install(folder + QStringLiteral("/delivered"));
        QVERIFY(QFile::rename(folder + QStringLiteral("/delivered/lorvanite"),
                              folder + QStringLiteral("/lorvanite")));
    }

    // Lays out a package with the test program in the place of the executable.
    static QString installTestProgram(const QString& folder) {
        installPackage(folder);
        const QString executable = folder + QStringLiteral("/lorvanite_tests");
        if (!QFile::copy(QCoreApplication::applicationFilePath(), executable))
            QTest::qFail("no copy of the test program", __FILE__, __LINE__);
        writeBytes(folder + QStringLiteral("/.installed"), "yes");
        return executable;
    }

    static void openToAll(const QString& folder, bool toWriting) {
        auto mode = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup |
                    QFile::ReadOther | QFile::ExeOther;
        if (toWriting) mode |= QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
        QVERIFY(QFile::setPermissions(folder, mode));
    }

    static void setHome(QProcess& program, const QString& home) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home);
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        program.setProcessEnvironment(environment);
    }

    // Runs the program until a file exists, or has the given content, and kills it. The folder
    // "sheetmusic" is the last one that is copied.
    static void runUntil(const QString& executable, const QString& home, const QString& file,
                         const QByteArray& content = {}) {
        QProcess program;
        setHome(program, home);
        program.start(executable, {});
        QTRY_VERIFY_WITH_TIMEOUT(content.isEmpty() ? QFile::exists(file) : bytesOf(file) == content,
                                 60000);
        QCOMPARE(program.state(), QProcess::Running);
        program.kill();
        program.waitForFinished();
    }

private Q_SLOTS:
    void programInAFolderThatCannotBeWrittenKeepsItsDataInTheUsersFolder() {
        QTemporaryDir place;
        openToAll(place.path(), true);
        const QString installed = place.filePath(QStringLiteral("installed"));
        const QString data = place.filePath(QStringLiteral("data"));
        install(installed);
        QVERIFY(QDir().mkpath(data));
        openToAll(data, true);
        openToAll(installed, false);

        QProcess program;
        setHome(program, data);
        // The superuser may write anywhere, so the program runs as another user.
        program.setChildProcessModifier([] {
            if (geteuid() == 0 && setuid(65534) != 0) _exit(3);
        });
        program.start(installed + QStringLiteral("/lorvanite"), {});
        const QString database = data + QStringLiteral("/lorvanite/db1.mdb");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(database), 60000);
        QTRY_VERIFY_WITH_TIMEOUT(
            QFile::exists(data + QStringLiteral("/lorvanite/config/sound.jpg")), 60000);
        QVERIFY(QDir(data + QStringLiteral("/lorvanite/saved sets")).exists());
        QVERIFY(!QFile::exists(data + QStringLiteral("/lorvanite/lorvanite")));
        QCOMPARE(program.state(), QProcess::Running);
        program.kill();
        program.waitForFinished();
        openToAll(installed, true);
    }

    void installedProgramKeepsItsDataInTheUsersFolderForTheSuperuserToo() {
        QTemporaryDir place;
        const QString installed = place.filePath(QStringLiteral("installed"));
        const QString data = place.filePath(QStringLiteral("data/lorvanite"));
        installPackage(installed);
        writeBytes(installed + QStringLiteral("/.installed"), "yes");
        const QString database = data + QStringLiteral("/db1.mdb");
        runUntil(installed + QStringLiteral("/lorvanite"), QFileInfo(data).path(),
                 data + QStringLiteral("/sheetmusic"));
        QVERIFY(!QFile::exists(installed + QStringLiteral("/db1.mdb")));
        QVERIFY(!QFile::exists(data + QStringLiteral("/delivered")));
        QVERIFY(!QFile::exists(data + QStringLiteral("/.installed")));

        // A newer package updates the guide and keeps the user's files.
        writeBytes(data + QStringLiteral("/config/mail.ini"), "mine");
        writeBytes(data + QStringLiteral("/saved sets/mine.set"), "mine");
        const QByteArray before = bytesOf(database);
        writeBytes(installed + QStringLiteral("/delivered/config/LORVANITEHELP.hlp"), "newer");
        writeBytes(installed + QStringLiteral("/delivered/db1.mdb"), "newer");
        runUntil(installed + QStringLiteral("/lorvanite"), QFileInfo(data).path(),
                 data + QStringLiteral("/config/LORVANITEHELP.hlp"), "newer");
        QVERIFY(bytesOf(database) == before);
        QCOMPARE(bytesOf(data + QStringLiteral("/config/mail.ini")), QByteArray("mine"));
        QCOMPARE(bytesOf(data + QStringLiteral("/saved sets/mine.set")), QByteArray("mine"));
    }

    void portableProgramFillsItsOwnFolderFromWhatItDelivers() {
        QTemporaryDir place;
        const QString folder = place.filePath(QStringLiteral("größe und mehr"));
        const QString home = place.filePath(QStringLiteral("home"));
        installPackage(folder);
        runUntil(folder + QStringLiteral("/lorvanite"), home,
                 folder + QStringLiteral("/sheetmusic"));
        for (const char* name :
             {"db1.mdb", "config", "saved sets", "set designs", "schedules", "sheetmusic"})
            QVERIFY2(QFile::exists(folder + QLatin1Char('/') + QLatin1String(name)), name);
        QVERIFY(!QDir(home + QStringLiteral("/lorvanite")).exists());
        QVERIFY(!QFile::exists(folder + QStringLiteral("/delivered/delivered")));
    }

    void closingTheMainWindowEndsTheProcessInTheOrdinaryWay_data() {
        QTest::addColumn<QString>("activity");
        for (const char* activity : {"nothing", "modules", "mail", "sound"})
            QTest::newRow(activity) << QString::fromLatin1(activity);
    }
    void closingTheMainWindowEndsTheProcessInTheOrdinaryWay() {
        QFETCH(QString, activity);
        QTemporaryDir folder;
        copyFolder(QStringLiteral(PROGRAM_TREE), folder.path(), FolderCopy::FillIn);
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--run-and-close"), folder.path(), activity});
        const bool ended = program.waitForFinished(120000);
        if (!ended) program.kill();
        QVERIFY2(ended, "the process does not end");
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(program.readAllStandardOutput(), QByteArray("ended\n"));
        QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("db1.mdb-journal"))));
    }

    void startThatCannotFillTheFolderSaysSoAndLosesNothing() {
        QTemporaryDir place;
        const QString data = place.filePath(QStringLiteral("data/lorvanite"));
        const QString executable = installTestProgram(place.filePath(QStringLiteral("installed")));
        // A file lies where the folder for sets has to be.
        QVERIFY(QDir().mkpath(data));
        writeBytes(data + QStringLiteral("/saved sets"), "mine");
        QProcess program;
        setHome(program, QFileInfo(data).path());
        program.start(executable, {QStringLiteral("--run-and-close"), QString(), "nothing"});
        QVERIFY(program.waitForFinished(120000));
        QCOMPARE(program.exitCode(), 1);
        QCOMPARE(QString::fromUtf8(program.readAllStandardOutput()),
                 QStringLiteral("Run-time error '70':\n\nPermission denied: the folder \"%1/saved "
                                "sets\" cannot be created.\n")
                     .arg(data));
        QCOMPARE(bytesOf(data + QStringLiteral("/saved sets")), QByteArray("mine"));
    }

    void readOnlyFolderIsToldAndItsWorkStays_data() {
        QTest::addColumn<bool>("hasWork");
        QTest::newRow("with work") << true;
        QTest::newRow("as unpacked") << false;
    }
    void readOnlyFolderIsToldAndItsWorkStays() {
        QFETCH(bool, hasWork);
        QTemporaryDir place;
        openToAll(place.path(), true);
        const QString stick = place.filePath(QStringLiteral("a $TICK %1 \"ü\""));
        const QString executable = installTestProgram(stick);
        QVERIFY(QFile::remove(stick + QStringLiteral("/.installed")));
        if (hasWork) writeBytes(stick + QStringLiteral("/db1.mdb"), "work");
        openToAll(stick, false);
        const QString data = place.filePath(QStringLiteral("data"));
        QVERIFY(QDir().mkpath(data));
        openToAll(data, true);
        QProcess program;
        setHome(program, data);
        // The superuser may write anywhere, so the program runs as another user.
        program.setChildProcessModifier([] {
            if (geteuid() == 0 && setuid(65534) != 0) _exit(3);
        });
        program.start(executable, {QStringLiteral("--run-and-close"), QString(), "nothing"});
        QVERIFY(program.waitForFinished(120000));
        QCOMPARE(program.exitCode(), 0);
        const QString said = QString::fromUtf8(program.readAllStandardOutput());
        const QString start = QStringLiteral("The folder \"") + stick;
        const QString end = data + QStringLiteral("/lorvanite\".\nended\n");
        QCOMPARE(said, hasWork ? start +
                                     QStringLiteral("\" cannot be written. The work in it stays "
                                                    "as it is, and is not shown.\n\nWhat you "
                                                    "do now is kept in \"") +
                                     end
                               : start +
                                     QStringLiteral("\" cannot be written. Your work is kept "
                                                    "in \"") +
                                     end);
        QVERIFY(QFile::exists(data + QStringLiteral("/lorvanite/db1.mdb")));
        if (hasWork) QCOMPARE(bytesOf(stick + QStringLiteral("/db1.mdb")), QByteArray("work"));
        // Nor can the user's folder be written, in which a killed program has left its lock.
        QCOMPARE(inOtherProcess([&] {
                     QLockFile lock(data + QStringLiteral("/lorvanite/.lorvanite.lock"));
                     _exit(lock.tryLock() ? 0 : 1);
                     return 0;
                 }),
                 0);
        openToAll(data + QStringLiteral("/lorvanite"), false);
        program.start(executable, {QStringLiteral("--run-and-close"), QString(), "nothing"});
        QVERIFY(program.waitForFinished(120000));
        QCOMPARE(program.exitCode(), 0);
        const QString box = QStringLiteral(
                                "The folder \"%1/lorvanite\" cannot be written. Nothing "
                                "that you do now is kept.\n")
                                .arg(data);
        const QString saidThen = QString::fromUtf8(program.readAllStandardOutput());
        QVERIFY2(saidThen.startsWith(box), qPrintable(saidThen));
        openToAll(data + QStringLiteral("/lorvanite"), true);
        openToAll(stick, true);
    }

    void deliveredFileThatCannotBeUpdatedIsReportedAndTheProgramStarts() {
        QTemporaryDir place;
        const QString data = place.filePath(QStringLiteral("data/lorvanite"));
        const QString executable = installTestProgram(place.filePath(QStringLiteral("installed")));
        // A folder lies where the guide has to be.
        const QString guide = data + QStringLiteral("/config/LORVANITEHELP.hlp");
        QVERIFY(QDir().mkpath(guide));
        QProcess program;
        setHome(program, QFileInfo(data).path());
        program.start(executable, {QStringLiteral("--run-and-close"), QString(), "nothing"});
        QVERIFY(program.waitForFinished(120000));
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(
            QString::fromUtf8(program.readAllStandardOutput()),
            QStringLiteral("Not updated to this version of Lorvanite: %1\nended\n").arg(guide));
    }

    void helpAndVersionAnswerWithoutADisplay() {
        for (const auto& [option, answer] :
             {std::pair{"--help", "Usage: lorvanite"}, std::pair{"--version", "Lorvanite "}}) {
            QProcess program;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none such"));
            program.setProcessEnvironment(environment);
            program.start(QStringLiteral(PROGRAM_TREE "/lorvanite"), {QString::fromLatin1(option)});
            QVERIFY(program.waitForFinished(60000));
            QCOMPARE(program.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.exitCode(), 0);
            QVERIFY(program.readAllStandardOutput().startsWith(answer));
            QCOMPARE(program.readAllStandardError(), QByteArray());
        }
    }
};

LORVANITE_TEST(TestProgram)
#include "test_program.moc"
