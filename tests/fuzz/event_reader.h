// Reads the two events of a call back with a JSON parser and compares them with what the records must show.
// The first thing that is not as expected is printed with the events and ends the process.
#pragma once

#include <p11-kit/pkcs11.h>

#include <string>

#include "tests/fuzz/expected_records.h"

// `events`: all that the call wrote. `function`: the exported name. Events must show data.
void RequireEvents(const std::string& events, const std::string& function, const ExpectedRecord& start,
                   const ExpectedRecord& end, CK_RV rv);
