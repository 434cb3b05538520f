// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page Bring In: songs, people and played dates of other programs.
#pragma once

#include "platform/desktop/form.h"
#include "ui_bring_in_page.h"

class BringInPage : public QWidget, public Ui::BringInPage {
public:
    explicit BringInPage(QWidget* parent = nullptr);

    OnFailure onFailure() const { return OnFailure::EndsCommand; }
};
