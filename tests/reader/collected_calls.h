// CollectedCalls keeps all that a reader finds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "reader/call_reader.h"

namespace ckscribe {

class CollectedCalls : public CallSink {
public:
    void OnCall(const Call& call) override { calls.emplace_back(call); }
    void OnUnreadable(const UnreadableStretch& stretch) override {
        stretches.push_back(stretch);
        beginnings.push_back(stretch.beginning);
    }

    const Call& operator[](std::size_t i) const { return calls.at(i).Get(); }

    std::vector<KeptCall> calls;
    std::vector<UnreadableStretch> stretches;
    std::vector<std::string> beginnings;
};

// Reads a complete log.
inline CollectedCalls ReadLog(std::string_view log) {
    CollectedCalls collected;
    CallReader reader(collected);
    reader.Feed(log);
    reader.Finish();
    return collected;
}

}  // namespace ckscribe
