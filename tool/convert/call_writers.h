// Calls in formats that other programs open.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "reader/log_reading.h"

namespace ckscribe {

// Writes the calls that it takes to standard output. Finish() ends what was written.
class CallWriter : public LogSink {
public:
    virtual void Finish() {}
};

// JSON Lines: the events of each call, with the fields that docs/events.md describes. What a text log lacks
// is absent.
std::unique_ptr<CallWriter> MakeEventWriter();

// Comma-separated values: a head line and a row for each call. No cell begins with what a spreadsheet would
// run.
std::unique_ptr<CallWriter> MakeTableWriter(const std::vector<std::string>& paths);

// The Trace Event format, which Perfetto and speedscope open: complete events; calls without an end as begun.
std::unique_ptr<CallWriter> MakeTraceWriter();

}  // namespace ckscribe
