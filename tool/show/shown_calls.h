// Prints the calls that a filter selects, one line each, and calls of the same thread around them.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "reader/log_reading.h"
#include "tool/call_line.h"
#include "tool/show/call_filter.h"

namespace ckscribe {

struct ShowStyle {
    CallLineStyle line;
    // So many calls of the same thread are shown before and behind each call.
    std::size_t context = 0;
    // If `isRecords` is true, records are shown as they stand in the log instead of lines.
    bool isRecords = false;
};

class ShownCalls : public LogSink {
public:
    // `filter` outlives this.
    ShownCalls(CallFilter& filter, const ShowStyle& style) : filter(filter), style(style) {}

    void OnLogBegin(const std::vector<std::uint32_t>&) override { threads.clear(); }
    void OnLogSurveyed(const Moment& lastRecord) override { filter.SetLog(lastRecord); }
    void OnCall(const Call& call) override;

    // Prints a call that has no end yet, if the filter selects it.
    void ShowOpen(const Call& call);

    // Sends all that was printed to standard output.
    static void Flush();

private:
    struct Around {
        std::deque<KeptCall> before;
        std::size_t after = 0;  // how many more are shown
    };

    void Print(const Call& call) const;

    CallFilter& filter;
    ShowStyle style;
    std::map<std::pair<std::uint32_t, std::int64_t>, Around> threads;
};

}  // namespace ckscribe
