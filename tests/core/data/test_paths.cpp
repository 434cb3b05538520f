// Paths and what lies under them.
#include "core/data/paths.h"
#include "support/files.h"
#include "support/other_process.h"
#include "support/registry.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestPaths : public QObject {
    Q_OBJECT

private Q_SLOTS:
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

    void fullDiskLeavesTheFileAsItWas() {
        const QTemporaryDir folder;
        const QString path = folder.filePath("file");
        for (const int size : {10, 20'000, 300'000}) {
            QVERIFY(replaceFile(path, "old"));
            const QByteArray content(size, 'x');
            for (const long most : {0L, 1L, size / 2L, size - 1L}) {
                QCOMPARE(inOtherProcess([&] {
                             limitFiles(most);
                             return replaceFile(path, content) ? 1 : 7;
                         }),
                         7);
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
