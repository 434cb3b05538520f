// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a grid on the screen looks like, pixel by pixel where it counts.
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"
#include "support/registry.h"

#include <QBuffer>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QWindow>

namespace {

constexpr int Green = RGB(180, 255, 180);
constexpr int Red = RGB(200, 0, 0);

QByteArray picture(const QColor& colour) {
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// Pixels of a place that differ from its most frequent colour: something is drawn there.
int inked(const QImage& image, const QRect& place) {
    QHash<QRgb, int> counts;
    int most = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            most = qMax(most, ++counts[image.pixel(x, y)]);
        }
    }
    return place.width() * place.height() - most;
}

// What the screen shows, without painting everything again.
QImage onScreen(QWidget& widget) {
    QCoreApplication::processEvents();
    return widget.screen()->grabWindow(widget.window()->winId()).toImage();
}

}  // namespace

class TestSheetViewPaint : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void colours();
    void darkGround();
    void linesAndBorders();
    void spans();
    void overflow();
    void overflowOfCentredText();
    void overflowFromOutsideTheView();
    void aChangeRepaintsItsRow();
    void noOverflowUnlessAllowed();
    void pictures();
    void handles();
    void listRowStandsOut();
    void activeCellHasAFrame();
    void emptyHeadsShowNothing();

private:
    // A plain grid without heads, columns 60 and rows 27 pixels wide and high.
    void prepare(SheetView& view, int cols, int rows) {
        view.RowHeadersShow(false);
        view.ColHeadersShow(false);
        view.GridShowHoriz(false);
        view.GridShowVert(false);
        view.MaxCols(cols);
        view.MaxRows(rows);
        view.ColWidth(-1, 60 / 7.41);
        view.resize(420, 260);
        view.show();
        view.flush();
    }
    // A cell without its edges.
    QRect inner(SheetView& view, int col, int row) {
        return view.cellRect(col, row).adjusted(1, 1, -2, -2);
    }
};

void TestSheetViewPaint::init() { QApplication::setPalette(themePalette(themeColours(false))); }

void TestSheetViewPaint::colours() {
    SheetView view;
    prepare(view, 3, 4);
    view.setReadOnly(true);
    view.Col(2);
    view.Row(2);
    view.BackColor(Green);
    const QImage image = view.grab().toImage();
    QCOMPARE(image.pixelColor(view.cellRect(2, 2).center()), QColor(180, 255, 180));
    QCOMPARE(image.pixelColor(view.cellRect(1, 1).center()), themeColours(false).base);
    QCOMPARE(image.pixelColor(view.cellRect(1, 2).center()), themeColours(false).alternate);
}

void TestSheetViewPaint::darkGround() {
    QApplication::setPalette(themePalette(themeColours(true)));
    SheetView view;
    prepare(view, 3, 2);
    const auto ink = [&view, this](int col, int row) {
        // The pixel that differs most from the ground is the text's.
        const QImage image = view.grab().toImage();
        const QRect place = inner(view, col, row);
        const QColor ground = image.pixelColor(place.bottomRight());
        QColor best = ground;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (contrast(pixel, ground) > contrast(best, ground)) best = pixel;
            }
        }
        return contrast(best, ground);
    };
    for (int col = 1; col <= 3; ++col) view.SetText(col, 1, QStringLiteral("HIHI"));
    view.Row(1);
    view.Col(2);
    view.BackColor(Green);
    view.Col(3);
    view.ForeColor(Black);  // ink for white paper
    for (int col = 1; col <= 3; ++col) QVERIFY(ink(col, 1) > 4.5);
}

void TestSheetViewPaint::linesAndBorders() {
    SheetView view;
    prepare(view, 3, 3);
    const auto at = [&view](int col, int row, bool right) {
        const QRect cell = view.cellRect(col, row);
        const QImage image = view.grab().toImage();
        return right ? image.pixelColor(cell.right(), cell.center().y())
                     : image.pixelColor(cell.center().x(), cell.bottom());
    };
    const QColor base = themeColours(false).base;
    const QColor line = themeColours(false).line;
    QCOMPARE(at(1, 1, true), base);
    QCOMPARE(at(1, 1, false), base);
    view.GridShowHoriz(true);
    QCOMPARE(at(1, 1, true), base);
    QCOMPARE(at(1, 1, false), line);
    view.GridShowVert(true);
    QCOMPARE(at(1, 1, true), line);
    view.SetCellBorder(1, 2, 2, 2, BorderType::Right, Red, BorderStyle::Solid);
    view.SetCellBorder(1, 2, 1, 2, BorderType::Bottom, Black, BorderStyle::Solid);
    QCOMPARE(at(2, 2, true), QColor(200, 0, 0));
    QVERIFY(at(1, 2, false).lightness() < 60);
    QCOMPARE(at(1, 1, true), line);
    view.SetCellBorder(1, 2, 2, 2, BorderType::Right, Red, BorderStyle::None);
    QCOMPARE(at(2, 2, true), line);
}

void TestSheetViewPaint::spans() {
    SheetView view;
    prepare(view, 4, 3);
    view.GridShowVert(true);
    view.SetText(1, 2, QStringLiteral("A line as wide as all of them"));
    view.SetText(3, 2, QStringLiteral("unseen"));
    view.AddCellSpan(1, 2, 4, 1);
    view.Col(1);
    view.Row(2);
    view.BackColor(Green);
    const QImage image = view.grab().toImage();
    const QRect joined = view.cellRect(1, 2);
    QCOMPARE(joined.width(), view.cellRect(4, 1).right() - view.cellRect(1, 1).left() + 1);
    QCOMPARE(image.pixelColor(joined.right() - 5, joined.bottom() - 3), QColor(180, 255, 180));
    const QRect first = view.cellRect(1, 1);
    QCOMPARE(image.pixelColor(first.right(), joined.bottom() - 3), QColor(180, 255, 180));
    QVERIFY(inked(image, QRect(joined.left() + 70, joined.top() + 2, 80, 20)) > 20);
    view.Col(1);
    view.TypeHAlign(HAlign::Centre);
    view.SetText(1, 2, QStringLiteral("x"));
    const QImage centred = view.grab().toImage();
    const QRect middle(joined.center().x() - 10, joined.top() + 2, 20, 20);
    QVERIFY(inked(centred, middle) > 5);
    QCOMPARE(inked(centred, QRect(joined.left() + 2, joined.top() + 2, 80, 20)), 0);
}

void TestSheetViewPaint::overflow() {
    SheetView view;
    prepare(view, 5, 3);
    view.AllowCellOverflow(true);
    view.GridShowVert(true);
    view.SetText(1, 1, QStringLiteral("A text that is wide enough for three cells"));
    view.SetText(4, 1, QStringLiteral("."));
    QImage image = view.grab().toImage();
    QVERIFY(inked(image, inner(view, 2, 1)) > 20);
    QVERIFY(inked(image, inner(view, 3, 1)) > 20);
    QVERIFY(inked(image, inner(view, 4, 1)) < 12);
    QCOMPARE(inked(image, inner(view, 5, 1)), 0);
    // A coloured neighbour does not cut the text, one that holds a text does.
    view.Col(2);
    view.Row(1);
    view.BackColor(Green);
    view.SetText(3, 1, QStringLiteral("."));
    image = view.grab().toImage();
    QVERIFY(inked(image, inner(view, 2, 1)) > 20);
    QVERIFY(inked(image, inner(view, 3, 1)) < 12);
    // Right-aligned text runs over to the left.
    view.SetText(5, 2, QStringLiteral("wide enough for two cells"));
    view.Col(5);
    view.Row(2);
    view.TypeHAlign(HAlign::Right);
    image = view.grab().toImage();
    QVERIFY(inked(image, inner(view, 4, 2)) > 20);
    QCOMPARE(inked(image, inner(view, 1, 2)), 0);
}

void TestSheetViewPaint::overflowOfCentredText() {
    SheetView view;
    prepare(view, 5, 2);
    view.AllowCellOverflow(true);
    view.SetText(3, 1, QStringLiteral("a text over both sides of it"));
    view.Col(3);
    view.Row(1);
    view.TypeHAlign(HAlign::Centre);
    const QImage image = view.grab().toImage();
    QVERIFY(inked(image, inner(view, 2, 1)) > 20);
    QVERIFY(inked(image, inner(view, 4, 1)) > 20);
}

void TestSheetViewPaint::overflowFromOutsideTheView() {
    SheetView view;
    prepare(view, 20, 2);
    view.AllowCellOverflow(true);
    view.SetText(1, 1, QString(60, QLatin1Char('M')));
    view.flush();
    view.horizontalScrollBar()->setValue(200);
    QVERIFY(view.cellRect(1, 1).right() < 0);
    const QImage image = view.grab().toImage();
    QVERIFY(inked(image, inner(view, 6, 1)) > 20);
}

void TestSheetViewPaint::aChangeRepaintsItsRow() {
    SheetView view;
    prepare(view, 5, 3);
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.AllowCellOverflow(true);
    view.SetText(1, 1, QStringLiteral("MMMMMMMMMMMMMMMMMMMMMMMM"));
    QTRY_VERIFY(inked(onScreen(view), inner(view, 3, 1)) > 20);
    // The neighbour's text cuts it, and gives the room back.
    view.SetText(2, 1, QStringLiteral("."));
    QTRY_VERIFY(inked(onScreen(view), inner(view, 3, 1)) == 0);
    view.SetText(2, 1, QString());
    QTRY_VERIFY(inked(onScreen(view), inner(view, 3, 1)) > 20);
    // A part that is painted again keeps the text that runs over it.
    const QImage before = onScreen(view);
    view.viewport()->repaint(inner(view, 2, 1).translated(-view.viewport()->pos()));
    QCOMPARE(onScreen(view), before);
    view.SetText(1, 1, QString());
    QTRY_VERIFY(inked(onScreen(view), inner(view, 3, 1)) == 0);
}

void TestSheetViewPaint::noOverflowUnlessAllowed() {
    SheetView view;
    prepare(view, 3, 2);
    view.SetText(1, 1, QStringLiteral("A text that is wide enough for three cells"));
    const QImage image = view.grab().toImage();
    QVERIFY(inked(image, inner(view, 1, 1)) > 20);
    QCOMPARE(inked(image, inner(view, 2, 1)), 0);
}

void TestSheetViewPaint::pictures() {
    SheetView view;
    prepare(view, 3, 3);
    for (int row = 1; row <= 2; ++row) {
        view.Col(2);
        view.Row(row);
        view.CellType(CellKind::Picture);
        view.Picture(picture(row == 1 ? Qt::red : Qt::blue));
    }
    view.Row(3);
    view.CellType(CellKind::Picture);
    view.Picture("no image at all");
    QImage image = view.grab().toImage();
    QCOMPARE(image.pixelColor(view.cellRect(2, 1).center()), QColor(Qt::red));
    QCOMPARE(image.pixelColor(view.cellRect(2, 2).center()), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(view.cellRect(2, 3).center()), themeColours(false).base);
    view.Row(1);
    view.Picture({});
    image = view.grab().toImage();
    QCOMPARE(image.pixelColor(view.cellRect(2, 1).center()), themeColours(false).base);
}

void TestSheetViewPaint::handles() {
    SheetView view;
    prepare(view, 1, 4);
    const CellKind kinds[] = {CellKind::Edit, CellKind::Combo, CellKind::Button, CellKind::Date};
    for (int row = 1; row <= 4; ++row) {
        view.Col(1);
        view.Row(row);
        view.CellType(kinds[row - 1]);
    }
    const auto end = [&view](int row) {
        const QRect cell = view.cellRect(1, row);
        return QRect(cell.right() - 20, cell.top() + 3, 16, cell.height() - 6);
    };
    QImage image = view.grab().toImage();
    QCOMPARE(inked(image, end(1)), 0);
    for (int row = 2; row <= 4; ++row) QVERIFY(inked(image, end(row)) > 5);
    // A list opens nothing in its cells.
    view.setReadOnly(true);
    image = view.grab().toImage();
    QCOMPARE(inked(image, end(2)), 0);
    QVERIFY(inked(image, end(3)) > 5);
}

void TestSheetViewPaint::listRowStandsOut() {
    SheetView view;
    prepare(view, 3, 4);
    view.setReadOnly(true);
    view.Col(2);
    view.Row(2);
    view.BackColor(Green);
    view.SetActiveCell(1, 2);
    const QColor accent = themeColours(false).accent;
    QImage image = view.grab().toImage();
    QCOMPARE(image.pixelColor(view.cellRect(1, 2).center()), accent);
    QCOMPARE(image.pixelColor(view.cellRect(3, 2).center()), accent);
    // A colour that marks a cell stays seen in the active row too.
    QCOMPARE(image.pixelColor(view.cellRect(2, 2).center()), QColor(180, 255, 180));
    QVERIFY(image.pixelColor(view.cellRect(1, 3).center()) != accent);
    view.SetActiveCell(0, 0);
    image = view.grab().toImage();
    QCOMPARE(image.pixelColor(view.cellRect(1, 2).center()), themeColours(false).alternate);
    QCOMPARE(image.pixelColor(view.cellRect(2, 2).center()), QColor(180, 255, 180));
}

void TestSheetViewPaint::activeCellHasAFrame() {
    SheetView view;
    prepare(view, 3, 4);
    QVERIFY(QTest::qWaitForWindowActive(&view));
    view.setFocus();
    view.SetActiveCell(2, 2);
    const QColor accent = themeColours(false).accent;
    const QImage image = view.grab().toImage();
    const QRect cell = view.cellRect(2, 2);
    QCOMPARE(image.pixelColor(cell.left(), cell.center().y()), accent);
    QCOMPARE(image.pixelColor(cell.left() + 1, cell.center().y()), accent);
    QCOMPARE(image.pixelColor(cell.center()), themeColours(false).base);
    QVERIFY(image.pixelColor(view.cellRect(1, 2).center()) != accent);
}

void TestSheetViewPaint::emptyHeadsShowNothing() {
    SheetView view;
    prepare(view, 3, 3);
    view.ColHeadersShow(true);
    view.RowHeadersShow(true);
    view.SetText(2, 0, QStringLiteral("Titel"));
    view.SetText(0, 2, QStringLiteral("Reihe"));
    view.flush();
    const QImage image = view.grab().toImage();
    const auto head = [this, &view](int col, int row) {
        return inner(view, col, row).adjusted(3, 1, -3, -1);
    };
    QCOMPARE(inked(image, head(1, 0)), 0);
    QVERIFY(inked(image, head(2, 0)) > 20);
    QCOMPARE(inked(image, head(0, 1)), 0);
    QVERIFY(inked(image, head(0, 2)) > 20);
    const QRect first = head(1, 0);
    QCOMPARE(image.pixelColor(first.center()), themeColours(false).head);
}

LORVANITE_TEST(TestSheetViewPaint)
#include "test_sheet_view_paint.moc"
