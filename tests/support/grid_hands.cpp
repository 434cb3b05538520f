// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/grid_hands.h"

#include "platform/grid_view/sheet_view.h"
#include "support/world.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QTest>

#include <functional>
#include <initializer_list>
#include <utility>

void clickCell(SheetView* grid, int col, int row, Qt::MouseButton button) {
    const QRect rect = grid->cellRect(col, row);
    QVERIFY2(rect.isValid(), qPrintable(QStringLiteral("no cell %1, %2").arg(col).arg(row)));
    const QPoint place = grid->mapToGlobal(QPoint(rect.left() + 4, rect.center().y()));
    QWidget* target = grid->childAt(grid->mapFromGlobal(place));
    QVERIFY(target);
    QTest::mouseClick(target, button, {}, target->mapFromGlobal(place));
    if (button == Qt::RightButton) {
        const QPoint at = target->mapFromGlobal(place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, place);
        QCoreApplication::sendEvent(target, &event);
    }
    settle();
}

void typeInCell(SheetView* grid, int col, int row, const QString& text) {
    // Without a window manager no window is active after a box has closed; with some it takes a
    // while.
    grid->activateWindow();
    QVERIFY(QTest::qWaitFor([&] { return grid->isActiveWindow(); }, 60000));
    settle();
    grid->SetActiveCell(col, row);
    grid->flush();
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_F2);
    QWidget* editor = QApplication::focusWidget();
    QVERIFY2(editor && editor != grid, "no editor came up");
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Delete);
    // One key per character of any script.
    for (const char32_t c : text.toUcs4())
        QTest::sendKeyEvent(QTest::Click, editor, Qt::Key_unknown, QString::fromUcs4(&c, 1),
                            Qt::NoModifier);
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
}

void typeKeys(const QString& text) {
    for (const char32_t c : text.toUcs4())
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                            QString::fromUcs4(&c, 1), Qt::NoModifier);
}

void tryToChange(SheetView* grid, int col, int row) {
    grid->activateWindow();
    settle();
    const auto act = [&](const std::function<void()>& begin) {
        QApplication::clipboard()->setText(QStringLiteral("Pasted"));
        grid->SetActiveCell(col, row);
        grid->flush();
        grid->setFocus();
        begin();
        QWidget* editor = QApplication::focusWidget();
        if (editor && editor != grid) {
            QTest::keyClicks(editor, QStringLiteral("Typed"));
            QTest::keyClick(editor, Qt::Key_Return);
        }
        settle();
    };
    struct Press {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    };
    for (const Press& press :
         {Press{Qt::Key_X, Qt::NoModifier}, Press{Qt::Key_F2, Qt::NoModifier},
          Press{Qt::Key_Delete, Qt::NoModifier}, Press{Qt::Key_X, Qt::ControlModifier},
          Press{Qt::Key_V, Qt::ControlModifier}})
        act([&] { QTest::keyClick(grid, press.key, press.modifiers); });
    act([&] {
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {},
                           grid->viewport()->mapFrom(grid, grid->cellRect(col, row).center()));
    });
}

QStringList columnOf(SheetView* grid, int col) {
    QStringList texts;
    for (int row = 1; row <= grid->MaxRows(); ++row) texts.append(grid->GetText(col, row));
    return texts;
}
