// Finds out without harm whether memory can be written.
#pragma once

#include <cstddef>

namespace ckscribe {

enum class Writability { kYes, kNo, kUnknown };

// Returns whether all of `length` bytes (at most 4096) from `address` on can be written. The kernel reads
// them and writes them back as they are; where a store would fault, the kernel answers. Nobody else may
// change them meanwhile. Returns kUnknown if the kernel cannot be asked, because the process can open no more
// files for example.
Writability WritabilityOf(void* address, std::size_t length);

// Also returns false if the answer is unknown.
inline bool IsWritable(void* address, std::size_t length) {
    return WritabilityOf(address, length) == Writability::kYes;
}

}  // namespace ckscribe
