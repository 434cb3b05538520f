// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The index of the words of all charts, by which a song is found by a line of it.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

struct sqlite3;

// A song or a chart that is no song's.
struct IndexedChart {
    int songID = 0;  // 0 for a chart that is no song's
    QString title;
    QString path;  // empty for a song without chart
};

struct FoundLine {
    IndexedChart chart;
    // The line with most of the words; empty where only the title has them.
    QString line;
};

// The songs of the catalogue, and the other charts in the folder "sheetmusic". Raises what a
// failing statement raises.
QList<IndexedChart> chartsToIndex();

// A text as the index and the search compare it: small letters without accents and apostrophes,
// single blanks instead of all else. A word with hyphens counts with them and without.
QString foldedWords(const QString& text);

// A full-text index in an SQLite file. A file that is damaged, of another version or no index is
// thrown away; where no file can be made, the index is in memory.
class WordIndex {
public:
    explicit WordIndex(const QString& file);
    ~WordIndex();
    WordIndex(const WordIndex&) = delete;
    WordIndex& operator=(const WordIndex&) = delete;

    // Makes the index one of these charts: reads those that are new or whose file has another time
    // or size, and forgets the others. Returns the number of charts read; `progress` is called
    // with the number done and in all. If the file fails, all charts are read into a new one, or
    // into memory if the disk is full.
    int update(const QList<IndexedChart>& charts,
               const std::function<void(int done, int all)>& progress = {});

    // The charts with all of the words, in any order, the last of which may be a beginning. Best
    // are those with all in one line, in the order of the words. If no chart has all words, those
    // with most of them. At most `most`. If the file fails, it is made again first.
    QList<FoundLine> find(const QString& words, int most = 100);

private:
    class Statement;

    void open();
    void startAgain();
    void startInMemory();
    bool makeTables();
    bool isSound();
    bool run(const char* statements);
    int updateOnce(const std::function<void(int done, int all)>& progress);
    QList<FoundLine> findBest(const QStringList& words, int most);
    QList<FoundLine> findOnce(const QStringList& words, bool all, int most);

    QString m_file;
    QList<IndexedChart> m_charts;  // of the last update
    sqlite3* m_handle = nullptr;
};
