// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The grid of a set, and its design.
#include "sets/set_list_test.h"

#include <QFile>
#include <QHelpEvent>
#include <QToolTip>

class TestSetGrid : public SetListTest {
    Q_OBJECT

    // Opens the window with a song with sheet music and one without in the list.
    frmSetList& openWithTwoSongs() {
        addCategories({"Praise"});
        addSong({.title = "Charted", .cat1 = "Praise", .fileLoco = "/charts/a.stp"});
        addSong({.title = "Plain", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        world->statements.clear();
        return w;
    }

    int colourOf(frmSetList& w, int col, int row) {
        return w.fpSet->formatAt(1, col, row).backColor;
    }

    void pickDesign(frmSetList& w, QAction& item) {
        click(w.Command6);
        QVERIFY(pickMenuItem(w.mnuSetD, item));
    }

private Q_SLOTS:
    void newSetHasADateRowAndTwentyFiveRows() {
        frmSetList& w = open();
        QCOMPARE(w.fpSet->MaxRows(), 25);
        QCOMPARE(w.fpSet->MaxCols(), 2);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, SetRow::Date), QStringLiteral("Set List For:"));
        QCOMPARE(w.fpSet->formatAt(1, SetColumn::Title, SetRow::Date).kind, CellKind::Date);
        QCOMPARE(w.fpSet->ColWidth(SetColumn::Label), 19.25);
        QCOMPARE(w.fpSet->ColWidth(SetColumn::Title), 32.88);
        QCOMPARE(w.fpSet->ActiveRow(), 0);
    }

    void windowOpensWithTheDefaultDesign() {
        makeDefaultDesign({"Opening", "Offering"});
        frmSetList& w = open();
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 3), QStringLiteral("Offering"));
    }

    // Deliberate: behaviour 64.
    void damagedDefaultDesignIsIgnored() {
        const QString path = makeDefaultDesign({"Opening"});
        QFile file(path);
        QVERIFY(file.resize(file.size() / 2));
        frmSetList& w = open();
        QCOMPARE(w.fpSet->MaxRows(), 25);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, SetRow::Date), QStringLiteral("Set List For:"));
    }

    // Deliberate: behaviour 59.
    void clickedSongIsPlacedByTheNextClickInTheSet() {
        frmSetList& w = openWithTwoSongs();
        const QString id = w.fpSongList1->GetText(PickerColumn::ID, 1);
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        QVERIFY(world->statements.isEmpty());
        clickCell(w.fpSet, SetColumn::Label, 3);
        QCOMPARE(world->statements,
                 QStringList{"SELECT fileLoco FROM songs WHERE ID = " + id + " [1]"});
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 3), QStringLiteral("Charted"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 3), QString());
        QCOMPARE(colourOf(w, SetColumn::Title, 3), RGB(180, 255, 180));
        QCOMPARE(w.clickedSetRow, 3);
        QCOMPARE(w.selectedSongRow, 0);
    }

    void secondClickInTheSetPlacesNothing() {
        frmSetList& w = openWithTwoSongs();
        clickCell(w.fpSongList1, PickerColumn::Title, 2);
        clickCell(w.fpSet, SetColumn::Title, 3);
        clickCell(w.fpSet, SetColumn::Title, 4);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 3), QStringLiteral("Plain"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 4), QString());
        QCOMPARE(colourOf(w, SetColumn::Title, 3), White);
    }

    // Deliberate: behaviour 60.
    void songPlacedOverATitleLeavesTheCellGreen() {
        frmSetList& w = openWithTwoSongs();
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        clickCell(w.fpSet, SetColumn::Title, 3);
        clickCell(w.fpSongList1, PickerColumn::Title, 2);
        clickCell(w.fpSet, SetColumn::Title, 3);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 3), QStringLiteral("Plain"));
        QCOMPARE(colourOf(w, SetColumn::Title, 3), SheetMusicGreen);
    }

    // Deliberate: behaviour 59.
    void clickOnAHeadWritesTheTitleIntoTheHeadOfTheTitles() {
        frmSetList& w = openWithTwoSongs();
        clickCell(w.fpSongList1, PickerColumn::Title, 2);
        clickCell(w.fpSet, SetColumn::Label, 0);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 0), QStringLiteral("Plain"));
        QCOMPARE(w.fpSet->MaxRows(), 25);
    }

    // Deliberate: behaviour 59.
    void titlePlacedInTheDateCellLeavesTheDate() {
        frmSetList& w = openWithTwoSongs();
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        clickCell(w.fpSongList1, PickerColumn::Title, 2);
        clickCell(w.fpSet, SetColumn::Title, SetRow::Date);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, SetRow::Date), QStringLiteral("11/22/26"));
        QCOMPARE(w.selectedSongRow, 0);
    }

    void songCanBePlacedWithTheKeyboard() {
        frmSetList& w = openWithTwoSongs();
        w.fpSongList1->setFocus();
        w.fpSongList1->SetActiveCell(PickerColumn::Title, 2);
        w.fpSongList1->flush();
        QTest::keyClick(w.fpSongList1, Qt::Key_Return);
        w.fpSet->setFocus();
        w.fpSet->SetActiveCell(SetColumn::Title, 5);
        w.fpSet->flush();
        QTest::keyClick(w.fpSet, Qt::Key_Return, Qt::ControlModifier);
        settle();
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 5), QStringLiteral("Plain"));
    }

    void deletedSongEndsTheCommandOnly() {
        frmSetList& w = openWithTwoSongs();
        clickCell(w.fpSongList1, PickerColumn::Title, 2);
        world->sql("DELETE FROM songs");
        world->answers.runTimeError(RunTimeError::NoCurrentRecord);
        clickCell(w.fpSet, SetColumn::Title, 4);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 4), QStringLiteral("Plain"));
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 61.
    void dateCellShowsTheSpecialMusicOfTheDate() {
        world->sql(
            "INSERT INTO special_music (song_name, play_date) VALUES "
            "('Offertory: Solo, A. Rivera', '11/22/26'), ('Duet', '11/22/26'), "
            "('Other', '11/29/26')");
        frmSetList& w = open();
        world->answers.box(
            "Special Music Scheduled For This Date\r Offertory: Solo, A. Rivera Duet",
            QMessageBox::Information);
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        QCOMPARE(
            world->statements,
            QStringList{"SELECT song_name FROM special_music WHERE play_date = '11/22/26' [1]"});
        QCOMPARE(w.lblSpecialMusic->text(), QStringLiteral("Special Music:  Solo, A. Rivera Duet"));
        world->answers.box("Special Music Scheduled For This Date\r Other",
                           QMessageBox::Information);
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/29/26");
        QCOMPARE(w.lblSpecialMusic->text(), QStringLiteral("Special Music:  Other"));
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "12/06/26");
        QCOMPARE(w.lblSpecialMusic->text(), QString());
    }

    void changeOfAnotherCellRunsNoStatement() {
        frmSetList& w = open();
        click(w.Command9);  // takes the label of the date away
        world->statements.clear();
        typeInCell(w.fpSet, SetColumn::Label, SetRow::Date, "Set");
        typeInCell(w.fpSet, SetColumn::Title, 2, "Typed");
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Typed"));
    }

    void deleteTextRemovesTitleAndGreen() {
        frmSetList& w = openWithTwoSongs();
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        clickCell(w.fpSet, SetColumn::Title, 3);
        clickCell(w.fpSet, SetColumn::Title, 3, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuDel, w.mnuDeleteFPSet));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 3), QString());
        QCOMPARE(colourOf(w, SetColumn::Title, 3), White);
    }

    void deleteTextOnAnEmptyWhiteCellChangesNothing() {
        frmSetList& w = open();
        const QString before = world->path("before.set");
        const QString after = world->path("after.set");
        QVERIFY(w.fpSet->SaveToFile(before, false));
        clickCell(w.fpSet, SetColumn::Title, 4, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuDel, w.mnuDeleteFPSet));
        QVERIFY(w.fpSet->SaveToFile(after, false));
        QFile a(before);
        QFile b(after);
        QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
        QCOMPARE(a.readAll(), b.readAll());
    }

    // Deliberate: behaviour 62.
    void rowsAreAddedAboveTheActiveOneAndDeleted() {
        makeDefaultDesign({"Opening", "Offering"});
        frmSetList& w = open();
        clickCell(w.fpSet, SetColumn::Label, 3, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuDel, w.mnuAddRow));
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 3), QString());
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 4), QStringLiteral("Offering"));
        // Row 1 can be deleted too.
        clickCell(w.fpSet, SetColumn::Label, SetRow::Date, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuDel, w.mnuDeleteRow));
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, SetRow::Date), QStringLiteral("Opening"));
        QCOMPARE(w.fpSet->MaxRows(), 25);
    }

    void addedRowKeepsALastRowInUse() {
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Title, 25, "Last");
        const auto addRow = [&](int row) {
            w.fpSet->SetActiveCell(SetColumn::Label, row);
            w.fpSet->flush();
            clickCell(w.fpSet, SetColumn::Label, row, Qt::RightButton);
            QVERIFY(pickMenuItem(w.mnuDel, w.mnuAddRow));
        };
        addRow(3);
        QCOMPARE(w.fpSet->MaxRows(), 26);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 26), QStringLiteral("Last"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 25), QString());
        addRow(26);
        QCOMPARE(w.fpSet->MaxRows(), 27);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 27), QStringLiteral("Last"));
        // An empty row at the end makes room.
        typeInCell(w.fpSet, SetColumn::Title, 27, QString());
        addRow(3);
        QCOMPARE(w.fpSet->MaxRows(), 27);
        // A colour is in use too.
        paint(*w.fpSet, 27);
        addRow(3);
        QCOMPARE(w.fpSet->MaxRows(), 28);
        QCOMPARE(colourOf(w, SetColumn::Title, 28), SheetMusicGreen);
    }

    void labelOfTheDateCannotBeTypedOver() {
        makeDefaultDesign({"Opening"});
        frmSetList& w = open();
        tryToChange(w.fpSet, SetColumn::Label, SetRow::Date);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, SetRow::Date), QStringLiteral("Set List For:"));
        tryToChange(w.fpSet, SetColumn::Label, SetRow::FirstTitle);
        QVERIFY(w.fpSet->GetText(SetColumn::Label, SetRow::FirstTitle) != "Opening");
        // A design of one's own begins with an empty grid.
        world->sql("UPDATE prefs SET var_value = '' WHERE var_name = 'DefaultSetList'");
        click(w.Command9);
        typeInCell(w.fpSet, SetColumn::Label, SetRow::Date, "Sunday");
        typeInCell(w.fpSet, SetColumn::Label, SetRow::Date, "Set List For:");
        tryToChange(w.fpSet, SetColumn::Label, SetRow::Date);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, SetRow::Date), QStringLiteral("Set List For:"));
    }

    void headsOfTheSetSurviveDeleteText() {
        frmSetList& w = open();
        clickCell(w.fpSet, SetColumn::Title, 0, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuDel, w.mnuDeleteFPSet));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 0), QStringLiteral("Song"));
    }

    void longTextsLeaveTheWindowAsItIs() {
        const QString name = QStringLiteral("Überlange ").repeated(20);
        addCategories({name, QString(200, QLatin1Char('W'))});
        world->sql(QStringLiteral("INSERT INTO special_music (song_name, play_date) VALUES ('%1', "
                                  "'11/22/26')")
                       .arg(name));
        addSong({.title = QString(200, QLatin1Char('W')), .cat1 = name, .soundFile = "/none.ogg"});
        const auto places = [](frmSetList& w) {
            QList<QRect> rects{w.parentWidget()->rect()};
            for (QWidget* control :
                 std::initializer_list<QWidget*>{w.cmbCat1, w.cmbCat2, w.txtSearch, w.fpSongList1,
                                                 w.fpSet, w.cmdSaveSetList, w.Command3})
                rects.append(QRect(control->mapTo(&w, QPoint()), control->size()));
            return rects;
        };
        frmSetList& w = open();
        world->main().resize(1280, 800);
        settle();
        w.cmbCat1->clear();
        w.cmbCat2->clear();
        settle();
        const QList<QRect> before = places(w);
        w.loadCategoryCombos(QStringLiteral("list"));
        pick(w.cmbCat1, name);
        QCOMPARE(w.fpSongList1->MaxRows(), 1);
        world->answers.box("Special Music Scheduled For This Date\r " + name,
                           QMessageBox::Information);
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        QCOMPARE(places(w), before);
        QVERIFY(w.lblSpecialMusic->shownText().endsWith(QChar(0x2026)));
        // The whole text is the tool tip.
        const QPoint middle = w.lblSpecialMusic->rect().center();
        QHelpEvent help(QEvent::ToolTip, middle, w.lblSpecialMusic->mapToGlobal(middle));
        QCoreApplication::sendEvent(w.lblSpecialMusic, &help);
        QVERIFY(QToolTip::text().contains(name));
        clickCell(w.fpSongList1, PickerColumn::Sound, 1);
        QVERIFY(w.picPlayer->isVisible());
        QCOMPARE(w.parentWidget()->rect(), before.first());
        QVERIFY(w.rect().contains(QRect(w.imgClose->mapTo(&w, QPoint()), w.imgClose->size())));
        QVERIFY(w.lblPlayTitle->shownText().endsWith(QChar(0x2026)));
        click(w.imgClose);
    }

    void designIsSavedWithItsExtensionAndLoaded() {
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Label, 2, "Opening");
        world->answers.file(world->path("set designs/Mine"));
        pickDesign(w, w.mnuSaveDesign);
        QCOMPARE(world->answers.fileDialogs().back().folder, world->path("set designs"));
        QCOMPARE(world->answers.fileDialogs().back().filters, QStringList{"SDL Files (*.sdl)"});
        QVERIFY(QFile::exists(world->path("set designs/Mine.sdl")));
        typeInCell(w.fpSet, SetColumn::Label, 2, "Changed");
        world->answers.file(world->path("set designs/Mine.sdl"));
        pickDesign(w, w.mnuLoadDesign);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 2), QStringLiteral("Opening"));
    }

    void designThatCannotBeWrittenIsReported() {
        frmSetList& w = open();
        world->answers.file(QStringLiteral("/proc/Mine.sdl"));
        world->answers.box("File did not save, try again or contact Lorvanite.",
                           QMessageBox::Information);
        pickDesign(w, w.mnuSaveDesign);
        QVERIFY(world->answers.isEmpty());
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 61.
    void specialMusicStaysUntilTheDateIsTyped() {
        world->sql("INSERT INTO special_music (song_name, play_date) VALUES ('Duet', '11/22/26')");
        frmSetList& w = open();
        world->answers.box("Special Music Scheduled For This Date\r Duet",
                           QMessageBox::Information);
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        click(w.Command9);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, SetRow::Date), QString());
        QCOMPARE(w.lblSpecialMusic->text(), QStringLiteral("Special Music:  Duet"));
    }

    void savingOverADesignAsksNothing() {
        makeDefaultDesign({"Opening"});
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Label, 2, "Second");
        world->answers.file(world->path("set designs/Usual.sdl"));
        pickDesign(w, w.mnuSaveDesign);
        SheetGrid read;
        QVERIFY(read.LoadFromFile(world->path("set designs/Usual.sdl")));
        QCOMPARE(read.GetText(SetColumn::Label, 2), QStringLiteral("Second"));
    }

    void cancelledDesignDialogChangesNothing() {
        makeDefaultDesign({"Opening"});
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Title, 2, "Typed");
        for (QAction* item : {&w.mnuSaveDesign, &w.mnuLoadDesign, &w.mnuSetDefault}) {
            world->answers.cancelFile();
            pickDesign(w, *item);
            QVERIFY(world->answers.isEmpty());
        }
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Typed"));
        QVERIFY(world->statements.isEmpty());
    }

    // Deliberate: behaviours 60 and 63.
    void clearedDesignKeepsTheDateRowAndTheGreen() {
        frmSetList& w = openWithTwoSongs();
        typeInCell(w.fpSet, SetColumn::Label, 4, "Opening");
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        clickCell(w.fpSet, SetColumn::Title, 3);
        pickDesign(w, w.mnuClearDesign);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, SetRow::Date), QStringLiteral("Set List For:"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 4), QString());
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 3), QString());
        QCOMPARE(colourOf(w, SetColumn::Title, 3), SheetMusicGreen);
    }

    void defaultDesignIsStoredByItsPathAndShown() {
        const QString path = makeDefaultDesign({"Opening"});
        world->sql("UPDATE prefs SET var_value = '' WHERE var_name = 'DefaultSetList'");
        frmSetList& w = open();
        world->answers.file(path);
        pickDesign(w, w.mnuSetDefault);
        QCOMPARE(world->statements, QStringList{"UPDATE prefs SET var_value = '" + path +
                                                "' WHERE var_name = 'DefaultSetList' [3]"});
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 2), QStringLiteral("Opening"));
    }

    void defaultDesignWithAnApostropheInItsPathIsRefused() {
        const QString path = world->path("set designs/King's.sdl");
        QVERIFY(QFile::copy(makeDefaultDesign({"Opening"}), path));
        world->sql("UPDATE prefs SET var_value = '' WHERE var_name = 'DefaultSetList'");
        frmSetList& w = open();
        world->answers.file(path);
        world->answers.runTimeError(RunTimeError::StatementRefused);
        pickDesign(w, w.mnuSetDefault);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 2), QString());
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 63.
    void clearSetWithoutADesignLeavesAnEmptyGridWithADateCell() {
        frmSetList& w = openWithTwoSongs();
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        clickCell(w.fpSet, SetColumn::Title, 3);
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        world->statements.clear();
        click(w.Command9);
        QCOMPARE(world->statements,
                 QStringList{"SELECT * FROM prefs WHERE var_name = 'DefaultSetList' [1]"});
        QCOMPARE(w.fpSet->MaxRows(), 50);
        QCOMPARE(w.fpSet->DataRowCnt(), 0);
        QCOMPARE(colourOf(w, SetColumn::Title, 3), White);
        QCOMPARE(w.fpSet->formatAt(1, SetColumn::Title, SetRow::Date).kind, CellKind::Date);
        QCOMPARE(w.fpSet->formatAt(1, SetColumn::Title, 2).kind, CellKind::Edit);
        QCOMPARE(w.fpSet->ColWidth(SetColumn::Label), 22.63);
        QCOMPARE(w.fpSet->ColWidth(SetColumn::Title), 32.88);
        QCOMPARE(w.clickedSetRow, 3);
    }

    // Deliberate: behaviour 63.
    void clearSetLoadsTheDefaultDesignWithAWhiteLeftColumn() {
        SheetGrid design;
        design.MaxCols(SetColumn::Title);
        design.MaxRows(30);
        design.SetText(SetColumn::Label, 2, QStringLiteral("Opening"));
        design.Col(SetColumn::Label);
        design.Row(2);
        design.BackColor(RGB(255, 0, 0));
        design.Col(SetColumn::Title);
        design.BackColor(RGB(0, 0, 255));
        const QString path = makeDefaultDesign({});
        QVERIFY(design.SaveToFile(path, false));
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Title, 2, "Typed");
        click(w.Command9);
        QCOMPARE(w.fpSet->MaxRows(), 30);
        QCOMPARE(w.fpSet->GetText(SetColumn::Label, 2), QStringLiteral("Opening"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QString());
        QCOMPARE(colourOf(w, SetColumn::Label, 2), White);
        QCOMPARE(colourOf(w, SetColumn::Title, 2), RGB(0, 0, 255));
        QVERIFY(!w.fpSet->BlockMode());
    }

    void peopleWhoServeOnTheDateAreShown() {
        world->sql(
            "INSERT INTO schedule (player, instrument, pdate) VALUES "
            "('Ann Lee', 'Piano', '11/22/26'), ('Bo Fox', 'Bass', '11/22/26'), "
            "('Cy Orr', 'Drums', '11/29/26')");
        frmSetList& w = open();
        world->answers.box("Please select a date in order to view personell for that date.",
                           QMessageBox::Information);
        click(w.cmdPersonellAvail);
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "11/22/26");
        world->statements.clear();
        world->answers.box("Personell For 11/22/26\r\rPiano : Ann Lee\rBass : Bo Fox\r\r",
                           QMessageBox::Information, "Personell");
        click(w.cmdPersonellAvail);
        QCOMPARE(world->statements,
                 QStringList{"SELECT player, instrument FROM schedule WHERE pdate = '11/22/26' "
                             "[1]"});
    }

    void missingPreferenceIsReportedAndTheWindowStaysOpen() {
        world->sql("DELETE FROM prefs WHERE var_name = 'DefaultSetList'");
        world->answers.runTimeError(RunTimeError::NoCurrentRecord);
        frmSetList& w = open();
        QVERIFY(w.isVisible());
        QCOMPARE(world->endStatus, -1);
    }

    // Deliberate: behaviour 65.
    void reopenedWindowHasANewSet() {
        frmSetList& w = open();
        typeInCell(w.fpSet, SetColumn::Title, 2, "Typed");
        w.Unload();
        settle();
        QVERIFY(!frmSetList::isLoaded());
        QCOMPARE(open().fpSet->GetText(SetColumn::Title, 2), QString());
    }
};

LORVANITE_TEST(TestSetGrid)
#include "test_set_grid.moc"
