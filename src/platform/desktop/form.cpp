#include "platform/desktop/form.h"

#include "core/data/run_time_error.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

constexpr int TopInTwips = 500;

}  // namespace

// The frame of a module window. When it closes, the window is no longer the current instance; Qt
// deletes both later.
class FormFrame : public QMdiSubWindow {
public:
    explicit FormFrame(FormBase* form) : m_form(form) {
        setWidget(form);
        setAttribute(Qt::WA_DeleteOnClose);
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        QMdiSubWindow::closeEvent(event);
        if (event->isAccepted()) m_form->released();
    }

private:
    FormBase* m_form;
};

void atEdge(OnFailure onFailure, const std::function<void()>& body) {
    try {
        body();
    } catch (const RunTimeError& error) {
        setMousePointer(MousePointer::Arrow);
        messageBox(QStringLiteral("Run-time error '%1':\r\r%2")
                       .arg(QString::number(error.number()), error.description()),
                   BoxIcon::Critical);
        // Deliberate: behaviour 5.
        if (onFailure == OnFailure::EndsProgram) endProcess(1);
    }
}

FormBase::FormBase() = default;

FormBase::~FormBase() = default;

QMdiSubWindow* FormBase::frame() {
    if (m_frame) return m_frame;
    m_frame = new FormFrame(this);
    m_frame->setWindowIcon(windowIcon());
    if (formArea()) formArea()->addSubWindow(m_frame);
    m_frame->resize(m_frame->sizeHint());
    return m_frame;
}

void FormBase::Show() {
    frame()->show();
    show();
    if (formArea()) formArea()->setActiveSubWindow(m_frame);
    m_frame->raise();
    // The keyboard focus goes to the control that had it last, or to the first one.
    if (isAncestorOf(QApplication::focusWidget())) return;
    if (focusWidget())
        focusWidget()->setFocus();
    else
        focusNextChild();
}

void FormBase::centre() {
    if (!mainWindow()) return;
    frame()->move((mainWindow()->width() - frame()->width()) / 2, px(TopInTwips));
}

void FormBase::Unload() { frame()->close(); }

QSize FormBase::sizeHint() const {
    return m_designSize.isValid() ? m_designSize : QWidget::sizeHint();
}
