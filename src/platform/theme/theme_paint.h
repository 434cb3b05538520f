// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Painting of the theme's controls.
#pragma once

#include <QStyleOption>

#include <functional>

class QPainter;

// Paints the arrow of a combo box or spin box, centred in a rectangle.
void paintChevron(QPainter& painter, const QRect& place, const QColor& colour, bool up = false);

// Paints the lines within the edges of a rectangle. `width` is that of a line.
void paintEdges(QPainter& painter, const QRect& rect, const QColor& colour, int width = 1);

// Whether a button is the main one of its window.
bool isPrimary(const QWidget* widget);

// Paints an element of the theme. Returns false if the theme does not paint this element.
bool paintThemePrimitive(QStyle::PrimitiveElement element, const QStyleOption& option,
                         QPainter& painter, const QWidget* widget);

void paintTab(const QStyleOptionTab& tab, QPainter& painter);
void paintComboBox(const QStyleOptionComboBox& box, const QRect& arrow, QPainter& painter);
void paintSpinBox(const QStyleOptionSpinBox& box, const QRect& up, const QRect& down,
                  QPainter& painter);
void paintScrollBar(const QStyleOptionSlider& bar, const QRect& slider, QPainter& painter);
// `handle` is the rectangle of the knob.
void paintSlider(const QStyleOptionSlider& slider, const QRect& handle, QPainter& painter);

// `part` gives the rectangle of a button, empty if the bar does not have it.
void paintTitleBar(const QStyleOptionTitleBar& bar,
                   const std::function<QRect(QStyle::SubControl)>& part, QPainter& painter);
