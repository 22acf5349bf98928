// CallsIn reads the calls of a log that a test writes.
#pragma once

#include <string_view>
#include <vector>

#include "reader/call_reader.h"

namespace ckscribe {

// Returns all calls of the log, which has any format, in the order in which a reader gives them.
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
