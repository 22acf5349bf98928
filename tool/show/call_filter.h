// Which calls `ckscribe show` shows: options that combine.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/call.h"

namespace ckscribe {

// A duration with its unit in nanoseconds: "250ns", "10us", "5ms", "1.5s", "10m", "2h". Nothing for anything
// else.
std::optional<std::int64_t> ParseDuration(std::string_view text);

// A number as logs print it: decimal, also with zeros in front or a minus sign, or hexadecimal with "0x".
std::optional<std::int64_t> ParseLogNumber(std::string_view text);

// A moment that a person names, on the scale of UTC: "14:00" and "14:00:05" of the log's last day,
// "2026-11-21T14:00", "2026-11-21", "10m" before the log's last record.
std::optional<std::int64_t> ParseMoment(std::string_view text, const Moment& lastRecord, bool isUtc);

class CallFilter {
public:
    void AddTo(CLI::App& command);

    // Reads what was given. Throws CLI::ValidationError for what makes no sense.
    void Prepare(bool isUtc);

    // Whether SetLog is needed for each log.
    bool NeedsTimes() const { return !since.empty() || !until.empty() || !last.empty(); }
    // The last record of the log that follows.
    void SetLog(const Moment& lastRecord);

    bool Matches(const Call& call);

    // A call was left out because its log tells no durations.
    bool HasMissedDurations() const { return hasMissedDurations; }

private:
    using Numbers = std::vector<std::int64_t>;

    std::vector<std::string> functions;
    std::vector<std::string> results;
    std::vector<std::string> processTexts;
    std::vector<std::string> threadTexts;
    std::vector<std::string> sessionTexts;
    std::vector<std::string> objectTexts;
    std::string slower;
    std::string since;
    std::string until;
    std::string last;
    bool isErrors = false;
    bool isUnfinished = false;

    Numbers processes;
    Numbers threads;
    Numbers sessions;
    Numbers objects;
    std::optional<std::uint64_t> shortest;
    bool isUtc = false;
    std::optional<std::int64_t> from;
    std::optional<std::int64_t> to;
    bool hasMissedDurations = false;
};

}  // namespace ckscribe
