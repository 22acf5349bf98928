// Reading memory that an application names, without trusting that all of it can be read.
//
// An application may pass pointers, counts and lengths that PKCS#11 forbids; it lives on when the target
// refuses them, and must live on when a logger looks at them first. Nothing here faults, whatever it is
// given.
//
// One thread at a time (readable pages are remembered).
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/record_lock.h"

namespace ckscribe {

// Whether the kernel can read at `address`. Asks it each time. Any thread may call it; errno may change.
bool KernelCanRead(std::uintptr_t address);

// How many bytes from `address` on can be read, at most `length`. 0 for a null pointer.
std::size_t ReadableLength(const void* address, std::size_t length);

// How many of the `count` elements of an array can be read as a whole.
template <class Element>
std::size_t ReadableCount(const Element* array, std::size_t count) {
    const std::size_t most = static_cast<std::size_t>(-1) / sizeof(Element);
    return ReadableLength(array, (count < most ? count : most) * sizeof(Element)) / sizeof(Element);
}

// Copies an object if all of it can be read; `object` is left alone otherwise. The address need not be
// aligned.
bool CopyReadable(const void* address, void* object, std::size_t size);

// The length of the text at `text`: up to its terminator or to the end of what can be read. 0 for null.
std::size_t ReadableTextLength(const void* text);

// What has been remembered of readable pages is forgotten, but for pages that stay readable (see
// host/lasting_memory.h). To be called before each record: what an earlier one was about may be gone.
void ForgetReadablePages() CKSCRIBE_NEEDS(theRecordLock);

}  // namespace ckscribe
