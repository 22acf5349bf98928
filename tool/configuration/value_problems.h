// What a value says that its author does not mean.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tool/configuration/logging_keys.h"
#include "tool/findings.h"

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

}  // namespace ckscribe
