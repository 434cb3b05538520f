// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What is taken out comes back the same, and other programs read it.
#include "exchange/rules/chord_names.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/writer.h"
#include "samples.h"
#include "support/files.h"
#include "support/registry.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// Everything a song can have, and words that look like marks.
Song fullSong() {
    Song song;
    song.titles = {u"Amazing {Grace}"_s, u"Faith's Review"_s};
    song.authors = {{u"John Newton"_s, SongAuthor::Work::Words},
                    {u"Edwin Excell"_s, SongAuthor::Work::Music},
                    {u"Ann, of Ulm"_s, SongAuthor::Work::Translation},
                    {u"Bob Bee"_s, SongAuthor::Work::Arrangement},
                    {u"Carl Dee"_s, SongAuthor::Work::Any}};
    song.key = u"F#m"_s;
    song.ccli = u"22025"_s;
    song.copyright = u"\u00a9 1779 \"Public\" <Domain> & more"_s;
    song.themes = {u"Grace, Mercy"_s};
    song.songbooks = {{u"Hymnal"_s, u"12a"_s}, {QString(), u"7"_s}};
    song.tempo = u"72"_s;
    song.time = u"3/4"_s;
    song.capo = u"2"_s;
    song.comments = {u"Slow, please"_s};
    SongVerse verse{VerseKind::Verse, u"v1"_s, u"Verse 1"_s, {}, {}};
    verse.lines = {
        {SongLine::Kind::Lyrics,
         u"Amazing gra\u00e7e how sweet"_s,
         {{0, u"G"_s, false},
          {8, u"softly"_s, true},
          {8, u"C/E"_s, false},
          {27, u"Dsus4"_s, false}},
         {}},
        {SongLine::Kind::Lyrics, u"{not a directive: at all}"_s, {}, {}},
        {SongLine::Kind::Lyrics, u"# no remark [x] C:\\users \\u0041"_s, {}, {}},
        {SongLine::Kind::Lyrics, u"<b>bold</b> & 1 < 2"_s, {{3, u"F#m7b5"_s, false}}, {}},
        {SongLine::Kind::Comment, u"Repeat {twice} [G]"_s, {}, {}},
        {SongLine::Kind::Lyrics, u"Coda"_s, {}, {}},
        {SongLine::Kind::Lyrics, u"A"_s, {}, {}},
        {SongLine::Kind::Lyrics, u"[see: one"_s, {{6, u"G"_s, false}}, {}},
        {SongLine::Kind::Lyrics, u"ends with \\"_s, {}, {}}};
    SongVerse chorus{VerseKind::Chorus, u"c"_s, u"Chorus"_s, {}, {}};
    chorus.lines = {
        {SongLine::Kind::Lyrics, u"\U0001F3B5 \u5947\u5f02"_s, {{3, u"Bb13"_s, false}}, {}},
        {SongLine::Kind::Lyrics,
         {},
         {{0, u"G"_s, false}, {4, u"Em7"_s, false}, {9, u"A7sus4"_s, false}},
         {}}};
    SongVerse solo{VerseKind::Solo, u"s"_s, u"Solo"_s, {}, {}};
    solo.lines = {{SongLine::Kind::Lyrics, {}, {{0, u"G"_s, false}, {2, u"D"_s, false}}, {}}};
    SongVerse second{VerseKind::Verse, u"v2"_s, u"Verse 2"_s, {}, {}};
    second.lines = {{SongLine::Kind::Lyrics, u"  'Twas grace"_s, {{0, u"N.C."_s, false}}, {}}};
    song.verses = {verse, chorus, solo, second};
    song.verseOrder = {u"v1"_s, u"c"_s, u"s"_s, u"v2"_s, u"c"_s};
    return song;
}

Song plainSong() {
    Song song;
    song.titles = {u"Come Thou Fount"_s};
    song.authors = {{u"Robert Robinson"_s, SongAuthor::Work::Any}};
    song.key = u"D"_s;
    song.ccli = u"108389"_s;
    SongVerse verse{VerseKind::Verse, u"v1"_s, u"Verse 1"_s, {}, {}};
    verse.lines = {
        {SongLine::Kind::Lyrics,
         u"Come Thou Fount of every blessing"_s,
         {{0, u"D"_s, false}, {10, u"A7"_s, false}, {15, u"D"_s, false}, {36, u"G"_s, false}},
         {}},
        {SongLine::Kind::Lyrics, u"Tune my heart"_s, {}, {}},
        {SongLine::Kind::Comment, u"softly"_s, {}, {}}};
    SongVerse tag{VerseKind::Other, u"o"_s, u"My own label"_s, {}, {}};
    tag.lines = {{SongLine::Kind::Lyrics, {}, {{0, u"G"_s, false}, {4, u"A"_s, false}}, {}}};
    song.verses = {verse, tag};
    return song;
}

ExchangeContent readBack(const QByteArray& bytes, const char* name) {
    return readExchangeFile(bytes, QLatin1String(name));
}

// Runs a program on a file; gives what it prints, and an empty text after it failed.
QString printedBy(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(60'000) || process.exitCode() != 0) {
        qWarning() << program << arguments << process.errorString() << process.readAll();
        return {};
    }
    return u"done\n"_s + QString::fromUtf8(process.readAll());
}

QString openLyricsFault(const QString& path) {
    QProcess lint;
    lint.setProcessChannelMode(QProcess::MergedChannels);
    lint.start(u"xmllint"_s, {u"--noout"_s, u"--nonet"_s, u"--relaxng"_s,
                              QStringLiteral(SOURCE_TREE "/tests/exchange/open_lyrics.rng"), path});
    if (!lint.waitForFinished(60'000)) return lint.errorString();
    return lint.exitCode() == 0 ? QString() : QString::fromUtf8(lint.readAll());
}

}  // namespace

class TestExchangeWriters : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void chordProComesBackTheSame() {
        const QList<Song> songs = {fullSong(), plainSong()};
        const QByteArray bytes = writeChordPro(songs);
        const ExchangeContent content = readBack(bytes, "x.cho");
        QCOMPARE(content.form, ExchangeForm::ChordPro);
        QCOMPARE(content.songs.size(), 2);
        for (qsizetype i = 0; i < 2; ++i) {
            QCOMPARE(shownVerses(content.songs[i]), shownVerses(songs[i]));
            QCOMPARE(content.songs[i].titles, songs[i].titles);
            QCOMPARE(content.songs[i].authors, songs[i].authors);
            QCOMPARE(content.songs[i].themes, songs[i].themes);
            QCOMPARE(content.songs[i].unread, QStringList());
        }
        Song first = content.songs[0];
        for (qsizetype i = 0; i < first.verses.size(); ++i)
            first.verses[i].kind = songs[0].verses[i].kind;
        QCOMPARE(first, songs[0]);
        QCOMPARE(writeChordPro(content.songs), bytes);
    }

    void openLyricsComesBackTheSameAndIsValid() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"song.xml"_s);
        Song empty;
        for (const Song& song : {fullSong(), plainSong(), empty}) {
            const QByteArray bytes = writeOpenLyrics(song);
            writeBytes(path, bytes);
            QCOMPARE(openLyricsFault(path), QString());
            const ExchangeContent content = readBack(bytes, "x.xml");
            QCOMPARE(content.reason, QString());
            QCOMPARE(content.songs.size(), 1);
            Song back = content.songs[0];
            if (song == empty) {
                QCOMPARE(back.titles, QStringList{u"Untitled"_s});
                continue;
            }
            // The form has its own names for other labels.
            for (qsizetype i = 0; i < back.verses.size(); ++i)
                if (back.verses[i].kind == VerseKind::Other) {
                    back.verses[i].label = song.verses[i].label;
                    back.verses[i].name = song.verses[i].name;
                }
            QCOMPARE(shownVerses(back), shownVerses(song));
            QCOMPARE(back, song);
        }
    }

    void schemaRefusesWhatIsNotOpenLyrics() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"song.xml"_s);
        writeBytes(path, writeOpenLyrics(plainSong()).replace("root=\"D\"", "root=\"X\""));
        QVERIFY(!openLyricsFault(path).isEmpty());
    }

    void germanChordsAreWrittenInEnglishAndReadInGerman() {
        Song song = plainSong();
        song.verses[0].lines[0].chords = {{0, u"H7"_s, false},
                                          {5, u"B"_s, false},
                                          {9, u"Fism"_s, false},
                                          {12, u"Es/As"_s, false}};
        const QByteArray bytes = writeOpenLyrics(song);
        QVERIFY(bytes.contains("chordNotation=\"german\""));
        QVERIFY(bytes.contains("root=\"B\" structure=\"dom7\""));
        QVERIFY(bytes.contains("root=\"Bb\""));
        QVERIFY(bytes.contains("root=\"Eb\" bass=\"Ab\""));
        QCOMPARE(shownVerses(readBack(bytes, "x.xml").songs.value(0)).value(0),
                 shownVerses(song).value(0));
    }

    void structureOfAChordComesBack_data() {
        QTest::addColumn<QString>("structure");
        const auto row = [](const char* suffix, const char* structure) {
            QTest::newRow(suffix) << QString::fromLatin1(structure);
        };
        row("m", "min");
        row("7", "dom7");
        row("maj7", "maj7");
        row("m7b5", "halfdim7");
        row("7sus4", "4-5-m7");
        row("13", "3-5-m7-9-13");
        row("m7add11", "m3-5-m7-11");
        row("maj7b5", "3-d5-7");
        row("7b9b13", "3-5-m7-m9-m13");
        row("sus4", "sus4");
        row("m6", "min6");
    }

    void structureOfAChordComesBack() {
        QFETCH(QString, structure);
        const QString suffix = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(chordStructure(suffix), structure);
        QCOMPARE(chordStructure(chordSuffix(structure)), structure);
    }

    void textComesBackTheSame() {
        const Song song = plainSong();
        const ExchangeContent content = readBack(writeSongText(song), "x.txt");
        const Song back = content.songs.value(0);
        QCOMPARE(shownVerses(back),
                 QStringList({shownVerses(song)[0], u"v2: {My own label} / [G]    [A]"_s}));
        QCOMPARE(back.titles, song.titles);
        QCOMPARE(back.authors, song.authors);
        QCOMPARE(back.key, song.key);
        QCOMPARE(back.ccli, song.ccli);
    }

    void crowdedChordsDoNotRunTogetherInText() {
        Song song = plainSong();
        song.verses[0].lines[0].chords = {{0, u"Gmaj7"_s, false}, {1, u"C"_s, false}};
        QVERIFY(writeSongText(song).contains("\nGmaj7 C\nCome Thou"));
    }

    void tablesComeBackTheSame() {
        Song song = fullSong();
        Song expected;
        expected.titles = song.titles;
        expected.authors = {{u"John Newton"_s, SongAuthor::Work::Any}};
        song.authors = expected.authors;
        expected.key = song.key;
        expected.ccli = song.ccli;
        expected.copyright = song.copyright;
        expected.themes = song.themes;
        expected.tempo = song.tempo;
        expected.time = song.time;
        QCOMPARE(readBack(writeSongsCsv({song}), "x.csv").songs, QList<Song>{expected});

        const QList<Contact> people = {{u"Zo\u00eb"_s,
                                        u"O'Brien"_s,
                                        {u"Keys"_s, u"Vocals"_s, u"Flute"_s, u"Drums"_s},
                                        u"1, Main\"s"_s,
                                        u"Ulm"_s,
                                        u"BW"_s,
                                        u"01234"_s,
                                        u"+49 1"_s,
                                        u"2"_s,
                                        u"zoe@example.org"_s},
                                       {u"Bob"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}}};
        QCOMPARE(readBack(writePeopleCsv(people), "x.csv").people, people);

        const QList<PlayedDate> played = {{u"Doxology; sung"_s, u"56204"_s, QDate(2026, 11, 1)},
                                          {u"Amazing Grace"_s, {}, QDate(2024, 2, 29)}};
        QCOMPARE(readBack(writePlayedCsv(played), "x.csv").played, played);
    }

    void calendarIsReadByAnotherProgram() {
        const QList<ServiceDate> dates = {
            {QDate(2026, 11, 22),
             {{u"Guitar"_s, u"Ann Bee"_s},
              {u"Vocals"_s, u"J\u00f6rg, M."_s},
              {u"Keys"_s, u"Ann Bee"_s}},
             {u"Amazing Grace; sung"_s,
              u"A title so long that its line has to be folded somewhere \u2013 \u00fc\u00fc\u00fc"_s},
             u"Bring\nmusic"_s},
            {QDate(2026, 12, 31), {{u"Drums"_s, u"Carl Dee"_s}}, {}, {}}};
        const QDateTime stamp(QDate(2026, 11, 21), QTime(10, 0), Qt::UTC);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"all.ics"_s);
        const auto events = [&](const QByteArray& bytes) {
            writeBytes(path, bytes);
            QStringList lines =
                printedBy(u"/usr/bin/python3"_s,
                          {QStringLiteral(SOURCE_TREE "/tests/exchange/read_calendar.py"), path})
                    .split(u'\n', Qt::SkipEmptyParts);
            lines.removeFirst();
            return lines;
        };
        const QByteArray bytes = writeCalendar(dates, stamp);
        QCOMPARE(writeCalendar(dates, stamp), bytes);
        const QStringList all = events(bytes);
        QCOMPARE(all.size(), 2);
        const QStringList first = all[0].split(u'|');
        QCOMPARE(
            first.mid(2),
            QStringList(
                {u"2026-11-21T10:00:00+00:00"_s, u"2026-11-22"_s, u"2026-11-23"_s,
                 u"Worship service"_s,
                 u"Guitar: Ann Bee/Vocals: J\u00f6rg, M./Keys: Ann Bee//Songs:/Amazing Grace; sung/A title so long that its line has to be folded somewhere \u2013 \u00fc\u00fc\u00fc//Bring/music"_s}));
        QCOMPARE(all[1].split(u'|')[4], u"2027-01-01"_s);

        // Written later, the same event has the same UID and a higher sequence.
        const QStringList later = events(writeCalendar(dates, stamp.addSecs(120)))[0].split(u'|');
        QCOMPARE(later[0], first[0]);
        QCOMPARE(later[1].toInt(), first[1].toInt() + 2);

        const QStringList own = events(writeCalendar(dates, stamp, u"ann bee"_s));
        QCOMPARE(own.size(), 1);
        QCOMPARE(own[0].split(u'|')[5], u"Worship service: Guitar, Keys"_s);
        QVERIFY(own[0].split(u'|')[0] != first[0]);
    }

    void chordiiPrintsWhatIsWritten() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"song.cho"_s), out = folder.filePath(u"song.ps"_s);
        writeBytes(path, writeChordPro({plainSong()}));
        QVERIFY(!printedBy(u"chordii"_s, {u"-o"_s, out, path}).isEmpty());
        const QByteArray page = bytesOf(out);
        QVERIFY(page.contains("Come Thou Fount"));
        QVERIFY(page.contains("blessing"));
        QVERIFY(page.contains("A7"));
    }
};

LORVANITE_TEST(TestExchangeWriters)
#include "test_exchange_writers.moc"
