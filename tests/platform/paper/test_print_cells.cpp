// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Cells on paper: pictures, alignment, lines around joined cells.
#include "core/grid/sheet_grid.h"
#include "platform/paper/printing.h"
#include "support/printed.h"
#include "support/registry.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int Dpi72 = 72;  // a pixel is a point

// Two columns and four rows, without lines.
void plainCells(SheetGrid& grid) {
    grid.MaxRows(4);
    grid.MaxCols(2);
    grid.ColWidth(-1, 20);
    grid.PrintColHeaders(false);
    grid.PrintRowHeaders(false);
    grid.PrintGrid(false);
}

bool isRed(const QColor& colour) {
    return colour.red() > 200 && colour.green() < 80 && colour.blue() < 80;
}

// The rectangle of all that is red.
QRect redPart(const QImage& page) {
    QRect box;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if (isRed(page.pixelColor(x, y))) box |= QRect(x, y, 1, 1);
    return box;
}

}  // namespace

class TestPrintCells : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

    QString pdf() const { return m_folder.filePath(QStringLiteral("cells.pdf")); }

    QImage page(const SheetGrid& grid) {
        const PrintedFile target(pdf());
        PrintSheet(grid, 1);
        return pagePictures(pdf(), Dpi72).value(0);
    }

    static void select(SheetGrid& grid, int col, int row) {
        grid.Col(col);
        grid.Row(row);
    }

private Q_SLOTS:
    void pictureFitsItsCell() {
        SheetGrid grid;
        plainCells(grid);
        grid.SetText(1, 1, QStringLiteral("left"));
        select(grid, 2, 2);
        grid.CellType(CellKind::Picture);
        QImage red(40, 20, QImage::Format_RGB32);
        red.fill(Qt::red);
        QBuffer file;
        QVERIFY(red.save(&file, "PNG"));
        grid.Picture(file.data());
        const QRect part = redPart(page(grid));
        // It keeps its form, twice as wide as high, in a row of 20 points.
        QVERIFY2(part.height() > 12 && part.height() <= 20,
                 qPrintable(QString::number(part.height())));
        QVERIFY(qAbs(part.width() - 2 * part.height()) <= 3);
        QVERIFY(part.left() > printedWords(pdf()).value(QStringLiteral("left")).right());
        grid.Picture("no picture");
        QVERIFY(redPart(page(grid)).isEmpty());
    }

    void textIsAlignedInItsCell() {
        SheetGrid grid;
        plainCells(grid);
        int row = 0;
        for (const HAlign align : {HAlign::Left, HAlign::Centre, HAlign::Right}) {
            select(grid, 1, ++row);
            grid.TypeHAlign(align);
            grid.SetText(1, row, QStringLiteral("text%1").arg(row));
        }
        page(grid);
        const QHash<QString, QRectF> words = printedWords(pdf());
        const double left = words[QStringLiteral("text1")].left();
        const double middle = words[QStringLiteral("text2")].left();
        const double right = words[QStringLiteral("text3")].left();
        QVERIFY(right > left + 60);
        QVERIFY(qAbs((left + right) / 2 - middle) < 1);
    }

    void longTextAtTheRightRunsOverToTheLeft() {
        SheetGrid grid;
        plainCells(grid);
        grid.AllowCellOverflow(true);
        grid.SetText(1, 1, QStringLiteral("first"));
        select(grid, 2, 2);
        grid.TypeHAlign(HAlign::Right);
        grid.SetText(2, 2, QStringLiteral("begin the text that is wider than its cell end"));
        page(grid);
        const QHash<QString, QRectF> words = printedWords(pdf());
        const double secondColumn = words[QStringLiteral("first")].left() + 20 * 5.56;
        QVERIFY(words[QStringLiteral("begin")].left() < secondColumn - 20);
        QVERIFY(words[QStringLiteral("end")].right() > secondColumn + 90);
    }

    void joinedCellsHaveLinesAroundThemOnly() {
        SheetGrid grid;
        plainCells(grid);
        grid.AddCellSpan(1, 1, 2, 3);
        grid.SetText(1, 1, QStringLiteral(" "));
        grid.SetText(2, 4, QStringLiteral(" "));
        for (const BorderType side :
             {BorderType::Left, BorderType::Right, BorderType::Top, BorderType::Bottom})
            grid.SetCellBorder(1, 1, 2, 3, side, RGB(255, 0, 0), BorderStyle::Solid);
        QImage printed = page(grid);
        const QRect frame = redPart(printed);
        QVERIFY2(qAbs(frame.height() - 60) <= 2, qPrintable(QString::number(frame.height())));
        QVERIFY(redPart(printed.copy(frame.adjusted(3, 3, -3, -3))).isEmpty());
        // Without colours the lines are black.
        grid.PrintColor(false);
        printed = page(grid);
        QVERIFY(redPart(printed).isEmpty());
        QVERIFY(qGray(printed.pixel(frame.center().x(), frame.top())) < 200 ||
                qGray(printed.pixel(frame.center().x(), frame.top() + 1)) < 200);
    }
};

LORVANITE_TEST(TestPrintCells)
#include "test_print_cells.moc"
