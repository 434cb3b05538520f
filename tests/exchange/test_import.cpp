// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// An import adds what is not there, fills in what is empty, and does all of it or nothing.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/grid/sheet_grid.h"
#include "exchange/import_run.h"
#include "keeping/copies.h"
#include "support/full_disk.h"
#include "support/other_process.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTest>

#include <optional>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

ImportSource sourceOfText(const char* text, const char* name = "song.txt") {
    return {QLatin1String(name), readExchangeFile(QByteArray(text), QLatin1String(name))};
}

constexpr const char* Grace =
    "{title: Faith's \"Amazing\" Grace}\n{artist: John O'Newton}\n{key: G}\n{ccli: 22025}\n"
    "{meta: theme Grace}\n{start_of_verse: Verse 1}\n[G]Amazing [C]grace\n{end_of_verse}\n";

QStringList entriesOf(const ImportPlan& plan) {
    QStringList lines;
    for (const ImportEntry& entry : plan.entries)
        lines += outcomeText(entry.outcome) + u' ' + kindText(entry.kind) + u' ' + entry.name +
                 (entry.details.isEmpty() ? QString() : u": "_s + entry.details);
    return lines;
}

// All files below a folder with their contents, copies left out.
QStringList treeState(const QString& folder) {
    QStringList state;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (path.contains("/copies/"_L1) || path.contains(".lock"_L1)) continue;
        // What a killed process leaves of one is not valid any more.
        if (path.endsWith("-journal"_L1)) continue;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) continue;
        state += path + u' ' + QString::number(qHash(file.readAll()), 16);
    }
    state.sort();
    return state;
}

}  // namespace

class TestImport : public WindowTest {
    Q_OBJECT

    ImportChoices m_choices;

    ImportPlan plan(const QList<ImportSource>& sources) {
        return planImport(readCatalogue(), sources, m_choices);
    }

    ImportPlan planOfFiveSongs() {
        QList<ImportSource> sources;
        for (int i = 0; i < 5; ++i)
            sources += sourceOfText(
                qPrintable(u"{title: Song %1}\n{sov}\n[G]Word\n{eov}\n"_s.arg(i)), "s.cho");
        return plan(sources);
    }

    ImportPlan import(const QList<ImportSource>& sources) {
        const ImportPlan made = plan(sources);
        if (!runImport(made)) QTest::qFail("ended", __FILE__, __LINE__);
        return made;
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>();
        world->start();
        m_choices = {};
        m_choices.role = u"Musician"_s;
    }

    void songIsStoredCleanWithItsChart() {
        world->sql(u"INSERT INTO categories (name) VALUES ('GRACE')"_s);
        const ImportPlan made = import({sourceOfText(Grace, "grace.cho")});
        QCOMPARE(entriesOf(made),
                 QStringList{u"Added Song Faiths \"Amazing\" Grace: artist John ONewton, key G, "
                             "CCLI number 22025, category GRACE, chart"_s});
        const QString chart = world->path(u"sheetmusic/Faiths _Amazing_ Grace.stp"_s);
        QCOMPARE(world->rows(u"SELECT title, artist, dakey, cat1, cat2, playlist, fileLoco, CCLI, "
                             "soundFile FROM songs"_s),
                 QStringList{u"Faiths \"Amazing\" Grace|John ONewton|G|GRACE||Current|"_s + chart +
                             u"|22025|"_s});
        SheetGrid grid;
        QVERIFY(grid.LoadFromFile(chart));
        QCOMPARE(grid.GetText(1, 1), u"Faith's \"Amazing\" Grace"_s);
        QCOMPARE(grid.GetText(1, 6), u"Verse 1"_s);
        QCOMPARE(grid.GetText(1, 8), u"Amazing grace"_s);
    }

    void secondImportAddsAndFillsNothing() {
        const QList<ImportSource> sources = {
            sourceOfText(Grace, "grace.cho"),
            sourceOfText("Title,CCLI,Date\nAmazing,22025,2026-11-15\n", "played.csv"),
            sourceOfText("First Name,Last Name,Role,Email\nAnn,O'Hara,Piano,ann@example.org\n",
                         "people.csv"),
            sourceOfText("Title;Artist;Key\nBe Thou My Vision;Eleanor Hull;Eb\n", "songs.csv")};
        const ImportPlan first = import(sources);
        QCOMPARE(first.count(ImportKind::Song, ImportOutcome::Added), 2);
        QCOMPARE(first.count(ImportKind::Person, ImportOutcome::Added), 1);
        QCOMPARE(first.count(ImportKind::Date, ImportOutcome::Added), 1);
        const QStringList before = treeState(world->folder());
        const ImportPlan second = import(sources);
        QVERIFY2(second.isEmpty(), qPrintable(entriesOf(second).join(u'\n')));
        QCOMPARE(second.count(ImportKind::Song, ImportOutcome::AlreadyThere), 2);
        QCOMPARE(second.count(ImportKind::Person, ImportOutcome::AlreadyThere), 1);
        QCOMPARE(second.count(ImportKind::Date, ImportOutcome::AlreadyThere), 1);
        QCOMPARE(treeState(world->folder()), before);
        QCOMPARE(world->rows(u"SELECT title, played_date, songID FROM played_on"_s),
                 QStringList{u"Faiths \"Amazing\" Grace|11/15/26|1"_s});
        QCOMPARE(world->rows(u"SELECT fName, lName, role, email, excludeScheduling, vDays FROM "
                             "personell"_s),
                 QStringList{u"Ann|OHara|Piano|ann@example.org|0|"_s});
    }

    void knownSongIsFilledOnlyWhereItIsEmpty() {
        world->sql(
            u"INSERT INTO songs (title, dakey, cat1, playlist) VALUES "
            "('FAITHS AMAZING, GRACE', 'A', 'Praise', 'Past')"_s);
        import({sourceOfText(Grace, "grace.cho")});
        const QStringList rows = world->rows(
            u"SELECT title, artist, dakey, cat1, cat2, playlist, CCLI, fileLoco > '' FROM songs"_s);
        QCOMPARE(rows, QStringList{u"FAITHS AMAZING, GRACE|John ONewton|A|Praise||Past|22025|1"_s});
    }

    void songIsKnownByItsNumberBeforeItsTitle() {
        world->sql(
            u"INSERT INTO songs (title, CCLI) VALUES ('Another Name', '22025'), "
            "('Faiths Amazing Grace', '')"_s);
        const ImportPlan made = plan({sourceOfText(Grace, "grace.cho")});
        QCOMPARE(made.songs.size(), 1);
        QCOMPARE(made.songs[0].id, 1);
        QVERIFY(made.entries[0].details.startsWith(u"known as \"Another Name\""_s));
    }

    // Deliberate: behaviour 200.
    void sameTitleWithAnotherNumberIsAnotherSong() {
        world->sql(u"INSERT INTO songs (title, CCLI) VALUES ('Faiths Amazing Grace', '7')"_s);
        const ImportPlan made = plan({sourceOfText(Grace, "grace.cho")});
        QCOMPARE(made.count(ImportKind::Song, ImportOutcome::Added), 1);
    }

    void songThatComesTwiceIsAddedOnce() {
        const ImportPlan made =
            import({sourceOfText("Title,Key\nAmazing Grace,\n", "a.csv"),
                    sourceOfText("Title,Key\n\"amazing   grace!\",G\n", "b.csv"),
                    sourceOfText("Title,Key\nAmazing Grace,F\n", "c.csv")});
        QCOMPARE(entriesOf(made),
                 QStringList({u"Added Song Amazing Grace"_s,
                              u"Filled in Song amazing grace!: known as \"Amazing Grace\", key G"_s,
                              u"Already there Song Amazing Grace"_s}));
        QCOMPARE(world->rows(u"SELECT title, dakey FROM songs"_s),
                 QStringList{u"Amazing Grace|G"_s});
    }

    // Deliberate: behaviour 201.
    void themesBecomeCategoriesWhereTicked() {
        const QList<ImportSource> sources = {
            sourceOfText("Title,Categories\nOne,\"Grace; Advent; Hymns\"\nTwo,Grace\n", "a.csv")};
        QCOMPARE(plan(sources).themes, QStringList({u"Grace"_s, u"Advent"_s, u"Hymns"_s}));
        m_choices.newCategories = {u"Grace"_s, u"Hymns"_s};
        import(sources);
        QCOMPARE(world->rows(u"SELECT title, cat1, cat2 FROM songs"_s),
                 QStringList({u"One|Grace|Hymns"_s, u"Two|Grace|"_s}));
        QCOMPARE(world->rows(u"SELECT name FROM categories"_s), QStringList{u"Grace"_s});
    }

    void addedSongsWithoutCategoryGetTheChosenOne() {
        world->sql(u"INSERT INTO categories (name) VALUES ('Praise')"_s);
        m_choices.category = u"Praise"_s;
        import({sourceOfText("Title,Categories\nOne,Other\n", "a.csv")});
        QCOMPARE(world->rows(u"SELECT title, cat1 FROM songs"_s), QStringList{u"One|Praise"_s});
    }

    void datesOfUnknownSongsAndOtherCenturiesAreRefused() {
        const ImportPlan made =
            plan({sourceOfText("Title,Date\nNobody Knows,2026-01-04\nOne,1899-01-01\n", "p.csv"),
                  sourceOfText("Title,Key\nOne,G\n", "a.csv")});
        QCOMPARE(entriesOf(made),
                 QStringList({u"Added Song One: key G"_s,
                              u"Refused Date Nobody Knows, 01/04/26: There is no such song."_s,
                              u"Refused Date One, 01/01/99: The date is not in the years 1930 to "
                              "2029."_s}));
    }

    // The catalogue keeps no apostrophes, so such a name is empty there.
    void songsAndPeopleThatCannotBeKeptAreRefused() {
        m_choices.role.clear();
        const ImportPlan made =
            plan({sourceOfText("Title,Key\n',G\n", "a.csv"),
                  sourceOfText("First Name,Last Name,Role\n','',Bass\nAnn,Bee,\n,Dee,Drums\n",
                               "b.csv")});
        QCOMPARE(entriesOf(made), QStringList({u"Refused Song ': The song has no title."_s,
                                               u"Refused Person : The person has no name."_s,
                                               u"Refused Person Ann Bee: The person has no role."_s,
                                               u"Added Person Dee: role Drums"_s}));
        QVERIFY(made.songs.isEmpty());
        QCOMPARE(made.people.size(), 1);
    }

    void personIsFilledAndPeopleWithoutRoleGetOne() {
        world->sql(
            u"INSERT INTO personell (fName, lName, role, email, vDays, excludeScheduling) "
            "VALUES ('Ann', 'Hall', 'Piano', '', '12/25/26', '1')"_s);
        import(
            {sourceOfText("First Name,Last Name,Role,Email\nann,HALL,Voice:alto,a@example.org\n"
                          "Bert,,,b@example.org\n",
                          "people.csv")});
        QCOMPARE(world->rows(u"SELECT fName, lName, role, role2, email, vDays, excludeScheduling "
                             "FROM personell"_s),
                 QStringList({u"Ann|Hall|Piano|Voice alto|a@example.org|12/25/26|1"_s,
                              u"Bert||Musician||b@example.org||0"_s}));
    }

    void copyIsSetAsideBeforeTheImport() {
        import({sourceOfText(Grace, "grace.cho")});
        QVERIFY(QDir(world->path(u"copies/2026-11-21 before import"_s)).exists(u"db1.mdb"_s));
    }

    void cancelledImportLeavesEverythingAsItWas() {
        const QStringList before = treeState(world->folder());
        const ImportPlan made = planOfFiveSongs();
        QCOMPARE(made.songs.size(), 5);
        QVERIFY(!runImport(made, [](int done, int) { return done < 3; }));
        QCOMPARE(treeState(world->folder()), before);
        QCOMPARE(world->rows(u"SELECT count(*) FROM songs"_s), QStringList{u"0"_s});
        QVERIFY(runImport(made));
        QCOMPARE(world->rows(u"SELECT count(*) FROM songs WHERE fileLoco > ''"_s),
                 QStringList{u"5"_s});
    }

    void fullDiskLeavesEverythingAsItWas() {
        const QStringList before = treeState(world->folder());
        const ImportPlan made = planOfFiveSongs();
        QString why;
        try {
            std::optional<FullDisk> full;
            static_cast<void>(runImport(made, [&full](int done, int) {
                if (done == 2) full.emplace(0);
                return true;
            }));
        } catch (const RunTimeError& error) {
            why = error.description();
        }
        QVERIFY2(why.startsWith(u"The chart \""_s) && why.endsWith(u"\" cannot be written."_s),
                 qPrintable(why));
        QCOMPARE(treeState(world->folder()), before);
        QVERIFY(runImport(made));
        QCOMPARE(world->rows(u"SELECT count(*) FROM songs WHERE fileLoco > ''"_s),
                 QStringList{u"5"_s});
    }

    void failingStatementLeavesEverythingAsItWas() {
        world->sql(
            u"CREATE TRIGGER stop BEFORE INSERT ON songs WHEN NEW.title = 'Two' BEGIN "
            "SELECT RAISE(ABORT, 'stopped'); END"_s);
        const QStringList before = treeState(world->folder());
        bool failed = false;
        try {
            static_cast<void>(
                runImport(plan({sourceOfText("{title: One}\n{sov}\n[G]Word\n{eov}\n", "a.cho"),
                                sourceOfText("{title: Two}\n{sov}\n[G]Word\n{eov}\n", "b.cho")})));
        } catch (const RunTimeError& error) {
            failed = error.number() == RunTimeError::StatementRefused;
        }
        QVERIFY(failed);
        QCOMPARE(treeState(world->folder()), before);
    }

    void killedImportLeavesNothingBehind() {
        const QStringList before = treeState(world->folder());
        const ImportPlan made =
            plan({sourceOfText("{title: One}\n{sov}\n[G]Word\n{eov}\n", "a.cho"),
                  sourceOfText("{title: Two}\n{sov}\n[G]Word\n{eov}\n", "b.cho")});
        const QString folder = world->folder();
        world->stop();
        inOtherProcess([&] {
            openDatabase();
            static_cast<void>(runImport(made, [](int done, int) {
                if (done == 2) ::_exit(1);
                return true;
            }));
            return 0;
        });
        QVERIFY(QFile::exists(folder + u"/sheetmusic/One.stp"_s));
        openDatabase();
        cleanUpAfterKilledImport();
        QCOMPARE(world->rows(u"SELECT count(*) FROM songs"_s), QStringList{u"0"_s});
        QStringList left = treeState(folder);
        for (const QString& file : before) left.removeOne(file);
        QCOMPARE(left.join(u' '), QString());
        dbConn.Close();
    }

    // Deliberate: behaviour 202.
    void chartsNeverReplaceFiles() {
        QFile mine(world->path(u"sheetmusic/ONE.stp"_s));
        QVERIFY(mine.open(QIODevice::WriteOnly));
        mine.write("mine");
        mine.close();
        import({sourceOfText("{title: One}\n{sov}\n[G]Word\n{eov}\n", "a.cho"),
                sourceOfText("{title: ../CON}\n{sov}\n[G]Word\n{eov}\n", "b.cho")});
        QCOMPARE(world->rows(u"SELECT fileLoco FROM songs"_s),
                 QStringList({world->path(u"sheetmusic/One (2).stp"_s),
                              world->path(u"sheetmusic/_CON.stp"_s)}));
        QVERIFY(mine.open(QIODevice::ReadOnly));
        QCOMPARE(mine.readAll(), QByteArray("mine"));
    }

    void reportNamesEveryEntryAndTheSums() {
        const QString report = importReport(
            plan({sourceOfText("Title,Key\nOne,G\n", "a.csv"), sourceOfText("", "empty.txt")}));
        QCOMPARE(report,
                 u"Added: song \"One\" | key G | a.csv\n"
                 "Refused: file | The file is empty. | empty.txt\n"
                 "Songs: 1 added, 0 filled in, 0 already there, 0 refused. Notes on files: "
                 "1.\n"_s);
    }
};

LORVANITE_TEST(TestImport)
#include "test_import.moc"
