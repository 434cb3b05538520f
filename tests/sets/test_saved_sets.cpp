// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Saving a set, recording what was played, loading a set.
#include "sets/saved_set_test.h"

#include <QFile>

#include <csignal>
#include <sys/resource.h>

namespace {

const QString Question = QStringLiteral(
    "Do you wish to set the Last Played field \rfor the selected songs to the date you've "
    "selected?");

}  // namespace

class TestSavedSets : public SavedSetTest {
    Q_OBJECT

    void save(frmSetList& w, QMessageBox::StandardButton answer, const QString& file) {
        world->answers.question(Question, answer);
        world->answers.file(world->path("saved sets/" + file));
        click(w.cmdSaveSetList);
    }

private Q_SLOTS:
    void saveRunsItsStatementsInOrderAndWritesTheFile() {
        addSong({.title = "Alpha"});
        addSong({.title = "Beta"});
        frmSetList& w = openWith("11/22/26", {"Alpha", "Beta"});
        world->answers.question(Question, QMessageBox::Yes);
        world->answers.fileAsProposed();
        click(w.cmdSaveSetList);
        QCOMPARE(world->statements, recordStatements("11/22/26", {"Alpha", "Beta"}));
        const auto& dialog = world->answers.fileDialogs().back();
        QCOMPARE(dialog.proposed, QStringLiteral("Set For 11_22_26"));
        QCOMPARE(dialog.folder, world->path("saved sets"));
        QCOMPARE(dialog.filters, QStringList{"SET Files (*.set)"});
        QVERIFY(dialog.saves);
        SheetGrid read;
        QVERIFY(read.LoadFromFile(world->path("saved sets/Set For 11_22_26.set")));
        QCOMPARE(read.GetText(SetColumn::Title, SetRow::Date), QStringLiteral("11/22/26"));
        QCOMPARE(read.GetText(SetColumn::Title, 3), QStringLiteral("Beta"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 3), QStringLiteral("Beta"));
    }

    void setWithoutADateIsRefused() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("", {"Alpha"});
        world->answers.box("Please select a date for this set.");
        click(w.cmdSaveSetList);
        QVERIFY(world->statements.isEmpty());
    }

    void setWithoutAKnownSongIsRefused() {
        frmSetList& w = openWith("11/22/26", {"Typed by hand"});
        world->answers.box("Please select at least one song before saving the set list.");
        click(w.cmdSaveSetList);
        QVERIFY(record().isEmpty());
    }

    void firstSetOfANewDatabaseCanBeSaved() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        QCOMPARE(world->rows("SELECT count(*) FROM played_on"), QStringList{"0"});
        save(w, QMessageBox::Yes, "a.set");
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
    }

    void sameTitleInTwoRowsIsRecordedOnce() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha", "Alpha"});
        save(w, QMessageBox::Yes, "a.set");
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
    }

    // Deliberate: behaviour 67.
    void titleThatIsPartOfAnEarlierOneIsNotRecorded() {
        addSong({.title = "Holy, Holy, Holy"});
        addSong({.title = "Holy"});
        addSong({.title = "holy"});
        frmSetList& w = openWith("11/22/26", {"Holy, Holy, Holy", "Holy"});
        save(w, QMessageBox::Yes, "a.set");
        QCOMPARE(record(), QStringList{"Holy, Holy, Holy|11/22/26|1"});
        w.fpSet->SetText(SetColumn::Title, 2, QStringLiteral("Holy"));
        w.fpSet->SetText(SetColumn::Title, 3, QStringLiteral("Holy, Holy, Holy"));
        save(w, QMessageBox::Yes, "b.set");
        QCOMPARE(record(), (QStringList{"Holy|11/22/26|2", "Holy, Holy, Holy|11/22/26|1"}));
    }

    // Deliberate: behaviour 70.
    void typedTitleIsRecordedUnderTheSongBeforeIt() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Prelude", "Alpha", "Reading"});
        save(w, QMessageBox::Yes, "a.set");
        QCOMPARE(record(), (QStringList{"Alpha|11/22/26|1", "Reading|11/22/26|1"}));
    }

    // Deliberate: behaviour 69.
    void newSetReplacesTheRecordOfItsDateOnly() {
        addSong({.title = "Alpha"});
        world->sql(
            "INSERT INTO played_on (title, played_date, songID) VALUES "
            "('Gone', '11/22/26', 7), ('Kept', '11/15/26', 7)");
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        save(w, QMessageBox::Yes, "a.set");
        QCOMPARE(record(), (QStringList{"Kept|11/15/26|7", "Alpha|11/22/26|1"}));
    }

    // Deliberate: behaviour 68.
    void setOfTwentyThreeRecordedTitlesAsksNothingAndIsSaved() {
        const QStringList titles = addSongs(23);
        for (int i = 1; i <= 23; ++i) addPlayed(QString::number(i), {"11/22/26"});
        const QStringList before = record();
        frmSetList& w = openWith("11/22/26", titles);
        world->answers.file(world->path("saved sets/full.set"));
        click(w.cmdSaveSetList);
        QCOMPARE(record(), before);
        QCOMPARE(world->statements.back(), QStringLiteral("SELECT * FROM played_on [1]"));
        QVERIFY(QFile::exists(world->path("saved sets/full.set")));
    }

    // Deliberate: behaviour 68.
    void setOfTwentyTwoRecordedTitlesAsks() {
        const QStringList titles = addSongs(22);
        for (int i = 1; i <= 22; ++i) addPlayed(QString::number(i), {"11/22/26"});
        frmSetList& w = openWith("11/22/26", titles);
        save(w, QMessageBox::No, "a.set");
    }

    // Deliberate: behaviour 66.
    void twentyFourthTitleEndsTheCommandBeforeAnythingIsWritten() {
        const QStringList titles = addSongs(24);
        frmSetList& w = openWith("11/22/26", titles);
        world->answers.runTimeError(RunTimeError::SubscriptOutOfRange,
                                    "Subscript out of range: a set has 23 titles at most");
        click(w.cmdSaveSetList);
        QVERIFY(record().isEmpty());
        QCOMPARE(world->endStatus, -1);
        QVERIFY(w.isVisible());
    }

    void setDatedWithTenCharactersIsSavedWithoutAProposedName() {
        addSong({.title = "Alpha"});
        // In this design the cell of the date is not a date cell.
        SheetGrid design;
        design.MaxCols(SetColumn::Title);
        design.MaxRows(25);
        const QString path = makeDefaultDesign({});
        QVERIFY(design.SaveToFile(path, false));
        frmSetList& w = openWith("11/22/2026", {"Alpha"});
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, SetRow::Date), QStringLiteral("11/22/2026"));
        save(w, QMessageBox::Yes, "long.set");
        QCOMPARE(world->answers.fileDialogs().back().proposed, QString());
        QCOMPARE(record(), QStringList{"Alpha|11/22/2026|1"});
        QVERIFY(QFile::exists(world->path("saved sets/long.set")));
        // A date of seven characters proposes a name too.
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "1/05/03");
        save(w, QMessageBox::No, "short.set");
        QCOMPARE(world->answers.fileDialogs().back().proposed, QStringLiteral("Set For 1_05_03"));
    }

    // Deliberate: behaviour 66.
    void rowsBeyondTwentyFiveAreSavedButNotRecorded() {
        addSong({.title = "Alpha"});
        addSong({.title = "Beta"});
        frmSetList& w = open();
        click(w.Command9);
        fill(w, "11/22/26", {"Alpha"});
        w.fpSet->SetText(SetColumn::Title, 26, QStringLiteral("Beta"));
        save(w, QMessageBox::Yes, "a.set");
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
        SheetGrid read;
        QVERIFY(read.LoadFromFile(world->path("saved sets/a.set")));
        QCOMPARE(read.GetText(SetColumn::Title, 26), QStringLiteral("Beta"));
        QCOMPARE(read.MaxRows(), 50);
    }

    void answeringNoSavesTheFileOnly() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        save(w, QMessageBox::No, "a.set");
        QVERIFY(record().isEmpty());
        QVERIFY(QFile::exists(world->path("saved sets/a.set")));
    }

    // Deliberate: behaviour 71.
    void cancelledDialogKeepsTheRecord() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.question(Question, QMessageBox::Yes);
        world->answers.cancelFile();
        click(w.cmdSaveSetList);
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
        QVERIFY(QDir(world->path("saved sets")).entryList({"*.set"}).isEmpty());
    }

    void savedSetAlwaysEndsInSet() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        save(w, QMessageBox::No, "Set For 11.22.26");
        QVERIFY(QFile::exists(world->path("saved sets/Set For 11.22.26.set")));
    }

    void existingSetIsReplacedOnlyIfConfirmed() {
        addSong({.title = "Alpha"});
        QFile old(world->path("saved sets/a.set"));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("old");
        old.close();
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.question(Question, QMessageBox::No);
        // The name has no extension, but the question is about the complete name.
        world->answers.file(world->path("saved sets/a"));
        world->answers.custom("overwrite question", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::No),
                              Qt::LeftButton);
        });
        world->answers.cancelFile();
        click(w.cmdSaveSetList);
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), QByteArray("old"));
    }

    void apostropheInATitleEndsTheCommandBeforeAnythingIsWritten() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha", "King's"});
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.cmdSaveSetList);
        QVERIFY(record().isEmpty());
        QCOMPARE(world->endStatus, -1);
    }

    void titlesOfEveryScriptAreRecordedAndSaved() {
        const QStringList titles = {QString::fromUtf8("Ευλόγει"), QString::fromUtf8("주 하나님"),
                                    QString::fromUtf8("Cre\xCC\x81"
                                                      "ateur")};
        for (const QString& title : titles) addSong({.title = title});
        frmSetList& w = openWith("11/22/26", titles);
        save(w, QMessageBox::Yes, QString::fromUtf8("주일.set"));
        QCOMPARE(world->rows("SELECT title FROM played_on ORDER BY ID"), titles);
        SheetGrid read;
        QVERIFY(read.LoadFromFile(world->path(QString::fromUtf8("saved sets/주일.set"))));
        QCOMPARE(read.GetText(SetColumn::Title, 4), titles[2]);
    }

    // Deliberate: behaviour 71.
    void fullDiskLeavesTheOldFileIntact() {
        addSong({.title = "Alpha"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        save(w, QMessageBox::No, "a.set");
        QFile file(world->path("saved sets/a.set"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll();
        file.close();
        w.fpSet->SetText(SetColumn::Title, 2, QString(QLatin1Char('x')).repeated(200000));
        w.fpSet->SetText(SetColumn::Title, 3, QStringLiteral("Alpha"));
        world->answers.question(Question, QMessageBox::No);
        world->answers.file(world->path("saved sets/a.set"));
        world->answers.custom("overwrite question", [](QWidget* box) {
            // From now on no file can grow beyond 64 KiB, as on a full disk.
            std::signal(SIGXFSZ, SIG_IGN);
            rlimit limit{65536, RLIM_INFINITY};
            setrlimit(RLIMIT_FSIZE, &limit);
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes),
                              Qt::LeftButton);
        });
        click(w.cmdSaveSetList);
        rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &unlimited);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), before);
        QCOMPARE(QDir(world->path("saved sets")).entryList(QDir::Files).size(), 1);
    }

    void loadedSetHasItsTitlesItsColoursAndADateCell() {
        frmSetList& w = open();
        makeGreenSet("saved sets/a.set", "10/05/03", 40, "Last");
        world->answers.file(world->path("saved sets/a.set"));
        click(w.Command13);
        QCOMPARE(world->answers.fileDialogs().back().folder, world->path("saved sets"));
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(w.fpSet->MaxRows(), 40);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 40), QStringLiteral("Last"));
        QCOMPARE(w.fpSet->formatAt(1, SetColumn::Title, 40).backColor, SheetMusicGreen);
        QCOMPARE(w.fpSet->formatAt(1, SetColumn::Title, SetRow::Date).kind, CellKind::Date);
        QCOMPARE(w.fpSet->ColWidth(SetColumn::Label), 22.63);
        QCOMPARE(w.fpSet->ColWidth(SetColumn::Title), 32.88);
    }

    void cancelledLoadLeavesTheSetUnchanged() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.cancelFile();
        click(w.Command13);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
        QCOMPARE(w.fpSet->ColWidth(SetColumn::Label), 19.25);
    }

    // Deliberate: behaviour 64.
    void damagedSetLeavesTheGridUnchanged() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        QFile file(world->path("saved sets/bad.set"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"format\":");
        file.close();
        world->answers.file(file.fileName());
        click(w.Command13);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
    }

    void movedProgramFolderStillFindsItsSetsAndDesigns() {
        addSong({.title = "Alpha", .fileLoco = "/old/place/sheetmusic/Alpha.stp"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        save(w, QMessageBox::No, "a.set");
        world->move();
        frmSetList& moved = open();
        world->answers.file(QStringLiteral("a.set"));
        click(moved.Command13);
        QCOMPARE(world->answers.fileDialogs().back().folder, world->path("saved sets"));
        QCOMPARE(moved.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
        // The path of the chart still leads to the old folder.
        QCOMPARE(world->rows("SELECT fileLoco FROM songs"),
                 QStringList{"/old/place/sheetmusic/Alpha.stp"});
    }

    // Deliberate: behaviour 72.
    void newDatesAreShownByTheNextSearch() {
        addCategories({"Praise"});
        addSong({.title = "Alpha", .cat1 = "Praise"});
        frmSetList& w = open();
        pick(w.cmbCat1, "Praise");
        fill(w, "11/22/26", {"Alpha"});
        save(w, QMessageBox::Yes, "a.set");
        QCOMPARE(w.fpSongList1->GetText(PickerColumn::LastPlayed, 1), QString());
        w.optPlayList[0]->click();
        settle();
        QCOMPARE(w.fpSongList1->GetText(PickerColumn::LastPlayed, 1), QStringLiteral("11/22/26"));
    }
};

LORVANITE_TEST(TestSavedSets)
#include "test_saved_sets.moc"
