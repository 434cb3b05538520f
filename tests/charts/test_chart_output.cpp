// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Printing, exporting and mailing a chart from both chart windows.
#include "charts/chart_test.h"
#include "mail/frm_email.h"
#include "platform/grid_view/cell_look.h"
#include "support/files.h"
#include "support/printed.h"

#include <QFile>

namespace {

const QString Lyric = QString::fromUtf8("Großer Gott, wir loben dich €");

QString read(const QString& path) { return QString::fromUtf8(bytesOf(path)); }

qsizetype rowsIn(const QString& html) { return html.count(QStringLiteral("<TR")); }

bool linesShown(const SheetGrid* chart) { return chart->GridShowHoriz() && chart->GridShowVert(); }
bool linesHidden(const SheetGrid* chart) {
    return !chart->GridShowHoriz() && !chart->GridShowVert();
}

}  // namespace

class TestChartOutput : public ChartTest {
    Q_OBJECT

    static void addPapers() {
        QTest::addColumn<QPageSize::PageSizeId>("paper");
        QTest::newRow("A4") << QPageSize::A4;
        QTest::newRow("Letter") << QPageSize::Letter;
    }

    static void addWindows() {
        QTest::addColumn<bool>("fromCopy");
        QTest::newRow("chart window") << false;
        QTest::newRow("transpose window") << true;
    }

    // Opens a chart of so many pages; returns the grid of one of the two windows.
    SheetView* openChart(bool fromCopy, int pages) {
        SheetMusic& w = open();
        write(w, pages);
        w.fpSong->ActiveSheet(1);
        return fromCopy ? openTranspose(w).fpPreview : w.fpSong;
    }

    void send(bool fromCopy, QAction* Ui::SheetMusic::*item, QPushButton* Ui::frmTranspose::*twin) {
        if (fromCopy)
            click(frmTranspose::instance().*twin);
        else
            pick(SheetMusic::instance().mnuSend, SheetMusic::instance().*item);
    }
    void print(bool fromCopy) {
        send(fromCopy, &Ui::SheetMusic::mnuPrint, &Ui::frmTranspose::Command3);
    }
    void exportPage(bool fromCopy) {
        send(fromCopy, &Ui::SheetMusic::mnuToHTML, &Ui::frmTranspose::cmdExportText);
    }
    QString mail(bool fromCopy) {
        send(fromCopy, &Ui::SheetMusic::mnuToEmail, &Ui::frmTranspose::cmdEmailSet);
        return frmEmail::instance().txtMsg->toPlainText();
    }

private Q_SLOTS:
    void onePagePrintsOnOneSheet_data() { addPapers(); }
    void onePagePrintsOnOneSheet() {
        QFETCH(QPageSize::PageSizeId, paper);
        SheetView* chart = openChart(false, 1);
        chart->SetActiveCell(3, ChartRow::FirstChord + 2);
        const QString before = stateOf(chart);
        const PrintedFile target(world->path("chart.pdf"), paper);
        print(false);
        const QStringList pages = printedPages(target.path);
        QCOMPARE(pages.size(), 1);
        for (const QString& text : {QString("Title 1"), QString("F#m7"), Lyric, QString("foot 1")})
            QVERIFY2(pages[0].contains(text), qPrintable(text + " in\n" + pages[0]));
        QCOMPARE(chart->MaxRows(), 42);
        QCOMPARE(stateOf(chart), before);
        QCOMPARE(chart->ActiveCol(), 0);
        QCOMPARE(chart->ActiveRow(), 0);
        const QStringList fonts = printedFonts(target.path);
        QVERIFY(!fonts.isEmpty());
        for (const QString& font : fonts) QVERIFY2(font.endsWith(" yes"), qPrintable(font));
    }

    void threePagesPrintAsThree_data() { addPapers(); }
    void threePagesPrintAsThree() {
        QFETCH(QPageSize::PageSizeId, paper);
        SheetView* chart = openChart(false, 3);
        chart->ActiveSheet(2);
        const QString before = stateOf(chart);
        const PrintedFile target(world->path("chart.pdf"), paper);
        for (int time = 0; time < 2; ++time) {
            print(false);
            const QStringList pages = printedPages(target.path);
            QCOMPARE(pages.size(), 3);
            for (int page = 1; page <= 3; ++page) {
                const QString& text = pages[page - 1];
                for (int other = 1; other <= 3; ++other) {
                    QCOMPARE(text.contains(QString("Title %1").arg(other)), other == page);
                    QCOMPARE(text.contains(QString("foot %1").arg(other)), other == page);
                }
                QVERIFY(text.contains("F#m7") && text.contains(Lyric));
            }
            QCOMPARE(chart->ActiveSheet(), 1);
            QCOMPARE(chart->MaxRows(), 42);
            QCOMPARE(stateOf(chart), before);
        }
    }

    void chordsPrintOverTheirSyllables() {
        SheetMusic& w = open();
        w.fpSong->SetText(1, ChartRow::FirstChord, "C");
        w.fpSong->SetText(20, ChartRow::FirstChord, "G#m7sus4add9");
        w.fpSong->SetText(37, ChartRow::FirstChord, "D");
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "Abide with me");
        const PrintedFile target(world->path("chart.pdf"), QPageSize::Letter);
        print(false);
        const QImage page = pagePictures(target.path, 144).value(0);
        QCOMPARE(page.size(), QSize(1224, 1584));
        // In hundredths of an inch: a margin of half an inch, then 37 columns of about a fifth.
        const auto inkIn = [&page](int fromInch100, int toInch100) {
            int dark = 0;
            for (int y = 144; y < 1440; ++y)
                for (int x = fromInch100 * 144 / 100; x < toInch100 * 144 / 100; ++x)
                    if (qGray(page.pixel(x, y)) < 128) ++dark;
            return dark;
        };
        QCOMPARE(inkIn(0, 50), 0);
        QVERIFY(inkIn(50, 62) > 0);
        // The long chord runs over the empty cells, and no grid line is printed.
        QVERIFY(inkIn(420, 440) > 0 && inkIn(500, 516) > 0);
        QCOMPARE(inkIn(525, 740), 0);
        QVERIFY(inkIn(744, 758) > 0);
        QCOMPARE(inkIn(770, 850), 0);
    }

    void lyricsOfAChartWithoutATitleStandUnderTheirChords_data() { addPapers(); }
    void lyricsOfAChartWithoutATitleStandUnderTheirChords() {
        QFETCH(QPageSize::PageSizeId, paper);
        SheetMusic& w = open();
        for (int page = 1; page <= 2; ++page) {
            if (page == 2) pick(w.mnuPage, w.mnuAddPage);
            type(w.fpSong, 19, ChartRow::FirstChord, "F#m7");
            type(w.fpSong, ChartColumn::Text, ChartRow::FirstLyric, "Abide");
        }
        const PrintedFile target(world->path("chart.pdf"), paper);
        print(false);
        for (int page = 1; page <= 2; ++page) {
            const auto words = printedWords(target.path, page);
            // Column 19 is the middle one of 37, over which the lyric is centred.
            const double col = ChartColWidth * pixelsPerUnit() * 72 / 96;
            const double middle = words["F#m7"].left() + col / 2;
            QVERIFY2(qAbs(words["Abide"].center().x() - middle) < 2,
                     qPrintable(QString::number(words["Abide"].center().x() - middle)));
        }
    }

    // Words of five letters, each another.
    static QStringList manyWords(int count) {
        QStringList words;
        for (int i = 1; i <= count; ++i) words.append(QString("w%1").arg(i, 4, 10, QChar(u'0')));
        return words;
    }

    void longLyricIsSetNarrowerThenBroken_data() {
        QTest::addColumn<int>("words");
        QTest::addColumn<int>("lines");
        QTest::newRow("fits") << 10 << 1;
        QTest::newRow("narrower") << 25 << 1;
        QTest::newRow("two lines") << 40 << 2;
        QTest::newRow("four lines") << 100 << 4;
    }
    void longLyricIsSetNarrowerThenBroken() {
        QFETCH(int, words);
        QFETCH(int, lines);
        SheetMusic& w = open();
        const QStringList lyric = manyWords(words);
        type(w.fpSong, ChartColumn::Text, ChartRow::FirstLyric, lyric.join(' '));
        type(w.fpSong, ChartColumn::Text, ChartRow::FirstLyric + 2, "below");
        const PrintedFile target(world->path("chart.pdf"), QPageSize::Letter);
        print(false);
        QCOMPARE(printedPages(target.path).size(), 1);
        const auto places = printedWords(target.path);
        QSet<int> tops;
        for (const QString& word : lyric) {
            QVERIFY2(places.contains(word), qPrintable(word));
            const QRectF place = places[word];
            // Half an inch of margin, then the 37 columns.
            QVERIFY2(place.left() >= 36 && place.right() <= 36 + 7.2 * 72, qPrintable(word));
            QVERIFY(place.bottom() <= places["below"].top() + 2);
            tops.insert(qRound(place.top()));
        }
        QCOMPARE(tops.size(), lines);
    }

    void pageOfLongLyricsStaysOnOneSheet_data() { addPapers(); }
    void pageOfLongLyricsStaysOnOneSheet() {
        QFETCH(QPageSize::PageSizeId, paper);
        SheetMusic& w = open();
        const QString lyric = manyWords(55).join(' ');
        for (int row = ChartRow::FirstLyric; row <= ChartRow::Last; row += 2)
            w.fpSong->SetText(ChartColumn::Text, row, lyric + QString(" row%1").arg(row));
        w.addPage();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Title, "another");
        const PrintedFile target(world->path("chart.pdf"), paper);
        print(false);
        const QStringList pages = printedPages(target.path);
        QCOMPARE(pages.size(), 2);
        QVERIFY(pages[0].contains("row42"));
        QVERIFY(pages[1].contains("another"));
    }

    void htmlIsAsWideAsTheChart_data() { addWindows(); }
    void htmlIsAsWideAsTheChart() {
        QFETCH(bool, fromCopy);
        openChart(fromCopy, 1);
        const QString path = world->path("sheetmusic/page.htm");
        world->answers.file(path);
        exportPage(fromCopy);
        static const QRegularExpression width(QStringLiteral("<TABLE [^>]*WIDTH=(\\d+)"));
        for (const QString& html : {read(path), mail(fromCopy)}) {
            // As on paper, where the letters have the same size.
            QCOMPARE(width.match(html).captured(1).toInt(),
                     qRound(ChartCols * ChartColWidth * pixelsPerUnit()));
            QVERIFY(html.contains("font-size:10pt") || html.contains("font-size:9.75pt"));
        }
    }

    void transposedCopyIsPrinted() {
        SheetView* copy = openChart(true, 3);
        frmTranspose& window = frmTranspose::instance();
        QTest::keyClick(window.Slider1, Qt::Key_Right);
        QTRY_VERIFY_WITH_TIMEOUT(!window.lblNumSteps->text().isEmpty(), 60000);
        const QString before = stateOf(copy);
        const PrintedFile target(world->path("chart.pdf"));
        print(true);
        const QStringList pages = printedPages(target.path);
        QCOMPARE(pages.size(), 3);
        for (const QString& page : pages) QVERIFY2(page.contains("Gm7"), qPrintable(page));
        QCOMPARE(copy->ActiveSheet(), 1);
        QCOMPARE(stateOf(copy), before);
    }

    void printSettingsAreSet_data() { addWindows(); }
    void printSettingsAreSet() {
        QFETCH(bool, fromCopy);
        SheetView* chart = openChart(fromCopy, 1);
        chart->PrintBorder(true);
        chart->PrintUseDataMax(false);
        chart->PrintColor(false);
        chart->PrintType(PrintTypes::Block);
        chart->PrintMarginTop(99);
        chart->PrintMarginBottom(99);
        chart->PrintGrid(true);
        chart->PrintColHeaders(true);
        chart->PrintRowHeaders(true);
        chart->PrintSmartPrint(false);
        chart->PrintOrientation(PrintOrientations::Landscape);
        chart->PrintScalingMethod(PrintScaling::BestFit);
        chart->SetActiveCell(3, ChartRow::FirstChord + 2);
        const PrintedFile target(world->path("chart.pdf"));
        print(fromCopy);
        QCOMPARE(chart->ActiveCol(), 0);
        QCOMPARE(chart->ActiveRow(), 0);
        QVERIFY(!chart->PrintBorder() && !chart->PrintGrid());
        QVERIFY(!chart->PrintColHeaders() && !chart->PrintRowHeaders());
        QVERIFY(chart->PrintSmartPrint() && chart->PrintUseDataMax() && chart->PrintColor());
        QCOMPARE(chart->PrintMarginTop(), 720);
        QCOMPARE(chart->PrintMarginBottom(), 720);
        QCOMPARE(chart->PrintOrientation(), PrintOrientations::Portrait);
        QCOMPARE(chart->PrintScalingMethod(), PrintScaling::AsItIs);
        QCOMPARE(chart->PrintType(), PrintTypes::All);
    }

    void emptyPageInTheMiddleIsPrinted() {
        SheetMusic& w = open();
        write(w, 3);
        w.fpSong->ActiveSheet(2);
        pick(w.mnuFile, w.mnuNew);
        const PrintedFile target(world->path("chart.pdf"));
        print(false);
        const QStringList pages = printedPages(target.path);
        QCOMPARE(pages.size(), 3);
        QCOMPARE(pages[1].trimmed(), QString());
        QVERIFY(pages[2].contains("Title 3"));
    }

    void emptyChartPrintsAnEmptySheet() {
        open();
        const PrintedFile target(world->path("chart.pdf"));
        print(false);
        QCOMPARE(printedPages(target.path).size(), 1);
        QCOMPARE(printedPages(target.path)[0].trimmed(), QString());
    }

    void thirtyPagesPrintAsThirty() {
        SheetView* chart = openChart(false, 30);
        const PrintedFile target(world->path("chart.pdf"));
        print(false);
        const QStringList pages = printedPages(target.path);
        QCOMPARE(pages.size(), 30);
        QVERIFY(pages[29].contains("Title 30"));
        QCOMPARE(chart->MaxRows(), 42);
    }

    void pageWithoutCellsStopsTheCommand_data() {
        QTest::addColumn<bool>("prints");
        QTest::newRow("print") << true;
        QTest::newRow("mail") << false;
    }
    void pageWithoutCellsStopsTheCommand() {
        // Deliberate: behaviour 144.
        QFETCH(bool, prints);
        SheetView* chart = openChart(false, 3);
        chart->ActiveSheet(3);
        chart->MaxRows(0);
        const PrintedFile target(world->path("chart.pdf"));
        world->answers.box("save to buffer failed");
        SheetMusic& w = SheetMusic::instance();
        pick(w.mnuSend, prints ? w.mnuPrint : w.mnuToEmail);
        QVERIFY(!QFile::exists(target.path));
        QVERIFY(!frmEmail::isLoaded());
        // Page 1 keeps the added rows, and the page without cells is shown.
        QCOMPARE(chart->rowsOf(1), 126);
        QCOMPARE(chart->textAt(1, 1, 43), QStringLiteral("Title 2"));
        QVERIFY(chart->hasPageBreak(1, 42) && chart->hasPageBreak(1, 84));
        QCOMPARE(chart->ActiveSheet(), 3);
        QCOMPARE(world->endStatus, -1);
    }

    void mergedRowsAreFormatted() {
        SheetView* chart = openChart(false, 2);
        chart->ActiveSheet(2);
        chart->MaxRows(1);  // so that the rows below keep their formats
        chart->SheetCount(3);
        chart->ActiveSheet(3);
        chart->MaxRows(0);
        world->answers.box("save to buffer failed");
        print(false);
        QCOMPARE(chart->rowsOf(1), 126);
        for (int row = 85; row <= 126; ++row) {
            const int ofPage = row - 84;
            const bool joined = ofPage <= 3 || (ofPage >= 6 && ofPage % 2 == 0) || ofPage >= 40;
            QCOMPARE(chart->spanAt(1, 20, row).cols, joined ? 37 : 0);
            const CellFormat format = chart->formatAt(1, 20, row);
            QCOMPARE(format.fontName, QStringLiteral("Arial"));
            QCOMPARE(format.fontSize, 10.0);
            QVERIFY(format.fontBold);
            QCOMPARE(format.hAlign, HAlign::Centre);
            QCOMPARE(chart->heightOf(1, row), 14.88);
        }
        QVERIFY(!chart->BlockMode());
    }

    void fileIsNamedAfterTheTitle_data() {
        QTest::addColumn<bool>("fromCopy");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("proposed");
        for (const bool fromCopy : {false, true}) {
            const QByteArray window = fromCopy ? "copy, " : "chart, ";
            const QString other = QString::fromUtf8("Großer Gott");
            QTest::newRow(window + "Abide") << fromCopy << "Abide"
                                            << "Abide.htm";
            QTest::newRow(window + "no title") << fromCopy << ""
                                               << "Song.htm";
            QTest::newRow(window + "umlauts") << fromCopy << other << other + ".htm";
            QTest::newRow(window + "slash") << fromCopy << "Holy / Holy"
                                            << "Holy _ Holy.htm";
            QTest::newRow(window + "backslash") << fromCopy << "Holy\\Holy"
                                                << "Holy_Holy.htm";
            QTest::newRow(window + "folders") << fromCopy << "../../config/x"
                                              << "_.._config_x.htm";
            QTest::newRow(window + "dots") << fromCopy << ".."
                                           << "Song.htm";
            QTest::newRow(window + "question") << fromCopy << "Who: is <he>?"
                                               << "Who_ is _he__.htm";
            QTest::newRow(window + "long")
                << fromCopy << QString(300, u'x') << QString(200, u'x') + ".htm";
        }
    }
    void fileIsNamedAfterTheTitle() {
        QFETCH(bool, fromCopy);
        QFETCH(QString, title);
        QFETCH(QString, proposed);
        SheetView* chart = openChart(fromCopy, 1);
        chart->SetText(ChartColumn::Text, ChartRow::Title, title);
        world->answers.fileAsProposed();
        exportPage(fromCopy);
        const auto& dialog = world->answers.fileDialogs().at(0);
        QCOMPARE(dialog.proposed, proposed);
        QVERIFY(dialog.saves);
        QCOMPARE(dialog.folder, world->path("sheetmusic"));
        QCOMPARE(dialog.filters, QStringList{"HTML Files (*.htm)"});
        QCOMPARE(world->main().CommonDlg.Flags, 2);
        QVERIFY(QFile::exists(world->path("sheetmusic/" + proposed)));
    }

    void webPageKeepsTheEndingThatWasTyped() {
        openChart(false, 1);
        world->answers.file(world->path("sheetmusic/plan.html"));
        exportPage(false);
        QCOMPARE(QDir(world->path("sheetmusic")).entryList({"plan*"}), QStringList{"plan.html"});
    }

    void pageShownIsExportedWithAllItsRows_data() { addWindows(); }
    void pageShownIsExportedWithAllItsRows() {
        // Deliberate: behaviour 121.
        QFETCH(bool, fromCopy);
        SheetView* chart = openChart(fromCopy, 2);
        chart->ActiveSheet(2);
        chart->SetText(ChartColumn::Text, ChartRow::Last, "");
        const QString before = stateOf(chart);
        const QString path = world->path("sheetmusic/page.htm");
        world->answers.file(path);
        exportPage(fromCopy);
        const QString html = read(path);
        QCOMPARE(rowsIn(html), 42);
        QVERIFY(html.contains(">Title 2<"));
        QVERIFY(html.contains(">F#m7<") && html.contains(Lyric));
        QVERIFY(!html.contains("Title 1"));
        QVERIFY(!html.contains("border-bottom"));  // no grid lines
        QVERIFY(linesShown(chart));
        QCOMPARE(chart->ActiveSheet(), 2);
        QCOMPARE(stateOf(chart), before);
    }

    void cancelledExportLeavesTheGridLinesHidden_data() { addWindows(); }
    void cancelledExportLeavesTheGridLinesHidden() {
        // Deliberate: behaviour 145.
        QFETCH(bool, fromCopy);
        SheetView* chart = openChart(fromCopy, 1);
        QVERIFY(linesShown(chart));
        world->answers.cancelFile();
        exportPage(fromCopy);
        QVERIFY(linesHidden(chart));
        world->answers.file(world->path("sheetmusic/page.htm"));
        exportPage(fromCopy);
        QVERIFY(linesShown(chart));
    }

    void failingExportIsReported_data() { addWindows(); }
    void failingExportIsReported() {
        QFETCH(bool, fromCopy);
        SheetView* chart = openChart(fromCopy, 1);
        answerWithLostFolder(world->answers, world->path("sheetmusic"), "page.htm");
        world->answers.box(ChartNotSaved, QMessageBox::Information);
        exportPage(fromCopy);
        QVERIFY(linesShown(chart));
    }

    void mailEndsAtTheLastRowWithData() {
        SheetView* chart = openChart(false, 1);
        chart->SetText(ChartColumn::Text, ChartRow::Last, "");
        chart->SetText(5, ChartRow::FirstChord + 12, "G");
        chart->SetActiveCell(3, ChartRow::FirstChord + 2);
        const QString body = mail(false);
        QCOMPARE(chart->DataRowCnt(), 17);
        QCOMPARE(rowsIn(body), 17);
        QVERIFY(body.contains(">Title 1<") && body.contains(Lyric) && body.contains(">G<"));
        QCOMPARE(body, read(world->path("config/email.html")).remove('\n'));
        QVERIFY(frmEmail::instance().isVisible());
        QVERIFY(frmEmail::instance().cmdAddNote->isVisible());
        QVERIFY(!(frmEmail::instance().txtMsg->focusPolicy() & Qt::TabFocus));
        QCOMPARE(chart->ActiveCol(), 0);
        QCOMPARE(chart->ActiveRow(), 0);
        const QString path = world->path("sheetmusic/page.htm");
        world->answers.file(path);
        pick(SheetMusic::instance().mnuSend, SheetMusic::instance().mnuToHTML);
        QCOMPARE(rowsIn(read(path)), 42);
    }

    void emptyChartIsMailedWithoutRows() {
        open();
        const QString body = mail(false);
        QVERIFY(body.startsWith("<HTML>"));
        QCOMPARE(rowsIn(body), 0);
    }

    void twoPagesGiveTheSameBodyFromBothWindows() {
        // Deliberate: behaviour 149.
        SheetView* chart = openChart(false, 2);
        const QString before = stateOf(chart);
        const QString body = mail(false);
        QVERIFY(frmEmail::instance().cmdAddNote->isHidden());
        QVERIFY(body.indexOf(">Title 2<") > body.indexOf("foot 1"));
        QCOMPARE(rowsIn(body), 84);
        QCOMPARE(chart->ActiveSheet(), 1);
        QCOMPARE(stateOf(chart), before);
        frmEmail::instance().txtMsg->clear();
        SheetView* copy = openTranspose(SheetMusic::instance()).fpPreview;
        const QString copyBefore = stateOf(copy);
        QCOMPARE(mail(true), body);
        QVERIFY(frmEmail::instance().cmdAddNote->isHidden());
        QCOMPARE(copy->ActiveSheet(), 1);
        QCOMPARE(stateOf(copy), copyBefore);
    }

    void transposeWindowNeverShowsTheNoteButton() {
        // Deliberate: behaviour 149.
        SheetView* copy = openChart(true, 1);
        copy->SetActiveCell(3, ChartRow::FirstChord + 2);
        QVERIFY(mail(true).contains(">Title 1<"));
        QCOMPARE(copy->ActiveCol(), 0);
        QCOMPARE(copy->ActiveRow(), 0);
        QVERIFY(frmEmail::instance().isVisible());
        QVERIFY(frmEmail::instance().cmdAddNote->isHidden());
        // The transpose window does not hide it either.
        mail(false);
        QVERIFY(frmEmail::instance().cmdAddNote->isVisible());
        mail(true);
        QVERIFY(frmEmail::instance().cmdAddNote->isVisible());
    }

    void onlyTheChartWindowTurnsOverflowOn() {
        SheetView* copy = openChart(true, 1);
        copy->AllowCellOverflow(false);
        SheetMusic::instance().fpSong->AllowCellOverflow(false);
        mail(true);
        QVERIFY(!copy->AllowCellOverflow());
        mail(false);
        QVERIFY(SheetMusic::instance().fpSong->AllowCellOverflow());
    }

    void failingExportMailsTheLastExportedFile() {
        // Deliberate: behaviour 148.
        openChart(false, 1);
        // A file that can be read but not replaced.
        QFile::remove(world->path("config/email.html"));
        QVERIFY(QFile::link("/proc/version", world->path("config/email.html")));
        const QString body = mail(false);
        QCOMPARE(body, read("/proc/version").remove('\n'));
        QVERIFY(!body.isEmpty());
    }

    void mailWithoutItsFolderEndsTheProgram() {
        openChart(false, 1);
        QVERIFY(QDir(world->path("config")).removeRecursively());
        world->answers.runTimeError(53);
        SheetMusic& w = SheetMusic::instance();
        pick(w.mnuSend, w.mnuToEmail);
        QCOMPARE(world->endStatus, 1);
    }

    void htmlCharactersAreMailedAsText() {
        SheetMusic& w = open();
        w.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric, "<B>you & me</B>");
        QVERIFY(mail(false).contains("&lt;B&gt;you &amp; me&lt;/B&gt;"));
    }
};

LORVANITE_TEST(TestChartOutput)
#include "test_chart_output.moc"
