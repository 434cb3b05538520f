// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Printing without a printer: names, papers, and what is reported if the file cannot be written.
#include "core/grid/sheet_grid.h"
#include "platform/paper/printing.h"
#include "sets/frm_set_list.h"
#include "support/full_disk.h"
#include "support/grid_hands.h"
#include "support/printed.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDir>
#include <QScopeGuard>

class TestPrintFailures : public WindowTest {
    Q_OBJECT

    frmSetList& openSet() {
        world->start();
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        typeInCell(w.fpSet, 2, 2, QStringLiteral("Größe"));
        return w;
    }

    QDir printed() const { return QDir(world->path(QStringLiteral("printed"))); }
    QStringList files() const { return printed().entryList(QDir::Files | QDir::Hidden); }
    QString statusText() const { return world->main().SB->SimpleText(); }

    // The next box begins with a text.
    void expectBox(const QString& start) {
        world->answers.custom(start, [start](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            QCOMPARE(box->icon(), QMessageBox::Warning);
            QVERIFY2(box->text().startsWith(start), qPrintable(box->text()));
            box->accept();
        });
    }

    // The name of the file of a job, without its time.
    QString fileOf(const QString& job) {
        SheetGrid grid;
        grid.SetText(1, 1, job);
        PrintSheet(grid, 1);
        const QStringList names = files();
        if (names.size() != 1) return {};
        printed().remove(names[0]);
        constexpr qsizetype time = 24;  // " 2026-11-21 10.30.00.pdf"
        return names[0].chopped(time);
    }

private Q_SLOTS:
    void fullDiskIsToldAndNoPartOfAFileStays_data() {
        QTest::addColumn<int>("bytes");
        QTest::newRow("at once") << 0;
        QTest::newRow("on the way") << 4000;
    }
    void fullDiskIsToldAndNoPartOfAFileStays() {
        QFETCH(int, bytes);
        const frmSetList& w = openSet();
        expectBox(QStringLiteral("There is no printer, and the pages could not be written to\n") +
                  QDir::toNativeSeparators(printed().path()));
        {
            const FullDisk disk{rlim_t(bytes)};
            click(w.Command3);
        }
        QCOMPARE(files(), QStringList());
        QCOMPARE(statusText(), QString());
        click(w.Command3);
        QCOMPARE(files().size(), 1);
        QVERIFY(printedPages(printed().filePath(files()[0]))
                    .join(QString())
                    .contains(QStringLiteral("Größe")));
    }

    void fixedFileThatCannotBeWrittenIsTold() {
        const frmSetList& w = openSet();
        const PrintedFile target(world->path(QStringLiteral("config")));
        expectBox(QStringLiteral("The page could not be written to ") + target.path);
        click(w.Command3);
        QVERIFY(QFileInfo(target.path).isDir());
    }

    void paperIsThatOfTheRegion() {
        const frmSetList& w = openSet();
        const QLocale before;
        const auto restored = qScopeGuard([&] { QLocale::setDefault(before); });
        for (const auto& [region, paper] : {std::pair(QStringLiteral("en_US"), QSize(612, 792)),
                                            std::pair(QStringLiteral("en_GB"), QSize(595, 842))}) {
            QLocale::setDefault(QLocale(region));
            click(w.Command3);
            QCOMPARE(files().size(), 1);
            const QString file = printed().filePath(files()[0]);
            QCOMPARE(pagePictures(file, 72).value(0).size(), paper);
            QVERIFY(QFile::remove(file));
        }
    }

    void fileIsNamedAfterTheJob() {
        world->start();
        QCOMPARE(fileOf(QStringLiteral("Amazing Grace")), QStringLiteral("Amazing Grace"));
        // Nothing of this can be in a file's name, or nothing is there.
        QCOMPARE(fileOf(QStringLiteral("...")), QStringLiteral("Lorvanite"));
        QCOMPARE(fileOf(QString()), QStringLiteral("Lorvanite"));
        QCOMPARE(fileOf(QString(100, QLatin1Char('x'))), QString(60, QLatin1Char('x')));
    }
};

LORVANITE_TEST(TestPrintFailures)
#include "test_print_failures.moc"
