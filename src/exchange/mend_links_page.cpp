// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/mend_links_page.h"

MendLinksPage::MendLinksPage(QWidget* parent) : QWidget(parent) { setupUi(this); }
