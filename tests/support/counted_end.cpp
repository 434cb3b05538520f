// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Processes that end without exit() write what the coverage build has counted in them, too: these
// functions take the place of the C library's in the test programs. A killed process counts
// nothing.
#include <csignal>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" {

void __gcov_dump();
void __gcov_reset();

// A file of counts that is cut off would spoil the others'.
static void writeCounts() {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    if (before.rlim_max != RLIM_INFINITY) return;
    const rlimit room{RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &room);
    __gcov_dump();
    setrlimit(RLIMIT_FSIZE, &before);
}

void _exit(int status) {
    writeCounts();
    for (;;) syscall(SYS_exit_group, status);
}

void _Exit(int status) { _exit(status); }

int raise(int number) {
    writeCounts();
    __gcov_reset();  // the process may outlive the signal
    return static_cast<int>(syscall(SYS_tgkill, getpid(), gettid(), number));
}

}  // extern "C"
