#include "reader/call_reader.h"

#include <gtest/gtest.h>

#include "tests/reader/collected_calls.h"

namespace ckscribe {
namespace {

std::string Event(bool isStart, int call, const char* function = "C_Sign", int process = 1) {
    const std::string common = R"("run":"a-)" + std::to_string(process) + R"(","pid":)" +
                               std::to_string(process) + R"(,"tid":2,"call":)" + std::to_string(call) +
                               R"(,"function":")" + function + "\"";
    return isStart ? R"({"event":"start","time":"2026-11-21T12:33:45Z",)" + common + ",\"in\":[]}\n"
                   : R"({"event":"end","time":"2026-11-21T12:33:45Z","ns":5,)" + common +
                         R"(,"rv":0,"result":"CKR_OK","in":[],"out":[]})" + "\n";
}

TEST(CallReader, EventsAreJoinedByRunAndCall) {
    const CollectedCalls log = ReadLog(Event(true, 1) + Event(true, 2) + Event(true, 1, "C_Sign", 9) +
                                       Event(false, 1) + Event(false, 3) + Event(false, 1, "C_Sign", 9));
    ASSERT_EQ(log.calls.size(), 4U);
    EXPECT_EQ(log[0].number, 1U);
    EXPECT_TRUE(log[0].hasStart);
    EXPECT_EQ(log[0].startPlace.line, 1U);
    EXPECT_EQ(log[0].endPlace.line, 4U);
    EXPECT_EQ(log[1].number, 3U);
    EXPECT_FALSE(log[1].hasStart);
    EXPECT_EQ(log[2].run, "a-9");
    EXPECT_TRUE(log[2].hasStart);
    EXPECT_EQ(log[3].number, 2U);
    EXPECT_TRUE(log[3].IsUnfinished());
}

TEST(CallReader, LogInPiecesOfAnySize_GivesTheSameCalls) {
    const std::string log = Event(true, 1) + "\n\n10:15:30 01234-567:STRTLogout {Sesn=5 }\n" +
                            Event(false, 1) + "\n10:15:31 01234-567:FINILogout CKR_OK12345clks {}";
    for (std::size_t size = 1; size < 40; ++size) {
        CollectedCalls collected;
        CallReader reader(collected);
        for (std::size_t i = 0; i < log.size(); i += size) reader.Feed(std::string_view(log).substr(i, size));
        reader.Finish();
        ASSERT_EQ(collected.calls.size(), 2U) << size;
        EXPECT_EQ(collected.stretches.size(), 0U);
        EXPECT_EQ(collected[1].Function(), "C_Logout");
        EXPECT_EQ(collected[1].startPlace.line, 4U);
        EXPECT_EQ(collected[1].endPlace.line, 7U);
    }
}

TEST(CallReader, GrowingLog_GivesEachCallOnceAndShowsCallsInProgress) {
    CollectedCalls collected;
    CallReader reader(collected);
    const auto openCount = [&] {
        std::size_t count = 0;
        reader.ForEachOpen([&](const Call& call) { count += call.Function() == "C_Logout" ? 1U : 0U; });
        return count;
    };
    reader.Feed("\n\n10:15:30 01234-567:STRTLogout {Sesn=5 }");
    EXPECT_EQ(openCount(), 0U);
    reader.Settle();
    EXPECT_EQ(openCount(), 1U);
    reader.Feed("\n10:15:31 01234-567:FINILogout CKR_OK12345clks {");
    reader.Settle();
    EXPECT_EQ(collected.calls.size(), 0U);
    EXPECT_EQ(collected.stretches.size(), 0U);
    reader.Feed("}");
    reader.Settle();
    EXPECT_EQ(openCount(), 0U);
    ASSERT_EQ(collected.calls.size(), 1U);
    reader.Finish();
    EXPECT_EQ(collected.calls.size(), 1U);
}

}  // namespace
}  // namespace ckscribe
