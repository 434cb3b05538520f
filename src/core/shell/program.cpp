// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/program.h"

#include "core/shell/frm_mdi.h"
#include "platform/theme/theme.h"

#include <QApplication>

#include <memory>

int runProgram(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Lorvanite"));
    QApplication::setDesktopFileName(QStringLiteral("lorvanite"));
    applyTheme(app);
    std::unique_ptr<frmMDI> window;
    atEdge(OnFailure::EndsProgram, [&] { window = std::make_unique<frmMDI>(); });
    window->show();
    return QApplication::exec();
}
