// The schedule as mail, on paper and as a page of HTML, and the panel that asks for the weeks.
#include "mail/frm_email.h"
#include "support/printed.h"
#include "team/schedule_test.h"

#include <QElapsedTimer>
#include <QFile>

namespace {

const QString WrongDate = QStringLiteral("Wrong date formatting.  Please enter a valid date.");
const QStringList ThreeWeeks{"11/22/26", "11/29/26", "12/06/26"};

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) return {};
    return file.readAll();
}

bool isHourglass() {
    const QCursor* cursor = QApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
}

// Whether a page has the ground of the head rows anywhere.
bool showsHeadColour(const QImage& page) {
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if (page.pixelColor(x, y) == QColor(238, 232, 216)) return true;
    return false;
}

}  // namespace

class TestScheduleOutput : public ScheduleTest {
    Q_OBJECT

    // Three weeks, with a note, a song and a person in each.
    frmSchedule& showThreeWeeks() {
        addTheLeast();
        frmSchedule& w = showWeeks(ThreeWeeks);
        for (int week = 0; week < 3; ++week) {
            const int row = FirstDateRow + week * WeekRows;
            const QString number = QString::number(week + 1);
            w.fpSchedule->SetText(NotesColumn, row, "Note " + number);
            w.fpSchedule->SetText(SongsColumn, row + 2, "Song " + number);
            w.fpSchedule->SetText(TeamColumn, row + 14, "Piano:Player " + number);
        }
        paintHead(w, FirstHeadRow);
        return w;
    }

    static void paintHead(frmSchedule& w, int row) {
        w.fpSchedule->BlockMode(true);
        w.fpSchedule->Col(1);
        w.fpSchedule->Col2(4);
        w.fpSchedule->Row(row);
        w.fpSchedule->Row2(row);
        w.fpSchedule->BackColor(RGB(238, 232, 216));
        w.fpSchedule->BlockMode(false);
    }

    // Opens the panel with a button and picks the whole schedule, or the range from and to.
    void choose(frmSchedule& w, QPushButton* opener, const QStringList& range = {}) {
        click(opener);
        QVERIFY(w.frmChooseEmail->isVisible());
        toggle(w.optEmail[range.isEmpty() ? 1 : 0]);
        if (range.isEmpty()) return;
        for (int i = 0; i < 2; ++i) {
            QLineEdit* box = i == 0 ? w.txtFrom : w.txtto;
            box->setFocus();
            box->selectAll();
            QTest::keyClick(box, Qt::Key_Delete);
            QTest::keyClicks(box, range[i]);
        }
    }

    void mail(frmSchedule& w, const QStringList& range = {}) {
        choose(w, w.cmdEmailSchedule, range);
        click(w.cmdSend);
    }

    QStringList print(frmSchedule& w, const PrintedFile& file, const QStringList& range = {}) {
        choose(w, w.cmdPrintSched, range);
        click(w.cmdSend);
        return printedPages(file.path);
    }

    QString scratch() const { return world->path("config/temp.scd"); }

    QByteArray savedForm(const frmSchedule& w) const {
        const QString path = world->path("look.scd");
        w.fpSchedule->SaveToFile(path, false);
        return bytesOf(path);
    }

    // The schedule of showThreeWeeks without its blank rows.
    void compareCompacted(const frmSchedule& w) {
        const QStringList dates{"Schedule For: 11/22/26 to 12/06/26",
                                "",
                                "Date",
                                "11/22/26",
                                "",
                                "",
                                "Date",
                                "11/29/26",
                                "",
                                "",
                                "Date",
                                "12/06/26",
                                "",
                                ""};
        QCOMPARE(columnOf(w.fpSchedule, 1).mid(0, dates.size()), dates);
        QCOMPARE(w.fpSchedule->DataRowCnt(), int(dates.size()));
        QVERIFY(QFile::exists(scratch()));
    }

    // What a command leaves that has run to its end.
    void compareRestored(const frmSchedule& w, const QByteArray& before) {
        QVERIFY(savedForm(w) == before);
        QVERIFY(w.fpSchedule->isVisible());
        QVERIFY(!w.frmChooseEmail->isVisible());
        QVERIFY(!QFile::exists(scratch()));
        QVERIFY(!isHourglass());
    }

    static QString body() { return frmEmail::instance().txtMsg->toPlainText(); }

private Q_SLOTS:
    // --- The panel ---

    void buttonsShowThePanelWithTheirWordsAndHideIt() {
        frmSchedule& w = showThreeWeeks();
        const auto words = [](const QAbstractButton* button) {
            return button->text().remove(QLatin1Char('&'));
        };
        click(w.cmdEmailSchedule);
        QCOMPARE(w.Label16->text(), QStringLiteral("Select Contents"));
        QCOMPARE(w.Label16->font().families().first(), QStringLiteral("Arial Black"));
        QCOMPARE(w.Label16->palette().color(QPalette::WindowText), QColor(0, 255, 255));
        QCOMPARE(words(w.optEmail[0]), QStringLiteral("e-Mail Range of Weeks"));
        QCOMPARE(words(w.optEmail[1]), QStringLiteral("e-Mail Whole Schedule"));
        QCOMPARE(words(w.cmdSend), QStringLiteral("Send"));
        // The other button hides it as well.
        click(w.cmdPrintSched);
        QVERIFY(!w.frmChooseEmail->isVisible());
        click(w.cmdPrintSched);
        QVERIFY(w.frmChooseEmail->isVisible());
        QCOMPARE(words(w.optEmail[0]), QStringLiteral("Print Range of Weeks"));
        QCOMPARE(words(w.optEmail[1]), QStringLiteral("Print Whole Schedule"));
        QCOMPARE(words(w.cmdSend), QStringLiteral("Print"));
        click(w.Command4);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QVERIFY(!QFile::exists(scratch()));
    }

    void panelLiesInsideTheWindowAboveItsButtons() {
        frmSchedule& w = showThreeWeeks();
        click(w.cmdPrintSched);
        for (const QSize size : {QSize(1216, 570), QSize(1400, 700)}) {
            w.parentWidget()->resize(size);
            settle();
            QVERIFY(w.rect().contains(w.frmChooseEmail->geometry()));
            QVERIFY(w.frmChooseEmail->geometry().bottom() < w.cmdPrintSched->geometry().top());
            QCOMPARE(w.childAt(w.frmChooseEmail->geometry().center()) == w.frmChooseEmail ||
                         w.frmChooseEmail->isAncestorOf(
                             w.childAt(w.frmChooseEmail->geometry().center())),
                     true);
        }
    }

    void optionsShowAndHideTheDates() {
        frmSchedule& w = showThreeWeeks();
        click(w.cmdEmailSchedule);
        const QSize size = w.frmChooseEmail->size();
        for (const bool range : {true, false, true}) {
            toggle(w.optEmail[range ? 0 : 1]);
            for (const QWidget* part :
                 std::initializer_list<QWidget*>{w.lblfrm, w.lblto, w.txtFrom, w.txtto})
                QCOMPARE(part->isVisible(), range);
            QCOMPARE(w.frmChooseEmail->size(), size);
        }
    }

    void panelIsWorkedByTheKeyboard() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(*world);
        QApplication::setActiveWindow(w.window());
        w.cmdPrintSched->setFocus();
        QTest::keyClick(w.cmdPrintSched, Qt::Key_Space);
        QCOMPARE(QApplication::focusWidget(), w.optEmail[1]);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QCOMPARE(QApplication::focusWidget(), w.cmdPrintSched);
        QTest::keyClick(w.cmdPrintSched, Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        QCOMPARE(QApplication::focusWidget(), w.optEmail[0]);
        for (QWidget* next :
             std::initializer_list<QWidget*>{w.txtFrom, w.txtto, w.cmdSend, w.Command4}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
        QTest::keyClick(w.Command4, Qt::Key_Return);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QVERIFY(!QFile::exists(file.path));
        QTest::keyClick(w.cmdPrintSched, Qt::Key_Space);
        w.txtFrom->setFocus();
        QTest::keyClicks(w.txtFrom, "11/29/26");
        w.txtto->setFocus();
        QTest::keyClicks(w.txtto, "11/29/26");
        QTest::keyClick(w.txtto, Qt::Key_Return);
        QCOMPARE(printedPages(file.path).size(), 1);
    }

    // --- Compacting ---

    void compactingTakesBlankRowsBelowTheTitleAndKeepsTheWholeInTheScratchFile() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        w.compactForOutput();
        compareCompacted(w);
        QVERIFY(bytesOf(scratch()) == before);
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(w.fpSchedule->GetText(4, 6), QStringLiteral("Piano:Player 1"));
        QVERIFY(w.fpSchedule->isVisible());
    }

    void rowWithABlankInItIsNoBlankRow() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(2, 5, QStringLiteral(" "));
        w.compactForOutput();
        QCOMPARE(w.fpSchedule->GetText(2, 5), QStringLiteral(" "));
        QCOMPARE(w.fpSchedule->DataRowCnt(), 15);
    }

    void scratchFileThatCannotBeWrittenLeavesTheGridCompacted() {
        frmSchedule& w = showThreeWeeks();
        QVERIFY(QDir().mkpath(scratch() + "/in the way"));
        const PrintedFile file(*world);
        QCOMPARE(print(w, file).size(), 1);
        compareCompacted(w);
    }

    // --- Mail ---

    void wholeScheduleIsHandedToTheMailWindow() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(2, 5, QStringLiteral("früh & <laut>\r\nzweite"));
        const QByteArray before = savedForm(w);
        mail(w);
        QVERIFY(frmEmail::instance().isVisible());
        QVERIFY(frmEmail::instance().cmdAddNote->isVisible());
        QCOMPARE(bytesOf(world->path("config/email.html")), body().toUtf8() + "\r\n");
        QVERIFY(body().startsWith("<HTML>"));
        for (const QString& text :
             QStringList{"Schedule For: 11/22/26 to 12/06/26", "Note 1", "Song 2", "Piano:Player 3",
                         "früh &amp; &lt;laut&gt;<BR>zweite"})
            QVERIFY2(body().contains(text), qPrintable(text));
        QCOMPARE(body().count("<TR"), 15);
        compareRestored(w, before);
    }

    void mailedTableHasNoFixedWidthAndPaddedCells() {
        frmSchedule& w = showThreeWeeks();
        mail(w);
        QVERIFY(body().contains("<TABLE CELLSPACING=0 CELLPADDING=1"));
        QVERIFY(!body().contains("CELLPADDING=0"));
        QVERIFY(!body().contains("WIDTH=692"));
    }

    void widthsOfALoadedScheduleComeBackAfterTheMail() {
        frmSchedule& w = showThreeWeeks();
        for (int col = 1; col <= 4; ++col) w.fpSchedule->ColWidth(col, 10 + col);
        mail(w);
        QVERIFY(!body().contains("WIDTH=692"));
        for (int col = 1; col <= 4; ++col) QCOMPARE(w.fpSchedule->ColWidth(col), 10.0 + col);
    }

    void rangeOfWeeksIsMailedAlone() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        mail(w, {"11/22/26", "11/29/26"});
        QCOMPARE(body().count("<TR"), 8);
        QVERIFY(body().contains("Note 1") && body().contains("Piano:Player 2"));
        QVERIFY(!body().contains("Note 3") && !body().contains("Schedule For: <"));
        compareRestored(w, before);
    }

    void rangeWhoseToIsTheLastWeekRunsToTheEndOfTheData() {
        frmSchedule& w = showThreeWeeks();
        mail(w, {"11/29/26", "12/06/26"});
        QCOMPARE(body().count("<TR"), 8);
        QVERIFY(!body().contains("Note 1"));
        QVERIFY(body().contains("Note 2") && body().contains("Piano:Player 3"));
        const PrintedFile file(*world);
        const QStringList pages = print(w, file, {"12/06/26", "12/06/26"});
        QCOMPARE(pages.size(), 1);
        QVERIFY(pages[0].contains("Piano:Player 3") && !pages[0].contains("Player 2"));
    }

    void fromLaterThanToGoesOutUpsideDown() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        mail(w, {"11/29/26", "11/22/26"});
        QVERIFY(body().contains("<TABLE") && !body().contains("<TR"));
        compareRestored(w, before);
        const PrintedFile file(*world);
        const QStringList pages = print(w, file, {"11/29/26", "11/22/26"});
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages[0].simplified(), QStringLiteral("Page 1 Of 1"));
        compareRestored(w, before);
    }

    void dateInAnotherColumnDoesNotMatch() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(2, 5, QStringLiteral("01/03/27"));
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, {"01/03/27", "12/06/26"});
        QVERIFY(!frmEmail::isLoaded());
        // The command has stopped: the grid is shown as it is, compacted.
        QVERIFY(w.fpSchedule->isVisible());
        QVERIFY(!isHourglass());
        QVERIFY(w.frmChooseEmail->isVisible());
        QCOMPARE(w.fpSchedule->GetText(1, 8), QStringLiteral("Date"));
        QVERIFY(QFile::exists(scratch()));
    }

    void dateThatIsTypedInAnotherFormIsNotFound() {
        frmSchedule& w = showThreeWeeks();
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, {"11/22/2026", "11/29/26"});
        QVERIFY(!frmEmail::isLoaded());
        compareCompacted(w);
    }

    void mailRefusesWhatIsNoDateAndLeavesTheGridCompacted_data() {
        QTest::addColumn<QStringList>("range");
        QTest::newRow("both empty") << QStringList{"", ""};
        QTest::newRow("to is empty") << QStringList{"11/22/26", ""};
        QTest::newRow("from is a word") << QStringList{"Date", "11/22/26"};
        QTest::newRow("no such day") << QStringList{"11/22/26", "02/30/27"};
    }

    void mailRefusesWhatIsNoDateAndLeavesTheGridCompacted() {
        QFETCH(QStringList, range);
        frmSchedule& w = showThreeWeeks();
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, range);
        compareCompacted(w);
        QVERIFY(!isHourglass());
        QVERIFY(!QFile::exists(world->path("config/email.html")));
    }

    void mailWithoutATitleStopsWithTheHourglassOn() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(1, 1, QString());
        mail(w);
        QVERIFY(isHourglass());
        QVERIFY(!frmEmail::isLoaded());
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(w.fpSchedule->GetText(1, 7), QStringLiteral("Date"));
        QVERIFY(QFile::exists(scratch()));
    }

    void mailBodyHoldsNoLineBreaksHoweverLongTheTable() {
        addTheLeast();
        QStringList dates;
        for (int week = 0; week < 31; ++week)
            dates += QDate(2026, 11, 22).addDays(7 * week).toString("MM/dd/yy");
        frmSchedule& w = showWeeks(dates);
        for (int row = FirstHeadRow; row < 500; ++row)
            for (int col = 2; col <= 4; ++col)
                if (row % WeekRows != FirstHeadRow)
                    w.fpSchedule->SetText(col, row, QString("Zeile\r\n%1/%2").arg(row).arg(col));
        const QByteArray before = savedForm(w);
        QElapsedTimer timer;
        timer.start();
        mail(w);
        qInfo("31 full weeks mailed in %lld ms", timer.elapsed());
        QCOMPARE(body().count("<TR"), 2 + 31 * WeekRows);
        QVERIFY(!body().contains(QLatin1Char('\n')) && !body().contains(QLatin1Char('\r')));
        compareRestored(w, before);
    }

    void secondMailReplacesTheFirst() {
        frmSchedule& w = showThreeWeeks();
        mail(w, {"11/22/26", "11/22/26"});
        mail(w, {"12/06/26", "12/06/26"});
        QVERIFY(body().contains("Note 3") && !body().contains("Note 1"));
    }

    void stagingFileThatCannotBeReadEndsTheProgramWithTheGridCompacted() {
        frmSchedule& w = showThreeWeeks();
        QVERIFY(QDir().mkpath(world->path("config/email.html")));
        world->answers.runTimeError(75);
        mail(w);
        QCOMPARE(world->endStatus, 1);
        compareCompacted(w);
    }

    // --- Paper ---

    void wholeSchedulePrintsInBlackAndARangeInColour() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        const PrintedFile file(*world);
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
        // A range leaves no trace in the next whole print.
        QVERIFY(print(w, file)[0].contains("Player 3"));
        QVERIFY(!showsHeadColour(pagePictures(file.path)[0]));
    }

    void weekWithNoEntriesStillPrintsItsHeadAndDateRows() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->ClearRange(2, 20, 4, 34, true);
        const PrintedFile file(*world);
        const QStringList pages = print(w, file);
        QCOMPARE(pages[0].count("Personell"), 3);
        QVERIFY(pages[0].contains("11/29/26"));
    }

    void pageBreaksOfTheGridAreTakenAway() {
        frmSchedule& w = showThreeWeeks();
        for (int row : {4, 6, 20}) {
            w.fpSchedule->Row(row);
            w.fpSchedule->RowPageBreak(true);
        }
        const PrintedFile file(*world);
        QCOMPARE(print(w, file).size(), 1);
        w.fpSchedule->Row(20);
        QVERIFY(w.fpSchedule->RowPageBreak());
    }

    void printMarginsAreAnInchAboveAndHalfAnInchBeside() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(*world);
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
        for (int row = FirstDateRow; row < 500; ++row)
            if (w.fpSchedule->GetText(4, row).isEmpty())
                w.fpSchedule->SetText(4, row, QStringLiteral("Geige:Zoë %1").arg(row));
        const PrintedFile file(*world);
        const QStringList pages = print(w, file);
        QVERIFY(pages.size() > 5);
        for (int i = 0; i < pages.size(); ++i)
            QVERIFY(
                pages[i].contains(QStringLiteral("Page %1 Of %2").arg(i + 1).arg(pages.size())));
        QVERIFY(pages.join(QString()).contains("Geige:Zoë 499"));
    }

    void printOfADateThatIsNotThereStopsWithTheGridCompacted() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(*world);
        world->answers.box(WrongDate, QMessageBox::Information);
        QVERIFY(print(w, file, {"11/22/26", "tomorrow"}).isEmpty());
        compareCompacted(w);
        QVERIFY(w.frmChooseEmail->isVisible());
        QVERIFY(!isHourglass());
    }

    // The print looks for what was typed and asks no more: an empty box finds the first empty row.
    void printTakesEmptyBoxesAsTheFirstEmptyRow() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(*world);
        const QStringList pages = print(w, file, {"", ""});
        QCOMPARE(pages.size(), 1);
        QVERIFY(pages[0].contains("Schedule For") && !pages[0].contains("Note 1"));
    }

    void printWithoutAScheduleGivesAnEmptyPage() {
        addTheLeast();
        frmSchedule& w = open();
        const PrintedFile file(*world);
        const QStringList pages = print(w, file);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages[0].simplified(), QStringLiteral("Page 1 Of 1"));
        QVERIFY(w.fpSchedule->isVisible());
    }

    void afterAnEarlyStopTheNextPrintWorksOnTheCompactedGrid() {
        frmSchedule& w = showThreeWeeks();
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, {"", ""});
        click(w.Command4);
        const PrintedFile file(*world);
        QVERIFY(print(w, file)[0].contains("Player 3"));
        QVERIFY(!QFile::exists(scratch()));
        QCOMPARE(w.fpSchedule->GetText(1, 7), QStringLiteral("Date"));
    }

    // --- HTML ---

    void exportProposesTheTitleAndWritesTheWholeSchedule() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(1, 1, QStringLiteral("Schedule For: 06/12/05 to 07/03/05"));
        const QByteArray before = savedForm(w);
        world->answers.fileAsProposed();
        click(w.cmdExportText);
        const auto& dialog = world->answers.fileDialogs().back();
        QCOMPARE(dialog.proposed, QStringLiteral("ScheduleFor06_12_05to07_03_05.html"));
        QCOMPARE(dialog.folder, world->path("schedules"));
        QCOMPARE(dialog.filters, QStringList{"HTML Files (*.html)"});
        QVERIFY(dialog.saves);
        const QByteArray html =
            bytesOf(world->path("schedules/ScheduleFor06_12_05to07_03_05.html"));
        QVERIFY(html.startsWith("<HTML>"));
        QCOMPARE(html.count("<TR"), 14);
        QVERIFY(html.contains("Piano:Player 3"));
        // It keeps the width and the padding that a mail loses.
        QVERIFY(html.contains("<TABLE CELLSPACING=0 CELLPADDING=0"));
        QVERIFY(html.contains("WIDTH=692"));
        compareRestored(w, before);
    }

    void exportOfAScheduleWithoutATitleIsProposedAsSchedule() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(1, 1, QString());
        world->answers.fileAsProposed();
        click(w.cmdExportText);
        QVERIFY(QFile::exists(world->path("schedules/Schedule.html")));
    }

    void cancelledExportLeavesTheGridCompactedAndTheScratchFile() {
        frmSchedule& w = showThreeWeeks();
        world->answers.cancelFile();
        click(w.cmdExportText);
        compareCompacted(w);
        QVERIFY(w.fpSchedule->isVisible());
    }

    void exportThatFailsIsToldAndTheGridComesBack() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        answerWithLostFolder("a.html");
        click(w.cmdExportText);
        compareRestored(w, before);
    }
};

LORVANITE_TEST(TestScheduleOutput)
#include "test_schedule_output.moc"
