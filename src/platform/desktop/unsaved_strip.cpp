// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/unsaved_strip.h"

#include "core/data/dates.h"
#include "platform/desktop/elided_label.h"
#include "platform/theme/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>

namespace {

constexpr int SideMargin = 12;  // pixels
constexpr int TopMargin = 4;

QString nameOfWork(UnsavedKind kind) {
    switch (kind) {
        case UnsavedKind::Set:
            return QStringLiteral("set");
        case UnsavedKind::Schedule:
            return QStringLiteral("schedule");
        case UnsavedKind::Chart:
            return QStringLiteral("chart");
        case UnsavedKind::TransposedChart:
            return QStringLiteral("transposed chart");
        case UnsavedKind::Song:
            return QStringLiteral("song");
        case UnsavedKind::Person:
            return QStringLiteral("person");
        case UnsavedKind::Note:
            return QStringLiteral("note");
        case UnsavedKind::Message:
            break;
    }
    return QStringLiteral("message");
}

}  // namespace

UnsavedStrip::UnsavedStrip(QWidget* parent)
    : QFrame(parent),
      cmdBringBack(new QPushButton(QStringLiteral("Bring Back"))),
      cmdDiscard(new QPushButton(QStringLiteral("Discard"))),
      m_line(new ElidedLabel) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(SideMargin, TopMargin, SideMargin, TopMargin);
    row->addWidget(m_line, 1);
    for (QPushButton* button : {cmdBringBack, cmdDiscard}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAutoFillBackground(true);
    paintGround();
    hide();
}

void UnsavedStrip::paintGround() {
    QPalette colours = palette();
    // The strip's own palette keeps the ground of the theme before.
    colours.setColor(QPalette::Window, themeColours(QApplication::palette()).head);
    if (colours != palette()) setPalette(colours);
}

void UnsavedStrip::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) paintGround();
}

void UnsavedStrip::offer(const UnsavedEntry& entry) {
    const QString line =
        QStringLiteral("An unsaved %1 of %2, %3 is kept")
            .arg(nameOfWork(entry.kind), formatDate(entry.time.date()),
                 QLocale::c().toString(entry.time.time(), QStringLiteral("h:mm AP")));
    m_line->setText(line);
    setAccessibleName(line);
    for (QPushButton* button : {cmdBringBack, cmdDiscard}) button->setAccessibleDescription(line);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QString UnsavedStrip::text() const { return m_line->text(); }
