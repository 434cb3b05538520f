// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Songs of other programs are read with all they hold.
#include "exchange/rules/song_builder.h"
#include "samples.h"
#include "support/registry.h"

#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString authorsOf(const Song& song) {
    QStringList names;
    const QStringList works = {QString(), u"words "_s, u"music "_s, u"translation "_s,
                               u"arrangement "_s};
    for (const SongAuthor& author : song.authors) names += works[int(author.work)] + author.name;
    return names.join(u"; "_s);
}

Song onlySong(const ExchangeContent& content) {
    return content.songs.size() == 1 ? content.songs[0] : Song();
}

Song readSongBytes(const char* text, const char* name = "song.txt") {
    return onlySong(readExchangeFile(QByteArray(text), QLatin1String(name)));
}

}  // namespace

class TestExchangeSongs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void openSongGivesVersesOfNumberedLines() {
        const ExchangeContent content = readSample(u"opensong.xml"_s);
        QCOMPARE(content.form, ExchangeForm::OpenSong);
        QCOMPARE(content.reason, QString());
        const Song song = onlySong(content);
        QCOMPARE(song.titles, QStringList({u"Amazing Grace"_s, u"Faith's Review"_s}));
        QCOMPARE(authorsOf(song), u"John Newton; Edwin Excell"_s);
        QCOMPARE(song.ccli, u"22025"_s);
        QCOMPARE(song.key, u"G"_s);
        QCOMPARE(song.capo, u"2"_s);
        QCOMPARE(song.tempo, u"72"_s);
        QCOMPARE(song.time, u"3/4"_s);
        QCOMPARE(song.themes, QStringList({u"Grace"_s, u"Salvation"_s}));
        QCOMPARE(song.songbooks, QList<Songbook>({{QString(), u"330"_s}}));
        QCOMPARE(
            shownVerses(song),
            QStringList({u"v1 Verse 1: [G]Amazing gr[C]ace ho[G]w sweet the sound / That saved a "
                         "wretch like me & mine"_s,
                         u"v2 Verse 2: [G]'Twas grac[C]e that[G] taught my heart to fear / And "
                         "grace my fears relieved"_s,
                         u"c Chorus: My[Em] chains[D] are gone / {Repeat} / [G]   [D]   [Em]"_s,
                         u"o Odd Section!: 10,000 years {x2} / 10,000 days"_s,
                         u"e Tag: [G]       [C/E]"_s}));
        QCOMPARE(song.verseOrder, QStringList({u"v1"_s, u"c"_s, u"v2"_s, u"c"_s}));
        QCOMPARE(song.unread, QStringList{u"The verse order names \"X9\", which is not there."_s});
    }

    void oldOpenSongIsReadWithoutEndingHeadOrMarks() {
        const ExchangeContent content = readSample(u"opensong_old"_s);
        QCOMPARE(content.form, ExchangeForm::OpenSong);
        const Song song = onlySong(content);
        QCOMPARE(authorsOf(song), u"words Thomas Ken"_s);
        QCOMPARE(shownVerses(song),
                 QStringList{u"v1: Praise God from whom all blessings flow / Praise Him all "
                             "creatures \u00e9 here below"_s});
    }

    void openLyricsGivesEveryPartAndBothChordNotations() {
        const ExchangeContent content = readSample(u"openlyrics09.xml"_s);
        QCOMPARE(content.form, ExchangeForm::OpenLyrics);
        QCOMPARE(content.reason, QString());
        const Song song = onlySong(content);
        QCOMPARE(song.titles, QStringList({u"Be Thou My Vision"_s, u"Rop t\u00fa mo Baile"_s}));
        QCOMPARE(authorsOf(song), u"words Dall\u00e1n Forgaill; translation Eleanor Hull"_s);
        QCOMPARE(song.ccli, u"30639"_s);
        QCOMPARE(song.key, u"Eb"_s);
        QCOMPARE(song.tempo, u"96"_s);
        QCOMPARE(song.time, u"3/4"_s);
        QCOMPARE(song.verseOrder, QStringList({u"i"_s, u"v1"_s, u"c"_s, u"v1"_s}));
        QCOMPARE(song.songbooks, QList<Songbook>({{u"Hymnal"_s, u"12a"_s}}));
        QCOMPARE(song.themes, QStringList({u"Guidance"_s, u"Trust"_s}));
        QCOMPARE(song.comments, QStringList{u"Slow"_s});
        QCOMPARE(shownVerses(song),
                 QStringList({u"i Intro: [Eb]   [Bb/D]     [Cm7]"_s,
                              u"v1 Verse 1 (en): [Eb]Be thou my [Ab13]vision O Lord / {softly} / "
                              "of my heart [Bsus4] / Naught be all else / to me / {2x}"_s,
                              u"v1 Verse 1 (de): Sei du mein Blick"_s,
                              u"c Chorus: Thou & thou only[*twice] first  in my heart"_s}));
        QCOMPARE(song.verses[1].lines[0].part, u"men"_s);
        QCOMPARE(song.verses[1].lines[3].part, u"women"_s);
    }

    void openLyricsIsReadWithoutNamespace() {
        const Song song = onlySong(readSample(u"openlyrics08_bare.xml"_s));
        QCOMPARE(song.title(), u"Holy <Holy>"_s);
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1 Verse 1: [D]Holy, [Bm7/A]holy / Lord God[A]"_s,
                              u"tag_end tag end: Amen"_s}));
    }

    void damagedFileGivesWhatStoodBeforeTheDamage() {
        const ExchangeContent content = readSample(u"damaged.xml"_s);
        QCOMPARE(onlySong(content).title(), u"Half a Song"_s);
        QCOMPARE(shownVerses(onlySong(content)),
                 QStringList{u"v1 Verse 1: The first line / the second"_s});
        QVERIFY2(content.reason.startsWith("The file is damaged at line "_L1),
                 qPrintable(content.reason));
    }

    void chordProGivesDirectivesChordsAndSections() {
        const ExchangeContent content = readSample(u"chordpro.cho"_s);
        QCOMPARE(content.form, ExchangeForm::ChordPro);
        QCOMPARE(content.songs.size(), 2);
        const Song& song = content.songs[0];
        QCOMPARE(song.titles, QStringList{u"It Is Well"_s});
        QCOMPARE(authorsOf(song), u"Horatio Spafford"_s);
        QCOMPARE(song.key, u"C"_s);
        QCOMPARE(song.capo, u"3"_s);
        QCOMPARE(song.ccli, u"25376"_s);
        QCOMPARE(song.themes, QStringList({u"Peace"_s, u"Trust"_s}));
        QCOMPARE(shownVerses(song),
                 QStringList(
                     {u"v1 Verse 1: When [C]peace like a [F/C]ri[G7]ver, at[Hdim]tendeth my way / "
                      "When sor[Am]rows like {sea} billows roll [*x2] / "
                      "Whatever my lot [see] / [G]   [C]   [D]"_s,
                      u"c Refrain: It is [C]well [*softly]with my soul / [C]   [G]"_s,
                      u"v2 Verse 2: [G] / Though Satan should buffet / though trials should come"_s,
                      u"b Bridge: [C]It is we[F]ll / [C]          [G]"_s}));
        QCOMPARE(song.verseOrder, QStringList({u"v1"_s, u"c"_s, u"v2"_s, u"c"_s, u"b"_s}));
        QCOMPARE(song.unread, QStringList({u"Line 8: {pony: yes} is not known."_s,
                                           u"Line 28: a section \"tab\" was left out."_s}));
        QCOMPARE(shownVerses(content.songs[1]),
                 QStringList{u"v1 Strophe 1: [G]Ein feste [fis]Burg / ist unser Gott"_s});
    }

    void songSelectChordProHasItsCredits() {
        const Song song = onlySong(readSample(u"songselect.chordpro"_s));
        QCOMPARE(authorsOf(song), u"Matthew Bridges; Godfrey Thring"_s);
        QCOMPARE(song.ccli, u"23938"_s);
        QCOMPARE(song.copyright, u"Public Domain"_s);
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1 Verse 1: [D]Crown Him with [A]many [D]crowns"_s,
                              u"c1 Chorus 1: [G]Crown Him"_s}));
    }

    void chordLinesStandOverTheLyricsBelow() {
        const ExchangeContent content = readSample(u"two_line.txt"_s);
        QCOMPARE(content.form, ExchangeForm::PlainText);
        const Song song = onlySong(content);
        QCOMPARE(song.title(), u"Come Thou Fount"_s);
        QCOMPARE(authorsOf(song), u"Robert Robinson"_s);
        QCOMPARE(song.key, u"D"_s);
        QCOMPARE(song.tempo, u"80"_s);
        QCOMPARE(song.time, u"3/4"_s);
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1 Verse 1: [D]Come Thou [A7]Fount[D] of every blessing / "
                              "[G]Tune my hear[D/F#]t to sing Thy grace"_s,
                              u"c Chorus (2x): [A]A s[D]ing[G]le [D]line of words"_s,
                              u"v2: [G]    [D]    [A]"_s,
                              u"v3 Verse 3: Prone to wander [D]Lord I feel it"_s}));
    }

    void songSelectTextHasCreditsBelow() {
        const ExchangeContent content = readSample(u"songselect.txt"_s);
        QCOMPARE(content.form, ExchangeForm::SongSelectText);
        const Song song = onlySong(content);
        QCOMPARE(song.title(), u"Doxology"_s);
        QCOMPARE(song.ccli, u"1234567"_s);
        QCOMPARE(authorsOf(song), u"Louis Bourgeois; Thomas Ken"_s);
        QCOMPARE(song.copyright, u"\u00a9 Words: Public Domain; Music: Public Domain"_s);
        QCOMPARE(shownVerses(song), QStringList({u"v1 Verse 1: Praise God from whom all blessings "
                                                 "flow / Praise Him all creatures here below"_s,
                                                 u"o1 Misc 1: Amen"_s, u"c Chorus: "_s}));
    }

    void songSelectUsrIsRead() {
        const ExchangeContent content = readSample(u"songselect.usr"_s);
        QCOMPARE(content.form, ExchangeForm::SongSelectUsr);
        const Song song = onlySong(content);
        QCOMPARE(song.title(), u"Fairest Lord Jesus"_s);
        QCOMPARE(authorsOf(song), u"Joseph Seiss; Anonymous"_s);
        QCOMPARE(song.ccli, u"7654321"_s);
        QCOMPARE(song.key, u"Eb"_s);
        QCOMPARE(song.themes, QStringList({u"Praise"_s, u"Beauty"_s}));
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1 Vers 1: Fairest Lord Jesus / Ruler of all nature"_s,
                              u"c1 Chorus 1: Thee will I cherish"_s, u"o1 Andere 1: Amen"_s}));
    }

    void songDatabaseGivesSongsWithTheirAuthorsBooksAndTopics() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"songs.sqlite"_s);
        sqlite3* db = nullptr;
        QCOMPARE(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
        const char* statements =
            "PRAGMA journal_mode = WAL;"
            "CREATE TABLE songs (id INTEGER PRIMARY KEY, title, alternate_title, lyrics, "
            "verse_order, copyright, comments, ccli_number);"
            "CREATE TABLE authors (id INTEGER PRIMARY KEY, display_name);"
            "CREATE TABLE authors_songs (author_id, song_id, author_type);"
            "CREATE TABLE song_books (id INTEGER PRIMARY KEY, name);"
            "CREATE TABLE songs_songbooks (songbook_id, song_id, entry);"
            "CREATE TABLE topics (id INTEGER PRIMARY KEY, name);"
            "CREATE TABLE songs_topics (song_id, topic_id);"
            "INSERT INTO songs VALUES (7, 'Amazing Grace', 'Review', '<?xml version=''1.0'' "
            "encoding=''UTF-8''?><song version=\"1.0\"><lyrics><verse type=\"v\" label=\"1\">"
            "<![CDATA[{st}Amazing{/st} [G]grace & more\n[---]\nhow sweet]]></verse><verse "
            "type=\"c\" "
            "label=\"1\"><![CDATA[Praise]]></verse></lyrics></song>', 'v1 c1 v1', 'PD', '', 22025);"
            "INSERT INTO songs VALUES (9, 'Plain', '', 'One\nTwo', NULL, NULL, NULL, NULL);"
            "INSERT INTO authors VALUES (3, 'John Newton');"
            "INSERT INTO authors_songs VALUES (3, 7, 'words'), (3, 99, '');"
            "INSERT INTO song_books VALUES (1, 'Hymnal');"
            "INSERT INTO songs_songbooks VALUES (1, 7, '330');"
            "INSERT INTO topics VALUES (5, 'Grace');"
            "INSERT INTO songs_topics VALUES (7, 5);"
            "PRAGMA wal_checkpoint(TRUNCATE);";
        QCOMPARE(sqlite3_exec(db, statements, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(db);

        const ExchangeContent content = readExchangeFile(bytesOf(path), path);
        QCOMPARE(content.form, ExchangeForm::SongDatabase);
        QCOMPARE(content.reason, QString());
        QCOMPARE(content.songs.size(), 2);
        const Song& song = content.songs[0];
        QCOMPARE(song.titles, QStringList({u"Amazing Grace"_s, u"Review"_s}));
        QCOMPARE(authorsOf(song), u"words John Newton"_s);
        QCOMPARE(song.ccli, u"22025"_s);
        QCOMPARE(song.copyright, u"PD"_s);
        QCOMPARE(song.songbooks, QList<Songbook>({{u"Hymnal"_s, u"330"_s}}));
        QCOMPARE(song.themes, QStringList{u"Grace"_s});
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1 Verse 1: Amazing [G]grace & more / how sweet"_s,
                              u"c1 Chorus 1: Praise"_s}));
        QCOMPARE(song.verseOrder, QStringList({u"v1"_s, u"c1"_s, u"v1"_s}));
        QCOMPARE(shownVerses(content.songs[1]), QStringList{u"v1: One / Two"_s});
    }

    void verseWithoutEndIsLong() {
        QByteArray text = "{title: Long}\n{sov: Verse 1}\n";
        for (int i = 0; i < 60; ++i) text += "[G]line " + QByteArray::number(i) + "\n\n";
        const Song song = readSongBytes(text.constData());
        QCOMPARE(song.verses.size(), 1);
        QCOMPARE(song.verses[0].lines.size(), 60);
    }

    void firstLineUnderAChordLineIsNoTitle() {
        const Song song = readSongBytes("G      C\nAmazing grace\n\nD\nHow sweet\n", "My_Song.txt");
        QCOMPARE(song.titles, QStringList{u"My Song"_s});
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1: [G]Amazing[C] grace"_s, u"v2: [D]How sweet"_s}));
    }

    void twoByteTextIsCountedByCharacters() {
        const Song song = readSongBytes(
            "{title: "
            "\xe5\xa5\x87\xe5\xbc\x82}\n[G]\xe5\xa5\x87\xe5\xbc\x82[C]\xe6\x81\xa9\xe5\x85\xb8\n");
        QCOMPARE(song.title(), u"\u5947\u5f02"_s);
        QCOMPARE(shownVerses(song), QStringList{u"v1: [G]\u5947\u5f02[C]\u6069\u5178"_s});
    }

    void onSongHeadIsRead() {
        const Song song = readSongBytes(
            "My Title\nSome Writer\nKey: [G]\nTempo: 80\n\nVerse 1:\n[G]Words\n", "x.onsong");
        QCOMPARE(song.title(), u"My Title"_s);
        QCOMPARE(authorsOf(song), u"Some Writer"_s);
        QCOMPARE(song.key, u"G"_s);
        QCOMPARE(shownVerses(song), QStringList{u"v1 Verse 1: [G]Words"_s});
    }
};

LORVANITE_TEST(TestExchangeSongs)
#include "test_exchange_songs.moc"
