#include "reader/event_line.h"

#include <gtest/gtest.h>

#include "reader/known_names.h"
#include "tests/reader/collected_calls.h"

namespace ckscribe {
namespace {

constexpr std::string_view kStart =
    R"({"event":"start","time":"2026-11-21T12:33:45.123456789Z","run":"18a3f1c2d4e5f607-3e63","pid":15971,"tid":15972,"call":17,"function":"C_Sign","session":1,"in":[{"kind":"SessionHandle","value":1},{"kind":"ByteString","size":32}]})";
constexpr std::string_view kEnd =
    R"({"event":"end","time":"2026-11-21T12:33:45.123456789Z","ns":181234,"run":"18a3f1c2d4e5f607-3e63","pid":15971,"tid":15972,"call":17,"function":"C_Sign","rv":0,"result":"CKR_OK","session":1,"in":[{"kind":"SessionHandle","value":1},{"kind":"ByteString","size":32}],"out":[{"kind":"ByteString","size":256}]})";

// Appends one after the other, because g++ 12 gives false warnings for sums of strings.
std::string Joined(std::initializer_list<std::string_view> parts) {
    std::string joined;
    for (const std::string_view part : parts) joined.append(part);
    return joined;
}

bool Read(std::string_view line, Record& record) {
    std::vector<char> padded(line.begin(), line.end());
    padded.resize(line.size() + kEventPadding);
    EventLineReader reader;
    const bool isRead = reader.Read({padded.data(), line.size()}, record);
    record.text = {};
    record.fields.mechanism = {};
    return isRead;
}

TEST(EventLine, EndEventHasAllFields) {
    const CollectedCalls log = ReadLog(Joined({kStart, "\n", kEnd, "\n"}));
    ASSERT_EQ(log.calls.size(), 1U);
    const Call& call = log[0];
    EXPECT_EQ(call.Function(), "C_Sign");
    EXPECT_EQ(call.process, 15971U);
    EXPECT_EQ(call.thread, 15972);
    EXPECT_EQ(call.run, "18a3f1c2d4e5f607-3e63");
    EXPECT_EQ(call.number, 17U);
    EXPECT_EQ(call.start, (Moment{1'795'264'425'123'456'789, TimeScale::kUtc}));
    EXPECT_EQ(call.end, (Moment{1'795'264'425'123'638'023, TimeScale::kUtc}));
    EXPECT_EQ(call.nanoseconds, 181'234U);
    EXPECT_EQ(call.rv, 0U);
    EXPECT_EQ(call.result, "CKR_OK");
    EXPECT_EQ(call.fields.session, 1U);
    EXPECT_FALSE(call.fields.slot);
    EXPECT_TRUE(call.hasStart && call.hasEnd);
    EXPECT_EQ(call.startPlace.line, 1U);
    EXPECT_EQ(call.endPlace.line, 2U);
    EXPECT_FALSE(call.IsError());
}

TEST(EventLine, ChildrenOfAnEventAreReadAsValues) {
    const std::string line =
        R"({"event":"end","time":"2026-11-21T12:33:45Z","ns":1,"run":"a-1","pid":1,"tid":2,"call":3,"function":"C_X","rv":4660,"result":"CKR_UNKNOWN","in":[{"kind":"ULong","name":"cnt","value":"18446744073709551615"},{"kind":"ByteString","size":3,"hex":"00fF41"},{"kind":"ByteString","size":2,"text":"a\""},{"kind":"PIN","name":"Old"},{"kind":"ByteBoolean","name":"tknPresent","value":true},{"kind":"AttributeList","attributes":[{"type":"CKA_TOKEN","number":1,"size":1,"value":true},{"type":"CKA_CLASS","number":0,"size":8,"value":3},{"number":77,"unavailable":true}]}],"out":[{"kind":"SlotIDList","values":[4,5]},{"kind":"SlotInfo","flags":6}]})";
    const CollectedCalls log = ReadLog(line);
    ASSERT_EQ(log.calls.size(), 1U);
    EXPECT_EQ(log[0].rv, 4660U);
    EXPECT_EQ(log[0].result, "CKR_UNKNOWN");
    EXPECT_TRUE(log[0].IsError());
    const std::vector<Value> in = log[0].In();
    ASSERT_EQ(in.size(), 6U);
    EXPECT_EQ(in[0].name, "cnt");
    EXPECT_EQ(in[0].number, 18'446'744'073'709'551'615U);
    EXPECT_EQ(in[1].kind, "ByteString");
    EXPECT_EQ(in[1].bytes, std::string("\0\xff"
                                       "A",
                                       3));
    EXPECT_EQ(in[1].size, 3U);
    EXPECT_FALSE(in[1].isText);
    EXPECT_EQ(in[2].bytes, "a\"");
    EXPECT_TRUE(in[2].isText);
    EXPECT_EQ(in[3].kind, "PIN");
    EXPECT_EQ(in[3].name, "Old");
    EXPECT_FALSE(in[3].bytes);
    EXPECT_EQ(in[4].boolean, true);
    ASSERT_EQ(in[5].children.size(), 3U);
    EXPECT_EQ(in[5].children[0].type, "CKA_TOKEN");
    EXPECT_EQ(in[5].children[0].number, 1U);
    EXPECT_EQ(in[5].children[0].boolean, true);
    EXPECT_EQ(in[5].children[1].number, 0U);
    ASSERT_EQ(in[5].children[1].children.size(), 1U);
    EXPECT_EQ(in[5].children[1].children[0].number, 3U);
    EXPECT_TRUE(in[5].children[2].isUnavailable);
    const std::vector<Value> out = log[0].Out();
    ASSERT_EQ(out.size(), 2U);
    ASSERT_EQ(out[0].children.size(), 2U);
    EXPECT_EQ(out[0].children[1].number, 5U);
    ASSERT_EQ(out[1].children.size(), 1U);
    EXPECT_EQ(out[1].children[0].name, "flags");
    EXPECT_EQ(out[1].children[0].number, 6U);
}

TEST(EventLine, FieldsThatSelectCallsAreRead) {
    const CollectedCalls log = ReadLog(
        R"({"event":"start","time":"2026-11-21T12:33:45.5Z","run":"a-1","pid":1,"tid":2,"call":3,"function":"C_X","slot":4,"session":5,"object":6,"user":7,"mechanism":"CKM_AES_GCM","mechanism_number":4231,"in":[]})");
    ASSERT_EQ(log.calls.size(), 1U);
    EXPECT_TRUE(log[0].IsUnfinished());
    EXPECT_EQ(log[0].fields.slot, 4U);
    EXPECT_EQ(log[0].fields.session, 5U);
    EXPECT_EQ(log[0].fields.object, 6U);
    EXPECT_EQ(log[0].fields.user, 7U);
    EXPECT_EQ(log[0].fields.mechanism, "CKM_AES_GCM");
    EXPECT_EQ(log[0].fields.mechanismNumber, 4231U);
    EXPECT_EQ(log[0].start.nanoseconds % kNanosecondsPerSecond, 500'000'000);
}

TEST(EventLine, LineThatIsCutAnywhereIsNoEvent) {
    Record record;
    EXPECT_TRUE(Read(kStart, record));
    EXPECT_TRUE(Read(kEnd, record));
    for (const std::string_view line : {kStart, kEnd}) {
        for (std::size_t size = 0; size < line.size(); ++size)
            ASSERT_FALSE(Read(line.substr(0, size), record)) << line.substr(0, size);
    }
}

TEST(EventLine, LineWithSomethingBehindOrWithoutANeededFieldIsNoEvent) {
    Record record;
    EXPECT_FALSE(Read(Joined({kStart, "x"}), record));
    EXPECT_FALSE(Read(Joined({kStart, "{}"}), record));
    EXPECT_FALSE(Read(R"({"event":"start"})", record));
    for (const std::string_view field : {R"("event":"start",)", R"("time":"2026-11-21T12:33:45.123456789Z",)",
                                         R"("run":"18a3f1c2d4e5f607-3e63",)", R"("pid":15971,)",
                                         R"("call":17,)", R"("function":"C_Sign",)"}) {
        std::string line(kStart);
        line.erase(line.find(field), field.size());
        EXPECT_FALSE(Read(line, record)) << line;
    }
}

TEST(EventLine, EventsMadeFromATextLogAreJoinedLikeTextRecords) {
    const auto event = [](bool isStart, int thread, int session) {
        std::string line =
            isStart ? R"({"event":"start","time":"12:33:45")" : R"({"event":"end","time":"12:33:45")";
        line += R"(,"pid":7,"tid":)" + std::to_string(thread) + R"(,"function":"C_Logout",)";
        if (!isStart) line += R"("rv":0,"result":"CKR_OK",)";
        line += R"("session":)" + std::to_string(session) + R"(,"in":[])";
        line += isStart ? "}\n" : ",\"out\":[]}\n";
        return line;
    };
    const CollectedCalls log = ReadLog(event(true, 1, 4) + event(true, 2, 5) + event(true, 1, 6) +
                                       event(false, 1, 6) + event(false, 2, 5) + event(false, -3, 8));
    EXPECT_EQ(log.stretches.size(), 0U);
    ASSERT_EQ(log.calls.size(), 4U);
    EXPECT_EQ(log[0].startPlace.line, 3U);
    EXPECT_EQ(log[0].start, (Moment{45'225 * kNanosecondsPerSecond, TimeScale::kDayOfLog}));
    EXPECT_EQ(log[1].startPlace.line, 2U);
    EXPECT_FALSE(log[2].hasStart);
    EXPECT_EQ(log[2].thread, -3);
    EXPECT_TRUE(log[3].IsUnfinished());
    EXPECT_EQ(log[3].fields.session, 4U);
    EXPECT_FALSE(log[0].nanoseconds);
}

TEST(EventLine, EventWithOnlyARunOrOnlyANumberIsNoEvent) {
    Record record;
    const auto without = [](std::string_view member) {
        std::string line(kStart);
        line.erase(line.find(member), member.size());
        return line;
    };
    EXPECT_FALSE(Read(without(R"("call":17,)"), record));
    EXPECT_FALSE(Read(without(R"("run":"18a3f1c2d4e5f607-3e63",)"), record));
}

}  // namespace
}  // namespace ckscribe
