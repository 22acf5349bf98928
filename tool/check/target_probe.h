// Loads a target library in a process of its own: whatever the target does there ends with that process.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ckscribe {

struct ProbedTarget {
    bool isLoaded = false;
    std::string loaderError;  // the loader's own words, if not loaded

    bool isCkscribe = false;                   // it is this library, or a copy; nothing of it was called then
    bool needsCkscribe = false;                // it is another library that depends on this one
    std::vector<std::string> missingStandard;  // the library looks these up and does not find them
    std::vector<std::string> missingVendor;
    bool hasFunctionList = false;
    bool isListOnly = false;  // it exports C_GetFunctionList and no other function of the standard

    std::optional<unsigned long> initializeResult;  // of C_Initialize, where that was asked for
    std::optional<unsigned long> infoResult;        // of C_GetInfo, where the target has it
    // `info` holds manufacturer, description and versions if infoResult is CKR_OK.
    std::string info;
};

struct ProbeResult {
    std::optional<ProbedTarget> target;  // absent if the process ended before it answered
    // `ending` then says how the process ended, for a sentence that begins "The target ...".
    std::string ending;
};

// Loads `path` as the library does, in a child process without standard streams. Ends that process, and all
// that it started, after `seconds` at the latest. With `initialize` the child also calls C_Initialize and
// C_Finalize.
ProbeResult ProbeTarget(const std::string& path, bool initialize, int seconds);

}  // namespace ckscribe
