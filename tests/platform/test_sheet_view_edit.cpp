// What a user's typing, picking and pasting do to a grid.
#include "core/dates.h"
#include "platform/sheet_view.h"
#include "support/registry.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

namespace {

void fill(SheetGrid& grid, int cols, int rows) {
    grid.MaxCols(cols);
    grid.MaxRows(rows);
    for (int row = 1; row <= rows; ++row) {
        for (int col = 1; col <= cols; ++col) {
            grid.SetText(col, row, QStringLiteral("%1,%2").arg(col).arg(row));
        }
    }
}

QPoint inViewport(SheetView& view, const QPoint& place) {
    return view.viewport()->mapFrom(&view, place);
}

void click(SheetView& view, int col, int row) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      inViewport(view, view.cellRect(col, row).center()));
}

// The right end of a cell, where its arrow or button is.
QPoint handle(SheetView& view, int col, int row) {
    const QRect cell = view.cellRect(col, row);
    return inViewport(view, QPoint(cell.right() - 10, cell.center().y()));
}

template <class Editor>
Editor* editorOf(SheetView& view) {
    const auto editors =
        view.viewport()->findChildren<Editor*>(QString(), Qt::FindDirectChildrenOnly);
    for (Editor* editor : editors) {
        if (editor->isVisible()) return editor;
    }
    return nullptr;
}

// Each key goes to whatever has the focus by then.
void type(const QString& text) {
    for (const QChar c : text) {
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(c),
                            {});
    }
}

void press(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, keys);
}

}  // namespace

// A window with a grid, a line and buttons.
struct EditWindow : QWidget {
    SheetView view{this};
    QLineEdit line{this};
    QPushButton save{QStringLiteral("&Save"), this};
    QToolButton quiet{this};
    QString saved;  // what a press of a button found in cell (1, 1)
    QSignalSpy changes{&view, &SheetView::Change};

    EditWindow() {
        resize(600, 400);
        view.setGeometry(0, 0, 500, 300);
        line.setGeometry(0, 310, 100, 28);
        save.setGeometry(110, 310, 100, 28);
        quiet.setGeometry(220, 310, 100, 28);
        quiet.setFocusPolicy(Qt::NoFocus);
        const auto take = [this] { saved = view.GetText(1, 1); };
        connect(&save, &QPushButton::clicked, this, take);
        connect(&quiet, &QToolButton::clicked, this, take);
        fill(view, 3, 4);
        show();
    }
    bool start() {
        if (!QTest::qWaitForWindowActive(this)) return false;
        view.setFocus();
        view.SetActiveCell(1, 1);
        view.flush();
        return view.hasFocus();
    }
    QList<QVariant> change() { return changes.isEmpty() ? QList<QVariant>() : changes.takeFirst(); }
};

class TestSheetViewEdit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void typingReplaces();
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
    void comboByKeys();
    void dates();
    void datePickedFromCalendar();
    void buttons();
    void pictureIsNoText();
    void copyAndPaste();
    void quotedCells();
    void pasteLeavesHiddenCells();
    void oneTextIntoManyCells();
    void cutAndDelete();
    void undo();
    void undoThatNoLongerFits();
    void undoEndsWhenTheProgramLoads();
    void undoOnAnotherPage();
    void find();
    void pageClickTakesTheText();
};

void TestSheetViewEdit::typingReplaces() {
    for (const bool replace : {true, false}) {
        EditWindow window;
        window.view.EditModeReplace(replace);
        QVERIFY(window.start());
        type(QStringLiteral("abc"));
        QVERIFY(editorOf<QLineEdit>(window.view));
        QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
        press(Qt::Key_Return);
        QCOMPARE(window.view.GetText(1, 1), QStringLiteral("abc"));
        QCOMPARE(window.change(), (QList<QVariant>{1, 1}));
        QCOMPARE(window.changes.count(), 0);
        QCOMPARE(window.view.ActiveRow(), 2);
        QVERIFY(window.view.hasFocus());
        QVERIFY(!editorOf<QLineEdit>(window.view));
    }
}

void TestSheetViewEdit::f2GoesOn() {
    EditWindow window;
    QVERIFY(window.start());
    press(Qt::Key_F2);
    type(QStringLiteral("x"));
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1x"));
}

void TestSheetViewEdit::doubleClickEdits() {
    EditWindow window;
    QVERIFY(window.start());
    click(window.view, 2, 3);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QTest::mouseDClick(window.view.viewport(), Qt::LeftButton, {},
                       inViewport(window.view, window.view.cellRect(2, 3).center()));
    QVERIFY(editorOf<QLineEdit>(window.view));
    type(QStringLiteral("new"));
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(2, 3), QStringLiteral("new"));
}

void TestSheetViewEdit::escapeGivesUp() {
    EditWindow window;
    QVERIFY(window.start());
    type(QStringLiteral("abc"));
    press(Qt::Key_Escape);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
    QCOMPARE(window.changes.count(), 0);
    QVERIFY(window.view.hasFocus());
}

void TestSheetViewEdit::tabTakesAndGoesOn() {
    EditWindow window;
    QVERIFY(window.start());
    type(QStringLiteral("abc"));
    press(Qt::Key_Tab);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("abc"));
    QCOMPARE(window.view.ActiveCol(), 2);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    type(QStringLiteral("def"));
    press(Qt::Key_Down);
    QCOMPARE(window.view.GetText(2, 1), QStringLiteral("def"));
    QCOMPARE(window.view.ActiveRow(), 2);
    QCOMPARE(window.changes.count(), 2);
}

void TestSheetViewEdit::sameTextIsNoChange() {
    EditWindow window;
    QVERIFY(window.start());
    press(Qt::Key_F2);
    press(Qt::Key_Return);
    type(QStringLiteral("1,2"));
    press(Qt::Key_Return);
    QCOMPARE(window.changes.count(), 0);
}

void TestSheetViewEdit::nonAscii() {
    EditWindow window;
    QVERIFY(window.start());
    const QString text = QString::fromUtf8("Großer Gott, wir loben dich – 讚美 🎵");
    press(Qt::Key_F2);
    editorOf<QLineEdit>(window.view)->setText(text);
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), text);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    press(Qt::Key_C, Qt::ControlModifier);
    window.view.SetActiveCell(2, 2);
    window.view.flush();
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(2, 2), text);
}

void TestSheetViewEdit::takenBeforeAClickElsewhere() {
    EditWindow window;
    QVERIFY(window.start());
    QString seen;
    connect(&window.view, &SheetView::Click, this, [&] { seen = window.view.GetText(1, 1); });
    type(QStringLiteral("abc"));
    click(window.view, 2, 2);
    QCOMPARE(seen, QStringLiteral("abc"));
    QCOMPARE(window.change(), (QList<QVariant>{1, 1}));
    type(QStringLiteral("xyz"));
    QTest::mouseClick(&window.line, Qt::LeftButton);
    QCOMPARE(window.view.GetText(2, 2), QStringLiteral("xyz"));
}

void TestSheetViewEdit::takenByAButton() {
    EditWindow window;
    QVERIFY(window.start());
    type(QStringLiteral("abc"));
    QTest::mouseClick(&window.save, Qt::LeftButton);
    QCOMPARE(window.saved, QStringLiteral("abc"));
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewEdit::takenByAButtonWithoutFocus() {
    EditWindow window;
    QVERIFY(window.start());
    type(QStringLiteral("abc"));
    QTest::mouseClick(&window.quiet, Qt::LeftButton);
    QCOMPARE(window.saved, QStringLiteral("abc"));
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewEdit::takenByAMnemonic() {
    EditWindow window;
    QVERIFY(window.start());
    type(QStringLiteral("abc"));
    press(Qt::Key_S, Qt::AltModifier);
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
    type(QStringLiteral("abc"));
    press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(window.saved, QStringLiteral("abc"));
}

void TestSheetViewEdit::takenBeforeAHeadSorts() {
    EditWindow window;
    QVERIFY(window.start());
    connect(&window.view, &SheetView::Click, this, [&](int col, int row) {
        if (row == 0) window.view.SortByHead(col);
    });
    type(QStringLiteral("zz"));
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
    type(QStringLiteral("mine"));
    window.view.SetText(1, 1, QStringLiteral("program"));
    window.view.SetText(2, 1, QStringLiteral("other"));
    window.view.flush();
    QCOMPARE(editorOf<QLineEdit>(window.view)->text(), QStringLiteral("mine"));
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("mine"));
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("program"));
}

void TestSheetViewEdit::programLoadsMeanwhile() {
    EditWindow window;
    QVERIFY(window.start());
    type(QStringLiteral("mine"));
    fill(window.view, 3, 6);
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
    type(QStringLiteral("mine"));
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
    type(QStringLiteral("mine"));
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
    type(QStringLiteral("abc"));
    press(Qt::Key_Return);
    QCOMPARE(window.view.MaxRows(), 3);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    click(window.view, 1, 3);
    type(QStringLiteral("def"));
    click(window.view, 2, 1);
    QCOMPARE(window.view.MaxRows(), 2);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,2"));
}

void TestSheetViewEdit::listCannotBeEdited() {
    EditWindow window;
    window.view.setReadOnly(true);
    QVERIFY(window.start());
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_A, Qt::Key_Delete, Qt::Key_Backspace}) {
        press(key);
    }
    press(Qt::Key_X, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText(QStringLiteral("paste"));
    press(Qt::Key_V, Qt::ControlModifier);
    QTest::mouseDClick(window.view.viewport(), Qt::LeftButton, {},
                       inViewport(window.view, window.view.cellRect(1, 1).center()));
    QVERIFY(!editorOf<QLineEdit>(window.view));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
    QCOMPARE(window.changes.count(), 0);
    press(Qt::Key_C, Qt::ControlModifier);
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
    type(QStringLiteral("Xmas"));
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("Xmas"));
    QCOMPARE(window.changes.count(), 1);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    press(Qt::Key_Delete);
    QCOMPARE(window.view.GetText(1, 1), QString());
}

void TestSheetViewEdit::comboByKeys() {
    EditWindow window;
    QVERIFY(window.start());
    makeCombo(window.view, 1, 1);
    press(Qt::Key_Down, Qt::AltModifier);
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
    type(QStringLiteral("3/4/2027"));
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("03/04/27"));
    QCOMPARE(window.changes.count(), 1);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    type(QStringLiteral("nonsense"));
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("03/04/27"));
    QCOMPARE(window.changes.count(), 1);
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    press(Qt::Key_F2);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("03/05/27"));
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    press(Qt::Key_Delete);
    QCOMPARE(window.view.GetText(1, 1), QString());
    press(Qt::Key_F2);
    press(Qt::Key_Up);  // an empty cell begins today
    press(Qt::Key_Return);
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
    press(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(pressed.count(), 1);
    type(QStringLiteral("a.stp"));
    press(Qt::Key_Return);
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
    type(QStringLiteral("abc"));
    press(Qt::Key_F2);
    QVERIFY(!editorOf<QLineEdit>(window.view));
    click(window.view, 1, 1);
    QCOMPARE(clicks.count(), 1);
}

void TestSheetViewEdit::copyAndPaste() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    QTest::mousePress(view.viewport(), Qt::LeftButton, {},
                      inViewport(view, view.cellRect(1, 1).center()));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {},
                        inViewport(view, view.cellRect(1, 1).center()));
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("1,1\t2,1\n1,2\t2,2"));
    click(view, 2, 3);
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 3), QStringLiteral("1,1"));
    QCOMPARE(view.GetText(3, 4), QStringLiteral("2,2"));
    QCOMPARE(window.changes.count(), 4);
    QCOMPARE(window.change(), (QList<QVariant>{2, 3}));
    // What has no place is cut off.
    click(view, 3, 4);
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(3, 4), QStringLiteral("1,1"));
    QCOMPARE(view.MaxRows(), 4);
}

void TestSheetViewEdit::quotedCells() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    view.SetText(1, 1, QStringLiteral("two\rlines \"here\""));
    view.flush();
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("\"two\rlines \"\"here\"\"\""));
    view.SetActiveCell(2, 2);
    view.flush();
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 2), QStringLiteral("two\rlines \"here\""));
    QGuiApplication::clipboard()->setText(QStringLiteral("\"open\tsecond\r\n\"a\"b\t\"\"\n"));
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 2), QStringLiteral("\"open"));
    QCOMPARE(view.GetText(3, 2), QStringLiteral("second"));
    QCOMPARE(view.GetText(2, 3), QStringLiteral("\"a\"b"));
    QCOMPARE(view.GetText(3, 3), QString());
    QCOMPARE(view.GetText(2, 4), QStringLiteral("2,4"));
}

void TestSheetViewEdit::pasteLeavesHiddenCells() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    view.Col(2);
    view.ColHidden(true);
    view.Row(2);
    view.RowHidden(true);
    view.flush();
    QGuiApplication::clipboard()->setText(QStringLiteral("a\tb\nc\td"));
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("a"));
    QCOMPARE(view.GetText(3, 1), QStringLiteral("b"));
    QCOMPARE(view.GetText(1, 3), QStringLiteral("c"));
    QCOMPARE(view.GetText(3, 3), QStringLiteral("d"));
    QCOMPARE(view.GetText(2, 1), QStringLiteral("2,1"));
    QCOMPARE(view.GetText(1, 2), QStringLiteral("1,2"));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    QCOMPARE(view.GetText(2, 1), QStringLiteral("2,1"));
    QCOMPARE(view.GetText(3, 3), QString());
}

void TestSheetViewEdit::oneTextIntoManyCells() {
    EditWindow window;
    QVERIFY(window.start());
    QGuiApplication::clipboard()->setText(QStringLiteral("G"));
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("G"));
    QCOMPARE(window.view.GetText(1, 2), QStringLiteral("G"));
    QCOMPARE(window.view.GetText(1, 3), QStringLiteral("1,3"));
}

void TestSheetViewEdit::cutAndDelete() {
    EditWindow window;
    QVERIFY(window.start());
    press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QString());
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("1,1"));
    QCOMPARE(window.change(), (QList<QVariant>{1, 1}));
    press(Qt::Key_Delete);
    QCOMPARE(window.changes.count(), 0);
    window.view.AddCellSpan(1, 2, 3, 1);
    window.view.SetActiveCell(1, 2);
    window.view.flush();
    press(Qt::Key_Delete);
    QCOMPARE(window.view.GetText(1, 2), QString());
    QCOMPARE(window.view.GetText(2, 2), QStringLiteral("2,2"));
}

void TestSheetViewEdit::undo() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    type(QStringLiteral("one"));
    press(Qt::Key_Return);
    type(QStringLiteral("two"));
    press(Qt::Key_Return);
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 2), QStringLiteral("1,2"));
    QCOMPARE(view.ActiveRow(), 2);
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("1,1"));
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Y, Qt::ControlModifier);
    press(Qt::Key_Y, Qt::ControlModifier);
    press(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("one"));
    QCOMPARE(view.GetText(1, 2), QStringLiteral("two"));
    QCOMPARE(window.changes.count(), 6);
    QGuiApplication::clipboard()->setText(QStringLiteral("a\tb\nc\td"));
    view.SetActiveCell(1, 1);
    view.flush();
    press(Qt::Key_V, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 2), QStringLiteral("2,2"));
    QCOMPARE(view.GetText(1, 1), QStringLiteral("one"));
}

void TestSheetViewEdit::undoThatNoLongerFits() {
    EditWindow window;
    QVERIFY(window.start());
    type(QStringLiteral("one"));
    press(Qt::Key_Return);
    type(QStringLiteral("two"));
    press(Qt::Key_Return);
    window.view.SetText(1, 2, QStringLiteral("program"));
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 2), QStringLiteral("program"));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
}

void TestSheetViewEdit::undoEndsWhenTheProgramLoads() {
    EditWindow window;
    QVERIFY(window.start());
    press(Qt::Key_Delete);
    window.view.MaxRows(0);
    window.view.MaxRows(4);
    window.view.flush();
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QString());
}

void TestSheetViewEdit::undoOnAnotherPage() {
    EditWindow window;
    window.view.SheetCount(2);
    QVERIFY(window.start());
    type(QStringLiteral("one"));
    press(Qt::Key_Return);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(window.view.ActiveSheet(), 2);
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.ActiveSheet(), 1);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
}

void TestSheetViewEdit::find() {
    EditWindow window;
    window.view.setReadOnly(true);
    window.view.SetText(2, 3, QString::fromUtf8("Être avec Toi"));
    QVERIFY(window.start());
    QSignalSpy clicks(&window.view, &SheetView::Click);
    press(Qt::Key_F, Qt::ControlModifier);
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(line);
    type(QString::fromUtf8("être"));
    QCOMPARE(window.view.ActiveRow(), 3);
    QCOMPARE(window.view.ActiveCol(), 2);
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral(",4"));
    QCOMPARE(window.view.ActiveRow(), 4);
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(window.view.ActiveCol(), 2);
    QTest::keyClick(line, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(window.view.ActiveCol(), 1);
    QTest::keyClick(line, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(window.view.ActiveCol(), 3);  // around the end
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral("quince"));
    QCOMPARE(window.view.ActiveRow(), 4);
    QTest::keyClick(line, Qt::Key_Escape);
    QVERIFY(window.view.hasFocus());
    QVERIFY(!line->isVisible());
    QCOMPARE(clicks.count(), 0);
}

void TestSheetViewEdit::pageClickTakesTheText() {
    EditWindow window;
    window.view.SheetCount(2);
    QVERIFY(window.start());
    type(QStringLiteral("one"));
    auto* tabs = window.view.findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(window.view.ActiveSheet(), 2);
    QCOMPARE(window.view.GetText(1, 1), QString());
    window.view.ActiveSheet(1);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("one"));
}

LORVANITE_TEST(TestSheetViewEdit)
#include "test_sheet_view_edit.moc"
