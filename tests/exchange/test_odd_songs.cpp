// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Songs that their files hold in rare ways, or in part.
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"
#include "samples.h"
#include "support/registry.h"

#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

Song firstSong(const QString& text, const char* name) {
    return readExchangeFile(text.toUtf8(), QLatin1String(name)).songs.value(0);
}

QString creditsOf(const Song& song) {
    static const QStringList works = {QString(), u"words "_s, u"music "_s, u"translation "_s,
                                      u"arrangement "_s};
    QStringList all;
    for (const SongAuthor& author : song.authors) all += works[int(author.work)] + author.name;
    return all.join(u"; "_s);
}

// The bytes of a database that the statements make.
QByteArray databaseOf(const char* statements) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"songs.sqlite"_s);
    sqlite3* db = nullptr;
    const bool made = sqlite3_open(path.toUtf8().constData(), &db) == SQLITE_OK &&
                      sqlite3_exec(db, statements, nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    return made ? bytesOf(path) : QByteArray();
}

}  // namespace

class TestOddSongs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void creditSaysWhoDidWhat_data() {
        QTest::addColumn<QString>("credits");
        const auto row = [](const char* text, const QString& credits) {
            QTest::newRow(text) << credits;
        };
        row("Ann Bee", u"Ann Bee"_s);
        row("Words and Music by Ann Bee", u"Ann Bee"_s);
        row("Music & Words by Ann Bee", u"Ann Bee"_s);
        row("Words: Ann Bee | Music: Carl Dee", u"words Ann Bee; music Carl Dee"_s);
        row("Lyrics by Ann Bee, Carl Dee", u"words Ann Bee; words Carl Dee"_s);
        row("Text: Ann Bee; Melodie: Carl Dee", u"words Ann Bee; music Carl Dee"_s);
        row("Text und Melodie: Jörg Müller", u"Jörg Müller"_s);
        row("Tune: Carl Dee", u"music Carl Dee"_s);
        row("Composed by Carl Dee", u"music Carl Dee"_s);
        row("Translation: Ann Bee", u"translation Ann Bee"_s);
        row("translated by Ann Bee", u"translation Ann Bee"_s);
        row("Deutsch: Jörg Müller", u"translation Jörg Müller"_s);
        row("Übersetzung: Jörg Müller", u"translation Jörg Müller"_s);
        row("übersetzung: Jörg Müller", u"translation Jörg Müller"_s);
        row("Arr. by Carl Dee", u"arrangement Carl Dee"_s);
        row("arranged by Carl Dee", u"arrangement Carl Dee"_s);
        row("Written by Ann Bee", u"Ann Bee"_s);
        row("Author: Ann Bee", u"Ann Bee"_s);
        row("Music Makers", u"Music Makers"_s);
        row("Bee, Ann", u"Bee, Ann"_s);
        row("; | ;", QString());
        row("Ann Bee; Ann Bee", u"Ann Bee"_s);
    }

    void creditSaysWhoDidWhat() {
        QFETCH(QString, credits);
        Song song;
        addAuthors(song, QString::fromUtf8(QTest::currentDataTag()));
        QCOMPARE(creditsOf(song), credits);
    }

    void headOfATextIsRead_data() {
        QTest::addColumn<QString>("head");
        QTest::addColumn<QString>("credits");
        QTest::addColumn<QString>("fields");
        const auto row = [](const char* name, const char* head, const QString& credits,
                            const QString& fields) {
            QTest::newRow(name) << QString::fromUtf8(head) << credits << fields;
        };
        row("named authors", "Words: Ann Bee\nMusic by Carl Dee\nArtist: Eve Fox\n",
            u"words Ann Bee; music Carl Dee; Eve Fox"_s, u"|||"_s);
        row("text and author", "Text: Ann Bee\nAutor: Carl Dee\n", u"words Ann Bee; Carl Dee"_s,
            u"|||"_s);
        row("capo", "Capo: 2\n", QString(), u"||2|"_s);
        row("no capo", "Capo: None\n", QString(), u"|||"_s);
        row("capo in empty brackets", "Capo: []\n", QString(), u"|||"_s);
        row("key in empty brackets", "Key: [ ]\n", QString(), u"|||"_s);
        row("key in brackets", "Key: [Bb]\n", QString(), u"Bb|||"_s);
        row("all on a line", "Key: G | Capo 3 | Time: 6/8 | 72 BPM\n", QString(), u"G|6/8|3|72"_s);
        row("all on a line with names", "Key - G | Capo 3 | Time = 6/8 | Tempo: 72 bpm\n",
            QString(), u"G|6/8|3|72"_s);
        row("tempo in words", "Tempo: slowly\n", QString(), u"|||slowly"_s);
    }

    void headOfATextIsRead() {
        QFETCH(QString, head);
        QFETCH(QString, credits);
        QFETCH(QString, fields);
        const Song song = firstSong(u"Title\n"_s + head + u"\nVerse 1\nOne\n"_s, "a.txt");
        QCOMPARE(song.title(), u"Title"_s);
        QCOMPARE(creditsOf(song), credits);
        QCOMPARE(QStringList({song.key, song.time, song.capo, song.tempo}).join(u'|'), fields);
        QCOMPARE(shownVerses(song), QStringList{u"v1 Verse 1: One"_s});
    }

    void numberBeforeAVerseGoesAndItsChordsMove() {
        const Song song = firstSong(
            u"Title\n\nG  C      D\n1. Amazing grace\n\nG  C\n2. 'Twas grace\nand more\n"_s,
            "a.txt");
        QCOMPARE(shownVerses(song), QStringList({u"v1 Verse 1: [G][C]Amazing[D] grace"_s,
                                                 u"v2 Verse 2: [G][C]'Twas grace / and more"_s}));
    }

    // A chord in the middle of a character of two units stands before it.
    void chordNeverPartsACharacter() {
        const Song song = firstSong(u"Title\n\nVerse 1\nG       C\n𝄞 Joy 🎵 sung\n"_s, "a.txt");
        const SongLine line = song.verses.value(0).lines.value(0);
        QCOMPARE(line.text, u"𝄞 Joy 🎵 sung"_s);
        QCOMPARE(line.chords.size(), 2);
        QCOMPARE(line.chords[1].column, 7);
        Song built;
        SongBuilder builder(built);
        builder.addLine(u"🎵 sung"_s, {{1, u"G"_s, false}});
        QCOMPARE(shownVerses(built).value(0), u": [G]🎵 sung"_s);
    }

    void chordProDirectiveIsTaken_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("verses");
        const auto row = [](const char* name, const char* text, const QStringList& verses) {
            QTest::newRow(name) << QString::fromUtf8(text) << verses;
        };
        row("chorus without one", "{chorus}\n[G]One\n", {u"v1: {Chorus} / [G]One"_s});
        row("label as a directive", "{Verse 2}\n[G]One\n", {u"v2 Verse 2: [G]One"_s});
        row("label of Unicode", "{Brücke: 1}\n[G]One\n", {u"b1 Brücke: 1: [G]One"_s});
        row("remark in braces", "{slowly now}\n[G]One\n", {u"v1: {slowly now} / [G]One"_s});
        row("label before chords", "Intro: [G] [C]\n\nVerse:\n[G]One\n",
            {u"i Intro: [G]  [C]"_s, u"v1 Verse: [G]One"_s});
        row("section without end", "{soc}\n[G]One\n\n{c: end}\ntwo\n",
            {u"c Chorus: [G]One"_s, u"e end: two"_s});
        row("end without section", "{eoc}\n[G]One\n{eov}\n{eob}\n", {u"v1: [G]One"_s});
        row("tab without end", "[G]One\n{sot}\ne|---3---|\n", {u"v1: [G]One"_s});
        row("brace without end", "{c: One\n[G]two\n", {u"v1: {One} / [G]two"_s});
        row("escape", "[G]\\u00dcber \\u000a \\uXYZ\n", {u"v1: [G]Über \\u000a \\uXYZ"_s});
        row("escaped controls", "[G]One\\u009b two\\ufeff\n", {u"v1: [G]One\\u009b two\\ufeff"_s});
        row("escaped pair", "[G]\\ud83d\\ude00 \\ud83d one\n", {u"v1: [G]😀 � one"_s});
        row("blanks below a remark", "[*softly]  One [G]two\n", {u"v1: [*softly]One [G]two"_s});
        row("bracket in a bracket", "[G]One [ [C]two [D\n", {u"v1: [G]One [ [C]two [D"_s});
        row("escaped bracket", "[G]One [*\\u005bsoftly\\u005d]two\n",
            {u"v1: [G]One [*[softly]]two"_s});
        row("meta in meta", "{meta: meta meta title Deep}\n[G]One\n", {u"v1: [G]One"_s});
        row("joined line", "[G]One \\\n  [C]two\n", {u"v1: [G]One [C]two"_s});
        row("bracket without end", "[G]One [C two\n", {u"v1: [G]One [C two"_s});
        row("empty brackets", "[G]One [] two [|]\n", {u"v1: [G]One  two"_s});
    }

    void chordProDirectiveIsTaken() {
        QFETCH(QString, text);
        QFETCH(QStringList, verses);
        const Song song = firstSong(u"{title: T}\n"_s + text, "a.cho");
        QCOMPARE(song.titles, QStringList{u"T"_s});
        QCOMPARE(shownVerses(song), verses);
    }

    void chordProHeadIsTaken() {
        const ExchangeContent content = readExchangeFile(
            "{title: T}\n{subtitle: (Second)}\n{subtitle: Ann Bee}\n{subtitle: from a book}\n"
            "{album: Best}\n{year: 1990}\n{image: src=\"a.png\"}\n{number: 12}\n{book: Hymnal #7}\n"
            "{composer: Carl Dee}\n{x_comment: kept}\n{capo:}\n{key: [G]}\n{footer: CCLI Song # "
            "22025}\n{footer: All of us}\n{flow: V1 C9}\n{sov}\nOne\n",
            u"a.cho"_s);
        const Song song = content.songs.value(0);
        QCOMPARE(song.titles, QStringList({u"T"_s, u"(Second)"_s}));
        QCOMPARE(creditsOf(song), u"music Carl Dee"_s);
        QCOMPARE(song.comments, QStringList({u"album: Best"_s, u"year: 1990"_s, u"kept"_s,
                                             u"All of us"_s, u"Ann Bee"_s, u"from a book"_s}));
        QCOMPARE(song.songbooks, QList<Songbook>({{QString(), u"12"_s}, {u"Hymnal"_s, u"7"_s}}));
        QCOMPARE(song.key, u"G"_s);
        QCOMPARE(song.ccli, u"22025"_s);
        QCOMPARE(song.capo, QString());
        QCOMPARE(song.verseOrder, QStringList{u"v1"_s});
        QCOMPARE(song.unread,
                 QStringList({u"Line 7: a picture was left out."_s,
                              u"The verse order names \"C9\", which is not there."_s}));
    }

    void headWithoutDirectivesEndsAtTheThirdLine() {
        const Song song = firstSong(u"My Title\nAnn Bee\nThis is sung\n[G]One\n"_s, "a.onsong");
        QCOMPARE(song.title(), u"My Title"_s);
        QCOMPARE(creditsOf(song), u"Ann Bee"_s);
        QCOMPARE(shownVerses(song), QStringList{u"v1: This is sung / [G]One"_s});
    }

    void openLyricsIsTaken_data() {
        QTest::addColumn<QString>("verse");
        QTest::addColumn<QStringList>("verses");
        const auto row = [](const char* name, const char* verse, const QStringList& verses) {
            QTest::newRow(name) << QString::fromUtf8(verse) << verses;
        };
        row("chords as a comment",
            "<verse name='v1'><lines><comment>G C D</comment></lines></verse>",
            {u"v1 Verse 1: [G]  [C]  [D]"_s});
        row("comment alone", "<verse name='v1'><lines><comment>softly</comment></lines></verse>",
            {u"v1 Verse 1: {softly}"_s});
        row("names of all kinds",
            "<verse name='p'><lines>1</lines></verse><verse name='m2'><lines>2</lines></verse>"
            "<verse name='s'><lines>3</lines></verse><verse name='o1b'><lines>4</lines></verse>",
            {u"p Pre-Chorus: 1"_s, u"m2 Middle 2: 2"_s, u"s Solo: 3"_s, u"o1b Other 1b: 4"_s});
        row("comments of XML",
            "<!-- -- one --><verse name='v1'><lines>A<!-- two -->B</lines></verse>",
            {u"v1 Verse 1: AB"_s});
        row("line ends of web pages", "<verse name='v1'><lines>A<br>B<br></br>C</lines></verse>",
            {u"v1 Verse 1: A / B / C"_s});
        row("entities of web pages",
            "<verse name='v1'><lines>A&nbsp;&amp; B &Uuml;&ouml; &never; & < 3</lines></verse>",
            {u"v1 Verse 1: A & B Üö ? & < 3"_s});
        row("CDATA", "<verse name='v1'><lines><![CDATA[A < B & C]]></lines></verse>",
            {u"v1 Verse 1: A < B & C"_s});
        row("words without lines", "<verse name='v1'>A\nB</verse>", {u"v1 Verse 1: A / B"_s});
        row("empty verse", "<verse name='v1'><lines/></verse>", {});
        row("chord of which the fifth is missing",
            "<verse name='v1'><lines><chord root='C' structure='3'/>A <chord root='C' "
            "structure='3-d5' bass='E'/>B</lines></verse>",
            {u"v1 Verse 1: [Cno5]A [C(b5)/E]B"_s});
        row("two of one name",
            "<verse name='v1'><lines>A</lines></verse><verse name='v1'><lines>B"
            "</lines></verse>",
            {u"v1 Verse 1: A"_s, u"v2 Verse 1: B"_s});
    }

    void openLyricsIsTaken() {
        QFETCH(QString, verse);
        QFETCH(QStringList, verses);
        const ExchangeContent content = readExchangeFile(
            (u"<song xmlns='http://openlyrics.info/namespace/2009/song'><properties><titles><title>"
             "T</title></titles></properties><lyrics>"_s +
             verse + u"</lyrics></song>"_s)
                .toUtf8(),
            u"a.xml"_s);
        QCOMPARE(content.form, ExchangeForm::OpenLyrics);
        QCOMPARE(content.reason, QString());
        QCOMPARE(shownVerses(content.songs.value(0)), verses);
    }

    void openLyricsPropertiesAreTaken() {
        const Song song = firstSong(
            u"<song><properties><titles><title>T</title></titles><transposition>2</transposition>"
            "<authors><author type='arrangement'>Ann Bee</author></authors>"
            "<songbooks><songbook name='-' entry='3'/><songbook/></songbooks>"
            "<comments><comment>Key: D</comment><comment>Key: E</comment><comment>Time: 3/4"
            "</comment><comment>Capo: 2</comment><comment>slow</comment><comment/></comments>"
            "</properties><lyrics/></song>"_s,
            "a.xml");
        QCOMPARE(song.unread, QStringList{u"A transposition by 2 semitones is not applied."_s});
        QCOMPARE(creditsOf(song), u"arrangement Ann Bee"_s);
        QCOMPARE(song.songbooks, QList<Songbook>({{QString(), u"3"_s}}));
        QCOMPARE(song.key, u"D"_s);
        QCOMPARE(song.time, u"3/4"_s);
        QCOMPARE(song.capo, u"2"_s);
        QCOMPARE(song.comments, QStringList({u"Key: E"_s, u"slow"_s}));
    }

    void commentWithoutEndIsDamage() {
        const ExchangeContent content = readExchangeFile(
            "<song><title>T</title><lyrics>[V1]\n One\n</lyrics><!-- never", u"a"_s);
        QCOMPARE(content.songs.value(0).title(), u"T"_s);
        QVERIFY2(content.reason.startsWith("The file is damaged at line "_L1),
                 qPrintable(content.reason));
    }

    void webPageWithAnXmlHeadIsNamed() {
        const ExchangeContent content =
            readExchangeFile("<?xml version='1.0'?>\n<HTML><body/></HTML>", u"a.xml"_s);
        QCOMPARE(content.reason, u"The file is a web page."_s);
    }

    void openSongSectionOfNumberedLinesIsParted() {
        const Song song = firstSong(
            u"<song><title>T</title><user1>mine</user1><user3>yours</user3><lyrics>[V1]\n1One\n"
            "2Two\n[C]\n1Three\n2Four\n[]\n1Five\n</lyrics></song>"_s,
            "a");
        QCOMPARE(song.comments, QStringList({u"mine"_s, u"yours"_s}));
        QCOMPARE(shownVerses(song), QStringList({u"v1a Verse 1a: One"_s, u"v1b Verse 1b: Two"_s,
                                                 u"c1 Chorus 1: Three"_s, u"c2 Chorus 2: Four"_s,
                                                 u"v1 Verse 1: Five"_s}));
    }

    void songDatabaseOfAnOldFormIsRead() {
        const ExchangeContent content = readExchangeFile(
            databaseOf(
                "CREATE TABLE songs (id INTEGER PRIMARY KEY, title, lyrics, comments, song_key, "
                "song_number, song_book_id);"
                "CREATE TABLE authors (id INTEGER PRIMARY KEY, first_name, last_name);"
                "CREATE TABLE authors_songs (author_id, song_id);"
                "CREATE TABLE song_books (id INTEGER PRIMARY KEY, name);"
                "INSERT INTO songs VALUES (1, 'Größe', '[G]One' || char(10) || 'two' || char(10) ||"
                "char(10) || 'three', 'play softly', 'Es', '12a', 4);"
                "INSERT INTO songs VALUES (2, NULL, '', NULL, NULL, NULL, NULL);"
                "INSERT INTO songs VALUES (3, '', '<song><lyrics><verse type=\"x\" label=\"1\">One"
                "</verse><verse name=\"b1\">Two</verse><ver', NULL, NULL, NULL, NULL);"
                "INSERT INTO authors VALUES (3, 'Jörg', 'Müller'), (5, ' ', '');"
                "INSERT INTO authors_songs VALUES (3, 1), (3, 1), (5, 1);"
                "INSERT INTO song_books VALUES (4, 'Hymnal');"),
            u"Old_Songs.sqlite"_s);
        QCOMPARE(content.form, ExchangeForm::SongDatabase);
        QCOMPARE(content.reason, QString());
        QCOMPARE(content.songs.size(), 2);
        const Song& song = content.songs[0];
        QCOMPARE(song.title(), u"Größe"_s);
        QCOMPARE(song.comments, QStringList{u"play softly"_s});
        QCOMPARE(song.key, u"Es"_s);
        QCOMPARE(creditsOf(song), u"Jörg Müller"_s);
        QCOMPARE(song.songbooks, QList<Songbook>({{u"Hymnal"_s, u"12a"_s}}));
        QCOMPARE(shownVerses(song), QStringList({u"v1: [G]One / two"_s, u"v2: three"_s}));
        const Song& cut = content.songs[1];
        QCOMPARE(cut.title(), u"Old Songs"_s);
        QCOMPARE(shownVerses(cut), QStringList({u"o x1: One"_s, u"b1 Bridge 1: Two"_s}));
        QCOMPARE(cut.unread.size(), 1);
        QVERIFY2(cut.unread[0].startsWith("The file is damaged at line "_L1),
                 qPrintable(cut.unread[0]));
    }

    void booksWithoutLinksAreLeft() {
        const ExchangeContent content = readExchangeFile(
            databaseOf("CREATE TABLE songs (id INTEGER PRIMARY KEY, title, lyrics);"
                       "CREATE TABLE song_books (id INTEGER PRIMARY KEY, name);"
                       "INSERT INTO songs VALUES (1, 'T', 'One');"
                       "INSERT INTO song_books VALUES (4, 'Hymnal');"),
            u"a.sqlite"_s);
        QCOMPARE(content.songs.value(0).title(), u"T"_s);
        QCOMPARE(content.songs.value(0).songbooks, QList<Songbook>());
    }

    void databaseWithoutSongsIsNamed_data() {
        QTest::addColumn<QByteArray>("statements");
        QTest::addColumn<QString>("reason");
        QTest::newRow("other tables")
            << QByteArray("CREATE TABLE notes (id, text)") << u"The database holds no songs."_s;
        QTest::newRow("no lyrics")
            << QByteArray("CREATE TABLE songs (id, title)") << u"The database holds no songs."_s;
        QTest::newRow("no rows") << QByteArray("CREATE TABLE songs (id, title, lyrics)")
                                 << u"The file holds no songs, people or dates."_s;
    }

    void databaseWithoutSongsIsNamed() {
        QFETCH(QByteArray, statements);
        QFETCH(QString, reason);
        const ExchangeContent content = readExchangeFile(databaseOf(statements), u"a.sqlite"_s);
        QVERIFY(content.isEmpty());
        QCOMPARE(content.reason, reason);
    }

    void hugeDatabaseIsRefusedUnread() {
        QByteArray bytes(MaxDatabaseBytes + 1, Qt::Uninitialized);
        std::memcpy(bytes.data(), "SQLite format 3", 16);
        QCOMPARE(readExchangeFile(bytes, u"a.sqlite"_s).reason, u"The file is too large."_s);
    }

    void nameOfAVerseGivesItsLabel_data() {
        QTest::addColumn<QString>("label");
        const auto row = [](const char* name, const QString& label) {
            QTest::newRow(name) << label;
        };
        row("v1", u"Verse 1"_s);
        row("c", u"Chorus"_s);
        row("p2", u"Pre-Chorus 2"_s);
        row("b", u"Bridge"_s);
        row("i", u"Intro"_s);
        row("e1a", u"Ending 1a"_s);
        row("s", u"Solo"_s);
        row("m", u"Middle"_s);
        row("o999", u"Other 999"_s);
        row("x1", u"x1"_s);
        row("v1234", u"v1234"_s);
        row("V1", u"V1"_s);
    }

    void nameOfAVerseGivesItsLabel() {
        QFETCH(QString, label);
        QCOMPARE(labelOfName(QString::fromLatin1(QTest::currentDataTag())), label);
    }

    void labelOfAVerseGivesItsName_data() {
        QTest::addColumn<QString>("name");
        const auto row = [](const char* label, const char* name) {
            QTest::newRow(label) << QString::fromLatin1(name);
        };
        row("Verse", "v");
        row("VERSE 007", "v7");
        row("Verse 0", "v");
        row("Strophe IV", "v4");
        row("[Refrain]:", "c");
        row("<Brücke 2>", "b2");
        row("{Pré-refrão}", "p");
        row("Chorus (2x)", "c");
        row("Verse 1b x2", "v1b");
        row("Middle Eight", "m");
        row("Amazing grace", "");
        row("1", "");
        row("", "");
        row("Verse 1234", "");
    }

    void labelOfAVerseGivesItsName() {
        QFETCH(QString, name);
        const auto called = verseName(QString::fromUtf8(QTest::currentDataTag()));
        QCOMPARE(called ? called->name : QString(), name);
    }
};

LORVANITE_TEST(TestOddSongs)
#include "test_odd_songs.moc"
