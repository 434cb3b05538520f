// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/end_signals.h"

#include "keeping/work_keeper.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array Signals{SIGTERM, SIGINT, SIGHUP};

// A handler may do next to nothing: it writes the signal's number, which the event loop reads.
std::array<int, 2> g_signalPipe{-1, -1};

extern "C" void reportSignal(int number) {
    const auto byte = static_cast<unsigned char>(number);
    // The pipe is empty, so the byte has room.
    [[maybe_unused]] const ssize_t written = write(g_signalPipe[1], &byte, 1);
}

}  // namespace

EndSignals::EndSignals() {
    // Windows come and go with a session's end; the work is kept whatever becomes of it.
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [] { WorkKeeper::keepAllNow(); });
    if (pipe2(g_signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    auto* notifier = new QSocketNotifier(g_signalPipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &EndSignals::endBySignal);
    struct sigaction action {};
    action.sa_handler = reportSignal;
    // A second signal ends a process that hangs.
    action.sa_flags = SA_RESETHAND | SA_RESTART;
    for (const int number : Signals) sigaction(number, &action, nullptr);
}

EndSignals::~EndSignals() {
    for (const int number : Signals) std::signal(number, SIG_DFL);
    for (int& end : g_signalPipe) {
        if (end >= 0) close(end);
        end = -1;
    }
}

void EndSignals::endBySignal() {
    unsigned char number = 0;
    if (read(g_signalPipe[0], &number, 1) != 1) return;
    WorkKeeper::keepAllNow();
    std::signal(number, SIG_DFL);
    std::raise(number);
}
