// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Song Administration: showing a song, storing and deleting it.
#include "catalogue/song_admin_hands.h"
#include "support/registry.h"

#include <QMenu>
#include <QPushButton>
#include <QScreen>

namespace {

const QString SongsStatement = QStringLiteral("SELECT * FROM songs ORDER BY title [1]");
const QString NamesStatement = QStringLiteral("SELECT name FROM categories [1]");

QString datesStatement(int songID) {
    return QStringLiteral("SELECT played_date FROM played_on WHERE (songID = %1) [1]").arg(songID);
}

}  // namespace

class TestSongAdmin : public SongAdminTest {
    Q_OBJECT

private Q_SLOTS:
    void nextSongIsTypedRightAfterTheLastOne() {
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, "Abide With Me");
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        for (const char* key : {"Be Thou My Vision", "", "", "Praise"}) {
            typeKeys(QLatin1String(key));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT title, cat1 FROM songs ORDER BY ID"),
                 (QStringList{"Abide With Me|Praise", "Be Thou My Vision|Praise"}));
        // Also after "Clear".
        click(w.cmdClear);
        typeKeys("Come");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(songValue(SongRow::Title), QStringLiteral("Come"));
    }

    void windowOpensWithItsHeadsAndHiddenCells() {
        frmSongAdmin& w = open();
        QVERIFY(w.isVisible());
        QCOMPARE(w.windowTitle(), QStringLiteral("Song Administration"));
        QStringList heads;
        for (int col = SongListColumn::Title; col <= SongListColumn::LastPlayed; ++col)
            heads.append(w.fpSongList2->GetText(col, 0));
        QCOMPARE(heads, (QStringList{"Title", "Artist", "Key", "Last Played"}));
        QStringList labels;
        for (int row = SongRow::ID; row <= SongRow::Last; ++row)
            labels.append(w.fpSMsong->GetText(SongFormColumn::Label, row));
        QCOMPARE(labels, (QStringList{"ID", "Title", "Artist", "Key", "Category 1", "Category 2",
                                      "Category 3", "Category 4", "Category 5", "SheetMusic",
                                      "Playlist", "CCLI #", "Sound File"}));
        QVERIFY(w.fpSMsong->SheetGrid::isRowHidden(1, SongRow::ID));
        QVERIFY(!w.fpSMsong->SheetGrid::isRowHidden(1, SongRow::Title));
        QVERIFY(w.fpdp->isColHidden(1, PlayedDateColumn::ID));
        QVERIFY(!w.fpdp->isColHidden(1, PlayedDateColumn::Date));
        QVERIFY(w.fpdp->isColHidden(1, PlayedDateColumn::SongID));
        QVERIFY(w.fpSongList2->isColHidden(1, SongListColumn::ID));
        QCOMPARE(w.fpdp->GetText(PlayedDateColumn::Date, 0), QStringLiteral("Date Played"));
        for (const SheetView* grid : {w.fpSongList2, w.fpSMsong, w.fpdp, w.fpCat}) {
            QCOMPARE(grid->ActiveCol(), 0);
            QCOMPARE(grid->ActiveRow(), 0);
        }
        QVERIFY(w.frmCat->isHidden());
        QVERIFY(w.txtCats->isHidden());
    }

    void valueCellsHaveTheirTypes() {
        frmSongAdmin& w = open();
        for (int row = SongRow::Title; row <= SongRow::Last; ++row) {
            CellKind kind = CellKind::Edit;
            if ((row >= SongRow::Category1 && row <= SongRow::Category5) ||
                row == SongRow::Playlist)
                kind = CellKind::Combo;
            if (row == SongRow::SheetMusic || row == SongRow::SoundFile) kind = CellKind::Button;
            QCOMPARE(w.fpSMsong->formatAt(1, SongFormColumn::Value, row).kind, kind);
        }
        QCOMPARE(w.fpSMsong->formatAt(1, SongFormColumn::Value, SongRow::Playlist).comboList,
                 QStringLiteral("Current\tPast"));
    }

    void openingRunsItsStatementsInOrder() {
        world->sql(
            "INSERT INTO songs (ID, title) VALUES (4, 'b'), (7, 'C'), (9, 'a');"
            "INSERT INTO played_on (songID, played_date) VALUES (7, '01/02/26')");
        world->start();
        world->statements.clear();
        openAgain();
        QCOMPARE(world->statements, (QStringList{NamesStatement, SongsStatement, datesStatement(9),
                                                 datesStatement(4), datesStatement(7)}));
        QCOMPARE(columnOf(window().fpSongList2, SongListColumn::ID), (QStringList{"9", "4", "7"}));
        QCOMPARE(columnOf(window().fpSongList2, SongListColumn::LastPlayed),
                 (QStringList{"", "", "01/02/26"}));
    }

    void clickOnASongShowsAllItsFields() {
        world->sql(
            "INSERT INTO songs VALUES (5, 'Title', 'Artist', 'G', 'c1', 'c2', 'c3', 'c4', 'c5', "
            "'Past', 'C:\\charts\\a.stp', '12345', '/music/a.mp3')");
        frmSongAdmin& w = open();
        showSong("Title");
        QCOMPARE(columnOf(w.fpSMsong, SongFormColumn::Value),
                 (QStringList{"5", "Title", "Artist", "G", "c1", "c2", "c3", "c4", "c5",
                              "C:\\charts\\a.stp", "Past", "12345", "/music/a.mp3"}));
        QCOMPARE(world->statements, (QStringList{"SELECT * FROM songs WHERE ID = 5 [1]",
                                                 "SELECT * FROM played_on WHERE songID = 5 [1]"}));
    }

    void columnsWithoutValueShowEmpty() {
        world->sql("INSERT INTO songs (title) VALUES (NULL)");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 1);
        QCOMPARE(songValue(SongRow::ID), QStringLiteral("1"));
        for (int row = SongRow::Title; row <= SongRow::Last; ++row)
            QCOMPARE(songValue(row), QString());
        world->answers.box("Title and Category 1 must be filled in.");
        click(w.cmdAdd);
    }

    void newSongIsStoredAsTyped() {
        world->sql("INSERT INTO categories (name) VALUES ('Praise'), ('Lent')");
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, "Be Thou My Vision");
        typeInSong(SongRow::Key, "Eb");
        typeInSong(SongRow::Category1, "Praise");
        typeInSong(SongRow::Category2, "Lent");
        typeInSong(SongRow::Playlist, "Current");
        typeInSong(SongRow::CCLI, "30639");
        click(w.cmdAdd);
        QCOMPARE(world->statements,
                 QStringList{"INSERT INTO songs (title, dakey, cat1, cat2, cat3, cat4, cat5, "
                             "playlist, fileLoco, CCLI, soundFile) VALUES ('Be Thou My Vision', "
                             "'Eb', 'Praise', 'Lent', '', '', '', 'Current', '', '30639', ''); "
                             "[3]"});
        QCOMPARE(world->rows("SELECT title, dakey, cat1, cat2, playlist, CCLI FROM songs"),
                 QStringList{"Be Thou My Vision|Eb|Praise|Lent|Current|30639"});
        for (int row = SongRow::ID; row <= SongRow::Last; ++row)
            QCOMPARE(songValue(row), QString());
    }

    void textStillBeingTypedIsStoredToo() {
        world->sql("INSERT INTO songs (ID, title, cat1) VALUES (5, 'Old', 'Praise')");
        frmSongAdmin& w = open();
        showSong("Old");
        clickCell(w.fpSMsong, SongFormColumn::Value, SongRow::Key);
        QTest::keyClicks(w.fpSMsong, "F");
        QTest::keyClicks(QApplication::focusWidget(), "#m");
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT title, dakey FROM songs"), QStringList{"Old|F#m"});
    }

    void shownSongIsUpdated() {
        world->sql(
            "INSERT INTO songs VALUES (5, 'Title', 'Artist', 'G', 'c1', 'c2', 'c3', 'c4', 'c5', "
            "'Past', '/charts/a.stp', '12345', '/music/a.mp3')");
        frmSongAdmin& w = open();
        showSong("Title");
        typeInSong(SongRow::Title, "Other");
        world->statements.clear();
        click(w.cmdAdd);
        QCOMPARE(world->statements,
                 QStringList{"UPDATE songs SET title = 'Other', dakey = 'G', cat1 = 'c1', cat2 = "
                             "'c2', cat3 = 'c3', cat4 = 'c4', cat5 = 'c5', playlist = 'Past', "
                             "fileLoco = '/charts/a.stp', CCLI = '12345', soundFile = "
                             "'/music/a.mp3' WHERE ID = 5 [3]"});
        QCOMPARE(world->rows("SELECT * FROM songs"),
                 QStringList{"5|Other|Artist|G|c1|c2|c3|c4|c5|Past|/charts/a.stp|12345|"
                             "/music/a.mp3"});
        for (int row = SongRow::ID; row <= SongRow::Last; ++row)
            QCOMPARE(songValue(row), QString());
    }

    void playlistAndCategoryAreStoredInTheirOwnSpelling() {
        world->sql("INSERT INTO categories (name) VALUES ('Praise'), ('Prayer'), ('Advent')");
        open();
        typeInSong(SongRow::Title, "Abide");
        typeInSong(SongRow::Category1, "advent");
        typeInSong(SongRow::Category2, "prai");
        typeInSong(SongRow::Playlist, "cur");
        click(window().cmdAdd);
        QCOMPARE(world->rows("SELECT cat1, cat2, playlist FROM songs"),
                 QStringList{"Advent|Praise|Current"});
    }

    void addWithAnEmptyPlaylistWritesEmptyText() {
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, "Song");
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT playlist, typeof(playlist) FROM songs"), QStringList{"|text"});
    }

    void titleAndFirstCategoryAreRequired() {
        frmSongAdmin& w = open();
        const QString refusal = "Title and Category 1 must be filled in.";
        world->answers.box(refusal);
        click(w.cmdAdd);
        typeInSong(SongRow::Title, "Song");
        world->answers.box(refusal);
        click(w.cmdAdd);
        typeInSong(SongRow::Title, "");
        typeInSong(SongRow::Category1, "Praise");
        world->answers.box(refusal);
        click(w.cmdAdd);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(songValue(SongRow::Category1), QStringLiteral("Praise"));
    }

    // Deliberate: behaviour 30.
    void artistIsShownAndNeverStored() {
        world->sql("INSERT INTO songs (title, artist, cat1) VALUES ('Song', 'Old', 'Praise')");
        frmSongAdmin& w = open();
        showSong("Song");
        QCOMPARE(songValue(SongRow::Artist), QStringLiteral("Old"));
        typeInSong(SongRow::Artist, "New");
        click(w.cmdAdd);
        typeInSong(SongRow::Title, "Second");
        typeInSong(SongRow::Artist, "Someone");
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT title, artist FROM songs ORDER BY ID"),
                 (QStringList{"Song|Old", "Second|"}));
    }

    // Deliberate: behaviour 34.
    void titleWithOneApostropheIsStoredWithoutIt() {
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, "God's Grace");
        typeInSong(SongRow::Key, "B'");
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT title, dakey FROM songs"), QStringList{"Gods Grace|B"});
        QCOMPARE(world->rows("SELECT * FROM songs WHERE title = 'God''s Grace'"), QStringList());
        QCOMPARE(world->endStatus, -1);
    }

    void titleWithMoreApostrophesEndsTheProgram_data() {
        QTest::addColumn<QString>("title");
        QTest::newRow("two") << "God's People's Song";
        QTest::newRow("three") << "'Tis God's People's Song";
    }
    // Deliberate: behaviour 34.
    void titleWithMoreApostrophesEndsTheProgram() {
        QFETCH(QString, title);
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, title);
        typeInSong(SongRow::Category1, "Praise");
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(world->rows("SELECT * FROM songs"), QStringList());
    }

    // Deliberate: behaviour 34.
    void chartPathAndLicenceNumberLoseAllApostrophes() {
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, "Song");
        typeInSong(SongRow::Category1, "Praise");
        typeInSong(SongRow::SheetMusic, "/John's 'best' charts/a.stp");
        typeInSong(SongRow::CCLI, "'12'34'");
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT fileLoco, CCLI FROM songs"),
                 QStringList{"/Johns best charts/a.stp|1234"});
    }

    void apostropheInACategoryOrASoundFileEndsTheProgram_data() {
        QTest::addColumn<int>("row");
        QTest::newRow("category 1") << int(SongRow::Category1);
        QTest::newRow("category 5") << int(SongRow::Category5);
        QTest::newRow("playlist") << int(SongRow::Playlist);
        QTest::newRow("sound file") << int(SongRow::SoundFile);
    }
    // Deliberate: behaviour 34.
    void apostropheInACategoryOrASoundFileEndsTheProgram() {
        QFETCH(int, row);
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, "Song");
        typeInSong(SongRow::Category1, "Praise");
        w.fpSMsong->SetText(SongFormColumn::Value, row, "Men's");
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(world->rows("SELECT * FROM songs"), QStringList());
    }

    void titlesOfAllScriptsComeBackAsTyped_data() {
        QTest::addColumn<QString>("title");
        QTest::newRow("Greek") << QString::fromUtf8("Κύριε ἐλέησον");
        QTest::newRow("Korean") << QString::fromUtf8("주 하나님 지으신 모든 세계");
        QTest::newRow("combining") << QString::fromUtf8("Noe\xCC\x88l a\xCC\x81");
        QTest::newRow("beyond the first plane") << QString::fromUtf8("𝄞 Hymn");
        QTest::newRow("marks of SQL") << "a\"b;--%_[c]";
    }
    void titlesOfAllScriptsComeBackAsTyped() {
        QFETCH(QString, title);
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, title);
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        click(w.Command12);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title), QStringList{title});
        showSong(title);
        QCOMPARE(songValue(SongRow::Title), title);
        QCOMPARE(world->rows("SELECT title FROM songs"), QStringList{title});
    }

    // Deliberate: behaviour 31.
    void listIsUnchangedAfterAnUpdateUntilTheReload() {
        world->sql("INSERT INTO songs (title, cat1) VALUES ('Old', 'Praise')");
        frmSongAdmin& w = open();
        showSong("Old");
        typeInSong(SongRow::Title, "New");
        click(w.cmdAdd);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title), QStringList{"Old"});
        // The title shown comes from the list too.
        showSong("Old");
        QCOMPARE(songValue(SongRow::Title), QStringLiteral("Old"));
        click(w.cmdClear);
        typeInSong(SongRow::Title, "Another");
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title), QStringList{"Old"});
        QCOMPARE(w.lblStat->text(), QStringLiteral("1 Songs In The Database"));
        click(w.Command12);
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title), (QStringList{"Another", "New"}));
        QCOMPARE(w.lblStat->text(), QStringLiteral("2 Songs In The Database"));
    }

    // Deliberate: behaviour 32.
    void deletingASongLeavesItsDates() {
        world->sql(
            "INSERT INTO songs (title) VALUES ('Keep'), ('Lose');"
            "INSERT INTO played_on (title, songID, played_date) VALUES ('Lose', 2, '01/02/26'), "
            "('Lose', 2, '01/09/26')");
        frmSongAdmin& w = open();
        showSong("Lose");
        world->statements.clear();
        click(w.cmdDel);
        QCOMPARE(world->statements, (QStringList{"DELETE FROM songs WHERE ID = 2 [3]",
                                                 SongsStatement, datesStatement(1)}));
        QCOMPARE(columnOf(w.fpSongList2, SongListColumn::Title), QStringList{"Keep"});
        QCOMPARE(world->rows("SELECT songID, played_date FROM played_on"),
                 (QStringList{"2|01/02/26", "2|01/09/26"}));
        QCOMPARE(songValue(SongRow::ID), QString());
        QCOMPARE(world->rows("SELECT played_on.ID FROM played_on JOIN songs "
                             "ON songs.ID = played_on.songID"),
                 QStringList());
    }

    void deletingWithoutASongIsRefused() {
        world->sql("INSERT INTO songs (title) VALUES ('Keep')");
        frmSongAdmin& w = open();
        world->answers.box("Select a song to delete first.");
        click(w.cmdDel);
        showSong("Keep");
        click(w.cmdClear);
        world->statements.clear();
        world->answers.box("Select a song to delete first.");
        click(w.cmdDel);
        QVERIFY(world->statements.isEmpty());
    }

    void clearedFormStoresANewSong() {
        world->sql("INSERT INTO songs (title, cat1) VALUES ('Song', 'Praise')");
        frmSongAdmin& w = open();
        showSong("Song");
        click(w.cmdClear);
        for (int row = SongRow::ID; row <= SongRow::Last; ++row)
            QCOMPARE(songValue(row), QString());
        QCOMPARE(w.fpSMsong->GetText(SongFormColumn::Label, SongRow::Title),
                 QStringLiteral("Title"));
        typeInSong(SongRow::Title, "Song");
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT ID, title FROM songs"), (QStringList{"1|Song", "2|Song"}));
    }

    void clickOnALabelSelectsItsValue() {
        frmSongAdmin& w = open();
        clickCell(w.fpSMsong, SongFormColumn::Label, SongRow::Key);
        QCOMPARE(w.fpSMsong->ActiveCol(), 1);
        QCOMPARE(w.fpSMsong->ActiveRow(), 4);
    }

    void lockedFileAtAddEndsTheProgram() {
        frmSongAdmin& w = open();
        typeInSong(SongRow::Title, "Song");
        typeInSong(SongRow::Category1, "Praise");
        {
            const FileHeld held(world->path("db1.mdb"));
            world->answers.runTimeError(RunTimeError::StatementRefused, "locked");
            click(w.cmdAdd);
        }
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(world->rows("SELECT * FROM songs"), QStringList());
    }

    void lockedFileAtReloadEndsTheProgram() {
        frmSongAdmin& w = open();
        {
            const FileHeld held(world->path("db1.mdb"));
            world->answers.runTimeError(RunTimeError::StatementRefused, "locked");
            click(w.Command12);
        }
        QCOMPARE(world->endStatus, 1);
        QVERIFY(!QApplication::overrideCursor());
    }

    void closedWindowReopensEmpty() {
        world->sql("INSERT INTO songs (title) VALUES ('Song')");
        frmSongAdmin& w = open();
        showSong("Song");
        w.Unload();
        settle();
        QVERIFY(!frmSongAdmin::isLoaded());
        openAgain();
        QCOMPARE(songValue(SongRow::ID), QString());
        QCOMPARE(columnOf(window().fpSongList2, SongListColumn::Title), QStringList{"Song"});
        openAgain();
        QCOMPARE(world->main().mdiArea->subWindowList().size(), 1);
    }

    void windowFitsIntoTheMainWindow() {
        open();
        const QMdiSubWindow* frame = world->main().mdiArea->subWindowList().constFirst();
        QVERIFY2(world->main().mdiArea->rect().contains(frame->geometry()),
                 qPrintable(QStringLiteral("%1 x %2").arg(frame->width()).arg(frame->height())));
    }

    void controlsHaveNamesAndAreReachedInReadingOrder() {
        frmSongAdmin& w = open();
        const QList<QWidget*> inReadingOrder = {
            w.fpSongList2, w.Command12, w.cmdDefineCat, w.fpSMsong, w.fpdp,
            w.cmdAdd,      w.cmdDel,    w.cmdClear,     w.fpCat,    w.txtName,
            w.txtDesc,     w.cmdAddCat, w.cmdDelCat,    w.Command1, w.Command4};
        for (const QWidget* control : inReadingOrder) {
            QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
            QVERIFY2(control->focusPolicy() & Qt::TabFocus, qPrintable(control->objectName()));
        }
        QList<QWidget*> chain{w.fpSongList2};
        for (QWidget* next = w.fpSongList2->nextInFocusChain(); next != w.fpSongList2;
             next = next->nextInFocusChain())
            if (inReadingOrder.contains(next)) chain.append(next);
        QCOMPARE(chain, inReadingOrder);
    }

    void undoNeverReachesIntoAnotherSong() {
        world->sql(
            "INSERT INTO songs (title, cat1, dakey) VALUES ('A', 'Praise', 'G'), "
            "('B', 'Praise', 'D')");
        frmSongAdmin& w = open();
        showSong("A");
        typeInSong(SongRow::Key, "D");
        showSong("B");
        w.fpSMsong->setFocus();
        QTest::keyClick(w.fpSMsong, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(songValue(SongRow::Key), QStringLiteral("D"));
        QCOMPARE(songValue(SongRow::Title), QStringLiteral("B"));
    }
};

LORVANITE_TEST(TestSongAdmin)
#include "test_song_admin.moc"
