// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A window with a grid to edit, and keys for the widget that has the focus.
#pragma once

#include "platform/grid_view/sheet_view_steps.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>

// The open editor of a grid, if it has this class; else null.
template <class Editor>
Editor* editorOf(SheetView& view) {
    const auto editors =
        view.viewport()->findChildren<Editor*>(QString(), Qt::FindDirectChildrenOnly);
    for (Editor* editor : editors) {
        if (editor->isVisible()) return editor;
    }
    return nullptr;
}

// Each key goes to the widget that has the focus at that moment.
inline void typeText(const QString& text) {
    for (const QChar c : text) {
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(c),
                            {});
    }
}

inline void pressKey(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, keys);
}

// A window with a grid that is replaced by typing, a line edit and buttons.
struct EditWindow : QWidget {
    SheetView view{this};
    QLineEdit line{this};
    QPushButton save{QStringLiteral("&Save"), this};
    QToolButton quiet{this};
    QString saved;  // the text of cell (1, 1) when a button was pressed
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
        fillGrid(view, 3, 4);
        view.EditModeReplace(true);
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
