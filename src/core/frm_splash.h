// The picture that greets at the start.
#pragma once

#include "core/form.h"
#include "ui_frm_splash.h"

#include <QTimer>

// The program's version, "1.2.3".
QString programVersion();

// Lies over the middle of the main window for three seconds, or until it is clicked.
class frmSplash : public QWidget, public Ui::frmSplash {
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
