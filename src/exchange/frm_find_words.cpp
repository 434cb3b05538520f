// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/frm_find_words.h"

#include "core/data/paths.h"
#include "platform/desktop/desktop.h"

#include <QKeyEvent>

using namespace Qt::Literals::StringLiterals;

namespace {

namespace FoundColumn {
enum { Title = 1, Line, Last = Line };
}

std::function<void(const IndexedChart&)> g_showPicked;

}  // namespace

void frmFindWords::onPicked(std::function<void(const IndexedChart&)> show) {
    g_showPicked = std::move(show);
}

frmFindWords::frmFindWords() : m_index(programFolder() + u"/words.index"_s) {
    setupUi(this);
    setUpList();
    onEvent(this, txtWords, &QLineEdit::textChanged, &frmFindWords::txtWords_Change);
    onEvent(this, txtWords, &QLineEdit::returnPressed, &frmFindWords::txtWords_Enter);
    onEvent(this, fpFound, &SheetView::Click, &frmFindWords::fpFound_Click);
    onEvent(this, cmdShow, &QPushButton::clicked, &frmFindWords::cmdShow_Click);
    txtWords->installEventFilter(this);
    setFocusProxy(txtWords);
    setDesignSize(size());
    txtWords_Change();
}

void frmFindWords::refresh() {
    setMousePointer(MousePointer::Hourglass);
    m_index.update(chartsToIndex(), [](int done, int all) {
        setStatusText(u"Reading charts: %1%"_s.arg(done * 100 / all));
    });
    setStatusText(QString());
    setMousePointer(MousePointer::Arrow);
    txtWords_Change();
}

void frmFindWords::setUpList() {
    fpFound->MaxCols(FoundColumn::Last);
    fpFound->MaxRows(0);
    fpFound->RowHeadersShow(false);
    fpFound->SetText(FoundColumn::Title, 0, u"Song"_s);
    fpFound->SetText(FoundColumn::Line, 0, u"Line"_s);
    fpFound->ColWidth(FoundColumn::Title, 28);
    fpFound->ColWidth(FoundColumn::Line, 44);
    fpFound->setFillColumn(FoundColumn::Line);
    fpFound->setReadOnly(true);
}

void frmFindWords::txtWords_Change() {
    m_found = m_index.find(txtWords->text());
    fpFound->MaxRows(0);
    fpFound->MaxRows(int(m_found.size()));
    int row = 0;
    for (const FoundLine& found : m_found) {
        fpFound->SetText(FoundColumn::Title, ++row, found.chart.title);
        fpFound->SetText(FoundColumn::Line, row, found.line);
    }
    if (!m_found.isEmpty()) fpFound->SetActiveCell(FoundColumn::Title, 1);
    cmdShow->setEnabled(!m_found.isEmpty());
    lblFound->setText(txtWords->text().trimmed().isEmpty() ? QString()
                      : m_found.isEmpty()                  ? u"No song has these words."_s
                      : m_found.size() == 1                ? u"1 song"_s
                                                           : u"%1 songs"_s.arg(m_found.size()));
}

// The arrow keys choose in the list while words are typed.
bool frmFindWords::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtWords && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int step = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
        const int row = fpFound->ActiveRow() + step;
        if (step != 0 && row >= 1 && row <= fpFound->MaxRows())
            fpFound->SetActiveCell(FoundColumn::Title, row);
        if (step != 0) return true;
    }
    return FormBase::eventFilter(watched, event);
}

void frmFindWords::pick(int row) {
    if (row < 1 || row > m_found.size()) return;
    const IndexedChart chart = m_found[row - 1].chart;
    if (g_showPicked) g_showPicked(chart);
}

void frmFindWords::txtWords_Enter() { pick(fpFound->ActiveRow()); }

// A click, or Enter in the list.
void frmFindWords::fpFound_Click(int, int row) { pick(row); }

void frmFindWords::cmdShow_Click() { pick(fpFound->ActiveRow()); }
