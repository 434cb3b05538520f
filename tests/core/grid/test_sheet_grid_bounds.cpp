// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Sheets, cells, keys and blocks that are not there, or only in part.
#include "core/grid/sheet_grid.h"
#include "support/registry.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestSheetGridBounds : public QObject {
    Q_OBJECT

    static void fill(SheetGrid& grid) {
        grid.MaxCols(3);
        grid.MaxRows(4);
        for (int row = 1; row <= 4; ++row)
            for (int col = 1; col <= 3; ++col) grid.SetText(col, row, u"%1,%2"_s.arg(col).arg(row));
    }

    static QStringList texts(const SheetGrid& grid) {
        QStringList all;
        for (int row = 0; row <= 4; ++row)
            for (int col = 0; col <= 3; ++col) all += grid.textAt(1, col, row);
        return all;
    }

private Q_SLOTS:
    void sheetThatIsNotThereIsEmpty() {
        SheetGrid grid;
        fill(grid);
        grid.AddCellSpan(1, 1, 2, 2);
        for (const int sheet : {-1, 0, 2, 99}) {
            QCOMPARE(grid.textAt(sheet, 1, 1), QString());
            QCOMPARE(grid.rowsOf(sheet), 0);
            QCOMPARE(grid.colsOf(sheet), 0);
            QCOMPARE(grid.dataRowsOf(sheet), 0);
            QCOMPARE(grid.widthOf(sheet, 1), 0.0);
            QCOMPARE(grid.heightOf(sheet, 1), 0.0);
            QVERIFY(!grid.isColHidden(sheet, 1));
            QVERIFY(!grid.isRowHidden(sheet, 1));
            QVERIFY(grid.spansOf(sheet).empty());
            QCOMPARE(grid.spanAt(sheet, 1, 1).cols, 0);
        }
        QCOMPARE(grid.rowsOf(1), 4);
        QCOMPARE(grid.spanAt(1, 1, 1).cols, 2);
    }

    void sortKeyThatIsNotThereIsNone() {
        SheetGrid grid;
        fill(grid);
        grid.SortKey(1, 2);
        grid.SortKeyOrder(1, SortOrder::Descending);
        for (const int key : {-1, 0, 4}) {
            grid.SortKey(key, 3);
            grid.SortKeyOrder(key, SortOrder::Ascending);
            QCOMPARE(grid.SortKey(key), 0);
            QVERIFY(grid.SortKeyOrder(key) == SortOrder::None);
        }
        QCOMPARE(grid.SortKey(1), 2);
        QVERIFY(grid.SortKeyOrder(1) == SortOrder::Descending);
        grid.SortKey(2, -5);
        QCOMPARE(grid.SortKey(2), 0);
    }

    void textOutsideIsNotWritten() {
        SheetGrid grid;
        fill(grid);
        const QStringList before = texts(grid);
        for (const auto& [col, row] :
             {std::pair(4, 1), {1, 5}, {-2, 1}, {1, -2}, {-1, -2}, {9, -1}})
            grid.SetText(col, row, u"outside"_s);
        QCOMPARE(texts(grid), before);
    }

    void minusOneIsAllOfThem() {
        SheetGrid grid;
        fill(grid);
        grid.SetText(-1, 2, u"row"_s);
        grid.SetText(3, -1, u"column"_s);
        QCOMPARE(grid.GetText(1, 2), u"row"_s);
        QCOMPARE(grid.GetText(3, 2), u"column"_s);
        QCOMPARE(grid.GetText(3, 4), u"column"_s);
        QCOMPARE(grid.GetText(1, 1), u"1,1"_s);
    }

    void columnThatIsNotThereIsNotSearched() {
        SheetGrid grid;
        fill(grid);
        QCOMPARE(grid.SearchCol(-1, 1, -1, u"1,1"_s), -1);
        QCOMPARE(grid.SearchCol(4, 1, -1, u"1,1"_s), -1);
        QCOMPARE(grid.SearchCol(1, -3, 99, u"1,4"_s), 4);
    }

    void spanEndsWithTheSheet() {
        SheetGrid grid;
        fill(grid);
        grid.AddCellSpan(0, 1, 2, 2);
        grid.AddCellSpan(1, 0, 2, 2);
        grid.AddCellSpan(4, 1, 2, 2);
        grid.AddCellSpan(1, 5, 2, 2);
        grid.AddCellSpan(3, 4, 5, 5);
        QVERIFY(grid.spansOf(1).empty());
        grid.AddCellSpan(2, 3, 5, 5);
        QCOMPARE(grid.spansOf(1).size(), size_t(1));
        const CellSpan span = grid.spanAt(1, 3, 4);
        QCOMPARE(span.col, 2);
        QCOMPARE(span.row, 3);
        QCOMPARE(span.cols, 2);
        QCOMPARE(span.rows, 2);
    }
};

LORVANITE_TEST(TestSheetGridBounds)
#include "test_sheet_grid_bounds.moc"
