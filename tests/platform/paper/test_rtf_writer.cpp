// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Rich text as RTF: what another program reads in it is what the document holds.
#include "core/data/paths.h"
#include "platform/paper/rtf_writer.h"
#include "support/registry.h"
#include "support/rtf_reader.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

class TestRtfWriter : public QObject {
    Q_OBJECT

    static QTextCharFormat letters(const QString& family, double points, bool bold) {
        QTextCharFormat format;
        format.setFontFamilies({family});
        format.setFontPointSize(points);
        format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
        return format;
    }

    static QString output(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

private Q_SLOTS:
    void everyTextComesBackAsItWas_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << "Abide with me";
        QTest::newRow("marks of the form") << "a\\b {c} \\par }{ \\u8364?";
        QTest::newRow("umlauts") << QString::fromUtf8("Großer Gott, wir loben dich – „é“ €");
        QTest::newRow("beyond sixteen bits")
            << QString::fromUtf8("Noten \U0001D11E und \U0001F3B5");
        QTest::newRow("negative unit") << QString::fromUtf8("\uFF5E한국어 찬송가");
        QTest::newRow("right to left") << QString::fromUtf8("שלום עליכם");
        QTest::newRow("digit behind a sign") << QString::fromUtf8("ä1 ö-2 ü 3");
        QTest::newRow("tab and fixed blank") << QString("one\ttwo") + QChar(QChar::Nbsp) + "three";
        QTest::newRow("blanks at the ends") << "  two  ";
        QTest::newRow("line in a paragraph") << QString("one") + QChar(QChar::LineSeparator) + "2";
        QTest::newRow("empty") << "";
        QTest::newRow("long") << QString(100000, u'x');
    }
    void everyTextComesBackAsItWas() {
        QFETCH(QString, text);
        QTextDocument document;
        QTextCursor(&document).insertText(text);
        const QByteArray rtf = rtfOf(document);
        QCOMPARE(rtfLines(rtf), QStringList{text});
        QVERIFY(std::all_of(rtf.begin(), rtf.end(), [](char c) { return uchar(c) < 0x7f; }));
    }

    void otherProgramsReadEveryText_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("umlauts") << QString::fromUtf8("Großer Gott, wir loben dich, ÄÖÜäöü");
        QTest::newRow("letters behind") << QString::fromUtf8("Grüße, Café, ça va, señor, ¿1?");
        QTest::newRow("Windows-1252") << QString::fromUtf8("„Heilig“ – ‚ja‘ … 5 € Œuvre Žal");
        QTest::newRow("beyond it") << QString::fromUtf8("Bůh je láska, Łaska, Слава Богу 1 주일");
    }
    void otherProgramsReadEveryText() {
        QFETCH(QString, text);
        QTextDocument document;
        QTextCursor(&document).insertText(text + "\nend");
        const QTemporaryDir folder;
        const QString path = folder.filePath("sheet.rtf");
        QVERIFY(replaceFile(path, rtfOf(document)));
        const QString byPandoc =
            output("pandoc", {"--from=rtf", "--to=plain", "--wrap=none", path});
        QVERIFY2(byPandoc.simplified() == text + " end", qPrintable(byPandoc));
        QTextDocument page;
        page.setHtml(output("unrtf", {"--html", path}));
        QVERIFY2(page.toPlainText().simplified() == text + " end", qPrintable(page.toPlainText()));
    }

    void paragraphsKeepTheirAlignment() {
        QTextDocument document;
        QTextCursor cursor(&document);
        const QList<QPair<Qt::Alignment, QString>> aligns = {{Qt::AlignLeft, "ql"},
                                                             {Qt::AlignHCenter, "qc"},
                                                             {Qt::AlignRight, "qr"},
                                                             {Qt::AlignJustify, "qj"}};
        for (const auto& [align, name] : aligns) {
            QTextBlockFormat block;
            block.setAlignment(align);
            if (name == "ql")
                cursor.setBlockFormat(block);
            else
                cursor.insertBlock(block);
            cursor.insertText(name);
        }
        const auto paragraphs = rtfParagraphs(rtfOf(document));
        QCOMPARE(paragraphs.size(), size_t(4));
        for (const RtfParagraph& paragraph : paragraphs)
            QCOMPARE(paragraph.align, paragraph.text());
    }

    void lettersKeepFontSizeAndBold() {
        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.insertText("big", letters("Arial", 24, true));
        cursor.insertText(QString::fromUtf8("schön"), letters("Times New Roman", 10.5, false));
        QTextCharFormat slanted = letters("Arial", 12, false);
        slanted.setFontItalic(true);
        cursor.insertText("slanted", slanted);
        const auto paragraphs = rtfParagraphs(rtfOf(document));
        QCOMPARE(paragraphs.size(), size_t(1));
        const std::vector<RtfRun> wanted = {
            {"big", "Arial", 24, true, false},
            {QString::fromUtf8("schön"), "Times New Roman", 10.5, false, false},
            {"slanted", "Arial", 12, false, true}};
        QVERIFY(paragraphs[0].runs == wanted);
    }

    void lettersWithoutALookHaveTheDocuments() {
        QTextDocument document;
        document.setDefaultFont(QFont("Liberation Serif", 13));
        document.setPlainText("one");
        QFont inPixels("Liberation Serif");
        inPixels.setPixelSize(16);
        QTextDocument other;
        other.setDefaultFont(inPixels);
        other.setPlainText("two");
        QCOMPARE(rtfParagraphs(rtfOf(document)).at(0).runs.at(0),
                 (RtfRun{"one", "Liberation Serif", 13, false, false}));
        QCOMPARE(rtfParagraphs(rtfOf(other)).at(0).runs.at(0),
                 (RtfRun{"two", "Liberation Serif", 12, false, false}));
    }

    void emptyParagraphKeepsTheLookOfItsEnd() {
        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.setBlockCharFormat(letters("Arial", 24, true));
        cursor.insertBlock(QTextBlockFormat(), letters("Arial", 12, false));
        const auto paragraphs = rtfParagraphs(rtfOf(document));
        QCOMPARE(paragraphs.size(), size_t(2));
        QCOMPARE(paragraphs[0].end, (RtfRun{"", "Arial", 24, true, false}));
        QCOMPARE(paragraphs[1].end, (RtfRun{"", "Arial", 12, false, false}));
    }

    void fontNamesCannotBreakTheFile() {
        QTextDocument document;
        QTextCursor(&document).insertText("text",
                                          letters(QString::fromUtf8("Fön;t{\\"), 12, false));
        QCOMPARE(rtfParagraphs(rtfOf(document)).at(0).runs.at(0).font,
                 QString::fromUtf8("Fönt{\\"));
    }

    void picturesAreLeftOut() {
        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.insertText("before ");
        cursor.insertImage(QImage(2, 2, QImage::Format_RGB32));
        cursor.insertText("behind");
        QCOMPARE(rtfLines(rtfOf(document)), QStringList{"before behind"});
    }

    void textsOfATableStandAsParagraphs() {
        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.insertText("before");
        QTextTable* table = cursor.insertTable(2, 2);
        for (int cell = 0; cell < 4; ++cell)
            table->cellAt(cell / 2, cell % 2)
                .firstCursorPosition()
                .insertText(QString("cell %1").arg(cell + 1));
        cursor = document.rootFrame()->lastCursorPosition();
        cursor.insertText("behind");
        QCOMPARE(rtfLines(rtfOf(document)),
                 (QStringList{"before", "cell 1", "cell 2", "cell 3", "cell 4", "behind"}));
    }

    void manyParagraphsAreWritten() {
        QTextDocument document;
        QStringList lines;
        for (int i = 0; i < 5000; ++i) lines.append(QString::fromUtf8("Zeile %1 ü").arg(i));
        document.setPlainText(lines.join('\n'));
        QCOMPARE(rtfLines(rtfOf(document)), lines);
    }
};

LORVANITE_TEST(TestRtfWriter)
#include "test_rtf_writer.moc"
