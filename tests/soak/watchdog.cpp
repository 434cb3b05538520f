// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "soak/watchdog.h"

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <pthread.h>
#include <thread>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>

// The place where a thread hangs is shown as that of any other crash.
extern "C" const char* __asan_default_options() { return "handle_abort=1"; }
#endif

namespace {

using Clock = std::chrono::steady_clock;
using Line = std::array<char, 240>;

constexpr size_t Kept = 50;

std::array<Line, Kept> g_lines{};
std::atomic<int> g_command{0};
std::atomic<Clock::rep> g_begun{0};
pthread_t g_watched;

Line& line(int n) { return g_lines[size_t(n) % Kept]; }

void watch(int seconds) {
    for (;;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        const Clock::rep begun = g_begun;
        const Clock::duration running = Clock::now().time_since_epoch() - Clock::duration(begun);
        if (begun == 0 || running < std::chrono::seconds(seconds)) continue;
        std::fprintf(stderr, "hangs: %s\n", line(g_command).data());
        pthread_kill(g_watched, SIGABRT);
        std::this_thread::sleep_for(std::chrono::minutes(1));
    }
}

#if !defined(__SANITIZE_ADDRESS__)
void onSignal(int number) {
    printCommands();
    std::signal(number, SIG_DFL);
    std::raise(number);
}
#endif

}  // namespace

void startWatchdog(int seconds) {
    g_watched = pthread_self();
    g_begun = Clock::now().time_since_epoch().count();
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(printCommands);
#else
    for (const int number : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE}) std::signal(number, onSignal);
#endif
    std::thread(watch, seconds).detach();
}

void commandBegins(int n) {
    g_begun = Clock::now().time_since_epoch().count();
    g_command = n;
    std::snprintf(line(n).data(), line(n).size(), "%d:", n);
}

void commandDoes(const QString& what) {
    Line& text = line(g_command);
    const size_t length = std::strlen(text.data());
    std::snprintf(text.data() + length, text.size() - length, " %s", qPrintable(what));
}

bool commandIsTold() { return std::strchr(line(g_command).data(), ' '); }

const char* commandDone() { return line(g_command).data(); }

void commandsEnd() { g_begun = 0; }

void printCommands() {
    for (int n = std::max(0, g_command - int(Kept) + 1); n <= g_command; ++n)
        std::fprintf(stderr, "%s\n", line(n).data());
}
