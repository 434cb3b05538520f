// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Texts as numbers and as lines.
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "support/registry.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestTexts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wholeNumberIsReadOrRefused_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("error");
        const auto row = [](const char* text, int number, int error = 0) {
            QTest::newRow(text) << number << error;
        };
        row("0", 0);
        row(" -12 ", -12);
        row("2147483647", 2147483647);
        row("-2147483648", -2147483647 - 1);
        row("2147483648", 0, RunTimeError::Overflow);
        row("-2147483649", 0, RunTimeError::Overflow);
        row("9223372036854775807", 0, RunTimeError::Overflow);
        row("9223372036854775808", 0, RunTimeError::TypeMismatch);
        row("", 0, RunTimeError::TypeMismatch);
        row("1.5", 0, RunTimeError::TypeMismatch);
        row("12a", 0, RunTimeError::TypeMismatch);
        row("½", 0, RunTimeError::TypeMismatch);
    }

    void wholeNumberIsReadOrRefused() {
        QFETCH(int, number);
        QFETCH(int, error);
        int read = 0, raised = 0;
        try {
            read = toLong(QString::fromUtf8(QTest::currentDataTag()));
        } catch (const RunTimeError& failure) {
            raised = failure.number();
        }
        QCOMPARE(raised, error);
        QCOMPARE(read, number);
    }

    void numberIsFinite_data() {
        QTest::addColumn<bool>("good");
        for (const char* good : {"1.5", " -2e3 ", "0"}) QTest::newRow(good) << true;
        for (const char* bad : {"", "nan", "inf", "-inf", "1e999", "1,5", "x"})
            QTest::newRow(bad) << false;
    }

    void numberIsFinite() {
        QFETCH(bool, good);
        const QString text = QString::fromLatin1(QTest::currentDataTag());
        if (good)
            QCOMPARE(toNumber(text), text.trimmed().toDouble());
        else
            QVERIFY_THROWS_EXCEPTION(RunTimeError, toNumber(text));
    }
};

LORVANITE_TEST(TestTexts)
#include "test_texts.moc"
