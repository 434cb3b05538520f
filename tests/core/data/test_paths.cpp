// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Paths, and copies of files and folders.
#include "core/data/file_copy.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/other_process.h"
#include "support/registry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <sys/stat.h>
#include <unistd.h>

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

    // Copies "from" to "to" as one, as a user who does not own them, and expects that this fails
    // and leaves everything as it was.
    void expectFailureAsOne(const QString& description) const {
        const int outcome = asOtherUser([&] {
            try {
                copyFolder(path("from"), path("to"), FolderCopy::AsOne);
            } catch (const RunTimeError& error) {
                return error.number() == RunTimeError::PermissionDenied &&
                               error.description() == description
                           ? 1
                           : 2;
            }
            return 0;
        });
        QCOMPARE(outcome, 1);
        QCOMPARE(bytesOf(path("to/a.txt")), QByteArray("old"));
        QVERIFY(!QFile::exists(path("to/b.txt")));
        QCOMPARE(QDir(m_folder->path())
                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 (QStringList{"from", "to"}));
    }

    // Makes this process an installed program until the returned guard is destroyed: its folder
    // holds the mark and a delivered tree, and the user's data folder is empty.
    auto asInstalledProgram() const {
        const QString own = QCoreApplication::applicationDirPath();
        const QByteArray before = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", QFile::encodeName(path("user")));
        setProgramFolder({});
        for (const char* name : {"/.installed", "/delivered/db1.mdb", "/delivered/config/guide",
                                 "/delivered/saved sets/first.set"}) {
            QDir().mkpath(QFileInfo(own + name).path());
            if (!replaceFile(own + name, "delivered")) qFatal("The mark cannot be written.");
        }
        return qScopeGuard([own, before] {
            QFile::remove(own + "/.installed");
            QDir(own + "/delivered").removeRecursively();
            setProgramFolder({});
            if (before.isNull())
                qunsetenv("XDG_DATA_HOME");
            else
                qputenv("XDG_DATA_HOME", before);
        });
    }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void installedProgramKeepsItsDataInTheUsersFolder() {
        const auto installed = asInstalledProgram();
        QCOMPARE(programFolder(), path("user/lorvanite"));
        for (const char* name : {"db1.mdb", "config/guide", "saved sets/first.set"})
            QCOMPARE(bytesOf(path("user/lorvanite/") + name), QByteArray("delivered"));
        QVERIFY(filesNotUpdated().isEmpty());

        // The next version brings its guide, and what was deleted; the user's work stays.
        write("user/lorvanite/db1.mdb", "work");
        write("user/lorvanite/config/mail.ini", "work");
        QVERIFY(QFile::remove(path("user/lorvanite/saved sets/first.set")));
        const QString guide = QCoreApplication::applicationDirPath() + "/delivered/config/guide";
        QVERIFY(replaceFile(guide, "newer"));
        setProgramFolder({});
        QCOMPARE(programFolder(), path("user/lorvanite"));
        QCOMPARE(bytesOf(path("user/lorvanite/config/guide")), QByteArray("newer"));
        QCOMPARE(bytesOf(path("user/lorvanite/saved sets/first.set")), QByteArray("delivered"));
        QCOMPARE(bytesOf(path("user/lorvanite/db1.mdb")), QByteArray("work"));
        QCOMPARE(bytesOf(path("user/lorvanite/config/mail.ini")), QByteArray("work"));
        QVERIFY(filesNotUpdated().isEmpty());
    }

    void guideThatCannotBeReplacedIsReported() {
        const auto installed = asInstalledProgram();
        const QString guide = path("user/lorvanite/config/guide");
        QVERIFY(QDir().mkpath(guide));
        QCOMPARE(programFolder(), path("user/lorvanite"));
        QCOMPARE(filesNotUpdated(), QStringList{guide});
        QCOMPARE(bytesOf(path("user/lorvanite/db1.mdb")), QByteArray("delivered"));
    }

    void userFolderThatCannotBeMadeRaises() {
        const auto installed = asInstalledProgram();
        write("user", "a file");
        QCOMPARE(errorOf([] { programFolder(); }), int(RunTimeError::PermissionDenied));
        QVERIFY(QFile::remove(path("user")));
        QCOMPARE(programFolder(), path("user/lorvanite"));
    }

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

    void folderThatCannotBeReplacedAsOneStaysAsItWas_data() {
        QTest::addColumn<uint>("modeAround");
        QTest::addColumn<uint>("modeOfFile");
        QTest::addColumn<QString>("description");
        QTest::newRow("nothing can be made beside it")
            << 0555U << 0644U << "Permission denied: the folder \"%1/.to.new\" cannot be created.";
        QTest::newRow("a file cannot be read")
            << 0777U << 0000U << "Permission denied: \"%1/from/b.txt\" cannot be read.";
        // Of the superuser, in a folder where all may write and none may move what others own.
        if (geteuid() == 0)
            QTest::newRow("another's folder")
                << 01777U << 0644U << "Permission denied: the folder \"%1/to\" cannot be replaced.";
    }
    void folderThatCannotBeReplacedAsOneStaysAsItWas() {
        QFETCH(uint, modeAround);
        QFETCH(uint, modeOfFile);
        QFETCH(QString, description);
        write("from/a.txt", "new");
        write("from/b.txt", "b");
        write("to/a.txt", "old");
        const QByteArray file = QFile::encodeName(path("from/b.txt"));
        const QByteArray around = QFile::encodeName(m_folder->path());
        QCOMPARE(chmod(file.constData(), modeOfFile), 0);
        QCOMPARE(chmod(around.constData(), modeAround), 0);
        const auto open = qScopeGuard([&] { chmod(around.constData(), 0700); });
        expectFailureAsOne(description.arg(m_folder->path()));
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
