// The shapes of the theme's controls.
#pragma once

#include <QStyleOption>

#include <functional>

class QPainter;

// The arrow of what opens a list or steps a number, in the middle of its place.
void paintChevron(QPainter& painter, const QRect& place, const QColor& colour, bool up = false);

// Whether a button is the strong one of its window.
bool isPrimary(const QWidget* widget);

// Draws an element in the theme's way; false where it has none of its own.
bool paintThemePrimitive(QStyle::PrimitiveElement element, const QStyleOption& option,
                         QPainter& painter, const QWidget* widget);

void paintTab(const QStyleOptionTab& tab, QPainter& painter);
void paintComboBox(const QStyleOptionComboBox& box, const QRect& arrow, QPainter& painter);
void paintSpinBox(const QStyleOptionSpinBox& box, const QRect& up, const QRect& down,
                  QPainter& painter);
void paintScrollBar(const QStyleOptionSlider& bar, const QRect& slider, QPainter& painter);
// `handle` is the place of what is dragged.
void paintSlider(const QStyleOptionSlider& slider, const QRect& handle, QPainter& painter);

// `part` gives a button's place, an empty one where the bar has none.
void paintTitleBar(const QStyleOptionTitleBar& bar,
                   const std::function<QRect(QStyle::SubControl)>& part, QPainter& painter);
