// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/daily_copy.h"

#include "core/data/run_time_error.h"

#include <QElapsedTimer>

namespace {

constexpr int ProgressPause = 100;  // milliseconds

}  // namespace

DailyCopy::DailyCopy(const QString& folder, QObject* parent) : QObject(parent), m_folder(folder) {}

DailyCopy::~DailyCopy() {
    cancel();
    waitForEnd();
}

void DailyCopy::start(const QDate& day) {
    if (isRunning()) return;
    m_cancelled = false;
    m_thread = std::thread([this, day] { run(day); });
}

void DailyCopy::waitForEnd() {
    if (m_thread.joinable()) m_thread.join();
}

// In the thread.
void DailyCopy::run(const QDate& day) {
    QElapsedTimer sinceProgress;
    const CopyStep step = [&](const QString& what) {
        if (!sinceProgress.isValid() || sinceProgress.elapsed() >= ProgressPause) {
            sinceProgress.start();
            m_calls.post([this, what] { Q_EMIT progressed(what); });
        }
        return !m_cancelled;
    };
    // The thread has ended when its end is reported.
    const auto report = [this](auto emitResult) {
        m_calls.post([this, emitResult] {
            waitForEnd();
            emitResult();
        });
    };
    try {
        const CopyOutcome outcome = makeDailyCopy(m_folder, day, step);
        report([this, outcome] { Q_EMIT finished(outcome); });
    } catch (const RunTimeError& error) {
        report([this, why = error.description()] { Q_EMIT failed(why); });
    } catch (const std::exception& error) {
        report([this, why = QString::fromLocal8Bit(error.what())] { Q_EMIT failed(why); });
    }
}
