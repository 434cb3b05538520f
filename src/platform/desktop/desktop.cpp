// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/desktop.h"

#include "platform/desktop/status_line.h"

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

#include <cstdlib>

namespace {

MainWindowParts g_parts;
// A main window whose constructor fails is destroyed without taking its parts back.
QPointer<QMainWindow> g_window;
std::function<void(int)> g_endOfProcess;
// The window that the text of the status bar comes from; compared and never used.
const QWidget* g_statusForm = nullptr;

}  // namespace

void setMainWindow(const MainWindowParts& parts) {
    g_parts = parts;
    g_window = parts.window;
}

QMainWindow* mainWindow() { return g_window; }

QMdiArea* formArea() { return g_window ? g_parts.area : nullptr; }

CommonDialog& commonDlg() { return *g_parts.dialog; }

QWidget* activeForm() {
    const QMdiSubWindow* frame = formArea() ? formArea()->currentSubWindow() : nullptr;
    return frame ? frame->widget() : nullptr;
}

void setStatusText(const QString& text, const QWidget* form) {
    if (!g_window) return;
    g_statusForm = form ? form : activeForm();
    g_parts.status->SimpleText(text);
}

void clearStatusTextOf(const QWidget* form) {
    if (g_window && form && form == g_statusForm) setStatusText(QString());
}

void clearStatusText(const QString& text) {
    if (g_window && g_parts.status->SimpleText() == text) g_parts.status->SimpleText(QString());
}

void setMousePointer(MousePointer pointer) {
    while (QApplication::overrideCursor()) QApplication::restoreOverrideCursor();
    if (pointer == MousePointer::Hourglass) QApplication::setOverrideCursor(Qt::WaitCursor);
}

void doEvents() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void endProcess(int status) {
    if (g_endOfProcess) {
        g_endOfProcess(status);
        return;
    }
    if (status == 0)
        QCoreApplication::exit(0);
    else
        std::_Exit(status);
}

void setEndOfProcess(std::function<void(int status)> callback) {
    g_endOfProcess = std::move(callback);
}
