// What the windows share of the desktop: the main window, the pointer, the end of the process.
#pragma once

#include <functional>

class QMainWindow;
class QMdiArea;

// The main window and the area in which module windows open; null while there is none.
void setMainWindow(QMainWindow* window, QMdiArea* area);
QMainWindow* mainWindow();
QMdiArea* formArea();

enum class MousePointer { Arrow = 1, Hourglass = 11 };

// The pointer over all windows of the program.
void setMousePointer(MousePointer pointer);

// One turn of the event loop, in which windows paint and timers fire. What the user does waits.
void doEvents();

// Pixels of a length in twips, of which 15 make a pixel.
constexpr int px(int twips) { return twips / 15; }

// Ends the process at once with a status. What was stored before is on the disk.
void endProcess(int status);

// Lets a test be told of the end instead.
void setEndOfProcess(std::function<void(int status)> callback);
