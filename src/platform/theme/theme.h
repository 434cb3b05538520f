// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The appearance of the program.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>

class QApplication;

// The colours of a theme.
struct ThemeColours {
    QColor window;
    QColor base;
    QColor alternate;  // every second row of a list
    QColor text;
    QColor muted;  // captions and hints
    QColor button;
    QColor line;  // frames and grid lines
    QColor accent;
    QColor accentText;  // text on the accent colour
    QColor head;        // head rows of grids
    QColor bar;         // the main window's bar
};

// Sets the style, palette and font of the application, light or dark like the desktop, and follows
// the desktop when it changes. The environment variable LORVANITE_THEME, "light" or "dark",
// overrides the desktop.
void applyTheme(QApplication& app);

// The colours of the light or the dark theme.
const ThemeColours& themeColours(bool dark);

// The colours of the theme that a palette belongs to, light or dark.
const ThemeColours& themeColours(const QPalette& palette);

// The palette of a theme.
QPalette themePalette(const ThemeColours& colours);

// The contrast ratio of two colours, 1 to 21; text needs 4.5.
double contrast(const QColor& a, const QColor& b);

// A colour between two: `share` 0 gives the first, 1 the second.
QColor blend(const QColor& under, const QColor& over, double share);

// An icon of the program by its file name without ".svg", painted in the accent colour of the
// current palette. Null if there is no such icon.
QIcon themedIcon(const QString& name);
