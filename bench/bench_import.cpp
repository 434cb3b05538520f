// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Bringing in 2,000 OpenLyrics files, against the bare parse of their XML, bare inserts of their
// rows and bare writes of their charts.
#include "core/data/database.h"
#include "core/data/file_copy.h"
#include "core/data/paths.h"
#include "exchange/import_run.h"
#include "ratios.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <sqlite3.h>

namespace {

constexpr int Files = 2'000;
constexpr double MostImport = 3;

QByteArray openLyricsFile(int number) {
    QByteArray verses;
    for (int verse = 1; verse <= 4; ++verse) {
        verses += "<verse name=\"v" + QByteArray::number(verse) + "\"><lines>";
        for (int line = 0; line < 4; ++line)
            verses += (line > 0 ? "<br/>" : "") +
                      QByteArray(
                          "<chord root=\"G\"/>Amazing <chord "
                          "root=\"C\"/>grace how sweet <chord "
                          "root=\"D\" bass=\"F#\"/>the sound ") +
                      QByteArray::number(number * line);
        verses += "</lines></verse>";
    }
    const QByteArray name = QByteArray::number(number);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<song "
           "xmlns=\"http://openlyrics.info/namespace/2009/song\" version=\"0.9\"><properties>"
           "<titles><title>Song number " +
           name + "</title></titles><authors><author>John " + name + "</author></authors><ccliNo>" +
           QByteArray::number(100'000 + number) +
           "</ccliNo><key>G</key><themes><theme>Grace</theme></themes></properties><lyrics>" +
           verses + "</lyrics></song>\n";
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        std::printf("%s could not be written\n", qPrintable(path));
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A new program folder.
void freshFolder(const QString& folder) {
    copyFolder(QStringLiteral(PROGRAM_TREE), folder, FolderCopy::FillIn);
    setProgramFolder(folder);
}

double importAll(const QString& files) {
    openDatabase();
    const double took = seconds([&] {
        ImportChoices choices;
        const ImportPlan plan = planImport(readCatalogue(), readSources({files}), choices);
        if (!runImport(plan) || plan.songs.size() != Files) std::printf("not all was imported\n");
    });
    dbConn.Close();
    return took;
}

double bareLoop(const QString& files, const QString& folder, const QByteArray& chart) {
    QDir().mkpath(folder + QStringLiteral("/bare"));
    sqlite3* db = nullptr;
    sqlite3_open((folder + QStringLiteral("/db1.mdb")).toUtf8().constData(), &db);
    const double took = seconds([&] {
        sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
        int number = 0;
        for (const QString& name : QDir(files).entryList(QDir::Files)) {
            QXmlStreamReader xml(readFile(files + QLatin1Char('/') + name));
            QString text;
            while (!xml.atEnd())
                if (xml.readNext() == QXmlStreamReader::Characters) text += xml.text();
            const QByteArray insert =
                "INSERT INTO songs (title, artist, dakey, playlist, fileLoco, CCLI) VALUES ('Song "
                "number " +
                QByteArray::number(++number) + "', 'John', 'G', 'Current', 'path', '" +
                QByteArray::number(number) + "')";
            sqlite3_exec(db, insert.constData(), nullptr, nullptr, nullptr);
            writeFile(folder + QStringLiteral("/bare/%1.stp").arg(number), chart);
        }
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    });
    sqlite3_close(db);
    return took;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const QTemporaryDir work;
    const QString files = work.path() + QStringLiteral("/files");
    QDir().mkpath(files);
    for (int number = 1; number <= Files; ++number)
        writeFile(files + QStringLiteral("/%1.xml").arg(number), openLyricsFile(number));
    std::pair<double, double> best{1e9, 1e9};
    for (int round = 1; round <= 3; ++round) {
        const QString folder = work.path() + QStringLiteral("/%1").arg(round);
        freshFolder(folder);
        best.first = std::min(best.first, importAll(files));
        const QByteArray chart = readFile(folder + QStringLiteral("/sheetmusic/Song number 1.stp"));
        best.second = std::min(best.second, bareLoop(files, folder, chart));
    }
    return holds("import of 2,000 OpenLyrics files", best, MostImport) ? 0 : 1;
}
