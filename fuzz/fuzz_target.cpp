// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// One fuzz target: CHECK is the check that it tries. What does not hold ends the process.
#include "checks.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString wrong = CHECK(bytes);
    if (wrong.isEmpty()) return 0;
    std::fprintf(stderr, "%s\n", qPrintable(wrong));
    std::abort();
}
