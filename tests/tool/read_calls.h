// Calls of a log that a test writes.
#pragma once

#include <string_view>
#include <vector>

#include "reader/call_reader.h"

namespace ckscribe {

// All calls of the log, in any format, as a reader gives them.
inline std::vector<KeptCall> CallsIn(std::string_view log) {
    struct Sink : CallSink {
        void OnCall(const Call& call) override { calls.emplace_back(call); }
        std::vector<KeptCall> calls;
    } sink;
    CallReader reader(sink);
    reader.Feed(log);
    reader.EndFile();
    reader.Finish();
    return std::move(sink.calls);
}

}  // namespace ckscribe
