// What a record says of its surroundings, each through a function that a test can replace.
#pragma once

#include <ctime>

struct RecordEnvironment {
    std::time_t (*now)();
    std::clock_t (*processorTime)();
    int (*processId)();
    int (*threadId)();  // the low 32 bits of the calling thread's identity
};

// Changed by tests alone, before the records that it is meant for.
extern RecordEnvironment recordEnvironment;

// The process id is remembered; a child made by fork forgets its parent's.
void ForgetProcessId();
