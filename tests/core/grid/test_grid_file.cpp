// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Saved grids come back whole.
#include "core/grid/grid_difference.h"
#include "core/grid/grid_file.h"
#include "core/grid/sheet_grid.h"
#include "support/files.h"
#include "support/registry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Green = RGB(0, 200, 0);

void address(SheetGrid& grid, int col, int row) {
    grid.Col(col);
    grid.Row(row);
}

// A chart of three pages, as the chart window makes them, with something of everything.
void makeChart(SheetGrid& chart) {
    chart.MaxCols(37);
    chart.MaxRows(42);
    chart.SheetCount(3);
    for (int page = 1; page <= 3; ++page) {
        chart.ActiveSheet(page);
        chart.ColWidth(-1, 2.5);
        chart.RowHeight(-1, 14.88);
        address(chart, -1, -1);
        chart.FontName(u"Arial"_s);
        chart.FontSize(page == 1 ? 9.75 : 10);
        chart.FontBold(true);
        for (int row = 1; row <= 42; ++row) {
            if (row > 4 && row % 2) {
                chart.SetText(row / 2, row, u"F♯m7"_s);
                continue;
            }
            chart.AddCellSpan(1, row, 37, 1);
            chart.SetText(1, row, u"Großer Gott, %1 – 𝄞"_s.arg(row));
            address(chart, 1, row);
            chart.TypeHAlign(HAlign::Centre);
            chart.BackColor(page * Green / 3);
        }
        chart.SetText(3, 0, u"Kopf"_s);
        chart.SetText(0, 3, u"Zeile"_s);
    }
    chart.Sheet(2);
    chart.SetCellBorder(1, 4, -1, 4, BorderType::Bottom, RGB(9, 8, 7), BorderStyle::Solid);
    address(chart, 2, 7);
    chart.CellType(CellKind::Combo);
    chart.TypeComboBoxList(u"a\tb\tc"_s);
    chart.TypeComboBoxMaxDrop(3);
    chart.ForeColor(RGB(1, 2, 3));
    address(chart, 3, 7);
    chart.CellType(CellKind::Picture);
    chart.Picture(QByteArray("\x89PNG\0\xFF\r\n", 8));
    address(chart, 4, 9);
    chart.Picture(QByteArray("\x89PNG\0\xFF\r\n", 8));
    address(chart, 5, -1);
    chart.CellType(CellKind::Date);
    chart.TypeSpin(true);
    chart.TypeDateFormat(2);
    chart.ColHidden(true);
    address(chart, -1, 11);
    chart.TypeDateCentury(true);
    chart.RowHidden(true);
    chart.RowPageBreak(true);
    chart.RowHeight(12, 33.25);
    chart.ColWidth(0, 4);
    chart.RowHeight(0, 17);
    address(chart, -1, 0);
    chart.BackColor(RGB(4, 5, 6));
    chart.ColHeadersShow(false);
    chart.GridShowHoriz(false);
    chart.AllowCellOverflow(true);
    chart.EditModeReplace(true);
    chart.TabStripPolicy(TabStrip::Never);
    chart.SortKey(1, 4);
    chart.SortKeyOrder(1, SortOrder::Descending);
    chart.ActiveSheet(2);
}

// What a view would show differently.
QString shownDifference(const SheetGrid& a, const SheetGrid& b) {
    if (a.SheetCount() != b.SheetCount()) return u"sheets"_s;
    for (int sheet = 1; sheet <= a.SheetCount(); ++sheet) {
        if (a.rowsOf(sheet) != b.rowsOf(sheet) || a.colsOf(sheet) != b.colsOf(sheet))
            return u"size"_s;
        if (a.spansOf(sheet) != b.spansOf(sheet)) return u"spans"_s;
        for (int col = 0; col <= a.colsOf(sheet); ++col)
            if (a.widthOf(sheet, col) != b.widthOf(sheet, col) ||
                a.isColHidden(sheet, col) != b.isColHidden(sheet, col))
                return u"column %1"_s.arg(col);
        for (int row = 0; row <= a.rowsOf(sheet); ++row) {
            if (a.heightOf(sheet, row) != b.heightOf(sheet, row) ||
                a.isRowHidden(sheet, row) != b.isRowHidden(sheet, row) ||
                a.hasPageBreak(sheet, row) != b.hasPageBreak(sheet, row))
                return u"row %1"_s.arg(row);
            for (int col = 0; col <= a.colsOf(sheet); ++col)
                if (a.textAt(sheet, col, row) != b.textAt(sheet, col, row) ||
                    !(a.formatAt(sheet, col, row) == b.formatAt(sheet, col, row)) ||
                    a.pictureAt(sheet, col, row) != b.pictureAt(sheet, col, row))
                    return u"cell %1, %2 of sheet %3"_s.arg(col).arg(row).arg(sheet);
        }
    }
    return {};
}

}  // namespace

class TestGridFile : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString path(const QString& name) const { return m_folder.filePath(name); }

private Q_SLOTS:
    void chartWithSpansColoursAndThreeSheetsComesBack() {
        SheetGrid chart;
        makeChart(chart);
        QVERIFY(chart.SaveToFile(path(u"Größer.stp"_s), false));
        SheetGrid loaded;
        loaded.Col(7);
        loaded.Row(8);
        loaded.BlockMode(true);
        loaded.SetActiveCell(2, 2);
        QVERIFY(loaded.LoadFromFile(path(u"Größer.stp"_s)));
        QCOMPARE(shownDifference(chart, loaded), QString());
        QCOMPARE(loaded.ActiveSheet(), 2);
        QCOMPARE(loaded.Sheet(), 2);
        QCOMPARE(loaded.Col(), 7);
        QCOMPARE(loaded.Row(), 8);
        QVERIFY(loaded.BlockMode());
        QCOMPARE(loaded.ActiveCol(), 0);
        QCOMPARE(loaded.ActiveRow(), 0);
        QVERIFY(!loaded.ColHeadersShow() && loaded.RowHeadersShow());
        QVERIFY(!loaded.GridShowHoriz() && loaded.GridShowVert());
        QVERIFY(loaded.AllowCellOverflow() && loaded.EditModeReplace());
        QCOMPARE(loaded.TabStripPolicy(), TabStrip::Never);
        QCOMPARE(loaded.SortKey(1), 4);
        QCOMPARE(loaded.SortKeyOrder(1), SortOrder::Descending);
        QVERIFY(loaded.SaveToFile(path(u"again.stp"_s), false));
        QCOMPARE(bytesOf(path(u"again.stp"_s)), bytesOf(path(u"Größer.stp"_s)));
    }

    void chartIsASmallFile() {
        SheetGrid chart;
        makeChart(chart);
        QVERIFY(chart.SaveToFile(path(u"small.stp"_s), false));
        QVERIFY(bytesOf(path(u"small.stp"_s)).size() < 16 * 1024);
    }

    void defaultsGoOnWorkingAfterLoading() {
        SheetGrid grid;
        grid.MaxRows(2);
        address(grid, 5, -1);
        grid.CellType(CellKind::Date);
        grid.RowHeight(-1, 30);
        QVERIFY(grid.SaveToFile(path(u"defaults.set"_s), false));
        SheetGrid loaded;
        QVERIFY(loaded.LoadFromFile(path(u"defaults.set"_s)));
        loaded.MaxRows(9);
        loaded.SetText(5, 9, u"2026-06-05"_s);
        QCOMPARE(loaded.GetText(5, 9), u"06/05/26"_s);
        QCOMPARE(loaded.RowHeight(9), 30.0);
    }

    void emptyGridComesBack() {
        SheetGrid grid;
        grid.MaxRows(0);
        grid.MaxCols(0);
        QVERIFY(grid.SaveToFile(path(u"empty.set"_s), false));
        SheetGrid loaded;
        loaded.SetText(1, 1, u"old"_s);
        QVERIFY(loaded.LoadFromFile(path(u"empty.set"_s)));
        QCOMPARE(loaded.MaxRows(), 0);
        QCOMPARE(loaded.MaxCols(), 0);
        QCOMPARE(loaded.GetText(1, 1), QString());
    }

    void dataOnlyLeavesLooksOut() {
        SheetGrid chart;
        makeChart(chart);
        QVERIFY(chart.SaveToFile(path(u"data.set"_s), true));
        SheetGrid loaded;
        QVERIFY(loaded.LoadFromFile(path(u"data.set"_s)));
        QCOMPARE(loaded.SheetCount(), 3);
        QCOMPARE(loaded.MaxRows(), 42);
        QCOMPARE(loaded.textAt(2, 1, 2), chart.textAt(2, 1, 2));
        QCOMPARE(loaded.pictureAt(2, 3, 7), chart.pictureAt(2, 3, 7));
        QVERIFY(loaded.formatAt(2, 1, 2) == CellFormat());
        QVERIFY(loaded.spansOf(2).empty());
        QVERIFY(loaded.widthOf(2, 3) != 2.5);
    }

    void everyKindOfTextComesBack() {
        const QStringList texts{u"\"quoted\" \\ and / and \t\r\n end"_s,
                                QString(QChar(0)) + u"zero"_s,
                                u"\u2028\u2029\uFEFF\uFFFE"_s,
                                u"e\u0301 and é"_s,
                                u"שלום עליכם"_s,
                                u"𝄞😀"_s,
                                QString(100'000, QChar(0x4E00)),
                                u" "_s};
        SheetGrid grid;
        for (int i = 0; i < texts.size(); ++i) grid.SetText(1 + i % 3, 1 + i, texts[i]);
        QVERIFY(grid.SaveToFile(path(u"texts.set"_s), false));
        SheetGrid loaded;
        QVERIFY(loaded.LoadFromFile(path(u"texts.set"_s)));
        for (int i = 0; i < texts.size(); ++i) QCOMPARE(loaded.GetText(1 + i % 3, 1 + i), texts[i]);
    }

    void halfACharacterCostsItselfAlone() {
        SheetGrid grid;
        grid.SetText(1, 1, u"before "_s + QChar(0xD834) + u" after"_s);
        grid.SetText(2, 1, u"next"_s);
        QVERIFY(grid.SaveToFile(path(u"half.set"_s), false));
        SheetGrid loaded;
        QVERIFY(loaded.LoadFromFile(path(u"half.set"_s)));
        QVERIFY(loaded.GetText(1, 1).startsWith(u"before "_s));
        QVERIFY(loaded.GetText(1, 1).endsWith(u" after"_s));
        QCOMPARE(loaded.GetText(2, 1), u"next"_s);
    }

    void aHundredThousandRowsComeBack() {
        SheetGrid grid;
        grid.MaxRows(100'000);
        grid.MaxCols(3);
        for (int row = 1; row <= 100'000; ++row) {
            grid.SetText(1, row, QString::number(row));
            grid.SetText(3, row, u"Lied"_s);
        }
        address(grid, 2, 50'000);
        grid.FontBold(true);
        QVERIFY(grid.SaveToFile(path(u"huge.set"_s), false));
        SheetGrid loaded;
        QVERIFY(loaded.LoadFromFile(path(u"huge.set"_s)));
        QCOMPARE(loaded.DataRowCnt(), 100'000);
        QCOMPARE(loaded.GetText(1, 77'777), u"77777"_s);
        QVERIFY(loaded.formatAt(1, 2, 50'000).fontBold);
    }

    void tenMillionRowsWithoutDataAreASmallMatter() {
        SheetGrid grid;
        grid.MaxRows(10'000'000);
        grid.MaxCols(16'384);
        QVERIFY(grid.SaveToFile(path(u"wide.set"_s), false));
        QVERIFY(bytesOf(path(u"wide.set"_s)).size() < 1000);
        SheetGrid loaded;
        QVERIFY(loaded.LoadFromFile(path(u"wide.set"_s)));
        QCOMPARE(loaded.MaxRows(), 10'000'000);
        QCOMPARE(loaded.MaxCols(), 16'384);
    }

    void pathsTakeBothSeparators() {
        QVERIFY(QDir(m_folder.path()).mkdir(u"saved sets"_s));
        SheetGrid grid;
        grid.SetText(1, 1, u"x"_s);
        QVERIFY(grid.SaveToFile(m_folder.path() + u"\\saved sets\\a.set"_s, false));
        QVERIFY(QFile::exists(path(u"saved sets/a.set"_s)));
        SheetGrid loaded;
        QVERIFY(loaded.LoadFromFile(m_folder.path() + u"\\saved sets\\a.set"_s));
        QCOMPARE(loaded.GetText(1, 1), u"x"_s);
    }

    void placesThatCannotBeWrittenOrReadGiveFalse() {
        SheetGrid grid;
        grid.SetText(1, 1, u"kept"_s);
        QVERIFY(!grid.SaveToFile(path(u"no such folder/a.set"_s), false));
        QVERIFY(!grid.SaveToFile(m_folder.path(), false));
        QVERIFY(!grid.SaveToFile(QString(), false));
        QVERIFY(!grid.LoadFromFile(path(u"missing.set"_s)));
        QVERIFY(!grid.LoadFromFile(m_folder.path()));
        QVERIFY(!grid.LoadFromFile(QString()));
        QVERIFY(!grid.LoadFromFile(u"/dev/zero"_s));
        QCOMPARE(grid.GetText(1, 1), u"kept"_s);
    }

    void aFullDiskLeavesTheOldFileWhole() {
        const QString file = path(u"full.set"_s);
        SheetGrid grid;
        grid.SetText(1, 1, u"old"_s);
        QVERIFY(grid.SaveToFile(file, false));
        const QByteArray old = bytesOf(file);
        for (int row = 1; row <= 500; ++row) grid.SetText(1, row, QString(1000, QChar(u'x')));

        const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
        rlimit tight = before;
        tight.rlim_cur = 64 * 1024;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &tight), 0);
        const bool saved = grid.SaveToFile(file, false);
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, signalBefore);

        QVERIFY(!saved);
        QCOMPARE(bytesOf(file), old);
        QCOMPARE(QDir(m_folder.path()).entryList({u"full.set*"_s}), QStringList{u"full.set"_s});
        QVERIFY(grid.SaveToFile(file, false));
        QVERIFY(bytesOf(file).size() > 500'000);
    }

    void gridTooLargeForAFileIsNotSaved() {
        GridData data;
        data.sheets[0].maxRows = MaxGridRows;
        data.sheets.push_back(data.sheets[0]);
        for (SheetData& sheet : data.sheets)
            sheet.cellForWriting(1, MaxGridRows / 2 + MaxSheets).text = u"x"_s;
        QVERIFY(writeGridFile(data, false).isEmpty());
        data.sheets[1].resizeRows(10);
        QVERIFY(!writeGridFile(data, false).isEmpty());
    }
};

LORVANITE_TEST(TestGridFile)
#include "test_grid_file.moc"
