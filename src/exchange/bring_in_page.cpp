// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/bring_in_page.h"

#include "catalogue/rules/categories.h"
#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "exchange/import_run.h"
#include "exchange/work_progress.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "team/rules/personnel.h"

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMainWindow>
#include <QMimeData>
#include <QSignalBlocker>

using namespace Qt::Literals::StringLiterals;

namespace {

namespace PreviewColumn {
enum { Kind = 1, Name, Outcome, Details, File, Last = File };
}

constexpr int RefusedColour = RGB(255, 225, 220);

void setUpPreview(SheetView& preview) {
    preview.MaxCols(PreviewColumn::Last);
    preview.MaxRows(0);
    preview.RowHeadersShow(false);
    const struct {
        int col;
        const char* head;
        double width;
    } columns[] = {{PreviewColumn::Kind, "What", 9},
                   {PreviewColumn::Name, "Name", 22},
                   {PreviewColumn::Outcome, "Result", 14},
                   {PreviewColumn::Details, "Details", 30},
                   {PreviewColumn::File, "File", 16}};
    for (const auto& column : columns) {
        preview.SetText(column.col, 0, QLatin1String(column.head));
        preview.ColWidth(column.col, column.width);
    }
    preview.setReadOnly(true);
    preview.setFillColumn(PreviewColumn::Details);
}

// The files of a dialog: a path, or a folder and names.
QStringList chosenFiles(const QString& fileName) {
    const QStringList parts = fileName.split(QChar(u'\0'));
    if (parts.size() < 2) return parts;
    QStringList files;
    for (const QString& name : parts.mid(1)) files.append(parts[0] + u'/' + name);
    return files;
}

QStringList rolesInUse() {
    QStringList roles;
    Recordset rs = select(u"SELECT DISTINCT role FROM personell WHERE role > '' ORDER BY role"_s);
    for (; !rs.EOF_(); rs.MoveNext()) roles.append(rs.Fields("role"));
    rs.Close();
    return roles;
}

}  // namespace

BringInPage::BringInPage(QWidget* parent) : QWidget(parent) {
    setupUi(this);
    setUpPreview(*fpPreview);
    setAcceptDrops(true);
    onEvent(this, cmdFiles, &QPushButton::clicked, &BringInPage::cmdFiles_Click);
    onEvent(this, cmdFolder, &QPushButton::clicked, &BringInPage::cmdFolder_Click);
    onEvent(this, cmdClear, &QPushButton::clicked, &BringInPage::cmdClear_Click);
    onEvent(this, cmdImport, &QPushButton::clicked, &BringInPage::cmdImport_Click);
    onEvent(this, cmdReport, &QPushButton::clicked, &BringInPage::cmdReport_Click);
    onEvent(this, lstThemes, &QListWidget::itemChanged, &BringInPage::lstThemes_Change);
    onEvent(this, cmbCategory, &QComboBox::currentTextChanged, &BringInPage::choice_Change);
    onEvent(this, cmbRole, &QComboBox::currentTextChanged, &BringInPage::choice_Change);
    onEvent(this, chkCharts, &QCheckBox::toggled, &BringInPage::choice_Change);
    atEdge(onFailure(), [this] {
        cleanUpAfterKilledImport();
        offerCategories();
        const QString why = chartsNotPossible();
        chkCharts->setEnabled(why.isEmpty());
        chkCharts->setChecked(why.isEmpty());
        chkCharts->setToolTip(why);
        showPlan();
    });
}

void BringInPage::offerCategories() {
    const QSignalBlocker categories(cmbCategory);
    const QSignalBlocker roles(cmbRole);
    const QString category = cmbCategory->currentText();
    const QString role = cmbRole->currentText();
    cmbCategory->clear();
    cmbCategory->addItems(QStringList(QString()) + categoryNames());
    cmbCategory->setCurrentText(category);
    cmbRole->clear();
    cmbRole->addItems(rolesInUse());
    cmbRole->setCurrentText(role);
}

// --- Files --------------------------------------------------------------------------------------

void BringInPage::cmdFiles_Click() {
    CommonDialog& dialog = commonDlg();
    dialog.Filter.clear();
    dialog.FileName.clear();
    dialog.InitDir.clear();
    dialog.DialogTitle = u"Files to Bring In"_s;
    const int flags = std::exchange(dialog.Flags, int(CommonDialog::AllowMultiselect));
    const bool chosen = dialog.chosen(&CommonDialog::ShowOpen);
    dialog.Flags = flags;
    dialog.DialogTitle.clear();
    if (chosen) addPaths(chosenFiles(dialog.FileName));
}

void BringInPage::cmdFolder_Click() {
    QFileDialog dialog(mainWindow(), u"Folder to Bring In"_s);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    if (dialog.exec() == QDialog::Accepted) addPaths(dialog.selectedFiles());
}

void BringInPage::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void BringInPage::dropEvent(QDropEvent* event) {
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) paths.append(url.toLocalFile());
    event->acceptProposedAction();
    atEdge(onFailure(), [&] { addPaths(paths); });
}

void BringInPage::addPaths(const QStringList& paths) {
    if (paths.isEmpty()) return;
    if (m_isDone) m_sources.clear();
    WorkProgress progress(u"Reading files"_s);
    const QList<ImportSource> read = readSources(paths, std::ref(progress));
    if (progress.wasCancelled()) return;
    m_sources += read;
    makePlan();
}

void BringInPage::cmdClear_Click() {
    m_sources.clear();
    makePlan();
}

// --- The preview --------------------------------------------------------------------------------

ImportChoices BringInPage::choices() const {
    ImportChoices choices;
    for (int i = 0; i < lstThemes->count(); ++i)
        if (lstThemes->item(i)->checkState() == Qt::Checked)
            choices.newCategories.append(lstThemes->item(i)->text());
    choices.category = cmbCategory->currentText();
    choices.role = cmbRole->currentText();
    choices.charts = chkCharts->isChecked();
    return choices;
}

void BringInPage::makePlan() {
    m_isDone = false;
    m_plan = planImport(readCatalogue(), m_sources, choices());
    listThemes();
    showPlan();
}

// Keeps the ticks.
void BringInPage::listThemes() {
    const QSignalBlocker blocker(lstThemes);
    const QStringList ticked = choices().newCategories;
    lstThemes->clear();
    for (const QString& theme : m_plan.themes) {
        auto* item = new QListWidgetItem(theme, lstThemes);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(ticked.contains(theme) ? Qt::Checked : Qt::Unchecked);
    }
}

void BringInPage::showPlan() {
    fpPreview->ClearRange(1, 1, fpPreview->MaxCols(), fpPreview->MaxRows(), false);
    fpPreview->MaxRows(int(m_plan.entries.size()));
    int row = 0;
    for (const ImportEntry& entry : m_plan.entries) {
        fpPreview->SetText(PreviewColumn::Kind, ++row, kindText(entry.kind));
        fpPreview->SetText(PreviewColumn::Name, row, entry.name);
        fpPreview->SetText(PreviewColumn::Outcome, row, outcomeText(entry.outcome));
        fpPreview->SetText(PreviewColumn::Details, row, entry.details);
        fpPreview->SetText(PreviewColumn::File, row, entry.file);
        if (entry.outcome != ImportOutcome::Refused) continue;
        fpPreview->Col(-1);
        fpPreview->Row(row);
        fpPreview->BackColor(RefusedColour);
        fpPreview->ForeColor(Black);
    }
    const QString sums = importSums(m_plan);
    lblSums->setText(m_plan.entries.isEmpty() ? u"Add files or a folder, or drop them here."_s
                     : m_isDone               ? u"Imported. "_s + sums
                                              : sums);
    cmdImport->setEnabled(!m_isDone && !m_plan.isEmpty());
    cmdReport->setEnabled(!m_plan.entries.isEmpty());
    cmdClear->setEnabled(!m_plan.entries.isEmpty());
    const bool hasPeople =
        std::any_of(m_plan.entries.begin(), m_plan.entries.end(),
                    [](const ImportEntry& entry) { return entry.kind == ImportKind::Person; });
    cmbRole->setVisible(hasPeople);
    lblRole->setVisible(hasPeople);
}

void BringInPage::lstThemes_Change() { choice_Change(); }

// After an import its result stays on view.
void BringInPage::choice_Change() {
    if (!m_isDone) makePlan();
}

// --- The import ---------------------------------------------------------------------------------

void BringInPage::cmdImport_Click() {
    // The database may have changed since the preview.
    makePlan();
    if (m_plan.isEmpty()) return;
    try {
        WorkProgress progress(u"Importing"_s);
        if (!runImport(m_plan, std::ref(progress))) return;
    } catch (const RunTimeError& error) {
        messageBox(u"The import failed. Nothing was changed.\r\r"_s + error.description(),
                   BoxIcon::Exclamation);
        return;
    }
    m_isDone = true;
    offerCategories();
    showPlan();
}

void BringInPage::cmdReport_Click() {
    CommonDialog& dialog = commonDlg();
    dialog.Filter = u"Text Files|*.txt"_s;
    dialog.FileName = u"Import Report.txt"_s;
    const int flags = std::exchange(dialog.Flags, int(CommonDialog::OverwritePrompt));
    const bool chosen = dialog.chosen(&CommonDialog::ShowSave);
    dialog.Flags = flags;
    if (!chosen) return;
    if (!replaceFile(dialog.FileName, importReport(m_plan).toUtf8()))
        messageBox(u"The report could not be saved."_s, BoxIcon::Exclamation);
}
