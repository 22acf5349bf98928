// Reads words above a function's frame that may not all be there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "host/lasting_memory.h"

#if defined(__has_feature)
#define CKSCRIBE_HAS_FEATURE(feature) __has_feature(feature)
#else
#define CKSCRIBE_HAS_FEATURE(feature) 0
#endif

namespace ckscribe {

// Copies `count` words from `first` on. Words that cannot be read are 0 in the copy. Asks the kernel whether
// there is a page behind that of the word below `first`; the words must not go beyond it. Any thread may call
// it; errno stays.
//
// An address sanitizer takes these words for errors, because they belong to other functions' frames.
[[gnu::no_sanitize_address]] void CopyStackWordsWithCare(const unsigned long* first, unsigned long* words,
                                                         std::size_t count);

// Does the same for a number of words that together take less than a page. The word below `first` must be
// readable, as a return address is. Asks the kernel only if the words go on to another page.
template <std::size_t kCount>
[[gnu::always_inline]] inline void CopyStackWords(const unsigned long* first, unsigned long* words) {
    const std::uintptr_t below = reinterpret_cast<std::uintptr_t>(first - 1);
    const std::uintptr_t last = reinterpret_cast<std::uintptr_t>(first + kCount - 1);
#if defined(__SANITIZE_ADDRESS__) || CKSCRIBE_HAS_FEATURE(address_sanitizer)
    constexpr bool isSanitized = true;
#else
    constexpr bool isSanitized = false;
#endif
    if (isSanitized || below / kPageSize != last / kPageSize) [[unlikely]] {
        CopyStackWordsWithCare(first, words, kCount);
    } else {
        std::memcpy(words, first, kCount * sizeof *first);
    }
}

}  // namespace ckscribe
