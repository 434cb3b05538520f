// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page Mend File Links: charts and sound files that are no longer where a song says.
#pragma once

#include "platform/desktop/form.h"
#include "ui_mend_links_page.h"

class MendLinksPage : public QWidget, public Ui::MendLinksPage {
public:
    explicit MendLinksPage(QWidget* parent = nullptr);

    OnFailure onFailure() const { return OnFailure::EndsCommand; }
};
