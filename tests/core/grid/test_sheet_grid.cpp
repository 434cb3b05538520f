// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Sheets, sizes, texts and the notifications of a view.
#include "core/grid/sheet_grid.h"
#include "support/registry.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// A view that counts its notifications.
class Watched : public SheetGrid {
public:
    using SheetGrid::takeDirt;
    int told = 0;

protected:
    void becameDirty() override { ++told; }
};

}  // namespace

class TestSheetGrid : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void zeroRowsGiveNothingAndTakeNothing() {
        SheetGrid grid;
        grid.MaxCols(3);
        grid.SetText(1, 1, u"gone"_s);
        grid.SetText(1, 0, u"Title"_s);
        grid.MaxRows(0);
        QString value = u"old"_s;
        QVERIFY(!grid.GetText(1, 1, value));
        QCOMPARE(value, QString());
        grid.ClearRange(1, 1, 3, 0, true);
        grid.ClearRange(-1, -1, -1, -1, true);
        grid.SetText(1, 1, u"nowhere"_s);
        QCOMPARE(grid.GetText(1, 1), QString());
        QCOMPARE(grid.GetText(1, 0), u"Title"_s);
        QCOMPARE(grid.MaxRows(), 0);
        QCOMPARE(grid.DataRowCnt(), 0);
        grid.SortByHead(2);
        QCOMPARE(grid.SortKey(1), 2);
        QCOMPARE(grid.SortKeyOrder(1), SortOrder::Ascending);
    }

    void addedRowHoldsItsTextsLikeSetText() {
        Watched grid;
        grid.MaxCols(2);
        grid.MaxRows(3);
        grid.Col(2);
        grid.Row(-1);
        grid.CellType(CellKind::Date);
        grid.takeDirt();
        grid.told = 0;
        grid.AddRow({u"Grace"_s, u"6/1/2026"_s, u"beyond"_s});
        grid.AddRow({u"Mercy"_s, u"no date"_s});
        grid.AddRow();
        QCOMPARE(grid.MaxRows(), 6);
        QCOMPARE(grid.GetText(1, 4), u"Grace"_s);
        QCOMPARE(grid.GetText(2, 4), u"06/01/26"_s);
        QCOMPARE(grid.GetText(3, 4), QString());
        QCOMPARE(grid.GetText(1, 5), u"Mercy"_s);
        QCOMPARE(grid.GetText(2, 5), QString());
        QCOMPARE(grid.DataRowCnt(), 5);
        QCOMPARE(grid.told, 1);
    }

    void rowHeadAndCellsAreWrittenInAnyOrder() {
        SheetGrid grid;
        grid.MaxCols(30);
        grid.MaxRows(3);
        grid.SetText(3, 1, u"cell"_s);
        QCOMPARE(grid.GetText(0, 1), QString());
        grid.SetText(0, 1, u"head"_s);
        grid.SetText(20, 1, u"far"_s);
        grid.SetText(0, 2, u"only a head"_s);
        grid.SetText(2, 2, u"cell"_s);
        QCOMPARE(grid.GetText(0, 1), u"head"_s);
        QCOMPARE(grid.GetText(3, 1), u"cell"_s);
        QCOMPARE(grid.GetText(20, 1), u"far"_s);
        QCOMPARE(grid.GetText(2, 2), u"cell"_s);
        grid.InsertRows(1, 1);
        grid.MaxCols(3);
        QCOMPARE(grid.GetText(3, 2), u"cell"_s);
        QCOMPARE(grid.GetText(4, 2), QString());
        grid.MaxCols(0);
        grid.SetText(0, 1, u"new"_s);
        grid.MaxCols(30);
        QCOMPARE(grid.GetText(0, 1), u"new"_s);
        QCOMPARE(grid.GetText(0, 2), u"head"_s);
        QCOMPARE(grid.GetText(0, 3), u"only a head"_s);
        QCOMPARE(grid.GetText(2, 3), QString());
        grid.SetText(1, 2, u"again"_s);
        QCOMPARE(grid.GetText(1, 2), u"again"_s);
        QCOMPARE(grid.GetText(0, 2), u"head"_s);
    }

    void headTextsLeaveMaxRowsAlone() {
        SheetGrid grid;
        grid.MaxRows(4);
        grid.MaxCols(2);
        grid.SetText(2, 0, u"Last Played"_s);
        grid.SetText(0, 3, u"Sheet"_s);
        QCOMPARE(grid.MaxRows(), 4);
        QCOMPARE(grid.GetText(2, 0), u"Last Played"_s);
        QCOMPARE(grid.GetText(0, 3), u"Sheet"_s);
        QCOMPARE(grid.DataRowCnt(), 0);
    }

    void sizesAreKeptWithinBounds() {
        SheetGrid grid;
        grid.MaxRows(-5);
        QCOMPARE(grid.MaxRows(), 0);
        grid.MaxRows(INT_MAX);
        QCOMPARE(grid.MaxRows(), 10'000'000);
        grid.MaxCols(-1);
        QCOMPARE(grid.MaxCols(), 0);
        grid.MaxCols(1'000'000);
        QCOMPARE(grid.MaxCols(), 16'384);
    }

    // Deliberate: behaviour 10.
    void writesOutsideTheGridHaveNoEffect() {
        SheetGrid grid;
        grid.MaxRows(2);
        grid.MaxCols(2);
        grid.SetText(3, 1, u"x"_s);
        grid.SetText(1, 3, u"x"_s);
        grid.SetText(-2, 1, u"x"_s);
        grid.Col(5);
        grid.Row(5);
        grid.BackColor(RGB(1, 2, 3));
        grid.Text(u"x"_s);
        QCOMPARE(grid.BackColor(), White);
        grid.MaxRows(9);
        grid.MaxCols(9);
        QCOMPARE(grid.DataRowCnt(), 0);
        QCOMPARE(grid.BackColor(), White);
    }

    void loweringDropsAndRaisingBringsEmptyCells() {
        SheetGrid grid;
        grid.MaxRows(10);
        grid.MaxCols(5);
        for (int row = 1; row <= 10; ++row)
            for (int col = 1; col <= 5; ++col) grid.SetText(col, row, u"t"_s);
        grid.Col(5);
        grid.Row(10);
        grid.FontBold(true);
        grid.AddCellSpan(4, 9, 2, 2);
        grid.AddCellSpan(1, 1, 5, 1);
        grid.RowHeight(10, 77);
        grid.ColWidth(5, 55);
        grid.MaxRows(8);
        grid.MaxCols(4);
        grid.MaxRows(10);
        grid.MaxCols(5);
        QCOMPARE(grid.GetText(1, 8), u"t"_s);
        QCOMPARE(grid.GetText(1, 9), QString());
        QCOMPARE(grid.GetText(5, 1), QString());
        QVERIFY(!grid.FontBold());
        QVERIFY(grid.RowHeight(10) != 77);
        QVERIFY(grid.ColWidth(5) != 55);
        int col = 0, row = 0, cols = 0, rows = 0;
        QVERIFY(!grid.GetCellSpan(4, 9, col, row, cols, rows));
        QVERIFY(grid.GetCellSpan(4, 1, col, row, cols, rows));
        QCOMPARE(cols, 4);
    }

    void dataRowCountIsTheLastRowWithTextOrPicture() {
        SheetGrid grid;
        grid.SetText(2, 7, u"x"_s);
        grid.SetText(0, 9, u"row head"_s);
        QCOMPARE(grid.DataRowCnt(), 7);
        grid.Col(3);
        grid.Row(8);
        grid.Picture("image");
        QCOMPARE(grid.DataRowCnt(), 8);
        grid.Picture({});
        grid.SetText(2, 7, {});
        QCOMPARE(grid.DataRowCnt(), 0);
    }

    void addedSheetsHaveTheFirstOnesSize() {
        SheetGrid grid;
        grid.MaxRows(42);
        grid.MaxCols(37);
        grid.Col(-1);
        grid.Row(-1);
        grid.FontBold(true);
        grid.SheetCount(3);
        QCOMPARE(grid.SheetCount(), 3);
        QCOMPARE(grid.rowsOf(3), 42);
        QCOMPARE(grid.colsOf(3), 37);
        QVERIFY(!grid.formatAt(3, 1, 1).fontBold);
        QVERIFY(grid.formatAt(1, 1, 1).fontBold);
        grid.SheetCount(0);
        QCOMPARE(grid.SheetCount(), 1);
        grid.SheetCount(100'000);
        QCOMPARE(grid.SheetCount(), 4096);
    }

    // Deliberate: behaviour 14.
    void cellCallsFollowTheSheet() {
        SheetGrid grid;
        grid.SheetCount(3);
        grid.Sheet(2);
        QCOMPARE(grid.ActiveSheet(), 1);
        grid.SetText(1, 1, u"two"_s);
        grid.ActiveSheet(3);
        QCOMPARE(grid.Sheet(), 3);
        grid.SetText(1, 1, u"three"_s);
        grid.Sheet(9);
        grid.ActiveSheet(0);
        QCOMPARE(grid.Sheet(), 3);
        QCOMPARE(grid.ActiveSheet(), 3);
        QCOMPARE(grid.textAt(1, 1, 1), QString());
        QCOMPARE(grid.textAt(2, 1, 1), u"two"_s);
        QCOMPARE(grid.textAt(3, 1, 1), u"three"_s);
        QCOMPARE(grid.textAt(4, 1, 1), QString());
    }

    void deletingSheetsKeepsOne() {
        SheetGrid grid;
        grid.SheetCount(4);
        for (int sheet = 1; sheet <= 4; ++sheet) {
            grid.Sheet(sheet);
            grid.SetText(1, 1, QString::number(sheet));
        }
        grid.ActiveSheet(4);
        grid.DeleteSheets(2, 2);
        QCOMPARE(grid.SheetCount(), 2);
        QCOMPARE(grid.ActiveSheet(), 2);
        QCOMPARE(grid.GetText(1, 1), u"4"_s);
        grid.DeleteSheets(2, 50);
        QCOMPARE(grid.SheetCount(), 1);
        QCOMPARE(grid.ActiveSheet(), 1);
        grid.DeleteSheets(1, 1);
        grid.DeleteSheets(0, 1);
        grid.DeleteSheets(1, -1);
        QCOMPARE(grid.SheetCount(), 1);
        QCOMPARE(grid.GetText(1, 1), u"1"_s);
    }

    void tabStripPolicyIsKept() {
        SheetGrid grid;
        QCOMPARE(grid.TabStripPolicy(), TabStrip::AsNeeded);
        grid.TabStripPolicy(TabStrip::Never);
        QCOMPARE(grid.TabStripPolicy(), TabStrip::Never);
        grid.TabStripPolicy(TabStrip(7));
        QCOMPARE(grid.TabStripPolicy(), TabStrip::Never);
    }

    void dateCellsTakeDatesInTheirRange_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("short") << u"6/5/26"_s << u"06/05/26"_s;
        QTest::newRow("long") << u"6/5/2026"_s << u"06/05/26"_s;
        QTest::newRow("iso") << u"2026-06-05"_s << u"06/05/26"_s;
        QTest::newRow("words") << u"June 5, 2026"_s << u"06/05/26"_s;
        QTest::newRow("first day") << u"1/1/1990"_s << u"01/01/90"_s;
        QTest::newRow("day before") << u"12/31/1989"_s << u"01/02/03"_s;
        QTest::newRow("last day") << u"12/31/2100"_s << u"12/31/00"_s;
        QTest::newRow("day after") << u"1/1/2101"_s << u"01/02/03"_s;
        QTest::newRow("no such day") << u"2/30/26"_s << u"01/02/03"_s;
        QTest::newRow("word") << u"Easter"_s << u"01/02/03"_s;
        QTest::newRow("empty") << QString() << QString();
    }

    // Deliberate: behaviour 11.
    void dateCellsTakeDatesInTheirRange() {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        SheetGrid grid;
        grid.Col(2);
        grid.Row(1);
        grid.CellType(CellKind::Date);
        grid.SetText(2, 1, u"1/2/03"_s);
        grid.SetText(2, 1, text);
        QCOMPARE(grid.GetText(2, 1), shown);
        grid.Text(u"1/2/03"_s);
        grid.Text(text);
        QCOMPARE(grid.Text(), shown);
    }

    void dateCellWithCenturyShowsTheWholeYear() {
        SheetGrid grid;
        grid.CellType(CellKind::Date);
        grid.TypeDateCentury(true);
        grid.SetText(1, 1, u"6/5/26"_s);
        QCOMPARE(grid.GetText(1, 1), u"06/05/2026"_s);
    }

    void dateColumnWorksAsItsCellsAndLeavesItsHead() {
        SheetGrid grid;
        grid.Col(5);
        grid.Row(-1);
        grid.CellType(CellKind::Date);
        grid.SetText(5, 0, u"Last Played"_s);
        grid.SetText(5, 3, u"2026-06-05"_s);
        grid.SetText(5, 4, u"never"_s);
        QCOMPARE(grid.GetText(5, 0), u"Last Played"_s);
        QCOMPARE(grid.GetText(5, 3), u"06/05/26"_s);
        QCOMPARE(grid.GetText(5, 4), QString());
        grid.MaxRows(0);
        grid.MaxRows(3);
        grid.SetText(5, 2, u"1/2/2003"_s);
        QCOMPARE(grid.GetText(5, 2), u"01/02/03"_s);
    }

    void changingTheTypeLeavesTheText() {
        SheetGrid grid;
        grid.SetText(1, 1, u"no date"_s);
        grid.CellType(CellKind::Date);
        QCOMPARE(grid.GetText(1, 1), u"no date"_s);
        grid.CellType(CellKind::Combo);
        grid.TypeComboBoxList(u"A\tB"_s);
        QCOMPARE(grid.GetText(1, 1), u"no date"_s);
    }

    // Deliberate: behaviour 12.
    void blockModeWritesTheWholeBlockAndStays() {
        SheetGrid grid;
        grid.MaxRows(4);
        grid.MaxCols(4);
        grid.Col(2);
        grid.Row(2);
        grid.Col2(3);
        grid.Row2(-1);
        grid.BlockMode(true);
        grid.Text(u"x"_s);
        QCOMPARE(grid.GetText(2, 2) + grid.GetText(3, 4), u"xx"_s);
        QCOMPARE(grid.GetText(1, 2) + grid.GetText(4, 4) + grid.GetText(2, 1), QString());
        QVERIFY(grid.BlockMode());
        grid.BlockMode(false);
        grid.Text(u"y"_s);
        QCOMPARE(grid.GetText(2, 2) + grid.GetText(3, 4), u"yx"_s);
    }

    void minusOneWritesAllCells() {
        SheetGrid grid;
        grid.MaxRows(2);
        grid.MaxCols(2);
        grid.SetText(-1, 2, u"row"_s);
        QCOMPARE(grid.GetText(1, 2) + grid.GetText(2, 2), u"rowrow"_s);
        QCOMPARE(grid.GetText(1, 1) + grid.GetText(0, 2), QString());
        grid.SetText(-1, -1, u"all"_s);
        QCOMPARE(grid.GetText(1, 1), u"all"_s);
        QCOMPARE(grid.GetText(1, 0), QString());
    }

    void searchFindsWholeTextsWithoutCase() {
        SheetGrid grid;
        grid.SetText(1, 2, u"Älter Weg"_s);
        grid.SetText(1, 3, u"Date"_s);
        grid.SetText(1, 5, u"date"_s);
        QCOMPARE(grid.SearchCol(1, 1, -1, u"ÄLTER WEG"_s), 2);
        QCOMPARE(grid.SearchCol(1, 1, -1, u"DATE"_s, 0), 3);
        QCOMPARE(grid.SearchCol(1, 4, -1, u"Date"_s, 0), 5);
        QCOMPARE(grid.SearchCol(1, 4, 4, u"Date"_s), -1);
        QCOMPARE(grid.SearchCol(1, 6, 500, u"Date"_s), -1);
        QCOMPARE(grid.SearchCol(1, 1, -1, u"Dat"_s), -1);
        QCOMPARE(grid.SearchCol(1, 1, -1, u"Date "_s), -1);
        QCOMPARE(grid.SearchCol(2, 1, -1, u"Date"_s), -1);
        QCOMPARE(grid.SearchCol(9999, 1, -1, u"Date"_s), -1);
        QCOMPARE(grid.SearchCol(1, 1, -1, QString()), 1);
        grid.SetText(1, 9, u"ΣΊΣΥΦΟΣ straße"_s);
        QCOMPARE(grid.SearchCol(1, 1, -1, u"σίσυφοσ STRAẞE"_s), 9);
    }

    void comboSelectionIsTheTextsPlace() {
        SheetGrid grid;
        grid.CellType(CellKind::Combo);
        grid.TypeComboBoxList(u"Guitar\tBass\tDrums"_s);
        QCOMPARE(grid.TypeComboBoxCurSel(), -1);
        grid.SetText(1, 1, u"Bass"_s);
        QCOMPARE(grid.TypeComboBoxCurSel(), 1);
        grid.TypeComboBoxCurSel(2);
        QCOMPARE(grid.Text(), u"Drums"_s);
        grid.TypeComboBoxCurSel(7);
        QCOMPARE(grid.Text(), QString());
        grid.TypeComboBoxMaxDrop(0);
        QCOMPARE(grid.TypeComboBoxMaxDrop(), 0);
        grid.Row(2);
        QCOMPARE(grid.TypeComboBoxCurSel(), -1);
        QCOMPARE(grid.TypeComboBoxMaxDrop(), 8);
    }

    void removedCellIsNoLongerActive() {
        SheetGrid grid;
        grid.MaxRows(10);
        grid.SetActiveCell(2, 9);
        QCOMPARE(grid.ActiveCol(), 2);
        QCOMPARE(grid.ActiveRow(), 9);
        grid.SetActiveCell(2, 11);
        QCOMPARE(grid.ActiveRow(), 9);
        grid.DeleteRows(9, 1);
        QCOMPARE(grid.ActiveRow(), 9);
        grid.MaxRows(8);
        QCOMPARE(grid.ActiveRow(), 0);
        QCOMPARE(grid.ActiveCol(), 0);
    }

    void viewIsNotifiedOnceForAnyNumberOfWrites() {
        Watched grid;
        for (int row = 3; row <= 200; ++row) grid.SetText(1, row, u"x"_s);
        QCOMPARE(grid.told, 1);
        GridDirt dirt = grid.takeDirt();
        QVERIFY(dirt.any && !dirt.layout);
        QCOMPARE(dirt.firstRow, 3);
        QCOMPARE(dirt.lastRow, 200);
        QVERIFY(!grid.takeDirt().any);
        grid.SheetCount(2);
        QVERIFY(grid.takeDirt().layout);
        grid.Sheet(2);
        grid.SetText(1, 1, u"not on view"_s);
        QVERIFY(!grid.takeDirt().any);
        QCOMPARE(grid.told, 2);
        grid.SetActiveCell(1, 1);
        dirt = grid.takeDirt();
        QVERIFY(dirt.any && !dirt.layout && dirt.lastRow < dirt.firstRow);
    }

    void aHundredThousandRowsRaisedOneByOne() {
        SheetGrid grid;
        grid.MaxRows(0);
        grid.MaxCols(2);
        for (int row = 1; row <= 100'000; ++row) {
            grid.MaxRows(row);
            grid.SetText(2, row, QString::number(row));
        }
        QCOMPARE(grid.DataRowCnt(), 100'000);
        QCOMPARE(grid.SearchCol(2, 1, -1, u"99999"_s), 99'999);
    }

    void flagsAreKept() {
        SheetGrid grid;
        QVERIFY(grid.ColHeadersShow() && grid.RowHeadersShow());
        QVERIFY(grid.GridShowHoriz() && grid.GridShowVert());
        QVERIFY(!grid.AllowCellOverflow() && !grid.EditModeReplace());
        grid.ColHeadersShow(false);
        grid.RowHeadersShow(false);
        grid.GridShowHoriz(false);
        grid.GridShowVert(false);
        grid.AllowCellOverflow(true);
        grid.EditModeReplace(true);
        QVERIFY(!grid.ColHeadersShow() && !grid.RowHeadersShow());
        QVERIFY(!grid.GridShowHoriz() && !grid.GridShowVert());
        QVERIFY(grid.AllowCellOverflow() && grid.EditModeReplace());
    }
};

LORVANITE_TEST(TestSheetGrid)
#include "test_sheet_grid.moc"
