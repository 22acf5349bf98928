// Tells which addresses are this library's own.
#pragma once

namespace ckscribe {

// Returns whether an address lies in the loaded image (library or program) that this code is part of.
bool IsInOwnImage(const void* address);

}  // namespace ckscribe
