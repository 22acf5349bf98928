// A log that grows: reads what is appended, also when the log is rotated or truncated.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "reader/call_reader.h"
#include "reader/log_reading.h"
#include "tool/show/shown_calls.h"

namespace ckscribe {

class FollowedLog {
public:
    // `paths`: the files of one family, the oldest first; the last of them grows. `calls` outlives this.
    FollowedLog(std::vector<std::string> paths, ShownCalls& calls);
    ~FollowedLog();
    FollowedLog(const FollowedLog&) = delete;
    FollowedLog& operator=(const FollowedLog&) = delete;

    void SetFirstDay(std::int64_t day) { reader.SetFirstDay(day); }

    // Reads what is there by now, and shows each call that has been in progress for a second. Returns false
    // if nothing new was there.
    bool Read();

private:
    using Clock = std::chrono::steady_clock;
    struct Seen {
        Clock::time_point at;
        bool isShown = false;
        bool isOpen = true;
    };

    void ReadOlderFiles();
    bool ReadDescriptor();
    bool FollowRotation();
    void ShowCallsInProgress();

    std::vector<std::string> paths;
    ShownCalls& calls;
    CallReader reader;
    bool isBegun = false;
    int descriptor = -1;
    std::uint64_t offset = 0;
    // Calls in progress, by the place of their start.
    std::map<std::pair<std::uint32_t, std::uint64_t>, Seen> inProgress;
};

}  // namespace ckscribe
