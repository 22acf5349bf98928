// Text from a log, made fit for a terminal and for one line.
#pragma once

#include <string>
#include <string_view>

namespace ckscribe {

// The text with everything that could break the line or command a terminal as \xNN: control characters, also
// those that UTF-8 writes with two bytes, and bytes that are no UTF-8.
std::string Harmless(std::string_view text);

// The same in double quotes, with quotes and backslashes behind a backslash.
std::string InQuotes(std::string_view text);

}  // namespace ckscribe
