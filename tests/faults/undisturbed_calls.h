// This file makes calls that must go on whatever happens to the log.
#pragma once

#include "tests/faults/application.h"

// Calls a function of the standard and one of the vendor, `calls` times each. Expects every call to reach the
// target with its arguments and to return with the target's result and errno. Expects the signal mask to
// stay. Only one thread may call this function.
void ExpectCallsGoOn(const Library& library, int calls = 40);
