// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Unsaved work of the windows, and the strip that offers it.
#include "catalogue/frm_song_admin.h"
#include "catalogue/rules/played_dates.h"
#include "catalogue/rules/song_form.h"
#include "catalogue/rules/song_list.h"
#include "core/data/database.h"
#include "keeping/unsaved_store.h"
#include "keeping/work_hands.h"
#include "maintenance/frm_notes.h"
#include "platform/desktop/kept_work.h"
#include "platform/desktop/unsaved_strip.h"
#include "platform/theme/theme.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"
#include "team/rules/personnel.h"
#include "team/rules/schedule_grid.h"

#include <QAccessible>
#include <QDir>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRegularExpression>

class TestKeptWork : public WindowTest {
    Q_OBJECT

    QStringList kept() const {
        return QDir(world->path("unsaved")).entryList(QDir::Files, QDir::Name);
    }

    void start() {
        world->start();
        addPersonAndPlayedSong();
    }

    void restart() {
        world->stop();
        world->endStatus = -1;
        world->start();
    }

    void open(const WorkHands& work) {
        work.open(world->main());
        settle();
    }

    static void close(const WorkHands& work) {
        work.window().Unload();
        settle();
    }

    static void bringBack(const WorkHands& work) {
        UnsavedStrip* strip = stripOf(work);
        QVERIFY2(strip, work.name);
        click(strip->cmdBringBack);
        settle();
    }

    static void addKinds() {
        QTest::addColumn<QString>("kind");
        for (const WorkHands& work : worksOfAllKinds()) QTest::newRow(work.name) << work.name;
    }

private Q_SLOTS:
    void withoutUnsavedWorkThereIsNoStrip_data() { addKinds(); }
    void withoutUnsavedWorkThereIsNoStrip() {
        QFETCH(QString, kind);
        const WorkHands& work = workOf(kind);
        start();
        for (int i = 0; i < 2; ++i) {
            open(work);
            QCOMPARE(work.window().parentWidget()->findChildren<UnsavedStrip*>().size(), 0);
            close(work);
        }
        QCOMPARE(kept(), QStringList());
    }

    void closedWindowOffersItsWorkWhenItOpensNext_data() { addKinds(); }
    void closedWindowOffersItsWorkWhenItOpensNext() {
        QFETCH(QString, kind);
        const WorkHands& work = workOf(kind);
        start();
        open(work);
        work.type("one");
        QCOMPARE(work.onView(), QString("one"));
        close(work);
        restart();
        open(work);
        UnsavedStrip* strip = stripOf(work);
        QVERIFY(strip);
        const QRegularExpression line(
            QStringLiteral("^An unsaved %1 of 11/21/26, 1?\\d:\\d\\d [AP]M is kept$").arg(kind));
        QVERIFY2(line.match(strip->text()).hasMatch(), qPrintable(strip->text()));
        QVERIFY(work.onView() != "one");
        bringBack(work);
        QCOMPARE(work.onView(), QString("one"));
        QVERIFY(!stripOf(work));
        // It is still the same unsaved work.
        close(work);
        QCOMPARE(kept().filter(QRegularExpression('^' + kind + " \\d")).size(), 1);
    }

    void runTimeErrorKeepsAllWorkBeforeItsBox() {
        start();
        workEverywhere(world->main());
        QCOMPARE(kept(), QStringList());
        world->sql("DROP TABLE notes");
        qsizetype atTheBox = -1;
        world->answers.beforeAnswer([&](QWidget*) { atTheBox = kept().size(); });
        world->answers.runTimeError(-2147217900, "no such table: notes");
        click(frmNotes::instance().cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(atTheBox, qsizetype(worksOfAllKinds().size()));
    }

    void stripTakesItsRoomFromNobodyAndGivesItBack() {
        start();
        const WorkHands& work = workOf("note");
        open(work);
        const QSize frame = work.window().parentWidget()->size();
        const QSize content = work.window().size();
        work.type("one");
        close(work);
        open(work);
        UnsavedStrip* strip = stripOf(work);
        QVERIFY(strip);
        QCOMPARE(work.window().size(), content);
        QCOMPARE(work.window().parentWidget()->size(),
                 frame + QSize(0, strip->sizeHint().height()));
        QCOMPARE(strip->geometry().bottom() + 1, work.window().geometry().top());
        click(strip->cmdDiscard);
        QVERIFY(!stripOf(work));
        QCOMPARE(work.window().parentWidget()->size(), frame);
        QCOMPARE(work.window().size(), content);
    }

    void discardRemovesTheWorkAndIgnoringDoesNot() {
        start();
        const WorkHands& work = workOf("song");
        open(work);
        work.type("one");
        for (int i = 0; i < 3; ++i) {
            close(work);
            QCOMPARE(kept().size(), 1);
            open(work);
            QVERIFY(stripOf(work));
        }
        click(stripOf(work)->cmdDiscard);
        QCOMPARE(kept(), QStringList());
        QVERIFY(!stripOf(work));
        close(work);
        open(work);
        QVERIFY(!stripOf(work));
    }

    void keyboardAndScreenReaderReachTheStrip() {
        start();
        const WorkHands& work = workOf("set");
        open(work);
        work.type("one");
        close(work);
        open(work);
        UnsavedStrip* strip = stripOf(work);
        // The window's first control has the focus as ever; the strip is the one before.
        QVERIFY(work.window().isAncestorOf(QApplication::focusWidget()));
        for (int i = 0; i < 3 && !strip->isAncestorOf(QApplication::focusWidget()); ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(strip->isAncestorOf(QApplication::focusWidget()));
        while (QApplication::focusWidget() != strip->cmdBringBack)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        for (QPushButton* button : {strip->cmdBringBack, strip->cmdDiscard}) {
            QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(button);
            QCOMPARE(spoken->text(QAccessible::Name), button->text());
            QCOMPARE(spoken->text(QAccessible::Description), strip->text());
        }
        QTest::keyClick(strip->cmdBringBack, Qt::Key_Space);
        settle();
        QCOMPARE(work.onView(), QString("one"));
        QVERIFY(work.window().isAncestorOf(QApplication::focusWidget()));
    }

    void stripFollowsTheTheme() {
        start();
        const WorkHands& work = workOf("note");
        open(work);
        work.type("one");
        close(work);
        open(work);
        const QPalette before = QApplication::palette();
        for (const bool dark : {true, false}) {
            QApplication::setPalette(themePalette(themeColours(dark)));
            settle();
            QCOMPARE(stripOf(work)->palette().color(QPalette::Window), themeColours(dark).head);
        }
        QApplication::setPalette(before);
    }

    void savingTheSetRemovesWhatWasKept() {
        start();
        const WorkHands& work = workOf("set");
        open(work);
        work.type("Abide");
        close(work);
        open(work);
        bringBack(work);
        typeInCell(frmSetList::instance().fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        world->answers.question(
            "Do you wish to set the Last Played field \r"
            "for the selected songs to the date you've selected?",
            QMessageBox::No);
        world->answers.file(world->path("saved sets/a.set"));
        click(frmSetList::instance().cmdSaveSetList);
        QTRY_COMPARE(kept(), QStringList());
        close(work);
        QCOMPARE(kept(), QStringList());
    }

    void setThatIsReplacedByAnotherIsKept() {
        start();
        const WorkHands& work = workOf("set");
        SheetGrid other;
        setUpSet(other);
        other.SetText(SetColumn::Title, 4, "Other");
        QVERIFY(other.SaveToFile(world->path("saved sets/other.set"), false));
        open(work);
        work.type("one");
        world->answers.file(world->path("saved sets/other.set"));
        click(frmSetList::instance().Command13);
        QCOMPARE(frmSetList::instance().fpSet->GetText(SetColumn::Title, 4), QString("Other"));
        QCOMPARE(kept().size(), 1);
        // Not while the window is open.
        QVERIFY(!stripOf(work));
        close(work);
        open(work);
        bringBack(work);
        QCOMPARE(work.onView(), QString("one"));
    }

    void olderWorkIsOfferedAfterTheNewer() {
        start();
        const WorkHands& work = workOf("note");
        for (const char* text : {"one", "two", "three"}) {
            open(work);
            work.type(text);
            close(work);
        }
        open(work);
        work.type("four");
        QStringList seen;
        for (int i = 0; i < 4; ++i) {
            bringBack(work);
            seen.append(work.onView());
        }
        // The fourth one took the place of the oldest.
        QCOMPARE(seen, (QStringList{"three", "four", "three", "four"}));
        QCOMPARE(kept().size(), 3);
        // What is on view at the end is offered first.
        bringBack(work);
        close(work);
        open(work);
        bringBack(work);
        QCOMPARE(work.onView(), QString("three"));
    }

    void lastOfThreeComesBackThoughTheWorkOnViewIsKeptToo() {
        start();
        const WorkHands& work = workOf("note");
        open(work);
        work.type("one");
        close(work);
        UnsavedStore store(world->folder());
        const QString only = store.list(UnsavedKind::Note)[0].path;
        open(work);
        // Two later ones, which another program of the user's has kept.
        for (const char* text : {"two", "three"})
            store.keep(UnsavedKind::Note, bytesOf(only).replace("one", text));
        work.type("four");
        bringBack(work);
        QCOMPARE(work.onView(), QString("one"));
        QVERIFY(bytesOf(store.list(UnsavedKind::Note)[0].path).contains("one"));
        QVERIFY(bytesOf(store.list(UnsavedKind::Note)[1].path).contains("four"));
    }

    void entryThatCannotBeReadIsReportedAndCanBeDiscarded() {
        start();
        UnsavedStore store(world->folder());
        const QString path = store.keep(UnsavedKind::Schedule, "damaged");
        const WorkHands& work = workOf("schedule");
        open(work);
        bringBack(work);
        QCOMPARE(world->main().SB->SimpleText(),
                 QStringLiteral("The file \"%1\" cannot be read.").arg(path));
        QVERIFY(QFile::exists(path));
        click(stripOf(work)->cmdDiscard);
        QVERIFY(!QFile::exists(path));
    }

    void workOnViewStaysWhereTheDiskIsFull() {
        start();
        const WorkHands& work = workOf("note");
        for (const char* text : {"one", "two"}) {
            open(work);
            work.type(text);
            close(work);
        }
        open(work);
        bringBack(work);
        QCOMPARE(work.onView(), QString("two"));
        {
            const FullDisk full(0);
            bringBack(work);
        }
        const QString told = world->main().SB->SimpleText();
        QVERIFY2(told.startsWith("The file \"") && told.endsWith("\" cannot be written."),
                 qPrintable(told));
        QCOMPARE(work.onView(), QString("two"));
        bringBack(work);
        QCOMPARE(work.onView(), QString("one"));
        QCOMPARE(kept().size(), 2);
    }

    void folderInWhichNothingCanBeKeptIsReported() {
        start();
        QFile inTheWay(world->path("unsaved"));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        const WorkHands& work = workOf("set");
        open(work);
        work.type("one");
        close(work);
        settle();
        QCOMPARE(world->main().SB->SimpleText(),
                 QStringLiteral("The folder \"%1\" cannot be made.").arg(world->path("unsaved")));
    }

    void storedSongPersonAndNoteAreNotKept() {
        start();
        open(workOf("song"));
        workOf("song").type("New song");
        frmSongAdmin& songs = frmSongAdmin::instance();
        typeInCell(songs.fpSMsong, SongFormColumn::Value, SongRow::Category1, "Praise");
        WorkKeeper::keepAllNow();
        QCOMPARE(kept().size(), 1);
        click(songs.cmdAdd);
        open(workOf("person"));
        frmSchedule& schedule = frmSchedule::instance();
        typeInCell(schedule.fpPerson, 1, PersonRow::FirstName, "Bo");
        typeInCell(schedule.fpPerson, 1, PersonRow::Role1, "Drums");
        click(schedule.cmdAddPlayer);
        open(workOf("note"));
        workOf("note").type("Buy strings");
        click(frmNotes::instance().cmdAdd);
        world->stop();
        QCOMPARE(kept(), QStringList());
        QCOMPARE(world->rows("SELECT title FROM songs WHERE title = 'New song'").size(), 1);
        QCOMPARE(world->rows("SELECT notes FROM notes"), QStringList{"Buy strings"});
    }

    void songComesBackAsTheSongThatItWas() {
        start();
        const WorkHands& work = workOf("song");
        open(work);
        frmSongAdmin* songs = &frmSongAdmin::instance();
        clickCell(songs->fpSongList2, SongListColumn::Title, 1);
        typeInCell(songs->fpSMsong, SongFormColumn::Value, SongRow::Artist, "Lyte");
        typeInCell(songs->fpSMsong, SongFormColumn::Value, SongRow::Category1, "Evening");
        typeInCell(songs->fpdp, PlayedDateColumn::Date, 2, "11/08/26");
        close(work);
        // Meanwhile the date was stored again under another ID.
        world->sql("UPDATE played_on SET ID = 70");
        open(work);
        bringBack(work);
        songs = &frmSongAdmin::instance();
        QCOMPARE(songValue(*songs->fpSMsong, SongRow::Artist), QString("Lyte"));
        click(songs->cmdAdd);
        QCOMPARE(world->rows("SELECT title, cat1 FROM songs"), QStringList{"Abide|Evening"});
        QCOMPARE(world->rows("SELECT played_date FROM played_on ORDER BY played_date"),
                 (QStringList{"11/08/26", "11/15/26"}));
    }

    void songThatWasDeletedComesBackAsANewOne() {
        start();
        const WorkHands& work = workOf("song");
        open(work);
        clickCell(frmSongAdmin::instance().fpSongList2, SongListColumn::Title, 1);
        work.type("Abide with me");
        typeInCell(frmSongAdmin::instance().fpSMsong, SongFormColumn::Value, SongRow::Category1,
                   "Evening");
        close(work);
        world->sql("DELETE FROM songs; DELETE FROM played_on");
        open(work);
        bringBack(work);
        click(frmSongAdmin::instance().cmdAdd);
        QCOMPARE(world->rows("SELECT title FROM songs"), QStringList{"Abide with me"});
        QCOMPARE(world->rows("SELECT * FROM played_on"), QStringList());
    }

    void personOfAnotherRecordIsKeptWhenOneIsPicked() {
        start();
        const WorkHands& work = workOf("person");
        open(work);
        work.type("Half a name");
        frmSchedule::instance().cmbPersonell->setFocus();
        QTest::keyClick(frmSchedule::instance().cmbPersonell, Qt::Key_Down);
        settle();
        QCOMPARE(work.onView(), QString("Lee"));
        close(work);
        open(work);
        bringBack(work);
        QCOMPARE(work.onView(), QString("Half a name"));
        QCOMPARE(frmSchedule::instance().lblHidPersonID->text(), QString());
    }

    void scheduleIsNotKeptWithoutItsBlankRows() {
        start();
        const WorkHands& work = workOf("schedule");
        open(work);
        work.type("one");
        frmSchedule& w = frmSchedule::instance();
        const QString whole = w.fpSchedule->GetText(ScheduleColumn::Date, dateRowOf(2));
        QVERIFY(!whole.isEmpty());
        // Cancelling the dialog leaves the schedule without its blank rows on view.
        world->answers.cancelFile();
        click(w.cmdExportText);
        settle();
        QVERIFY(w.fpSchedule->GetText(ScheduleColumn::Date, dateRowOf(2)) != whole);
        close(work);
        open(work);
        bringBack(work);
        QCOMPARE(frmSchedule::instance().fpSchedule->GetText(ScheduleColumn::Date, dateRowOf(2)),
                 whole);
        QCOMPARE(work.onView(), QString("one"));
    }

    void stripsOfOneWindowStandOneAboveTheOther() {
        start();
        open(workOf("schedule"));
        workOf("schedule").type("one");
        workOf("person").type("two");
        close(workOf("schedule"));
        open(workOf("schedule"));
        UnsavedStrip* schedule = stripOf(workOf("schedule"));
        UnsavedStrip* person = stripOf(workOf("person"));
        QVERIFY(schedule && person);
        QVERIFY(!schedule->geometry().intersects(person->geometry()));
        bringBack(workOf("schedule"));
        bringBack(workOf("person"));
        QCOMPARE(workOf("schedule").onView(), QString("one"));
        QCOMPARE(workOf("person").onView(), QString("two"));
    }
};

LORVANITE_TEST(TestKeptWork)
#include "test_kept_work.moc"
