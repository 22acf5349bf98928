// The three forms in which bytes are printed.
#pragma once

#include <string_view>

enum ValueFormat : int { kNumeric = 1, kSimpleText = 2, kRichText = 3 };

// "Numeric", "SimpleText", "RichText"; "Unknown" for any other number.
std::string_view GetValueFormat(ValueFormat format);

// The number of such a name, compared exactly; 0 for any other text.
ValueFormat GetValueFormat(const char* name);
