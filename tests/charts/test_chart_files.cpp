// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Saving and opening charts, and assigning them to a song.
#include "charts/chart_test.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "support/files.h"

#include <QFile>

namespace {

const QString Filter = QStringLiteral("STP Files (*.stp)");
const QString SongStatement = QStringLiteral("SELECT ID, title FROM songs ORDER BY title [1]");

QString native(const QString& path) { return QDir::toNativeSeparators(path); }

}  // namespace

class TestChartFiles : public ChartTest {
    Q_OBJECT

    QString save(SheetMusic& w, const QString& name, QMessageBox::StandardButton tie) {
        const QString path = world->path("sheetmusic/" + name);
        world->answers.file(path);
        world->answers.question(TieQuestion, tie);
        pick(w.mnuFile, w.mnuSave);
        return path;
    }

private Q_SLOTS:
    void answerNoSavesWithoutAssigning() {
        const QString id = addSong("Abide");
        world->sql("UPDATE songs SET fileLoco = 'old.stp'");
        SheetMusic& w = open();
        write(w, 1);
        const QString path = save(w, "abide", QMessageBox::No);
        QVERIFY(QFile::exists(path + ".stp"));
        QCOMPARE(fileLocoOf(id), QStringLiteral("old.stp"));
        QVERIFY(world->statements.isEmpty());
        QVERIFY(!isOnTop(w.frmAssign));
        const auto& dialog = world->answers.fileDialogs().at(0);
        QVERIFY(dialog.saves);
        QCOMPARE(dialog.filters, QStringList{Filter});
        QCOMPARE(dialog.folder, world->path("sheetmusic"));
        QCOMPARE(dialog.proposed, QString());
        QCOMPARE(world->main().CommonDlg.Flags, 2);
    }

    void answerYesAssignsTheSavedFile() {
        const QString other = addSong("Blest");
        const QString id = addSong("Abide");
        SheetMusic& w = open();
        const QString path = save(w, "abide.stp", QMessageBox::Yes);
        QVERIFY(isOnTop(w.frmAssign));
        QCOMPARE(columnOf(w.fpAttach, AttachColumn::ID), (QStringList{id, other}));
        QCOMPARE(columnOf(w.fpAttach, AttachColumn::Title), (QStringList{"Abide", "Blest"}));
        w.fpAttach->Col(AttachColumn::ID);
        QVERIFY(w.fpAttach->ColHidden());
        QCOMPARE(w.lblAssign->text(), "Song Location: " + native(path));
        clickCell(w.fpAttach, AttachColumn::Title, 1);
        QCOMPARE(w.lblAssignSong->text(), QStringLiteral("Assign To: Abide"));
        world->answers.box("Done!", QMessageBox::Information);
        click(w.cmdSaveAssigned);
        QCOMPARE(fileLocoOf(id), native(path));
        QCOMPARE(fileLocoOf(other), QString());
        QCOMPARE(world->statements,
                 (QStringList{SongStatement, QString("UPDATE songs SET fileLoco = '%1' WHERE ID = "
                                                     "%2 [3]")
                                                 .arg(native(path), id)}));
        // The panel stays, and the file can be assigned to another song too.
        QVERIFY(isOnTop(w.frmAssign));
        clickCell(w.fpAttach, AttachColumn::Title, 2);
        world->answers.box("Done!", QMessageBox::Information);
        click(w.cmdSaveAssigned);
        QCOMPARE(fileLocoOf(other), native(path));
        click(w.cmdCloseAssign);
        QVERIFY(!isOnTop(w.frmAssign));
    }

    void failingSaveStillAsks() {
        // Deliberate: behaviour 127.
        const QString id = addSong("Abide");
        SheetMusic& w = open();
        write(w, 1);
        const QString before = stateOf(w.fpSong);
        answerWithLostFolder(world->answers, world->path("sheetmusic"), "abide.stp");
        world->answers.box(ChartNotSaved, QMessageBox::Information);
        world->answers.question(TieQuestion, QMessageBox::Yes);
        pick(w.mnuFile, w.mnuSave);
        QVERIFY(isOnTop(w.frmAssign));
        QCOMPARE(columnOf(w.fpAttach, AttachColumn::ID), QStringList{id});
        QCOMPARE(stateOf(w.fpSong), before);
    }

    void existingFileIsKeptUnlessConfirmed() {
        SheetMusic& w = open();
        makeFile("sheetmusic/abide.stp", "old");
        const QString path = world->path("sheetmusic/abide.stp");
        world->answers.file(path);
        world->answers.custom("overwrite", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::No),
                              Qt::LeftButton);
        });
        // The file dialog is still open, and is cancelled.
        world->answers.cancelFile();
        pick(w.mnuFile, w.mnuSave);
        QCOMPARE(bytesOf(path), QByteArray("old"));
    }

    void cancelledDialogsChangeNothing() {
        SheetMusic& w = open();
        write(w, 2);
        const QString before = stateOf(w.fpSong);
        world->answers.cancelFile();
        pick(w.mnuFile, w.mnuSave);
        world->answers.cancelFile();
        pick(w.mnuFile, w.mnuOpen);
        QCOMPARE(stateOf(w.fpSong), before);
        QVERIFY(!isOnTop(w.frmAssign));
        QVERIFY(world->statements.isEmpty());
    }

    void attachTwiceListsEverySongTwice() {
        // Deliberate: behaviour 128.
        const QString b = addSong("Blest");
        const QString a = addSong("abide");
        SheetMusic& w = open();
        pick(w.mnuFile, w.mnuAttachToDB);
        click(w.cmdCloseAssign);
        pick(w.mnuFile, w.mnuAttachToDB);
        QCOMPARE(columnOf(w.fpAttach, AttachColumn::ID), (QStringList{a, b, a, b}));
        QCOMPARE(columnOf(w.fpAttach, AttachColumn::Title),
                 (QStringList{"abide", "Blest", "abide", "Blest"}));
        QCOMPARE(world->statements, (QStringList{SongStatement, SongStatement}));
        QVERIFY(isOnTop(w.frmAssign));
    }

    void attachBeforeAnyDialogWritesAnEmptyPath() {
        // Deliberate: behaviour 129.
        const QString id = addSong("Abide");
        world->sql("UPDATE songs SET fileLoco = 'old.stp'");
        SheetMusic& w = open();
        pick(w.mnuFile, w.mnuAttachToDB);
        QCOMPARE(w.lblAssign->text(), QStringLiteral("Song Location: "));
        clickCell(w.fpAttach, AttachColumn::Title, 1);
        world->answers.box("Done!", QMessageBox::Information);
        click(w.cmdSaveAssigned);
        QCOMPARE(fileLocoOf(id), QString());
        QCOMPARE(world->statements.last(),
                 QString("UPDATE songs SET fileLoco = '' WHERE ID = %1 [3]").arg(id));
    }

    void attachTakesTheFileOfTheLastDialog() {
        // Deliberate: behaviour 129.
        addSong("Abide");
        SheetMusic& w = open();
        const QString path = save(w, "one.stp", QMessageBox::No);
        world->answers.file(path);
        pick(w.mnuFile, w.mnuOpen);
        pick(w.mnuFile, w.mnuAttachToDB);
        QCOMPARE(w.lblAssign->text(), "Song Location: " + native(path));
        // Also when another window has used the dialog.
        world->main().CommonDlg.FileName = "elsewhere.set";
        pick(w.mnuFile, w.mnuAttachToDB);
        QCOMPARE(w.lblAssign->text(), QStringLiteral("Song Location: elsewhere.set"));
    }

    void everyDialogBeginsInItsFolderWithoutAName() {
        SheetMusic& w = open();
        QVERIFY(QDir().mkpath(world->path("elsewhere")));
        const QString text = makeFile("elsewhere/abide.txt", "Abide with me");
        world->answers.file(text);
        pick(w.mnuFile, w.mnuImport);
        for (QAction* item : {w.mnuOpen, w.mnuSave, w.mnuImport}) {
            world->answers.cancelFile();
            pick(w.mnuFile, item);
            const auto& dialog = world->answers.fileDialogs().back();
            QCOMPARE(dialog.proposed, QString());
            QCOMPARE(dialog.folder, world->path("sheetmusic"));
        }
        world->answers.cancelFile();
        click(openTranspose(w).cmdSaveSetList);
        QCOMPARE(world->answers.fileDialogs().back().proposed, QString());
        QCOMPARE(world->answers.fileDialogs().back().folder, world->path("sheetmusic"));
        // A cancelled dialog leaves the file that was chosen.
        world->answers.cancelFile();
        pick(w.mnuSend, w.mnuToHTML);
        pick(w.mnuFile, w.mnuAttachToDB);
        QCOMPARE(w.lblAssign->text(), "Song Location: " + native(text));
    }

    void withoutAnActiveRowTheUserIsAskedToSelectASong() {
        addSong("Abide");
        SheetMusic& w = open();
        pick(w.mnuFile, w.mnuAttachToDB);
        world->answers.box(NoSongToTie, QMessageBox::Information);
        click(w.cmdSaveAssigned);
        QCOMPARE(world->statements, QStringList{SongStatement});
        QVERIFY(isOnTop(w.frmAssign));
    }

    void apostropheInThePathEndsTheProgram() {
        // Deliberate: behaviour 125.
        const QString id = addSong("Abide");
        SheetMusic& w = open();
        save(w, "Pat's.stp", QMessageBox::Yes);
        clickCell(w.fpAttach, AttachColumn::Title, 1);
        world->answers.runTimeError(-2147217900);
        click(w.cmdSaveAssigned);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(fileLocoOf(id), QString());
        QVERIFY(QFile::exists(world->path("sheetmusic/Pat's.stp")));
    }

    void missingSongTableStopsAttachButNotSave() {
        SheetMusic& w = open();
        world->sql("DROP TABLE songs");
        save(w, "abide.stp", QMessageBox::Yes);
        QVERIFY(isOnTop(w.frmAssign));
        QCOMPARE(w.fpAttach->MaxRows(), 0);
        QCOMPARE(world->endStatus, -1);
        click(w.cmdCloseAssign);
        world->answers.runTimeError(-2147217900, "no such table: songs");
        pick(w.mnuFile, w.mnuAttachToDB);
        QCOMPARE(world->endStatus, 1);
        QVERIFY(!isOnTop(w.frmAssign));
    }

    void chartsComeBackAsTheyWereSaved_data() {
        QTest::addColumn<int>("pages");
        QTest::newRow("1 page") << 1;
        QTest::newRow("3 pages") << 3;
        QTest::newRow("40 pages") << 40;
    }
    void chartsComeBackAsTheyWereSaved() {
        QFETCH(int, pages);
        SheetMusic& w = open();
        write(w, pages);
        const QString before = stateOf(w.fpSong);
        const QString path = save(w, "chart.stp", QMessageBox::No);
        w.Unload();
        settle();
        SheetMusic& again = open();
        again.addPage();
        again.addPage();
        again.fpSong->SetText(1, ChartRow::Spacer, "to be lost");
        world->answers.file(path);
        pick(again.mnuFile, again.mnuOpen);
        QCOMPARE(again.fpSong->SheetCount(), pages);
        QCOMPARE(stateOf(again.fpSong), before);
        QVERIFY(!again.fpSong->ColHeadersShow() && !again.fpSong->RowHeadersShow());
    }

    void openingADamagedFileKeepsTheChart() {
        SheetMusic& w = open();
        write(w, 2);
        const QString before = stateOf(w.fpSong);
        const QString path = save(w, "good.stp", QMessageBox::No);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.resize(file.size() / 2);
        file.close();
        for (const QString& bad : {path, makeFile("sheetmusic/empty.stp", ""),
                                   makeFile("sheetmusic/noise.stp", QByteArray(4096, '\xa5'))}) {
            world->answers.file(bad);
            pick(w.mnuFile, w.mnuOpen);
            QCOMPARE(stateOf(w.fpSong), before);
        }
    }

    void longPathIsStoredInFull() {
        addSong("Abide");
        SheetMusic& w = open();
        const QString name = QString(120, 'x') + QString::fromUtf8(" ü & <b>.stp");
        const QString path = save(w, name, QMessageBox::Yes);
        QCOMPARE(w.lblAssign->text(), "Song Location: " + native(path));
        QCOMPARE(w.width(), 803);
        clickCell(w.fpAttach, AttachColumn::Title, 1);
        world->answers.box("Done!", QMessageBox::Information);
        click(w.cmdSaveAssigned);
        QCOMPARE(world->rows("SELECT fileLoco FROM songs"), QStringList{native(path)});
    }

    void setGridShowsASongWithAChartGreen() {
        const QString id = addSong("Abide");
        world->sql("UPDATE songs SET playlist = 'Current'");
        SheetMusic& w = open();
        save(w, "abide.stp", QMessageBox::Yes);
        clickCell(w.fpAttach, AttachColumn::Title, 1);
        world->answers.box("Done!", QMessageBox::Information);
        click(w.cmdSaveAssigned);
        click(world->main().cmdSetList);
        auto& set = frmSetList::instance();
        set.txtSearch->setText("Abide");
        click(set.cmdSearchTitle);
        clickCell(set.fpSongList1, 2, 1);
        clickCell(set.fpSet, 2, 4);
        QCOMPARE(set.fpSet->GetText(2, 4), QStringLiteral("Abide"));
        set.fpSet->Col(2);
        set.fpSet->Row(4);
        QCOMPARE(set.fpSet->BackColor(), SheetMusicGreen);
        QVERIFY(!fileLocoOf(id).isEmpty());
    }
};

LORVANITE_TEST(TestChartFiles)
#include "test_chart_files.moc"
