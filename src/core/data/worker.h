// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Work in a thread beside the windows.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

// Runs tasks one after the other in one separate thread, which is created with the first task. A
// task must not raise anything.
class Worker {
public:
    Worker() = default;

    // Waits until all tasks are done.
    ~Worker();

    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    // Returns at once.
    void start(std::function<void()> task);

    // Returns when every task that was started is done.
    void waitForDone();

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_tasks;  // the first one is being done
    bool m_ends = false;
    std::thread m_thread;
};
