// Events, places and following of a grid on the screen.
#include "platform/sheet_view.h"
#include "support/registry.h"

#include <QAbstractItemModelTester>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>

namespace {

QPoint middle(SheetView& view, int col, int row) {
    return view.viewport()->mapFrom(&view, view.cellRect(col, row).center());
}

void click(SheetView& view, int col, int row, Qt::MouseButton button = Qt::LeftButton) {
    if (row == 0 || col == 0) {
        QHeaderView* head = row == 0 ? view.horizontalHeader() : view.verticalHeader();
        const QPoint place = head->viewport()->mapFrom(&view, view.cellRect(col, row).center());
        QTest::mouseClick(head->viewport(), button, {}, place);
    } else {
        QTest::mouseClick(view.viewport(), button, {}, middle(view, col, row));
    }
}

void fill(SheetGrid& grid, int cols, int rows) {
    grid.MaxCols(cols);
    grid.MaxRows(rows);
    for (int row = 1; row <= rows; ++row) {
        for (int col = 1; col <= cols; ++col) {
            grid.SetText(col, row, QStringLiteral("%1,%2").arg(col).arg(row));
        }
    }
}

void show(SheetView& view) {
    view.resize(500, 300);
    view.show();
    view.flush();
}

QList<QVariant> taken(QSignalSpy& spy) {
    return spy.isEmpty() ? QList<QVariant>() : spy.takeLast();
}

}  // namespace

class TestSheetView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tableKeepsTheRules();
    void showsAtTheNextTurn();
    void clickTellsTheCell();
    void clickNeedsOneCell();
    void headClickSorts();
    void headClickSortsWithoutRows();
    void headDragResizesAndSortsNothing();
    void spanIsOneCell();
    void rightClickOnce();
    void menuKey();
    void mouseUp();
    void activeCellBothWays();
    void focusMakesNothingActive();
    void handlerLoadsAnew();
    void handlerClosesTheView();
    void handlerDeletesRows();
    void listKeys();
    void formKeys();
    void tabLeavesTheGrid();
    void hiddenAndResized();
    void fillColumn();
    void heads();
    void pages();
    void manyRows();
    void scrollStays();
};

void TestSheetView::tableKeepsTheRules() {
    SheetView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    show(view);
    fill(view, 4, 9);
    view.flush();
    QCOMPARE(view.model()->rowCount(), 9);
    QCOMPARE(view.model()->columnCount(), 4);
    view.MaxRows(3);
    view.MaxCols(6);
    view.flush();
    view.MaxRows(0);
    view.flush();
    QCOMPARE(view.model()->rowCount(), 0);
    view.MaxRows(20);
    view.MaxCols(0);
    view.flush();
    view.MaxCols(2);
    view.AddCellSpan(1, 2, 2, 3);
    view.SetText(1, 2, QStringLiteral("joined"));
    view.flush();
    view.InsertRows(1, 2);
    view.DeleteRows(5, 3);
    view.SheetCount(3);
    view.ActiveSheet(2);
    view.flush();
    QCOMPARE(view.model()->rowCount(), view.MaxRows());
    view.MaxRows(7);
    view.flush();
    view.ActiveSheet(1);
    view.DeleteSheets(2, 2);
    view.flush();
    QCOMPARE(view.model()->rowCount(), 20);
    QCOMPARE(view.model()->index(3, 0).data().toString(), QStringLiteral("joined"));
    view.SetText(2, 0, QStringLiteral("Künstler"));
    view.flush();
    QCOMPARE(view.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Künstler"));
    QCOMPARE(view.model()->headerData(0, Qt::Horizontal).toString(), QString());
    view.model()->setData(view.model()->index(0, 0), QStringLiteral("x"));
    QCOMPARE(view.GetText(1, 1), QStringLiteral("x"));
}

void TestSheetView::showsAtTheNextTurn() {
    SheetView view;
    show(view);
    fill(view, 2, 5);
    QCOMPARE(view.model()->rowCount(), 500);
    QCoreApplication::processEvents();
    QCOMPARE(view.model()->rowCount(), 5);
    view.MaxRows(8);
    view.grab();
    QCOMPARE(view.model()->rowCount(), 8);
}

void TestSheetView::clickTellsTheCell() {
    SheetView view;
    fill(view, 3, 5);
    show(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    click(view, 2, 4);
    QCOMPARE(taken(clicks), (QList<QVariant>{2, 4}));
    QCOMPARE(view.ActiveCol(), 2);
    QCOMPARE(view.ActiveRow(), 4);
    click(view, 3, 0);
    QCOMPARE(taken(clicks), (QList<QVariant>{3, 0}));
    click(view, 0, 2);
    QCOMPARE(taken(clicks), (QList<QVariant>{0, 2}));
    QCOMPARE(view.ActiveRow(), 4);
    QCOMPARE(clicks.count(), 0);
}

void TestSheetView::clickNeedsOneCell() {
    SheetView view;
    fill(view, 3, 3);
    show(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, middle(view, 1, 1));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, middle(view, 1, 2));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      QPoint(5, view.viewport()->height() - 5));
    QCOMPARE(clicks.count(), 0);
    click(view, 1, 1);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, middle(view, 1, 1));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, middle(view, 1, 1));
    QCOMPARE(clicks.count(), 1);
}

void TestSheetView::headClickSorts() {
    SheetView view;
    view.setReadOnly(true);
    view.MaxCols(2);
    view.MaxRows(3);
    const char* titles[] = {"Émile", "zebra", "Amazing"};
    const char* keys[] = {"D", "A", "G"};
    for (int i = 0; i < 3; ++i) {
        view.SetText(1, i + 1, QString::fromUtf8(titles[i]));
        view.SetText(2, i + 1, QLatin1String(keys[i]));
    }
    connect(&view, &SheetView::Click, &view, [&view](int col, int row) {
        if (row == 0) view.SortByHead(col);
    });
    show(view);
    const auto column = [&view](int col) {
        QStringList texts;
        for (int row = 0; row < 3; ++row)
            texts << view.model()->index(row, col - 1).data().toString();
        return texts.join(QLatin1Char(' '));
    };
    click(view, 1, 0);
    view.flush();
    QCOMPARE(column(1), QStringLiteral("Amazing Émile zebra"));
    click(view, 1, 0);
    QCOMPARE(column(1), QStringLiteral("zebra Émile Amazing"));
    click(view, 2, 0);
    QCOMPARE(column(2), QStringLiteral("A D G"));
    click(view, 1, 0);
    QCOMPARE(column(1), QStringLiteral("zebra Émile Amazing"));
    // The keyboard's way to a head.
    view.setFocus();
    click(view, 2, 2);
    QTest::keyClick(&view, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(column(2), QStringLiteral("A D G"));
}

void TestSheetView::headClickSortsWithoutRows() {
    SheetView view;
    fill(view, 2, 0);
    show(view);
    connect(&view, &SheetView::Click, &view, [&view](int col, int) { view.SortByHead(col); });
    click(view, 2, 0);
    QCOMPARE(view.SortKey(1), 2);
    QCOMPARE(view.SortKeyOrder(1), SortOrder::Ascending);
    click(view, 1, 0);
    QCOMPARE(view.SortKeyOrder(1), SortOrder::Descending);
}

void TestSheetView::headDragResizesAndSortsNothing() {
    SheetView view;
    fill(view, 2, 3);
    show(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    const double before = view.ColWidth(1);
    const double other = view.ColWidth(2);
    const QRect rect = view.cellRect(1, 0);
    QWidget* head = view.horizontalHeader()->viewport();
    const QPoint border = head->mapFrom(&view, QPoint(rect.right(), rect.center().y()));
    QTest::mouseMove(head, border);
    QTest::mousePress(head, Qt::LeftButton, {}, border);
    QMouseEvent drag(QEvent::MouseMove, border + QPoint(40, 0),
                     head->mapToGlobal(border + QPoint(40, 0)), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(head, &drag);
    QTest::mouseRelease(head, Qt::LeftButton, {}, border + QPoint(40, 0));
    QCOMPARE(clicks.count(), 0);
    QVERIFY(view.ColWidth(1) > before + 4);
    QCOMPARE(view.ColWidth(2), other);
    const int width = view.columnWidth(0);
    view.SetText(1, 1, QStringLiteral("x"));
    view.RowHeight(2, 30);
    view.flush();
    QCOMPARE(view.columnWidth(0), width);
}

void TestSheetView::spanIsOneCell() {
    SheetView view;
    fill(view, 4, 4);
    view.AddCellSpan(1, 2, 4, 1);
    show(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    QSignalSpy rights(&view, &SheetView::RightClick);
    const QRect first = view.cellRect(1, 1);
    const QRect last = view.cellRect(4, 1);
    const QRect joined = view.cellRect(1, 2);
    QCOMPARE(joined.left(), first.left());
    QCOMPARE(joined.right(), last.right());
    const QPoint place =
        view.viewport()->mapFrom(&view, QPoint(last.center().x(), joined.center().y()));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(taken(clicks), (QList<QVariant>{1, 2}));
    QCOMPARE(view.ActiveCol(), 1);
    QCOMPARE(view.ActiveRow(), 2);
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, place);
    QCOMPARE(taken(rights).mid(0, 3), (QList<QVariant>{0, 1, 2}));
    click(view, 4, 3);
    QCOMPARE(taken(clicks), (QList<QVariant>{4, 3}));
    view.RemoveCellSpan(1, 2);
    click(view, 4, 2);
    QCOMPARE(taken(clicks), (QList<QVariant>{4, 2}));
}

void TestSheetView::rightClickOnce() {
    SheetView view;
    fill(view, 3, 3);
    show(view);
    QSignalSpy rights(&view, &SheetView::RightClick);
    QSignalSpy clicks(&view, &SheetView::Click);
    const QPoint place = middle(view, 2, 3);
    const QPoint inView = view.viewport()->mapTo(&view, place);
    const QList<QVariant> expected{0, 2, 3, inView.x(), inView.y()};
    const auto menu = [&] {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                view.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view.viewport(), &event);
    };
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, place);
    QCOMPARE(rights.count(), 1);
    QCOMPARE(taken(rights), expected);
    menu();  // comes after the release on some desktops
    QCOMPARE(rights.count(), 0);
    menu();
    QCOMPARE(taken(rights), expected);
    QTest::mousePress(view.viewport(), Qt::RightButton, {}, place);
    menu();  // and before it on others
    QTest::mouseRelease(view.viewport(), Qt::RightButton, {}, place);
    QCOMPARE(rights.count(), 1);
    QCOMPARE(taken(rights), expected);
    click(view, 3, 0, Qt::RightButton);
    QCOMPARE(rights.count(), 1);
    QCOMPARE(taken(rights).mid(0, 3), (QList<QVariant>{0, 3, 0}));
    QCOMPARE(clicks.count(), 0);
}

void TestSheetView::menuKey() {
    SheetView view;
    fill(view, 3, 3);
    show(view);
    QSignalSpy rights(&view, &SheetView::RightClick);
    QSignalSpy ups(&view, &SheetView::MouseUp);
    const auto press = [&view] {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(&view, &event);
    };
    press();
    QCOMPARE(rights.count(), 0);
    view.SetActiveCell(2, 3);
    press();
    const QList<QVariant> told = taken(rights);
    QCOMPARE(told.mid(0, 3), (QList<QVariant>{0, 2, 3}));
    QVERIFY(view.cellRect(2, 3).contains(told[3].toInt(), told[4].toInt()));
    QCOMPARE(taken(ups)[0].toInt(), 2);
}

void TestSheetView::mouseUp() {
    SheetView view;
    fill(view, 3, 3);
    show(view);
    QSignalSpy ups(&view, &SheetView::MouseUp);
    click(view, 2, 2, Qt::RightButton);
    const QPoint place = view.cellRect(2, 2).center();
    QCOMPARE(taken(ups), (QList<QVariant>{2, 0, place.x(), place.y()}));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, middle(view, 1, 1));
    QCOMPARE(taken(ups).mid(0, 2), (QList<QVariant>{1, 1}));
    click(view, 2, 0);
    QCOMPARE(taken(ups)[0].toInt(), 1);
    QTest::mouseClick(view.viewport(), Qt::MiddleButton, {}, middle(view, 1, 1));
    QCOMPARE(taken(ups)[0].toInt(), 4);
}

void TestSheetView::activeCellBothWays() {
    SheetView view;
    fill(view, 3, 6);
    show(view);
    view.SetActiveCell(2, 5);
    view.flush();
    QCOMPARE(view.currentIndex(), view.model()->index(4, 1));
    view.SetActiveCell(0, 0);
    view.flush();
    QVERIFY(!view.currentIndex().isValid());
    view.setCurrentIndex(view.model()->index(5, 2));
    QCOMPARE(view.ActiveCol(), 3);
    QCOMPARE(view.ActiveRow(), 6);
    view.MaxRows(4);
    view.flush();
    QCOMPARE(view.ActiveRow(), 0);
    QVERIFY(!view.currentIndex().isValid());
    // Rows may come after the focus is set on them.
    view.MaxRows(9);
    view.SetActiveCell(1, 9);
    view.flush();
    QCOMPARE(view.currentIndex().row(), 8);
    view.DeleteRows(1, 2);
    view.flush();
    QCOMPARE(view.ActiveRow(), 9);
    QCOMPARE(view.currentIndex().row(), 8);
    // A head has no focus of its own on the screen.
    view.SetActiveCell(2, 0);
    view.flush();
    QVERIFY(!view.currentIndex().isValid());
    QCOMPARE(view.ActiveCol(), 2);
}

void TestSheetView::focusMakesNothingActive() {
    QWidget window;
    SheetView view(&window);
    fill(view, 3, 3);
    window.resize(500, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    view.setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    QVERIFY(view.hasFocus());
    QCOMPARE(view.ActiveRow(), 0);
    QVERIFY(!view.currentIndex().isValid());
    QTest::keyClick(&view, Qt::Key_Down);
    QCOMPARE(view.ActiveRow(), 1);
    QTest::keyClick(&view, Qt::Key_Down);
    QCOMPARE(view.ActiveRow(), 2);
}

void TestSheetView::handlerLoadsAnew() {
    SheetView view;
    fill(view, 3, 30);
    show(view);
    int calls = 0;
    connect(&view, &SheetView::Click, &view, [&](int, int) {
        ++calls;
        view.SetActiveCell(0, 0);
        view.MaxRows(0);
        fill(view, 2, 2);
        view.flush();
    });
    click(view, 3, 8);
    QCOMPARE(calls, 1);
    QCOMPARE(view.ActiveRow(), 0);
    QVERIFY(!view.currentIndex().isValid());
    click(view, 2, 2);
    QCOMPARE(calls, 2);
    QCoreApplication::processEvents();
    QCOMPARE(view.ActiveRow(), 0);
}

void TestSheetView::handlerClosesTheView() {
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        auto* view = new SheetView;
        const QPointer<SheetView> alive(view);
        view->setAttribute(Qt::WA_DeleteOnClose);
        fill(*view, 3, 3);
        show(*view);
        connect(view, &SheetView::MouseUp, view, [view] {
            view->close();
            QCoreApplication::sendPostedEvents(view, QEvent::DeferredDelete);
        });
        click(*view, 1, 1, button);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!alive);
    }
}

void TestSheetView::handlerDeletesRows() {
    SheetView view;
    view.setReadOnly(true);
    fill(view, 1, 3);
    show(view);
    connect(&view, &SheetView::Click, &view, [&view](int, int row) {
        view.DeleteRows(row, 1);
        view.MaxRows(view.MaxRows() - 1);
    });
    click(view, 1, 2);
    view.flush();
    QCOMPARE(view.model()->rowCount(), 2);
    QCOMPARE(view.GetText(1, 2), QStringLiteral("1,3"));
    click(view, 1, 2);
    click(view, 1, 1);
    view.flush();
    QCOMPARE(view.model()->rowCount(), 0);
    QCOMPARE(view.ActiveRow(), 0);
}

void TestSheetView::listKeys() {
    SheetView view;
    view.setReadOnly(true);
    fill(view, 3, 5);
    show(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(clicks.count(), 0);
    view.SetActiveCell(1, 3);
    QTest::keyClick(&view, Qt::Key_Down);
    QCOMPARE(clicks.count(), 0);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(taken(clicks), (QList<QVariant>{1, 4}));
    QTest::keyClick(&view, Qt::Key_Space);
    QCOMPARE(taken(clicks), (QList<QVariant>{1, 4}));
    QTest::keyClick(&view, Qt::Key_X);
    QTest::keyClick(&view, Qt::Key_F2);
    QTest::keyClick(&view, Qt::Key_Delete);
    QVERIFY(view.findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
    QCOMPARE(view.GetText(1, 4), QStringLiteral("1,4"));
    QTest::keyClick(&view, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(taken(clicks), (QList<QVariant>{1, 0}));
}

void TestSheetView::formKeys() {
    SheetView view;
    fill(view, 3, 5);
    show(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    view.SetActiveCell(2, 2);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(view.ActiveRow(), 3);
    QTest::keyClick(&view, Qt::Key_Tab);
    QCOMPARE(view.ActiveCol(), 3);
    QTest::keyClick(&view, Qt::Key_Tab);
    QCOMPARE(view.ActiveCol(), 1);
    QCOMPARE(view.ActiveRow(), 4);
    QTest::keyClick(&view, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(view.ActiveCol(), 3);
    QCOMPARE(view.ActiveRow(), 3);
    QCOMPARE(clicks.count(), 0);
    QTest::keyClick(&view, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(taken(clicks), (QList<QVariant>{3, 3}));
}

void TestSheetView::tabLeavesTheGrid() {
    QWidget window;
    QLineEdit before(&window);
    SheetView view(&window);
    QLineEdit after(&window);
    view.setGeometry(0, 30, 300, 150);
    fill(view, 1, 2);
    window.resize(500, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    view.setFocus();
    view.SetActiveCell(1, 1);
    QTest::keyClick(&view, Qt::Key_Tab);
    QVERIFY(view.hasFocus());
    QCOMPARE(view.ActiveRow(), 2);
    QTest::keyClick(&view, Qt::Key_Tab);
    QVERIFY(after.hasFocus());
    QTest::keyClick(&after, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(view.hasFocus());
    view.setReadOnly(true);
    QTest::keyClick(&view, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(before.hasFocus());
}

void TestSheetView::hiddenAndResized() {
    SheetView view;
    fill(view, 4, 6);
    show(view);
    const int width = view.columnWidth(0);
    view.Col(1);
    view.ColHidden(true);
    view.Row(2);
    view.RowHidden(true);
    view.ColWidth(3, 20);
    view.RowHeight(4, 45);
    view.flush();
    QVERIFY(view.isColumnHidden(0));
    QVERIFY(view.QTableView::isRowHidden(1));
    QCOMPARE(view.rowHeight(3), 60);
    QVERIFY(qAbs(view.columnWidth(2) - 20 * 7.41) < 1.5);
    QVERIFY(view.cellRect(1, 1).isEmpty());
    QSignalSpy clicks(&view, &SheetView::Click);
    click(view, 2, 3);
    QCOMPARE(taken(clicks), (QList<QVariant>{2, 3}));
    view.Col(1);
    view.ColHidden(false);
    view.ColWidth(-1, 2.5);
    view.flush();
    QVERIFY(!view.isColumnHidden(0));
    QVERIFY(view.columnWidth(0) < width);
    QCOMPARE(view.columnWidth(3), view.columnWidth(0));
}

void TestSheetView::fillColumn() {
    SheetView view;
    fill(view, 3, 4);
    view.RowHeadersShow(false);
    view.setFillColumn(2);
    show(view);
    const double own = view.ColWidth(2);
    const auto total = [&view] {
        return view.columnWidth(0) + view.columnWidth(1) + view.columnWidth(2);
    };
    QCOMPARE(total(), view.viewport()->width());
    QVERIFY(!view.horizontalScrollBar()->isVisible());
    QCOMPARE(view.ColWidth(2), own);
    view.resize(700, 300);
    QCOMPARE(total(), view.viewport()->width());
    view.MaxRows(400);
    view.flush();
    QVERIFY(view.verticalScrollBar()->isVisible());
    QCOMPARE(total(), view.viewport()->width());
    QVERIFY(!view.horizontalScrollBar()->isVisible());
    view.Col(1);
    view.ColHidden(true);
    view.flush();
    QCOMPARE(view.columnWidth(1) + view.columnWidth(2), view.viewport()->width());
    view.setFillColumn(0);
    view.flush();
    QVERIFY(qAbs(view.columnWidth(1) - own * 7.41) < 1.5);
}

void TestSheetView::heads() {
    SheetView view;
    fill(view, 2, 3);
    show(view);
    QVERIFY(view.horizontalHeader()->isVisible());
    QVERIFY(view.verticalHeader()->isVisible());
    view.ColHeadersShow(false);
    view.RowHeadersShow(false);
    view.flush();
    QVERIFY(!view.horizontalHeader()->isVisible());
    QVERIFY(!view.verticalHeader()->isVisible());
    QVERIFY(view.cellRect(1, 0).isEmpty());
    view.ColHeadersShow(true);
    view.RowHeight(0, 30);
    view.flush();
    QCOMPARE(view.horizontalHeader()->height(), 40);
}

void TestSheetView::pages() {
    SheetView view;
    fill(view, 2, 3);
    show(view);
    auto* tabs = view.findChild<QTabBar*>();
    QVERIFY(!tabs->isVisible());
    const int height = view.viewport()->height();
    view.SheetCount(3);
    view.flush();
    QVERIFY(tabs->isVisible());
    QCOMPARE(tabs->count(), 3);
    QCOMPARE(tabs->tabText(2), QStringLiteral("Page 3"));
    QVERIFY(view.viewport()->height() < height);
    const QRect place(tabs->mapTo(&view, QPoint()), tabs->size());
    QVERIFY(view.rect().contains(place));
    QVERIFY(!view.viewport()->geometry().intersects(place));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(view.ActiveSheet(), 2);
    QCOMPARE(view.Sheet(), 2);
    view.SetText(1, 1, QStringLiteral("second"));
    view.flush();
    QCOMPARE(view.model()->index(0, 0).data().toString(), QStringLiteral("second"));
    view.ActiveSheet(3);
    view.flush();
    QCOMPARE(tabs->currentIndex(), 2);
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(view.ActiveSheet(), 2);
    view.TabStripPolicy(TabStrip::Never);
    view.flush();
    QVERIFY(!tabs->isVisible());
    QCOMPARE(view.viewport()->height(), height);
    view.SheetCount(1);
    view.TabStripPolicy(TabStrip::Always);
    view.flush();
    QVERIFY(tabs->isVisible());
}

void TestSheetView::manyRows() {
    SheetView view;
    view.setReadOnly(true);
    view.MaxCols(5);
    view.MaxRows(100'000);
    for (int row = 1; row <= 100'000; ++row) view.SetText(2, row, QString::number(row));
    show(view);
    QCOMPARE(view.model()->rowCount(), 100'000);
    view.SetActiveCell(2, 99'999);
    view.flush();
    QVERIFY(view.viewport()->rect().intersects(view.visualRect(view.model()->index(99'998, 1))));
    view.SetText(2, 50'000, QStringLiteral("x"));
    view.MaxRows(10);
    view.flush();
    QCOMPARE(view.model()->rowCount(), 10);
}

void TestSheetView::scrollStays() {
    SheetView view;
    fill(view, 3, 200);
    show(view);
    view.verticalScrollBar()->setValue(1000);
    view.SetText(1, 3, QStringLiteral("x"));
    view.ColWidth(2, 14);
    view.MaxRows(220);
    view.flush();
    QCOMPARE(view.verticalScrollBar()->value(), 1000);
}

LORVANITE_TEST(TestSheetView)
#include "test_sheet_view.moc"
