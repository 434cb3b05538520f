// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Message boxes.
#pragma once

#include <QString>

enum class BoxIcon { None = 0, Critical = 16, Exclamation = 48, Information = 64 };
enum class BoxButtons { Ok = 0, YesNo = 4 };
enum class BoxAnswer { Ok = 1, Yes = 6, No = 7 };

// Shows a message box over the main window and waits for the answer. The text is plain text, in
// which carriage returns end lines; a text that is too long for the screen scrolls. Escape in a box
// with Yes and No means No.
BoxAnswer messageBox(const QString& text, BoxIcon icon = BoxIcon::None,
                     const QString& title = QStringLiteral("Lorvanite"),
                     BoxButtons buttons = BoxButtons::Ok);
