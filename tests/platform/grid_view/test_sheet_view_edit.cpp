// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a user's typing, picking and pasting do to a grid.
#include "core/data/dates.h"
#include "core/grid/sheet_grid_dates.h"
#include "platform/grid_view/edit_window.h"
#include "support/registry.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QRegularExpression>

namespace {

QPoint inViewport(SheetView& view, const QPoint& place) {
    return view.viewport()->mapFrom(&view, place);
}

// The right end of a cell, where its arrow or button is.
QPoint handle(SheetView& view, int col, int row) {
    const QRect cell = view.cellRect(col, row);
    return inViewport(view, QPoint(cell.right() - 10, cell.center().y()));
}

}  // namespace

class TestSheetViewEdit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void typingReplacesOrContinuesTheText();
    void inputMethodReplacesOrContinuesTheText();
    void typingAlwaysReplacesADate();
    void doubleClickReplacesWithoutEditModeReplaceToo();
    void f2GoesOn();
    void doubleClickEdits();
    void escapeGivesUp();
    void tabTakesAndGoesOn();
    void sameTextIsNoChange();
    void nonAscii();
    void takenBeforeAClickElsewhere();
    void takenByAButton();
    void takenByAButtonWithoutFocus();
    void takenByAMnemonic();
    void takenByAShortcut();
    void takenBeforeAHeadSorts();
    void programWritesMeanwhile();
    void programLoadsMeanwhile();
    void programMovesTheFocusMeanwhile();
    void programDropsTheCellMeanwhile();
    void handlerRewritesTheGrid();
    void listCannotBeEdited();
    void comboByMouse();
    void comboByTyping();
    void comboItemByTyping();
    void comboByKeys();
    void dates();
    void datePickedFromCalendar();
    void dateBeyond2029();
    void buttons();
    void pictureIsNoText();
};

// Deliberate: behaviour 16.
void TestSheetViewEdit::typingReplacesOrContinuesTheText() {
    for (const bool replace : {true, false}) {
        EditWindow window;
        window.view.EditModeReplace(replace);
        QVERIFY(window.start());
        typeText(QStringLiteral("abc"));
        QVERIFY(editorOf<QLineEdit>(window.view));
        QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
        pressKey(Qt::Key_Return);
        QCOMPARE(window.view.GetText(1, 1),
                 replace ? QStringLiteral("abc") : QStringLiteral("1,1abc"));
        QCOMPARE(window.change(), (QList<QVariant>{1, 1}));
        QCOMPARE(window.changes.count(), 0);
        QCOMPARE(window.view.ActiveRow(), 2);
        QVERIFY(window.view.hasFocus());
        QVERIFY(!editorOf<QLineEdit>(window.view));
    }
}

void TestSheetViewEdit::inputMethodReplacesOrContinuesTheText() {
    for (const bool replace : {true, false}) {
        EditWindow window;
        window.view.EditModeReplace(replace);
        QVERIFY(window.start());
        QInputMethodEvent composing(QStringLiteral("zan"), {});
        QCoreApplication::sendEvent(QApplication::focusWidget(), &composing);
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromUtf8("讚"));
        QCoreApplication::sendEvent(QApplication::focusWidget(), &commit);
        pressKey(Qt::Key_Return);
        QCOMPARE(window.view.GetText(1, 1), QString::fromUtf8(replace ? "讚" : "1,1讚"));
    }
}

void TestSheetViewEdit::typingAlwaysReplacesADate() {
    EditWindow window;
    window.view.EditModeReplace(false);
    setUpDateCells(window.view, 1, 1);
    window.view.SetText(1, 1, QStringLiteral("11/22/26"));
    QVERIFY(window.start());
    typeText(QStringLiteral("12/6/26"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("12/06/26"));
}

void TestSheetViewEdit::doubleClickReplacesWithoutEditModeReplaceToo() {
    EditWindow window;
    window.view.EditModeReplace(false);
    QVERIFY(window.start());
    QTest::mouseDClick(window.view.viewport(), Qt::LeftButton, {}, middleOf(window.view, 2, 3));
    typeText(QStringLiteral("new"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(2, 3), QStringLiteral("new"));
}

void TestSheetViewEdit::f2GoesOn() {
    EditWindow window;
    QVERIFY(window.start());
    pressKey(Qt::Key_F2);
    typeText(QStringLiteral("x"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1x"));
}

void TestSheetViewEdit::doubleClickEdits() {
    EditWindow window;
    QVERIFY(window.start());
    clickCell(window.view, 2, 3);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QTest::mouseDClick(window.view.viewport(), Qt::LeftButton, {}, middleOf(window.view, 2, 3));
    QVERIFY(editorOf<QLineEdit>(window.view));
    typeText(QStringLiteral("new"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(2, 3), QStringLiteral("new"));
}

void TestSheetViewEdit::escapeGivesUp() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("abc"));
    pressKey(Qt::Key_Escape);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
    QCOMPARE(window.changes.count(), 0);
    QVERIFY(window.view.hasFocus());
}

void TestSheetViewEdit::tabTakesAndGoesOn() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("abc"));
    pressKey(Qt::Key_Tab);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("abc"));
    QCOMPARE(window.view.ActiveCol(), 2);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    typeText(QStringLiteral("def"));
    pressKey(Qt::Key_Down);
    QCOMPARE(window.view.GetText(2, 1), QStringLiteral("def"));
    QCOMPARE(window.view.ActiveRow(), 2);
    QCOMPARE(window.changes.count(), 2);
}

void TestSheetViewEdit::sameTextIsNoChange() {
    EditWindow window;
    QVERIFY(window.start());
    pressKey(Qt::Key_F2);
    pressKey(Qt::Key_Return);
    typeText(QStringLiteral("1,2"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.changes.count(), 0);
}

void TestSheetViewEdit::nonAscii() {
    EditWindow window;
    QVERIFY(window.start());
    const QString text = QString::fromUtf8("Großer Gott, wir loben dich – 讚美 🎵");
    pressKey(Qt::Key_F2);
    editorOf<QLineEdit>(window.view)->setText(text);
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), text);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    pressKey(Qt::Key_C, Qt::ControlModifier);
    window.view.SetActiveCell(2, 2);
    window.view.flush();
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(2, 2), text);
}

void TestSheetViewEdit::takenBeforeAClickElsewhere() {
    EditWindow window;
    QVERIFY(window.start());
    QString seen;
    connect(&window.view, &SheetView::Click, this, [&] { seen = window.view.GetText(1, 1); });
    typeText(QStringLiteral("abc"));
    clickCell(window.view, 2, 2);
    QCOMPARE(seen, QStringLiteral("abc"));
    QCOMPARE(window.change(), (QList<QVariant>{1, 1}));
    typeText(QStringLiteral("xyz"));
    QTest::mouseClick(&window.line, Qt::LeftButton);
    QCOMPARE(window.view.GetText(2, 2), QStringLiteral("xyz"));
}

void TestSheetViewEdit::takenByAButton() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("abc"));
    QTest::mouseClick(&window.save, Qt::LeftButton);
    QCOMPARE(window.saved, QStringLiteral("abc"));
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewEdit::takenByAButtonWithoutFocus() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("abc"));
    QTest::mouseClick(&window.quiet, Qt::LeftButton);
    QCOMPARE(window.saved, QStringLiteral("abc"));
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewEdit::takenByAMnemonic() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("abc"));
    pressKey(Qt::Key_S, Qt::AltModifier);
    QTRY_COMPARE(window.saved, QStringLiteral("abc"));
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewEdit::takenByAShortcut() {
    EditWindow window;
    QAction action(&window);
    action.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    window.addAction(&action);
    connect(&action, &QAction::triggered, this, [&] { window.saved = window.view.GetText(1, 1); });
    QVERIFY(window.start());
    typeText(QStringLiteral("abc"));
    pressKey(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(window.saved, QStringLiteral("abc"));
}

void TestSheetViewEdit::takenBeforeAHeadSorts() {
    EditWindow window;
    QVERIFY(window.start());
    connect(&window.view, &SheetView::Click, this, [&](int col, int row) {
        if (row == 0) window.view.SortByHead(col);
    });
    typeText(QStringLiteral("zz"));
    QHeaderView* head = window.view.horizontalHeader();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                      head->viewport()->mapFrom(&window.view, window.view.cellRect(1, 0).center()));
    QCOMPARE(window.view.GetText(1, 4), QStringLiteral("zz"));
    QCOMPARE(window.view.GetText(2, 4), QStringLiteral("2,1"));
    QVERIFY(!editorOf<QLineEdit>(window.view));
}

void TestSheetViewEdit::programWritesMeanwhile() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("mine"));
    window.view.SetText(1, 1, QStringLiteral("program"));
    window.view.SetText(2, 1, QStringLiteral("other"));
    window.view.flush();
    QCOMPARE(editorOf<QLineEdit>(window.view)->text(), QStringLiteral("mine"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("mine"));
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("program"));
}

void TestSheetViewEdit::programLoadsMeanwhile() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("mine"));
    fillGrid(window.view, 3, 6);
    window.view.flush();
    // The cell is as it was: the user goes on.
    QVERIFY(editorOf<QLineEdit>(window.view));
    window.view.DeleteRows(1, 1);
    window.view.flush();
    // It is another cell now, which the text does not belong to.
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,2"));
    QCOMPARE(window.changes.count(), 0);
}

void TestSheetViewEdit::programMovesTheFocusMeanwhile() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("mine"));
    window.view.SetActiveCell(0, 0);
    window.view.flush();
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("mine"));
    QCOMPARE(window.changes.count(), 1);
    QCOMPARE(window.view.ActiveRow(), 0);
    QVERIFY(!window.view.currentIndex().isValid());
}

void TestSheetViewEdit::programDropsTheCellMeanwhile() {
    EditWindow window;
    QVERIFY(window.start());
    window.view.SetActiveCell(1, 4);
    window.view.flush();
    typeText(QStringLiteral("mine"));
    window.view.MaxRows(2);
    window.view.flush();
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QCOMPARE(window.changes.count(), 0);
    QCOMPARE(window.view.ActiveRow(), 0);
}

void TestSheetViewEdit::handlerRewritesTheGrid() {
    EditWindow window;
    QVERIFY(window.start());
    connect(&window.view, &SheetView::Change, this, [&](int, int row) {
        window.view.SetActiveCell(0, 0);
        window.view.DeleteRows(row, 1);
        window.view.MaxRows(window.view.MaxRows() - 1);
        window.view.flush();
    });
    typeText(QStringLiteral("abc"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.MaxRows(), 3);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    clickCell(window.view, 1, 3);
    typeText(QStringLiteral("def"));
    clickCell(window.view, 2, 1);
    QCOMPARE(window.view.MaxRows(), 2);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,2"));
}

void TestSheetViewEdit::listCannotBeEdited() {
    EditWindow window;
    window.view.setReadOnly(true);
    QVERIFY(window.start());
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_A, Qt::Key_Delete, Qt::Key_Backspace}) {
        pressKey(key);
    }
    pressKey(Qt::Key_X, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText(QStringLiteral("paste"));
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QTest::mouseDClick(window.view.viewport(), Qt::LeftButton, {}, middleOf(window.view, 1, 1));
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
    QCOMPARE(window.changes.count(), 0);
    pressKey(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("1,1\t2,1\t3,1"));
}

static void makeCombo(SheetView& view, int col, int row) {
    view.Col(col);
    view.Row(row);
    view.CellType(CellKind::Combo);
    view.TypeComboBoxList(QStringLiteral("Hymns\tPraise\tCommunion\tOffering"));
    view.TypeComboBoxMaxDrop(4);
    view.ColWidth(col, 16);
    view.flush();
}

void TestSheetViewEdit::comboByMouse() {
    EditWindow window;
    QVERIFY(window.start());
    makeCombo(window.view, 1, 2);
    QTest::mouseClick(window.view.viewport(), Qt::LeftButton, {}, handle(window.view, 1, 2));
    auto* combo = editorOf<QComboBox>(window.view);
    QVERIFY(combo);
    QCOMPARE(combo->count(), 4);
    QCOMPARE(combo->maxVisibleItems(), 4);
    QVERIFY(combo->view()->isVisible());
    const QRect item = combo->view()->visualRect(combo->model()->index(2, 0));
    QTest::qWait(QApplication::doubleClickInterval() + 50);  // the list ignores hasty clicks
    QTest::mouseClick(combo->view()->viewport(), Qt::LeftButton, {}, item.center());
    QCOMPARE(window.view.GetText(1, 2), QStringLiteral("Communion"));
    QCOMPARE(window.change(), (QList<QVariant>{1, 2}));
    QVERIFY(!editorOf<QComboBox>(window.view));
    window.view.Col(1);
    window.view.Row(2);
    QCOMPARE(window.view.TypeComboBoxCurSel(), 2);
}

void TestSheetViewEdit::comboByTyping() {
    EditWindow window;
    QVERIFY(window.start());
    makeCombo(window.view, 1, 1);
    typeText(QStringLiteral("Xmas"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("Xmas"));
    QCOMPARE(window.changes.count(), 1);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    pressKey(Qt::Key_Delete);
    QCOMPARE(window.view.GetText(1, 1), QString());
}

void TestSheetViewEdit::comboItemByTyping() {
    QTest::failOnWarning(QRegularExpression(QStringLiteral("commitData")));
    EditWindow window;
    QVERIFY(window.start());
    makeCombo(window.view, 1, 1);
    typeText(QStringLiteral("Praise"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.TypeComboBoxCurSel(), 1);
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewEdit::comboByKeys() {
    EditWindow window;
    QVERIFY(window.start());
    makeCombo(window.view, 1, 1);
    pressKey(Qt::Key_Down, Qt::AltModifier);
    auto* combo = editorOf<QComboBox>(window.view);
    QVERIFY(combo && combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_End);
    QTest::keyClick(combo->view(), Qt::Key_Up);
    QTest::keyClick(combo->view(), Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("Communion"));
    QCOMPARE(window.changes.count(), 1);
}

static void makeDate(SheetView& view, int col, int row) {
    view.Col(col);
    view.Row(row);
    view.SetText(col, row, QString());
    view.CellType(CellKind::Date);
    view.TypeSpin(true);
    view.ColWidth(col, 16);
    view.flush();
}

void TestSheetViewEdit::dates() {
    setToday(QDate(2026, 11, 22));
    EditWindow window;
    QVERIFY(window.start());
    makeDate(window.view, 1, 1);
    typeText(QStringLiteral("3/4/2027"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("03/04/27"));
    QCOMPARE(window.changes.count(), 1);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    typeText(QStringLiteral("nonsense"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("03/04/27"));
    QCOMPARE(window.changes.count(), 1);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    pressKey(Qt::Key_F2);
    pressKey(Qt::Key_Up);
    pressKey(Qt::Key_Up);
    pressKey(Qt::Key_Down);
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("03/05/27"));
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    pressKey(Qt::Key_Delete);
    QCOMPARE(window.view.GetText(1, 1), QString());
    pressKey(Qt::Key_F2);
    pressKey(Qt::Key_Up);  // an empty cell begins today
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("11/22/26"));
    setToday({});
}

void TestSheetViewEdit::datePickedFromCalendar() {
    EditWindow window;
    QVERIFY(window.start());
    makeDate(window.view, 1, 1);
    window.view.SetText(1, 1, QStringLiteral("11/22/26"));
    QTest::mouseClick(window.view.viewport(), Qt::LeftButton, {}, handle(window.view, 1, 1));
    QVERIFY(QApplication::activePopupWidget());
    auto* calendar = QApplication::activePopupWidget()->findChild<QCalendarWidget*>();
    QVERIFY(calendar);
    QCOMPARE(calendar->selectedDate(), QDate(2026, 11, 22));
    QTest::keyClick(calendar->focusWidget() ? calendar->focusWidget() : calendar, Qt::Key_Right);
    QTest::keyClick(calendar->focusWidget() ? calendar->focusWidget() : calendar, Qt::Key_Return);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("11/23/26"));
    QCOMPARE(window.changes.count(), 1);
    QVERIFY(!editorOf<QLineEdit>(window.view));
}

void TestSheetViewEdit::dateBeyond2029() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    makeDate(view, 1, 1);
    view.SetText(1, 1, QStringLiteral("12/31/29"));
    for (const char* next : {"01/01/30", "01/02/30"}) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, handle(view, 1, 1));
        auto* calendar = QApplication::activePopupWidget()->findChild<QCalendarWidget*>();
        QVERIFY(calendar);
        QTest::keyClick(calendar->focusWidget() ? calendar->focusWidget() : calendar,
                        Qt::Key_Right);
        QTest::keyClick(calendar->focusWidget() ? calendar->focusWidget() : calendar,
                        Qt::Key_Return);
        QCOMPARE(view.GetText(1, 1), QLatin1String(next));
    }
    view.SetActiveCell(1, 1);
    view.flush();
    pressKey(Qt::Key_F2);
    pressKey(Qt::Key_Up);
    pressKey(Qt::Key_Return);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("01/03/30"));
}

void TestSheetViewEdit::buttons() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    view.Col(1);
    view.Row(1);
    view.CellType(CellKind::Button);
    view.ColWidth(1, 16);
    view.flush();
    QSignalSpy pressed(&view, &SheetView::ButtonClicked);
    QSignalSpy clicks(&view, &SheetView::Click);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, handle(view, 1, 1));
    QCOMPARE(pressed.takeFirst(), (QList<QVariant>{1, 1, true}));
    QCOMPARE(clicks.count(), 0);
    QVERIFY(!editorOf<QLineEdit>(view));
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, handle(view, 1, 1));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, handle(view, 1, 2));
    QCOMPARE(pressed.count(), 0);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      inViewport(view, view.cellRect(1, 1).topLeft() + QPoint(8, 8)));
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(pressed.count(), 0);
    pressKey(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(pressed.count(), 1);
    typeText(QStringLiteral("a.stp"));
    pressKey(Qt::Key_Return);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("a.stp"));
}

void TestSheetViewEdit::pictureIsNoText() {
    EditWindow window;
    QVERIFY(window.start());
    window.view.Col(1);
    window.view.Row(1);
    window.view.SetText(1, 1, QString());
    window.view.CellType(CellKind::Picture);
    window.view.flush();
    QSignalSpy clicks(&window.view, &SheetView::Click);
    typeText(QStringLiteral("abc"));
    pressKey(Qt::Key_F2);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    clickCell(window.view, 1, 1);
    QCOMPARE(clicks.count(), 1);
}

LORVANITE_TEST(TestSheetViewEdit)
#include "test_sheet_view_edit.moc"
