// Reads a line of an events file as the library writes nearly all of them: no blanks between the members, no
// text of the application's, arguments and results at the end. Much faster than a JSON parser, which
// EventLineReader asks about all other lines. Where both can read a line, they find the same. This one also
// reads a line whose arguments or results are damaged, as long as its quotes, braces and brackets come in
// pairs.
#pragma once

#include <string_view>

#include "reader/event_values.h"
#include "reader/record.h"

namespace ckscribe {

// Sets all of `record` but its line, or returns false. kEventPadding bytes behind the line must be readable.
bool ReadPlainEvent(std::string_view line, EventValues& values, Record& record);

}  // namespace ckscribe
