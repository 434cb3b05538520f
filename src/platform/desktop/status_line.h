// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The status bar of the main window.
#pragma once

#include <QElapsedTimer>
#include <QStatusBar>

// Shows one line of text. Setting it is cheap, so a long load may do it for every row: the line is
// repainted at most twenty times a second, even while no events are processed.
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    QString SimpleText() const { return m_text; }
    void SimpleText(const QString& text);

private:
    void apply();

    QString m_text;
    QElapsedTimer m_sinceShown;
    bool m_pending = false;
};
