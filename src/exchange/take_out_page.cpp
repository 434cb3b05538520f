// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/take_out_page.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "exchange/work_progress.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

#include <QDir>
#include <QFileDialog>
#include <QLocale>
#include <QMainWindow>
#include <QSet>
#include <QSignalBlocker>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int SongID = Qt::UserRole;

QString setFolder() { return programFolder() + u"/saved sets/"_s; }

}  // namespace

TakeOutPage::TakeOutPage(QWidget* parent) : QWidget(parent) {
    setupUi(this);
    for (const TakeOutFormInfo& info : takeOutForms()) lstForms->addItem(QLatin1String(info.name));
    lstForms->setCurrentRow(0);
    const bool letter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    cmbPaper->setCurrentIndex(letter ? 1 : 0);
    datFrom->setDate(QDate(today().year(), 1, 1));
    datTo->setDate(today());
    onEvent(this, lstForms, &QListWidget::currentRowChanged, &TakeOutPage::lstForms_Change);
    onEvent(this, cmbSet, &QComboBox::activated, &TakeOutPage::cmbSet_Click);
    onEvent(this, lstSongs, &QListWidget::itemChanged, &TakeOutPage::lstSongs_Change);
    onEvent(this, cmdTakeOut, &QPushButton::clicked, &TakeOutPage::cmdTakeOut_Click);
    lstForms_Change();
}

void TakeOutPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous()) return;
    atEdge(onFailure(), [this] {
        listSets();
        listSongs();
    });
}

// Keeps the ticks.
void TakeOutPage::listSongs() {
    const QSignalBlocker blocker(lstSongs);
    QSet<int> ticked;
    for (int i = 0; i < lstSongs->count(); ++i)
        if (lstSongs->item(i)->checkState() == Qt::Checked)
            ticked += lstSongs->item(i)->data(SongID).toInt();
    lstSongs->clear();
    for (const LibrarySong& one : librarySongs()) {
        auto* item = new QListWidgetItem(one.song.title(), lstSongs);
        item->setData(SongID, one.id);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(ticked.contains(one.id) ? Qt::Checked : Qt::Unchecked);
    }
}

void TakeOutPage::listSets() {
    const QString chosen = cmbSet->currentText();
    cmbSet->clear();
    for (const QFileInfo& file :
         QDir(setFolder()).entryInfoList({u"*.set"_s}, QDir::Files, QDir::Time))
        cmbSet->addItem(file.completeBaseName());
    cmbSet->setCurrentIndex(std::max(0, cmbSet->findText(chosen)));
    optSet->setEnabled(cmbSet->count() > 0);
    cmbSet->setEnabled(cmbSet->count() > 0);
}

const TakeOutFormInfo& TakeOutPage::form() const {
    return takeOutForms()[std::max(0, lstForms->currentRow())];
}

void TakeOutPage::lstForms_Change() {
    const TakeOutFormInfo& info = form();
    songPanel->setVisible(info.ofSongs);
    bookPanel->setVisible(info.form == TakeOutForm::SongBook);
    periodPanel->setVisible(info.ofPeriod);
    lblDone->clear();
}

// A set or a song that is chosen makes its choice the selected one.
void TakeOutPage::cmbSet_Click() { optSet->setChecked(true); }

void TakeOutPage::lstSongs_Change() { optTicked->setChecked(true); }

bool TakeOutPage::readOrder(TakeOutOrder& order) {
    const TakeOutFormInfo& info = form();
    order.form = info.form;
    order.from = datFrom->date();
    order.to = datTo->date();
    order.bookTitle = txtTitle->text().trimmed();
    order.paper = cmbPaper->currentIndex() == 1 ? QPageSize::Letter : QPageSize::A4;
    m_missing.clear();
    if (info.ofPeriod && order.from > order.to) {
        messageBox(u"The period ends before it begins."_s);
        return false;
    }
    if (!info.ofSongs) return true;
    order.allSongs = optAll->isChecked();
    if (optSet->isChecked()) {
        SetSongs of = songsOfSetFile(setFolder() + cmbSet->currentText() + u".set"_s,
                                     chkByTitle->isChecked());
        order.songs = of.songs;
        m_missing = of.missing;
    } else {
        order.songs = librarySongs();
    }
    if (optTicked->isChecked()) {
        QSet<int> ticked;
        for (int i = 0; i < lstSongs->count(); ++i)
            if (lstSongs->item(i)->checkState() == Qt::Checked)
                ticked += lstSongs->item(i)->data(SongID).toInt();
        order.songs.removeIf([&](const LibrarySong& one) { return !ticked.contains(one.id); });
    }
    if (!order.songs.isEmpty()) return true;
    messageBox(optTicked->isChecked() ? u"Please tick at least one song."_s
               : optSet->isChecked()  ? u"The catalogue has none of the set's songs."_s
                                      : u"There are no songs in the catalogue."_s);
    return false;
}

bool TakeOutPage::chooseTarget(TakeOutOrder& order) {
    const TakeOutFormInfo& info = form();
    if (!info.stem) {
        QFileDialog dialog(mainWindow(), u"Folder to Write To"_s);
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setFileMode(QFileDialog::Directory);
        if (dialog.exec() != QDialog::Accepted) return false;
        order.target = dialog.selectedFiles().value(0);
        return true;
    }
    CommonDialog& dialog = commonDlg();
    const QString extension = QLatin1String(info.file);
    dialog.Filter = extension.toUpper() + u" Files|*."_s + extension;
    const bool named = info.form == TakeOutForm::SongBook && !order.bookTitle.isEmpty();
    dialog.FileName =
        (named ? safeFileName(order.bookTitle) : QString::fromLatin1(info.stem)) + u'.' + extension;
    const int flags = std::exchange(dialog.Flags, int(CommonDialog::OverwritePrompt));
    const bool chosen = dialog.chosen(&CommonDialog::ShowSave);
    dialog.Flags = flags;
    order.target = dialog.FileName;
    return chosen;
}

void TakeOutPage::cmdTakeOut_Click() {
    TakeOutOrder order;
    if (!readOrder(order) || !chooseTarget(order)) return;
    lblDone->clear();
    const auto run = [&] {
        WorkProgress progress(u"Writing"_s);
        return takeOut(order, std::ref(progress));
    };
    TakeOutResult result = run();
    if (!result.existing.isEmpty() && result.files.isEmpty()) {
        const QString question =
            u"The folder has files of the same names: %1.\rDo you want to replace them?"_s.arg(
                result.existing.size());
        if (messageBox(question, BoxIcon::None, u"Lorvanite"_s, BoxButtons::YesNo) !=
            BoxAnswer::Yes)
            return;
        order.replace = true;
        result = run();
    }
    showResult(order, result);
}

void TakeOutPage::showResult(const TakeOutOrder& order, const TakeOutResult& result) {
    if (!result.problem.isEmpty())
        messageBox(u"Not everything was written.\r"_s + result.problem, BoxIcon::Exclamation);
    QStringList lines = {takeOutSummary(order, result)};
    if (result.cancelled) lines.prepend(u"Cancelled."_s);
    if (!m_missing.isEmpty()) lines += u"Not in the catalogue: "_s + m_missing.join(u", "_s);
    lblDone->setText((lines + result.notes).join(u'\n'));
}
