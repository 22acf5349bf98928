// RequireEvents reads the two events of a call back with a JSON parser and compares them with what the
// records must show. It prints the first thing that is not as expected, with the events, and ends the
// process.
#pragma once

#include <p11-kit/pkcs11.h>

#include <string>

#include "tests/fuzz/expected_records.h"

// `events` is all that the call wrote, and `function` is the exported name. The events must show data.
void RequireEvents(const std::string& events, const std::string& function, const ExpectedRecord& start,
                   const ExpectedRecord& end, CK_RV rv);
