// Reads the time and the run of an event, and decides whether an event has all members that it needs.
//
// An event that was made from a text log has neither run nor number. Its time says as much as the log does.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "reader/record.h"

namespace ckscribe {

// EventMembers says which members a reader has found in an event.
enum EventMembers : unsigned { kHasEvent = 1, kHasRun = 2, kHasCall = 4, kHasFunction = 8, kHasProcess = 16 };

// Returns whether a record with these members is a whole event. An end needs a result.
inline bool HasAllOfAnEvent(unsigned found, const Record& record) {
    constexpr unsigned kAlways = kHasEvent | kHasFunction | kHasProcess;
    constexpr unsigned kTogether = kHasRun | kHasCall;
    const bool isNumbered = (found & kTogether) == kTogether;
    const bool hasNoNumber = (found & kTogether) == 0;
    return (found & kAlways) == kAlways && ((isNumbered && record.time.IsThere()) || hasNoNumber) &&
           (record.isStart || !record.result.empty());
}

// Remembers times and runs that many events repeat. One thread at a time may use it.
class EventValues {
public:
    // Reads "2026-11-21T12:33:45.123456789Z", or "2026-11-21T12:33:45" and "12:33:45" as events from text
    // logs have them. Returns false for anything else.
    bool ReadTime(std::string_view text, Moment& moment);

    // Returns the number of a run in RunNames.
    std::uint32_t NumberOfRun(std::string_view run);

private:
    struct Run {
        std::string name;
        std::uint32_t number = 0;
    };
    std::array<Run, 16> runs;

    // `lastMinute` is a text like "2026-11-21T12:33:". `lastMinuteBegan` is the beginning of that minute, in
    // seconds since 1970 in UTC.
    std::string lastMinute;
    std::int64_t lastMinuteBegan = 0;
};

}  // namespace ckscribe
