// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// 2,000 OpenLyrics files read, laid out and stored, as a ratio to reading the same files with a
// bare XML reader, inserting as many rows with SQLite alone, and writing as many chart files.
#include "core/data/database.h"
#include "core/data/paths.h"
#include "exchange/import_run.h"
#include "exchange/rules/writer.h"
#include "ratios.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <cstdio>
#include <sqlite3.h>

namespace {

constexpr int Songs = 2'000;
constexpr int Rounds = 3;

Song madeSong(int number) {
    QRandomGenerator random(static_cast<quint32>(number));
    static const QStringList words = {
        QStringLiteral("grace"), QStringLiteral("holy"),  QStringLiteral("praise"),
        QStringLiteral("light"), QStringLiteral("river"), QStringLiteral("mercy"),
        QStringLiteral("again"), QStringLiteral("the"),   QStringLiteral("of")};
    Song song;
    song.titles = {QStringLiteral("Song number %1").arg(number)};
    song.authors = {{QStringLiteral("John Newton"), SongAuthor::Work::Any}};
    song.key = QStringLiteral("G");
    song.ccli = QString::number(100'000 + number);
    for (int v = 1; v <= 4; ++v) {
        SongVerse verse;
        verse.name = QStringLiteral("v%1").arg(v);
        for (int l = 0; l < 4; ++l) {
            SongLine line;
            for (int w = 0; w < 7; ++w) {
                if (w % 2 == 0)
                    line.chords += {int(line.text.size()), QStringLiteral("Em7"), false};
                line.text += words[random.bounded(int(words.size()))];
                if (w < 6) line.text += QLatin1Char(' ');
            }
            verse.lines += line;
        }
        song.verses += verse;
    }
    return song;
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::printf("%s could not be written\n", qPrintable(path));
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void newFolder(const QString& folder) {
    QDir(folder).removeRecursively();
    QDir().mkpath(folder + QStringLiteral("/sheetmusic"));
    QFile::copy(QStringLiteral(PROGRAM_TREE "/db1.mdb"), folder + QStringLiteral("/db1.mdb"));
}

void import(const QString& sources) {
    const ImportPlan plan = planImport(readCatalogue(), readSources({sources}), {});
    if (!runImport(plan) || plan.songs.size() != Songs) std::printf("not all were imported\n");
}

void parseBare(const QString& sources) {
    int tokens = 0;
    for (const QFileInfo& file : QDir(sources).entryInfoList(QDir::Files)) {
        QXmlStreamReader xml(readFile(file.filePath()));
        for (; !xml.atEnd(); ++tokens) xml.readNext();
    }
    if (tokens < Songs) std::printf("no tokens\n");
}

void insertBare(const QString& database) {
    sqlite3* db = nullptr;
    sqlite3_open(database.toUtf8().constData(), &db);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    for (int number = 1; number <= Songs; ++number) {
        const QString insert =
            QStringLiteral(
                "INSERT INTO songs (title, artist, dakey, CCLI, playlist, fileLoco) "
                "VALUES ('Song number %1', 'John Newton', 'G', '%1', 'Current', "
                "'/home/somebody/sheetmusic/Song number %1.stp')")
                .arg(number);
        sqlite3_exec(db, insert.toUtf8().constData(), nullptr, nullptr, nullptr);
    }
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const QTemporaryDir work;
    const QString sources = work.filePath(QStringLiteral("sources"));
    const QString ours = work.filePath(QStringLiteral("ours"));
    const QString bare = work.filePath(QStringLiteral("bare"));
    QDir().mkpath(sources);
    for (int number = 1; number <= Songs; ++number)
        writeFile(sources + QStringLiteral("/%1.xml").arg(number),
                  writeOpenLyrics(madeSong(number)));
    std::vector<double> imports, bares;
    for (int round = 0; round < Rounds; ++round) {
        newFolder(ours);
        setProgramFolder(ours);
        openDatabase();
        imports.push_back(seconds([&] { import(sources); }));
        dbConn.Close();
        std::vector<QByteArray> charts;
        for (const QFileInfo& file :
             QDir(ours + QStringLiteral("/sheetmusic")).entryInfoList(QDir::Files))
            charts.push_back(readFile(file.filePath()));
        newFolder(bare);
        bares.push_back(seconds([&] {
            parseBare(sources);
            insertBare(bare + QStringLiteral("/db1.mdb"));
            int number = 0;
            for (const QByteArray& chart : charts)
                writeFile(bare + QStringLiteral("/sheetmusic/%1.stp").arg(++number), chart);
        }));
    }
    return holds("2,000 OpenLyrics files imported", {median(imports), median(bares)}, 3) ? 0 : 1;
}
