// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/program.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/shell/end_signals.h"
#include "core/shell/frm_mdi.h"
#include "keeping/daily_copy.h"
#include "keeping/folder_lock.h"
#include "maintenance/rules/backup_items.h"
#include "platform/desktop/desktop.h"
#include "platform/theme/font_preparation.h"
#include "platform/theme/theme.h"

#include <QApplication>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>

#include <chrono>
#include <memory>

namespace {

// Whether the program is to start beside the owner of the folder, which cannot be called.
bool startsAllTheSame(const FolderLock& lock) {
    const QString host = lock.ownerHost();
    const QDateTime since = lock.ownedSince();
    QString text = QStringLiteral("Lorvanite is already running on this folder");
    if (!host.isEmpty()) text += QStringLiteral(", on the computer \"%1\"").arg(host);
    if (since.isValid())
        text += QStringLiteral(", since %1, %2")
                    .arg(formatDate(since.date()),
                         QLocale::c().toString(since.time(), QStringLiteral("h:mm AP")));
    text += QStringLiteral(
        ".\n\nTwo programs on one folder overwrite each other's files. Start all the same only if "
        "the other one is no longer running.");
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Lorvanite"), text);
    box.setTextFormat(Qt::PlainText);
    auto* quit = box.addButton(QStringLiteral("Quit"), QMessageBox::RejectRole);
    auto* start = box.addButton(QStringLiteral("Start All the Same"), QMessageBox::AcceptRole);
    box.setDefaultButton(quit);
    box.setEscapeButton(quit);
    box.exec();
    return box.clickedButton() == start;
}

// An owner that starts from a slow stick takes its time before it answers.
constexpr int OwnerPatience = 30'000;  // milliseconds

// Whether this process may work on the program's folder, by what came of trying to own it.
bool mayWork(FolderLock& lock, FolderLock::Result result) {
    switch (result) {
        case FolderLock::Result::OwnerCalled:
            return false;
        case FolderLock::Result::OutOfReach:
            if (!startsAllTheSame(lock)) return false;
            lock.takeOver();
            return true;
        case FolderLock::Result::Owned:
        case FolderLock::Result::NotPossible:
            break;
    }
    return true;
}

// A box or dialog in front of the main window comes to the front itself.
void comeToFront() {
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* window = mainWindow();
    if (window && window->isMinimized()) window->showNormal();
    for (QWidget* each : {window, modal}) {
        if (!each || !each->isVisible()) continue;
        each->raise();
        each->activateWindow();
    }
}

}  // namespace

int runProgram(int argc, char** argv) {
    FontPreparation fonts;
    QApplication app(argc, argv);
    fonts.listFamilies();
    QApplication::setApplicationName(QStringLiteral("Lorvanite"));
    QApplication::setDesktopFileName(QStringLiteral("lorvanite"));
    std::unique_ptr<FolderLock> lock;
    FolderLock::Result result{};
    atEdge(OnFailure::EndsProgram, [&] {
        // A failure is shown with the theme as well.
        const auto dressed = qScopeGuard([&] {
            fonts.wait();
            applyTheme(app);
        });
        lock = std::make_unique<FolderLock>(programFolder());
        result = lock->acquire(OwnerPatience);
    });
    if (!lock || !mayWork(*lock, result)) return 0;
    finishRestores();
    QObject::connect(lock.get(), &FolderLock::called, &app, &comeToFront);
    const EndSignals endSignals;
    std::unique_ptr<frmMDI> window;
    atEdge(OnFailure::EndsProgram, [&] { window = std::make_unique<frmMDI>(); });
    window->show();
    DailyCopy copy(programFolder());
    QObject::connect(&copy, &DailyCopy::failed, window.get(), [](const QString& why) {
        setStatusText(QStringLiteral("No copy was made today. ") + why);
    });
    // Also while the program runs for days.
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, &copy, [&copy] { copy.start(today()); });
    clock.start(std::chrono::hours(1));
    QTimer::singleShot(0, &copy, [&copy] { copy.start(today()); });
    return QApplication::exec();
}
