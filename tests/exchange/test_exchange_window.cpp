// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The window Exchange: bringing in by clicks, and mending links.
#include "charts/sheet_music.h"
#include "core/data/run_time_error.h"
#include "exchange/bring_in_page.h"
#include "exchange/frm_exchange.h"
#include "exchange/mend_links_page.h"
#include "samples.h"
#include "support/files.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressDialog>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Samples = QStringLiteral(SOURCE_TREE "/tests/exchange/samples");

void dropPaths(QWidget* widget, const QStringList& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths) urls += QUrl::fromLocalFile(path);
    data.setUrls(urls);
    const QPoint middle = widget->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent event(QPointF(middle), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
    settle();
}

}  // namespace

class TestExchangeWindow : public WindowTest {
    Q_OBJECT

    QTemporaryDir m_files;

    frmExchange& open(int page = 0) {
        if (!world->isRunning()) world->start();
        click(world->main().Command10);
        if (!pickMenuItem(world->main().mnuUtilities, world->main().mnuExchange))
            QTest::qFail("no item", __FILE__, __LINE__);
        frmExchange& window = frmExchange::instance();
        QTabBar* tabs = window.tabPages->tabBar();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(page).center());
        settle();
        return window;
    }

    QString path(const QString& name) const { return m_files.path() + u'/' + name; }

private Q_SLOTS:
    void folderIsPreviewedAndImported() {
        BringInPage& page = *open().pageBringIn;
        QVERIFY(!page.cmdImport->isEnabled());
        world->answers.file(Samples);
        click(page.cmdFolder);
        QVERIFY(page.fpPreview->MaxRows() > 10);
        QCOMPARE(world->rows(u"SELECT count(*) FROM songs"_s), QStringList{u"0"_s});
        QVERIFY(columnOf(page.fpPreview, 2).contains(u"Be Thou My Vision"_s));
        QVERIFY(columnOf(page.fpPreview, 3).contains(u"Refused"_s));
        QVERIFY(page.cmdImport->isEnabled());
        click(page.cmdImport);
        QVERIFY2(page.lblSums->text().startsWith(u"Imported. Songs: "_s),
                 qPrintable(page.lblSums->text()));
        QVERIFY(!page.cmdImport->isEnabled());
        QVERIFY(world->rows(u"SELECT title FROM songs WHERE fileLoco > ''"_s)
                    .contains(u"Be Thou My Vision"_s));
        // Once more: nothing is left to do.
        world->answers.file(Samples);
        click(page.cmdFolder);
        QVERIFY(!columnOf(page.fpPreview, 3).contains(u"Added"_s));
        QVERIFY(!columnOf(page.fpPreview, 3).contains(u"Filled in"_s));
        QVERIFY(!page.cmdImport->isEnabled());
    }

    void filesAreChosenInTheDialogOrDropped() {
        writeBytes(path(u"a.csv"_s), "Title,Key\nOne,G\n");
        writeBytes(path(u"b/c.csv"_s), "Title,Key\nTwo,D\n");
        BringInPage& page = *open().pageBringIn;
        world->answers.file(path(u"a.csv"_s));
        click(page.cmdFiles);
        QCOMPARE(columnOf(page.fpPreview, 2), QStringList{u"One"_s});
        dropPaths(&page, {path(u"b"_s)});
        QCOMPARE(columnOf(page.fpPreview, 2), QStringList({u"One"_s, u"Two"_s}));
        QCOMPARE(page.lblSums->text(),
                 u"Songs: 2 added, 0 filled in, 0 already there, 0 refused."_s);
        click(page.cmdClear);
        QCOMPARE(page.fpPreview->MaxRows(), 0);
    }

    void severalFilesAreChosenAtOnce() {
        writeBytes(path(u"several/a.csv"_s), "Title,Key\nOne,G\n");
        writeBytes(path(u"several/b c.csv"_s), "Title,Key\nTwo,D\n");
        writeBytes(path(u"several/d.csv"_s), "Title,Key\nThree,D\n");
        BringInPage& page = *open().pageBringIn;
        world->answers.custom(u"the files"_s, [&](QWidget* modal) {
            auto* dialog = qobject_cast<QFileDialog*>(modal);
            QVERIFY(dialog);
            dialog->setDirectory(path(u"several"_s));
            dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"\"a.csv\" \"b c.csv\""_s);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        click(page.cmdFiles);
        QCOMPARE(columnOf(page.fpPreview, 2), QStringList({u"One"_s, u"Two"_s}));
    }

    void tickedThemeBecomesACategory() {
        writeBytes(path(u"themes.csv"_s), "Title,Categories\nOne,Grace;Advent\n");
        BringInPage& page = *open().pageBringIn;
        dropPaths(&page, {path(u"themes.csv"_s)});
        QCOMPARE(page.lstThemes->count(), 2);
        const QRect item = page.lstThemes->visualItemRect(page.lstThemes->item(1));
        QCOMPARE(page.lstThemes->item(1)->text(), u"Grace"_s);
        QTest::mouseClick(page.lstThemes->viewport(), Qt::LeftButton, {},
                          QPoint(item.left() + 12, item.center().y()));
        settle();
        QCOMPARE(page.lstThemes->item(1)->checkState(), Qt::Checked);
        QCOMPARE(columnOf(page.fpPreview, 4), QStringList{u"category Grace"_s});
        click(page.cmdImport);
        QCOMPARE(world->rows(u"SELECT cat1, cat2 FROM songs"_s), QStringList{u"Grace|"_s});
        QCOMPARE(world->rows(u"SELECT name FROM categories"_s), QStringList{u"Grace"_s});
    }

    void reportIsSaved() {
        writeBytes(path(u"report.csv"_s), "Title,Key\nOne,G\n");
        BringInPage& page = *open().pageBringIn;
        dropPaths(&page, {path(u"report.csv"_s)});
        world->answers.file(path(u"report.txt"_s));
        click(page.cmdReport);
        QCOMPARE(world->answers.fileDialogs().back().proposed, u"Import Report.txt"_s);
        QVERIFY(bytesOf(path(u"report.txt"_s)).startsWith("Added: song \"One\" | key G |"));
    }

    void reportThatCannotBeSavedIsSaid() {
        writeBytes(path(u"report.csv"_s), "Title,Key\nOne,G\n");
        BringInPage& page = *open().pageBringIn;
        dropPaths(&page, {path(u"report.csv"_s)});
        answerWithLostFolder(world->answers, m_files.path(), u"report.txt"_s);
        world->answers.box(u"The report could not be saved."_s, QMessageBox::Warning);
        click(page.cmdReport);
        QCOMPARE(page.fpPreview->MaxRows(), 1);
    }

    void cancelledImportChangesNothing() {
        for (int i = 0; i < 3000; ++i)
            writeBytes(path(u"many/%1.cho"_s.arg(i)),
                       "{title: Song " + QByteArray::number(i) + "}\n{sov}\n[G]Word\n{eov}\n");
        BringInPage& page = *open().pageBringIn;
        // The dialog while the files are read may come up or not.
        world->answers.otherwise([](QWidget*) {});
        dropPaths(&page, {path(u"many"_s)});
        QCOMPARE(page.fpPreview->MaxRows(), 3000);
        QTimer cancel;
        connect(&cancel, &QTimer::timeout, this, [] {
            auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            if (dialog && dialog->isVisible()) click(dialog->findChild<QPushButton*>());
        });
        cancel.start(5);
        click(page.cmdImport);
        QCOMPARE(world->rows(u"SELECT count(*) FROM songs"_s), QStringList{u"0"_s});
        QVERIFY(QDir(world->path(u"sheetmusic"_s))
                    .entryList({u"*.stp"_s, u".import"_s}, QDir::Files | QDir::Hidden)
                    .isEmpty());
        QVERIFY(page.cmdImport->isEnabled());
    }

    void failedImportSaysThatNothingWasChanged() {
        writeBytes(path(u"fail.csv"_s), "Title,Key\nTwo,G\n");
        BringInPage& page = *open().pageBringIn;
        world->sql(
            u"CREATE TRIGGER stop BEFORE INSERT ON songs BEGIN SELECT RAISE(ABORT, "
            "'stopped'); END"_s);
        dropPaths(&page, {path(u"fail.csv"_s)});
        world->answers.custom(u"the failure"_s, [](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            QVERIFY2(box->text().startsWith(u"The import failed. Nothing was changed.\n\n"_s),
                     qPrintable(box->text()));
            box->accept();
        });
        click(page.cmdImport);
        QVERIFY(world->isRunning());
        QCOMPARE(world->endStatus, -1);
        QVERIFY(page.cmdImport->isEnabled());
    }

    void importedChartOpensInTheChartWindow() {
        writeBytes(path(u"one.cho"_s), "{title: One}\n{sov: Verse 1}\n[G]Word\n{eov}\n");
        BringInPage& page = *open().pageBringIn;
        dropPaths(&page, {path(u"one.cho"_s)});
        click(page.cmdImport);
        click(world->main().cmdSheetMusic);
        SheetMusic& charts = SheetMusic::instance();
        world->answers.file(world->path(u"sheetmusic/One.stp"_s));
        charts.mnuOpen->trigger();
        QCOMPARE(charts.fpSong->GetText(1, 1), u"One"_s);
        QCOMPARE(charts.fpSong->GetText(1, 8), u"Word"_s);
        QStringList chords;
        for (int col = 1; col <= charts.fpSong->MaxCols(); ++col)
            chords += charts.fpSong->GetText(col, 7);
        chords.removeAll(QString());
        QCOMPARE(chords, QStringList{u"G"_s});
    }

    void lostLinksAreShownAndMended() {
        writeBytes(world->path(u"sheetmusic/hymns/One.stp"_s), "x");
        writeBytes(world->path(u"sheetmusic/a/Two.stp"_s), "x");
        writeBytes(world->path(u"sheetmusic/b/Two.stp"_s), "x");
        world->sql(
            u"INSERT INTO songs (title, fileLoco, soundFile) VALUES "
            "('One', 'E:\\Lorvanite\\sheetmusic\\hymns\\One.stp', ''), "
            "('Two', '/old/Two.stp', '/old/two.mp3')"_s);
        MendLinksPage& page = *open(2).pageMendLinks;
        QCOMPARE(columnOf(page.fpLinks, 1), QStringList({u"One"_s, u"Two"_s, u"Two"_s}));
        QCOMPARE(columnOf(page.fpLinks, 2), QStringList({u"Chart"_s, u"Chart"_s, u"Sound"_s}));
        QCOMPARE(columnOf(page.fpLinks, 4),
                 QStringList({world->path(u"sheetmusic/hymns/One.stp"_s), QString(), QString()}));
        QCOMPARE(page.lblLinks->text(),
                 u"3 lost, 1 to mend, 1 not found. Choose the file where several have the same "
                 "name."_s);
        click(page.cmdMend);
        QCOMPARE(world->rows(u"SELECT fileLoco FROM songs WHERE title = 'One'"_s),
                 QStringList{world->path(u"sheetmusic/hymns/One.stp"_s)});
        QCOMPARE(world->rows(u"SELECT fileLoco, soundFile FROM songs WHERE title = 'Two'"_s),
                 QStringList{u"/old/Two.stp|/old/two.mp3"_s});
        QVERIFY(QDir(world->path(u"copies/2026-11-21 before mending links"_s)).exists());
        QCOMPARE(page.lblLinks->text(),
                 u"1 mended. 2 lost, 0 to mend, 1 not found. Choose the file where several have "
                 "the same name."_s);
        typeInCell(page.fpLinks, 4, 1, world->path(u"sheetmusic/b/Two.stp"_s));
        QVERIFY(page.cmdMend->isEnabled());
        click(page.cmdMend);
        QCOMPARE(world->rows(u"SELECT fileLoco FROM songs WHERE title = 'Two'"_s),
                 QStringList{world->path(u"sheetmusic/b/Two.stp"_s)});
        QVERIFY(!page.cmdMend->isEnabled());
    }

    void failedMendingSaysThatNothingWasChanged() {
        writeBytes(world->path(u"sheetmusic/One.stp"_s), "x");
        world->sql(u"INSERT INTO songs (title, fileLoco) VALUES ('One', '/old/One.stp')"_s);
        MendLinksPage& page = *open(2).pageMendLinks;
        world->sql(
            u"CREATE TRIGGER stop BEFORE UPDATE ON songs BEGIN SELECT RAISE(ABORT, "
            "'stopped'); END"_s);
        world->answers.custom(u"the failure"_s, [](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            QVERIFY2(box->text().startsWith(
                         u"The links could not be mended. Nothing was changed.\n\n"_s),
                     qPrintable(box->text()));
            box->accept();
        });
        click(page.cmdMend);
        QCOMPARE(world->rows(u"SELECT fileLoco FROM songs"_s), QStringList{u"/old/One.stp"_s});
        QVERIFY(page.cmdMend->isEnabled());
        world->sql(u"DROP TRIGGER stop"_s);
        click(page.cmdMend);
        QCOMPARE(world->rows(u"SELECT fileLoco FROM songs"_s),
                 QStringList{world->path(u"sheetmusic/One.stp"_s)});
    }

    void linksAreLookedForAgain() {
        world->sql(u"INSERT INTO songs (title, fileLoco) VALUES ('One', '/old/One.stp')"_s);
        MendLinksPage& page = *open(2).pageMendLinks;
        QCOMPARE(page.lblLinks->text(), u"1 lost, 0 to mend, 1 not found."_s);
        writeBytes(world->path(u"sheetmusic/One.stp"_s), "x");
        click(page.cmdFind);
        QCOMPARE(page.lblLinks->text(), u"1 lost, 1 to mend, 0 not found."_s);
        QCOMPARE(columnOf(page.fpLinks, 4), QStringList{world->path(u"sheetmusic/One.stp"_s)});
    }

    void runTimeErrorEndsTheCommandAlone() {
        MendLinksPage& page = *open(2).pageMendLinks;
        world->sql(u"ALTER TABLE songs RENAME TO gone"_s);
        world->answers.runTimeError(RunTimeError::StatementRefused, u"songs"_s);
        click(page.cmdFind);
        QCOMPARE(world->endStatus, -1);
        QVERIFY(frmExchange::instance().isVisible());
        world->sql(u"ALTER TABLE gone RENAME TO songs"_s);
        click(page.cmdFind);
        QCOMPARE(page.lblLinks->text(), u"Every file is in its place."_s);
    }

    void nothingLostIsSaid() {
        MendLinksPage& page = *open(2).pageMendLinks;
        QCOMPARE(page.lblLinks->text(), u"Every file is in its place."_s);
        QVERIFY(!page.cmdMend->isEnabled());
    }
};

LORVANITE_TEST(TestExchangeWindow)
#include "test_exchange_window.moc"
