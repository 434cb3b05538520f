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
