// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Finding songs in the set window.
#include "platform/desktop/desktop.h"
#include "platform/desktop/status_line.h"
#include "sets/set_list_test.h"

#include <QFile>

namespace {

const QString NoCategory = QStringLiteral("The first category box must be selected.");

QString oneCategory(const QString& c) {
    return QStringLiteral(
               "SELECT * FROM songs WHERE (cat1 = '%1') OR (cat2 = '%1') OR (cat3 = "
               "'%1') OR (cat4 = '%1') OR (cat5 = '%1') ORDER BY title; [1]")
        .arg(c);
}

QString datesOf(const QString& id) {
    return QStringLiteral(
               "SELECT DISTINCT played_date FROM played_on WHERE (songID = %1) ORDER "
               "BY played_date DESC [1]")
        .arg(id);
}

bool hasPicture(SheetView* grid, int row) {
    grid->Col(PickerColumn::Sound);
    grid->Row(row);
    return !grid->Picture().isEmpty();
}

}  // namespace

class TestSongPicker : public SetListTest {
    Q_OBJECT

private Q_SLOTS:
    void windowOpensEmptyWithTheCategoriesInTableOrder() {
        addCategories({"Praise", "Communion", "Advent"});
        world->start();
        world->statements.clear();
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        QCOMPARE(world->statements,
                 (QStringList{"SELECT name FROM categories [1]",
                              "SELECT * FROM prefs WHERE var_name = 'DefaultSetList' [1]"}));
        QCOMPARE(w.windowTitle(), QStringLiteral("Pick Set"));
        for (const QComboBox* box : {w.cmbCat1, w.cmbCat2}) {
            QCOMPARE(box->count(), 3);
            QCOMPARE(box->itemText(2), QStringLiteral("Advent"));
            QVERIFY(box->currentText().isEmpty());
        }
        QCOMPARE(w.fpSongList1->MaxRows(), 0);
        w.fpSongList1->Col(PickerColumn::ID);
        QVERIFY(w.fpSongList1->ColHidden());
        QVERIFY(w.optPlayList[0]->isChecked());
    }

    void searchRunsItsStatementsAndListsTheSongsFound() {
        addCategories({"Praise", "Prayer"});
        const QString b = addSong({.title = "Bread", .cat3 = "Praise", .artist = "A", .key = "G"});
        const QString a = addSong({.title = "Abide", .cat1 = "praise", .key = "Eb"});
        addSong({.title = "Other", .cat1 = "Prayer"});
        addPlayed(b, {"10/05/25", "10/06/24"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QCOMPARE(world->statements, (QStringList{oneCategory("Praise"), datesOf(a), datesOf(b)}));
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::ID), (QStringList{a, b}));
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), (QStringList{"Abide", "Bread"}));
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Artist), (QStringList{"", "A"}));
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Key), (QStringList{"Eb", "G"}));
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::LastPlayed), (QStringList{"", "10/06/24"}));
    }

    // Deliberate: behaviour 50.
    void songsWithBothCategoriesInAnySlotAreFound() {
        addCategories({"Praise", "Advent"});
        addSong({.title = "Both", .cat2 = "Advent", .cat5 = "Praise"});
        addSong({.title = "One", .cat1 = "Praise"});
        addSong({.title = "Two", .cat4 = "Advent"});
        frmSetList& w = open();
        type(w.cmbCat1, "Praise");
        QVERIFY(world->statements.isEmpty());
        pick(w.cmbCat2, "Advent");
        QCOMPARE(world->statements.value(0),
                 QStringLiteral(
                     "SELECT * FROM songs WHERE ((cat1 = 'Praise') OR (cat2 = 'Praise') OR (cat3 "
                     "= 'Praise') OR (cat4 = 'Praise') OR (cat5 = 'Praise')) AND ((cat1 = "
                     "'Advent') or (cat2 = 'Advent') OR (cat3 = 'Advent') OR (cat4 = 'Advent') OR "
                     "(cat5 = 'Advent')) ORDER BY title; [1]"));
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Both"});
    }

    // Deliberate: behaviour 50.
    void categoryIsCompletedAsItIsTyped() {
        addCategories({"Praise", "Advent"});
        addSong({.title = "One", .cat1 = "Praise"});
        frmSetList& w = open();
        type(w.cmbCat1, "pra");
        QCOMPARE(w.cmbCat1->currentText(), QStringLiteral("Praise"));
        QTest::keyClick(w.cmbCat1, Qt::Key_Return);
        QVERIFY(world->statements.isEmpty());
        click(w.optPlayList[0]);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"One"});
    }

    void statusBarNamesTheSongInHand() {
        addCategories({"Praise", "Advent"});
        addSong({.title = "Abide", .cat1 = "Praise"});
        addSong({.title = "Bread", .cat1 = "Praise"});
        addSong({.title = "Coming", .cat1 = "Advent"});
        frmSetList& w = open();
        const auto status = [this] { return world->main().SB->SimpleText(); };
        const auto inHand = [](const char* title) {
            return QStringLiteral("In hand: %1. Click its place in the set.")
                .arg(QLatin1String(title));
        };
        pick(w.cmbCat1, "Praise");
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        QCOMPARE(status(), inHand("Abide"));
        clickCell(w.fpSongList1, PickerColumn::Title, 2);
        QCOMPARE(status(), inHand("Bread"));
        clickCell(w.fpSet, SetColumn::Title, 3);
        QCOMPARE(status(), QString());
        // The row that was clicked may hold another song after a search.
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        pick(w.cmbCat1, "Advent");
        QCOMPARE(status(), inHand("Coming"));
        // A text of another command stays.
        setStatusText(QStringLiteral("Loading....100% Complete"));
        clickCell(w.fpSet, SetColumn::Title, 4);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 4), QStringLiteral("Coming"));
        QCOMPARE(status(), QStringLiteral("Loading....100% Complete"));
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        w.Unload();
        settle();
        QCOMPARE(status(), QString());
    }

    void songInHandStaysInHandWhenTheListIsSorted() {
        addCategories({"Praise"});
        addSong({.title = "Abide", .cat1 = "Praise"});
        addSong({.title = "Bread", .cat1 = "Praise"});
        addSong({.title = "Crown", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        for (int i = 0; i < 2; ++i) clickCell(w.fpSongList1, PickerColumn::Title, 0);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title),
                 (QStringList{"Crown", "Bread", "Abide"}));
        QCOMPARE(w.fpSongList1->ActiveRow(), 3);
        clickCell(w.fpSet, SetColumn::Title, 2);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Abide"));
    }

    void setIsTypedFromItsDateOn() {
        frmSetList& w = open();
        w.fpSet->setFocus(Qt::TabFocusReason);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_1);
        QTest::keyClicks(QApplication::focusWidget(), "1/22/26");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);
        QTest::keyClicks(QApplication::focusWidget(), "bide");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, SetRow::Date), QStringLiteral("Set List For:"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, SetRow::Date), QStringLiteral("11/22/26"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("abide"));
    }

    // Deliberate: behaviour 57.
    void onlyTheModeListFillsTheCategoryBoxes() {
        addCategories({"Praise"});
        frmSetList& w = open();
        w.loadCategoryCombos(QStringLiteral("manage"));
        QCOMPARE(world->statements, QStringList{"SELECT name FROM categories [1]"});
        QCOMPARE(w.cmbCat1->count() + w.cmbCat2->count(), 0);
        w.loadCategoryCombos(QStringLiteral("list"));
        QCOMPARE(w.cmbCat1->count(), 1);
        QCOMPARE(w.cmbCat2->count(), 1);
    }

    // Deliberate: behaviour 54.
    void titleSearchFindsSongsOfEveryPlaylistWithoutAPicture() {
        addSong({.title = "Loud", .playlist = "Past", .soundFile = "/a.mp3"});
        frmSetList& w = open();
        QTest::keyClicks(w.txtSearch, "loud");
        click(w.cmdSearchTitle);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Loud"});
        QVERIFY(!hasPicture(w.fpSongList1, 1));
    }

    void secondCategoryLikeTheFirstGivesTheSameSongs() {
        addCategories({"Praise", "Advent"});
        addSong({.title = "Both", .cat1 = "Advent", .cat2 = "Praise"});
        addSong({.title = "One", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        const QStringList alone = columnOf(w.fpSongList1, PickerColumn::Title);
        pick(w.cmbCat2, "Praise");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), alone);
        QCOMPARE(alone, (QStringList{"Both", "One"}));
    }

    // Deliberate: behaviour 53.
    void hymnsOfASecondCategoryAreListedWithoutAPicture() {
        addCategories({"Praise"});
        addSong({.title = "Hymn", .cat1 = "Praise", .cat2 = "Hymns", .soundFile = "/a.mp3"});
        addSong({.title = "Song", .cat1 = "Praise", .soundFile = "/b.mp3"});
        addSong({.title = "Far", .cat1 = "Hymns"});
        frmSetList& w = open();
        type(w.cmbCat2, "Hymns");
        pick(w.cmbCat1, "Praise");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Hymn"});
        QVERIFY(!hasPicture(w.fpSongList1, 1));
    }

    // Deliberate: behaviour 52.
    void hymnIsAbsentFromItsOtherCategoryAndPresentByTitle() {
        addCategories({"Praise"});
        addSong({.title = "Old Hymn", .cat1 = "Praise", .cat4 = "Hymns"});
        addSong({.title = "New Song", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"New Song"});
        QTest::keyClicks(w.txtSearch, "old hymn");
        QTest::keyClick(w.txtSearch, Qt::Key_Return);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Old Hymn"});
    }

    // Deliberate: behaviour 52.
    void onlyTheExactWordHymnsHides() {
        addCategories({"Praise", "HYMNS"});
        addSong({.title = "Shout", .cat1 = "Praise", .cat2 = "HYMNS"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Shout"});
    }

    void pictureMarksASongWithASoundFile() {
        addCategories({"Praise"});
        addSong({.title = "Loud", .cat1 = "Praise", .soundFile = "/a.mp3"});
        addSong({.title = "Mute", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QVERIFY(hasPicture(w.fpSongList1, 1));
        QVERIFY(!hasPicture(w.fpSongList1, 2));
    }

    void missingSoundPictureFailsTheSearchThatNeedsIt() {
        addCategories({"Praise", "Prayer"});
        addSong({.title = "A", .cat1 = "Praise"});
        addSong({.title = "B", .cat1 = "Praise", .soundFile = "/a.mp3"});
        addSong({.title = "C", .cat1 = "Praise"});
        addSong({.title = "D", .cat1 = "Prayer"});
        QFile::remove(world->path("config/sound.jpg"));
        frmSetList& w = open();
        pick(w.cmbCat1, "Prayer");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"D"});
        world->answers.runTimeError(RunTimeError::FileNotFound);
        pick(w.cmbCat1, "Praise");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), (QStringList{"A", "B"}));
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 50.
    void clearFollowedByARadioButtonSearchesWithTheFirstCategoryAlone() {
        addCategories({"Praise", "Advent"});
        addSong({.title = "Now", .cat1 = "Praise"});
        addSong({.title = "Past", .cat1 = "Praise", .playlist = "Past"});
        addSong({.title = "Third", .cat1 = "Praise", .playlist = ""});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        pick(w.cmbCat2, "Advent");
        QCOMPARE(w.fpSongList1->MaxRows(), 0);
        world->statements.clear();
        click(w.Command8);
        QVERIFY(world->statements.isEmpty());
        QVERIFY(w.cmbCat2->currentText().isEmpty());
        w.optPlayList[1]->click();
        settle();
        QCOMPARE(world->statements.value(0), oneCategory("Praise"));
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Past"});
        w.optPlayList[0]->click();
        settle();
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Now"});
    }

    void emptyFirstCategoryIsReportedAndTheListStays() {
        addSong({.title = "A"});
        frmSetList& w = open();
        QTest::keyClicks(w.txtSearch, "a");
        click(w.cmdSearchTitle);
        world->answers.box(NoCategory);
        w.optPlayList[1]->click();
        settle();
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"A"});
    }

    // Deliberate: behaviour 51.
    void eachSearchShowsItsOwnLastPlayedDate() {
        addCategories({"Praise"});
        const QString id = addSong({.title = "Song", .cat1 = "Praise"});
        addPlayed(id, {"12/25/01", "06/01/03"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::LastPlayed), QStringList{"12/25/01"});
        world->statements.clear();
        QTest::keyClicks(w.txtSearch, "song");
        click(w.cmdSearchTitle);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::LastPlayed), QStringList{"06/01/03"});
        QCOMPARE(world->statements,
                 (QStringList{"SELECT * FROM SONGS [1]",
                              "SELECT played_date FROM played_on WHERE songID = " + id +
                                  " ORDER BY played_date [1]"}));
    }

    // Deliberate: behaviour 56.
    void listOfDatesShowsTheThirtySmallestWithTheGreatestOnTop() {
        addCategories({"Praise"});
        const QString id = addSong({.title = "Song", .cat1 = "Praise"});
        QStringList dates;
        for (int day = 1; day <= 31; ++day)
            dates.append(QStringLiteral("03/%1/20").arg(day, 2, 10, QLatin1Char('0')));
        dates.append("04/01/20");
        addPlayed(id, dates);
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QString expected;
        for (int i = 29; i >= 0; --i) expected += dates[i] + QLatin1Char('\r');
        world->answers.box(expected, QMessageBox::NoIcon, "Played Date History");
        clickCell(w.fpSongList1, PickerColumn::LastPlayed, 1);
        QCOMPARE(w.selectedSongRow, 1);
    }

    // Deliberate: behaviour 56.
    void singleDateShowsNoBox() {
        addCategories({"Praise"});
        addPlayed(addSong({.title = "Song", .cat1 = "Praise"}), {"03/01/20"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        clickCell(w.fpSongList1, PickerColumn::LastPlayed, 1);
        QCOMPARE(w.selectedSongRow, 1);
    }

    void headClickSortsAscendingAndThenReverses() {
        addCategories({"Praise"});
        addPlayed(addSong({.title = "B", .cat1 = "Praise"}), {"12/25/01"});
        addPlayed(addSong({.title = "A", .cat1 = "Praise"}), {"06/01/03"});
        addSong({.title = "C", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        clickCell(w.fpSongList1, PickerColumn::Title, 0);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), (QStringList{"A", "B", "C"}));
        clickCell(w.fpSongList1, PickerColumn::Title, 0);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), (QStringList{"C", "B", "A"}));
        // The order is kept for another column. Dates are sorted by day, the empty one last.
        clickCell(w.fpSongList1, PickerColumn::LastPlayed, 0);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), (QStringList{"B", "A", "C"}));
        QCOMPARE(w.selectedSongRow, 0);
    }

    void titleSearchWithoutTextDoesNothing() {
        frmSetList& w = open();
        click(w.cmdSearchTitle);
        QVERIFY(world->statements.isEmpty());
    }

    // Deliberate: behaviour 54.
    void titleSearchThatFindsNothingChangesNothing() {
        addSong({.title = "Alpha"});
        frmSetList& w = open();
        QTest::keyClicks(w.txtSearch, "ALPH");
        click(w.cmdSearchTitle);
        w.txtSearch->setText("zzz");
        click(w.cmdSearchTitle);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Alpha"});
    }

    // Deliberate: behaviour 54.
    void titleSearchKeepsTheDateAndPictureOfTheOldFirstRow() {
        addCategories({"Praise"});
        addPlayed(addSong({.title = "Loud", .cat1 = "Praise", .soundFile = "/a.mp3"}),
                  {"10/05/25"});
        addSong({.title = "Quiet", .playlist = "Past"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QTest::keyClicks(w.txtSearch, "quiet");
        click(w.cmdSearchTitle);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Quiet"});
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::LastPlayed), QStringList{"10/05/25"});
        QVERIFY(hasPicture(w.fpSongList1, 1));
    }

    void titleSearchShowsTheDateAsItWasStored() {
        addCategories({"Praise"});
        addPlayed(addSong({.title = "Dated", .cat1 = "Praise"}), {"10/05/25"});
        addPlayed(addSong({.title = "Odd"}), {"Easter 2004"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QTest::keyClicks(w.txtSearch, "odd");
        click(w.cmdSearchTitle);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::LastPlayed), QStringList{"Easter 2004"});
    }

    void headClickOnAnEmptyListStillSorts() {
        frmSetList& w = open();
        clickCell(w.fpSongList1, PickerColumn::Title, 0);
        QCOMPARE(w.fpSongList1->SortKey(1), int(PickerColumn::Title));
        QCOMPARE(w.fpSongList1->SortKeyOrder(1), SortOrder::Ascending);
        QCOMPARE(w.fpSongList1->MaxRows(), 0);
    }

    // Deliberate: behaviour 55.
    void titleSearchFailsAfterASongThatWasNeverPlayed() {
        addPlayed(addSong({.title = "A one"}), {"10/05/25"});
        addSong({.title = "A two"});
        addPlayed(addSong({.title = "A three"}), {"10/05/25"});
        frmSetList& w = open();
        QTest::keyClicks(w.txtSearch, "a t");
        world->answers.runTimeError(RunTimeError::ObjectIsOpen);
        click(w.cmdSearchTitle);
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), (QStringList{"A two", "A three"}));
        QCOMPARE(world->endStatus, -1);
        QVERIFY(w.isVisible());
    }

    void titleSearchIgnoresCaseInEveryScript() {
        addSong({.title = QString::fromUtf8("Ευλόγει, η ψυχή μου")});
        addSong({.title = QString::fromUtf8("주 하나님 지으신")});
        addSong({.title = QString::fromUtf8("Cre\xCC\x81"
                                            "ateur")});
        frmSetList& w = open();
        w.txtSearch->setText(QString::fromUtf8("ΨΥΧΉ"));
        click(w.cmdSearchTitle);
        QCOMPARE(w.fpSongList1->MaxRows(), 1);
        w.txtSearch->setText(QString::fromUtf8("하나님"));
        click(w.cmdSearchTitle);
        QCOMPARE(w.fpSongList1->GetText(PickerColumn::Title, 1),
                 QString::fromUtf8("주 하나님 지으신"));
        w.txtSearch->setText(QString::fromUtf8("CRE\xCC\x81"));
        click(w.cmdSearchTitle);
        QCOMPARE(w.fpSongList1->GetText(PickerColumn::Title, 1), QString::fromUtf8("Cre\xCC\x81"
                                                                                   "ateur"));
    }

    void songMovedToThePastPlaylistLeavesTheList() {
        addCategories({"Praise"});
        addSong({.title = "Keep", .cat1 = "Praise"});
        const QString id = addSong({.title = "Leave", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        world->statements.clear();
        clickCell(w.fpSongList1, PickerColumn::Title, 2, Qt::RightButton);
        QCOMPARE(w.mnuPastPlaylist.text(), QStringLiteral("Move To Past Playlist"));
        QVERIFY(pickMenuItem(w.mnuPlaylistPast, w.mnuPastPlaylist));
        QCOMPARE(world->statements.value(0),
                 "UPDATE songs SET playlist = 'Past' WHERE ID = " + id + " [3]");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Keep"});
        w.optPlayList[1]->click();
        settle();
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"Leave"});
        clickCell(w.fpSongList1, PickerColumn::Title, 1, Qt::RightButton);
        QCOMPARE(w.mnuCurrentPlaylist.text(), QStringLiteral("Move To Current Playlist"));
        QVERIFY(pickMenuItem(w.mnuPlaylistCurrent, w.mnuCurrentPlaylist));
        QCOMPARE(w.fpSongList1->MaxRows(), 0);
    }

    // Deliberate: behaviour 58.
    void songMovedAfterATitleSearchStaysListed() {
        addSong({.title = "Leave"});
        frmSetList& w = open();
        QTest::keyClicks(w.txtSearch, "leave");
        click(w.cmdSearchTitle);
        world->answers.box(NoCategory);
        clickCell(w.fpSongList1, PickerColumn::Title, 1, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuPlaylistPast, w.mnuPastPlaylist));
        QCOMPARE(world->rows("SELECT playlist FROM songs"), QStringList{"Past"});
        QCOMPARE(w.fpSongList1->MaxRows(), 1);
    }

    void categoryWithAnApostropheEndsTheSearchAndTheProgramGoesOn() {
        addCategories({"King's"});
        frmSetList& w = open();
        world->answers.runTimeError(RunTimeError::StatementRefused);
        pick(w.cmbCat1, "King's");
        QCOMPARE(world->endStatus, -1);
        QVERIFY(w.isVisible());
    }

    void playedDateThatIsNotADateEndsTheSearch() {
        addCategories({"Praise"});
        addSong({.title = "A", .cat1 = "Praise"});
        addPlayed(addSong({.title = "B", .cat1 = "Praise"}), {"at Easter"});
        frmSetList& w = open();
        world->answers.runTimeError(RunTimeError::TypeMismatch);
        pick(w.cmbCat1, "Praise");
        QCOMPARE(columnOf(w.fpSongList1, PickerColumn::Title), QStringList{"A"});
    }

    void manyThousandSongsAreListed() {
        addCategories({"Praise"});
        world->sql(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
            "100000) INSERT INTO songs (title, cat1, playlist) SELECT printf('Song "
            "%06d', i), CASE WHEN i % 20 THEN 'Other' ELSE 'Praise' END, 'Current' FROM n");
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        QCOMPARE(w.fpSongList1->MaxRows(), 5000);
        QCOMPARE(w.fpSongList1->GetText(PickerColumn::Title, 5000), QStringLiteral("Song 100000"));
    }
};

LORVANITE_TEST(TestSongPicker)
#include "test_song_picker.moc"
