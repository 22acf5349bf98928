// Reads memory that an application names, without trust that all of it can be read.
//
// An application may pass pointers, counts and lengths that PKCS#11 forbids. It lives on when the target
// refuses them, and must live on when a logger looks at them first. Nothing here faults, whatever it is
// given.
//
// Only one thread at a time may call it, because it remembers readable pages: the thread that holds the
// record lock.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/record_lock.h"

namespace ckscribe {

// Returns whether the kernel can read at `address`. It asks the kernel each time. Any thread may call it.
// errno may change.
bool KernelCanRead(std::uintptr_t address);

// Returns how many bytes from `address` on can be read, at most `length`. Returns 0 for a null pointer.
std::size_t ReadableLength(const void* address, std::size_t length);

// Returns how many of the `count` elements of an array can be read as a whole.
template <class Element>
std::size_t ReadableCount(const Element* array, std::size_t count) {
    const std::size_t most = static_cast<std::size_t>(-1) / sizeof(Element);
    return ReadableLength(array, (count < most ? count : most) * sizeof(Element)) / sizeof(Element);
}

// Copies an object if all of it can be read, and returns whether it did. Otherwise `object` stays as it is.
// The address need not be aligned.
bool CopyReadable(const void* address, void* object, std::size_t size);

// Returns the length of the text at `text`: up to its terminator or to the end of what can be read. Returns 0
// for null.
std::size_t ReadableTextLength(const void* text);

// Forgets which pages can be read, except pages that stay readable (see host/lasting_memory.h). Call it
// before each record: the application may have unmapped what an earlier record read.
void ForgetReadablePages() CKSCRIBE_NEEDS(theRecordLock);

}  // namespace ckscribe
