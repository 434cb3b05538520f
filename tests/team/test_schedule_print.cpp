// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The schedule on paper.
#include "team/schedule_output_test.h"

namespace {

// True if a page shows the background of the head rows.
bool showsHeadColour(const QImage& page) {
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if (page.pixelColor(x, y) == QColor(238, 232, 216)) return true;
    return false;
}

}  // namespace

class TestSchedulePrint : public ScheduleOutputTest {
    Q_OBJECT

private Q_SLOTS:
    void schedulePrintsByItsSettings_data() {
        QTest::addColumn<QStringList>("range");
        QTest::newRow("whole") << QStringList{};
        QTest::newRow("range") << QStringList{"11/22/26", "11/29/26"};
    }
    void schedulePrintsByItsSettings() {
        QFETCH(QStringList, range);
        frmSchedule& w = showThreeWeeks();
        SheetGrid& grid = *w.fpSchedule;
        setWrongPrintSettings(grid);
        grid.PrintColHeaders(true);
        grid.PrintGrid(true);
        grid.PrintColor(range.isEmpty());
        grid.PrintType(range.isEmpty() ? PrintTypes::Block : PrintTypes::All);
        const PrintedFile file(world->path("printed.pdf"));
        QCOMPARE(print(w, file, range).size(), 1);
        compareCommonPrintSettings(grid);
        QVERIFY(!grid.PrintColHeaders() && !grid.PrintGrid());
        QCOMPARE(grid.PrintMarginTop(), 1440);
        QCOMPARE(grid.PrintMarginBottom(), 1440);
        QCOMPARE(grid.PrintColor(), !range.isEmpty());
        QCOMPARE(grid.PrintType(), range.isEmpty() ? PrintTypes::All : PrintTypes::Block);
        if (range.isEmpty()) return;
        QCOMPARE((QList<int>{grid.Col(), grid.Col2(), grid.Row(), grid.Row2()}),
                 (QList<int>{1, 4, 3, 10}));
    }

    // Deliberate: behaviour 112.
    void wholeSchedulePrintsInBlackAndARangeInColour() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        const PrintedFile file(world->path("printed.pdf"));
        const QStringList whole = print(w, file);
        QCOMPARE(whole.size(), 1);
        for (const QString& text : QStringList{"Schedule For: 11/22/26 to 12/06/26", "Note 1",
                                               "Song 2", "Piano:Player 3", "Page 1 Of 1"})
            QVERIFY2(whole[0].contains(text), qPrintable(text));
        QVERIFY(!showsHeadColour(pagePictures(file.path)[0]));
        compareRestored(w, before);
        const QStringList range = print(w, file, {"11/22/26", "11/29/26"});
        QVERIFY(range[0].contains("Player 2") && !range[0].contains("Player 3"));
        QVERIFY(!range[0].contains("Schedule For"));
        QVERIFY(showsHeadColour(pagePictures(file.path)[0]));
        compareRestored(w, before);
        // The range has no effect on the next print.
        QVERIFY(print(w, file)[0].contains("Player 3"));
        QVERIFY(!showsHeadColour(pagePictures(file.path)[0]));
    }

    void weekWithNoEntriesStillPrintsItsHeadAndDateRows() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->ClearRange(ScheduleColumn::Notes, dateRowOf(2), ScheduleColumn::Team,
                                 lastRowOf(2), true);
        const PrintedFile file(world->path("printed.pdf"));
        const QStringList pages = print(w, file);
        QCOMPARE(pages[0].count("Personell"), 3);
        QVERIFY(pages[0].contains("11/29/26"));
    }

    void pageBreaksOfTheGridAreNotPrinted() {
        frmSchedule& w = showThreeWeeks();
        for (int row : {dateRowOf(1), dateRowOf(1) + 2, dateRowOf(2)}) {
            w.fpSchedule->Row(row);
            w.fpSchedule->RowPageBreak(true);
        }
        const PrintedFile file(world->path("printed.pdf"));
        QCOMPARE(print(w, file).size(), 1);
        w.fpSchedule->Row(dateRowOf(2));
        QVERIFY(w.fpSchedule->RowPageBreak());
    }

    void printMarginsAreAnInchAboveAndHalfAnInchBeside() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(world->path("printed.pdf"));
        print(w, file);
        QCOMPARE(w.fpSchedule->PrintMarginTop(), 1440);
        QCOMPARE(w.fpSchedule->PrintMarginBottom(), 1440);
        const QImage page = pagePictures(file.path, 72)[0];
        int top = page.height();
        int left = page.width();
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x)
                if (qGray(page.pixel(x, y)) < 128) {
                    top = std::min(top, y);
                    left = std::min(left, x);
                }
        QVERIFY2(top >= 71 && top < 90, qPrintable(QString::number(top)));
        QVERIFY2(left >= 35 && left < 60, qPrintable(QString::number(left)));
    }

    void longSchedulePrintsOnNumberedPages() {
        addTheLeast();
        frmSchedule& w = makeSchedule("11/22/26", "31");
        for (int row = ScheduleRow::FirstDate; row < 500; ++row)
            if (w.fpSchedule->GetText(ScheduleColumn::Team, row).isEmpty())
                w.fpSchedule->SetText(ScheduleColumn::Team, row,
                                      QStringLiteral("Geige:Zoë %1").arg(row));
        const PrintedFile file(world->path("printed.pdf"));
        const QStringList pages = print(w, file);
        QVERIFY(pages.size() > 5);
        for (int i = 0; i < pages.size(); ++i)
            QVERIFY(
                pages[i].contains(QStringLiteral("Page %1 Of %2").arg(i + 1).arg(pages.size())));
        QVERIFY(pages.join(QString()).contains("Geige:Zoë 499"));
    }

    // Deliberate: behaviour 107.
    void printOfAnUnknownDateLeavesTheGridCompacted() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(world->path("printed.pdf"));
        world->answers.box(WrongDate, QMessageBox::Information);
        QVERIFY(print(w, file, {"11/22/26", "tomorrow"}).isEmpty());
        compareCompacted(w);
        QVERIFY(w.frmChooseEmail->isVisible());
        QVERIFY(!isHourglass());
    }

    // Deliberate: behaviour 111.
    void emptyRangePrintsTheTitle() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(world->path("printed.pdf"));
        const QStringList pages = print(w, file, {"", ""});
        QCOMPARE(pages.size(), 1);
        QVERIFY(pages[0].contains("Schedule For") && !pages[0].contains("Note 1"));
    }

    void printWithoutAScheduleGivesAnEmptyPage() {
        addTheLeast();
        frmSchedule& w = open();
        const PrintedFile file(world->path("printed.pdf"));
        const QStringList pages = print(w, file);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages[0].simplified(), QStringLiteral("Page 1 Of 1"));
        QVERIFY(w.fpSchedule->isVisible());
    }

    // Deliberate: behaviour 107.
    void afterAnEarlyStopTheNextPrintWorksOnTheCompactedGrid() {
        frmSchedule& w = showThreeWeeks();
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, {"", ""});
        click(w.frmChooseEmail->Command4);
        const PrintedFile file(world->path("printed.pdf"));
        QVERIFY(print(w, file)[0].contains("Player 3"));
        QVERIFY(!QFile::exists(scratch()));
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Date, 7), QStringLiteral("Date"));
    }
};

LORVANITE_TEST(TestSchedulePrint)
#include "test_schedule_print.moc"
