// What an event says of its surroundings, each through a function that a test can replace.
#pragma once

#include <ctime>

namespace ckscribe {

struct EventEnvironment {
    timespec (*wallClock)();       // UTC
    timespec (*monotonicClock)();  // for durations
    int (*threadNumber)();         // the system's number of the calling thread
};

// Only tests change it, before the events that the change is for.
extern EventEnvironment eventEnvironment;

}  // namespace ckscribe
