// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The base of all module windows, and the place where errors of event handlers are caught.
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>

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

private:
    friend class FormFrame;
    void keepInside();
    void keepWork();

    QMdiSubWindow* m_frame = nullptr;
    QList<QWidget*> m_strips;  // above the content
    QSize m_designSize;
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
