// Bytes are printed in one of these three forms.
#pragma once

#include <string_view>

enum class ValueFormat : int { kNumeric = 1, kSimpleText = 2, kRichText = 3 };

// Returns "Numeric", "SimpleText" or "RichText", or "Unknown" for any other number.
std::string_view GetValueFormat(ValueFormat format);

// Returns the number of such a name. The text must match exactly; any other text gives 0.
ValueFormat GetValueFormat(const char* name);
