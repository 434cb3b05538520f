// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The base of all module windows, and the place where errors of event handlers are caught.
#pragma once

#include <QList>
#include <QShortcut>
#include <QString>
#include <QWidget>

#include <functional>

class QAbstractButton;
class QMdiSubWindow;

// What ends when an event handler of a window fails with a run-time error.
enum class OnFailure { EndsProgram, EndsCommand };

// Runs the body of an event handler. A RunTimeError that the body does not catch is shown in a
// critical box; then the process ends with status 1, or only the command has ended.
void atEdge(OnFailure onFailure, const std::function<void()>& body);

// Connects a signal to a handler, a member function of `owner`, which runs in atEdge. The handler
// may take fewer arguments than the signal has.
template <typename Owner, typename Sender, typename Signal, typename Class, typename... Wanted>
void onEvent(Owner* owner, Sender* sender, Signal signal, void (Class::*handler)(Wanted...)) {
    QObject::connect(sender, signal, owner, [owner, handler](Wanted... values) {
        atEdge(owner->onFailure(), [&] { (owner->*handler)(values...); });
    });
}

// Runs a handler of `owner` when Escape is pressed in a panel, unless the field that has the
// keyboard focus uses the key itself.
template <typename Owner, typename Class>
void onEscape(Owner* owner, QWidget* panel, void (Class::*handler)()) {
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), panel);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    onEvent(owner, escape, &QShortcut::activated, handler);
}

// Lets a key press a button while the button can be clicked, and adds the key to its tool tip.
void addKey(QAbstractButton* button, QKeySequence::StandardKey key);

// A module window. It opens inside the main window.
class FormBase : public QWidget {
public:
    FormBase();
    ~FormBase() override;

    // Shows the window, even if it was minimised, brings it to the front and gives it the keyboard
    // focus.
    void Show();

    // Moves the window to the horizontal middle of the main window, 500 twips from the top, but not
    // out of the room that there is. A maximised window stays.
    void centre();

    // Closes the window; the next call of instance() creates another.
    void Unload();

    // Names the file that the window shows in its title, without folder and extension; an empty
    // path takes the name out again. The title also marks work that is not saved.
    void nameFile(const QString& path);

    virtual OnFailure onFailure() const { return OnFailure::EndsProgram; }

    // Shows a strip above the content, or hides it; it is hidden at first. The window becomes as
    // much higher or lower as the strip is high. The window owns the strip.
    void showStrip(QWidget* strip, bool on);

    // The size of the design.
    QSize sizeHint() const override;

protected:
    // Called when the window was closed, so that it is no longer the current instance.
    virtual void released() = 0;

    // Sets the size of the design, in pixels. To be called at the end of the constructor.
    void setDesignSize(const QSize& size) { m_designSize = size; }

    QMdiSubWindow* frame();

    // Lets the title mark work that is not saved. To be called once the window is complete.
    void watchWork();

private:
    friend class FormFrame;
    void keepInside();
    bool keepWork();
    void showTitle();
    void closeByKey();

    QMdiSubWindow* m_frame = nullptr;
    QList<QWidget*> m_strips;  // above the content
    QSize m_designSize;
    QString m_title;  // without the name of a file
    QString m_file;   // its name
};

// A window with one instance at a time: class frmX : public Form<frmX>, public Ui::frmX.
template <typename T>
class Form : public FormBase {
public:
    // The current instance; created if there is none.
    static T& instance() {
        if (!s_instance) {
            s_instance = new T;
            // The main window unloads what has a frame, also what was never shown.
            s_instance->frame();
            s_instance->watchWork();
        }
        return *s_instance;
    }

    static bool isLoaded() { return s_instance != nullptr; }

    ~Form() override {
        if (s_instance == this) s_instance = nullptr;
    }

protected:
    void released() override {
        if (s_instance == this) s_instance = nullptr;
    }

private:
    static inline T* s_instance = nullptr;
};
