// What the members of an event say: its time and its run, and which members it cannot do without.
//
// An event that was made of a text log has neither run nor number, and as much of a time as the log has.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "reader/record.h"

namespace ckscribe {

// Members that were found in an event.
enum EventMembers : unsigned { kHasEvent = 1, kHasRun = 2, kHasCall = 4, kHasFunction = 8, kHasProcess = 16 };

// Whether a record with these members is a whole event. An end without a result tells nothing.
inline bool HasAllOfAnEvent(unsigned found, const Record& record) {
    constexpr unsigned kAlways = kHasEvent | kHasFunction | kHasProcess;
    constexpr unsigned kTogether = kHasRun | kHasCall;
    const bool isNumbered = (found & kTogether) == kTogether;
    const bool hasNoNumber = (found & kTogether) == 0;
    return (found & kAlways) == kAlways && ((isNumbered && record.time.IsThere()) || hasNoNumber) &&
           (record.isStart || !record.result.empty());
}

// Keeps what many events say again and again. Used by one thread at a time.
class EventValues {
public:
    // "2026-11-21T12:33:45.123456789Z"; of a text log "2026-11-21T12:33:45" or "12:33:45". False for anything
    // else.
    bool ReadTime(std::string_view text, Moment& moment);

    // See RunNames.
    std::uint32_t NumberOfRun(std::string_view run);

private:
    struct Run {
        std::string name;
        std::uint32_t number = 0;
    };
    std::array<Run, 16> runs;

    // "2026-11-21T12:33:" and when that minute began.
    std::string lastMinute;
    std::int64_t lastMinuteBegan = 0;
};

}  // namespace ckscribe
