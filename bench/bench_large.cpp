// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How the windows fare with a library of 100,000 songs and 2,000,000 dates: the time and the memory
// of each step, and the ratio of its time to the same on 10,000 songs and 200,000 dates. Fails if a
// step of more than a tenth of a second grows far more than the library. Each library is used in a
// separate process: "bench_large SONGS" uses one.
#include "bare_loop.h"
#include "catalogue/frm_song_admin.h"
#include "charts/rules/chart_page.h"
#include "core/data/dates.h"
#include "core/shell/frm_mdi.h"
#include "exchange/frm_find_words.h"
#include "reports/frm_ccli.h"
#include "reports/frm_history.h"
#include "reports/rules/ccli_report.h"
#include "sets/frm_past_sets.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QListWidget>
#include <QProcess>

#include <cstdlib>
#include <unistd.h>

namespace {

constexpr int SmallLibrary = 10'000;
constexpr int LargeLibrary = 100'000;
constexpr int SongsOfChart = 100;  // every so many songs have a chart
constexpr int SongsOfSet = 50;     // and there is a saved set
constexpr int Pages = 200;         // that are scrolled
// The large library does not fit into the processor's caches, where a row costs up to three times
// as much. What grows with the square of the library takes 100 times as long.
constexpr double MostRatio = 30;
constexpr double LeastSeconds = 0.1;

void fillDatabase(const QString& file, int songs) {
    QString statements = QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < SONGS) "
        "INSERT INTO songs (title, artist, dakey, cat1, cat2, playlist, CCLI) SELECT "
        "printf('%s song %06d', trim(substr('amazing blessed childrendivine  everlastfaithful"
        "gloriousharvest ', 1 + 8 * (i % 8), 8)), (i * 7919) % SONGS), "
        "printf('Artist %d', i % 500), 'G', printf('Category %d', i % 10), 'Prayer', 'Current', "
        "1000000 + i FROM n;"
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 20 * SONGS - 1) "
        "INSERT INTO played_on (title, played_date, songID) SELECT 'Song', "
        "printf('%02d/%02d/%02d', 1 + i * 7 % 12, 1 + i * 11 % 28, i / SONGS + 6), 1 + i % SONGS "
        "FROM n;"
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 9) "
        "INSERT INTO categories (name) SELECT printf('Category %d', i) FROM n;");
    runStatements(file, statements.replace(QStringLiteral("SONGS"), QString::number(songs)));
}

void writeFiles(const QString& folder, int songs) {
    const QString charts = folder + QStringLiteral("/sheetmusic");
    const QString sets = folder + QStringLiteral("/saved sets");
    QDir().mkpath(charts);
    QDir().mkpath(sets);
    SheetGrid chart;
    setUpChart(chart);
    chart.SetText(ChartColumn::Text, ChartRow::FirstLyric,
                  QStringLiteral("The harvest of mercy is gathered in"));
    const QByteArray chartFile = chart.fileBytes();
    SheetGrid set;
    setUpSet(set);
    const QByteArray setFile = set.fileBytes();
    bool written = true;
    for (int i = 0; i < songs / SongsOfChart; ++i)
        written &=
            replacePlainFile(QStringLiteral("%1/chart %2.stp").arg(charts).arg(i), chartFile);
    for (int i = 0; i < songs / SongsOfSet; ++i)
        written &= replacePlainFile(QStringLiteral("%1/set %2.set").arg(sets).arg(i), setFile);
    if (!written) std::abort();
}

// The resident memory in MB.
double residentMemory() {
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) std::abort();
    return file.readAll().split(' ').at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

// Times a step with the painting that follows it, and prints it for the other process. Windows that
// were closed are deleted within the step, as they are in the program.
template <class Run>
void step(const char* name, Run run) {
    const double took = seconds([&] {
        run();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    std::printf("%s\t%f\t%f\n", name, took, residentMemory());
    std::fflush(stdout);
}

void press(QWidget* widget, int key) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    }
}

void scroll(SheetView* list) {
    list->setFocus();
    for (int page = 0; page < Pages; ++page) {
        press(list, Qt::Key_PageDown);
        QCoreApplication::processEvents();
    }
}

void useSongs(frmMDI& main) {
    step("open Song Admin", [&] { main.cmdSongMgmt->click(); });
    frmSongAdmin& songs = frmSongAdmin::instance();
    if (songs.fpSongList2->MaxRows() == 0) std::abort();
    step("fill the song list again", [&] { songs.Command12->click(); });
    step("scroll 200 pages of it", [&] { scroll(songs.fpSongList2); });
    step("show a song",
         [&] { Q_EMIT songs.fpSongList2->Click(2, songs.fpSongList2->MaxRows() / 2); });
    step("sort the list by last played", [&] { Q_EMIT songs.fpSongList2->Click(5, 0); });
    step("close Song Admin", [&] { songs.parentWidget()->close(); });
}

void useSets(frmMDI& main) {
    step("open Pick Set", [&] { main.cmdSetList->click(); });
    frmSetList& sets = frmSetList::instance();
    step("pick a category", [&] {
        sets.cmbCat1->setEditText(QStringLiteral("Category 3"));
        sets.searchByCategory();
    });
    if (sets.fpSongList1->MaxRows() == 0) std::abort();
    step("search by title", [&] {
        sets.txtSearch->setText(QStringLiteral("Harvest"));
        sets.cmdSearchTitle->click();
    });
    // The tree of folders fills while events are processed, some before the click and some after.
    step("show a past set", [&] {
        main.cmdPastSets->click();
        QCoreApplication::processEvents();
        QListWidget* files = frmPastSets::instance().File1;
        if (files->count() == 0) std::abort();
        files->setCurrentRow(files->count() / 2);
        press(files, Qt::Key_Return);
    });
}

void findWords(frmMDI& main) {
    step("index the words", [&] { main.mnuFindWords.trigger(); });
    step("index again, no changes", [&] { frmFindWords::instance().refresh(); });
    step("find words",
         [&] { frmFindWords::instance().txtWords->setText(QStringLiteral("harvest of mercy")); });
    if (frmFindWords::instance().fpFound->MaxRows() == 0) std::abort();
}

void useReports(frmMDI& main) {
    step("open Song History", [&] { main.cmdHistory->click(); });
    frmHistory& history = frmHistory::instance();
    if (history.fpH->MaxRows() == 0) std::abort();
    step("chart a song", [&] { Q_EMIT history.fpH->Click(2, history.fpH->MaxRows() / 2); });
    step("open the CCLI report", [&] { main.mnuCCLI.trigger(); });
    frmCCLI& report = frmCCLI::instance();
    step("report a year", [&] {
        report.fpDates->SetText(PeriodColumn::From, 1, QStringLiteral("01/01/25"));
        report.fpDates->SetText(PeriodColumn::To, 1, QStringLiteral("12/31/25"));
        report.cmdShowReport->click();
    });
    step("report all years", [&] {
        report.fpDates->SetText(PeriodColumn::From, 1, QStringLiteral("01/01/06"));
        report.cmdShowReport->click();
    });
    if (report.fpCCLI->MaxRows() == 0) std::abort();
    step("list the songs with numbers", [&] { report.cmdSelectSong->click(); });
    step("report a song", [&] { Q_EMIT report.fpSelectSong->Click(2, 1); });
}

// Uses a library of this size.
void useLibrary(QApplication& app, int songs) {
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("db1.mdb"));
    QFile::copy(QStringLiteral(PROGRAM_TREE "/db1.mdb"), database);
    fillDatabase(database, songs);
    writeFiles(folder.path(), songs);
    setProgramFolder(folder.path());
    setEndOfProcess([](int) {});
    setToday(QDate(2025, 11, 21));
    std::unique_ptr<frmMDI> main;
    step("start", [&] {
        main = std::make_unique<frmMDI>();
        main->show();
    });
    useSongs(*main);
    useSets(*main);
    findWords(*main);
    useReports(*main);
    main.reset();
    app.processEvents();
}

struct Step {
    QByteArray name;
    double seconds;
    double memory;
};

std::vector<Step> stepsWith(int songs) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QString::number(songs)});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) std::abort();
    std::vector<Step> steps;
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> parts = line.split('\t');
        if (parts.size() == 3)
            steps.push_back({parts[0], parts[1].toDouble(), parts[2].toDouble()});
    }
    return steps;
}

bool growsEvenly() {
    const std::vector<Step> small = stepsWith(SmallLibrary);
    const std::vector<Step> large = stepsWith(LargeLibrary);
    if (small.empty() || small.size() != large.size()) std::abort();
    bool even = true;
    std::printf("%-30s %10s %8s %10s %8s %7s\n", "", "10,000", "", "100,000", "", "ratio");
    for (size_t i = 0; i < large.size(); ++i) {
        const double ratio = large[i].seconds / small[i].seconds;
        const bool fails = ratio > MostRatio && large[i].seconds > LeastSeconds;
        even &= !fails;
        std::printf("%-30s %7.0f ms %5.0f MB %7.0f ms %5.0f MB %7.1f%s\n",
                    large[i].name.constData(), small[i].seconds * 1000, small[i].memory,
                    large[i].seconds * 1000, large[i].memory, ratio, fails ? ": FAILS" : "");
    }
    return even;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 2) return growsEvenly() ? 0 : 1;
    useLibrary(app, std::atoi(argv[1]));
    return 0;
}
