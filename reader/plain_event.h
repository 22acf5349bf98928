// Reads a line of an events file in the form of nearly all lines that the library writes. Such a line has no
// blanks between the members, no text of the application's, and arguments and results at the end.
// ReadPlainEvent is much faster than a JSON parser, which EventLineReader uses for all other lines. Where
// both can read a line, they find the same. ReadPlainEvent also reads a line whose arguments or results are
// damaged, if its quotes, braces and brackets come in pairs.
#pragma once

#include <string_view>

#include "reader/event_values.h"
#include "reader/record.h"

namespace ckscribe {

// Sets all of `record` but its line and returns true. Returns false if it cannot read the line. kEventPadding
// bytes behind the line must be readable.
bool ReadPlainEvent(std::string_view line, EventValues& values, Record& record);

}  // namespace ckscribe
