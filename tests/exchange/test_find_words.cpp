// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Find Words: the index of all charts, and the window.
#include "catalogue/frm_song_admin.h"
#include "charts/rules/chart_page.h"
#include "charts/sheet_music.h"
#include "core/data/database.h"
#include "exchange/frm_find_words.h"
#include "sets/frm_set_list.h"
#include "sets/rules/song_picker.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

class TestFindWords : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;

    QString makeChart(const QString& name, const QStringList& lines) {
        SheetGrid chart;
        setUpChart(chart);
        chart.SetText(1, 1, name);
        int row = ChartRow::FirstLyric;
        for (const QString& line : lines) {
            chart.SetText(1, row, line);
            row += 2;
        }
        const QString path = world->path(u"sheetmusic/"_s + name + u".stp"_s);
        if (!chart.SaveToFile(path, false)) QTest::qFail("not saved", __FILE__, __LINE__);
        return path;
    }

    QString indexPath() const { return world->path(u"words.index"_s); }

    // Finds words in an index of these charts, as "title: line".
    QStringList found(WordIndex& index, const QString& words) {
        QStringList texts;
        for (const FoundLine& one : index.find(words))
            texts += one.chart.title + u": "_s + one.line;
        return texts;
    }

    QList<IndexedChart> someCharts() {
        return {
            {1, u"Grace"_s,
             makeChart(u"Grace"_s, {u"Amazing grace how sweet"_s, u"the sound that saved"_s,
                                    u"I once was lost but now am found"_s})},
            {2, u"Na\u00efve"_s,
             makeChart(u"Naive"_s, {u"\u00c9ternel, don\u2019t let go"_s,
                                    u"I've been re - lieved of my sin"_s})},
            {3, u"Sweet Hour"_s,
             makeChart(u"Hour"_s, {u"Sweet hour of prayer"_s, u"sound the bell"_s, u"how long"_s})},
            {4, u"No Chart"_s, {}}};
    }

    frmFindWords& openWindow() {
        frmMDI& main = world->main();
        click(main.Command10);
        if (!pickMenuItem(main.mnuUtilities, main.mnuFindWords))
            QTest::qFail("no item Find Words", __FILE__, __LINE__);
        return frmFindWords::instance();
    }

    void startSample() {
        world.reset();
        world = std::make_unique<World>(WorldTree::Sample);
        world->sql(u"UPDATE prefs SET var_value = 'false' WHERE var_name = 'NotesOnStartUp'"_s);
        world->start();
    }

private Q_SLOTS:
    void init() { world = std::make_unique<World>(); }
    void cleanup() { world.reset(); }

    void wordsInOneLineComeFirst() {
        WordIndex index(indexPath());
        QCOMPARE(index.update(someCharts()), 3);
        QCOMPARE(found(index, u"sweet how"_s),
                 QStringList(
                     {u"Grace: Amazing grace how sweet"_s, u"Sweet Hour: Sweet hour of prayer"_s}));
        QCOMPARE(found(index, u"SOUND sweet"_s).size(), 2);
        QCOMPARE(found(index, u"lost found once"_s),
                 QStringList{u"Grace: I once was lost but now am found"_s});
        // The last word may be a beginning.
        QCOMPARE(found(index, u"amazing gr"_s), QStringList{u"Grace: Amazing grace how sweet"_s});
        QVERIFY(found(index, u"gr amazing"_s).value(0) == u"Grace: Amazing grace how sweet"_s);
        QCOMPARE(found(index, u"chart"_s), QStringList{u"No Chart: "_s});
        QCOMPARE(found(index, u"zebra"_s), QStringList());
        QCOMPARE(found(index, u"  \" ' * ( "_s), QStringList());
    }

    void apostrophesAccentsAndHyphensDoNotMatter() {
        WordIndex index(indexPath());
        index.update(someCharts());
        const QStringList one = {u"Na\u00efve: \u00c9ternel, don\u2019t let go"_s};
        QCOMPARE(found(index, u"dont eternel"_s), one);
        QCOMPARE(found(index, u"don't \u00c9TERNEL"_s), one);
        const QStringList two = {u"Na\u00efve: I've been re - lieved of my sin"_s};
        QCOMPARE(found(index, u"ive relieved"_s), two);
        QCOMPARE(found(index, u"re-lieved"_s), two);
        QCOMPARE(found(index, u"naive"_s).size(), 1);
        QCOMPARE(foldedWords(u"Stra\u00dfe \u00d8re \u5947\u5f02"_s),
                 u"strasse ore \u5947 \u5f02"_s);
    }

    void misrememberedWordFindsTheClosest() {
        WordIndex index(indexPath());
        index.update(someCharts());
        QCOMPARE(found(index, u"once was blind but found"_s).value(0),
                 u"Grace: I once was lost but now am found"_s);
    }

    void changedAndLostChartsAreFollowed() {
        QList<IndexedChart> charts = someCharts();
        {
            WordIndex index(indexPath());
            index.update(charts);
        }
        WordIndex index(indexPath());
        QCOMPARE(index.update(charts), 0);
        makeChart(u"Grace"_s, {u"Quite other words"_s});
        charts.removeAt(1);
        charts[2].title = u"Renamed"_s;
        QCOMPARE(index.update(charts), 1);
        QCOMPARE(found(index, u"amazing"_s), QStringList());
        QCOMPARE(found(index, u"other quite"_s), QStringList{u"Grace: Quite other words"_s});
        QCOMPARE(found(index, u"eternel"_s), QStringList());
        QCOMPARE(found(index, u"renamed"_s).size(), 1);
    }

    void damagedIndexIsMadeAgain_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no database") << QByteArray(5000, 'x');
        QTest::newRow("half") << QByteArray("half");
        QTest::newRow("hole") << QByteArray("hole");
    }

    void damagedIndexIsMadeAgain() {
        QFETCH(QByteArray, bytes);
        const QList<IndexedChart> charts = someCharts();
        { WordIndex(indexPath()).update(charts); }
        QByteArray whole = bytesOf(indexPath());
        if (bytes == "half") {
            bytes = whole.left(whole.size() / 2);
        } else if (bytes == "hole") {
            bytes = whole.replace(4096, 12000, QByteArray(12000, 'z'));
        }
        QFile file(indexPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        WordIndex index(indexPath());
        QCOMPARE(index.update(charts), 3);
        QCOMPARE(found(index, u"sweet amazing"_s).size(), 1);
        QVERIFY(bytesOf(indexPath()).startsWith("SQLite format 3"));
    }

    void folderThatCannotBeWrittenStillFinds() {
        const QList<IndexedChart> charts = someCharts();
        WordIndex index(world->path(u"no such folder/words.index"_s));
        QCOMPARE(index.update(charts), 3);
        QCOMPARE(found(index, u"sweet amazing"_s).size(), 1);
    }

    void fullDiskStillFinds_data() {
        QTest::addColumn<bool>("hasRoomForTables");
        QTest::newRow("no room") << false;
        QTest::newRow("room for an empty index") << true;
    }
    void fullDiskStillFinds() {
        QFETCH(bool, hasRoomForTables);
        QList<IndexedChart> charts = someCharts();
        QStringList verses;
        for (int i = 0; i < 15; ++i) verses += u"verse%1 "_s.arg(i).repeated(300);
        charts += {5, u"Long"_s, makeChart(u"Long"_s, verses)};
        { const WordIndex empty(indexPath()); }
        const qint64 room = hasRoomForTables ? QFileInfo(indexPath()).size() : 0;
        QVERIFY(QFile::remove(indexPath()));
        const FullDisk full(static_cast<rlim_t>(room));
        WordIndex index(indexPath());
        QCOMPARE(index.update(charts), 4);
        QCOMPARE(found(index, u"sweet amazing"_s).size(), 1);
        QCOMPARE(found(index, u"verse7"_s).size(), 1);
        // What cannot be used leaves the disk to others.
        QVERIFY(!QFile::exists(indexPath()));
        QCOMPARE(index.update(charts), 0);
    }

    void indexDamagedWhileTheWindowIsOpenIsMadeAgain() {
        startSample();
        frmFindWords& window = openWindow();
        QVERIFY(QFile::resize(indexPath(), 0));
        QTest::keyClicks(window.txtWords, u"sweet amazing"_s);
        settle();
        QCOMPARE(columnOf(window.fpFound, 1), QStringList{u"Amazing Grace"_s});
        QVERIFY(bytesOf(indexPath()).startsWith("SQLite format 3"));
    }

    void songIsSelectedInTheOpenList() {
        startSample();
        click(world->main().cmdSongMgmt);
        frmFindWords& window = openWindow();
        QVERIFY(window.txtWords->hasFocus());
        QTest::keyClicks(window.txtWords, u"sweet amazing"_s);
        settle();
        QCOMPARE(columnOf(window.fpFound, 1), QStringList{u"Amazing Grace"_s});
        QVERIFY(columnOf(window.fpFound, 2)[0].contains(u"How sweet the sound"_s));
        QCOMPARE(window.lblFound->text(), u"1 song"_s);
        QTest::keyClick(window.txtWords, Qt::Key_Return);
        settle();
        frmSongAdmin& songs = frmSongAdmin::instance();
        QCOMPARE(songs.fpSongList2->GetText(2, songs.fpSongList2->ActiveRow()), u"Amazing Grace"_s);
        QVERIFY(songs.fpSongList2->hasFocus());
    }

    void songIsSelectedInTheListUsedLast() {
        startSample();
        click(world->main().cmdSongMgmt);
        click(world->main().cmdSetList);
        frmSetList& sets = frmSetList::instance();
        QTest::keyClicks(sets.txtSearch, u"night"_s);
        sets.searchByTitle();
        settle();
        frmFindWords& window = openWindow();
        QTest::keyClicks(window.txtWords, u"all is calm"_s);
        QTest::keyClick(window.txtWords, Qt::Key_Return);
        settle();
        QCOMPARE(sets.fpSongList1->GetText(PickerColumn::Title, sets.fpSongList1->ActiveRow()),
                 u"Silent Night"_s);
        QVERIFY(sets.fpSongList1->hasFocus());
    }

    void withoutAListTheChartOpens() {
        startSample();
        frmFindWords& window = openWindow();
        QTest::keyClicks(window.txtWords, u"holy"_s);
        settle();
        const QStringList titles = columnOf(window.fpFound, 1);
        const int night = int(titles.indexOf(u"Silent Night"_s)) + 1;
        QVERIFY(night > 1);
        for (int row = 1; row < night; ++row) QTest::keyClick(window.txtWords, Qt::Key_Down);
        QTest::keyClick(window.txtWords, Qt::Key_Return);
        settle();
        SheetMusic& chart = SheetMusic::instance();
        QCOMPARE(chart.fpSong->textAt(1, 1, 1), u"Silent Night"_s);

        // Another chart gives way only after a question.
        const QString question =
            u"The window SheetMusic has a chart already.\r"
            "Do you want to open the chart found in its place?"_s;
        world->answers.question(question, QMessageBox::No);
        const int holy = int(titles.indexOf(u"Holy, Holy, Holy"_s)) + 1;
        clickCell(window.fpFound, 1, holy);
        settle();
        QCOMPARE(chart.fpSong->textAt(1, 1, 1), u"Silent Night"_s);
        world->answers.question(question, QMessageBox::Yes);
        click(window.cmdShow);
        QCOMPARE(chart.fpSong->textAt(1, 1, 1), u"Holy, Holy, Holy"_s);
    }

    void songThatIsNotInTheOpenListShowsItsChart() {
        startSample();
        click(world->main().cmdSetList);
        frmSetList& sets = frmSetList::instance();
        QTest::keyClicks(sets.txtSearch, u"abide"_s);
        sets.searchByTitle();
        settle();
        QCOMPARE(sets.fpSongList1->MaxRows(), 1);
        frmFindWords& window = openWindow();
        QTest::keyClicks(window.txtWords, u"all is calm"_s);
        QTest::keyClick(window.txtWords, Qt::Key_Return);
        settle();
        QCOMPARE(SheetMusic::instance().fpSong->textAt(1, 1, 1), u"Silent Night"_s);
        QVERIFY(SheetMusic::instance().isVisible());
    }

    void songWithoutChartIsShownInTheCatalogue() {
        startSample();
        frmFindWords& window = openWindow();
        QTest::keyClicks(window.txtWords, u"abide with"_s);
        QTest::keyClick(window.txtWords, Qt::Key_Return);
        settle();
        frmSongAdmin& songs = frmSongAdmin::instance();
        QCOMPARE(songs.fpSongList2->GetText(2, songs.fpSongList2->ActiveRow()), u"Abide with Me"_s);
        window.txtWords->selectAll();
        QTest::keyClicks(window.txtWords, u"zebra"_s);
        QCOMPARE(window.lblFound->text(), u"No song has these words."_s);
        QVERIFY(!window.cmdShow->isEnabled());
    }
};

LORVANITE_TEST(TestFindWords)
#include "test_find_words.moc"
