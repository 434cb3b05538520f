// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Files that the user chooses in the program's folders.
#pragma once

#include "platform/desktop/common_dialog.h"

// Lets the user choose a file with ShowOpen or ShowSave, starting in a folder of the program, such
// as "schedules", and with a proposed name. Asks before an existing file is replaced. Returns false
// if the user cancelled, like CommonDialog::chosen; otherwise the file is in the dialog's FileName.
bool chooseFileIn(const QString& folder, CommonDialog& dialog, void (CommonDialog::*show)(),
                  const QString& proposed, const QString& filter);

// Says in the status bar that a file was saved, by its name.
void tellSaved(const QString& path);

// Shows the message that a file could not be written.
void tellNotSaved();
