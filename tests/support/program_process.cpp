// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/program_process.h"

#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/shell/frm_mdi.h"
#include "core/shell/program.h"
#include "mail/frm_email.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/media.h"
#include "support/silent_server.h"
#include "support/sound_file.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

QString g_activity;
bool g_hasBegun = false;
std::optional<SilentServer> g_mailServer;

void openModules(frmMDI& main) {
    for (QToolButton* button :
         {main.cmdSetList, main.cmdSongMgmt, main.cmdScheduling, main.cmdSheetMusic, main.cmdEmail})
        button->click();
}

// Returns when the sending has ended.
void sendMessage(frmMDI& main) {
    g_mailServer.emplace();
    execute(
        QStringLiteral("INSERT INTO personell (fName, lName, email) VALUES ('Ann', 'Lee', "
                       "'ann@example.org')"));
    main.cmdEmail->click();
    frmEmail& mail = frmEmail::instance();
    mail.txtServer->setText(g_mailServer->address());
    mail.txtFrom->setText(QStringLiteral("leader@example.org"));
    mail.txtFromName->setText(QStringLiteral("The Leader"));
    mail.txtSubject->setText(QStringLiteral("Sunday"));
    mail.txtMsg->setPlainText(QStringLiteral("See you"));
    mail.Label5->click();
    mail.cmdSend->click();
}

void playSound() {
    const QString file = programFolder() + QStringLiteral("/a.wav");
    writeSilence(file, 600);
    soundDevice().FileName = file;
    soundDevice().Command(QStringLiteral("Open"));
    soundDevice().Command(QStringLiteral("play"));
}

void begin(frmMDI& main) {
    if (g_activity == QLatin1String("modules")) openModules(main);
    if (g_activity == QLatin1String("mail")) sendMessage(main);
    if (g_activity == QLatin1String("sound")) playSound();
    g_hasBegun = true;
}

bool isGoingOn() {
    if (g_activity == QLatin1String("mail"))
        return g_hasBegun || (g_mailServer && g_mailServer->wasCalled());
    if (g_activity == QLatin1String("sound")) return soundDevice().state() == Media::State::Playing;
    return g_hasBegun;
}

// Every 20 ms: begins once the main window is up, and closes it once the activity is going on.
void beUser() {
    static bool isBeginning = false;
    static bool hasClosed = false;
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        std::printf("%s\n", qPrintable(box->text()));
        std::fflush(stdout);
        box->button(QMessageBox::Ok)->click();
        return;
    }
    if (!mainWindow() || !mainWindow()->isVisible() || hasClosed) return;
    auto& main = static_cast<frmMDI&>(*mainWindow());
    if (!isBeginning) {
        isBeginning = true;
        // A send does not return until it has ended.
        QTimer::singleShot(0, &main, [&main] { begin(main); });
    } else if (isGoingOn()) {
        hasClosed = true;
        if (g_activity == QLatin1String("nothing") && !main.SB->SimpleText().isEmpty())
            std::printf("%s\n", qPrintable(main.SB->SimpleText()));
        main.close();
    }
}

void callUser() {
    auto* clock = new QTimer(QCoreApplication::instance());
    QObject::connect(clock, &QTimer::timeout, clock, &beUser);
    clock->start(20);
}

}  // namespace

int runAndClose(int argc, char** argv, const QString& folder, const QString& activity) {
    if (!folder.isEmpty()) setProgramFolder(folder);
    g_activity = activity;
    std::atexit([] { std::puts("ended"); });
    qAddPreRoutine(&callUser);
    const int status = runProgram(argc, argv);
    const bool isGone = !mainWindow() && !QCoreApplication::instance() && !frmEmail::isLoaded();
    return isGone ? status : 9;
}
