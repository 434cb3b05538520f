// A window with a grid to edit, and the keys that go to what has the focus.
#pragma once

#include "platform/grid_view/sheet_view_steps.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>

// The editor of a kind that is open in a grid; null where there is none.
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
inline void typeText(const QString& text) {
    for (const QChar c : text) {
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(c),
                            {});
    }
}

inline void pressKey(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, keys);
}

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
        fillGrid(view, 3, 4);
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
