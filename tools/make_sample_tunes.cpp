// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Makes short mono sound files of the tunes, with a plain, bell-like sound.
#include "make_sample.h"

#include <QDataStream>
#include <QDir>
#include <QFile>

#include <array>
#include <cmath>
#include <numbers>

namespace {

constexpr int Rate = 22050;  // samples per second
constexpr double Loudness = 9000;
constexpr double Fade = 0.02;  // seconds in which a note fades in and out

// The frequency in hertz of a note such as "F#4"; 0 for a rest.
double frequencyOf(const QString& note) {
    if (note == QLatin1String("R")) return 0;
    constexpr std::array<int, 7> steps = {9, 11, 0, 2, 4, 5, 7};  // A to G
    const int letter = note.isEmpty() ? -1 : note[0].unicode() - u'A';
    if (letter < 0 || letter > 6)
        throw SampleError(QStringLiteral("\"%1\" is not a note").arg(note));
    int step = steps.at(size_t(letter));
    if (note.contains(QLatin1Char('#'))) ++step;
    if (note.contains(QLatin1Char('b'))) --step;
    const int octave = note.right(1).toInt();
    return 440 * std::pow(2, (step - 9) / 12.0 + octave - 4);
}

void addNote(std::vector<qint16>& samples, double frequency, double seconds) {
    const int count = int(seconds * Rate);
    for (int i = 0; i < count; ++i) {
        const double t = double(i) / Rate;
        const double phase = 2 * std::numbers::pi * frequency * t;
        const double voice = std::sin(phase) + 0.4 * std::sin(2 * phase) * std::exp(-2 * t) +
                             0.2 * std::sin(3 * phase) * std::exp(-4 * t);
        const double edge = std::min({1.0, t / Fade, (seconds - t) / Fade});
        const double level = frequency > 0 ? Loudness * voice * edge * std::exp(-1.2 * t) : 0;
        samples.push_back(qint16(std::lround(level)));
    }
}

QByteArray waveFile(const std::vector<qint16>& samples) {
    QByteArray content;
    QDataStream out(&content, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto bytes = quint32(samples.size() * 2);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + bytes);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(Rate) << quint32(Rate * 2)
        << quint16(2) << quint16(16);
    out.writeRawData("data", 4);
    out << bytes;
    for (const qint16 sample : samples) out << sample;
    return content;
}

QByteArray tune(const QString& path) {
    std::vector<qint16> samples;
    double beat = 0;  // seconds
    for (const QString& line : sampleLines(path)) {
        const QString name = line.section(QLatin1Char(' '), 0, 0);
        const double value = line.section(QLatin1Char(' '), 1).toDouble();
        if (value <= 0) throw SampleError(QStringLiteral("%1: \"%2\"").arg(path, line));
        if (name == QLatin1String("tempo"))
            beat = 60 / value;
        else
            addNote(samples, frequencyOf(name), value * beat);
    }
    return waveFile(samples);
}

}  // namespace

void writeTunes(Sample& sample) {
    QDir(sample.target).mkpath(QStringLiteral("sounds"));
    for (SampleSong& song : sample.songs) {
        const QString text = QStringLiteral("%1/tunes/%2.txt").arg(sample.texts, song.title);
        if (!QFile::exists(text)) continue;
        song.sound = QStringLiteral("%1/sounds/%2.wav").arg(sample.target, song.title);
        writeFile(song.sound, tune(text));
    }
}
