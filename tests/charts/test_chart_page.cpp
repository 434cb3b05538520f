// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page of a chart: its rows, its commands and the mouse.
#include "charts/chart_test.h"
#include "platform/desktop/desktop.h"

#include <QImage>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTabBar>

namespace {

constexpr int Width = 803;  // 12045 twips

bool isSpanned(const SheetGrid* chart, int page, int row) {
    return chart->spanAt(page, 20, row) == CellSpan{1, row, 37, 1};
}

HAlign alignOf(const SheetGrid* chart, int page, int row, int col = 1) {
    return chart->formatAt(page, col, row).hAlign;
}

// Describes a row: "span centre", "cells left".
QString roleOf(const SheetGrid* chart, int page, int row) {
    QString role = isSpanned(chart, page, row) ? "span" : "cells";
    for (const int col : {1, 19, 37}) {
        if (isSpanned(chart, page, row) && col > 1) break;
        const QString align =
            alignOf(chart, page, row, col) == HAlign::Centre ? " centre" : " left";
        if (!role.endsWith(align)) role += align;
    }
    return role;
}

// Drags a widget by one of its points to a point of its window.
void drag(QWidget* handle, const QPoint& from, QWidget* window, const QPoint& to) {
    const auto move = [handle](const QPoint& place, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, place, handle->mapToGlobal(place), Qt::NoButton,
                          buttons, {});
        QCoreApplication::sendEvent(handle, &event);
    };
    const QPoint end = handle->mapFrom(window, to);
    move(from, Qt::NoButton);
    QTest::mousePress(handle, Qt::LeftButton, {}, from);
    move(end, Qt::LeftButton);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, end);
    settle();
}

}  // namespace

class TestChartPage : public ChartTest {
    Q_OBJECT

private Q_SLOTS:
    void windowOpensCentredWithOnePage() {
        SheetMusic& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("SheetMusic"));
        QCOMPARE(w.size(), QSize(803, 529));
        QCOMPARE(w.parentWidget()->x(), (world->main().width() - w.parentWidget()->width()) / 2);
        QCOMPARE(w.fpSong->SheetCount(), 1);
        QCOMPARE(w.fpSong->height(), w.height() - 26);
        QVERIFY(w.menuBar->height() <= w.fpSong->y());
        QVERIFY(!isOnTop(w.frmAssign));
        QVERIFY(!isOnTop(w.frmImport));
        QVERIFY(w.pendingChord.isEmpty() && w.importMode.isEmpty());
        QVERIFY(world->statements.isEmpty());
    }

    void rowsHaveTheirRoles_data() {
        QTest::addColumn<bool>("added");
        QTest::newRow("first page") << false;
        QTest::newRow("added page") << true;
    }
    void rowsHaveTheirRoles() {
        // Deliberate: behaviour 120.
        QFETCH(bool, added);
        SheetMusic& w = open();
        if (added) pick(w.mnuPage, w.mnuAddPage);
        const int page = added ? 2 : 1;
        QCOMPARE(w.fpSong->SheetCount(), page);
        QCOMPARE(w.fpSong->ActiveSheet(), page);
        QCOMPARE(w.fpSong->rowsOf(page), 42);
        QCOMPARE(w.fpSong->colsOf(page), 37);
        for (int row = 1; row <= 42; ++row) {
            const bool text = row <= 3 || (row >= 6 && row % 2 == 0);
            QString role = text ? "span centre" : "cells left";
            if (row == 4 && added) role = "cells centre";  // the default of the page
            if (row == 41) role = added ? "span left" : "span centre";
            QVERIFY2(roleOf(w.fpSong, page, row) == role,
                     qPrintable(QString("row %1 %2").arg(row).arg(roleOf(w.fpSong, page, row))));
            const CellFormat format = w.fpSong->formatAt(page, 5, row);
            QCOMPARE(format.fontName, QStringLiteral("Arial"));
            QCOMPARE(format.fontSize, added ? 10.0 : 9.75);
            QVERIFY(format.fontBold);
            QCOMPARE(w.fpSong->heightOf(page, row), 14.88);
        }
        for (int col = 1; col <= 37; ++col) QCOMPARE(w.fpSong->widthOf(page, col), 2.5);
        QVERIFY(!w.fpSong->ColHeadersShow() && !w.fpSong->RowHeadersShow());
        QVERIFY(w.fpSong->AllowCellOverflow());
        QCOMPARE(w.fpSong->TabStripPolicy(), TabStrip::AsNeeded);
        QCOMPARE(world->main().SB->SimpleText(), QString());
    }

    void newPageIsReportedInTheStatusLine() {
        SheetGrid chart;
        setUpChart(chart);
        QStringList told;
        addChartPage(chart, [&told](const QString& text) { told.append(text); });
        QCOMPARE(told, (QStringList{"Loading New Page", "Resizing Columns And Rows",
                                    "Setting Font Information", "Adding Cell Formats"}));
        SheetMusic& w = open();
        QSignalSpy shown(world->main().SB, &QStatusBar::messageChanged);
        // The status line shows a text at once only if it has not just shown another one.
        const auto showsFirst = [&] {
            QTest::qWait(100);
            shown.clear();
            pick(w.mnuPage, w.mnuAddPage);
            return !shown.isEmpty() && shown.first().at(0).toString() == told.first();
        };
        QVERIFY(QTest::qWaitFor(showsFirst, 60000));
        QCOMPARE(world->main().SB->SimpleText(), QString());
    }

    void clickWithoutAWaitingChordChangesNothing() {
        SheetMusic& w = open();
        clickCell(w.fpSong, 4, ChartRow::FirstChord);
        QCOMPARE(w.fpSong->DataRowCnt(), 0);
        w.pendingChord = "Am7";
        clickCell(w.fpSong, 4, ChartRow::FirstChord);
        QCOMPARE(w.fpSong->GetText(4, ChartRow::FirstChord), QStringLiteral("Am7"));
        QVERIFY(w.pendingChord.isEmpty());
        clickCell(w.fpSong, 6, ChartRow::FirstChord);
        clickCell(w.fpSong, 4, ChartRow::FirstChord);
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord), QStringList{"Am7"});
    }

    void chordDroppedOnALyricRowReplacesTheLine() {
        // Deliberate: behaviour 124.
        SheetMusic& w = open();
        type(w.fpSong, ChartColumn::Text, ChartRow::FirstLyric, "Abide with me");
        w.pendingChord = "D";
        clickCell(w.fpSong, 9, ChartRow::FirstLyric);
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::FirstLyric), QStringLiteral("D"));
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstLyric), QStringList{"D"});
    }

    void moveTakesAChordToTheNextCellClicked() {
        SheetMusic& w = open();
        type(w.fpSong, 3, ChartRow::FirstChord + 2, "F#m");
        clickCell(w.fpSong, 3, ChartRow::FirstChord + 2, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuMove, w.mnuSubMove));
        QCOMPARE(w.pendingChord, QStringLiteral("F#m"));
        QCOMPARE(w.fpSong->GetText(3, ChartRow::FirstChord + 2), QString());
        clickCell(w.fpSong, 12, ChartRow::FirstChord + 4);
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord + 4), QStringList{"F#m"});
        QCOMPARE(w.fpSong->GetText(12, ChartRow::FirstChord + 4), QStringLiteral("F#m"));
    }

    void moveOfAnEmptyCellPlacesNothing() {
        SheetMusic& w = open();
        type(w.fpSong, 5, ChartRow::FirstChord, "G");
        w.pendingChord = "C";
        clickCell(w.fpSong, 8, ChartRow::FirstChord, Qt::RightButton);
        QCOMPARE(w.fpSong->ActiveCol(), 8);
        QCOMPARE(w.fpSong->ActiveRow(), 5);
        QVERIFY(pickMenuItem(w.mnuMove, w.mnuSubMove));
        QVERIFY(w.pendingChord.isEmpty());
        clickCell(w.fpSong, 5, ChartRow::FirstChord);
        QCOMPARE(rowOf(w.fpSong, 1, ChartRow::FirstChord), QStringList{"G"});
    }

    void moveOnALyricRowPicksUpTheWholeLine() {
        // Deliberate: behaviour 124.
        SheetMusic& w = open();
        type(w.fpSong, ChartColumn::Text, ChartRow::FirstLyric + 2, "Fast falls the eventide");
        clickCell(w.fpSong, 20, ChartRow::FirstLyric + 2, Qt::RightButton);
        QVERIFY(pickMenuItem(w.mnuMove, w.mnuSubMove));
        QCOMPARE(w.pendingChord, QStringLiteral("Fast falls the eventide"));
        QVERIFY(rowOf(w.fpSong, 1, ChartRow::FirstLyric + 2).isEmpty());
        clickCell(w.fpSong, 30, ChartRow::FirstLyric + 4);
        QCOMPARE(lyricsOf(w.fpSong, 1), (QStringList{"", "", "Fast falls the eventide"}));
    }

    void newClearsThePageShownOnly() {
        // Deliberate: behaviour 126.
        SheetMusic& w = open();
        pick(w.mnuPage, w.mnuAddPage);
        pick(w.mnuPage, w.mnuAddPage);
        for (int page = 1; page <= 3; ++page) {
            w.fpSong->ActiveSheet(page);
            type(w.fpSong, ChartColumn::Text, ChartRow::Title, QString("Page %1").arg(page));
            type(w.fpSong, 7, ChartRow::FirstChord, "C");
        }
        w.fpSong->ActiveSheet(2);
        pick(w.mnuFile, w.mnuNew);
        QCOMPARE(w.fpSong->SheetCount(), 3);
        QCOMPARE(w.fpSong->ActiveSheet(), 2);
        QCOMPARE(w.fpSong->DataRowCnt(), 0);
        for (const int page : {1, 3}) {
            QCOMPARE(w.fpSong->textAt(page, ChartColumn::Text, ChartRow::Title),
                     QString("Page %1").arg(page));
            QCOMPARE(w.fpSong->textAt(page, 7, ChartRow::FirstChord), QStringLiteral("C"));
            QVERIFY(isSpanned(w.fpSong, page, ChartRow::LastOdd));
        }
    }

    void afterNewRow41HasSeparateCells() {
        // Deliberate: behaviour 122.
        SheetMusic& w = open();
        QVERIFY(isSpanned(w.fpSong, 1, ChartRow::LastOdd));
        pick(w.mnuFile, w.mnuNew);
        QCOMPARE(w.fpSong->MaxRows(), 42);
        for (int row = 1; row <= 42; ++row) {
            const bool text = row <= 3 || (row >= 6 && row % 2 == 0);
            QCOMPARE(roleOf(w.fpSong, 1, row),
                     text ? QStringLiteral("span centre") : QStringLiteral("cells left"));
            QCOMPARE(w.fpSong->heightOf(1, row), 14.88);
        }
        // On an added page the chord rows get the default of the page.
        pick(w.mnuPage, w.mnuAddPage);
        QVERIFY(isSpanned(w.fpSong, 2, ChartRow::LastOdd));
        pick(w.mnuFile, w.mnuNew);
        QCOMPARE(roleOf(w.fpSong, 2, ChartRow::LastOdd), QStringLiteral("cells centre"));
        QCOMPARE(roleOf(w.fpSong, 2, ChartRow::FirstChord), QStringLiteral("cells centre"));
    }

    void deletePageIsConfirmed() {
        SheetMusic& w = open();
        pick(w.mnuPage, w.mnuAddPage);
        w.fpSong->SetText(ChartColumn::Text, ChartRow::Title, "second");
        world->answers.question("Delete the selected page?", QMessageBox::No);
        pick(w.mnuPage, w.mnuDelPage);
        QCOMPARE(w.fpSong->SheetCount(), 2);
        world->answers.question("Delete the selected page?", QMessageBox::Yes);
        pick(w.mnuPage, w.mnuDelPage);
        QCOMPARE(w.fpSong->SheetCount(), 1);
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::Title), QString());
        // The only page stays.
        type(w.fpSong, ChartColumn::Text, ChartRow::Title, "first");
        world->answers.question("Delete the selected page?", QMessageBox::Yes);
        pick(w.mnuPage, w.mnuDelPage);
        QCOMPARE(w.fpSong->SheetCount(), 1);
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::Title), QStringLiteral("first"));
    }

    void tabsSwitchPages() {
        SheetMusic& w = open();
        auto* tabs = w.fpSong->findChild<QTabBar*>();
        QVERIFY(tabs && !tabs->isVisible());
        pick(w.mnuPage, w.mnuAddPage);
        QVERIFY(tabs->isVisible());
        QCOMPARE(tabs->count(), 2);
        type(w.fpSong, ChartColumn::Text, ChartRow::Title, "second");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
        settle();
        QCOMPARE(w.fpSong->Sheet(), 1);
        type(w.fpSong, ChartColumn::Text, ChartRow::Title, "first");
        QCOMPARE(w.fpSong->textAt(2, ChartColumn::Text, ChartRow::Title), QStringLiteral("second"));
        QCOMPARE(w.fpSong->textAt(1, ChartColumn::Text, ChartRow::Title), QStringLiteral("first"));
    }

    void closeInTheMenuDoesNothing() {
        // Deliberate: behaviour 123.
        SheetMusic& w = open();
        type(w.fpSong, ChartColumn::Text, ChartRow::Title, "Abide");
        QVERIFY(w.mnuClose->isEnabled());
        pick(w.mnuFile, w.mnuClose);
        QVERIFY(SheetMusic::isLoaded());
        QVERIFY(w.isVisible());
        QCOMPARE(w.fpSong->GetText(ChartColumn::Text, ChartRow::Title), QStringLiteral("Abide"));
    }

    void menusHaveTheirCaptions() {
        SheetMusic& w = open();
        const auto captions = [](const QMenu* menu) {
            QStringList texts;
            for (const QAction* item : menu->actions())
                texts.append(item->isSeparator() ? QStringLiteral("-")
                                                 : item->text().remove(QLatin1Char('&')));
            return texts.join(QLatin1Char('|'));
        };
        QCOMPARE(captions(w.mnuFile),
                 QStringLiteral("New|Open|Save|-|Attach To DB|Import|-|Close"));
        QCOMPARE(captions(w.mnuPage), QStringLiteral("Add Page|Delete Page"));
        QCOMPARE(captions(w.mnuSend),
                 QStringLiteral("To Printer|To e-Mail|To Text File|-|To Lyric Sheet"));
        QCOMPARE(captions(w.mnuView), QStringLiteral("Note Maker|Transpose"));
        QCOMPARE(captions(&w.mnuMove), QStringLiteral("Move"));
        QCOMPARE(w.mnuMove.title(), QStringLiteral("dMove"));
    }

    void chordRunsOverEmptyCellsAndIsCutAtText() {
        SheetMusic& w = open();
        const auto inkOf = [&](int col) {
            w.fpSong->SetActiveCell(ChartColumn::Text, ChartRow::Title);
            settle();
            QRect cell = w.fpSong->cellRect(col, 5);
            const QImage image = w.fpSong->grab(cell.adjusted(1, 2, -2, -3)).toImage();
            int dark = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (qGray(image.pixel(x, y)) < 128) ++dark;
            return dark;
        };
        w.fpSong->SetText(2, ChartRow::FirstChord, "G#m7sus4add9");
        QVERIFY(inkOf(2) > 0);
        QVERIFY(inkOf(3) > 0);
        QVERIFY(inkOf(4) > 0);
        const int alone = inkOf(3);
        w.fpSong->SetText(4, ChartRow::FirstChord, "I");
        QVERIFY(inkOf(4) < alone);  // a thin letter, without the long chord
        QCOMPARE(inkOf(3), alone);
        const int thin = inkOf(4);
        w.fpSong->SetText(2, ChartRow::FirstChord, "");
        QCOMPARE(inkOf(4), thin);
        QCOMPARE(inkOf(3), 0);
    }

    void widthOfTheWindowIsFixed() {
        SheetMusic& w = open();
        auto* frame = w.parentWidget();
        const QSize before = frame->size();
        frame->resize(before.width() + 150, before.height());
        settle();
        QCOMPARE(w.width(), Width);
        QCOMPARE(frame->width(), before.width());
        frame->resize(before.width() - 150, before.height());
        settle();
        QCOMPARE(w.width(), Width);
        frame->showMaximized();
        settle();
        QCOMPARE(w.width(), Width);
        frame->showNormal();
        settle();
        QCOMPARE(w.width(), Width);
        QCOMPARE(w.fpSong->height(), w.height() - 26);
    }

    void bottomEdgeChangesTheHeightOfTheGrid() {
        SheetMusic& w = open();
        auto* frame = w.parentWidget();
        const int before = w.height();
        const QPoint edge(frame->width() / 2, frame->height() - 2);
        drag(frame, edge, frame->parentWidget(),
             frame->mapTo(frame->parentWidget(), edge) + QPoint(0, 60));
        QCOMPARE(w.height(), before + 60);
        QCOMPARE(w.fpSong->height(), w.height() - 26);
        QCOMPARE(w.width(), Width);
        frame->resize(frame->width(), 100);
        settle();
        QVERIFY(w.height() >= 300);
        QCOMPARE(w.fpSong->height(), w.height() - 26);
    }

    void panelIsDroppedWithItsCentreUnderThePointer() {
        SheetMusic& w = open();
        pick(w.mnuView, w.mnuNoteMaker);
        QVERIFY(w.picChord->isVisible());
        const QPoint target = w.fpSong->pos() + QPoint(200, 210);
        drag(w.picChord, QPoint(4, 4), &w, target);
        QCOMPARE(w.picChord->pos(),
                 target - QPoint(w.picChord->width() / 2, w.picChord->height() / 2));
        // It cannot be dropped beside the grid.
        const QPoint there = w.picChord->pos();
        drag(w.picChord, QPoint(4, 4), &w, QPoint(5, 300));
        QCOMPARE(w.picChord->pos(), there);
        // It can be dragged by its label too, and keeps its place while it is hidden.
        drag(w.lblNoteMaker, QPoint(4, 4), &w, target + QPoint(100, 20));
        const QPoint last = w.picChord->pos();
        QCOMPARE(last, there + QPoint(100, 20));
        click(w.Command17);
        QVERIFY(!w.picChord->isVisible());
        pick(w.mnuView, w.mnuNoteMaker);
        QCOMPARE(w.picChord->pos(), last);
    }

    void contentIsLostWithTheWindow() {
        // Deliberate: behaviour 126.
        SheetMusic& w = open();
        type(w.fpSong, ChartColumn::Text, ChartRow::Title, "Abide");
        w.pendingChord = "C";
        w.Unload();
        settle();
        QVERIFY(!SheetMusic::isLoaded());
        SheetMusic& again = open();
        QCOMPARE(again.fpSong->DataRowCnt(), 0);
        QVERIFY(again.pendingChord.isEmpty());
    }

    void onlyTheTitlesOfTwoStackedChartsAreJoined() {
        // Deliberate: behaviour 131.
        SheetGrid charts;
        charts.MaxCols(ChartCols);
        charts.MaxRows(3 * ChartRows);
        formatStackedCharts(charts);
        const int third = 2 * ChartRows + ChartRow::Title;
        QVERIFY(isSpanned(&charts, 1, ChartRow::Title));
        QVERIFY(isSpanned(&charts, 1, ChartRows + ChartRow::Title));
        QCOMPARE(roleOf(&charts, 1, third), QStringLiteral("cells centre"));
    }

    void hundredPagesCanBeAdded() {
        SheetMusic& w = open();
        for (int i = 0; i < 99; ++i) w.addPage();
        QCOMPARE(w.fpSong->SheetCount(), 100);
        QCOMPARE(w.fpSong->ActiveSheet(), 100);
        QVERIFY(isSpanned(w.fpSong, 100, ChartRow::LastOdd));
    }
};

LORVANITE_TEST(TestChartPage)
#include "test_chart_page.moc"
