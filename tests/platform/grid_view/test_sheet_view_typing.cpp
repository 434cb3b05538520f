// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Where typed text goes: the first key in a grid, the arrow keys, completion, the row that comes
// while a text is taken over. What a list shows of its order and of texts that are cut off.
#include "platform/desktop/whole_text.h"
#include "platform/grid_view/edit_window.h"
#include "platform/grid_view/sheet_view_head.h"
#include "support/registry.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QToolTip>

class TestSheetViewTyping : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void firstKeyOpensTheFirstEmptyCell();
    void firstKeyReplacesTheFirstCellOfAFullGrid();
    void firstKeySkipsWhatTakesNoText();
    void firstKeyOfAnInputMethodOpensTheFirstCell();
    void firstPasteGoesIntoTheFirstCell();
    void enterMakesTheFirstCellActive();
    void firstKeyDoesNothingInAList();
    void enterGoesIntoTheRowThatItsHandlerAdds();
    void arrowsGoOnWhileTyping();
    void arrowsMoveInTheTextAfterF2();
    void arrowsMoveInTheTextAtTheEdge();
    void uniqueItemIsCompletedInItsOwnSpelling_data();
    void uniqueItemIsCompletedInItsOwnSpelling();
    void completionCanBeRemoved();
    void severalItemsAreOffered();
    void severalItemsCanBeLeftUnpicked();
    void sortedRowStaysActive();
    void headShowsTheOrderUntilTheRowsChange();
    void cutTextIsInTheToolTip();
    void cutPathShowsTheFile();
};

namespace {

// A window with an empty grid of 3 columns and 4 rows, entered with Tab from the line above.
struct EmptyWindow : EditWindow {
    EmptyWindow() { view.ClearRange(1, 1, 3, 4, true); }
    bool enter() {
        if (!QTest::qWaitForWindowActive(this)) return false;
        setTabOrder(&line, &view);
        line.setFocus();
        pressKey(Qt::Key_Tab);
        return view.hasFocus() && view.ActiveRow() == 0;
    }
};

void offer(SheetView& view, int col, int row, const QString& items) {
    view.Col(col);
    view.Row(row);
    view.CellType(CellKind::Combo);
    view.TypeComboBoxList(items);
    view.SetText(col, row, QString());
    view.ColWidth(col, 16);
    view.flush();
}

// The tool tip that comes up at a place of a widget; empty if none does.
QString toolTipAt(const QPoint& place, QWidget* widget) {
    QToolTip::hideText();
    if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 60000))
        QTest::qFail("the tool tip stays", __FILE__, __LINE__);
    QHelpEvent help(QEvent::ToolTip, place, widget->mapToGlobal(place));
    QCoreApplication::sendEvent(widget, &help);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

}  // namespace

void TestSheetViewTyping::firstKeyOpensTheFirstEmptyCell() {
    EmptyWindow window;
    window.view.SetText(1, 1, QStringLiteral("label"));
    QVERIFY(window.enter());
    typeText(QStringLiteral("Ann"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("label"));
    QCOMPARE(window.view.GetText(2, 1), QStringLiteral("Ann"));
    QCOMPARE(window.view.ActiveCol(), 2);
    QCOMPARE(window.view.ActiveRow(), 2);
}

void TestSheetViewTyping::firstKeyReplacesTheFirstCellOfAFullGrid() {
    EmptyWindow window;
    fillGrid(window.view, 3, 4);
    QVERIFY(window.enter());
    typeText(QStringLiteral("x"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("x"));
}

void TestSheetViewTyping::firstKeySkipsWhatTakesNoText() {
    EmptyWindow window;
    SheetView& view = window.view;
    view.Row(1);
    view.RowHidden(true);
    view.setLocked([](int col, int row) { return row == 2 || (row == 3 && col == 1); });
    view.AddCellSpan(1, 3, 2, 1);
    QVERIFY(window.enter());
    pressKey(Qt::Key_F2);
    typeText(QStringLiteral("x"));
    pressKey(Qt::Key_Return);
    QCOMPARE(view.GetText(3, 3), QStringLiteral("x"));

    view.SetActiveCell(0, 0);
    view.setTypingStart(2, 4);
    view.flush();
    typeText(QStringLiteral("y"));
    pressKey(Qt::Key_Return);
    QCOMPARE(view.GetText(2, 4), QStringLiteral("y"));
}

void TestSheetViewTyping::firstKeyOfAnInputMethodOpensTheFirstCell() {
    EmptyWindow window;
    QVERIFY(window.enter());
    QVERIFY(window.view.testAttribute(Qt::WA_InputMethodEnabled));
    QInputMethodEvent composing(QString::fromUtf8("ㅈ"), {});
    QCoreApplication::sendEvent(&window.view, &composing);
    QInputMethodEvent commit;
    commit.setCommitString(QString::fromUtf8("주"));
    QCoreApplication::sendEvent(QApplication::focusWidget(), &commit);
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QString::fromUtf8("주"));
}

void TestSheetViewTyping::firstPasteGoesIntoTheFirstCell() {
    EmptyWindow window;
    QVERIFY(window.enter());
    window.view.SetText(3, 4, QStringLiteral("copied"));
    window.view.SetActiveCell(3, 4);
    window.view.flush();
    pressKey(Qt::Key_C, Qt::ControlModifier);
    window.view.SetActiveCell(0, 0);
    window.view.flush();
    pressKey(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("copied"));
}

void TestSheetViewTyping::enterMakesTheFirstCellActive() {
    EmptyWindow window;
    QVERIFY(window.enter());
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.ActiveCol(), 1);
    QCOMPARE(window.view.ActiveRow(), 1);
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.ActiveRow(), 2);
}

void TestSheetViewTyping::firstKeyDoesNothingInAList() {
    EmptyWindow window;
    window.view.setReadOnly(true);
    QVERIFY(window.enter());
    for (const Qt::Key key : {Qt::Key_X, Qt::Key_F2, Qt::Key_Return}) pressKey(key);
    QCOMPARE(window.view.ActiveRow(), 0);
    QCOMPARE(window.view.DataRowCnt(), 0);
}

void TestSheetViewTyping::enterGoesIntoTheRowThatItsHandlerAdds() {
    EmptyWindow window;
    SheetView& view = window.view;
    view.MaxRows(1);
    connect(&view, &SheetView::Change, &view, [&view](int, int row) {
        view.MaxRows(row + 1);
        view.SetText(1, row, view.GetText(1, row).toUpper());
    });
    QVERIFY(window.enter());
    for (const char* text : {"one", "two", "three"}) {
        typeText(QLatin1String(text));
        pressKey(Qt::Key_Return);
    }
    QCOMPARE(view.GetText(1, 1), QStringLiteral("ONE"));
    QCOMPARE(view.GetText(1, 2), QStringLiteral("TWO"));
    QCOMPARE(view.GetText(1, 3), QStringLiteral("THREE"));
    QCOMPARE(view.ActiveRow(), 4);
}

void TestSheetViewTyping::arrowsGoOnWhileTyping() {
    EmptyWindow window;
    QVERIFY(window.enter());
    const std::pair<const char*, Qt::Key> steps[] = {
        {"G", Qt::Key_Right}, {"Am", Qt::Key_Down}, {"C", Qt::Key_Left}, {"D", Qt::Key_Up}};
    for (const auto& [text, key] : steps) {
        typeText(QLatin1String(text));
        pressKey(key);
        QVERIFY(!editorOf<QLineEdit>(window.view));
    }
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("G"));
    QCOMPARE(window.view.GetText(2, 1), QStringLiteral("Am"));
    QCOMPARE(window.view.GetText(2, 2), QStringLiteral("C"));
    QCOMPARE(window.view.GetText(1, 2), QStringLiteral("D"));
    QCOMPARE(window.view.ActiveCol(), 1);
    QCOMPARE(window.view.ActiveRow(), 1);
    QCOMPARE(window.changes.count(), 4);
}

void TestSheetViewTyping::arrowsMoveInTheTextAfterF2() {
    EmptyWindow window;
    QVERIFY(window.enter());
    typeText(QStringLiteral("ac"));
    pressKey(Qt::Key_F2);
    pressKey(Qt::Key_Left);
    typeText(QStringLiteral("b"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("abc"));
    window.view.SetActiveCell(1, 1);
    window.view.flush();
    pressKey(Qt::Key_F2);
    pressKey(Qt::Key_Left);
    typeText(QStringLiteral("-"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("ab-c"));
}

void TestSheetViewTyping::arrowsMoveInTheTextAtTheEdge() {
    EmptyWindow window;
    window.view.AddCellSpan(1, 1, 3, 1);
    QVERIFY(window.enter());
    typeText(QStringLiteral("ac"));
    pressKey(Qt::Key_Left);
    typeText(QStringLiteral("b"));
    pressKey(Qt::Key_Right);
    typeText(QStringLiteral("d"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("abcd"));
}

void TestSheetViewTyping::uniqueItemIsCompletedInItsOwnSpelling_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("entered");
    QTest::newRow("beginning") << "cur"
                               << "Current";
    QTest::newRow("capitals") << "CUR"
                              << "Current";
    QTest::newRow("whole") << "past"
                           << "Past";
    QTest::newRow("beginning of another") << "piano"
                                          << "Piano";
    QTest::newRow("longer one") << "piano d"
                                << "Piano Duo";
    QTest::newRow("twice the same") << "tw"
                                    << "Twice";
    QTest::newRow("no item") << "sung"
                             << "sung";
}
void TestSheetViewTyping::uniqueItemIsCompletedInItsOwnSpelling() {
    QFETCH(QString, typed);
    QFETCH(QString, entered);
    EmptyWindow window;
    offer(window.view, 1, 1, QStringLiteral("Current\tPast\tPiano\tPiano Duo\tTwice\tTwice"));
    QVERIFY(window.enter());
    typeText(typed);
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), entered);
    QCOMPARE(window.changes.count(), 1);
}

void TestSheetViewTyping::completionCanBeRemoved() {
    EmptyWindow window;
    offer(window.view, 1, 1, QStringLiteral("Current\tPast"));
    QVERIFY(window.enter());
    typeText(QStringLiteral("cur"));
    QCOMPARE(editorOf<QComboBox>(window.view)->currentText(), QStringLiteral("Current"));
    pressKey(Qt::Key_Backspace);
    typeText(QStringLiteral("b"));
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("Curb"));
}

void TestSheetViewTyping::severalItemsAreOffered() {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab}) {
        EmptyWindow window;
        offer(window.view, 1, 1, QStringLiteral("Bass:Cy Orr\tPiano:Ann Lee\tPiano:Bob Day"));
        QVERIFY(window.enter());
        typeText(QStringLiteral("piano"));
        pressKey(key);
        QCOMPARE(window.view.GetText(1, 1), QString());
        auto* combo = editorOf<QComboBox>(window.view);
        QVERIFY(combo && combo->view()->isVisible());
        QCOMPARE(combo->view()->currentIndex().row(), 1);
        QTest::keyClick(combo->view(), Qt::Key_Down);
        QTest::keyClick(combo->view(), Qt::Key_Return);
        QCOMPARE(window.view.GetText(1, 1), QStringLiteral("Piano:Bob Day"));
        QCOMPARE(window.changes.count(), 1);
    }
}

void TestSheetViewTyping::severalItemsCanBeLeftUnpicked() {
    EmptyWindow window;
    offer(window.view, 1, 1, QStringLiteral("Piano:Ann Lee\tPiano:Bob Day"));
    QVERIFY(window.enter());
    typeText(QStringLiteral("Piano"));
    pressKey(Qt::Key_Return);
    auto* combo = editorOf<QComboBox>(window.view);
    QVERIFY(combo && combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_Escape);
    pressKey(Qt::Key_Return);
    QCOMPARE(window.view.GetText(1, 1), QStringLiteral("Piano"));
}

void TestSheetViewTyping::sortedRowStaysActive() {
    EditWindow window;
    SheetView& view = window.view;
    view.setReadOnly(true);
    view.SetText(1, 1, QStringLiteral("Zion"));
    view.SetText(1, 2, QStringLiteral("Abide"));
    view.SetText(1, 3, QStringLiteral("Mercy"));
    view.SetText(1, 4, QStringLiteral("Grace"));
    QVERIFY(window.start());
    connect(&view, &SheetView::Click, &view, [&view](int col, int row) {
        if (row == 0) view.SortByHead(col);
    });
    clickCell(view, 1, 1);
    QCOMPARE(view.GetText(1, view.ActiveRow()), QStringLiteral("Zion"));
    clickCell(view, 1, 0);
    QCOMPARE(view.GetText(1, 1), QStringLiteral("Abide"));
    QCOMPARE(view.ActiveRow(), 4);
    QCOMPARE(view.GetText(1, view.ActiveRow()), QStringLiteral("Zion"));
    view.flush();
    QCOMPARE(view.currentIndex().row(), 3);
    clickCell(view, 1, 0);
    QCOMPARE(view.ActiveRow(), 1);
}

void TestSheetViewTyping::headShowsTheOrderUntilTheRowsChange() {
    EditWindow window;
    SheetView& view = window.view;
    view.setReadOnly(true);
    QVERIFY(window.start());
    connect(&view, &SheetView::Click, &view, [&view](int col, int row) {
        if (row == 0) view.SortByHead(col);
    });
    const auto& head = static_cast<const SheetHead&>(*view.horizontalHeader());
    const auto picture = [&head] { return const_cast<SheetHead&>(head).grab().toImage(); };
    const auto spoken = [&view] {
        return view.model()
            ->headerData(1, Qt::Horizontal, Qt::AccessibleDescriptionRole)
            .toString();
    };
    const QImage plain = picture();
    QCOMPARE(head.orderedCol(), 0);
    QCOMPARE(spoken(), QString());
    clickCell(view, 2, 0);
    QCOMPARE(head.orderedCol(), 2);
    QCOMPARE(head.order(), SortOrder::Ascending);
    QCOMPARE(spoken(), QStringLiteral("sorted ascending"));
    const QImage ascending = picture();
    QVERIFY(ascending != plain);
    clickCell(view, 2, 0);
    QCOMPARE(head.order(), SortOrder::Descending);
    QCOMPARE(spoken(), QStringLiteral("sorted descending"));
    QVERIFY(picture() != ascending);
    view.SetText(2, 3, QStringLiteral("another list"));
    QCOMPARE(head.orderedCol(), 0);
    QCOMPARE(picture(), plain);
}

void TestSheetViewTyping::cutTextIsInTheToolTip() {
    EditWindow window;
    SheetView& view = window.view;
    const QString text = QStringLiteral("A <b>text</b> that is much longer than its cell is wide");
    view.SetText(1, 2, text);
    view.SetText(2, 0, text);
    QVERIFY(window.start());
    QWidget* cells = view.viewport();
    QVERIFY(toolTipAt(middleOf(view, 1, 2), cells).contains(text.toHtmlEscaped()));
    QCOMPARE(toolTipAt(middleOf(view, 1, 1), cells), QString());
    QWidget* head = view.horizontalHeader()->viewport();
    const auto inHead = [&](int col) {
        return head->mapFrom(&view, view.cellRect(col, 0).center());
    };
    QVERIFY(toolTipAt(inHead(2), head).contains(text.toHtmlEscaped()));
    QCOMPARE(toolTipAt(inHead(1), head), QString());
    // A text that has room in its empty neighbours is not cut.
    view.AllowCellOverflow(true);
    view.ClearRange(2, 2, 3, 2, true);
    view.ColWidth(2, 40);
    view.flush();
    QCOMPARE(toolTipAt(middleOf(view, 1, 2), cells), QString());
}

void TestSheetViewTyping::cutPathShowsTheFile() {
    const QFontMetrics metrics{QFont()};
    const auto fits = [&](const QString& text, int width) {
        return metrics.horizontalAdvance(text) <= width;
    };
    for (const char* folder :
         {"/home/someone/a/long/way/to/the/charts/", "C:\\Users\\someone\\charts\\"}) {
        const QString path = QLatin1String(folder) + QStringLiteral("Abide.stp");
        const int width = metrics.horizontalAdvance(path) * 2 / 3;
        const QString cut = elidedText(metrics, path, width);
        QVERIFY2(cut.endsWith(path.right(10)) && cut.startsWith(path.left(2)), qPrintable(cut));
        QVERIFY(fits(cut, width));
        QCOMPARE(elidedText(metrics, path, metrics.horizontalAdvance(path)), path);
        const int narrow = metrics.horizontalAdvance(QStringLiteral("Abide"));
        QVERIFY(fits(elidedText(metrics, path, narrow), narrow));
    }
    const QString title = QStringLiteral("Come, sing and/or pray a song.of praise");
    const int width = metrics.horizontalAdvance(title) / 2;
    QCOMPARE(elidedText(metrics, title, width), metrics.elidedText(title, Qt::ElideRight, width));
}

LORVANITE_TEST(TestSheetViewTyping)
#include "test_sheet_view_typing.moc"
