// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Notes and their reminders.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "maintenance/frm_notes.h"
#include "maintenance/rules/notes.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

namespace {

const QString NotesStatement = QStringLiteral("SELECT * FROM notes [1]");
const QString SettingStatement =
    QStringLiteral("SELECT * FROM prefs WHERE var_name = 'NotesOnStartUp' [1]");
const QString AllNotes = QStringLiteral("SELECT post_date, notes, notify_date FROM notes");

}  // namespace

class TestNotes : public WindowTest {
    Q_OBJECT

    void addRow(const QString& posted, const QString& note, const QString& until) {
        world->sql(QStringLiteral("INSERT INTO notes (post_date, notes, notify_date) "
                                  "VALUES ('%1', '%2', '%3')")
                       .arg(posted, note, until));
    }

    frmNotes& open() {
        if (!world->isRunning()) world->start();
        click(world->main().Command1);
        world->statements.clear();
        return frmNotes::instance();
    }

    void type(const QString& note) {
        frmNotes& w = frmNotes::instance();
        w.txtNote->setFocus();
        QTest::keyClicks(w.txtNote, note);
    }

    void typeDate(const QString& date) {
        typeInCell(frmNotes::instance().fpNotifyUntil, NotifyUntilCell::Column,
                   NotifyUntilCell::Row, date);
    }

    void expectEmptyEditor() {
        const frmNotes& w = frmNotes::instance();
        QCOMPARE(w.txtNote->toPlainText(), QString());
        QVERIFY(!w.chkNotify->isChecked());
        QCOMPARE(w.fpNotifyUntil->GetText(NotifyUntilCell::Column, NotifyUntilCell::Row),
                 QString());
        QCOMPARE(w.hidID->text(), QString());
    }

private Q_SLOTS:
    void notesAreListedInTheOrderOfTheTable() {
        addRow("11/02/26", "Zeta", "12/30/99");
        addRow("11/01/26", "Orgel f\u00fcr Weihnachten stimmen \u2013 \u20ac", "11/20/26");
        world->start();
        world->statements.clear();
        click(world->main().Command1);
        frmNotes& w = frmNotes::instance();
        QCOMPARE(world->statements, (QStringList{NotesStatement, SettingStatement}));
        QCOMPARE(w.windowTitle(), QStringLiteral("Notes"));
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::ID), (QStringList{"1", "2"}));
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Date), (QStringList{"11/02/26", "11/01/26"}));
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Note),
                 (QStringList{"Zeta", "Orgel f\u00fcr Weihnachten stimmen \u2013 \u20ac"}));
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::NotifyUntil),
                 (QStringList{"12/30/99", "11/20/26"}));
        for (const auto& [col, head] : {std::pair(int(NoteColumn::Date), "Date"),
                                        {NoteColumn::Note, "Note"},
                                        {NoteColumn::NotifyUntil, "Notify Until"}})
            QCOMPARE(w.fpNotes->GetText(col, 0), QLatin1String(head));
        w.fpNotes->Col(NoteColumn::ID);
        QVERIFY(w.fpNotes->ColHidden());
        QVERIFY(!w.hidID->isVisible());
        expectEmptyEditor();
    }

    void missingNotifyDateIsReportedAndNothingIsStored() {
        frmNotes& w = open();
        type("Tune the piano");
        click(w.chkNotify);
        world->answers.box("Please enter the date (mm/dd/yy) to be notified until.",
                           QMessageBox::Information);
        click(w.cmdAdd);
        QVERIFY(world->statements.isEmpty());
        QVERIFY(world->rows(AllNotes).isEmpty());
        QCOMPARE(w.txtNote->toPlainText(), QStringLiteral("Tune the piano"));
    }

    void newNoteIsStoredWithTodayAndItsDate() {
        frmNotes& w = open();
        type("Tune the piano");
        click(w.chkNotify);
        typeDate("12/4/26");
        click(w.cmdAdd);
        QCOMPARE(world->statements,
                 (QStringList{"INSERT INTO notes (post_date, notes, notify_date) VALUES "
                              "('11/21/26', 'Tune the piano', '12/04/26') [3]",
                              NotesStatement}));
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Note), QStringList{"Tune the piano"});
        expectEmptyEditor();
    }

    void hardBlankIsStored() {
        frmNotes& w = open();
        w.txtNote->setPlainText(QStringLiteral("10\u00a0Uhr\nChor"));
        click(w.cmdAdd);
        QCOMPARE(world->rows("SELECT notes FROM notes"),
                 QStringList{QStringLiteral("10\u00a0Uhr\nChor")});
    }

    void apostrophesAreRemovedOnSaving() {
        // Deliberate: behaviour 193.
        frmNotes& w = open();
        type("Don't forget the kids' choir");
        click(w.cmdAdd);
        click(w.cmdAdd);
        QCOMPARE(world->rows(AllNotes), (QStringList{"11/21/26|Dont forget the kids choir|12/30/99",
                                                     "11/21/26||12/30/99"}));
    }

    void newNoteWithoutADateIsNeverDue() {
        // Deliberate: behaviour 190.
        open();
        type("Some day");
        click(frmNotes::instance().cmdAdd);
        QCOMPARE(world->statements.value(0),
                 QStringLiteral("INSERT INTO notes (post_date, notes, notify_date) VALUES "
                                "('11/21/26', 'Some day', '12/30/99') [3]"));
        world->stop();
        world->start();
        QVERIFY(world->main().isVisible());
    }

    void noteIsShownAtTheStartUntilTheDayBeforeItsDate() {
        // Deliberate: behaviour 192.
        frmNotes& w = open();
        type("Choir robes");
        click(w.chkNotify);
        typeDate("11/23/26");
        click(w.cmdAdd);
        world->stop();
        setToday(QDate(2026, 11, 22));
        world->answers.box("Choir robes\r", QMessageBox::Information, "Reminder Notes");
        world->start();
        world->stop();
        setToday(QDate(2026, 11, 23));
        world->start();
        QVERIFY(world->answers.isEmpty());
    }

    void clickedNoteIsShownInTheEditor() {
        addRow("11/01/26", "First", "11/10/26");
        addRow("11/02/26", "Second", "");
        frmNotes& w = open();
        clickCell(w.fpNotes, NoteColumn::Note, 1);
        QCOMPARE(w.hidID->text(), QStringLiteral("1"));
        QCOMPARE(w.txtNote->toPlainText(), QStringLiteral("First"));
        QVERIFY(w.chkNotify->isChecked());
        QCOMPARE(w.fpNotifyUntil->GetText(NotifyUntilCell::Column, NotifyUntilCell::Row),
                 QStringLiteral("11/10/26"));
        clickCell(w.fpNotes, NoteColumn::Date, 2);
        QCOMPARE(w.hidID->text(), QStringLiteral("2"));
        QCOMPARE(w.txtNote->toPlainText(), QStringLiteral("Second"));
        QVERIFY(!w.chkNotify->isChecked());
        QCOMPARE(w.fpNotifyUntil->GetText(NotifyUntilCell::Column, NotifyUntilCell::Row),
                 QString());
        QVERIFY(world->statements.isEmpty());
    }

    void invalidDateClearsTheDateOfTheNoteBefore() {
        addRow("11/01/26", "First", "11/10/26");
        addRow("11/02/26", "Second", "soon");
        frmNotes& w = open();
        clickCell(w.fpNotes, NoteColumn::Note, 1);
        clickCell(w.fpNotes, NoteColumn::Note, 2);
        QVERIFY(w.chkNotify->isChecked());
        QCOMPARE(w.fpNotifyUntil->GetText(NotifyUntilCell::Column, NotifyUntilCell::Row),
                 QString());
    }

    void updateChangesTheDateOfTheNoteToToday() {
        // Deliberate: behaviour 191.
        addRow("01/05/26", "Old words", "11/10/26");
        addRow("01/06/26", "Other", "11/10/26");
        frmNotes& w = open();
        clickCell(w.fpNotes, NoteColumn::Note, 1);
        w.txtNote->selectAll();
        type("New words");
        typeDate("12/25/26");
        click(w.cmdAdd);
        QCOMPARE(world->statements,
                 (QStringList{"UPDATE notes SET post_date = '11/21/26', notes = 'New words', "
                              "notify_date = '12/25/26' WHERE ID = 1 [3]",
                              NotesStatement}));
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Date), (QStringList{"11/21/26", "01/06/26"}));
        expectEmptyEditor();
    }

    void updateWithoutNotifyStoresAnEmptyDateThatTheStartSkips() {
        // Deliberate: behaviour 191.
        addRow("01/05/26", "Words", "12/24/26");
        addRow("01/05/26", "Due", "12/24/26");
        world->answers.box("Words\rDue\r", QMessageBox::Information, "Reminder Notes");
        frmNotes& w = open();
        clickCell(w.fpNotes, NoteColumn::Note, 1);
        click(w.chkNotify);
        click(w.cmdAdd);
        QCOMPARE(world->rows(AllNotes), (QStringList{"11/21/26|Words|", "01/05/26|Due|12/24/26"}));
        world->stop();
        world->answers.box("Due\r", QMessageBox::Information, "Reminder Notes");
        world->start();
    }

    void clearEmptiesTheEditorAndTheNextNoteIsNew() {
        addRow("01/05/26", "Words", "12/24/26");
        world->answers.box("Words\r", QMessageBox::Information, "Reminder Notes");
        frmNotes& w = open();
        clickCell(w.fpNotes, NoteColumn::Note, 1);
        click(w.cmdClr);
        expectEmptyEditor();
        type("New");
        click(w.cmdAdd);
        QCOMPARE(w.fpNotes->MaxRows(), 2);
    }

    void selectedNoteIsDeletedWithoutAQuestion() {
        // Deliberate: behaviour 194.
        addRow("01/05/26", "One", "");
        addRow("01/05/26", "Two", "");
        addRow("01/05/26", "Three", "");
        frmNotes& w = open();
        clickCell(w.fpNotes, NoteColumn::Note, 2);
        click(w.cmdDelete);
        QCOMPARE(world->statements,
                 (QStringList{"DELETE FROM notes WHERE id = 2 [3]", NotesStatement}));
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Note), (QStringList{"One", "Three"}));
        expectEmptyEditor();
    }

    void deletingWithoutASelectedNoteIsReported() {
        addRow("01/05/26", "One", "");
        addRow("01/05/26", "Two", "");
        const QString message = QStringLiteral("Select a note to delete first.");
        frmNotes& w = open();
        world->answers.box(message, QMessageBox::Information);
        click(w.cmdDelete);
        clickCell(w.fpNotes, NoteColumn::Note, 1);
        click(w.cmdDelete);
        world->answers.box(message, QMessageBox::Information);
        click(w.cmdDelete);
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Note), QStringList{"Two"});
    }

    void clickOnAHeadSortsAndReversesTheOrder() {
        addRow("01/05/26", "beta", "");
        addRow("01/07/26", "Alpha", "");
        addRow("01/06/26", "gamma", "");
        frmNotes& w = open();
        clickCell(w.fpNotes, NoteColumn::Note, 0);
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Note), (QStringList{"Alpha", "beta", "gamma"}));
        clickCell(w.fpNotes, NoteColumn::Note, 0);
        QCOMPARE(columnOf(w.fpNotes, NoteColumn::Note), (QStringList{"gamma", "beta", "Alpha"}));
        expectEmptyEditor();
    }

    void reminderBoxShowsAndStoresTheSetting() {
        world->sql("UPDATE prefs SET var_value = 'false' WHERE var_name = 'NotesOnStartUp'");
        frmNotes& w = open();
        QVERIFY(w.chkReminder->isChecked());
        click(w.chkReminder);
        w.chkReminder->setFocus();
        QTest::keyClick(w.chkReminder, Qt::Key_Space);
        QCOMPARE(
            world->statements,
            (QStringList{
                "UPDATE prefs SET var_value = 'true' WHERE var_name = 'NotesOnStartUp' [3]",
                "UPDATE prefs SET var_value = 'false' WHERE var_name = 'NotesOnStartUp' [3]"}));
    }

    void turnedOffRemindersAreNotShownAtTheNextStart() {
        addRow("01/05/26", "Due", "12/24/26");
        world->answers.box("Due\r", QMessageBox::Information, "Reminder Notes");
        frmNotes& w = open();
        QVERIFY(!w.chkReminder->isChecked());
        click(w.chkReminder);
        world->stop();
        world->start();
        world->stop();
        QVERIFY(world->answers.isEmpty());
    }

    void longNotesAndManyNotesAreKept() {
        world->sql(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
            "INSERT INTO notes (post_date, notes, notify_date) "
            "SELECT '01/05/26', 'Note ' || i, '' FROM n");
        frmNotes& w = open();
        QCOMPARE(w.fpNotes->MaxRows(), 5000);
        const QString text = QStringLiteral("\u00c4 \u4e2d \"%1\\ \n").repeated(20000);
        w.txtNote->setPlainText(text);
        click(w.cmdAdd);
        QCOMPARE(w.fpNotes->GetText(NoteColumn::Note, 5001), text);
    }

    void failingStatementEndsTheProgram() {
        frmNotes& w = open();
        world->sql("DROP TABLE notes");
        world->answers.runTimeError(RunTimeError::StatementRefused, "no such table: notes");
        click(w.cmdAdd);
        QCOMPARE(world->endStatus, 1);
    }

    void missingSettingEndsTheProgram() {
        world->sql("DELETE FROM prefs WHERE var_name = 'NotesOnStartUp'");
        world->start();
        world->answers.runTimeError(RunTimeError::NoCurrentRecord);
        click(world->main().Command1);
        QCOMPARE(world->endStatus, 1);
    }
};

LORVANITE_TEST(TestNotes)
#include "test_notes.moc"
