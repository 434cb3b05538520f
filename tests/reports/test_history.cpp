// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The songs played in a year, and the months in which one was played.
#include "catalogue/frm_song_admin.h"
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "reports/frm_history.h"
#include "reports/report_test.h"

#include <QAccessible>
#include <QSignalSpy>

namespace {

const QString SongsStatement = QStringLiteral("Select id, title FROM songs ORDER BY title [1]");

QString datesOf(const QString& id) {
    return QStringLiteral("SELECT played_date FROM played_on WHERE songID = %1 [1]").arg(id);
}

}  // namespace

class TestHistory : public ReportTest {
    Q_OBJECT

    // The columns of fpH.
    static constexpr int SongID = HistoryColumn::SongID;
    static constexpr int SongName = HistoryColumn::SongName;
    static constexpr int TimesPlayed = HistoryColumn::TimesPlayed;

    frmHistory& open() {
        world->start();
        world->statements.clear();
        click(world->main().cmdHistory);
        return frmHistory::instance();
    }

    // The heights of the bars in performances, January first.
    QList<int> counts() {
        QList<int> list;
        for (const HistoryBar* bar : frmHistory::instance().bar) list.append(bar->height() / 15);
        return list;
    }

    void expectAllBarsEndAt(int bottom) {
        for (const HistoryBar* bar : frmHistory::instance().bar)
            QCOMPARE(bar->y() + bar->height(), bottom);
    }

    static QList<int> none() { return QList<int>(12, 0); }

private Q_SLOTS:
    void yearWithoutPerformancesGivesAnEmptyListWithTheTwoHeads() {
        addSong("A", {"11/02/25"});
        frmHistory& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("Song Play History"));
        QCOMPARE(w.fpH->MaxRows(), 0);
        QCOMPARE(w.fpH->GetText(SongName, 0), QStringLiteral("Song Name"));
        QCOMPARE(w.fpH->GetText(TimesPlayed, 0), QStringLiteral("# Times Played"));
        w.fpH->Col(SongID);
        QVERIFY(w.fpH->ColHidden());
        QCOMPARE(counts(), none());
        expectAllBarsEndAt(195);
    }

    void titleOfTheChartIsPlainTextOfAnyLength() {
        addSong("<b>Bold</b> & more", {"11/01/26"});
        addSong(QString(200, QLatin1Char('W')), {"11/01/26"});
        frmHistory& w = open();
        const QRect before = w.parentWidget()->geometry();
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(w.lblSongTit->textFormat(), Qt::PlainText);
        QCOMPARE(w.lblSongTit->shownText(), QStringLiteral("<b>Bold</b> & more For 2026"));
        clickCell(w.fpH, SongName, 2);
        QVERIFY(w.lblSongTit->shownText().endsWith(QStringLiteral("W For 2026")));
        QVERIFY(w.lblSongTit->shownText().size() < w.lblSongTit->text().size());
        QCOMPARE(w.parentWidget()->geometry(), before);
    }

    void yearsAreOfferedFromOneBackToEightAhead() {
        // Deliberate: behaviour 151.
        addSong("A", {"11/02/09"});
        frmHistory& w = open();
        QStringList years;
        for (int i = 0; i < w.cmbYear->count(); ++i) years.append(w.cmbYear->itemText(i));
        QCOMPARE(years, (QStringList{"2025", "2026", "2027", "2028", "2029", "2030", "2031", "2032",
                                     "2033", "2034"}));
        QCOMPARE(w.cmbYear->currentText(), QStringLiteral("2026"));
    }

    void songsOfTheYearAreListedByTitleWithTheirCounts() {
        // Deliberate: behaviour 153. "Bread" was played twice on one day.
        const QString b = addSong("Bread", {"01/04/26", "01/04/26", "03/01/26", "03/01/25"});
        const QString none = addSong("Never");
        const QString a = addSong("abide \u00e4", {"12/27/26"});
        const QString old = addSong("Old", {"12/31/25"});
        frmHistory& w = open();
        QCOMPARE(world->statements, (QStringList{SongsStatement, datesOf(a), datesOf(b),
                                                 datesOf(none), datesOf(old)}));
        QCOMPARE(columnOf(w.fpH, SongID), (QStringList{a, b}));
        QCOMPARE(columnOf(w.fpH, SongName), (QStringList{"abide \u00e4", "Bread"}));
        QCOMPARE(columnOf(w.fpH, TimesPlayed), (QStringList{"1", "3"}));
        QCOMPARE(world->main().SB->SimpleText(), QStringLiteral("Loading.... 100% Complete"));
    }

    void onlyTheTwoDigitsOfTheYearCount() {
        // Deliberate: behaviour 150.
        addSong("Century", {"03/01/26", "03/01/1926", "3/1/26", "26", "", "xxxxxx26yy"});
        frmHistory& w = open();
        QCOMPARE(columnOf(w.fpH, TimesPlayed), QStringList{"2"});
        w.cmbYear->setCurrentText(QStringLiteral("2025"));
        click(w.cmdLoadYear);
        QCOMPARE(w.fpH->MaxRows(), 0);
    }

    void selectedYearIsLoadedOnlyByTheButton() {
        // Deliberate: behaviour 151.
        addSong("A", {"11/02/25"});
        addSong("B", {"11/02/26"});
        frmHistory& w = open();
        world->statements.clear();
        w.cmbYear->setFocus();
        QTest::keyClick(w.cmbYear, Qt::Key_Up);
        settle();
        QCOMPARE(w.cmbYear->currentText(), QStringLiteral("2025"));
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(columnOf(w.fpH, SongName), QStringList{"B"});
        click(w.cmdLoadYear);
        QCOMPARE(columnOf(w.fpH, SongName), QStringList{"A"});
    }

    void statusBarShowsTheProgress() {
        for (const char* title : {"A", "B", "C"}) addSong(QLatin1String(title));
        world->start();
        QStringList seen;
        dbConn.onStatement([&](const QString&, CursorType, LockType) {
            seen.append(world->main().SB->SimpleText());
        });
        click(world->main().cmdHistory);
        QCOMPARE(seen.mid(2),
                 (QStringList{"Loading.... 33% Complete", "Loading.... 67% Complete"}));
        QCOMPARE(world->main().SB->SimpleText(), QStringLiteral("Loading.... 100% Complete"));
    }

    void emptyCatalogueShowsNoPercentage() {
        const frmHistory& w = open();
        QCOMPARE(world->statements, QStringList{SongsStatement});
        QCOMPARE(w.fpH->MaxRows(), 0);
        QCOMPARE(world->main().SB->SimpleText(), QString());
    }

    void performancesOfADeletedSongAreNotListed() {
        const QString kept = addSong("Kept", {"01/04/26"});
        const QString lost = addSong("Lost", {"01/04/26", "02/01/26"});
        world->start();
        click(world->main().cmdSongMgmt);
        clickCell(frmSongAdmin::instance().fpSongList2, 2, 2);
        click(frmSongAdmin::instance().cmdDel);
        frmSongAdmin::instance().Unload();
        // Performances belong to an ID, which is never given to another song.
        const QString later = addSong("Lost");
        QVERIFY(later != lost);
        click(world->main().cmdHistory);
        const frmHistory& w = frmHistory::instance();
        QCOMPARE(world->rows("SELECT songID, count(*) FROM played_on GROUP BY songID"),
                 (QStringList{kept + "|1", lost + "|2"}));
        QCOMPARE(columnOf(w.fpH, SongName), QStringList{"Kept"});
        QCOMPARE(columnOf(w.fpH, TimesPlayed), QStringList{"1"});
        QCOMPARE(world->main().SB->SimpleText(), QStringLiteral("Loading.... 100% Complete"));
    }

    void songWithADateInEachMonthHasTwelveBarsOfOneStep() {
        QStringList dates;
        for (int month = 1; month <= 12; ++month) dates.append(formatDate(QDate(2026, month, 15)));
        const QString id = addSong("Monthly", dates);
        frmHistory& w = open();
        world->statements.clear();
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(world->statements,
                 QStringList{QStringLiteral("SELECT played_date FROM played_on WHERE songID = %1 "
                                            "ORDER BY played_date [1]")
                                 .arg(id)});
        QCOMPARE(w.lblSongTit->text(), QStringLiteral("Monthly For 2026"));
        constexpr int lefts[] = {390,  1140, 1875, 2610, 3330, 4050,
                                 4785, 5520, 6255, 6975, 7695, 8430};
        for (size_t i = 0; i < 12; ++i)
            QCOMPARE(w.bar[i]->geometry(), QRect(lefts[i] / 15, 204 - 15, 44, 15));
    }

    void chartShowsEveryYearUnderTheTitleOfOne() {
        // Deliberate: behaviour 152.
        addSong("Lent", {"03/03/02", "03/02/03", "05/05/26"});
        frmHistory& w = open();
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(w.lblSongTit->text(), QStringLiteral("Lent For 2026"));
        QCOMPARE(counts(), (QList<int>{0, 0, 2, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
        expectAllBarsEndAt(204);
    }

    void barShowsItsCountAsToolTipAndName() {
        addSong("Lent", {"03/03/26", "03/10/26"});
        frmHistory& w = open();
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(w.bar[2]->toolTip(), QStringLiteral("March: 2"));
        const QAccessibleInterface* march = QAccessible::queryAccessibleInterface(w.bar[2]);
        QCOMPARE(march->text(QAccessible::Name), QStringLiteral("March: 2"));
        click(w.cmdLoadYear);
        QCOMPARE(w.bar[2]->toolTip(), QString());
    }

    void barsAreRedAndTheBackdropNamesTheMonths() {
        addSong("Lent", {"03/03/26", "03/10/26"});
        frmHistory& w = open();
        clickCell(w.fpH, SongName, 1);
        const QImage shot = w.grab().toImage();
        QCOMPARE(shot.pixelColor(w.bar[2]->geometry().center()), QColor(255, 0, 0));
        QCOMPARE(shot.pixelColor(w.bar[3]->geometry().left() + 10, 190),
                 w.palette().color(QPalette::Window));
        int inked = 0;
        for (int x = 0; x < 44; ++x)
            for (int y = 206; y < 228; ++y)
                inked +=
                    shot.pixelColor(w.bar[3]->x() + x, y) != w.palette().color(QPalette::Window);
        QVERIFY(inked > 20);
    }

    void manyPerformancesReachAboveTheBackdrop() {
        // Deliberate: behaviour 152.
        addSong("Often", QStringList(20, "06/07/26"));
        frmHistory& w = open();
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(w.bar[5]->geometry(), QRect(4050 / 15, 204 - 300, 44, 300));
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(w.bar[5]->height(), 300);
    }

    void loadingResetsTheBarsAndKeepsTheTitle() {
        // Deliberate: behaviour 154.
        addSong("Lent", {"03/03/26"});
        frmHistory& w = open();
        clickCell(w.fpH, SongName, 1);
        click(w.cmdLoadYear);
        QCOMPARE(counts(), none());
        expectAllBarsEndAt(195);
        QCOMPARE(w.lblSongTit->text(), QStringLiteral("Lent For 2026"));
    }

    void clickBelowTheSongsShowsEmptyBars() {
        addSong("Lent", {"03/03/26"});
        frmHistory& w = open();
        clickCell(w.fpH, SongName, 1);
        world->statements.clear();
        QWidget* list = w.fpH->viewport();
        QVERIFY(w.fpH->rowAt(list->height() - 4) < 0);
        QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(list->width() / 2, list->height() - 4));
        settle();
        QCOMPARE(w.lblSongTit->text(), QStringLiteral(" For 2026"));
        QCOMPARE(counts(), none());
        QVERIFY(world->statements.isEmpty());
    }

    void titleOfTheChartIsPlainText() {
        addSong("<b>Lent</b>", {"03/03/26"});
        frmHistory& w = open();
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(w.lblSongTit->text(), QStringLiteral("<b>Lent</b> For 2026"));
        QCOMPARE(w.lblSongTit->textFormat(), Qt::PlainText);
    }

    void headClickSortsAndChartsNothing() {
        addSong("A", {"03/03/26"});
        addSong("B", QStringList(10, "03/03/26"));
        addSong("C", {"03/03/26", "03/04/26"});
        frmHistory& w = open();
        world->statements.clear();
        clickCell(w.fpH, TimesPlayed, 0);
        QCOMPARE(columnOf(w.fpH, SongName), (QStringList{"A", "C", "B"}));
        clickCell(w.fpH, TimesPlayed, 0);
        QCOMPARE(columnOf(w.fpH, SongName), (QStringList{"B", "C", "A"}));
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(w.lblSongTit->text(), QString());
    }

    void invalidDateEndsTheCommandWithEmptyBars() {
        addSong("Odd", {"03/03/26", "13/45/26"});
        frmHistory& w = open();
        QCOMPARE(columnOf(w.fpH, TimesPlayed), QStringList{"2"});
        world->answers.runTimeError(RunTimeError::TypeMismatch);
        clickCell(w.fpH, SongName, 1);
        QCOMPARE(world->endStatus, -1);
        QCOMPARE(counts(), none());
        QCOMPARE(w.lblSongTit->text(), QStringLiteral("Odd For 2026"));
    }

    void failingStatementEndsTheCommandWithTheRowsSoFar() {
        addSong("A", {"03/03/26"});
        addSong("B", {"03/03/26"});
        const frmHistory& w = open();
        makeReadingFail("2");
        world->answers.runTimeError(RunTimeError::StatementRefused, "integer overflow");
        click(w.cmdLoadYear);
        QCOMPARE(columnOf(w.fpH, SongName), QStringList{"A"});
        QCOMPARE(world->endStatus, -1);
        QVERIFY(!QApplication::overrideCursor());
    }

    void pointerIsAnHourglassWhileAYearLoads() {
        addSong("A");
        world->start();
        QList<bool> waiting;
        dbConn.onStatement([&](const QString&, CursorType, LockType) {
            waiting.append(QApplication::overrideCursor() != nullptr);
        });
        click(world->main().cmdHistory);
        click(frmHistory::instance().cmdLoadYear);
        QCOMPARE(waiting, (QList<bool>{true, true, true, true}));
        QVERIFY(!QApplication::overrideCursor());
    }
};

LORVANITE_TEST(TestHistory)
#include "test_history.moc"
