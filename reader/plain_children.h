// Reads the children of a record of the new format that stands in one line and fits the first way that its
// function's list allows. Nearly every record does. It is much faster than ChildrenReader, which reads all
// other records. Where it reads a record, ChildrenReader reads the same.
//
// Any thread may call this at any time.
#pragma once

#include <cstdint>

#include "reader/call.h"
#include "reader/recorded_functions.h"

namespace ckscribe {

enum class PlainOutcome : std::uint8_t {
    kRead,
    kCannotBeRead,  // cannot be read as a record of this function in any way
    kNotPlain,      // ChildrenReader must see
};

// So many bytes behind the line must be readable.
inline constexpr std::size_t kPlainPadding = 8;

// `begin` is the opening brace, and `lineEnd` is the line feed behind the record. If the function reads the
// record, it sets those of `fields` that the record has. The mechanism points into the text.
PlainOutcome ReadPlainChildren(const char* begin, const char* lineEnd, FunctionIndex function, bool isStart,
                               CallFields& fields);

}  // namespace ckscribe
