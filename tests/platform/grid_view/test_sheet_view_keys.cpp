// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The focus of a grid on the screen, and its keys.
#include "platform/grid_view/sheet_view_steps.h"
#include "support/registry.h"

#include <QContextMenuEvent>
#include <QLineEdit>

class TestSheetViewKeys : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void activeCellBothWays();
    void activeCellInAHiddenColumn();
    void focusMakesNothingActive();
    void listKeys();
    void formKeys();
    void tabLeavesTheGrid();
    void f6LeavesTheGridFromAnyCell();
    void menuKey();
};

void TestSheetViewKeys::activeCellBothWays() {
    SheetView view;
    fillGrid(view, 3, 6);
    showGrid(view);
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
    // A head never has the focus on the screen.
    view.SetActiveCell(2, 0);
    view.flush();
    QVERIFY(!view.currentIndex().isValid());
    QCOMPARE(view.ActiveCol(), 2);
}

void TestSheetViewKeys::activeCellInAHiddenColumn() {
    SheetView view;
    view.setReadOnly(true);
    fillGrid(view, 3, 4);
    view.Col(1);
    view.ColHidden(true);
    showGrid(view);
    view.SetActiveCell(1, 3);
    view.flush();
    QCOMPARE(view.ActiveCol(), 1);
    QCOMPARE(view.currentIndex(), view.model()->index(2, 1));
    QSignalSpy clicks(&view, &SheetView::Click);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(lastOf(clicks), (QList<QVariant>{2, 3}));
}

void TestSheetViewKeys::focusMakesNothingActive() {
    QWidget window;
    SheetView view(&window);
    fillGrid(view, 3, 3);
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

void TestSheetViewKeys::listKeys() {
    SheetView view;
    view.setReadOnly(true);
    fillGrid(view, 3, 5);
    showGrid(view);
    QSignalSpy clicks(&view, &SheetView::Click);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(clicks.count(), 0);
    view.SetActiveCell(1, 3);
    QTest::keyClick(&view, Qt::Key_Down);
    QCOMPARE(clicks.count(), 0);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(lastOf(clicks), (QList<QVariant>{1, 4}));
    QTest::keyClick(&view, Qt::Key_Space);
    QCOMPARE(lastOf(clicks), (QList<QVariant>{1, 4}));
    QTest::keyClick(&view, Qt::Key_X);
    QTest::keyClick(&view, Qt::Key_F2);
    QTest::keyClick(&view, Qt::Key_Delete);
    QVERIFY(view.findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
    QCOMPARE(view.GetText(1, 4), QStringLiteral("1,4"));
    QTest::keyClick(&view, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(lastOf(clicks), (QList<QVariant>{1, 0}));
}

void TestSheetViewKeys::formKeys() {
    SheetView view;
    fillGrid(view, 3, 5);
    showGrid(view);
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
    QCOMPARE(lastOf(clicks), (QList<QVariant>{3, 3}));
}

void TestSheetViewKeys::tabLeavesTheGrid() {
    QWidget window;
    QLineEdit before(&window);
    SheetView view(&window);
    QLineEdit after(&window);
    view.setGeometry(0, 30, 300, 150);
    fillGrid(view, 1, 2);
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

void TestSheetViewKeys::f6LeavesTheGridFromAnyCell() {
    QWidget window;
    QLineEdit before(&window);
    SheetView view(&window);
    QLineEdit after(&window);
    view.setGeometry(0, 30, 300, 150);
    fillGrid(view, 5, 40);
    window.resize(500, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    for (const bool list : {false, true}) {
        view.setReadOnly(list);
        view.setFocus();
        view.SetActiveCell(2, 3);
        QTest::keyClick(&view, Qt::Key_F6);
        QVERIFY(after.hasFocus());
        view.setFocus();
        QTest::keyClick(&view, Qt::Key_F6, Qt::ShiftModifier);
        QVERIFY(before.hasFocus());
        QCOMPARE(view.ActiveRow(), 3);
    }
}

void TestSheetViewKeys::menuKey() {
    SheetView view;
    fillGrid(view, 3, 3);
    showGrid(view);
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
    const QList<QVariant> told = lastOf(rights);
    QCOMPARE(told.mid(0, 3), (QList<QVariant>{0, 2, 3}));
    QVERIFY(view.cellRect(2, 3).contains(told[3].toInt(), told[4].toInt()));
    QCOMPARE(lastOf(ups)[0].toInt(), 2);
}

LORVANITE_TEST(TestSheetViewKeys)
#include "test_sheet_view_keys.moc"
