// Makes text from a log fit for a terminal and for one line.
#pragma once

#include <string>
#include <string_view>

namespace ckscribe {

// Returns the text with \xNN in place of each byte that could break the line or command a terminal. Such
// bytes are control characters, also those that UTF-8 writes with two bytes, and bytes that are no UTF-8.
std::string Harmless(std::string_view text);

// Returns the same in double quotes, with a backslash in front of quotes and backslashes.
std::string InQuotes(std::string_view text);

}  // namespace ckscribe
