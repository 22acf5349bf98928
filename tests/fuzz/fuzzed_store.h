#pragma once

// The fuzzers of the configuration store share this file. It has a store over a file of its own, and takes
// the parts of an input.

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "config/wendrafil_configuration.h"

inline void Require(bool holds) {
    if (!holds) std::abort();
}

class FuzzedStore : public WendrafilConfiguration {
public:
    FuzzedStore() { Require((file = mkstemp(path.data())) >= 0); }
    ~FuzzedStore() override {
        close(file);
        unlink(path.c_str());
    }

    const char* GetConfFileName() const override { return path.c_str(); }

    void Write(const std::string& text) {
        Require(ftruncate(file, 0) == 0);
        Require(pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
    }

    std::string Text() const {
        std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
        Require(pread(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
        return text;
    }

    std::optional<std::string> Lookup(const std::string& section, const std::string& key) const {
        char value[8192];
        const int result = GetConfigurationInfo(section.c_str(), key.c_str(), value, sizeof value);
        Require(result == 0 || result == 1);
        return result ? std::optional<std::string>(value) : std::nullopt;
    }

private:
    static std::string Template() {
        const char* directory = std::getenv("TMPDIR");
        return std::string(directory != nullptr ? directory : "/tmp") + "/ckscribe-fuzz.XXXXXX";
    }

    std::string path = Template();
    int file = -1;
};

// Takes the first line off an input and returns it.
inline std::string TakeLine(std::string* input) {
    const std::size_t end = input->find('\n');
    std::string line = input->substr(0, end);
    input->erase(0, end == std::string::npos ? end : end + 1);
    return line.c_str();  // up to a NUL
}
