// A process that saves sets until it is killed.
#pragma once

#include <QString>

// Runs the program on a folder and saves the set of 11/22/26 again and again through the set
// window, answering its question with Yes. Each round writes "Round <n>" into every row and prints
// a line when the save is done. Never returns.
[[noreturn]] void saveForEver(const QString& folder);
