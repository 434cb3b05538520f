// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Compares the roster of 500 people, from the database to its PDF, with a bare loop that reads the
// same rows with the same statements and draws the same texts on as many pages. The roster may take
// at most 1.5 times as long as the loop, and 500 ms; otherwise the program fails.
#include "bare_loop.h"
#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/shell/frm_mdi.h"
#include "platform/paper/printing.h"
#include "ratios.h"
#include "team/frm_schedule.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int People = 500;
constexpr double MostMilliseconds = 500;
constexpr double MostTimesTheLoop = 1.5;

constexpr int RowsOfPage = 24;
constexpr int TwipsPerInch = 1440;

QString g_folder;

void fillDatabase(const QString& path) {
    QString sql;
    for (int i = 0; i < People; ++i)
        sql +=
            QStringLiteral(
                "INSERT INTO personell (fName, lName, role, role2, role3, address, city, state, "
                "zip, phone, cell, email, vDays, excludeScheduling) VALUES ('First%1', 'Last%1', "
                "'Piano', 'Alto', 'Sound', '%1 High Street', 'Springdale', 'AR', '72764', "
                "'555-0100', '555-0101', 'person%1@example.org', '', '0');")
                .arg(i);
    runStatements(path, sql);
}

void roster() {
    setPrintTarget(g_folder + QStringLiteral("/roster.pdf"));
    frmSchedule::instance().cmdPrintRoster->click();
}

// What every implementation has to do.
void bareRoster() {
    const char* fields[] = {"fName", "lName", "address", "city", "State", "zip",
                            "phone", "cell",  "email",   "role", "role2", "role3"};
    QPdfWriter writer(g_folder + QStringLiteral("/bare.pdf"));
    writer.setResolution(TwipsPerInch);
    writer.setPageOrientation(QPageLayout::Landscape);
    QPainter painter(&writer);
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(120);
    painter.setFont(font);
    const QComboBox& people = *frmSchedule::instance().cmbPersonell;
    for (int i = 0; i < people.count(); ++i) {
        if (i > 0 && i % RowsOfPage == 0) writer.newPage();
        Recordset rs;
        rs.Open(
            QStringLiteral("SELECT * FROM personell WHERE ID = %1").arg(people.itemData(i).toInt()),
            dbConn, CursorType::Dynamic, LockType::ReadOnly);
        int x = 0;
        for (const char* field : fields)
            painter.drawText(QRect(x += 1000, 720 + i % RowsOfPage * 400, 1000, 400),
                             Qt::AlignVCenter, rs.Fields(field));
    }
}

void printRoster(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) roster();
}
BENCHMARK(printRoster)->Unit(benchmark::kMillisecond);

void bare(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) bareRoster();
}
BENCHMARK(bare)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir folder;
    g_folder = folder.path();
    const QString database = folder.filePath(QStringLiteral("db1.mdb"));
    QFile::copy(QStringLiteral(PROGRAM_TREE "/db1.mdb"), database);
    fillDatabase(database);
    setProgramFolder(folder.path());
    const frmMDI window;
    frmSchedule::instance();
    benchmark::RunSpecifiedBenchmarks();
    const auto times = quickest(roster, bareRoster);
    const bool isQuick = times.first * 1000 <= MostMilliseconds;
    return holds("roster of 500 : bare loop", times, MostTimesTheLoop) && isQuick ? 0 : 1;
}
