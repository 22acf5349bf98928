// Gives the size of a cache line in bytes. If one thread writes a variable that threads on other processors
// use at the same time, the variable should share its cache line with nothing else. The whole line moves from
// processor to processor, and a thread that needs a part of it waits.
#pragma once

#include <cstddef>

namespace ckscribe {

inline constexpr std::size_t kCacheLine = 64;

}  // namespace ckscribe
