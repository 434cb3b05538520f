// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Texts of the user that would change the meaning of a statement, through the windows.
#include "catalogue/song_admin_hands.h"
#include "core/grid/sheet_grid.h"
#include "mail/frm_email.h"
#include "sets/frm_set_list.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"

class TestStatementTexts : public SongAdminTest {
    Q_OBJECT

    void addSongs() {
        world->sql(
            "INSERT INTO songs (title, cat1, playlist) VALUES ('First', 'Praise', 'Current'), "
            "('Second', 'Praise', 'Current')");
    }

    QStringList songs() {
        return world->rows("SELECT title, fileLoco, soundFile FROM songs ORDER BY ID");
    }

    QStringList settings() {
        return world->rows(
            "SELECT var_name, var_value FROM prefs WHERE var_name NOT IN "
            "('SchedOnStartUp', 'EmailPassRemember')");
    }

    QString savedGrid(const QString& name) {
        SheetGrid grid;
        grid.SetText(1, 1, QStringLiteral("Opening"));
        const QString path = world->path(name);
        if (!grid.SaveToFile(path, false)) QTest::qFail("not saved", __FILE__, __LINE__);
        return path;
    }

private Q_SLOTS:
    void titleThatEndsItsTextChangesNoSong_data() {
        QTest::addColumn<QString>("title");
        for (const char* title :
             {"'Tis So Sweet' -- choir version", "O'er' /* live */", "O'er' /* live", "O'er'--",
              "O'er';", "O'er'; DELETE FROM songs", "O'er' \"live", "O'er' `live", "O'er' [live",
              "O'er' || \"title\"", "O'er' || [no]", "O'er', artist = \"x\" --"})
            QTest::newRow(title) << QString::fromUtf8(title);
    }
    void titleThatEndsItsTextChangesNoSong() {
        QFETCH(QString, title);
        addSongs();
        open();
        const QStringList before = songs();
        showSong("First");
        typeInSong(SongRow::Title, title);
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(window().cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(songs(), before);
    }

    void markInsideATitleIsStored_data() {
        QTest::addColumn<QString>("title");
        for (const char* title : {"Holy -- choir", "Holy /* live", "Holy; Holy", "The \"Old\" One",
                                  "A `b [c ] \"d", "--", "/*"})
            QTest::newRow(title) << QString::fromUtf8(title);
    }
    void markInsideATitleIsStored() {
        QFETCH(QString, title);
        addSongs();
        open();
        showSong("First");
        typeInSong(SongRow::Title, title);
        click(window().cmdAdd);
        QCOMPARE(world->endStatus, -1);
        QCOMPARE(world->rows("SELECT title FROM songs ORDER BY ID"),
                 (QStringList{title, "Second"}));
    }

    void soundFileThatEndsItsTextChangesNoSong() {
        addSongs();
        open();
        const QStringList before = songs();
        showSong("First");
        window().fpSMsong->SetText(SongFormColumn::Value, SongRow::SoundFile,
                                   "/music/All Saints' -- live.mp3");
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(window().cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(songs(), before);
    }

    void chartPathLosesItsApostrophes() {
        addSongs();
        open();
        showSong("First");
        window().fpSMsong->SetText(SongFormColumn::Value, SongRow::SheetMusic,
                                   "/charts/All Saints' -- live.stp");
        click(window().cmdAdd);
        QCOMPARE(songs(), (QStringList{"First|/charts/All Saints -- live.stp|", "Second||"}));
    }

    void pathOfADefaultDesignThatEndsItsTextChangesNoSetting() {
        const QString path = savedGrid("set designs/King' -- best.sdl");
        world->start();
        const QStringList before = settings();
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        world->answers.file(path);
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.Command6);
        QVERIFY(pickMenuItem(w.mnuSetD, w.mnuSetDefault));
        QCOMPARE(settings(), before);
    }

    void pathOfAScheduleThatEndsItsTextChangesNoSetting() {
        const QString path = savedGrid("schedules/King' -- best.scd");
        world->start();
        const QStringList before = settings();
        click(world->main().cmdScheduling);
        frmSchedule& w = frmSchedule::instance();
        world->answers.question("Would you like to pick a schedule to display?", QMessageBox::Yes);
        world->answers.file(path);
        world->answers.runTimeError(RunTimeError::StatementRefused);
        QTest::mouseClick(w.chkShow, Qt::LeftButton, {}, QPoint(8, w.chkShow->height() / 2));
        settle();
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(settings(), before);
    }

    void passwordThatEndsItsTextChangesNoSetting() {
        world->start();
        const QStringList before = settings();
        click(world->main().cmdEmail);
        frmEmail& mail = frmEmail::instance();
        click(mail.cmdConfig);
        QTest::keyClicks(mail.txtPassword, "secret' --");
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(mail.chkPassword);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(settings(), before);
    }
};

LORVANITE_TEST(TestStatementTexts)
#include "test_statement_texts.moc"
