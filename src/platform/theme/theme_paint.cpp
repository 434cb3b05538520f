// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/theme/theme_paint.h"

#include "platform/theme/theme.h"

#include <QAbstractScrollArea>
#include <QGroupBox>
#include <QPainter>
#include <QPainterPath>
#include <QSlider>
#include <QWidget>

#include <algorithm>

namespace {

constexpr double Radius = 5;
constexpr int TitleMargin = 12;
constexpr double ScrollThickness = 6;
constexpr double GrooveThickness = 4;
constexpr double KnobRadius = 8;

// Switches antialiasing on and restores the painter at the end.
class Soft {
public:
    explicit Soft(QPainter& painter) : m_painter(painter) {
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
    }
    ~Soft() { m_painter.restore(); }
    Soft(const Soft&) = delete;
    Soft& operator=(const Soft&) = delete;

private:
    QPainter& m_painter;
};

void box(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& line,
         double width = 1, double radius = Radius) {
    const Soft soft(painter);
    painter.setPen(QPen(line, width));
    painter.setBrush(fill);
    const double inset = width / 2;
    painter.drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), radius, radius);
}

bool isOn(const QStyleOption& option, QStyle::StateFlag flag) { return option.state & flag; }

// The frame of a field, in the accent colour if it has the focus.
void field(QPainter& painter, const QStyleOption& option, const QColor& ground) {
    const ThemeColours& colours = themeColours(option.palette);
    const bool focus = isOn(option, QStyle::State_HasFocus);
    const bool enabled = isOn(option, QStyle::State_Enabled);
    box(painter, option.rect, enabled ? ground : colours.window,
        focus && enabled ? colours.accent : colours.line, focus && enabled ? 1.7 : 1);
}

void pushButton(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
    const ThemeColours& colours = themeColours(option.palette);
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool down = isOn(option, QStyle::State_Sunken) || isOn(option, QStyle::State_On);
    const bool hover = isOn(option, QStyle::State_MouseOver) && enabled;
    const bool focus = isOn(option, QStyle::State_HasFocus) && enabled;
    const bool strong = isPrimary(widget) && enabled;
    QColor ground = strong ? colours.accent : enabled ? colours.button : colours.window;
    const QColor ink = strong ? colours.accentText : colours.accent;
    if (hover) ground = blend(ground, ink, 0.08);
    if (down) ground = blend(ground, strong ? Qt::black : ink, 0.16);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool byEnter = button && button->features & QStyleOptionButton::DefaultButton && enabled;
    QColor line = strong || byEnter ? colours.accent : colours.line;
    if (focus) line = colours.accent;
    box(painter, option.rect, ground, line, focus ? 1.7 : 1);
    if (focus && strong) {
        box(painter, option.rect.adjusted(2, 2, -2, -2), Qt::transparent, colours.accentText, 1.2,
            Radius - 2);
    }
}

void toolButton(QPainter& painter, const QStyleOption& option) {
    const ThemeColours& colours = themeColours(option.palette);
    const bool raised = isOn(option, QStyle::State_AutoRaise);
    const bool down = isOn(option, QStyle::State_Sunken) || isOn(option, QStyle::State_On);
    const bool hover = isOn(option, QStyle::State_MouseOver) && isOn(option, QStyle::State_Enabled);
    if (raised && !down && !hover) return;
    const QColor ground = raised ? option.palette.color(QPalette::Window) : colours.button;
    box(painter, option.rect,
        blend(ground, colours.accent,
              down    ? 0.2
              : hover ? 0.1
                      : 0),
        raised ? Qt::transparent : colours.line);
}

void checkBox(QPainter& painter, const QStyleOption& option, bool round) {
    const ThemeColours& colours = themeColours(option.palette);
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool on = isOn(option, QStyle::State_On);
    const QColor accent = enabled ? colours.accent : colours.muted;
    QColor ground = on ? accent : enabled ? colours.base : colours.window;
    if (isOn(option, QStyle::State_Sunken)) ground = blend(ground, colours.accent, 0.2);
    const double radius = round ? option.rect.height() / 2.0 : 4;
    // An unchecked box has the contrast of text.
    box(painter, option.rect, ground, on ? accent : colours.muted, 1.2, radius);
    if (!on) return;
    const Soft soft(painter);
    const QRectF rect = option.rect;
    if (round) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colours.accentText);
        painter.drawEllipse(rect.center(), 3, 3);
        return;
    }
    QPainterPath tick(rect.center() + QPointF(-3.6, 0.2));
    tick.lineTo(rect.center() + QPointF(-1.0, 2.8));
    tick.lineTo(rect.center() + QPointF(3.8, -2.8));
    painter.setPen(QPen(colours.accentText, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(tick);
}

void frame(QPainter& painter, const QStyleOption& option, bool showsFocus) {
    const ThemeColours& colours = themeColours(option.palette);
    const bool focus = showsFocus && isOn(option, QStyle::State_HasFocus);
    paintEdges(painter, option.rect, focus ? colours.accent : colours.line);
}

}  // namespace

void paintChevron(QPainter& painter, const QRect& place, const QColor& colour, bool up) {
    const Soft soft(painter);
    const QPointF centre = QRectF(place).center();
    const double dir = up ? -1 : 1;
    QPainterPath path(centre + QPointF(-4, -2 * dir));
    path.lineTo(centre + QPointF(0, 2 * dir));
    path.lineTo(centre + QPointF(4, -2 * dir));
    painter.setPen(QPen(colour, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

// Filled, because on a screen scaled by 150 per cent a pen paints some lines beside the rectangle.
void paintEdges(QPainter& painter, const QRect& rect, const QColor& colour, int width) {
    painter.fillRect(rect.left(), rect.top(), rect.width(), width, colour);
    painter.fillRect(rect.left(), rect.bottom() + 1 - width, rect.width(), width, colour);
    painter.fillRect(rect.left(), rect.top(), width, rect.height(), colour);
    painter.fillRect(rect.right() + 1 - width, rect.top(), width, rect.height(), colour);
}

bool isPrimary(const QWidget* widget) { return widget && widget->property("primary").toBool(); }

bool paintThemePrimitive(QStyle::PrimitiveElement element, const QStyleOption& option,
                         QPainter& painter, const QWidget* widget) {
    const ThemeColours& colours = themeColours(option.palette);
    switch (element) {
        case QStyle::PE_PanelButtonCommand:
            pushButton(painter, option, widget);
            return true;
        case QStyle::PE_PanelButtonTool:
            toolButton(painter, option);
            return true;
        case QStyle::PE_IndicatorCheckBox:
            checkBox(painter, option, false);
            return true;
        case QStyle::PE_IndicatorRadioButton:
            checkBox(painter, option, true);
            return true;
        case QStyle::PE_Frame:
            frame(painter, option, qobject_cast<const QAbstractScrollArea*>(widget) != nullptr);
            return true;
        case QStyle::PE_PanelScrollAreaCorner:
            painter.fillRect(option.rect, colours.window);
            return true;
        case QStyle::PE_FrameMenu:
        case QStyle::PE_FrameTabWidget:
            frame(painter, option, false);
            return true;
        case QStyle::PE_FrameGroupBox: {
            // The title is above the frame.
            const auto* group = qobject_cast<const QGroupBox*>(widget);
            const int above =
                group && !group->title().isEmpty() ? option.fontMetrics.height() + 4 : 0;
            box(painter, option.rect.adjusted(0, above, 0, 0), Qt::transparent, colours.line);
            return true;
        }
        case QStyle::PE_FrameWindow:
            frame(painter, option, false);
            return true;
        case QStyle::PE_PanelStatusBar:
            painter.fillRect(QRect(option.rect.topLeft(), QSize(option.rect.width(), 1)),
                             colours.line);
            return true;
        case QStyle::PE_PanelTipLabel:
            painter.fillRect(option.rect, colours.base);
            frame(painter, option, false);
            return true;
        case QStyle::PE_PanelLineEdit: {
            const auto* line = qstyleoption_cast<const QStyleOptionFrame*>(&option);
            if (line && line->lineWidth > 0) {
                field(painter, option, colours.base);
            } else {
                painter.fillRect(option.rect, option.palette.brush(QPalette::Base));
            }
            return true;
        }
        case QStyle::PE_FrameFocusRect:
            box(painter, option.rect, Qt::transparent, colours.accent, 1.4, 4);
            return true;
        case QStyle::PE_IndicatorArrowDown:
            paintChevron(painter, option.rect, colours.muted);
            return true;
        default:
            return false;
    }
}

void paintTab(const QStyleOptionTab& tab, QPainter& painter) {
    const ThemeColours& colours = themeColours(tab.palette);
    const bool selected = isOn(tab, QStyle::State_Selected);
    const bool south = tab.shape == QTabBar::RoundedSouth || tab.shape == QTabBar::TriangularSouth;
    if (selected) {
        painter.fillRect(tab.rect, colours.base);
        const int y = south ? tab.rect.top() : tab.rect.bottom() - 1;
        painter.fillRect(tab.rect.left(), y, tab.rect.width(), 2, colours.accent);
    } else if (isOn(tab, QStyle::State_MouseOver)) {
        painter.fillRect(tab.rect, blend(colours.window, colours.accent, 0.1));
    }
    if (isOn(tab, QStyle::State_HasFocus)) {
        box(painter, tab.rect.adjusted(3, 4, -3, -4), Qt::transparent, colours.accent, 1.4, 3);
    }
}

void paintComboBox(const QStyleOptionComboBox& combo, const QRect& arrow, QPainter& painter) {
    const ThemeColours& colours = themeColours(combo.palette);
    field(painter, combo, combo.editable ? colours.base : colours.button);
    const bool enabled = isOn(combo, QStyle::State_Enabled);
    paintChevron(painter, arrow, enabled ? colours.muted : colours.line);
}

void paintSpinBox(const QStyleOptionSpinBox& spin, const QRect& up, const QRect& down,
                  QPainter& painter) {
    const ThemeColours& colours = themeColours(spin.palette);
    if (spin.frame) {
        field(painter, spin, colours.base);
    } else {
        painter.fillRect(spin.rect, colours.base);
    }
    const auto ink = [&](QAbstractSpinBox::StepEnabledFlag step) {
        return spin.stepEnabled & step && isOn(spin, QStyle::State_Enabled) ? colours.muted
                                                                            : colours.line;
    };
    paintChevron(painter, up.adjusted(0, 2, 0, 0), ink(QAbstractSpinBox::StepUpEnabled), true);
    paintChevron(painter, down.adjusted(0, 0, 0, -2), ink(QAbstractSpinBox::StepDownEnabled));
}

void paintScrollBar(const QStyleOptionSlider& bar, const QRect& slider, QPainter& painter) {
    const ThemeColours& colours = themeColours(bar.palette);
    painter.fillRect(bar.rect, colours.window);
    if (bar.minimum == bar.maximum) return;
    const bool active = isOn(bar, QStyle::State_Sunken) || isOn(bar, QStyle::State_MouseOver);
    const Soft soft(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blend(colours.line, colours.muted, active ? 0.7 : 0.35));
    const bool across = bar.orientation == Qt::Horizontal;
    QRectF handle = slider;
    const QPointF middle = handle.center();
    if (across) {
        handle.setHeight(ScrollThickness);
        handle.adjust(2, 0, -2, 0);
    } else {
        handle.setWidth(ScrollThickness);
        handle.adjust(0, 2, 0, -2);
    }
    handle.moveCenter(middle);
    const double radius = (across ? handle.height() : handle.width()) / 2;
    painter.drawRoundedRect(handle, radius, radius);
}

void paintSlider(const QStyleOptionSlider& slider, const QRect& handle, QPainter& painter) {
    const ThemeColours& colours = themeColours(slider.palette);
    const bool enabled = isOn(slider, QStyle::State_Enabled);
    const QColor ink = enabled ? colours.accent : colours.muted;
    const bool across = slider.orientation == Qt::Horizontal;
    const QRectF room = slider.rect;
    QPointF knob = QRectF(handle).center();
    if (across) knob.setY(std::max(knob.y(), room.top() + KnobRadius + 1));
    const Soft soft(painter);
    painter.setPen(Qt::NoPen);
    const auto bar = [&](double from, double to, const QColor& colour) {
        painter.setBrush(colour);
        const double middle = across ? knob.y() : knob.x();
        const double low = middle - GrooveThickness / 2;
        painter.drawRoundedRect(across ? QRectF(from, low, to - from, GrooveThickness)
                                       : QRectF(low, from, GrooveThickness, to - from),
                                GrooveThickness / 2, GrooveThickness / 2);
    };
    const double place = across ? knob.x() : knob.y();
    const double start = across ? room.left() : room.top();
    const double end = across ? room.right() : room.bottom();
    bar(start, end, colours.line);
    slider.upsideDown ? bar(place, end, ink) : bar(start, place, ink);
    if (across && slider.tickPosition & QSlider::TicksBelow && slider.tickInterval > 0) {
        painter.setPen(QPen(colours.muted, 1));
        painter.setRenderHint(QPainter::Antialiasing, false);
        const int span = slider.rect.width() - handle.width();
        for (int value = slider.minimum; value <= slider.maximum; value += slider.tickInterval) {
            const int x = slider.rect.left() + handle.width() / 2 +
                          QStyle::sliderPositionFromValue(slider.minimum, slider.maximum, value,
                                                          span, slider.upsideDown);
            const int y = int(knob.y() + KnobRadius) + 3;
            painter.drawLine(x, y, x, y + (value == 0 ? 5 : 3));
        }
        painter.setRenderHint(QPainter::Antialiasing);
    }
    const bool focus = isOn(slider, QStyle::State_HasFocus);
    painter.setPen(QPen(ink, focus ? 2.4 : 1.7));
    painter.setBrush(enabled ? colours.base : colours.window);
    painter.drawEllipse(knob, KnobRadius - 1, KnobRadius - 1);
    if (focus) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        painter.drawEllipse(knob, 3, 3);
    }
}

void paintTitleBar(const QStyleOptionTitleBar& bar,
                   const std::function<QRect(QStyle::SubControl)>& part, QPainter& painter) {
    const ThemeColours& colours = themeColours(bar.palette);
    const bool active = bar.titleBarState & Qt::WindowActive;
    const QColor ground = active ? colours.accent : colours.bar;
    const QColor ink = active ? colours.accentText : colours.muted;
    painter.save();
    painter.fillRect(bar.rect, ground);
    QRect label = part(QStyle::SC_TitleBarLabel);
    label.setLeft(bar.rect.left() + TitleMargin);
    QFont font = painter.font();
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(label, int(Qt::AlignVCenter | Qt::AlignLeft),
                     painter.fontMetrics().elidedText(bar.text, Qt::ElideRight, label.width()));
    painter.setRenderHint(QPainter::Antialiasing);
    const auto button = [&](QStyle::SubControl control, const auto& draw) {
        const QRect place = part(control);
        if (place.isEmpty()) return;
        const bool hover = bar.activeSubControls & control && isOn(bar, QStyle::State_MouseOver);
        const bool down = bar.activeSubControls & control && isOn(bar, QStyle::State_Sunken);
        if (hover || down) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(blend(ground, ink, down ? 0.3 : 0.18));
            painter.drawRoundedRect(place, 4, 4);
        }
        painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        draw(QRectF(place).center());
    };
    const auto line = [&](const QPointF& from, const QPointF& to) { painter.drawLine(from, to); };
    button(QStyle::SC_TitleBarCloseButton, [&](const QPointF& c) {
        line(c - QPointF(4, 4), c + QPointF(4, 4));
        line(c - QPointF(4, -4), c + QPointF(4, -4));
    });
    if (!(bar.titleBarState & Qt::WindowMaximized)) {
        button(QStyle::SC_TitleBarMaxButton, [&](const QPointF& c) {
            painter.drawRoundedRect(QRectF(c - QPointF(4, 4), QSizeF(8, 8)), 1, 1);
        });
    }
    if (!(bar.titleBarState & Qt::WindowMinimized)) {
        button(QStyle::SC_TitleBarMinButton,
               [&](const QPointF& c) { line(c + QPointF(-4, 4), c + QPointF(4, 4)); });
    }
    if (bar.titleBarState & (Qt::WindowMaximized | Qt::WindowMinimized)) {
        button(QStyle::SC_TitleBarNormalButton, [&](const QPointF& c) {
            painter.drawRoundedRect(QRectF(c + QPointF(-4.5, -1.5), QSizeF(6, 6)), 1, 1);
            line(c + QPointF(-1.5, -4.5), c + QPointF(4.5, -4.5));
            line(c + QPointF(4.5, -4.5), c + QPointF(4.5, 1.5));
        });
    }
    painter.restore();
}
