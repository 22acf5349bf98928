// The names of return values as records print them.
//
// Any thread may call these at any time.
#pragma once

#include <cstdint>
#include <string_view>

namespace ckscribe {

inline constexpr std::string_view kUnknownResult = "CKR_UNKNOWN";

struct ResultName {
    std::string_view name;  // lives as long as the process
    std::uint64_t value = 0;
};

// Null for a name that no record prints; "CKR_UNKNOWN" is none of them, a number stands beside it.
const ResultName* FindResult(std::string_view name);

// A name that lives as long as the process: of a record's result, or of an event's that this library does not
// know. "CKR_UNKNOWN" when an absurd number of names was kept already.
std::string_view LastingResultName(std::string_view name);

}  // namespace ckscribe
