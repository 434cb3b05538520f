// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page Take Out: songs, people, played dates and the schedule as files for other programs.
#pragma once

#include "platform/desktop/form.h"
#include "ui_take_out_page.h"

class TakeOutPage : public QWidget, public Ui::TakeOutPage {
public:
    explicit TakeOutPage(QWidget* parent = nullptr);

    OnFailure onFailure() const { return OnFailure::EndsCommand; }
};
