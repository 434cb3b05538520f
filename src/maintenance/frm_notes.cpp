#include "maintenance/frm_notes.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/grid/sheet_grid_dates.h"
#include "platform/desktop/message_box.h"

namespace {

enum Column { NoteID = 1, NoteDate, NoteText, NoteUntil };

// The calendar's day zero, the date of a new note that has none: it is never due.
const QDate DayZero(1899, 12, 30);

}  // namespace

frmNotes::frmNotes() {
    setupUi(this);
    setUpGrids();
    onEvent(this, fpNotes, &SheetView::Click, &frmNotes::fpNotes_Click);
    onEvent(this, cmdAdd, &QPushButton::clicked, &frmNotes::cmdAdd_Click);
    onEvent(this, cmdDelete, &QPushButton::clicked, &frmNotes::cmdDelete_Click);
    onEvent(this, cmdClr, &QPushButton::clicked, &frmNotes::cmdClr_Click);
    onEvent(this, chkReminder, &QCheckBox::clicked, &frmNotes::chkReminder_Click);
    setDesignSize(size());
    load();
}

void frmNotes::setUpGrids() {
    fpNotes->MaxCols(NoteUntil);
    fpNotes->RowHeadersShow(false);
    fpNotes->GridShowHoriz(false);
    fpNotes->GridShowVert(false);
    fpNotes->SetText(NoteDate, 0, QStringLiteral("Date"));
    fpNotes->SetText(NoteText, 0, QStringLiteral("Note"));
    fpNotes->SetText(NoteUntil, 0, QStringLiteral("Notify Until"));
    fpNotes->ColWidth(NoteDate, 10);
    fpNotes->ColWidth(NoteText, 40);
    fpNotes->ColWidth(NoteUntil, 13);
    fpNotes->setReadOnly(true);
    fpNotes->setFillColumn(NoteText);
    fpNotifyUntil->MaxCols(1);
    fpNotifyUntil->MaxRows(1);
    fpNotifyUntil->ColHeadersShow(false);
    fpNotifyUntil->RowHeadersShow(false);
    setUpDateCells(*fpNotifyUntil, 1, 1);
    fpNotifyUntil->setFillColumn(1);
}

void frmNotes::load() {
    fpNotes->Col(NoteID);
    fpNotes->ColHidden(true);
    loadNotes();
    chkReminder->setChecked(preference(QStringLiteral("NotesOnStartUp")) == QLatin1String("false"));
}

void frmNotes::loadNotes() {
    fpNotes->MaxRows(0);
    Recordset rs = select(QStringLiteral("SELECT * FROM notes"));
    for (int row = 1; !rs.EOF_(); rs.MoveNext(), ++row) {
        fpNotes->MaxRows(row);
        fpNotes->SetText(NoteID, row, rs.Fields("ID"));
        fpNotes->SetText(NoteDate, row, rs.Fields("post_date"));
        fpNotes->SetText(NoteText, row, rs.Fields("notes"));
        fpNotes->SetText(NoteUntil, row, rs.Fields("notify_date"));
    }
    rs.Close();
    clearEditor();
}

void frmNotes::clearEditor() {
    txtNote->clear();
    chkNotify->setChecked(false);
    fpNotifyUntil->SetText(1, 1, QString());
    hidID->clear();
}

void frmNotes::fpNotes_Click(int col, int row) {
    if (row == 0) {
        fpNotes->SortByHead(col);
        return;
    }
    clearEditor();
    hidID->setText(fpNotes->GetText(NoteID, row));
    txtNote->setPlainText(fpNotes->GetText(NoteText, row));
    const QString date = fpNotes->GetText(NoteUntil, row);
    if (date.isEmpty()) return;
    chkNotify->setChecked(true);
    fpNotifyUntil->SetText(1, 1, date);
}

void frmNotes::cmdAdd_Click() {
    QString note = txtNote->toPlainText();
    note.remove(QLatin1Char('\''));
    QString date;
    if (chkNotify->isChecked() && !fpNotifyUntil->GetText(1, 1, date)) {
        messageBox(QStringLiteral("Please enter the date (mm/dd/yy) to be notified until."),
                   BoxIcon::Information);
        return;
    }
    if (hidID->text().isEmpty())
        addNote(note, date);
    else
        updateNote(note, date);
    loadNotes();
}

void frmNotes::addNote(const QString& note, const QString& date) {
    const QString until = date.isEmpty() ? formatDate(DayZero) : formatDate(date);
    execute(QStringLiteral("INSERT INTO notes (post_date, notes, notify_date) VALUES ('") +
            formatDate(today()) + QStringLiteral("', '") + note + QStringLiteral("', '") + until +
            QStringLiteral("')"));
}

void frmNotes::updateNote(const QString& note, const QString& date) {
    // The note's own date moves to today, and no date is the empty text here: this is meant.
    execute(QStringLiteral("UPDATE notes SET post_date = '") + formatDate(today()) +
            QStringLiteral("', notes = '") + note + QStringLiteral("', notify_date = '") + date +
            QStringLiteral("' WHERE ID = ") + hidID->text());
}

void frmNotes::cmdDelete_Click() {
    const int row = fpNotes->ActiveRow();
    const QString id = row < 1 ? QString() : fpNotes->GetText(NoteID, row);
    if (id.isEmpty()) {
        messageBox(QStringLiteral("Select a note to delete first."), BoxIcon::Information);
        return;
    }
    execute(QStringLiteral("DELETE FROM notes WHERE id = ") + id);
    loadNotes();
}

void frmNotes::cmdClr_Click() { clearEditor(); }

void frmNotes::chkReminder_Click() {
    const QString wanted =
        chkReminder->isChecked() ? QStringLiteral("false") : QStringLiteral("true");
    storePreference(QStringLiteral("NotesOnStartUp"), wanted);
}
