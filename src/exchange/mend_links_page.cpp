// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/mend_links_page.h"

#include "core/data/run_time_error.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

namespace LinkColumn {
enum { Title = 1, Kind, Lost, Found, Last = Found };
}

void setUpLinks(SheetView& links) {
    links.MaxCols(LinkColumn::Last);
    links.MaxRows(0);
    links.RowHeadersShow(false);
    const struct {
        int col;
        const char* head;
        double width;
    } columns[] = {{LinkColumn::Title, "Song", 24},
                   {LinkColumn::Kind, "File", 7},
                   {LinkColumn::Lost, "Lost Place", 36},
                   {LinkColumn::Found, "New Place", 36}};
    for (const auto& column : columns) {
        links.SetText(column.col, 0, QLatin1String(column.head));
        links.ColWidth(column.col, column.width);
    }
    links.setFillColumn(LinkColumn::Found);
}

}  // namespace

MendLinksPage::MendLinksPage(QWidget* parent) : QWidget(parent) {
    setupUi(this);
    setUpLinks(*fpLinks);
    fpLinks->setLocked([this](int col, int row) {
        return col != LinkColumn::Found || row < 1 || row > int(m_links.size()) ||
               m_links[size_t(row - 1)].candidates.size() < 2;
    });
    onEvent(this, cmdFind, &QPushButton::clicked, &MendLinksPage::cmdFind_Click);
    onEvent(this, cmdMend, &QPushButton::clicked, &MendLinksPage::cmdMend_Click);
    onEvent(this, fpLinks, &SheetView::Change, &MendLinksPage::fpLinks_Change);
}

void MendLinksPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    atEdge(onFailure(), [this] {
        findLinks();
        showSums();
    });
}

void MendLinksPage::cmdFind_Click() {
    findLinks();
    showSums();
}

void MendLinksPage::findLinks() {
    setMousePointer(MousePointer::Hourglass);
    m_links = linksToMend();
    fpLinks->ClearRange(1, 1, fpLinks->MaxCols(), fpLinks->MaxRows(), false);
    fpLinks->MaxRows(int(m_links.size()));
    int row = 0;
    for (const BrokenLink& link : m_links) showLink(++row, link);
    setMousePointer(MousePointer::Arrow);
}

void MendLinksPage::showLink(int row, const BrokenLink& link) {
    fpLinks->SetText(LinkColumn::Title, row, link.title);
    fpLinks->SetText(LinkColumn::Kind, row,
                     link.file == LinkedFile::Chart ? u"Chart"_s : u"Sound"_s);
    fpLinks->SetText(LinkColumn::Lost, row, link.path);
    if (link.candidates.size() == 1) fpLinks->SetText(LinkColumn::Found, row, link.candidates[0]);
    if (link.candidates.size() < 2) return;
    fpLinks->Col(LinkColumn::Found);
    fpLinks->Row(row);
    fpLinks->CellType(CellKind::Combo);
    fpLinks->TypeComboBoxList(link.candidates.join(u'\t'));
}

std::vector<MendedLink> MendLinksPage::chosenLinks() const {
    std::vector<MendedLink> chosen;
    int row = 0;
    for (const BrokenLink& link : m_links) {
        const QString path = fpLinks->GetText(LinkColumn::Found, ++row);
        if (link.candidates.contains(path) && isPathToStore(path))
            chosen.push_back({link.songId, link.file, path});
    }
    return chosen;
}

void MendLinksPage::showSums(const QString& done) {
    const auto count = [this](auto condition) {
        return int(std::count_if(m_links.begin(), m_links.end(), condition));
    };
    const int chosen = int(chosenLinks().size());
    const int missing = count([](const BrokenLink& link) { return link.candidates.isEmpty(); });
    const int several = count([](const BrokenLink& link) { return link.candidates.size() > 1; });
    QStringList sums;
    if (!done.isEmpty()) sums.append(done);
    if (m_links.empty() && done.isEmpty()) sums.append(u"Every file is in its place."_s);
    if (!m_links.empty())
        sums.append(
            u"%1 lost, %2 to mend, %3 not found."_s.arg(m_links.size()).arg(chosen).arg(missing));
    if (several > 0) sums.append(u"Choose the file where several have the same name."_s);
    lblLinks->setText(sums.join(u' '));
    cmdMend->setEnabled(chosen > 0);
}

void MendLinksPage::fpLinks_Change() { showSums(); }

void MendLinksPage::cmdMend_Click() {
    const std::vector<MendedLink> chosen = chosenLinks();
    setMousePointer(MousePointer::Hourglass);
    try {
        mendLinks(chosen);
    } catch (const RunTimeError& error) {
        setMousePointer(MousePointer::Arrow);
        messageBox(
            u"The links could not be mended. Nothing was changed.\r\r"_s + error.description(),
            BoxIcon::Exclamation);
        return;
    }
    findLinks();
    showSums(u"%1 mended."_s.arg(chosen.size()));
}
