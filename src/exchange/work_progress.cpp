// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/work_progress.h"

#include "platform/desktop/desktop.h"

#include <QMainWindow>

namespace {

constexpr int MinimumDuration = 400;  // milliseconds
constexpr int ShowEvery = 40;         // milliseconds

}  // namespace

WorkProgress::WorkProgress(const QString& what)
    : m_dialog(what, QStringLiteral("Cancel"), 0, 0, mainWindow()) {
    m_dialog.setWindowTitle(QStringLiteral("Exchange"));
    m_dialog.setWindowModality(Qt::ApplicationModal);
    m_dialog.setMinimumDuration(MinimumDuration);
    m_dialog.setAutoReset(false);
}

bool WorkProgress::operator()(int done, int all) {
    if (m_sinceShown.isValid() && m_sinceShown.elapsed() < ShowEvery) return !wasCancelled();
    m_sinceShown.start();
    m_dialog.setMaximum(all);
    m_dialog.setValue(done);
    return !wasCancelled();
}
