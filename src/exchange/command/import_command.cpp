// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "exchange/command/command_line.h"
#include "exchange/import_run.h"
#include "keeping/folder_lock.h"

using namespace Qt::Literals::StringLiterals;

namespace {

ImportChoices choicesOf(const CommandLine& line, const ImportPlan& plan) {
    ImportChoices choices;
    choices.newCategories = line.values(u"theme"_s);
    if (line.isSet(u"all-themes"_s)) choices.newCategories = plan.themes;
    choices.category = line.value(u"category"_s);
    choices.role = line.isSet(u"role"_s) ? line.value(u"role"_s) : u"Musician"_s;
    choices.charts = !line.isSet(u"no-charts"_s) && chartsNotPossible().isEmpty();
    return choices;
}

bool isKnownCategory(const Catalogue& catalogue, const QString& name) {
    return name.isEmpty() || catalogue.categories.contains(name, Qt::CaseInsensitive);
}

// Whether this process may write in the folder. The program must not have it open.
bool ownFolder(FolderLock& lock) {
    switch (lock.acquire()) {
        case FolderLock::Result::Owned:
            return true;
        case FolderLock::Result::OwnerCalled:
        case FolderLock::Result::OutOfReach:
            printError(u"Lorvanite has this folder open. Close it first."_s);
            return false;
        case FolderLock::Result::NotPossible:
            break;
    }
    printError(u"The folder cannot be written."_s);
    return false;
}

bool hasRefusals(const ImportPlan& plan) {
    for (const ImportEntry& entry : plan.entries)
        if (entry.outcome == ImportOutcome::Refused) return true;
    return false;
}

ExitCode runImportCommand(const QStringList& words) {
    CommandLine line(ImportCommand);
    line.add(u"theme"_s, u"make this theme a category; can be given several times"_s, u"NAME"_s);
    line.add(u"all-themes"_s, u"make every theme a category"_s);
    line.add(u"category"_s, u"the category of added songs that have none"_s, u"NAME"_s);
    line.add(u"role"_s, u"the role of people without one; \"Musician\" if not given"_s, u"ROLE"_s);
    line.add(u"no-charts"_s, u"make no charts of lyrics and chords"_s);
    line.add(u"report"_s, u"write the report to a file instead of the standard output"_s,
             u"FILE"_s);
    if (const auto code = line.read(words)) return *code;
    if (line.arguments().isEmpty()) {
        printError(u"A file or a folder to import is missing."_s);
        return ExitCode::WrongUse;
    }
    FolderLock lock(programFolder());
    if (!line.isDryRun() && !ownFolder(lock)) return ExitCode::Failed;
    openDatabase();
    const Catalogue catalogue = readCatalogue();
    if (!isKnownCategory(catalogue, line.value(u"category"_s))) {
        printError(u"There is no category \"%1\"."_s.arg(line.value(u"category"_s)));
        return ExitCode::WrongUse;
    }
    const QList<ImportSource> sources = readSources(line.arguments());
    ImportPlan plan = planImport(catalogue, sources, choicesOf(line, {}));
    if (line.isSet(u"all-themes"_s)) plan = planImport(catalogue, sources, choicesOf(line, plan));
    if (!chartsNotPossible().isEmpty()) printError(chartsNotPossible());
    if (!line.isDryRun()) static_cast<void>(runImport(plan));
    const QString report = importReport(plan);
    const QString file = line.value(u"report"_s);
    const bool isSaved = !file.isEmpty() && replaceFile(file, report.toUtf8());
    const bool isLost = !file.isEmpty() && !isSaved;
    if (isLost) printError(u"The report could not be saved."_s);
    if (!isSaved) printLine(report.trimmed());
    if (line.isDryRun()) printLine(u"Nothing was changed."_s);
    return isLost || hasRefusals(plan) ? ExitCode::Partly : ExitCode::Done;
}

}  // namespace

const Subcommand ImportCommand = {"import", "FILE...",
                                  "Reads songs, people and played dates of other programs.",
                                  runImportCommand};
