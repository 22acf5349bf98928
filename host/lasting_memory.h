// Recognises memory that stays: if an address there can be read once, it can be read ever after.
#pragma once

#include <cstdint>

namespace ckscribe {

// Both systems have pages of this size or a multiple of it.
inline constexpr std::uintptr_t kPageSize = 4096;

// Returns whether the page at `page` belongs to the program's own image, to the heap behind it, or to the
// part of the calling thread's stack that is in use. Makes no system call, and therefore may return false for
// memory that stays mapped. Never returns true for what an application maps and unmaps as it goes.
bool IsLastingPage(std::uintptr_t page);

}  // namespace ckscribe
