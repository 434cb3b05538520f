// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Dates as texts.
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "support/registry.h"

#include <QTest>

class TestDates : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsTheFormsThatPeopleWrite_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("date");
        const auto row = [](const char* text, QDate date) {
            QTest::newRow(text) << QString::fromUtf8(text) << date;
        };
        row("10/05/03", QDate(2003, 10, 5));
        row("1/5/03", QDate(2003, 1, 5));
        row("1/05/2003", QDate(2003, 1, 5));
        row("2003-01-05", QDate(2003, 1, 5));
        row("2003/1/5", QDate(2003, 1, 5));
        row("January 5, 2003", QDate(2003, 1, 5));
        row("5 jan 2003", QDate(2003, 1, 5));
        row("Sept. 5 03", QDate(2003, 9, 5));
        row("  10/05/03 ", QDate(2003, 10, 5));
        row("02/29/04", QDate(2004, 2, 29));
        row("01/01/00", QDate(2000, 1, 1));
        row("01/01/29", QDate(2029, 1, 1));
        row("01/01/30", QDate(1930, 1, 1));
        row("12/31/99", QDate(1999, 12, 31));
    }
    void readsTheFormsThatPeopleWrite() {
        QFETCH(QString, text);
        QFETCH(QDate, date);
        QCOMPARE(parseDate(text), std::optional<QDate>(date));
        QCOMPARE(toDate(text), date);
    }

    void whatIsNoDateStaysOut_data() {
        QTest::addColumn<QString>("text");
        for (const char* text : {"", "   ", "13/01/03", "02/29/03", "1/2", "1/2/3/4", "1/2/333",
                                 "12345/1/1", "soon", "Foo 5, 2003", "May 2003", "1//03",
                                 "10/05/03x", "\xD9\xA1/1/03", "99999999999/1/1", "ma 5 2003"})
            QTest::newRow(text) << QString::fromUtf8(text);
    }
    void whatIsNoDateStaysOut() {
        QFETCH(QString, text);
        QVERIFY(!parseDate(text));
        QVERIFY_THROWS_EXCEPTION(RunTimeError, toDate(text));
    }

    void everyDayFromNineteenThirtyToTwentyTwentyNineReadsBack() {
        for (QDate day(1930, 1, 1); day <= QDate(2029, 12, 31); day = day.addDays(1))
            QCOMPARE(toDate(formatDate(day)), day);
    }

    void formattingATextThatIsNoDateGivesTheText() {
        QCOMPARE(formatDate(QStringLiteral("2005-06-12")), QStringLiteral("06/12/05"));
        QCOMPARE(formatDate(QStringLiteral("someday")), QStringLiteral("someday"));
        QCOMPARE(formatDate(QString()), QString());
    }

    void theDayCanBeChosenAndGivenBack() {
        setToday(QDate(2001, 2, 3));
        QCOMPARE(today(), QDate(2001, 2, 3));
        setToday({});
        QCOMPARE(today(), QDate::currentDate());
    }
};

LORVANITE_TEST(TestDates)
#include "test_dates.moc"
