#include "tests/calls/fixed_clock.h"

#include <atomic>

// Only some systems declare their functions `noexcept`.
#ifdef __GLIBC__
#define NOEXCEPT_OF_SYSTEM noexcept
#else
#define NOEXCEPT_OF_SYSTEM
#endif

namespace {

std::atomic<std::clock_t> nextReading{kFirstTicks};

}  // namespace

extern "C" {
__attribute__((visibility("default"))) std::time_t time(std::time_t* result) NOEXCEPT_OF_SYSTEM {
    if (result != nullptr) *result = kFixedTime;
    return kFixedTime;
}

__attribute__((visibility("default"))) std::clock_t clock() NOEXCEPT_OF_SYSTEM {
    return nextReading.fetch_add(kTicksPerReading);
}
}

void RestartClock(std::clock_t ticks) { nextReading = ticks; }
