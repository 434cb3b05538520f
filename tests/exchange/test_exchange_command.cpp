// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The command lorvanite-exchange brings in what the window brings in.
#include "core/data/file_copy.h"
#include "keeping/folder_lock.h"
#include "support/files.h"
#include "support/registry.h"
#include "support/world.h"
#include "trees.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>

#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString CommandSamples = QStringLiteral(SOURCE_TREE "/tests/exchange/samples");

struct CommandResult {
    int status = -1;
    QString out;
    QString err;
};

// Runs the command without a display, as another user if `prepare` says so.
CommandResult runExchange(const QStringList& words,
                          const QString& executable = QStringLiteral(PROGRAM_TREE
                                                                     "/lorvanite-exchange"),
                          const std::function<void()>& prepare = {}) {
    QProcess process;
    if (prepare) process.setChildProcessModifier(prepare);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    environment.remove(u"QT_QPA_PLATFORM"_s);
    process.setProcessEnvironment(environment);
    QSignalSpy finished(&process, &QProcess::finished);
    process.start(executable, words);
    if (!finished.wait(300000)) return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

}  // namespace

class TestExchangeCommand : public WindowTest {
    Q_OBJECT

    QString folder() const { return u"--folder="_s + world->folder(); }

private Q_SLOTS:
    void helpAndVersionArePrinted() {
        const CommandResult help = runExchange({u"--help"_s});
        QCOMPARE(help.status, 0);
        QVERIFY(help.out.contains(u"import"_s) && help.out.contains(u"export"_s));
        QVERIFY(runExchange({u"import"_s, u"--help"_s}).out.contains(u"--dry-run"_s));
        QVERIFY(runExchange({u"--version"_s}).out.startsWith(u"lorvanite-exchange "_s));
    }

    void wrongUseIsStatusTwo() {
        QCOMPARE(runExchange({}).status, 2);
        QCOMPARE(runExchange({u"swallow"_s}).status, 2);
        QCOMPARE(runExchange({u"import"_s, folder()}).status, 2);
        QCOMPARE(runExchange({u"import"_s, folder(), u"--sideways"_s}).status, 2);
        QCOMPARE(
            runExchange({u"import"_s, folder(), u"--category"_s, u"None"_s, CommandSamples}).status,
            2);
    }

    void folderWithoutDatabaseIsStatusOne() {
        const CommandResult result =
            runExchange({u"import"_s, u"--folder"_s, CommandSamples, CommandSamples});
        QCOMPARE(result.status, 1);
        QVERIFY(result.err.contains(u"There is no database db1.mdb"_s));
    }

    void dryRunChangesNothing() {
        const QByteArray before = bytesOf(world->path(u"db1.mdb"_s));
        const CommandResult result =
            runExchange({u"import"_s, folder(), u"--dry-run"_s, CommandSamples});
        QCOMPARE(result.status, 3);
        QVERIFY(result.out.contains(u"Added: song \"Be Thou My Vision\""_s));
        QVERIFY(result.out.endsWith(u"Nothing was changed.\n"_s));
        QCOMPARE(bytesOf(world->path(u"db1.mdb"_s)), before);
        QVERIFY(!QDir(world->path(u"copies"_s)).exists());
    }

    void importStoresSongsAndChartsOnce() {
        const CommandResult first =
            runExchange({u"import"_s, folder(), u"--all-themes"_s, CommandSamples});
        QCOMPARE(first.status, 3);
        const QStringList songs =
            world->rows(u"SELECT title, CCLI, cat1, fileLoco FROM songs ORDER BY ID"_s);
        QVERIFY(songs.contains(u"Be Thou My Vision|30639|Guidance|"_s +
                               world->path(u"sheetmusic/Be Thou My Vision.stp"_s)));
        QVERIFY(QFile::exists(world->path(u"sheetmusic/Be Thou My Vision.stp"_s)));
        const CommandResult second =
            runExchange({u"import"_s, folder(), u"--all-themes"_s, CommandSamples});
        QVERIFY2(!second.out.contains(u"Added:"_s) && !second.out.contains(u"Filled in:"_s),
                 qPrintable(second.out));
        QCOMPARE(world->rows(u"SELECT title, CCLI, cat1, fileLoco FROM songs ORDER BY ID"_s),
                 songs);
    }

    void reportGoesToAFile() {
        const QString report = world->path(u"report.txt"_s);
        const CommandResult result = runExchange(
            {u"import"_s, folder(), u"--report"_s, report, CommandSamples + u"/chordpro.cho"_s});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.out, QString());
        QVERIFY(bytesOf(report).contains("Songs: "));
    }

    void reportThatCannotBeSavedIsPrinted() {
        const QString report = world->path(u"missing/report.txt"_s);
        const CommandResult result = runExchange(
            {u"import"_s, folder(), u"--report"_s, report, CommandSamples + u"/chordpro.cho"_s});
        QCOMPARE(result.status, 3);
        QCOMPARE(result.err, u"lorvanite-exchange: The report could not be saved.\n"_s);
        QVERIFY2(result.out.contains(u"Songs: "_s), qPrintable(result.out));
        QVERIFY(!world->rows(u"SELECT title FROM songs"_s).isEmpty());
    }

    void folderThatIsOpenIsLeftAlone() {
        FolderLock program(world->folder());
        QSignalSpy called(&program, &FolderLock::called);
        QVERIFY(program.acquire() == FolderLock::Result::Owned);
        const CommandResult result = runExchange({u"import"_s, folder(), CommandSamples});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.err,
                 u"lorvanite-exchange: Lorvanite has this folder open. Close it first.\n"_s);
        QCOMPARE(called.count(), 1);
        QVERIFY(world->rows(u"SELECT title FROM songs"_s).isEmpty());
        // A dry run changes nothing, so it needs no lock.
        QCOMPARE(runExchange({u"import"_s, folder(), u"--dry-run"_s, CommandSamples}).status, 3);
    }

    void folderThatCannotBeWrittenIsLeftAlone() {
        QTemporaryDir place;
        const QString data = place.filePath(u"data"_s);
        copyFolder(world->folder(), data, FolderCopy::Replace);
        const QString executable = place.filePath(u"lorvanite-exchange"_s);
        QVERIFY(QFile::copy(QStringLiteral(PROGRAM_TREE "/lorvanite-exchange"), executable));
        const QString song = place.filePath(u"song.cho"_s);
        QVERIFY(QFile::copy(CommandSamples + u"/chordpro.cho"_s, song));
        constexpr auto readable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                  QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
        QVERIFY(QFile::setPermissions(data, readable));
        QVERIFY(QFile::setPermissions(place.path(), readable));
        // The superuser may write anywhere, so the command runs as another user.
        const CommandResult result =
            runExchange({u"import"_s, u"--folder"_s, data, song}, executable, [] {
                if (geteuid() == 0 && setuid(65534) != 0) _exit(9);
            });
        QVERIFY(QFile::setPermissions(place.path(), readable | QFile::WriteOwner));
        QVERIFY(QFile::setPermissions(data, readable | QFile::WriteOwner));
        QCOMPARE(result.err, u"lorvanite-exchange: The folder cannot be written.\n"_s);
        QCOMPARE(result.status, 1);
        QVERIFY(!QFile::exists(data + u"/copies"_s));
    }

    void folderWithAnApostropheGetsSongsWithoutCharts() {
        const QTemporaryDir place;
        const QString data = place.filePath(u"Ann's songs"_s);
        copyFolder(world->folder(), data, FolderCopy::Replace);
        const CommandResult result =
            runExchange({u"import"_s, u"--folder"_s, data, CommandSamples + u"/chordpro.cho"_s});
        QCOMPARE(result.err,
                 u"lorvanite-exchange: No charts can be made: the program's folder has an "
                 "apostrophe in its path.\n"_s);
        QCOMPARE(result.status, 0);
        QVERIFY2(result.out.contains(u"Added: song"_s), qPrintable(result.out));
        QCOMPARE(QDir(data + u"/sheetmusic"_s).entryList({u"*.stp"_s}), QStringList());
    }

    void damagedDatabaseIsStatusOne() {
        writeBytes(world->path(u"db1.mdb"_s), QByteArray(5000, 'x'));
        const QStringList importing = {u"import"_s, folder(), CommandSamples};
        const QStringList exporting = {u"export"_s, folder(), world->path(u"out"_s)};
        for (const QStringList& words : {importing, exporting}) {
            const CommandResult result = runExchange(words);
            QCOMPARE(result.status, 1);
            QVERIFY2(result.err.startsWith(u"lorvanite-exchange: "_s) &&
                         result.err.contains(u"database"_s),
                     qPrintable(result.err));
            QCOMPARE(result.out, QString());
        }
        QCOMPARE(bytesOf(world->path(u"db1.mdb"_s)), QByteArray(5000, 'x'));
    }

    void exportThatCannotBeginWritesNothing() {
        world->sql(u"INSERT INTO songs (title) VALUES ('Be Still')"_s);
        const CommandResult paper = runExchange({u"export"_s, folder(), u"--form"_s, u"songbook"_s,
                                                 u"--paper"_s, u"a5"_s, world->path(u"b.pdf"_s)});
        QCOMPARE(paper.status, 2);
        QCOMPARE(paper.err, u"lorvanite-exchange: The paper is a4 or letter.\n"_s);
        const QString inTheWay = world->path(u"out"_s);
        writeBytes(inTheWay, "mine");
        const CommandResult below = runExchange({u"export"_s, folder(), inTheWay + u"/songs"_s});
        QCOMPARE(below.status, 1);
        QCOMPARE(below.err,
                 u"lorvanite-exchange: The folder %1/songs could not be made.\n"_s.arg(inTheWay));
        QCOMPARE(bytesOf(inTheWay), QByteArray("mine"));
    }
};

LORVANITE_TEST(TestExchangeCommand)
#include "test_exchange_command.moc"
