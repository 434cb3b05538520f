// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The plain text alternative of an HTML message.
#pragma once

#include <QString>

// What a mail reader without HTML shows: each table row is a line, its cells are side by side.
// May be called from any thread.
QString plainTextOf(const QString& html);
