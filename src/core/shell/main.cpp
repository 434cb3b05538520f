// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// lorvanite             starts the program
// lorvanite --help      prints what the program is and how to start it
// lorvanite --version   prints its version
#include "core/shell/program.h"

#include <QLatin1String>

#include <cstdio>

namespace {

constexpr const char* Help =
    "Usage: lorvanite [--help | --version]\n"
    "\n"
    "Lorvanite helps the person who leads the music of a worship service. It keeps the\n"
    "songs, plans sets and the team's weeks, and writes and transposes chord charts.\n"
    "\n"
    "Without an option the program starts. Its guide opens with the question mark.\n"
    "\n"
    "  --help     print this text and exit\n"
    "  --version  print the version and exit\n";

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const QLatin1String word(argv[i]);
        if (word == QLatin1String("--help")) {
            std::fputs(Help, stdout);
            return 0;
        }
        if (word == QLatin1String("--version")) {
            std::printf("Lorvanite %d.%d.%d\n", LORVANITE_VERSION_MAJOR, LORVANITE_VERSION_MINOR,
                        LORVANITE_VERSION_REVISION);
            return 0;
        }
    }
    return runProgram(argc, argv);
}
