// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A process that wants a folder.
#pragma once

#include <QString>

// Starts as a program on a folder does. Prints "owned" and, once its standard input ends, how often
// it was called to the front; or "called" or "out of reach" at once. Returns the process's status.
int wantFolder(const QString& folder);
