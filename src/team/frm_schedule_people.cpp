// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The people: picking, showing, storing and deleting a record, and printing the roster.
#include "core/data/database.h"
#include "core/data/texts.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/grid_view/kept_controls.h"
#include "platform/paper/printing.h"
#include "team/frm_schedule.h"
#include "team/rules/personnel.h"
#include "team/rules/roster.h"

void frmSchedule::loadPersonnelList() {
    cmbPersonell->clear();
    Recordset rs =
        select(QStringLiteral("SELECT ID, fName, lName, role FROM personell ORDER BY lName"));
    for (; !rs.EOF_(); rs.MoveNext())
        cmbPersonell->addItem(rs.Fields("fName") + QLatin1Char(' ') + rs.Fields("lName"),
                              toLong(rs.Fields("ID")));
    rs.Close();
    selectShownPerson();
}

// Selects the shown person, or nobody.
void frmSchedule::selectShownPerson() {
    const QString id = lblHidPersonID->text();
    cmbPersonell->setCurrentIndex(id.isEmpty() ? -1 : cmbPersonell->findData(toLong(id)));
}

// A person who was deleted since can be stored as a new one.
void frmSchedule::keepPerson() {
    KeptControls controls;
    controls.add(QStringLiteral("fpPerson"), fpPerson);
    controls.add(QStringLiteral("fpVacation"), fpVacation);
    controls.add(QStringLiteral("chkExclude"), chkExclude);
    controls.add(QStringLiteral("lblHidPersonID"), lblHidPersonID);
    m_keptPerson = keepControls(*this, UnsavedKind::Person, controls, [this] {
        const QString id = lblHidPersonID->text();
        if (!id.isEmpty() && !readPerson(toLong(id))) lblHidPersonID->clear();
        selectShownPerson();
    });
}

void frmSchedule::showPerson(int id) {
    clearShownPerson(*fpPerson, *fpVacation);
    const auto person = readPerson(id);
    if (!person) return;
    showFields(*fpPerson, person->fields);
    chkExclude->setChecked(person->isExcluded);
    showVacation(*fpVacation, person->vacation);
    lblHidPersonID->setText(QString::number(id));
    selectShownPerson();
}

void frmSchedule::stripApostrophes(const QString& text) {
    for (const QChar c : text)
        if (c != QLatin1Char('\'')) cleaned += c;
}

void frmSchedule::cmbPersonell_Click(int item) {
    m_keptPerson->replaceBy([&] { showPerson(cmbPersonell->itemData(item).toInt()); });
}

// In the order of PersonFields.
QStringList frmSchedule::readFields() {
    QStringList values;
    for (const PersonField& field : PersonFields) {
        cleaned = QString();
        stripApostrophes(fpPerson->GetText(1, field.row));
        values.append(cleaned);
    }
    return values;
}

void frmSchedule::cmdAddPlayer_Click() {
    const QString id = lblHidPersonID->text();
    const QString oldName = id.isEmpty() ? PersonRecord().fullName() : storedName(toLong(id));
    const PersonRecord person{readFields(), shownVacation(*fpVacation), chkExclude->isChecked()};
    if (person.firstName().isEmpty() || person.firstRole().isEmpty()) {
        messageBox(QStringLiteral("First Name and  1 Role field is required."),
                   BoxIcon::Information, QStringLiteral("Missing Information"));
        return;
    }
    if (id.isEmpty())
        insertPerson(person);
    else
        updatePerson(toLong(id), person);
    m_keptPerson->saved();
    renameFinalised(oldName, person.fullName());
    loadPersonnelList();
    // The number of a new person is not known here.
    // Deliberate: behaviour 84.
    if (!id.isEmpty()) {
        showPerson(toLong(id));
        m_keptPerson->loaded();
        refreshAvailability();
    }
    setStatusText(QStringLiteral("Stored: ") + person.fullName().trimmed());
    startPerson();
}

// Puts the cursor where the next person is typed.
void frmSchedule::startPerson() {
    fpPerson->setFocus();
    fpPerson->SetActiveCell(1, 1);
}

void frmSchedule::cmdDeletePlayer_Click() {
    const QString id = lblHidPersonID->text();
    if (id.isEmpty()) return;
    deletePerson(toLong(id));
    m_keptPerson->saved();
    cmdClrPlayer_Click();
    loadPersonnelList();
}

// chkExclude is left as it is.
// Deliberate: behaviour 85.
void frmSchedule::cmdClrPlayer_Click() {
    m_keptPerson->leave();
    fpPerson->ClearRange(1, 1, 1, fpPerson->MaxRows(), true);
    fpVacation->ClearRange(1, 1, -1, -1, true);
    lblHidPersonID->setText(QString());
    selectShownPerson();
    m_keptPerson->loaded();
    startPerson();
}

void frmSchedule::cmdPrintRoster_Click() {
    setUpRoster(fpTemp);
    for (int i = 0; i < cmbPersonell->count(); ++i)
        addToRoster(fpTemp, cmbPersonell->itemData(i).toInt());
    setRosterPrint(fpTemp);
    PrintSheet(fpTemp, 1);
}
