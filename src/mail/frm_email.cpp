// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/frm_email.h"

#include "mail/rules/attachments.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/grid_view/kept_controls.h"
#include "platform/theme/theme.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace {

const QString TakeAll = QStringLiteral("All =>");
const QString TakeNone = QStringLiteral("All <=");

// Several files may be chosen, and each has to exist.
constexpr int AttachmentFlags = 788996;

}  // namespace

frmEmail::frmEmail() {
    setupUi(this);
    cmdCloseNote->setIcon(themedIcon(QStringLiteral("close")));
    setUpGrids();
    connectControls();
    connectLibrary();
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
    keepMessage();
}

void frmEmail::keepMessage() {
    KeptControls controls;
    controls.add(QStringLiteral("fpTo"), fpTo);
    controls.add(QStringLiteral("txtSubject"), txtSubject);
    controls.add(QStringLiteral("txtAttach"), txtAttach);
    controls.add(QStringLiteral("txtMsg"), txtMsg);
    controls.add(QStringLiteral("txtNote"), txtNote);
    m_kept = keepControls(*this, UnsavedKind::Message, controls);
}

void frmEmail::loadMessage(const QString& text) {
    m_kept->replaceBy([&] { txtMsg->setPlainText(text); });
}

void frmEmail::connectControls() {
    onEvent(this, fpEmail, &SheetView::Click, &frmEmail::fpEmail_Click);
    onEvent(this, fpTo, &SheetView::Click, &frmEmail::fpTo_Click);
    onEvent(this, Label5, &QToolButton::clicked, &frmEmail::Label5_Click);
    onEvent(this, cmdBrowse, &QPushButton::clicked, &frmEmail::cmdBrowse_Click);
    onEvent(this, cmdAddNote, &QPushButton::clicked, &frmEmail::cmdAddNote_Click);
    onEvent(this, cmdAttachNote, &QPushButton::clicked, &frmEmail::cmdAttachNote_Click);
    onEvent(this, cmdClearNote, &QPushButton::clicked, &frmEmail::cmdClearNote_Click);
    onEvent(this, cmdCancelNote, &QPushButton::clicked, &frmEmail::hideNote);
    onEvent(this, cmdCloseNote, &QToolButton::clicked, &frmEmail::hideNote);
    onEvent(this, cmdConfig, &QPushButton::clicked, &frmEmail::cmdConfig_Click);
    onEscape(this, frmNote, &frmEmail::hideNote);
    onEscape(this, frmConfig, &frmEmail::cmdCloseConfig_Click);
    onEvent(this, cmdCloseConfig, &QPushButton::clicked, &frmEmail::cmdCloseConfig_Click);
    // The mouse and the keyboard press a box before its state changes.
    onEvent(this, optAuthentication, &QCheckBox::pressed, &frmEmail::optAuthentication_MouseDown);
    onEvent(this, optPOPauthentication, &QCheckBox::pressed,
            &frmEmail::optPOPauthentication_MouseDown);
    onEvent(this, chkPassword, &QCheckBox::pressed, &frmEmail::chkPassword_MouseDown);
    onEvent(this, cmdSend, &QPushButton::clicked, &frmEmail::cmdSend_Click);
}

void frmEmail::connectLibrary() {
    onEvent(this, &poSendMail, &::poSendMail::Progress, &frmEmail::poSendMail_Progress);
    onEvent(this, &poSendMail, &::poSendMail::Status, &frmEmail::poSendMail_Status);
    onEvent(this, &poSendMail, &::poSendMail::AnswerAwaited, &frmEmail::poSendMail_AnswerAwaited);
    onEvent(this, &poSendMail, &::poSendMail::SendSuccesful, &frmEmail::poSendMail_SendSuccesful);
    onEvent(this, &poSendMail, &::poSendMail::SendFailed, &frmEmail::poSendMail_SendFailed);
}

void frmEmail::setUpGrids() {
    for (SheetView* grid : {fpEmail, fpTo}) {
        grid->MaxCols(RecipientColumn::Name);
        grid->MaxRows(0);
        grid->RowHeadersShow(false);
        grid->GridShowHoriz(false);
        grid->GridShowVert(false);
        grid->setReadOnly(true);
        grid->setFillColumn(RecipientColumn::Name);
    }
    fpEmail->SetText(RecipientColumn::Name, 0, QStringLiteral("Team"));
    fpTo->SetText(RecipientColumn::Name, 0, QStringLiteral("Recipient(s):"));
}

void frmEmail::load() {
    centre();
    fpEmail->SetActiveCell(0, 0);
    fpTo->SetActiveCell(0, 0);
    loadPeople();
    poSendMail.PersistentSettings(true);
    loadSettings();
}

void frmEmail::loadPeople() {
    listTeam(*fpEmail);
    fpEmail->SetActiveCell(0, 0);
    fpTo->MaxRows(0);
}

void frmEmail::fpEmail_Click(int, int row) {
    if (row < 1)
        fpEmail->SortByHead(RecipientColumn::Name);
    else  // Deliberate: behaviour 160.
        addRecipient(*fpTo, fpEmail->GetText(RecipientColumn::Name, row));
}

void frmEmail::fpTo_Click(int, int row) {
    if (row < 1)
        fpTo->SortByHead(RecipientColumn::Name);
    else
        removeRecipient(*fpTo, row);
}

void frmEmail::Label5_Click() {
    // Deliberate: behaviour 160.
    if (Label5->text() == TakeAll) {
        chooseWholeTeam(*fpTo, *fpEmail);
        Label5->setText(TakeNone);
    } else {
        clearRecipients(*fpTo);
        Label5->setText(TakeAll);
    }
}

void frmEmail::cmdBrowse_Click() {
    CommonDialog& dialog = commonDlg();
    dialog.FileName.clear();
    dialog.InitDir.clear();
    dialog.Filter = QStringLiteral(
        "All Files (*.*)|*.*|HTML Files (*.htm;*.html;*.shtml)|*.htm;*.html;*.shtml|Images "
        "(*.bmp;*.jpg;*.gif)|*.bmp;*.jpg;*.gif");
    dialog.FilterIndex = 1;
    dialog.DialogTitle = QStringLiteral("Select File Attachment(s)");
    dialog.MaxFileSize = 32767;
    dialog.Flags = AttachmentFlags;
    const bool isChosen = dialog.chosen(&CommonDialog::ShowOpen);
    // The next user of the shared dialog expects a single file.
    dialog.Flags = 0;
    dialog.DialogTitle.clear();
    if (!isChosen) return;
    txtAttach->setText(withChosenFiles(txtAttach->text(), dialog.FileName));
}

void frmEmail::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    placePanels();
}

// Keeps the panels centred, in the upper part of the window.
void frmEmail::placePanels() {
    for (QFrame* panel : {frmNote, frmConfig})
        panel->move((width() - panel->width()) / 2, (height() - panel->height()) / 4);
}

void frmEmail::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_isWaiting)
        poSendMail.Cancel();
    else
        FormBase::keyPressEvent(event);
}

void frmEmail::closeEvent(QCloseEvent* event) {
    if (poSendMail.isSending()) {
        // The send returns into this window: it is hidden now and deleted when the send has ended.
        poSendMail.Cancel();
        m_isClosed = true;
        parentWidget()->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    event->accept();
}
