// Writes calls in formats that other programs open.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "reader/log_reading.h"

namespace ckscribe {

// Writes the calls that it takes to standard output. Finish() completes the output.
class CallWriter : public LogSink {
public:
    virtual void Finish() {}
};

// Writes JSON Lines: the events of each call, with the fields that docs/events.md describes. What a text log
// lacks is absent.
std::unique_ptr<CallWriter> MakeEventWriter();

// Writes comma-separated values: a head line and a row for each call. No cell begins with a character that
// makes a spreadsheet run it as a formula.
std::unique_ptr<CallWriter> MakeTableWriter(const std::vector<std::string>& paths);

// Writes the Trace Event format, which Perfetto and speedscope open: complete events, and begin events for
// calls without an end.
std::unique_ptr<CallWriter> MakeTraceWriter();

}  // namespace ckscribe
