// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the tests of the schedule's output share.
#pragma once

#include "mail/frm_email.h"
#include "support/files.h"
#include "support/printed.h"
#include "team/schedule_test.h"

#include <QFile>

class ScheduleOutputTest : public ScheduleTest {
    Q_OBJECT

protected:
    inline static const QString WrongDate =
        QStringLiteral("Wrong date formatting.  Please enter a valid date.");
    inline static const QStringList ThreeWeeks{"11/22/26", "11/29/26", "12/06/26"};

    static bool isHourglass() {
        const QCursor* cursor = QApplication::overrideCursor();
        return cursor && cursor->shape() == Qt::WaitCursor;
    }

    // Three weeks, with a note, a song and a person in each.
    frmSchedule& showThreeWeeks() {
        addTheLeast();
        frmSchedule& w = showWeeks(ThreeWeeks);
        for (int week = 0; week < 3; ++week) {
            const int row = dateRowOf(week + 1);
            const QString number = QString::number(week + 1);
            w.fpSchedule->SetText(ScheduleColumn::Notes, row, "Note " + number);
            w.fpSchedule->SetText(ScheduleColumn::Songs, row + 2, "Song " + number);
            w.fpSchedule->SetText(ScheduleColumn::Team, row + 14, "Piano:Player " + number);
        }
        paintHead(w, headRowOf(1));
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

    // Opens the panel with a button and selects the whole schedule, or a range.
    void choose(frmSchedule& w, QPushButton* opener, const QStringList& range = {}) {
        click(opener);
        QVERIFY(w.frmChooseEmail->isVisible());
        toggle(w.frmChooseEmail->optEmail[range.isEmpty() ? 1 : 0]);
        if (range.isEmpty()) return;
        for (int i = 0; i < 2; ++i) {
            QLineEdit* box = i == 0 ? w.frmChooseEmail->txtFrom : w.frmChooseEmail->txtto;
            box->setFocus();
            box->selectAll();
            QTest::keyClick(box, Qt::Key_Delete);
            QTest::keyClicks(box, range[i]);
        }
    }

    void mail(frmSchedule& w, const QStringList& range = {}) {
        choose(w, w.cmdEmailSchedule, range);
        click(w.frmChooseEmail->cmdSend);
    }

    QStringList print(frmSchedule& w, const PrintedFile& file, const QStringList& range = {}) {
        choose(w, w.cmdPrintSched, range);
        click(w.frmChooseEmail->cmdSend);
        return printedPages(file.path);
    }

    QString scratch() const { return world->path("config/temp.scd"); }

    QByteArray savedForm(const frmSchedule& w) const {
        const QString path = world->path("look.scd");
        if (!w.fpSchedule->SaveToFile(path, false)) QTest::qFail("not saved", __FILE__, __LINE__);
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

    // What a completed command leaves behind.
    void compareRestored(const frmSchedule& w, const QByteArray& before) {
        QVERIFY(savedForm(w) == before);
        QVERIFY(w.fpSchedule->isVisible());
        QVERIFY(!w.frmChooseEmail->isVisible());
        QVERIFY(!QFile::exists(scratch()));
        QVERIFY(!isHourglass());
    }

    static QString body() { return frmEmail::instance().txtMsg->toPlainText(); }
};
