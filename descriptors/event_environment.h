// An event asks these functions for its surroundings. A test can replace each of them.
#pragma once

#include <ctime>

namespace ckscribe {

struct EventEnvironment {
    timespec (*wallClock)();       // UTC
    timespec (*monotonicClock)();  // for durations
    // Returns the number that the system gives the calling thread.
    int (*threadNumber)();
};

// Only tests change it, before the events that the change is for.
extern EventEnvironment eventEnvironment;

}  // namespace ckscribe
