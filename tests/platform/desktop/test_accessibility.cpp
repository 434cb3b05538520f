// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Every window with the keyboard alone and for a screen reader: names, tab order, mnemonics, and
// texts that are not cut.
#include "platform/desktop/status_line.h"
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"
#include "sets/frm_set_list.h"
#include "support/every_window.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "trees.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <map>

namespace {

QString nameOf(const QWidget* widget) {
    if (!widget) return QStringLiteral("nothing");
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

// Parts of a control are reached and named through it.
bool isPart(const QWidget* widget) {
    for (const QWidget* up = widget->parentWidget(); up; up = up->parentWidget()) {
        if (qobject_cast<const QComboBox*>(up) || qobject_cast<const SheetView*>(up)) return true;
        if (qobject_cast<const QMdiSubWindow*>(up)) break;
    }
    return qobject_cast<const QScrollBar*>(widget) || qobject_cast<const QMenuBar*>(widget);
}

// What stands over a panel that lies behind is not there for the user.
bool isCovered(const QWidget* widget) {
    const QWidget* window = widget->window();
    const QWidget* top = window->childAt(widget->mapTo(window, widget->rect().center()));
    return top && top != widget && !widget->isAncestorOf(top);
}

QList<QWidget*> controlsOf(const QWidget* window) {
    QList<QWidget*> controls;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        // Pages of tabs are reached by their tabs.
        const bool there = widget->isVisible() && widget->isEnabled() && !isPart(widget) &&
                           !qobject_cast<QTabWidget*>(widget);
        if (there && (widget->focusPolicy() & Qt::TabFocus) && !isCovered(widget))
            controls.append(widget);
    }
    return controls;
}

// Of radio buttons the arrows reach the others.
bool isReachedByArrows(const QWidget* widget) {
    const auto* radio = qobject_cast<const QRadioButton*>(widget);
    return radio && !radio->isChecked();
}

// A panel is read by itself, after what it lies over.
const QWidget* panelOf(const QWidget* widget) {
    for (const QWidget* up = widget->parentWidget(); up; up = up->parentWidget()) {
        if (qobject_cast<const QFrame*>(up) || qobject_cast<const QMdiSubWindow*>(up)) return up;
    }
    return nullptr;
}

// Controls in the head of a panel come last: the close button, so that the fields are first, and
// the tick after the list that it confirms.
bool isInHead(const QWidget* widget) {
    static const QStringList names{"Command4", "Command17", "cmdCloseNote", "cmdCloseAssign",
                                   "cmdSaveAssigned"};
    return qobject_cast<const QToolButton*>(widget) && names.contains(widget->objectName());
}

QRect placeOf(const QWidget* widget, const QWidget* window) {
    return {widget->mapTo(window, QPoint()), widget->size()};
}

// Rows are read from the left to the right, columns from the top down.
bool isReadBefore(const QRect& a, const QRect& b) {
    const bool sameRow = a.center().y() >= b.top() && a.center().y() <= b.bottom();
    if (sameRow) return a.left() <= b.left();
    return b.center().y() > a.center().y() || b.left() >= a.right();
}

// In a grid Tab goes from cell to cell.
void goOn() {
    QWidget* here = QApplication::focusWidget();
    QTest::keyClick(here, qobject_cast<SheetView*>(here) ? Qt::Key_F6 : Qt::Key_Tab);
}

// The controls in the order in which Tab reaches them, beginning with the first of the window.
QList<QWidget*> tabOrderOf(const QWidget* window, const QList<QWidget*>& controls) {
    QList<QWidget*> order;
    QWidget* first = window->nextInFocusChain();
    while (first != window && !controls.contains(first)) first = first->nextInFocusChain();
    if (first == window) return order;
    QApplication::setActiveWindow(window->window());  // a box has taken it
    first->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 200; ++i) {
        QWidget* here = QApplication::focusWidget();
        if (!here || order.contains(here)) break;
        order.append(here);
        goOn();
    }
    return order;
}

QSize needOf(const QLabel& label) {
    if (label.text().isEmpty() || !label.pixmap(Qt::ReturnByValue).isNull()) return {};
    const QSize wanted = label.sizeHint();
    if (!label.wordWrap()) return wanted;
    return {0, label.heightForWidth(label.width())};
}

// The size that a control's text takes.
QSize needOf(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return needOf(*label);
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
        const QFontMetrics font = line->fontMetrics();
        return {font.horizontalAdvance(line->placeholderText()) + 8, font.height()};
    }
    if (const auto* box = qobject_cast<const QComboBox*>(widget))
        return {box->fontMetrics().horizontalAdvance(box->currentText()) + 30,
                box->fontMetrics().height() + 4};
    if (qobject_cast<const QAbstractButton*>(widget)) return widget->sizeHint();
    return {};
}

}  // namespace

class TestAccessibility : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;
    // What a check finds in each window, as it opens and as large as the main window.
    void inEveryWindow(const std::function<QStringList(QWidget*)>& check) {
        QStringList found;
        lookAtEveryWindow(*world, [&](const QString& name, QWidget* window) {
            for (const QString& fault : check(window)) found.append(name + ": " + fault);
        });
        for (const QString& fault : found) qWarning("%s", qPrintable(fault));
        QCOMPARE(found.size(), 0);
    }

private Q_SLOTS:
    void initTestCase() {
        applyTheme(*qApp);
        world = std::make_unique<World>(WorldTree::Sample);
        world->answers.custom("reminder", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
        world->start();
        world->main().resize(1280, 800);
        QVERIFY(QTest::qWaitForWindowActive(&world->main()));
    }

    void everyControlHasAName() {
        inEveryWindow([](QWidget* window) {
            QStringList found;
            const QList<QWidget*> controls = controlsOf(window);
            if (controls.isEmpty()) found.append("has no control");
            for (QWidget* control : controls) {
                QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control);
                const QString name = reader ? reader->text(QAccessible::Name) : QString();
                const bool says = std::any_of(name.begin(), name.end(),
                                              [](QChar c) { return c.isLetterOrNumber(); });
                if (!says) found.append(nameOf(control) + " has no name");
            }
            return found;
        });
    }

    // What a screen reader is told is left in the folder screen-reader of the build.
    void everyCellHasItsTextAndHeads() {
        const QDir folder(QStringLiteral(BUILD_TREE "/screen-reader"));
        QVERIFY(folder.mkpath(QStringLiteral(".")));
        QStringList all;
        lookAtEveryWindow(*world, [&](const QString& name, QWidget* window) {
            QStringList told;
            for (SheetView* grid : window->findChildren<SheetView*>()) {
                if (grid->isVisible() && !isCovered(grid)) told += tellGrid(*grid);
            }
            QFile file(folder.filePath(name + QStringLiteral(".txt")));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(told.join(QLatin1Char('\n')).toUtf8());
            all += told;
        });
        QCOMPARE(all.filter(QStringLiteral("FAULT")), QStringList());
        QVERIFY(all.size() > 1000);
        // Pictures and colours are told in words.
        for (const char* words : {"plays the song", "chord", "lyrics", "title"})
            QVERIFY2(!all.filter(QString::fromLatin1(words)).isEmpty(), words);
    }

    void whatHappensIsTold() {
        const auto nameOf = [](QWidget* widget) {
            QAccessibleInterface* told =
                widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
            return told ? told->text(QAccessible::Name) : QStringLiteral("nothing");
        };
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        w.cmbCat1->setCurrentText(QStringLiteral("Praise"));
        click(w.optPlayList[0]);
        clickCell(w.fpSongList1, 2,
                  w.fpSongList1->SearchCol(2, 1, -1, QStringLiteral("Amazing Grace")));
        QTRY_COMPARE_WITH_TIMEOUT(
            nameOf(world->main().SB),
            QStringLiteral("In hand: Amazing Grace. Click its place in the set."), 60000);
        clickCell(w.fpSet, 2, 3);
        QTRY_COMPARE_WITH_TIMEOUT(nameOf(world->main().SB), QString(), 60000);
        const auto descriptionAt = [&w](int row) {
            return QAccessible::queryAccessibleInterface(w.fpSet)
                ->tableInterface()
                ->cellAt(row - 1, 1)
                ->text(QAccessible::Description);
        };
        QCOMPARE(descriptionAt(3), QStringLiteral("has sheet music"));
        QCOMPARE(descriptionAt(4), QString());
        QApplication::setActiveWindow(w.window());  // a box has taken it
        w.fpSet->setFocus();
        w.fpSet->SetActiveCell(2, 3);
        QTest::keyClick(w.fpSet, Qt::Key_F2);
        QCOMPARE(nameOf(QApplication::focusWidget()), QStringLiteral("Row 3, Song"));
        w.Unload();
        settle();
    }

    void tabReachesEveryControlInReadingOrder() {
        inEveryWindow([](QWidget* window) {
            QStringList found;
            const QList<QWidget*> controls = controlsOf(window);
            const QList<QWidget*> order = tabOrderOf(window, controls);
            for (QWidget* control : controls) {
                // A list that pops up has the focus, and is gone without it.
                if (!control->isVisible()) continue;
                if (!order.contains(control) && !isReachedByArrows(control))
                    found.append(nameOf(control) + " is not reached");
            }
            for (int i = 0; i < order.size(); ++i) {
                // What lies behind a panel is still in use, and takes its turn.
                if (i == 0 || !controls.contains(order[i - 1]) || isInHead(order[i])) continue;
                if (panelOf(order[i - 1]) != panelOf(order[i])) continue;
                if (!isReadBefore(placeOf(order[i - 1], window), placeOf(order[i], window)))
                    found.append(nameOf(order[i]) + " comes after " + nameOf(order[i - 1]));
            }
            return found;
        });
    }

    void keysEditEveryGrid() {
        int edited = 0;
        int searched = 0;
        inEveryWindow([&](QWidget* window) {
            QStringList found;
            QApplication::setActiveWindow(window->window());  // a box has taken it
            for (SheetView* grid : window->findChildren<SheetView*>()) {
                if (!grid->isVisible() || !grid->isEnabled() || isCovered(grid)) continue;
                grid->setFocus();
                grid->flush();
                const QPoint cell = plainCellOf(*grid);
                if (!grid->isReadOnly() && !cell.isNull()) {
                    ++edited;
                    for (const QString& fault : faultsOfKeys(*grid, cell))
                        found.append(nameOf(grid) + ": " + fault);
                }
                if (grid->isReadOnly()) {
                    ++searched;
                    QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
                    QWidget* field = QApplication::focusWidget();
                    if (!qobject_cast<QLineEdit*>(field) || !grid->isAncestorOf(field))
                        found.append(nameOf(grid) + ": Ctrl+F opens no field");
                    else
                        QTest::keyClick(field, Qt::Key_Escape);
                }
            }
            return found;
        });
        QVERIFY(edited >= 5);
        QVERIFY(searched >= 5);
    }

    void noMnemonicIsUsedTwice() {
        inEveryWindow([](QWidget* window) {
            QStringList found;
            std::map<QString, QString> taken;
            const auto take = [&](const QKeySequence& key, const QString& who) {
                if (key.isEmpty()) return;
                const auto [place, isNew] = taken.emplace(key.toString(), who);
                if (!isNew) found.append(key.toString() + ": " + place->second + ", " + who);
            };
            for (QWidget* widget : window->findChildren<QWidget*>()) {
                if (!widget->isVisible() || !widget->isEnabled()) continue;
                if (const auto* button = qobject_cast<QAbstractButton*>(widget))
                    take(button->shortcut(), nameOf(button));
                const auto* label = qobject_cast<QLabel*>(widget);
                if (label && label->buddy())
                    take(QKeySequence::mnemonic(label->text()), nameOf(label));
                if (const auto* bar = qobject_cast<QMenuBar*>(widget)) {
                    for (const QAction* menu : bar->actions())
                        take(QKeySequence::mnemonic(menu->text()), menu->text());
                }
            }
            return found;
        });
    }

    void noTextIsCut() {
        inEveryWindow([](QWidget* window) {
            auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
            QStringList found = cutsOf(window);
            if (!frame) return found;
            if (!frame->parentWidget()->rect().contains(frame->geometry()))
                found.append("does not fit into the main window");
            const QRect usual = frame->geometry();
            frame->showMaximized();
            settle();
            for (const QString& cut : cutsOf(window)) found.append("maximised: " + cut);
            frame->showNormal();
            frame->setGeometry(usual);
            settle();
            return found;
        });
    }

    void cleanupTestCase() { world.reset(); }

private:
    // A line for each cell in the first rows of a grid. FAULT marks what is not told.
    static QStringList tellGrid(SheetView& grid) {
        constexpr int rows = 60;
        QStringList lines{QStringLiteral("--- ") + nameOf(&grid)};
        QAccessibleTableInterface* table =
            QAccessible::queryAccessibleInterface(&grid)->tableInterface();
        const auto headOf = [](const QList<QAccessibleInterface*>& heads) {
            QStringList names;
            for (QAccessibleInterface* head : heads)
                names << (head->text(QAccessible::Name) + QLatin1Char(' ') +
                          head->text(QAccessible::Description))
                             .trimmed();
            // They are made for the caller.
            for (QAccessibleInterface* head : heads)
                QAccessible::deleteAccessibleInterface(
                    QAccessible::registerAccessibleInterface(head));
            return names.join(QLatin1Char(' '));
        };
        for (int row = 0; row < std::min(table->rowCount(), rows); ++row) {
            for (int col = 0; col < table->columnCount(); ++col) {
                if (grid.isColumnHidden(col) || grid.isRowHidden(row)) continue;
                QAccessibleInterface* cell = table->cellAt(row, col);
                const QString across = headOf(cell->tableCellInterface()->columnHeaderCells());
                const QString down = headOf(cell->tableCellInterface()->rowHeaderCells());
                const QString text = cell->text(QAccessible::Name);
                const bool told = !across.isEmpty() && !down.isEmpty() &&
                                  text == grid.textAt(grid.ActiveSheet(), col + 1, row + 1);
                lines << QStringLiteral("%1[%2 | %3] %4 %5")
                             .arg(told ? QString() : QStringLiteral("FAULT "), down, across, text,
                                  cell->text(QAccessible::Description));
            }
        }
        return lines;
    }

    // The first cell in sight that takes any text, (column, row), from the right: the schedule's
    // first column asks in a box for a date. Null where there is none.
    static QPoint plainCellOf(SheetView& grid) {
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            for (int col = grid.MaxCols(); col >= 1; --col) {
                const QModelIndex index = grid.model()->index(row - 1, col - 1);
                if (grid.model()->flags(index) & Qt::ItemIsEditable &&
                    !grid.isColumnHidden(col - 1) && !grid.isRowHidden(row - 1) &&
                    grid.spanAt(grid.ActiveSheet(), col, row).cols == 0 &&
                    grid.formatAt(grid.ActiveSheet(), col, row).kind == CellKind::Edit)
                    return {col, row};
            }
        }
        return {};
    }

    // The keys that do not act as in a spreadsheet.
    static QStringList faultsOfKeys(SheetView& grid, const QPoint& cell) {
        QStringList found;
        const QString before = grid.GetText(cell.x(), cell.y());
        const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        };
        const auto expect = [&](const QString& text, const QString& step) {
            const QString now = grid.GetText(cell.x(), cell.y());
            if (now != text) found.append(step + " leaves \"" + now + "\", not \"" + text + '"');
            grid.SetActiveCell(cell.x(), cell.y());
            grid.flush();
        };
        grid.SetActiveCell(cell.x(), cell.y());
        grid.flush();
        // A text that is a date too: some grids ask for one.
        const QString keys = QStringLiteral("11/08/26");
        // Deliberate: behaviour 16.
        const bool replaces =
            grid.EditModeReplace() ||
            grid.formatAt(grid.ActiveSheet(), cell.x(), cell.y()).kind == CellKind::Date;
        const QString typed = replaces ? keys : before + keys;
        for (const QChar c : keys)
            QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                                QString(c), {});
        press(Qt::Key_Return);
        expect(typed, QStringLiteral("typing"));
        press(Qt::Key_Z, Qt::ControlModifier);
        expect(before, QStringLiteral("Ctrl+Z"));
        press(Qt::Key_Y, Qt::ControlModifier);
        expect(typed, QStringLiteral("Ctrl+Y"));
        press(Qt::Key_F2);
        press(Qt::Key_Q);
        press(Qt::Key_Escape);
        expect(typed, QStringLiteral("Escape"));
        press(Qt::Key_X, Qt::ControlModifier);
        expect(QString(), QStringLiteral("Ctrl+X"));
        press(Qt::Key_V, Qt::ControlModifier);
        expect(typed, QStringLiteral("Ctrl+V"));
        press(Qt::Key_Delete);
        expect(QString(), QStringLiteral("Delete"));
        return found;
    }

    static QStringList cutsOf(const QWidget* window) {
        QStringList found;
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->parentWidget()->inherits("QComboBox") ||
                widget->parentWidget()->inherits("QMdiSubWindow"))
                continue;
            const QSize need = needOf(widget);
            if (need.width() > widget->width() || need.height() > widget->height())
                found.append(QStringLiteral("%1 has %2 x %3 and needs %4 x %5")
                                 .arg(nameOf(widget))
                                 .arg(widget->width())
                                 .arg(widget->height())
                                 .arg(need.width())
                                 .arg(need.height()));
            const bool scrolls = widget->parentWidget()->objectName().endsWith("viewport");
            if (need.isEmpty() || scrolls) continue;
            if (!widget->parentWidget()->rect().contains(widget->geometry()))
                found.append(nameOf(widget) + " leaves its window");
        }
        for (SheetView* grid : window->findChildren<SheetView*>()) {
            const QHeaderView* head = grid->horizontalHeader();
            for (int col = 0; head->isVisible() && col < head->count(); ++col) {
                const QString text = grid->GetText(col + 1, 0);
                if (head->isSectionHidden(col) || isCovered(grid)) continue;
                if (head->fontMetrics().horizontalAdvance(text) > head->sectionSize(col))
                    found.append(nameOf(grid) + "'s head " + text + " is cut");
            }
        }
        return found;
    }
};

LORVANITE_TEST(TestAccessibility)
#include "test_accessibility.moc"
