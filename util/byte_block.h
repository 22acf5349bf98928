// Sixteen bytes on which the processor works at once; every x86-64 processor has registers for that. Byte by
// byte, a buffer of some kilobytes would take as long as writing the record that it stands in.
#pragma once

#include <cstddef>

namespace ckscribe {

inline constexpr std::size_t kByteBlock = 16;
using ByteBlock = unsigned char __attribute__((vector_size(kByteBlock)));

}  // namespace ckscribe
