// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/drag_panel.h"

#include <QApplication>
#include <QMouseEvent>
#include <QRubberBand>

DragPanel::DragPanel(QWidget* parent) : QFrame(parent) { setCursor(Qt::OpenHandCursor); }

void DragPanel::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() != Qt::LeftButton) return;
    m_pressed = event->globalPosition().toPoint();
    raise();
}

void DragPanel::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    if (!(event->buttons() & Qt::LeftButton)) return;
    const QPoint place = event->globalPosition().toPoint();
    if (!m_outline) {
        const int moved = (place - m_pressed).manhattanLength();
        if (moved < QApplication::startDragDistance()) return;
        m_outline = new QRubberBand(QRubberBand::Rectangle, parentWidget());
    }
    QRect outline(QPoint(), size());
    outline.moveCenter(parentWidget()->mapFromGlobal(place));
    m_outline->setGeometry(outline);
    m_outline->show();
}

void DragPanel::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() != Qt::LeftButton || !m_outline) return;
    delete m_outline;
    m_outline = nullptr;
    Q_EMIT dropped(event->globalPosition().toPoint());
}
