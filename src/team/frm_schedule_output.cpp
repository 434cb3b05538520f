// What goes out of a schedule: mail, paper, a page of HTML; and the panel that asks for the weeks.
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "mail/frm_email.h"
#include "mail/mail_hand_over.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "platform/paper/printing.h"
#include "platform/theme/theme.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_rows.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>

#include <tuple>

namespace {

const QString MailRange = QStringLiteral("e-Mail Range of &Weeks");
const QString MailWhole = QStringLiteral("e-Mail W&hole Schedule");
const QString PrintRange = QStringLiteral("Print Range of &Weeks");
const QString PrintWhole = QStringLiteral("Print W&hole Schedule");

// The choices of the panel.
constexpr int RangeMode = 0;
constexpr int WholeMode = 1;

constexpr int PanelGap = 8;  // pixels

// Twips.
constexpr int InchMargin = 1440;
constexpr int SideMargin = 720;

// The whole grid, while its blank rows are out of it.
QString scratchFile() { return programFolder() + QStringLiteral("/config/temp.scd"); }

void tellWrongDate() {
    messageBox(QStringLiteral("Wrong date formatting.  Please enter a valid date."),
               BoxIcon::Information);
}

bool isBlank(const SheetGrid& grid, int row) {
    for (int col = 1; col <= grid.MaxCols(); ++col)
        if (!grid.GetText(col, row).isEmpty()) return false;
    return true;
}

// Mail readers take the table as wide as they are, and get a little air about its texts.
QString withoutFixedWidth(QString line) {
    line.remove(QLatin1String("WIDTH=692"));
    if (line.contains(QLatin1String("<TABLE CELLSPACING=0 CELLPADDING=0")))
        line.replace(QLatin1String("CELLPADDING=0"), QLatin1String("CELLPADDING=1"));
    return line;
}

// Rewrites the staging file as one line, and gives that line.
QString rewriteStagedTable() {
    QString html;
    for (const QString& line : linesOf(mailStagingFile())) html += withoutFixedWidth(line);
    if (!replaceFile(mailStagingFile(), html.toUtf8() + "\r\n"))
        throw RunTimeError(RunTimeError::PathAccess);
    return html;
}

}  // namespace

// --- The panel ---------------------------------------------------------------------------------

void frmSchedule::setUpChooseEmail() {
    Ui::ChooseEmailPanel::setupUi(frmChooseEmail);
    optEmail = {optEmail_0, optEmail_1};
    Command4->setIcon(themedIcon(QStringLiteral("close")));
    QFont font = Label16->font();
    font.setFamilies(QStringList(QStringLiteral("Arial Black")) + font.families());
    font.setWeight(QFont::Black);
    Label16->setFont(font);
    // The bright caption is read on a dark ground, in either look.
    QPalette colours = Label16->palette();
    colours.setColor(QPalette::Window, themeColours(false).accent);
    colours.setColor(QPalette::WindowText, QColor(0, 255, 255));
    Label16->setPalette(colours);
    // The panel keeps its size while the dates are hidden.
    for (QWidget* part : rangeParts()) {
        QSizePolicy policy = part->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        part->setSizePolicy(policy);
    }
    optEmail_Click(WholeMode);
}

void frmSchedule::wireOutput() {
    onEvent(this, cmdEmailSchedule, &QPushButton::clicked, &frmSchedule::cmdEmailSchedule_Click);
    onEvent(this, cmdPrintSched, &QPushButton::clicked, &frmSchedule::cmdPrintSched_Click);
    onEvent(this, cmdExportText, &QPushButton::clicked, &frmSchedule::cmdExportText_Click);
    onEvent(this, cmdPrintRoster, &QPushButton::clicked, &frmSchedule::cmdPrintRoster_Click);
    onEvent(this, cmdSend, &QPushButton::clicked, &frmSchedule::cmdSend_Click);
    onEvent(this, Command4, &QToolButton::clicked, &frmSchedule::Command4_Click);
    for (int i : {RangeMode, WholeMode})
        connect(optEmail[size_t(i)], &QRadioButton::clicked, this,
                [this, i] { optEmail_Click(i); });
}

std::array<QWidget*, 4> frmSchedule::rangeParts() const { return {lblfrm, txtFrom, lblto, txtto}; }

void frmSchedule::optEmail_Click(int index) {
    for (QWidget* part : rangeParts()) part->setVisible(index == RangeMode);
}

bool frmSchedule::isRangeMode() const { return optEmail[RangeMode]->isChecked(); }

void frmSchedule::cmdEmailSchedule_Click() {
    toggleChooseEmail(cmdEmailSchedule, MailRange, MailWhole, QStringLiteral("Send"));
}

void frmSchedule::cmdPrintSched_Click() {
    toggleChooseEmail(cmdPrintSched, PrintRange, PrintWhole, QStringLiteral("Print"));
}

// Either button hides the panel that the other one has shown: this is meant.
void frmSchedule::toggleChooseEmail(QPushButton* opener, const QString& range, const QString& whole,
                                    const QString& send) {
    if (frmChooseEmail->isVisible()) {
        hideChooseEmail();
        return;
    }
    optEmail[RangeMode]->setText(range);
    optEmail[WholeMode]->setText(whole);
    cmdSend->setText(send);
    m_opener = opener;
    placeChooseEmail();
    frmChooseEmail->show();
    frmChooseEmail->raise();
    optEmail[isRangeMode() ? RangeMode : WholeMode]->setFocus();
}

void frmSchedule::Command4_Click() { hideChooseEmail(); }

void frmSchedule::hideChooseEmail() {
    const bool hadFocus = frmChooseEmail->isAncestorOf(QApplication::focusWidget());
    frmChooseEmail->hide();
    if (hadFocus) m_opener->setFocus();
}

// Over the lower right corner of the schedule, above the buttons that show it.
void frmSchedule::placeChooseEmail() {
    frmChooseEmail->adjustSize();
    const QPoint corner = cmdExportText->geometry().topRight();
    frmChooseEmail->move(corner.x() + 1 - frmChooseEmail->width(),
                         corner.y() - PanelGap - frmChooseEmail->height());
}

void frmSchedule::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    placeChooseEmail();
}

void frmSchedule::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && frmChooseEmail->isVisible())
        hideChooseEmail();
    else if (isReturn && Command4->hasFocus())
        hideChooseEmail();
    else if (isReturn && frmChooseEmail->isAncestorOf(QApplication::focusWidget()))
        cmdSend->click();
    else
        FormBase::keyPressEvent(event);
}

void frmSchedule::cmdSend_Click() {
    // The panel's captions tell what it was shown for.
    if (optEmail[RangeMode]->text() == MailRange) mailSchedule();
    if (optEmail[RangeMode]->text() == PrintRange) printSchedule();
}

// --- The compacted grid ------------------------------------------------------------------------

// The schedule takes its place while it is hidden, so that nothing else in the window moves.
void frmSchedule::hideForOutput() {
    QSizePolicy policy = fpSchedule->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    fpSchedule->setSizePolicy(policy);
    fpSchedule->hide();
}

void frmSchedule::compactForOutput() {
    hideForOutput();
    // What cannot be kept in the scratch file goes out all the same.
    std::ignore = fpSchedule->SaveToFile(scratchFile(), false);
    // The numbers allow for the deletions before them.
    std::vector<int> blankRows;
    for (int row = FirstHeadRow; row <= fpSchedule->MaxRows(); ++row)
        if (isBlank(*fpSchedule, row)) blankRows.push_back(row - int(blankRows.size()));
    for (const int row : blankRows) fpSchedule->DeleteRows(row, 1);
    showSchedule(true);
}

void frmSchedule::restoreAfterOutput() {
    fpSchedule->LoadFromFile(scratchFile());
    showSchedule(true);
    QFile::remove(resolvedPath(scratchFile()));
}

// --- Weeks -------------------------------------------------------------------------------------

// The block from the head of the first wanted week to the row before the head behind the last one.
// No such head gives an end below 1, and dates in the wrong order an end above the start: both go
// out as they are. This is meant.
bool frmSchedule::findWeeks(int& first, int& last, bool letsEventsThrough) {
    const int from =
        fpSchedule->SearchCol(DateColumn, 1, fpSchedule->DataRowCnt(), txtFrom->text());
    if (letsEventsThrough) doEvents();
    const int to = fpSchedule->SearchCol(DateColumn, 1, fpSchedule->DataRowCnt(), txtto->text());
    if (letsEventsThrough) doEvents();
    if (from <= 0 || to <= 0) {
        tellWrongDate();
        showSchedule(true);
        setMousePointer(MousePointer::Arrow);
        return false;
    }
    first = from - 1;
    last = fpSchedule->SearchCol(DateColumn, to, fpSchedule->MaxRows(), QStringLiteral("Date")) - 1;
    return true;
}

// --- Mail --------------------------------------------------------------------------------------

// Wherever this stops early the grid stays compacted and the scratch file stays: this is meant.
void frmSchedule::mailSchedule() {
    compactForOutput();
    if (isRangeMode() && (!parseDate(txtFrom->text()) || !parseDate(txtto->text()))) {
        tellWrongDate();
        return;
    }
    setMousePointer(MousePointer::Hourglass);
    fpSchedule->PrintUseDataMax(true);
    setColumnWidths(31.0, 26.87, 18.37);
    // Without a title nothing goes out, and the pointer stays an hourglass: this is meant.
    if (fpSchedule->GetText(1, 1).isEmpty()) return;
    hideForOutput();
    doEvents();
    int first = 1;
    int last = fpSchedule->DataRowCnt();
    if (isRangeMode() && !findWeeks(first, last, false)) return;
    // An export that fails is not noticed: what the file held before goes out. This is meant.
    std::ignore = fpSchedule->ExportRangeToHTML(1, first, 4, last, mailStagingFile(), false,
                                                QStringLiteral("lsl"));
    fillMail(rewriteStagedTable());
    joinNoteLines();
    showSchedule(true);
    doEvents();
    frmEmail::instance().Show();
    setMousePointer(MousePointer::Arrow);
    hideChooseEmail();
    restoreAfterOutput();
}

// On the grid alone, which is loaded back: this is meant.
void frmSchedule::joinNoteLines() {
    for (int row = FirstHeadRow; row <= fpSchedule->MaxRows(); ++row) {
        for (const char lineEnd : {'\r', '\n'}) {
            QString note = fpSchedule->GetText(NotesColumn, row);
            if (!note.contains(QLatin1Char(lineEnd))) continue;
            fpSchedule->SetText(NotesColumn, row, note.remove(QLatin1Char(lineEnd)));
        }
    }
}

// --- Paper -------------------------------------------------------------------------------------

void frmSchedule::printSchedule() {
    compactForOutput();
    for (int row = 1; row <= fpSchedule->MaxRows(); ++row) {
        fpSchedule->Row(row);
        fpSchedule->RowPageBreak(false);
    }
    fpSchedule->PrintType(PrintTypes::All);
    if (isRangeMode()) {
        int first = 0;
        int last = 0;
        if (!findWeeks(first, last, true)) return;
        fpSchedule->Col(1);
        fpSchedule->Col2(4);
        fpSchedule->Row(first);
        fpSchedule->Row2(last);
        fpSchedule->PrintType(PrintTypes::Block);
    }
    // The head rows' colour reaches the paper only in a range: this is meant.
    fpSchedule->PrintColor(isRangeMode());
    applyPrintSettings(*fpSchedule);
    fpSchedule->PrintColHeaders(false);
    fpSchedule->PrintGrid(false);
    fpSchedule->PrintMarginTop(InchMargin);
    fpSchedule->PrintMarginBottom(InchMargin);
    PrintSheet(*fpSchedule, 1);
    hideChooseEmail();
    restoreAfterOutput();
}

// What the schedule and the roster have in common.
void frmSchedule::applyPrintSettings(SheetGrid& grid) {
    grid.PrintJobName(QStringLiteral("Worship Schedule"));
    grid.PrintFooter(QStringLiteral("/cPage /p Of /pc"));
    grid.PrintBorder(false);
    grid.PrintRowHeaders(false);
    grid.PrintShadows(false);
    grid.PrintMarginLeft(SideMargin);
    grid.PrintMarginRight(SideMargin);
    grid.PrintSmartPrint(true);
    grid.PrintUseDataMax(true);
}

// --- A page of HTML ----------------------------------------------------------------------------

void frmSchedule::cmdExportText_Click() {
    compactForOutput();
    QString name = fpSchedule->GetText(1, 1);
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    name.remove(QLatin1Char(':')).remove(QLatin1Char(' '));
    if (name.isEmpty()) name = QStringLiteral("Schedule");
    // A cancel leaves the grid compacted and the scratch file in its place: this is meant.
    if (!chooseFile(&CommonDialog::ShowSave, name + QStringLiteral(".html"),
                    QStringLiteral("HTML Files|*.html")))
        return;
    if (!fpSchedule->ExportRangeToHTML(1, 1, fpSchedule->MaxCols(), fpSchedule->DataRowCnt(),
                                       commonDlg().FileName, false, QStringLiteral("lsl")))
        tellNotSaved();
    restoreAfterOutput();
}
