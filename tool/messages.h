// Prints the command's messages. Messages go to standard error, results to standard output.
#pragma once

#include <string_view>

namespace ckscribe {

// Prints "ckscribe: " and the text as one line. The text says what is wrong, where, and what to do.
void Say(std::string_view text);

}  // namespace ckscribe
