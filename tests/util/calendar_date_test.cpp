#include "util/calendar_date.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

constexpr std::time_t kSecondsPerDay = 86'400;

void ExpectDate(unsigned long year, unsigned long month, unsigned long day, unsigned long days) {
    const ckscribe::CalendarDate date = ckscribe::DateOfDay(days);
    EXPECT_EQ(year, date.year) << days;
    EXPECT_EQ(month, date.month) << days;
    EXPECT_EQ(day, date.day) << days;
}

}  // namespace

TEST(CalendarDate, DaysAroundTheEndsOfMonthsAndYears_HaveTheirDates) {
    ExpectDate(1970, 1, 1, 0);
    ExpectDate(1970, 12, 31, 364);
    ExpectDate(1971, 1, 1, 365);
    ExpectDate(2000, 2, 29, 11'016);
    ExpectDate(2000, 3, 1, 11'017);
    ExpectDate(2026, 11, 21, 20'778);
    ExpectDate(2100, 2, 28, 47'540);
    ExpectDate(2100, 3, 1, 47'541);
    ExpectDate(9999, 12, 31, 2'932'896);
}

TEST(CalendarDate, EveryDayOfFiveCenturies_HasTheDateOfTheCLibrary) {
    for (unsigned long days = 0; days < 500 * 366; ++days) {
        const std::time_t second = static_cast<std::time_t>(days) * kSecondsPerDay;
        std::tm expected{};
        ASSERT_NE(nullptr, gmtime_r(&second, &expected));
        ExpectDate(static_cast<unsigned long>(expected.tm_year) + 1900,
                   static_cast<unsigned long>(expected.tm_mon) + 1,
                   static_cast<unsigned long>(expected.tm_mday), days);
        if (HasFailure()) return;
    }
}
