// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tables and cards as people keep them: every column, dates of all kinds, and rows with faults.
#include "samples.h"
#include "support/registry.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

ExchangeContent readTable(const QString& text) {
    return readExchangeFile(text.toUtf8(), u"table.csv"_s);
}

QString nameOf(const Contact& person) { return person.firstName + u'|' + person.lastName; }

}  // namespace

class TestOddTables : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyColumnOfASongIsRead() {
        const ExchangeContent content = readTable(
            u"Title,Sub Title,Author,Key,CCLI,Tags,Copyright,BPM,Time Signature,Capo,Notes,"
            "Songbook,Hymn Number,Last Used\n"
            "Größe,Second; Third,\"Words: Ann Bee; Music: Jörg Dö\",Es,CCLI 0022025,"
            "\"Lob, Dank, lob\",© 1990,72,3/4,2,play softly,Hymnal,12a,2026-04-05\n"_s);
        QCOMPARE(content.form, ExchangeForm::SongsCsv);
        QCOMPARE(content.unread, QStringList());
        QCOMPARE(content.songs.size(), 1);
        const Song& song = content.songs[0];
        QCOMPARE(song.titles, QStringList({u"Größe"_s, u"Second"_s, u"Third"_s}));
        QCOMPARE(song.authors, QList<SongAuthor>({{u"Ann Bee"_s, SongAuthor::Work::Words},
                                                  {u"Jörg Dö"_s, SongAuthor::Work::Music}}));
        QCOMPARE(song.key, u"Es"_s);
        QCOMPARE(song.ccli, u"22025"_s);
        QCOMPARE(song.themes, QStringList({u"Lob"_s, u"Dank"_s}));
        QCOMPARE(song.copyright, u"© 1990"_s);
        QCOMPARE(song.tempo, u"72"_s);
        QCOMPARE(song.time, u"3/4"_s);
        QCOMPARE(song.capo, u"2"_s);
        QCOMPARE(song.comments, QStringList{u"play softly"_s});
        QCOMPARE(song.songbooks, QList<Songbook>({{u"Hymnal"_s, u"12a"_s}}));
        QCOMPARE(content.played, QList<PlayedDate>({{u"Größe"_s, u"22025"_s, QDate(2026, 4, 5)}}));
    }

    void firstOfSeveralColumnsCounts() {
        const Song song =
            readTable(u"Title,Song,Key,Original Key,CCLI,CCLI No\nFirst,Other,G,A,11,22\n"_s)
                .songs.value(0);
        QCOMPARE(song.titles, QStringList{u"First"_s});
        QCOMPARE(song.key, u"G"_s);
        QCOMPARE(song.ccli, u"11"_s);
    }

    void lyricsInACellAreVerses_data() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("lyrics");
        QTest::addColumn<QStringList>("verses");
        const QStringList plain = {u"v1 Verse 1: One / two"_s, u"c Chorus: Three"_s};
        const QString words = u"Verse 1\nOne\ntwo\n\nChorus\nThree"_s;
        const QStringList chords = {u"v1: [G]One [C]two"_s};
        const QString chordPro = u"[G]One [C]two"_s;
        QTest::newRow("plain") << u"Song"_s << words << plain;
        QTest::newRow("chords") << u"Song"_s << chordPro << chords;
        // Titles that look like something else.
        QTest::newRow("title like a label") << u"Refrain"_s << words << plain;
        QTest::newRow("title like a chord") << u"Am"_s << words << plain;
        QTest::newRow("title like a credit") << u"Public Domain"_s << words << plain;
        QTest::newRow("title with a brace") << u"Open } close"_s << chordPro << chords;
        QTest::newRow("title with braces") << u"{soc} me"_s << chordPro << chords;
        QTest::newRow("blank") << u"Song"_s << u" \n \n"_s << QStringList();
        QTest::newRow("label alone") << u"Song"_s << u"Verse 1"_s << QStringList{u"v1 Verse 1: "_s};
    }

    void lyricsInACellAreVerses() {
        QFETCH(QString, title);
        QFETCH(QString, lyrics);
        QFETCH(QStringList, verses);
        const ExchangeContent content =
            readTable(u"Title,Lyrics\n\"%1\",\"%2\"\n"_s.arg(title, lyrics));
        QCOMPARE(content.songs.size(), 1);
        QCOMPARE(content.songs[0].titles, QStringList{title});
        QCOMPARE(shownVerses(content.songs[0]), verses);
    }

    void dateIsReadAsItIsWritten_data() {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QDate>("date");
        const auto row = [](const char* written, const QDate& date) {
            QTest::newRow(written) << QString::fromLatin1(written) << date;
        };
        row("20260405", QDate(2026, 4, 5));
        row("20260229", QDate());
        row("20261301", QDate());
        row("2026-04-05", QDate(2026, 4, 5));
        row("2026-04-05T10:30:00Z", QDate(2026, 4, 5));
        row("2026-04-05 10:30", QDate(2026, 4, 5));
        row("2026-04-05T10:30:00.000+02:00", QDate(2026, 4, 5));
        row("4/5/2026 9:30 AM", QDate(2026, 4, 5));
        row("4/5/26", QDate(2026, 4, 5));
        row("5.4.2026", QDate(2026, 4, 5));
        row("5. 4. 2026", QDate(2026, 4, 5));
        row("25/4/2026", QDate(2026, 4, 25));
        row("4-25-2026", QDate(2026, 4, 25));
        row("2/30/2026", QDate());
        row("13/13/2026", QDate());
        row("April", QDate());
        row("0/0/0000", QDate());
        row("1/2/20260", QDate());
    }

    void dateIsReadAsItIsWritten() {
        QFETCH(QString, written);
        QFETCH(QDate, date);
        const ExchangeContent content = readTable(u"Title,Date\nSong,\"%1\"\n"_s.arg(written));
        QCOMPARE(content.form, ExchangeForm::PlayedCsv);
        QCOMPARE(content.played.value(0).date, date);
        QCOMPARE(content.unread, date.isValid()
                                     ? QStringList()
                                     : QStringList{u"Row 2: \"%1\" is not a date."_s.arg(written)});
    }

    void oneDateTellsTheOrderOfItsColumn() {
        const ExchangeContent content =
            readTable(u"Title,Date\nA,3/4/2026\nB,25/4/2026\nC,5/4/2026; 6/4/2026\n"_s);
        QList<QDate> dates;
        for (const PlayedDate& one : content.played) dates += one.date;
        QCOMPARE(dates, QList<QDate>({QDate(2026, 4, 3), QDate(2026, 4, 25), QDate(2026, 4, 5),
                                      QDate(2026, 4, 6)}));
        const ExchangeContent american =
            readTable(u"Title,Date\nA,3/4/2026\nB,4/25/2026\nC,26/4/2026\n"_s);
        QCOMPARE(american.played.value(0).date, QDate(2026, 3, 4));
        QCOMPARE(american.played.value(2).date, QDate(2026, 4, 26));
    }

    void dateOfNoSongIsNoted() {
        const ExchangeContent content =
            readTable(u"Title,CCLI,Date\n,,2026-04-05\n,22025,2026-04-05\nA,,\n"_s);
        QCOMPARE(content.played, QList<PlayedDate>({{QString(), u"22025"_s, QDate(2026, 4, 5)}}));
        QCOMPARE(content.unread, QStringList{u"Row 2 has neither title nor CCLI number."_s});
    }

    void columnsWithoutHeadsAreTold() {
        const ExchangeContent content =
            readTable(u"22025,Amazing Grace,Sunday,2026-04-05\n,Doxology,Sunday,2026-04-12\n"_s);
        QCOMPARE(content.form, ExchangeForm::PlayedCsv);
        QCOMPARE(content.played,
                 QList<PlayedDate>({{u"Amazing Grace"_s, u"22025"_s, QDate(2026, 4, 5)},
                                    {u"Doxology"_s, QString(), QDate(2026, 4, 12)}}));
    }

    void tableOfAnotherKindIsRefused_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("no known heads") << u"Colour,Shape\nred,round\n"_s;
        QTest::newRow("heads without a song") << u"Key,Tempo\nG,72\n"_s;
        QTest::newRow("numbers of songs alone") << u"CCLI,Key\n22025,G\n"_s;
        QTest::newRow("one column") << u"Title\nOne\nTwo\n"_s;
        QTest::newRow("five columns without heads") << u"a,b,c,d,2026-01-01\n"_s;
        QTest::newRow("line that names the separator alone") << u"sep=;"_s;
    }

    void tableOfAnotherKindIsRefused() {
        QFETCH(QString, text);
        const ExchangeContent content = readTable(text);
        QCOMPARE(content.form, ExchangeForm::Unknown);
        QCOMPARE(content.reason, u"The file has none of the known forms."_s);
        QVERIFY(content.isEmpty());
    }

    void separatorIsFoundOrNamed_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("named") << u"sep=|\nTitle|Key\nA, B; C|G\n"_s;
        QTest::newRow("named semicolon") << u"SEP=;\r\nTitle;Key\r\n\"A, B; C\";G\r\n"_s;
        QTest::newRow("tabs") << u"Title\tKey\nA, B; C\tG\n"_s;
        QTest::newRow("semicolons") << u"Title;Key\n\"A, B; C\";G\n"_s;
        QTest::newRow("commas in quotes") << u"\"Title\",\"Key\"\n\"A, B; C\",\"G\"\n"_s;
        QTest::newRow("empty lines first") << u"\n\n,\nTitle,Key\n\"A, B; C\",G\n"_s;
        QTest::newRow("blank before a quote") << u"Title, Key\n \"A, B; C\", G\n"_s;
    }

    void separatorIsFoundOrNamed() {
        QFETCH(QString, text);
        const ExchangeContent content = readTable(text);
        QCOMPARE(content.songs.size(), 1);
        QCOMPARE(content.songs[0].title(), u"A, B; C"_s);
        QCOMPARE(content.songs[0].key, u"G"_s);
    }

    void songWithoutTitleIsNotedByItsRow() {
        const ExchangeContent content =
            readTable(u"Title,Alternate Title,Key\n\"Two\nlines\",,G\n,Only another,D\n"_s);
        QCOMPARE(content.songs.size(), 1);
        QCOMPARE(content.songs[0].title(), u"Two lines"_s);
        QCOMPARE(content.unread, QStringList{u"Row 4 has no title."_s});
    }

    void notesOfManyRowsEnd() {
        QString text = u"Title,Key\n"_s;
        for (int i = 0; i < 2 * MaxExchangeNotes; ++i) text += u",G\n"_s;
        const ExchangeContent content = readTable(text + u"Last,G\n"_s);
        QCOMPARE(content.unread.size(), MaxExchangeNotes);
        QCOMPARE(content.songs.size(), 1);
    }

    void nameOfAPersonIsParted_data() {
        QTest::addColumn<QString>("person");
        QTest::newRow("Ann Bee") << u"Ann|Bee"_s;
        QTest::newRow("Ann Mary Bee") << u"Ann Mary|Bee"_s;
        QTest::newRow("Bee, Ann") << u"Ann|Bee"_s;
        QTest::newRow("  Bee ,  Ann Mary ") << u"Ann Mary|Bee"_s;
        QTest::newRow("Ann") << u"Ann|"_s;
        QTest::newRow("Müller, Zoë") << u"Zoë|Müller"_s;
        QTest::newRow("Bee,") << u"|Bee"_s;
    }

    void nameOfAPersonIsParted() {
        QFETCH(QString, person);
        const ExchangeContent content = readTable(u"Name,Email\n\"%1\",a@example.org\n"_s.arg(
            QString::fromUtf8(QTest::currentDataTag())));
        QCOMPARE(content.form, ExchangeForm::PeopleCsv);
        QCOMPARE(content.people.size(), 1);
        QCOMPARE(nameOf(content.people[0]), person);
        QCOMPARE(content.people[0].email, u"a@example.org"_s);
    }

    void everyColumnOfAPersonIsRead() {
        const ExchangeContent content = readTable(
            u"Vorname;Nachname;Rolle;Position;Straße;Ort;Bundesland;PLZ;Telefon;Handy;E-Mail;x\n"
            "Zoë;Müller;\"Bass, Chor\";Chor;Weg 1;Köln;NRW;50667;555 1;555 2;z@example.org;y\n"
            ";;Bass;;;;;;;;;\n"_s);
        QCOMPARE(content.form, ExchangeForm::PeopleCsv);
        const Contact expected{u"Zoë"_s,          u"Müller"_s, {u"Bass"_s, u"Chor"_s},
                               u"Weg 1"_s,        u"Köln"_s,   u"NRW"_s,
                               u"50667"_s,        u"555 1"_s,  u"555 2"_s,
                               u"z@example.org"_s};
        QCOMPARE(content.people, QList<Contact>{expected});
        QCOMPARE(content.unread, QStringList{u"Row 3 has no name."_s});
    }

    void tableOfNamesAndKeysHoldsSongs() {
        const ExchangeContent content = readTable(u"Name,Key\nAmazing Grace,G\n"_s);
        QCOMPARE(content.form, ExchangeForm::SongsCsv);
        QCOMPARE(content.songs.value(0).title(), u"Amazing Grace"_s);
    }

    void cardIsReadWithItsEscapes_data() {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("roles");
        const auto row = [](const char* name, const QByteArray& lines, const QString& person,
                            const QStringList& roles) {
            QTest::newRow(name) << lines << person << roles;
        };
        row("escaped comma", "N:Bee;Ann\nCATEGORIES:Drums\\, loud,Choir\n", u"Ann|Bee"_s,
            {u"Drums, loud"_s, u"Choir"_s});
        row("escaped line end", "N:Bee;Ann\\nMary\nROLE:Bass\\NGuitar\n", u"Ann Mary|Bee"_s,
            {u"Bass Guitar"_s});
        row("escaped semicolon", "N:Bee\\; Dee;Ann\n", u"Ann|Bee; Dee"_s, {});
        row("escape at the end", "N:Bee;Ann\\\n", u"Ann\\|Bee"_s, {});
        row("full name alone", "FN:Ann Mary Bee\n", u"Ann Mary|Bee"_s, {});
        row("one word", "FN:Ann\nN:;;;;\n", u"Ann|"_s, {});
        row("quoted-printable in Latin-1",
            "N;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller;J=F6rg\n", u"Jörg|Müller"_s,
            {});
        row("quoted-printable in UTF-8", "N;ENCODING=QUOTED-PRINTABLE:M=C3=BCller;J=C3=B6=\nrg\n",
            u"Jörg|Müller"_s, {});
        row("quoted-printable with faults", "N;QUOTED-PRINTABLE:B=ZZee;Ann=4\n", u"Ann=4|B=ZZee"_s,
            {});
        row("Latin-1 that claims to be Latin-1", "N;CHARSET=ISO-8859-1:M\xfcller;J\xf6rg\n",
            u"Jörg|Müller"_s, {});
        row("unknown encoding", "N;CHARSET=X-NONE:M\xc3\xbcller;J\xc3\xb6rg\n", u"Jörg|Müller"_s,
            {});
        row("line without a colon", "N:Bee;Ann\nnonsense\n", u"Ann|Bee"_s, {});
        row("quoted parameter", "N;X=\"a:b\":Bee;Ann\n", u"Ann|Bee"_s, {});
        row("quote without end", "N;X=\"a:Bee;Ann\n", u"Ann|Bee"_s, {});
        row("card inside of the card", "N:Bee;Ann\nBEGIN:VCARD\nN:Dee;Carl\nEND:VCARD\nROLE:Bass\n",
            u"Ann|Bee"_s, {u"Bass"_s});
    }

    void cardIsReadWithItsEscapes() {
        QFETCH(QByteArray, lines);
        QFETCH(QString, name);
        QFETCH(QStringList, roles);
        const ExchangeContent content =
            readExchangeFile("BEGIN:VCARD\n" + lines + "END:VCARD\n", u"a.vcf"_s);
        QCOMPARE(content.form, ExchangeForm::VCard);
        QCOMPARE(content.people.size(), 1);
        QCOMPARE(nameOf(content.people[0]), name);
        QCOMPARE(content.people[0].roles, roles);
        QCOMPARE(content.reason, QString());
    }

    void cardWithoutEndIsReadAndNamed() {
        const ExchangeContent content =
            readExchangeFile("BEGIN:VCARD\nN:Bee;Ann\nTEL;TYPE=FAX:1\nTEL;CELL:2", u"a.vcf"_s);
        QCOMPARE(content.people.size(), 1);
        QCOMPARE(content.people[0].cell, u"2"_s);
        QCOMPARE(content.people[0].phone, QString());
        QCOMPARE(content.reason, u"The last card has no end."_s);
    }

    void preferredLineOfACardCounts() {
        const ExchangeContent content = readExchangeFile(
            "BEGIN:VCARD\nFN:Ann Bee\nTEL:1\nTEL;TYPE=PREF:tel:2\nEMAIL:a@example.org\n"
            "EMAIL;PREF:mailto:b@example.org\nADR;WORK:;;Work 1;A;;1\n"
            "ADR;HOME:Box 7;Flat 2;Home 2;B;C;2\nADR;WORK:;;Work 3;D;;3\nEND:VCARD\n",
            u"a.vcf"_s);
        const Contact expected{u"Ann"_s, u"Bee"_s, {}, u"Home 2, Flat 2, Box 7"_s, u"B"_s, u"C"_s,
                               u"2"_s,   u"2"_s,   {}, u"b@example.org"_s};
        QCOMPARE(content.people, QList<Contact>{expected});
    }
};

LORVANITE_TEST(TestOddTables)
#include "test_odd_tables.moc"
