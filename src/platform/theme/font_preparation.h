// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <thread>

// Begins to read the desktop's font settings, which takes about as long as reaching the window
// system does. Called before QApplication is made, and joined before the first text is measured;
// not joinable where there are no such settings.
std::thread readFontSettings();
