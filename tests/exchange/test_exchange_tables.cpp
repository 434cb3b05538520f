// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tables, cards and odd bytes are read, and what is not to be read names its reason.
#include "exchange/rules/plain_text.h"
#include "samples.h"
#include "support/registry.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList shownPlayed(const ExchangeContent& content) {
    QStringList rows;
    for (const PlayedDate& one : content.played)
        rows += one.title + u' ' + one.ccli + u' ' + one.date.toString(Qt::ISODate);
    return rows;
}

QString reasonOf(const QByteArray& bytes, const char* name = "file.xyz") {
    const ExchangeContent content = readExchangeFile(bytes, QLatin1String(name));
    return content.isEmpty() ? content.reason : u"was read"_s;
}

}  // namespace

class TestExchangeTables : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void songsOfATableInWindows1252() {
        const ExchangeContent content = readSample(u"songs_1252.csv"_s);
        QCOMPARE(content.form, ExchangeForm::SongsCsv);
        QCOMPARE(content.songs.size(), 2);
        const Song& song = content.songs[0];
        QCOMPARE(song.title(), u"Gro\u00dfer; Gott"_s);
        QCOMPARE(song.authors, QList<SongAuthor>({{u"Ignaz Franz"_s, SongAuthor::Work::Any}}));
        QCOMPARE(song.key, u"F"_s);
        QCOMPARE(song.ccli, u"4339485"_s);
        QCOMPARE(song.themes, QStringList({u"Lob"_s, u"Dank"_s}));
        QCOMPARE(content.songs[1].title(), u"Zwei Zeilen \"quoted\""_s);
        QCOMPARE(shownPlayed(content), QStringList{u"Gro\u00dfer; Gott 4339485 2025-11-22"_s});
        QCOMPARE(content.unread,
                 QStringList({u"Row 3 has no title."_s, u"Row 4: \"soon\" is not a date."_s}));
    }

    void playedDatesWithTheDayFirst() {
        const ExchangeContent content = readSample(u"played.csv"_s);
        QCOMPARE(content.form, ExchangeForm::PlayedCsv);
        QCOMPARE(shownPlayed(content),
                 QStringList({u"Amazing Grace  2026-04-13"_s, u"Doxology  2026-04-05"_s,
                              u"Doxology  2026-04-12"_s}));
        QCOMPARE(content.unread, QStringList{u"Row 4: \"not a date\" is not a date."_s});
    }

    void playedDatesWithoutHeads() {
        QCOMPARE(shownPlayed(readSample(u"played_headless.tsv"_s)),
                 QStringList({u"Amazing Grace  2026-01-04"_s, u"Doxology  2026-01-11"_s}));
    }

    void peopleOfATableInUtf16() {
        const ExchangeContent content = readSample(u"people_utf16.csv"_s);
        QCOMPARE(content.form, ExchangeForm::PeopleCsv);
        const Contact expected{
            u"Zo\u00eb"_s, u"O'Brien"_s, {u"Keys"_s, u"Vocals"_s}, {}, {}, {}, {},
            u"555 2"_s,    u"555 1"_s,   u"zoe@example.org"_s};
        QCOMPARE(content.people, QList<Contact>{expected});
    }

    void cardsOfAllVersions() {
        const ExchangeContent content = readSample(u"people.vcf"_s);
        QCOMPARE(content.form, ExchangeForm::VCard);
        const QList<Contact> expected = {
            {u"J\u00f6rg"_s,
             u"M\u00fcller"_s,
             {},
             u"1 Main Street"_s,
             u"Springfield"_s,
             u"IL"_s,
             u"62701"_s,
             u"555 22"_s,
             u"555 11"_s,
             {}},
            {u"Ann Mary"_s,
             u"Bee"_s,
             {u"Drums"_s, u"Choir"_s},
             {},
             {},
             {},
             {},
             {},
             {},
             u"ann@example.org"_s},
            {u"Carl"_s, u"Dee"_s, {}, {}, {}, {}, {}, {}, u"+1-555-44"_s, {}}};
        QCOMPARE(content.people, expected);
        QCOMPARE(content.unread, QStringList{u"Card 4 is not a person's."_s});
    }

    void reasonIsNamed_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* name, const QByteArray& bytes, const QString& reason) {
            QTest::newRow(name) << bytes << reason;
        };
        row("empty", "", u"The file is empty."_s);
        row("blank", " \r\n\t\n", u"The file is empty."_s);
        row("pdf", "%PDF-1.4", u"The file is a PDF document."_s);
        row("zip", QByteArray("PK\x03\x04rest"),
            u"The file is a ZIP archive or an office document."_s);
        row("web page", "<!DOCTYPE html><html></html>", u"The file is a web page."_s);
        row("other XML", "<playlist><song2/></playlist>",
            u"The file is XML of another kind (<playlist>)."_s);
        row("prose", "Dear all,\nplease come.\n", u"The file has none of the known forms."_s);
        row("bytes", QByteArray("ab\0\0\1\2cd", 8), u"The file is not a text."_s);
        row("database", "SQLite format 3" + QByteArray(900, '\0'), u"The database is damaged."_s);
        row("entities", sampleBytes(u"billion_laughs.xml"_s),
            u"The file declares entities of its own, which are not read."_s);
        row("depth", "<song>" + QByteArray("<a>").repeated(300'000),
            u"The file nests too deeply."_s);
        row("attributes", "<song " + QByteArray("a='1' ").repeated(200'000) + "/>",
            u"A tag of the file has too many attributes."_s);
    }

    void reasonIsNamed() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, reason);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(reasonOf(bytes), reason);
        QVERIFY(clock.elapsed() < 10'000);
    }

    void largeFileIsRefusedUnread() {
        QCOMPARE(reasonOf(QByteArray(MaxTextBytes + 1, 'x')), u"The file is too large."_s);
    }

    // The database's tables are what counts, not what a view makes of them.
    void databaseWithoutEndIsLeft() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"endless.sqlite"_s);
        sqlite3* db = nullptr;
        QCOMPARE(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
        QCOMPARE(sqlite3_exec(db,
                              "CREATE VIEW songs AS WITH RECURSIVE n(id) AS (SELECT 1 UNION ALL "
                              "SELECT id + 1 FROM n) SELECT id, 'x' AS title, 'y' AS lyrics FROM n",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        sqlite3_close(db);
        QCOMPARE(reasonOf(bytesOf(path)), u"The database holds no songs."_s);
    }

    void encodingIsFound_data() {
        QTest::addColumn<QByteArray>("bytes");
        const QString text = u"{title: Gro\u00df}\n[G]\u00dcber \u201ealles\u201c \u2026\n"_s;
        const QByteArray utf8 = text.toUtf8();
        QTest::newRow("UTF-8") << utf8;
        QTest::newRow("UTF-8 with a mark") << "\xEF\xBB\xBF" + utf8;
        QTest::newRow("CR") << QByteArray(utf8).replace('\n', '\r');
        for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
            QStringEncoder plain(encoding), marked(encoding, QStringConverter::Flag::WriteBom);
            QTest::newRow(encoding == QStringConverter::Utf16LE ? "UTF-16LE" : "UTF-16BE")
                << QByteArray(plain.encode(text));
            QTest::newRow(encoding == QStringConverter::Utf16LE ? "UTF-16LE with a mark"
                                                                : "UTF-16BE with a mark")
                << QByteArray(marked.encode(text));
        }
        QTest::newRow("Windows-1252") << QByteArray(
            "{title: Gro\xdf}\n[G]\xdc"
            "ber \x84"
            "alles\x93 \x85\n");
        QTest::newRow("mixed") << QByteArray(
            "{title: Gro\xc3\x9f}\n[G]\xdc"
            "ber \x84"
            "alles\x93 \x85\n");
        QTest::newRow("doubly made") << QByteArray(
            "{title: Gro\xc3\x9f}\n[G]\xc3\x9c"
            "ber \xc2\x84"
            "alles\xc2\x93 \xc2\x85\n");
    }

    void encodingIsFound() {
        QFETCH(QByteArray, bytes);
        const ExchangeContent content = readExchangeFile(bytes, u"x.cho"_s);
        QCOMPARE(content.songs.size(), 1);
        QCOMPARE(content.songs[0].title(), u"Gro\u00df"_s);
        QCOMPARE(shownVerses(content.songs[0]),
                 QStringList{u"v1: [G]\u00dcber \u201ealles\u201c \u2026"_s});
    }

    void encodingOfTheXmlHeadCounts() {
        const QByteArray bytes =
            "<?xml version='1.0' encoding='iso-8859-2'?><song><title>\xb3\xf3\xbf</title>"
            "<lyrics/></song>";
        QCOMPARE(readExchangeFile(bytes, {}).songs.value(0).title(), u"\u0142\u00f3\u017c"_s);
    }

    void quoteThatNothingClosesIsText() {
        const ExchangeContent content =
            readExchangeFile("Title,Key\n5\" of rain,G\n\"Open,D\nLast,E\n", u"a.csv"_s);
        QStringList titles;
        for (const Song& song : content.songs) titles += song.title() + u' ' + song.key;
        QCOMPARE(titles, QStringList({u"5\" of rain G"_s, u"\"Open D"_s, u"Last E"_s}));
    }

    void ccliNumberIsFoundAmongWords() {
        QCOMPARE(ccliDigits(u"CCLI Song # 0022025"_s), u"22025"_s);
        QCOMPARE(ccliDigits(u"22025.0"_s), u"22025"_s);
        QCOMPARE(ccliDigits(u"none"_s), QString());
    }
};

LORVANITE_TEST(TestExchangeTables)
#include "test_exchange_tables.moc"
