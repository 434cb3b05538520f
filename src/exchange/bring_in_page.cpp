// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/bring_in_page.h"

BringInPage::BringInPage(QWidget* parent) : QWidget(parent) { setupUi(this); }
