// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/status_line.h"

#include <QTimer>

namespace {

constexpr int ShowEvery = 50;  // milliseconds

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QStatusBar(parent) { m_sinceShown.start(); }

void StatusLine::SimpleText(const QString& text) {
    m_text = text;
    // A text that goes is gone at once.
    if (text.isEmpty() || m_sinceShown.elapsed() >= ShowEvery) {
        apply();
        repaint();
        return;
    }
    if (m_pending) return;
    m_pending = true;
    QTimer::singleShot(ShowEvery, this, &StatusLine::apply);
}

void StatusLine::apply() {
    m_pending = false;
    m_sinceShown.restart();
    showMessage(m_text);
    setAccessibleName(m_text);  // for screen readers
}
