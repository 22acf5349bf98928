// The time that the library is told: the test program defines and exports `time` and `clock`, and the
// library, like everything in the process, calls those.
#pragma once

#include <ctime>

// The zone that goes with kFixedTime: three hours ahead of UTC, so that universal time in a record would
// show.
inline constexpr char kFixedZone[] = "XYZ-3";

// Sun Nov 15 10:15:30 2026 in that zone; `time` always says so.
inline constexpr std::time_t kFixedTime = 1794726930;

// `clock` gives these ticks at first and kTicksPerReading more at each further reading.
inline constexpr std::clock_t kFirstTicks = 12345;
inline constexpr std::clock_t kTicksPerReading = 250;

// The next reading of `clock` gives these ticks.
void RestartClock(std::clock_t ticks = kFirstTicks);
