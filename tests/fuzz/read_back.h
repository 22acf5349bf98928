// This file reads the records of one call back as reader/ does, and compares what comes out with what the
// call had.
#pragma once

#include <string>
#include <string_view>

#include "tests/fuzz/expected_records.h"

// `log` holds the start record and the end record of a call of `function`, and nothing else. Prints the first
// difference and ends the process. If a log can be read in several ways, any of them will do.
void RequireReadBack(std::string_view log, const std::string& function, const ExpectedRecord& start,
                     const ExpectedRecord& end);

// Does the same for `events`, the start event and the end event of a call that shows its data.
void RequireEventsReadBack(std::string_view events, const std::string& function, const ExpectedRecord& start,
                           const ExpectedRecord& end);
