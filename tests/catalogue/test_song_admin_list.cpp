// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The list of Song Administration: what it shows, and its order.
#include "catalogue/song_admin_hands.h"
#include "core/data/database.h"
#include "support/registry.h"

class TestSongAdminList : public SongAdminTest {
    Q_OBJECT

private Q_SLOTS:
    void emptySongsTableLoads() {
        frmSongAdmin& w = open();
        QCOMPARE(w.fpSongList2->MaxRows(), 0);
        QCOMPARE(w.lblStat->text(), QStringLiteral("0 Songs In The Database"));
        QVERIFY(!QApplication::overrideCursor());
        click(w.Command12);
        QCOMPARE(world->statements, QStringList{"SELECT * FROM songs ORDER BY title [1]"});
        QCOMPARE(w.fpSongList2->MaxRows(), 0);
        QVERIFY(!QApplication::overrideCursor());
        clickCell(w.fpSongList2, SongListColumn::Title, 0);
        QCOMPARE(w.fpSongList2->SortKey(1), int(SongListColumn::Title));
    }

    void listShowsIdTitleArtistAndKeyOfEachSong() {
        world->sql(
            "INSERT INTO songs (title, artist, dakey) VALUES ('Doxology', 'Ken', 'G'), "
            "('Abide with Me', 'Lyte', 'Eb')");
        frmSongAdmin& w = open();
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::ID), (QStringList{"2", "1"}));
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title),
                 (QStringList{"Abide with Me", "Doxology"}));
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Artist), (QStringList{"Lyte", "Ken"}));
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Key), (QStringList{"Eb", "G"}));
        QCOMPARE(w.lblStat->text(), QStringLiteral("2 Songs In The Database"));
    }

    void songThatWasNeverPlayedHasAnEmptyLastPlayedCell() {
        world->sql("INSERT INTO songs (title) VALUES ('New')");
        frmSongAdmin& w = open();
        QString text;
        QVERIFY(!w.fpSongList2->GetText(SongListColumn::LastPlayed, 1, text));
        QCOMPARE(text, QString());
    }

    void lastPlayedIsTheLatestDayAndNotTheGreatestText() {
        world->sql(
            "INSERT INTO songs (title) VALUES ('Song');"
            "INSERT INTO played_on (songID, played_date) VALUES (1, '12/31/05'), (1, '01/01/06'), "
            "(1, '11/30/05')");
        frmSongAdmin& w = open();
        QCOMPARE(w.fpSongList2->GetText(SongListColumn::LastPlayed, 1), QStringLiteral("01/01/06"));
    }

    void lastPlayedIgnoresTextsThatAreNotDates() {
        world->sql(
            "INSERT INTO songs (title) VALUES ('a'), ('b'), ('c');"
            "INSERT INTO played_on (songID, played_date) VALUES (1, ''), (1, '03/04/26'), "
            "(1, NULL), (1, 'soon'), (2, NULL), (3, 'Easter'), (3, '04/05/26'), (3, '04/04/26')");
        frmSongAdmin& w = open();
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::LastPlayed),
                 (QStringList{"03/04/26", "", "04/05/26"}));
    }

    void progressIsShownForEachSong() {
        world->sql("INSERT INTO songs (title) VALUES ('a'), ('b'), ('c')");
        frmSongAdmin& w = open();
        QStringList seen;
        dbConn.onStatement([&](const QString&, CursorType, LockType) {
            seen.append(world->main().SB->SimpleText());
            QCOMPARE(QApplication::overrideCursor() != nullptr, true);
        });
        click(w.Command12);
        dbConn.onStatement({});
        QCOMPARE(seen.mid(2), (QStringList{"Loading....33% Complete", "Loading....66% Complete"}));
        QCOMPARE(world->main().SB->SimpleText(), QStringLiteral("Loading....100% Complete"));
    }

    void thousandsOfSongsLoadInOrder() {
        world->sql(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
            "INSERT INTO songs (title) SELECT printf('Song %04d', 3001 - i) FROM n;"
            "INSERT INTO played_on (songID, played_date) SELECT ID, '02/03/26' FROM songs");
        frmSongAdmin& w = open();
        QCOMPARE(w.fpSongList2->MaxRows(), 3000);
        QCOMPARE(w.lblStat->text(), QStringLiteral("3000 Songs In The Database"));
        QCOMPARE(w.fpSongList2->GetText(SongListColumn::Title, 1), QStringLiteral("Song 0001"));
        QCOMPARE(w.fpSongList2->GetText(SongListColumn::ID, 3000), QStringLiteral("1"));
        QCOMPARE(w.fpSongList2->GetText(SongListColumn::LastPlayed, 2999),
                 QStringLiteral("02/03/26"));
    }

    void headSortsAndReversesAcrossColumns() {
        world->sql(
            "INSERT INTO songs (title, dakey) VALUES ('Aleph', 'C'), ('Beth', 'A'), "
            "('Gimel', 'B')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 0);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title),
                 (QStringList{"Aleph", "Beth", "Gimel"}));
        clickCell(w.fpSongList2, SongListColumn::Key, 0);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Key), (QStringList{"C", "B", "A"}));
        clickCell(w.fpSongList2, SongListColumn::Title, 0);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title),
                 (QStringList{"Aleph", "Beth", "Gimel"}));
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::ID), (QStringList{"1", "2", "3"}));
    }

    void lastPlayedIsSortedByDay() {
        world->sql(
            "INSERT INTO songs (title) VALUES ('a'), ('b'), ('c'), ('d');"
            "INSERT INTO played_on (songID, played_date) VALUES (1, '12/31/05'), (2, '01/01/06'), "
            "(3, '06/01/99')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::LastPlayed, 0);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::LastPlayed),
                 (QStringList{"06/01/99", "12/31/05", "01/01/06", ""}));
    }

    void storedDateOfAnyFormIsListedAsItIs() {
        world->sql(
            "INSERT INTO songs (title) VALUES ('a'), ('b'), ('c');"
            "INSERT INTO played_on (songID, played_date) VALUES (1, '2005-06-12'), "
            "(2, '12/31/85'), (3, 'Easter')");
        frmSongAdmin& w = open();
        const QStringList asStored{"2005-06-12", "12/31/85", "Easter"};
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::LastPlayed), asStored);
        click(w.Command12);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::LastPlayed), asStored);
    }

    void clickInASortedListShowsTheRightSong() {
        world->sql("INSERT INTO songs (title, CCLI) VALUES ('a', '11'), ('b', '22')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 0);
        clickCell(w.fpSongList2, SongListColumn::Title, 0);
        clickCell(w.fpSongList2, SongListColumn::Title, 1);
        QCOMPARE(songValue(SongRow::Title), QStringLiteral("b"));
        QCOMPARE(songValue(SongRow::CCLI), QStringLiteral("22"));
    }
};

LORVANITE_TEST(TestSongAdminList)
#include "test_song_admin_list.moc"
