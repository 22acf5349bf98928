// Fixes the time that the library sees. The test program defines and exports `time` and `clock`. The library
// calls these, as everything in the process does.
#pragma once

#include <ctime>

// The zone that goes with kFixedTime. It is three hours ahead of UTC: a record with universal time would
// show.
inline constexpr char kFixedZone[] = "XYZ-3";

// Sun Nov 15 10:15:30 2026 in that zone. `time` always returns it.
inline constexpr std::time_t kFixedTime = 1794726930;

// `clock` gives these ticks at first and kTicksPerReading more at each further reading.
inline constexpr std::clock_t kFirstTicks = 12345;
inline constexpr std::clock_t kTicksPerReading = 250;

// The next reading of `clock` gives these ticks.
void RestartClock(std::clock_t ticks = kFirstTicks);
