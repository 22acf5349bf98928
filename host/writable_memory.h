// Whether memory can be written, found out without harm.
#pragma once

#include <cstddef>

namespace ckscribe {

// Whether all of `length` bytes (at most 4096) from `address` on can be written. They are read and written
// back as they are by the kernel, which answers where a store would fault; nobody else may change them
// meanwhile. False as well when the process can open no more files.
bool IsWritable(void* address, std::size_t length);

}  // namespace ckscribe
