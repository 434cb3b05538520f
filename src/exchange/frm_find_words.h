// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Find Words: finds a song by words of its lyrics.
#pragma once

#include "exchange/word_index.h"
#include "platform/desktop/form.h"
#include "ui_frm_find_words.h"

class frmFindWords : public Form<frmFindWords>, public Ui::frmFindWords {
public:
    frmFindWords();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // Brings the index up to date with the charts, and searches again. To be called when the window
    // is opened.
    void refresh();

    // Sets what is done with the song or chart that the user picks.
    static void onPicked(std::function<void(const IndexedChart&)> show);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void txtWords_Change();
    void txtWords_Enter();
    void fpFound_Click(int col, int row);
    void cmdShow_Click();

    void setUpList();
    void pick(int row);

    WordIndex m_index;
    QList<FoundLine> m_found;  // by the rows of the list
};
