// These are the options of `ckscribe run`.
#pragma once

#include <string>
#include <vector>

namespace ckscribe {

enum class RunFormat {
    kCalls,   // a line for each call, made from events
    kText,    // the text log, new format
    kOld,     // the text log, old format
    kEvents,  // the events
};

struct RunOptions {
    std::vector<std::string> command;  // with its arguments; never empty
    std::string module;                // the module to log; empty: find it
    std::string output;                // a file instead of standard error; empty: none
    RunFormat format = RunFormat::kCalls;
    std::string mask;  // as the key "LoggingMask" wants it; empty: everything
    bool hasLog = true;
    bool hasTable = false;
    bool showsData = false;
    std::string keptDirectory;  // empty: nothing is kept
};

// Runs the command and returns the exit status of `ckscribe run`.
int Run(const RunOptions& options);

}  // namespace ckscribe
