// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/thread_calls.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace {

constexpr auto CallPosted = QEvent::User;

}  // namespace

void ThreadCalls::post(std::function<void()> call) {
    {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(std::move(call));
    }
    QCoreApplication::postEvent(this, new QEvent(CallPosted));
}

// One call for each event: a call may destroy this object.
bool ThreadCalls::event(QEvent* event) {
    if (event->type() != CallPosted) return QObject::event(event);
    std::function<void()> call;
    {
        const std::lock_guard lock(m_mutex);
        call = std::move(m_calls.front());
        m_calls.pop_front();
    }
    call();
    return true;
}
