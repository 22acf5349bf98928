// These are the keys that the library reads in section "CkLog2".
#pragma once

#include <string_view>

#include "config/logging_configuration.h"

namespace ckscribe {

enum class KeyKind {
    kPath,    // of a file
    kNumber,  // what atoi makes of the text counts; "0" and not 0 are what matters
    kMask,    // names of classes
    kLevel,   // one word
    kMode,    // permissions, in octal
    kSwitch,  // a plain "0", or anything else
};

struct LoggingKey {
    std::string_view name;
    KeyKind kind;
};

inline constexpr LoggingKey kLoggingKeys[] = {
    {"LibUNIX64", KeyKind::kPath},   {"Enabled", KeyKind::kNumber},     {"NewFormat", KeyKind::kNumber},
    {"LoggingMask", KeyKind::kMask}, {"LoggingLevel", KeyKind::kLevel}, {"File", KeyKind::kPath},
    {"Error", KeyKind::kPath},       {"Events", KeyKind::kPath},        {"HideData", KeyKind::kSwitch},
    {"FileMode", KeyKind::kMode},    {"Announce", KeyKind::kSwitch},
};

// Returns the key of exactly this name, or null.
constexpr const LoggingKey* FindLoggingKey(std::string_view name) {
    for (const LoggingKey& key : kLoggingKeys) {
        if (key.name == name) return &key;
    }
    return nullptr;
}

// Returns how many characters of a value count.
constexpr std::size_t LongestValue(KeyKind kind) {
    return kind == KeyKind::kPath ? CkLogConfig::kLongestPath : CkLogConfig::kLongestWord;
}

}  // namespace ckscribe
