// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The performances of songs with a CCLI number: listed, printed and mailed.
#include "core/data/run_time_error.h"
#include "mail/frm_email.h"
#include "reports/frm_ccli.h"
#include "reports/report_test.h"
#include "reports/rules/ccli_report.h"
#include "support/printed.h"

#include <QDir>
#include <QFile>

namespace {

const QString PeriodStatement = QStringLiteral(
    "SELECT played_on.songID, played_on.played_date, songs.ID, songs.CCLI, songs.title FROM songs "
    "INNER JOIN played_on ON songs.ID = played_on.songID; [1]");
const QString NumberedSongs = QStringLiteral("SELECT * FROM songs WHERE CCLI > '' [1]");
const QStringList Heads{"Song Title", "Date Played", "CCLI #"};
// The head of the narrow date column is broken into two lines.
const QStringList PrintedHeads{"Date", "Song Title CCLI #", "Played"};

}  // namespace

class TestCCLI : public ReportTest {
    Q_OBJECT

    frmCCLI& open() {
        world->start();
        click(world->main().Command10);
        if (!pickMenuItem(world->main().mnuUtilities, world->main().mnuCCLI))
            QTest::qFail("no item \"CCLI Report\"", __FILE__, __LINE__);
        world->statements.clear();
        return frmCCLI::instance();
    }

    frmCCLI& show(const QString& from, const QString& to) {
        frmCCLI& w = frmCCLI::isLoaded() ? frmCCLI::instance() : open();
        typeInCell(w.fpDates, PeriodColumn::From, 1, from);
        typeInCell(w.fpDates, PeriodColumn::To, 1, to);
        click(w.cmdShowReport);
        return w;
    }

    frmCCLI& chooseSong(int row) {
        frmCCLI& w = frmCCLI::isLoaded() ? frmCCLI::instance() : open();
        if (w.fpSelectSong->isHidden()) click(w.cmdSelectSong);
        clickCell(w.fpSelectSong, NumberedSongColumn::Title, row);
        return w;
    }

    // Prints the report and returns the lines of each page that are not empty.
    QList<QStringList> print() {
        const PrintedFile file(world->path(QStringLiteral("report.pdf")));
        click(frmCCLI::instance().cmdPrintReport);
        QList<QStringList> pages;
        for (const QString& page : printedPages(file.path)) {
            QStringList lines;
            for (const QString& line : page.split(QLatin1Char('\n')))
                if (!line.trimmed().isEmpty()) lines.append(line.simplified());
            pages.append(lines);
        }
        return pages;
    }

    // A single page with the title, the heads and these rows.
    static QList<QStringList> page(const QString& title, const QStringList& rows = {}) {
        return {QStringList{title} + PrintedHeads + rows};
    }

    static QStringList rowOf(SheetView* grid, int row) {
        QStringList texts;
        for (int col = 1; col <= grid->MaxCols(); ++col) texts += grid->GetText(col, row);
        return texts;
    }

    static QStringList titles() {
        return columnOf(frmCCLI::instance().fpCCLI, ReportColumn::Title);
    }
    static QStringList dates() {
        return columnOf(frmCCLI::instance().fpCCLI, ReportColumn::DatePlayed);
    }
    static QStringList numbers() {
        return columnOf(frmCCLI::instance().fpCCLI, ReportColumn::Number);
    }

private Q_SLOTS:
    void windowOpensWithAnEmptyReportAndNoSongs() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("CCLI Reporting"));
        QCOMPARE(w.fpDates->MaxRows(), 1);
        QCOMPARE(w.fpDates->MaxCols(), int(PeriodColumn::To));
        QCOMPARE(w.fpDates->GetText(PeriodColumn::FromLabel, 1), QStringLiteral("From:"));
        QCOMPARE(w.fpDates->GetText(PeriodColumn::ToLabel, 1), QStringLiteral("To:"));
        QCOMPARE(w.fpDates->ActiveCol(), 0);
        QCOMPARE(w.fpDates->ActiveRow(), 0);
        QCOMPARE(w.fpCCLI->MaxRows(), 0);
        QCOMPARE(rowOf(w.fpCCLI, 0), Heads);
        QCOMPARE(w.fpCCLI->ColWidth(ReportColumn::Title), 20.62);
        QCOMPARE(w.fpCCLI->ColWidth(ReportColumn::DatePlayed), 9.0);
        QVERIFY(w.fpSelectSong->isHidden());
        w.fpSelectSong->Col(NumberedSongColumn::ID);
        QVERIFY(w.fpSelectSong->ColHidden());
        QCOMPARE(w.fpSelectSong->ColWidth(NumberedSongColumn::ID), 2.75);
        QCOMPARE(w.fpSelectSong->ColWidth(NumberedSongColumn::Title), 16.0);
        QCOMPARE(w.fpSelectSong->ColWidth(NumberedSongColumn::Number), 8.25);
        QCOMPARE(rowOf(w.fpSelectSong, 0), (QStringList{"", "Song Title", "CCLI #"}));
    }

    void labelsOfThePeriodCannotBeTypedOver() {
        frmCCLI& w = open();
        for (const int label : {PeriodColumn::FromLabel, PeriodColumn::ToLabel}) {
            const QString text = w.fpDates->GetText(label, 1);
            tryToChange(w.fpDates, label, 1);
            QCOMPARE(w.fpDates->GetText(label, 1), text);
        }
        typeInCell(w.fpDates, PeriodColumn::To, 1, "11/30/26");
        QCOMPARE(w.fpDates->GetText(PeriodColumn::To, 1), QStringLiteral("11/30/26"));
    }

    // --- The report of a period ----------------------------------------------------------------

    void missingDateIsReportedAndTheReportStays_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::newRow("no from") << QString() << QStringLiteral("11/30/26");
        QTest::newRow("no to") << QStringLiteral("11/01/26") << QString();
        QTest::newRow("neither") << QString() << QString();
    }

    void missingDateIsReportedAndTheReportStays() {
        QFETCH(QString, from);
        QFETCH(QString, to);
        addSong("Praise", {"11/01/26"}, "1234");
        const frmCCLI& w = show("11/01/26", "11/30/26");
        QCOMPARE(titles(), QStringList{"Praise"});
        world->statements.clear();
        world->answers.box("Select a 'From' and 'To' Date.", QMessageBox::Information);
        show(from, to);
        QCOMPARE(titles(), QStringList{"Praise"});
        QVERIFY(world->statements.isEmpty());
        QVERIFY(w.fpSelectSong->isHidden());
    }

    void periodOfOneDayListsThatDaysPerformances() {
        addSong("Before", {"10/31/26"}, "1");
        addSong("Praise", {"11/01/26", "11/02/26"}, "1234");
        addSong("Grace", {"11/01/26"}, "77");
        show("11/01/26", "11/01/26");
        QCOMPARE(world->statements, QStringList{PeriodStatement});
        QCOMPARE(titles(), (QStringList{"Praise", "Grace"}));
        QCOMPARE(dates(), (QStringList{"11/01/26", "11/01/26"}));
        QCOMPARE(numbers(), (QStringList{"1234", "77"}));
    }

    void reversedPeriodGivesAnEmptyReportWithoutAMessage() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/01/26");
        QCOMPARE(w.fpCCLI->MaxRows(), 1);
        show("11/02/26", "11/01/26");
        QCOMPARE(w.fpCCLI->MaxRows(), 0);
        QCOMPARE(rowOf(w.fpCCLI, 0), Heads);
    }

    void songWithoutANumberIsNeitherListedNorOffered() {
        addSong("Numberless", {"11/01/26"});
        world->sql("UPDATE songs SET CCLI = NULL WHERE ID = " + addSong("Null", {"11/01/26"}));
        addSong("Blank", {"11/01/26"}, " ");
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("01/01/26", "12/31/26");
        QCOMPARE(titles(), (QStringList{"Blank", "Praise"}));
        click(w.cmdSelectSong);
        QVERIFY(!columnOf(w.fpSelectSong, NumberedSongColumn::Title).contains("Numberless"));
        QVERIFY(!columnOf(w.fpSelectSong, NumberedSongColumn::Title).contains("Null"));
        QVERIFY(columnOf(w.fpSelectSong, NumberedSongColumn::Title).contains("Praise"));
    }

    void datesOnTheBoundsAreListed() {
        addSong("Praise", {"10/31/26", "11/01/26", "11/30/26", "12/01/26"}, "1234");
        show("11/01/26", "11/30/26");
        QCOMPARE(dates(), (QStringList{"11/01/26", "11/30/26"}));
    }

    void datesAreComparedAsDatesAcrossTheYears() {
        addSong("Turn", {"12/31/25", "01/01/26", "06/01/99", "02/01/25"}, "5");
        show("12/01/25", "01/31/26");
        QCOMPARE(dates(), (QStringList{"12/31/25", "01/01/26"}));
        show("01/01/1990", "12/31/1999");
        QCOMPARE(dates(), QStringList{"06/01/99"});
    }

    void datesAreComparedByTheirTwoDigitYear() {
        // Deliberate: behaviour 155.
        addSong("Century", {"11/01/1926", "2026-11-02", "November 3, 2126", "11/04/2025"}, "5");
        show("11/01/26", "11/30/26");
        QCOMPARE(dates(), (QStringList{"11/01/1926", "2026-11-02", "November 3, 2126"}));
        // 2100 counts as 2000, which is before the start.
        show("11/01/26", "12/31/2100");
        QCOMPARE(frmCCLI::instance().fpCCLI->MaxRows(), 0);
    }

    void songPlayedTwiceOnADayHasTwoRows() {
        // Deliberate: behaviour 153.
        addSong("Praise", {"11/01/26", "11/01/26"}, "1234");
        show("11/01/26", "11/30/26");
        QCOMPARE(dates(), (QStringList{"11/01/26", "11/01/26"}));
    }

    void numberIsListedAsStoredWithTheSongsTitle() {
        const QString id = addSong("Old", {"11/01/26"}, " CCLI-\u00dc 12 34 ");
        world->sql("UPDATE songs SET title = 'Gro\u00dfer Gott \u2013 \u6b4c' WHERE ID = " + id);
        show("11/01/26", "11/30/26");
        QCOMPARE(titles(), QStringList{"Gro\u00dfer Gott \u2013 \u6b4c"});
        QCOMPARE(numbers(), QStringList{" CCLI-\u00dc 12 34 "});
    }

    void songsAreListedWhateverTheirIDs() {
        const QStringList ids{"-5", "0", "3", "199999", "200000", "9000000000000"};
        for (const QString& id : ids) {
            const QString old = addSong("Song " + id, {"11/01/26", "11/02/26"}, "CCLI " + id);
            world->sql("UPDATE played_on SET songID = " + id + " WHERE songID = " + old);
            world->sql("UPDATE songs SET ID = " + id + " WHERE ID = " + old);
        }
        show("11/01/26", "11/30/26");
        QStringList twice;
        for (const QString& id : ids) twice << "Song " + id << "Song " + id;
        QCOMPARE(titles(), twice);
        QCOMPARE(numbers(), QStringList(twice).replaceInStrings("Song", "CCLI"));
    }

    void performancesOfADeletedSongAreNotListed() {
        addSong("Praise", {"11/01/26"}, "1234");
        world->sql(
            "INSERT INTO played_on (title, played_date, songID) VALUES ('x', '11/01/26', 99)");
        show("11/01/26", "11/30/26");
        QCOMPARE(titles(), QStringList{"Praise"});
    }

    void newReportReplacesTheOldOne() {
        addSong("Praise", {"11/01/26", "11/02/26", "11/03/26"}, "1234");
        show("11/01/26", "11/30/26");
        QCOMPARE(dates().size(), 3);
        show("11/02/26", "11/02/26");
        QCOMPARE(dates(), QStringList{"11/02/26"});
    }

    void invalidDateEndsTheCommandWithTheRowsSoFar() {
        addSong("First", {"11/01/26"}, "1");
        addSong("Numberless", {"Easter"});
        addSong("Last", {"11/02/26"}, "2");
        open();
        world->answers.runTimeError(RunTimeError::TypeMismatch);
        frmCCLI& w = show("11/01/26", "11/30/26");
        QCOMPARE(titles(), QStringList{"First"});
        QCOMPARE(world->endStatus, -1);
        // The program continues, and the report is complete once the date is corrected.
        world->sql("UPDATE played_on SET played_date = '11/01/26' WHERE played_date = 'Easter'");
        click(w.cmdShowReport);
        QCOMPARE(titles(), (QStringList{"First", "Last"}));
    }

    void thousandsOfPerformancesAreListed() {
        addSong("Praise", {}, "1234");
        world->sql(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
            "INSERT INTO played_on (title, played_date, songID) SELECT 'Praise', '11/01/26', 1 "
            "FROM n");
        frmCCLI& w = show("01/01/26", "12/31/26");
        QCOMPARE(w.fpCCLI->MaxRows(), 5000);
        QCOMPARE(w.fpCCLI->GetText(ReportColumn::Number, 5000), QStringLiteral("1234"));
    }

    // --- The report of a song ------------------------------------------------------------------

    void onlySongsWithANumberThatWerePlayedAreOffered() {
        const QString praise = addSong("Praise", {"11/01/26", "11/08/26"}, "1234");
        const QString never = addSong("Never", {}, "55");
        addSong("Numberless", {"11/01/26"});
        frmCCLI& w = open();
        click(w.cmdSelectSong);
        const QString dates =
            QStringLiteral("SELECT played_date FROM played_on WHERE songID = %1 [1]");
        QCOMPARE(world->statements,
                 (QStringList{NumberedSongs, dates.arg(praise), dates.arg(never)}));
        QVERIFY(w.fpSelectSong->isVisible());
        QCOMPARE(w.fpSelectSong->MaxRows(), 1);
        QCOMPARE(rowOf(w.fpSelectSong, 1), (QStringList{praise, "Praise", "1234"}));
    }

    void secondClickAppendsTheSameSongsAgain() {
        // Deliberate: behaviour 156.
        addSong("Praise", {"11/01/26"}, "1");
        addSong("Grace", {"11/01/26"}, "2");
        frmCCLI& w = open();
        click(w.cmdSelectSong);
        click(w.cmdSelectSong);
        QCOMPARE(columnOf(w.fpSelectSong, NumberedSongColumn::Title),
                 (QStringList{"Praise", "Grace", "Praise", "Grace"}));
    }

    void clickOnASongListsAllItsPerformances() {
        addSong("Grace", {"11/01/26"}, "2");
        frmCCLI& w = show("11/01/26", "11/01/26");
        QCOMPARE(titles(), QStringList{"Grace"});
        const QString praise = addSong("Praise", {"11/08/26", "some day", "01/01/99"}, "1");
        world->sql("UPDATE played_on SET title = 'Old name' WHERE played_date = '11/08/26'");
        click(w.cmdSelectSong);
        world->statements.clear();
        clickCell(w.fpSelectSong, NumberedSongColumn::Number, 2);
        QCOMPARE(world->statements,
                 QStringList{"SELECT * FROM played_on WHERE songID = " + praise + " [1]"});
        QCOMPARE(titles(), (QStringList{"Old name", "Praise", "Praise"}));
        QCOMPARE(dates(), (QStringList{"11/08/26", "some day", "01/01/99"}));
        QCOMPARE(numbers(), (QStringList{"1", "1", "1"}));
        QCOMPARE(rowOf(w.fpCCLI, 0), Heads);
        QVERIFY(w.fpSelectSong->isVisible());
    }

    void keyboardChoosesASong() {
        addSong("Praise", {"11/01/26"}, "1");
        addSong("Grace", {"11/02/26"}, "2");
        frmCCLI& w = open();
        QTest::keyClick(w.cmdSelectSong, Qt::Key_Space);
        w.fpSelectSong->setFocus();
        QTest::keyClick(w.fpSelectSong, Qt::Key_Down);
        QTest::keyClick(w.fpSelectSong, Qt::Key_Down);
        QTest::keyClick(w.fpSelectSong, Qt::Key_Return);
        settle();
        QCOMPARE(titles(), QStringList{"Grace"});
    }

    void clickOnTheHeadsOfTheSongsClearsTheReport() {
        // Deliberate: behaviour 156.
        addSong("Praise", {"11/01/26"}, "1");
        frmCCLI& w = chooseSong(1);
        QCOMPARE(titles(), QStringList{"Praise"});
        world->statements.clear();
        clickCell(w.fpSelectSong, NumberedSongColumn::Title, 0);
        QCOMPARE(w.fpCCLI->MaxRows(), 0);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(columnOf(w.fpSelectSong, NumberedSongColumn::Title), QStringList{"Praise"});
    }

    void failingStatementEndsTheCommandWithTheSongsSoFar() {
        addSong("Praise", {"11/01/26"}, "1");
        addSong("Grace", {"11/01/26"}, "2");
        frmCCLI& w = open();
        makeReadingFail("2");
        world->answers.runTimeError(RunTimeError::StatementRefused, "integer overflow");
        click(w.cmdSelectSong);
        QCOMPARE(columnOf(w.fpSelectSong, NumberedSongColumn::Title), QStringList{"Praise"});
        QCOMPARE(world->endStatus, -1);
    }

    // --- Print ---------------------------------------------------------------------------------

    void periodIsPrintedWithItsTitleAndHeads() {
        addSong("Praise", {"11/01/26", "11/08/26"}, "1234");
        show("11/01/26", "11/30/26");
        QCOMPARE(print(), page("CCLI Report For Time Period: 11/01/26 to 11/30/26",
                               {"Praise 11/01/26 1234", "Praise 11/08/26 1234"}));
    }

    void printingChangesTheGridItself() {
        // Deliberate: behaviour 157.
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/30/26");
        clickCell(w.fpCCLI, 1, 1);
        QCOMPARE(w.fpCCLI->ActiveRow(), 1);
        print();
        QCOMPARE(w.fpCCLI->MaxRows(), 4);
        QCOMPARE(rowOf(w.fpCCLI, 1),
                 (QStringList{"CCLI Report For Time Period: 11/01/26 to 11/30/26", "", ""}));
        QCOMPARE(rowOf(w.fpCCLI, PrintedReportRow::Blank), (QStringList{"", "", ""}));
        QCOMPARE(rowOf(w.fpCCLI, PrintedReportRow::Heads), Heads);
        QCOMPARE(rowOf(w.fpCCLI, 4), (QStringList{"Praise", "11/01/26", "1234"}));
        const CellSpan span = w.fpCCLI->spanAt(1, 1, PrintedReportRow::Title);
        QCOMPARE(span.cols, 3);
        QCOMPARE(span.rows, 1);
        QCOMPARE(w.fpCCLI->formatAt(1, ReportColumn::DatePlayed, 4).hAlign, HAlign::Centre);
        QCOMPARE(w.fpCCLI->ActiveRow(), 0);
        QVERIFY(!w.fpCCLI->PrintColHeaders());
        QVERIFY(!w.fpCCLI->PrintGrid());
        QVERIFY(w.fpCCLI->PrintSmartPrint());
    }

    void secondPrintInsertsThreeMoreRows() {
        // Deliberate: behaviour 157.
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/30/26");
        print();
        const QString title = QStringLiteral("CCLI Report For Time Period: 11/01/26 to 11/30/26");
        QCOMPARE(print(), page(title, QStringList{title} + PrintedHeads +
                                          QStringList{"Praise 11/01/26 1234"}));
        QCOMPARE(w.fpCCLI->MaxRows(), 7);
        QCOMPARE(w.fpCCLI->spanAt(1, 2, 4).cols, 3);
    }

    void newReportUndoesWhatPrintingChanged() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/30/26");
        print();
        click(w.cmdShowReport);
        QCOMPARE(w.fpCCLI->MaxRows(), 1);
        QCOMPARE(rowOf(w.fpCCLI, 1), (QStringList{"Praise", "11/01/26", "1234"}));
        QCOMPARE(w.fpCCLI->spanAt(1, 1, PrintedReportRow::Title).cols, 0);
        QCOMPARE(w.fpCCLI->formatAt(1, ReportColumn::Title, 1).hAlign, HAlign::Left);
    }

    void emptyReportIsPrintedWithTitleAndHeadsOnly() {
        addSong("Praise", {"11/01/26"}, "1234");
        show("10/01/26", "10/31/26");
        QCOMPARE(print(), page("CCLI Report For Time Period: 10/01/26 to 10/31/26"));
    }

    void printBeforeAnyReportNamesNoSong() {
        frmCCLI& w = open();
        QCOMPARE(print(), page("CCLI Report For:"));
        QCOMPARE(w.fpCCLI->GetText(ReportColumn::Title, PrintedReportRow::Title),
                 QStringLiteral("CCLI Report For: "));
    }

    void reportOfASongIsPrintedUnderItsTitle() {
        addSong("Praise", {"11/01/26"}, "1");
        addSong("Gro\u00dfer Gott", {"11/02/26"}, "2");
        chooseSong(2);
        QCOMPARE(print(),
                 page("CCLI Report For: Gro\u00dfer Gott", {"Gro\u00dfer Gott 11/02/26 2"}));
    }

    void reportOfASongIsPrintedAsAPeriodIfThereIsADate() {
        // Deliberate: behaviour 157.
        addSong("Praise", {"11/01/26"}, "1");
        frmCCLI& w = chooseSong(1);
        typeInCell(w.fpDates, PeriodColumn::To, 1, "11/30/26");
        print();
        QCOMPARE(w.fpCCLI->GetText(ReportColumn::Title, PrintedReportRow::Title),
                 QStringLiteral("CCLI Report For Time Period:  to 11/30/26"));
    }

    void longTitleIsBrokenBetweenWords() {
        addSong("Blessed Assurance Wondrous Saviour", {"11/01/26"}, "1234");
        show("11/01/26", "11/30/26");
        const QStringList words = print().value(0).join(QLatin1Char(' ')).split(QLatin1Char(' '));
        for (const char* word : {"Blessed", "Assurance", "Wondrous", "Saviour"})
            QVERIFY2(words.contains(QLatin1String(word)), qPrintable(words.join(QLatin1Char('|'))));
    }

    void longReportContinuesOnFurtherPages() {
        QStringList dates;
        for (int i = 0; i < 150; ++i) dates.append("11/01/26");
        addSong("Praise", dates, "1234");
        show("11/01/26", "11/30/26");
        const QList<QStringList> pages = print();
        QVERIFY(pages.size() >= 3);
        qsizetype lines = 0;
        for (const QStringList& page : pages) lines += page.count("Praise 11/01/26 1234");
        QCOMPARE(lines, 150);
        const QStringList fonts = printedFonts(world->path(QStringLiteral("report.pdf")));
        QVERIFY(!fonts.isEmpty());
        for (const QString& font : fonts) QVERIFY2(font.endsWith("yes"), qPrintable(font));
    }

    // --- Mail ----------------------------------------------------------------------------------

    void mailContainsTitlesAndDatesOnly() {
        // Deliberate: behaviour 159.
        addSong("Gro\u00dfer <Gott> & Co", {"11/01/26"}, "123456");
        const frmCCLI& w = show("11/01/26", "11/30/26");
        click(w.FlatBttn1);
        frmEmail& mail = frmEmail::instance();
        QVERIFY(mail.isVisible());
        QVERIFY(mail.cmdAddNote->isVisible());
        const QString body = mail.txtMsg->toPlainText();
        QVERIFY(body.contains("<HTML>"));
        QVERIFY(!body.contains(QLatin1Char('\n')));
        QVERIFY2(body.contains("Gro\u00dfer &lt;Gott&gt; &amp; Co"), qPrintable(body));
        QVERIFY(body.contains("11/01/26"));
        QVERIFY(!body.contains("123456"));
        QVERIFY(!body.contains("Date Played"));
        QVERIFY(QFile::exists(world->path(QStringLiteral("config/email.html"))));
    }

    void subjectNamesThePeriod_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("subject");
        const QString a = QStringLiteral("11/01/26");
        const QString b = QStringLiteral("11/30/26");
        QTest::newRow("neither") << QString() << QString() << QStringLiteral("CCLI Report");
        QTest::newRow("to") << QString() << b << QStringLiteral("CCLI Report Up To 11/30/26");
        QTest::newRow("from") << a << QString() << QStringLiteral("CCLI Report From 11/01/26");
        QTest::newRow("both") << a << b << QStringLiteral("CCLI Report11/01/26 To 11/30/26");
    }

    void subjectNamesThePeriod() {
        // Deliberate: behaviour 158.
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, subject);
        addSong("Praise", {"11/01/26"}, "1");
        frmCCLI& w = chooseSong(1);
        typeInCell(w.fpDates, PeriodColumn::From, 1, from);
        typeInCell(w.fpDates, PeriodColumn::To, 1, to);
        click(w.FlatBttn1);
        QCOMPARE(frmEmail::instance().txtSubject->text(), subject);
    }

    void printedReportIsMailedWithItsTitleAndHeads() {
        // Deliberate: behaviour 157.
        addSong("Praise", {"11/01/26"}, "1234");
        const frmCCLI& w = show("11/01/26", "11/30/26");
        print();
        click(w.FlatBttn1);
        const QString body = frmEmail::instance().txtMsg->toPlainText();
        QVERIFY(body.contains("CCLI Report For Time Period: 11/01/26 to 11/30/26"));
        QVERIFY(body.contains("Date Played"));
        QVERIFY(!body.contains("CCLI #"));
    }

    void emptyReportIsMailedAsAnEmptyTable() {
        const frmCCLI& w = open();
        click(w.FlatBttn1);
        const QString body = frmEmail::instance().txtMsg->toPlainText();
        QVERIFY(body.contains("<TABLE"));
        QVERIFY(!body.contains("<TD"));
    }

    void unwritableStagingFileEndsTheCommand() {
        addSong("Praise", {"11/01/26"}, "1234");
        const frmCCLI& w = show("11/01/26", "11/30/26");
        QVERIFY(QDir(world->path(QStringLiteral("config"))).removeRecursively());
        world->answers.runTimeError(RunTimeError::PathAccess);
        click(w.FlatBttn1);
        QCOMPARE(world->endStatus, -1);
        QVERIFY(!frmEmail::isLoaded());
        QCOMPARE(titles(), QStringList{"Praise"});
    }

    // Deliberate: behaviour 156.
    void clickBelowTheSongsEmptiesTheReport() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = chooseSong(1);
        QCOMPARE(w.fpCCLI->MaxRows(), 1);
        world->statements.clear();
        QWidget* list = w.fpSelectSong->viewport();
        QVERIFY(w.fpSelectSong->rowAt(list->height() - 4) < 0);
        QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(list->width() / 2, list->height() - 4));
        QCOMPARE(w.fpCCLI->MaxRows(), 0);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(world->endStatus, -1);
    }
};

LORVANITE_TEST(TestCCLI)
#include "test_ccli.moc"
