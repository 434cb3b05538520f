// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Taking out and finding words: 10,000 songs as ChordPro, a song book of 300 songs with the memory
// that it takes, and the index of the words of 1,000 charts.
#include "bare_loop.h"
#include "charts/rules/chart_page.h"
#include "core/data/database.h"
#include "core/grid/sheet_grid.h"
#include "exchange/take_out.h"
#include "exchange/word_index.h"
#include "ratios.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <sys/resource.h>

namespace {

constexpr int Songs = 10'000;
constexpr int BookSongs = 300;
constexpr int IndexedCharts = 1'000;
constexpr int Vocabulary = 2'000;

QString wordNumber(quint32 number) {
    static const char* const syllables[] = {"gra", "ce", "lo", "ve", "ho", "ly",  "pra", "ise",
                                            "sa",  "ve", "jo", "y",  "pe", "ace", "li",  "ght"};
    QString word;
    for (number += 20; number > 0; number /= 16) word += QLatin1String(syllables[number % 16]);
    return word;
}

// A chart of one page with 18 lines of other words than the next chart's.
void writeSongChart(int number, const QString& path) {
    QRandomGenerator random(static_cast<quint32>(number));
    SheetGrid chart;
    setUpChart(chart);
    chart.SetText(ChartColumn::Text, ChartRow::Title,
                  QStringLiteral("Song number %1").arg(number, 5, 10, QLatin1Char('0')));
    const QStringList chords = {QStringLiteral("G"), QStringLiteral("Em7"), QStringLiteral("C/E"),
                                QStringLiteral("Dsus4")};
    for (int row = ChartRow::FirstChord; row <= ChartRow::LastChord; row += 2) {
        for (int col = 8; col <= 30; col += 6)
            chart.SetText(col, row, chords[random.bounded(int(chords.size()))]);
        QStringList line;
        // Frequent words are more frequent, as in any language.
        for (int i = 0; i < 7; ++i)
            line += wordNumber(quint32(Vocabulary * random.generateDouble() *
                                       random.generateDouble() * random.generateDouble()));
        chart.SetText(ChartColumn::Text, row + 1, line.join(QLatin1Char(' ')));
    }
    if (!chart.SaveToFile(path, false)) std::printf("a chart could not be written\n");
}

void writeCharts(const FilledFolder& folder) {
    const QString charts = programFolder() + QStringLiteral("/sheetmusic");
    QDir().mkpath(charts);
    for (int number = 1; number <= Songs; ++number)
        writeSongChart(number, charts + QStringLiteral("/%1.stp").arg(number));
    const QString statement =
        QStringLiteral("UPDATE songs SET fileLoco = '%1/' || ID || '.stp'").arg(charts);
    sqlite3_exec(folder.db, statement.toUtf8().constData(), nullptr, nullptr, nullptr);
}

double megabytesAtMost() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

void report(const char* what, double measured, double most, const char* unit) {
    std::printf("%-34s %8.1f %s, at most %.0f: %s\n", what, measured, unit, most,
                measured <= most ? "holds" : "FAILS");
}

bool quietly(int, int) { return true; }

void measureBook() {
    TakeOutOrder order;
    order.form = TakeOutForm::SongBook;
    order.songs = librarySongs().mid(0, BookSongs);
    order.target = programFolder() + QStringLiteral("/book.pdf");
    report("song book of 300 songs", seconds([&] { takeOut(order, quietly); }), 10, "s");
    report("memory of the process then", megabytesAtMost(), 300, "MB");
}

void measureChordPro() {
    TakeOutOrder order;
    order.songs = librarySongs();
    order.target = programFolder() + QStringLiteral("/out");
    QDir().mkpath(order.target);
    qsizetype files = 0;
    const double took = seconds([&] { files = takeOut(order, quietly).files.size(); });
    report("10,000 songs as ChordPro", took, 30, "s");
    if (files != Songs) std::printf("only %d files\n", int(files));
}

void measureWords() {
    const QList<IndexedChart> charts = chartsToIndex().mid(0, IndexedCharts);
    const QString file = programFolder() + QStringLiteral("/words.index");
    WordIndex index(file);
    report("first index of 1,000 charts", seconds([&] { index.update(charts); }), 3, "s");
    report("index without changes", seconds([&] { index.update(charts); }) * 1000, 1000, "ms");
    std::vector<double> answers;
    for (quint32 i = 0; i < 200; ++i) {
        // From one letter to several words, frequent and rare ones.
        QString words = wordNumber(i * 7 % Vocabulary);
        if (i % 4 == 0) words = words.left(1 + int(i) % 3);
        if (i % 4 == 2) words += QLatin1Char(' ') + wordNumber(i) + QStringLiteral(" s");
        answers.push_back(seconds([&] { index.find(words); }) * 1000);
    }
    report("answer, median", median(answers), 50, "ms");
    report("answer, slowest", *std::max_element(answers.begin(), answers.end()), 50, "ms");
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const FilledFolder folder;
    writeCharts(folder);
    openDatabase();
    measureBook();
    measureWords();
    measureChordPro();
    dbConn.Close();
    return 0;
}
