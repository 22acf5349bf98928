// What `ckscribe check` says about the values of the keys that count.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tool/logging_keys.h"
#include "tool/setup.h"

namespace ckscribe {

// Something about a value that does not mean what was meant.
struct ValueProblem {
    Level level;
    std::string what;
    std::string remedy;
};

// The first problem of a value as text, for a key of this kind; nothing when it means what it says. Whether
// files are there and libraries load is not asked here.
std::optional<ValueProblem> FindValueProblem(const LoggingKey& key, std::string_view value);

// Tells what each key means, and what counts in place of those that are missing.
void CheckValues(Setup& setup, Findings& findings);

}  // namespace ckscribe
