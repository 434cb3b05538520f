// Two ways of doing the same, timed in turns, and whether their ratio holds.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

// Seconds of the quickest of some runs of each, taken in turns.
template <class A, class B>
std::pair<double, double> quickest(A first, B second) {
    const auto time = [](auto& run) {
        const auto start = std::chrono::steady_clock::now();
        run();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    std::pair<double, double> best{1e9, 1e9};
    for (int i = 0; i < 9; ++i) {
        best.first = std::min(best.first, time(first));
        best.second = std::min(best.second, time(second));
    }
    return best;
}

inline bool holds(const char* what, std::pair<double, double> seconds, double most) {
    const double ratio = seconds.first / seconds.second;
    std::printf("%-34s %7.2f ms against %7.2f ms: ratio %.2f, at most %.2f: %s\n", what,
                seconds.first * 1000, seconds.second * 1000, ratio, most,
                ratio <= most ? "holds" : "FAILS");
    return ratio <= most;
}
