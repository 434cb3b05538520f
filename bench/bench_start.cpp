// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How long the program takes from its start to its window on the screen, and how much memory it
// then holds, against an empty Qt window. Both start in turns on an X server of their own.
#include "ratios.h"

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <X11/Xlib.h>
#include <cstdlib>
#include <unistd.h>

namespace {

constexpr int Rounds = 15;
constexpr int LeastWidth = 600;  // of a main window, in pixels; the splash screen is narrower
constexpr double MostTime = 1.5;
constexpr double MostMemory = 45;  // MB

// Ends the bench when something outside it fails.
[[noreturn]] void giveUp(const char* what) {
    std::fprintf(stderr, "%s\n", what);
    std::exit(2);
}

// An X server without a window manager, which is ended with the object.
class Server {
public:
    Server() {
        m_server.start(
            QStringLiteral("Xvfb"),
            {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
             QStringLiteral("0"), QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
             QStringLiteral("tcp")});
        if (!m_server.waitForReadyRead(30'000)) giveUp("Xvfb does not start");
        name = ":" + m_server.readLine().trimmed();
        display = XOpenDisplay(name.constData());
        if (!display) giveUp("Xvfb cannot be reached");
        XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
        XSync(display, True);
    }
    ~Server() {
        XCloseDisplay(display);
        m_server.kill();
        m_server.waitForFinished();
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    QByteArray name;
    Display* display = nullptr;

private:
    QProcess m_server;
};

// Returns a main window once it is on the screen.
Window mainWindow(Display* display) {
    for (;;) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type != MapNotify) continue;
        XWindowAttributes looks;
        if (XGetWindowAttributes(display, event.xmap.window, &looks) && looks.width >= LeastWidth)
            return event.xmap.window;
    }
}

// The resident memory of a process in MB.
double residentMemory(qint64 process) {
    QFile file(QStringLiteral("/proc/%1/statm").arg(process));
    if (!file.open(QIODevice::ReadOnly)) giveUp("the program has ended");
    const double pages = file.readAll().split(' ').at(1).toDouble();
    return pages * double(sysconf(_SC_PAGESIZE)) / 1024 / 1024;
}

// Closes a window as its user does: a program that is killed leaves its lock to the next start.
void close(Display* display, Window window) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, window, False, NoEventMask, &event);
    XFlush(display);
}

struct Start {
    double time;    // seconds
    double memory;  // MB
};

int ignoreErrors(Display*, XErrorEvent*) { return 0; }

Start start(const char* path, Server& server, const QString& home) {
    XSync(server.display, True);
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(server.name));
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    for (const char* name : {"WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP"})
        environment.remove(QString::fromLatin1(name));
    // A desktop has a session bus; without one, the first window tries to launch it.
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    Start result{};
    Window window = 0;
    result.time = seconds([&] {
        program.start(QString::fromLocal8Bit(path), QStringList());
        window = mainWindow(server.display);
    });
    QThread::msleep(500);  // it paints, and comes to rest
    result.memory = residentMemory(program.processId());
    close(server.display, window);
    if (!program.waitForFinished()) giveUp("the program does not end");
    return result;
}

}  // namespace

int main() {
    XSetErrorHandler(ignoreErrors);  // a window that has gone
    Server server;
    const QTemporaryDir home;
    start(LORVANITE, server, home.path());
    start(EMPTY_WINDOW, server, home.path());
    std::vector<double> ownTime, emptyTime, timeRatio, ownMemory, emptyMemory;
    for (int round = 0; round < Rounds; ++round) {
        const Start own = start(LORVANITE, server, home.path());
        const Start empty = start(EMPTY_WINDOW, server, home.path());
        ownTime.push_back(own.time);
        emptyTime.push_back(empty.time);
        timeRatio.push_back(own.time / empty.time);
        ownMemory.push_back(own.memory);
        emptyMemory.push_back(empty.memory);
    }
    const bool quick = median(timeRatio) <= MostTime;
    const bool small = median(ownMemory) <= MostMemory;
    std::printf("%-34s %7.2f ms against %7.2f ms: ratio %.2f, at most %.2f: %s\n",
                "start until the window is shown", median(ownTime) * 1000, median(emptyTime) * 1000,
                median(timeRatio), MostTime, quick ? "holds" : "FAILS");
    std::printf("%-34s %7.1f MB against %7.1f MB: at most %.1f MB: %s\n", "resident memory",
                median(ownMemory), median(emptyMemory), MostMemory, small ? "holds" : "FAILS");
    return quick && small ? 0 : 1;
}
