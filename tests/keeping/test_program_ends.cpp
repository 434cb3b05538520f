// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Whatever ends the program, the work comes back.
#include "catalogue/frm_song_admin.h"
#include "catalogue/rules/played_dates.h"
#include "catalogue/rules/song_form.h"
#include "charts/sheet_music.h"
#include "core/data/file_copy.h"
#include "keeping/work_hands.h"
#include "mail/frm_email.h"
#include "maintenance/frm_backup.h"
#include "maintenance/frm_notes.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/unsaved_strip.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"
#include "team/rules/personnel.h"
#include "team/rules/schedule_grid.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QPushButton>

#include <csignal>
#include <sqlite3.h>

namespace {

constexpr int Refused = -2147217900;

void tickBox(QCheckBox* box) {
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    settle();
}

void completeSong() {
    frmSongAdmin& w = frmSongAdmin::instance();
    w.Show();
    typeInCell(w.fpSMsong, SongFormColumn::Value, SongRow::Category1, "Evening");
}

struct ErrorEnd {
    const char* name;
    int number;
    const char* spoil;  // statements on the database, as of another program
    void (*act)(World& world);
    // Asked before the error comes, and answered with yes.
    const char* question = nullptr;
    const char* title = nullptr;
};

const ErrorEnd ErrorEnds[] = {
    {"a note cannot be stored", Refused, "DROP TABLE notes",
     [](World&) { click(frmNotes::instance().cmdAdd); }},
    {"the reminder cannot be turned off", Refused, "DROP TABLE prefs",
     [](World&) { tickBox(frmNotes::instance().chkReminder); }},
    {"a song cannot be stored", Refused, "DROP TABLE songs",
     [](World&) {
         completeSong();
         click(frmSongAdmin::instance().cmdAdd);
     }},
    {"the songs cannot be listed", Refused, "DROP TABLE songs",
     [](World&) { click(frmSongAdmin::instance().Command12); }},
    {"a category cannot be stored", Refused, "DROP TABLE categories",
     [](World&) {
         frmSongAdmin& w = frmSongAdmin::instance();
         w.txtName->setText("Praise");
         w.cmdAddCat->click();
     }},
    {"a person cannot be stored", Refused, "DROP TABLE personell",
     [](World&) {
         frmSchedule& w = frmSchedule::instance();
         w.Show();
         typeInCell(w.fpPerson, 1, PersonRow::FirstName, "Bo");
         typeInCell(w.fpPerson, 1, PersonRow::Role1, "Drums");
         click(w.cmdAddPlayer);
     }},
    {"a person's vacation is no date", 13, "UPDATE personell SET vDays = 'soon'",
     [](World&) {
         frmSchedule& w = frmSchedule::instance();
         w.cmbPersonell->setFocus();
         QTest::keyClick(w.cmbPersonell, Qt::Key_Down);
         settle();
     }},
    {"the people cannot be read", Refused, "DROP TABLE personell",
     [](World&) { click(frmSchedule::instance().cmdRefresh); }},
    {"there is no person", 3021, "DELETE FROM personell",
     [](World&) { click(frmSchedule::instance().cmdRefresh); }},
    {"no song was played", 3021, "DELETE FROM played_on",
     [](World&) { click(frmSchedule::instance().cmdRefresh); }},
    {"the weeks are no number", 13, "",
     [](World&) {
         frmSchedule& w = frmSchedule::instance();
         w.Show();
         typeInCell(w.fpPickDate, PickDateColumn::Weeks, 1, "two");
         click(w.cmdLoadDates);
     }},
    {"the schedule cannot be finalised", Refused, "DROP TABLE schedule",
     [](World&) { click(frmSchedule::instance().cmdSaveSched); },
     "Would you like to finalize this schedule and save the players list?", "Save Players List"},
    {"a note finds no message", 53, "",
     [](World& world) {
         QFile::remove(world.path("config/email.html"));
         frmEmail& w = frmEmail::instance();
         w.txtNote->setPlainText("note");
         w.cmdAttachNote->click();
         settle();
     }},
    {"the recipients cannot be read", Refused, "DROP TABLE personell",
     [](World&) {
         frmEmail& w = frmEmail::instance();
         w.txtServer->setText("localhost:9");
         w.txtFrom->setText("leader@example.org");
         click(w.cmdSend);
     }},
    {"a chart cannot be assigned", Refused, "DROP TABLE songs",
     [](World&) {
         SheetMusic::instance().mnuAttachToDB->trigger();
         settle();
     }},
    {"the database cannot be emptied", Refused, "DROP TABLE vacation",
     [](World& world) {
         world.main().mnuBackupFiles.trigger();
         settle();
         click(frmBackup::instance().lblReformatDB);
     },
     "Clicking 'YES' below will erase all the information in the database.\r\r"
     "PROCEED WITH CAUTION",
     "WARNING!"},
    {"the special music cannot be read", Refused, "DROP TABLE special_music",
     [](World& world) {
         world.main().mnuSpecialMusic.trigger();
         settle();
     }},
};

}  // namespace

class TestProgramEnds : public WindowTest {
    Q_OBJECT

    static constexpr int Wait = 120'000;

    QStringList kept() const { return QDir(world->path("unsaved")).entryList(QDir::Files); }

    // Opens every window and brings back what it offers.
    void expectAllWork() {
        for (const WorkHands& work : worksOfAllKinds()) {
            work.open(world->main());
            UnsavedStrip* strip = stripOf(work);
            QVERIFY2(strip, work.name);
            click(strip->cmdBringBack);
            settle();
            QCOMPARE(work.onView(), wordOf(work));
        }
    }

    // Starts the program with work in all windows, and waits until the work is done.
    std::unique_ptr<QProcess> startWork(const QString& end) {
        auto program = std::make_unique<QProcess>();
        program->start(QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--work-and-end"), world->folder(), end});
        QByteArray said;
        while (!said.contains("worked\n") && program->waitForReadyRead(Wait))
            said += program->readAllStandardOutput();
        if (!said.contains("worked\n"))
            QTest::qFail(program->readAllStandardError().constData(), __FILE__, __LINE__);
        return program;
    }

private Q_SLOTS:
    void runTimeErrorLosesNothing_data() {
        QTest::addColumn<int>("index");
        for (int i = 0; i < int(std::size(ErrorEnds)); ++i) QTest::newRow(ErrorEnds[i].name) << i;
    }
    void runTimeErrorLosesNothing() {
        QFETCH(int, index);
        const ErrorEnd& end = ErrorEnds[index];
        world->start();
        addPersonAndPlayedSong();
        workEverywhere(world->main());
        const QString database = world->path("db1.mdb");
        QVERIFY(QFile::copy(database, world->path("before.mdb")));
        if (*end.spoil) world->sql(QLatin1String(end.spoil));
        // The process would end here: what is done later does not count.
        const QString atTheEnd = world->path("at the end");
        setEndOfProcess([w = world.get(), atTheEnd](int status) {
            if (w->endStatus == -1) copyFolder(w->path("unsaved"), atTheEnd);
            w->endStatus = status;
        });
        if (end.question) world->answers.question(end.question, QMessageBox::Yes, end.title);
        world->answers.runTimeError(end.number);
        end.act(*world);
        QCOMPARE(world->endStatus, 1);
        world->stop();
        QVERIFY(QDir(world->path("unsaved")).removeRecursively());
        QVERIFY(QDir().rename(atTheEnd, world->path("unsaved")));
        QVERIFY(QFile::remove(database));
        QVERIFY(QFile::rename(world->path("before.mdb"), database));
        world->start();
        expectAllWork();
    }

    void closingTheMainWindowLosesNothing() {
        auto program = startWork("close");
        QVERIFY(program->waitForFinished(Wait));
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(program->exitCode(), 0);
        world->start();
        expectAllWork();
    }

    void closingTheWindowsLosesNothing() {
        auto program = startWork("close windows");
        QVERIFY(program->waitForFinished(Wait));
        world->start();
        expectAllWork();
    }

    void signalLosesNothing_data() {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }
    void signalLosesNothing() {
        QFETCH(int, signal);
        auto program = startWork("wait");
        QCOMPARE(kill(pid_t(program->processId()), signal), 0);
        QVERIFY(program->waitForFinished(Wait));
        // It ends as it does without unsaved work.
        QCOMPARE(program->exitStatus(), QProcess::CrashExit);
        QCOMPARE(program->exitCode(), signal);
        world->start();
        expectAllWork();
    }

    void endOfTheSessionLosesNothing() {
        auto program = startWork("session");
        QVERIFY(program->waitForFinished(Wait));
        world->start();
        expectAllWork();
    }

    void runTimeErrorOfTheProcessLosesNothing() {
        // A trigger refuses what the program writes.
        world->sql(
            "CREATE TRIGGER full BEFORE INSERT ON notes BEGIN SELECT RAISE(ABORT, 'no'); END");
        auto program = startWork("error");
        QVERIFY(program->waitForFinished(Wait));
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(program->exitCode(), 1);
        world->start();
        expectAllWork();
    }

    void killLosesWhatWasTypedInTheLastThirtySeconds() {
        auto program = startWork("wait");
        QElapsedTimer time;
        time.start();
        QCOMPARE(kept(), QStringList());
        QTRY_COMPARE_WITH_TIMEOUT(kept().size(), qsizetype(worksOfAllKinds().size()), Wait);
        qInfo("kept after %.1f s", double(time.elapsed()) / 1000);
        program->kill();
        QVERIFY(program->waitForFinished(Wait));
        world->start();
        expectAllWork();
    }

    void dyingDiskLosesWhatWasTypedSinceTheWorkWasKept() {
        auto program = startWork("full disk");
        QVERIFY(program->waitForFinished(Wait));
        QCOMPARE(program->exitStatus(), QProcess::CrashExit);
        world->start();
        expectAllWork();
    }
};

LORVANITE_TEST(TestProgramEnds)
#include "test_program_ends.moc"
