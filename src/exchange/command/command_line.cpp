// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/command/command_line.h"

#include "core/data/paths.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>

CommandLine::CommandLine(const Subcommand& subcommand) : m_subcommand(&subcommand) {
    add(QStringLiteral("folder"),
        QStringLiteral("the folder with the database; without it, the program's own"),
        QStringLiteral("FOLDER"));
    add(QStringLiteral("dry-run"), QStringLiteral("report what would be done, and change nothing"));
    add(QStringLiteral("help"), QStringLiteral("print this text and exit"));
}

void CommandLine::add(const QString& name, const QString& description, const QString& value) {
    m_parser.addOption(QCommandLineOption(name, description, value));
    const QString left =
        QStringLiteral("  --") + name + (value.isEmpty() ? QString() : QLatin1Char(' ') + value);
    m_help.append(left.leftJustified(20) + QLatin1Char(' ') + description);
}

void CommandLine::printHelp() const {
    printLine(QStringLiteral("Usage: lorvanite-exchange %1 [OPTION...] %2")
                  .arg(QLatin1String(m_subcommand->name), QLatin1String(m_subcommand->arguments)));
    printLine(QString());
    printLine(QLatin1String(m_subcommand->summary));
    printLine(QString());
    for (const QString& line : m_help) printLine(line);
}

std::optional<ExitCode> CommandLine::read(const QStringList& words) {
    // The parser takes the first word for the name of the program.
    const QStringList all = QStringList(QLatin1String(m_subcommand->name)) + words;
    if (!m_parser.parse(all)) {
        printError(m_parser.errorText());
        return ExitCode::WrongUse;
    }
    if (isSet(QStringLiteral("help"))) {
        printHelp();
        return ExitCode::Done;
    }
    const QString folder = value(QStringLiteral("folder"));
    if (!folder.isEmpty()) setProgramFolder(QDir(folder).absolutePath());
    if (QFileInfo(programFolder() + QStringLiteral("/db1.mdb")).isFile()) return std::nullopt;
    printError(QStringLiteral("There is no database db1.mdb in the folder ") +
               QDir::toNativeSeparators(programFolder()));
    return ExitCode::Failed;
}

void printLine(const QString& line) {
    std::fputs((line + QLatin1Char('\n')).toLocal8Bit(), stdout);
}

void printError(const QString& line) {
    std::fputs((QStringLiteral("lorvanite-exchange: ") + line + QLatin1Char('\n')).toLocal8Bit(),
               stderr);
}
