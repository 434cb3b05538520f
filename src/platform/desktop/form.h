// The base of all module windows, and the edge at which what their handlers raise is caught.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

class QMdiSubWindow;

// What becomes of the program when a handler of a window fails with a run-time error.
enum class OnFailure { EndsProgram, EndsCommand };

// Runs a handler's body. A RunTimeError that reaches it is told in a critical box; then the
// process ends with status 1, or only the command has ended.
void atEdge(OnFailure onFailure, const std::function<void()>& body);

// Connects a control's signal to a handler, a member function of `owner`, through the edge. The
// handler takes as many of the signal's arguments as it wants.
template <typename Owner, typename Sender, typename Signal, typename Class, typename... Wanted>
void onEvent(Owner* owner, Sender* sender, Signal signal, void (Class::*handler)(Wanted...)) {
    QObject::connect(sender, signal, owner, [owner, handler](Wanted... values) {
        atEdge(owner->onFailure(), [&] { (owner->*handler)(values...); });
    });
}

// A module window inside the main window's area.
class FormBase : public QWidget {
public:
    FormBase();
    ~FormBase() override;

    // Puts the window on the screen and brings it forward.
    void Show();

    // Moves the window so that it stands in the middle of the main window, 500 twips from the
    // top, with its size kept.
    void centre();

    // Closes the window and forgets it; the next touch makes a new one.
    void Unload();

    virtual OnFailure onFailure() const { return OnFailure::EndsProgram; }

    // The size that the window was designed with.
    QSize sizeHint() const override;

protected:
    // Called when the window is closed; the instance is no longer the one in use.
    virtual void released() = 0;

    // Call at the end of the constructor: the size of the design, in pixels.
    void setDesignSize(const QSize& size) { m_designSize = size; }

    QMdiSubWindow* frame();

private:
    friend class FormFrame;

    QMdiSubWindow* m_frame = nullptr;
    QSize m_designSize;
};

// A window of which there is one at a time: class frmX : public Form<frmX>, public Ui::frmX.
template <typename T>
class Form : public FormBase {
public:
    // The window, created and loaded at the first touch.
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
