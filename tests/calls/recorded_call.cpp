#include "tests/calls/recorded_call.h"

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
