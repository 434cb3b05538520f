// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page Take Out: songs, people, played dates and the schedule as files for other programs.
#pragma once

#include "exchange/take_out.h"
#include "platform/desktop/form.h"
#include "ui_take_out_page.h"

class TakeOutPage : public QWidget, public Ui::TakeOutPage {
public:
    explicit TakeOutPage(QWidget* parent = nullptr);

    OnFailure onFailure() const { return OnFailure::EndsCommand; }

protected:
    // Lists the songs and the sets, which other windows may have changed.
    void showEvent(QShowEvent* event) override;

private:
    void lstForms_Change();
    void cmbSet_Click();
    void lstSongs_Change();
    void cmdTakeOut_Click();

    void listSongs();
    void listSets();
    const TakeOutFormInfo& form() const;
    // Reads the choices. False, after a message, if nothing is chosen.
    bool readOrder(TakeOutOrder& order);
    bool chooseTarget(TakeOutOrder& order);
    void showResult(const TakeOutOrder& order, const TakeOutResult& result);

    QStringList m_missing;  // titles of the chosen set that the catalogue does not have
};
