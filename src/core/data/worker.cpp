// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/worker.h"

#include <utility>

Worker::~Worker() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable()) m_thread.join();
}

void Worker::start(std::function<void()> task) {
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_changed.notify_all();
    if (!m_thread.joinable()) m_thread = std::thread([this] { run(); });
}

void Worker::waitForDone() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_tasks.empty(); });
}

// In the thread.
void Worker::run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || !m_tasks.empty(); });
        if (m_tasks.empty()) return;
        std::function<void()> task = std::move(m_tasks.front());
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
        m_tasks.pop_front();
        m_changed.notify_all();
    }
}
