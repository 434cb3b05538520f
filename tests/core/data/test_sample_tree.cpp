// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tree that is made of the sample's texts.
#include "core/data/dates.h"
#include "core/grid/sheet_grid.h"
#include "sets/rules/set_grid.h"
#include "support/registry.h"
#include "trees.h"

#include <QDataStream>
#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

namespace {

constexpr int Services = 56;

const QDate Base(2026, 11, 21);
const QString LastSunday = "11/15/26";
const QString ComingSunday = "11/22/26";

int make(const QStringList& arguments, QByteArray* errors = nullptr) {
    QProcess maker;
    maker.start(QStringLiteral(BUILD_TREE "/lorvanite_make_sample"), arguments);
    if (!maker.waitForFinished()) return -1;
    if (errors) *errors = maker.readAllStandardError();
    return maker.exitStatus() == QProcess::NormalExit ? maker.exitCode() : -1;
}

QStringList argumentsFor(const QString& target, const QDate& base) {
    return {QStringLiteral(SOURCE_TREE "/sample"), QStringLiteral(PROGRAM_TREE), target,
            base.toString(Qt::ISODate)};
}

// The rows of a query over a database file, the values of a row joined by "|".
QStringList rowsOf(const QString& file, const QString& query) {
    QStringList rows;
    sqlite3* db = nullptr;
    sqlite3_open_v2(file.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    const auto gather = [](void* to, int count, char** values, char**) {
        QStringList row;
        for (int i = 0; i < count; ++i) row.append(QString::fromUtf8(values[i]));
        static_cast<QStringList*>(to)->append(row.join(QLatin1Char('|')));
        return 0;
    };
    if (sqlite3_exec(db, query.toUtf8().constData(), gather, &rows, nullptr) != SQLITE_OK)
        rows = QStringList{QString::fromUtf8(sqlite3_errmsg(db))};
    sqlite3_close(db);
    return rows;
}

// The titles of a set as a save would record them: a title that is a piece of those above it
// counts as recorded.
QStringList recordedTitles(const SheetGrid& set) {
    QString seen;
    QStringList titles;
    for (int row = 2; row <= 25; ++row) {
        const QString title = set.GetText(2, row);
        if (title.isEmpty() || seen.contains(title)) continue;
        seen += title + QLatin1Char('\r');
        titles.append(title);
    }
    return titles;
}

}  // namespace

class TestSampleTree : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString path(const QString& relative) const { return m_dir.filePath(relative); }
    QStringList rows(const QString& query) const { return rowsOf(path("db1.mdb"), query); }
    QStringList filesIn(const QString& folder) const {
        return QDir(path(folder)).entryList(QDir::Files, QDir::Name);
    }

    void checkPage(const SheetGrid& chart, int page) {
        QCOMPARE(chart.colsOf(page), 37);
        QCOMPARE(chart.rowsOf(page), 42);
        QCOMPARE(chart.widthOf(page, 20), 2.5);
        QCOMPARE(chart.heightOf(page, 20), 14.88);
        QVERIFY(chart.AllowCellOverflow() && !chart.ColHeadersShow() && !chart.RowHeadersShow());
        for (int row = 1; row <= 42; ++row) {
            const bool spanned = row <= 3 || row == 41 || (row >= 6 && row % 2 == 0);
            const CellSpan whole{1, row, 37, 1};
            QCOMPARE(chart.spanAt(page, 1, row) == whole, spanned);
            const CellFormat format = chart.formatAt(page, 1, row);
            QCOMPARE(format.fontName, QStringLiteral("Arial"));
            QVERIFY(format.fontBold);
            QCOMPARE(format.fontSize, page == 1 ? 9.75 : 10.0);
            if (row == 4) continue;
            const bool centred = spanned && (row != 41 || page == 1);
            QCOMPARE(format.hAlign, centred ? HAlign::Centre : HAlign::Left);
        }
        static const QRegularExpression name(
            QStringLiteral("^[A-G][#b]?(m|maj|sus|dim)?[0-9]*(/[A-G][#b]?)?$"));
        int chords = 0;
        for (int row = 5; row <= 39; row += 2) {
            for (int col = 1; col <= 37; ++col) {
                const QString chord = chart.textAt(page, col, row);
                if (chord.isEmpty()) continue;
                QVERIFY2(name.match(chord).hasMatch(), qPrintable(chord));
                QVERIFY(!chart.textAt(page, 1, row + 1).isEmpty());
                ++chords;
            }
            QVERIFY(!chart.textAt(page, 1, row + 1).contains(QLatin1Char('[')));
        }
        QVERIFY(chords > 0);
    }

private Q_SLOTS:
    void initTestCase() {
        QElapsedTimer clock;
        clock.start();
        QByteArray errors;
        const int status = make(argumentsFor(m_dir.path(), Base), &errors);
        QVERIFY2(status == 0, errors.constData());
        qInfo("made in %lld ms", clock.elapsed());
    }

    void deliveredFilesAreThere() {
        QVERIFY(QFile::exists(path("config/sound.jpg")));
        QVERIFY(QFile::exists(path("config/LORVANITEHELP.hlp")));
        QVERIFY(QFileInfo(path("schedules")).isDir());
        QVERIFY(!QFile::exists(path("lorvanite")));
        QCOMPARE(rows("PRAGMA integrity_check"), QStringList{"ok"});
        QCOMPARE(rows("SELECT count(*) FROM transpose"), QStringList{"25"});
    }

    void songsAreSixty() {
        QCOMPARE(rows("SELECT count(*), count(DISTINCT title) FROM songs"), QStringList{"60|60"});
        QCOMPARE(rows("SELECT title FROM songs WHERE title = '' OR artist = '' OR dakey = '' OR "
                      "cat1 = '' OR playlist NOT IN ('Current', 'Past') OR title LIKE '%''%'"),
                 QStringList());
        QVERIFY(rows("SELECT title FROM songs WHERE playlist = 'Past'").size() >= 8);
        QVERIFY(rows("SELECT title FROM songs WHERE CCLI > ''").size() >= 40);
        QVERIFY(rows("SELECT title FROM songs WHERE cat5 > ''").size() >= 1);
        QCOMPARE(rows("SELECT CCLI FROM songs WHERE CCLI > '' GROUP BY CCLI HAVING count(*) > 1"),
                 QStringList());
    }

    void categoriesAreThoseOfTheSongs() {
        const QStringList names = rows("SELECT name FROM categories WHERE description > ''");
        QCOMPARE(names.size(), 10);
        QVERIFY(!names.contains("Hymns"));
        for (int slot = 1; slot <= 5; ++slot) {
            const auto used =
                rows(QStringLiteral("SELECT DISTINCT cat%1 FROM songs WHERE cat%1 > ''").arg(slot));
            for (const QString& name : used)
                QVERIFY2(name == "Hymns" || names.contains(name), qPrintable(name));
        }
        for (const QString& name : names)
            QVERIFY2(!rows(QStringLiteral("SELECT ID FROM songs WHERE '%1' IN (cat1, cat2, cat3, "
                                          "cat4, cat5)")
                               .arg(name))
                          .isEmpty(),
                     qPrintable(name));
        QVERIFY(!rows("SELECT ID FROM songs WHERE 'Hymns' IN (cat2, cat3, cat4, cat5)").isEmpty());
    }

    void chartsStandOnTheirPages() {
        const QStringList songs = rows("SELECT title, fileLoco FROM songs WHERE fileLoco > ''");
        QVERIFY(songs.size() >= 6);
        QCOMPARE(filesIn("sheetmusic").filter(".stp").size(), songs.size());
        int pages = 0;
        for (const QString& song : songs) {
            const QString file = song.section('|', 1);
            QVERIFY2(QDir::isAbsolutePath(file) && file.startsWith(m_dir.path()), qPrintable(file));
            SheetGrid chart;
            QVERIFY2(chart.LoadFromFile(file), qPrintable(file));
            QCOMPARE(chart.GetText(1, 1), song.section('|', 0, 0));
            for (int page = 1; page <= chart.SheetCount(); ++page) checkPage(chart, page);
            pages += chart.SheetCount();
        }
        QVERIFY2(pages > songs.size(), "no chart has a second page");
    }

    void chordsStandOverTheirSyllables() {
        SheetGrid chart;
        QVERIFY(chart.LoadFromFile(path("sheetmusic/Amazing Grace.stp")));
        const QString lyric = "Amazing grace! How sweet the sound";
        QCOMPARE(chart.GetText(1, 6), lyric);
        // Measured with the page's font: a cell is 2.5 times as wide as the plain "0" at 10 points.
        QFont bold(QStringLiteral("Liberation Sans"));
        bold.setPixelSize(975);
        bold.setBold(true);
        QFont plain(QStringLiteral("Liberation Sans"));
        plain.setPixelSize(1000);
        const double cell = 2.5 * QFontMetricsF(plain).horizontalAdvance(QLatin1Char('0'));
        const QFontMetricsF metrics(bold);
        const double left = (37 * cell - metrics.horizontalAdvance(lyric)) / 2;
        const QList<QPair<QString, QString>> chords = {
            {"G", "A"}, {"C", "Amazing grace! How "}, {"G", "Amazing grace! How sweet the "}};
        int found = 0;
        for (int col = 1; col <= 37; ++col) found += !chart.GetText(col, 5).isEmpty();
        QCOMPARE(found, 3);
        for (const auto& [chord, before] : chords) {
            const double at = (left + metrics.horizontalAdvance(before)) / cell;
            QCOMPARE(chart.GetText(1 + qRound(at), 5), chord);
        }
    }

    void soundFilesAreWaves() {
        const QStringList files = rows("SELECT soundFile FROM songs WHERE soundFile > ''");
        QVERIFY(!files.isEmpty());
        for (const QString& name : files) {
            QFile file(name);
            QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
            const QByteArray content = file.readAll();
            QVERIFY(content.startsWith("RIFF") && content.mid(8, 8) == "WAVEfmt ");
            QDataStream in(content.mid(40, 4));
            in.setByteOrder(QDataStream::LittleEndian);
            quint32 bytes = 0;
            in >> bytes;
            QCOMPARE(qsizetype(bytes) + 44, content.size());
            const double seconds = bytes / 2.0 / 22050;
            QVERIFY2(seconds > 3 && seconds < 12, qPrintable(QString::number(seconds)));
        }
    }

    void designsLoad() {
        const QStringList designs = filesIn("set designs").filter(".sdl");
        QCOMPARE(designs.size(), 2);
        const QStringList chosen =
            rows("SELECT var_value FROM prefs WHERE var_name = 'DefaultSetList'");
        QCOMPARE(chosen, QStringList{path("set designs/Order of Worship.sdl")});
        for (const QString& name : designs) {
            SheetGrid design;
            QVERIFY(design.LoadFromFile(path("set designs/" + name)));
            QCOMPARE(design.GetText(1, 1), QStringLiteral("Set List For:"));
            QCOMPARE(design.formatAt(1, 2, 1).kind, CellKind::Date);
            for (int row = 1; row <= 25; ++row) QCOMPARE(design.GetText(2, row), QString());
            QVERIFY(!design.GetText(1, 2).isEmpty());
        }
    }

    void setsAgreeWithTheRecord() {
        const QStringList files = filesIn("saved sets").filter(".set");
        QCOMPARE(files.size(), Services);
        QVERIFY(files.contains("Set For 11_15_26.set"));
        const QStringList titles = rows("SELECT title FROM songs");
        const QStringList charted = rows("SELECT title FROM songs WHERE fileLoco > ''");
        QStringList dates;
        for (const QString& name : files) {
            SheetGrid set;
            QVERIFY2(set.LoadFromFile(path("saved sets/" + name)), qPrintable(name));
            QCOMPARE(set.MaxCols(), 2);
            QCOMPARE(set.MaxRows(), 25);
            QCOMPARE(set.ColWidth(1), 22.63);
            QCOMPARE(set.ColWidth(2), 32.88);
            const QString date = set.GetText(2, 1);
            QCOMPARE(name, defaultSetName(date) + ".set");
            QCOMPARE(toDate(date).dayOfWeek(), int(Qt::Sunday));
            dates.append(date);
            int songs = 0;
            for (int row = 2; row <= 25; ++row) {
                const QString title = set.GetText(2, row);
                const bool green = set.formatAt(1, 2, row).backColor == SheetMusicGreen;
                QCOMPARE(green, charted.contains(title));
                if (title.isEmpty()) continue;
                QVERIFY2(titles.contains(title), qPrintable(title));
                ++songs;
            }
            QVERIFY(songs >= 5 && songs <= 8);
            QCOMPARE(rows(QStringLiteral("SELECT p.title FROM played_on p, songs s WHERE s.ID = "
                                         "p.songID AND s.title = p.title AND played_date = '%1' "
                                         "ORDER BY p.ID")
                              .arg(date)),
                     recordedTitles(set));
        }
        QStringList recorded = rows("SELECT DISTINCT played_date FROM played_on");
        std::sort(recorded.begin(), recorded.end());
        std::sort(dates.begin(), dates.end());
        QCOMPARE(dates, recorded);
        QVERIFY(dates.contains(LastSunday) && !dates.contains(ComingSunday));
    }

    void onlyTheNewestSongWasNeverPlayed() {
        QCOMPARE(rows("SELECT ID FROM songs WHERE ID NOT IN (SELECT songID FROM played_on)"),
                 QStringList{"60"});
    }

    void theYearHasItsFeasts() {
        const auto sung = [this](const char* title) {
            return rows(QStringLiteral("SELECT played_date FROM played_on WHERE title = '%1'")
                            .arg(QLatin1String(title)));
        };
        QCOMPARE(sung("Christ the Lord Is Risen Today"), QStringList{"04/05/26"});
        QCOMPARE(sung("Hosanna, Loud Hosanna"), QStringList{"03/29/26"});
        for (const QString& date : sung("Silent Night"))
            QVERIFY2(date.startsWith("12/"), qPrintable(date));
        QVERIFY(!sung("Silent Night").isEmpty());
    }

    void peopleAreTen() {
        QCOMPARE(rows("SELECT count(*) FROM personell WHERE fName > '' AND lName > '' AND role > "
                      "'' AND email LIKE '%@example.org'"),
                 QStringList{"10"});
        QVERIFY(!rows("SELECT ID FROM personell WHERE role2 = ''").isEmpty());
        QVERIFY(!rows("SELECT ID FROM personell WHERE role3 > ''").isEmpty());
        QCOMPARE(rows("SELECT count(*) FROM personell WHERE excludeScheduling = '1'"),
                 QStringList{"1"});
        const QStringList vacations = rows("SELECT vDays FROM personell WHERE vDays > ''");
        QVERIFY(vacations.size() >= 4);
        for (const QString& days : vacations)
            for (const QString& day : days.split(':')) {
                QCOMPARE(formatDate(toDate(day)), day);
                QCOMPARE(toDate(day).dayOfWeek(), int(Qt::Sunday));
                QVERIFY(toDate(day) > Base);
            }
    }

    void comingSundayIsScheduled() {
        QCOMPARE(rows("SELECT DISTINCT pdate FROM schedule"), QStringList{ComingSunday});
        QVERIFY(rows("SELECT player FROM schedule").size() >= 5);
        // Nobody serves who is unknown, on vacation, or in another role than one of theirs.
        QCOMPARE(rows("SELECT s.player FROM schedule s WHERE NOT EXISTS (SELECT 1 FROM personell p "
                      "WHERE p.fName || ' ' || p.lName = s.player AND s.instrument IN (p.role, "
                      "p.role2, p.role3) AND p.excludeScheduling = '0' AND instr(p.vDays, "
                      "s.pdate) = 0)"),
                 QStringList());
    }

    void notesAreDueAndNotDue() {
        int due = 0;
        const QStringList dates = rows("SELECT notify_date FROM notes");
        for (const QString& date : dates) due += toDate(date) > Base;
        QVERIFY(due >= 1 && due < dates.size());
        QCOMPARE(rows("SELECT ID FROM notes WHERE notes = '' OR notes LIKE '%''%'"), QStringList());
        for (const QString& date : rows("SELECT post_date FROM notes"))
            QVERIFY(toDate(date) <= Base);
    }

    void specialMusicIsPlanned() {
        QVERIFY(rows("SELECT song_name FROM special_music WHERE play_date = '" + ComingSunday + "'")
                    .value(0)
                    .contains(':'));
        QVERIFY(!rows("SELECT ID FROM special_music WHERE remind_schedule = 'Yes' AND "
                      "remind_interval > '0'")
                     .isEmpty());
        QVERIFY(!rows("SELECT ID FROM special_music WHERE remind_schedule = 'No' AND "
                      "remind_interval = '0'")
                     .isEmpty());
        for (const QString& date : rows("SELECT play_date FROM special_music"))
            QVERIFY(toDate(date) >= Base);
    }

    void aSundayIsItsOwnComingSunday() {
        QTemporaryDir other;
        QCOMPARE(make(argumentsFor(other.path(), QDate(2028, 4, 16))), 0);
        const QString file = other.filePath("db1.mdb");
        QCOMPARE(rowsOf(file, "SELECT DISTINCT pdate FROM schedule"), QStringList{"04/16/28"});
        QVERIFY(QFile::exists(other.filePath("saved sets/Set For 04_09_28.set")));
        QVERIFY(!QFile::exists(other.filePath("saved sets/Set For 04_16_28.set")));
        // Easter of 2028 is still to come: that of the year before was 55 weeks ago.
        QCOMPARE(rowsOf(file,
                        "SELECT played_date FROM played_on WHERE title = 'Low in the Grave "
                        "He Lay'"),
                 QStringList{"03/28/27"});
        QCOMPARE(rowsOf(file,
                        "SELECT ID FROM songs WHERE ID NOT IN (SELECT songID FROM "
                        "played_on)"),
                 QStringList{"60"});
    }

    void whatCannotBeDoneIsTold() {
        QByteArray errors;
        QCOMPARE(make(argumentsFor(m_dir.path(), Base), &errors), 1);
        QVERIFY2(errors.contains("is not empty"), errors.constData());
        QCOMPARE(make({"a", "b", "c"}), 2);
        QCOMPARE(make({"a", "b", path("x"), "2026-02-30"}), 2);
        QTemporaryDir empty;
        QCOMPARE(
            make({empty.path(), QStringLiteral(PROGRAM_TREE), path("y"), "2026-11-21"}, &errors),
            1);
        QVERIFY2(errors.contains("songs.txt"), errors.constData());
    }
};

LORVANITE_TEST(TestSampleTree)
#include "test_sample_tree.moc"
