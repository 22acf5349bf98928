// What the sub-commands that read logs have in common: their files, the options about time, and what is said
// of files that cannot be read.
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

    // Adds FILE..., which is given back, and --date.
    CLI::Option* AddTo(CLI::App& command);
    // Adds --utc.
    void AddUtcTo(CLI::App& command);

    // What the reading of them needs. Throws CLI::ValidationError when --date is no date.
    ReadingOptions Reading() const;
};

// "2026-11-21" in days since 1970; nothing for what is no date.
std::optional<std::int64_t> ParseDate(std::string_view text);

// Says which files could not be read. Returns the exit status: kNotWell if nothing was found in some file
// that is not empty.
int SayUnreadFiles(const std::vector<std::string>& paths, const std::vector<FileReading>& files);

}  // namespace ckscribe
