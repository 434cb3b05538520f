// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Past Sets: showing, printing and mailing a saved set.
#include "mail/frm_email.h"
#include "sets/frm_past_sets.h"
#include "sets/saved_set_test.h"

#include <QDir>
#include <QFile>

class TestPastSets : public SavedSetTest {
    Q_OBJECT

    frmPastSets& open() {
        if (!world->isRunning()) world->start();
        world->statements.clear();
        click(world->main().cmdPastSets);
        return frmPastSets::instance();
    }

private Q_SLOTS:
    void windowShowsTheSavedSetsAndForgetsTheRowsClickedBefore() {
        makeSet("saved sets/Set For 10_05_03.set", "10/05/03", {"Alpha"});
        makeSet("saved sets/a.SET", "10/12/03", {"Beta"});
        QVERIFY(QFile::copy(world->path("saved sets/a.SET"), world->path("saved sets/a.sdl")));
        addSong({.title = "Alpha"});
        frmSetList& picker = SetListTest::open();
        picker.txtSearch->setText("alpha");
        click(picker.cmdSearchTitle);
        clickCell(picker.fpSet, SetColumn::Title, 4);
        clickCell(picker.fpSongList1, PickerColumn::Title, 1);
        QCOMPARE(picker.selectedSongRow, 1);
        QCOMPARE(picker.clickedSetRow, 4);
        frmPastSets& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("Past Sets"));
        QCOMPARE(picker.selectedSongRow, 0);
        QCOMPARE(picker.clickedSetRow, 0);
        QCOMPARE(w.browser->Path(), world->path("saved sets"));
        QCOMPARE(filesOf(w.File1), (QStringList{"a.SET", "Set For 10_05_03.set"}));
        QCOMPARE(w.fpSetPast->MaxCols(), 2);
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Label, SetRow::Date),
                 QStringLiteral("Set List For:"));
        QVERIFY(world->statements.isEmpty());
        click(world->main().cmdPastSets);
        QCOMPARE(&frmPastSets::instance(), &w);
        // The song clicked before is not placed.
        picker.Show();
        clickCell(picker.fpSet, SetColumn::Title, 5);
        QCOMPARE(picker.fpSet->GetText(SetColumn::Title, 5), QString());
    }

    // Deliberate: behaviour 75.
    void missingFolderOfSavedSetsLeavesTheListsEmpty() {
        QVERIFY(QDir(world->path("saved sets")).removeRecursively());
        frmPastSets& w = open();
        QVERIFY(w.isVisible());
        QCOMPARE(w.browser->Path(), QString());
        QCOMPARE(w.File1->count(), 0);
        // The user can still browse to another folder.
        makeSet("elsewhere/a.set", "10/05/03", {"Alpha"});
        w.browser->Path(world->path("elsewhere"));
        QCOMPARE(filesOf(w.File1), QStringList{"a.set"});
    }

    void clickedFileIsShownWithItsColoursAndWidths() {
        makeSet("saved sets/a.set", "10/05/03", {"Alpha"});
        makeGreenSet("saved sets/b.set", "10/12/03", 60, "Last");
        frmPastSets& w = open();
        clickFile(w.File1, "a.set");
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, SetRow::Date), QStringLiteral("10/05/03"));
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
        clickFile(w.File1, "b.set");
        QCOMPARE(w.fpSetPast->MaxRows(), 60);
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), QString());
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 60), QStringLiteral("Last"));
        QCOMPARE(w.fpSetPast->formatAt(1, SetColumn::Title, 60).backColor, SheetMusicGreen);
        QCOMPARE(w.fpSetPast->ColWidth(SetColumn::Label), 20.62);
        QCOMPARE(w.fpSetPast->ColWidth(SetColumn::Title), 35.75);
        QVERIFY(world->statements.isEmpty());
    }

    void setCanBeShownWithTheKeyboard() {
        makeSet("saved sets/a.set", "10/05/03", {"Alpha"});
        makeSet("saved sets/b.set", "10/12/03", {"Beta"});
        frmPastSets& w = open();
        w.File1->setFocus();
        QTest::keyClick(w.File1, Qt::Key_Down);
        QTest::keyClick(w.File1, Qt::Key_Return);
        settle();
        QCOMPARE(w.File1->selectedItems().size(), 1);
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), w.browser->FileName() == "a.set"
                                                                ? QStringLiteral("Alpha")
                                                                : QStringLiteral("Beta"));
    }

    void arrowKeysShowTheSetTheyMark() {
        makeSet("saved sets/a.set", "10/05/03", {"Alpha"});
        makeSet("saved sets/b.set", "10/12/03", {"Beta"});
        frmPastSets& w = open();
        w.Dir1->setFocus();
        QTest::keyClick(w.Dir1, Qt::Key_Tab);
        QVERIFY(w.File1->hasFocus());
        const auto shown = [&] { return w.fpSetPast->GetText(SetColumn::Title, 2); };
        QCOMPARE(shown(), QString());
        QTest::keyClick(w.File1, Qt::Key_Down);
        QCOMPARE(shown(), QStringLiteral("Alpha"));
        QTest::keyClick(w.File1, Qt::Key_Down);
        QCOMPARE(shown(), QStringLiteral("Beta"));
        QTest::keyClick(w.File1, Qt::Key_Home);
        QCOMPARE(shown(), QStringLiteral("Alpha"));
        QCOMPARE(w.browser->FileName(), QStringLiteral("a.set"));
    }

    void listFollowsASaveAndKeepsTheMark() {
        makeSet("saved sets/b.set", "10/12/03", {"Beta"});
        frmPastSets& w = open();
        clickFile(w.File1, "b.set");
        makeSet("saved sets/a.set", "10/05/03", {"Alpha"});
        QTRY_COMPARE_WITH_TIMEOUT(filesOf(w.File1), (QStringList{"a.set", "b.set"}), 60'000);
        QCOMPARE(w.browser->FileName(), QStringLiteral("b.set"));
        QCOMPARE(w.File1->selectedItems().size(), 1);
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), QStringLiteral("Beta"));
    }

    void newestSetComesFirstOnRequest() {
        for (const char* name :
             {"Set For 01_03_27.set", "Set For 11_22_26.set", "Easter.set", "Set For 12_25_25.set"})
            makeSet(QStringLiteral("saved sets/") + name, "10/05/03", {"Alpha"});
        QFile easter(world->path("saved sets/Easter.set"));
        QVERIFY(easter.open(QIODevice::ReadWrite));
        QVERIFY(easter.setFileTime(QDateTime(QDate(2026, 4, 5), QTime(9, 0)),
                                   QFileDevice::FileModificationTime));
        easter.close();
        frmPastSets& w = open();
        QCOMPARE(filesOf(w.File1), (QStringList{"Easter.set", "Set For 01_03_27.set",
                                                "Set For 11_22_26.set", "Set For 12_25_25.set"}));
        w.File1->setFocus();
        QTest::keyClick(w.File1, Qt::Key_N, Qt::AltModifier);
        QTRY_COMPARE_WITH_TIMEOUT(filesOf(w.File1),
                                  (QStringList{"Set For 01_03_27.set", "Set For 11_22_26.set",
                                               "Easter.set", "Set For 12_25_25.set"}),
                                  60'000);
        QCheckBox* newest = w.browser->chkNewest;
        QTest::mouseClick(newest, Qt::LeftButton, {}, QPoint(8, newest->height() / 2));
        QCOMPARE(filesOf(w.File1).first(), QStringLiteral("Easter.set"));
    }

    void tabGoesThroughTheWindowInReadingOrder() {
        makeSet("saved sets/a.set", "10/05/03", {"Alpha"});
        frmPastSets& w = open();
        w.Drive1->setFocus();
        for (QWidget* next :
             {static_cast<QWidget*>(w.Dir1), static_cast<QWidget*>(w.File1),
              static_cast<QWidget*>(w.browser->chkNewest), static_cast<QWidget*>(w.fpSetPast),
              static_cast<QWidget*>(w.cmdPrintPast), static_cast<QWidget*>(w.cmdEpastSet)}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
            QVERIFY(!next->accessibleName().isEmpty());
        }
    }

    void anotherFolderShowsItsSetsAndOpensThem() {
        makeSet("saved sets/old/first.set", "10/07/01", {"Alpha"});
        makeSet("saved sets/now.set", "10/05/03", {"Beta"});
        frmPastSets& w = open();
        goTo(w.browser, "saved sets/old");
        QCOMPARE(filesOf(w.File1), QStringList{"first.set"});
        clickFile(w.File1, "first.set");
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, SetRow::Date), QStringLiteral("10/07/01"));
    }

    void unavailableDriveIsReportedAndTheFolderStays() {
        checkUnavailableDrive([this] { return open().browser; });
    }

    // Deliberate: behaviour 64.
    void damagedSetLeavesTheGridUnchanged() {
        makeSet("saved sets/a.set", "10/05/03", {"Alpha"});
        QFile bad(world->path("saved sets/bad.set"));
        QVERIFY(bad.open(QIODevice::WriteOnly));
        bad.write("{\"format\":");
        bad.close();
        frmPastSets& w = open();
        clickFile(w.File1, "a.set");
        clickCell(w.fpSetPast, SetColumn::Title, 2);
        QCOMPARE(w.fpSetPast->ActiveRow(), 2);
        clickFile(w.File1, "bad.set");
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
        QCOMPARE(w.fpSetPast->ActiveRow(), 0);
        // Neither does a file that has been deleted in the meantime.
        QVERIFY(bad.remove());
        clickFile(w.File1, "bad.set");
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
    }

    void namesOfEveryScriptAreShown() {
        const QString name = QString::fromUtf8("주일 & Ευλόγει.set");
        makeSet("saved sets/" + name, "10/05/03", {QString::fromUtf8("주 하나님")});
        frmPastSets& w = open();
        clickFile(w.File1, name);
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), QString::fromUtf8("주 하나님"));
    }

    void shownSetIsPrintedWithTheSetPrintSettings() {
        makeSet("saved sets/a.set", "10/05/03", {"Amazing Grace", "Be Thou My Vision"});
        frmPastSets& w = open();
        clickFile(w.File1, "a.set");
        spoilPrintSettings(*w.fpSetPast);
        const QStringList pages = printedPages(printedBy(w.cmdPrintPast));
        QCOMPARE(pages.size(), 1);
        QVERIFY(pages[0].contains("Set List For:"));
        QVERIFY(pages[0].contains("10/05/03"));
        QVERIFY(pages[0].indexOf("Amazing Grace") < pages[0].indexOf("Be Thou My Vision"));
        QVERIFY(!pages[0].contains("Service"));
        seeSetPrintSettings(*w.fpSetPast);
    }

    void emptyGridIsPrinted() {
        frmPastSets& w = open();
        const QStringList pages = printedPages(printedBy(w.cmdPrintPast));
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages[0].trimmed(), QStringLiteral("Set List For:"));
    }

    void shownSetIsMailed() {
        makeSet("saved sets/a.set", "10/05/03", {"Amazing <Grace> & Ευλόγει"});
        frmPastSets& w = open();
        clickFile(w.File1, "a.set");
        click(w.cmdEpastSet);
        QVERIFY(frmEmail::isLoaded());
        frmEmail& mail = frmEmail::instance();
        QVERIFY(mail.isVisible());
        QVERIFY(mail.cmdAddNote->isVisible());
        const QString body = mail.txtMsg->toPlainText();
        const QString staged = QString::fromUtf8(bytesOf("config/email.html"));
        QCOMPARE(body, QString(staged).remove(QLatin1Char('\n')).remove(QLatin1Char('\r')));
        QVERIFY(body.contains("10/05/03"));
        QVERIFY(body.contains(QString::fromUtf8("Amazing &lt;Grace&gt; &amp; Ευλόγει")));
        QVERIFY(mail.txtSubject->text().isEmpty());
        QVERIFY(world->statements.filter("played_on").isEmpty());
    }

    // Deliberate: behaviour 75.
    void setWithoutADateIsSilentlyNotMailed() {
        makeSet("saved sets/a.set", "", {"Alpha"});
        frmPastSets& w = open();
        click(w.cmdEpastSet);
        QVERIFY(!frmEmail::isLoaded());
        clickFile(w.File1, "a.set");
        QCOMPARE(w.fpSetPast->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
        click(w.cmdEpastSet);
        QVERIFY(!frmEmail::isLoaded());
        QVERIFY(!QFile::exists(world->path("config/email.html")));
    }

    void mailThatCannotBeStagedEndsTheCommand() {
        makeSet("saved sets/a.set", "10/05/03", {"Alpha"});
        frmPastSets& w = open();
        clickFile(w.File1, "a.set");
        QVERIFY(QDir(world->path("config")).removeRecursively());
        world->answers.runTimeError(RunTimeError::PathAccess);
        click(w.cmdEpastSet);
        QCOMPARE(world->endStatus, -1);
        QVERIFY(!frmEmail::isLoaded());
        QVERIFY(w.isVisible());
    }
};

LORVANITE_TEST(TestPastSets)
#include "test_past_sets.moc"
