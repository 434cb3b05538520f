// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/sheet_view_editors.h"

#include "core/data/dates.h"
#include "core/grid/sheet_grid_dates.h"
#include "platform/desktop/item_completion.h"
#include "platform/grid_view/sheet_view_paint.h"
#include "platform/theme/theme.h"
#include "platform/theme/theme_paint.h"

#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QFocusEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr int Frame = 2;
constexpr int LineMargin = 2;  // the margin that QLineEdit adds to its own

// A two-digit year is read as one of 1930 to 2029. A cell that shows 2030 shows "30".
std::optional<QDate> dateInCell(const QString& text) {
    auto date = parseDate(text);
    if (date && *date < FirstCellDate) date = date->addYears(100);
    return date;
}

// The text of a date, with the whole year if two digits would be read as another one.
QString unmistakable(const QDate& date) {
    const QString text = formatDate(date);
    return parseDate(text) == date ? text : text.left(6) + QString::number(date.year());
}

QStringList itemsOf(const QString& tabbed) {
    QStringList items = tabbed.split(QLatin1Char('\t'));
    while (!items.isEmpty() && items.last().isEmpty()) items.removeLast();
    return items;
}

// Watches all events of the program while an editor is open: a shortcut, a menu or a button that
// does not take the focus has to find the editor's text in the grid.
class OutsideWatch : public QObject {
public:
    explicit OutsideWatch(SheetDelegate& delegate) : m_delegate(delegate) {}

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool press = event->type() == QEvent::MouseButtonPress && object->isWidgetType();
        if ((press || event->type() == QEvent::Shortcut) && m_delegate.editor() &&
            !m_delegate.owns(object))
            Q_EMIT m_delegate.actedOutside();
        return false;
    }

private:
    SheetDelegate& m_delegate;
};

}  // namespace

// --- Fields ------------------------------------------------------------------------------------

CellLine::CellLine(QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    setAutoFillBackground(true);
    connect(this, &QLineEdit::textChanged, this, &CellLine::grow);
}

void CellLine::setCell(const QRect& cell) {
    m_cell = cell;
    const int padding = cell.width() < 40 ? 2 : 6;
    setTextMargins(std::max(padding - LineMargin, 0), 0, LineMargin, 1);
    grow();
}

void CellLine::grow() {
    if (m_cell.isEmpty()) return;
    const QMargins margins = textMargins();
    const int actionRoom = actions().isEmpty() ? 0 : m_cell.height() + 4;
    const int wanted = fontMetrics().horizontalAdvance(text()) + margins.left() + margins.right() +
                       2 * LineMargin + 2 * Frame + 8 + actionRoom;
    QRect place = m_cell;
    const int room = isRightToLeft() ? place.right() + 1 : parentWidget()->width() - place.left();
    place.setWidth(std::max(place.width(), std::min(wanted, room)));
    if (isRightToLeft()) place.moveRight(m_cell.right());
    setGeometry(place);
}

bool CellLine::event(QEvent* event) {
    const bool types = event->type() == QEvent::KeyPress || event->type() == QEvent::InputMethod;
    if (types && std::exchange(m_continuing, false)) end(false);
    return QLineEdit::event(event);
}

void CellLine::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    paintEdges(painter, rect(), palette().color(QPalette::Highlight), Frame);
}

DateLine::DateLine(bool spin, QWidget* parent) : CellLine(parent), m_spin(spin) {
    QAction* open = addAction(themedIcon(QStringLiteral("scheduling")), TrailingPosition);
    open->setText(QStringLiteral("Calendar"));
    open->setToolTip(QStringLiteral("Pick a day (Alt+Down)"));
    connect(open, &QAction::triggered, this, &DateLine::openCalendar);
}

void DateLine::openCalendar() {
    auto* popup = new QFrame(this, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setFrameShape(QFrame::StyledPanel);
    auto* layout = new QVBoxLayout(popup);
    layout->setContentsMargins(1, 1, 1, 1);
    auto* calendar = new QCalendarWidget(popup);
    calendar->setGridVisible(false);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setDateRange(FirstCellDate, LastCellDate);
    calendar->setSelectedDate(dateInCell(text()).value_or(today()));
    layout->addWidget(calendar);
    const auto pick = [this, popup](QDate day) {
        setText(unmistakable(day));
        popup->close();
        Q_EMIT picked();
    };
    connect(calendar, &QCalendarWidget::clicked, this, pick);
    connect(calendar, &QCalendarWidget::activated, this, pick);
    popup->adjustSize();
    popup->move(mapToGlobal(QPoint(0, height())));
    popup->show();
    calendar->setFocus(Qt::PopupFocusReason);
}

void DateLine::step(int days) {
    const auto date = dateInCell(text());
    const QDate next = date ? date->addDays(days) : today();
    setText(unmistakable(std::clamp(next, FirstCellDate, LastCellDate)));
    selectAll();
}

void DateLine::keyPressEvent(QKeyEvent* event) {
    const bool up = event->key() == Qt::Key_Up;
    const bool down = event->key() == Qt::Key_Down;
    if ((down && event->modifiers() & Qt::AltModifier) || event->key() == Qt::Key_F4) {
        openCalendar();
    } else if (m_spin && (up || down)) {
        step(up ? 1 : -1);
    } else {
        CellLine::keyPressEvent(event);
    }
}

void DateLine::wheelEvent(QWheelEvent* event) {
    if (m_spin && event->angleDelta().y() != 0) step(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}

// --- The delegate ------------------------------------------------------------------------------

SheetDelegate::SheetDelegate(const SheetGrid& grid, SheetPainter& painter, QObject* parent)
    : QStyledItemDelegate(parent),
      m_grid(grid),
      m_painter(painter),
      m_watch(std::make_unique<OutsideWatch>(*this)) {}

SheetDelegate::~SheetDelegate() = default;

bool SheetDelegate::owns(const QObject* object) const {
    for (; object && m_editor; object = object->parent()) {
        if (object == m_editor) return true;
    }
    return false;
}

void SheetDelegate::drop() {
    if (auto* combo = qobject_cast<QComboBox*>(m_editor)) combo->showPopup();
    if (auto* line = qobject_cast<DateLine*>(m_editor)) line->openCalendar();
}

void SheetDelegate::forget() {
    m_editor = nullptr;
    QCoreApplication::instance()->removeEventFilter(m_watch.get());
}

// A combo box that loses the focus because it closes emits its choice again.
void SheetDelegate::take(QWidget* editor) {
    if (editor != m_editor) return;
    Q_EMIT commitData(editor);
    if (editor == m_editor) Q_EMIT closeEditor(editor, NoHint);
}

QWidget* SheetDelegate::makeEditor(QWidget* parent, const CellFormat& format) const {
    auto* self = const_cast<SheetDelegate*>(this);
    if (format.kind == CellKind::Combo) {
        auto* combo = new QComboBox(parent);
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        new ItemCompletion(*combo);
        combo->addItems(itemsOf(format.comboList));
        combo->setMaxVisibleItems(std::max(format.comboMaxDrop, 1));
        connect(combo, &QComboBox::activated, self, [self, combo] { self->take(combo); });
        return combo;
    }
    if (format.kind == CellKind::Date) {
        auto* line = new DateLine(format.spin, parent);
        connect(line, &DateLine::picked, self, [self, line] { self->take(line); });
        return line;
    }
    auto* line = new CellLine(parent);
    line->setContinuing(m_continuing);
    return line;
}

QWidget* SheetDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                     const QModelIndex& index) const {
    m_cell = {m_grid.ActiveSheet(), index.column() + 1, index.row() + 1, {}, {}};
    m_cell.before = m_grid.textAt(m_cell.sheet, m_cell.col, m_cell.row);
    const CellFormat format = m_grid.formatAt(m_cell.sheet, m_cell.col, m_cell.row);
    QWidget* editor = makeEditor(parent, format);
    editor->setFont(m_painter.fontOf(format));
    const auto head = [&](int section, Qt::Orientation orientation) {
        return index.model()->headerData(section, orientation, Qt::AccessibleTextRole).toString();
    };
    editor->setAccessibleName(head(index.row(), Qt::Vertical) + QStringLiteral(", ") +
                              head(index.column(), Qt::Horizontal));
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        combo->setCurrentIndex(combo->findText(m_cell.before, Qt::MatchFixedString));
        combo->setEditText(m_cell.before);
        line = combo->lineEdit();
        line->setTextMargins(2, 0, 0, 0);
    } else {
        line->setText(m_cell.before);
        line->setAlignment((format.hAlign == HAlign::Right    ? Qt::AlignRight
                            : format.hAlign == HAlign::Centre ? Qt::AlignHCenter
                                                              : Qt::AlignLeft) |
                           Qt::AlignVCenter);
    }
    line->selectAll();
    m_cell.offered = textOf(editor);
    m_editor = editor;
    QCoreApplication::instance()->installEventFilter(m_watch.get());
    Q_EMIT opened();
    return editor;
}

// What the program writes into the cell meanwhile does not change the user's text.
void SheetDelegate::setEditorData(QWidget*, const QModelIndex&) const {}

void SheetDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex&) const {
    const QString text = textOf(editor);
    if (editor != m_editor || text == m_cell.offered) return;
    m_cell.offered = text;  // so that it is entered only once
    Q_EMIT entered(EditedCell(m_cell), text);
}

void SheetDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex&) const {
    if (auto* line = qobject_cast<CellLine*>(editor)) {
        line->setCell(option.rect);
    } else {
        editor->setGeometry(option.rect);
    }
}

void SheetDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
    if (editor == m_editor) const_cast<SheetDelegate*>(this)->forget();
    QStyledItemDelegate::destroyEditor(editor, index);
}

QSize SheetDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
    const int row = index.row() + 1;
    const int height = pixelsOfPoints(m_grid.heightOf(m_grid.ActiveSheet(), row));
    return {m_painter.wantedWidth(index.column() + 1, row), height};
}

QString SheetDelegate::textOf(const QWidget* editor) {
    if (const auto* combo = qobject_cast<const QComboBox*>(editor)) return combo->currentText();
    const auto* line = qobject_cast<const QLineEdit*>(editor);
    return line ? line->text() : QString();
}

bool SheetDelegate::takesKey(const QKeyEvent& key) {
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool leaves = enter || key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
    // Of several items that begin with the typed text the user picks one.
    auto* completion = m_editor->findChild<ItemCompletion*>(QString(), Qt::FindDirectChildrenOnly);
    if (leaves && completion && completion->offer()) return true;
    if (enter && !(key.modifiers() & ~Qt::KeypadModifier)) {
        const QPointer<QWidget> editor = m_editor;
        Q_EMIT commitData(editor);
        if (editor) Q_EMIT closeEditor(editor, SubmitModelCache);
        return true;
    }
    return takesArrow(key);
}

bool SheetDelegate::takesArrow(const QKeyEvent& key) {
    const auto* line = qobject_cast<CellLine*>(m_editor);
    if (!m_typed || !line || key.modifiers() & ~Qt::KeypadModifier) return false;
    const auto* date = qobject_cast<const DateLine*>(line);
    const bool spins = date && date->spins();
    switch (key.key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            return m_arrows(key.key() == Qt::Key_Right ? 1 : -1, 0);
        case Qt::Key_Up:
        case Qt::Key_Down:
            return !spins && m_arrows(0, key.key() == Qt::Key_Down ? 1 : -1);
        case Qt::Key_F2:
        case Qt::Key_Home:
        case Qt::Key_End:
            m_typed = false;
            return key.key() == Qt::Key_F2;
        default:
            return false;
    }
}

bool SheetDelegate::eventFilter(QObject* object, QEvent* event) {
    if (object != m_editor) return QStyledItemDelegate::eventFilter(object, event);
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress) m_typed = false;
    if (type == QEvent::KeyPress && takesKey(*static_cast<QKeyEvent*>(event))) return true;
    if (type == QEvent::FocusOut) {
        const QWidget* popup = QApplication::activePopupWidget();
        if (popup && !owns(popup)) Q_EMIT actedOutside();
    }
    return QStyledItemDelegate::eventFilter(object, event);
}
