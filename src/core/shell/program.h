// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program from its start to its end.
#pragma once

// Shows the main window and runs until it is closed. Returns the status for main() to return; if
// the start fails, the process ends with status 1.
int runProgram(int argc, char** argv);
