// This file fixes the time that the library sees. The test program defines and exports `time`, `clock` and
// `clock_gettime`. The library calls these, as everything in the process does.
#pragma once

#include <ctime>

// This zone goes with kFixedTime. It is three hours ahead of UTC: a record with universal time would show.
inline constexpr char kFixedZone[] = "XYZ-3";

// `time` always returns this time. It is Sun Nov 15 10:15:30 2026 in that zone.
inline constexpr std::time_t kFixedTime = 1794726930;

// `clock_gettime` returns the same for CLOCK_REALTIME, with these nanoseconds.
inline constexpr long kFixedNanoseconds = 123456789;

// Each reading of CLOCK_MONOTONIC returns this much more than the one before, from 1,000 s on. Other clocks
// are the true ones.
inline constexpr long kNanosecondsPerReading = 1001;

// `clock` gives these ticks at first and kTicksPerReading more at each further reading.
inline constexpr std::clock_t kFirstTicks = 12345;
inline constexpr std::clock_t kTicksPerReading = 250;

// While this is not 0, the clocks of events fail with it as errno.
extern int clockError;

// Lets the next reading of `clock` give these ticks.
void RestartClock(std::clock_t ticks = kFirstTicks);
