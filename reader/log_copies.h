// Copies of logs that can be read once only: standard input, pipes. They go when this does.
//
// Used by one thread at a time.
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

    // Puts the path of a copy in the place of each path that is no file. A copy lies in TMPDIR, or in /tmp,
    // and only its owner can read it.
    void Replace(std::vector<std::string>& paths);

    // Why the path at `index` could not be copied, or not whole; empty: it could, or needed no copy.
    std::string ErrorOf(std::size_t index) const;

private:
    std::vector<std::string> copies;
    std::vector<std::string> errors;
};

}  // namespace ckscribe
