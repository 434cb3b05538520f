// The people: picking, showing, storing and deleting a person's record.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "platform/desktop/message_box.h"
#include "team/frm_schedule.h"

#include <array>

namespace {

// A column of the table and the row of fpPerson that shows it.
struct PersonField {
    const char* column;
    int row;
};

// In the order in which they are stored; rows 6 and 11 are spacers and never read.
constexpr std::array<PersonField, 12> Fields{{{"fName", 1},
                                              {"lName", 2},
                                              {"role", 3},
                                              {"role2", 4},
                                              {"role3", 5},
                                              {"address", 7},
                                              {"city", 8},
                                              {"state", 9},
                                              {"zip", 10},
                                              {"phone", 12},
                                              {"cell", 13},
                                              {"email", 14}}};
constexpr int FirstNameField = 0;
constexpr int LastNameField = 1;
constexpr int RoleField = 2;

constexpr int VacationCols = 3;
constexpr int VacationRows = 12;

QString fullName(const QString& first, const QString& last) {
    return first + QLatin1Char(' ') + last;
}

}  // namespace

void frmSchedule::loadPersonnelList() {
    cmbPersonell->clear();
    Recordset rs =
        select(QStringLiteral("SELECT ID, fName, lName, role FROM personell ORDER BY lName"));
    for (; !rs.EOF_(); rs.MoveNext())
        cmbPersonell->addItem(fullName(rs.Fields("fName"), rs.Fields("lName")),
                              toLong(rs.Fields("ID")));
    rs.Close();
    selectShownPerson();
}

// The box follows the panel: the shown person's name, or nothing.
void frmSchedule::selectShownPerson() {
    const QString id = lblHidPersonID->text();
    cmbPersonell->setCurrentIndex(id.isEmpty() ? -1 : cmbPersonell->findData(toLong(id)));
}

void frmSchedule::showPerson(int id) {
    // Rows 13 and 14 are written below and not emptied here: this is meant.
    fpPerson->ClearRange(1, 1, 1, 12, true);
    fpVacation->ClearRange(1, 1, VacationCols, VacationRows, true);
    Recordset rs =
        select(QStringLiteral("SELECT * FROM personell WHERE ID = ") + QString::number(id));
    if (rs.EOF_()) return;
    for (const PersonField& field : Fields)
        fpPerson->SetText(1, field.row, rs.Fields(field.column));
    chkExclude->setChecked(rs.Fields("excludeScheduling") == QLatin1String("1"));
    const QString vacation = rs.Fields("vDays");
    rs.Close();
    const QStringList dates = vacation.isEmpty() ? QStringList() : vacation.split(QLatin1Char(':'));
    // Down three rows and on to the next column, unlike the way the dates are read: dates behind
    // the ninth have no place and show nowhere. This is meant.
    int k = -1;
    for (int i = 1; i <= VacationRows; ++i) {
        for (int j = 1; j <= VacationCols; ++j) {
            if (++k < dates.size()) fpVacation->SetText(i, j, formatDate(toDate(dates[k])));
        }
    }
    lblHidPersonID->setText(QString::number(id));
    selectShownPerson();
}

void frmSchedule::stripApostrophes(const QString& text) {
    for (const QChar c : text)
        if (c != QLatin1Char('\'')) cleaned += c;
}

void frmSchedule::cmbPersonell_Click(int item) { showPerson(cmbPersonell->itemData(item).toInt()); }

QStringList frmSchedule::readFields() {
    QStringList values;
    for (const PersonField& field : Fields) {
        cleaned = QString();
        stripApostrophes(fpPerson->GetText(1, field.row));
        values.append(cleaned);
    }
    return values;
}

QString frmSchedule::readVacation() {
    QStringList dates;
    for (int col = 1; col <= VacationCols; ++col) {
        for (int row = 1; row <= VacationRows; ++row) {
            const QString date = fpVacation->GetText(col, row);
            if (!date.isEmpty()) dates.append(date);
        }
    }
    return dates.join(QLatin1Char(':'));
}

// The values stand in the order of Fields, with the vacation and the exclude flag behind them.
void frmSchedule::storePerson(const QStringList& values) {
    if (lblHidPersonID->text().isEmpty()) {
        execute(
            QStringLiteral(
                "INSERT INTO personell (fName, lName, role, role2, role3, address, city, state, "
                "zip, phone, cell, email, vDays, excludeScheduling) VALUES ('") +
            values.join(QStringLiteral("', '")) + QStringLiteral("')"));
        return;
    }
    execute(QStringLiteral("UPDATE personell SET fName = '") + values[0] +
            QStringLiteral("', lName = '") + values[1] + QStringLiteral("', role = '") + values[2] +
            QStringLiteral("', role2 = '") + values[3] + QStringLiteral("', role3 = '") +
            values[4] + QStringLiteral("', address = '") + values[5] +
            QStringLiteral("', city = '") + values[6] + QStringLiteral("', state = '") + values[7] +
            QStringLiteral("', zip = '") + values[8] + QStringLiteral("', phone = '") + values[9] +
            QStringLiteral("', cell = '") + values[10] + QStringLiteral("', email = '") +
            values[11] + QStringLiteral("', vDays = '") + values[12] +
            QStringLiteral("', excludeScheduling = '") + values[13] +
            QStringLiteral("' WHERE ID = ") + QString::number(toLong(lblHidPersonID->text())));
}

void frmSchedule::cmdAddPlayer_Click() {
    const QString id = lblHidPersonID->text();
    QString oldFirst;
    QString oldLast;
    if (!id.isEmpty()) {
        Recordset rs = select(QStringLiteral("SELECT fName, lName FROM personell WHERE ID = ") +
                              QString::number(toLong(id)));
        if (!rs.EOF_()) {
            oldFirst = rs.Fields("fName");
            oldLast = rs.Fields("lName");
        }
        rs.Close();
    }
    QStringList values = readFields();
    const QString first = values[FirstNameField];
    const QString last = values[LastNameField];
    if (first.isEmpty() || values[RoleField].isEmpty()) {
        messageBox(QStringLiteral("First Name and  1 Role field is required."),
                   BoxIcon::Information, QStringLiteral("Missing Information"));
        return;
    }
    values << readVacation()
           << (chkExclude->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    storePerson(values);
    // A name is all that finalised weeks know of a person: namesakes are renamed together, and a
    // new person's old name is a single blank. This is meant.
    execute(QStringLiteral("UPDATE schedule SET player = '") + fullName(first, last) +
            QStringLiteral("' WHERE player = '") + fullName(oldFirst, oldLast) + QLatin1Char('\''));
    loadPersonnelList();
    // A new person has no number here yet, and the command ends: this is meant.
    if (id.isEmpty()) return;
    showPerson(toLong(id));
    refreshAvailability();
}

void frmSchedule::cmdDeletePlayer_Click() {
    if (lblHidPersonID->text().isEmpty()) return;
    execute(QStringLiteral("DELETE * FROM personell WHERE ID = ") +
            QString::number(toLong(lblHidPersonID->text())));
    fpPerson->ClearRange(1, 1, 1, fpPerson->MaxRows(), true);
    fpVacation->ClearRange(1, 1, -1, -1, true);
    lblHidPersonID->setText(QString());
    loadPersonnelList();
}

void frmSchedule::cmdClrPlayer_Click() {
    fpPerson->ClearRange(1, 1, 1, fpPerson->MaxRows(), true);
    fpVacation->ClearRange(1, 1, VacationCols, VacationRows, true);
    lblHidPersonID->setText(QString());
    selectShownPerson();
    // The tick of chkExclude stays for the next new person: this is meant.
}
