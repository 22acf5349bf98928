// Loads a target library in a process of its own: whatever the target does there ends with that process.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ckscribe {

struct ProbedTarget {
    bool isLoaded = false;
    std::string loaderError;  // the loader's own words, when it is not

    bool isCkscribe = false;                   // it is this library, or a copy; nothing of it was called then
    bool needsCkscribe = false;                // another library that depends on this one
    std::vector<std::string> missingStandard;  // names that the library looks up and does not find
    std::vector<std::string> missingVendor;
    bool hasFunctionList = false;
    bool isListOnly = false;  // it exports C_GetFunctionList and no other function of the standard

    std::optional<unsigned long> initializeResult;  // of C_Initialize, where that was asked for
    std::optional<unsigned long> infoResult;        // of C_GetInfo, where the target has it
    std::string info;  // manufacturer, description and versions, when that was CKR_OK
};

struct ProbeResult {
    std::optional<ProbedTarget> target;  // nothing when the process ended before it could tell
    std::string ending;                  // how it ended then, for a sentence that begins "The target ..."
};

// Loads `path` as the library does, in a child process without standard streams. Ends that process, and all
// that it started, after `seconds` at the latest. With `initialize` the child also calls C_Initialize and
// C_Finalize.
ProbeResult ProbeTarget(const std::string& path, bool initialize, int seconds);

}  // namespace ckscribe
