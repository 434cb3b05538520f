// The program's look.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>

class QApplication;

// The colours of the look.
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

// Gives the application its style, palette and font, light or dark as the desktop is; the variable
// LORVANITE_THEME ("light" or "dark") decides for itself. Follows the desktop while it runs.
void applyTheme(QApplication& app);

// The colours of the light and of the dark look.
const ThemeColours& themeColours(bool dark);

// The colours that go with a palette, light or dark as its window is.
const ThemeColours& themeColours(const QPalette& palette);

// A look's palette.
QPalette themePalette(const ThemeColours& colours);

// How well one colour stands out on another, 1 to 21; text needs 4.5.
double contrast(const QColor& a, const QColor& b);

// A colour between two: `share` 0 gives the first, 1 the second.
QColor blend(const QColor& under, const QColor& over, double share);

// A picture of the program's own set, by its file's name without ".svg", in the accent colour of
// the palette in force at each painting. An empty icon where the set has no such picture.
QIcon themedIcon(const QString& name);
