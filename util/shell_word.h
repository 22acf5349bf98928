#pragma once

#include <cstddef>

namespace ckscribe {

// Writes a path, with its NUL, as one word of a shell command, whatever characters it holds: in single
// quotes, and with "./" before a leading dash, so that no program takes it for an option. False, with `word`
// unspecified, when that takes more than `size` characters; 4 times the path's length plus 5 always suffice.
bool ShellWordFromPath(const char* path, char* word, std::size_t size);

}  // namespace ckscribe
