// Calls that go on whatever becomes of the log.
#pragma once

#include "tests/faults/application.h"

// Calls functions of both lists, logged twice each, and expects of every call that it reached the target with
// its arguments and came back with the target's result, errno and signal mask. For one thread.
void ExpectCallsGoOn(const Library& library, int calls = 40);
