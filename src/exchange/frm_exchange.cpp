// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/frm_exchange.h"

#include <QTabBar>

frmExchange::frmExchange() {
    setupUi(this);
    // The bar of the pages takes the keyboard focus, not the frame around them.
    tabPages->setFocusPolicy(Qt::NoFocus);
    tabPages->tabBar()->setFocusPolicy(Qt::TabFocus);
    setDesignSize(size());
}
