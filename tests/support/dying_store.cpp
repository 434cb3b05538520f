// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/dying_store.h"

#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The process dies at its n-th call that changes a file; 0 for never.
int g_callsLeft = 0;

void countDown() {
    if (g_callsLeft > 0 && --g_callsLeft == 0) _exit(9);
}

ssize_t dyingWrite(int file, const void* data, size_t size) {
    countDown();
    return write(file, data, size);
}
ssize_t dyingPwrite(int file, const void* data, size_t size, off_t at) {
    countDown();
    return pwrite(file, data, size, at);
}
int dyingTruncate(int file, off_t size) {
    countDown();
    return ftruncate(file, size);
}
int dyingUnlink(const char* path) {
    countDown();
    return unlink(path);
}

void letStoreDie() {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    const struct {
        const char* name;
        sqlite3_syscall_ptr call;
    } calls[] = {{"write", reinterpret_cast<sqlite3_syscall_ptr>(dyingWrite)},
                 {"pwrite", reinterpret_cast<sqlite3_syscall_ptr>(dyingPwrite)},
                 {"pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(dyingPwrite)},
                 {"ftruncate", reinterpret_cast<sqlite3_syscall_ptr>(dyingTruncate)},
                 {"unlink", reinterpret_cast<sqlite3_syscall_ptr>(dyingUnlink)}};
    for (const auto& each : calls)
        if (vfs->xGetSystemCall(vfs, each.name)) vfs->xSetSystemCall(vfs, each.name, each.call);
}

}  // namespace

bool survives(int callsLeft, const std::function<void()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        letStoreDie();
        g_callsLeft = callsLeft;
        body();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
