// Finds return values by the names that records print.
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

// Returns null for a name that no record prints, and for "CKR_UNKNOWN": its number stands beside it.
const ResultName* FindResult(std::string_view name);

// Returns an equal name that lives as long as the process, also for a name that this library does not know.
// Returns "CKR_UNKNOWN" for a new name when KnownNames is full.
std::string_view LastingResultName(std::string_view name);

}  // namespace ckscribe
