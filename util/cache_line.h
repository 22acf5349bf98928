// What one thread writes and others read or write on another processor at the same time should not share a
// cache line with anything else: the whole line moves from processor to processor, and whoever needs a part
// of it waits.
#pragma once

#include <cstddef>

namespace ckscribe {

inline constexpr std::size_t kCacheLine = 64;

}  // namespace ckscribe
