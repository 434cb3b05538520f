// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What an import would do, decided before anything is changed.
#pragma once

#include "exchange/rules/source_files.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <utility>

// What the database holds, as far as an import compares with it.
struct Catalogue {
    struct StoredSong {
        int id = 0;
        QString title;
        QString artist;
        QString key;
        QString ccli;
        QStringList categories;  // cat1 to cat5, free ones empty
        bool hasChart = false;
    };
    struct StoredPerson {
        int id = 0;
        QStringList fields;  // in the order of PersonFields
    };

    QList<StoredSong> songs;
    QList<StoredPerson> people;
    QSet<std::pair<int, QDate>> played;  // a song's ID and a date
    QStringList categories;
};

// Reads the database. Raises what a failing statement raises.
Catalogue readCatalogue();

// What the user chooses before an import.
struct ImportChoices {
    // Themes that become categories although no category has their name.
    QStringList newCategories;
    // The category of added songs that get none otherwise, or empty.
    QString category;
    // The first role of people without one. Empty: such people are refused.
    QString role;
    // Whether lyrics and chords become charts.
    bool charts = true;
};

enum class ImportKind { File, Song, Person, Date };
enum class ImportOutcome { Added, Filled, AlreadyThere, Refused };

// A line of the preview and of the report.
struct ImportEntry {
    ImportKind kind = ImportKind::File;
    ImportOutcome outcome = ImportOutcome::Refused;
    QString name;     // the title, the person, or the title and the date; empty for a file
    QString details;  // what comes in, or why it is refused
    QString file;
};

// A song, a person or a date to store. Values are cleaned: a statement can take them.
struct SongChange {
    int id = 0;  // 0 is a new song
    QString title;
    QMap<QString, QString> values;  // by column
    Song chart;                     // without verses if there is no chart to make
};
struct PersonChange {
    int id = 0;  // 0 is a new person
    QMap<QString, QString> values;
};
struct DateChange {
    int songId = 0;         // 0 for a song of this import
    qsizetype change = -1;  // its index in ImportPlan::songs
    QString title;
    QDate date;
};

struct ImportPlan {
    QList<SongChange> songs;
    QList<PersonChange> people;
    QList<DateChange> dates;
    QStringList newCategories;  // rows to add to the table categories
    QList<ImportEntry> entries;
    // The themes that are no categories, the most frequent first.
    QStringList themes;

    bool isEmpty() const { return songs.isEmpty() && people.isEmpty() && dates.isEmpty(); }
    int count(ImportKind kind, ImportOutcome outcome) const;
};

// Decides what happens to each song, person and date. A song is known by its CCLI number, else by
// its title, in which case, apostrophes, blanks and punctuation do not count; two songs with
// different numbers are different songs. A person is known by the name. What is known is only
// filled in where it is empty. What comes twice in the files is known the second time.
ImportPlan planImport(const Catalogue& catalogue, const QList<ImportSource>& sources,
                      const ImportChoices& choices);

// A name as it is compared: without case, apostrophes, blanks and punctuation.
QString comparableName(const QString& name);

// The preview or the report as a text, one line an entry, with the sums at its end.
QString importReport(const ImportPlan& plan);

// The sums in one line: "Songs: 3 added, 1 filled in, 2 already there, 0 refused. ...". Kinds that
// the files do not hold are left out.
QString importSums(const ImportPlan& plan);

// The words for the user.
QString kindText(ImportKind kind);
QString outcomeText(ImportOutcome outcome);
