// A CallTable is the table of functions that `ckscribe run -c` prints. It says how often each function was
// called, how often it failed, and how long it took.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "reader/call.h"
#include "reader/latency_histogram.h"

namespace ckscribe {

class CallTable {
public:
    // Adds a call with or without an end.
    void Add(const Call& call);

    // Returns the table: a head line, a line for each function, and a line with the totals. The function with
    // the longest total time comes first. Times are in seconds. Every line ends with a line feed.
    std::string Text() const;

private:
    struct Row {
        std::uint64_t calls = 0;
        std::uint64_t errors = 0;  // ended with anything but CKR_OK
        LatencyHistogram times;
    };
    static std::string Line(const std::string& name, std::size_t width, const Row& row);

    std::map<std::string, Row, std::less<>> rows_;
};

}  // namespace ckscribe
