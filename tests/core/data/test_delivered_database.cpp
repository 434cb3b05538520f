// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the program finds in its database on the first day.
#include "support/registry.h"
#include "support/world.h"

#include <array>

namespace {

// A note as the transposition looks for it: the characters that an entry of "rootnote" must hold
// to be taken for it, and those that it must not hold.
struct NoteRule {
    const char* name;
    const char* holds;
    const char* holdsNot;
};

constexpr std::array<NoteRule, 17> NoteRules = {{
    {"C", "C", "#"},
    {"C#", "C#", ""},
    {"D", "D", "#b"},
    {"D#", "D#", ""},
    {"Db", "Db", ""},
    {"E", "E", "b"},
    {"Eb", "Eb", ""},
    {"F", "F", "#"},
    {"F#", "F#", ""},
    {"G", "G", "#b"},
    {"Gb", "Gb", ""},
    {"G#", "G#", ""},
    {"Ab", "Ab", ""},
    {"A", "A", "#b"},
    {"A#", "A#", ""},
    {"Bb", "Bb", ""},
    {"B", "B", "b"},
}};

const QStringList Played = {"C",  "C#", "Db", "D",  "Eb", "E",  "F",
                            "F#", "G",  "G#", "Ab", "A",  "Bb", "B"};
const QStringList Spellings = {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"};

bool meets(const QString& entry, const NoteRule& rule) {
    for (const char* c = rule.holds; *c; ++c)
        if (!entry.contains(QLatin1Char(*c))) return false;
    for (const char* c = rule.holdsNot; *c; ++c)
        if (entry.contains(QLatin1Char(*c))) return false;
    return true;
}

// The first entry that a note is taken for; -1 where there is none.
qsizetype positionOf(const QString& note, const QStringList& rootNotes) {
    for (const NoteRule& rule : NoteRules) {
        if (note != QLatin1String(rule.name)) continue;
        for (qsizetype i = 0; i < rootNotes.size(); ++i)
            if (meets(rootNotes[i], rule)) return i;
    }
    return -1;
}

// Semi-tones above C, by arithmetic.
int pitchOf(const QString& note) {
    constexpr std::array<int, 7> steps = {9, 11, 0, 2, 4, 5, 7};  // A to G
    int pitch = steps.at(size_t(note[0].unicode() - u'A'));
    if (note.endsWith(QLatin1Char('#'))) ++pitch;
    if (note.endsWith(QLatin1Char('b'))) --pitch;
    return (pitch + 12) % 12;
}

}  // namespace

class TestDeliveredDatabase : public WindowTest {
    Q_OBJECT

    QStringList keyRow(const QString& name) {
        const QStringList rows = world->rows(
            QStringLiteral("SELECT noteValue FROM transpose WHERE colName = '%1'").arg(name));
        return rows.size() == 1 ? rows[0].split(QLatin1Char(',')) : QStringList();
    }

    // A note moved by the key row of that name.
    QString moved(const QString& note, const QString& row) {
        const qsizetype at = positionOf(note, keyRow(QStringLiteral("rootnote")));
        return at < 0 ? QString() : keyRow(row).value(at);
    }

private Q_SLOTS:
    void tableHasItsColumns_data() {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("columns");
        QTest::newRow("songs") << "songs"
                               << "ID title artist dakey cat1 cat2 cat3 cat4 cat5 playlist "
                                  "fileLoco CCLI soundFile";
        QTest::newRow("categories") << "categories"
                                    << "ID name description";
        QTest::newRow("played_on") << "played_on"
                                   << "ID title played_date songID";
        QTest::newRow("special_music") << "special_music"
                                       << "ID song_name play_date remind_schedule remind_interval";
        QTest::newRow("prefs") << "prefs"
                               << "var_name var_value";
        QTest::newRow("notes") << "notes"
                               << "ID post_date notes notify_date";
        QTest::newRow("personell") << "personell"
                                   << "ID fName lName role role2 role3 address city state zip "
                                      "phone cell email vDays excludeScheduling";
        QTest::newRow("schedule") << "schedule"
                                  << "player instrument pdate";
        QTest::newRow("vacation") << "vacation"
                                  << "ID";
        QTest::newRow("transpose") << "transpose"
                                   << "colName noteValue";
    }
    void tableHasItsColumns() {
        QFETCH(QString, table);
        QFETCH(QString, columns);
        const QStringList found = world->rows(
            QStringLiteral("SELECT name FROM pragma_table_info('%1') ORDER BY cid").arg(table));
        QCOMPARE(found.join(QLatin1Char(' ')), columns);
        const bool seeded = table == QLatin1String("prefs") || table == QLatin1String("transpose");
        const QString count = world->rows(QStringLiteral("SELECT count(*) FROM %1").arg(table))[0];
        QCOMPARE(count != QLatin1String("0"), seeded);
    }

    void thereIsNoOtherTable() {
        QCOMPARE(world->rows("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT "
                             "LIKE 'sqlite_%' ORDER BY name"),
                 (QStringList{"categories", "notes", "personell", "played_on", "prefs", "schedule",
                              "songs", "special_music", "transpose", "vacation"}));
    }

    void counterColumnsCount() {
        for (const char* table :
             {"songs", "categories", "played_on", "special_music", "notes", "personell"}) {
            const QString name = QString::fromLatin1(table);
            world->sql(QStringLiteral("INSERT INTO %1 DEFAULT VALUES; DELETE FROM %1; INSERT INTO "
                                      "%1 DEFAULT VALUES")
                           .arg(name));
            QCOMPARE(world->rows(QStringLiteral("SELECT ID FROM %1").arg(name)), QStringList{"2"});
        }
    }

    void settingsStandInTheOrderOfTheMailWindow() {
        QCOMPARE(world->rows("SELECT var_name, var_value FROM prefs"),
                 (QStringList{"NotesOnStartUp|true", "DefaultSetList|", "SchedOnStartUp|false",
                              "ScedToUse|", "POPauthentication|false", "SMTPauthentication|false",
                              "EmailPassRemember|false", "EmailPassword|"}));
    }

    void aChangeOfASettingKeepsTheOrder() {
        const QStringList before = world->rows("SELECT var_name FROM prefs");
        world->sql("UPDATE prefs SET var_value = 'true' WHERE var_name = 'EmailPassRemember'");
        QCOMPARE(world->rows("SELECT var_name FROM prefs"), before);
    }

    void keyRowsAreComplete() {
        QCOMPARE(world->rows("SELECT count(*), count(DISTINCT colName) FROM transpose"),
                 QStringList{"25|25"});
        QStringList names = {"rootnote"};
        for (int n = 1; n <= 12; ++n)
            names << QStringLiteral("p%1").arg(n) << QStringLiteral("n%1").arg(n);
        for (const QString& name : names) {
            const QStringList row = keyRow(name);
            QCOMPARE(row.size(), 12);
            for (const QString& entry : row) {
                QVERIFY2(!entry.isEmpty() && !entry.contains(QLatin1Char(' ')), qPrintable(entry));
                const auto spellings = entry.split(QLatin1Char(':'));
                QVERIFY(name == QLatin1String("rootnote") || spellings.size() == 1);
                for (const QString& spelling : spellings)
                    QCOMPARE(pitchOf(spelling), pitchOf(spellings[0]));
            }
        }
    }

    void playedNotesFindTheirOwnPitch() {
        const QStringList rootNotes = keyRow("rootnote");
        for (const QString& note : Played) {
            const qsizetype at = positionOf(note, rootNotes);
            QVERIFY2(at >= 0, qPrintable(note));
            QCOMPARE(pitchOf(rootNotes[at].section(QLatin1Char(':'), 0, 0)), pitchOf(note));
        }
    }

    void eachKeyRowMovesByItsDistance() {
        for (int n = 1; n <= 12; ++n) {
            for (const QString& note : Played) {
                const QString up = moved(note, QStringLiteral("p%1").arg(n));
                const QString down = moved(note, QStringLiteral("n%1").arg(n));
                QVERIFY2(!up.isEmpty() && !down.isEmpty(), qPrintable(note));
                QCOMPARE(pitchOf(up), (pitchOf(note) + n) % 12);
                QCOMPARE(pitchOf(down), (pitchOf(note) - n + 12) % 12);
            }
        }
    }

    void aStepAndTheSameStepBackGiveTheSameName() {
        for (int n = 1; n <= 12; ++n) {
            const QString up = QStringLiteral("p%1").arg(n);
            const QString down = QStringLiteral("n%1").arg(n);
            for (const QString& note : Spellings) {
                QCOMPARE(moved(moved(note, up), down), note);
                QCOMPARE(moved(moved(note, down), up), note);
            }
        }
    }

    void twelveStepsChangeNoName() {
        for (const QString& note : Spellings) {
            QCOMPARE(moved(note, "p12"), note);
            QCOMPARE(moved(note, "n12"), note);
        }
        QCOMPARE(pitchOf(moved("Db", "p12")), pitchOf("Db"));
        QCOMPARE(pitchOf(moved("G#", "n12")), pitchOf("G#"));
    }

    void indexesStandOnNumbersOnly() {
        const QStringList indexed = world->rows(
            "SELECT m.tbl_name, c.name, c.type FROM sqlite_master AS i, pragma_index_info(i.name) "
            "AS x, sqlite_master AS m, pragma_table_info(m.name) AS c WHERE i.type = 'index' AND "
            "m.name = i.tbl_name AND c.cid = x.cid");
        QCOMPARE(indexed, QStringList{"played_on|songID|INTEGER"});
        // An index of the store's own making would carry a text column too.
        QCOMPARE(world->rows("SELECT count(*) FROM sqlite_master WHERE type = 'index'"),
                 QStringList{"1"});
    }

    void anyToolReadsTheFile() {
        QCOMPARE(world->rows("PRAGMA integrity_check"), QStringList{"ok"});
        QCOMPARE(world->rows("PRAGMA journal_mode"), QStringList{"delete"});
        QCOMPARE(world->rows("PRAGMA user_version"), QStringList{"1"});
        QCOMPARE(world->rows("SELECT var_name FROM prefs WHERE var_name = 'NOTESONSTARTUP'"),
                 QStringList{"NotesOnStartUp"});
        QCOMPARE(world->rows("SELECT colName FROM transpose ORDER BY colName LIMIT 1"),
                 QStringList{"n1"});
    }
};

LORVANITE_TEST(TestDeliveredDatabase)
#include "test_delivered_database.moc"
