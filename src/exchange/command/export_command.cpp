// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "exchange/command/command_line.h"
#include "exchange/take_out.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

void addExportOptions(CommandLine& line) {
    QStringList forms;
    for (const TakeOutFormInfo& info : takeOutForms()) forms += QLatin1String(info.word);
    line.add(u"form"_s, u"what to write: "_s + forms.join(u", "_s), u"FORM"_s);
    line.add(u"set"_s, u"only the songs of a saved set, in its order"_s, u"FILE"_s);
    line.add(u"song"_s, u"only this song; may be given several times"_s, u"TITLE"_s);
    line.add(u"by-title"_s, u"the songs of the set in the order of titles"_s);
    line.add(u"from"_s, u"the first day of the CCLI report"_s, u"DATE"_s);
    line.add(u"to"_s, u"the last day of the CCLI report"_s, u"DATE"_s);
    line.add(u"paper"_s, u"of the song book: a4 (without it) or letter"_s, u"SIZE"_s);
    line.add(u"title"_s, u"of the song book"_s, u"TEXT"_s);
    line.add(u"replace"_s, u"replace files that are there already"_s);
}

// Fills in what to write and where. False after an error was printed.
bool readForm(const CommandLine& line, TakeOutOrder& order) {
    const QString word = line.isSet(u"form"_s) ? line.value(u"form"_s) : u"chordpro"_s;
    for (const TakeOutFormInfo& info : takeOutForms()) {
        if (word != QLatin1String(info.word)) continue;
        order.form = info.form;
        const QString target = line.arguments().value(0);
        order.target = QFileInfo(target).absoluteFilePath();
        if (info.stem && QFileInfo(target).isDir())
            order.target += u'/' + QLatin1String(info.stem) + u'.' + QLatin1String(info.file);
        return true;
    }
    printError(u"There is no form \"%1\". Try --help."_s.arg(word));
    return false;
}

bool readPeriod(const CommandLine& line, TakeOutOrder& order) {
    const auto from = parseDate(line.value(u"from"_s));
    const auto to = parseDate(line.value(u"to"_s));
    if (from && to && *from <= *to) {
        order.from = *from;
        order.to = *to;
        return true;
    }
    printError(u"The CCLI report needs --from and --to, such as 2026-01-01 and 2026-06-30."_s);
    return false;
}

QString setPath(const QString& name) {
    const QString path =
        QFileInfo::exists(name) ? name : programFolder() + u"/saved sets/"_s + name;
    return QFileInfo::exists(path) ? path : path + u".set"_s;
}

// Reads the songs to take. Titles that are not there are printed, and counted.
bool readSongChoice(const CommandLine& line, TakeOutOrder& order, qsizetype& missing) {
    SetSongs of;
    order.allSongs = false;
    if (line.isSet(u"set"_s)) {
        const QString path = setPath(line.value(u"set"_s));
        if (titlesOfSetFile(path).isEmpty()) {
            printError(u"There are no titles in the set "_s + QDir::toNativeSeparators(path));
            return false;
        }
        of = songsOfSetFile(path, line.isSet(u"by-title"_s));
    } else if (line.isSet(u"song"_s)) {
        of.songs = librarySongs(line.values(u"song"_s), of.missing);
    } else {
        of.songs = librarySongs();
        order.allSongs = true;
    }
    for (const QString& title : of.missing)
        printError(u"The catalogue does not have the song \"%1\"."_s.arg(title));
    missing = of.missing.size();
    order.songs = of.songs;
    if (order.songs.isEmpty()) printError(u"There is no song to write."_s);
    return !order.songs.isEmpty();
}

ExitCode carryOut(const TakeOutOrder& order, qsizetype missing) {
    const TakeOutFormInfo& info = takeOutForm(order.form);
    if (info.stem && !order.replace && !order.dryRun && QFileInfo::exists(order.target)) {
        printError(u"%1 is there already. Use --replace to replace it."_s.arg(
            QDir::toNativeSeparators(order.target)));
        return ExitCode::Failed;
    }
    if (!info.stem && !order.dryRun && !QDir().mkpath(order.target)) {
        printError(
            u"The folder %1 could not be made."_s.arg(QDir::toNativeSeparators(order.target)));
        return ExitCode::Failed;
    }
    const TakeOutResult result = takeOut(order, [](int, int) { return true; });
    if (!result.existing.isEmpty() && !order.replace && !order.dryRun) {
        printError(
            u"%1 of the files are there already, such as %2. Use --replace to replace them."_s.arg(
                QString::number(result.existing.size()),
                QDir::toNativeSeparators(result.existing[0])));
        return ExitCode::Failed;
    }
    for (const QString& note : result.notes) printError(note);
    if (order.dryRun)
        for (const QString& file : result.files) printLine(QDir::toNativeSeparators(file));
    if (!result.problem.isEmpty()) {
        printError(result.problem);
        return result.files.isEmpty() ? ExitCode::Failed : ExitCode::Partly;
    }
    printLine(takeOutSummary(order, result));
    return result.isPartial || missing > 0 ? ExitCode::Partly : ExitCode::Done;
}

ExitCode runExport(const QStringList& words) {
    CommandLine line(ExportCommand);
    addExportOptions(line);
    if (const auto code = line.read(words)) return *code;
    if (line.arguments().size() != 1) {
        printError(u"Name one folder or file to write to. Try --help."_s);
        return ExitCode::WrongUse;
    }
    TakeOutOrder order;
    if (!readForm(line, order)) return ExitCode::WrongUse;
    const QString paper = line.value(u"paper"_s).toLower();
    if (!paper.isEmpty() && paper != "a4"_L1 && paper != "letter"_L1) {
        printError(u"The paper is a4 or letter."_s);
        return ExitCode::WrongUse;
    }
    order.paper = paper == "letter"_L1 ? QPageSize::Letter : QPageSize::A4;
    order.bookTitle = line.value(u"title"_s);
    order.replace = line.isSet(u"replace"_s);
    order.dryRun = line.isDryRun();
    const TakeOutFormInfo& info = takeOutForm(order.form);
    if (info.ofPeriod && !readPeriod(line, order)) return ExitCode::WrongUse;
    openDatabase();
    qsizetype missing = 0;
    if (info.ofSongs && !readSongChoice(line, order, missing)) return ExitCode::Failed;
    return carryOut(order, missing);
}

}  // namespace

const Subcommand ExportCommand = {
    "export", "FOLDER", "Writes songs, people, played dates and the schedule to files.", runExport};
