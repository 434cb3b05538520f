// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Rows in and out, widths and heights, clearing, blocks and sorting.
#include "core/grid/sheet_grid.h"
#include "support/registry.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// A grid of one column with these texts.
void fill(SheetGrid& grid, const QStringList& texts) {
    grid.MaxCols(2);
    grid.MaxRows(int(texts.size()));
    for (int row = 1; row <= grid.MaxRows(); ++row) grid.SetText(1, row, texts[row - 1]);
}

QStringList texts(const SheetGrid& grid, int col = 1) {
    QStringList list;
    for (int row = 1; row <= grid.MaxRows(); ++row) list << grid.GetText(col, row);
    return list;
}

// Marks a row with all that moves along with it.
void mark(SheetGrid& grid, int row) {
    grid.RowHeight(row, 50);
    grid.Row(row);
    grid.RowHidden(true);
    grid.RowPageBreak(true);
    grid.Col(-1);
    grid.BackColor(RGB(1, 2, 3));
}

bool isMarked(const SheetGrid& grid, int row) {
    return grid.RowHeight(row) == 50 && grid.isRowHidden(1, row) && grid.hasPageBreak(1, row) &&
           grid.formatAt(1, 1, row).backColor == RGB(1, 2, 3);
}

bool isUnmarked(const SheetGrid& grid, int row) {
    return grid.RowHeight(row) != 50 && !grid.isRowHidden(1, row) && !grid.hasPageBreak(1, row) &&
           grid.formatAt(1, 1, row).backColor == White;
}

}  // namespace

class TestSheetGridRows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Deliberate: behaviour 13.
    void insertedRowsPushTheLastOut() {
        SheetGrid grid;
        fill(grid, {u"a"_s, u"b"_s, u"c"_s, u"d"_s});
        mark(grid, 2);
        grid.AddCellSpan(1, 2, 2, 1);
        grid.AddCellSpan(1, 4, 2, 1);
        grid.InsertRows(2, 1);
        QCOMPARE(texts(grid), QStringList({u"a"_s, {}, u"b"_s, u"c"_s}));
        QVERIFY(isUnmarked(grid, 2));
        QVERIFY(isMarked(grid, 3));
        QCOMPARE(grid.spansOf(1).size(), size_t(1));
        QCOMPARE(grid.spanAt(1, 1, 3).row, 3);
        grid.InsertRows(1, 50);
        QCOMPARE(texts(grid), QStringList({{}, {}, {}, {}}));
        QCOMPARE(grid.MaxRows(), 4);
        grid.InsertRows(0, 1);
        grid.InsertRows(5, 1);
        grid.InsertRows(1, -1);
        QCOMPARE(grid.MaxRows(), 4);
    }

    void insertedRowWidensTheSpanItFallsInto() {
        SheetGrid grid;
        fill(grid, QStringList(10, u"x"_s));
        grid.AddCellSpan(1, 3, 2, 3);
        grid.InsertRows(4, 2);
        QCOMPARE(grid.spanAt(1, 1, 3).rows, 5);
        QCOMPARE(grid.spanAt(1, 1, 3).row, 3);
    }

    void rowHeadsMoveAndColumnHeadsStay() {
        SheetGrid grid;
        fill(grid, {u"a"_s, u"b"_s});
        grid.SetText(1, 0, u"head"_s);
        grid.SetText(0, 1, u"one"_s);
        grid.InsertRows(1, 1);
        QCOMPARE(grid.GetText(0, 2), u"one"_s);
        QCOMPARE(grid.GetText(1, 0), u"head"_s);
        grid.DeleteRows(1, 1);
        QCOMPARE(grid.GetText(0, 1), u"one"_s);
        QCOMPARE(grid.GetText(1, 0), u"head"_s);
    }

    void deletedRowsLetTheLowerMoveUp() {
        SheetGrid grid;
        fill(grid, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
        mark(grid, 4);
        grid.AddCellSpan(1, 5, 2, 1);
        grid.DeleteRows(2, 2);
        QCOMPARE(grid.MaxRows(), 5);
        QCOMPARE(texts(grid), QStringList({u"a"_s, u"d"_s, u"e"_s, {}, {}}));
        QVERIFY(isMarked(grid, 2));
        QVERIFY(isUnmarked(grid, 4));
        QCOMPARE(grid.spanAt(1, 2, 3).row, 3);
        grid.DeleteRows(2, 1000);
        QCOMPARE(texts(grid), QStringList({u"a"_s, {}, {}, {}, {}}));
        QVERIFY(isUnmarked(grid, 2));
        grid.DeleteRows(0, 1);
        grid.DeleteRows(6, 1);
        grid.DeleteRows(1, 0);
        QCOMPARE(texts(grid).first(), u"a"_s);
    }

    void spansShrinkWithTheRowsTheyLose_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("newRow");
        QTest::addColumn<int>("newRows");
        QTest::newRow("above") << 1 << 2 << 2 << 3;
        QTest::newRow("its head") << 3 << 2 << 3 << 2;
        QTest::newRow("its middle") << 5 << 1 << 4 << 2;
        QTest::newRow("its end") << 6 << 3 << 4 << 2;
        QTest::newRow("all of it") << 4 << 3 << 0 << 0;
        QTest::newRow("below") << 7 << 1 << 4 << 3;
    }

    void spansShrinkWithTheRowsTheyLose() {
        QFETCH(int, row);
        QFETCH(int, count);
        QFETCH(int, newRow);
        QFETCH(int, newRows);
        SheetGrid grid;
        fill(grid, QStringList(12, u"x"_s));
        grid.AddCellSpan(1, 4, 2, 3);
        grid.DeleteRows(row, count);
        QCOMPARE(grid.spansOf(1).size(), size_t(newRows > 0));
        if (newRows == 0) return;
        QCOMPARE(grid.spansOf(1)[0].row, newRow);
        QCOMPARE(grid.spansOf(1)[0].rows, newRows);
    }

    void rowsInAndOutOfAHugeEmptyGridCostNothing() {
        SheetGrid grid;
        grid.MaxRows(10'000'000);
        grid.SetText(1, 3, u"x"_s);
        grid.InsertRows(1, 5'000'000);
        QCOMPARE(grid.GetText(1, 5'000'003), u"x"_s);
        grid.DeleteRows(1, 5'000'000);
        QCOMPARE(grid.GetText(1, 3), u"x"_s);
    }

    void widthsAndHeights() {
        SheetGrid grid;
        grid.MaxRows(5);
        grid.MaxCols(5);
        grid.ColWidth(2, 32.88);
        QCOMPARE(grid.ColWidth(2), 32.88);
        grid.ColWidth(-1, 2.5);
        grid.RowHeight(-1, 14.88);
        QCOMPARE(grid.ColWidth(2), 2.5);
        QCOMPARE(grid.widthOf(1, 5), 2.5);
        QCOMPARE(grid.RowHeight(5), 14.88);
        QVERIFY(grid.RowHeight(0) != 14.88);
        grid.RowHeight(0, 30);
        grid.ColWidth(0, 12);
        QCOMPARE(grid.RowHeight(0), 30.0);
        QCOMPARE(grid.ColWidth(0), 12.0);
        grid.RowHeight(6, 99);
        grid.MaxRows(6);
        QCOMPARE(grid.RowHeight(6), 14.88);
        grid.ColWidth(1, -1);
        QCOMPARE(grid.ColWidth(1), 0.0);
        grid.ColWidth(1, 1e300);
        QCOMPARE(grid.ColWidth(1), 1000.0);
        grid.RowHeight(1, qQNaN());
        QCOMPARE(grid.RowHeight(1), 0.0);
        QCOMPARE(grid.widthOf(7, 1), 0.0);
    }

    void hiddenFlags() {
        SheetGrid grid;
        grid.MaxCols(4);
        grid.Col(1);
        grid.ColHidden(true);
        QVERIFY(grid.ColHidden());
        QVERIFY(grid.isColHidden(1, 1) && !grid.isColHidden(1, 2));
        grid.Col(-1);
        grid.ColHidden(false);
        QVERIFY(!grid.isColHidden(1, 1));
        grid.Row(2);
        grid.Row2(3);
        grid.BlockMode(true);
        grid.RowHidden(true);
        QVERIFY(grid.isRowHidden(1, 2) && grid.isRowHidden(1, 3) && !grid.isRowHidden(1, 4));
        QVERIFY(grid.RowHidden());
    }

    void clearingDataKeepsAComboACombo() {
        SheetGrid grid;
        grid.MaxRows(3);
        grid.MaxCols(2);
        grid.Row(2);
        grid.CellType(CellKind::Combo);
        grid.TypeComboBoxList(u"a\tb"_s);
        grid.Picture("image");
        grid.SetText(1, 2, u"b"_s);
        grid.SetText(1, 0, u"head"_s);
        grid.AddCellSpan(1, 3, 2, 1);
        grid.ClearRange(1, 1, -1, -1, true);
        QCOMPARE(grid.GetText(1, 2), QString());
        QCOMPARE(grid.Picture(), QByteArray());
        QCOMPARE(grid.CellType(), CellKind::Combo);
        QCOMPARE(grid.TypeComboBoxList(), u"a\tb"_s);
        QCOMPARE(grid.GetText(1, 0), u"head"_s);
        QCOMPARE(grid.spansOf(1).size(), size_t(1));
        grid.ClearRange(-1, 0, -1, 0, true);
        QCOMPARE(grid.GetText(1, 0), QString());
    }

    void clearingWithFormatsLeavesPlainCells() {
        SheetGrid grid;
        fill(grid, {u"a"_s, u"b"_s, u"c"_s});
        grid.Col(-1);
        grid.Row(-1);
        grid.FontBold(true);
        grid.Col(1);
        grid.Row(2);
        grid.BackColor(1);
        grid.AddCellSpan(1, 2, 2, 2);
        grid.ClearRange(1, 2, 1, 2, false);
        QCOMPARE(texts(grid), QStringList({u"a"_s, {}, u"c"_s}));
        QCOMPARE(grid.BackColor(), White);
        QVERIFY(grid.FontBold());
        QVERIFY(grid.spansOf(1).empty());
        grid.ClearRange(-1, -1, -1, -1, false);
        QVERIFY(grid.formatAt(1, 1, 1) == CellFormat());
        QCOMPARE(grid.DataRowCnt(), 0);
    }

    void clearingAnEmptyBlockDoesNothing() {
        SheetGrid grid;
        fill(grid, {u"a"_s, u"b"_s});
        grid.ClearRange(1, 2, 1, 1, true);
        grid.ClearRange(3, 1, 4, 2, true);
        grid.ClearRange(1, -7, 1, 2, true);
        QCOMPARE(texts(grid), QStringList({u"a"_s, u"b"_s}));
    }

    void blockCopiesTextsLooksPicturesAndSpans() {
        SheetGrid from;
        from.MaxRows(3);
        from.MaxCols(2);
        from.Col(-1);
        from.Row(-1);
        from.FontName(u"Arial"_s);
        from.Row(2);
        from.BackColor(RGB(0, 128, 0));
        from.Col(2);
        from.Row(-1);
        from.TypeHAlign(HAlign::Right);
        from.Row(3);
        from.Picture("image");
        from.SetText(2, 3, u"Ж"_s);
        from.AddCellSpan(1, 1, 2, 2);
        CellBlock block;
        QVERIFY(block.isEmpty());
        QVERIFY(from.SaveBlockToBuffer(1, 1, 2, 3, block));
        from.SetText(2, 3, u"later"_s);

        SheetGrid to;
        to.MaxRows(10);
        to.MaxCols(5);
        to.Col(-1);
        to.Row(-1);
        to.FontBold(true);
        to.FontName(u"Inter"_s);
        to.SetText(4, 7, u"old"_s);
        to.SetText(3, 5, u"old"_s);
        to.AddCellSpan(3, 4, 2, 2);
        to.AddCellSpan(1, 9, 5, 1);
        QVERIFY(to.LoadBlockFromBuffer(3, 5, block));
        for (int row = 1; row <= 3; ++row)
            for (int col = 1; col <= 2; ++col)
                QVERIFY(to.formatAt(1, col + 2, row + 4) == from.formatAt(1, col, row));
        QCOMPARE(to.GetText(4, 7), u"Ж"_s);
        QCOMPARE(to.GetText(3, 5), QString());
        QCOMPARE(to.pictureAt(1, 4, 7), QByteArray("image"));
        QVERIFY((to.spanAt(1, 3, 5) == CellSpan{3, 5, 2, 2}));
        QVERIFY(to.spanAt(1, 1, 9).cols == 5);
        QCOMPARE(to.spansOf(1).size(), size_t(2));
        QCOMPARE(to.formatAt(1, 1, 1).fontName, u"Inter"_s);
    }

    void blockIsCutAtTheEdge() {
        SheetGrid from;
        fill(from, {u"a"_s, u"b"_s, u"c"_s});
        from.AddCellSpan(1, 2, 2, 2);
        CellBlock block;
        QVERIFY(from.SaveBlockToBuffer(-1, -1, -1, -1, block));
        SheetGrid to;
        to.MaxRows(4);
        to.MaxCols(2);
        QVERIFY(to.LoadBlockFromBuffer(2, 3, block));
        QCOMPARE(texts(to, 2), QStringList({{}, {}, u"a"_s, u"b"_s}));
        QVERIFY(to.spansOf(1).empty());
        QVERIFY(!to.LoadBlockFromBuffer(3, 1, block));
        QVERIFY(!to.LoadBlockFromBuffer(0, 1, block));
        QVERIFY(!to.LoadBlockFromBuffer(1, 1, CellBlock()));
        QVERIFY(!from.SaveBlockToBuffer(1, 3, 2, 2, block));
        from.MaxRows(0);
        QVERIFY(!from.SaveBlockToBuffer(1, 1, 2, 0, block));
        QVERIFY(!block.isEmpty());
    }

    // Deliberate: behaviour 7.
    void headClickReversesTheOrderEvenInAnotherColumn() {
        SheetGrid grid;
        fill(grid, {u"b"_s, u"C"_s, u"a"_s});
        for (int row = 1; row <= 3; ++row) grid.SetText(2, row, QString::number(row));
        grid.SortByHead(1);
        QCOMPARE(texts(grid), QStringList({u"a"_s, u"b"_s, u"C"_s}));
        grid.SortByHead(1);
        QCOMPARE(texts(grid), QStringList({u"C"_s, u"b"_s, u"a"_s}));
        QCOMPARE(grid.SortKeyOrder(1), SortOrder::Descending);
        grid.SortByHead(2);
        QCOMPARE(texts(grid, 2), QStringList({u"1"_s, u"2"_s, u"3"_s}));
        grid.SortByHead(1);
        QCOMPARE(texts(grid), QStringList({u"C"_s, u"b"_s, u"a"_s}));
    }

    // Deliberate: behaviour 19.
    void numbersSortAsNumbersAndTextsWithoutCase() {
        SheetGrid grid;
        fill(grid, {u"10"_s, u"9"_s, {}, u"-1.5"_s, u"älter"_s, u"zu"_s, u"1a"_s, u"Bach"_s});
        grid.SortByHead(1);
        QCOMPARE(
            texts(grid),
            QStringList({u"-1.5"_s, u"9"_s, u"10"_s, u"1a"_s, u"älter"_s, u"Bach"_s, u"zu"_s, {}}));
        grid.SortByHead(1);
        QCOMPARE(texts(grid).first(), u"zu"_s);
        QCOMPARE(texts(grid).last(), QString());
    }

    void dateCellsSortAsDates() {
        SheetGrid grid;
        grid.MaxCols(1);
        grid.MaxRows(4);
        grid.Row(-1);
        grid.CellType(CellKind::Date);
        const QStringList dates{u"12/31/99"_s, u"01/02/26"_s, {}, u"06/05/03"_s};
        for (int row = 1; row <= 4; ++row) grid.SetText(1, row, dates[row - 1]);
        grid.SortByHead(1);
        QCOMPARE(texts(grid),
                 QStringList({u"12/31/99"_s, u"06/05/03"_s, u"01/02/26"_s, QString()}));
        grid.SortByHead(1);
        QCOMPARE(texts(grid),
                 QStringList({u"01/02/26"_s, u"06/05/03"_s, u"12/31/99"_s, QString()}));
    }

    void sortMovesWholeRowsAndIsStable() {
        SheetGrid grid;
        fill(grid, {u"b"_s, u"a"_s, u"B"_s, u"A"_s});
        for (int row = 1; row <= 4; ++row) grid.SetText(2, row, QString::number(row));
        mark(grid, 4);
        grid.AddCellSpan(1, 2, 2, 1);
        grid.SortKey(1, 1);
        grid.SortKeyOrder(1, SortOrder::Ascending);
        grid.Sort(-1, -1, -1, -1, SortBy::Rows);
        QCOMPARE(texts(grid, 2), QStringList({u"2"_s, u"4"_s, u"1"_s, u"3"_s}));
        QVERIFY(isMarked(grid, 2));
        QVERIFY(isUnmarked(grid, 4));
        QVERIFY(grid.spansOf(1).empty());
        grid.SortKeyOrder(1, SortOrder::Descending);
        grid.Sort(-1, -1, -1, -1, SortBy::Rows);
        QCOMPARE(texts(grid, 2), QStringList({u"1"_s, u"3"_s, u"2"_s, u"4"_s}));
    }

    void furtherKeysDecideBetweenEquals() {
        SheetGrid grid;
        fill(grid, {u"x"_s, u"y"_s, u"x"_s, u"y"_s});
        for (int row = 1; row <= 4; ++row) grid.SetText(2, row, QString::number(row));
        grid.SortKey(1, 1);
        grid.SortKeyOrder(1, SortOrder::Descending);
        grid.SortKey(2, 2);
        grid.SortKeyOrder(2, SortOrder::Descending);
        grid.SortKey(4, 2);
        QCOMPARE(grid.SortKey(4), 0);
        grid.Sort(-1, -1, -1, -1, SortBy::Rows);
        QCOMPARE(texts(grid, 2), QStringList({u"4"_s, u"2"_s, u"3"_s, u"1"_s}));
        grid.Sort(1, 1, 2, 2, SortBy::Rows);
        QCOMPARE(texts(grid, 2), QStringList({u"4"_s, u"2"_s, u"3"_s, u"1"_s}));
        grid.SortKeyOrder(1, SortOrder::None);
        grid.SortKeyOrder(2, SortOrder::Ascending);
        grid.Sort(-1, 2, -1, 3, SortBy::Rows);
        QCOMPARE(texts(grid, 2), QStringList({u"4"_s, u"2"_s, u"3"_s, u"1"_s}));
        grid.Sort(-1, 2, -1, 4, SortBy::Rows);
        QCOMPARE(texts(grid, 2), QStringList({u"4"_s, u"1"_s, u"2"_s, u"3"_s}));
    }

    void sortWithoutAKeyChangesNothing() {
        SheetGrid grid;
        fill(grid, {u"b"_s, u"a"_s});
        grid.Sort(-1, -1, -1, -1, SortBy::Rows);
        grid.SortKey(1, 99);
        grid.SortKeyOrder(1, SortOrder::Ascending);
        grid.Sort(-1, -1, -1, -1, SortBy::Rows);
        QCOMPARE(texts(grid), QStringList({u"b"_s, u"a"_s}));
    }

    void aHundredThousandRowsSort() {
        SheetGrid grid;
        grid.MaxCols(1);
        grid.MaxRows(100'000);
        for (int row = 1; row <= 100'000; ++row)
            grid.SetText(1, row, u"Lied %1"_s.arg((row * 7919) % 100'000, 5, 10, QChar(u'0')));
        grid.SortByHead(1);
        QCOMPARE(grid.GetText(1, 1), u"Lied 00000"_s);
        QCOMPARE(grid.GetText(1, 100'000), u"Lied 99999"_s);
    }
};

LORVANITE_TEST(TestSheetGridRows)
#include "test_sheet_grid_rows.moc"
