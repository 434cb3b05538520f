// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Emptying the database.
#include "catalogue/frm_song_admin.h"
#include "core/data/run_time_error.h"
#include "maintenance/backup_test.h"
#include "platform/desktop/message_box.h"
#include "support/files.h"
#include "support/registry.h"

class TestReset : public BackupTest {
    Q_OBJECT

private Q_SLOTS:
    void answeringNoKeepsEveryTable() {
        fillAllTables();
        const frmBackup& w = open();
        answerWarning(QMessageBox::No);
        click(w.lblReformatDB);
        QVERIFY(world->statements.isEmpty());
        for (const char* table : {"songs", "categories", "played_on", "schedule", "personell",
                                  "vacation", "notes", "special_music"})
            QCOMPARE(rowsIn(table), 1);
    }

    void enterErasesNothingAndTheTitleIsWhole() {
        fillAllTables();
        const frmBackup& w = open();
        world->answers.custom("warning", [](QWidget* box) {
            QCOMPARE(qobject_cast<QMessageBox*>(box)->text(),
                     warning().replace(QLatin1Char('\r'), QLatin1Char('\n')));
            QFont bold = box->font();
            bold.setBold(true);
            const int title = QFontMetrics(bold).horizontalAdvance(box->windowTitle());
            QVERIFY(box->width() >= title + 120);  // the buttons of the title bar
            QTest::keyClick(box, Qt::Key_Return);
        });
        click(w.lblReformatDB);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(rowsIn("songs"), 1);
    }

    void titleIsWholeAboveAShortText() {
        const frmBackup& w = open();
        const QString title = QStringLiteral("A title that is longer than the text of its box");
        int width = 0;
        world->answers.custom("box", [&width](QWidget* box) {
            width = box->width();
            QTest::keyClick(box, Qt::Key_Return);
        });
        messageBox(QStringLiteral("Short"), BoxIcon::None, title);
        QFont bold = w.font();
        bold.setBold(true);
        QVERIFY(width >= QFontMetrics(bold).horizontalAdvance(title) + 120);
    }

    void resetEmptiesSixTablesInOrderAndKeepsTheRest() {
        // Deliberate: behaviour 187.
        fillAllTables();
        writeBytes(world->path("saved sets/a.set"), "a");
        const int settings = rowsIn("prefs");
        const frmBackup& w = open();
        answerWarning(QMessageBox::Yes);
        world->answers.box("Your database is empty.", QMessageBox::Information);
        w.lblReformatDB->setFocus();
        QTest::keyClick(w.lblReformatDB, Qt::Key_Space);
        settle();
        QCOMPARE(world->statements,
                 (QStringList{"DELETE * FROM songs [4]", "DELETE * FROM categories [4]",
                              "DELETE * FROM played_on [4]", "DELETE * FROM schedule [4]",
                              "DELETE * FROM personell [4]", "DELETE * FROM vacation [4]"}));
        for (const char* table :
             {"songs", "categories", "played_on", "schedule", "personell", "vacation"})
            QCOMPARE(rowsIn(table), 0);
        QCOMPARE(rowsIn("notes"), 1);
        QCOMPARE(rowsIn("special_music"), 1);
        QCOMPARE(rowsIn("prefs"), settings);
        QCOMPARE(rowsIn("transpose"), 25);
        QCOMPARE(bytesOf(world->path("saved sets/a.set")), QByteArray("a"));
    }

    void remindersAreStillShownAfterAReset() {
        // Deliberate: behaviour 187.
        world->sql("INSERT INTO notes (notes, notify_date) VALUES ('Due', '12/24/26')");
        world->answers.box("Due\r", QMessageBox::Information, "Reminder Notes");
        const frmBackup& w = open();
        answerWarning(QMessageBox::Yes);
        world->answers.box("Your database is empty.", QMessageBox::Information);
        click(w.lblReformatDB);
        world->stop();
        world->answers.box("Due\r", QMessageBox::Information, "Reminder Notes");
        world->start();
    }

    void openSongWindowIsNotRefreshedByAReset() {
        // Deliberate: behaviour 188.
        addSong("Shown");
        world->start();
        click(world->main().cmdSongMgmt);
        const frmBackup& w = open();
        answerWarning(QMessageBox::Yes);
        world->answers.box("Your database is empty.", QMessageBox::Information);
        click(w.lblReformatDB);
        QCOMPARE(frmSongAdmin::instance().fpSongList2->GetText(2, 1), QStringLiteral("Shown"));
        frmSongAdmin::instance().Unload();
        settle();
        click(world->main().cmdSongMgmt);
        QCOMPARE(frmSongAdmin::instance().fpSongList2->MaxRows(), 0);
        QCOMPARE(frmSongAdmin::instance().lblStat->text(),
                 QStringLiteral("0 Songs In The Database"));
    }

    void failingDeleteEndsTheProgramWithEarlierTablesEmpty() {
        fillAllTables();
        world->sql("DROP TABLE schedule");
        const frmBackup& w = open();
        answerWarning(QMessageBox::Yes);
        world->answers.runTimeError(RunTimeError::StatementRefused, "no such table: schedule");
        click(w.lblReformatDB);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(rowsIn("played_on"), 0);
        QCOMPARE(rowsIn("personell"), 1);
    }

private:
    int rowsIn(const char* table) {
        return world->rows(QStringLiteral("SELECT count(*) FROM ") + QLatin1String(table))
            .value(0)
            .toInt();
    }

    void fillAllTables() {
        world->sql(
            "INSERT INTO songs (title) VALUES ('a'); INSERT INTO categories (name) VALUES ('a');"
            "INSERT INTO played_on (title) VALUES ('a'); INSERT INTO schedule (player) VALUES "
            "('a'); INSERT INTO personell (fName) VALUES ('a'); INSERT INTO vacation DEFAULT "
            "VALUES; INSERT INTO notes (notes, notify_date) VALUES ('a', ''); INSERT INTO "
            "special_music (song_name) VALUES ('a');");
    }
};

LORVANITE_TEST(TestReset)
#include "test_reset.moc"
