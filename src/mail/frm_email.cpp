#include "mail/frm_email.h"

#include "core/data/database.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/theme/theme.h"

#include <QCloseEvent>
#include <QDir>

namespace {

const QString TakeAll = QStringLiteral("All =>");
const QString TakeNone = QStringLiteral("All <=");

// Several files, each of which has to be there.
constexpr int AttachmentFlags = 788996;

void addRow(SheetView& grid, const QString& text) {
    grid.MaxRows(grid.MaxRows() + 1);
    grid.SetText(1, grid.MaxRows(), text);
}

// The paths in a file dialog's result: one whole path, or a folder and the names in it.
QStringList chosenPaths(const QString& result) {
    QStringList parts = result.split(QChar(u'\0'));
    if (parts.size() == 1) return parts;
    QString folder = parts.takeFirst();
    if (!folder.endsWith(QLatin1Char('/')) && !folder.endsWith(QLatin1Char('\\')))
        folder += QDir::separator();
    for (QString& part : parts) part.prepend(folder);
    return parts;
}

}  // namespace

frmEmail::frmEmail() {
    setupUi(this);
    cmdCloseNote->setIcon(themedIcon(QStringLiteral("close")));
    setUpGrids();
    wireWindow();
    wireLibrary();
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
}

void frmEmail::wireWindow() {
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
    onEvent(this, cmdCloseConfig, &QPushButton::clicked, &frmEmail::cmdCloseConfig_Click);
    // These run before the box changes, by the mouse and by the keyboard alike.
    onEvent(this, optAuthentication, &QCheckBox::pressed, &frmEmail::optAuthentication_MouseDown);
    onEvent(this, optPOPauthentication, &QCheckBox::pressed,
            &frmEmail::optPOPauthentication_MouseDown);
    onEvent(this, chkPassword, &QCheckBox::pressed, &frmEmail::chkPassword_MouseDown);
    onEvent(this, cmdSend, &QPushButton::clicked, &frmEmail::cmdSend_Click);
}

void frmEmail::wireLibrary() {
    onEvent(this, &poSendMail, &::poSendMail::Progress, &frmEmail::poSendMail_Progress);
    onEvent(this, &poSendMail, &::poSendMail::Status, &frmEmail::poSendMail_Status);
    onEvent(this, &poSendMail, &::poSendMail::SendSuccesful, &frmEmail::poSendMail_SendSuccesful);
    onEvent(this, &poSendMail, &::poSendMail::SendFailed, &frmEmail::poSendMail_SendFailed);
}

void frmEmail::setUpGrids() {
    for (SheetView* grid : {fpEmail, fpTo}) {
        grid->MaxCols(1);
        grid->MaxRows(0);
        grid->RowHeadersShow(false);
        grid->GridShowHoriz(false);
        grid->GridShowVert(false);
        grid->setReadOnly(true);
        grid->setFillColumn(1);
    }
    fpEmail->SetText(1, 0, QStringLiteral("Team"));
    fpTo->SetText(1, 0, QStringLiteral("Recipient(s):"));
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
    Recordset rs = select(QStringLiteral("SELECT fName, lName, email FROM personell"));
    for (; !rs.EOF_(); rs.MoveNext())
        if (!rs.Fields("email").isEmpty())
            addRow(*fpEmail, rs.Fields("fName") + QLatin1Char(' ') + rs.Fields("lName"));
    rs.Close();
    fpEmail->SetActiveCell(0, 0);
    fpTo->MaxRows(0);
}

void frmEmail::fpEmail_Click(int, int row) {
    if (row < 1)
        fpEmail->SortByHead(1);
    else
        addRow(*fpTo, fpEmail->GetText(1, row));
}

void frmEmail::fpTo_Click(int, int row) {
    if (row < 1) {
        fpTo->SortByHead(1);
        return;
    }
    fpTo->DeleteRows(row, 1);
    fpTo->MaxRows(fpTo->MaxRows() - 1);
}

void frmEmail::Label5_Click() {
    if (Label5->text() == TakeAll) {
        fpTo->MaxRows(fpEmail->MaxRows());
        for (int row = 1; row <= fpEmail->MaxRows(); ++row)
            fpTo->SetText(1, row, fpEmail->GetText(1, row));
        Label5->setText(TakeNone);
    } else {
        fpTo->ClearRange(-1, -1, -1, -1, true);
        fpTo->MaxRows(0);
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
    // The dialog is the whole program's: its next user asks for one file.
    dialog.Flags = 0;
    dialog.DialogTitle.clear();
    if (!isChosen) return;
    QStringList paths = chosenPaths(dialog.FileName);
    if (!txtAttach->text().isEmpty()) paths.prepend(txtAttach->text());
    txtAttach->setText(paths.join(QLatin1Char(';')));
}

void frmEmail::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    placePanels();
}

// The panels float over the middle of the window.
void frmEmail::placePanels() {
    for (QFrame* panel : {frmNote, frmConfig})
        panel->move((width() - panel->width()) / 2, (height() - panel->height()) / 4);
}

void frmEmail::closeEvent(QCloseEvent* event) {
    if (poSendMail.isSending()) {
        // The send returns into this window: it is hidden now and deleted behind its end.
        poSendMail.Cancel();
        m_isClosed = true;
        parentWidget()->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    event->accept();
}
