// Collects what the page of a report shows beside the report's own figures: calls over time, distributions of
// durations, and single calls that deserve a look.
//
// Its memory grows with the distinct functions, results and threads, never with the log. One thread at a time
// may use it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/call.h"
#include "reader/latency_histogram.h"

namespace ckscribe {

// Counts calls and errors in bins of equal width. The width grows with the span: there are at most kMostBins
// bins.
class CallsOverTime {
public:
    static constexpr std::int64_t kMostBins = 400;

    struct Bin {
        std::uint64_t calls = 0;
        std::uint64_t errors = 0;
    };

    void Add(std::int64_t nanoseconds, bool isPrecise, bool isError);

    std::int64_t Width() const { return width; }                      // in nanoseconds
    const std::map<std::int64_t, Bin>& Bins() const { return bins; }  // by time divided by the width

private:
    void Widen();

    std::int64_t width = 0;  // 0 before the first call
    std::map<std::int64_t, Bin> bins;
};

// Keeps the first and the last calls of a row of calls.
class FirstAndLastCalls {
public:
    static constexpr std::size_t kMost = 20;  // of each

    void Add(const Call& call);
    template <class Visit>
    void ForEach(const Visit& visit) const {
        for (const KeptCall& call : first) visit(call);
        for (const KeptCall& call : last) visit(call);
    }

private:
    std::vector<KeptCall> first;
    std::deque<KeptCall> last;
};

class PageDetails {
public:
    static constexpr std::size_t kMostSlow = 1000;
    static constexpr std::size_t kMostUnfinished = 1000;
    // The details have at most so many bytes of JSON, because people mail the page.
    static constexpr std::size_t kLargestJson = 4'000'000;

    // With `isUtc` the page shows times in UTC instead of local time.
    explicit PageDetails(bool isUtc) : isUtc(isUtc) {}

    // Takes the next call in the order of the log.
    void Take(const Call& call);

    // Returns the details in the form that the page's script reads. `files` are the names of the files that
    // calls name by number. In the page they take at most about `room` bytes.
    std::string Json(const std::vector<std::string>& files, std::size_t room = kLargestJson) const;

private:
    struct SlowCall {
        std::uint64_t nanoseconds = 0;
        KeptCall call;
        // The shortest comes first in a heap.
        friend bool operator<(const SlowCall& a, const SlowCall& b) { return a.nanoseconds > b.nanoseconds; }
    };

    void KeepIfSlow(const Call& call);
    std::int64_t OnCalendar(const Moment& time) const;
    std::vector<const Call*> KeptCalls() const;
    std::size_t AddCalls(nlohmann::ordered_json& details, const std::vector<const Call*>& kept,
                         std::size_t longest, std::int64_t base, const std::vector<std::string>& files,
                         std::size_t room) const;

    const bool isUtc;
    std::uint64_t callCount = 0;
    std::uint64_t unfinishedCount = 0;
    bool isPrecise = false;
    bool isDated = true;
    std::optional<std::int64_t> firstTime;
    std::optional<std::int64_t> lastTime;
    // `offset` is that of the calendar to UTC, at the latest call that was taken.
    std::optional<std::int64_t> offset;
    CallsOverTime overTime;
    std::map<std::string_view, LatencyHistogram> latency;  // by function
    std::vector<SlowCall> slow;                            // a heap
    std::map<std::string_view, FirstAndLastCalls> byFunction;
    std::map<std::pair<std::string_view, std::string>, FirstAndLastCalls> byError;  // function and result
    std::vector<KeptCall> unfinished;
};

}  // namespace ckscribe
