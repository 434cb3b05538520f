// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A process that saves sets until it is killed.
#pragma once

#include <QString>

// Runs the program on a folder and saves the set of 11/22/26 again and again in the set window,
// answering its question with Yes. Each round writes "Round <n>" into every row and prints a line
// when the set is saved. Never returns.
[[noreturn]] void saveForEver(const QString& folder);
