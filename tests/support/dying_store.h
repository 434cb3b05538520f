// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A process that dies while it changes the database.
#pragma once

#include <functional>

// Runs `body` in a separate process that dies at SQLite's n-th call that changes a file, or never
// if `callsLeft` is 0. Returns whether `body` has returned; an exception counts as dying.
bool survives(int callsLeft, const std::function<void()>& body);
