// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the subcommands of lorvanite-exchange share: exit codes, common options, printing.
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

// The exit status of the process.
enum class ExitCode {
    Done = 0,
    Failed = 1,    // nothing was changed
    WrongUse = 2,  // the command line is wrong
    Partly = 3,    // done, but files or entries were refused, or the report was not saved
};

// One row of the table of subcommands in main.cpp.
struct Subcommand {
    const char* name;
    const char* arguments;  // as the help shows them: "FILE..."
    const char* summary;    // one line of the help
    // Runs with the words that follow the subcommand's name. May raise RunTimeError, which is
    // printed and ends with ExitCode::Failed.
    ExitCode (*run)(const QStringList& words);
};

// The options of one subcommand: its own, and --folder, --dry-run and --help.
class CommandLine {
public:
    explicit CommandLine(const Subcommand& subcommand);

    // Adds an option, such as "--set FILE"; without `value` it is a switch.
    void add(const QString& name, const QString& description, const QString& value = {});

    // Reads the words. Returns the status with which the process ends at once: after --help, after
    // a word that is wrong or if the folder has no database, which is printed; nothing otherwise.
    // Makes the folder given by --folder the program's.
    std::optional<ExitCode> read(const QStringList& words);

    // The words that are no options.
    QStringList arguments() const { return m_parser.positionalArguments(); }
    bool isDryRun() const { return isSet(QStringLiteral("dry-run")); }
    bool isSet(const QString& name) const { return m_parser.isSet(name); }
    QString value(const QString& name) const { return m_parser.value(name); }
    QStringList values(const QString& name) const { return m_parser.values(name); }

private:
    void printHelp() const;

    const Subcommand* m_subcommand;
    QCommandLineParser m_parser;
    QStringList m_help;
};

// Prints a line to the standard output, or to the standard error.
void printLine(const QString& line);
void printError(const QString& line);

extern const Subcommand ImportCommand;
extern const Subcommand ExportCommand;
