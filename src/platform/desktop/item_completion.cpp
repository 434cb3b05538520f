// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/item_completion.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

ItemCompletion::ItemCompletion(QComboBox& box) : QObject(&box), m_box(box) {
    box.setCompleter(nullptr);
    connect(&line(), &QLineEdit::textEdited, this, &ItemCompletion::complete);
    connect(&box, &QComboBox::activated, this, [this] { m_typed.clear(); });
    // The box has the focus and hands its keys on.
    box.installEventFilter(this);
    line().installEventFilter(this);
}

QLineEdit& ItemCompletion::line() const { return *m_box.lineEdit(); }

// The different texts of the items that begin with a text, whatever the case.
QStringList ItemCompletion::itemsLike(const QString& typed) const {
    QStringList items;
    for (int i = 0; i < m_box.count(); ++i) {
        const QString item = m_box.itemText(i);
        if (item.startsWith(typed, Qt::CaseInsensitive) && !items.contains(item)) items << item;
    }
    return items;
}

void ItemCompletion::complete(const QString& typed) {
    m_typed = typed;
    m_offered.clear();
    if (m_removing || typed.isEmpty() || line().cursorPosition() < typed.size()) return;
    const QStringList items = itemsLike(typed);
    const auto same = std::find_if(items.begin(), items.end(), [&](const QString& text) {
        return text.compare(typed, Qt::CaseInsensitive) == 0;
    });
    if (same == items.end() && items.size() != 1) return;
    const QString item = same == items.end() ? items.first() : *same;
    m_typed.clear();
    line().setText(item);
    // The text cursor stays where the user types on.
    line().setSelection(int(item.size()), int(typed.size() - item.size()));
}

bool ItemCompletion::offer() {
    if (m_typed.isEmpty() || m_typed != line().text() || m_offered == m_typed) return false;
    const QStringList items = itemsLike(m_typed);
    if (items.size() < 2) return false;
    m_offered = m_typed;
    m_box.showPopup();
    m_box.view()->setCurrentIndex(
        m_box.model()->index(m_box.findText(items.first(), Qt::MatchFixedString), 0));
    return true;
}

bool ItemCompletion::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(object, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    m_removing = key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete ||
                 key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Cut);
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (enter && offer()) return true;
    if (enter && line().hasSelectedText()) line().end(false);
    return QObject::eventFilter(object, event);
}
