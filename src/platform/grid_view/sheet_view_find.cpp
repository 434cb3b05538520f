// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/sheet_view_find.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

FindBar::FindBar(QWidget* parent)
    : QFrame(parent), m_text(new QLineEdit(this)), m_state(new QLabel(this)) {
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 4, 6, 4);
    layout->setSpacing(6);
    layout->addWidget(m_text);
    layout->addWidget(m_state);
    m_text->setPlaceholderText(QStringLiteral("Find"));
    m_text->setAccessibleName(QStringLiteral("Find in this list"));
    m_text->setMinimumWidth(160);
    m_text->installEventFilter(this);
    setFocusProxy(m_text);
    connect(m_text, &QLineEdit::textEdited, this,
            [this](const QString& text) { Q_EMIT searched(text, 0); });
    hide();
}

void FindBar::openOver(const QRect& area) {
    setFound(true);
    adjustSize();
    follow(area);
    show();
    raise();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void FindBar::follow(const QRect& area) {
    move(std::max(area.left(), area.right() - width() - 3), area.top() + 4);
}

void FindBar::setFound(bool found) {
    m_state->setText(found ? QString() : QStringLiteral("not found"));
    m_state->setVisible(!found);
    const int right = x() + width();
    adjustSize();
    move(right - width(), y());
}

void FindBar::end() {
    hide();
    Q_EMIT closed();
}

bool FindBar::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::FocusOut && isVisible()) {
        const auto* focus = static_cast<QFocusEvent*>(event);
        const bool leaves = focus->reason() == Qt::MouseFocusReason ||
                            focus->reason() == Qt::TabFocusReason ||
                            focus->reason() == Qt::BacktabFocusReason;
        if (leaves) hide();
    }
    // Escape closes this bar, and not the panel that it is in.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        event->accept();
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        switch (key->key()) {
            case Qt::Key_Escape:
                end();
                return true;
            case Qt::Key_Return:
            case Qt::Key_Enter:
            case Qt::Key_F3:
                Q_EMIT searched(m_text->text(), key->modifiers() & Qt::ShiftModifier ? -1 : 1);
                return true;
            case Qt::Key_Down:
                Q_EMIT searched(m_text->text(), 1);
                return true;
            case Qt::Key_Up:
                Q_EMIT searched(m_text->text(), -1);
                return true;
            default:
                break;
        }
    }
    return QFrame::eventFilter(object, event);
}
