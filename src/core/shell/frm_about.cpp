// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/frm_about.h"

#include "core/shell/frm_splash.h"
#include "platform/theme/theme.h"

frmAbout::frmAbout() {
    setupUi(this);
    onEvent(this, cmdOK, &QPushButton::clicked, &frmAbout::cmdOK_Click);
    onEscape(this, this, &frmAbout::cmdOK_Click);
    Image1->setPixmap(themedIcon(QStringLiteral("app")).pixmap(Image1->minimumSize()));
    lblVersion->setText(QStringLiteral("Version: ") + programVersion());
    setDesignSize(size());
}

void frmAbout::cmdOK_Click() { Unload(); }
