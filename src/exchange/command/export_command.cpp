// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/command/command_line.h"

namespace {

ExitCode runExport(const QStringList& words) {
    CommandLine line(ExportCommand);
    if (const auto code = line.read(words)) return *code;
    printError(QStringLiteral("This version takes nothing out yet."));
    return ExitCode::Failed;
}

}  // namespace

const Subcommand ExportCommand = {
    "export", "FOLDER", "Writes songs, people, played dates and the schedule to files.", runExport};
