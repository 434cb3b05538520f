// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Files as they are found in the field: odd, incomplete, wrongly encoded, or no songs at all.
#include "exchange/rules/source_files.h"
#include "samples.h"
#include "support/registry.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

ExchangeContent readOdd(const QByteArray& bytes, const char* name) {
    return readExchangeFile(bytes, QLatin1String(name));
}

Song firstOdd(const QByteArray& bytes, const char* name) {
    return readOdd(bytes, name).songs.value(0);
}

QByteArray utf16(const QString& text, bool mark) {
    QByteArray bytes(mark ? "\xff\xfe" : "");
    for (const QChar c : text) {
        bytes += char(c.unicode() & 0xff);
        bytes += char(c.unicode() >> 8);
    }
    return bytes;
}

}  // namespace

class TestOddFiles : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString writeOdd(const QString& name, const QByteArray& content) {
        const QString path = m_dir.path() + u'/' + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) QTest::qFail(qPrintable(path), __FILE__, __LINE__);
        file.write(content);
        return path;
    }

private Q_SLOTS:
    void tabsInLyricsKeepTheChordsInPlace() {
        const Song song = firstOdd("Title\n\nVerse 1\n\tD\tG\nhow\tsweet\tsound\n", "a.txt");
        QCOMPARE(shownVerses(song), QStringList{u"v1 Verse 1: how     [D]sweet   [G]sound"_s});
    }

    void bracesInLyricsAreWords() {
        const Song song = firstOdd(
            "{title: Braces}\n{ in front\nin the { middle } of it\nat the end }\n{sov\n[G]x\n",
            "a.cho");
        QCOMPARE(shownVerses(song), QStringList({u"v1: { in front / in the { middle } of it / at "
                                                 "the end }"_s,
                                                 u"v2: [G]x"_s}));
    }

    void titleMayComeAfterTheLyrics() {
        const QList<Song> songs =
            readOdd("[Verse 1]\n[G]Amazing grace\n{t: Late}\n{artist: Me}\n", "a.cho").songs;
        QCOMPARE(songs.size(), 1);
        QCOMPARE(songs[0].title(), u"Late"_s);
        QCOMPARE(shownVerses(songs[0]), QStringList{u"v1 Verse 1: [G]Amazing grace"_s});
    }

    void chordsAsCommentsAreChords() {
        const Song song = firstOdd(
            "{title: Comments}\n{c: Intro}\n{c: G  C  D}\n{comment: [Am] [F]}\n{ci: softly}\n",
            "a.cho");
        QCOMPARE(shownVerses(song),
                 QStringList{u"i Intro: [G]   [C]   [D] / [Am]   [F] / {softly}"_s});
    }

    void labelBeforeChordsOnOneLineIsALabel() {
        const Song song = firstOdd("Title\n\nIntro: G  C  D\n\nVerse\nAmazing grace\n", "a.txt");
        QCOMPARE(shownVerses(song),
                 QStringList({u"i Intro: [G]   [C]   [D]"_s, u"v1 Verse: Amazing grace"_s}));
    }

    void repeatBelowChordsIsAComment() {
        const Song song = firstOdd("Title\n\nOutro\n| G | C |\n(x2)\nBye\n", "a.txt");
        QCOMPARE(shownVerses(song), QStringList{u"e Outro: [G]    [C] / {(x2)} / Bye"_s});
    }

    void orderAtTheTopIsTheVerseOrder() {
        const Song song = firstOdd(
            "Title\nAuthor\nFlow: V1 C V1\n\nVerse 1:\nA[D]mazing\n\nChorus:\n[G]Oh\n", "a.txt");
        QCOMPARE(song.verseOrder, QStringList({u"v1"_s, u"c"_s, u"v1"_s}));
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1 Verse 1: A[D]mazing"_s, u"c Chorus: [G]Oh"_s}));
    }

    void slideBreaksBecomeBlanks() {
        const Song song = firstOdd(
            "<song><title>T</title><lyrics>[C]\n.C      G\n Oh what||second | half|\n</lyrics>"
            "</song>",
            "a");
        QCOMPARE(shownVerses(song), QStringList{u"c Chorus: [C]Oh what[G] second  half"_s});
    }

    void numbersWithThousandsAreWhole() {
        QCOMPARE(firstOdd("<song><title>T</title><ccli>7,065,049</ccli></song>", "a").ccli,
                 u"7065049"_s);
        QCOMPARE(firstOdd("Title,CCLI\nT,22025.0\n", "a.csv").ccli, u"22025"_s);
    }

    void xmlIsReadWithWrongNamespaceAndMissingTags() {
        const Song wrong = firstOdd(
            "<song xmlns=\"urn:wrong\"><properties><titles><title>Wrong</title></titles>"
            "</properties><lyrics><verse><lines>One<br/>Two</lines></verse></lyrics></song>",
            "a.xml");
        QCOMPARE(wrong.title(), u"Wrong"_s);
        QCOMPARE(wrong.verses.value(0).lines.size(), 2);
        const Song bare = firstOdd(
            "<?xml version='1.0'?><ol:song xmlns:ol='http://openlyrics.info/namespace/2009/song'>"
            "<ol:lyrics><ol:verse name='v1'><ol:lines><ol:line>One</ol:line><ol:line>Two"
            "</ol:line></ol:lines></ol:verse></ol:lyrics></ol:song>",
            "The Name.xml");
        QCOMPARE(bare.title(), u"The Name"_s);
        QCOMPARE(shownVerses(bare), QStringList{u"v1 Verse 1: One / Two"_s});
    }

    void twoByteTextIsReadWithAndWithoutMark() {
        const QString text =
            u"<song><title>Größe ♪</title><lyrics>[V1]\n.G\n Ehre\n</lyrics></song>"_s;
        for (const bool mark : {true, false}) {
            const Song song = firstOdd(utf16(text, mark), "a");
            QCOMPARE(song.title(), u"Größe ♪"_s);
            QCOMPARE(shownVerses(song), QStringList{u"v1 Verse 1: [G]Ehre"_s});
        }
    }

    void linesOfMixedEncodingComeOutRight() {
        const Song song = firstOdd(
            "{title: Gr\xf6\xdf"
            "e}\n{artist: J\xc3\xb6rg}\n{sov}\nna\xefve \x93quoted\x94\n",
            "a.cho");
        QCOMPARE(song.title(), u"Größe"_s);
        QCOMPARE(song.authors.value(0).name, u"Jörg"_s);
        QCOMPARE(song.verses.value(0).lines.value(0).text, u"naïve “quoted”"_s);
    }

    void verseOfSixtyLinesIsWhole() {
        QByteArray text = "{title: Long}\n{start_of_verse}\n";
        for (int i = 1; i <= 60; ++i) text += "line " + QByteArray::number(i) + "\n";
        const Song song = firstOdd(text + "{end_of_verse}\n", "a.cho");
        QCOMPARE(song.verses.size(), 1);
        QCOMPARE(song.verses[0].lines.size(), 60);
    }

    void macLineEndsAndZeroWidthMarksDoNoHarm() {
        const Song song =
            firstOdd("\xef\xbb\xbf{title: One}\r{sov}\r\xe2\x80\x8b[G]Word\r{eov}\r", "a.cho");
        QCOMPARE(song.title(), u"One"_s);
        QVERIFY(shownVerses(song).value(0).contains(u"[G]Word"_s));
    }

    void damagedAndForeignFilesAreNamedWithTheReason_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("blanks") << QByteArray("  \r\n\t \n");
        QTest::newRow("zeros") << QByteArray(2000, '\0');
        QTest::newRow("picture") << QByteArray("\x89PNG\r\n\x1a\nrest");
        QTest::newRow("document") << QByteArray("%PDF-1.7\n");
        QTest::newRow("rich text") << QByteArray("{\\rtf1\\ansi Hello}");
        QTest::newRow("archive") << QByteArray("PK\x03\x04rest");
        QTest::newRow("web page") << QByteArray("<!DOCTYPE html><html><body>x</body></html>");
        QTest::newRow("other xml") << QByteArray("<?xml version='1.0'?><note><to>x</to></note>");
        QTest::newRow("cut xml") << QByteArray("<?xml version='1.0'?><song><tit");
        QTest::newRow("cut database") << QByteArray("SQLite format 3\0garbage", 23);
        QTest::newRow("card without name") << QByteArray("BEGIN:VCARD\nEND:VCARD\n");
    }

    void damagedAndForeignFilesAreNamedWithTheReason() {
        QFETCH(QByteArray, bytes);
        const ExchangeContent content = readOdd(bytes, "some.file");
        QVERIFY(content.isEmpty());
        QVERIFY(!content.reason.isEmpty());
    }

    void deepNestingAndEntitiesDoNoHarm() {
        QByteArray deep = "<song><title>Deep</title><lyrics>";
        for (int i = 0; i < 200'000; ++i) deep += "<verse>";
        QVERIFY(!readOdd(deep, "a.xml").reason.isEmpty());
        const QByteArray outer =
            "<!DOCTYPE song [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><song><title>&x;</title>"
            "<lyrics>[V1]\n &x;\n</lyrics></song>";
        const ExchangeContent content = readOdd(outer, "a");
        QVERIFY(!content.reason.isEmpty());
        for (const Song& song : content.songs) QVERIFY(!song.title().contains(u"root"_s));
    }

    // Every prefix of every sample, and every sample with bytes changed.
    void cutAndChangedSamplesAreRead() {
        QRandomGenerator random(20261121);
        const QDir samples(QStringLiteral(SOURCE_TREE "/tests/exchange/samples"));
        for (const QString& name : samples.entryList(QDir::Files)) {
            const QByteArray bytes = sampleBytes(name);
            for (int i = 0; i < 60; ++i) {
                static_cast<void>(
                    readExchangeFile(bytes.left(random.bounded(int(bytes.size()) + 1)), name));
                QByteArray changed = bytes;
                for (int k = 0; k < 4 && !changed.isEmpty(); ++k)
                    changed[random.bounded(int(changed.size()))] = char(random.bounded(256));
                static_cast<void>(readExchangeFile(changed, name));
            }
        }
    }

    void foldersAreReadWithoutLeavingThem() {
        const QString outside = writeOdd(u"outside/secret.csv"_s, "Title,Key\nSecret,G\n");
        writeOdd(u"in/a.csv"_s, "Title,Key\nA,G\n");
        writeOdd(u"in/sub/b.csv"_s, "Title,Key\nB,G\n");
        writeOdd(u"in/.hidden.csv"_s, "Title,Key\nHidden,G\n");
        QVERIFY(QFile::link(outside, m_dir.path() + u"/in/link.csv"_s));
        QVERIFY(QFile::link(m_dir.path() + u"/outside"_s, m_dir.path() + u"/in/door"_s));
        QVERIFY(QFile::link(m_dir.path() + u"/in"_s, m_dir.path() + u"/in/sub/loop"_s));
        QCOMPARE(::mkfifo(QFile::encodeName(m_dir.path() + u"/in/pipe"_s).constData(), 0600), 0);
        const QString folder = m_dir.path() + u"/in"_s;
        QStringList titles, files;
        for (const ImportSource& source : readSources({folder, folder + u"/a.csv"_s})) {
            files += source.file;
            for (const Song& song : source.content.songs) titles += song.title();
        }
        QCOMPARE(titles, QStringList({u"A"_s, u"B"_s}));
        QCOMPARE(files, QStringList({u"a.csv"_s, u"sub/b.csv"_s}));
    }

    void chosenPathThatIsNoFileIsNamed() {
        const QList<ImportSource> sources = readSources({u"/nowhere/at all.txt"_s, u"/dev/zero"_s});
        QCOMPARE(sources.size(), 2);
        QCOMPARE(sources[0].content.reason, u"There is no such file."_s);
        QCOMPARE(sources[1].content.reason, u"This is not a file."_s);
    }

    void fileThatClaimsGigabytesIsRefusedUnread() {
        const QString path = writeOdd(u"huge.csv"_s, "Title\n");
        QCOMPARE(::truncate(QFile::encodeName(path).constData(), off_t(8) << 30), 0);
        const QList<ImportSource> sources = readSources({path});
        QCOMPARE(sources[0].content.reason, u"The file is too large."_s);
    }
};

LORVANITE_TEST(TestOddFiles)
#include "test_odd_files.moc"
