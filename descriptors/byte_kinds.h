// KindsOf() tells which kinds of bytes a value consists of. The form in which a value is printed depends on
// it.
//
// The function is pure: any thread may call it at any time.
#pragma once

#include <cstddef>

namespace ckscribe {

struct ByteKinds {
    bool isText = true;          // no byte is above kLastPrintableByte (see descriptors/rich_text.h)
    unsigned long controls = 0;  // counted only if the value is text
};

ByteKinds KindsOf(const void* bytes, std::size_t length);

}  // namespace ckscribe
