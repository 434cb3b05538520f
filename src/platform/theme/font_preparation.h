// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <thread>

// Prepares the desktop's fonts in a thread, while the start waits for the window system and for the
// disk. Without it, all that is done when the first text is measured.
class FontPreparation {
public:
    // Begins to read the settings. Make it before QApplication.
    FontPreparation();
    ~FontPreparation();
    FontPreparation(const FontPreparation&) = delete;
    FontPreparation& operator=(const FontPreparation&) = delete;

    // Begins to list the families. Call it once, after QApplication is made.
    void listFamilies();

    // Waits for what was begun. Call it before the first text is measured.
    void wait();

private:
    std::thread m_thread;
};
