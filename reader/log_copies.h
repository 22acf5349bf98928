// Copies logs that can be read only once: standard input and pipes. The destructor removes the copies.
//
// One thread at a time may use it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ckscribe {

class LogCopies {
public:
    LogCopies() = default;
    ~LogCopies();
    LogCopies(const LogCopies&) = delete;
    LogCopies& operator=(const LogCopies&) = delete;

    // Copies each log that is no file and replaces its path by the path of the copy. A copy lies in TMPDIR,
    // or in /tmp, and only its owner can read it.
    void Replace(std::vector<std::string>& paths);

    // Returns why the log at `index` could not be copied, or not completely. Returns an empty text when it
    // could, or needed no copy.
    std::string ErrorOf(std::size_t index) const;

private:
    std::vector<std::string> copies;
    std::vector<std::string> errors;
};

}  // namespace ckscribe
