// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Libraries that are loaded when they are first needed: most sessions need none of them, and each
// would cost every start time and memory. They stay loaded until the process ends.
#pragma once

#include <QLibrary>

// Finds a function of a loaded library. Returns false and sets null if the library lacks it.
template <typename Function>
bool resolve(QLibrary& library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(library.resolve(name));
    return function != nullptr;
}
