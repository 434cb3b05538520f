// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/bar_keys.h"

#include "platform/grid_view/sheet_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QSet>
#include <QToolButton>

#include <algorithm>

namespace {

// The letters that a window uses with Alt.
QSet<QString> lettersOf(const QWidget* form) {
    QSet<QString> letters;
    const auto take = [&](const QKeySequence& key) {
        if (!key.isEmpty()) letters.insert(key.toString());
    };
    for (const QWidget* widget : form->findChildren<QWidget*>()) {
        if (!widget->isVisible()) continue;
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            take(button->shortcut());
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (label && label->buddy()) take(QKeySequence::mnemonic(label->text()));
        if (const auto* bar = qobject_cast<const QMenuBar*>(widget))
            for (const QAction* menu : bar->actions()) take(QKeySequence::mnemonic(menu->text()));
    }
    return letters;
}

QKeySequence withAlt(QChar letter) { return QKeySequence(QStringLiteral("Alt+") + letter); }

// Whether a control is one that Tab stops at, and no part of another one.
bool isStop(const QWidget* widget) {
    if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy() || !widget->isVisible() ||
        !widget->isEnabled())
        return false;
    for (const QWidget* up = widget->parentWidget(); up; up = up->parentWidget())
        if (qobject_cast<const SheetView*>(up)) return false;
    return true;
}

// The controls of a window in the order of Tab.
QList<QWidget*> stopsOf(QWidget* form) {
    QList<QWidget*> stops;
    for (QWidget* next = form->nextInFocusChain(); next != form; next = next->nextInFocusChain())
        if (form->isAncestorOf(next) && isStop(next)) stops.append(next);
    return stops;
}

}  // namespace

BarKeys::BarKeys(QMainWindow* window, QWidget* bar, QMdiArea* area)
    : QObject(window), m_bar(bar), m_area(area) {
    const auto onKey = [&](const QKeySequence& key, auto action) {
        connect(new QShortcut(key, window), &QShortcut::activated, this, action);
    };
    onKey(Qt::Key_F10, [this] {
        if (m_bar->isAncestorOf(QApplication::focusWidget()))
            toWindow();
        else
            toBar();
    });
    onKey(Qt::Key_F6, [this] { goRound(true); });
    onKey(Qt::SHIFT | Qt::Key_F6, [this] { goRound(false); });
    connect(qApp, &QApplication::focusChanged, this, &BarKeys::focusMoved);
}

void BarKeys::setLetter(QToolButton* button, QChar letter) {
    auto* key = new QShortcut(withAlt(letter), button);
    connect(key, &QShortcut::activated, button, &QToolButton::click);
    m_letters.push_back({button, letter, key});
    button->installEventFilter(this);
}

void BarKeys::focusMoved(QWidget* from, QWidget* to) {
    if (from && m_bar->isAncestorOf(from)) m_lastOnBar = from;
    // A menu or a box takes the focus for a while; nothing changes in the window below it.
    if (to && to->window() == m_bar->window()) underline();
}

void BarKeys::underline() {
    const QWidget* inUse = form();
    const bool inForm = inUse && inUse->isAncestorOf(QApplication::focusWidget());
    const QSet<QString> taken = inForm ? lettersOf(inUse) : QSet<QString>();
    for (const Letter& item : m_letters) {
        const bool free = !taken.contains(withAlt(item.letter).toString());
        if (item.key->isEnabled() == free && item.button->text().contains(QLatin1Char('&')) == free)
            continue;
        item.key->setEnabled(free);
        QString caption = item.button->text().remove(QLatin1Char('&'));
        if (free) caption.insert(caption.indexOf(item.letter, 0, Qt::CaseInsensitive), u'&');
        // A caption brings its own key with it.
        const QKeySequence shortcut = item.button->shortcut();
        item.button->setText(caption);
        item.button->setShortcut(shortcut);
    }
}

bool BarKeys::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape) {
            toWindow();
            return true;
        }
        for (const Letter& item : m_letters) {
            if (key->modifiers() || key->key() != item.letter.unicode()) continue;
            item.button->click();
            return true;
        }
    }
    return QObject::eventFilter(object, event);
}

QWidget* BarKeys::form() const {
    const QMdiSubWindow* frame = m_area->currentSubWindow();
    return frame && !frame->isHidden() ? frame->widget() : nullptr;
}

void BarKeys::toBar() {
    QWidget* button =
        m_lastOnBar && m_lastOnBar->isVisible() ? m_lastOnBar.data() : m_letters.front().button;
    button->setFocus(Qt::ShortcutFocusReason);
}

void BarKeys::toWindow() {
    QWidget* inUse = form();
    if (!inUse) return;
    const QList<QWidget*> stops = stopsOf(inUse);
    QWidget* last = inUse->focusWidget();
    if (last || !stops.isEmpty()) (last ? last : stops.first())->setFocus(Qt::ShortcutFocusReason);
}

// From a grid to the control beside it, from any other control to the next grid, and from the last
// one to the bar.
void BarKeys::goRound(bool forward) {
    QWidget* focus = QApplication::focusWidget();
    QWidget* inUse = form();
    QList<QWidget*> stops = inUse ? stopsOf(inUse) : QList<QWidget*>();
    if (!forward) std::reverse(stops.begin(), stops.end());
    const auto holdsFocus = [&](const QWidget* stop) {
        return focus && (stop == focus || stop->isAncestorOf(focus) || focus->focusProxy() == stop);
    };
    auto at = std::find_if(stops.begin(), stops.end(), holdsFocus);
    if (at == stops.end() || !inUse->isAncestorOf(focus)) {
        if (!stops.isEmpty())
            stops.first()->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        else
            toBar();
        return;
    }
    const bool fromGrid = qobject_cast<SheetView*>(*at);
    ++at;
    if (!fromGrid)
        at = std::find_if(at, stops.end(),
                          [](QWidget* stop) { return qobject_cast<SheetView*>(stop); });
    if (at == stops.end())
        toBar();
    else
        (*at)->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}
