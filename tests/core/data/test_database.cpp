// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The connection and the running of statements.
#include "core/data/collation.h"
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "support/registry.h"
#include "support/world.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <sqlite3.h>
#include <unistd.h>

namespace {

void run(const QString& source) {
    Recordset rs;
    rs.Open(source, dbConn, CursorType::Dynamic, LockType::Optimistic);
    if (rs.isOpen()) rs.Close();
}

QStringList column(const QString& source, const char* name) {
    QStringList values;
    Recordset rs;
    rs.Open(source, dbConn, CursorType::Dynamic, LockType::ReadOnly);
    for (; !rs.EOF_(); rs.MoveNext()) values.append(rs.Fields(name));
    rs.Close();
    return values;
}

int numberOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

}  // namespace

class TestDatabase : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void titleIsFoundWhateverItsCase() {
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('Amazing Grace'), ('ÉTERNEL'), ('Ευλόγει'), "
            "('주 하나님')");
        const auto found = [](const char* title) {
            return column(QStringLiteral("SELECT title FROM songs WHERE title = '%1'")
                              .arg(QString::fromUtf8(title)),
                          "TITLE")
                .size();
        };
        QCOMPARE(found("AMAZING GRACE"), 1);
        QCOMPARE(found("éternel"), 1);
        QCOMPARE(found("ΕΥΛΌΓΕΙ"), 1);
        QCOMPARE(found("주 하나님"), 1);
        QCOMPARE(found("e\xCC\x81ternel"), 1);  // the accent as a combining mark
        QCOMPARE(found("Amazing"), 0);
    }

    void titlesComeInTheOrderOfAPersonsList() {
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('zeal'), ('Émile'), ('apple'), ('Zion'), ('Eve'), "
            "('Äpfel'), ('Be Thou'), ('Élan'), ('B')");
        QCOMPARE(column("SELECT title FROM songs ORDER BY title", "title"),
                 (QStringList{"Äpfel", "apple", "B", "Be Thou", "Élan", "Émile", "Eve", "zeal",
                              "Zion"}));
    }

    void movedRecordsetGoesOnAtItsRow() {
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('One'), ('Two'), ('Three')");
        Recordset first = select("SELECT title FROM songs ORDER BY ID");
        first.MoveNext();
        Recordset second(std::move(first));
        QVERIFY(!first.isOpen());
        QCOMPARE(numberOf([&] { static_cast<void>(first.EOF_()); }),
                 int(RunTimeError::ObjectIsClosed));
        QCOMPARE(second.Fields("title"), QString("Two"));
        second.MoveNext();
        QCOMPARE(second.Fields("title"), QString("Three"));
        second.MoveNext();
        QVERIFY(second.EOF_());
    }

    void fileThatIsNotThereIsNotOpened() {
        Connection connection;
        const QString path = world->path("none.mdb");
        QVERIFY(numberOf([&] { connection.Open(path); }) != 0);
        QVERIFY(!connection.isOpen());
        QVERIFY(!QFile::exists(path));
        connection.Open(world->path("db1.mdb"));
        QVERIFY(connection.isOpen());
    }

    void plainTextsCompareAsTheCollatorDoes() {
        QCollator collator(QLocale(QLocale::English, QLocale::UnitedStates));
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        const QStringList texts = {"",    " ",       "a",   "A",  "b",        "ab",
                                   "a b", "a-b",     "a'b", "1",  "10",       "2",
                                   "(x)", "#1",      "Bb",  "bB", "12/25/01", "06/01/03",
                                   "é",   "e\u0301", "e",   "f",  "z~",       "_"};
        const auto sign = [](int n) { return (n > 0) - (n < 0); };
        for (const QString& a : texts)
            for (const QString& b : texts)
                QCOMPARE(compareTexts(a.toStdString(), b.toStdString()),
                         sign(collator.compare(a, b)));
    }

    void onlyCaseAndCompositionDoNotCount_data() {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("same");
        QTest::newRow("superscript") << "Psalm 2"
                                     << "Psalm \u00b2" << false;
        QTest::newRow("full width") << "Psalm"
                                    << "\uff30salm" << false;
        QTest::newRow("ligature") << "Office"
                                  << "O\ufb03ce" << false;
        QTest::newRow("accent") << "Elan"
                                << "\u00c9lan" << false;
        QTest::newRow("soft hyphen") << "Amen"
                                     << "A\u00admen" << false;
        QTest::newRow("hard blank") << "A B"
                                    << "A\u00a0"
                                       "B"
                                    << false;
        QTest::newRow("case") << "\u00c9LAN"
                              << "\u00e9lan" << true;
        QTest::newRow("composition") << "\u00c9lan"
                                     << "E\u0301lan" << true;
        QTest::newRow("both") << "\u00e9lan"
                              << "E\u0301LAN" << true;
        QTest::newRow("final sigma") << "\u03a3\u03a3"
                                     << "\u03c3\u03c2" << true;
    }
    void onlyCaseAndCompositionDoNotCount() {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(bool, same);
        QCOMPARE(compareTexts(a.toStdString(), b.toStdString()) == 0, same);
        QCOMPARE(compareTexts(a.toStdString(), b.toStdString()),
                 -compareTexts(b.toStdString(), a.toStdString()));
        openDatabase();
        run(QStringLiteral("INSERT INTO songs (title) VALUES ('%1')").arg(a));
        QCOMPARE(
            column(QStringLiteral("SELECT title FROM songs WHERE title = '%1'").arg(b), "title")
                .size(),
            same ? 1 : 0);
    }

    void songsWithANumberAreThoseWhoseNumberIsNotEmpty() {
        openDatabase();
        run("INSERT INTO songs (title, CCLI) VALUES ('with', '22025'), ('empty', ''), "
            "('null', NULL)");
        QCOMPARE(column("SELECT * FROM songs WHERE CCLI > ''", "title"), QStringList{"with"});
    }

    // Deliberate: behaviour 9.
    void updateOfAMissingKeyChangesNothingAndReportsNothing() {
        openDatabase();
        run("DELETE FROM prefs WHERE var_name = 'ScedToUse'");
        const QStringList before = world->rows("SELECT * FROM prefs");
        run("UPDATE prefs SET var_value = 'x' WHERE var_name = 'ScedToUse'");
        QCOMPARE(world->rows("SELECT * FROM prefs"), before);
    }

    // Deliberate: behaviour 8.
    void orderByAPlayedDateIsTheOrderOfText() {
        openDatabase();
        run("INSERT INTO played_on (title, played_date, songID) VALUES ('a', '12/31/05', 1), "
            "('a', '01/01/06', 1)");
        const QStringList dates =
            column("SELECT played_date FROM played_on ORDER BY played_date", "played_date");
        QCOMPARE(dates, (QStringList{"01/01/06", "12/31/05"}));
        QVERIFY(toDate(dates[0]) > toDate(dates[1]));
    }

    void deleteWithAStarEmptiesOrFilters() {
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('a * b'), ('c')");
        run("DELETE * FROM songs WHERE title = 'a * b'");
        QCOMPARE(column("SELECT title FROM songs", "title"), QStringList{"c"});
        run("  delete  *  from SONGS");
        QVERIFY(column("SELECT title FROM songs", "title").isEmpty());
    }

    void countersCountOnAndAreNotUsedAgain() {
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('a')");
        run("DELETE FROM songs");
        run("INSERT INTO songs (title) VALUES ('b')");
        QCOMPARE(column("SELECT ID FROM songs", "id"), QStringList{"2"});
    }

    void statementIsRefused_data() {
        QTest::addColumn<QString>("source");
        for (const char* source : {"ATTACH DATABASE 'x.db' AS x",
                                   "DETACH DATABASE main",
                                   "PRAGMA user_version = 7",
                                   "PRAGMA journal_mode = OFF",
                                   "DROP TABLE songs",
                                   "CREATE TABLE t (a)",
                                   "CREATE INDEX i ON songs (title)",
                                   "ALTER TABLE songs ADD COLUMN x",
                                   "BEGIN",
                                   "COMMIT",
                                   "SAVEPOINT a",
                                   "VACUUM",
                                   "REINDEX",
                                   "ANALYZE",
                                   "DELETE FROM songs; DELETE FROM played_on",
                                   "",
                                   "   ",
                                   "-- nothing",
                                   "UPDATE songs SET title = 'a' -- b', WHERE ID = 1",
                                   "UPDATE songs SET title = 'a' /* b', WHERE ID = 1",
                                   "SELECT title /* all */ FROM songs",
                                   "SELECT title FROM songs --",
                                   "SELECT title FROM songs WHERE title = \"text\"",
                                   "SELECT * FROM no_such_table",
                                   "SELECT no_such_column FROM songs",
                                   "SELECT title FROM songs WHERE title = 'it's'",
                                   "DELETE FROM sqlite_master",
                                   "CREATE TEMP TABLE t (a)",
                                   "CREATE TRIGGER t AFTER INSERT ON songs BEGIN SELECT 1; END"})
            QTest::newRow(source) << QString::fromLatin1(source);
    }
    void statementIsRefused() {
        QFETCH(QString, source);
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('a')");
        run("INSERT INTO played_on (title) VALUES ('a')");
        const QStringList before = world->rows("SELECT sql FROM sqlite_master");
        QCOMPARE(numberOf([&] { run(source); }), int(RunTimeError::StatementRefused));
        QCOMPARE(world->rows("SELECT sql FROM sqlite_master"), before);
        QCOMPARE(world->rows("SELECT count(*) FROM songs"), QStringList{"1"});
        QCOMPARE(world->rows("SELECT count(*) FROM played_on"), QStringList{"1"});
    }

    void trailingSemicolonIsNoSecondStatement() {
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('a;b');  \n");
        QCOMPARE(world->rows("SELECT title FROM songs"), QStringList{"a;b"});
    }

    void textBehindAZeroIsNotLeftOut() {
        openDatabase();
        QString source = QStringLiteral("DELETE FROM prefs");
        source.append(QChar(0)).append(QStringLiteral(" WHERE var_name = 'ScedToUse'"));
        QCOMPARE(numberOf([&] { run(source); }), int(RunTimeError::StatementRefused));
        QCOMPARE(world->rows("SELECT count(*) FROM prefs"), QStringList{"8"});
    }

    void recordsetKeepsItsRules() {
        Recordset rs;
        const auto open = [&](const char* source) {
            rs.Open(source, dbConn, CursorType::Dynamic, LockType::ReadOnly);
        };
        QCOMPARE(numberOf([&] { open("SELECT * FROM songs"); }), int(RunTimeError::ObjectIsClosed));
        openDatabase();
        QCOMPARE(numberOf([] { openDatabase(); }), int(RunTimeError::ObjectIsOpen));
        open("SELECT * FROM songs");
        QVERIFY(rs.EOF_());
        QCOMPARE(numberOf([&] { rs.Fields("title"); }), int(RunTimeError::NoCurrentRecord));
        QCOMPARE(numberOf([&] { rs.MoveNext(); }), int(RunTimeError::NoCurrentRecord));
        QCOMPARE(numberOf([&] { rs.MoveFirst(); }), int(RunTimeError::NoCurrentRecord));
        QCOMPARE(numberOf([&] { open("SELECT * FROM prefs"); }), int(RunTimeError::ObjectIsOpen));
        rs.Close();
        QCOMPARE(numberOf([&] { (void)rs.EOF_(); }), int(RunTimeError::ObjectIsClosed));
        open("SELECT * FROM prefs");
        QCOMPARE(numberOf([&] { rs.Fields("nothing"); }), int(RunTimeError::NoSuchItem));
        const QString first = rs.Fields("VAR_NAME");
        while (!rs.EOF_()) rs.MoveNext();
        rs.MoveFirst();
        QCOMPARE(rs.Fields("var_name"), first);
        rs.Close();
    }

    void fieldIsReadAsTextBytesAndNumber() {
        openDatabase();
        const Recordset rs = select("SELECT 'Größe' AS size, 12 AS number, NULL AS absent");
        QCOMPARE(rs.Fields("Size"), QStringLiteral("Größe"));
        QCOMPARE(rs.Bytes("size").toByteArray(), QByteArray("Größe"));
        QCOMPARE(rs.Number("size"), 0);
        QCOMPARE(rs.Fields("number"), QStringLiteral("12"));
        QCOMPARE(rs.Number("Number"), 12);
        QVERIFY(rs.Fields("absent").isNull());
        QVERIFY(rs.Bytes("absent").isNull());
        QCOMPARE(rs.Number("absent"), 0);
        QCOMPARE(numberOf([&] { rs.Number("missing"); }), int(RunTimeError::NoSuchItem));
    }

    void columnIsReadByItsNumber() {
        openDatabase();
        Recordset rs = select("SELECT 'Größe' AS size, 12 AS number UNION ALL SELECT 'b', 13");
        const int size = rs.Column("Size");
        const int number = rs.Column("number");
        QCOMPARE(rs.Fields(size), QStringLiteral("Größe"));
        QCOMPARE(rs.Number(number), 12);
        rs.MoveNext();
        QCOMPARE(rs.Bytes(size).toByteArray(), QByteArray("b"));
        QCOMPARE(rs.Number(number), 13);
        QVERIFY(rs.Fields(number + 1).isNull());
        rs.MoveNext();
        QCOMPARE(rs.Column("number"), number);  // needs no row
        QCOMPARE(numberOf([&] { rs.Fields(size); }), int(RunTimeError::NoCurrentRecord));
        QCOMPARE(numberOf([&] { rs.Column("missing"); }), int(RunTimeError::NoSuchItem));
        rs.Close();
        QCOMPARE(numberOf([&] { rs.Column("number"); }), int(RunTimeError::ObjectIsClosed));
    }

    void writeLeavesTheRecordsetClosed() {
        openDatabase();
        Recordset rs;
        for (int i = 0; i < 3; ++i)
            rs.Open("INSERT INTO songs (title) VALUES ('a')", dbConn, CursorType::Dynamic,
                    LockType::Optimistic);
        QVERIFY(!rs.isOpen());
        QCOMPARE(world->rows("SELECT count(*) FROM songs"), QStringList{"3"});
    }

    void byteOrderMarkAtTheStartOfATextIsKept() {
        openDatabase();
        const QString title = QStringLiteral("\ufeffPasted \ufeffFrom Afar");
        run("INSERT INTO songs (title) VALUES ('" + title + "')");
        QCOMPARE(column("SELECT title FROM songs", "title"), QStringList{title});
    }

    void nullReadsAsTheEmptyText() {
        openDatabase();
        run("INSERT INTO songs (title, artist) VALUES ('a', NULL)");
        QCOMPARE(column("SELECT * FROM songs", "artist"), QStringList{""});
    }

    void lockedDatabaseRefusesTheStatementAndLosesNothing() {
        openDatabase();
        run("INSERT INTO songs (title) VALUES ('kept')");
        sqlite3* other = nullptr;
        QCOMPARE(sqlite3_open(world->path("db1.mdb").toUtf8().constData(), &other), SQLITE_OK);
        QCOMPARE(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
        QString description;
        try {
            run("DELETE FROM songs");
        } catch (const RunTimeError& error) {
            description = error.description();
        }
        QCOMPARE(description, QStringLiteral("database is locked"));
        sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(other);
        QCOMPARE(world->rows("SELECT title FROM songs"), QStringList{"kept"});
        run("DELETE FROM songs");
        QCOMPARE(world->rows("SELECT count(*) FROM songs"), QStringList{"0"});
    }

    void readOnlyFolderRefusesWritesAndReadsOn() {
        // The superuser may write anywhere, so the test becomes another user.
        const auto all = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther |
                         QFile::ReadGroup | QFile::ExeGroup;
        QFile::setPermissions(world->path("db1.mdb"), all);
        QFile::setPermissions(world->folder(), all);
        QFile::setPermissions(QFileInfo(world->folder()).path(), all | QFile::WriteOwner);
        const bool isRoot = geteuid() == 0;
        if (isRoot) QCOMPARE(seteuid(65534), 0);
        openDatabase();
        const QStringList read = column("SELECT var_name FROM prefs", "var_name");
        const int number = numberOf([] { run("DELETE FROM prefs"); });
        dbConn.Close();
        if (isRoot) QCOMPARE(seteuid(0), 0);
        QFile::setPermissions(world->folder(), all | QFile::WriteOwner);
        QFile::setPermissions(world->path("db1.mdb"), all | QFile::WriteOwner);
        QCOMPARE(read.size(), 8);
        QCOMPARE(number, int(RunTimeError::StatementRefused));
        QCOMPARE(world->rows("SELECT count(*) FROM prefs"), QStringList{"8"});
    }

    void statementLogHoldsSourceCursorAndLock() {
        openDatabase();
        Recordset rs;
        rs.Open("UPDATE prefs SET var_value = '' WHERE var_name = 'x'", dbConn, CursorType::Dynamic,
                LockType::BatchOptimistic);
        QCOMPARE(world->statements,
                 QStringList{"UPDATE prefs SET var_value = '' WHERE var_name = 'x' [4]"});
    }

    void statementLogHoldsPlaceholdersAsTheyAre() {
        openDatabase();
        const QString source = "UPDATE prefs SET var_value = '%1 and %2' WHERE var_name = '%1'";
        run(source);
        QCOMPARE(world->statements, QStringList{source + " [3]"});
    }
};

LORVANITE_TEST(TestDatabase)
#include "test_database.moc"
