// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Exchange: songs, people and dates from other programs come in and go out, and lost links to files
// are mended.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_exchange.h"

class frmExchange : public Form<frmExchange>, public Ui::frmExchange {
public:
    frmExchange();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }
};
