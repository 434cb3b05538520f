// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program as a separate process, with work in all windows.
#pragma once

#include <QString>

// Runs the program on a folder. Once its main window is up the user opens all windows and types
// into each; then "worked" is printed. `end` says what comes next: "wait" nothing, "close" the
// closing of the main window, "close windows" that of each window and a kill, "session" the end of
// the session and a kill, "full disk" a disk without room for what is typed after the work was kept
// and then SIGTERM, "error" a run-time error. "idle" does no work and prints "called" whenever the
// main window is brought to the front; "start" is the same, and takes the folder from another
// computer; "status" prints what the status bar says first. Every box is printed and closed by its
// default button. Returns the program's status.
int workAndEnd(int argc, char** argv, const QString& folder, const QString& end);
