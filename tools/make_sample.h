// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Shared by the parts of the sample maker: the sample as read from its texts.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <map>
#include <stdexcept>
#include <vector>

class SheetGrid;

// Raised for a text that cannot be used or a file that cannot be written. The message says which
// and why.
class SampleError : public std::runtime_error {
public:
    explicit SampleError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

struct SampleSong {
    QString title;
    QString author;
    QString key;
    QStringList categories;  // at most five
    QString playlist;
    QString number;
    QString chart;  // absolute path of the chart file, or empty
    QString sound;  // absolute path of the sound file, or empty
};

// The fixed items of a service: the labels in column 1, from row 2 down.
struct Design {
    QString name;
    QStringList labels;
    std::vector<int> songRows;  // the rows that take a song
};

// What was sung on a Sunday: a title or an empty text for each song row of the design.
struct Service {
    QDate date;
    QString design;
    QStringList titles;
};

struct Sample {
    QString texts;       // folder of the plain texts
    QString target;      // folder of the tree, an absolute path
    QDate base;          // the day for which the sample is made
    QDate comingSunday;  // the same day if it is a Sunday
    QString defaultDesign;
    std::vector<SampleSong> songs;
    std::map<QString, Design> designs;
    std::vector<Service> services;  // newest first

    const SampleSong* find(const QString& title) const;
};

// --- make_sample_text.cpp ----------------------------------------------------------------------

// Reads the lines of a text file, without comments (lines that begin with "#"), leading and
// trailing blanks, and empty lines at the end.
QStringList sampleLines(const QString& path);

// Splits each line that is not empty into its fields, separated by "|". Raises SampleError if a
// line has fewer fields than `least` or more than `most`.
std::vector<QStringList> tableOf(const QString& path, int least, int most);

// Converts a text to a whole number. Raises SampleError if it is not a number.
int numberOf(const QString& text, const QString& where);

// Write a file of the sample. Raise SampleError if it cannot be written.
void writeFile(const QString& path, const QByteArray& content);
void saveGrid(const SheetGrid& grid, const QString& path);

// --- The parts, in the order they run -----------------------------------------------------------

void readSongs(Sample& sample);
void readServices(Sample& sample);
void writeCharts(Sample& sample);  // assigns each chart to its song
void writeTunes(Sample& sample);   // assigns each sound file to its song
void writeSets(const Sample& sample);
void fillDatabase(const Sample& sample);
