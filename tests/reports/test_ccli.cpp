// The performances of songs with a CCLI number: shown, printed and mailed.
#include "mail/frm_email.h"
#include "reports/frm_ccli.h"
#include "reports/report_test.h"
#include "support/printed.h"

#include <QDir>
#include <QFile>

namespace {

const QString PeriodStatement = QStringLiteral(
    "SELECT played_on.songID, played_on.played_date, songs.ID, songs.CCLI, songs.title FROM songs "
    "INNER JOIN played_on ON songs.ID = played_on.songID; [1]");
const QString NumberedSongs = QStringLiteral("SELECT * FROM songs WHERE CCLI > '' [1]");
const QStringList Heads{"Song Title", "Date Played", "CCLI #"};
// The narrow column of the dates breaks its head in two.
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
        typeInCell(w.fpDates, 2, 1, from);
        typeInCell(w.fpDates, 4, 1, to);
        click(w.cmdShowReport);
        return w;
    }

    frmCCLI& chooseSong(int row) {
        frmCCLI& w = frmCCLI::isLoaded() ? frmCCLI::instance() : open();
        if (w.fpSelectSong->isHidden()) click(w.cmdSelectSong);
        clickCell(w.fpSelectSong, 2, row);
        return w;
    }

    // Prints the report and gives the words of each line of the pages that hold any.
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

    // One page with the title, the heads and these rows.
    static QList<QStringList> page(const QString& title, const QStringList& rows = {}) {
        return {QStringList{title} + PrintedHeads + rows};
    }

    static QStringList rowOf(SheetView* grid, int row) {
        return {grid->GetText(1, row), grid->GetText(2, row), grid->GetText(3, row)};
    }

    static QStringList titles() { return columnOf(frmCCLI::instance().fpCCLI, 1); }
    static QStringList dates() { return columnOf(frmCCLI::instance().fpCCLI, 2); }
    static QStringList numbers() { return columnOf(frmCCLI::instance().fpCCLI, 3); }

private Q_SLOTS:
    void windowOpensWithAnEmptyReportAndNoSongs() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("CCLI Reporting"));
        QCOMPARE(w.fpDates->MaxRows(), 1);
        QCOMPARE(w.fpDates->MaxCols(), 4);
        QCOMPARE(w.fpDates->GetText(1, 1), QStringLiteral("From:"));
        QCOMPARE(w.fpDates->GetText(3, 1), QStringLiteral("To:"));
        QCOMPARE(w.fpDates->ActiveCol(), 0);
        QCOMPARE(w.fpDates->ActiveRow(), 0);
        QCOMPARE(w.fpCCLI->MaxRows(), 0);
        QCOMPARE(rowOf(w.fpCCLI, 0), Heads);
        QCOMPARE(w.fpCCLI->ColWidth(1), 20.62);
        QCOMPARE(w.fpCCLI->ColWidth(2), 9.0);
        QVERIFY(w.fpSelectSong->isHidden());
        w.fpSelectSong->Col(1);
        QVERIFY(w.fpSelectSong->ColHidden());
        QCOMPARE(w.fpSelectSong->ColWidth(1), 2.75);
        QCOMPARE(w.fpSelectSong->ColWidth(2), 16.0);
        QCOMPARE(w.fpSelectSong->ColWidth(3), 8.25);
        QCOMPARE(rowOf(w.fpSelectSong, 0), (QStringList{"", "Song Title", "CCLI #"}));
    }

    // --- The report of a period ----------------------------------------------------------------

    void aPeriodNeedsBothDatesAndTheReportStays_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::newRow("no from") << QString() << QStringLiteral("11/30/26");
        QTest::newRow("no to") << QStringLiteral("11/01/26") << QString();
        QTest::newRow("neither") << QString() << QString();
    }

    void aPeriodNeedsBothDatesAndTheReportStays() {
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

    void fromLaterThanToGivesAnEmptyReportWithoutAMessage() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/01/26");
        QCOMPARE(w.fpCCLI->MaxRows(), 1);
        show("11/02/26", "11/01/26");
        QCOMPARE(w.fpCCLI->MaxRows(), 0);
        QCOMPARE(rowOf(w.fpCCLI, 0), Heads);
    }

    void songWithoutANumberIsNeitherInThePeriodNorOffered() {
        addSong("Numberless", {"11/01/26"});
        world->sql("UPDATE songs SET CCLI = NULL WHERE ID = " + addSong("Null", {"11/01/26"}));
        addSong("Blank", {"11/01/26"}, " ");
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("01/01/26", "12/31/26");
        QCOMPARE(titles(), (QStringList{"Blank", "Praise"}));
        click(w.cmdSelectSong);
        QVERIFY(!columnOf(w.fpSelectSong, 2).contains("Numberless"));
        QVERIFY(!columnOf(w.fpSelectSong, 2).contains("Null"));
        QVERIFY(columnOf(w.fpSelectSong, 2).contains("Praise"));
    }

    void datesOnTheBoundsAreInTheReport() {
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

    void allDatesPassThroughTheirTwoDigitYear() {
        addSong("Century", {"11/01/1926", "2026-11-02", "November 3, 2126", "11/04/2025"}, "5");
        show("11/01/26", "11/30/26");
        QCOMPARE(dates(), (QStringList{"11/01/1926", "2026-11-02", "November 3, 2126"}));
        // 2100 is 2000 then, before the start.
        show("11/01/26", "12/31/2100");
        QCOMPARE(frmCCLI::instance().fpCCLI->MaxRows(), 0);
    }

    void songPlayedTwiceOnADayHasTwoLines() {
        addSong("Praise", {"11/01/26", "11/01/26"}, "1234");
        show("11/01/26", "11/30/26");
        QCOMPARE(dates(), (QStringList{"11/01/26", "11/01/26"}));
    }

    void numberIsShownAsStoredAndTheTitleIsTheSongs() {
        const QString id = addSong("Old", {"11/01/26"}, " CCLI-\u00dc 12 34 ");
        world->sql("UPDATE songs SET title = 'Gro\u00dfer Gott \u2013 \u6b4c' WHERE ID = " + id);
        show("11/01/26", "11/30/26");
        QCOMPARE(titles(), QStringList{"Gro\u00dfer Gott \u2013 \u6b4c"});
        QCOMPARE(numbers(), QStringList{" CCLI-\u00dc 12 34 "});
    }

    void performancesOfADeletedSongAreLeftOut() {
        addSong("Praise", {"11/01/26"}, "1234");
        world->sql(
            "INSERT INTO played_on (title, played_date, songID) VALUES ('x', '11/01/26', 99)");
        show("11/01/26", "11/30/26");
        QCOMPARE(titles(), QStringList{"Praise"});
    }

    void eachReportReplacesTheOneBefore() {
        addSong("Praise", {"11/01/26", "11/02/26", "11/03/26"}, "1234");
        show("11/01/26", "11/30/26");
        QCOMPARE(dates().size(), 3);
        show("11/02/26", "11/02/26");
        QCOMPARE(dates(), QStringList{"11/02/26"});
    }

    void dateThatIsNoneEndsTheCommandWithTheRowsSoFar() {
        addSong("First", {"11/01/26"}, "1");
        addSong("Numberless", {"Easter"});
        addSong("Last", {"11/02/26"}, "2");
        open();
        world->answers.runTimeError(13);
        frmCCLI& w = show("11/01/26", "11/30/26");
        QCOMPARE(titles(), QStringList{"First"});
        QCOMPARE(world->endStatus, -1);
        // The program goes on, and with the date put right the report is whole.
        world->sql("UPDATE played_on SET played_date = '11/01/26' WHERE played_date = 'Easter'");
        click(w.cmdShowReport);
        QCOMPARE(titles(), (QStringList{"First", "Last"}));
    }

    void aYearOfThousandsOfPerformancesIsListed() {
        addSong("Praise", {}, "1234");
        world->sql(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
            "INSERT INTO played_on (title, played_date, songID) SELECT 'Praise', '11/01/26', 1 "
            "FROM n");
        frmCCLI& w = show("01/01/26", "12/31/26");
        QCOMPARE(w.fpCCLI->MaxRows(), 5000);
        QCOMPARE(w.fpCCLI->GetText(3, 5000), QStringLiteral("1234"));
    }

    // --- The report of a song ------------------------------------------------------------------

    void songsWithANumberThatWerePlayedAreOffered() {
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
        addSong("Praise", {"11/01/26"}, "1");
        addSong("Grace", {"11/01/26"}, "2");
        frmCCLI& w = open();
        click(w.cmdSelectSong);
        click(w.cmdSelectSong);
        QCOMPARE(columnOf(w.fpSelectSong, 2), (QStringList{"Praise", "Grace", "Praise", "Grace"}));
    }

    void clickOnASongListsAllItsPerformancesWhateverTheDates() {
        addSong("Grace", {"11/01/26"}, "2");
        frmCCLI& w = show("11/01/26", "11/01/26");
        QCOMPARE(titles(), QStringList{"Grace"});
        const QString praise = addSong("Praise", {"11/08/26", "some day", "01/01/99"}, "1");
        world->sql("UPDATE played_on SET title = 'Old name' WHERE played_date = '11/08/26'");
        click(w.cmdSelectSong);
        world->statements.clear();
        clickCell(w.fpSelectSong, 3, 2);
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

    void clickOnTheSongsHeadEmptiesTheReport() {
        addSong("Praise", {"11/01/26"}, "1");
        frmCCLI& w = chooseSong(1);
        QCOMPARE(titles(), QStringList{"Praise"});
        world->statements.clear();
        clickCell(w.fpSelectSong, 2, 0);
        QCOMPARE(w.fpCCLI->MaxRows(), 0);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(columnOf(w.fpSelectSong, 2), QStringList{"Praise"});
    }

    void failingStatementEndsTheCommandWithTheSongsSoFar() {
        addSong("Praise", {"11/01/26"}, "1");
        addSong("Grace", {"11/01/26"}, "2");
        frmCCLI& w = open();
        makeReadingFail("2");
        world->answers.runTimeError(-2147217900, "integer overflow");
        click(w.cmdSelectSong);
        QCOMPARE(columnOf(w.fpSelectSong, 2), QStringList{"Praise"});
        QCOMPARE(world->endStatus, -1);
    }

    // --- Print ---------------------------------------------------------------------------------

    void periodIsPrintedWithItsTitleAndHeads() {
        addSong("Praise", {"11/01/26", "11/08/26"}, "1234");
        show("11/01/26", "11/30/26");
        QCOMPARE(print(), page("CCLI Report For Time Period: 11/01/26 to 11/30/26",
                               {"Praise 11/01/26 1234", "Praise 11/08/26 1234"}));
    }

    void reportIsDressedForPaperInTheGridItself() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/30/26");
        clickCell(w.fpCCLI, 1, 1);
        QCOMPARE(w.fpCCLI->ActiveRow(), 1);
        print();
        QCOMPARE(w.fpCCLI->MaxRows(), 4);
        QCOMPARE(rowOf(w.fpCCLI, 1),
                 (QStringList{"CCLI Report For Time Period: 11/01/26 to 11/30/26", "", ""}));
        QCOMPARE(rowOf(w.fpCCLI, 2), (QStringList{"", "", ""}));
        QCOMPARE(rowOf(w.fpCCLI, 3), Heads);
        QCOMPARE(rowOf(w.fpCCLI, 4), (QStringList{"Praise", "11/01/26", "1234"}));
        const CellSpan span = w.fpCCLI->spanAt(1, 1, 1);
        QCOMPARE(span.cols, 3);
        QCOMPARE(span.rows, 1);
        QCOMPARE(w.fpCCLI->formatAt(1, 2, 4).hAlign, HAlign::Centre);
        QCOMPARE(w.fpCCLI->ActiveRow(), 0);
        QVERIFY(!w.fpCCLI->PrintColHeaders());
        QVERIFY(!w.fpCCLI->PrintGrid());
        QVERIFY(w.fpCCLI->PrintSmartPrint());
    }

    void secondPrintPutsThreeMoreRowsOnTop() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/30/26");
        print();
        const QString title = QStringLiteral("CCLI Report For Time Period: 11/01/26 to 11/30/26");
        QCOMPARE(print(), page(title, QStringList{title} + PrintedHeads +
                                          QStringList{"Praise 11/01/26 1234"}));
        QCOMPARE(w.fpCCLI->MaxRows(), 7);
        QCOMPARE(w.fpCCLI->spanAt(1, 2, 4).cols, 3);
    }

    void showingAReportAgainCleansTheDressAway() {
        addSong("Praise", {"11/01/26"}, "1234");
        frmCCLI& w = show("11/01/26", "11/30/26");
        print();
        click(w.cmdShowReport);
        QCOMPARE(w.fpCCLI->MaxRows(), 1);
        QCOMPARE(rowOf(w.fpCCLI, 1), (QStringList{"Praise", "11/01/26", "1234"}));
        QCOMPARE(w.fpCCLI->spanAt(1, 1, 1).cols, 0);
        QCOMPARE(w.fpCCLI->formatAt(1, 1, 1).hAlign, HAlign::Left);
    }

    void printingAnEmptyReportPrintsTitleAndHeadsOnly() {
        addSong("Praise", {"11/01/26"}, "1234");
        show("10/01/26", "10/31/26");
        QCOMPARE(print(), page("CCLI Report For Time Period: 10/01/26 to 10/31/26"));
    }

    void printingBeforeAnyReportNamesNoSong() {
        frmCCLI& w = open();
        QCOMPARE(print(), page("CCLI Report For:"));
        QCOMPARE(w.fpCCLI->GetText(1, 1), QStringLiteral("CCLI Report For: "));
    }

    void reportOfASongIsPrintedUnderItsTitle() {
        addSong("Praise", {"11/01/26"}, "1");
        addSong("Gro\u00dfer Gott", {"11/02/26"}, "2");
        chooseSong(2);
        QCOMPARE(print(),
                 page("CCLI Report For: Gro\u00dfer Gott", {"Gro\u00dfer Gott 11/02/26 2"}));
    }

    void reportOfASongGetsThePeriodsTitleWhereADateStands() {
        addSong("Praise", {"11/01/26"}, "1");
        frmCCLI& w = chooseSong(1);
        typeInCell(w.fpDates, 4, 1, "11/30/26");
        print();
        QCOMPARE(w.fpCCLI->GetText(1, 1),
                 QStringLiteral("CCLI Report For Time Period:  to 11/30/26"));
    }

    void longTitleBreaksBetweenItsWords() {
        addSong("Blessed Assurance Wondrous Saviour", {"11/01/26"}, "1234");
        show("11/01/26", "11/30/26");
        const QStringList words = print().value(0).join(QLatin1Char(' ')).split(QLatin1Char(' '));
        for (const char* word : {"Blessed", "Assurance", "Wondrous", "Saviour"})
            QVERIFY2(words.contains(QLatin1String(word)), qPrintable(words.join(QLatin1Char('|'))));
    }

    void longReportGoesOnOverThePages() {
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

    void mailCarriesTitleAndDateAndLeavesTheNumbersBehind() {
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

    void subjectTellsThePeriod_data() {
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

    void subjectTellsThePeriod() {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, subject);
        addSong("Praise", {"11/01/26"}, "1");
        frmCCLI& w = chooseSong(1);
        typeInCell(w.fpDates, 2, 1, from);
        typeInCell(w.fpDates, 4, 1, to);
        click(w.FlatBttn1);
        QCOMPARE(frmEmail::instance().txtSubject->text(), subject);
    }

    void printedReportIsMailedInItsDress() {
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

    void mailThatCannotBeStagedEndsTheCommand() {
        addSong("Praise", {"11/01/26"}, "1234");
        const frmCCLI& w = show("11/01/26", "11/30/26");
        QVERIFY(QDir(world->path(QStringLiteral("config"))).removeRecursively());
        world->answers.runTimeError(75);
        click(w.FlatBttn1);
        QCOMPARE(world->endStatus, -1);
        QVERIFY(!frmEmail::isLoaded());
        QCOMPARE(titles(), QStringList{"Praise"});
    }
};

LORVANITE_TEST(TestCCLI)
#include "test_ccli.moc"
