// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Times two ways of doing the same in turns, so that a change of the machine's speed affects both,
// and compares them.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

template <class Run>
double seconds(Run&& run) {
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The medians of some rounds: the seconds of each, and the ratio of the first to the second.
struct Medians {
    double first;
    double second;
    double ratio;
};

template <class A, class B>
Medians mediansOf(int rounds, A& first, B& second) {
    std::vector<double> a;
    std::vector<double> b;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        a.push_back(seconds(first));
        b.push_back(seconds(second));
        ratios.push_back(a.back() / b.back());
    }
    return {median(a), median(b), median(ratios)};
}

// Seconds of the quickest of some runs of each.
template <class A, class B>
std::pair<double, double> quickest(A first, B second) {
    std::pair<double, double> best{1e9, 1e9};
    for (int i = 0; i < 9; ++i) {
        best.first = std::min(best.first, seconds(first));
        best.second = std::min(best.second, seconds(second));
    }
    return best;
}

// Prints the ratio of two times. Returns false if it is above `most`.
[[nodiscard]] inline bool holds(const char* what, std::pair<double, double> times, double most) {
    const double ratio = times.first / times.second;
    std::printf("%-34s %7.2f ms against %7.2f ms: ratio %.2f, at most %.2f: %s\n", what,
                times.first * 1000, times.second * 1000, ratio, most,
                ratio <= most ? "holds" : "FAILS");
    return ratio <= most;
}
