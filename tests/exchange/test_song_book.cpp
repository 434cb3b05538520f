// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The song book: its pages, contents, bookmarks and links.
#include "core/data/database.h"
#include "core/grid/sheet_grid.h"
#include "exchange/pdf_outline.h"
#include "exchange/song_book.h"
#include "platform/paper/printing.h"
#include "support/files.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"
#include "trees.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

class TestSongBook : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;

    QString bookPath() const { return world->path(u"book.pdf"_s); }

    SongBookContent writeBook(const SongBook& book) {
        SongBookContent content = makeSongBook(book, [](int, int) { return true; });
        QFile file(bookPath());
        if (!file.open(QIODevice::WriteOnly)) QTest::qFail("not written", __FILE__, __LINE__);
        file.write(content.pdf);
        return content;
    }

    QByteArray run(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        if (!process.waitForFinished(60'000)) return "not run";
        return process.exitCode() == 0 ? process.readAllStandardOutput()
                                       : "failed: " + process.readAllStandardError();
    }

    // The bookmarks as "title: page".
    QStringList bookmarks() {
        const QJsonObject file =
            QJsonDocument::fromJson(run(u"qpdf"_s, {u"--json=2"_s, u"--json-key=outlines"_s,
                                                    u"--json-key=pages"_s, bookPath()}))
                .object();
        QStringList found;
        for (const QJsonValue& item : file[u"outlines"_s].toArray())
            found += item[u"title"_s].toString() + u": "_s +
                     QString::number(item[u"destpageposfrom1"_s].toInt());
        return found;
    }

    // The lines of the contents as "title: page".
    static QStringList contentsOf(const QStringList& pages, int count) {
        static const QRegularExpression row(u"^\\s*(\\S.*?)[ .]{4,}(\\d+)$"_s);
        QStringList found;
        for (const QString& page : pages.mid(0, count))
            for (const QString& line : page.split(u'\n'))
                if (const auto match = row.match(line); match.hasMatch())
                    found += match.captured(1) + u": "_s + match.captured(2);
        return found;
    }

    static QString footOf(const QString& page) {
        return page.trimmed().section(u'\n', -1).trimmed();
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>(WorldTree::Sample);
        openDatabase();
    }
    void cleanup() { world.reset(); }

    void bookHasTheChartsBehindItsContents_data() {
        QTest::addColumn<int>("paper");
        QTest::addColumn<QSize>("size");
        QTest::newRow("A4") << int(QPageSize::A4) << QSize(595, 842);
        QTest::newRow("Letter") << int(QPageSize::Letter) << QSize(612, 792);
    }

    void bookHasTheChartsBehindItsContents() {
        QFETCH(int, paper);
        QFETCH(QSize, size);
        const SongBookContent content = writeBook(
            {u"Songs of Hope"_s, librarySongs(), static_cast<QPageSize::PageSizeId>(paper)});
        QCOMPARE(content.problem, QString());
        QCOMPARE(content.songs, 10);
        QCOMPARE(content.withoutChart.size(), 50);
        QVERIFY(run(u"qpdf"_s, {u"--check"_s, bookPath()}).contains("No syntax or stream"));
        QVERIFY(
            run(u"pdfinfo"_s, {bookPath()})
                .contains(
                    QStringLiteral("%1 x %2").arg(size.width()).arg(size.height()).toLatin1()) ||
            run(u"pdfinfo"_s, {bookPath()}).contains("A4"));
        const QStringList pages = printedPages(bookPath());
        QCOMPARE(pages.size(), content.pages);
        QVERIFY(pages[0].contains(u"Songs of Hope"_s));
        const QStringList contents = contentsOf(pages, 1);
        QCOMPARE(contents.size(), 10);
        QVERIFY(contents[0].startsWith(u"Amazing Grace: 2"_s));
        QCOMPARE(bookmarks(), QStringList{u"Contents: 1"_s} + contents);
        for (const QString& entry : contents) {
            const int page = entry.section(u": "_s, -1).toInt();
            const QString title = entry.section(u": "_s, 0, 0);
            QCOMPARE(pages[page - 1].trimmed().section(u'\n', 0, 0).trimmed(), title);
        }
        for (qsizetype i = 0; i < pages.size(); ++i)
            QCOMPARE(footOf(pages[i]), QString::number(i + 1));
    }

    void chartsLookAsTheyPrint() {
        QStringList missing;
        const QList<LibrarySong> songs = librarySongs({u"Silent Night"_s}, missing);
        writeBook({u"One"_s, songs, QPageSize::A4});
        const PrintedFile print(world->path(u"print.pdf"_s));
        SheetGrid chart;
        QVERIFY(loadChart(songs[0], chart));
        applySetPrintSettings(chart);
        PrintSheet(chart, 1);
        QImage printed = pagePictures(print.path).value(0);
        QImage bound = pagePictures(bookPath()).value(1);
        QCOMPARE(bound.size(), printed.size());
        // All but the page's number.
        const QRect body(0, 0, printed.width(), printed.height() * 95 / 100);
        QCOMPARE(bound.copy(body), printed.copy(body));
        QVERIFY(bound != printed);
    }

    void linesOfTheContentsLeadToTheirSongs() {
        writeBook({u"Songs"_s, librarySongs(), QPageSize::A4});
        const QByteArray links =
            run(u"qpdf"_s, {u"--qdf"_s, u"--object-streams=disable"_s, bookPath(), u"-"_s});
        QCOMPARE(links.count("/Subtype /Link"), 10);
        const QHash<QString, QRectF> words = printedWords(bookPath(), 1);
        const QRectF word = words.value(u"Amazing"_s);
        static const QRegularExpression rect(
            u"/Rect \\[\\s*([\\d.]+)\\s+([\\d.]+)\\s+([\\d.]+)\\s+"
            "([\\d.]+)"_s);
        const auto match = rect.match(QString::fromLatin1(links));
        QVERIFY(match.hasMatch());
        const double height = 842;
        QVERIFY(match.captured(1).toDouble() <= word.left() + 1);
        QVERIFY(height - match.captured(4).toDouble() <= word.top() + 2);
        QVERIFY(height - match.captured(2).toDouble() >= word.bottom() - 2);
    }

    void longContentsGoOnToFurtherPages() {
        QStringList missing;
        const QList<LibrarySong> one = librarySongs({u"Silent Night"_s}, missing);
        QList<LibrarySong> many;
        for (int i = 1; i <= 120; ++i) {
            LibrarySong song = one[0];
            song.song.titles = {
                u"Song number %1 with a long title that goes on and on until it "
                "has no room on the line any more, and so it is cut"_s.arg(i)};
            many += song;
        }
        const SongBookContent content = writeBook({u"Many"_s, many, QPageSize::Letter});
        const QStringList pages = printedPages(bookPath());
        QCOMPARE(pages.size(), content.pages);
        QVERIFY(pages[2].contains(u"Song number 120"_s));
        QVERIFY(pages[3].contains(u"Silent night"_s, Qt::CaseInsensitive));
        QCOMPARE(bookmarks().size(), 121);
        const qsizetype pagesOfSong = (pages.size() - 3) / 120;
        QVERIFY(
            bookmarks().last().endsWith(u": "_s + QString::number(pages.size() - pagesOfSong + 1)));
    }

    void bookOfNoChartIsNone() {
        QStringList missing;
        const SongBookContent none =
            makeSongBook({u"None"_s, librarySongs({u"Abide with Me"_s}, missing), QPageSize::A4},
                         [](int, int) { return true; });
        QVERIFY(none.pdf.isEmpty());
        QCOMPARE(none.withoutChart, QStringList{u"Abide with Me"_s});
        const SongBookContent cancelled = makeSongBook({u"Songs"_s, librarySongs(), QPageSize::A4},
                                                       [](int done, int) { return done < 3; });
        QVERIFY(cancelled.pdf.isEmpty());
        QString problem;
        QVERIFY(withOutline("no PDF", 1, {}, problem).isEmpty());
        QVERIFY(!problem.isEmpty());
    }
};

LORVANITE_TEST(TestSongBook)
#include "test_song_book.moc"
