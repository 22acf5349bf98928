#include "tests/calls/fixed_clock.h"

#include <atomic>

namespace {

std::atomic<std::clock_t> nextReading{kFirstTicks};

}  // namespace

extern "C" {
__attribute__((visibility("default"))) std::time_t time(std::time_t* result) noexcept {
    if (result != nullptr) *result = kFixedTime;
    return kFixedTime;
}

__attribute__((visibility("default"))) std::clock_t clock() noexcept {
    return nextReading.fetch_add(kTicksPerReading);
}
}

void RestartClock(std::clock_t ticks) { nextReading = ticks; }
