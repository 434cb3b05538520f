// The picture that greets at the start.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_splash.h"

#include <QFrame>
#include <QTimer>

// The program's version, "1.2.3".
QString programVersion();

// A window of its own, seen before the main window is up: in the middle of where that will stand,
// for three seconds, or until it is clicked.
class frmSplash : public QFrame, public Ui::frmSplash {
    Q_OBJECT

public:
    explicit frmSplash(QWidget* over);

    // Fires once, 3000 ms after it is enabled, and unloads the splash.
    QTimer t;

    OnFailure onFailure() const { return OnFailure::EndsProgram; }

    // Takes the splash away.
    void Unload();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void t_Timer();
};
