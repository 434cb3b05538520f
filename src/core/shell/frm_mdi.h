// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The main window: the button bar, the area for the module windows and the status bar.
#pragma once

#include "platform/desktop/common_dialog.h"
#include "platform/desktop/form.h"
#include "platform/desktop/status_line.h"
#include "ui_frm_mdi.h"

#include <QMainWindow>
#include <QMenu>
#include <QPointer>

#include <optional>

class WelcomeLinks;
class frmSplash;

class frmMDI : public QMainWindow, public Ui::frmMDI {
    Q_OBJECT

public:
    // Opens the database, shows the splash and the reminder of notes. Raises like programFolder
    // and openDatabase, or RunTimeError::StatementRefused if a statement fails.
    frmMDI();

    OnFailure onFailure() const { return OnFailure::EndsProgram; }

    // The file and help dialog, which all modules share.
    CommonDialog CommonDlg;

    QMenu mnuUtilities;
    QAction mnuSpecialMusic;
    QAction mnuImportSet;
    QAction mnuBackupFiles;
    QAction mnuCCLI;
    QAction mnuExchange;
    QAction mnuFindWords;

    // The splash; null after it was closed.
    QPointer<frmSplash> splash;

    // The links of a program without songs; null once a window was opened, and with songs.
    QPointer<WelcomeLinks> welcome;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void reportReadOnlyFolder();
    void reportFilesNotUpdated();
    void showReminderNotes();
    void setUpUtilities();
    void setUpKeys();
    void wireModules();
    void offerFirstSteps();
    void showFirstSteps();
    void dressButtons();
    void fitButtons();
    void showGuide(const QString& heading);

    void cmdSetList_Click();
    void cmdSongMgmt_Click();
    void cmdScheduling_Click();
    void mnuSpecialMusic_Click();
    void mnuImportSet_Click();
    void cmdPastSets_Click();
    void cmdSheetMusic_Click();
    void cmdHistory_Click();
    void Command1_Click();
    void mnuBackupFiles_Click();
    void mnuCCLI_Click();
    void mnuExchange_Click();
    void mnuFindWords_Click();
    void cmdEmail_Click();
    void cmdAbout_Click();
    void Command10_Click();
    void Command11_Click();

    // Makes the window known to the others, and unknown when it is destroyed, even by an error in
    // its constructor.
    struct Registration {
        explicit Registration(frmMDI& window);
        ~Registration();
    };
    std::optional<Registration> m_registration;
};
