// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/message_box.h"

#include "core/data/texts.h"
#include "platform/desktop/desktop.h"

#include <QGridLayout>
#include <QLabel>
#include <QLayout>
#include <QMainWindow>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>

#include <algorithm>

namespace {

QMessageBox::Icon iconOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Critical:
            return QMessageBox::Critical;
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Information:
            return QMessageBox::Information;
        case BoxIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

constexpr int ScrolledWidth = 520;
constexpr int TitleButtons = 150;  // pixels, with the icon and the margins

// Puts a text that would make the box larger than the screen into a scroll area.
void letTextScroll(QMessageBox& box) {
    const QRect room = box.screen()->availableGeometry();
    const int width = std::min(ScrolledWidth, room.width() - 160);
    const QSize wanted = box.fontMetrics()
                             .boundingRect(0, 0, width, QWIDGETSIZE_MAX,
                                           Qt::AlignLeft | Qt::TextWordWrap, box.text())
                             .size();
    const int mostHeight = room.height() * 3 / 5;
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (!label || (wanted.height() <= mostHeight && wanted.width() <= room.width() / 2)) return;
    auto* scroll = new QScrollArea(&box);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setAccessibleName(QStringLiteral("Message"));
    scroll->setMinimumSize(width, std::min(wanted.height() + 8, mostHeight));
    delete box.layout()->replaceWidget(label, scroll);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    scroll->setWidget(label);
}

// Makes a box wide enough for its title beside the buttons of the title bar.
void makeRoomForTitle(QMessageBox& box) {
    auto* layout = qobject_cast<QGridLayout*>(box.layout());
    QFont font = box.font();
    font.setBold(true);
    const int width = QFontMetrics(font).horizontalAdvance(box.windowTitle()) + TitleButtons;
    const int most = box.screen()->availableGeometry().width() - 2 * TitleButtons;
    if (layout)
        layout->addItem(
            new QSpacerItem(std::min(width, most), 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
            layout->rowCount(), 0, 1, layout->columnCount());
}

}  // namespace

BoxAnswer messageBox(const QString& text, BoxIcon icon, const QString& title, BoxButtons buttons) {
    const QString lines = withUnixLineEnds(text);
    const bool asks = buttons == BoxButtons::YesNo;
    QMessageBox box(iconOf(icon), title, lines,
                    asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, mainWindow());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (asks) {
        // The answer that changes nothing.
        box.setEscapeButton(QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
    }
    letTextScroll(box);
    makeRoomForTitle(box);
    const int answer = box.exec();
    if (!asks) return BoxAnswer::Ok;
    return answer == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}
