// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/files.h"
#include "team/schedule_test.h"

namespace {

QString quoted(const QString& text) {
    if (text == QLatin1String("NULL")) return text;
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

}  // namespace

int ScheduleTest::addPerson(const NewPerson& person) {
    QStringList values;
    for (const QString& value : {person.first, person.last, person.role, person.role2, person.role3,
                                 person.vacation, person.excluded})
        values.append(quoted(value));
    world->sql(QStringLiteral("INSERT INTO personell (fName, lName, role, role2, role3, vDays, "
                              "excludeScheduling) VALUES (%1)")
                   .arg(values.join(QLatin1Char(','))));
    return world->rows("SELECT max(ID) FROM personell").value(0).toInt();
}

void ScheduleTest::addPlayed(const QString& title, const QString& date) {
    world->sql(QStringLiteral("INSERT INTO played_on (title, played_date, songID) "
                              "VALUES ('%1', '%2', 1)")
                   .arg(title, date));
}

void ScheduleTest::addTheLeast() {
    addPerson({.first = "Anna", .last = "Berg", .role = "Piano"});
    addPlayed("Long ago", "01/01/90");
}

frmSchedule& ScheduleTest::open() {
    if (!world->isRunning()) world->start();
    click(world->main().cmdScheduling);
    world->statements.clear();
    return frmSchedule::instance();
}

void ScheduleTest::close() {
    frmSchedule::instance().Unload();
    settle();
}

frmSchedule& ScheduleTest::makeSchedule(const QString& start, const QString& weeks) {
    frmSchedule& w = open();
    if (!start.isEmpty()) typeInCell(w.fpPickDate, PickDateColumn::StartDate, 1, start);
    if (!weeks.isEmpty()) typeInCell(w.fpPickDate, PickDateColumn::Weeks, 1, weeks);
    click(w.cmdLoadDates);
    return w;
}

void ScheduleTest::menu(int col, int row, QAction& command) {
    frmSchedule& w = frmSchedule::instance();
    w.fpSchedule->flush();
    w.fpSchedule->scrollTo(w.fpSchedule->model()->index(row - 1, col - 1));
    clickCell(w.fpSchedule, col, row, Qt::RightButton);
    QCOMPARE(w.fpSchedule->ActiveCol(), col);
    QCOMPARE(w.fpSchedule->ActiveRow(), row);
    QVERIFY(pickMenuItem(w.mnuD, command));
}

void ScheduleTest::pick(const QString& name) {
    QComboBox* box = frmSchedule::instance().cmbPersonell;
    const int wanted = box->findText(name);
    QVERIFY2(wanted >= 0, qPrintable(QStringLiteral("no item ") + name));
    box->setFocus();
    box->showPopup();
    box->view()->setCurrentIndex(box->model()->index(wanted, 0));
    QTest::keyClick(box->view(), Qt::Key_Return);
    settle();
}

void ScheduleTest::typePerson(const std::vector<std::pair<int, QString>>& fields) {
    for (const auto& [row, text] : fields)
        typeInCell(frmSchedule::instance().fpPerson, 1, row, text);
}

void ScheduleTest::toggle(QAbstractButton* box) {
    QApplication::setActiveWindow(box->window());
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Space);
    settle();
}

QStringList ScheduleTest::offersIn(int row) {
    const CellFormat format =
        frmSchedule::instance().fpSchedule->formatAt(1, ScheduleColumn::Team, row);
    if (format.kind != CellKind::Combo) return {QStringLiteral("no drop-down")};
    return format.comboList.split(QLatin1Char('\t'), Qt::SkipEmptyParts);
}

QString ScheduleTest::writeFile(const SheetGrid& grid, const QString& name) {
    const QString path = world->path(QStringLiteral("schedules/") + name);
    if (!grid.SaveToFile(path, false)) QTest::qFail("file not saved", __FILE__, __LINE__);
    return path;
}

void ScheduleTest::showAtStart(const QString& path) {
    world->sql(
        QStringLiteral("UPDATE prefs SET var_value = 'true' WHERE var_name = "
                       "'SchedOnStartUp'"));
    world->sql(
        QStringLiteral("UPDATE prefs SET var_value = '%1' WHERE var_name = 'ScedToUse'").arg(path));
}

void ScheduleTest::answerNotSaved(const QString& name) {
    answerWithLostFolder(world->answers, world->path("schedules"), name);
    world->answers.box("File did not save, try again or contact Lorvanite.",
                       QMessageBox::Information);
}

frmSchedule& ScheduleTest::showWeeks(const QStringList& dates, const QString& head) {
    SheetGrid grid;
    fillSchedule(grid, dates, head);
    showAtStart(writeFile(grid, "start.scd"));
    return open();
}

void ScheduleTest::fillSchedule(SheetGrid& grid, const QStringList& dates, const QString& head) {
    grid.MaxCols(4);
    grid.MaxRows(500);
    grid.SetText(1, ScheduleRow::Title,
                 QStringLiteral("Schedule For: %1 to %2").arg(dates.front(), dates.back()));
    grid.AddCellSpan(1, ScheduleRow::Title, 4, 1);
    for (int week = 0; week < dates.size(); ++week) {
        const int row = headRowOf(week + 1);
        grid.SetText(ScheduleColumn::Date, row, QStringLiteral("Date"));
        grid.SetText(ScheduleColumn::Team, row, head);
        grid.SetText(ScheduleColumn::Date, row + 1, dates[week]);
    }
}

void ScheduleTest::setWrongPrintSettings(SheetGrid& grid) {
    grid.PrintJobName(QStringLiteral("Another"));
    grid.PrintFooter(QStringLiteral("another"));
    grid.PrintBorder(true);
    grid.PrintRowHeaders(true);
    grid.PrintShadows(true);
    grid.PrintMarginTop(99);
    grid.PrintMarginBottom(99);
    grid.PrintMarginLeft(99);
    grid.PrintMarginRight(99);
    grid.PrintSmartPrint(false);
    grid.PrintUseDataMax(false);
}

void ScheduleTest::compareCommonPrintSettings(const SheetGrid& grid) {
    QCOMPARE(grid.PrintJobName(), QStringLiteral("Worship Schedule"));
    QCOMPARE(grid.PrintFooter(), QStringLiteral("/cPage /p Of /pc"));
    QVERIFY(!grid.PrintBorder() && !grid.PrintRowHeaders() && !grid.PrintShadows());
    QCOMPARE(grid.PrintMarginLeft(), 720);
    QCOMPARE(grid.PrintMarginRight(), 720);
    QVERIFY(grid.PrintSmartPrint() && grid.PrintUseDataMax());
}
