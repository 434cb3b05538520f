// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Taking out: the page of the window Exchange, and the command that does the same.
#include "exchange/frm_exchange.h"
#include "exchange/rules/reader.h"
#include "exchange/take_out_page.h"
#include "samples.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QTabBar>

using namespace Qt::Literals::StringLiterals;

class TestTakeOut : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;

    void startSample() {
        world = std::make_unique<World>(WorldTree::Sample);
        world->sql(u"UPDATE prefs SET var_value = 'false' WHERE var_name = 'NotesOnStartUp'"_s);
        world->start();
    }

    TakeOutPage& openPage() {
        frmMDI& main = world->main();
        click(main.Command10);
        if (!pickMenuItem(main.mnuUtilities, main.mnuExchange))
            QTest::qFail("no item Exchange", __FILE__, __LINE__);
        frmExchange& window = frmExchange::instance();
        window.tabPages->setCurrentWidget(window.pageTakeOut);
        settle();
        return *window.pageTakeOut;
    }

    void chooseForm(TakeOutPage& page, TakeOutForm form) {
        for (int i = 0; i < takeOutForms().size(); ++i)
            if (takeOutForms()[i].form == form) {
                const QRect place = page.lstForms->visualItemRect(page.lstForms->item(i));
                QTest::mouseClick(page.lstForms->viewport(), Qt::LeftButton, {}, place.center());
            }
        settle();
    }

    // Ticks songs with the keyboard.
    void tick(TakeOutPage& page, const QStringList& titles) {
        page.lstSongs->setFocus();
        for (const QString& title : titles) {
            QListWidgetItem* item = page.lstSongs->findItems(title, Qt::MatchExactly).value(0);
            QVERIFY2(item, qPrintable(title));
            page.lstSongs->setCurrentItem(item);
            QTest::keyClick(page.lstSongs, Qt::Key_Space);
        }
    }

    QString folder(const QString& name) const {
        const QString path = world->path(name);
        QDir().mkpath(path);
        return path;
    }

    static QStringList filesIn(const QString& path) {
        return QDir(path).entryList(QDir::Files, QDir::Name);
    }

    struct Ended {
        int code = -1;
        QString printed;
        QString errors;
    };

    // Runs the command on the program's folder.
    Ended command(const QStringList& words) {
        QProcess process;
        process.start(QStringLiteral(PROGRAM_TREE "/lorvanite-exchange"),
                      QStringList{u"export"_s, u"--folder"_s, world->folder()} + words);
        if (!process.waitForFinished(120'000)) return {};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    // The exit status of another program.
    static int read(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        if (!process.waitForFinished(60'000)) return -1;
        if (process.exitCode() != 0) qWarning() << process.readAllStandardError().left(2000);
        return process.exitCode();
    }

private Q_SLOTS:
    void cleanup() { world.reset(); }

    void allSongsBecomeFilesThatComeBack() {
        startSample();
        TakeOutPage& page = openPage();
        const QString to = folder(u"out"_s);
        world->answers.file(to);
        click(page.cmdTakeOut);
        QCOMPARE(filesIn(to).size(), 60);
        QVERIFY2(page.lblDone->text().startsWith(u"60 files were written to "_s),
                 qPrintable(page.lblDone->text()));
        QVERIFY(page.lblDone->text().contains(u"Without a chart"_s));
        const ExchangeContent grace =
            readExchangeFile(bytesOf(to + u"/Amazing Grace.cho"_s), u"Amazing Grace.cho"_s);
        QCOMPARE(grace.songs.size(), 1);
        QCOMPARE(grace.songs[0].title(), u"Amazing Grace"_s);
        QVERIFY(grace.songs[0].verses.size() > 3);

        // A second time it asks first, and No leaves the files alone.
        world->answers.file(to);
        world->answers.question(
            u"The folder has files of the same names: 60.\rDo you want to replace them?"_s,
            QMessageBox::No);
        QFile(to + u"/Amazing Grace.cho"_s).resize(3);
        click(page.cmdTakeOut);
        QCOMPARE(bytesOf(to + u"/Amazing Grace.cho"_s).size(), 3);
        world->answers.file(to);
        world->answers.question(
            u"The folder has files of the same names: 60.\rDo you want to replace them?"_s,
            QMessageBox::Yes);
        click(page.cmdTakeOut);
        QVERIFY(bytesOf(to + u"/Amazing Grace.cho"_s).size() > 100);
    }

    void tickedSongsAloneAreTaken() {
        startSample();
        TakeOutPage& page = openPage();
        chooseForm(page, TakeOutForm::OpenLyrics);
        QTest::mouseClick(page.optTicked, Qt::LeftButton, {},
                          QPoint(8, page.optTicked->height() / 2));
        QVERIFY(page.optTicked->isChecked());
        world->answers.box(u"Please tick at least one song."_s);
        click(page.cmdTakeOut);
        tick(page, {u"Silent Night"_s, u"Doxology"_s});
        const QString to = folder(u"out"_s);
        world->answers.file(to);
        click(page.cmdTakeOut);
        QCOMPARE(filesIn(to), QStringList({u"Doxology.xml"_s, u"Silent Night.xml"_s}));
        QCOMPARE(page.lblDone->text(),
                 u"2 files were written to %1."_s.arg(QDir::toNativeSeparators(to)));
        // Another form keeps the ticks.
        chooseForm(page, TakeOutForm::SongsCsv);
        QVERIFY(page.optTicked->isChecked());
        world->answers.file(to + u"/list"_s);
        click(page.cmdTakeOut);
        QCOMPARE(readExchangeFile(bytesOf(to + u"/list.csv"_s), u"list.csv"_s).songs.size(), 2);
    }

    void ticksStayWhileAnotherPageIsShown() {
        startSample();
        TakeOutPage& page = openPage();
        tick(page, {u"Silent Night"_s});
        QTabBar* tabs = frmExchange::instance().tabPages->tabBar();
        for (const int shown : {0, 1})
            QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(shown).center());
        settle();
        QVERIFY(page.isVisible());
        QStringList ticked;
        for (int i = 0; i < page.lstSongs->count(); ++i)
            if (page.lstSongs->item(i)->checkState() == Qt::Checked)
                ticked += page.lstSongs->item(i)->text();
        QCOMPARE(ticked, QStringList{u"Silent Night"_s});
    }

    void songsThatAreGoneAreNotTaken() {
        startSample();
        TakeOutPage& page = openPage();
        chooseForm(page, TakeOutForm::ChordPro);
        world->sql(u"DELETE FROM songs"_s);
        world->answers.box(u"There are no songs in the catalogue."_s);
        click(page.cmdTakeOut);
        page.cmbSet->setFocus();
        QTest::keyClick(page.cmbSet, Qt::Key_Down);
        QVERIFY(page.optSet->isChecked());
        world->answers.box(u"The catalogue has none of the set's songs."_s);
        click(page.cmdTakeOut);
        QCOMPARE(page.lblDone->text(), QString());
    }

    void bookOfASetKeepsItsOrder() {
        startSample();
        TakeOutPage& page = openPage();
        chooseForm(page, TakeOutForm::SongBook);
        QVERIFY(page.bookPanel->isVisible());
        QVERIFY(!page.periodPanel->isVisible());
        QVERIFY(page.cmbSet->count() > 3);
        page.cmbSet->setFocus();
        QTest::keyClick(page.cmbSet, Qt::Key_Down);
        QVERIFY(page.optSet->isChecked());
        page.txtTitle->selectAll();
        QTest::keyClicks(page.txtTitle, u"Sunday"_s);
        world->answers.file(world->path(u"sunday"_s));
        click(page.cmdTakeOut);
        QCOMPARE(world->answers.fileDialogs()[0].proposed, u"Sunday.pdf"_s);
        const QStringList pages = printedPages(world->path(u"sunday.pdf"_s));
        QVERIFY(pages.size() >= 2);
        QVERIFY(pages[0].contains(u"Sunday"_s));
    }

    void reportAndPeopleAndDatesBecomeTables() {
        startSample();
        TakeOutPage& page = openPage();
        const QString to = folder(u"out"_s);
        chooseForm(page, TakeOutForm::CcliReport);
        QVERIFY(page.periodPanel->isVisible());
        QVERIFY(!page.songPanel->isVisible());
        QCOMPARE(page.datFrom->date(), QDate(2026, 1, 1));
        world->answers.file(to + u"/report"_s);
        click(page.cmdTakeOut);
        const QList<QByteArray> report = bytesOf(to + u"/report.csv"_s).split('\n');
        QVERIFY(report[0].contains("Song Title,Date Played,CCLI #"));
        const QString count = world
                                  ->rows(
                                      u"SELECT count(*) FROM played_on JOIN songs ON songs.ID = "
                                      "songID WHERE CCLI > '' AND played_date LIKE '%/26' AND "
                                      "substr(played_date, 1, 5) <= '11/21'"_s)
                                  .value(0);
        QCOMPARE(QString::number(report.size() - 2), count);
        page.datFrom->setFocus();
        page.datFrom->setDate(QDate(2026, 12, 1));
        world->answers.box(u"The period ends before it begins."_s);
        click(page.cmdTakeOut);

        chooseForm(page, TakeOutForm::PeopleCsv);
        world->answers.file(to + u"/people.csv"_s);
        click(page.cmdTakeOut);
        QCOMPARE(readExchangeFile(bytesOf(to + u"/people.csv"_s), u"people.csv"_s).people.size(),
                 world->rows(u"SELECT ID FROM personell"_s).size());
        chooseForm(page, TakeOutForm::PlayedCsv);
        world->answers.file(to + u"/played.csv"_s);
        click(page.cmdTakeOut);
        QCOMPARE(readExchangeFile(bytesOf(to + u"/played.csv"_s), u"played.csv"_s).played.size(),
                 world->rows(u"SELECT ID FROM played_on"_s).size());
    }

    void scheduleBecomesOneCalendarOrOneForEachPerson() {
        startSample();
        world->sql(u"DELETE FROM schedule"_s);
        TakeOutPage& page = openPage();
        chooseForm(page, TakeOutForm::Calendar);
        world->answers.file(world->path(u"all.ics"_s));
        world->answers.box(u"Not everything was written.\rNo schedule has been finalised yet."_s,
                           QMessageBox::Warning);
        click(page.cmdTakeOut);
        QVERIFY(!QFile::exists(world->path(u"all.ics"_s)));
        world->sql(
            u"INSERT INTO schedule (player, instrument, pdate) VALUES ('Ann Bee', 'Keys', "
            "'11/22/26'), ('Bob Cee', 'Drums', '11/22/26'), ('Ann Bee', 'Flute', '11/29/26')"_s);
        world->answers.file(world->path(u"all.ics"_s));
        click(page.cmdTakeOut);
        QCOMPARE(bytesOf(world->path(u"all.ics"_s)).count("BEGIN:VEVENT"), 2);
        chooseForm(page, TakeOutForm::PersonCalendars);
        const QString to = folder(u"people"_s);
        world->answers.file(to);
        click(page.cmdTakeOut);
        QCOMPARE(filesIn(to), QStringList({u"Ann Bee.ics"_s, u"Bob Cee.ics"_s}));
        QCOMPARE(bytesOf(to + u"/Ann Bee.ics"_s).count("BEGIN:VEVENT"), 2);
        QCOMPARE(bytesOf(to + u"/Bob Cee.ics"_s).count("BEGIN:VEVENT"), 1);
    }

    void foreignReadersTakeTheFiles() {
        startSample();
        world->stop();
        const QString songs = world->path(u"songs"_s), sheets = world->path(u"sheets"_s);
        QCOMPARE(command({u"--form"_s, u"openlyrics"_s, songs}).code, 0);
        QStringList files;
        for (const QString& file : filesIn(songs)) files += songs + u'/' + file;
        QCOMPARE(files.size(), 60);
        QCOMPARE(read(u"xmllint"_s,
                      QStringList{u"--noout"_s, u"--nonet"_s, u"--relaxng"_s,
                                  QStringLiteral(SOURCE_TREE "/tests/exchange/open_lyrics.rng")} +
                          files),
                 0);
        QCOMPARE(command({u"--form"_s, u"chordpro"_s, sheets}).code, 0);
        files.clear();
        for (const QString& file : filesIn(sheets)) files += sheets + u'/' + file;
        QCOMPARE(read(u"chordii"_s, QStringList{u"-o"_s, world->path(u"all.ps"_s)} + files), 0);
        const QByteArray pages = bytesOf(world->path(u"all.ps"_s));
        QVERIFY(pages.contains("Amazing Grace"));
        QVERIFY(pages.count("showpage") >= 10);
    }

    void fileThatCannotBeWrittenIsReported() {
        startSample();
        TakeOutPage& page = openPage();
        chooseForm(page, TakeOutForm::PeopleCsv);
        const QString path = world->path(u"missing/people.csv"_s);
        world->answers.file(path);
        world->answers.box(u"Not everything was written.\r%1 could not be written."_s.arg(
                               QDir::toNativeSeparators(path)),
                           QMessageBox::Warning);
        click(page.cmdTakeOut);
        QCOMPARE(page.lblDone->text(), u"Nothing was written."_s);
    }

    void commandWritesTheSameFiles() {
        startSample();
        TakeOutPage& page = openPage();
        chooseForm(page, TakeOutForm::Text);
        const QString byPage = folder(u"page"_s), byCommand = world->path(u"command"_s);
        world->answers.file(byPage);
        click(page.cmdTakeOut);
        world->stop();
        const Ended dry = command({u"--form"_s, u"text"_s, u"--dry-run"_s, byCommand});
        QCOMPARE(dry.code, 0);
        QVERIFY(!QFile::exists(byCommand));
        QCOMPARE(dry.printed.count(u".txt"_s), 60);
        const Ended ended = command({u"--form"_s, u"text"_s, byCommand});
        QCOMPARE(ended.code, 0);
        QVERIFY2(ended.printed.contains(u"60 files were written to"_s), qPrintable(ended.printed));
        QCOMPARE(filesIn(byCommand), filesIn(byPage));
        for (const QString& file : filesIn(byPage))
            QCOMPARE(bytesOf(byCommand + u'/' + file), bytesOf(byPage + u'/' + file));
        const Ended again = command({u"--form"_s, u"text"_s, byCommand});
        QCOMPARE(again.code, 1);
        QVERIFY(again.errors.contains(u"--replace"_s));
        QCOMPARE(command({u"--form"_s, u"text"_s, u"--replace"_s, byCommand}).code, 0);
    }

    void commandTakesSongsAndFormsByName() {
        startSample();
        world->stop();
        const QString to = folder(u"out"_s);
        const Ended two = command({u"--song"_s, u"Silent Night"_s, u"--song"_s, u"No such"_s, to});
        QCOMPARE(two.code, 3);
        QVERIFY(two.errors.contains(u"does not have the song \"No such\""_s));
        QCOMPARE(filesIn(to), QStringList{u"Silent Night.cho"_s});
        QCOMPARE(command({u"--form"_s, u"ccli"_s, to}).code, 2);
        QCOMPARE(command({u"--form"_s, u"ccli"_s, u"--from"_s, u"2026-01-01"_s, u"--to"_s,
                          u"2026-06-30"_s, to})
                     .code,
                 0);
        QVERIFY(QFile::exists(to + u"/CCLI Report.csv"_s));
        QCOMPARE(command({u"--form"_s, u"pigeons"_s, to}).code, 2);
        QCOMPARE(command({}).code, 2);
        const QString book = to + u"/hymns.pdf"_s;
        const Ended made = command({u"--form"_s, u"songbook"_s, u"--paper"_s, u"letter"_s,
                                    u"--title"_s, u"Hymns"_s, book});
        QCOMPARE(made.code, 0);
        QVERIFY(printedPages(book)[0].contains(u"Hymns"_s));
        QCOMPARE(command({u"--form"_s, u"songbook"_s, book}).code, 1);
        const QString set =
            QDir(world->path(u"saved sets"_s)).entryList({u"*.set"_s}, QDir::Files).value(0);
        QVERIFY(command({u"--set"_s, set, u"--replace"_s, to}).code != 1);
        QCOMPARE(command({u"--set"_s, u"no set"_s, to}).code, 1);
    }
};

LORVANITE_TEST(TestTakeOut)
#include "test_take_out.moc"
