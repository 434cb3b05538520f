// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The context menu and the file buttons of the song shown.
#include "catalogue/song_admin_hands.h"
#include "support/registry.h"

namespace {

void clickButtonOfCell(SheetView* grid, int col, int row) {
    const QRect rect = grid->cellRect(col, row);
    const QPoint place = grid->mapToGlobal(QPoint(rect.right() - 8, rect.center().y()));
    QWidget* target = grid->childAt(grid->mapFromGlobal(place));
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFromGlobal(place));
    settle();
}

}  // namespace

class TestSongMenus : public SongAdminTest {
    Q_OBJECT

private Q_SLOTS:
    void rightClickMenuClearsTheActiveValue() {
        world->sql("INSERT INTO songs (title, dakey, cat1) VALUES ('Song', 'G', 'Praise')");
        frmSongAdmin& w = open();
        showSong("Song");
        clickCell(w.fpSMsong, SongFormColumn::Label, SongRow::Key);
        clickCell(w.fpSMsong, SongFormColumn::Value, SongRow::Key, Qt::RightButton);
        QVERIFY(w.mnuDel.isVisible());
        QCOMPARE(w.mnuDeleteDoIt.text(), QStringLiteral("Delete"));
        QVERIFY(pickMenuItem(w.mnuDel, w.mnuDeleteDoIt));
        QCOMPARE(songValue(SongRow::Key), QString());
        QCOMPARE(songValue(SongRow::Title), QStringLiteral("Song"));
        QCOMPARE(songValue(SongRow::Category1), QStringLiteral("Praise"));
    }

    void rightClickMenuActsOnTheRowUnderTheMouse() {
        world->sql("INSERT INTO songs (title, dakey, cat1) VALUES ('Song', 'G', 'Praise')");
        frmSongAdmin& w = open();
        showSong("Song");
        clickCell(w.fpSMsong, SongFormColumn::Value, SongRow::Title);
        clickCell(w.fpSMsong, SongFormColumn::Label, SongRow::Category1, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuDel, w.mnuDeleteDoIt));
        QCOMPARE(songValue(SongRow::Title), QStringLiteral("Song"));
        QCOMPARE(songValue(SongRow::Key), QStringLiteral("G"));
        QCOMPARE(songValue(SongRow::Category1), QString());
        QCOMPARE(w.fpSMsong->GetText(SongFormColumn::Label, SongRow::Category1),
                 QStringLiteral("Category 1"));
    }

    void leftClickShowsNoMenu() {
        frmSongAdmin& w = open();
        clickCell(w.fpSMsong, SongFormColumn::Value, SongRow::Key);
        QVERIFY(!w.mnuDel.isVisible());
    }

    void chartDialogStartsInTheChartFolder() {
        frmSongAdmin& w = open();
        QVERIFY(QDir(world->folder()).mkpath("sheetmusic"));
        const QString chart = world->path("sheetmusic/Song.stp");
        QFile file(chart);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        // Another window has left these in the dialog.
        world->main().CommonDlg.Filter = "SET Files|*.set";
        world->main().CommonDlg.DialogTitle = "Save Set";
        world->main().CommonDlg.FileName = "x.set";
        world->answers.file(chart);
        clickButtonOfCell(w.fpSMsong, SongFormColumn::Value, SongRow::SheetMusic);
        QCOMPARE(songValue(SongRow::SheetMusic), QDir::toNativeSeparators(chart));
        const auto& seen = world->answers.fileDialogs().front();
        QVERIFY(!seen.saves);
        QCOMPARE(seen.proposed, QString());
        QCOMPARE(QFileInfo(seen.folder), QFileInfo(world->path("sheetmusic")));
        QVERIFY(!seen.filters.contains("SET Files (*.set)"));
        QVERIFY(world->main().CommonDlg.CancelError);
    }

    // Deliberate: behaviour 43.
    void soundFileDialogStartsInTheFolderOfTheLastDialog() {
        frmSongAdmin& w = open();
        const QString sound = world->path("song.mp3");
        QFile file(sound);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        world->main().CommonDlg.InitDir = world->folder();
        world->answers.file(sound);
        clickButtonOfCell(w.fpSMsong, SongFormColumn::Value, SongRow::SoundFile);
        QCOMPARE(songValue(SongRow::SoundFile), QDir::toNativeSeparators(sound));
        QCOMPARE(world->main().CommonDlg.InitDir, world->folder());
    }

    void cancelledDialogChangesNothing() {
        world->sql(
            "INSERT INTO songs (title, cat1, fileLoco, soundFile) VALUES "
            "('Song', 'Praise', '/a.stp', '/a.mp3')");
        frmSongAdmin& w = open();
        showSong("Song");
        const QStringList before = columnOf(w.fpSMsong, SongFormColumn::Value);
        for (const int row : {SongRow::SheetMusic, SongRow::SoundFile}) {
            world->answers.cancelFile();
            clickButtonOfCell(w.fpSMsong, SongFormColumn::Value, row);
        }
        QCOMPARE(columnOf(w.fpSMsong, SongFormColumn::Value), before);
        QCOMPARE(world->endStatus, -1);
    }
};

LORVANITE_TEST(TestSongMenus)
#include "test_song_menus.moc"
