// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/report_test.h"

QString ReportTest::addSong(const QString& title, const QStringList& dates, const QString& number) {
    world->sql(
        QStringLiteral("INSERT INTO songs (title, CCLI) VALUES ('%1', '%2')").arg(title, number));
    const QString id = world->rows(QStringLiteral("SELECT max(ID) FROM songs")).value(0);
    for (const QString& date : dates)
        world->sql(QStringLiteral("INSERT INTO played_on (title, played_date, songID) "
                                  "VALUES ('%1', '%2', %3)")
                       .arg(title, date, id));
    return id;
}

void ReportTest::makeReadingFail(const QString& songID) {
    // The sum overflows.
    world->sql(QStringLiteral("ALTER TABLE played_on RENAME TO dates; CREATE VIEW played_on AS "
                              "SELECT songID, substr(played_date, 1, 8 + "
                              "abs(-9223372036854775807 - (songID = %1)) * 0) AS played_date FROM "
                              "dates")
                   .arg(songID));
}
