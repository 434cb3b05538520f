// All windows, panels and menus of the program, opened one after the other.
#pragma once

#include "support/world.h"

#include <QString>

#include <functional>

// Opens each module window over the sample, with something on view, and each of its panels, and
// hands it to `look`: its name, and the widget whose controls stand there. Windows are closed
// behind the look; the size of the main window is the caller's.
void lookAtEveryWindow(World& world, const std::function<void(const QString&, QWidget*)>& look);
