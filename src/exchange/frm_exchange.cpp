// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/frm_exchange.h"

frmExchange::frmExchange() {
    setupUi(this);
    setDesignSize(size());
}
