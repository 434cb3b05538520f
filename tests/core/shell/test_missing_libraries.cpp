// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The libraries that are loaded when they are first needed, on a machine that lacks them.
#include "core/data/file_copy.h"
#include "support/registry.h"
#include "trees.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestMissingLibraries : public QObject {
    Q_OBJECT

    // Runs a program that finds a library which cannot be loaded. Returns its status.
    static int runWithout(const QString& library, QProcess& process, const QString& program,
                          const QStringList& words) {
        const QTemporaryDir libraries;
        QFile empty(libraries.filePath(library));
        if (!empty.open(QIODevice::WriteOnly)) return -1;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_LIBRARY_PATH"_s,
                           libraries.path() + u':' + environment.value(u"LD_LIBRARY_PATH"_s));
        process.setProcessEnvironment(environment);
        process.start(program, words);
        const bool ended = process.waitForFinished(120'000);
        if (!ended) process.kill();
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

private Q_SLOTS:
    void sendWithoutTheMailLibraryFailsAndTheProgramGoesOn() {
        const QTemporaryDir folder;
        copyFolder(QStringLiteral(PROGRAM_TREE), folder.path(), FolderCopy::FillIn);
        QProcess program;
        QCOMPARE(runWithout(u"libcurl.so.4"_s, program, QCoreApplication::applicationFilePath(),
                            {u"--run-and-close"_s, folder.path(), u"mail"_s}),
                 0);
        const QString boxes = QString::fromUtf8(program.readAllStandardOutput());
        QVERIFY2(boxes.contains(u"cannot be reached (libcurl is not installed)."_s) &&
                     boxes.contains(u"Nothing has been delivered."_s) &&
                     boxes.endsWith(u"ended\n"_s),
                 qPrintable(boxes));
    }

    void songBookWithoutThePdfLibraryIsNotWritten() {
        const QTemporaryDir folder;
        copyFolder(QStringLiteral(PROGRAM_TREE), folder.path(), FolderCopy::FillIn);
        const QString command = QStringLiteral(PROGRAM_TREE "/lorvanite-exchange");
        QProcess import;
        import.start(command, {u"import"_s, u"--folder"_s, folder.path(),
                               QStringLiteral(SOURCE_TREE "/tests/exchange/samples/chordpro.cho")});
        QVERIFY(import.waitForFinished(120'000));
        QCOMPARE(import.exitCode(), 0);
        const QString book = folder.filePath(u"book.pdf"_s);
        const QStringList words{u"export"_s, u"--folder"_s, folder.path(),
                                u"--form"_s, u"songbook"_s, book};
        QProcess without;
        QCOMPARE(runWithout(u"libqpdf.so.29"_s, without, command, words), 1);
        const QString said = QString::fromUtf8(without.readAllStandardError());
        QVERIFY2(said.contains(u"The bookmarks could not be added: libqpdf is not installed"_s),
                 qPrintable(said));
        QVERIFY(!QFile::exists(book));

        QProcess with;
        with.start(command, words);
        QVERIFY(with.waitForFinished(120'000));
        QCOMPARE(with.exitCode(), 0);
        QVERIFY(QFile::exists(book));
    }
};

LORVANITE_TEST(TestMissingLibraries)
#include "test_missing_libraries.moc"
