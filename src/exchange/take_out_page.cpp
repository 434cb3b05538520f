// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/take_out_page.h"

TakeOutPage::TakeOutPage(QWidget* parent) : QWidget(parent) { setupUi(this); }
