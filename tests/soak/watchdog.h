// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Keeps the last commands for the moment when something breaks, and breaks off what hangs.
#pragma once

#include <QString>

// Starts a watch over the calling thread. A command that runs longer than `seconds` is named, and
// the process ends with the place where the thread hangs. When the process ends badly, by whatever
// means, the last 50 commands are printed.
void startWatchdog(int seconds);

// The n-th command begins; n is how to come back to it.
void commandBegins(int n);

// What the command turned out to be, for the log; may be called several times.
void commandDoes(const QString& what);

bool commandIsTold();

// The log's last line.
const char* commandDone();

// Nothing is watched any more.
void commandsEnd();

// Prints the last commands.
void printCommands();
