// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "soak/random_user.h"

#include "keeping/work_keeper.h"
#include "mail/frm_email.h"
#include "platform/desktop/desktop.h"
#include "platform/grid_view/sheet_view.h"
#include "platform/paper/printing.h"
#include "platform/theme/theme.h"
#include "soak/watchdog.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextEdit>

using namespace Qt::Literals::StringLiterals;

namespace {

// The program is ended and started again with every so many commands.
constexpr int CommandsOfStart = 120;

QString nameOf(const QWidget* widget) {
    if (!widget) return u"nothing"_s;
    const QString name = widget->objectName();
    const QString kind = QLatin1String(widget->metaObject()->className());
    return widget->window() == widget || name.isEmpty() ? kind : kind + u' ' + name;
}

// A button of the mouse pressed and let go; the first may take the widget away.
void press(QPointer<QWidget> widget, Qt::MouseButton button, const QPoint& place,
           Qt::KeyboardModifiers modifiers = {}) {
    QTest::mousePress(widget, button, modifiers, place);
    if (widget) QTest::mouseRelease(widget, button, modifiers, place);
}

}  // namespace

RandomUser::RandomUser(World& world, quint64 seed, const QString& deafServer)
    : m_world(world), m_chance(seed), m_answers(seed + 1), m_deafServer(deafServer) {
    m_world.answers.otherwise([this](QWidget* modal) { answer(modal); });
    auto* meanwhile = new QTimer(&m_world.answers);
    QObject::connect(meanwhile, &QTimer::timeout, meanwhile, [this] { actMeanwhile(); });
    meanwhile->start(50);
}

void RandomUser::doCommand(int n) {
    m_command = n;
    m_answered = 0;
    m_chance.begin(n);
    m_answers.begin(n);
    commandBegins(n);
    if (!m_world.isRunning()) {
        m_world.start();
        m_world.main().resize(1240, 760);
    }
    if (n % CommandsOfStart == CommandsOfStart - 1) {
        restart();
        return;
    }
    // Not every command finds something to work on.
    for (int tries = 0; tries < 10 && !commandIsTold(); ++tries) {
        if (QWidget* popup = QApplication::activePopupWidget())
            actInPopup(popup);
        else
            act();
    }
    settle();
    keepMailAtHome();
    m_world.statements.clear();
    if (m_world.endStatus < 0) return;
    commandDoes(u"ended with %1"_s.arg(m_world.endStatus));
    ++ends;
    // The error has kept the work before its box.
    const std::vector<Unsaved> works = unsavedWork();
    if (m_world.endStatus == 1) expectOffered(works);
    m_world.stop();
    m_world.endStatus = -1;
}

// What every window would lose if nothing was kept.
std::vector<RandomUser::Unsaved> RandomUser::unsavedWork() {
    std::vector<Unsaved> works;
    for (const WorkKeeper* keeper : m_world.main().findChildren<WorkKeeper*>())
        if (keeper->hasUnsavedWork() && !keeper->content().isEmpty())
            works.push_back({keeper->kind(), keeper->content()});
    return works;
}

void RandomUser::expectOffered(const std::vector<Unsaved>& works) {
    const UnsavedStore store(m_world.folder());
    for (const Unsaved& work : works) {
        const auto entries = store.list(work.kind);
        if (entries.empty() || UnsavedStore::load(entries[0].path) != work.content)
            lost = u"work of the kind %1 is not offered"_s.arg(int(work.kind));
    }
}

// Ends the program by closing its window and starts it again.
void RandomUser::restart() {
    commandDoes(u"restart"_s);
    // What is being typed belongs to the work.
    for (SheetView* grid : m_world.main().findChildren<SheetView*>()) grid->commitEdit();
    settle();
    const std::vector<Unsaved> works = unsavedWork();
    m_world.stop();
    m_world.endStatus = -1;
    m_world.start();
    m_world.main().resize(1240, 760);
    expectOffered(works);
    settle();
    m_world.statements.clear();
}

void RandomUser::act() {
    using Command = void (RandomUser::*)();
    static const QList<std::pair<int, Command>> commands = {
        {8, &RandomUser::openModule},   {34, &RandomUser::clickSomething},
        {24, &RandomUser::clickGrid},   {12, &RandomUser::typeSomewhere},
        {8, &RandomUser::pickFromList}, {8, &RandomUser::useKeys},
        {5, &RandomUser::useMenuBar},   {5, &RandomUser::handleWindow},
        {3, &RandomUser::drag},         {1, &RandomUser::changeLook},
        {1, &RandomUser::changePrinter}};
    if (m_chance.once(400)) {
        leave();
        return;
    }
    int weights = 0;
    for (const auto& [weight, command] : commands) weights += weight;
    int at = m_chance.below(weights);
    for (const auto& [weight, command] : commands) {
        if (at < weight) {
            (this->*command)();
            return;
        }
        at -= weight;
    }
}

// --- What is there ------------------------------------------------------------------------------

template <class T>
QList<T*> RandomUser::shown(QWidget* in) {
    QList<T*> found;
    if (!in) return found;
    for (T* widget : in->findChildren<T*>())
        if (widget->isVisible() && widget->isEnabled() && !widget->visibleRegion().isEmpty())
            found += widget;
    return found;
}

// Mostly the module in front, sometimes another, which comes to the front then.
QWidget* RandomUser::someWindow() {
    QList<QWidget*> windows;
    QMdiArea* area = m_world.main().mdiArea;
    for (QMdiSubWindow* window : area->subWindowList())
        if (window->isVisible()) windows += window;
    if (windows.isEmpty()) {
        openModule();
        return nullptr;
    }
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->isVisible() && top != &m_world.main()) windows += top;
    QWidget* front = area->activeSubWindow();
    QWidget* window = front && !m_chance.once(6) ? front : m_chance.of(windows);
    if (auto* inner = qobject_cast<QMdiSubWindow*>(window))
        area->setActiveSubWindow(inner);
    else
        window->raise();
    settle();
    return window;
}

// The mouse reaches what lies in front at the place.
void RandomUser::clickAt(QWidget* widget, const QPoint& place) {
    QWidget* window = widget->window();
    const QPoint there = widget->mapTo(window, place);
    QWidget* target = window->childAt(there);
    if (!target) target = window;
    const QPoint at = target->mapFrom(window, there);
    const Qt::KeyboardModifiers modifiers =
        m_chance.once(12) ? m_chance.of(QList{Qt::ControlModifier, Qt::ShiftModifier})
                          : Qt::NoModifier;
    commandDoes(u"at %1,%2 of %3"_s.arg(at.x()).arg(at.y()).arg(nameOf(target)));
    if (m_chance.once(8)) {
        const QPointer<QWidget> alive(target);
        press(target, Qt::RightButton, at);
        if (!alive) return;
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, target->mapToGlobal(at), modifiers);
        QCoreApplication::sendEvent(target, &event);
    } else if (m_chance.once(10)) {
        QTest::mouseDClick(target, Qt::LeftButton, modifiers, at);
    } else {
        press(target, Qt::LeftButton, at, modifiers);
    }
}

void RandomUser::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* target = QApplication::focusWidget();
    if (!target) target = QApplication::activeWindow();
    if (!target) target = &m_world.main();
    const QPointer<QWidget> alive(target);
    QTest::sendKeyEvent(
        QTest::Press, target, key,
        QTest::keyToAscii(key) ? QString(QLatin1Char(QTest::keyToAscii(key))) : QString(),
        modifiers);
    if (alive) QTest::sendKeyEvent(QTest::Release, target, key, QString(), modifiers);
}

void RandomUser::typeText(const QString& text) {
    // What is long comes out of the clipboard.
    if (text.size() > 60) {
        QApplication::clipboard()->setText(text);
        key(Qt::Key_V, Qt::ControlModifier);
        return;
    }
    for (const char32_t c : text.toUcs4()) {
        QWidget* target = QApplication::focusWidget();
        if (!target || QApplication::activePopupWidget() || m_world.endStatus >= 0) return;
        QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString::fromUcs4(&c, 1),
                            Qt::NoModifier);
    }
}

// --- Commands -----------------------------------------------------------------------------------

void RandomUser::openModule() {
    const QList<QToolButton*> buttons = shown<QToolButton>(m_world.main().picButHold);
    if (buttons.isEmpty()) return;
    QToolButton* button = m_chance.of(buttons);
    commandDoes(u"module "_s + nameOf(button));
    press(button, Qt::LeftButton, button->rect().center());
}

void RandomUser::clickSomething() {
    QWidget* window = someWindow();
    QList<QWidget*> targets;
    for (QAbstractButton* button : shown<QAbstractButton>(window)) targets << button << button;
    for (QLabel* label : shown<QLabel>(window)) targets += label;
    if (m_chance.once(10)) targets = shown<QWidget>(window);
    if (targets.isEmpty()) return;
    QWidget* target = m_chance.of(targets);
    commandDoes(u"click in "_s + nameOf(window));
    clickAt(target, m_chance.once(3)
                        ? QPoint(m_chance.below(target->width()), m_chance.below(target->height()))
                        : target->rect().center());
}

void RandomUser::clickGrid() {
    QWidget* window = someWindow();
    const QList<SheetView*> grids = shown<SheetView>(window);
    if (grids.isEmpty()) return;
    const QPointer<SheetView> grid = m_chance.of(grids);
    const int rows = m_chance.once(8) ? grid->MaxRows() : std::min(grid->MaxRows(), 40);
    const int row = m_chance.below(rows + 1);
    const int col = m_chance.below(grid->MaxCols() + 1);
    commandDoes(u"cell %1,%2 of %3"_s.arg(col).arg(row).arg(nameOf(grid)));
    if (row > 0 && col > 0) grid->scrollTo(grid->model()->index(row - 1, col - 1));
    const QRect place = grid->cellRect(col, row);
    if (!place.isValid() || !grid->rect().contains(place.center())) return;
    clickAt(grid, place.center());
    if (!grid || QApplication::activePopupWidget() || m_world.endStatus >= 0) return;
    if (m_chance.once(2)) return;
    const QString text = m_chance.text();
    commandDoes(u"types "_s + text.left(40));
    if (m_chance.once(2)) key(Qt::Key_F2);
    typeText(text);
    if (m_world.endStatus < 0)
        key(m_chance.of(QList{Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape,
                              Qt::Key_Up, Qt::Key_Down}));
}

void RandomUser::typeSomewhere() {
    QWidget* window = someWindow();
    QList<QWidget*> fields;
    for (QLineEdit* field : shown<QLineEdit>(window)) fields += field;
    for (QTextEdit* field : shown<QTextEdit>(window)) fields += field;
    for (QPlainTextEdit* field : shown<QPlainTextEdit>(window)) fields += field;
    if (fields.isEmpty()) return;
    const QPointer<QWidget> field = m_chance.of(fields);
    const bool isServer = field->objectName().endsWith(u"Server"_s);
    const QString text = isServer ? m_chance.of(mailServers()) : m_chance.text();
    commandDoes(u"types into %1: %2"_s.arg(nameOf(field), text.left(40)));
    press(field, Qt::LeftButton, QPoint(5, 8));
    if (field) field->setFocus();
    if (isServer || m_chance.once(2)) key(Qt::Key_A, Qt::ControlModifier);
    typeText(text);
    if (m_chance.once(4) && m_world.endStatus < 0)
        key(m_chance.of(QList{Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape}));
}

void RandomUser::pickFromList() {
    QWidget* window = someWindow();
    QList<QWidget*> lists;
    for (QComboBox* box : shown<QComboBox>(window)) lists += box;
    for (QSlider* slider : shown<QSlider>(window)) lists += slider;
    for (QAbstractItemView* view : shown<QAbstractItemView>(window))
        if (!qobject_cast<SheetView*>(view)) lists += view;
    if (lists.isEmpty()) return;
    QWidget* list = m_chance.of(lists);
    commandDoes(u"picks from "_s + nameOf(list));
    auto* view = qobject_cast<QAbstractItemView*>(list);
    if (view && view->model() && view->model()->rowCount() > 0) {
        const QModelIndex index =
            view->model()->index(m_chance.below(view->model()->rowCount()), 0);
        view->scrollTo(index);
        const QPoint place = view->visualRect(index).center();
        if (view->viewport()->rect().contains(place)) clickAt(view->viewport(), place);
    } else if (m_chance.once(2)) {
        clickAt(list, QPoint(list->width() - 8, list->height() / 2));
    } else {
        list->setFocus();
        key(m_chance.of(QList{Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Home, Qt::Key_Right,
                              Qt::Key_Left, Qt::Key_PageDown}));
    }
}

void RandomUser::useKeys() {
    struct Stroke {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    };
    static const QList<Stroke> strokes = {{Qt::Key_Tab, {}},
                                          {Qt::Key_Backtab, Qt::ShiftModifier},
                                          {Qt::Key_Escape, {}},
                                          {Qt::Key_Return, {}},
                                          {Qt::Key_Space, {}},
                                          {Qt::Key_Up, {}},
                                          {Qt::Key_Down, {}},
                                          {Qt::Key_Left, {}},
                                          {Qt::Key_Right, {}},
                                          {Qt::Key_PageDown, {}},
                                          {Qt::Key_Home, {}},
                                          {Qt::Key_End, Qt::ControlModifier},
                                          {Qt::Key_F2, {}},
                                          {Qt::Key_Delete, {}},
                                          {Qt::Key_Menu, {}},
                                          {Qt::Key_Return, Qt::ControlModifier},
                                          {Qt::Key_A, Qt::ControlModifier},
                                          {Qt::Key_C, Qt::ControlModifier},
                                          {Qt::Key_X, Qt::ControlModifier},
                                          {Qt::Key_V, Qt::ControlModifier},
                                          {Qt::Key_Z, Qt::ControlModifier},
                                          {Qt::Key_Y, Qt::ControlModifier},
                                          {Qt::Key_F, Qt::ControlModifier},
                                          {Qt::Key_Tab, Qt::ControlModifier}};
    if (!someWindow()) return;
    for (int more = m_chance.below(5); more >= 0; --more) {
        Stroke stroke = m_chance.of(strokes);
        if (m_chance.once(6)) stroke = {Qt::Key(Qt::Key_A + m_chance.below(26)), Qt::AltModifier};
        commandDoes(
            u"key %1+%2"_s.arg(stroke.modifiers.toInt(), 0, 16).arg(int(stroke.key), 0, 16));
        key(stroke.key, stroke.modifiers);
        settle();
        if (m_world.endStatus >= 0 || QApplication::activePopupWidget()) return;
    }
}

void RandomUser::useMenuBar() {
    QWidget* window = someWindow();
    const QList<QMenuBar*> bars = shown<QMenuBar>(window);
    if (bars.isEmpty()) return;
    QMenuBar* bar = m_chance.of(bars);
    QAction* menu = m_chance.of(bar->actions());
    commandDoes(u"menu "_s + menu->text());
    QTest::mousePress(bar, Qt::LeftButton, {}, bar->actionGeometry(menu).center());
    if (QApplication::activePopupWidget()) actInPopup(QApplication::activePopupWidget());
}

void RandomUser::actInPopup(QWidget* popup) {
    commandDoes(u"in "_s + nameOf(popup));
    if (m_chance.once(6)) {
        QTest::keyClick(popup, Qt::Key_Escape);
        return;
    }
    if (auto* menu = qobject_cast<QMenu*>(popup)) {
        QList<QAction*> actions;
        for (QAction* action : menu->actions())
            if (action->isEnabled() && action->isVisible() && !action->isSeparator())
                actions += action;
        if (actions.isEmpty()) {
            menu->close();
            return;
        }
        QAction* action = m_chance.of(actions);
        commandDoes(action->text());
        press(menu, Qt::LeftButton, menu->actionGeometry(action).center());
        return;
    }
    QList<QWidget*> targets = shown<QWidget>(popup);
    for (QAbstractItemView* view : shown<QAbstractItemView>(popup))
        for (int more = 0; more < 4; ++more) targets += view->viewport();
    QWidget* target = targets.isEmpty() ? popup : m_chance.of(targets);
    press(target, Qt::LeftButton,
          {m_chance.below(target->width()), m_chance.below(target->height())});
}

void RandomUser::handleWindow() {
    const QPointer<QWidget> window = someWindow();
    const int what = m_chance.below(8);
    commandDoes(u"window %1 %2"_s.arg(what).arg(nameOf(window)));
    if (!window || what == 0) {
        m_world.main().resize(300 + m_chance.below(1400), 200 + m_chance.below(900));
    } else if (what < 4) {
        window->close();
    } else if (what == 4) {
        window->resize(50 + m_chance.below(1200), 30 + m_chance.below(800));
    } else if (what == 5) {
        window->move(m_chance.below(600) - 100, m_chance.below(400) - 50);
    } else if (what == 6) {
        window->setWindowState(m_chance.of(QList{Qt::WindowMaximized, Qt::WindowMinimized}));
    } else {
        window->showNormal();
    }
}

void RandomUser::drag() {
    QWidget* window = someWindow();
    const QList<QWidget*> targets = shown<QWidget>(window);
    if (targets.isEmpty()) return;
    QPointer<QWidget> target = m_chance.of(targets);
    for (QWidget* panel : targets)
        if (panel->inherits("DragPanel") && m_chance.once(2)) target = panel;
    const auto place = [&] {
        return QPoint(m_chance.below(target->width()), m_chance.below(target->height()));
    };
    commandDoes(u"drags in "_s + nameOf(target));
    QTest::mousePress(target, Qt::LeftButton, {}, place());
    for (int more = 0; more < 3 && target; ++more) {
        QTest::mouseMove(target, place() + QPoint(m_chance.below(200) - 100, m_chance.below(60)));
        settle();
    }
    if (target) QTest::mouseRelease(target, Qt::LeftButton, {}, place());
}

void RandomUser::changeLook() {
    m_dark = !m_dark;
    commandDoes(m_dark ? u"dark"_s : u"light"_s);
    qputenv("LORVANITE_THEME", m_dark ? "dark" : "light");
    applyTheme(*qApp);
}

void RandomUser::changePrinter() {
    const QString path = m_chance.of(QStringList{QString(), m_world.path(u"printed.pdf"_s),
                                                 m_world.path(u"missing/printed.pdf"_s)});
    commandDoes(u"prints to "_s + path);
    setPrintTarget(path, m_chance.once(2) ? QPageSize::A4 : QPageSize::Letter);
}

void RandomUser::leave() {
    commandDoes(u"leaves"_s);
    m_world.main().close();
}

// --- What comes up ------------------------------------------------------------------------------

void RandomUser::answer(QWidget* modal) {
    const QPointer<QWidget> alive(modal);
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        commandDoes(u"[%1]"_s.arg(box->text().simplified().left(60)));
        if (box->text().startsWith(u"Run-time error"_s)) {
            const QString error = box->text().simplified();
            ++errorsTold[error.left(120)];
            commandDoes(error.mid(60, 80));
        }
        const QList<QAbstractButton*> buttons = box->buttons();
        QAbstractButton* button = m_answers.of(buttons);
        // An empty database leaves little to do.
        if (box->windowTitle() == u"WARNING!"_s && !m_answers.once(20))
            button = box->button(QMessageBox::No);
        const bool escapes = m_answers.once(5);
        QTimer::singleShot(0, box, [alive, button, escapes] {
            if (!alive) return;
            if (escapes)
                QTest::keyClick(alive, Qt::Key_Escape);
            else
                button->click();
        });
        return;
    }
    commandDoes(u"[%1]"_s.arg(nameOf(modal)));
    if (modal->inherits("QFileDialog")) {
        QTimer::singleShot(0, modal, [this, alive] {
            if (alive) answerFileDialog(alive);
        });
        return;
    }
    QTimer::singleShot(0, modal, [alive] {
        if (alive) alive->close();
    });
}

// A dialog that does not take what it is given is cancelled in the end.
void RandomUser::answerFileDialog(QWidget* modal) {
    const QPointer<QWidget> dialog(modal);
    auto* edit = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
    const int way = ++m_answered > 3 ? 0 : m_answers.below(6);
    if (way == 0) {
        QMetaObject::invokeMethod(dialog, "reject");
        return;
    }
    if (way > 1) edit->setText(m_answers.file(m_world.folder()));
    commandDoes(edit->text().section(u'/', -2).left(60));
    QMetaObject::invokeMethod(dialog, "accept");
    if (dialog && dialog->isVisible() && QApplication::activeModalWidget() == dialog)
        QMetaObject::invokeMethod(dialog, "reject");
}

// --- Mail ---------------------------------------------------------------------------------------

// Only servers on the loopback, of which none takes a letter.
QStringList RandomUser::mailServers() const {
    return {u"127.0.0.1:9"_s, u"localhost:9"_s,     m_deafServer,   u"smtps://127.0.0.1:9"_s,
            QString(),        u"127.0.0.1:99999"_s, u"127.0.0.1:"_s};
}

void RandomUser::keepMailAtHome() {
    if (!frmEmail::isLoaded()) return;
    frmEmail& window = frmEmail::instance();
    for (QLineEdit* field : {window.txtServer, window.txtPopServer})
        if (!mailServers().contains(field->text())) field->setText(mailServers().first());
}

// --- Meanwhile ----------------------------------------------------------------------------------

// Inside a command that waits: in a menu that is left open, or while a mail is on its way.
void RandomUser::actMeanwhile() {
    QWidget* popup = QApplication::activePopupWidget();
    const bool waits = popup && popup == m_popup;
    m_popup = popup;
    if (!m_world.isRunning() || QApplication::activeModalWidget()) return;
    if (waits) actInPopup(popup);
    if (popup || !frmEmail::isLoaded() || !frmEmail::instance().poSendMail.isSending()) return;
    commandDoes(u"during the send:"_s);
    if (m_chance.once(10))
        handleWindow();
    else
        clickSomething();
    keepMailAtHome();
}
