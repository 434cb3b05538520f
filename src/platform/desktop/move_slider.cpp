// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/move_slider.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolTip>

#include <utility>

namespace {

constexpr int Rest = 500;  // milliseconds

}  // namespace

MoveSlider::MoveSlider(QWidget* parent) : QSlider(parent) {
    m_rest.setSingleShot(true);
    m_rest.setInterval(Rest);
    connect(&m_rest, &QTimer::timeout, this, &MoveSlider::report);
    connect(this, &QSlider::actionTriggered, this, &MoveSlider::actionTaken);
    connect(this, &QSlider::sliderMoved, this, &MoveSlider::showPosition);
}

// Comes before the value changes.
void MoveSlider::actionTaken(int action) {
    if (!m_from) m_from = value();
    if (m_held) return;
    if (action == SliderMove && !m_turning) {
        report();
        return;
    }
    QCoreApplication::instance()->installEventFilter(this);
    m_rest.start();
}

void MoveSlider::report() {
    m_rest.stop();
    QCoreApplication::instance()->removeEventFilter(this);
    const auto from = std::exchange(m_from, std::nullopt);
    if (from && *from != sliderPosition()) Q_EMIT moved(sliderPosition());
}

// Another command has to find the move done.
bool MoveSlider::eventFilter(QObject* object, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool acts = type == QEvent::MouseButtonPress || type == QEvent::KeyPress ||
                      type == QEvent::Shortcut || type == QEvent::Close;
    if (acts && object != this && object->isWidgetType() && m_rest.isActive()) report();
    return QSlider::eventFilter(object, event);
}

void MoveSlider::mousePressEvent(QMouseEvent* event) {
    report();
    m_held = true;
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto part = [&](QStyle::SubControl control) {
        return style()->subControlRect(QStyle::CC_Slider, &option, control, this);
    };
    const QRect handle = part(QStyle::SC_SliderHandle);
    const QRect groove = part(QStyle::SC_SliderGroove);
    const QPoint place = event->position().toPoint();
    if (event->button() == Qt::LeftButton && !handle.contains(place)) {
        // The handle is below the mouse then and can be dragged on.
        setSliderPosition(QStyle::sliderValueFromPosition(
            minimum(), maximum(), place.x() - groove.left() - handle.width() / 2,
            groove.width() - handle.width(), option.upsideDown));
    }
    QSlider::mousePressEvent(event);
}

void MoveSlider::mouseReleaseEvent(QMouseEvent* event) {
    QSlider::mouseReleaseEvent(event);
    m_held = false;
    report();
}

void MoveSlider::wheelEvent(QWheelEvent* event) {
    m_turning = true;
    QSlider::wheelEvent(event);
    m_turning = false;
}

void MoveSlider::showPosition(int position) {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    QToolTip::showText(mapToGlobal(handle.topLeft()), QString::number(position), this);
}
