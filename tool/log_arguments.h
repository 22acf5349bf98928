// The sub-commands that read logs share this: their files, the options about time, and the messages about
// files that cannot be read.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "reader/log_reading.h"

namespace ckscribe {

struct LogArguments {
    std::vector<std::string> paths;
    bool isUtc = false;
    std::string date;

    // Adds FILE... and --date. Returns the option FILE.
    CLI::Option* AddTo(CLI::App& command);
    // Adds --utc.
    void AddUtcTo(CLI::App& command);

    // Returns the options for ReadLogs. Throws CLI::ValidationError when --date is no date.
    ReadingOptions Reading() const;
};

// Returns a date such as "2026-11-21" in days since 1970, or nothing for a text that is no date.
std::optional<std::int64_t> ParseDate(std::string_view text);

// Says which files could not be read or hold no record. Returns the exit status: kNotWell if a file gave no
// record, and is not empty or could not be read.
int SayUnreadFiles(const std::vector<std::string>& paths, const std::vector<FileReading>& files);

}  // namespace ckscribe
