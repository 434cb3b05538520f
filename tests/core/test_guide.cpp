// The guide as it is delivered, in the window in which it is read.
#include "platform/help_window.h"
#include "support/registry.h"
#include "trees.h"

#include <QFile>
#include <QObject>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

class TestGuide : public QObject {
    Q_OBJECT

    static QString textOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
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
};

LORVANITE_TEST(TestGuide)
#include "test_guide.moc"
