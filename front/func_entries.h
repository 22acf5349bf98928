// Says how each function of the vendor is logged.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ckscribe {

struct FuncEntry {
    std::int32_t classBit;
    std::int32_t minLevel;  // the call is logged when the logging level is at least this
    void (*start)();        // the function's start builder; it is called by its own type
    void (*end)();          // and its end builder
};

inline constexpr unsigned kFirstEntryType = 52;
inline constexpr std::size_t kFuncEntryCount = 0
#define CA_ROW(...) +1
#define CA_BARE_ROW CA_ROW
#define CA_GAP_ROW CA_ROW
#include "functions/functions.def"
    ;

}  // namespace ckscribe

// The table has one entry for each command type of the vendor from kFirstEntryType on, in that order.
extern ckscribe::FuncEntry funcEntries[ckscribe::kFuncEntryCount];

namespace ckscribe {

inline FuncEntry& EntryOf(unsigned commandType) { return funcEntries[commandType - kFirstEntryType]; }

}  // namespace ckscribe
