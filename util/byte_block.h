// Names sixteen bytes on which the processor works at once. Every x86-64 processor has registers for that.
// Work on single bytes would take as long for a buffer of some kilobytes as writing its record takes.
#pragma once

#include <cstddef>

namespace ckscribe {

inline constexpr std::size_t kByteBlock = 16;
using ByteBlock = unsigned char __attribute__((vector_size(kByteBlock)));

}  // namespace ckscribe
