// The files that the user names in the program's own folders.
#pragma once

#include "platform/desktop/common_dialog.h"

// Asks for a file by ShowOpen or ShowSave, beginning in this folder beside the program
// ("schedules") and with this name proposed. A save asks before it takes an existing file. False
// after a cancel; otherwise the file is in the dialog's FileName.
bool chooseFileIn(const QString& folder, CommonDialog& dialog, void (CommonDialog::*show)(),
                  const QString& proposed, const QString& filter);

// The box after a file that could not be written.
void tellNotSaved();
