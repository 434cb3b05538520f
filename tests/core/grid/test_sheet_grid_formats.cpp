// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Formats, their defaults, borders, pictures and spans.
#include "core/grid/sheet_grid.h"
#include "core/grid/sheet_grid_dates.h"
#include "support/registry.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

void addressCell(SheetGrid& grid, int col, int row) {
    grid.Col(col);
    grid.Row(row);
}

int backOf(const SheetGrid& grid, int col, int row) { return grid.formatAt(1, col, row).backColor; }

constexpr int Red = RGB(255, 0, 0);
constexpr int CellGreen = RGB(0, 255, 0);
constexpr int Blue = RGB(0, 0, 255);

struct Span {
    int col = 0, row = 0, cols = 0, rows = 0;
    bool found = false;
    bool operator==(const Span&) const = default;
};

Span spanOf(const SheetGrid& grid, int col, int row) {
    Span span;
    span.found = grid.GetCellSpan(col, row, span.col, span.row, span.cols, span.rows);
    return span;
}

}  // namespace

class TestSheetGridFormats : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void plainFormatIsOfAnEditCell() {
        SheetGrid grid;
        QCOMPARE(grid.CellType(), CellKind::Edit);
        QCOMPARE(grid.BackColor(), White);
        QCOMPARE(grid.ForeColor(), Black);
        QVERIFY(!grid.formatAt(1, 1, 1).hasForeColor);
        QVERIFY(grid.formatAt(1, 1, 1) == CellFormat());
        QVERIFY(grid.formatAt(9, 1, 1) == CellFormat());
        QCOMPARE(RGB(255, 128, 1), 255 + 256 * 128 + 65536);
    }

    void everyPropertyIsKept() {
        SheetGrid grid;
        addressCell(grid, 3, 4);
        grid.BackColor(CellGreen);
        grid.ForeColor(Blue);
        grid.FontName(u"Arial"_s);
        grid.FontSize(9.75);
        grid.FontBold(true);
        grid.TypeHAlign(HAlign::Centre);
        grid.CellType(CellKind::Button);
        grid.TypeDateCentury(true);
        grid.TypeDateFormat(3);
        grid.TypeSpin(true);
        grid.TypeComboBoxList(u"a\tb"_s);
        grid.TypeComboBoxMaxDrop(25);
        CellFormat wanted;
        wanted.kind = CellKind::Button;
        wanted.backColor = CellGreen;
        wanted.foreColor = Blue;
        wanted.hasForeColor = true;
        wanted.fontName = u"Arial"_s;
        wanted.fontSize = 9.75;
        wanted.fontBold = true;
        wanted.hAlign = HAlign::Centre;
        wanted.dateCentury = true;
        wanted.dateFormat = 3;
        wanted.spin = true;
        wanted.comboList = u"a\tb"_s;
        wanted.comboMaxDrop = 25;
        QVERIFY(grid.formatAt(1, 3, 4) == wanted);
        QCOMPARE(grid.BackColor(), CellGreen);
        QCOMPARE(grid.ForeColor(), Blue);
        QCOMPARE(grid.FontName(), u"Arial"_s);
        QCOMPARE(grid.FontSize(), 9.75);
        QVERIFY(grid.FontBold() && grid.TypeDateCentury() && grid.TypeSpin());
        QCOMPARE(grid.TypeHAlign(), HAlign::Centre);
        QCOMPARE(grid.CellType(), CellKind::Button);
        QCOMPARE(grid.TypeDateFormat(), 3);
        QCOMPARE(grid.TypeComboBoxList(), u"a\tb"_s);
        QCOMPARE(grid.TypeComboBoxMaxDrop(), 25);
        QVERIFY(grid.formatAt(1, 3, 5) == CellFormat());
    }

    void valuesBeyondTheirRangeAreCutOrLeftOut() {
        SheetGrid grid;
        grid.CellType(CellKind(5));
        QCOMPARE(grid.CellType(), CellKind::Edit);
        grid.TypeHAlign(HAlign(9));
        QCOMPARE(grid.TypeHAlign(), HAlign::Left);
        grid.FontSize(-3);
        QCOMPARE(grid.FontSize(), 0.0);
        grid.FontSize(qQNaN());
        QCOMPARE(grid.FontSize(), 0.0);
        grid.BackColor(-1);
        QCOMPARE(grid.BackColor(), White);
        grid.TypeComboBoxMaxDrop(-4);
        QCOMPARE(grid.TypeComboBoxMaxDrop(), 0);
    }

    void dateFormatIsKeptAndChangesNothingThatIsShown() {
        SheetGrid grid;
        setUpDateCells(grid, 1, 1);
        for (const int format : {0, 2, 3, 99}) {
            grid.TypeDateFormat(format);
            grid.SetText(1, 1, QStringLiteral("12/6/26"));
            QCOMPARE(grid.TypeDateFormat(), format);
            QCOMPARE(grid.GetText(1, 1), QStringLiteral("12/06/26"));
        }
    }

    void nearerSettingWins() {
        SheetGrid grid;
        addressCell(grid, -1, -1);
        grid.BackColor(Red);
        addressCell(grid, 2, -1);
        grid.BackColor(CellGreen);
        addressCell(grid, -1, 3);
        grid.BackColor(Blue);
        addressCell(grid, 2, 3);
        QCOMPARE(grid.BackColor(), Blue);
        grid.BackColor(Black);
        QCOMPARE(backOf(grid, 2, 3), Black);
        QCOMPARE(backOf(grid, 1, 3), Blue);
        QCOMPARE(backOf(grid, 2, 4), CellGreen);
        QCOMPARE(backOf(grid, 1, 4), Red);
        QCOMPARE(backOf(grid, 9999, 4), White);
    }

    void writingADefaultDropsWhatWasSetUnderIt() {
        SheetGrid grid;
        addressCell(grid, 2, 3);
        grid.BackColor(Red);
        grid.FontBold(true);
        addressCell(grid, 2, -1);
        grid.BackColor(CellGreen);
        QCOMPARE(backOf(grid, 2, 3), CellGreen);
        QVERIFY(grid.formatAt(1, 2, 3).fontBold);
        addressCell(grid, -1, -1);
        grid.BackColor(Blue);
        QCOMPARE(backOf(grid, 2, 3), Blue);
        QCOMPARE(backOf(grid, 2, 9), Blue);
        grid.FontBold(false);
        QVERIFY(!grid.formatAt(1, 2, 3).fontBold);
    }

    void lastDefaultShowsWhereRowAndColumnCross() {
        SheetGrid grid;
        addressCell(grid, -1, 3);
        grid.BackColor(Blue);
        addressCell(grid, 2, -1);
        grid.BackColor(CellGreen);
        QCOMPARE(backOf(grid, 2, 3), CellGreen);
        QCOMPARE(backOf(grid, 1, 3), Blue);
        addressCell(grid, -1, 3);
        grid.BackColor(Red);
        QCOMPARE(backOf(grid, 2, 3), Red);
    }

    void defaultsReachAddedRowsButNotHeads() {
        SheetGrid grid;
        grid.MaxRows(1);
        grid.MaxCols(2);
        addressCell(grid, -1, -1);
        grid.BackColor(Red);
        addressCell(grid, 2, -1);
        grid.FontBold(true);
        grid.MaxRows(5);
        QCOMPARE(backOf(grid, 2, 5), Red);
        QVERIFY(grid.formatAt(1, 2, 5).fontBold);
        QCOMPARE(backOf(grid, 2, 0), White);
        QVERIFY(!grid.formatAt(1, 2, 0).fontBold);
        QCOMPARE(backOf(grid, 0, 3), White);
        addressCell(grid, -1, 0);
        grid.BackColor(CellGreen);
        QCOMPARE(backOf(grid, 1, 0), CellGreen);
        QCOMPARE(backOf(grid, 1, 1), Red);
        addressCell(grid, 0, -1);
        grid.BackColor(Blue);
        QCOMPARE(backOf(grid, 0, 4), Blue);
        QCOMPARE(backOf(grid, 1, 4), Red);
    }

    void defaultCanBeSetWhereThereAreNoRows() {
        SheetGrid grid;
        grid.MaxRows(0);
        addressCell(grid, 5, -1);
        grid.CellType(CellKind::Date);
        grid.MaxRows(1);
        addressCell(grid, 5, 1);
        QCOMPARE(grid.CellType(), CellKind::Date);
    }

    void rowDefaultGoesWithItsRow() {
        SheetGrid grid;
        grid.MaxRows(9);
        addressCell(grid, -1, 9);
        grid.BackColor(Red);
        grid.MaxRows(8);
        grid.MaxRows(9);
        QCOMPARE(backOf(grid, 1, 9), White);
    }

    void blocksTakeFormats() {
        SheetGrid grid;
        grid.MaxRows(6);
        grid.MaxCols(4);
        addressCell(grid, 2, 2);
        grid.Col2(3);
        grid.Row2(4);
        grid.BlockMode(true);
        grid.BackColor(Red);
        QCOMPARE(backOf(grid, 2, 2), Red);
        QCOMPARE(backOf(grid, 3, 4), Red);
        QCOMPARE(backOf(grid, 4, 4), White);
        QCOMPARE(backOf(grid, 3, 5), White);
        addressCell(grid, 3, 5);
        grid.Col2(2);
        grid.BackColor(Blue);
        QCOMPARE(backOf(grid, 2, 5), White);
        addressCell(grid, 1, -1);
        grid.Col2(2);
        grid.Row2(-1);
        grid.BackColor(CellGreen);
        grid.MaxRows(7);
        QCOMPARE(backOf(grid, 2, 7), CellGreen);
        QCOMPARE(backOf(grid, 2, 2), CellGreen);
        QCOMPARE(backOf(grid, 3, 2), Red);
        addressCell(grid, -1, 5);
        grid.Col2(-1);
        grid.Row2(6);
        grid.BackColor(Blue);
        QCOMPARE(backOf(grid, 4, 5), Blue);
        QCOMPARE(backOf(grid, 1, 6), Blue);
        QCOMPARE(backOf(grid, 1, 7), CellGreen);
    }

    void bordersStandOnEachCellOfABlock() {
        SheetGrid grid;
        grid.MaxRows(4);
        grid.MaxCols(3);
        grid.SetCellBorder(1, 2, -1, 3, BorderType::Bottom, Red, BorderStyle::Solid);
        grid.SetCellBorder(2, 2, 2, 2, BorderType(2 | 4), Black, BorderStyle::Solid);
        const CellFormat cell = grid.formatAt(1, 2, 2);
        QVERIFY((cell.bottom == CellBorder{BorderStyle::Solid, Red}));
        QVERIFY((cell.right == CellBorder{BorderStyle::Solid, Black}));
        QVERIFY((cell.top == CellBorder{BorderStyle::Solid, Black}));
        QVERIFY(cell.left == CellBorder());
        QCOMPARE(grid.formatAt(1, 3, 3).bottom.style, BorderStyle::Solid);
        QCOMPARE(grid.formatAt(1, 3, 4).bottom.style, BorderStyle::None);
        grid.SetCellBorder(-1, -1, -1, -1, BorderType::Bottom, Red, BorderStyle::None);
        QVERIFY(grid.formatAt(1, 2, 2).bottom == CellBorder());
        QVERIFY(grid.formatAt(1, 2, 2).top != CellBorder());
        QVERIFY(!grid.BlockMode());
    }

    void picturesAreKeptAsTheyAre() {
        SheetGrid grid;
        const QByteArray image("\x89PNG\0data", 9);
        addressCell(grid, 3, 2);
        grid.CellType(CellKind::Picture);
        grid.Picture(image);
        QCOMPARE(grid.Picture(), image);
        QCOMPARE(grid.pictureAt(1, 3, 2), image);
        QCOMPARE(grid.pictureAt(1, 3, 3), QByteArray());
        QCOMPARE(grid.pictureAt(2, 3, 2), QByteArray());
        grid.Picture({});
        QCOMPARE(grid.Picture(), QByteArray());
    }

    // Lists that come and go with every week must not pile up, nor may the living be lost.
    void manyListsAndPicturesLeaveTheLivingAlone() {
        SheetGrid grid;
        addressCell(grid, 1, 1);
        grid.TypeComboBoxList(u"stays"_s);
        grid.Picture("stays");
        addressCell(grid, 2, -1);
        grid.FontBold(true);
        for (int i = 0; i < 20'000; ++i) {
            addressCell(grid, 1, 2 + i % 3);
            grid.TypeComboBoxList(QString::number(i));
            grid.Picture(QByteArray::number(i));
        }
        QCOMPARE(grid.formatAt(1, 1, 1).comboList, u"stays"_s);
        QCOMPARE(grid.pictureAt(1, 1, 1), QByteArray("stays"));
        QVERIFY(grid.formatAt(1, 2, 7).fontBold);
        QCOMPARE(grid.formatAt(1, 1, 3).comboList, u"19999"_s);
        QCOMPARE(grid.pictureAt(1, 1, 3), QByteArray("19999"));
        QCOMPARE(grid.formatAt(1, 1, 2).comboList, u"19998"_s);
    }

    // Deliberate: behaviour 18.
    void spansJoinCells() {
        SheetGrid grid;
        grid.MaxRows(10);
        grid.MaxCols(5);
        grid.SetText(2, 1, u"covered"_s);
        grid.AddCellSpan(1, 1, 4, 2);
        const Span span{1, 1, 4, 2, true};
        QVERIFY(spanOf(grid, 1, 1) == span);
        QVERIFY(spanOf(grid, 4, 2) == span);
        QVERIFY((spanOf(grid, 5, 1) == Span{5, 1, 1, 1, false}));
        QCOMPARE(grid.GetText(2, 1), u"covered"_s);
        QCOMPARE(grid.spanAt(1, 2, 2).cols, 4);
        QCOMPARE(grid.spanAt(1, 5, 5).cols, 0);
        QCOMPARE(grid.spansOf(1).size(), size_t(1));
        QVERIFY(grid.spansOf(2).empty());
        grid.RemoveCellSpan(2, 1);
        QVERIFY(spanOf(grid, 1, 1).found);
        grid.RemoveCellSpan(1, 1);
        QVERIFY(!spanOf(grid, 1, 1).found);
    }

    void spanningASpannedRowIsHarmless() {
        SheetGrid grid;
        grid.MaxCols(5);
        grid.AddCellSpan(1, 2, 5, 1);
        grid.AddCellSpan(1, 2, 5, 1);
        QCOMPARE(grid.spansOf(1).size(), size_t(1));
        grid.AddCellSpan(1, 1, 2, 3);
        QCOMPARE(grid.spansOf(1).size(), size_t(1));
        QVERIFY((spanOf(grid, 2, 2) == Span{1, 1, 2, 3, true}));
        QVERIFY(!spanOf(grid, 5, 2).found);
    }

    void spansAreCutToTheGrid() {
        SheetGrid grid;
        grid.MaxRows(3);
        grid.MaxCols(3);
        grid.AddCellSpan(2, 2, INT_MAX, INT_MAX);
        QVERIFY((spanOf(grid, 3, 3) == Span{2, 2, 2, 2, true}));
        grid.AddCellSpan(1, 1, 0, -4);
        grid.AddCellSpan(1, 1, 1, 1);
        grid.AddCellSpan(0, 1, 2, 2);
        grid.AddCellSpan(4, 1, 2, 2);
        QCOMPARE(grid.spansOf(1).size(), size_t(1));
        grid.MaxCols(2);
        QVERIFY((spanOf(grid, 2, 3) == Span{2, 2, 1, 2, true}));
        grid.MaxRows(2);
        QVERIFY(grid.spansOf(1).empty());
    }
};

LORVANITE_TEST(TestSheetGridFormats)
#include "test_sheet_grid_formats.moc"
