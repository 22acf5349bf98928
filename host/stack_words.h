// Reads words above a function's frame that may not all be there.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/lasting_memory.h"

namespace ckscribe {

// How many of the `count` words from `first` on can be read: all of them, or those on the page of the word
// below `first`. Asks the kernel. Any thread may call it; errno stays.
std::size_t ReadableStackWords(const unsigned long* first, std::size_t count);

// Copies `count` words from `first` on, which together take less than a page. The word below `first` must be
// readable, as a return address is. Leaves alone what would come from words that cannot be read. Asks the
// kernel only if the words go on to another page.
//
// An address sanitizer takes these words for errors: they belong to other functions' frames.
[[gnu::no_sanitize_address]] inline void CopyStackWords(const unsigned long* first, unsigned long* words,
                                                        std::size_t count) {
    const std::uintptr_t below = reinterpret_cast<std::uintptr_t>(first - 1);
    const std::uintptr_t last = reinterpret_cast<std::uintptr_t>(first + count - 1);
    if (below / kPageSize != last / kPageSize) [[unlikely]]
        count = ReadableStackWords(first, count);
    // Not a copy that becomes a call of memcpy, which a sanitizer would check.
    const volatile unsigned long* const source = first;
    for (std::size_t i = 0; i < count; ++i) words[i] = source[i];
}

}  // namespace ckscribe
