// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The splash at the start of the program.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_splash.h"

#include <QFrame>
#include <QTimer>

// The version of the program, such as "1.2.3".
QString programVersion();

// A separate window that is shown before the main window, in the middle of its place, for three
// seconds or until a click or a key.
class frmSplash : public QFrame, public Ui::frmSplash {
    Q_OBJECT

public:
    // Shows nothing yet; `over` is the main window.
    explicit frmSplash(QWidget* over);

    // Fires once, 3000 ms after the splash was created, and unloads it.
    QTimer t;

    OnFailure onFailure() const { return OnFailure::EndsProgram; }

    // Closes the splash and deletes it later.
    void Unload();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void t_Timer();
};
