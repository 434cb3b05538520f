// A process that dies in the middle of the database's work.
#pragma once

#include <functional>

// Runs something in a process of its own, which dies at SQLite's n-th call that changes a file; 0
// for never. True where it came to its end. What it raises counts as its end by failure.
bool survives(int callsLeft, const std::function<void()>& body);
