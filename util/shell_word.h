#pragma once

#include <cstddef>

namespace ckscribe {

// Writes a path, whatever characters it holds, as one word of a shell command that ends with NUL. The word
// stands in single quotes. "./" stands before a leading dash: no program takes the word for an option.
// Returns false, with `word` unspecified, if the word and its NUL take more than `size` bytes. 4 times the
// path's length plus 5 bytes always suffice. Any thread may call it at any time.
bool ShellWordFromPath(const char* path, char* word, std::size_t size);

}  // namespace ckscribe
