// Writes hexadecimal digits of many bytes at a time. Printing a buffer of some kilobytes byte by byte would
// cost as much as writing its record.
#pragma once

#include <cstddef>

namespace ckscribe {

// Writes two small hexadecimal digits for each of `length` bytes to `digits`, which has room for 2 * `length`
// characters. Adds no terminator. Any thread may call it at any time.
void WriteHexDigits(const void* bytes, std::size_t length, char* digits);

}  // namespace ckscribe
