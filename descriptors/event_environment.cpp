#include "descriptors/event_environment.h"

#include "host/thread_number.h"

namespace ckscribe {

namespace {

template <clockid_t clock>
timespec Reading() {
    timespec now = {};
    clock_gettime(clock, &now);
    return now;
}

}  // namespace

EventEnvironment eventEnvironment = {Reading<CLOCK_REALTIME>, Reading<CLOCK_MONOTONIC>, SystemThreadNumber};

}  // namespace ckscribe
