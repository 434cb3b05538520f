// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/theme/font_settings.h"

#include "core/data/run_time_library.h"

#include <clocale>

std::thread readFontSettings() {
    // Qt has loaded it already.
    QLibrary fontconfig(QStringLiteral("fontconfig"), 1);
    int (*init)() = nullptr;
    if (!fontconfig.load() || !resolve(fontconfig, "FcInit", init)) return {};
    // The settings contain numbers, whose decimal separator must not change while they are read.
    std::setlocale(LC_ALL, "");
    return std::thread([init] { init(); });
}
