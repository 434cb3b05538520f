// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What is taken out of one folder and brought into an empty one is the same there.
#include "charts/rules/chart_page.h"
#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"
#include "exchange/import_run.h"
#include "exchange/rules/verse_names.h"
#include "exchange/take_out.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// The words of a chart's lyric rows, and for each row with chords its text and their columns.
struct ChartContent {
    QStringList words;
    QStringList chordTexts;
    QList<QList<int>> chordColumns;
};

ChartContent contentOfChart(const QString& path) {
    SheetGrid chart;
    ChartContent content;
    if (!chart.LoadFromFile(path)) QTest::qFail(qPrintable(path), __FILE__, __LINE__);
    static const QRegularExpression word(u"[\\p{L}\\p{N}']+"_s);
    for (int page = 1; page <= chart.SheetCount(); ++page) {
        for (int row = ChartRow::FirstChord; row < chart.rowsOf(page); row += 2) {
            const QString text = chart.textAt(page, ChartColumn::Text, row + 1);
            // Some forms have no verse without a name.
            if (verseName(text)) continue;
            for (auto it = word.globalMatch(text); it.hasNext();)
                content.words += it.next().captured(0).toCaseFolded();
            QStringList names;
            QList<int> columns;
            for (int col = 1; col <= ChartCols; ++col) {
                if (chart.textAt(page, col, row).isEmpty() || row > ChartRow::LastChord) continue;
                names += chart.textAt(page, col, row);
                columns += col;
            }
            if (names.isEmpty() || text.isEmpty()) continue;
            content.chordTexts += text.simplified() + u": "_s + names.join(u' ');
            content.chordColumns += columns;
        }
    }
    return content;
}

void takeOutAll(TakeOutForm form, const QString& folder) {
    TakeOutOrder order;
    order.form = form;
    order.songs = librarySongs();
    order.target = folder;
    if (const char* stem = takeOutForm(form).stem)
        order.target += u'/' + QLatin1String(stem) + u'.' + QLatin1String(takeOutForm(form).file);
    const TakeOutResult result = takeOut(order, [](int, int) { return true; });
    QCOMPARE(result.problem, QString());
}

const QString SongRows = u"SELECT title, dakey, CCLI FROM songs ORDER BY title"_s;

}  // namespace

class TestRoundTrip : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everythingTakenOutComesBackInAnEmptyFolder_data() {
        QTest::addColumn<int>("form");
        QTest::newRow("ChordPro") << int(TakeOutForm::ChordPro);
        QTest::newRow("OpenLyrics") << int(TakeOutForm::OpenLyrics);
        QTest::newRow("Text") << int(TakeOutForm::Text);
    }

    void everythingTakenOutComesBackInAnEmptyFolder() {
        QFETCH(int, form);
        QTemporaryDir files;
        QHash<QString, ChartContent> charts;
        QStringList songs, people, dates;
        {
            World old(WorldTree::Sample);
            old.sql(u"UPDATE prefs SET var_value = 'false' WHERE var_name = 'NotesOnStartUp'"_s);
            old.start();
            takeOutAll(TakeOutForm(form), files.path());
            takeOutAll(TakeOutForm::SongsCsv, files.path());
            takeOutAll(TakeOutForm::PlayedCsv, files.path());
            takeOutAll(TakeOutForm::PeopleCsv, files.path());
            songs = old.rows(SongRows);
            people = old.rows(
                u"SELECT fName, lName, role, role2, role3, address, city, state, "
                "zip, phone, cell, email FROM personell ORDER BY lName, fName"_s);
            dates = old.rows(
                u"SELECT title, played_date FROM played_on ORDER BY title, "
                "played_date"_s);
            for (const QString& row :
                 old.rows(u"SELECT title, fileLoco FROM songs WHERE fileLoco > ''"_s))
                charts.insert(row.section(u'|', 0, 0), contentOfChart(row.section(u'|', 1)));
        }
        World fresh;
        fresh.start();
        ImportChoices choices;
        const ImportPlan plan = planImport(readCatalogue(), readSources({files.path()}), choices);
        QVERIFY(runImport(plan));
        QCOMPARE(fresh.rows(SongRows), songs);
        QCOMPARE(fresh.rows(u"SELECT fName, lName, role, role2, role3, address, city, state, zip, "
                            "phone, cell, email FROM personell ORDER BY lName, fName"_s),
                 people);
        QCOMPARE(fresh.rows(u"SELECT title, played_date FROM played_on ORDER BY title, "
                            "played_date"_s),
                 dates);
        QVERIFY(!charts.isEmpty());
        for (auto chart = charts.begin(); chart != charts.end(); ++chart) {
            const QString path =
                fresh.rows(u"SELECT fileLoco FROM songs WHERE title = '"_s + chart.key() + u'\'')
                    .value(0);
            const ContentPair both{chart.value(), contentOfChart(path)};
            QCOMPARE(both.second.words.join(u" "_s), both.first.words.join(u" "_s));
            QCOMPARE(both.second.chordTexts, both.first.chordTexts);
            for (qsizetype i = 0; i < both.first.chordColumns.size(); ++i)
                for (qsizetype k = 0; k < both.first.chordColumns[i].size(); ++k)
                    QVERIFY2(std::abs(both.second.chordColumns[i][k] -
                                      both.first.chordColumns[i][k]) <= 1,
                             qPrintable(chart.key() + u": "_s + both.first.chordTexts[i]));
        }
    }

private:
    using ContentPair = std::pair<ChartContent, ChartContent>;
};

LORVANITE_TEST(TestRoundTrip)
#include "test_round_trip.moc"
