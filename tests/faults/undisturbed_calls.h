// Makes calls that must go on whatever happens to the log.
#pragma once

#include "tests/faults/application.h"

// Calls functions of both lists, each of them twice, and expects of every call that it reaches the target
// with its arguments and returns with the target's result, errno and signal mask. Only one thread may do
// so.
void ExpectCallsGoOn(const Library& library, int calls = 40);
