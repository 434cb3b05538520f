// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The clipboard, undo and find in a grid.
#include "platform/grid_view/edit_window.h"
#include "support/registry.h"

#include <QClipboard>
#include <QFocusEvent>
#include <QLabel>
#include <QTabBar>

class TestSheetViewSteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void copyAndPaste();
    void quotedCells();
    void pasteLeavesHiddenCells();
    void oneTextIntoManyCells();
    void cutAndDelete();
    void undo();
    void undoThatNoLongerFits();
    void undoEndsWhenTheProgramLoads();
    void undoEndsWhereTheProgramWrites();
    void undoFollowsItsRow();
    void rewrittenTextIsUndoneAsAWhole();
    void refusedTextComesBack();
    void undoOnAnotherPage();
    void find();
    void findMovesWithTheArrows();
    void emptyTextFindsNothing();
    void findBarGoesWhenItIsLeft();
    void pageClickTakesTheText();
};

void TestSheetViewSteps::copyAndPaste() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, middleOf(view, 1, 1));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, middleOf(view, 1, 1));
    pressKey(Qt::Key_Right, Qt::ShiftModifier);
    pressKey(Qt::Key_Down, Qt::ShiftModifier);
    pressKey(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("1,1\t2,1\n1,2\t2,2"));
    clickCell(view, 2, 3);
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 3), QStringLiteral("1,1"));
    QCOMPARE(view.GetText(3, 4), QStringLiteral("2,2"));
    QCOMPARE(window.changes.count(), 4);
    QCOMPARE(window.change(), (QList<QVariant>{2, 3}));
    // What has no place is cut off.
    clickCell(view, 3, 4);
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(3, 4), QStringLiteral("1,1"));
    QCOMPARE(view.MaxRows(), 4);
}

void TestSheetViewSteps::quotedCells() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    view.SetText(1, 1, QStringLiteral("two\rlines \"here\""));
    view.flush();
    pressKey(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("\"two\rlines \"\"here\"\"\""));
    view.SetActiveCell(2, 2);
    view.flush();
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 2), QStringLiteral("two\rlines \"here\""));
    QGuiApplication::clipboard()->setText(QStringLiteral("\"open\tsecond\r\n\"a\"b\t\"\"\n"));
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 2), QStringLiteral("\"open"));
    QCOMPARE(view.GetText(3, 2), QStringLiteral("second"));
    QCOMPARE(view.GetText(2, 3), QStringLiteral("\"a\"b"));
    QCOMPARE(view.GetText(3, 3), QString());
    QCOMPARE(view.GetText(2, 4), QStringLiteral("2,4"));
}

void TestSheetViewSteps::pasteLeavesHiddenCells() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    view.Col(2);
    view.ColHidden(true);
    view.Row(2);
    view.RowHidden(true);
    view.flush();
    QGuiApplication::clipboard()->setText(QStringLiteral("a\tb\nc\td"));
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("a"));
    QCOMPARE(view.GetText(3, 1), QStringLiteral("b"));
    QCOMPARE(view.GetText(1, 3), QStringLiteral("c"));
    QCOMPARE(view.GetText(3, 3), QStringLiteral("d"));
    QCOMPARE(view.GetText(2, 1), QStringLiteral("2,1"));
    QCOMPARE(view.GetText(1, 2), QStringLiteral("1,2"));
    pressKey(Qt::Key_A, Qt::ControlModifier);
    pressKey(Qt::Key_Delete);
    QCOMPARE(view.GetText(2, 1), QStringLiteral("2,1"));
    QCOMPARE(view.GetText(3, 3), QString());
}

void TestSheetViewSteps::oneTextIntoManyCells() {
    EditWindow window;
    QVERIFY(window.start());
    QGuiApplication::clipboard()->setText(QStringLiteral("G"));
    pressKey(Qt::Key_Down, Qt::ShiftModifier);
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("G"));
    QCOMPARE(window.view.GetText(1, 2), QStringLiteral("G"));
    QCOMPARE(window.view.GetText(1, 3), QStringLiteral("1,3"));
}

void TestSheetViewSteps::cutAndDelete() {
    EditWindow window;
    QVERIFY(window.start());
    pressKey(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QString());
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("1,1"));
    QCOMPARE(window.change(), (QList<QVariant>{1, 1}));
    pressKey(Qt::Key_Delete);
    QCOMPARE(window.changes.count(), 0);
    window.view.AddCellSpan(1, 2, 3, 1);
    window.view.SetActiveCell(1, 2);
    window.view.flush();
    pressKey(Qt::Key_Delete);
    QCOMPARE(window.view.GetText(1, 2), QString());
    QCOMPARE(window.view.GetText(2, 2), QStringLiteral("2,2"));
}

void TestSheetViewSteps::undo() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    typeText(QStringLiteral("one"));
    pressKey(Qt::Key_Return);
    typeText(QStringLiteral("two"));
    pressKey(Qt::Key_Return);
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 2), QStringLiteral("1,2"));
    QCOMPARE(view.ActiveRow(), 2);
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("1,1"));
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    pressKey(Qt::Key_Y, Qt::ControlModifier);
    pressKey(Qt::Key_Y, Qt::ControlModifier);
    pressKey(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("one"));
    QCOMPARE(view.GetText(1, 2), QStringLiteral("two"));
    QCOMPARE(window.changes.count(), 6);
    QGuiApplication::clipboard()->setText(QStringLiteral("a\tb\nc\td"));
    view.SetActiveCell(1, 1);
    view.flush();
    pressKey(Qt::Key_V, Qt::ControlModifier);
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(2, 2), QStringLiteral("2,2"));
    QCOMPARE(view.GetText(1, 1), QStringLiteral("one"));
}

void TestSheetViewSteps::undoThatNoLongerFits() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("one"));
    pressKey(Qt::Key_Return);
    typeText(QStringLiteral("two"));
    pressKey(Qt::Key_Return);
    window.view.SetText(1, 2, QStringLiteral("program"));
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 2), QStringLiteral("program"));
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
}

void TestSheetViewSteps::undoEndsWhenTheProgramLoads() {
    EditWindow window;
    QVERIFY(window.start());
    pressKey(Qt::Key_Delete);
    window.view.MaxRows(0);
    window.view.MaxRows(4);
    window.view.flush();
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QString());
}

// The same text, but of another record.
void TestSheetViewSteps::undoEndsWhereTheProgramWrites() {
    EditWindow window;
    QVERIFY(window.start());
    typeText(QStringLiteral("one"));
    pressKey(Qt::Key_Return);
    window.view.SetText(1, 1, QStringLiteral("one"));
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("one"));
}

void TestSheetViewSteps::undoFollowsItsRow() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    for (const char* text : {"one", "two", "three"}) {
        typeText(QString::fromLatin1(text));
        pressKey(Qt::Key_Return);
    }
    view.MaxRows(5);
    view.InsertRows(2, 1);
    view.DeleteRows(4, 1);
    view.flush();
    QCOMPARE(view.GetText(1, 3), QStringLiteral("two"));
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 3), QStringLiteral("1,2"));
    QCOMPARE(view.ActiveRow(), 3);
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("1,1"));
    pressKey(Qt::Key_Y, Qt::ControlModifier);
    pressKey(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 3), QStringLiteral("two"));
}

void TestSheetViewSteps::rewrittenTextIsUndoneAsAWhole() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    connect(&view, &SheetView::Change, this, [&view](int col, int row) {
        view.SetText(col, row, view.GetText(col, row).toUpper());
    });
    typeText(QStringLiteral("note"));
    pressKey(Qt::Key_Return);
    typeText(QStringLiteral("date"));
    pressKey(Qt::Key_Return);
    QCOMPARE(view.GetText(1, 2), QStringLiteral("DATE"));
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 2), QStringLiteral("1,2"));
    QCOMPARE(view.GetText(1, 1), QStringLiteral("NOTE"));
    pressKey(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 2), QStringLiteral("DATE"));
}

void TestSheetViewSteps::refusedTextComesBack() {
    EditWindow window;
    QVERIFY(window.start());
    SheetView& view = window.view;
    connect(&view, &SheetView::Change, this, [&view](int col, int row) {
        if (!view.isUndoing()) view.SetText(col, row, QString());
    });
    typeText(QStringLiteral("no date"));
    pressKey(Qt::Key_Return);
    QCOMPARE(view.GetText(1, 1), QString());
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("1,1"));
    QVERIFY(!view.isUndoing());
}

void TestSheetViewSteps::undoOnAnotherPage() {
    EditWindow window;
    window.view.SheetCount(2);
    QVERIFY(window.start());
    typeText(QStringLiteral("one"));
    pressKey(Qt::Key_Return);
    pressKey(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(window.view.ActiveSheet(), 2);
    pressKey(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.view.ActiveSheet(), 1);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("1,1"));
}

void TestSheetViewSteps::find() {
    EditWindow window;
    window.view.setReadOnly(true);
    window.view.SetText(2, 3, QString::fromUtf8("Être avec Toi"));
    QVERIFY(window.start());
    QSignalSpy clicks(&window.view, &SheetView::Click);
    pressKey(Qt::Key_F, Qt::ControlModifier);
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(line);
    typeText(QString::fromUtf8("être"));
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

void TestSheetViewSteps::findMovesWithTheArrows() {
    EditWindow window;
    QVERIFY(window.start());
    pressKey(Qt::Key_F, Qt::ControlModifier);
    typeText(QStringLiteral(",3"));
    QCOMPARE(window.view.ActiveRow(), 3);
    QCOMPARE(window.view.ActiveCol(), 1);
    pressKey(Qt::Key_Down);
    QCOMPARE(window.view.ActiveCol(), 2);
    pressKey(Qt::Key_Up);
    QCOMPARE(window.view.ActiveCol(), 1);
    pressKey(Qt::Key_Up);
    QCOMPARE(window.view.ActiveCol(), 3);
    QCOMPARE(window.view.ActiveRow(), 3);
    QVERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget())->isVisible());
}

void TestSheetViewSteps::emptyTextFindsNothing() {
    EditWindow window;
    QVERIFY(window.start());
    pressKey(Qt::Key_F, Qt::ControlModifier);
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(line);
    const auto says = [&](const QString& text) {
        for (const QLabel* label : line->parentWidget()->findChildren<QLabel*>())
            if (label->isVisible() && label->text() == text) return true;
        return false;
    };
    typeText(QStringLiteral("x"));
    QVERIFY(says(QStringLiteral("not found")));
    pressKey(Qt::Key_Backspace);
    QVERIFY(!says(QStringLiteral("not found")));
    QCOMPARE(window.view.ActiveRow(), 1);
    QCOMPARE(window.view.ActiveCol(), 1);
}

void TestSheetViewSteps::findBarGoesWhenItIsLeft() {
    EditWindow window;
    QVERIFY(window.start());
    pressKey(Qt::Key_F, Qt::ControlModifier);
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(line && line != &window.line);
    // Another window does not close it.
    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(line, &away);
    QVERIFY(line->isVisible());
    QTest::mouseClick(&window.line, Qt::LeftButton);
    QVERIFY(!line->isVisible());
    QVERIFY(window.line.hasFocus());
}

void TestSheetViewSteps::pageClickTakesTheText() {
    EditWindow window;
    window.view.SheetCount(2);
    QVERIFY(window.start());
    typeText(QStringLiteral("one"));
    auto* tabs = window.view.findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(window.view.ActiveSheet(), 2);
    QCOMPARE(window.view.GetText(1, 1), QString());
    window.view.ActiveSheet(1);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("one"));
}

LORVANITE_TEST(TestSheetViewSteps)
#include "test_sheet_view_steps.moc"
