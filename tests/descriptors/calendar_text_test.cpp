#include "descriptors/calendar_text.h"

#include "tests/descriptors/record_test.h"

using namespace ckscribe;

namespace {

class CalendarTextTest : public RecordTest {
protected:
    static std::string Calendar() { return std::string(CurrentCalendarText().calendar); }
    static std::string Time() { return std::string(CurrentCalendarText().time); }
    // Returns the text that the C library makes of `now`.
    static std::string LocalTime(const char* format) {
        std::tm local{};
        tzset();
        localtime_r(&now, &local);
        char text[64];
        std::strftime(text, sizeof text, format, &local);
        return text;
    }
    static void SetZone(const std::string& zone) { setenv("TZ", zone.c_str(), 1); }
};

TEST_F(CalendarTextTest, CalendarText_HasTheFixedForm) {
    EXPECT_EQ(Calendar(), "Sun Nov 15 10:15:30 2026");
    EXPECT_EQ(Time(), "10:15:30");
    now = PointInTime(1999, 2, 3, 4, 5, 6);
    EXPECT_EQ(Calendar(), "Wed Feb  3 04:05:06 1999");
    EXPECT_EQ(Time(), "04:05:06");
    now = 0;
    EXPECT_EQ(Calendar(), "Thu Jan  1 00:00:00 1970");
    now = PointInTime(9999, 12, 31, 23, 59, 59);
    EXPECT_EQ(Calendar(), "Fri Dec 31 23:59:59 9999");
}

// The first second of a process may be 0 or -1, and TZ may not be set. The remembered text is empty then and
// must not be taken for that second.
TEST_F(CalendarTextTest, FirstSecondIsZeroOrMinusOne_TextIsThatOfTheCLibrary) {
    unsetenv("TZ");
    for (const std::time_t first : {0, -1}) {
        now = first;
        EXPECT_EQ(Calendar(), LocalTime("%a %b %e %H:%M:%S %Y"));
    }
}

TEST_F(CalendarTextTest, SecondChanges_TextShowsTheNewSecond) {
    EXPECT_EQ(Time(), "10:15:30");
    EXPECT_EQ(Time(), "10:15:30");
    ++now;
    EXPECT_EQ(Time(), "10:15:31");
    now -= 32;
    EXPECT_EQ(Time(), "10:14:59");
}

TEST_F(CalendarTextTest, TimeZoneChangesWithinASecond_TextShowsTheNewZone) {
    EXPECT_EQ(Time(), "10:15:30");
    SetZone("EAST-9");
    EXPECT_EQ(Calendar(), "Sun Nov 15 19:15:30 2026");
    SetZone("WEST11:30");
    EXPECT_EQ(Calendar(), "Sat Nov 14 22:45:30 2026");
    SetZone("");
    EXPECT_EQ(Time(), "10:15:30");
    SetZone("EAST-9");
    EXPECT_EQ(Time(), "19:15:30");
    SetZone("UTC");
    EXPECT_EQ(Time(), "10:15:30");
}

TEST_F(CalendarTextTest, TimeZoneIsUnset_TextShowsTheZoneOfTheSystem) {
    SetZone("EAST-9");
    EXPECT_EQ(Time(), "19:15:30");
    unsetenv("TZ");
    EXPECT_EQ(Time(), LocalTime("%H:%M:%S"));
    SetZone("EAST-9");
    EXPECT_EQ(Time(), "19:15:30");
}

TEST_F(CalendarTextTest, LongZonesDifferAtTheirEnds_TextShowsTheZoneInForce) {
    for (std::size_t length = 50; length < 90; ++length) {
        const std::string name = std::string(1, '<').append(length, 'Z').append(1, '>');
        SetZone(name + "-1");
        EXPECT_EQ(Time(), "11:15:30") << length;
        SetZone(name + "-2");
        EXPECT_EQ(Time(), "12:15:30") << length;
        SetZone(name + "+3");
        EXPECT_EQ(Time(), "07:15:30") << length;
    }
}

TEST_F(CalendarTextTest, ZoneHasSummerTime_TextShowsItInSummer) {
    SetZone("CET-1CEST,M3.5.0,M10.5.0/3");
    now = PointInTime(2026, 7, 1, 12, 0, 0);
    EXPECT_EQ(Calendar(), "Wed Jul  1 14:00:00 2026");
    now = PointInTime(2026, 1, 1, 12, 0, 0);
    EXPECT_EQ(Calendar(), "Thu Jan  1 13:00:00 2026");
}

TEST_F(CalendarTextTest, TimeIsBeyondTheCalendar_TextStillHasItsForm) {
    now = static_cast<std::time_t>(1) << 62;
    EXPECT_EQ(Time().size(), 8U);
    EXPECT_GE(Calendar().size(), 24U);
}

}  // namespace
