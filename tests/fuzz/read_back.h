// Reads the records of one call back as reader/ does, and compares what comes out with what the call had.
#pragma once

#include <string>
#include <string_view>

#include "tests/fuzz/expected_records.h"

// `log` holds the start record and the end record of a call of `function`, and nothing else. The first
// difference is printed and ends the process. Where the log has several ways to be read, any of them will do.
void RequireReadBack(std::string_view log, const std::string& function, const ExpectedRecord& start,
                     const ExpectedRecord& end);

// Does the same for `events`, the start event and the end event of a call that shows its data.
void RequireEventsReadBack(std::string_view events, const std::string& function, const ExpectedRecord& start,
                           const ExpectedRecord& end);
