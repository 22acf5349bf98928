// The times of events agree with the clocks of the system.

#include <cstdio>
#include <ctime>
#include <string>

#include "tests/faults/application.h"

namespace {

constexpr long kTargetNanoseconds = 20'000'000;

// The target takes at least kTargetNanoseconds.
CK_RV TakeTime(const char*, const TargetWord*, std::size_t) {
    const timespec time = {0, kTargetNanoseconds};
    clock_nanosleep(CLOCK_MONOTONIC, 0, &time, nullptr);
    return CKR_OK;
}

// Returns the time in the form that events have.
std::string TextOfNow() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm utc{};
    gmtime_r(&now.tv_sec, &utc);
    char second[sizeof "2026-11-21T12:33:45"];
    std::strftime(second, sizeof second, "%Y-%m-%dT%H:%M:%S", &utc);
    char text[sizeof second + sizeof ".123456789Z"];
    std::snprintf(text, sizeof text, "%s.%09ldZ", second, now.tv_nsec);
    return text;
}

long MonotonicNanoseconds() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1'000'000'000 + now.tv_nsec;
}

// Returns the text between `before` and the next `behind`, from `at` on.
std::string Between(const std::string& text, std::size_t at, const std::string& before, const char* behind) {
    const std::size_t from = text.find(before, at) + before.size();
    return text.substr(from, text.find(behind, from) - from);
}

class EventTimes : public FaultsTest {};

TEST_F(EventTimes, TargetTakesTime_BothEventsTellTheBeginningAndTheEndTellsTheTargetsTime) {
    const std::string path = directory.File("events.jsonl");
    WriteConfigurationFile("CkLog2 = {\n LibUNIX64 = " SCRIPTED_TARGET ";\n Events = " + path + ";\n}\n");
    EXPECT_TRUE(Survives([&path] {
        Library library;
        library.Exported<void()>("CkLogSpecialInitialize")();
        targetAnswer = TakeTime;
        const std::string before = TextOfNow();
        const long begin = MonotonicNanoseconds();
        EXPECT_EQ(library->C_Logout(1), CKR_OK);
        const long took = MonotonicNanoseconds() - begin;
        const std::string after = TextOfNow();
        const std::string events = Contents(path);
        const std::size_t end = events.find(R"({"event":"end",)");
        ASSERT_NE(end, events.npos);
        const std::string time = Between(events, 0, R"("time":")", "\"");
        EXPECT_EQ(Between(events, end, R"("time":")", "\""), time);
        EXPECT_LE(before, time);
        EXPECT_LT(time, after);
        const long nanoseconds = std::stol(Between(events, end, R"("ns":)", ","));
        EXPECT_GE(nanoseconds, kTargetNanoseconds);
        EXPECT_LT(nanoseconds, took);
    }));
}

}  // namespace
