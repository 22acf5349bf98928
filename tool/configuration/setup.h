// A Setup is what `ckscribe check` looks at: one configuration file, and the settings that the library makes
// of the file.
#pragma once

#include <optional>
#include <string>

#include "config/logging_configuration.h"
#include "tool/configuration/configuration_text.h"
#include "tool/configuration/logging_keys.h"
#include "tool/findings.h"

namespace ckscribe {

// A ConfigurationAt is the library's own view of section "CkLog2", for a file that the caller names. If the
// file does not exist, every key has its default.
class ConfigurationAt : public CkLogConfig {
public:
    explicit ConfigurationAt(std::string path) : path_(std::move(path)) {}
    const char* GetConfFileName() const override { return path_.c_str(); }

private:
    std::string path_;
};

class Setup {
public:
    Setup(const std::string& path, std::string_view text) : settings(path), text(text) {}

    ConfigurationAt settings;
    const ConfigurationText text;

    // Returns the key's value as it stands in the file, or nothing when the library finds no such key.
    std::optional<std::string> Value(std::string_view key) const {
        const auto entry = text.FindEntry(CkLogConfig::GetCkLogSectionName(), std::string(key));
        if (!entry) return std::nullopt;
        return std::string(text.ValueOf(*entry));
    }

    // Returns the line of the key that counts, or 0.
    int Line(std::string_view key) const {
        const auto entry = text.FindEntry(CkLogConfig::GetCkLogSectionName(), std::string(key));
        return entry ? text.LineOf(entry->key) : 0;
    }

    // Returns whether the library writes a log.
    bool IsLogging() { return settings.IsLoggingEnabledMordavek() != 0; }

    // Returns whether the library writes events.
    bool HasEvents() { return *settings.EventsFileName() != '\0'; }
};

}  // namespace ckscribe
