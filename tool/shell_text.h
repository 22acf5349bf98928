// Writes texts into command lines that people copy.
#pragma once

#include <string>

namespace ckscribe {

// Returns the text as one word of a shell, in quotes where it needs them. A log or a configuration may hold
// any text. Puts "./" before a leading dash.
std::string ShellWord(const std::string& text);

}  // namespace ckscribe
