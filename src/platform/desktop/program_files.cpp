// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/program_files.h"

#include "core/data/paths.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

bool chooseFileIn(const QString& folder, CommonDialog& dialog, void (CommonDialog::*show)(),
                  const QString& proposed, const QString& filter) {
    dialog.Flags = CommonDialog::OverwritePrompt;
    dialog.Filter = filter;
    dialog.InitDir = programFolder() + QLatin1Char('\\') + folder + QLatin1Char('\\');
    dialog.FileName = proposed;
    return dialog.chosen(show);
}

void tellSaved(const QString& path) { setStatusText(QStringLiteral("Saved: ") + nameOfFile(path)); }

void tellNotSaved() {
    messageBox(QStringLiteral("File did not save, try again or contact Lorvanite."),
               BoxIcon::Information);
}
