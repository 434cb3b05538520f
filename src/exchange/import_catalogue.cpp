// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What an import compares with, and what the user reads of it.
#include "catalogue/rules/categories.h"
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/texts.h"
#include "exchange/import_plan.h"
#include "team/rules/personnel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr ImportKind Kinds[] = {ImportKind::Song, ImportKind::Person, ImportKind::Date,
                                ImportKind::File};

void readSongs(Catalogue& catalogue) {
    Recordset rs = select(u"SELECT * FROM songs ORDER BY ID"_s);
    for (; !rs.EOF_(); rs.MoveNext()) {
        Catalogue::StoredSong song;
        song.id = toLong(rs.Fields("ID"));
        song.title = rs.Fields("title");
        song.artist = rs.Fields("artist");
        song.key = rs.Fields("dakey");
        song.ccli = rs.Fields("CCLI");
        for (const char* column : {"cat1", "cat2", "cat3", "cat4", "cat5"})
            song.categories.append(rs.Fields(column));
        song.hasChart = !rs.Fields("fileLoco").isEmpty();
        catalogue.songs.append(song);
    }
    rs.Close();
}

void readPeople(Catalogue& catalogue) {
    Recordset rs = select(u"SELECT * FROM personell ORDER BY ID"_s);
    for (; !rs.EOF_(); rs.MoveNext()) {
        Catalogue::StoredPerson person;
        person.id = toLong(rs.Fields("ID"));
        for (const PersonField& field : PersonFields) person.fields.append(rs.Fields(field.column));
        catalogue.people.append(person);
    }
    rs.Close();
}

void readDates(Catalogue& catalogue) {
    Recordset rs = select(u"SELECT songID, played_date FROM played_on"_s);
    for (; !rs.EOF_(); rs.MoveNext()) {
        const auto date = parseDate(rs.Fields("played_date"));
        bool isNumber = false;
        const int song = rs.Fields("songID").toInt(&isNumber);
        if (date && isNumber) catalogue.played.insert({song, *date});
    }
    rs.Close();
}

// The names of a kind, for one and for many.
std::pair<QString, QString> namesOf(ImportKind kind) {
    switch (kind) {
        case ImportKind::File:
            return {u"File"_s, u"Files"_s};
        case ImportKind::Song:
            return {u"Song"_s, u"Songs"_s};
        case ImportKind::Person:
            return {u"Person"_s, u"People"_s};
        case ImportKind::Date:
            return {u"Date"_s, u"Dates"_s};
    }
    return {};
}

}  // namespace

Catalogue readCatalogue() {
    Catalogue catalogue;
    readSongs(catalogue);
    readPeople(catalogue);
    readDates(catalogue);
    catalogue.categories = categoryNames();
    return catalogue;
}

QString kindText(ImportKind kind) { return namesOf(kind).first; }

QString outcomeText(ImportOutcome outcome) {
    switch (outcome) {
        case ImportOutcome::Added:
            return u"Added"_s;
        case ImportOutcome::Filled:
            return u"Filled in"_s;
        case ImportOutcome::AlreadyThere:
            return u"Already there"_s;
        case ImportOutcome::Refused:
            return u"Refused"_s;
    }
    return {};
}

QString importSums(const ImportPlan& plan) {
    QStringList sums;
    for (const ImportKind kind : Kinds) {
        const int added = plan.count(kind, ImportOutcome::Added);
        const int filled = plan.count(kind, ImportOutcome::Filled);
        const int there = plan.count(kind, ImportOutcome::AlreadyThere);
        const int refused = plan.count(kind, ImportOutcome::Refused);
        if (added + filled + there + refused == 0) continue;
        if (kind == ImportKind::File) {
            sums.append(u"Notes on files: %1."_s.arg(refused));
            continue;
        }
        sums.append(
            u"%1: %2 added, %3 filled in, %4 already there, %5 refused."_s.arg(namesOf(kind).second)
                .arg(added)
                .arg(filled)
                .arg(there)
                .arg(refused));
    }
    return sums.join(u' ');
}

QString importReport(const ImportPlan& plan) {
    QString report;
    for (const ImportEntry& entry : plan.entries) {
        QStringList parts = {outcomeText(entry.outcome) + u": "_s + kindText(entry.kind).toLower()};
        if (!entry.name.isEmpty()) parts[0] += u" \"%1\""_s.arg(entry.name);
        if (!entry.details.isEmpty()) parts.append(entry.details);
        if (!entry.file.isEmpty()) parts.append(entry.file);
        report += parts.join(u" | "_s) + u'\n';
    }
    return report + importSums(plan) + u'\n';
}
