// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/pop_up_list.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

constexpr int MostRows = 12;
constexpr int RowHeight = 26;    // pixels, for the usual font
constexpr int TextMargin = 14;   // pixels, both sides together
constexpr int LeastWidth = 140;  // pixels
constexpr int MostWidth = 320;   // pixels

// Rows as high as those of the grids.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width() + TextMargin, std::max(size.height(), RowHeight)};
    }
};

}  // namespace

PopUpList::PopUpList(QWidget* parent) : QListWidget(parent) {
    setItemDelegate(new RowDelegate(this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
}

void PopUpList::popUp(const QPoint& place) {
    m_before = window()->focusWidget();
    fitToItems();
    const QSize room = parentWidget()->size();
    move(std::clamp(place.x(), 0, std::max(0, room.width() - width())),
         std::clamp(place.y(), 0, std::max(0, room.height() - height())));
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
}

void PopUpList::dismiss() {
    if (m_before && hasFocus()) m_before->setFocus();
    hide();
}

void PopUpList::fitToItems() {
    const int frame = 2 * frameWidth();
    const int rowHeight = std::max(sizeHintForRow(0), RowHeight);
    const int rows = std::clamp(count(), 1, MostRows);
    const int bar = count() > MostRows ? verticalScrollBar()->sizeHint().width() : 0;
    const int wanted = sizeHintForColumn(0) + bar;
    resize(std::clamp(wanted, LeastWidth, MostWidth) + frame, rows * rowHeight + frame);
}

QString PopUpList::Text() const {
    const QListWidgetItem* item = currentItem();
    return item && item->isSelected() ? item->text() : QString();
}

void PopUpList::mousePressEvent(QMouseEvent* event) {
    if (!itemAt(event->pos())) setCurrentItem(nullptr);
    QListWidget::mousePressEvent(event);
}

void PopUpList::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) Q_EMIT Click();
}

void PopUpList::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            hide();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT Click();
            break;
        default:
            QListWidget::keyPressEvent(event);
    }
}

void PopUpList::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    const Qt::FocusReason why = event->reason();
    if (why != Qt::ActiveWindowFocusReason && why != Qt::PopupFocusReason) hide();
}
