// What the command says besides its results. Results go to standard output, these lines to standard error.
#pragma once

#include <string_view>

namespace ckscribe {

// Prints "ckscribe: " and the text as one line. The text says what is wrong, where, and what to do.
void Say(std::string_view text);

}  // namespace ckscribe
