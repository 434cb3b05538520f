// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page Mend File Links: charts and sound files that are no longer where a song says.
#pragma once

#include "exchange/mended_links.h"
#include "platform/desktop/form.h"
#include "ui_mend_links_page.h"

class MendLinksPage : public QWidget, public Ui::MendLinksPage {
public:
    explicit MendLinksPage(QWidget* parent = nullptr);

    OnFailure onFailure() const { return OnFailure::EndsCommand; }

protected:
    // Looks for lost files when the page is opened.
    void showEvent(QShowEvent* event) override;

private:
    void cmdFind_Click();
    void cmdMend_Click();
    void fpLinks_Change();

    void findLinks();
    void showLink(int row, const BrokenLink& link);
    void showSums(const QString& done = {});
    std::vector<MendedLink> chosenLinks() const;

    std::vector<BrokenLink> m_links;  // one a row
};
