// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Restore and reset: what they set aside first, where they start, and what an interruption leaves.
#include "core/data/dates.h"
#include "core/data/file_copy.h"
#include "core/data/run_time_error.h"
#include "keeping/copies.h"
#include "maintenance/backup_test.h"
#include "platform/desktop/desktop.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/other_process.h"
#include "support/registry.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>

#include <csignal>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString AllDone = QStringLiteral("Copy(s) Sucessfull!");

// Notes, while it exists, whether the pointer is an hourglass each time this thread opens a
// database.
class PointerWatch {
public:
    PointerWatch() {
        s_seen.clear();
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(look));
    }
    ~PointerWatch() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(look)); }

    bool wasHourglass() const { return !s_seen.isEmpty() && !s_seen.contains(false); }

private:
    static int look(sqlite3*, char**, const void*) {
        if (QThread::currentThread() == qApp->thread())
            s_seen.append(QApplication::overrideCursor() != nullptr);
        return SQLITE_OK;
    }

    static inline QList<bool> s_seen;
};

// What a folder holds, file by file.
QMap<QString, QByteArray> contentOfFolder(const QString& folder) {
    QMap<QString, QByteArray> content;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        content[QDir(folder).relativeFilePath(path)] = bytesOf(path);
    }
    return content;
}

}  // namespace

class TestRestore : public BackupTest {
    Q_OBJECT

    QTemporaryDir m_stick;

    void expectDone() {
        world->answers.custom("the report", [](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            QCOMPARE(box->windowTitle(), AllDone);
            QVERIFY(!QApplication::overrideCursor());
            box->accept();
        });
    }

private Q_SLOTS:
    void restoreSetsAsideOnceWhatItReplaces() {
        addSong("Now");
        writeBytes(world->path("saved sets/a.set"), "now");
        const QString copy = m_stick.filePath("copy");
        QVERIFY(QDir().mkpath(copy));
        QVERIFY(QFile::copy(world->path("db1.mdb"), copy + "/db1.mdb"));
        writeBytes(copy + "/saved sets/a.set", "then");
        addSong("Later");
        const frmBackup& w = open();
        tick({Database, SavedSets});
        world->answers.folder(copy, "Restore Database From");
        world->answers.folder(copy + "/saved sets", "Restore Saved Sets From");
        expectDone();
        click(w.cmdRestore);
        QCOMPARE(titles(), QStringList{"Now"});
        QCOMPARE(bytesOf(world->path("saved sets/a.set")), QByteArray("then"));
        const QStringList aside = copiesIn(world->folder());
        QCOMPARE(aside, QStringList{world->path("copies/2026-11-21 before restore")});
        QCOMPARE(bytesOf(aside[0] + "/saved sets/a.set"), QByteArray("now"));
        // What was set aside undoes the restore: the dialogs start there.
        world->answers.fileAsProposed();
        world->answers.fileAsProposed();
        expectDone();
        click(w.cmdRestore);
        QCOMPARE(titles(), (QStringList{"Now", "Later"}));
        QCOMPARE(bytesOf(world->path("saved sets/a.set")), QByteArray("now"));
    }

    void cancelledRestoreSetsNothingAside() {
        const frmBackup& w = open();
        tick({Database, SavedSets});
        world->answers.cancelFile();
        world->answers.cancelFile();
        click(w.cmdRestore);
        QCOMPARE(copiesIn(world->folder()), QStringList());
    }

    void wholeCopyOfADayRestoresByTheProposals() {
        addSong("Then");
        const QStringList files{"saved sets/a.set", "set designs/b.sdl", "schedules/c.scd"};
        for (const QString& file : files) writeBytes(world->path(file), "then");
        makeDailyCopy(world->folder(), today());
        for (const QString& file : files) writeBytes(world->path(file), "now");
        world->sql("DELETE FROM songs");
        const frmBackup& w = open();
        commonDlg().InitDir = "as it was";
        tick({Database, SavedSets, SetDesigns, Schedules});
        for (int i = 0; i < BackupIndex::Count; ++i) world->answers.fileAsProposed();
        expectDone();
        click(w.cmdRestore);
        QCOMPARE(titles(), QStringList{"Then"});
        for (const QString& file : files) QCOMPARE(bytesOf(world->path(file)), QByteArray("then"));
        QCOMPARE(commonDlg().InitDir, QString("as it was"));
    }

    void backupStartsWhereItDidBefore() {
        makeDailyCopy(world->folder(), today());
        const frmBackup& w = open();
        commonDlg().InitDir = m_stick.path();
        tick({Database});
        world->answers.cancelFile();
        click(w.cmdBack);
        QCOMPARE(world->answers.fileDialogs().back().folder, m_stick.path());
        QCOMPARE(copiesIn(world->folder()).size(), 1);
    }

    void damagedDatabaseIsNoReasonNotToRestore() {
        addSong("Then");
        QVERIFY(QFile::copy(world->path("db1.mdb"), m_stick.filePath("db1.mdb")));
        const frmBackup& w = open();
        // Nothing can be set aside here.
        writeBytes(world->path("copies"), "in the way");
        world->sql("DELETE FROM songs");
        tick({Database});
        world->answers.folder(m_stick.path(), "Restore Database From");
        expectDone();
        click(w.cmdRestore);
        QCOMPARE(titles(), QStringList{"Then"});
        QVERIFY(
            world->main().SB->SimpleText().startsWith("What is replaced could not be set aside. "));
    }

    void pointerIsAnHourglassWhileWorkIsSetAsideAndCopied() {
        const frmBackup& w = open();
        tick({Database});
        for (QPushButton* command : {w.cmdBack, w.cmdRestore}) {
            world->answers.folder(m_stick.path(), command == w.cmdBack ? "Copy Database Here"
                                                                       : "Restore Database From");
            expectDone();
            const PointerWatch pointer;
            click(command);
            QVERIFY(pointer.wasHourglass());
        }
        // A failure ends it.
        QVERIFY(QFile::remove(m_stick.filePath("db1.mdb")));
        world->answers.folder(m_stick.path(), "Restore Database From");
        world->answers.custom("the failure", [](QWidget* modal) {
            QVERIFY(!QApplication::overrideCursor());
            modal->close();
        });
        const PointerWatch pointer;
        click(w.cmdRestore);
        QVERIFY(pointer.wasHourglass());
        QVERIFY(!QApplication::overrideCursor());
    }

    void pointerIsAnHourglassWhileWorkIsSetAsideBeforeAReset() {
        const frmBackup& w = open();
        for (const bool fails : {false, true}) {
            if (fails) {
                QVERIFY(QDir(world->path("copies")).removeRecursively());
                writeBytes(world->path("copies"), "in the way");
            }
            answerWarning(QMessageBox::Yes);
            world->answers.custom("the outcome", [](QWidget* modal) {
                QVERIFY(!QApplication::overrideCursor());
                modal->close();
            });
            const PointerWatch pointer;
            click(w.lblReformatDB);
            if (!fails) QVERIFY(pointer.wasHourglass());
        }
    }

    void resetSetsAsideWhatItErases() {
        addSong("Kept");
        const frmBackup& w = open();
        answerWarning(QMessageBox::Yes);
        world->answers.box("Your database is empty.", QMessageBox::Information);
        click(w.lblReformatDB);
        QCOMPARE(titles(), QStringList());
        QCOMPARE(copiesIn(world->folder()),
                 QStringList{world->path("copies/2026-11-21 before reset")});
        tick({Database});
        world->answers.fileAsProposed();
        expectDone();
        click(w.cmdRestore);
        QCOMPARE(titles(), QStringList{"Kept"});
    }

    void resetThatCannotSetAsideErasesNothing() {
        addSong("Kept");
        const frmBackup& w = open();
        writeBytes(world->path("copies"), "in the way");
        answerWarning(QMessageBox::Yes);
        world->answers.custom("the reason", [](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            QVERIFY(box->text().startsWith(
                "The database was not emptied, because it could not be copied first.\n\n"));
            box->accept();
        });
        click(w.lblReformatDB);
        QCOMPARE(titles(), QStringList{"Kept"});
        QCOMPARE(world->endStatus, -1);
    }

    // --- Folders as one

    void interruptedRestoreLeavesTheOldOrTheNewFolder() {
        const QString source = m_stick.filePath("source");
        const QString target = world->path("saved sets");
        for (int i = 0; i < 20; ++i) {
            const QString name = QStringLiteral("/years/%1/a.set").arg(i);
            writeBytes(source + name, QByteArray("new").repeated(20'000));
            if (i % 2) writeBytes(target + name, QByteArray("old").repeated(20'000));
        }
        writeBytes(target + "/only here.set", "old");
        const auto before = contentOfFolder(target);
        auto after = before;
        after.insert(contentOfFolder(source));
        const auto putBack = [&] {
            QDir(target).removeRecursively();
            for (auto file = before.cbegin(); file != before.cend(); ++file)
                writeBytes(target + '/' + file.key(), file.value());
        };
        QElapsedTimer time;
        time.start();
        copyFolder(source, target, FolderCopy::AsOne);
        const auto whole = useconds_t(time.nsecsElapsed() / 1000);
        QVERIFY(contentOfFolder(target) == after);
        putBack();
        int oldSeen = 0;
        int newSeen = 0;
        constexpr useconds_t Rounds = 30;
        for (useconds_t round = 0; round < Rounds; ++round) {
            const pid_t child = fork();
            if (child == 0) {
                copyFolder(source, target, FolderCopy::AsOne);
                _exit(0);
            }
            // The last one comes to its end.
            if (round + 1 < Rounds) {
                usleep(whole * round / (Rounds * 3 / 4));
                kill(child, SIGKILL);
            }
            waitpid(child, nullptr, 0);
            finishFolderCopy(target);
            const auto found = contentOfFolder(target);
            QVERIFY(found == before || found == after);
            ++(found == before ? oldSeen : newSeen);
            QCOMPARE(QDir(world->folder()).entryList({".saved sets*"}, QDir::Dirs | QDir::Hidden),
                     QStringList());
            if (found != before) putBack();
        }
        QVERIFY(oldSeen > 0);
        QVERIFY(newSeen > 0);
    }

    void failedRestoreLeavesTheOldFolder() {
        const QString source = m_stick.filePath("full");
        const QString target = world->path("saved sets");
        writeBytes(source + "/a.set", "new");
        writeBytes(source + "/z.set", QByteArray("large").repeated(10'000));
        writeBytes(target + "/a.set", "old");
        QCOMPARE(inOtherProcess([&] {
                     const FullDisk full(4096);
                     try {
                         copyFolder(source, target, FolderCopy::AsOne);
                     } catch (const RunTimeError& error) {
                         return error.number();
                     }
                     return 0;
                 }),
                 int(RunTimeError::PermissionDenied));
        QCOMPARE(contentOfFolder(target), (QMap<QString, QByteArray>{{"a.set", "old"}}));
        QCOMPARE(QDir(world->folder()).entryList({".saved sets*"}, QDir::Dirs | QDir::Hidden),
                 QStringList());
    }

    void restoredFilesKeepTheirTimesAndLinksStayLinks() {
        const QString source = m_stick.filePath("times");
        const QString target = world->path("saved sets");
        writeBytes(source + "/a.set", "new");
        const QDateTime time(QDate(2020, 2, 2), QTime(12, 0));
        QFile file(source + "/a.set");
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        file.close();
        // The user keeps the sets elsewhere.
        const QString elsewhere = m_stick.filePath("elsewhere");
        writeBytes(elsewhere + "/b.set", "old");
        QVERIFY(QFile::link("b.set", elsewhere + "/link.set"));
        QVERIFY(QDir(target).removeRecursively());
        QVERIFY(QFile::link(elsewhere, target));
        copyFolder(source, target, FolderCopy::AsOne);
        QCOMPARE(QFileInfo(target + "/a.set").lastModified(), time);
        QVERIFY(QFileInfo(target).isSymLink());
        QVERIFY(QFileInfo(elsewhere + "/link.set").isSymLink());
        QCOMPARE(bytesOf(elsewhere + "/link.set"), QByteArray("old"));
    }
};

LORVANITE_TEST(TestRestore)
#include "test_restore.moc"
