// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The keys that work from inside any window, and what the status bar and the titles tell.
#include "catalogue/frm_song_admin.h"
#include "catalogue/rules/song_form.h"
#include "charts/sheet_music.h"
#include "core/shell/frm_about.h"
#include "maintenance/frm_notes.h"
#include "platform/paper/printing.h"
#include "reports/frm_history.h"
#include "sets/frm_past_sets.h"
#include "sets/set_list_test.h"
#include "team/frm_schedule.h"

#include <QApplication>
#include <QDir>
#include <QFile>

class TestKeys : public SetListTest {
    Q_OBJECT

    static QWidget* focus() { return QApplication::focusWidget(); }

    void press(int key, Qt::KeyboardModifiers with = {}) {
        QApplication::setActiveWindow(&world->main());  // a box has taken it
        QTest::keyClick(focus() ? focus() : &world->main(), Qt::Key(key), with);
        settle();
    }

    bool isOnBar() { return world->main().picButHold->isAncestorOf(focus()); }

    static QString underlined(const QToolButton* button) {
        const qsizetype at = button->text().indexOf(QLatin1Char('&'));
        return at < 0 ? QString() : QString(button->text().at(at + 1));
    }

    QString status() { return world->main().SB->SimpleText(); }

private Q_SLOTS:
    void functionKeyTenGoesToTheBarAndBack() {
        frmSetList& w = open();
        w.txtSearch->setFocus();
        press(Qt::Key_F10);
        QCOMPARE(focus(), world->main().cmdSetList);
        press(Qt::Key_Right);
        QCOMPARE(focus(), world->main().cmdSongMgmt);
        press(Qt::Key_F10);
        QCOMPARE(focus(), w.txtSearch);
        // It comes back to the same button; Escape leaves the bar too.
        press(Qt::Key_F10);
        QCOMPARE(focus(), world->main().cmdSongMgmt);
        press(Qt::Key_Escape);
        QCOMPARE(focus(), w.txtSearch);
        // On the bar a letter is enough.
        press(Qt::Key_F10);
        press(Qt::Key_N);
        QVERIFY(frmNotes::isLoaded());
    }

    void altWithALetterOpensAWindowUnlessTheWindowInUseHasTheLetter() {
        frmSetList& w = open();
        w.txtSearch->setFocus();
        QCOMPARE(underlined(world->main().cmdSongMgmt), QStringLiteral("A"));
        // "e-Mail Set" has the letter.
        QCOMPARE(underlined(world->main().cmdEmail), QString());
        QCOMPARE(world->main().cmdEmail->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_6));
        press(Qt::Key_A, Qt::AltModifier);
        QVERIFY(frmSongAdmin::isLoaded());
        press(Qt::Key_G, Qt::AltModifier);
        QVERIFY(frmSchedule::isLoaded());
        // The window's own "Save" is meant here.
        QCOMPARE(underlined(world->main().cmdSetList), QString());
        world->answers.question(
            "Would you like to finalize this schedule and save the players list?", QMessageBox::No,
            "Save Players List");
        world->answers.runTimeError(RunTimeError::InvalidCall);
        press(Qt::Key_S, Qt::AltModifier);
        QTRY_VERIFY_WITH_TIMEOUT(world->answers.isEmpty(), 60'000);
        // On the bar all letters work.
        press(Qt::Key_F10);
        QCOMPARE(underlined(world->main().cmdSetList), QStringLiteral("S"));
        press(Qt::Key_S, Qt::AltModifier);
        QVERIFY(w.isAncestorOf(focus()));
    }

    void functionKeySixGoesRoundBarWindowAndGrids() {
        frmPastSets& w = *[this] {
            world->start();
            click(world->main().cmdPastSets);
            return &frmPastSets::instance();
        }();
        w.Drive1->setFocus();
        QList<QWidget*> seen;
        for (int i = 0; i < 3; ++i) {
            press(Qt::Key_F6);
            seen.append(focus());
        }
        QCOMPARE(seen[0], w.fpSetPast);
        QCOMPARE(seen[1], w.cmdPrintPast);
        QVERIFY(world->main().picButHold->isAncestorOf(seen[2]));
        press(Qt::Key_F6);
        QCOMPARE(focus(), w.Drive1);
        press(Qt::Key_F6, Qt::ShiftModifier);
        QVERIFY(isOnBar());
        press(Qt::Key_F6, Qt::ShiftModifier);
        QCOMPARE(focus(), w.cmdEpastSet);
        press(Qt::Key_F6, Qt::ShiftModifier);
        QCOMPARE(focus(), w.fpSetPast);
    }

    void everyWindowIsLeftByFunctionKeySix() {
        world->start();
        frmMDI& main = world->main();
        for (QToolButton* button : {main.cmdSetList, main.cmdSongMgmt, main.cmdPastSets,
                                    main.cmdSheetMusic, main.cmdEmail, main.Command1}) {
            click(button);
            if (isOnBar()) press(Qt::Key_F6);
            QVERIFY2(!isOnBar(), qPrintable(button->objectName()));
            int steps = 0;
            while (!isOnBar() && ++steps < 20) press(Qt::Key_F6);
            QVERIFY2(isOnBar(), qPrintable(button->objectName()));
        }
    }

    void controlKeysRunTheCommandsOfTheWindow() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.question(
            "Do you wish to set the Last Played field \rfor the selected songs to the date you've "
            "selected?",
            QMessageBox::Yes);
        world->answers.fileAsProposed();
        press(Qt::Key_S, Qt::ControlModifier);
        QVERIFY(QFile::exists(world->path("saved sets/Set For 11_22_26.set")));
        world->answers.cancelFile();
        press(Qt::Key_O, Qt::ControlModifier);
        QVERIFY(world->answers.isEmpty());
        QVERIFY2(w.cmdSaveSetList->toolTip().contains("(Ctrl+S)"),
                 qPrintable(w.cmdSaveSetList->toolTip()));
        QVERIFY(w.Command13->toolTip().contains("(Ctrl+O)"));
        QVERIFY(w.Command3->toolTip().contains("(Ctrl+P)"));
        setPrintTarget(world->path("print.pdf"));
        press(Qt::Key_P, Qt::ControlModifier);
        setPrintTarget(QString());
        QVERIFY(QFile::exists(world->path("print.pdf")));
        // In another window they run its own commands.
        click(world->main().cmdSheetMusic);
        SheetMusic& chart = SheetMusic::instance();
        chart.fpSong->SetText(1, 1, "Title");
        press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(chart.fpSong->GetText(1, 1), QString());
    }

    void successIsToldAndGoesWithItsWindow() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        QCOMPARE(w.windowTitle(), QStringLiteral("Pick Set"));
        world->answers.question(
            "Do you wish to set the Last Played field \rfor the selected songs to the date you've "
            "selected?",
            QMessageBox::No);
        world->answers.fileAsProposed();
        click(w.cmdSaveSetList);
        QCOMPARE(status(), QStringLiteral("Saved: Set For 11_22_26"));
        QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), QStringLiteral("Pick Set - Set For 11_22_26"),
                                  60'000);
        click(w.Command9);
        QCOMPARE(w.windowTitle(), QStringLiteral("Pick Set"));
        world->answers.file(world->path("saved sets/Set For 11_22_26.set"));
        click(w.Command13);
        QCOMPARE(w.windowTitle(), QStringLiteral("Pick Set - Set For 11_22_26"));
        w.Unload();
        settle();
        QCOMPARE(status(), QString());
    }

    void storedSongIsNamedAndTheTextOfAnotherWindowStays() {
        world->start();
        click(world->main().cmdSongMgmt);
        frmSongAdmin& w = frmSongAdmin::instance();
        typeInCell(w.fpSMsong, SongFormColumn::Value, SongRow::Title, "Amazing Grace");
        typeInCell(w.fpSMsong, SongFormColumn::Value, SongRow::Category1, "Praise");
        click(w.cmdAdd);
        QCOMPARE(status(), QStringLiteral("Stored: Amazing Grace. Reload shows it in the list."));
        click(world->main().cmdAbout);
        frmAbout::instance().Unload();
        settle();
        QVERIFY(status().startsWith("Stored: "));
        click(world->main().cmdHistory);
        QCOMPARE(status(), QStringLiteral("Loading.... 100% Complete"));
        w.Unload();
        settle();
        QCOMPARE(status(), QStringLiteral("Loading.... 100% Complete"));
        // No progress is told below a window that loads nothing.
        frmHistory::instance().Unload();
        settle();
        QCOMPARE(status(), QString());
    }

    void titleMarksWorkThatIsNotSaved() {
        addSong({.title = "Alpha"});
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Title, 3, "Alpha");
        QTRY_VERIFY_WITH_TIMEOUT(w.isWindowModified(), 60'000);
        QVERIFY(w.windowTitle().startsWith("Pick Set"));
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        world->answers.question(
            "Do you wish to set the Last Played field \rfor the selected songs to the date you've "
            "selected?",
            QMessageBox::No);
        world->answers.fileAsProposed();
        click(w.cmdSaveSetList);
        QTRY_VERIFY_WITH_TIMEOUT(!w.isWindowModified(), 60'000);
        QCOMPARE(w.windowTitle(), QStringLiteral("Pick Set - Set For 11_22_26"));
    }

    void controlWClosesAWindowOnlyIfItsWorkIsKept() {
        addSong({.title = "Alpha"});
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Title, 3, "Alpha");
        // Nothing can be kept where a file is in the way.
        QDir(world->path("unsaved")).removeRecursively();
        QFile inTheWay(world->path("unsaved"));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        press(Qt::Key_W, Qt::ControlModifier);
        QVERIFY(frmSetList::isLoaded());
        // Why comes from the keeper.
        QTRY_VERIFY_WITH_TIMEOUT(status().contains("unsaved"), 60'000);
        QVERIFY(inTheWay.remove());
        press(Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!frmSetList::isLoaded());
        QVERIFY(!QDir(world->path("unsaved")).isEmpty());
    }

    void chartNamesItsFile() {
        world->start();
        click(world->main().cmdSheetMusic);
        SheetMusic& w = SheetMusic::instance();
        w.fpSong->SetText(1, 1, "Title");
        world->answers.file(world->path("sheetmusic/Mine.stp"));
        world->answers.question("Would you like to associate this music to a song in the database?",
                                QMessageBox::No);
        press(Qt::Key_S, Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), QStringLiteral("SheetMusic - Mine"), 60'000);
        QCOMPARE(status(), QStringLiteral("Saved: Mine"));
        press(Qt::Key_N, Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), QStringLiteral("SheetMusic"), 60'000);
        world->answers.file(world->path("sheetmusic/Mine.stp"));
        press(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(w.windowTitle(), QStringLiteral("SheetMusic - Mine"));
    }
};

LORVANITE_TEST(TestKeys)
#include "test_keys.moc"
