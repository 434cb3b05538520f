// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/saved_set_test.h"
#include "support/home.h"

#include <QDir>

namespace {

void write(const SheetGrid& set, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    if (!set.SaveToFile(path, false)) QTest::qFail("set not saved", __FILE__, __LINE__);
}

}  // namespace

QStringList SavedSetTest::addSongs(int count) {
    QStringList titles;
    for (int i = 1; i <= count; ++i) {
        titles.append(QStringLiteral("Song %1").arg(i, 2, 10, QLatin1Char('0')));
        addSong({.title = titles.back()});
    }
    return titles;
}

QStringList SavedSetTest::record() {
    return world->rows(
        QStringLiteral("SELECT title, played_date, songID FROM played_on ORDER BY ID"));
}

QStringList SavedSetTest::recordStatements(const QString& date, const QStringList& titles) {
    QStringList statements;
    for (const QString& title : titles)
        statements.append(
            QStringLiteral("SELECT title FROM songs WHERE title = '%1' [1]").arg(title));
    statements.append(QStringLiteral("SELECT * FROM played_on [1]"));
    statements.append(
        QStringLiteral("DELETE * FROM played_on WHERE played_date = '%1' [3]").arg(date));
    for (int i = 0; i < titles.size(); ++i)
        statements += {QStringLiteral("SELECT ID FROM songs WHERE title = '%1' [1]").arg(titles[i]),
                       QStringLiteral("INSERT INTO played_on (title, played_date, songID) "
                                      "VALUES ('%1', '%2', %3) [3]")
                           .arg(titles[i], date, QString::number(i + 1))};
    return statements;
}

void SavedSetTest::makeSet(const QString& relative, const QString& date,
                           const QStringList& titles) {
    SheetGrid set;
    setUpSet(set);
    set.SetText(SetColumn::Title, SetRow::Date, date);
    for (int i = 0; i < titles.size(); ++i) set.SetText(SetColumn::Title, i + 2, titles[i]);
    write(set, world->path(relative));
}

void SavedSetTest::makeGreenSet(const QString& relative, const QString& date, int rows,
                                const QString& title) {
    SheetGrid set;
    set.MaxCols(SetColumn::Title);
    set.MaxRows(rows);
    set.SetText(SetColumn::Title, SetRow::Date, date);
    set.SetText(SetColumn::Title, rows, title);
    paint(set, rows);
    write(set, world->path(relative));
}

QStringList SavedSetTest::filesOf(const QListWidget* list) {
    QStringList names;
    for (int i = 0; i < list->count(); ++i) names.append(list->item(i)->text());
    return names;
}

void SavedSetTest::clickFile(QListWidget* list, const QString& name, Qt::KeyboardModifiers keys) {
    const QList<QListWidgetItem*> items = list->findItems(name, Qt::MatchExactly);
    QVERIFY2(items.size() == 1, qPrintable(QStringLiteral("no file ") + name));
    list->scrollToItem(items[0]);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, keys,
                      list->visualItemRect(items[0]).center());
    settle();
}

void SavedSetTest::goTo(FolderBrowser* browser, const QString& relative) {
    const auto* folders = static_cast<QFileSystemModel*>(browser->Dir1->model());
    QVERIFY(folders->index(world->path(relative)).isValid());
    const auto clickFolder = [&] {
        const QModelIndex index = folders->index(world->path(relative));
        browser->Dir1->scrollTo(index);
        QTest::mouseClick(browser->Dir1->viewport(), Qt::LeftButton, {},
                          browser->Dir1->visualRect(index).center());
        settle();
        return browser->Path() == world->path(relative);
    };
    // Rows still move while the tree is being filled.
    QTRY_VERIFY_WITH_TIMEOUT(clickFolder(), 60'000);
    QCOMPARE(browser->Path(), world->path(relative));
}

void SavedSetTest::checkUnavailableDrive(const std::function<FolderBrowser*()>& openWindow) {
    const auto home = withHome(world->path("home"));
    QDir().mkpath(world->path("home"));
    makeSet("saved sets/a.set", "11/22/26", {"Alpha"});
    const FolderBrowser* browser = openWindow();
    QVERIFY(QDir(world->path("home")).removeRecursively());
    world->answers.box("Device Unavailable");
    browser->Drive1->setFocus();
    QTest::keyClick(browser->Drive1, Qt::Key_Home);
    settle();
    QVERIFY(world->answers.isEmpty());
    QCOMPARE(browser->Path(), world->path("saved sets"));
    QCOMPARE(filesOf(browser->File1), QStringList{"a.set"});
}
