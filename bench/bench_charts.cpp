// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Times the painting of a chart page, and the transposition of a chart of 20 pages, also as a ratio
// to a bare loop that joins the same strings. Fails if it takes more than 1.5 times as long.
#include "charts/chart_view.h"
#include "charts/rules/transposer.h"
#include "filled_chart.h"
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"
#include "ratios.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <vector>

namespace {

constexpr int Pages = 20;
constexpr int Rounds = 101;
constexpr double MostTimesTheLoop = 1.5;

const QString RootNotes = QStringLiteral("C,C#:Db,D,Eb,E,F,F#,G,G#:Ab,A,Bb,B");
const QString TwoUp = QStringLiteral("D,Eb,E,F,F#,G,Ab,A,Bb,B,C,C#");

// Paints the whole page.
void paintPage(benchmark::State& state) {
    SheetView view;
    setUpChartView(view);
    fillPage(view);
    view.resize(view.width(), 900);
    view.show();
    view.flush();
    QImage image(view.viewport()->size(), QImage::Format_RGB32);
    for (auto turn : state) {
        view.viewport()->render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(paintPage)->Unit(benchmark::kMillisecond);

// Switches between two pages, with everything that a change of the page requires.
void switchPage(benchmark::State& state) {
    SheetView view;
    setUpChartView(view);
    fillPage(view);
    addChartPage(view, [](const QString&) {});
    fillPage(view);
    view.resize(view.width(), 900);
    view.show();
    QImage image(view.viewport()->size(), QImage::Format_RGB32);
    for (auto turn : state) {
        view.ActiveSheet(3 - view.ActiveSheet());
        view.flush();
        view.viewport()->render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(switchPage)->Unit(benchmark::kMillisecond);

// Transposes a chart without a screen.
class Pass {
public:
    Pass() {
        fillChart(m_chart, Pages);
        m_transposer.setRootNotes(RootNotes);
        m_transposer.setKeyNotes(TwoUp);
    }
    void operator()() { m_transposer.transposeChart(m_chart); }

private:
    SheetGrid m_chart;
    Transposer m_transposer;
};

void transpose(benchmark::State& state) {
    Pass pass;
    for (auto turn : state) pass();
}
BENCHMARK(transpose)->Unit(benchmark::kMillisecond);

// Transposes a chart in a view, and updates the view.
void transposeOnView(benchmark::State& state) {
    SheetView view;
    setUpChartView(view);
    fillChart(view, Pages);
    view.resize(view.width(), 500);
    view.show();
    Transposer transposer;
    transposer.setRootNotes(RootNotes);
    transposer.setKeyNotes(TwoUp);
    for (auto turn : state) {
        transposer.transposeChart(view);
        view.flush();
    }
}
BENCHMARK(transposeOnView)->Unit(benchmark::kMillisecond);

// Takes the same strings from a plain list, splits each side and joins it with an entry of the key.
class BareLoop {
public:
    BareLoop() {
        SheetGrid chart;
        fillChart(chart, Pages);
        for (int page = 1; page <= Pages; ++page)
            for (int row = ChartRow::FirstChord; row <= ChartRows; row += 2)
                for (int col = 1; col <= ChartCols; ++col)
                    m_texts.push_back(chart.textAt(page, col, row));
        m_results.resize(m_texts.size());
    }
    void operator()() {
        for (size_t i = 0; i < m_texts.size(); ++i) {
            const QString& text = m_texts[i];
            if (text.isEmpty()) continue;
            const qsizetype slash = text.indexOf(QLatin1Char('/'));
            m_results[i] =
                slash < 0 ? moved(text)
                          : moved(text.left(slash)) + QLatin1Char('/') + moved(text.mid(slash + 1));
        }
        benchmark::DoNotOptimize(m_results.data());
    }

private:
    QString moved(const QString& side) const {
        const ChordSplit split = splitChord(side);
        return m_key[split.note.isEmpty() ? 0 : split.note[0].unicode() % 12] + split.suffix;
    }

    const QStringList m_key = TwoUp.split(QLatin1Char(','));
    std::vector<QString> m_texts;
    std::vector<QString> m_results;
};

void bareLoop(benchmark::State& state) {
    BareLoop loop;
    for (auto turn : state) loop();
}
BENCHMARK(bareLoop)->Unit(benchmark::kMillisecond);

bool passHolds() {
    Pass pass;
    BareLoop loop;
    const Medians medians = mediansOf(Rounds, pass, loop);
    return holds("transposing 20 pages : bare loop",
                 {medians.first, medians.second, medians.processorRatio}, MostTimesTheLoop);
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    applyTheme(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return passHolds() ? 0 : 1;
}
