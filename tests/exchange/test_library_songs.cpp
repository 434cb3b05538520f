// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Songs, dates and services of the database as other programs get them.
#include "charts/rules/chart_page.h"
#include "core/data/database.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"
#include "exchange/chart_layout.h"
#include "exchange/library_songs.h"
#include "exchange/rules/form_readers.h"
#include "samples.h"
#include "support/registry.h"
#include "support/world.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// The lines of a sample chart's text, as they were before they were laid out.
QList<SongLine> linesOfSampleText(const QString& title) {
    QList<SongLine> lines;
    QStringList texts;
    for (const QString& text :
         linesOf(QStringLiteral(SOURCE_TREE "/sample/charts/%1.txt").arg(title)))
        if (!text.startsWith(u'#')) texts += text;
    for (const QString& text : texts.mid(2))
        if (!text.trimmed().isEmpty()) lines += bracketLine(text, false);
    return lines;
}

QList<SongLine> linesOfSong(const Song& song) {
    QList<SongLine> lines;
    for (const SongVerse& verse : song.verses) lines += verse.lines;
    return lines;
}

}  // namespace

class TestLibrarySongs : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;

    void start(WorldTree tree) {
        world = std::make_unique<World>(tree);
        openDatabase();
    }

    LibrarySong songCalled(const QString& title) {
        QStringList missing;
        return librarySongs({title}, missing).value(0);
    }

    // A chart of one page on which `lay` has written, as a song.
    Song readPage(const std::function<void(SheetGrid&)>& lay) {
        SheetGrid chart;
        setUpChart(chart);
        lay(chart);
        chart.Sheet(1);
        return ChartReader().read(chart);
    }

private Q_SLOTS:
    void cleanup() { world.reset(); }

    void chartsComeBackWithTheirWordsAndChords() {
        start(WorldTree::Sample);
        ChartReader reader;
        int charts = 0, chords = 0, exact = 0, near = 0;
        for (const LibrarySong& one : librarySongs()) {
            bool hasChart = false;
            const Song song = wholeSong(one, reader, hasChart);
            QCOMPARE(hasChart, !one.chart.isEmpty());
            if (!hasChart) continue;
            ++charts;
            const QList<SongLine> expected = linesOfSampleText(song.title());
            const QList<SongLine> found = linesOfSong(song);
            QCOMPARE(found.size(), expected.size());
            for (qsizetype i = 0; i < found.size(); ++i) {
                QCOMPARE(found[i].text.trimmed(), expected[i].text.trimmed());
                QCOMPARE(found[i].chords.size(), expected[i].chords.size());
                for (qsizetype k = 0; k < found[i].chords.size(); ++k) {
                    QCOMPARE(found[i].chords[k].name, expected[i].chords[k].name);
                    const int off =
                        std::abs(found[i].chords[k].column - expected[i].chords[k].column);
                    ++chords;
                    exact += off == 0;
                    near += off <= 2;
                }
            }
        }
        QCOMPARE(charts, 10);
        qInfo() << chords << "chords," << exact << "in their column," << near << "within two";
        // A cell is as wide as two or three characters.
        QVERIFY(exact * 2 > chords);
        QVERIFY(near * 100 > chords * 97);
    }

    void verseLabelsStartVersesAndBlankLinesEndThem() {
        const Song song = readPage([](SheetGrid& chart) {
            chart.SetText(1, 1, u"A Title"_s);
            chart.SetText(1, 2, u"John Newton"_s);
            chart.SetText(1, 3, u"Key: G | Tempo: 72"_s);
            chart.SetText(1, 6, u"Verse 1"_s);
            chart.SetText(1, 8, u"One line"_s);
            chart.SetText(1, 10, u"Another line"_s);
            chart.SetText(1, 14, u"Without a label"_s);
            chart.SetText(1, 15, u"Chorus"_s);
            chart.SetText(1, 16, u"Sung by all"_s);
            chart.SetText(1, 18, u"Verse 1"_s);
        });
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1 Verse 1: One line / Another line"_s, u"v2: Without a label"_s,
                              u"c Chorus: Sung by all"_s}));
        QCOMPARE(song.verseOrder, QStringList({u"v1"_s, u"v2"_s, u"c"_s, u"v1"_s}));
        QCOMPARE(song.titles, QStringList{u"A Title"_s});
        QCOMPARE(song.authors.value(0).name, u"John Newton"_s);
        QCOMPARE(song.key, u"G"_s);
        QCOMPARE(song.tempo, u"72"_s);
    }

    void linesBelowTheTitleAreItsAuthorsAndAComment() {
        const Song song = readPage([](SheetGrid& chart) {
            chart.SetText(1, 1, u"Amazing Grace"_s);
            chart.SetText(1, 2, u"John Newton"_s);
            chart.SetText(1, 3, u"softly, without drums"_s);
            chart.SetText(1, 6, u"Amazing grace"_s);
        });
        QCOMPARE(song.titles, QStringList{u"Amazing Grace"_s});
        QCOMPARE(song.authors.size(), 1);
        QCOMPARE(song.authors[0].name, u"John Newton"_s);
        QCOMPARE(song.comments, QStringList{u"softly, without drums"_s});
    }

    void chordsBesideTheWordsKeepTheirDistance() {
        const Song song = readPage([](SheetGrid& chart) {
            chart.SetText(1, 5, u"D"_s);
            chart.SetText(10, 5, u"(softly)"_s);
            chart.SetText(37, 5, u"F#m7"_s);
            chart.SetText(1, 6, u"Amazing grace, how sweet the sound"_s);
            chart.SetText(5, 9, u"G"_s);
            chart.SetText(9, 9, u"Em7 | A"_s);
        });
        const QList<SongLine> lines = linesOfSong(song);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines[0].text.trimmed(), u"Amazing grace, how sweet the sound"_s);
        QCOMPARE(lines[0].chords[0].column, 0);
        QVERIFY(lines[0].text.startsWith(u"          "_s));
        QVERIFY(lines[0].chords[1].annotation);
        QCOMPARE(lines[0].chords[1].name, u"softly"_s);
        QVERIFY(lines[0].chords[2].column > lines[0].text.size() + 10);
        QCOMPARE(shown(lines[1]), u"[G]          [Em7]      [A]"_s);
    }

    void chordsBesideTheWordsReturnToTheirCells() {
        SheetGrid again;
        const Song song = readPage([](SheetGrid& chart) {
            chart.SetText(1, 5, u"D"_s);
            chart.SetText(5, 5, u"A7"_s);
            chart.SetText(20, 5, u"G"_s);
            chart.SetText(37, 5, u"F"_s);
            chart.SetText(1, 6, u"Amazing grace, how sweet the sound"_s);
        });
        layOutChart(song, again);
        QCOMPARE(again.textAt(1, 1, 6), u"Amazing grace, how sweet the sound"_s);
        QStringList places;
        for (int col = 1; col <= ChartCols; ++col)
            if (const QString chord = again.textAt(1, col, 5); !chord.isEmpty())
                places += chord + QString::number(col);
        QCOMPARE(places, QStringList({u"D1"_s, u"A75"_s, u"G20"_s, u"F37"_s}));
    }

    void versesGoOnAcrossPages() {
        const Song song = readPage([](SheetGrid& chart) {
            chart.SetText(1, 1, u"A Title"_s);
            chart.SetText(1, 38, u"First"_s);
            chart.SetText(1, 40, u"Second"_s);
            addChartPage(chart, [](const QString&) {});
            chart.SetText(1, 1, u"A Title"_s);
            chart.SetText(1, 3, u"Page two"_s);
            chart.SetText(1, 6, u"Third"_s);
            chart.SetText(1, 10, u"Fourth"_s);
        });
        QCOMPARE(shownVerses(song),
                 QStringList({u"v1: First / Second / {Page two} / Third"_s, u"v2: Fourth"_s}));
    }

    void catalogueComesBeforeTheChart() {
        start(WorldTree::Delivered);
        SheetGrid chart;
        setUpChart(chart);
        chart.SetText(1, 1, u"Faith's Review"_s);
        chart.SetText(1, 2, u"Sam O'Brien"_s);
        chart.SetText(1, 3, u"Key: G | Time: 3/4"_s);
        chart.SetText(1, 6, u"My life is love"_s);
        const QString path = world->path(u"sheetmusic/Faith.stp"_s);
        QVERIFY(chart.SaveToFile(path, false));
        world->sql(
            u"INSERT INTO songs (title, artist, dakey, cat1, cat3, CCLI, fileLoco) VALUES "
            "('Faiths Review', 'Sam OBrien', 'A', 'Praise', 'Closing', '12345', '%1');"
            "INSERT INTO songs (title, CCLI, fileLoco) VALUES ('Lost', 'PD', '%1x')"_s.arg(path));
        ChartReader reader;
        bool hasChart = false;
        const Song song = wholeSong(songCalled(u"faith\u2019s review"_s), reader, hasChart);
        QVERIFY(hasChart);
        QCOMPARE(song.titles, QStringList{u"Faith's Review"_s});
        QCOMPARE(song.authors.size(), 1);
        QCOMPARE(song.authors[0].name, u"Sam O'Brien"_s);
        QCOMPARE(song.key, u"A"_s);
        QCOMPARE(song.time, u"3/4"_s);
        QCOMPARE(song.ccli, u"12345"_s);
        QCOMPARE(song.themes, QStringList({u"Praise"_s, u"Closing"_s}));
        QCOMPARE(shownVerses(song), QStringList{u"v1: My life is love"_s});
        const Song lost = wholeSong(songCalled(u"Lost"_s), reader, hasChart);
        QVERIFY(!hasChart);
        QCOMPARE(lost.titles, QStringList{u"Lost"_s});
        QCOMPARE(lost.comments, QStringList{u"CCLI: PD"_s});
    }

    void songsOfASetKeepItsOrder() {
        start(WorldTree::Sample);
        QStringList missing;
        const QList<LibrarySong> songs = librarySongs(
            {u"Silent Night"_s, u"No such song"_s, u"Amazing Grace"_s, u"silent night"_s}, missing);
        QCOMPARE(songs.size(), 2);
        QCOMPARE(songs[0].song.title(), u"Silent Night"_s);
        QCOMPARE(songs[1].song.title(), u"Amazing Grace"_s);
        QCOMPARE(missing, QStringList{u"No such song"_s});
        const QStringList files =
            QDir(world->path(u"saved sets"_s)).entryList({u"*.set"_s}, QDir::Files);
        QVERIFY(!files.isEmpty());
        missing.clear();
        const QStringList titles = titlesOfSetFile(world->path(u"saved sets/"_s + files[0]));
        QVERIFY(titles.size() > 2);
        QVERIFY(librarySongs(titles, missing).size() > 2);
        QVERIFY(titlesOfSetFile(world->path(u"db1.mdb"_s)).isEmpty());
    }

    void peopleDatesAndServicesAreRead() {
        start(WorldTree::Delivered);
        world->sql(
            u"INSERT INTO personell (fName, lName, role, role3, email) VALUES ('Ann', 'Bee', "
            "'Keys', 'Flute', 'ann@example.org');"
            "INSERT INTO songs (ID, title, CCLI) VALUES (7, 'Grace', '123');"
            "INSERT INTO played_on (songID, title, played_date) VALUES (7, 'Grace', '11/22/26'), "
            "(7, 'Grace', '01/04/26'), (9, 'Gone', '02/01/26'), (7, 'Grace', 'soon');"
            "INSERT INTO schedule (player, instrument, pdate) VALUES ('Ann Bee', 'Keys', "
            "'11/22/26'), ('Carl Dee', 'Drums', '11/22/26'), ('Ann Bee', 'Flute', '01/03/27'), "
            "('Ann Bee', 'Flute', 'never');"
            "INSERT INTO special_music (song_name, play_date) VALUES ('Solo', '01/03/27')"_s);
        const QList<Contact> people = libraryPeople();
        QCOMPARE(people.size(), 1);
        QCOMPARE(people[0].roles, QStringList({u"Keys"_s, u"Flute"_s}));
        int unreadable = 0;
        const QList<PlayedDate> all = libraryPlayed({}, unreadable);
        QCOMPARE(unreadable, 1);
        QCOMPARE(all, QList<PlayedDate>({{u"Gone"_s, {}, QDate(2026, 2, 1)},
                                         {u"Grace"_s, u"123"_s, QDate(2026, 1, 4)},
                                         {u"Grace"_s, u"123"_s, QDate(2026, 11, 22)}}));
        QCOMPARE(libraryPlayed({songCalled(u"Grace"_s)}, unreadable).size(), 2);
        unreadable = 0;
        const QList<ServiceDate> services = libraryServices(unreadable);
        QCOMPARE(unreadable, 1);
        QCOMPARE(services.size(), 2);
        QCOMPARE(services[0].team.size(), 2);
        QCOMPARE(services[0].team[1].person, u"Carl Dee"_s);
        QCOMPARE(services[0].songs, QStringList{u"Grace"_s});
        QCOMPARE(services[1].notes, u"Special music: Solo"_s);
        QVERIFY(services[1].songs.isEmpty());
    }
};

LORVANITE_TEST(TestLibrarySongs)
#include "test_library_songs.moc"
