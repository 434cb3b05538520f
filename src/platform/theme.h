// The program's look.
#pragma once

#include <QIcon>

class QApplication;

// Gives the application its style, palette and font, light or dark as the desktop is.
void applyTheme(QApplication& app);

// A picture of the program's own set, in the accent colour of the theme in force.
QIcon themedIcon(const QString& name);
