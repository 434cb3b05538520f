// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// All windows, panels and menus of the program, opened one after the other.
#pragma once

#include "support/world.h"

#include <QString>

#include <functional>

// Opens each module window on the sample, with something on view, and each of its panels. Calls
// `look` with its name and the widget that contains its controls, and closes it afterwards. The
// caller sets the size of the main window.
void lookAtEveryWindow(World& world, const std::function<void(const QString&, QWidget*)>& look);
