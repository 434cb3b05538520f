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
};

LORVANITE_TEST(TestPaths)
#include "test_paths.moc"
