// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program is killed while it saves.
#include "sets/set_list_test.h"

#include <QProcess>
#include <QRandomGenerator>

class TestKill : public SetListTest {
    Q_OBJECT

    // The file holds one whole set: all rows are of the same round.
    void checkFile() {
        const QString path = world->path("saved sets/kill.set");
        if (!QFile::exists(path)) return;
        SheetGrid set;
        QVERIFY2(set.LoadFromFile(path), "the file is damaged");
        const QString round = set.GetText(2, 2).section(QLatin1Char(','), 0, 0);
        for (int row = 2; row <= 24; ++row)
            QCOMPARE(set.GetText(2, row), QStringLiteral("%1, %2").arg(round).arg(row));
    }

    // Statements commit one by one, so some rows of a record may be missing. Those that are there
    // are whole, of one round and there only once. Deliberate: behaviour 6.
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
    // Few kills a row: QtTest limits the time of each row.
    void killsLeaveFileAndDatabaseWhole_data() {
        QTest::addColumn<int>("kills");
        for (int row = 1; row <= 20; ++row) QTest::addRow("ten kills, %d", row) << 10;
    }
    void killsLeaveFileAndDatabaseWhole() {
        QFETCH(int, kills);
        QString songs = QStringLiteral("BEGIN;");
        for (int round = 0; round < 9; ++round)
            for (int row = 2; row <= 24; ++row)
                songs += QStringLiteral("INSERT INTO songs (title) VALUES ('Round %1, %2');")
                             .arg(round)
                             .arg(row);
        world->sql(songs + QStringLiteral("COMMIT"));
        int savesSeen = 0;
        for (int kill = 0; kill < kills; ++kill) {
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
        QVERIFY(savesSeen >= kills);
    }
};

LORVANITE_TEST(TestKill)
#include "test_kill.moc"
