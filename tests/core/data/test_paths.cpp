// Paths and what lies under them.
#include "core/data/paths.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/registry.h"

#include <QTemporaryDir>
#include <QTest>

class TestPaths : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // A few kilobytes, which are written at the very end.
    void smallFileStaysAsItWasOnAFullDisk() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("small"));
        QVERIFY(replaceFile(path, "old"));
        {
            const FullDisk disk(1000);
            QVERIFY(!replaceFile(path, QByteArray(4000, 'x')));
        }
        QCOMPARE(bytesOf(path), QByteArray("old"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{"small"});
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
};

LORVANITE_TEST(TestPaths)
#include "test_paths.moc"
