// What the parts of the sample maker share: the sample as it is read from its texts.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <map>
#include <stdexcept>
#include <vector>

// A text that cannot be used, or a file that cannot be written. The message says which and why.
class SampleError : public std::runtime_error {
public:
    explicit SampleError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

struct Song {
    QString title;
    QString author;
    QString key;
    QStringList categories;  // at most five
    QString playlist;
    QString number;
    QString chart;  // whole path of the chart file, or empty
    QString sound;  // whole path of the sound file, or empty
};

// The fixed items of a service: the labels of column 1 from row 2 on.
struct Design {
    QString name;
    QStringList labels;
    std::vector<int> songRows;  // the rows that take a song
};

// What was sung on a Sunday: a title, or nothing, for each song row of the design.
struct Service {
    QDate date;
    QString design;
    QStringList titles;
};

struct Sample {
    QString texts;       // folder of the plain texts
    QString target;      // folder of the tree, a whole path
    QDate base;          // the day for which the sample is made
    QDate comingSunday;  // that day itself where it is a Sunday
    QString defaultDesign;
    std::vector<Song> songs;
    std::map<QString, Design> designs;
    std::vector<Service> services;  // the newest first

    const Song* find(const QString& title) const;
};

// --- make_sample_text.cpp ----------------------------------------------------------------------

// The lines of a text, without the comments (lines that begin with "#") and the blanks around.
QStringList sampleLines(const QString& path);

// The fields, cut at "|", of each line that is not empty. Raises where a line has another number
// of fields than `least` to `most`.
std::vector<QStringList> tableOf(const QString& path, int least, int most);

// A whole number with or without a sign; raises where the text is none.
int numberOf(const QString& text, const QString& where);

// A file of the sample's own; raises where it cannot be written.
void writeFile(const QString& path, const QByteArray& content);

// --- The parts, in the order of the work -------------------------------------------------------

void readSongs(Sample& sample);
void readServices(Sample& sample);
void writeCharts(Sample& sample);  // ties each chart to its song
void writeTunes(Sample& sample);   // ties each sound file to its song
void writeSets(const Sample& sample);
void fillDatabase(const Sample& sample);
