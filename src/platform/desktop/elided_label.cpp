// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/elided_label.h"

#include "platform/desktop/whole_text.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode) {
    m_mode = mode;
    update();
}

QString ElidedLabel::line() const {
    QString text = this->text();
    for (QChar& c : text)
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QLatin1Char('\t'))
            c = QLatin1Char(' ');
    return text;
}

QString ElidedLabel::shownText() const {
    return fontMetrics().elidedText(line(), m_mode, contentsRect().width());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    const QString whole = line();
    showWholeText(static_cast<QHelpEvent*>(event)->globalPos(),
                  shownText() == whole ? QString() : whole, *this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, contentsRect(), int(alignment()) | Qt::TextSingleLine,
                          palette(), isEnabled(), shownText(), foregroundRole());
}
