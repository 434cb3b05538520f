// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Printing on printers, through the windows: what arrives, and what is reported if nothing does.
#include "charts/frm_transpose.h"
#include "charts/sheet_music.h"
#include "reports/frm_ccli.h"
#include "sets/frm_past_sets.h"
#include "sets/frm_set_list.h"
#include "sets/frm_song_collection.h"
#include "support/full_disk.h"
#include "support/grid_hands.h"
#include "support/print_server.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"

#include <QDir>
#include <QScopeGuard>

namespace {

const QString Paper = QStringLiteral("paper");

}  // namespace

class TestPrinter : public QObject {
    Q_OBJECT

    std::unique_ptr<PrintServer> m_server;
    std::unique_ptr<World> world;
    QSize m_paper;

    // Printer, name and pages of a job: "paper: Amazing Grace, 595 x 842, 595 x 842".
    static QString described(const QString& printer, const QString& title,
                             const QList<QSize>& papers) {
        QString text = printer + QStringLiteral(": ") + title;
        for (const QSize& paper : papers)
            text += QStringLiteral(", %1 x %2").arg(paper.width()).arg(paper.height());
        return text;
    }

    // The next job has this name and number of pages, and contains a text.
    void expectJob(const QString& title, int pages, const QString& text) {
        const PrintServer::Job job = m_server->nextJob();
        QCOMPARE(described(job.printer, job.title, job.papers),
                 described(Paper, title, QList<QSize>(pages, m_paper)));
        const QString words = printedPages(job.pdf).join(QString()).simplified();
        QVERIFY2(words.contains(text), qPrintable(words));
        QCOMPARE(statusText(), QStringLiteral("Sent to the printer paper"));
    }

    QString statusText() const { return world->main().SB->SimpleText(); }

    // Presses OK in the next message box, whatever its text.
    void acceptBox(const QString& what) {
        world->answers.custom(what, [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
    }

    // The next box says that the printer took nothing.
    void expectFailure() {
        world->answers.custom(QStringLiteral("failure"), [](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            QVERIFY2(box->text().startsWith(
                         QStringLiteral("The printer paper did not take the pages. Make sure that "
                                        "it is switched on, then print again.\n\n")),
                     qPrintable(box->text()));
            box->accept();
        });
    }

    frmSetList& openSet() {
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        typeInCell(w.fpSet, 2, 2, QStringLiteral("Größe"));
        return w;
    }

    // Prints a set without a date.
    void printSet() { click(openSet().Command3); }

    QStringList printedFiles() const {
        return QDir(world->path(QStringLiteral("printed"))).entryList(QDir::Files);
    }

private Q_SLOTS:
    void initTestCase() { m_server = std::make_unique<PrintServer>(); }
    void init() {
        while (m_server->moreJobs() > 0) m_server->nextJob();
        m_server->addPrinter(Paper, QStringLiteral("A4"));
        world = std::make_unique<World>(WorldTree::Sample);
        acceptBox(QStringLiteral("reminder"));
        world->start();
        m_paper = QSize(595, 842);
    }
    void cleanup() { world.reset(); }
    void cleanupTestCase() { m_server.reset(); }

    void everyPrintArrives_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSize>("paper");
        QTest::newRow("A4") << QStringLiteral("A4") << QSize(595, 842);
        QTest::newRow("Letter") << QStringLiteral("Letter") << QSize(612, 792);
    }

    void everyPrintArrives() {
        QFETCH(QString, name);
        QFETCH(QSize, paper);
        m_server->addPrinter(Paper, name);
        m_paper = paper;
        printsOfSets();
        printsOfCharts();
        printsOfTheTeam();
        printsOfReports();
        QCOMPARE(m_server->moreJobs(), 0);
        QVERIFY(printedFiles().isEmpty());
    }

    void jobsGoToTheDefaultPrinter() {
        m_server->addPrinter(QStringLiteral("another"), QStringLiteral("Letter"));
        const auto removed = qScopeGuard([&] {
            m_server->run(QStringLiteral("lpadmin"),
                          {QStringLiteral("-x"), QStringLiteral("another")});
        });
        m_server->run(QStringLiteral("lpadmin"), {QStringLiteral("-d"), QStringLiteral("another")});
        printSet();
        const PrintServer::Job job = m_server->nextJob();
        QCOMPARE(job.printer, QStringLiteral("another"));
        QCOMPARE(job.papers, QList<QSize>{QSize(612, 792)});
        QCOMPARE(statusText(), QStringLiteral("Sent to the printer another"));
    }

    void printerThatRefusesJobsIsTold() {
        m_server->run(QStringLiteral("cupsreject"), {Paper});
        world->answers.box(
            QStringLiteral("The printer paper did not take the pages. Make sure that it is "
                           "switched on, then print again.\r\r"
                           "Destination \"paper\" is not accepting jobs."),
            QMessageBox::Warning);
        printSet();
        QCOMPARE(statusText(), QString());
        m_server->run(QStringLiteral("cupsaccept"), {Paper});
        click(frmSetList::instance().Command3);
        expectJob(QStringLiteral("Set List For:"), 1, QStringLiteral("Größe"));
        QCOMPARE(m_server->moreJobs(), 0);
    }

    void pagesWaitForAPrinterThatIsStopped() {
        m_server->run(QStringLiteral("cupsdisable"), {Paper});
        world->answers.box(
            QStringLiteral("The printer paper is stopped. The pages wait in its queue, and "
                           "are printed when it is started again."),
            QMessageBox::Warning);
        printSet();
        QCOMPARE(m_server->moreJobs(), 0);
        m_server->run(QStringLiteral("cupsenable"), {Paper});
        expectJob(QStringLiteral("Set List For:"), 1, QStringLiteral("Größe"));
        click(frmSetList::instance().Command3);
        expectJob(QStringLiteral("Set List For:"), 1, QStringLiteral("Größe"));
    }

    void serverThatVanishesWhilePrintingIsTold() {
        m_server->vanishAtNextJob();
        expectFailure();
        printSet();
        QCOMPARE(statusText(), QString());
        QVERIFY(printedFiles().isEmpty());
        // While it is away there is no printer.
        click(frmSetList::instance().Command3);
        QCOMPARE(printedFiles().size(), 1);
        QVERIFY(statusText().startsWith(QLatin1String("No printer found. The pages are in ")));
        m_server->comeBack();
        click(frmSetList::instance().Command3);
        expectJob(QStringLiteral("Set List For:"), 1, QStringLiteral("Größe"));
    }

    void fullTemporaryFolderIsTold() {
        const frmSetList& w = openSet();
        expectFailure();
        {
            const FullDisk disk(0);
            click(w.Command3);
        }
        QCOMPARE(statusText(), QString());
        click(w.Command3);
        expectJob(QStringLiteral("Set List For:"), 1, QStringLiteral("Größe"));
        QCOMPARE(m_server->moreJobs(), 0);
    }

    void printerThatIsGoneLeavesAPdf() {
        printSet();
        expectJob(QStringLiteral("Set List For:"), 1, QStringLiteral("Größe"));
        m_server->run(QStringLiteral("lpadmin"), {QStringLiteral("-x"), Paper});
        click(frmSetList::instance().Command3);
        QCOMPARE(printedFiles().size(), 1);
        QVERIFY2(statusText().endsWith(printedFiles()[0]), qPrintable(statusText()));
        QCOMPARE(m_server->moreJobs(), 0);
    }

private:
    void printsOfSets() {
        frmSetList& w = openSet();
        click(w.Command3);
        expectJob(QStringLiteral("Set List For:"), 1, QStringLiteral("Größe"));
        frmSongCollection& charts = frmSongCollection::instance();
        charts.lblHidFile->setText(
            world->path(QStringLiteral("sheetmusic/Amazing Grace.stp")) + QLatin1Char('|') +
            world->path(QStringLiteral("sheetmusic/Doxology.stp")) + QLatin1Char('|'));
        charts.Show();
        settle();
        click(charts.cmdPrint);
        expectJob(QStringLiteral("Amazing Grace"), 2, QStringLiteral("Doxology"));
        charts.Unload();
        w.Unload();
        click(world->main().cmdPastSets);
        frmPastSets& past = frmPastSets::instance();
        QTest::mouseClick(past.File1->viewport(), Qt::LeftButton, {},
                          past.File1->visualItemRect(past.File1->item(0)).center());
        click(past.cmdPrintPast);
        const QString date = past.fpSetPast->GetText(2, 1);
        QVERIFY(!date.isEmpty());
        expectJob(past.fpSetPast->GetText(1, 1) + QLatin1Char(' ') + date, 1, date);
        past.Unload();
    }

    void printsOfCharts() {
        click(world->main().cmdSheetMusic);
        SheetMusic& w = SheetMusic::instance();
        world->answers.file(world->path(QStringLiteral("sheetmusic/Amazing Grace.stp")));
        w.mnuOpen->trigger();
        settle();
        w.mnuPrint->trigger();
        expectJob(QStringLiteral("Amazing Grace"), 2, QStringLiteral("John Newton"));
        w.mnuTranspose->trigger();
        settle();
        click(frmTranspose::instance().Command3);
        expectJob(QStringLiteral("Amazing Grace"), 2, QStringLiteral("John Newton"));
        frmTranspose::instance().Unload();
        w.Unload();
    }

    void printsOfTheTeam() {
        click(world->main().cmdScheduling);
        frmSchedule& w = frmSchedule::instance();
        typeInCell(w.fpPickDate, 1, 1, QStringLiteral("11/22/26"));
        typeInCell(w.fpPickDate, 2, 1, QStringLiteral("31"));
        click(w.cmdLoadDates);
        click(w.cmdPrintSched);
        w.frmChooseEmail->optEmail[0]->click();
        w.frmChooseEmail->txtFrom->setText(QStringLiteral("11/22/26"));
        w.frmChooseEmail->txtto->setText(QStringLiteral("11/29/26"));
        click(w.frmChooseEmail->cmdSend);
        expectJob(QStringLiteral("Worship Schedule"), 1, QStringLiteral("Page 1 Of 1"));
        click(w.cmdPrintSched);
        w.frmChooseEmail->optEmail[1]->click();
        click(w.frmChooseEmail->cmdSend);
        expectJob(QStringLiteral("Worship Schedule"), 2, QStringLiteral("Page 2 Of 2"));
        click(w.cmdPrintRoster);
        expectJob(QStringLiteral("Worship Schedule"), 1, QStringLiteral("Vacation Days"));
        w.Unload();
    }

    void printsOfReports() {
        world->main().mnuCCLI.trigger();
        settle();
        frmCCLI& w = frmCCLI::instance();
        typeInCell(w.fpDates, 2, 1, QStringLiteral("10/01/26"));
        typeInCell(w.fpDates, 4, 1, QStringLiteral("11/30/26"));
        click(w.cmdShowReport);
        click(w.cmdPrintReport);
        const QString title = QStringLiteral("CCLI Report For Time Period: 10/01/26 to 11/30/26");
        expectJob(title, 2, title);
        w.Unload();
    }
};

LORVANITE_TEST(TestPrinter)
#include "test_printer.moc"
