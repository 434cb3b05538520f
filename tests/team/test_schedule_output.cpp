// The schedule as mail and as a page of HTML, and the panel that asks for the weeks.
#include "team/schedule_output_test.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRegularExpression>

#include <functional>

namespace {

// Looks when a window is shown.
class ShowWatch : public QObject {
public:
    explicit ShowWatch(std::function<void()> look) : m_look(std::move(look)) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show) m_look();
        return false;
    }

private:
    std::function<void()> m_look;
};

}  // namespace

class TestScheduleOutput : public ScheduleOutputTest {
    Q_OBJECT

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
            const QWidget* seen = w.childAt(w.frmChooseEmail->geometry().center());
            QVERIFY(seen == w.frmChooseEmail || w.frmChooseEmail->isAncestorOf(seen));
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
        const PrintedFile file(world->path("printed.pdf"));
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
        QVERIFY(!w.frmChooseEmail->isVisible());
        QCOMPARE(QApplication::focusWidget(), w.cmdPrintSched);
        // A mail takes the keys away to its own window.
        w.cmdEmailSchedule->setFocus();
        QTest::keyClick(w.cmdEmailSchedule, Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QCOMPARE(world->main().findChild<QMdiArea*>()->activeSubWindow(),
                 frmEmail::instance().parentWidget());
        QVERIFY(frmEmail::instance().isAncestorOf(QApplication::focusWidget()));
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
        const PrintedFile file(world->path("printed.pdf"));
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
        static const QRegularExpression tag("<TABLE[^>]*>");
        static const QRegularExpression width("\\bWIDTH=");
        const QString table = tag.match(body()).captured();
        QVERIFY2(table.contains(QRegularExpression("\\bCELLPADDING=1\\b")), qPrintable(table));
        QVERIFY2(!table.contains(width), qPrintable(table));
        QCOMPARE(table.count("CELLPADDING="), 1);
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
        const PrintedFile file(world->path("printed.pdf"));
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
        const PrintedFile file(world->path("printed.pdf"));
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

    void mailWindowComesUpBehindTheJoinedNotesAndTheShownGrid() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(NotesColumn, 5, QStringLiteral("one\r\ntwo"));
        QString note;
        bool gridIsShown = false;
        ShowWatch watch([&] {
            note = w.fpSchedule->GetText(NotesColumn, 5);
            gridIsShown = w.fpSchedule->isVisible();
        });
        frmEmail::instance().installEventFilter(&watch);
        mail(w);
        QCOMPARE(note, QStringLiteral("onetwo"));
        QVERIFY(gridIsShown);
        QCOMPARE(w.fpSchedule->GetText(NotesColumn, 5), QStringLiteral("one\r\ntwo"));
    }

    void notesOfTheGridStayJoinedWhereItCannotBeLoadedBack() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(NotesColumn, FirstDateRow, QStringLiteral("\rone\r\n\ntwo\n"));
        w.fpSchedule->SetText(SongsColumn, FirstDateRow, QStringLiteral("a\r\nb"));
        QVERIFY(QDir().mkpath(scratch() + "/in the way"));
        mail(w);
        compareCompacted(w);
        QCOMPARE(w.fpSchedule->GetText(NotesColumn, FirstDateRow), QStringLiteral("onetwo"));
        QCOMPARE(w.fpSchedule->GetText(SongsColumn, FirstDateRow), QStringLiteral("a\r\nb"));
        QVERIFY(body().contains("one<BR>"));
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
        answerNotSaved("a.html");
        click(w.cmdExportText);
        compareRestored(w, before);
    }
};

LORVANITE_TEST(TestScheduleOutput)
#include "test_schedule_output.moc"
