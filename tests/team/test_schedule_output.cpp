// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The schedule as mail and as a page of HTML, and the panel that asks which weeks.
#include "support/files.h"
#include "support/full_disk.h"
#include "team/schedule_output_test.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRegularExpression>

#include <functional>
#include <optional>

namespace {

// Calls a function before a widget handles an event of one type.
class EventWatch : public QObject {
public:
    EventWatch(QEvent::Type type, std::function<void()> act)
        : m_type(type), m_act(std::move(act)) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == m_type) m_act();
        return false;
    }

private:
    QEvent::Type m_type;
    std::function<void()> m_act;
};

}  // namespace

class TestScheduleOutput : public ScheduleOutputTest {
    Q_OBJECT

    inline static const QString ScratchNotSaved = QStringLiteral(
        "The schedule could not be saved to the file \"temp.scd\" in the folder \"config\", so it "
        "was not mailed, printed or exported. The schedule is unchanged.\r\rMake sure that there "
        "is space on the disk and that the folder can be written to, and try again.");
    inline static const QString ScratchNotLoaded = QStringLiteral(
        "The schedule could not be loaded back from the file \"temp.scd\" in the folder "
        "\"config\". It is shown without its blank rows.\r\rDo not save it in this form. Use "
        "\"Load Past\" to load a saved schedule.");
    inline static const QByteArray Damaged = "{\"format\": \"";

    void damageScratch() {
        QFile file(scratch());
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(Damaged);
    }

private Q_SLOTS:
    // --- The panel ---

    // Deliberate: behaviour 106.
    void buttonsShowThePanelWithTheirCaptionsAndHideIt() {
        frmSchedule& w = showThreeWeeks();
        const auto words = [](const QAbstractButton* button) {
            return button->text().remove(QLatin1Char('&'));
        };
        click(w.cmdEmailSchedule);
        QCOMPARE(w.frmChooseEmail->Label16->text(), QStringLiteral("Select Contents"));
        QCOMPARE(w.frmChooseEmail->Label16->font().families().first(),
                 QStringLiteral("Arial Black"));
        QCOMPARE(w.frmChooseEmail->Label16->palette().color(QPalette::WindowText),
                 QColor(0, 255, 255));
        QCOMPARE(words(w.frmChooseEmail->optEmail[0]), QStringLiteral("e-Mail Range of Weeks"));
        QCOMPARE(words(w.frmChooseEmail->optEmail[1]), QStringLiteral("e-Mail Whole Schedule"));
        QCOMPARE(words(w.frmChooseEmail->cmdSend), QStringLiteral("Send"));
        // The other button hides it as well.
        click(w.cmdPrintSched);
        QVERIFY(!w.frmChooseEmail->isVisible());
        click(w.cmdPrintSched);
        QVERIFY(w.frmChooseEmail->isVisible());
        QCOMPARE(words(w.frmChooseEmail->optEmail[0]), QStringLiteral("Print Range of Weeks"));
        QCOMPARE(words(w.frmChooseEmail->optEmail[1]), QStringLiteral("Print Whole Schedule"));
        QCOMPARE(words(w.frmChooseEmail->cmdSend), QStringLiteral("Print"));
        click(w.frmChooseEmail->Command4);
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
            toggle(w.frmChooseEmail->optEmail[range ? 0 : 1]);
            for (const QWidget* part : std::initializer_list<QWidget*>{
                     w.frmChooseEmail->lblfrm, w.frmChooseEmail->lblto, w.frmChooseEmail->txtFrom,
                     w.frmChooseEmail->txtto})
                QCOMPARE(part->isVisible(), range);
            QCOMPARE(w.frmChooseEmail->size(), size);
        }
    }

    void panelCanBeUsedByKeyboard() {
        frmSchedule& w = showThreeWeeks();
        const PrintedFile file(world->path("printed.pdf"));
        QApplication::setActiveWindow(w.window());
        w.cmdPrintSched->setFocus();
        QTest::keyClick(w.cmdPrintSched, Qt::Key_Space);
        QCOMPARE(QApplication::focusWidget(), w.frmChooseEmail->optEmail[1]);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QCOMPARE(QApplication::focusWidget(), w.cmdPrintSched);
        QTest::keyClick(w.cmdPrintSched, Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        QCOMPARE(QApplication::focusWidget(), w.frmChooseEmail->optEmail[0]);
        for (QWidget* next : std::initializer_list<QWidget*>{
                 w.frmChooseEmail->txtFrom, w.frmChooseEmail->txtto, w.frmChooseEmail->cmdSend,
                 w.frmChooseEmail->Command4}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
        QTest::keyClick(w.frmChooseEmail->Command4, Qt::Key_Return);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QVERIFY(!QFile::exists(file.path));
        QTest::keyClick(w.cmdPrintSched, Qt::Key_Space);
        w.frmChooseEmail->txtFrom->setFocus();
        QTest::keyClicks(w.frmChooseEmail->txtFrom, "11/29/26");
        w.frmChooseEmail->txtto->setFocus();
        QTest::keyClicks(w.frmChooseEmail->txtto, "11/29/26");
        QTest::keyClick(w.frmChooseEmail->txtto, Qt::Key_Return);
        QCOMPARE(printedPages(file.path).size(), 1);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QCOMPARE(QApplication::focusWidget(), w.cmdPrintSched);
        // A mail moves the keyboard focus to its own window.
        w.cmdEmailSchedule->setFocus();
        QTest::keyClick(w.cmdEmailSchedule, Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!w.frmChooseEmail->isVisible());
        QCOMPARE(world->main().findChild<QMdiArea*>()->activeSubWindow(),
                 frmEmail::instance().parentWidget());
        QVERIFY(frmEmail::instance().isAncestorOf(QApplication::focusWidget()));
    }

    // --- Compacting ---

    void compactingRemovesBlankRowsAndSavesTheWholeSchedule() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        QVERIFY(w.compactForOutput());
        compareCompacted(w);
        QVERIFY(bytesOf(scratch()) == before);
        QCOMPARE(w.fpSchedule->MaxRows(), 500);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Team, 6), QStringLiteral("Piano:Player 1"));
        QVERIFY(w.fpSchedule->isVisible());
    }

    void rowWithASpaceIsNotBlank() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 1, QStringLiteral(" "));
        QVERIFY(w.compactForOutput());
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(1) + 1),
                 QStringLiteral(" "));
        QCOMPARE(w.fpSchedule->DataRowCnt(), 15);
    }

    void scheduleThatCannotBeSavedIsNotSentAndStaysOnView_data() {
        QTest::addColumn<QString>("command");
        for (const char* command : {"mail", "print", "export"})
            QTest::newRow(command) << QString::fromLatin1(command);
    }

    void scheduleThatCannotBeSavedIsNotSentAndStaysOnView() {
        QFETCH(QString, command);
        frmSchedule& w = showThreeWeeks();
        // The scratch file of an output that stopped early.
        SheetGrid old;
        fillSchedule(old, {"01/03/27"}, "Personell");
        QVERIFY(old.SaveToFile(scratch(), false));
        const QByteArray oldFile = bytesOf(scratch());
        const QByteArray before = savedForm(w);
        const PrintedFile file(world->path("printed.pdf"));
        if (command != "export")
            choose(w, command == "mail" ? w.cmdEmailSchedule : w.cmdPrintSched);
        world->answers.box(ScratchNotSaved, QMessageBox::Warning);
        {
            const FullDisk disk(1000);
            click(command == "export" ? w.cmdExportText : w.frmChooseEmail->cmdSend);
        }
        QVERIFY(savedForm(w) == before);
        QVERIFY(w.fpSchedule->isVisible());
        QVERIFY(bytesOf(scratch()) == oldFile);
        QVERIFY(!frmEmail::isLoaded() && !QFile::exists(file.path));
        QVERIFY(!isHourglass());
        // With space on the disk, the same schedule goes out.
        if (command != "print") return;
        click(w.frmChooseEmail->cmdSend);
        QVERIFY(printedPages(file.path).value(0).contains("Player 3"));
        compareRestored(w, before);
    }

    void scratchFileThatCannotBeReplacedStopsTheOutput() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        QVERIFY(QDir().mkpath(scratch() + "/in the way"));
        const PrintedFile file(world->path("printed.pdf"));
        world->answers.box(ScratchNotSaved, QMessageBox::Warning);
        QVERIFY(print(w, file).isEmpty());
        QVERIFY(savedForm(w) == before);
    }

    void hiddenScheduleThatCannotBeSavedStaysHidden() {
        addTheLeast();
        frmSchedule& w = open();
        QVERIFY(QDir().mkpath(scratch() + "/in the way"));
        const PrintedFile file(world->path("printed.pdf"));
        world->answers.box(ScratchNotSaved, QMessageBox::Warning);
        QVERIFY(print(w, file).isEmpty());
        QVERIFY(!w.fpSchedule->isVisible());
        QVERIFY(w.lblNoSchedule->isVisible());
    }

    void scheduleThatCannotBeLoadedBackKeepsItsScratchFile() {
        frmSchedule& w = showThreeWeeks();
        world->answers.custom("file dialog", [this](QWidget* dialog) {
            damageScratch();
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(world->path("schedules/a.html"));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        world->answers.box(ScratchNotLoaded, QMessageBox::Warning);
        click(w.cmdExportText);
        QVERIFY(QFile::exists(world->path("schedules/a.html")));
        QCOMPARE(bytesOf(scratch()), Damaged);
        compareCompacted(w);
        QVERIFY(w.fpSchedule->isVisible());
    }

    // --- Mail ---

    void wholeScheduleIsHandedToTheMailWindow() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 1,
                              QStringLiteral("früh & <laut>\r\nzweite"));
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

    void columnWidthsAreRestoredAfterTheMail() {
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

    // Deliberate: behaviour 110.
    void rangeUpToTheLastWeekRunsToTheEndOfTheData() {
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

    // Deliberate: behaviour 110.
    void reversedRangeGivesAnEmptyOutput() {
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

    // Deliberate: behaviour 107.
    void dateInAnotherColumnDoesNotMatch() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1) + 1, QStringLiteral("01/03/27"));
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, {"01/03/27", "12/06/26"});
        QVERIFY(!frmEmail::isLoaded());
        // The command has stopped, and the compacted grid is shown.
        QVERIFY(w.fpSchedule->isVisible());
        QVERIFY(!isHourglass());
        QVERIFY(w.frmChooseEmail->isVisible());
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Date, 8), QStringLiteral("Date"));
        QVERIFY(QFile::exists(scratch()));
    }

    void dateTypedInAnotherFormIsNotFound() {
        frmSchedule& w = showThreeWeeks();
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, {"11/22/2026", "11/29/26"});
        QVERIFY(!frmEmail::isLoaded());
        compareCompacted(w);
    }

    void mailWithAnInvalidDateLeavesTheGridCompacted_data() {
        QTest::addColumn<QStringList>("range");
        QTest::newRow("both empty") << QStringList{"", ""};
        QTest::newRow("to is empty") << QStringList{"11/22/26", ""};
        QTest::newRow("from is a word") << QStringList{"Date", "11/22/26"};
        QTest::newRow("no such day") << QStringList{"11/22/26", "02/30/27"};
    }

    // Deliberate: behaviour 107.
    void mailWithAnInvalidDateLeavesTheGridCompacted() {
        QFETCH(QStringList, range);
        frmSchedule& w = showThreeWeeks();
        world->answers.box(WrongDate, QMessageBox::Information);
        mail(w, range);
        compareCompacted(w);
        QVERIFY(!isHourglass());
        QVERIFY(!QFile::exists(world->path("config/email.html")));
    }

    // Deliberate: behaviours 107 and 108.
    void mailWithoutATitleStopsWithTheHourglassOn() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(1, ScheduleRow::Title, QString());
        mail(w);
        QVERIFY(isHourglass());
        QVERIFY(!frmEmail::isLoaded());
        QVERIFY(w.fpSchedule->isVisible());
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Date, 7), QStringLiteral("Date"));
        QVERIFY(QFile::exists(scratch()));
    }

    void longMailBodyHasNoLineBreaks() {
        addTheLeast();
        QStringList dates;
        for (int week = 0; week < 31; ++week)
            dates += QDate(2026, 11, 22).addDays(7 * week).toString("MM/dd/yy");
        frmSchedule& w = showWeeks(dates);
        for (int row = ScheduleRow::FirstHead; row < 500; ++row)
            for (int col = 2; col <= 4; ++col)
                if (row % WeekRows != ScheduleRow::FirstHead)
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

    // Deliberate: behaviour 113.
    void notesAreJoinedAndTheGridShownBeforeTheMailWindow() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(ScheduleColumn::Notes, 5, QStringLiteral("one\r\ntwo"));
        QString note;
        bool gridIsShown = false;
        EventWatch watch(QEvent::Show, [&] {
            note = w.fpSchedule->GetText(ScheduleColumn::Notes, 5);
            gridIsShown = w.fpSchedule->isVisible();
        });
        frmEmail::instance().installEventFilter(&watch);
        mail(w);
        QCOMPARE(note, QStringLiteral("onetwo"));
        QVERIFY(gridIsShown);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Notes, 5), QStringLiteral("one\r\ntwo"));
    }

    void notesStayJoinedIfTheScheduleCannotBeLoadedBack() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(ScheduleColumn::Notes, dateRowOf(1),
                              QStringLiteral("\rone\r\n\ntwo\n"));
        w.fpSchedule->SetText(ScheduleColumn::Songs, dateRowOf(1), QStringLiteral("a\r\nb"));
        EventWatch watch(QEvent::Show, [this] { damageScratch(); });
        frmEmail::instance().installEventFilter(&watch);
        world->answers.box(ScratchNotLoaded, QMessageBox::Warning);
        mail(w);
        compareCompacted(w);
        QCOMPARE(bytesOf(scratch()), Damaged);
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Notes, dateRowOf(1)),
                 QStringLiteral("onetwo"));
        QCOMPARE(w.fpSchedule->GetText(ScheduleColumn::Songs, dateRowOf(1)),
                 QStringLiteral("a\r\nb"));
        QVERIFY(body().contains("one<BR>"));
    }

    void secondMailReplacesTheFirst() {
        frmSchedule& w = showThreeWeeks();
        mail(w, {"11/22/26", "11/22/26"});
        mail(w, {"12/06/26", "12/06/26"});
        QVERIFY(body().contains("Note 3") && !body().contains("Note 1"));
    }

    // Deliberate: behaviour 109.
    void unreadableStagingFileEndsTheProgramWithTheGridCompacted() {
        frmSchedule& w = showThreeWeeks();
        QVERIFY(QDir().mkpath(world->path("config/email.html")));
        world->answers.runTimeError(75);
        mail(w);
        QCOMPARE(world->endStatus, 1);
        compareCompacted(w);
    }

    // Deliberate: behaviour 109.
    void failedExportMailsWhatTheStagingFileHeldBefore() {
        frmSchedule& w = showThreeWeeks();
        writeBytes(world->path("config/email.html"), "<HTML>old</HTML>");
        // The grid is hidden for compacting, and again right before the export.
        std::optional<FullDisk> disk;
        int hidden = 0;
        EventWatch watch(QEvent::Hide, [&] {
            if (++hidden == 2) disk.emplace(100);
        });
        w.fpSchedule->installEventFilter(&watch);
        mail(w);
        disk.reset();
        QCOMPARE(body(), QStringLiteral("<HTML>old</HTML>"));
        QVERIFY(frmEmail::instance().isVisible());
    }

    // Deliberate: behaviour 109.
    void stagingFileThatCannotBeRewrittenEndsTheProgram() {
        frmSchedule& w = showThreeWeeks();
        writeBytes(world->path("config/email.html"), "<HTML>old</HTML>");
        std::optional<FullDisk> disk;
        int hidden = 0;
        EventWatch watch(QEvent::Hide, [&] {
            if (++hidden == 2) disk.emplace(0);
        });
        w.fpSchedule->installEventFilter(&watch);
        world->answers.runTimeError(75);
        mail(w);
        disk.reset();
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(bytesOf(world->path("config/email.html")), QByteArray("<HTML>old</HTML>"));
    }

    // --- HTML ---

    // Deliberate: behaviour 99.
    void exportProposesTheTitleAndWritesTheWholeSchedule() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(1, ScheduleRow::Title,
                              QStringLiteral("Schedule For: 06/12/05 to 07/03/05"));
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
        // Unlike a mail, it keeps the width and the padding.
        QVERIFY(html.contains("<TABLE CELLSPACING=0 CELLPADDING=0"));
        QVERIFY(html.contains("WIDTH=692"));
        compareRestored(w, before);
    }

    void exportWithoutATitleProposesSchedule() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(1, ScheduleRow::Title, QString());
        world->answers.fileAsProposed();
        click(w.cmdExportText);
        QVERIFY(QFile::exists(world->path("schedules/Schedule.html")));
    }

    void exportedFileKeepsTheEndingThatWasTyped() {
        frmSchedule& w = showThreeWeeks();
        world->answers.file(world->path("schedules/plan.htm"));
        click(w.cmdExportText);
        QCOMPARE(QDir(world->path("schedules")).entryList({"plan*"}), QStringList{"plan.htm"});
    }

    void exportProposesANameForEveryTitle() {
        frmSchedule& w = showThreeWeeks();
        w.fpSchedule->SetText(1, ScheduleRow::Title, QStringLiteral("..\\..\\plan <1/2>?"));
        world->answers.fileAsProposed();
        click(w.cmdExportText);
        QCOMPARE(QDir(world->path("schedules")).entryList({"*plan*"}),
                 QStringList{"_.._plan_1_2__.html"});
    }

    // Deliberate: behaviour 107.
    void cancelledExportLeavesTheGridCompactedAndTheScratchFile() {
        frmSchedule& w = showThreeWeeks();
        world->answers.cancelFile();
        click(w.cmdExportText);
        compareCompacted(w);
        QVERIFY(w.fpSchedule->isVisible());
    }

    void failedExportIsReportedAndTheGridRestored() {
        frmSchedule& w = showThreeWeeks();
        const QByteArray before = savedForm(w);
        answerNotSaved("a.html");
        click(w.cmdExportText);
        compareRestored(w, before);
    }
};

LORVANITE_TEST(TestScheduleOutput)
#include "test_schedule_output.moc"
