// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The attachments as the mail window holds them.
#pragma once

#include <QString>

// Appends the files chosen in a file dialog to a list of paths joined by semicolons. `result` is
// the dialog's: one path, or a folder and the names of files in it, separated by NUL.
QString withChosenFiles(const QString& attachments, const QString& result);
