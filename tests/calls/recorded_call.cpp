#include "tests/calls/recorded_call.h"

namespace {

std::string OnOneLine(const std::string& text) {
    std::string line;
    bool isIndent = false;
    for (const char character : text) {
        isIndent = character == '\n' || (isIndent && character == ' ');
        if (!isIndent) line += character;
    }
    return line;
}

}  // namespace

void RecordedCall::NewLog(const std::string& text) {
    Set("NewFormat", "1");
    for (const NamedResult& result : results) {
        const std::string shown = result.value == CKR_OK ? result.text : "***" + result.text + "***";
        ExpectLog(result, ReplaceAll(text, "<rv>", shown));
    }
}

void RecordedCall::OldLog(const std::string& text) {
    Set("NewFormat", "0");
    for (const NamedResult& result : results) ExpectLog(result, ReplaceAll(text, "<rv>", result.text));
}

void RecordedCall::Events(const std::string& top, const std::string& in, const std::string& out,
                          const std::string& endTop) {
    EventsWithoutData(top, in, out, endTop);
    EventsWithData(top, in, out, endTop);
}

void RecordedCall::EventsWithoutData(const std::string& top, const std::string& in, const std::string& out,
                                     const std::string& endTop) {
    for (const char* hideData : {"", "1", "yes"}) {
        Set("HideData", hideData);
        if (*hideData == '\0') Unset("HideData");
        ExpectEvents(top, endTop.empty() ? top : endTop, in, out, outAfterFailure.value_or(out));
    }
}

void RecordedCall::EventsWithData(const std::string& top, const std::string& in, const std::string& out,
                                  const std::string& endTop) {
    Set("HideData", "0");
    ExpectEvents(top, endTop.empty() ? top : endTop, in, out, out);
}

void RecordedCall::ExpectEvents(const std::string& top, const std::string& endTop, const std::string& in,
                                const std::string& out, const std::string& failedOut) {
    const std::string function = testing::UnitTest::GetInstance()->current_test_info()->name();
    const std::string children = OnOneLine(in);
    Set("Events", EventsPath());
    Set("Enabled", "0");
    for (const NamedResult& result : results) {
        SCOPED_TRACE(result.text);
        WriteFile(EventsPath(), "");
        Restart();
        before();
        script.result = result.value;
        EXPECT_EQ(result.value, call());
        const std::string time = R"("time":"2026-11-15T07:15:30.123456789Z",)";
        const std::string nanoseconds = isForwarded ? R"("ns":1001,)" : R"("ns":0,)";
        const std::string ids = R"("run":"<run>","pid":<pid>,"tid":<tid>,"call":)" +
                                std::to_string(++callsWithEvents) + R"(,"function":")" + function + R"(",)";
        const std::string rv = R"("rv":)" + std::to_string(result.value) + R"(,"result":")" +
                               result.text.substr(0, result.text.find(' ')) + R"(",)";
        const std::string start = R"({"event":"start",)" + time + ids + top + R"("in":[)" + children + "]}\n";
        const std::string end = R"({"event":"end",)" + time + nanoseconds + ids + rv + endTop + R"("in":[)" +
                                children + R"(],"out":[)" +
                                OnOneLine(result.value == CKR_OK ? out : failedOut) + "]}\n";
        EXPECT_EQ(WithIds(start + end), LibraryTest::Events());
        EXPECT_EQ("", Log());
    }
    Unset("Events");
    Set("Enabled", "1");
}

void RecordedCall::ExpectLog(const NamedResult& result, const std::string& text) {
    SCOPED_TRACE(result.text);
    Restart();
    before();
    script.result = result.value;
    EXPECT_EQ(result.value, call());
    EXPECT_EQ(WithIds(text), Log());
    if (isForwarded) {
        ExpectCallInTarget();
    } else {
        EXPECT_EQ(0u, script.received.size());
    }
}

void RecordedCall::ExpectCallInTarget() const {
    ASSERT_EQ(1u, script.received.size());
    ReceivedCall received = script.received.front();
    // Words behind the arguments of a vendor's function may be anything.
    if (received.function.starts_with("CA_")) received.words.resize(words.size());
    EXPECT_EQ(words, received.words);
    const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
    const bool isNamedAfterFunction = test.starts_with("C_") || test.starts_with("CA_");
    if (isNamedAfterFunction) {
        EXPECT_EQ(test, received.function);
    }
}
