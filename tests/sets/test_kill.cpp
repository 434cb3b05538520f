// The program is killed in the middle of a save.
#include "sets/set_list_test.h"

#include <QProcess>
#include <QRandomGenerator>

class TestKill : public SetListTest {
    Q_OBJECT

    // What is in the file is one round's set, whole: all rows of the same round.
    void checkFile() {
        const QString path = world->path("saved sets/kill.set");
        if (!QFile::exists(path)) return;
        SheetGrid set;
        QVERIFY2(set.LoadFromFile(path), "the file is damaged");
        const QString round = set.GetText(2, 2).section(QLatin1Char(','), 0, 0);
        for (int row = 2; row <= 24; ++row)
            QCOMPARE(set.GetText(2, row), QStringLiteral("%1, %2").arg(round).arg(row));
    }

    // Statements commit one by one: a record may be short, but every row of it is whole, all are
    // of one round, and none is there twice.
    void checkDatabase() {
        QCOMPARE(world->rows("PRAGMA integrity_check"), QStringList{"ok"});
        QCOMPARE(world->rows("SELECT count(*) FROM played_on p LEFT JOIN songs s ON s.ID = "
                             "p.songID WHERE s.title IS NOT p.title OR p.played_date <> "
                             "'11/22/26'"),
                 QStringList{"0"});
        QCOMPARE(world->rows("SELECT count(*) - count(DISTINCT title) FROM played_on"),
                 QStringList{"0"});
        QCOMPARE(world->rows("SELECT count(DISTINCT substr(title, 1, 7)) <= 1 FROM played_on"),
                 QStringList{"1"});
    }

private Q_SLOTS:
    void twoHundredKillsLeaveFileAndDatabaseWhole() {
        for (int round = 0; round < 9; ++round)
            for (int row = 2; row <= 24; ++row)
                world->sql(QStringLiteral("INSERT INTO songs (title) VALUES ('Round %1, %2')")
                               .arg(round)
                               .arg(row));
        int savesSeen = 0;
        for (int kill = 0; kill < 200; ++kill) {
            QProcess saver;
            saver.start(QCoreApplication::applicationFilePath(),
                        {QStringLiteral("--save-for-ever"), world->folder()});
            QVERIFY2(saver.waitForReadyRead(60000), saver.readAllStandardError().constData());
            QTest::qSleep(QRandomGenerator::global()->bounded(60));
            saver.kill();
            QVERIFY(saver.waitForFinished());
            savesSeen += static_cast<int>(saver.readAllStandardOutput().count('\n'));
            checkFile();
            checkDatabase();
            if (QTest::currentTestFailed()) return;
        }
        QVERIFY(savesSeen >= 200);
    }
};

LORVANITE_TEST(TestKill)
#include "test_kill.moc"
