// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What cannot be taken out is named, and all else is taken.
#include "charts/rules/chart_page.h"
#include "core/data/database.h"
#include "core/grid/sheet_grid.h"
#include "exchange/library_songs.h"
#include "exchange/take_out.h"
#include "samples.h"
#include "sets/rules/set_grid.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

class TestLeftOut : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;

    TakeOutResult takeAll(TakeOutForm form, const QString& name) {
        TakeOutOrder order;
        order.form = form;
        order.songs = librarySongs();
        order.target = world->path(name);
        return takeOut(order, [](int, int) { return true; });
    }

    static QStringList titlesOf(const QList<LibrarySong>& songs) {
        QStringList titles;
        for (const LibrarySong& one : songs) titles += one.song.title();
        return titles;
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>();
        openDatabase();
    }
    void cleanup() { world.reset(); }

    void lostChartIsNamedAndItsSongHasNoWords() {
        world->sql(u"INSERT INTO songs (title, fileLoco) VALUES ('Lost', '/nowhere/lost.stp')"_s);
        world->sql(u"INSERT INTO songs (title, fileLoco) VALUES ('Bare', '')"_s);
        QVERIFY(QDir().mkpath(world->path(u"out"_s)));
        const TakeOutResult result = takeAll(TakeOutForm::ChordPro, u"out"_s);
        QCOMPARE(result.notes,
                 QStringList({u"Without a chart, so without words: Bare"_s,
                              u"The chart is missing or damaged, so without words: Lost"_s}));
        QVERIFY(result.isPartial);
        QCOMPARE(result.problem, QString());
        QCOMPARE(result.files.size(), 2);
        const QByteArray lost = bytesOf(world->path(u"out/Lost.cho"_s));
        const Song song = readExchangeFile(lost, u"Lost.cho"_s).songs.value(0);
        QCOMPARE(song.title(), u"Lost"_s);
        QVERIFY(song.verses.isEmpty());
    }

    void bookOfNoChartsIsNotWritten() {
        world->sql(u"INSERT INTO songs (title, fileLoco) VALUES ('Lost', '/nowhere/lost.stp')"_s);
        const TakeOutResult result = takeAll(TakeOutForm::SongBook, u"book.pdf"_s);
        QCOMPARE(result.problem, u"None of the songs has a chart that can be read."_s);
        QCOMPARE(result.files, QStringList());
        QVERIFY(!QFile::exists(world->path(u"book.pdf"_s)));
    }

    void entriesWithoutDateAreCounted_data() {
        QTest::addColumn<QStringList>("dates");
        QTest::addColumn<QString>("note");
        QTest::newRow("one") << QStringList({u"04/05/26"_s, u"soon"_s})
                             << u"1 entry has no date that can be read, and is left out."_s;
        QTest::newRow("two") << QStringList({u"04/05/26"_s, u""_s, u"13/13/26"_s})
                             << u"2 entries have no date that can be read, and are left out."_s;
    }

    void entriesWithoutDateAreCounted() {
        QFETCH(QStringList, dates);
        QFETCH(QString, note);
        for (const QString& date : dates) {
            world->sql(
                u"INSERT INTO played_on (songID, title, played_date) VALUES (1, 'T', '%1')"_s.arg(
                    date));
            world->sql(
                u"INSERT INTO schedule (pdate, instrument, player) VALUES ('%1', 'Bass', 'Ann B')"_s
                    .arg(date));
        }
        for (const auto& [form, name] : {std::pair(TakeOutForm::PlayedCsv, u"p.csv"_s),
                                         std::pair(TakeOutForm::Calendar, u"c.ics"_s)}) {
            const TakeOutResult result = takeAll(form, name);
            QCOMPARE(result.notes, QStringList{note});
            QVERIFY(result.isPartial);
            QCOMPARE(result.files, QStringList{world->path(name)});
        }
        QCOMPARE(readExchangeFile(bytesOf(world->path(u"p.csv"_s)), u"p.csv"_s).played,
                 QList<PlayedDate>({{u"T"_s, QString(), QDate(2026, 4, 5)}}));
        QCOMPARE(bytesOf(world->path(u"c.ics"_s)).count("BEGIN:VEVENT"), 1);
    }

    void songsOfASetComeInItsOrderOrByTitle() {
        for (const QString& title : {u"Zion"_s, u"Amazing"_s, u"Middle"_s})
            world->sql(u"INSERT INTO songs (title) VALUES ('%1')"_s.arg(title));
        SheetGrid set;
        setUpSet(set);
        int row = SetRow::FirstTitle;
        for (const QString& title :
             {u"zion"_s, u"No such song"_s, u"Middle"_s, u"Zion"_s, u"Amazing"_s})
            set.SetText(SetColumn::Title, row++, title);
        const QString path = world->path(u"saved sets/a.set"_s);
        QVERIFY(set.SaveToFile(path, false));
        const SetSongs ordered = songsOfSetFile(path, false);
        QCOMPARE(titlesOf(ordered.songs), QStringList({u"Zion"_s, u"Middle"_s, u"Amazing"_s}));
        QCOMPARE(ordered.missing, QStringList{u"No such song"_s});
        const SetSongs sorted = songsOfSetFile(path, true);
        QCOMPARE(titlesOf(sorted.songs), QStringList({u"Amazing"_s, u"Middle"_s, u"Zion"_s}));
        QCOMPARE(sorted.missing, QStringList{u"No such song"_s});
    }

    // What the catalogue knows comes first; what the chart says besides is kept.
    void chartAddsWhatTheCatalogueDoesNotKnow() {
        const QString chart = world->path(u"sheetmusic/a.stp"_s);
        SheetGrid page;
        setUpChart(page);
        page.SetText(ChartColumn::Text, ChartRow::Title, u"Another Title"_s);
        page.SetText(ChartColumn::Text, ChartRow::Title + 1, u"Eve Fox"_s);
        page.SetText(ChartColumn::Text, 6, u"Joy 🎵 sung"_s);
        QVERIFY(page.SaveToFile(chart, false));
        world->sql(
            u"INSERT INTO songs (title, artist, fileLoco) VALUES ('Title', 'Ann Bee', '%1')"_s.arg(
                chart));
        ChartReader reader;
        bool hasChart = false;
        const Song song = wholeSong(librarySongs().value(0), reader, hasChart);
        QVERIFY(hasChart);
        QCOMPARE(song.titles, QStringList({u"Title"_s, u"Another Title"_s}));
        QCOMPARE(song.authors, QList<SongAuthor>({{u"Ann Bee"_s, SongAuthor::Work::Any}}));
        QCOMPARE(song.comments, QStringList{u"Eve Fox"_s});
        QCOMPARE(shownVerses(song), QStringList{u"v1: Joy 🎵 sung"_s});
    }
};

LORVANITE_TEST(TestLeftOut)
#include "test_left_out.moc"
