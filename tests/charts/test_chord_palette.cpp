// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The note maker.
#include "charts/chart_test.h"
#include "platform/desktop/status_line.h"

class TestChordPalette : public ChartTest {
    Q_OBJECT

    SheetMusic& openMaker() {
        SheetMusic& w = open();
        pick(w.mnuView, w.mnuNoteMaker);
        return w;
    }

    static void take(QListWidget* list, const QString& item) {
        for (int i = 0; i < list->count(); ++i) {
            if (list->item(i)->text() != item) continue;
            list->scrollToItem(list->item(i));
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualItemRect(list->item(i)).center());
            settle();
            return;
        }
        QTest::qFail(qPrintable("no item " + item), __FILE__, __LINE__);
    }

    static QString picked(const QListWidget* list) {
        const auto items = list->selectedItems();
        return items.isEmpty() ? QString() : items.first()->text();
    }

private Q_SLOTS:
    void listsHoldTheirItems() {
        SheetMusic& w = openMaker();
        const QStringList wanted = {"C D E F G A B ©", "# b ©", "Maj m sus dim aug ©",
                                    "2 4 5 7 9 11 ©"};
        for (int i = 0; i < 4; ++i) {
            QStringList items;
            for (int k = 0; k < w.notes[size_t(i)]->count(); ++k)
                items.append(w.notes[size_t(i)]->item(k)->text());
            QCOMPARE(items.join(QLatin1Char(' ')), wanted[i]);
            QVERIFY(picked(w.notes[size_t(i)]).isEmpty());
        }
    }

    void commandBringsTheMakerBackIntoView() {
        SheetMusic& w = openMaker();
        w.picChord->move(w.width() - 20, w.height() - 10);
        pick(w.mnuView, w.mnuNoteMaker);
        QVERIFY(w.rect().contains(w.picChord->geometry()));
        // Where it is in view it stays.
        w.picChord->move(50, 60);
        pick(w.mnuView, w.mnuNoteMaker);
        QCOMPARE(w.picChord->pos(), QPoint(50, 60));
        // It also comes to the front of a panel.
        pick(w.mnuFile, w.mnuAttachToDB);
        pick(w.mnuView, w.mnuNoteMaker);
        QVERIFY(w.children().indexOf(w.picChord) > w.children().indexOf(w.frmAssign));
        QVERIFY(w.notes[0]->hasFocus());
    }

    void escapeClosesTheMaker() {
        SheetMusic& w = openMaker();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!w.picChord->isVisible());
        QVERIFY(w.fpSong->hasFocus());
    }

    void chordIsMadeAndPlaced() {
        SheetMusic& w = openMaker();
        take(w.notes[0], "G");
        take(w.notes[1], "#");
        take(w.notes[2], "m");
        take(w.notes[3], "7");
        click(w.cmdCh);
        QCOMPARE(w.pendingChord, QStringLiteral("G#m7"));
        clickCell(w.fpSong, 3, ChartRow::FirstChord);
        QCOMPARE(w.fpSong->GetText(3, ChartRow::FirstChord), QStringLiteral("G#m7"));
        QVERIFY(w.pendingChord.isEmpty());
        // The selection stays, for the same chord in the next cell.
        click(w.cmdCh);
        clickCell(w.fpSong, 6, ChartRow::FirstChord + 2);
        QCOMPARE(w.fpSong->GetText(6, ChartRow::FirstChord + 2), QStringLiteral("G#m7"));
    }

    void withoutASelectionNothingIsPlaced() {
        SheetMusic& w = openMaker();
        w.pendingChord = "C";
        click(w.cmdCh);
        QVERIFY(w.pendingChord.isEmpty());
        clickCell(w.fpSong, 3, ChartRow::FirstChord);
        QCOMPARE(w.fpSong->DataRowCnt(), 0);
    }

    void selectedItemsAreJoined_data() {
        QTest::addColumn<QStringList>("picks");
        QTest::addColumn<QString>("chord");
        QTest::newRow("B flat") << QStringList{"B", "b", "", ""} << "Bb";
        QTest::newRow("B minor") << QStringList{"B", "", "m", ""} << "Bm";
        QTest::newRow("C major seven") << QStringList{"C", "", "Maj", "7"} << "CMaj7";
        QTest::newRow("D suspended") << QStringList{"D", "", "sus", "4"} << "Dsus4";
        QTest::newRow("without a root") << QStringList{"", "", "", "7"} << "7";
    }
    void selectedItemsAreJoined() {
        QFETCH(QStringList, picks);
        QFETCH(QString, chord);
        SheetMusic& w = openMaker();
        for (int i = 0; i < 4; ++i)
            if (!picks[i].isEmpty()) take(w.notes[size_t(i)], picks[i]);
        click(w.cmdCh);
        QCOMPARE(w.pendingChord, chord);
    }

    void statusBarNamesTheChordInHand() {
        SheetMusic& w = openMaker();
        const auto status = [this] { return world->main().SB->SimpleText(); };
        take(w.notes[0], "G");
        click(w.cmdCh);
        QCOMPARE(status(), QStringLiteral("In hand: G. Click its cell in the chart."));
        clickCell(w.fpSong, 3, ChartRow::FirstChord);
        QCOMPARE(status(), QString());
        clickCell(w.fpSong, 3, ChartRow::FirstChord, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuMove, w.mnuSubMove));
        QCOMPARE(status(), QStringLiteral("In hand: G. Click its cell in the chart."));
        w.Unload();
        settle();
        QCOMPARE(status(), QString());
    }

    void titleAndChordsAreTypedWithTheArrowKeys() {
        SheetMusic& w = open();
        w.fpSong->setFocus(Qt::TabFocusReason);
        const auto type = [](const char* text, Qt::Key key) {
            QTest::keyClick(QApplication::focusWidget(), text[0]);
            QTest::keyClicks(QApplication::focusWidget(), text + 1);
            QTest::keyClick(QApplication::focusWidget(), key);
        };
        type("Abide", Qt::Key_Down);
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::Title), QStringLiteral("Abide"));
        w.fpSong->SetActiveCell(2, ChartRow::FirstChord);
        w.fpSong->flush();
        type("Am", Qt::Key_Right);
        type("D", Qt::Key_Left);
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord), (QStringList{"Am", "D"}));
        QCOMPARE(w.fpSong->GetText(3, ChartRow::FirstChord), QStringLiteral("D"));
        QCOMPARE(w.fpSong->ActiveCol(), 2);
    }

    void chordWithoutARootIsNotTransposed() {
        SheetMusic& w = open();
        w.fpSong->SetText(1, ChartRow::FirstChord, "CMaj7");
        w.fpSong->SetText(5, ChartRow::FirstChord, "7");
        frmTranspose& t = openTranspose(w);
        t.Slider1->setFocus();
        QTest::keyClick(t.Slider1, Qt::Key_Right);
        const QStringList transposed{"C#Maj7", "7"};
        QTRY_COMPARE_WITH_TIMEOUT(rowOf(t.fpPreview, 1, ChartRow::FirstChord), transposed, 60000);
    }

    void clearMarkClearsItsOwnListOnly() {
        SheetMusic& w = openMaker();
        take(w.notes[0], "A");
        take(w.notes[1], "b");
        take(w.notes[2], "dim");
        take(w.notes[3], "9");
        take(w.notes[2], QString(QChar(169)));
        QVERIFY(picked(w.notes[2]).isEmpty());
        QCOMPARE(picked(w.notes[0]) + picked(w.notes[1]) + picked(w.notes[3]),
                 QStringLiteral("Ab9"));
        click(w.cmdCh);
        QCOMPARE(w.pendingChord, QStringLiteral("Ab9"));
        take(w.notes[2], "aug");
        QCOMPARE(picked(w.notes[2]), QStringLiteral("aug"));
    }

    void clearKeepsTheWaitingChord() {
        SheetMusic& w = openMaker();
        take(w.notes[0], "E");
        take(w.notes[3], "11");
        click(w.cmdCh);
        click(w.cmdCLRnotes);
        for (const QListWidget* list : w.notes) QVERIFY(picked(list).isEmpty());
        QCOMPARE(w.pendingChord, QStringLiteral("E11"));
        pick(w.mnuFile, w.mnuNew);
        world->answers.cancelFile();
        pick(w.mnuFile, w.mnuOpen);
        QCOMPARE(w.pendingChord, QStringLiteral("E11"));
    }

    void keyboardSelectsLikeTheMouse() {
        SheetMusic& w = openMaker();
        w.notes[1]->setFocus();
        QTest::keyClick(w.notes[1], Qt::Key_Home);
        QTest::keyClick(w.notes[1], Qt::Key_Space);
        QCOMPARE(picked(w.notes[1]), QStringLiteral("#"));
        QTest::keyClick(w.notes[1], Qt::Key_End);
        settle();
        QVERIFY(picked(w.notes[1]).isEmpty());
    }
};

LORVANITE_TEST(TestChordPalette)
#include "test_chord_palette.moc"
