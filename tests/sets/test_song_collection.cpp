// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Export Music: collecting, printing and mailing the charts of a set.
#include "charts/rules/chart_page.h"
#include "mail/frm_email.h"
#include "sets/frm_song_collection.h"
#include "sets/set_list_test.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

class TestSongCollection : public SetListTest {
    Q_OBJECT

    // Writes a chart of one page with a title, a chord and a line of lyrics. Returns its path.
    QString makeChart(const QString& title, int rows = ChartRows) {
        SheetGrid chart;
        setUpChart(chart);
        chart.MaxRows(rows);
        chart.SetText(1, 1, title);
        chart.SetText(7, 5, QStringLiteral("F#m7"));
        chart.SetText(1, 6, QStringLiteral("Sing of ") + title);
        return save(chart, title);
    }

    QString save(const SheetGrid& chart, const QString& title) {
        const QString path = world->path(QStringLiteral("sheetmusic/") + title + ".stp");
        if (!chart.SaveToFile(path, false)) QTest::qFail("chart not saved", __FILE__, __LINE__);
        return path;
    }

    void addSongWithChart(const QString& title) {
        addSong({.title = title, .fileLoco = makeChart(title)});
    }

    // Opens the set window with these titles from row 2, all of them green.
    frmSetList& openGreen(const QStringList& titles) {
        frmSetList& w = openWith("11/22/26", titles);
        for (int row = 2; row < titles.size() + 2; ++row) paint(*w.fpSet, row);
        return w;
    }

    frmSongCollection& collect(frmSetList& w) {
        click(w.cmdCollectSongs);
        return frmSongCollection::instance();
    }

    // Collects a set of these songs, each with a chart.
    frmSongCollection& collectCharts(const QStringList& titles) {
        for (const QString& title : titles) addSongWithChart(title);
        return collect(openGreen(titles));
    }

    static int spannedCols(const SheetGrid& grid, int row) { return grid.spanAt(1, 1, row).cols; }

    // The titles of the pages: the first line of each.
    static QStringList titlesOf(const QStringList& pages) {
        QStringList titles;
        for (const QString& page : pages)
            titles.append(page.trimmed().section(QLatin1Char('\n'), 0, 0).simplified());
        return titles;
    }

    void bringForward(frmSetList& w) {
        world->main().mdiArea->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(w.parentWidget()));
        settle();
    }

private Q_SLOTS:
    void songPlacedByHandIsCollected() {
        addSongWithChart("Alpha");
        frmSetList& w = open();
        w.txtSearch->setText(QStringLiteral("Alpha"));
        click(w.cmdSearchTitle);
        clickCell(w.fpSongList1, PickerColumn::Title, 1);
        clickCell(w.fpSet, SetColumn::Title, 3);
        world->statements.clear();
        frmSongCollection& c = collect(w);
        QCOMPARE(world->statements,
                 QStringList{"SELECT fileLoco FROM songs WHERE title = 'Alpha' [1]"});
        QVERIFY(c.isVisible());
        QVERIFY(c.lblHidFile->isHidden());
        QCOMPARE(c.lblHidFile->text(), world->path("sheetmusic/Alpha.stp") + QLatin1Char('|'));
        QCOMPARE(c.size(), QSize(295, 196));
        QCOMPARE(c.windowTitle(), QStringLiteral("Export Music"));
        QCOMPARE(c.Label1->text(),
                 QStringLiteral("What would you like to do with the sheetmusic from the set?"));
    }

    void barInAPathDividesNoPath() {
        addSongWithChart("Alpha|Beta");
        const frmSongCollection& c = collect(openGreen({"Alpha|Beta"}));
        QCOMPARE(c.lblSngList->text(), QStringLiteral("Alpha|Beta.stp\n\n"));
    }

    void setWithoutAGreenCellShowsAMessageAndNoWindow() {
        addSongWithChart("Alpha");
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.box(
            "No songs to collect, only songs with a highlighted background color have sheet music "
            "on file.",
            QMessageBox::Information);
        click(w.cmdCollectSongs);
        QVERIFY(!frmSongCollection::isLoaded());
        QVERIFY(world->statements.isEmpty());
    }

    // Deliberate: behaviour 76.
    void everyHighlightedRowIsCollectedInOrderDuplicatesIncluded() {
        for (const char* title : {"Alpha", "Beta", "Gamma"}) addSongWithChart(title);
        frmSetList& w = openWith("11/22/26", {"Gamma", "Beta", "Alpha", "Gamma"});
        w.fpSet->MaxRows(60);
        w.fpSet->SetText(SetColumn::Title, 60, QStringLiteral("Beta"));
        paint(*w.fpSet, 2);
        paint(*w.fpSet, 4, RGB(255, 0, 0));  // any colour but white
        paint(*w.fpSet, 5, RGB(254, 255, 255));
        paint(*w.fpSet, 60);
        frmSongCollection& c = collect(w);
        QStringList paths;
        for (const char* title : {"Gamma", "Alpha", "Gamma", "Beta"})
            paths.append(world->path(QStringLiteral("sheetmusic/%1.stp").arg(title)));
        QCOMPARE(c.lblHidFile->text(), paths.join(QLatin1Char('|')) + QLatin1Char('|'));
        // The text behind the last "|" is an empty line.
        QCOMPARE(c.lblSngList->text(),
                 QStringLiteral("Gamma.stp\nAlpha.stp\nGamma.stp\nBeta.stp\n\n"));
    }

    void titleTypedOverAGreenCellIsCollected() {
        addSongWithChart("Alpha");
        addSongWithChart("Beta");
        addSong({.title = "Bare"});
        frmSetList& w = openGreen({"Alpha", "Beta"});
        typeInCell(w.fpSet, SetColumn::Title, 3, "Bare");
        frmSongCollection& c = collect(w);
        QCOMPARE(c.lblHidFile->text(), world->path("sheetmusic/Alpha.stp") + "||");
        // A song without a chart prints the one before it again.
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))), (QStringList{"Alpha", "Alpha"}));
    }

    void highlightedTitleOutsideTheCatalogueEndsTheCommand() {
        addSongWithChart("Alpha");
        frmSetList& w = openGreen({"Alpha", "Typed by hand"});
        world->answers.runTimeError(RunTimeError::NoCurrentRecord);
        click(w.cmdCollectSongs);
        QVERIFY(!frmSongCollection::isLoaded());
        QCOMPARE(world->endStatus, -1);
        QVERIFY(w.isVisible());
    }

    void apostropheInAHighlightedTitleEndsTheCommand() {
        addSong({.title = "King's", .fileLoco = "x.stp"});
        frmSetList& w = openGreen({"King's"});
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.cmdCollectSongs);
        QVERIFY(!frmSongCollection::isLoaded());
        QCOMPARE(world->endStatus, -1);
    }

    void fileNamesFollowTheLastSeparatorOfEitherKind() {
        addSong({.title = "Alpha", .fileLoco = "C:\\My Music\\sheetmusic\\Alpha.stp"});
        addSong({.title = "Beta", .fileLoco = "Beta.stp"});
        addSong({.title = "Gamma", .fileLoco = QString::fromUtf8("/x/주님.stp")});
        frmSongCollection& c = collect(openGreen({"Alpha", "Beta", "Gamma"}));
        QCOMPARE(c.lblSngList->text(), QString::fromUtf8("Alpha.stp\nBeta.stp\n주님.stp\n\n"));
    }

    // Deliberate: behaviour 78.
    void eachActivationListsTheFilesAgain() {
        frmSongCollection& c = collectCharts({"Alpha"});
        frmSetList& w = frmSetList::instance();
        const QString once = QStringLiteral("Alpha.stp\n\n");
        QCOMPARE(c.lblSngList->text(), once);
        // A box over the window is not another window.
        QApplication::setActiveWindow(nullptr);
        QApplication::setActiveWindow(&world->main());
        settle();
        QCOMPARE(c.lblSngList->text(), once);
        bringForward(w);
        QCOMPARE(c.lblSngList->text(), once);
        c.Show();
        settle();
        QCOMPARE(c.lblSngList->text(), once + once);
        // Another collection replaces the paths, but not the names listed.
        addSongWithChart("Beta");
        w.fpSet->SetText(SetColumn::Title, 2, QStringLiteral("Beta"));
        bringForward(w);
        collect(w);
        QCOMPARE(c.lblHidFile->text(), world->path("sheetmusic/Beta.stp") + QLatin1Char('|'));
        QCOMPARE(c.lblSngList->text(), once + once + QStringLiteral("Beta.stp\n\n"));
        c.Unload();
        settle();
        QVERIFY(!frmSongCollection::isLoaded());
        QCOMPARE(collect(w).lblSngList->text(), QStringLiteral("Beta.stp\n\n"));
    }

    void eachChartIsPrintedOnItsOwnPage() {
        frmSongCollection& c = collectCharts({"Alpha", "Beta", "Gamma", "Delta"});
        for (const QPageSize::PageSizeId paper : {QPageSize::A4, QPageSize::Letter}) {
            const QString pdf = printedBy(c.cmdPrint, paper);
            const QStringList pages = printedPages(pdf);
            QCOMPARE(titlesOf(pages), (QStringList{"Alpha", "Beta", "Gamma", "Delta"}));
            for (const QString& page : pages) {
                QVERIFY(page.contains(QStringLiteral("F#m7")));
                QVERIFY(page.contains(QStringLiteral("Sing of ")));
            }
            const QStringList fonts = printedFonts(pdf);
            QVERIFY(!fonts.isEmpty());
            for (const QString& font : fonts) QVERIFY2(font.endsWith("yes"), qPrintable(font));
        }
    }

    // Deliberate: behaviour 131.
    void titlesAreJoinedOnTheFirstTwoPagesOnly() {
        frmSongCollection& c = collectCharts({"Alpha", "Beta", "Gamma"});
        printedBy(c.cmdPrint);
        QCOMPARE(c.fpSong.MaxRows(), 126);
        QCOMPARE(c.fpSong.MaxCols(), 37);
        for (int row = 1; row <= 126; ++row) {
            const bool title = row <= 3 || (row > 42 && row <= 45);
            const bool lyrics = row >= 6 && row % 2 == 0;
            const bool last = row == 125;
            const int wanted = title || lyrics || last ? 37 : 0;
            QVERIFY2(spannedCols(c.fpSong, row) == wanted, qPrintable(QString::number(row)));
        }
        QCOMPARE(c.fpSong.GetText(1, 85), QStringLiteral("Gamma"));
    }

    void stackedChartsHaveTheSameFormat() {
        frmSongCollection& c = collectCharts({"Alpha", "Beta"});
        spoilPrintSettings(c.fpSong);
        c.fpSong.ColHeadersShow(true);
        c.fpSong.RowHeadersShow(true);
        c.fpSong.AllowCellOverflow(false);
        printedBy(c.cmdPrint);
        seeSetPrintSettings(c.fpSong);
        for (int col = 1; col <= 37; ++col) QCOMPARE(c.fpSong.ColWidth(col), 2.5);
        for (int row = 1; row <= 84; ++row) {
            QCOMPARE(c.fpSong.RowHeight(row), 14.88);
            c.fpSong.Row(row);
            QCOMPARE(c.fpSong.RowPageBreak(), row % 42 == 0);
            for (const int col : {1, 7, 37}) {
                const CellFormat format = c.fpSong.formatAt(1, col, row);
                QCOMPARE(format.fontName, QStringLiteral("Arial"));
                QCOMPARE(format.fontSize, 10.0);
                QVERIFY(format.fontBold);
                QCOMPARE(format.hAlign, HAlign::Centre);
            }
        }
        QVERIFY(c.fpSong.AllowCellOverflow());
        QVERIFY(!c.fpSong.ColHeadersShow());
        QVERIFY(!c.fpSong.RowHeadersShow());
    }

    void secondPrintEqualsTheFirst() {
        frmSongCollection& c = collectCharts({"Alpha", "Beta", "Gamma"});
        const QStringList first = printedPages(printedBy(c.cmdPrint));
        QCOMPARE(printedPages(printedBy(c.cmdPrint)), first);
        QCOMPARE(c.fpSong.MaxRows(), 126);
    }

    void longTitleOfTheThirdChartIsPrintedCompletely() {
        const QString title = QStringLiteral("Guide Me, O Thou Great Redeemer, Pilgrim Through");
        frmSongCollection& c = collectCharts({"Alpha", "Beta", title});
        const QString pdf = printedBy(c.cmdPrint);
        QCOMPARE(titlesOf(printedPages(pdf)), (QStringList{"Alpha", "Beta", title}));
    }

    // Deliberate: behaviour 77.
    void chartThatCannotBeLoadedIsReplacedByTheOneBefore() {
        addSongWithChart("Alpha");
        addSong({.title = "Gone", .fileLoco = world->path("sheetmusic/gone.stp")});
        QFile damaged(world->path("sheetmusic/bad.stp"));
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        damaged.write("{\"format\":");
        damaged.close();
        addSong({.title = "Bad", .fileLoco = damaged.fileName()});
        addSongWithChart("Beta");
        frmSongCollection& c = collect(openGreen({"Alpha", "Gone", "Beta", "Bad"}));
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))),
                 (QStringList{"Alpha", "Alpha", "Beta", "Beta"}));
    }

    // Deliberate: behaviour 77.
    void firstChartThatCannotBeLoadedIsAnEmptyPage() {
        addSong({.title = "Gone", .fileLoco = world->path("sheetmusic/gone.stp")});
        addSongWithChart("Alpha");
        frmSongCollection& c = collect(openGreen({"Gone", "Alpha"}));
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))), (QStringList{"", "Alpha"}));
    }

    // Deliberate: behaviour 77.
    void firstChartMissingAtASecondPrintIsReplacedByTheLastOne() {
        frmSongCollection& c = collectCharts({"Alpha", "Beta", "Gamma"});
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))),
                 (QStringList{"Alpha", "Beta", "Gamma"}));
        QVERIFY(QFile::remove(world->path("sheetmusic/Alpha.stp")));
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))),
                 (QStringList{"Gamma", "Beta", "Gamma"}));
    }

    void chartIsNotFoundAfterTheProgramFolderWasMoved() {
        addSongWithChart("Alpha");
        const QString oldPath = world->path("sheetmusic/Alpha.stp");
        frmSetList& w = openGreen({"Alpha"});
        QCOMPARE(titlesOf(printedPages(printedBy(collect(w).cmdPrint))), QStringList{"Alpha"});
        QVERIFY(w.fpSet->SaveToFile(world->path("saved sets/a.set"), false));
        world->move();
        frmSetList& moved = open();
        world->answers.file(QStringLiteral("a.set"));
        click(moved.Command13);
        // The set is found in its folder. The path of the chart still leads to the old folder.
        QCOMPARE(moved.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
        QVERIFY(QFile::exists(world->path("sheetmusic/Alpha.stp")));
        frmSongCollection& c = collect(moved);
        QCOMPARE(c.lblHidFile->text(), oldPath + QLatin1Char('|'));
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))), QStringList{""});
    }

    void chartWithoutARowIsReportedAndTheOthersArePrinted() {
        addSongWithChart("Alpha");
        addSong({.title = "Flat", .fileLoco = makeChart("Flat", 0)});
        addSongWithChart("Beta");
        frmSongCollection& c = collect(openGreen({"Alpha", "Flat", "Beta"}));
        world->answers.box("save to buffer failed");
        world->answers.box("load from buffer failed");
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))), (QStringList{"Alpha", "Beta"}));
    }

    void visiblePageOfAChartOfSeveralIsPrinted() {
        SheetGrid chart;
        setUpChart(chart);
        chart.SetText(1, 1, QStringLiteral("First page"));
        addChartPage(chart, [](const QString&) {});
        chart.SetText(1, 1, QStringLiteral("Second page"));
        chart.ActiveSheet(1);
        addSong({.title = "Long", .fileLoco = save(chart, "Long")});
        addSongWithChart("Alpha");
        frmSongCollection& c = collect(openGreen({"Long", "Alpha"}));
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))),
                 (QStringList{"First page", "Alpha"}));
    }

    void mailContainsTheChartsOneBelowTheOther() {
        frmSongCollection& c = collectCharts({"Alpha", "Beta", "Gamma"});
        click(c.Command1);
        frmEmail& mail = frmEmail::instance();
        QVERIFY(mail.isVisible());
        QVERIFY(mail.cmdAddNote->isHidden());
        const QString html = mail.txtMsg->toPlainText();
        QCOMPARE(QString::fromUtf8(bytesOf("config/email.html")).remove(QLatin1Char('\n')), html);
        QCOMPARE(html.count(QStringLiteral("<TABLE")), 1);
        // The mail ends with the last row that has data.
        QCOMPARE(html.count(QStringLiteral("<TR")), 90);
        qsizetype last = html.indexOf(QStringLiteral("<TABLE"));
        for (const char* text : {"Sing of Alpha", "Sing of Beta", "Sing of Gamma"}) {
            const qsizetype at = html.indexOf(QLatin1String(text));
            QVERIFY2(at > last, text);
            last = at;
        }
        QVERIFY(html.contains(QStringLiteral("COLSPAN=37")));
        QVERIFY(!html.contains(QStringLiteral("border-bottom")));
    }

    // Deliberate: behaviour 78.
    void mailOfOneChartShowsTheNoteButtonAndMailOfSeveralLeavesIt() {
        frmSongCollection& c = collectCharts({"Alpha"});
        click(c.Command1);
        frmEmail& mail = frmEmail::instance();
        QVERIFY(mail.cmdAddNote->isVisible());
        addSongWithChart("Beta");
        frmSetList& w = frmSetList::instance();
        w.fpSet->SetText(SetColumn::Title, 3, QStringLiteral("Beta"));
        paint(*w.fpSet, 3);
        bringForward(w);
        click(collect(w).Command1);
        QVERIFY(mail.txtMsg->toPlainText().contains(QStringLiteral("Sing of Beta")));
        QVERIFY(mail.cmdAddNote->isVisible());
    }

    void failedExportMailsTheResultOfAnEarlierOne() {
        frmSongCollection& c = collectCharts({"Alpha"});
        // This file can be read, but not replaced.
        QVERIFY(QFile::link("/proc/version", world->path("config/email.html")));
        click(c.Command1);
        const QByteArray left = bytesOf("config/email.html");
        QVERIFY(!left.isEmpty());
        QCOMPARE(frmEmail::instance().txtMsg->toPlainText(), QString::fromUtf8(left).remove('\n'));
        QVERIFY(frmEmail::instance().cmdAddNote->isVisible());
        QVERIFY(c.isVisible());
    }

    void mailWithoutItsFolderEndsTheCommand() {
        frmSongCollection& c = collectCharts({"Alpha"});
        QVERIFY(QDir().rename(world->path("config"), world->path("gone")));
        world->answers.runTimeError(RunTimeError::FileNotFound);
        click(c.Command1);
        QVERIFY(!frmEmail::isLoaded());
        QCOMPARE(world->endStatus, -1);
        QVERIFY(c.isVisible());
    }

    void chartsOfEveryScriptArePrinted() {
        const QStringList titles = {QString::fromUtf8("Ευλόγει η ψυχή"),
                                    QString::fromUtf8("Créateur — „Gott“"),
                                    QString::fromUtf8("Святый Боже")};
        frmSongCollection& c = collectCharts(titles);
        QCOMPARE(titlesOf(printedPages(printedBy(c.cmdPrint))), titles);
    }

    void longSetIsPrintedCompletely() {
        QStringList titles;
        for (int i = 1; i <= 40; ++i) titles.append(QStringLiteral("Song %1").arg(i));
        for (const QString& title : titles) addSongWithChart(title);
        frmSetList& w = open();
        w.fpSet->MaxRows(60);
        fill(w, "11/22/26", titles);
        for (int row = 2; row <= 41; ++row) paint(*w.fpSet, row);
        frmSongCollection& c = collect(w);
        QElapsedTimer timer;
        timer.start();
        const QString pdf = printedBy(c.cmdPrint);
        qInfo("40 charts printed in %lld ms", timer.elapsed());
        QCOMPARE(titlesOf(printedPages(pdf)), titles);
    }

    void buttonsAreReachedByTheKeyboard() {
        frmSongCollection& c = collectCharts({"Alpha"});
        c.listArea->setFocus();
        for (QWidget* next : {c.Command1, c.cmdPrint}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
    }
};

LORVANITE_TEST(TestSongCollection)
#include "test_song_collection.moc"
