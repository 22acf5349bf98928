// A Record is one record of a log, text or event, with the parts that all readers need.
#pragma once

#include <cstdint>
#include <string_view>

#include "reader/call.h"
#include "reader/recorded_functions.h"

namespace ckscribe {

// Views point into the text that the record was read from, or last as long as the process.
struct Record {
    LogFormat format = LogFormat::kEvents;
    bool isStart = false;
    // `isFunctionCertain` is false for an end record that several functions print alike. `function` is then
    // the standard's.
    bool isFunctionCertain = true;
    bool hasThread = false;
    bool hasRv = false;
    bool hasNanoseconds = false;
    FunctionIndex function{};
    const PrintedFunction* printed = nullptr;  // of text
    std::uint32_t process = 0;
    std::uint32_t run = 0;  // see RunNames; 0 for text
    std::int64_t thread = 0;
    std::uint64_t number = 0;
    Moment time;
    std::uint64_t nanoseconds = 0;
    std::uint64_t rv = 0;
    std::string_view result;
    CallFields fields;
    std::uint64_t line = 0;
    std::string_view text;       // all of it
    std::size_t bodyOffset = 0;  // in `text`: where Call::startText begins

    // Returns the end of what the record reports: the end event of a call says when the call began and how
    // long it took. A damaged log may hold any duration; the sum then wraps.
    Moment End() const {
        return {static_cast<std::int64_t>(static_cast<std::uint64_t>(time.nanoseconds) + nanoseconds),
                time.scale};
    }
};

}  // namespace ckscribe
