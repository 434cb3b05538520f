// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The base of the tests of the window Backup Files.
#pragma once

#include "maintenance/frm_backup.h"
#include "support/world.h"

class BackupTest : public WindowTest {
    Q_OBJECT

protected:
    // The boxes.
    static constexpr int Database = BackupIndex::Database;
    static constexpr int SavedSets = BackupIndex::SavedSets;
    static constexpr int SetDesigns = BackupIndex::SetDesigns;
    static constexpr int Schedules = BackupIndex::Schedules;

    // Opens the window from the menu, and clears the log of statements.
    frmBackup& open() {
        if (!world->isRunning()) world->start();
        click(world->main().Command10);
        pickMenuItem(world->main().mnuUtilities, world->main().mnuBackupFiles);
        world->statements.clear();
        return frmBackup::instance();
    }

    void tick(std::initializer_list<int> boxes) {
        for (const int box : boxes) {
            QCheckBox* check = frmBackup::instance().ckBU[size_t(box)];
            QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(8, check->height() / 2));
        }
    }

    void addSong(const QString& title) {
        world->sql(QStringLiteral("INSERT INTO songs (title) VALUES ('%1')").arg(title));
    }

    QStringList titles() { return world->rows("SELECT title FROM songs ORDER BY ID"); }

    // The text of the warning before the database is emptied.
    static QString warning() {
        return QStringLiteral(
            "Clicking 'YES' below will erase all the information in the database.\r\r"
            "PROCEED WITH CAUTION");
    }

    void answerWarning(QMessageBox::StandardButton answer) {
        world->answers.question(warning(), answer, "WARNING!");
    }
};
