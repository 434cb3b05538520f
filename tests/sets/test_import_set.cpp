// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Import Sets: recording sets from elsewhere and copying them to the saved sets.
#include "sets/frm_import_set.h"
#include "sets/saved_set_test.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <sys/resource.h>

namespace {

QString noDate(const QString& name) {
    return QStringLiteral(
               "The file%1 does not have a date associated with it.\rPlease open the file with the "
               "Set List module, assign a date and save it there.")
        .arg(name);
}

QString noSongs(const QString& name) {
    return QStringLiteral(
               "The file%1 does not have any songs assigned to it.\rPlease open the file with the "
               "Set List module, assign at least one song and save it there.")
        .arg(name);
}

}  // namespace

class TestImportSet : public SavedSetTest {
    Q_OBJECT

    frmImportSet& open() {
        if (!world->isRunning()) world->start();
        click(world->main().Command10);
        pickMenuItem(world->main().mnuUtilities, world->main().mnuImportSet);
        world->statements.clear();
        return frmImportSet::instance();
    }

    // Opens the window in a folder "other".
    frmImportSet& openOther() {
        QDir().mkpath(world->path("other"));
        frmImportSet& w = open();
        w.browser->Path(world->path("other"));
        return w;
    }

    // Selects these files, the first with a click, the others with Ctrl and a click.
    static void select(frmImportSet& w, const QStringList& names) {
        for (const QString& name : names)
            clickFile(w.File1, name, name == names.front() ? Qt::NoModifier : Qt::ControlModifier);
        QCOMPARE(w.File1->selectedItems().size(), names.size());
    }

    void done() { world->answers.box("Done!", QMessageBox::Information); }

    QStringList savedSets() {
        return QDir(world->path("saved sets")).entryList(QDir::Files, QDir::Name);
    }

private Q_SLOTS:
    void windowShowsTheSavedSets() {
        makeSet("saved sets/a.set", "11/22/26", {"Alpha"});
        frmImportSet& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("Import Sets"));
        QCOMPARE(
            w.Label2->text(),
            QStringLiteral("Use this utility to import set lists from other sources and update "
                           "your database, marking the songs played. Select the songs below "
                           "then click, Import."));
        QCOMPARE(w.Label1->text(), QStringLiteral("<= Ctrl Click to select multiple."));
        QCOMPARE(w.browser->Path(), world->path("saved sets"));
        QCOMPARE(filesOf(w.File1), QStringList{"a.set"});
        QVERIFY(w.File1->selectedItems().isEmpty());
        QCOMPARE(w.fpSet->MaxCols(), 2);
    }

    void importRunsItsStatementsInOrderAndCopiesTheFile() {
        addSong({.title = "Alpha"});
        addSong({.title = "Beta"});
        makeSet("other/a.set", "11/22/26", {"Alpha", "Beta"});
        frmImportSet& w = openOther();
        select(w, {"a.set"});
        done();
        click(w.cmdPrintPast);
        QCOMPARE(world->statements, recordStatements("11/22/26", {"Alpha", "Beta"}));
        QCOMPARE(savedSets(), QStringList{"a.set"});
        QCOMPARE(bytesOf("saved sets/a.set"), bytesOf("other/a.set"));
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 3), QStringLiteral("Beta"));
    }

    void plainDateOfAFileBecomesADateCell() {
        addSong({.title = "Alpha"});
        makeGreenSet("other/plain.set", "11/22/26", 2, "Alpha");
        SheetGrid file;
        QVERIFY(file.LoadFromFile(world->path("other/plain.set")));
        QVERIFY(file.formatAt(1, SetColumn::Title, SetRow::Date).kind != CellKind::Date);
        frmImportSet& w = openOther();
        select(w, {"plain.set"});
        done();
        click(w.cmdPrintPast);
        QCOMPARE(w.fpSet->formatAt(1, SetColumn::Title, SetRow::Date).kind, CellKind::Date);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, SetRow::Date), QStringLiteral("11/22/26"));
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
    }

    // Deliberate: behaviour 73.
    void fileWithoutADateIsReportedAndCopied() {
        addSong({.title = "Alpha"});
        makeSet("other/undated.set", "", {"Alpha"});
        frmImportSet& w = openOther();
        select(w, {"undated.set"});
        world->answers.box(noDate("undated.set"));
        done();
        click(w.cmdPrintPast);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(savedSets(), QStringList{"undated.set"});
    }

    void refusedFileIsReportedInEachPass() {
        makeSet("other/a.set", "", {"Alpha"});
        makeSet("other/b.set", "", {"Beta"});
        frmImportSet& w = openOther();
        select(w, {"a.set", "b.set"});
        world->answers.box(noDate("b.set"));
        world->answers.box(noDate("b.set"));
        done();
        click(w.cmdPrintPast);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(savedSets(), QStringList{"b.set"});
    }

    // Deliberate: behaviour 73.
    void fileWithoutAKnownTitleIsReportedAndCopied() {
        world->sql(
            "INSERT INTO played_on (title, played_date, songID) VALUES ('Old', '11/22/26', 7)");
        makeSet("other/strange.set", "11/22/26", {"Nobody Knows"});
        frmImportSet& w = openOther();
        select(w, {"strange.set"});
        world->answers.box(noSongs("strange.set"));
        done();
        click(w.cmdPrintPast);
        QCOMPARE(record(), QStringList{"Old|11/22/26|7"});
        QCOMPARE(savedSets(), QStringList{"strange.set"});
    }

    void importWithoutASelectionDoesNothing() {
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        frmImportSet& w = openOther();
        done();
        click(w.cmdPrintPast);
        QVERIFY(world->statements.isEmpty());
        QVERIFY(savedSets().isEmpty());
        // The same in an empty folder.
        QDir().mkpath(world->path("none"));
        w.browser->Path(world->path("none"));
        done();
        click(w.cmdPrintPast);
    }

    // Deliberate: behaviour 66.
    void twentyFourthTitleEndsTheImportBeforeAnythingIsWritten() {
        makeSet("other/long.set", "11/22/26", addSongs(24));
        frmImportSet& w = openOther();
        select(w, {"long.set"});
        world->answers.runTimeError(RunTimeError::SubscriptOutOfRange, "Subscript out of range");
        click(w.cmdPrintPast);
        QVERIFY(record().isEmpty());
        QVERIFY(savedSets().isEmpty());
        QCOMPARE(world->endStatus, -1);
        QVERIFY(w.isVisible());
    }

    void unavailableDriveIsReportedAndTheFolderStays() {
        checkUnavailableDrive([this] { return open().browser; });
    }

    // Deliberate: behaviour 73.
    void severalSelectedFilesImportTheOneClickedLastRepeatedly() {
        addSong({.title = "Alpha"});
        addSong({.title = "Beta"});
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        makeSet("other/b.set", "11/29/26", {"Beta"});
        makeSet("other/c.set", "12/06/26", {"Alpha"});
        frmImportSet& w = openOther();
        select(w, {"a.set", "c.set", "b.set"});
        done();
        click(w.cmdPrintPast);
        QCOMPARE(record(), QStringList{"Beta|11/29/26|2"});
        QCOMPARE(world->statements.filter("DELETE").size(), 3);
        QCOMPARE(savedSets(), QStringList{"b.set"});
        // The file clicked last is imported even if the click has deselected it.
        clickFile(w.File1, "c.set", Qt::ControlModifier);
        world->statements.clear();
        done();
        click(w.cmdPrintPast);
        QCOMPARE(world->statements.filter("DELETE").size(), 2);
        QCOMPARE(savedSets(), (QStringList{"b.set", "c.set"}));
    }

    void filesCanBeSelectedAndImportedWithTheKeyboard() {
        addSong({.title = "Alpha"});
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        frmImportSet& w = openOther();
        w.File1->setFocus();
        QTest::keyClick(w.File1, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(w.File1, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), w.fpSet);
        QTest::keyClick(w.fpSet, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), w.cmdPrintPast);
        done();
        QTest::keyClick(w.cmdPrintPast, Qt::Key_Space);
        settle();
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
    }

    // Deliberate: behaviours 67, 69 and 70.
    void importReplacesTheRecordOfItsDateOnly() {
        addSong({.title = "Alpha"});
        world->sql(
            "INSERT INTO played_on (title, played_date, songID) VALUES "
            "('Gone', '11/22/26', 7), ('Kept', '11/15/26', 7)");
        makeSet("other/a.set", "11/22/26", {"Alpha", "Alpha", "Alph", "Reading"});
        frmImportSet& w = openOther();
        select(w, {"a.set"});
        done();
        click(w.cmdPrintPast);
        // Duplicates and parts are left out. A typed title is recorded under the song before it.
        QCOMPARE(record(),
                 (QStringList{"Kept|11/15/26|7", "Alpha|11/22/26|1", "Reading|11/22/26|1"}));
    }

    void setOfTwentyThreeRecordedTitlesIsNotRecordedAgain() {
        const QStringList titles = addSongs(23);
        for (int i = 1; i <= 23; ++i) addPlayed(QString::number(i), {"11/22/26"});
        makeSet("other/full.set", "11/22/26", titles);
        frmImportSet& w = openOther();
        select(w, {"full.set"});
        done();
        click(w.cmdPrintPast);
        QCOMPARE(world->statements.back(), QStringLiteral("SELECT * FROM played_on [1]"));
        QCOMPARE(savedSets(), QStringList{"full.set"});
    }

    void fileInTheSavedSetsIsRecordedAndItsCopyFails() {
        addSong({.title = "Alpha"});
        makeSet("saved sets/a.set", "11/22/26", {"Alpha"});
        const QByteArray before = bytesOf("saved sets/a.set");
        frmImportSet& w = open();
        select(w, {"a.set"});
        world->answers.runTimeError(RunTimeError::PermissionDenied, "Permission denied");
        click(w.cmdPrintPast);
        QCOMPARE(world->endStatus, -1);
        QVERIFY(w.isVisible());
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
        QCOMPARE(bytesOf("saved sets/a.set"), before);
    }

    void savedSetOfTheSameNameIsReplaced() {
        addSong({.title = "Alpha"});
        makeSet("saved sets/a.set", "11/15/26", {"Older"});
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        frmImportSet& w = openOther();
        select(w, {"a.set"});
        done();
        click(w.cmdPrintPast);
        QCOMPARE(bytesOf("saved sets/a.set"), bytesOf("other/a.set"));
    }

    void damagedFileHasNoDateAndIsCopied() {
        makeSet("other/bad.set", "11/22/26", {"Alpha"});
        QFile bad(world->path("other/bad.set"));
        QVERIFY(bad.resize(bad.size() / 2));
        frmImportSet& w = openOther();
        select(w, {"bad.set"});
        world->answers.box(noDate("bad.set"));
        done();
        click(w.cmdPrintPast);
        QCOMPARE(savedSets(), QStringList{"bad.set"});
    }

    // Deliberate: behaviour 64.
    void damagedFileRecordsTheSetImportedBeforeAgain() {
        addSong({.title = "Alpha"});
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        makeSet("other/bad.set", "11/29/26", {"Alpha"});
        QFile bad(world->path("other/bad.set"));
        QVERIFY(bad.resize(bad.size() / 2));
        frmImportSet& w = openOther();
        for (const char* name : {"a.set", "bad.set"}) {
            clickFile(w.File1, QString::fromLatin1(name));
            done();
            click(w.cmdPrintPast);
        }
        QCOMPARE(world->statements.filter("DELETE").size(), 2);
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
        QCOMPARE(savedSets(), (QStringList{"a.set", "bad.set"}));
    }

    void apostropheInATitleEndsTheImportBeforeTheCopy() {
        addSong({.title = "Alpha"});
        makeSet("other/a.set", "11/22/26", {"Alpha", "King's"});
        frmImportSet& w = openOther();
        select(w, {"a.set"});
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.cmdPrintPast);
        QVERIFY(record().isEmpty());
        QVERIFY(savedSets().isEmpty());
        QCOMPARE(world->endStatus, -1);
    }

    void fileDeletedInTheMeantimeEndsTheCommand() {
        addSong({.title = "Alpha"});
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        frmImportSet& w = openOther();
        select(w, {"a.set"});
        QVERIFY(QFile::remove(world->path("other/a.set")));
        world->answers.box(noDate("a.set"));
        world->answers.runTimeError(RunTimeError::FileNotFound, "a.set");
        click(w.cmdPrintPast);
        QVERIFY(savedSets().isEmpty());
    }

    void missingFolderOfSavedSetsEndsTheCommandAtTheCopy() {
        addSong({.title = "Alpha"});
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        QVERIFY(QDir(world->path("saved sets")).removeRecursively());
        frmImportSet& w = openOther();
        select(w, {"a.set"});
        world->answers.runTimeError(RunTimeError::PathNotFound, "saved sets");
        click(w.cmdPrintPast);
        QCOMPARE(record(), QStringList{"Alpha|11/22/26|1"});
    }

    void fullDiskLeavesTheSavedSetIntact() {
        addSong({.title = "Alpha"});
        makeSet("saved sets/a.set", "11/15/26", {"Older"});
        makeSet("other/a.set", "11/22/26", {"Alpha"});
        SheetGrid set;
        QVERIFY(set.LoadFromFile(world->path("other/a.set")));
        set.SetText(SetColumn::Label, 2, QString(QLatin1Char('x')).repeated(200000));
        QVERIFY(set.SaveToFile(world->path("other/a.set"), false));
        const QByteArray before = bytesOf("saved sets/a.set");
        frmImportSet& w = openOther();
        select(w, {"a.set"});
        world->answers.runTimeError(RunTimeError::PermissionDenied, "cannot be written");
        // No file can grow beyond this, as on a full disk. The database is smaller.
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{150000, RLIM_INFINITY};
        QVERIFY(QFileInfo(world->path("db1.mdb")).size() < 100000);
        setrlimit(RLIMIT_FSIZE, &limit);
        click(w.cmdPrintPast);
        rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &unlimited);
        QCOMPARE(bytesOf("saved sets/a.set"), before);
        QCOMPARE(savedSets(), QStringList{"a.set"});
    }

    void namesOfEveryScriptAreImported() {
        const QString title = QString::fromUtf8("주 하나님");
        addSong({.title = title});
        makeSet(QString::fromUtf8("other/주일.set"), "11/22/26", {title});
        frmImportSet& w = openOther();
        select(w, {QString::fromUtf8("주일.set")});
        done();
        click(w.cmdPrintPast);
        QCOMPARE(record(), QStringList{title + "|11/22/26|1"});
        QCOMPARE(savedSets(), QStringList{QString::fromUtf8("주일.set")});
    }
};

LORVANITE_TEST(TestImportSet)
#include "test_import_set.moc"
