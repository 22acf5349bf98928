// Finds out without harm whether memory can be written.
#pragma once

#include <cstddef>

namespace ckscribe {

// Whether all of `length` bytes (at most 4096) from `address` on can be written. The kernel reads them and
// writes them back as they are; where a store would fault, the kernel answers. Nobody else may change them
// meanwhile. Returns false too if the process can open no more files.
bool IsWritable(void* address, std::size_t length);

}  // namespace ckscribe
