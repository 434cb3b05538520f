// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/program_hands.h"

#include "core/data/paths.h"
#include "core/shell/frm_mdi.h"
#include "core/shell/program.h"
#include "keeping/work_hands.h"
#include "keeping/work_keeper.h"
#include "maintenance/frm_notes.h"
#include "platform/desktop/desktop.h"
#include "support/full_disk.h"
#include "support/world.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <new>

namespace {

QString g_end;

void say(const char* word) {
    std::puts(word);
    std::fflush(stdout);
}

void endSession() {
    // Its manager cannot be made here, and nobody looks at it.
    alignas(void*) static char manager[64];
    Q_EMIT qApp->commitDataRequest(*reinterpret_cast<QSessionManager*>(manager));
}

void typeOnFullDisk() {
    WorkKeeper::keepAllNow();
    new FullDisk(0);  // until the end of the process
    for (const WorkHands& work : worksOfAllKinds()) work.type(QStringLiteral("lost"));
    std::raise(SIGTERM);
}

void endAsAsked(frmMDI& main) {
    if (g_end == QLatin1String("close")) main.close();
    if (g_end == QLatin1String("close windows")) {
        for (const WorkHands& work : worksOfAllKinds()) work.window().Unload();
        std::raise(SIGKILL);
    }
    if (g_end == QLatin1String("session")) {
        endSession();
        std::raise(SIGKILL);
    }
    if (g_end == QLatin1String("full disk")) typeOnFullDisk();
    if (g_end == QLatin1String("error")) frmNotes::instance().cmdAdd->click();
}

// Says when the window comes to the front.
class FrontWatch : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::WindowActivate) say("called");
        return false;
    }
};

void beUserAtWork() {
    static bool hasBegun = false;
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        say(qPrintable(box->text()));
        QAbstractButton* button = box->button(QMessageBox::Ok);
        if (!button) button = box->defaultButton();
        if (g_end == QLatin1String("start"))
            for (QAbstractButton* each : box->buttons())
                if (box->buttonRole(each) == QMessageBox::AcceptRole) button = each;
        button->click();
        return;
    }
    if (!mainWindow() || !mainWindow()->isVisible() || hasBegun) return;
    if (g_end == QLatin1String("status")) {
        const QString text = static_cast<frmMDI&>(*mainWindow()).SB->SimpleText();
        if (text.isEmpty()) return;
        say(qPrintable(text));
    }
    hasBegun = true;
    auto& main = static_cast<frmMDI&>(*mainWindow());
    if (g_end == QLatin1String("idle") || g_end == QLatin1String("start")) {
        auto* other = new QWidget;  // something else is in front
        other->show();
        other->activateWindow();
        settle();
        main.installEventFilter(new FrontWatch(&main));
        say("worked");
        return;
    }
    if (g_end == QLatin1String("status")) return;
    // The boxes of this work are answered by the timer.
    QTimer::singleShot(0, &main, [&main] {
        addPersonAndPlayedSong();
        workEverywhere(main);
        say("worked");
        endAsAsked(main);
    });
}

void callUserToWork() {
    auto* clock = new QTimer(QCoreApplication::instance());
    QObject::connect(clock, &QTimer::timeout, clock, &beUserAtWork);
    clock->start(20);
}

}  // namespace

int workAndEnd(int argc, char** argv, const QString& folder, const QString& end) {
    setProgramFolder(folder);
    g_end = end;
    qAddPreRoutine(&callUserToWork);
    return runProgram(argc, argv);
}
