// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/theme/theme_style.h"

#include "platform/theme/theme.h"
#include "platform/theme/theme_paint.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QEvent>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QStyleOption>
#include <QTextCharFormat>

#include <algorithm>

namespace {

constexpr int ControlHeight = 28;
constexpr int ScrollBarWidth = 12;
constexpr int ScrollSliderLength = 28;
constexpr int TitleBarHeight = 30;
constexpr int WindowFrame = 4;  // wide enough to drag; the visible line is one pixel
constexpr int IndicatorSize = 16;
constexpr int SpinWidth = 20;
constexpr int SliderKnob = 17;
constexpr int ItemMargins = 20;  // left and right of an item of a list

// A box or slider that is only passed by when the wheel scrolls what is around it.
bool ignoresWheel(const QWidget* widget) {
    return (qobject_cast<const QComboBox*>(widget) || qobject_cast<const QSlider*>(widget)) &&
           !widget->hasFocus();
}

// The width that the list of a box needs for its items.
int widthOfItems(const QComboBox& box) {
    int widest = 0;
    for (int i = 0; i < box.count(); ++i)
        widest = std::max(widest, box.fontMetrics().horizontalAdvance(box.itemText(i)));
    return widest + ItemMargins + (box.count() > box.maxVisibleItems() ? ScrollBarWidth : 0);
}

bool isBar(const QObject* widget) { return widget->objectName() == QLatin1String("picButHold"); }

QRect scrollPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    const bool across = bar.orientation == Qt::Horizontal;
    const int room = across ? bar.rect.width() : bar.rect.height();
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    int length = room;
    if (range > 0) {
        length = int(qint64(bar.pageStep) * room / (range + bar.pageStep));
        length = std::clamp(length, std::min(ScrollSliderLength, room), room);
    }
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      room - length, bar.upsideDown);
    const auto stretch = [&](int from, int to) {
        return across ? QRect(from, 0, to - from, bar.rect.height())
                      : QRect(0, from, bar.rect.width(), to - from);
    };
    QRect rect;
    switch (part) {
        case QStyle::SC_ScrollBarGroove:
            rect = stretch(0, room);
            break;
        case QStyle::SC_ScrollBarSlider:
            rect = stretch(start, start + length);
            break;
        case QStyle::SC_ScrollBarSubPage:
            rect = stretch(0, start);
            break;
        case QStyle::SC_ScrollBarAddPage:
            rect = stretch(start + length, room);
            break;
        default:
            break;  // no arrows
    }
    return QStyle::visualRect(bar.direction, bar.rect, rect.translated(bar.rect.topLeft()));
}

// Gives a calendar a plain header and no red days.
void dressCalendar(QCalendarWidget& calendar) {
    const ThemeColours& colours = themeColours(QApplication::palette());
    QTextCharFormat plain;
    plain.setForeground(colours.text);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        calendar.setWeekdayTextFormat(day, plain);
    }
    auto* bar = calendar.findChild<QWidget*>(QStringLiteral("qt_calendar_navigationbar"));
    if (!bar) return;
    QPalette palette;
    palette.setColor(QPalette::Highlight, colours.head);
    palette.setColor(QPalette::HighlightedText, colours.text);
    bar->setPalette(palette);
}

}  // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ThemeStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (isBar(widget)) {
        // The application's palette changes before those of the widgets.
        QPalette palette;
        palette.setColor(QPalette::Window, themeColours(QApplication::palette()).bar);
        widget->setPalette(palette);
        widget->setAutoFillBackground(true);
        widget->installEventFilter(this);
    }
    if (qobject_cast<QAbstractScrollArea*>(widget)) widget->installEventFilter(this);
    if (ignoresWheel(widget)) {
        // The wheel does not give them the focus.
        if (widget->focusPolicy() == Qt::WheelFocus) widget->setFocusPolicy(Qt::StrongFocus);
        widget->installEventFilter(this);
    }
    if (auto* calendar = qobject_cast<QCalendarWidget*>(widget)) dressCalendar(*calendar);
    if (qobject_cast<QPushButton*>(widget) && isPrimary(widget)) {
        QFont font = widget->font();
        font.setWeight(QFont::DemiBold);
        widget->setFont(font);
    }
}

bool ThemeStyle::eventFilter(QObject* object, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget && event->type() == QEvent::Paint && isBar(widget)) {
        QPainter painter(widget);
        painter.fillRect(0, widget->height() - 1, widget->width(), 1,
                         themeColours(widget->palette()).line);
    }
    if (widget && event->type() == QEvent::Wheel && ignoresWheel(widget)) {
        event->ignore();  // it goes on to what is around the box
        return true;
    }
    // The frame around a list or text shows whether it has the focus.
    const bool focus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (widget && focus) widget->update();
    return QProxyStyle::eventFilter(object, event);
}

int ThemeStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
    switch (metric) {
        case PM_ScrollBarExtent:
            return ScrollBarWidth;
        case PM_SliderLength:
        case PM_SliderThickness:
        case PM_SliderControlThickness:
            return SliderKnob;
        case PM_ScrollBarSliderMin:
            return ScrollSliderLength;
        case PM_TitleBarHeight:
            return TitleBarHeight;
        case PM_MdiSubWindowFrameWidth:
            return WindowFrame;
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return IndicatorSize;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        case PM_DefaultFrameWidth:
            // Lists and texts have a frame of one pixel.
            return qobject_cast<const QAbstractScrollArea*>(widget)
                       ? 1
                       : QProxyStyle::pixelMetric(metric, option, widget);
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ThemeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
    switch (hint) {
        case SH_ComboBox_Popup:
            return 0;  // the list drops below its box
        case SH_WindowFrame_Mask:
            return 0;
        case SH_TitleBar_NoBorder:
            return 1;
        case SH_ScrollBar_LeftClickAbsolutePosition:
            return 0;
        case SH_EtchDisabledText:
            return 0;
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QSize ThemeStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
    QSize wanted = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
        case CT_PushButton:
            wanted.setHeight(std::max(wanted.height(), ControlHeight));
            wanted.rwidth() += 8;
            break;
        case CT_ComboBox:
        case CT_SpinBox:
            wanted.setHeight(std::max(wanted.height(), ControlHeight));
            break;
        case CT_LineEdit:
            if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option)) {
                if (frame->lineWidth > 0)
                    wanted.setHeight(std::max(wanted.height(), ControlHeight));
            }
            break;
        default:
            break;
    }
    return wanted;
}

QRect ThemeStyle::subElementRect(SubElement element, const QStyleOption* option,
                                 const QWidget* widget) const {
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    if (element != SE_LineEditContents) return rect;
    const auto* line = qstyleoption_cast<const QStyleOptionFrame*>(option);
    return line && line->lineWidth > 0 ? rect.adjusted(4, 0, -4, 0) : rect;
}

QIcon ThemeStyle::standardIcon(StandardPixmap picture, const QStyleOption* option,
                               const QWidget* widget) const {
    switch (picture) {
        case SP_MessageBoxInformation:
            return themedIcon(QStringLiteral("about"));
        case SP_MessageBoxWarning:
            return themedIcon(QStringLiteral("warning"));
        case SP_MessageBoxCritical:
            return themedIcon(QStringLiteral("critical"));
        case SP_ArrowLeft:
            return themedIcon(QStringLiteral("previous"));
        case SP_ArrowRight:
            return themedIcon(QStringLiteral("next"));
        default:
            return QProxyStyle::standardIcon(picture, option, widget);
    }
}

QRect ThemeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                 SubControl part, const QWidget* widget) const {
    if (control == CC_ScrollBar) {
        if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return scrollPart(*bar, part);
    }
    if (control == CC_ComboBox && part == SC_ComboBoxListBoxPopup) {
        QRect list = QProxyStyle::subControlRect(control, option, part, widget);
        if (const auto* box = qobject_cast<const QComboBox*>(widget))
            list.setWidth(std::max(list.width(), widthOfItems(*box)));
        return list;
    }
    if (control == CC_SpinBox && (part == SC_SpinBoxUp || part == SC_SpinBoxDown)) {
        const QRect rect = option->rect;
        const int half = rect.height() / 2;
        const QRect place(rect.right() - SpinWidth, rect.top() + (part == SC_SpinBoxUp ? 0 : half),
                          SpinWidth, part == SC_SpinBoxUp ? half : rect.height() - half);
        return visualRect(option->direction, rect, place);
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    if (!paintThemePrimitive(element, *option, *painter, widget))
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ThemeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    if (element == CE_PushButton) {
        // The bevel shows the focus.
        drawControl(CE_PushButtonBevel, option, painter, widget);
        drawControl(CE_PushButtonLabel, option, painter, widget);
        return;
    }
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (button && element == CE_PushButtonLabel && isPrimary(widget) &&
        button->state & State_Enabled) {
        QStyleOptionButton label = *button;
        label.palette.setColor(QPalette::ButtonText, themeColours(option->palette).accentText);
        QProxyStyle::drawControl(element, &label, painter, widget);
        return;
    }
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    if (tab && element == CE_TabBarTabShape)
        paintTab(*tab, *painter);
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    const auto part = [&](SubControl which) {
        return proxy()->subControlRect(control, option, which, widget);
    };
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
        paintComboBox(*combo, part(SC_ComboBoxArrow), *painter);
    } else if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option)) {
        paintSpinBox(*spin, part(SC_SpinBoxUp), part(SC_SpinBoxDown), *painter);
    } else if (const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option)) {
        const auto shown = [&](SubControl which) {
            return bar->subControls & which ? part(which) : QRect();
        };
        paintTitleBar(*bar, shown, *painter);
    } else if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
               slider && control == CC_ScrollBar) {
        paintScrollBar(*slider, part(SC_ScrollBarSlider), *painter);
    } else if (slider && control == CC_Slider) {
        paintSlider(*slider, part(SC_SliderHandle), *painter);
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}
