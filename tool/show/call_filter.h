// Selects the calls that `ckscribe show` shows. A call must match all options that are given.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/call.h"

namespace ckscribe {

// Returns a duration with its unit, in nanoseconds: "250ns", "10us", "5ms", "1.5s", "10m", "2h". Returns
// nothing for any other text.
std::optional<std::int64_t> ParseDuration(std::string_view text);

// Returns a number in a form that logs print: decimal, also with zeros in front or a minus sign, or
// hexadecimal with "0x".
std::optional<std::int64_t> ParseLogNumber(std::string_view text);

// Returns the moment that a person names, in nanoseconds since 1970 in UTC: "14:00" and "14:00:05" of the
// log's last day, "2026-11-21T14:00", "2026-11-21", or "10m" before the log's last record.
std::optional<std::int64_t> ParseMoment(std::string_view text, const Moment& lastRecord, bool isUtc);

class CallFilter {
public:
    void AddTo(CLI::App& command);

    // Reads the options that were given. Throws CLI::ValidationError for an option that makes no sense.
    void Prepare(bool isUtc);

    // Returns whether the filter needs SetLog for each log.
    bool NeedsTimes() const { return !since.empty() || !until.empty() || !last.empty(); }
    // Says when the last record of the next log was made.
    void SetLog(const Moment& lastRecord);

    bool Matches(const Call& call);

    // Returns whether a call was left out because its log has no durations.
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
