// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Grids on paper: what each print setting does, read back from the PDF.
#include "core/grid/sheet_grid.h"
#include "core/shell/frm_mdi.h"
#include "platform/paper/printing.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

namespace {

constexpr int PrintedGreen = RGB(180, 255, 180);
constexpr int Dpi = 72;  // a pixel is a point
constexpr double TwipsPerPoint = 20;

// All settings off or plain, 3 columns of 10 units.
void plain(SheetGrid& grid, int rows = 3) {
    grid.MaxRows(rows);
    grid.MaxCols(3);
    grid.ColWidth(-1, 10);
    grid.PrintColHeaders(false);
    grid.PrintRowHeaders(false);
    grid.PrintGrid(false);
    grid.PrintShadows(false);
}

bool isWhite(QRgb pixel) { return qGray(pixel) > 250; }

// The rectangle of all that is not white.
QRect inked(const QImage& page) {
    QRect box;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if (!isWhite(page.pixel(x, y))) box |= QRect(x, y, 1, 1);
    return box;
}

bool has(const QImage& page, const QColor& colour) {
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x) {
            const QColor pixel = page.pixelColor(x, y);
            if (qAbs(pixel.red() - colour.red()) < 6 && qAbs(pixel.green() - colour.green()) < 6 &&
                qAbs(pixel.blue() - colour.blue()) < 6)
                return true;
        }
    return false;
}

}  // namespace

class TestPrinting : public QObject {
    Q_OBJECT

    QString pdf() const { return folder->filePath(QStringLiteral("out.pdf")); }
    QStringList texts(const SheetGrid& grid, QPageSize::PageSizeId paper = QPageSize::A4) {
        setPrintTarget(pdf(), paper);
        PrintSheet(grid, 1);
        setPrintTarget({});
        return printedPages(pdf());
    }
    QList<QImage> pictures(const SheetGrid& grid, QPageSize::PageSizeId paper = QPageSize::A4) {
        texts(grid, paper);
        return pagePictures(pdf(), Dpi);
    }

    std::unique_ptr<QTemporaryDir> folder;

private Q_SLOTS:
    void init() { folder = std::make_unique<QTemporaryDir>(); }
    void textIsTextAndFontsAreEmbedded();
    void margins();
    void marginsThatLeaveNothingAreNone();
    void orientation();
    void colours();
    void heads();
    void headsStandOnEveryPage();
    void gridLinesAndFrame();
    void dataMaxEndsAtTheLastText();
    void aBlockAlone();
    void aBlockThatEndsAboveItsStartIsAnEmptyPage();
    void pageBreakIsBehindItsRow();
    void bestFitIsOnePageAcross();
    void smartPrintShrinksALittle();
    void columnsThatDoNotFitComeOnPagesOfTheirOwn();
    void footerCodes();
    void jobName();
    void hiddenRowsAndColumnsStayOut();
    void longTextsBreakAndNothingIsLost();
    void aRowHigherThanItsPageGoesOn();
    void overflowingTextsRunOverAndAreSqueezed();
    void aChartPageIsOneSheetOfPaper_data();
    void aChartPageIsOneSheetOfPaper();
    void otherScriptsAndBlankSheets();
    void withoutAPrinterAPdfIsKept();
    void aFolderThatCannotBeWrittenIsTold();
};

void TestPrinting::textIsTextAndFontsAreEmbedded() {
    SheetGrid grid;
    plain(grid);
    grid.ColWidth(-1, 20);
    grid.SetText(1, 1, QStringLiteral("Amazing Grace"));
    grid.Col(2);
    grid.Row(1);
    grid.FontBold(true);
    grid.SetText(2, 1, QStringLiteral("Bold"));
    const QStringList pages = texts(grid);
    QCOMPARE(pages.size(), 1);
    QVERIFY(pages[0].contains(QLatin1String("Amazing Grace")));
    QVERIFY(pages[0].contains(QLatin1String("Bold")));
    const QStringList fonts = printedFonts(pdf());
    QCOMPARE(fonts.size(), 2);
    for (const QString& font : fonts)
        QVERIFY2(font.endsWith(QLatin1String("yes")), qPrintable(font));
}

void TestPrinting::margins() {
    SheetGrid grid;
    plain(grid);
    for (int row = 1; row <= 3; ++row) grid.SetText(1, row, QStringLiteral("x"));
    grid.PrintBorder(true);
    grid.PrintMarginTop(1440);
    grid.PrintMarginLeft(2880);
    const QRect box = inked(pictures(grid).value(0));
    QVERIFY2(qAbs(box.left() - 2880 / TwipsPerPoint) <= 1, qPrintable(QString::number(box.left())));
    QVERIFY2(qAbs(box.top() - 1440 / TwipsPerPoint) <= 1, qPrintable(QString::number(box.top())));
    // The margins decide how many rows fit on a page.
    SheetGrid tall;
    plain(tall, 100);
    for (int row = 1; row <= 100; ++row) tall.SetText(1, row, QStringLiteral("row %1").arg(row));
    tall.RowHeight(-1, 20);
    tall.PrintMarginTop(720);
    tall.PrintMarginBottom(720);
    // A4 is 842 points high: 770 are left, 38 rows of 20.
    QVERIFY(texts(tall).value(1).trimmed().startsWith(QLatin1String("row 39")));
    tall.PrintMarginBottom(2880);
    QVERIFY(texts(tall).value(1).trimmed().startsWith(QLatin1String("row 34")));
}

void TestPrinting::marginsThatLeaveNothingAreNone() {
    SheetGrid grid;
    plain(grid);
    grid.SetText(1, 1, QStringLiteral("still here"));
    grid.PrintMarginLeft(14400);
    QVERIFY(texts(grid).value(0).contains(QLatin1String("still here")));
}

void TestPrinting::orientation() {
    SheetGrid grid;
    plain(grid);
    grid.SetText(1, 1, QStringLiteral("x"));
    QImage page = pictures(grid, QPageSize::Letter).value(0);
    QCOMPARE(page.size(), QSize(612, 792));
    grid.PrintOrientation(PrintOrientations::Landscape);
    page = pictures(grid, QPageSize::Letter).value(0);
    QCOMPARE(page.size(), QSize(792, 612));
}

void TestPrinting::colours() {
    SheetGrid grid;
    plain(grid);
    grid.Col(1);
    grid.Row(1);
    grid.SetText(1, 1, QStringLiteral("Song"));
    grid.BackColor(PrintedGreen);
    grid.ForeColor(RGB(255, 0, 0));
    grid.PrintColor(true);
    QImage page = pictures(grid).value(0);
    QVERIFY(has(page, QColor(180, 255, 180)));
    grid.PrintColor(false);
    page = pictures(grid).value(0);
    QVERIFY(!has(page, QColor(180, 255, 180)));
    bool coloured = false;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x) coloured |= page.pixelColor(x, y).saturation() > 10;
    QVERIFY(!coloured);
    QVERIFY(texts(grid).value(0).contains(QLatin1String("Song")));
}

void TestPrinting::heads() {
    SheetGrid grid;
    plain(grid);
    grid.ColWidth(-1, 20);
    grid.SetText(1, 0, QStringLiteral("First Name"));
    grid.SetText(3, 0, QStringLiteral("Vacation Days"));
    grid.SetText(0, 1, QStringLiteral("Head"));
    grid.SetText(1, 1, QStringLiteral("Ann"));
    QVERIFY(!texts(grid).value(0).contains(QLatin1String("Name")));
    grid.PrintColHeaders(true);
    const QString page = texts(grid).value(0);
    QVERIFY(page.contains(QLatin1String("First Name")));
    // A column that has only its head is printed with the heads.
    QVERIFY(page.contains(QLatin1String("Vacation Days")));
    QVERIFY(!page.contains(QLatin1String("Head")));
    grid.PrintRowHeaders(true);
    QVERIFY(texts(grid).value(0).contains(QLatin1String("Head")));
    QVERIFY(!has(pictures(grid).value(0), QColor(0xEE, 0xE8, 0xD8)));
    grid.PrintShadows(true);
    QVERIFY(has(pictures(grid).value(0), QColor(0xEE, 0xE8, 0xD8)));
}

void TestPrinting::headsStandOnEveryPage() {
    SheetGrid grid;
    plain(grid, 120);
    grid.PrintColHeaders(true);
    grid.SetText(1, 0, QStringLiteral("HeadOfAll"));
    for (int row = 1; row <= 120; ++row) grid.SetText(1, row, QString::number(row));
    const QStringList pages = texts(grid);
    QVERIFY(pages.size() >= 3);
    for (const QString& page : pages) QVERIFY(page.contains(QLatin1String("HeadOfAll")));
}

void TestPrinting::gridLinesAndFrame() {
    SheetGrid grid;
    plain(grid);
    grid.SetText(3, 3, QStringLiteral(" "));
    QVERIFY(inked(pictures(grid).value(0)).isEmpty());
    grid.PrintGrid(true);
    const QRect lines = inked(pictures(grid).value(0));
    // Three columns of 10 "0" of 5.56 points and three rows of 20 points.
    QVERIFY2(qAbs(lines.width() - 167) <= 2, qPrintable(QString::number(lines.width())));
    QVERIFY2(qAbs(lines.height() - 60) <= 2, qPrintable(QString::number(lines.height())));
    grid.PrintGrid(false);
    grid.PrintBorder(true);
    const QImage framed = pictures(grid).value(0);
    QCOMPARE(inked(framed).size(), lines.size());
    QVERIFY(isWhite(framed.pixel(lines.center())));
}

void TestPrinting::dataMaxEndsAtTheLastText() {
    SheetGrid grid;
    plain(grid, 200);
    grid.SetText(1, 2, QStringLiteral("last"));
    QCOMPARE(texts(grid).size(), 1);
    grid.PrintUseDataMax(false);
    QCOMPARE(texts(grid).size(), 6);  // 38 rows a page
}

void TestPrinting::aBlockAlone() {
    SheetGrid grid;
    plain(grid, 10);
    for (int row = 1; row <= 10; ++row)
        for (int col = 1; col <= 3; ++col)
            grid.SetText(col, row, QStringLiteral("c%1r%2").arg(col).arg(row));
    grid.PrintType(PrintTypes::Block);
    grid.Col(2);
    grid.Row(3);
    grid.Col2(3);
    grid.Row2(4);
    QCOMPARE(texts(grid).value(0).simplified(), QStringLiteral("c2r3 c3r3 c2r4 c3r4"));
    // An end that was not found runs to the end of the data.
    grid.Row(9);
    grid.Row2(-2);
    QCOMPARE(texts(grid).value(0).simplified(), QStringLiteral("c2r9 c3r9 c2r10 c3r10"));
}

void TestPrinting::aBlockThatEndsAboveItsStartIsAnEmptyPage() {
    SheetGrid grid;
    plain(grid, 10);
    grid.SetText(1, 10, QStringLiteral("x"));
    grid.PrintType(PrintTypes::Block);
    grid.Col(1);
    grid.Row(6);
    grid.Col2(3);
    grid.Row2(4);
    grid.PrintFooter(QStringLiteral("/cPage /p Of /pc"));
    QCOMPARE(texts(grid).size(), 1);
    QCOMPARE(texts(grid).value(0).simplified(), QStringLiteral("Page 1 Of 1"));
}

void TestPrinting::pageBreakIsBehindItsRow() {
    SheetGrid grid;
    plain(grid);
    for (int row = 1; row <= 3; ++row) grid.SetText(1, row, QStringLiteral("row%1").arg(row));
    grid.Row(2);
    grid.RowPageBreak(true);
    QStringList pages = texts(grid);
    QCOMPARE(pages.size(), 2);
    QCOMPARE(pages[0].simplified(), QStringLiteral("row1 row2"));
    QCOMPARE(pages[1].simplified(), QStringLiteral("row3"));
    // Behind the last row it makes no empty page.
    grid.Row(3);
    grid.RowPageBreak(true);
    QCOMPARE(texts(grid).size(), 2);
}

void TestPrinting::bestFitIsOnePageAcross() {
    SheetGrid grid;
    grid.MaxRows(1);
    grid.MaxCols(13);
    grid.ColWidth(-1, 20);
    for (int col = 1; col <= 13; ++col) grid.SetText(col, 1, QStringLiteral("col%1").arg(col));
    QVERIFY(texts(grid).size() > 2);
    grid.PrintScalingMethod(PrintScaling::BestFit);
    grid.PrintBestFitPagesWide(1);
    QStringList pages = texts(grid);
    QCOMPARE(pages.size(), 1);
    QVERIFY(pages[0].contains(QLatin1String("col1 ")));
    QVERIFY(pages[0].contains(QLatin1String("col13")));
    grid.PrintBestFitPagesWide(2);
    QCOMPARE(texts(grid).size(), 2);
}

void TestPrinting::smartPrintShrinksALittle() {
    SheetGrid grid;
    plain(grid);
    grid.ColWidth(-1, 36);  // 600 points on 523
    grid.SetText(3, 1, QStringLiteral("x"));
    grid.SetText(1, 1, QStringLiteral("x"));
    QCOMPARE(texts(grid).size(), 2);
    grid.PrintSmartPrint(true);
    QCOMPARE(texts(grid).size(), 1);
    grid.ColWidth(-1, 60);  // 1000 points: it would be too small to read
    QVERIFY(texts(grid).size() > 1);
}

void TestPrinting::columnsThatDoNotFitComeOnPagesOfTheirOwn() {
    SheetGrid grid;
    plain(grid);
    grid.ColWidth(-1, 40);
    for (int col = 1; col <= 3; ++col) grid.SetText(col, 1, QStringLiteral("col%1").arg(col));
    const QStringList pages = texts(grid);
    QCOMPARE(pages.size(), 2);
    QCOMPARE(pages[0].simplified(), QStringLiteral("col1 col2"));
    QCOMPARE(pages[1].simplified(), QStringLiteral("col3"));
}

void TestPrinting::footerCodes() {
    SheetGrid grid;
    plain(grid, 60);
    for (int row = 1; row <= 60; ++row) grid.SetText(1, row, QStringLiteral("x"));
    grid.PrintFooter(QStringLiteral("/cPage /p Of /pc"));
    grid.PrintHeader(QStringLiteral("Left/cMiddle 1/2"));
    const QStringList pages = texts(grid);
    QCOMPARE(pages.size(), 2);
    QVERIFY(pages[0].contains(QLatin1String("Page 1 Of 2")));
    QVERIFY(pages[1].contains(QLatin1String("Page 2 Of 2")));
    QVERIFY(pages[1].contains(QLatin1String("Left")));
    QVERIFY(pages[1].contains(QLatin1String("Middle 1/2")));
    // It is centred below the cells.
    grid.MaxRows(1);
    grid.SetText(1, 1, QStringLiteral(" "));
    grid.PrintHeader(QString());
    const QRect box = inked(pictures(grid).value(0));
    QVERIFY(qAbs(box.center().x() - 595 / 2) <= 2);
    QVERIFY(box.top() > 842 - 36);
    QVERIFY(box.bottom() < 842 - 5);
}

void TestPrinting::jobName() {
    SheetGrid grid;
    plain(grid);
    grid.SetText(1, 1, QStringLiteral("Set List For:"));
    grid.SetText(2, 1, QStringLiteral("10/05/03"));
    const auto title = [&] {
        texts(grid);
        QFile file(pdf());
        if (!file.open(QIODevice::ReadOnly)) return QByteArray();
        return file.readAll();
    };
    QVERIFY(!title().isEmpty());
    const auto utf16 = [](const QString& text) {
        QByteArray bytes;
        for (const QChar c : text) bytes.append(c.row() ? char(c.row()) : '\0').append(c.cell());
        return bytes;
    };
    QVERIFY(title().contains(utf16(QStringLiteral("Set List For: 10"))));
    // The first row with text gives the title.
    grid.ClearRange(1, 1, -1, -1, true);
    grid.SetText(2, 3, QStringLiteral("Third row"));
    QVERIFY(title().contains(utf16(QStringLiteral("Third row"))));
    grid.PrintJobName(QStringLiteral("Worship Schedule"));
    QVERIFY(title().contains(utf16(QStringLiteral("Worship Schedule"))));
}

void TestPrinting::hiddenRowsAndColumnsStayOut() {
    SheetGrid grid;
    plain(grid);
    for (int row = 1; row <= 3; ++row)
        for (int col = 1; col <= 3; ++col)
            grid.SetText(col, row, QStringLiteral("c%1r%2").arg(col).arg(row));
    grid.Col(2);
    grid.ColHidden(true);
    grid.Row(1);
    grid.RowHidden(true);
    QCOMPARE(texts(grid).value(0).simplified(), QStringLiteral("c1r2 c3r2 c1r3 c3r3"));
}

void TestPrinting::longTextsBreakAndNothingIsLost() {
    SheetGrid grid;
    plain(grid);
    QStringList words;
    for (int i = 0; i < 60; ++i) words.append(QStringLiteral("word%1").arg(i));
    grid.SetText(1, 1, words.join(QLatin1Char(' ')));
    grid.SetText(2, 1, QStringLiteral("first\rsecond\r\nthird"));
    grid.SetText(1, 2, QStringLiteral("below"));
    const QString page = texts(grid).value(0);
    for (const QString& word : words) QVERIFY2(page.contains(word), qPrintable(word));
    // A word that is wider than its column breaks in itself.
    const QString bible = QStringLiteral("abcdefghijklmnopqrstuvwxyz");
    grid.SetText(3, 3, bible + bible);
    QCOMPARE(texts(grid)
                 .join(QString())
                 .remove(QRegularExpression(QStringLiteral("\\s")))
                 .count(QLatin1Char('z')),
             2);
    for (const char* line : {"first", "second", "third", "below"})
        QVERIFY(page.contains(QLatin1String(line)));
    QVERIFY(page.indexOf(QLatin1String("word59")) < page.indexOf(QLatin1String("below")));
}

void TestPrinting::aRowHigherThanItsPageGoesOn() {
    SheetGrid grid;
    plain(grid);
    QStringList lines;
    for (int i = 1; i <= 150; ++i) lines.append(QStringLiteral("line%1.").arg(i));
    grid.SetText(1, 1, lines.join(QLatin1Char('\r')));
    grid.SetText(1, 2, QStringLiteral("after"));
    const QStringList pages = texts(grid);
    QVERIFY(pages.size() >= 3);
    QVERIFY(pages.last().contains(QLatin1String("after")));
    QVERIFY(pages.join(QString()).contains(QLatin1String("line150.")));
}

void TestPrinting::overflowingTextsRunOverAndAreSqueezed() {
    SheetGrid grid;
    grid.MaxRows(2);
    grid.MaxCols(37);
    grid.ColWidth(-1, 2.5);
    grid.AllowCellOverflow(true);
    grid.PrintColHeaders(false);
    grid.PrintRowHeaders(false);
    grid.PrintGrid(false);
    grid.SetText(1, 1, QStringLiteral("Gmaj7/B"));
    grid.SetText(1, 2, QStringLiteral("Gmaj7"));
    grid.SetText(2, 2, QStringLiteral("C"));
    const QImage page = pictures(grid).value(0);
    const QRect box = inked(page);
    QVERIFY(box.width() > 2.5 * 5.56 * 2);  // over its neighbours
    QVERIFY(texts(grid).value(0).contains(QLatin1String("Gmaj7/B")));
    // Beside a filled cell a text is set narrower, to its last letter.
    const auto cellOf = [&](const QString& text) {
        grid.SetText(1, 1, QString());
        grid.SetText(1, 2, text);
        const QImage picture = pagePictures((texts(grid), pdf()), 4 * Dpi).value(0);
        const int right = int(4 * (36 + 2.5 * 5.56));  // of the first cell, behind the margin
        return inked(picture.copy(0, 0, right, picture.height()));
    };
    const QRect narrow = cellOf(QStringLiteral("Gm7"));
    QVERIFY(narrow.right() < int(4 * (36 + 2.5 * 5.56)) - 1);
    QVERIFY(narrow.width() > 4 * 8);
}

void TestPrinting::aChartPageIsOneSheetOfPaper_data() {
    QTest::addColumn<int>("paper");
    QTest::newRow("A4") << int(QPageSize::A4);
    QTest::newRow("Letter") << int(QPageSize::Letter);
}

void TestPrinting::aChartPageIsOneSheetOfPaper() {
    QFETCH(int, paper);
    SheetGrid grid;
    grid.MaxRows(42);
    grid.MaxCols(37);
    grid.ColWidth(-1, 2.5);
    grid.RowHeight(-1, 14.88);
    grid.PrintColHeaders(false);
    grid.PrintRowHeaders(false);
    grid.AllowCellOverflow(true);
    grid.SetText(37, 42, QStringLiteral("end"));
    grid.SetText(1, 1, QStringLiteral("start"));
    const QStringList pages = texts(grid, QPageSize::PageSizeId(paper));
    QCOMPARE(pages.size(), 1);
    QVERIFY(pages[0].contains(QLatin1String("start")));
    QVERIFY(pages[0].contains(QLatin1String("end")));
}

void TestPrinting::otherScriptsAndBlankSheets() {
    SheetGrid grid;
    plain(grid);
    grid.SetText(1, 1, QStringLiteral("Größe Ælfric Łódź"));
    grid.ColWidth(1, 40);
    QVERIFY(texts(grid).value(0).contains(QStringLiteral("Größe Ælfric Łódź")));
    SheetGrid blank;
    blank.MaxRows(0);
    blank.MaxCols(0);
    QCOMPARE(texts(blank).size(), 1);
}

void TestPrinting::withoutAPrinterAPdfIsKept() {
    World world;
    world.start();
    SheetGrid grid;
    plain(grid);
    grid.SetText(1, 1, QStringLiteral("a/b"));
    QStringList known;
    for (int job = 1; job <= 2; ++job) {
        PrintSheet(grid, 1);
        QDir printed(world.path(QStringLiteral("printed")));
        QStringList files = printed.entryList(QDir::Files);
        for (const QString& old : known) files.removeOne(old);
        QCOMPARE(files.size(), 1);
        known += files;
        QVERIFY(files[0].startsWith(QLatin1String("a_b 2026-11-21 ")));
        QVERIFY(printedPages(printed.filePath(files[0])).value(0).contains(QLatin1String("a/b")));
        const QString said = world.main().SB->SimpleText();
        QVERIFY2(said.endsWith(QLatin1String("printed/") + files[0]), qPrintable(said));
    }
}

void TestPrinting::aFolderThatCannotBeWrittenIsTold() {
    World world;
    world.start();
    QFile blocker(world.path(QStringLiteral("printed")));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    SheetGrid grid;
    plain(grid);
    grid.PrintJobName(QStringLiteral("job"));
    QString told;
    world.answers.custom(QStringLiteral("the box about the folder"), [&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box) told = box->text();
        modal->close();
    });
    PrintSheet(grid, 1);
    QVERIFY2(told.contains(QLatin1String("could not be written")), qPrintable(told));
    QCOMPARE(QFileInfo(blocker.fileName()).size(), 0);
}

LORVANITE_TEST(TestPrinting)
#include "test_printing.moc"
