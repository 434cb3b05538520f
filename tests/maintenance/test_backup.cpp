// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Backing up and restoring the data.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "maintenance/backup_test.h"
#include "support/files.h"
#include "support/registry.h"
#include "trees.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

namespace {

// Deliberate: behaviour 189.
const QString Done = QStringLiteral("Copy(s) Sucessfull!");

}  // namespace

class TestBackup : public BackupTest {
    Q_OBJECT

    QTemporaryDir m_sticks;

    // A separate USB stick for each test.
    QString stick(const QString& path = {}) const {
        const QString name = QStringLiteral("/%1 %2").arg(
            QLatin1String(QTest::currentTestFunction()), QLatin1String(QTest::currentDataTag()));
        QDir().mkpath(m_sticks.path() + name);
        return m_sticks.path() + name + path;
    }

    // The user chooses a folder in a dialog of this title.
    void chooseIn(const QString& folder, const QString& title) {
        world->answers.folder(folder, title);
    }

    // The delivered database with its texts in UTF-16.
    QByteArray inUtf16() {
        const QString file = m_sticks.path() + QStringLiteral("/utf16.mdb");
        sqlite3* handle = nullptr;
        sqlite3_open(file.toUtf8().constData(), &handle);
        sqlite3_exec(handle, "PRAGMA encoding = 'UTF-16le'", nullptr, nullptr, nullptr);
        sqlite3_exec(handle, bytesOf(QStringLiteral(SOURCE_TREE "/program/db1.sql")).constData(),
                     nullptr, nullptr, nullptr);
        sqlite3_close(handle);
        return bytesOf(file);
    }

    // Copies the one thing that is ticked, which is then reported.
    void backUp(const frmBackup& w, const QString& what) {
        chooseIn(stick(), QStringLiteral("Copy %1 Here").arg(what));
        world->answers.box(QStringLiteral("Copied %1 To: %2\r\r").arg(what, stick()),
                           QMessageBox::NoIcon, Done);
        click(w.cmdBack);
    }

    void restore(const frmBackup& w, const QString& what, const QString& from) {
        chooseIn(from, QStringLiteral("Restore %1 From").arg(what));
        world->answers.box(QStringLiteral("Restored %1 To: %2\r\r").arg(what, from),
                           QMessageBox::NoIcon, Done);
        click(w.cmdRestore);
    }

    void expectError(int number, const QString& part, QMessageBox::Icon icon) {
        world->answers.custom(QStringLiteral("error box"), [=](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            box->accept();
            QCOMPARE(box->windowTitle(), QStringLiteral("Error"));
            QCOMPARE(box->icon(), icon);
            const QStringList lines = box->text().split(QLatin1Char('\n'));
            QCOMPARE(lines.size(), 3);
            QCOMPARE(lines[0], QStringLiteral("Error Number %1").arg(number));
            QVERIFY2(
                lines[1].startsWith(icon == QMessageBox::Critical ? QLatin1String("Description: ")
                                                                  : QLatin1String("Description ")),
                qPrintable(lines[1]));
            QVERIFY2(lines[1].contains(part), qPrintable(lines[1]));
            QCOMPARE(lines[2], QStringLiteral("Please Contact Lorvanite"));
        });
    }

private Q_SLOTS:
    void windowShowsWhatCanBeCopied() {
        const frmBackup& w = open();
        QCOMPARE(w.windowTitle(), QStringLiteral("Backup Files"));
        QStringList captions;
        for (QCheckBox* box : w.ckBU) {
            captions.append(box->text().remove(QLatin1Char('&')));
            QVERIFY(!box->isChecked());
        }
        QCOMPARE(captions, (QStringList{"Database", "Saved Sets", "Set Designs", "Schedules"}));
        QCOMPARE(w.cmdBack->accessibleName(), QStringLiteral("Save"));
        QCOMPARE(w.cmdRestore->accessibleName(), QStringLiteral("Restore"));
        QCOMPARE(w.lblReformatDB->accessibleName(), QStringLiteral("Reformat Database"));
    }

    void nothingTickedShowsNoDialogAndNoBox() {
        const frmBackup& w = open();
        click(w.cmdBack);
        click(w.cmdRestore);
        QVERIFY(world->answers.fileDialogs().empty());
    }

    void cancellingEverythingShowsNoBox() {
        // Deliberate: behaviours 180 and 181.
        const frmBackup& w = open();
        tick({Database, SavedSets, SetDesigns, Schedules});
        for (QPushButton* button : {w.cmdBack, w.cmdRestore}) {
            for (int i = 0; i < BackupIndex::Count; ++i) world->answers.cancelFile();
            click(button);
            QVERIFY(world->answers.isEmpty());
        }
        QStringList titles;
        QStringList buttons;
        for (const auto& dialog : world->answers.fileDialogs()) {
            titles.append(dialog.title);
            buttons.append(dialog.button);
            QVERIFY(dialog.choosesFolder);
        }
        QCOMPARE(buttons, (QStringList{"Back Up", "Back Up", "Back Up", "Back Up", "Restore",
                                       "Restore", "Restore", "Restore"}));
        QCOMPARE(titles, (QStringList{"Copy Database Here", "Copy Saved Sets Here",
                                      "Copy Set Designs Here", "Copy Schedules Here",
                                      "Restore Database From", "Restore Saved Sets From",
                                      "Restore Set Designs From", "Restore Schedules From"}));
        QVERIFY(QDir(stick()).isEmpty());
    }

    void everythingIsCopiedToAStickAndBack() {
        addSong("Stille Nacht \u2013 \u00e4\u4e2d");
        writeBytes(world->path("saved sets/Set For 11_22_26.set"), "set");
        writeBytes(world->path("set designs/Sunday.sdl"), "design");
        writeBytes(world->path("schedules/Winter.scd"), "schedule");
        writeBytes(world->path("sheetmusic/Song.stp"), "chart");
        const frmBackup& w = open();
        tick({Database, SavedSets, SetDesigns, Schedules});
        for (const char* what : {"Database", "Saved Sets", "Set Designs", "Schedules"})
            chooseIn(stick(), QStringLiteral("Copy %1 Here").arg(QLatin1String(what)));
        world->answers.box(QStringLiteral("Copied Database To: %1\r\rCopied Saved Sets To: %1\r\r"
                                          "Copied Set Designs To: %1\r\r"
                                          "Copied Schedules To: %1\r\r")
                               .arg(stick()),
                           QMessageBox::NoIcon, Done);
        click(w.cmdBack);
        QCOMPARE(QDir(stick()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 (QStringList{"db1.mdb", "saved sets", "schedules", "set designs"}));
        QVERIFY(world->statements.isEmpty());

        world->sql("DELETE FROM songs");
        writeBytes(world->path("saved sets/Set For 11_22_26.set"), "spoiled");
        QFile::remove(world->path("set designs/Sunday.sdl"));
        QDir(world->path("schedules")).removeRecursively();
        // Deliberate: behaviour 182.
        chooseIn(stick(), "Restore Database From");
        chooseIn(stick("/saved sets"), "Restore Saved Sets From");
        chooseIn(stick("/set designs"), "Restore Set Designs From");
        chooseIn(stick("/schedules"), "Restore Schedules From");
        world->answers.box(
            QStringLiteral("Restored Database To: %1\r\rRestored Saved Sets To: %1/saved sets\r\r"
                           "Restored Set Designs To: %1/set designs\r\r"
                           "Restored Schedules To: %1/schedules\r\r")
                .arg(stick()),
            QMessageBox::NoIcon, Done);
        click(w.cmdRestore);
        QCOMPARE(titles(), QStringList{"Stille Nacht \u2013 \u00e4\u4e2d"});
        QCOMPARE(bytesOf(world->path("saved sets/Set For 11_22_26.set")), QByteArray("set"));
        QCOMPARE(bytesOf(world->path("set designs/Sunday.sdl")), QByteArray("design"));
        QCOMPARE(bytesOf(world->path("schedules/Winter.scd")), QByteArray("schedule"));
        QCOMPARE(bytesOf(world->path("sheetmusic/Song.stp")), QByteArray("chart"));
    }

    void openConnectionUsesTheRestoredDatabase() {
        // Deliberate: behaviour 186.
        addSong("Old");
        const frmBackup& w = open();
        tick({Database});
        backUp(w, "Database");
        addSong("New");
        restore(w, "Database", stick());
        Recordset rs;
        rs.Open("SELECT title FROM songs", dbConn, CursorType::Dynamic, LockType::ReadOnly);
        QCOMPARE(rs.Fields("title"), QStringLiteral("Old"));
        rs.MoveNext();
        QVERIFY(rs.EOF_());
    }

    void onlyWhatWasNotCancelledIsCopiedAndReported() {
        writeBytes(world->path("saved sets/a.set"), "a");
        const frmBackup& w = open();
        tick({Database, SavedSets});
        world->answers.cancelFile();
        backUp(w, "Saved Sets");
        QVERIFY(!QFile::exists(stick("/db1.mdb")));
        QCOMPARE(bytesOf(stick("/saved sets/a.set")), QByteArray("a"));
    }

    void dialogsBeginWhereTheLastCopiesAre() {
        writeBytes(world->path("saved sets/a.set"), "a");
        const frmBackup* w = &open();
        tick({Database, SavedSets});
        chooseIn(stick(), "Copy Database Here");
        world->answers.cancelFile();
        world->answers.box(QStringLiteral("Copied Database To: %1\r\r").arg(stick()),
                           QMessageBox::NoIcon, Done);
        click(w->cmdBack);
        QCOMPARE(world->answers.fileDialogs().at(0).folder, QDir::homePath());
        QCOMPARE(world->answers.fileDialogs().at(1).folder, stick());
        // Also after the program was closed. Nothing is typed: the open folder is chosen.
        world->stop();
        w = &open();
        tick({SavedSets});
        world->answers.fileAsProposed();
        world->answers.box(QStringLiteral("Copied Saved Sets To: %1\r\r").arg(stick()),
                           QMessageBox::NoIcon, Done);
        click(w->cmdBack);
        QCOMPARE(bytesOf(stick("/saved sets/a.set")), QByteArray("a"));
        // A restore begins in the copied folder itself, and the next dialog not in it, as long as
        // there is no copy of the program's own.
        writeBytes(world->path("saved sets/a.set"), "spoiled");
        tick({Database});
        chooseIn(stick(), "Restore Database From");
        world->answers.fileAsProposed();
        world->answers.box(QStringLiteral("Restored Database To: %1\r\r"
                                          "Restored Saved Sets To: %1/saved sets\r\r")
                               .arg(stick()),
                           QMessageBox::NoIcon, Done);
        click(w->cmdRestore);
        QCOMPARE(bytesOf(world->path("saved sets/a.set")), QByteArray("a"));
        world->answers.cancelFile();
        world->answers.cancelFile();
        click(w->cmdBack);
        QCOMPARE(world->answers.fileDialogs().back().folder, stick());
    }

    void restoredSetsOverwriteAndOtherFilesStay() {
        // Deliberate: behaviour 185.
        writeBytes(world->path("saved sets/a.set"), "program's a");
        writeBytes(world->path("saved sets/b.set"), "program's b");
        writeBytes(stick("/saved sets/a.set"), "stick's a");
        writeBytes(stick("/saved sets/years/2025/\u00e4.set"), "deep");
        const frmBackup& w = open();
        tick({SavedSets});
        restore(w, "Saved Sets", stick("/saved sets"));
        QCOMPARE(bytesOf(world->path("saved sets/a.set")), QByteArray("stick's a"));
        QCOMPARE(bytesOf(world->path("saved sets/b.set")), QByteArray("program's b"));
        QCOMPARE(bytesOf(world->path("saved sets/years/2025/\u00e4.set")), QByteArray("deep"));
    }

    void restoreFromTheParentFolderCopiesTheFolderItself() {
        // Deliberate: behaviour 182.
        writeBytes(stick("/saved sets/a.set"), "a");
        const frmBackup& w = open();
        tick({SavedSets});
        restore(w, "Saved Sets", stick());
        QCOMPARE(bytesOf(world->path("saved sets/saved sets/a.set")), QByteArray("a"));
    }

    void restoreWithoutADatabaseShowsTheErrorBox() {
        // Deliberate: behaviour 183.
        addSong("Kept");
        const frmBackup& w = open();
        tick({Database});
        chooseIn(stick(), "Restore Database From");
        expectError(RunTimeError::FileNotFound, "db1.mdb", QMessageBox::NoIcon);
        click(w.cmdRestore);
        QCOMPARE(titles(), QStringList{"Kept"});
        QCOMPARE(world->endStatus, -1);
    }

    void missingFolderShowsTheErrorBoxAndEndsTheBackup() {
        writeBytes(world->path("set designs/Sunday.sdl"), "design");
        QDir(world->path("saved sets")).removeRecursively();
        const frmBackup& w = open();
        tick({SavedSets, SetDesigns});
        chooseIn(stick(), "Copy Saved Sets Here");
        expectError(RunTimeError::PathNotFound, "saved sets", QMessageBox::Critical);
        click(w.cmdBack);
        QVERIFY(QDir(stick()).isEmpty());
        QCOMPARE(world->endStatus, -1);
    }

    void copiesBeforeAFailureStayWithoutAReport() {
        // Deliberate: behaviour 184.
        QDir(world->path("schedules")).removeRecursively();
        const frmBackup& w = open();
        tick({Database, Schedules});
        chooseIn(stick(), "Copy Database Here");
        chooseIn(stick(), "Copy Schedules Here");
        expectError(RunTimeError::PathNotFound, "schedules", QMessageBox::Critical);
        click(w.cmdBack);
        QCOMPARE(QDir(stick()).entryList(QDir::Files), QStringList{"db1.mdb"});
    }

    void copyOntoItselfShowsTheErrorBoxAndLosesNothing() {
        addSong("Kept");
        writeBytes(world->path("saved sets/a.set"), "a");
        const frmBackup& w = open();
        tick({Database});
        chooseIn(world->folder(), "Copy Database Here");
        expectError(RunTimeError::PermissionDenied, "itself", QMessageBox::Critical);
        click(w.cmdBack);
        tick({Database, SavedSets});
        chooseIn(world->folder(), "Copy Saved Sets Here");
        expectError(RunTimeError::PermissionDenied, "itself", QMessageBox::Critical);
        click(w.cmdBack);
        chooseIn(world->folder(), "Restore Saved Sets From");
        expectError(RunTimeError::PermissionDenied, "itself", QMessageBox::NoIcon);
        click(w.cmdRestore);
        addSong("After");
        QCOMPARE(titles(), (QStringList{"Kept", "After"}));
        QCOMPARE(bytesOf(world->path("saved sets/a.set")), QByteArray("a"));
    }

    void missingSettingsAreDeliveredAtARestore() {
        const QStringList delivered =
            world->rows("SELECT var_name, var_value FROM prefs ORDER BY rowid");
        world->sql(
            "DELETE FROM prefs WHERE var_name <> 'DefaultSetList'; "
            "UPDATE prefs SET var_value = 'kept'");
        QVERIFY(QFile::rename(world->path("db1.mdb"), stick("/db1.mdb")));
        QVERIFY(QFile::copy(PROGRAM_TREE "/db1.mdb", world->path("db1.mdb")));
        const frmBackup& w = open();
        tick({Database});
        restore(w, "Database", stick());
        QStringList expected = delivered;
        expected.removeAll("DefaultSetList|");
        expected.prepend("DefaultSetList|kept");
        QCOMPARE(world->rows("SELECT var_name, var_value FROM prefs ORDER BY rowid"), expected);
    }

    void backupKeepsTimesAndNamesAndFollowsNoLinkInACircle() {
        const QString set = world->path("saved sets/a\\b.set");
        writeBytes(set, "a");
        const QDateTime time(QDate(2020, 2, 2), QTime(12, 0));
        QFile file(set);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        file.close();
        QDir().mkpath(world->path("saved sets/years"));
        QVERIFY(QFile::link(world->path("saved sets"), world->path("saved sets/years/back")));
        const frmBackup& w = open();
        tick({SavedSets});
        backUp(w, "Saved Sets");
        const QString copy = stick("/saved sets/a\\b.set");
        QCOMPARE(bytesOf(copy), QByteArray("a"));
        QCOMPARE(QFileInfo(copy).lastModified(), time);
        QVERIFY(QFileInfo(stick("/saved sets/years")).isDir());
        QVERIFY(!QFileInfo::exists(stick("/saved sets/years/back")));
    }

    void invalidDatabaseIsNotRestored_data() {
        QTest::addColumn<QString>("spoil");
        QTest::addColumn<QString>("why");
        QTest::newRow("no database") << "text"
                                     << "not a database";
        QTest::newRow("empty file") << "empty"
                                    << "no such table";
        QTest::newRow("cut") << "cut"
                             << "malformed";
        const char* damaged =
            "This copy is damaged and was not restored; your songs are as they were.";
        QTest::newRow("cut in half") << "cut" << damaged;
        QTest::newRow("one byte less") << "1" << damaged;
        QTest::newRow("nine bytes less") << "9" << damaged;
        QTest::newRow("damaged") << "text" << damaged;
        QTest::newRow("UTF-16") << "utf16"
                                << "your songs are as they were. (its texts are in UTF-16le)";
        QTest::newRow("negative version") << "PRAGMA user_version = -1"
                                          << "not created by Lorvanite";
        QTest::newRow("damaged page") << "page"
                                      << "";
        QTest::newRow("no table") << "DROP TABLE notes"
                                  << "no such table: notes";
        QTest::newRow("no column") << "ALTER TABLE songs DROP COLUMN CCLI"
                                   << "no such column: CCLI";
        QTest::newRow("later version") << "PRAGMA user_version = 2"
                                       << "created by a later version of Lorvanite";
    }
    void invalidDatabaseIsNotRestored() {
        QFETCH(QString, spoil);
        QFETCH(QString, why);
        const QString file = world->path("db1.mdb");
        world->sql(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
            "INSERT INTO songs (title) SELECT 'Song number ' || i FROM n");
        if (spoil.contains(QLatin1Char(' '))) {
            world->sql(spoil);
            QVERIFY(QFile::rename(file, stick("/db1.mdb")));
            QVERIFY(QFile::copy(PROGRAM_TREE "/db1.mdb", file));
        } else {
            QByteArray bytes = bytesOf(file);
            if (spoil == QLatin1String("text")) bytes = QByteArray("Dear all,\n").repeated(500);
            if (spoil == QLatin1String("empty")) bytes.clear();
            bytes.chop(spoil.toInt());
            if (spoil == QLatin1String("utf16")) bytes = inUtf16();
            if (spoil == QLatin1String("cut")) bytes.truncate(bytes.size() / 2);
            if (spoil == QLatin1String("page"))
                bytes.replace(bytes.size() / 2, 8192, QByteArray(8192, '\x5a'));
            writeBytes(stick("/db1.mdb"), bytes);
        }
        const QByteArray running = bytesOf(file);
        const frmBackup& w = open();
        tick({Database});
        chooseIn(stick(), "Restore Database From");
        expectError(RunTimeError::StoreFailed, why, QMessageBox::NoIcon);
        click(w.cmdRestore);
        QCOMPARE(bytesOf(file), running);
        click(world->main().Command1);
        QCOMPARE(world->endStatus, -1);
    }

    void databaseOfAnEarlierVersionIsUpgradedOnRestore() {
        addSong("Old");
        const QString file = world->path("db1.mdb");
        world->sql("DROP INDEX played_on_song; PRAGMA user_version = 0");
        QVERIFY(QFile::rename(file, stick("/db1.mdb")));
        QVERIFY(QFile::copy(PROGRAM_TREE "/db1.mdb", file));
        const QByteArray before = bytesOf(stick("/db1.mdb"));
        const frmBackup& w = open();
        tick({Database});
        restore(w, "Database", stick());
        QCOMPARE(titles(), QStringList{"Old"});
        QCOMPARE(world->rows("PRAGMA user_version"), QStringList{"1"});
        QCOMPARE(world->rows("SELECT name FROM sqlite_master WHERE type = 'index'"),
                 QStringList{"played_on_song"});
        // The backup itself is unchanged, and no copy of it is made.
        QCOMPARE(bytesOf(stick("/db1.mdb")), before);
        QCOMPARE(QDir(world->folder()).entryList({"*version*"}), QStringList());
    }
};

LORVANITE_TEST(TestBackup)
#include "test_backup.moc"
