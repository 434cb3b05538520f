// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A process that is the program, with a user who closes its main window.
#pragma once

#include <QString>

// Runs the program from its start to its end, on a folder or, if `folder` is empty, on the folder
// that the program chooses. When the main window is up the user closes it: at once ("nothing"),
// with several module windows open ("modules"), while a message is being sent to a server that does
// not answer or once it could not be sent ("mail"), or while a sound plays ("sound"). Every box is
// printed and closed. Prints "ended" when the process ends in the ordinary way. Returns the
// program's status, or 9 if something of the program outlives it.
int runAndClose(int argc, char** argv, const QString& folder, const QString& activity);
