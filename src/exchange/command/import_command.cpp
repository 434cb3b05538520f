// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/command/command_line.h"

namespace {

ExitCode runImport(const QStringList& words) {
    CommandLine line(ImportCommand);
    if (const auto code = line.read(words)) return *code;
    printError(QStringLiteral("This version brings nothing in yet."));
    return ExitCode::Failed;
}

}  // namespace

const Subcommand ImportCommand = {
    "import", "FILE...", "Reads songs, people and played dates of other programs.", runImport};
