// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The order of texts in the database and in grids.
#pragma once

#include <string_view>

// Compares two UTF-8 texts in the order of the English alphabet, ignoring case for all of Unicode:
// negative, 0 or positive. Composed and decomposed forms of a letter are equal.
int compareTexts(std::string_view a, std::string_view b);
