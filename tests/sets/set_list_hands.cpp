// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/paper/printing.h"
#include "sets/set_list_test.h"

#include <QFile>

namespace {

QString quoted(QString text) {
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("''")) +
           QLatin1Char('\'');
}

}  // namespace

QString SetListTest::addSong(const TestSong& song) {
    QStringList values;
    for (const QString& value :
         {song.title, song.cat1, song.cat2, song.cat3, song.cat4, song.cat5, song.playlist,
          song.fileLoco, song.soundFile, song.artist, song.key})
        values.append(quoted(value));
    world->sql(QStringLiteral("INSERT INTO songs (title, cat1, cat2, cat3, cat4, cat5, playlist, "
                              "fileLoco, soundFile, artist, dakey) VALUES (%1)")
                   .arg(values.join(QLatin1Char(','))));
    return world->rows(QStringLiteral("SELECT max(ID) FROM songs")).value(0);
}

void SetListTest::addPlayed(const QString& id, const QStringList& dates) {
    for (const QString& date : dates)
        world->sql(QStringLiteral("INSERT INTO played_on (title, played_date, songID) "
                                  "SELECT title, '%1', ID FROM songs WHERE ID = %2")
                       .arg(date, id));
}

void SetListTest::addCategories(const QStringList& names) {
    for (const QString& name : names)
        world->sql(QStringLiteral("INSERT INTO categories (name) VALUES (%1)").arg(quoted(name)));
}

frmSetList& SetListTest::open() {
    if (!world->isRunning()) world->start();
    click(world->main().cmdSetList);
    world->statements.clear();
    return frmSetList::instance();
}

frmSetList& SetListTest::openWith(const QString& date, const QStringList& titles) {
    frmSetList& w = open();
    fill(w, date, titles);
    return w;
}

void SetListTest::fill(frmSetList& w, const QString& date, const QStringList& titles) {
    if (!date.isEmpty()) typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, date);
    for (int i = 0; i < titles.size(); ++i) w.fpSet->SetText(SetColumn::Title, i + 2, titles[i]);
    world->statements.clear();
}

QString SetListTest::printedBy(QPushButton* button, QPageSize::PageSizeId paper) {
    const QString pdf = world->path(QStringLiteral("out.pdf"));
    QFile::remove(pdf);
    setPrintTarget(pdf, paper);
    click(button);
    setPrintTarget({});
    return pdf;
}

void SetListTest::spoilPrintSettings(SheetGrid& grid) {
    grid.PrintBorder(true);
    grid.PrintMarginTop(0);
    grid.PrintMarginBottom(0);
    grid.PrintOrientation(PrintOrientations::Landscape);
    grid.PrintSmartPrint(false);
    grid.PrintColHeaders(true);
    grid.PrintRowHeaders(true);
    grid.PrintGrid(true);
    grid.PrintUseDataMax(false);
    grid.PrintColor(false);
    grid.PrintScalingMethod(PrintScaling::BestFit);
    grid.PrintType(PrintTypes::Block);
}

void SetListTest::seeSetPrintSettings(const SheetGrid& grid) {
    QVERIFY(!grid.PrintBorder());
    QCOMPARE(grid.PrintMarginTop(), 720);
    QCOMPARE(grid.PrintMarginBottom(), 720);
    QCOMPARE(grid.PrintOrientation(), PrintOrientations::Portrait);
    QVERIFY(grid.PrintSmartPrint());
    QVERIFY(!grid.PrintColHeaders());
    QVERIFY(!grid.PrintRowHeaders());
    QVERIFY(!grid.PrintGrid());
    QVERIFY(grid.PrintUseDataMax());
    QVERIFY(grid.PrintColor());
    QCOMPARE(grid.PrintScalingMethod(), PrintScaling::AsItIs);
    QCOMPARE(grid.PrintType(), PrintTypes::All);
}

QByteArray SetListTest::bytesOf(const QString& relative) {
    QFile file(world->path(relative));
    if (!file.open(QIODevice::ReadOnly)) QTest::qFail(qPrintable(relative), __FILE__, __LINE__);
    return file.readAll();
}

void SetListTest::paint(SheetGrid& set, int row, int colour) {
    set.Col(SetColumn::Title);
    set.Row(row);
    set.BackColor(colour);
}

void SetListTest::pick(QComboBox* box, const QString& item) {
    const int wanted = box->findText(item);
    QVERIFY2(wanted >= 0, qPrintable(QStringLiteral("no item ") + item));
    box->setFocus();
    box->showPopup();
    QAbstractItemView* list = box->view();
    list->setCurrentIndex(box->model()->index(wanted, 0));
    QTest::keyClick(list, Qt::Key_Return);
    settle();
}

void SetListTest::type(QComboBox* box, const QString& text) {
    box->lineEdit()->setFocus();
    box->lineEdit()->selectAll();
    QTest::keyClick(box->lineEdit(), Qt::Key_Delete);
    QTest::keyClicks(box->lineEdit(), text);
    settle();
}

QString SetListTest::makeDefaultDesign(const QStringList& labels) {
    SheetGrid design;
    design.MaxCols(SetColumn::Title);
    design.MaxRows(25);
    design.SetText(SetColumn::Label, SetRow::Date, QStringLiteral("Set List For:"));
    setUpDateCell(design);
    for (int i = 0; i < labels.size(); ++i) design.SetText(SetColumn::Label, i + 2, labels[i]);
    const QString path = world->path(QStringLiteral("set designs/Usual.sdl"));
    if (!design.SaveToFile(path, false)) QTest::qFail("design not saved", __FILE__, __LINE__);
    world->sql(QStringLiteral("UPDATE prefs SET var_value = %1 "
                              "WHERE var_name = 'DefaultSetList'")
                   .arg(quoted(path)));
    return path;
}
