// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Widths, handles and dates of a grid by mouse and keys, also from right to left.
#include "core/data/dates.h"
#include "platform/grid_view/edit_window.h"
#include "platform/theme/theme.h"
#include "support/registry.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QWheelEvent>

namespace {

void setKind(SheetView& view, int col, int row, CellKind kind) {
    view.Col(col);
    view.Row(row);
    view.CellType(kind);
}

// The border behind a column's head, in the coordinates of the heads.
QPoint borderBehind(SheetView& view, int col) {
    const QRect head = view.cellRect(col, 0);
    return view.horizontalHeader()->viewport()->mapFrom(&view,
                                                        QPoint(head.right(), head.center().y()));
}

void doubleClickBorderBehind(SheetView& view, int col) {
    QWidget* heads = view.horizontalHeader()->viewport();
    const QPoint border = borderBehind(view, col);
    QTest::mouseMove(heads, border);
    QTest::mouseDClick(heads, Qt::LeftButton, {}, border);
    view.flush();
}

void turnWheel(QWidget* over, int angle) {
    const QPoint place = over->rect().center();
    QWheelEvent turn(place, over->mapToGlobal(place), QPoint(), QPoint(0, angle), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(over, &turn);
}

// The pixels of a place that have another colour than its first one.
int inkedIn(const QImage& image, const QRect& place) {
    int count = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            count += image.pixel(x, y) != image.pixel(place.topLeft());
    return count;
}

}  // namespace

class TestSheetViewMouse : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void doubleClickOnABorderShowsTheWholeColumn();
    void draggedColumnLeavesTheSharedWidthsOfTheOthers();
    void menuOfAHeadComesWithoutAButtonToo();
    void doubleClickOnAHandleOpensIt();
    void selectedCellsAreTinted();
    void handlesAreOnTheLeftFromRightToLeft();
    void dateStepsByWheel();
    void dateOpensItsCalendarByKey_data();
    void dateOpensItsCalendarByKey();
    void backtabTakesAndGoesBack();
};

void TestSheetViewMouse::doubleClickOnABorderShowsTheWholeColumn() {
    SheetView view;
    fillGrid(view, 4, 6);
    const QString longest = QStringLiteral("Great Is Thy Faithfulness (Runyan)");
    view.SetText(1, 3, longest);
    view.SetText(2, 2, longest);
    setKind(view, 2, 2, CellKind::Button);
    view.SetText(3, 2, QStringLiteral("one line\nof several lines"));
    view.SetText(4, 0, QStringLiteral("A head wider than its cells"));
    showGrid(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    const QFontMetrics metrics = view.fontMetrics();
    const int text = metrics.horizontalAdvance(longest);
    const double other = view.ColWidth(2);
    QVERIFY(view.columnWidth(0) < text);

    doubleClickBorderBehind(view, 1);
    QVERIFY2(view.columnWidth(0) >= text + 12 && view.columnWidth(0) < text + 24,
             qPrintable(QString::number(view.columnWidth(0) - text)));
    QCOMPARE(view.ColWidth(2), other);
    // The grid knows the width, and it stays when the grid changes.
    const int width = view.columnWidth(0);
    view.MaxRows(7);
    view.flush();
    QCOMPARE(view.columnWidth(0), width);

    // With room for its button.
    doubleClickBorderBehind(view, 2);
    QVERIFY(view.columnWidth(1) >= text + 12 + 28);
    view.resize(1000, 300);
    // Of several lines the longest counts.
    doubleClickBorderBehind(view, 3);
    const int line = metrics.horizontalAdvance(QStringLiteral("of several lines"));
    QVERIFY2(view.columnWidth(2) >= line + 12 && view.columnWidth(2) < line + 24,
             qPrintable(QString::number(view.columnWidth(2) - line)));
    doubleClickBorderBehind(view, 4);
    QFont bold = view.font();
    bold.setWeight(QFont::DemiBold);
    QVERIFY(view.columnWidth(3) >= QFontMetrics(bold).horizontalAdvance(view.GetText(4, 0)) + 12);
    QCOMPARE(clicks.count(), 0);
}

void TestSheetViewMouse::draggedColumnLeavesTheSharedWidthsOfTheOthers() {
    SheetView view;
    fillGrid(view, 4, 3);
    view.Col(3);
    view.ColHidden(true);
    view.setFillColumn(SheetView::AllColumns);
    showGrid(view);
    const int first = view.columnWidth(0);
    const int second = view.columnWidth(1);
    const double hidden = view.ColWidth(3);
    QWidget* heads = view.horizontalHeader()->viewport();
    const QPoint border = borderBehind(view, 1);
    const QPoint to = border - QPoint(30, 0);
    QTest::mouseMove(heads, border);
    QTest::mousePress(heads, Qt::LeftButton, {}, border);
    QMouseEvent drag(QEvent::MouseMove, to, heads->mapToGlobal(to), Qt::LeftButton, Qt::LeftButton,
                     {});
    QCoreApplication::sendEvent(heads, &drag);
    QTest::mouseRelease(heads, Qt::LeftButton, {}, to);
    view.flush();
    QVERIFY(qAbs(view.columnWidth(0) - (first - 30)) <= 1);
    QVERIFY(qAbs(view.columnWidth(1) - second) <= 1);
    QCOMPARE(view.ColWidth(3), hidden);
    // The view no longer decides about the widths.
    view.resize(800, 300);
    view.flush();
    QVERIFY(qAbs(view.columnWidth(1) - second) <= 1);
}

void TestSheetViewMouse::menuOfAHeadComesWithoutAButtonToo() {
    SheetView view;
    fillGrid(view, 3, 3);
    showGrid(view);
    QSignalSpy rights(&view, &SheetView::RightClick);
    QWidget* heads = view.horizontalHeader()->viewport();
    const auto menu = [&](const QPoint& place) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, heads->mapToGlobal(place));
        QCoreApplication::sendEvent(heads, &event);
    };
    menu(heads->mapFrom(&view, view.cellRect(2, 0).center()));
    QCOMPARE(rights.count(), 1);
    QCOMPARE(lastOf(rights).mid(0, 3), (QList<QVariant>{0, 2, 0}));
    menu(QPoint(heads->width() - 2, 3));  // behind the last column
    QCOMPARE(rights.count(), 0);
}

void TestSheetViewMouse::doubleClickOnAHandleOpensIt() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    setKind(view, 2, 2, CellKind::Combo);
    view.TypeComboBoxList(QStringLiteral("Hymns\tPraise"));
    view.ColWidth(2, 16);
    view.flush();
    const QRect cell = view.cellRect(2, 2);
    const QPoint handle =
        view.viewport()->mapFrom(&view, QPoint(cell.right() - 10, cell.center().y()));
    QMouseEvent press(QEvent::MouseButtonDblClick, handle, view.viewport()->mapToGlobal(handle),
                      Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(view.viewport(), &press);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, handle);
    auto* combo = editorOf<QComboBox>(view);
    QVERIFY(combo && combo->view()->isVisible());
    QCOMPARE(window.changes.count(), 0);
    combo->hidePopup();
}

void TestSheetViewMouse::selectedCellsAreTinted() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, middleOf(view, 1, 1));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, middleOf(view, 2, 2));
    const auto ground = [&view](const QImage& image, int col, int row) {
        return image.pixelColor(view.cellRect(col, row).bottomRight() - QPoint(4, 4));
    };
    const QImage image = view.grab().toImage();
    const ThemeColours& colours = themeColours(QApplication::palette());
    const QColor tint = blend(colours.base, colours.accent, 0.16);
    QCOMPARE(ground(image, 1, 2), tint);
    QCOMPARE(ground(image, 2, 1), tint);
    QCOMPARE(ground(image, 3, 3), colours.base);
    QCOMPARE(ground(image, view.ActiveCol(), view.ActiveRow()), colours.base);
}

void TestSheetViewMouse::handlesAreOnTheLeftFromRightToLeft() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    view.setLayoutDirection(Qt::RightToLeft);
    setKind(view, 2, 2, CellKind::Combo);
    view.TypeComboBoxList(QStringLiteral("Hymns\tPraise"));
    view.SetText(2, 2, QString());
    view.ColWidth(2, 16);
    view.flush();
    const QRect cell = view.cellRect(2, 2);
    const QRect left(cell.left() + 3, cell.top() + 3, 16, cell.height() - 6);
    const QRect right(cell.right() - 20, cell.top() + 3, 16, cell.height() - 6);
    const QImage image = view.grab().toImage();
    QVERIFY(inkedIn(image, left) > 5);
    QCOMPARE(inkedIn(image, right), 0);
    const auto inView = [&view](const QPoint& place) {
        return view.viewport()->mapFrom(&view, place);
    };
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, inView(right.center()));
    QVERIFY(!editorOf<QComboBox>(view));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, inView(left.center()));
    auto* combo = editorOf<QComboBox>(view);
    QVERIFY(combo && combo->view()->isVisible());
    combo->hidePopup();
    // The text keeps clear of it.
    view.SetText(2, 2, QStringLiteral("Hymns of praise and of thanksgiving"));
    view.SetActiveCell(1, 1);
    view.flush();
    QCOMPARE(view.GetText(2, 2), QStringLiteral("Hymns of praise and of thanksgiving"));
    const QRect beside(left.left(), left.top(), 3, left.height());
    QCOMPARE(inkedIn(view.grab().toImage(), beside), 0);
}

void TestSheetViewMouse::dateStepsByWheel() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    for (const bool spins : {true, false}) {
        setKind(view, 1, 1, CellKind::Date);
        view.TypeSpin(spins);
        view.SetText(1, 1, QStringLiteral("11/22/26"));
        view.SetActiveCell(1, 1);
        view.flush();
        pressKey(Qt::Key_F2);
        auto* editor = editorOf<QLineEdit>(view);
        QVERIFY(editor);
        turnWheel(editor, 120);
        turnWheel(editor, 120);
        turnWheel(editor, -120);
        turnWheel(editor, 0);
        pressKey(Qt::Key_Return);
        QCOMPARE(view.GetText(1, 1),
                 spins ? QStringLiteral("11/23/26") : QStringLiteral("11/22/26"));
    }
}

void TestSheetViewMouse::dateOpensItsCalendarByKey_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifier");
    QTest::newRow("F4") << int(Qt::Key_F4) << int(Qt::NoModifier);
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << int(Qt::AltModifier);
}

void TestSheetViewMouse::dateOpensItsCalendarByKey() {
    QFETCH(int, key);
    QFETCH(int, modifier);
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    setKind(view, 1, 1, CellKind::Date);
    view.SetText(1, 1, QStringLiteral("11/22/26"));
    view.flush();
    pressKey(Qt::Key_F2);
    pressKey(Qt::Key(key), Qt::KeyboardModifier(modifier));
    QWidget* popup = QApplication::activePopupWidget();
    QVERIFY(popup);
    auto* calendar = popup->findChild<QCalendarWidget*>();
    QVERIFY(calendar);
    QCOMPARE(calendar->selectedDate(), QDate(2026, 11, 22));
    QWidget* days = calendar->focusWidget() ? calendar->focusWidget() : calendar;
    QTest::keyClick(days, Qt::Key_Down);
    QTest::keyClick(days, Qt::Key_Return);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(view.GetText(1, 1), QStringLiteral("11/29/26"));
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewMouse::backtabTakesAndGoesBack() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    view.SetActiveCell(2, 2);
    view.flush();
    typeText(QStringLiteral("new"));
    pressKey(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(view.GetText(2, 2), QStringLiteral("new"));
    QCOMPARE(window.change(), (QList<QVariant>{2, 2}));
    QCOMPARE(view.ActiveCol(), 1);
    QCOMPARE(view.ActiveRow(), 2);
    QVERIFY(!editorOf<QLineEdit>(view));
}

LORVANITE_TEST(TestSheetViewMouse)
#include "test_sheet_view_mouse.moc"
