// Which memory stays: an address there that could be read once can be read ever after.
#pragma once

#include <cstdint>

namespace ckscribe {

// Both systems have pages of this size or a multiple of it.
inline constexpr std::uintptr_t kPageSize = 4096;

// Whether the page at `page` belongs to the program's own image, to the heap behind it, or to the part of the
// calling thread's stack that is in use. Told without a system call, and so from below: false for much that
// lasts as well. What an application maps and unmaps as it goes is never among it.
bool IsLastingPage(std::uintptr_t page);

}  // namespace ckscribe
