// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Calls from other threads.
#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

// Makes the calls that any thread posts in the thread this object lives in, through its event loop
// and in the order of their posting. Calls that have not been made yet are dropped with the object.
class ThreadCalls : public QObject {
public:
    // From any thread.
    void post(std::function<void()> call);

protected:
    bool event(QEvent* event) override;

private:
    std::mutex m_mutex;
    std::deque<std::function<void()>> m_calls;
};
