#include "tests/calls/fixed_clock.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

#include "tests/noexcept_of_system.h"

namespace {

std::atomic<std::clock_t> nextReading{kFirstTicks};

std::atomic<long> monotonicNanoseconds{1000'000'000'000};

timespec Split(long nanoseconds) {
    constexpr long kPerSecond = 1'000'000'000;
    return {nanoseconds / kPerSecond, nanoseconds % kPerSecond};
}

}  // namespace

extern "C" {
__attribute__((visibility("default"))) std::time_t time(std::time_t* result) NOEXCEPT_OF_SYSTEM {
    if (result != nullptr) *result = kFixedTime;
    return kFixedTime;
}

__attribute__((visibility("default"))) std::clock_t clock() NOEXCEPT_OF_SYSTEM {
    return nextReading.fetch_add(kTicksPerReading);
}

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock,
                                                         timespec* result) NOEXCEPT_OF_SYSTEM {
    const bool isOfEvents = clock == CLOCK_REALTIME || clock == CLOCK_MONOTONIC;
    if (isOfEvents && clockError != 0) {
        errno = clockError;
        return -1;
    }
    if (clock == CLOCK_REALTIME) {
        *result = {kFixedTime, kFixedNanoseconds};
        return 0;
    }
    if (clock == CLOCK_MONOTONIC) {
        *result = Split(monotonicNanoseconds.fetch_add(kNanosecondsPerReading));
        return 0;
    }
    return static_cast<int>(syscall(SYS_clock_gettime, clock, result));
}
}

int clockError = 0;

void RestartClock(std::clock_t ticks) { nextReading = ticks; }
