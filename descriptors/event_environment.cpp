#include "descriptors/event_environment.h"

#include <cerrno>

#include "host/thread_number.h"

namespace ckscribe {

namespace {

// Times are taken outside of the host shield, right before and behind the target. A filter of system calls
// may refuse the clock.
template <clockid_t clock>
timespec Reading() {
    const int error = errno;
    timespec now = {};
    if (clock_gettime(clock, &now) != 0) errno = error;
    return now;
}

}  // namespace

EventEnvironment eventEnvironment = {Reading<CLOCK_REALTIME>, Reading<CLOCK_MONOTONIC>, SystemThreadNumber};

}  // namespace ckscribe
