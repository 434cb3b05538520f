// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The strip that offers unsaved work.
#pragma once

#include "keeping/unsaved_store.h"

#include <QFrame>

class ElidedLabel;
class QPushButton;

// One line above a window's content: "An unsaved set of 11/21/26, 2:03 PM is kept", with the
// buttons "Bring Back" and "Discard".
class UnsavedStrip : public QFrame {
    Q_OBJECT

public:
    explicit UnsavedStrip(QWidget* parent = nullptr);

    // Shows an entry's line and announces it to screen readers.
    void offer(const UnsavedEntry& entry);

    QPushButton* cmdBringBack;
    QPushButton* cmdDiscard;

    // The line.
    QString text() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void paintGround();

    ElidedLabel* m_line;
};
