// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tour: follows a set through the real windows, from choosing its songs to mailing it, with the
// sample data. It leaves a picture of each window in build/tour, the printed pages as PDF, the
// exported files and the messages that a mail server received. LORVANITE_TOUR_FOLDER may name the
// program folder that the pictures show; it must not exist.
#include "catalogue/frm_song_admin.h"
#include "charts/frm_transpose.h"
#include "charts/rules/chart_page.h"
#include "charts/sheet_music.h"
#include "core/shell/frm_about.h"
#include "core/shell/frm_splash.h"
#include "exchange/frm_exchange.h"
#include "exchange/frm_find_words.h"
#include "mail/mail_hands.h"
#include "maintenance/frm_notes.h"
#include "platform/desktop/desktop.h"
#include "platform/paper/printing.h"
#include "platform/theme/theme.h"
#include "reports/frm_ccli.h"
#include "reports/frm_history.h"
#include "sets/frm_import_set.h"
#include "sets/frm_past_sets.h"
#include "sets/frm_set_list.h"
#include "sets/frm_song_collection.h"
#include "support/grid_hands.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"
#include "trees.h"

#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMessageBox>

#include <functional>

class TestTour : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;
    MailServer server{{}};
    int files = 0;

    // The path of the next file in the tour's folder.
    QString next(const QString& name) {
        const QString folder = QStringLiteral(SOURCE_TREE "/build/tour");
        QDir().mkpath(folder);
        return QStringLiteral("%1/%2-%3")
            .arg(folder)
            .arg(++files, 2, 10, QLatin1Char('0'))
            .arg(name);
    }

    void picture(QWidget* widget, const QString& name) {
        settle();
        const QString file = next(name + QStringLiteral(".png"));
        QVERIFY2(widget->grab().save(file), qPrintable(file));
        // The guide shows the windows without the main window.
        if (!world->isRunning() || widget != &world->main()) return;
        QMdiSubWindow* window = world->main().mdiArea->activeSubWindow();
        if (!window) return;
        const QString alone = QStringLiteral(SOURCE_TREE "/build/tour/guide");
        QDir().mkpath(alone);
        QVERIFY(window->grab().save(alone + QLatin1Char('/') + name + QStringLiteral(".png")));
    }

    // Prints with a command; the pages must contain a text.
    void print(const QString& name, const std::function<void()>& command, const QString& text) {
        const QString file = next(name + QStringLiteral(".pdf"));
        setPrintTarget(file);
        command();
        setPrintTarget({});
        const QString pages = printedPages(file).join(QString()).simplified();
        QVERIFY2(pages.contains(text), qPrintable(pages));
    }

    // Exports with a command into a file of the tour's folder.
    void save(const QString& name, const std::function<void()>& command) {
        const QString file = next(name);
        world->answers.file(file);
        command();
        QVERIFY2(QFileInfo(file).size() > 0, qPrintable(file));
    }

    // Presses OK in the next message box, whatever its text.
    void acceptBox(const QString& what) {
        world->answers.custom(what, [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
    }

    // Sends the message in the mail window to a real server; it must contain `text`.
    void send(const QString& name, const QString& text) {
        frmEmail& mail = frmEmail::instance();
        mail.txtServer->setText(server.address());
        mail.txtFrom->setText(QStringLiteral("leader@example.org"));
        mail.txtFromName->setText(QStringLiteral("The Leader"));
        mail.txtSubject->setText(name);
        click(mail.Label5);
        picture(&world->main(), name + QStringLiteral("-mail"));
        world->answers.box(QStringLiteral("Send Successful!"), QMessageBox::NoIcon,
                           QStringLiteral("Success"));
        const int before = server.messages();
        click(mail.cmdSend);
        QCOMPARE(server.messages(), before + 1);
        QVERIFY(contentOf(server.message(before + 1), QStringLiteral("text/html"))
                    .contains(text.toUtf8()));
        QFile message(next(name + QStringLiteral(".eml")));
        QVERIFY(message.open(QIODevice::WriteOnly));
        QVERIFY(message.write(server.raw(before + 1)) > 0);
        mail.Unload();
    }

    int rowOf(SheetView* grid, int col, const QString& text) {
        const int row = grid->SearchCol(col, 1, -1, text);
        if (row < 1) QTest::qFail(qPrintable("no row " + text), __FILE__, __LINE__);
        return row;
    }

    void place(const QString& title, const QString& item) {
        frmSetList& w = frmSetList::instance();
        clickCell(w.fpSongList1, 2, rowOf(w.fpSongList1, 2, title));
        clickCell(w.fpSet, 2, rowOf(w.fpSet, 1, item));
    }

private Q_SLOTS:
    void initTestCase() {
        applyTheme(*qApp);
        QDir(QStringLiteral(SOURCE_TREE "/build/tour")).removeRecursively();
        world = std::make_unique<World>(WorldTree::Sample,
                                        qEnvironmentVariable("LORVANITE_TOUR_FOLDER"));
        world->answers.beforeAnswer(
            [this](QWidget* modal) { picture(modal, QStringLiteral("question")); });
    }

    void programShowsSplashAndReminder() {
        acceptBox("reminder");
        world->start();
        world->main().resize(1240, 760);
        picture(&world->main(), QStringLiteral("splash"));
        // On a slow machine it may be closed already.
        if (world->main().splash) click(world->main().splash->Image1);
        QTRY_VERIFY_WITH_TIMEOUT(!world->main().splash, 60000);
    }

    void songAdminListsTheSongs() {
        click(world->main().cmdSongMgmt);
        frmSongAdmin& w = frmSongAdmin::instance();
        QCOMPARE(w.fpSongList2->MaxRows(), 60);
        clickCell(w.fpSongList2, 2, rowOf(w.fpSongList2, 2, QStringLiteral("Amazing Grace")));
        QVERIFY(!w.fpSMsong->GetText(1, 10).isEmpty());
        picture(&world->main(), QStringLiteral("song-admin"));
        click(w.cmdDefineCat);
        picture(&world->main(), QStringLiteral("categories"));
        click(w.Command4);
        w.Unload();
    }

    void songsOfNextSundayAreChosenAndPlaced() {
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        QTest::keyClicks(w.cmbCat1->lineEdit(), QStringLiteral("Praise"));
        w.optPlayList[0]->click();
        settle();
        QVERIFY(w.fpSongList1->MaxRows() > 3);
        place(QStringLiteral("Amazing Grace"), QStringLiteral("Opening"));
        const QString other = w.fpSongList1->GetText(2, 1);
        place(other, QStringLiteral("Closing"));
        QCOMPARE(w.fpSet->GetText(2, rowOf(w.fpSet, 1, QStringLiteral("Closing"))), other);
        picture(&world->main(), QStringLiteral("set-list"));
        clickCell(w.fpSongList1, 6, rowOf(w.fpSongList1, 2, QStringLiteral("Amazing Grace")));
        QVERIFY(w.picPlayer->isVisible());
        click(w.imgPlay);
        QVERIFY(w.imgPlay2->isVisible());
        picture(&world->main(), QStringLiteral("sound-player"));
        click(w.imgS);
        click(w.imgClose);
        QVERIFY(!w.picPlayer->isVisible());
    }

    void setIsDatedAndSaved() {
        frmSetList& w = frmSetList::instance();
        acceptBox("special music");
        typeInCell(w.fpSet, 2, 1, QStringLiteral("11/22/26"));
        acceptBox("who serves");
        click(w.cmdPersonellAvail);
        world->answers.question(
            QStringLiteral("Do you wish to set the Last Played field \rfor the selected songs to "
                           "the date you've selected?"),
            QMessageBox::Yes);
        world->answers.fileAsProposed();
        click(w.cmdSaveSetList);
        QVERIFY(QFile::exists(world->path("saved sets/Set For 11_22_26.set")));
        w.optPlayList[0]->click();
        settle();
        const int row = rowOf(w.fpSongList1, 2, QStringLiteral("Amazing Grace"));
        QCOMPARE(world->rows("SELECT count(*) FROM played_on WHERE played_date = '11/22/26'"),
                 QStringList{"2"});
        QVERIFY(row > 0);
        picture(&world->main(), QStringLiteral("set-saved"));
    }

    void setIsPrintedExportedAndMailed() {
        frmSetList& w = frmSetList::instance();
        print(
            QStringLiteral("set"), [&] { click(w.Command3); }, QStringLiteral("Amazing Grace"));
        save(QStringLiteral("set.txt"), [&] { click(w.cmdExportText); });
        click(w.cmdCollectSongs);
        picture(&world->main(), QStringLiteral("song-collection"));
        frmSongCollection& charts = frmSongCollection::instance();
        QVERIFY(charts.lblSngList->text().contains(QStringLiteral("Amazing Grace.stp")));
        print(
            QStringLiteral("charts-of-the-set"), [&] { click(charts.cmdPrint); },
            QStringLiteral("Amazing Grace"));
        charts.Unload();
        click(w.cmdEmailSet);
        send(QStringLiteral("set"), QStringLiteral("Amazing Grace"));
        w.Unload();
    }

    void pastSetsAreShown() {
        click(world->main().cmdPastSets);
        frmPastSets& w = frmPastSets::instance();
        const auto found =
            w.File1->findItems(QStringLiteral("Set For 11_22_26.set"), Qt::MatchExactly);
        QCOMPARE(found.size(), 1);
        QTest::mouseClick(w.File1->viewport(), Qt::LeftButton, {},
                          w.File1->visualItemRect(found[0]).center());
        QCOMPARE(w.fpSetPast->GetText(2, 1), QStringLiteral("11/22/26"));
        picture(&world->main(), QStringLiteral("past-sets"));
        w.Unload();
        world->main().mnuImportSet.trigger();
        picture(&world->main(), QStringLiteral("import-sets"));
        frmImportSet::instance().Unload();
    }

    void songAdminListsTheNewDate() {
        click(world->main().cmdSongMgmt);
        frmSongAdmin& w = frmSongAdmin::instance();
        const int row = rowOf(w.fpSongList2, 2, QStringLiteral("Amazing Grace"));
        QCOMPARE(w.fpSongList2->GetText(5, row), QStringLiteral("11/22/26"));
        clickCell(w.fpSongList2, 2, row);
        QVERIFY(columnOf(w.fpdp, 2).contains(QStringLiteral("11/22/26")));
        picture(&world->main(), QStringLiteral("played"));
        w.Unload();
    }

    void chartIsOpenedAndItsCopyTransposed() {
        click(world->main().cmdSheetMusic);
        SheetMusic& w = SheetMusic::instance();
        world->answers.file(world->path("sheetmusic/Amazing Grace.stp"));
        w.mnuOpen->trigger();
        settle();
        QVERIFY(!w.fpSong->GetText(ChartColumn::Text, ChartRow::Title).isEmpty());
        picture(&world->main(), QStringLiteral("sheet-music"));
        print(
            QStringLiteral("chart"), [&] { w.mnuPrint->trigger(); },
            QStringLiteral("Amazing Grace"));
        save(QStringLiteral("chart.htm"), [&] { w.mnuToHTML->trigger(); });
        w.mnuTranspose->trigger();
        settle();
        frmTranspose& copy = frmTranspose::instance();
        QTest::keyClick(copy.Slider1, Qt::Key_Right);
        QTRY_COMPARE_WITH_TIMEOUT(copy.lblNumSteps->text(),
                                  QStringLiteral("Changed By 1 Semi-Tones"), 60000);
        picture(&world->main(), QStringLiteral("transpose"));
        print(
            QStringLiteral("transposed-chart"), [&] { click(copy.Command3); },
            QStringLiteral("C#"));
        click(copy.cmdEmailSet);
        send(QStringLiteral("transposed-chart"), QStringLiteral("C#"));
        copy.Unload();
        // The lyric sheet erases the chords of the page, so it comes last.
        save(QStringLiteral("lyrics.rtf"), [&] { w.mnuLyrics->trigger(); });
        w.Unload();
    }

    void weeksAreScheduledAndReported() {
        click(world->main().cmdScheduling);
        frmSchedule& w = frmSchedule::instance();
        typeInCell(w.fpPickDate, 1, 1, QStringLiteral("11/22/26"));
        typeInCell(w.fpPickDate, 2, 1, QStringLiteral("3"));
        click(w.cmdLoadDates);
        click(w.cmdRefresh);
        QVERIFY(w.fpSchedule->MaxRows() >= 48);
        picture(&world->main(), QStringLiteral("scheduling"));
        click(w.cmdPrintSched);
        w.frmChooseEmail->optEmail[0]->click();
        w.frmChooseEmail->txtFrom->setText(QStringLiteral("11/22/26"));
        w.frmChooseEmail->txtto->setText(QStringLiteral("11/29/26"));
        picture(&world->main(), QStringLiteral("weeks-to-print"));
        print(
            QStringLiteral("weeks"), [&] { click(w.frmChooseEmail->cmdSend); },
            QStringLiteral("11/29/26"));
        print(
            QStringLiteral("roster"), [&] { click(w.cmdPrintRoster); },
            QStringLiteral("Vacation Days"));
        click(w.cmdEmailSchedule);
        w.frmChooseEmail->optEmail[1]->click();
        click(w.frmChooseEmail->cmdSend);
        send(QStringLiteral("schedule"), QStringLiteral("12/06/26"));
        w.Unload();
        click(world->main().cmdHistory);
        QVERIFY(frmHistory::instance().fpH->MaxRows() > 0);
        picture(&world->main(), QStringLiteral("song-history"));
        frmHistory::instance().Unload();
        world->main().mnuCCLI.trigger();
        frmCCLI& report = frmCCLI::instance();
        typeInCell(report.fpDates, 2, 1, QStringLiteral("10/01/26"));
        typeInCell(report.fpDates, 4, 1, QStringLiteral("11/30/26"));
        click(report.cmdShowReport);
        QVERIFY(report.fpCCLI->MaxRows() > 0);
        picture(&world->main(), QStringLiteral("ccli-report"));
        print(
            QStringLiteral("ccli-report"), [&] { click(report.cmdPrintReport); },
            QStringLiteral("CCLI Report For Time Period: 10/01/26 to 11/30/26"));
        report.Unload();
        click(world->main().Command1);
        QVERIFY(frmNotes::instance().fpNotes->MaxRows() > 0);
        picture(&world->main(), QStringLiteral("notes"));
        frmNotes::instance().Unload();
        click(world->main().cmdEmail);
        QVERIFY(frmEmail::instance().fpEmail->MaxRows() > 0);
        picture(&world->main(), QStringLiteral("e-mail"));
        frmEmail::instance().Unload();
    }

    void songsAreBroughtInAndFoundByTheirWords() {
        QTemporaryDir other;
        const auto write = [&](const QString& name, const char* text) {
            QFile file(other.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.write(text) > 0);
        };
        write(QStringLiteral("songs.csv"),
              "Title,Artist,Key,Categories,Last Used\n"
              "Amazing Grace,John Newton,G,Grace,2026-05-03\n"
              "Abide with Me,Henry F. Lyte,Eb,Evening,2026-06-21\n"
              "Nearer My God to Thee,Sarah F. Adams,G,Trust;Evening,2026-03-08\n"
              "O Come O Come Emmanuel,Traditional,Em,Advent,2025-12-07\n"
              "The God of Abraham Praise,Thomas Olivers,Fm,Praise,2026-02-15\n"
              ",nobody,,,\n");
        write(QStringLiteral("Be Still.cho"),
              "{title: Be Still My Soul}\n{artist: Katharina von Schlegel}\n{key: F}\n"
              "{keywords: Trust}\n\n"
              "[F]Be still, my [C7]soul: the [F]Lord is on thy [Gm]side;\n"
              "[C]Bear patient[F]ly the [Bb]cross of grief or [C]pain;\n");
        world->main().mnuExchange.trigger();
        settle();
        frmExchange& w = frmExchange::instance();
        world->answers.file(other.path());
        click(w.pageBringIn->cmdFolder);
        QVERIFY(w.pageBringIn->fpPreview->MaxRows() > 6);
        picture(&world->main(), QStringLiteral("bring-in"));
        click(w.pageBringIn->cmdImport);
        QVERIFY(w.pageBringIn->lblSums->text().startsWith(QLatin1String("Imported. ")));
        w.tabPages->setCurrentWidget(w.pageTakeOut);
        settle();
        w.pageTakeOut->lstForms->setCurrentRow(3);
        settle();
        picture(&world->main(), QStringLiteral("take-out"));
        w.Unload();
        world->main().mnuFindWords.trigger();
        settle();
        frmFindWords& words = frmFindWords::instance();
        QTest::keyClicks(words.txtWords, QStringLiteral("soul lord"));
        QTRY_VERIFY_WITH_TIMEOUT(
            columnOf(words.fpFound, 1).contains(QStringLiteral("Be Still My Soul")), 60000);
        picture(&world->main(), QStringLiteral("find-words"));
        words.Unload();
    }

    void aboutAndHelpAreShown() {
        click(world->main().cmdAbout);
        QVERIFY(frmAbout::instance().isVisible());
        picture(&world->main(), QStringLiteral("about"));
        click(world->main().Command11);
        auto* help = world->main().findChild<QWidget*>("frmHelp");
        QVERIFY(help && help->isVisible());
        picture(help, QStringLiteral("help"));
    }

    void cleanupTestCase() { world.reset(); }
};

LORVANITE_TEST(TestTour)
#include "test_tour.moc"
