// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the fuzzers have gathered is tried on every run.
#include "fuzz/checks.h"
#include "support/registry.h"
#include "trees.h"

#include <QDir>
#include <QFile>
#include <QTest>

class TestFuzzCorpus : public QObject {
    Q_OBJECT

    using Check = QString (*)(const QByteArray& bytes);

    static void tryAll(const QString& name, Check check) {
        const QDir corpus(QStringLiteral(SOURCE_TREE "/fuzz/corpus/") + name);
        const QStringList files = corpus.entryList(QDir::Files);
        QVERIFY(!files.isEmpty());
        for (const QString& file : files) {
            QFile content(corpus.filePath(file));
            QVERIFY(content.open(QIODevice::ReadOnly));
            const QString wrong = check(content.readAll());
            QVERIFY2(wrong.isEmpty(), qPrintable(file + QStringLiteral(": ") + wrong));
        }
    }

private Q_SLOTS:
    void everyCheckHasItsCorpus() {
        const QDir corpora(QStringLiteral(SOURCE_TREE "/fuzz/corpus"));
        QCOMPARE(
            corpora.entryList(QDir::Dirs | QDir::NoDotAndDotDot),
            QStringList({"chart_import", "dates", "exchange_tables", "grid_file", "html_export",
                         "song_database", "song_text", "song_xml", "statements"}));
    }

    void gridFiles() { tryAll(QStringLiteral("grid_file"), checkGridFile); }
    void chartImports() { tryAll(QStringLiteral("chart_import"), checkChartImport); }
    void htmlExports() { tryAll(QStringLiteral("html_export"), checkHtmlExport); }
    void dates() { tryAll(QStringLiteral("dates"), checkDates); }
    void songXml() { tryAll(QStringLiteral("song_xml"), checkSongXml); }
    void songText() { tryAll(QStringLiteral("song_text"), checkSongText); }
    void exchangeTables() { tryAll(QStringLiteral("exchange_tables"), checkExchangeTables); }
    void songDatabases() { tryAll(QStringLiteral("song_database"), checkSongDatabase); }
    void statements() { tryAll(QStringLiteral("statements"), checkStatements); }
};

LORVANITE_TEST(TestFuzzCorpus)
#include "test_fuzz_corpus.moc"
