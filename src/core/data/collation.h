// How texts compare in the database.
#pragma once

#include <string_view>

// The order of two UTF-8 texts as a person would put them, case ignored for all of Unicode: below
// 0, 0 or above 0. Composed and decomposed forms of a letter are equal.
int compareTexts(std::string_view a, std::string_view b);
