// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The command lorvanite-exchange brings in what the window brings in.
#include "support/files.h"
#include "support/registry.h"
#include "support/world.h"
#include "trees.h"

#include <QDir>
#include <QFile>
#include <QProcess>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString CommandSamples = QStringLiteral(SOURCE_TREE "/tests/exchange/samples");

struct CommandResult {
    int status = -1;
    QString out;
    QString err;
};

// Runs the command without a display.
CommandResult runExchange(const QStringList& words) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    environment.remove(u"QT_QPA_PLATFORM"_s);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PROGRAM_TREE "/lorvanite-exchange"), words);
    if (!process.waitForFinished(300000)) return {};
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
};

LORVANITE_TEST(TestExchangeCommand)
#include "test_exchange_command.moc"
