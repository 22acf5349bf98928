// Follows a log that grows: it reads what is appended, also after the log was rotated or truncated.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "reader/call_reader.h"
#include "reader/log_reading.h"
#include "tool/show/shown_calls.h"

namespace ckscribe {

class FollowedLog : private CallSink {
public:
    // `paths` holds the files of one family, the oldest first; the last of them grows. "-" is standard input.
    // `calls` outlives this.
    FollowedLog(std::vector<std::string> paths, ShownCalls& calls);
    ~FollowedLog() override;
    FollowedLog(const FollowedLog&) = delete;
    FollowedLog& operator=(const FollowedLog&) = delete;

    void SetFirstDay(std::int64_t day) { reader.SetFirstDay(day); }

    // Reads what is new, and shows each call that has been in progress for a second. Returns false if there
    // was nothing new. Says which files cannot be read.
    bool Read();

    // Returns whether nothing can come any more: standard input is at its end, or the file cannot be read.
    // Calls without an end have been shown then.
    bool IsEnded() const { return isEnded; }

    // Returns whether the file cannot be read.
    bool IsUseless() const { return isUseless; }

private:
    using Clock = std::chrono::steady_clock;
    struct Seen {
        Clock::time_point at;
        bool isShown = false;
        bool isOpen = true;
    };
    using StartPlace = std::pair<std::uint32_t, std::uint64_t>;

    void OnCall(const Call& call) override;

    bool IsStandardInput() const { return paths.back() == "-"; }
    void ReadPacked(const std::string& path);
    void ReadOlderFiles();
    void Open();
    void Close();
    bool ReadDescriptor();
    bool HasInput() const;
    bool FollowRotation();
    void ShowCallsInProgress();
    void End();

    std::vector<std::string> paths;
    ShownCalls& calls;
    CallReader reader;
    std::vector<char> block;
    bool isBegun = false;
    bool isEnded = false;
    bool isUseless = false;
    bool hasSaidWhyNotOpen = false;
    int descriptor = -1;
    bool isRegular = false;
    bool isPacked = false;
    std::uint64_t offset = 0;
    // `inProgress` holds the calls in progress, by the place of their start.
    std::map<StartPlace, Seen> inProgress;
};

}  // namespace ckscribe
