#include "platform/desktop/desktop.h"

#include "platform/desktop/status_line.h"

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>

#include <cstdlib>

namespace {

MainWindowParts g_parts;
std::function<void(int)> g_endOfProcess;

}  // namespace

void setMainWindow(const MainWindowParts& parts) { g_parts = parts; }

QMainWindow* mainWindow() { return g_parts.window; }

QMdiArea* formArea() { return g_parts.area; }

CommonDialog& commonDlg() { return *g_parts.dialog; }

void setStatusText(const QString& text) {
    if (g_parts.status) g_parts.status->SimpleText(text);
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
