// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/other_process.h"

#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int Nobody = 65534;

}  // namespace

int inOtherProcess(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int asOtherUser(const std::function<int()>& body) {
    return inOtherProcess([&] {
        if (geteuid() == 0 && (setgid(Nobody) != 0 || setuid(Nobody) != 0)) return -1;
        return body();
    });
}
