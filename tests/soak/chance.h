// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a random user leaves to chance: numbers, texts, file names.
#pragma once

#include <QList>
#include <QString>

#include <random>

class Chance {
public:
    explicit Chance(quint64 seed) : m_seed(seed) {}

    // Starts the n-th command: what a command draws does not depend on those before it.
    void begin(int command);

    // 0 to below `end`, which is at least 1.
    int below(int end);

    // True once in `times`.
    bool once(int times) { return below(times) == 0; }

    template <class T>
    T of(const QList<T>& list) {
        return list[below(int(list.size()))];
    }

    // What a person types, of one line: words, titles, dates, numbers, other scripts, quotes;
    // seldom an apostrophe, which ends the program in many places.
    QString text();

    // A file that a dialog is given: one of the folder, a new one, or one that cannot be.
    QString file(const QString& folder);

private:
    QString word();

    quint64 m_seed;
    std::mt19937_64 m_engine;
};
