// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Texts that are too long for their place.
#pragma once

#include <QString>

class QFontMetrics;
class QPoint;
class QWidget;

// Shortens a text to a width in pixels. In the path of a file the folders are cut, so that the name
// of the file is seen; other texts are cut at their end.
QString elidedText(const QFontMetrics& metrics, const QString& text, int width);

// Shows a whole text as the tool tip of a widget, at a place on the screen. An empty text hides the
// tool tip.
void showWholeText(const QPoint& place, const QString& text, QWidget& widget);
