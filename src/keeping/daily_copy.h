// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The copy of every day, made in a thread.
#pragma once

#include "core/data/thread_calls.h"
#include "keeping/copies.h"

#include <QDate>
#include <QObject>
#include <QString>

#include <atomic>
#include <thread>

// Makes the copy of a day beside the running program. All signals come in this object's thread,
// through its event loop, one of finished and failed for each start.
class DailyCopy : public QObject {
    Q_OBJECT

public:
    explicit DailyCopy(const QString& folder, QObject* parent = nullptr);

    // Cancels, and waits until the thread has ended.
    ~DailyCopy() override;

    // Starts the copy of a day. Nothing happens while one is being made.
    void start(const QDate& day);

    // Ends the work at its next step, with CopyOutcome::Cancelled; nothing of the copy is left.
    void cancel() { m_cancelled = true; }

    bool isRunning() const { return m_thread.joinable(); }

Q_SIGNALS:
    // What is copied now, at most ten times a second.
    void progressed(const QString& what);
    void finished(CopyOutcome outcome);

    // The copy could not be made; `why` is a sentence for the user.
    void failed(const QString& why);

private:
    void run(const QDate& day);
    void waitForEnd();

    QString m_folder;
    ThreadCalls m_calls;
    std::thread m_thread;
    std::atomic<bool> m_cancelled = false;
};
