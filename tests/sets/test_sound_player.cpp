// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Playing a song of the list.
#include "platform/theme/theme.h"
#include "sets/set_list_test.h"
#include "support/sound_file.h"
#include "trees.h"

#include <QFile>
#include <QImage>

using State = Media::State;

namespace {

constexpr int Patience = 60'000;  // milliseconds

}  // namespace

class TestSoundPlayer : public SetListTest {
    Q_OBJECT

    QString sound(const QString& name, double seconds = 20) {
        writeSilence(world->path(name), seconds);
        return world->path(name);
    }

    // Opens the set window and lists the songs of "Praise".
    frmSetList& listed() {
        addCategories({"Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        world->statements.clear();
        return w;
    }

    // Lists two songs with sound files and opens the player with the first.
    frmSetList& playing() {
        addSong({.title = "Abide", .cat1 = "Praise", .soundFile = sound("a.wav")});
        addSong({.title = "Bread", .cat1 = "Praise", .soundFile = sound("b.wav")});
        frmSetList& w = listed();
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        w.activateWindow();
        settle();
        return w;
    }

    static QList<bool> pressedLooks(const frmSetList& w) {
        return {w.imgPlay2->isVisible(), w.imgPause2->isVisible(), w.imgS2->isVisible()};
    }

private Q_SLOTS:
    void escapeClosesThePlayer() {
        frmSetList& w = playing();
        QVERIFY(w.picPlayer->isVisible());
        w.fpSet->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        settle();
        QVERIFY(!w.picPlayer->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Closed, Patience);
    }

    void songWithoutASoundFileHasNoPictureAndAClickOpensNothing() {
        addSong({.title = "Mute", .cat1 = "Praise"});
        frmSetList& w = listed();
        QVERIFY(w.fpSongList1->pictureAt(1, PickerColumn::Sound, 1).isEmpty());
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        QVERIFY(!w.picPlayer->isVisible());
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(w.selectedSongRow, 1);
    }

    void twoPressedButtonsAreReleasedAtTheSameTime() {
        frmSetList& w = playing();
        QCOMPARE(w.playerTimer.interval(), 1000);
        QVERIFY(!w.playerTimer.isActive());
        QCOMPARE(pressedLooks(w), (QList<bool>{false, false, false}));
        // Long enough for the slowest machine.
        w.playerTimer.setInterval(Patience);
        click(w.imgPlay);
        QCOMPARE(pressedLooks(w), (QList<bool>{true, false, false}));
        QTRY_VERIFY_WITH_TIMEOUT(w.playerTimer.remainingTime() < Patience - 100, Patience);
        const int remaining = w.playerTimer.remainingTime();
        click(w.imgS);
        QCOMPARE(pressedLooks(w), (QList<bool>{true, false, true}));
        // The second click does not restart the timer.
        QVERIFY(w.playerTimer.remainingTime() <= remaining);
        QSignalSpy ticks(&w.playerTimer, &QTimer::timeout);
        w.playerTimer.setInterval(1);
        QTRY_COMPARE_WITH_TIMEOUT(ticks.count(), 1, Patience);
        QCOMPARE(pressedLooks(w), (QList<bool>{false, false, false}));
        QVERIFY(!w.playerTimer.isActive());
    }

    void clickOnThePictureOpensThePanelWithoutPlaying() {
        const QString id = addSong(
            {.title = "Große & <b>Ehre</b>", .cat1 = "Praise", .soundFile = sound("a.wav")});
        frmSetList& w = listed();
        QVERIFY(!w.picPlayer->isVisible());
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        QCOMPARE(
            world->statements,
            QStringList{QStringLiteral("Select soundFile FROM songs WHERE ID = %1 [1]").arg(id)});
        QVERIFY(w.picPlayer->isVisible());
        QCOMPARE(w.lblPlayTitle->text(), QStringLiteral("Große & <b>Ehre</b>"));
        QCOMPARE(w.lblPlayTitle->textFormat(), Qt::PlainText);
        QCOMPARE(w.mm.FileName, world->path("a.wav"));
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Held, Patience);
        QCOMPARE(w.mm.position(), 0.0);
        // The click has selected the song for the set too.
        QCOMPARE(w.selectedSongRow, 1);
    }

    void otherCellsOfTheRowOpenNoPlayer() {
        addSong({.title = "Loud", .cat1 = "Praise", .soundFile = sound("a.wav")});
        frmSetList& w = listed();
        for (const int col : {PickerColumn::Title, PickerColumn::Artist, PickerColumn::Key,
                              PickerColumn::LastPlayed})
            clickCell(w.fpSongList1, col, 1);
        clickCell(w.fpSongList1, PickerColumn::Sound, 0);
        QVERIFY(!w.picPlayer->isVisible());
    }

    void buttonsControlTheSound() {
        frmSetList& w = playing();
        click(w.imgPlay);
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Playing, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(w.mm.position() > 0.2, Patience);
        click(w.imgPause);
        QVERIFY(w.imgPause2->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Held, Patience);
        QVERIFY(w.mm.position() > 0.2);
        click(w.imgPlay);
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Playing, Patience);
        click(w.imgS);
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Held, Patience);
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.position(), 0.0, Patience);
    }

    void pressedButtonCanBeClickedAgain() {
        frmSetList& w = playing();
        click(w.imgPlay);
        QVERIFY(w.imgPlay2->isVisible());
        QCOMPARE(w.imgPlay2->geometry(), w.imgPlay->geometry());
        QCOMPARE(w.picPlayer->childAt(w.imgPlay->geometry().center()), w.imgPlay);
    }

    void secondPictureChangesTheSongInThePanel() {
        frmSetList& w = playing();
        click(w.imgPlay);
        QTRY_VERIFY_WITH_TIMEOUT(w.mm.position() > 0.2, Patience);
        clickCell(w.fpSongList1, PickerColumn::Sound, 2);
        QCOMPARE(w.lblPlayTitle->text(), QStringLiteral("Bread"));
        QCOMPARE(w.mm.FileName, world->path("b.wav"));
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.position(), 0.0, Patience);
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Held, Patience);
        QVERIFY(w.picPlayer->isVisible());
    }

    void closeStopsTheSoundAndHidesThePanel() {
        frmSetList& w = playing();
        click(w.imgPlay);
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Playing, Patience);
        click(w.imgClose);
        QVERIFY(!w.picPlayer->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Closed, Patience);
        QVERIFY(w.fpSongList1->hasFocus());
        clickCell(w.fpSongList1, PickerColumn::Sound, 2);
        QVERIFY(w.picPlayer->isVisible());
        QCOMPARE(w.lblPlayTitle->text(), QStringLiteral("Bread"));
    }

    void fileThatCannotBePlayedOpensASilentPanel_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("broken") << QByteArray("no sound at all");
    }
    // Deliberate: behaviour 74.
    void fileThatCannotBePlayedOpensASilentPanel() {
        QFETCH(QByteArray, content);
        if (!content.isEmpty()) {
            QFile file(world->path("bad.wav"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
        addSong({.title = "Bad", .cat1 = "Praise", .soundFile = world->path("bad.wav")});
        frmSetList& w = listed();
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        QVERIFY(w.picPlayer->isVisible());
        w.playerTimer.setInterval(Patience);
        for (QToolButton* button : {w.imgPlay, w.imgPause, w.imgS}) click(button);
        QTest::qWait(200);
        QCOMPARE(w.mm.state(), State::Closed);
        QCOMPARE(pressedLooks(w), (QList<bool>{true, true, true}));
        click(w.imgClose);
        QVERIFY(!w.picPlayer->isVisible());
    }

    void pictureLeftByAnEarlierSearchOpensASilentPanel() {
        addSong({.title = "Loud", .cat1 = "Praise", .soundFile = sound("a.wav")});
        addSong({.title = "Quiet"});
        frmSetList& w = listed();
        w.txtSearch->setText("quiet");
        click(w.cmdSearchTitle);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Quiet"});
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        QVERIFY(w.picPlayer->isVisible());
        QCOMPARE(w.lblPlayTitle->text(), QStringLiteral("Quiet"));
        QCOMPARE(w.mm.FileName, QString());
        QTest::qWait(100);
        QCOMPARE(w.mm.state(), State::Closed);
    }

    void deletedSongEndsTheCommand() {
        addSong({.title = "Gone", .cat1 = "Praise", .soundFile = sound("a.wav")});
        frmSetList& w = listed();
        world->sql("DELETE FROM songs");
        world->answers.runTimeError(RunTimeError::NoCurrentRecord);
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        QVERIFY(!w.picPlayer->isVisible());
        QCOMPARE(world->endStatus, -1);
        QCOMPARE(w.selectedSongRow, 0);
    }

    // Deliberate: behaviour 74.
    void soundContinuesAfterTheWindowClosesUntilItReopens() {
        frmSetList& w = playing();
        click(w.imgPlay);
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Playing, Patience);
        w.Unload();
        settle();
        QVERIFY(!frmSetList::isLoaded());
        const double left = soundDevice().position();
        QTRY_VERIFY_WITH_TIMEOUT(soundDevice().position() > left + 0.3, Patience);
        QCOMPARE(soundDevice().state(), State::Playing);
        frmSetList& again = open();
        QVERIFY(!again.picPlayer->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(again.mm.state(), State::Closed, Patience);
    }

    void windowCanBeClosedWhileAButtonLooksPressed() {
        frmSetList& w = playing();
        click(w.imgPlay);
        QVERIFY(w.playerTimer.isActive());
        QSignalSpy timer(&w.playerTimer, &QObject::destroyed);
        w.Unload();
        QTRY_COMPARE_WITH_TIMEOUT(timer.count(), 1, Patience);
        soundDevice().Command("close");
    }

    void playerCanBeUsedWithTheKeyboard() {
        addSong({.title = "Abide", .cat1 = "Praise", .soundFile = sound("a.wav")});
        frmSetList& w = listed();
        w.activateWindow();
        settle();
        w.fpSongList1->setFocus();
        w.fpSongList1->SetActiveCell(PickerColumn::Title, 1);
        for (int i = 0; i < 4; ++i) QTest::keyClick(w.fpSongList1, Qt::Key_Right);
        QTest::keyClick(w.fpSongList1, Qt::Key_Return);
        QVERIFY(w.picPlayer->isVisible());
        const QList<QWidget*> order = {w.imgPlay, w.imgPause, w.imgS, w.imgClose, w.Command6};
        for (QWidget* next : order) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
        w.imgPlay->setFocus();
        QTest::keyClick(w.imgPlay, Qt::Key_Space);
        QVERIFY(w.imgPlay2->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(w.mm.state(), State::Playing, Patience);
        for (const QToolButton* button : {w.imgPlay, w.imgPause, w.imgS, w.imgClose})
            QVERIFY(!button->accessibleName().isEmpty());
        w.imgClose->setFocus();
        QTest::keyClick(w.imgClose, Qt::Key_Space);
        QVERIFY(w.fpSongList1->hasFocus());
    }

    void veryLongTitleDoesNotResizeTheWindow() {
        addSong({.title = QStringLiteral("Alleluia ").repeated(60),
                 .cat1 = "Praise",
                 .soundFile = sound("a.wav")});
        frmSetList& w = listed();
        const int width = w.fpSongList1->width();
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        settle();
        QCOMPARE(w.fpSongList1->width(), width);
        QVERIFY(w.picPlayer->width() <= width);
        QVERIFY(w.fpSongList1->height() > 100);
    }

    void soundPictureHasEnoughContrastInBothThemes() {
        const QImage image(QStringLiteral(SOURCE_TREE "/program/config/sound.jpg"));
        QVERIFY(!image.isNull());
        const QColor ground = image.pixelColor(1, 1);
        for (const bool dark : {false, true})
            for (const QColor& under : {themeColours(dark).base, themeColours(dark).alternate})
                QVERIFY2(contrast(ground, under) >= 3, qPrintable(under.name()));
    }
};

LORVANITE_TEST(TestSoundPlayer)
#include "test_sound_player.moc"
