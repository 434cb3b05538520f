// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/form.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "keeping/work_keeper.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace {

constexpr int TopInTwips = 500;

}  // namespace

// The frame of a module window. When it closes, the window is no longer the current instance; Qt
// deletes both later.
class FormFrame : public QMdiSubWindow {
public:
    explicit FormFrame(FormBase* form) : m_form(form) {
        setWidget(form);
        layout()->setSpacing(0);
        setAttribute(Qt::WA_DeleteOnClose);
        const QList<QKeySequence> closing = QKeySequence::keyBindings(QKeySequence::Close);
        for (QAction* action : systemMenu()->actions())
            if (action->shortcuts() == closing) action->setShortcuts({});
        for (const QKeySequence& key : closing)
            connect(new QShortcut(key, this), &QShortcut::activated, form,
                    [form] { form->closeByKey(); });
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        QMdiSubWindow::closeEvent(event);
        if (!event->isAccepted()) return;
        m_form->keepWork();
        m_form->released();
        clearStatusTextOf(m_form);
    }

private:
    FormBase* m_form;
};

void atEdge(OnFailure onFailure, const std::function<void()>& body) {
    try {
        body();
    } catch (const RunTimeError& error) {
        // The box may stay for long, or its end may never come.
        if (onFailure == OnFailure::EndsProgram) WorkKeeper::keepAllNow();
        setMousePointer(MousePointer::Arrow);
        messageBox(QStringLiteral("Run-time error '%1':\r\r%2")
                       .arg(QString::number(error.number()), error.description()),
                   BoxIcon::Critical);
        // Deliberate: behaviour 5.
        if (onFailure == OnFailure::EndsProgram) endProcess(1);
    }
}

void addKey(QAbstractButton* button, QKeySequence::StandardKey key) {
    auto* shortcut = new QShortcut(key, button);
    QObject::connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
    const QString what =
        button->toolTip().isEmpty() ? button->text().remove(QLatin1Char('&')) : button->toolTip();
    button->setToolTip(
        QStringLiteral("%1 (%2)").arg(what, shortcut->key().toString(QKeySequence::NativeText)));
}

FormBase::FormBase() = default;

FormBase::~FormBase() = default;

QMdiSubWindow* FormBase::frame() {
    if (m_frame) return m_frame;
    m_frame = new FormFrame(this);
    m_frame->setWindowIcon(windowIcon());
    if (formArea()) formArea()->addSubWindow(m_frame);
    m_frame->resize(m_frame->sizeHint());
    for (QWidget* strip : std::exchange(m_strips, {})) showStrip(strip, true);
    return m_frame;
}

void FormBase::showStrip(QWidget* strip, bool on) {
    const bool isOn = m_strips.contains(strip);
    if (on == isOn) return;
    if (on)
        m_strips.append(strip);
    else
        m_strips.removeOne(strip);
    strip->setVisible(on && m_frame);
    if (!m_frame) return;
    auto* rows = static_cast<QBoxLayout*>(m_frame->layout());
    if (on)
        rows->insertWidget(int(m_strips.size()) - 1, strip);
    else
        rows->removeWidget(strip);
    strip->setVisible(on);
    if (m_frame->isMaximized() || m_frame->isMinimized()) return;
    const int height = strip->sizeHint().height();
    m_frame->resize(m_frame->width(), m_frame->height() + (on ? height : -height));
    keepInside();
}

bool FormBase::keepWork() {
    bool isKept = true;
    for (WorkKeeper* keeper : findChildren<WorkKeeper*>()) isKept = keeper->keepNow() && isKept;
    return isKept;
}

void FormBase::Show() {
    // A maximised window makes the next one maximised; a minimised one has to come back by itself.
    if (frame()->isMinimized())
        m_frame->showNormal();
    else
        m_frame->show();
    show();
    if (formArea()) formArea()->setActiveSubWindow(m_frame);
    // A window whose width is fixed is not made as large as the one before it.
    if (m_frame->isMaximized() && m_frame->minimumWidth() == m_frame->maximumWidth())
        m_frame->showNormal();
    m_frame->raise();
    keepInside();
    // The keyboard focus goes to the control that had it last, or to the first one.
    if (isAncestorOf(QApplication::focusWidget())) return;
    if (focusWidget())
        focusWidget()->setFocus();
    else
        focusNextChild();
}

void FormBase::centre() {
    if (!mainWindow()) return;
    // A maximised window fills the room and has no other place.
    if (frame()->isMaximized()) return;
    frame()->move((mainWindow()->width() - frame()->width()) / 2, px(TopInTwips));
    keepInside();
}

void FormBase::keepInside() {
    QMdiArea* area = formArea();
    if (!area || !area->isVisible() || m_frame->isMaximized() || m_frame->isMinimized()) return;
    const QSize room = area->viewport()->size();
    const QSize size = m_frame->size().boundedTo(room).expandedTo(m_frame->minimumSizeHint());
    if (size != m_frame->size()) m_frame->resize(size);
    const auto inside = [](int place, int length, int end) {
        return std::max(std::min(place, end - length), 0);
    };
    m_frame->move(inside(m_frame->x(), m_frame->width(), room.width()),
                  inside(m_frame->y(), m_frame->height(), room.height()));
}

void FormBase::watchWork() {
    for (WorkKeeper* keeper : findChildren<WorkKeeper*>())
        connect(keeper, &WorkKeeper::unsavedWorkChanged, this, [this] { showTitle(); });
}

void FormBase::nameFile(const QString& path) {
    m_file = nameOfFile(path);
    showTitle();
}

void FormBase::showTitle() {
    if (m_title.isEmpty()) m_title = windowTitle();
    const QList<WorkKeeper*> keepers = findChildren<WorkKeeper*>();
    const bool changed = std::any_of(keepers.begin(), keepers.end(), [](const WorkKeeper* keeper) {
        return keeper->hasUnsavedWork();
    });
    const QString title = m_file.isEmpty() ? m_title : m_title + QStringLiteral(" - ") + m_file;
    if (!changed) setWindowModified(false);
    setWindowTitle(changed ? title + QStringLiteral("[*]") : title);
    setWindowModified(changed);
}

// Ctrl+W is easily pressed by mistake: work that can be kept nowhere stays on view.
void FormBase::closeByKey() {
    if (keepWork())
        Unload();
    else
        setStatusText(
            QStringLiteral("The window stays open, because its work cannot be kept. "
                           "Save it, or close the window with the mouse."));
}

void FormBase::Unload() { frame()->close(); }

QSize FormBase::sizeHint() const {
    return m_designSize.isValid() ? m_designSize : QWidget::sizeHint();
}
