// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Paths, and copies of files and folders.
#include "core/data/file_copy.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/registry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

class TestPaths : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;

    QString path(const QString& name) const { return m_folder->filePath(name); }

    void write(const QString& name, const QByteArray& content) const {
        QVERIFY(QDir().mkpath(QFileInfo(path(name)).path()));
        QVERIFY(replaceFile(path(name), content));
    }

    // The number of the error that a body raises, 0 for none.
    static int errorOf(const std::function<void()>& body) {
        try {
            body();
        } catch (const RunTimeError& error) {
            return error.number();
        }
        return 0;
    }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void fillingInCopiesWhatIsMissing() {
        write("from/a.txt", "new");
        write("from/sub/b.txt", "b");
        write("from/.hidden", "h");
        write("from/tool", "t");
        QVERIFY(QFile::setPermissions(path("from/tool"), QFile::ReadOwner | QFile::ExeOwner));
        write("there/to/a.txt", "mine");
        copyFolder(path("from"), path("there/to"), FolderCopy::FillIn);
        QCOMPARE(bytesOf(path("there/to/a.txt")), QByteArray("mine"));
        QCOMPARE(bytesOf(path("there/to/sub/b.txt")), QByteArray("b"));
        QCOMPARE(QDir(path("there/to"))
                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 (QStringList{"a.txt", "sub"}));
        copyFolder(path("from"), path("quite/new"), FolderCopy::FillIn);
        QCOMPARE(bytesOf(path("quite/new/a.txt")), QByteArray("new"));
    }

    void replacingCopiesEverything() {
        write("from/a.txt", "new");
        write("from/.hidden", "h");
        write("to/a.txt", "old");
        write("to/mine.txt", "mine");
        copyFolder(path("from"), path("to"));
        QCOMPARE(bytesOf(path("to/a.txt")), QByteArray("new"));
        QCOMPARE(bytesOf(path("to/.hidden")), QByteArray("h"));
        QCOMPARE(bytesOf(path("to/mine.txt")), QByteArray("mine"));
    }

    void copyThatFailsRaisesAndKeepsWhatWasThere() {
        write("from/a.txt", "new");
        write("from/sub/b.txt", "b");
        // A file lies where the folder has to be, a folder where the file has to be.
        write("file/sub", "mine");
        QVERIFY(QDir().mkpath(path("folder/a.txt")));
        for (const FolderCopy how : {FolderCopy::Replace, FolderCopy::FillIn}) {
            QCOMPARE(errorOf([&] { copyFolder(path("from"), path("file"), how); }),
                     int(RunTimeError::PermissionDenied));
            QCOMPARE(bytesOf(path("file/sub")), QByteArray("mine"));
            QCOMPARE(errorOf([&] { copyFolder(path("none"), path("to"), how); }),
                     int(RunTimeError::PathNotFound));
            QCOMPARE(errorOf([&] { copyFolder(path("from"), path("from/sub/in"), how); }),
                     int(RunTimeError::PermissionDenied));
        }
        QCOMPARE(errorOf([&] { copyFolder(path("from"), path("folder")); }),
                 int(RunTimeError::PermissionDenied));
        QCOMPARE(errorOf([&] { copyFolder(path("from"), path("no/where")); }),
                 int(RunTimeError::PathNotFound));
    }

    void folderHoldsItselfAndAllBelow_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<bool>("lies");
        QTest::newRow("itself") << "/a/b"
                                << "/a/b" << true;
        QTest::newRow("below") << "/a/b/c/d"
                               << "/a/b" << true;
        QTest::newRow("above") << "/a"
                               << "/a/b" << false;
        QTest::newRow("same start") << "/a/bc"
                                    << "/a/b" << false;
        QTest::newRow("root") << "/a"
                              << "/" << true;
        QTest::newRow("root itself") << "/"
                                     << "/" << true;
        QTest::newRow("root of a drive") << "C:/a"
                                         << "C:/" << true;
        QTest::newRow("other drive") << "D:/a"
                                     << "C:/" << false;
        QTest::newRow("nothing") << ""
                                 << "/" << false;
        QTest::newRow("every script")
            << QString::fromUtf8("/주일/é") << QString::fromUtf8("/주일") << true;
    }
    void folderHoldsItselfAndAllBelow() {
        QFETCH(QString, path);
        QFETCH(QString, folder);
        QTEST(liesIn(path, folder), "lies");
    }

    void safeFileNameIsOneNameOnEveryPlatform_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << "Abide with me"
                               << "Abide with me";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("separators") << "a/b\\c:d"
                                    << "a_b_c_d";
        QTest::newRow("patterns") << "*?\"<>|"
                                  << "______";
        QTest::newRow("folder above") << ".."
                                      << "";
        QTest::newRow("hidden") << ".hidden"
                                << "hidden";
        QTest::newRow("line ends") << "one\r\ntwo"
                                   << "one__two";
        QTest::newRow("NUL") << QString("a%1b").arg(QChar(u'\0')) << "a_b";
        QTest::newRow("device") << "con"
                                << "_con";
        QTest::newRow("device with ending") << "NUL.x"
                                            << "_NUL.x";
        QTest::newRow("no device") << "Contra"
                                   << "Contra";
        const QString every = QString::fromUtf8("Großer Gott 주일 שלום \U0001F3B5");
        QTest::newRow("every script") << every << every;
        QTest::newRow("long") << QString::fromUtf8("\U0001F3B5").repeated(5000)
                              << QString::fromUtf8("\U0001F3B5").repeated(50);
        QTest::newRow("half a pair")
            << QString(QChar(0xd83c)) + "x" << QString(QChar(QChar::ReplacementCharacter)) + "x";
    }
    void safeFileNameIsOneNameOnEveryPlatform() {
        QFETCH(QString, text);
        QTEST(safeFileName(text), "name");
    }

    void fullDiskLeavesTheFileAsItWas() {
        const QTemporaryDir folder;
        const QString path = folder.filePath("file");
        for (const int size : {10, 20'000, 300'000}) {
            QVERIFY(replaceFile(path, "old"));
            const QByteArray content(size, 'x');
            for (const int most : {0, 1, size / 2, size - 1}) {
                {
                    const FullDisk disk(most);
                    QVERIFY(!replaceFile(path, content));
                }
                QCOMPARE(bytesOf(path), QByteArray("old"));
                QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
                         QStringList{"file"});
            }
            QVERIFY(replaceFile(path, content));
            QCOMPARE(bytesOf(path), content);
        }
    }
};

LORVANITE_TEST(TestPaths)
#include "test_paths.moc"
