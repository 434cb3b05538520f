// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The window of the guide: what it shows, and how words are found in it.
#include "platform/desktop/help_window.h"
#include "support/registry.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>

#include <memory>

class TestHelpWindow : public QObject {
    Q_OBJECT

    QTemporaryDir folder;
    std::unique_ptr<HelpWindow> window;
    QLineEdit* field = nullptr;
    QPushButton* next = nullptr;
    QLabel* state = nullptr;
    QTextBrowser* text = nullptr;
    QList<QUrl> opened;

    void show(const QString& guide) {
        QFile file(folder.filePath(QStringLiteral("guide.md")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(guide.toUtf8());
        file.close();
        window->showFile(file.fileName());
    }

    void type(const QString& words) {
        field->setFocus();
        QTest::keyClicks(field, words);
    }

    // The word that is marked, with the count of characters ahead of it.
    QString marked() const {
        const QTextCursor cursor = text->textCursor();
        return QStringLiteral("%1 at %2").arg(cursor.selectedText()).arg(cursor.selectionStart());
    }

    // Receives the addresses that the browser of the desktop would open.
    Q_INVOKABLE void openAddress(const QUrl& address) { opened.append(address); }

private Q_SLOTS:
    void init() {
        window = std::make_unique<HelpWindow>();
        field = window->findChild<QLineEdit*>(QStringLiteral("txtFind"));
        next = window->findChild<QPushButton*>(QStringLiteral("cmdFindNext"));
        state = window->findChild<QLabel*>(QStringLiteral("lblFound"));
        text = window->findChild<QTextBrowser*>(QStringLiteral("txtGuide"));
        QVERIFY(field && next && state && text);
        // Places:  0         10        20
        show(QStringLiteral("Song and psalm, a SONG of \u00dcbung"));
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        text->setFocus();
    }

    void unchangedGuideIsNotReadAgain() {
        window->close();
        const QString file = folder.filePath(QStringLiteral("guide.md"));
        QSignalSpy changed(text->document(), &QTextDocument::contentsChanged);
        window->showFile(file);
        QCOMPARE(changed.count(), 0);
        QVERIFY(window->isVisible());
        // A later one is.
        QFile guide(file);
        QVERIFY(guide.open(QIODevice::WriteOnly));
        guide.write("Psalm");
        QVERIFY(guide.setFileTime(QDateTime::currentDateTime().addSecs(60),
                                  QFileDevice::FileModificationTime));
        guide.close();
        window->showFile(file);
        QCOMPARE(text->toPlainText().trimmed(), QStringLiteral("Psalm"));
    }

    void pictureOutOfViewIsNotRead() {
        QImage picture(1200, 300, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        QVERIFY(picture.save(folder.filePath(QStringLiteral("wide.png"))));
        QString guide = QStringLiteral("![wide](wide.png)\n\n");
        guide.prepend(QStringLiteral("Line\n\n").repeated(200));
        show(guide);
        // Its room is known all the same: as wide as the text, in its own proportions.
        const QTextBlock last = text->document()->lastBlock();
        const QTextImageFormat format = last.begin().fragment().charFormat().toImageFormat();
        const double room = text->viewport()->width() - 2 * text->document()->documentMargin();
        QCOMPARE(format.width(), room);
        QCOMPARE(format.height(), room / 4);
        QFile::remove(folder.filePath(QStringLiteral("wide.png")));
        text->moveCursor(QTextCursor::End);
        text->viewport()->repaint();
        // What is gone now is seen as a missing picture: it was never read before.
        const QImage seen = text->viewport()->grab().toImage();
        int blue = 0;
        for (int x = 0; x < seen.width(); ++x)
            blue += seen.pixelColor(x, seen.height() - 40) == QColor(Qt::blue);
        QCOMPARE(blue, 0);
    }

    void cleanup() { window.reset(); }

    void ctrlFGoesToTheFieldWithItsTextSelected() {
        field->setText(QStringLiteral("old"));
        QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(field->hasFocus());
        QTest::keyClicks(field, QStringLiteral("psalm"));
        QCOMPARE(field->text(), QStringLiteral("psalm"));
        QCOMPARE(marked(), QStringLiteral("psalm at 9"));
    }

    void typingOnKeepsThePlace() {
        type(QStringLiteral("so"));
        QCOMPARE(marked(), QStringLiteral("So at 0"));
        type(QStringLiteral("ng o"));
        QCOMPARE(marked(), QStringLiteral("SONG o at 18"));
    }

    void enterF3AndTheButtonFindTheNextPlaceAndGoRound() {
        type(QStringLiteral("song"));
        QCOMPARE(marked(), QStringLiteral("Song at 0"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(marked(), QStringLiteral("SONG at 18"));
        QTest::keyClick(field, Qt::Key_Enter);
        QCOMPARE(marked(), QStringLiteral("Song at 0"));
        QTest::keyClick(text, Qt::Key_F3);
        QCOMPARE(marked(), QStringLiteral("SONG at 18"));
        QTest::mouseClick(next, Qt::LeftButton);
        QCOMPARE(marked(), QStringLiteral("Song at 0"));
        QVERIFY(window->isVisible());
    }

    void withShiftTheSearchGoesBack() {
        type(QStringLiteral("song"));
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(marked(), QStringLiteral("SONG at 18"));
        QTest::keyClick(text, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(marked(), QStringLiteral("Song at 0"));
    }

    void wordThatIsNowhereIsTold() {
        type(QStringLiteral("song"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(state->text(), QString());
        type(QStringLiteral("x"));
        QCOMPARE(state->text(), QStringLiteral("not found"));
        QCOMPARE(text->textCursor().selectionStart(), 18);
        QTest::keyClick(field, Qt::Key_Backspace);
        QCOMPARE(state->text(), QString());
        QCOMPARE(marked(), QStringLiteral("SONG at 18"));
    }

    void emptyFieldFindsNothingAndSaysNothing() {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(marked(), QStringLiteral(" at 0"));
        QCOMPARE(state->text(), QString());
        type(QStringLiteral("x"));
        QTest::keyClick(field, Qt::Key_Backspace);
        QCOMPARE(state->text(), QString());
    }

    void wordsOfAnyScriptAreFound() {
        field->setText(QStringLiteral("\u00fcbung"));
        QTest::keyClick(text, Qt::Key_F3);
        QCOMPARE(marked(), QStringLiteral("\u00dcbung at 26"));
    }

    void wordsInsideATableAreFound() {
        show(QStringLiteral(
            "| Message | What to do |\n|---|---|\n| Device Unavailable | plug it |\n"));
        type(QStringLiteral("unavail"));
        QCOMPARE(text->textCursor().selectedText(), QStringLiteral("Unavail"));
    }

    void placeThatIsFoundHasItsExplanationInSight() {
        QString guide = QStringLiteral("# Guide\n\n");
        for (int i = 0; i < 200; ++i) guide += QStringLiteral("Line %1\n\n").arg(i);
        show(guide);
        type(QStringLiteral("line 150"));
        const QRect place = text->cursorRect();
        QVERIFY(place.top() > 0);
        QVERIFY(place.bottom() <= text->viewport()->height() / 2 + 1);
    }

    void tablesFollowTheColoursOfTheDesktop() {
        show(QStringLiteral("| Message | What to do |\n|---|---|\n| A | b |\n"));
        QPalette dark = window->palette();
        dark.setColor(QPalette::Window, QColor(0x26, 0x25, 0x22));
        window->setPalette(dark);
        const auto* table =
            qobject_cast<QTextTable*>(text->document()->rootFrame()->childFrames().value(0));
        QVERIFY(table);
        QCOMPARE(table->cellAt(0, 0).format().background().color(), QColor(0x26, 0x25, 0x22));
    }

    void guideThatCannotBeReadIsTold() {
        window->showFile(folder.filePath(QStringLiteral("none.md")));
        QVERIFY(text->toPlainText().startsWith(QStringLiteral("The guide cannot be read: ")));
    }

    void addressesOpenInTheBrowserAndPlacesHere() {
        show(QStringLiteral("[site](https://example.org/songs) and [place](#far-away)\n\n") +
             QStringLiteral("line\n\n").repeated(200) + QStringLiteral("# Far Away\n\nhere"));
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "openAddress");
        const auto unset = qScopeGuard([] { QDesktopServices::unsetUrlHandler("https"); });
        const auto clickWord = [this](const QString& word) {
            QTextCursor cursor = text->document()->find(word);
            cursor.setPosition(cursor.selectionStart() + 1);
            QTest::mouseClick(text->viewport(), Qt::LeftButton, {},
                              text->cursorRect(cursor).center());
        };
        clickWord(QStringLiteral("site"));
        QCOMPARE(opened, QList<QUrl>{QUrl(QStringLiteral("https://example.org/songs"))});
        QCOMPARE(text->verticalScrollBar()->value(), 0);
        QVERIFY(text->toPlainText().startsWith(QStringLiteral("site")));
        clickWord(QStringLiteral("place"));
        QVERIFY(text->verticalScrollBar()->value() > 0);
        QCOMPARE(opened.size(), 1);
    }

    void escapeClosesTheWindow() {
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(!window->isVisible());
    }
};

LORVANITE_TEST(TestHelpWindow)
#include "test_help_window.moc"
