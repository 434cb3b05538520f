// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Times two ways of doing the same in turns, so that a change of the machine's speed affects both,
// and compares them.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

template <class Run>
double seconds(Run&& run) {
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The processor time of this process, in seconds. Other programs do not lengthen it.
inline double processorSeconds() { return double(std::clock()) / CLOCKS_PER_SEC; }

inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The seconds of two ways, and the ratio of the first to the second in processor time; 0 if that
// was not measured.
struct Times {
    double first;
    double second;
    double processorRatio = 0;
};

// The medians of some rounds, and that of their ratios.
struct Medians : Times {
    double ratio;
};

template <class A, class B>
Medians mediansOf(int rounds, A& first, B& second) {
    std::vector<double> a;
    std::vector<double> b;
    std::vector<double> ratios;
    std::vector<double> processorRatios;
    for (int round = 0; round < rounds; ++round) {
        const double start = processorSeconds();
        a.push_back(seconds(first));
        const double middle = processorSeconds();
        b.push_back(seconds(second));
        ratios.push_back(a.back() / b.back());
        processorRatios.push_back((middle - start) / (processorSeconds() - middle));
    }
    return {{median(a), median(b), median(processorRatios)}, median(ratios)};
}

// The quickest of some runs of each.
template <class A, class B>
Times quickest(A first, B second) {
    Times best{1e9, 1e9};
    Times processor{1e9, 1e9};
    for (int i = 0; i < 9; ++i) {
        const double start = processorSeconds();
        best.first = std::min(best.first, seconds(first));
        const double middle = processorSeconds();
        best.second = std::min(best.second, seconds(second));
        processor.first = std::min(processor.first, middle - start);
        processor.second = std::min(processor.second, processorSeconds() - middle);
    }
    best.processorRatio = processor.first / processor.second;
    return best;
}

// Prints the ratio of two times. Returns false if it is above `most`.
[[nodiscard]] inline bool holds(const char* what, const Times& times, double most) {
    const double ratio = times.first / times.second;
    std::printf("%-34s %7.2f ms against %7.2f ms: ratio %.2f, at most %.2f: %s\n", what,
                times.first * 1000, times.second * 1000, ratio, most,
                ratio <= most ? "holds" : "FAILS");
    if (times.processorRatio > 0)
        std::printf("%-34s ratio %.2f in processor time\n", "", times.processorRatio);
    return ratio <= most;
}
