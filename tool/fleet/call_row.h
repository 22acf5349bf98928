// Makes calls rows of the table `calls` of an engine (share/ckscribe/clickhouse/calls.sql).
//
// These functions are pure: any thread may call them at any time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "reader/call.h"

namespace ckscribe {

// Numbers the calls of one log. The numbers grow in the order of its events: each is the moment of the event
// in nanoseconds, or one more than the number before. Therefore they also grow from file to file, whichever
// file is read first.
class CallPositions {
public:
    // Lets the following numbers come after `position`.
    void StartBehind(std::uint64_t position) { last = position > last ? position : last; }
    std::uint64_t Next(const Call& call);
    std::uint64_t Last() const { return last; }

private:
    std::uint64_t last = 0;
};

// Adds the row of a call from events to `rows`, as a line of JSON. `log` names the log on its host.
void AddCallRow(std::string& rows, std::string_view host, std::string_view log, std::uint64_t position,
                const Call& call);

}  // namespace ckscribe
