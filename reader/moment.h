// A Moment is a point in time as a log says it. Events have nanoseconds in UTC. Text logs have local seconds,
// in the old format with the date and in the new one without.
#pragma once

#include <cstdint>

namespace ckscribe {

inline constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
inline constexpr std::int64_t kSecondsPerDay = 86'400;

enum class TimeScale : std::uint8_t {
    kNone,  // there is no time
    kUtc,   // nanoseconds since 1970 began in UTC
    // kLocal counts nanoseconds since 1970 began, on the calendar of the machine that wrote the log. It has
    // whole seconds.
    kLocal,
    // kDayOfLog counts like kLocal, but from midnight of the log's first day, whose date is not known (yet).
    kDayOfLog,
};

struct Moment {
    std::int64_t nanoseconds = 0;
    TimeScale scale = TimeScale::kNone;

    bool IsThere() const { return scale != TimeScale::kNone; }
    bool IsDateKnown() const { return scale == TimeScale::kUtc || scale == TimeScale::kLocal; }
    // Returns whether the log has fractions of a second.
    bool IsPrecise() const { return scale == TimeScale::kUtc; }

    friend bool operator==(const Moment&, const Moment&) = default;
};

// Returns whether 64 bits hold all moments of a year in nanoseconds since 1970.
constexpr bool HasNanoseconds(std::int64_t year) { return year > 1677 && year < 2262; }

// Returns the days from 1970-01-01 to a date of the Gregorian calendar (month and day from 1).
constexpr std::int64_t DaysSince1970(std::int64_t year, unsigned month, unsigned day) {
    // Years begin in March here: the leap day is the last day of a year.
    year -= month <= 2 ? 1 : 0;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (std::int64_t{month} + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146'097 + dayOfEra - 719'468;
}

}  // namespace ckscribe
