// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// lorvanite-exchange import ...   brings songs, people and played dates in
// lorvanite-exchange export ...   takes them out
#include "core/data/run_time_error.h"
#include "exchange/command/command_line.h"

#include <QApplication>

namespace {

const Subcommand* const Subcommands[] = {&ImportCommand, &ExportCommand};

void printUsage() {
    printLine(
        QStringLiteral("Usage: lorvanite-exchange SUBCOMMAND [OPTION...] [ARGUMENT...]\n"
                       "       lorvanite-exchange --help | --version\n"
                       "\n"
                       "Brings songs, people and played dates of other programs into "
                       "Lorvanite, and takes them out.\n"));
    for (const Subcommand* subcommand : Subcommands)
        printLine(QStringLiteral("  %1 %2")
                      .arg(QLatin1String(subcommand->name), -8)
                      .arg(QLatin1String(subcommand->summary)));
    printLine(QStringLiteral(
        "\n\"lorvanite-exchange SUBCOMMAND --help\" lists the options.\n"
        "\n"
        "Exit status: 0 done, 1 failed and nothing changed, 2 wrong use,\n"
        "3 done, but some files or entries were refused, or the report was not saved."));
}

ExitCode runSubcommand(const QStringList& words) {
    for (const Subcommand* subcommand : Subcommands)
        if (words[0] == QLatin1String(subcommand->name)) return subcommand->run(words.mid(1));
    printError(QStringLiteral("There is no subcommand \"%1\". Try --help.").arg(words[0]));
    return ExitCode::WrongUse;
}

ExitCode run(const QStringList& words) {
    if (words.value(0) == QLatin1String("--help")) {
        printUsage();
        return ExitCode::Done;
    }
    if (words.value(0) == QLatin1String("--version")) {
        printLine(QStringLiteral("lorvanite-exchange %1.%2.%3")
                      .arg(LORVANITE_VERSION_MAJOR)
                      .arg(LORVANITE_VERSION_MINOR)
                      .arg(LORVANITE_VERSION_REVISION));
        return ExitCode::Done;
    }
    if (words.isEmpty()) {
        printError(QStringLiteral("A subcommand is missing. Try --help."));
        return ExitCode::WrongUse;
    }
    try {
        return runSubcommand(words);
    } catch (const RunTimeError& error) {
        printError(error.description());
        return ExitCode::Failed;
    }
}

// What Qt remarks on the machine's set-up is nothing for the user of a command.
void printFatal(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) printError(text);
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(printFatal);
    // Charts and song books need fonts, but no screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    return int(run(QApplication::arguments().mid(1)));
}
