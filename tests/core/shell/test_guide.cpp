// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The guide as it is delivered, in the window in which it is read.
#include "core/data/run_time_error.h"
#include "platform/desktop/help_window.h"
#include "support/files.h"
#include "support/registry.h"
#include "trees.h"

#include <QDirIterator>
#include <QImage>
#include <QObject>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

namespace {

QString textOf(const QString& path) { return QString::fromUtf8(bytesOf(path)); }

// The source up to the sign that ends the call or the statement at `from`, outside of strings and
// of further parentheses.
QString pieceFrom(const QString& source, qsizetype from, QChar end) {
    bool inString = false;
    int depth = 0;
    for (qsizetype i = from; i < source.size(); ++i) {
        const QChar c = source[i];
        if (inString && c == QLatin1Char('\\'))
            ++i;
        else if (c == QLatin1Char('"'))
            inString = !inString;
        else if (!inString && depth == 0 && c == end)
            return source.mid(from, i - from);
        else if (!inString && c == QLatin1Char('('))
            ++depth;
        else if (!inString && c == QLatin1Char(')'))
            --depth;
    }
    return source.mid(from);
}

// The texts in quotes that a piece of source holds, neighbours joined as the compiler does; the
// names of a row's fields are none.
QStringList quotedIn(QString piece) {
    static const QRegularExpression field(QStringLiteral("Fields\\(\"\\w+\"\\)"));
    static const QRegularExpression joint(QStringLiteral("(?<!\\\\)\"\\s*\""));
    static const QRegularExpression quoted(QStringLiteral("\"((?:[^\"\\\\]|\\\\.)*)\""));
    piece.remove(field);
    piece.remove(joint);
    QStringList texts;
    for (auto it = quoted.globalMatch(piece); it.hasNext();) texts.append(it.next().captured(1));
    return texts;
}

// What a call of messageBox shows, as far as the source has it: the quoted texts of the call
// and those that its function has put into the variables that the call names.
QStringList boxTexts(const QString& source, qsizetype call) {
    const QString arguments = pieceFrom(source, call, QLatin1Char(')'));
    QStringList texts = quotedIn(arguments);
    const qsizetype start = source.lastIndexOf(QLatin1String("\n}"), call);
    const QString before = source.mid(start, call - start);
    static const QRegularExpression quotedText(QStringLiteral("\"(?:[^\"\\\\]|\\\\.)*\""));
    static const QRegularExpression name(QStringLiteral("\\b[a-z]\\w*\\b(?!\\()"));
    const QString names = QString(arguments).remove(quotedText);
    for (auto it = name.globalMatch(names); it.hasNext();) {
        const QRegularExpression written(
            QStringLiteral("\\b%1\\s*\\+?=(?!=)").arg(it.next().captured()));
        for (auto at = written.globalMatch(before); at.hasNext();)
            texts += quotedIn(pieceFrom(before, at.next().capturedEnd(), QLatin1Char(';')));
    }
    return texts;
}

// The pieces of a text between its line ends and the places of its values; what has no word in it
// is left out.
QStringList wordsOf(QString text) {
    static const QRegularExpression cut(QStringLiteral("\\\\r|\\\\n|%\\d"));
    static const QRegularExpression word(QStringLiteral("\\p{L}{3}"));
    text.replace(QLatin1String("\\\""), QLatin1String("\""));
    QStringList pieces;
    for (const QString& piece : text.split(cut))
        if (word.match(piece).hasMatch()) pieces.append(piece.simplified());
    return pieces;
}

QStringList sourceFiles() {
    QStringList files;
    QDirIterator it(QStringLiteral(SOURCE_TREE "/src"), {QStringLiteral("*.cpp")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) files.append(it.next());
    return files;
}

}  // namespace

class TestGuide : public QObject {
    Q_OBJECT

    // The guide's words, without the marks of bold and slanted letters.
    static QString guide() {
        return textOf(QStringLiteral(SOURCE_TREE "/docs/guide.md"))
            .remove(QLatin1Char('*'))
            .simplified();
    }

private Q_SLOTS:
    void deliveredGuideIsTheWrittenOne() {
        const QString written = textOf(QStringLiteral(SOURCE_TREE "/docs/guide.md"));
        QVERIFY(written.startsWith("# Lorvanite"));
        QCOMPARE(textOf(QStringLiteral(PROGRAM_TREE "/config/LORVANITEHELP.hlp")), written);
    }

    void everyLinkLeadsToItsHeading() {
        const QString guide = QStringLiteral(PROGRAM_TREE "/config/LORVANITEHELP.hlp");
        HelpWindow window;
        window.showFile(guide);
        auto* text = window.findChild<QTextBrowser*>(QStringLiteral("txtGuide"));
        QVERIFY(text);
        static const QRegularExpression link(QStringLiteral("\\[([^\\]]+)\\]\\((#[^)]+)\\)"));
        int links = 0;
        for (auto it = link.globalMatch(textOf(guide)); it.hasNext(); ++links) {
            const auto match = it.next();
            text->moveCursor(QTextCursor::Start);
            Q_EMIT text->anchorClicked(QUrl(match.captured(2)));
            const QTextBlock block = text->textCursor().block();
            QVERIFY2(block.blockNumber() > 0, qPrintable(match.captured(2)));
            QVERIFY(block.blockFormat().headingLevel() > 0);
            QCOMPARE(block.text().toLower(), match.captured(1).toLower());
        }
        QVERIFY(links >= 8);
    }

    void everyPictureIsThereAndFitsTheWindow() {
        HelpWindow window;
        window.showFile(QStringLiteral(PROGRAM_TREE "/config/LORVANITEHELP.hlp"));
        auto* text = window.findChild<QTextBrowser*>(QStringLiteral("txtGuide"));
        for (const int width : {500, 900}) {
            window.resize(width, 600);
            QCoreApplication::processEvents();
            int pictures = 0;
            const QTextDocument* guide = text->document();
            for (QTextBlock block = guide->begin(); block.isValid(); block = block.next()) {
                for (auto it = block.begin(); !it.atEnd(); ++it) {
                    const QTextImageFormat picture = it.fragment().charFormat().toImageFormat();
                    if (!picture.isValid()) continue;
                    ++pictures;
                    const QVariant image =
                        guide->resource(QTextDocument::ImageResource, picture.name());
                    QVERIFY2(!image.value<QImage>().isNull(), qPrintable(picture.name()));
                    QVERIFY(picture.width() > 0);
                    QVERIFY(picture.width() <= text->viewport()->width());
                }
            }
            QVERIFY(pictures >= 15);
            QCOMPARE(text->horizontalScrollBar()->maximum(), 0);
        }
    }

    void everyBoxOfTheProgramIsExplained() {
        const QString words = guide();
        // Code without a screen passes its texts to a `tell` that shows them.
        static const QRegularExpression call(QStringLiteral("[^\\w:](?:messageBox|tell)\\("));
        static const QRegularExpression passedOn(
            QStringLiteral("\\(const QString& (\\w+)\\) \\{ messageBox\\(\\1\\); \\}"));
        int boxes = 0;
        QStringList missing;
        for (const QString& file : sourceFiles()) {
            if (file.endsWith(QLatin1String("/message_box.cpp"))) continue;
            const QString source = textOf(file).remove(passedOn);
            for (auto it = call.globalMatch(source); it.hasNext(); ++boxes) {
                QStringList pieces;
                for (const QString& text : boxTexts(source, it.next().capturedEnd()))
                    pieces += wordsOf(text);
                if (pieces.isEmpty()) missing += file + QStringLiteral(": a box without words");
                for (const QString& piece : pieces)
                    if (!words.contains(piece)) missing += file + QStringLiteral(": ") + piece;
            }
        }
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1Char('\n'))));
        QVERIFY(boxes >= 40);
    }

    // A number that only code has to know of ends a command without a box.
    void everyRunTimeErrorIsExplained() {
        const QString header =
            textOf(QStringLiteral(SOURCE_TREE "/src/core/data/run_time_error.h"));
        const QString words = guide();
        const QString unnamed = RunTimeError(0).description();
        static const QRegularExpression entry(QStringLiteral("(?m)^\\s+\\w+ = (-?\\d+),$"));
        int numbers = 0;
        for (auto it = entry.globalMatch(header); it.hasNext();) {
            const QString number = it.next().captured(1);
            if (number.toInt() == RunTimeError::DialogCancelled) continue;
            ++numbers;
            QString row = QStringLiteral("| %1 | ").arg(number);
            const QString description = RunTimeError(number.toInt()).description();
            if (description != unnamed) row += description + QStringLiteral(" |");
            QVERIFY2(words.contains(row), qPrintable(row));
        }
        QVERIFY(numbers >= 12);
    }

    void everyChapterStandsInTheContents() {
        const QString text = textOf(QStringLiteral(SOURCE_TREE "/docs/guide.md"));
        static const QRegularExpression chapter(QStringLiteral("(?m)^## (.+)$"));
        const QString contents = text.left(text.indexOf(QLatin1String("\n## ")));
        for (auto it = chapter.globalMatch(text); it.hasNext();) {
            const QString name = it.next().captured(1);
            QVERIFY2(contents.contains(QStringLiteral("- [%1](#").arg(name)), qPrintable(name));
        }
    }
};

LORVANITE_TEST(TestGuide)
#include "test_guide.moc"
