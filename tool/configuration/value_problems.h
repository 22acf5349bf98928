// Finds values that say something else than their author probably means.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tool/configuration/logging_keys.h"
#include "tool/findings.h"

namespace ckscribe {

// A ValueProblem says what is wrong with a value, how bad that is, and what to do.
struct ValueProblem {
    Level level;
    std::string what;
    std::string remedy;
};

// Returns the first problem of a value, as a text, for this key, or nothing when it has none. Does not ask
// whether files exist and libraries load.
std::optional<ValueProblem> FindValueProblem(const LoggingKey& key, std::string_view value);

}  // namespace ckscribe
