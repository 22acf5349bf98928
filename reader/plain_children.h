// Reads the children of a new format's record that stands in one line and can be read in the first way that
// its function's list allows: nearly every record. Much faster than ChildrenReader, which reads all others;
// where this one reads a record, that one would read the same.
//
// Any thread may call this at any time.
#pragma once

#include <cstdint>

#include "reader/call.h"
#include "reader/recorded_functions.h"

namespace ckscribe {

enum class PlainOutcome : std::uint8_t {
    kRead,
    kCannotBeRead,  // not as a record of this function, in no way at all
    kNotPlain,      // ChildrenReader must see
};

// How many readable bytes must follow the line.
inline constexpr std::size_t kPlainPadding = 8;

// `begin` is the opening brace, `lineEnd` the line feed behind the record. Sets those of `fields` that the
// record has, if it is read; the mechanism points into the text.
PlainOutcome ReadPlainChildren(const char* begin, const char* lineEnd, FunctionIndex function, bool isStart,
                               CallFields& fields);

}  // namespace ckscribe
