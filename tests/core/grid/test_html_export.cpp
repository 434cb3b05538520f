// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A grid as a page of HTML, read back with a parser that knows nothing of it.
#include "core/grid/sheet_grid.h"
#include "support/files.h"
#include "support/registry.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

namespace {

constexpr int ExportedGreen = RGB(180, 255, 180);

void fill(SheetGrid& grid, int cols, int rows) {
    grid.MaxCols(cols);
    grid.MaxRows(rows);
    grid.GridShowHoriz(false);
    grid.GridShowVert(false);
    for (int row = 1; row <= rows; ++row)
        for (int col = 1; col <= cols; ++col)
            grid.SetText(col, row, QStringLiteral("c%1r%2").arg(col).arg(row));
}

}  // namespace

class TestHtmlExport : public QObject {
    Q_OBJECT

    QString path() const { return folder->filePath(QStringLiteral("out.html")); }

    QString written() const { return QString::fromUtf8(bytesOf(path())); }

    // The table as a reader sees it.
    QTextTable* read() {
        reader = std::make_unique<QTextDocument>();
        reader->setHtml(written());
        for (auto frame = reader->rootFrame()->begin(); !frame.atEnd(); ++frame)
            if (auto* table = qobject_cast<QTextTable*>(frame.currentFrame())) return table;
        return nullptr;
    }

    static QString textOf(const QTextTableCell& cell) {
        QTextCursor cursor = cell.firstCursorPosition();
        cursor.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
        return cursor.selectedText()
            .replace(QChar::LineSeparator, QLatin1Char('\n'))
            .replace(QChar::Nbsp, QLatin1Char(' '));
    }

    bool write(const SheetGrid& grid, int col, int row, int col2, int row2, bool append = false) {
        return grid.ExportRangeToHTML(col, row, col2, row2, path(), append, QStringLiteral("lsl"));
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<QTextDocument> reader;

private Q_SLOTS:
    void init() { folder = std::make_unique<QTemporaryDir>(); }
    void oneTableOfTheBlockInRowOrder();
    void theTagsThatMailWorksOnStandOnLinesOfTheirOwn();
    void coloursAlignmentAndFonts();
    void bordersAndGridLines();
    void spansAreOneCell();
    void spansAreCutToTheBlock();
    void hiddenRowsAndColumnsStayOut();
    void textsAreEscaped();
    void lineEndsAndBlanksAreKept();
    void anEndThatWasNotFoundRunsToTheLastRowWithData();
    void aBlockThatEndsAboveItsStartIsAnEmptyTable();
    void emptyGrid();
    void widthOfTheSchedule();
    void overflowingTextsKeepTheirColumns();
    void theFileIsReplacedOrAddedTo();
    void aPathThatCannotBeWrittenGivesFalse();
    void onlyTheSheetThatCallsAddress();
    void noLogIsWritten();
    void randomGridsAreReadBackAsTheyAre();
};

void TestHtmlExport::oneTableOfTheBlockInRowOrder() {
    SheetGrid grid;
    fill(grid, 4, 5);
    QVERIFY(write(grid, 2, 2, 3, 4));
    QTextTable* table = read();
    QVERIFY(table);
    QCOMPARE(table->rows(), 3);
    QCOMPARE(table->columns(), 2);
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 2; ++col)
            QCOMPARE(textOf(table->cellAt(row, col)),
                     QStringLiteral("c%1r%2").arg(col + 2).arg(row + 2));
    QCOMPARE(written().count(QLatin1String("<TABLE")), 1);
}

void TestHtmlExport::theTagsThatMailWorksOnStandOnLinesOfTheirOwn() {
    SheetGrid grid;
    fill(grid, 2, 2);
    QVERIFY(write(grid, 1, 1, 2, 2));
    const QStringList lines = written().split(QLatin1Char('\n'));
    QVERIFY(lines.contains(QLatin1String("<HTML>")));
    QVERIFY(lines.contains(QLatin1String("</TABLE>")));
    QCOMPARE(lines.filter(QStringLiteral("<TR")).size(), 2);
    QVERIFY(written().contains(QLatin1String("charset=utf-8")));
}

void TestHtmlExport::coloursAlignmentAndFonts() {
    SheetGrid grid;
    fill(grid, 3, 1);
    grid.Col(1);
    grid.Row(1);
    grid.BackColor(ExportedGreen);
    grid.ForeColor(RGB(255, 0, 0));
    grid.Col(2);
    grid.TypeHAlign(HAlign::Centre);
    grid.FontBold(true);
    grid.FontName(QStringLiteral("Arial\"><script>"));
    grid.FontSize(24);
    QVERIFY(write(grid, 1, 1, 3, 1));
    QTextTable* table = read();
    QVERIFY(table);
    QCOMPARE(table->cellAt(0, 0).format().background().color(), QColor(180, 255, 180));
    QCOMPARE(table->cellAt(0, 0).firstCursorPosition().charFormat().foreground().color(),
             QColor(255, 0, 0));
    QTextCursor second = table->cellAt(0, 1).firstCursorPosition();
    QCOMPARE(second.blockFormat().alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
    second.movePosition(QTextCursor::NextCharacter);
    QVERIFY(second.charFormat().fontWeight() > QFont::Normal);
    QCOMPARE(second.charFormat().fontPointSize(), 24.0);
    QVERIFY(!written().contains(QLatin1String("<script")));
    QCOMPARE(table->cellAt(0, 2).format().background().style(), Qt::NoBrush);
}

void TestHtmlExport::bordersAndGridLines() {
    SheetGrid grid;
    fill(grid, 2, 2);
    QVERIFY(write(grid, 1, 1, 2, 2));
    QVERIFY(!written().contains(QLatin1String("border-bottom")));
    grid.SetCellBorder(1, 1, 2, 1, BorderType::Bottom, 0, BorderStyle::Solid);
    QVERIFY(write(grid, 1, 1, 2, 2));
    QCOMPARE(written().count(QLatin1String("border-bottom:1px solid #000000")), 2);
    grid.GridShowVert(true);
    QVERIFY(write(grid, 1, 1, 2, 2));
    QCOMPARE(written().count(QLatin1String("border-right")), 4);
    QCOMPARE(written().count(QLatin1String("border-bottom")), 2);
    grid.GridShowHoriz(true);
    QVERIFY(write(grid, 1, 1, 2, 2));
    QCOMPARE(written().count(QLatin1String("border-bottom:1px solid #000000")), 2);
    QCOMPARE(written().count(QLatin1String("border-bottom")), 4);
}

void TestHtmlExport::spansAreOneCell() {
    SheetGrid grid;
    fill(grid, 3, 3);
    grid.AddCellSpan(1, 1, 3, 1);
    grid.AddCellSpan(2, 2, 2, 2);
    QVERIFY(write(grid, 1, 1, 3, 3));
    QTextTable* table = read();
    QVERIFY(table);
    QCOMPARE(table->columns(), 3);
    QCOMPARE(table->cellAt(0, 0).columnSpan(), 3);
    QCOMPARE(table->cellAt(1, 1).columnSpan(), 2);
    QCOMPARE(table->cellAt(1, 1).rowSpan(), 2);
    QCOMPARE(textOf(table->cellAt(1, 1)), QStringLiteral("c2r2"));
    // What a span covers is not shown.
    QVERIFY(!written().contains(QLatin1String("c3r3")));
    QVERIFY(written().contains(QLatin1String("c1r3")));
}

void TestHtmlExport::spansAreCutToTheBlock() {
    SheetGrid grid;
    fill(grid, 4, 4);
    grid.AddCellSpan(1, 1, 4, 3);
    QVERIFY(write(grid, 2, 2, 3, 4));
    QTextTable* table = read();
    QVERIFY(table);
    QCOMPARE(table->columns(), 2);
    QCOMPARE(table->rows(), 3);
    QCOMPARE(textOf(table->cellAt(0, 0)), QStringLiteral("c1r1"));
    QCOMPARE(table->cellAt(0, 0).columnSpan(), 2);
    QCOMPARE(table->cellAt(0, 0).rowSpan(), 2);
    QCOMPARE(textOf(table->cellAt(2, 0)), QStringLiteral("c2r4"));
}

void TestHtmlExport::hiddenRowsAndColumnsStayOut() {
    SheetGrid grid;
    fill(grid, 3, 3);
    grid.AddCellSpan(1, 3, 3, 1);
    grid.Col(1);
    grid.ColHidden(true);
    grid.Row(2);
    grid.RowHidden(true);
    QVERIFY(write(grid, 1, 1, 3, 3));
    QTextTable* table = read();
    QVERIFY(table);
    QCOMPARE(table->columns(), 2);
    QCOMPARE(table->rows(), 2);
    QCOMPARE(textOf(table->cellAt(0, 0)), QStringLiteral("c2r1"));
    // A span that begins in a hidden column shows its text in the rest of it.
    QCOMPARE(textOf(table->cellAt(1, 0)), QStringLiteral("c1r3"));
    QCOMPARE(table->cellAt(1, 0).columnSpan(), 2);
}

void TestHtmlExport::textsAreEscaped() {
    SheetGrid grid;
    fill(grid, 1, 1);
    const QString text = QStringLiteral("<B>&amp; \"Größe\" </TD></TABLE> – ♯♭ 𝄞");
    grid.SetText(1, 1, text);
    QVERIFY(write(grid, 1, 1, 1, 1));
    QCOMPARE(textOf(read()->cellAt(0, 0)), text);
    QCOMPARE(reader->metaInformation(QTextDocument::DocumentTitle), text);
}

void TestHtmlExport::lineEndsAndBlanksAreKept() {
    SheetGrid grid;
    fill(grid, 1, 1);
    grid.SetText(1, 1, QStringLiteral("  a  b\rc\r\nd\n\ne\n  f\r g\t\th"));
    QVERIFY(write(grid, 1, 1, 1, 1));
    QCOMPARE(textOf(read()->cellAt(0, 0)), QStringLiteral("  a  b\nc\nd\n\ne\n  f\n g  h"));
    QCOMPARE(reader->metaInformation(QTextDocument::DocumentTitle),
             QStringLiteral("a b c d e f g h"));
}

void TestHtmlExport::anEndThatWasNotFoundRunsToTheLastRowWithData() {
    SheetGrid grid;
    fill(grid, 1, 3);
    grid.MaxRows(50);
    for (const int end : {0, -1, -2}) {
        QVERIFY(write(grid, 1, 2, 1, end));
        QCOMPARE(read()->rows(), 2);
    }
}

void TestHtmlExport::aBlockThatEndsAboveItsStartIsAnEmptyTable() {
    SheetGrid grid;
    fill(grid, 1, 9);
    QVERIFY(write(grid, 1, 6, 1, 3));
    QVERIFY(written().contains(QLatin1String("<TABLE")));
    QVERIFY(!written().contains(QLatin1String("<TR")));
    QVERIFY(!written().contains(QLatin1String("r6")));
}

void TestHtmlExport::emptyGrid() {
    SheetGrid grid;
    grid.MaxRows(0);
    grid.MaxCols(0);
    QVERIFY(write(grid, 1, 1, 2, grid.DataRowCnt()));
    QVERIFY(written().contains(QLatin1String("</HTML>")));
}

void TestHtmlExport::widthOfTheSchedule() {
    SheetGrid grid;
    fill(grid, 4, 1);
    grid.ColWidth(1, 8.0);
    grid.ColWidth(2, 31.0);
    grid.ColWidth(3, 26.87);
    grid.ColWidth(4, 18.37);
    QVERIFY(write(grid, 1, 1, 4, 1));
    const QStringList tags = written()
                                 .split(QLatin1Char('\n'))
                                 .filter(QStringLiteral("<TABLE CELLSPACING=0 CELLPADDING=0"));
    QCOMPARE(tags.size(), 1);
    QVERIFY(tags[0].contains(QLatin1String("WIDTH=692 ")));
}

void TestHtmlExport::overflowingTextsKeepTheirColumns() {
    SheetGrid grid;
    fill(grid, 2, 1);
    QVERIFY(write(grid, 1, 1, 2, 1));
    QVERIFY(!written().contains(QLatin1String("nowrap")));
    grid.AllowCellOverflow(true);
    QVERIFY(write(grid, 1, 1, 2, 1));
    QVERIFY(written().contains(QLatin1String("table-layout:fixed;white-space:nowrap")));
}

void TestHtmlExport::theFileIsReplacedOrAddedTo() {
    SheetGrid grid;
    fill(grid, 1, 1);
    QVERIFY(write(grid, 1, 1, 1, 1));
    const QString once = written();
    QVERIFY(write(grid, 1, 1, 1, 1));
    QCOMPARE(written(), once);
    QVERIFY(write(grid, 1, 1, 1, 1, true));
    QCOMPARE(written(), once + once);
}

void TestHtmlExport::aPathThatCannotBeWrittenGivesFalse() {
    SheetGrid grid;
    fill(grid, 1, 1);
    const QString nowhere = folder->filePath(QStringLiteral("no/such/folder/x.html"));
    for (const bool append : {false, true})
        QVERIFY(!grid.ExportRangeToHTML(1, 1, 1, 1, nowhere, append, QStringLiteral("lsl")));
    QVERIFY(!grid.ExportRangeToHTML(1, 1, 1, 1, folder->path(), false, QStringLiteral("lsl")));
    QVERIFY(grid.ExportRangeToHTML(1, 1, 1, 1, folder->path() + QStringLiteral("\\back.html"),
                                   false, QStringLiteral("lsl")));
    QVERIFY(QFileInfo::exists(folder->filePath(QStringLiteral("back.html"))));
}

// Deliberate: behaviour 17.
void TestHtmlExport::noLogIsWritten() {
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    SheetGrid grid;
    grid.SetText(1, 1, QStringLiteral("text"));
    const bool written = grid.ExportRangeToHTML(
        1, 1, 1, 1, folder.filePath(QStringLiteral("a.html")), false, QStringLiteral("lsl"));
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(written);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{"a.html"});
}

void TestHtmlExport::onlyTheSheetThatCallsAddress() {
    SheetGrid grid;
    fill(grid, 1, 1);
    grid.SheetCount(2);
    grid.Sheet(2);
    grid.SetText(1, 1, QStringLiteral("second"));
    QVERIFY(write(grid, 1, 1, 1, 1));
    QVERIFY(written().contains(QLatin1String("second")));
    QVERIFY(!written().contains(QLatin1String("c1r1")));
}

void TestHtmlExport::randomGridsAreReadBackAsTheyAre() {
    uint seed = 20261121;
    const auto random = [&](uint bound) {
        seed = seed * 1664525U + 1013904223U;
        return int((seed >> 8) % bound);
    };
    for (int round = 0; round < 200; ++round) {
        SheetGrid grid;
        const int cols = 1 + random(6);
        const int rows = 1 + random(6);
        fill(grid, cols, rows);
        for (int i = 0; i < 3; ++i) {
            grid.Col(1 + random(uint(cols)));
            grid.Row(1 + random(uint(rows)));
            grid.BackColor(random(0x1000000));
            const QChar letter(0xA1 + random(0x300));
            grid.Text(QString(random(4), letter));
        }
        const int spanCol = 1 + random(uint(cols));
        const int spanRow = 1 + random(uint(rows));
        if (random(2)) grid.AddCellSpan(spanCol, spanRow, 2, 2);
        QVERIFY(write(grid, 1, 1, cols, rows));
        QTextTable* table = read();
        QVERIFY(table);
        QCOMPARE(table->rows(), rows);
        QCOMPARE(table->columns(), cols);
        for (int row = 1; row <= rows; ++row)
            for (int col = 1; col <= cols; ++col) {
                const CellSpan span = grid.spanAt(1, col, row);
                const int anchorCol = span.cols > 0 ? span.col : col;
                const int anchorRow = span.cols > 0 ? span.row : row;
                QString wanted = grid.GetText(anchorCol, anchorRow);
                wanted.replace(QChar::Nbsp, QLatin1Char(' '));
                if (wanted.isEmpty()) wanted = QStringLiteral(" ");
                QCOMPARE(textOf(table->cellAt(row - 1, col - 1)), wanted);
            }
    }
}

LORVANITE_TEST(TestHtmlExport)
#include "test_html_export.moc"
