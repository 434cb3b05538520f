// The main window: the button bar, the area of the module windows, the status line.
#pragma once

#include "platform/desktop/common_dialog.h"
#include "platform/desktop/form.h"
#include "platform/desktop/status_line.h"
#include "ui_frm_mdi.h"

#include <QMainWindow>
#include <QMenu>
#include <QPointer>

class frmSplash;

class frmMDI : public QMainWindow, public Ui::frmMDI {
    Q_OBJECT

public:
    // Opens the database, shows the splash and gives the reminder of due notes. Raises what a
    // failing database or date raises.
    frmMDI();
    ~frmMDI() override;

    // The one main window; it has to exist.
    static frmMDI& instance();

    OnFailure onFailure() const { return OnFailure::EndsProgram; }

    // The file and help dialog that every module borrows.
    CommonDialog CommonDlg;

    QMenu mnuUtilities;
    QAction mnuSpecialMusic;
    QAction mnuImportSet;
    QAction mnuBackupFiles;
    QAction mnuCCLI;

    // The splash; null once it is gone.
    QPointer<frmSplash> splash;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void showReminderNotes();
    void setUpUtilities();
    void wireModules();
    void dressButtons();

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
    void cmdEmail_Click();
    void cmdAbout_Click();
    void Command10_Click();
    void Command11_Click();
};
