#include "platform/desktop.h"

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QPointer>

#include <cstdlib>

namespace {

QPointer<QMainWindow> g_window;
QPointer<QMdiArea> g_area;
std::function<void(int)> g_endOfProcess;

}  // namespace

void setMainWindow(QMainWindow* window, QMdiArea* area) {
    g_window = window;
    g_area = area;
}

QMainWindow* mainWindow() { return g_window; }

QMdiArea* formArea() { return g_area; }

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
    std::_Exit(status);
}

void setEndOfProcess(std::function<void(int status)> callback) {
    g_endOfProcess = std::move(callback);
}
