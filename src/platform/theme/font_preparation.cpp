// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/theme/font_preparation.h"

#include "core/data/run_time_library.h"

#include <QFontDatabase>

#include <clocale>

FontPreparation::FontPreparation() {
    // Qt has loaded it already.
    QLibrary fontconfig(QStringLiteral("fontconfig"), 1);
    int (*init)() = nullptr;
    if (!fontconfig.load() || !resolve(fontconfig, "FcInit", init)) return;
    // The settings contain numbers, whose decimal separator must not change while they are read.
    std::setlocale(LC_ALL, "");
    m_thread = std::thread([init] { init(); });
}

FontPreparation::~FontPreparation() { wait(); }

void FontPreparation::listFamilies() {
    wait();
    m_thread = std::thread([] { QFontDatabase::families(); });
}

void FontPreparation::wait() {
    if (m_thread.joinable()) m_thread.join();
}
