// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Drives, folders and files, one under the other.
#include "core/data/run_time_error.h"
#include "platform/desktop/folder_browser.h"
#include "support/home.h"
#include "support/registry.h"
#include "support/world.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QSignalSpy>

class TestFolderBrowser : public WindowTest {
    Q_OBJECT

    void touch(const QString& relative) {
        const QString path = world->path(relative);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    static QStringList filesOf(const FolderBrowser& browser) {
        QStringList names;
        for (int i = 0; i < browser.File1->count(); ++i)
            names.append(browser.File1->item(i)->text());
        return names;
    }

    static void clickFile(FolderBrowser& browser, int row, Qt::KeyboardModifiers keys = {}) {
        const QRect place = browser.File1->visualItemRect(browser.File1->item(row));
        QTest::mouseClick(browser.File1->viewport(), Qt::LeftButton, keys, place.center());
    }

    static int errorOf(FolderBrowser& browser, const QString& folder) {
        try {
            browser.Path(folder);
        } catch (const RunTimeError& error) {
            return error.number();
        }
        return 0;
    }

private Q_SLOTS:
    void folderListsTheFilesOfThePatternByName() {
        for (const char* name : {"b.set", "A.SET", "z\u00e4.set", "c.sdl", "sub.set/d.set"})
            touch(QStringLiteral("sets/") + QString::fromUtf8(name));
        FolderBrowser browser;
        QVERIFY(browser.Path().isEmpty());
        browser.Pattern("*.set");
        browser.Path(world->folder() + QStringLiteral("\\sets"));
        QCOMPARE(browser.Path(), world->path("sets"));
        QCOMPARE(filesOf(browser), (QStringList{"A.SET", "b.set", "z\u00e4.set"}));
        browser.Pattern("*.sdl");
        QCOMPARE(filesOf(browser), QStringList{"c.sdl"});
    }

    void everyFolderHasAnIcon() {
        for (const char* name : {"sets/a/x.set", "sets/b/y.set", "sets/z.set"})
            touch(QString::fromUtf8(name));
        FolderBrowser browser;
        browser.show();
        browser.Path(world->path("sets"));
        QAbstractItemModel& folders = *browser.Dir1->model();
        const QPersistentModelIndex sets = browser.Dir1->currentIndex();
        QTRY_COMPARE(folders.rowCount(sets), 2);
        for (const QModelIndex& folder :
             {QModelIndex(sets), folders.index(0, 0, sets), folders.index(1, 0, sets)})
            QTRY_VERIFY(!folder.data(Qt::DecorationRole).value<QIcon>().isNull());
    }

    void folderWithManyFilesOrNoneIsShown() {
        for (int i = 0; i < 2000; ++i) touch(QStringLiteral("many/%1.set").arg(i));
        QDir().mkpath(world->path("none"));
        FolderBrowser browser;
        browser.Path(world->path("many"));
        QCOMPARE(browser.File1->count(), 2000);
        browser.Path(world->path("none"));
        QCOMPARE(browser.File1->count(), 0);
    }

    void missingFolderIsAnErrorAndTheFolderOnViewStays() {
        touch("sets/a.set");
        FolderBrowser browser;
        browser.Path(world->path("sets"));
        QCOMPARE(errorOf(browser, world->path("gone")), 76);
        QCOMPARE(errorOf(browser, world->path("sets/a.set")), 76);
        QCOMPARE(browser.Path(), world->path("sets"));
        QCOMPARE(filesOf(browser), QStringList{"a.set"});
    }

    void keysGoToAnotherFolder() {
        touch("sets/one/a.set");
        touch("sets/two/b.set");
        FolderBrowser browser;
        browser.show();
        browser.Path(world->path("sets/one"));
        QTRY_COMPARE(browser.Dir1->model()->rowCount(browser.Dir1->currentIndex().parent()), 2);
        browser.Dir1->setFocus();
        QTest::keyClick(browser.Dir1, Qt::Key_Down);
        QCOMPARE(browser.Path(), world->path("sets/two"));
        QCOMPARE(filesOf(browser), QStringList{"b.set"});
    }

    void folderOnViewStaysInSightWhileTheTreeFills() {
        for (int i = 0; i < 300; ++i)
            QDir().mkpath(world->path(QStringLiteral("many/folder %1").arg(i)));
        FolderBrowser browser;
        browser.show();
        QSignalSpy sorted(browser.Dir1->model(), &QAbstractItemModel::layoutChanged);
        browser.Path(world->path("many/folder 299"));
        QTRY_VERIFY(sorted.count() > 0);
        const QRect place = browser.Dir1->visualRect(browser.Dir1->currentIndex());
        QVERIFY(browser.Dir1->viewport()->rect().intersects(place));
    }

    void clickedFileIsTheFileOfTheBrowser() {
        touch("sets/a.set");
        touch("sets/b.set");
        FolderBrowser browser;
        browser.show();
        browser.Path(world->path("sets"));
        QCOMPARE(browser.FileName(), QString());
        QSignalSpy clicks(&browser, &FolderBrowser::FileClick);
        clickFile(browser, 1);
        QCOMPARE(browser.FileName(), QStringLiteral("b.set"));
        clickFile(browser, 0, Qt::ControlModifier);
        QCOMPARE(browser.FileName(), QStringLiteral("a.set"));
        QCOMPARE(browser.File1->selectedItems().size(), 1);
        QCOMPARE(clicks.count(), 2);
    }

    void severalFilesAreSelectedByCtrlAndTheLastClickedIsTheFile() {
        for (const char* name : {"a", "b", "c"}) touch(QStringLiteral("sets/%1.set").arg(name));
        FolderBrowser browser;
        browser.setMultiSelect(true);
        browser.show();
        browser.Path(world->path("sets"));
        clickFile(browser, 2);
        clickFile(browser, 0, Qt::ControlModifier);
        QCOMPARE(browser.File1->selectedItems().size(), 2);
        QCOMPARE(browser.FileName(), QStringLiteral("a.set"));
    }

    void drivesAreTheUsersFolderAndTheComputer() {
        const auto home = withHome(world->folder());
        FolderBrowser browser;
        QCOMPARE(browser.Drive1->itemText(0), QStringLiteral("Home"));
        QVERIFY(browser.Drive1->findText("Computer") > 0);
        browser.Path("/tmp");
        QCOMPARE(browser.Drive1->currentText(), QStringLiteral("Computer"));
        browser.show();
        browser.Drive1->setFocus();
        QTest::keyClick(browser.Drive1, Qt::Key_Home);
        QCOMPARE(browser.Path(), world->folder());
        QCOMPARE(browser.Drive1->currentText(), QStringLiteral("Home"));
    }

    void drivesAreLookedUpWhenTheirListDropsDown() {
        const auto home = withHome(world->folder());
        FolderBrowser browser;
        browser.show();
        browser.Path("/tmp");
        // As of a stick that was plugged in meanwhile.
        QVERIFY(QDir().mkpath(world->path("other home")));
        qputenv("HOME", world->path("other home").toUtf8());
        QTest::keyClick(browser.Drive1, Qt::Key_Down, Qt::AltModifier);
        QVERIFY(browser.Drive1->view()->isVisible());
        QCOMPARE(browser.Path(), QStringLiteral("/tmp"));
        QCOMPARE(browser.Drive1->currentText(), QStringLiteral("Computer"));
        QTest::keyClick(browser.Drive1->view(), Qt::Key_Home);
        QTest::keyClick(browser.Drive1->view(), Qt::Key_Return);
        QCOMPARE(browser.Path(), world->path("other home"));
    }

    void driveThatCannotBeReadIsToldAndTheFolderStays() {
        touch("home/a.set");
        touch("sets/b.set");
        const auto home = withHome(world->path("home"));
        world->start();
        FolderBrowser browser;
        browser.show();
        browser.Path(world->path("sets"));
        QDir(world->path("home")).removeRecursively();
        world->answers.box("Device Unavailable");
        browser.Drive1->setFocus();
        QTest::keyClick(browser.Drive1, Qt::Key_Home);
        settle();
        QVERIFY(world->answers.isEmpty());
        QCOMPARE(browser.Path(), world->path("sets"));
        QCOMPARE(browser.Drive1->currentText(), QStringLiteral("Computer"));
        QCOMPARE(filesOf(browser), QStringList{"b.set"});
    }
};

LORVANITE_TEST(TestFolderBrowser)
#include "test_folder_browser.moc"
