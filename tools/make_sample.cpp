// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Makes the sample tree, which a newcomer can try everything on:
// lorvanite_make_sample SAMPLE_TEXT_FOLDER PROGRAM_TREE TARGET_FOLDER YYYY-MM-DD|today
// The last service is the Sunday before the given day. The target must be empty or not exist yet.
#include "make_sample.h"

#include "core/data/file_copy.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>

namespace {

void makeSample(Sample& sample, const QString& programTree) {
    const QDir target(sample.target);
    if (target.exists() && !target.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
        throw SampleError(QStringLiteral("%1 is not empty").arg(sample.target));
    copyFolder(programTree, sample.target, FolderCopy::FillIn);
    readSongs(sample);
    readServices(sample);
    writeCharts(sample);
    writeTunes(sample);
    writeSets(sample);
    fillDatabase(sample);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const QDate base = args.value(4) == QLatin1String("today")
                           ? QDate::currentDate()
                           : QDate::fromString(args.value(4), Qt::ISODate);
    if (args.size() != 5 || !base.isValid()) {
        std::fputs(
            "usage: lorvanite_make_sample SAMPLE_TEXT_FOLDER PROGRAM_TREE TARGET_FOLDER "
            "YYYY-MM-DD|today\n",
            stderr);
        return 2;
    }
    Sample sample;
    sample.texts = args[1];
    sample.target = QDir::cleanPath(QDir(args[3]).absolutePath());
    sample.base = base;
    sample.comingSunday = base.addDays(7 - base.dayOfWeek());
    try {
        makeSample(sample, args[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
