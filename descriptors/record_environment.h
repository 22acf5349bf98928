// A record asks these functions for its surroundings. A test can replace each of them.
#pragma once

#include <ctime>

namespace ckscribe {

struct RecordEnvironment {
    std::time_t (*now)();
    std::clock_t (*processorTime)();
    int (*processId)();
    // Returns the low 32 bits of the calling thread's identity.
    int (*threadId)();
};

// Only tests change it, before the records that the change is for.
extern RecordEnvironment recordEnvironment;

// The process id is remembered. A child made by fork calls this function to forget the id of its parent.
void ForgetProcessId();

}  // namespace ckscribe
