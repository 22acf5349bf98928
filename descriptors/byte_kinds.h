// What kinds of bytes a value consists of, on which the form depends in which it is printed.
//
// Pure function: any thread may call it at any time.
#pragma once

#include <cstddef>

struct ByteKinds {
    bool isText = true;          // no byte is above kLastPrintableByte (see descriptors/rich_text.h)
    unsigned long controls = 0;  // control bytes, counted only of a text
};

ByteKinds KindsOf(const void* bytes, std::size_t length);
