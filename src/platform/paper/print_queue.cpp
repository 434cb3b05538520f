// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/paper/print_queue.h"

#include "core/data/run_time_library.h"

#include <cstring>

// The part of libcups' C interface (version 2) that is used here.
extern "C" {
struct cups_option_t {
    char* name;
    char* value;
};

struct cups_dest_t {
    char* name;
    char* instance;
    int is_default;
    int num_options;
    cups_option_t* options;
};
}

namespace {

constexpr int LastSuccess = 0x00FF;        // of the codes of an answer
constexpr const char* StateStopped = "5";  // IPP_PSTATE_STOPPED

struct CupsLibrary {
    int (*lastError)();
    const char* (*lastErrorString)();
    cups_dest_t* (*getNamedDest)(void* connection, const char* name, const char* instance);
    const char* (*getOption)(const char* name, int count, cups_option_t* options);
    void (*freeDests)(int count, cups_dest_t* printers);
};

// It is loaded only if Qt prints with it. Null without.
const CupsLibrary* cupsLibrary() {
    static const std::optional<CupsLibrary> loaded = []() -> std::optional<CupsLibrary> {
        QLibrary library(QStringLiteral("cups"), 2);
        CupsLibrary cups{};
        if (library.load() && resolve(library, "cupsLastError", cups.lastError) &&
            resolve(library, "cupsLastErrorString", cups.lastErrorString) &&
            resolve(library, "cupsGetNamedDest", cups.getNamedDest) &&
            resolve(library, "cupsGetOption", cups.getOption) &&
            resolve(library, "cupsFreeDests", cups.freeDests))
            return cups;
        return std::nullopt;
    }();
    return loaded ? &*loaded : nullptr;
}

}  // namespace

std::optional<QString> refusalOfLastJob() {
    const CupsLibrary* cups = cupsLibrary();
    if (!cups) return std::nullopt;
    // The library keeps the outcome for each thread, and sending the job was the last thing done.
    const int code = cups->lastError();
    if (code >= 0 && code <= LastSuccess) return std::nullopt;
    return QString::fromUtf8(cups->lastErrorString()).trimmed();
}

bool isStopped(const QString& printerName) {
    const CupsLibrary* cups = cupsLibrary();
    if (!cups) return false;
    cups_dest_t* printer = cups->getNamedDest(nullptr, printerName.toUtf8().constData(), nullptr);
    if (!printer) return false;
    const char* state = cups->getOption("printer-state", printer->num_options, printer->options);
    const bool stopped = state && std::strcmp(state, StateStopped) == 0;
    cups->freeDests(1, printer);
    return stopped;
}
