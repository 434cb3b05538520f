// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What all windows share: the main window, the mouse pointer, the end of the process.
#pragma once

#include <functional>

class CommonDialog;
class QMainWindow;
class QMdiArea;
class QString;
class QWidget;
class StatusLine;

// What the main window lends to every module window.
struct MainWindowParts {
    QMainWindow* window = nullptr;
    QMdiArea* area = nullptr;        // module windows open inside it
    StatusLine* status = nullptr;    // SB
    CommonDialog* dialog = nullptr;  // CommonDlg
};

// Sets what the other windows share. The main window calls it when it is created, and with an empty
// value when it is destroyed.
void setMainWindow(const MainWindowParts& parts);

// The module window that is or was last active; null if there is none.
QWidget* activeForm();

// The main window and the area of the module windows; null if there is no main window.
QMainWindow* mainWindow();
QMdiArea* formArea();

// The shared file and help dialog. There has to be a main window.
CommonDialog& commonDlg();

// Shows a text in the status bar; does nothing if there is no main window. The text goes when the
// module window that it comes from closes: `form`, or the active one if none is named.
void setStatusText(const QString& text, const QWidget* form = nullptr);

// Clears the status bar if its text comes from this module window.
void clearStatusTextOf(const QWidget* form);

// Clears the status bar if it still has this text.
void clearStatusText(const QString& text);

enum class MousePointer { Arrow = 1, Hourglass = 11 };

// Sets the mouse pointer over all windows of the program.
void setMousePointer(MousePointer pointer);

// Processes pending events: windows are painted and timers fire. User input waits.
void doEvents();

// Converts twips to pixels; a pixel is 15 twips.
constexpr int px(int twips) { return twips / 15; }

// Ends the process. With status 0 the main event loop ends and main() returns; with any other
// status the process ends at once, without running destructors.
void endProcess(int status);

// Sets a function that a test wants to be called instead of ending the process.
void setEndOfProcess(std::function<void(int status)> callback);
