// Events show unusual values in this way. The tests of each function's records state the events of that
// function.
#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

namespace {

class EventsOfCalls : public LibraryTest {
protected:
    EventsOfCalls() {
        Set("Enabled", "0");
        Set("Events", EventsPath());
        Load();
    }

    void ShowData() { Set("HideData", "0"); }

    // Returns the end event of the only call, from its result on.
    std::string End() const {
        const std::string events = Events();
        const std::size_t end = events.find(R"({"event":"end")");
        const std::size_t rv = events.find(R"("rv":)", end);
        return end == events.npos ? "no end event" : events.substr(rv, events.find('\n', end) - rv);
    }

    std::string EndOfSetAttributes(std::vector<CK_ATTRIBUTE> attributes) {
        api.C_SetAttributeValue(81, 98, attributes.data(), attributes.size());
        const std::string end = End();
        const std::string begin = R"("attributes":[)";
        const std::size_t from = end.find(begin) + begin.size();
        return end.substr(from, end.rfind(R"(]}],"out":[]})") - from);
    }

    std::string EndOfDigestUpdate(std::string_view bytes) {
        auto part = Bytes(bytes);
        api.C_DigestUpdate(81, part.data(), part.size());
        const std::string end = End();
        const std::string begin = R"({"kind":"SessionHandle","value":81},)";
        const std::size_t from = end.find(begin) + begin.size();
        return end.substr(from, end.rfind(R"(],"out":[]})") - from);
    }
};

}  // namespace

TEST_F(EventsOfCalls, NumberIsAbove2To53_EventShowsAString) {
    api.C_GetObjectSize(1UL << 53, (1UL << 53) + 1, nullptr);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":9007199254740992,"object":"9007199254740993","in":[{"kind":"SessionHandle","value":9007199254740992},{"kind":"ObjectHandle","value":"9007199254740993"}],"out":[{"kind":"UShort","value":0}]})",
        End());
}

TEST_F(EventsOfCalls, ShortNumbersAndFlags_EventShowsAllBits) {
    CK_ULONG size = 0;
    script.answer = [&] { size = 0x123456789AUL; };
    api.C_GetObjectSize(81, 98, &size);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"object":98,"in":[{"kind":"SessionHandle","value":81},{"kind":"ObjectHandle","value":98}],"out":[{"kind":"UShort","value":78187493530}]})",
        End());
}

TEST_F(EventsOfCalls, ResultHasNoName_EventShowsItAsUnknown) {
    script.result = 0x80000999;
    api.C_Logout(81);
    EXPECT_EQ(
        R"("rv":2147486105,"result":"CKR_UNKNOWN","session":81,"in":[{"kind":"SessionHandle","value":81}],"out":[]})",
        End());
}

TEST_F(EventsOfCalls, ResultIsOfTodaysStandard_EventShowsItsName) {
    script.result = CKR_FUNCTION_REJECTED;
    api.C_Logout(81);
    EXPECT_EQ(
        R"("rv":512,"result":"CKR_FUNCTION_REJECTED","session":81,"in":[{"kind":"SessionHandle","value":81}],"out":[]})",
        End());
}

TEST_F(EventsOfCalls, TwoNumbersShareAName_EventShowsNameAndNumber) {
    CK_MECHANISM standard = {CKM_AES_GCM, nullptr, 0};
    api.C_DigestInit(81, &standard);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"mechanism":"CKM_AES_GCM","mechanism_number":4231,"in":[{"kind":"SessionHandle","value":81},{"kind":"Mechanism","type":"CKM_AES_GCM","number":4231,"parameter":{"size":0}}],"out":[]})",
        End());
    ClearEvents();
    CK_MECHANISM own = {0x8000011C, nullptr, 0};
    api.C_DigestInit(81, &own);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"mechanism":"CKM_AES_GCM","mechanism_number":2147483932,"in":[{"kind":"SessionHandle","value":81},{"kind":"Mechanism","type":"CKM_AES_GCM","number":2147483932,"parameter":{"size":0}}],"out":[]})",
        End());
}

TEST_F(EventsOfCalls, MechanismHasNoName_EventShowsOnlyItsNumber) {
    CK_MECHANISM mechanism = {0x80FFFFFF, nullptr, 0};
    api.C_DigestInit(81, &mechanism);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"mechanism_number":2164260863,"in":[{"kind":"SessionHandle","value":81},{"kind":"Mechanism","number":2164260863,"parameter":{"size":0}}],"out":[]})",
        End());
}

TEST_F(EventsOfCalls, MechanismIsNull_EventShowsNoTypeAndNoParameter) {
    api.C_DigestInit(81, nullptr);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"in":[{"kind":"SessionHandle","value":81},{"kind":"Mechanism"}],"out":[]})",
        End());
}

TEST_F(EventsOfCalls, MechanismsOfAList_EventShowsTheirNames) {
    CK_MECHANISM_TYPE types[] = {CKM_RSA_PKCS, 0x80FFFFFF};
    CK_ULONG count = 2;
    api.C_GetMechanismList(7, types, &count);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","slot":7,"in":[{"kind":"SlotID","value":7}],"out":[{"kind":"MechTypeList","values":[{"type":"CKM_RSA_PKCS","number":1},{"number":2164260863}]}]})",
        End());
}

TEST_F(EventsOfCalls, ListIsNull_EventShowsTheCount) {
    CK_ULONG count = 0;
    script.answer = [&] { count = 3; };
    api.C_GetSlotList(CK_TRUE, nullptr, &count);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","in":[{"kind":"ByteBoolean","name":"tknPresent","value":true}],"out":[{"kind":"SlotIDList","count":3}]})",
        End());
}

TEST_F(EventsOfCalls, ListIsEmpty_EventShowsNoValues) {
    CK_SLOT_ID slots[1];
    CK_ULONG count = 0;
    api.C_GetSlotList(CK_FALSE, slots, &count);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","in":[{"kind":"ByteBoolean","name":"tknPresent","value":false}],"out":[{"kind":"SlotIDList","values":[]}]})",
        End());
}

TEST_F(EventsOfCalls, BufferIsNull_EventShowsTheSize) {
    ShowData();
    Restart();
    CK_ULONG length = 0;
    script.answer = [&] { length = 256; };
    auto data = Bytes("data");
    api.C_Sign(81, data.data(), data.size(), nullptr, &length);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"in":[{"kind":"SessionHandle","value":81},{"kind":"ByteString","size":4,"text":"data"}],"out":[{"kind":"ByteString","size":256}]})",
        End());
}

TEST_F(EventsOfCalls, CallGivesTheAddressOfASlot_EventShowsTheSlot) {
    CK_SLOT_ID slot = 0;
    script.answer = [&] { slot = 7; };
    api.C_WaitForSlotEvent(1, &slot, nullptr);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","slot":7,"in":[{"kind":"Flags","value":1}],"out":[{"kind":"SlotID","value":7}]})",
        End());
    ClearEvents();
    api.C_WaitForSlotEvent(1, nullptr, nullptr);
    EXPECT_EQ(R"("rv":0,"result":"CKR_OK","in":[{"kind":"Flags","value":1}],"out":[{"kind":"SlotID"}]})",
              End());
}

TEST_F(EventsOfCalls, TextHoldsQuotesOrBackslashes_EventEscapesThem) {
    ShowData();
    Restart();
    EXPECT_EQ(R"({"kind":"ByteString","size":8,"text":"a\"b\\{}/'"})", EndOfDigestUpdate(R"(a"b\{}/')"));
}

TEST_F(EventsOfCalls, TextIsReadable_EventShowsAnyOfItsCharacters) {
    ShowData();
    Restart();
    EXPECT_EQ("{\"kind\":\"ByteString\",\"size\":10,\"text\":\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\x91~\"}",
              EndOfDigestUpdate("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\x91~"));
}

TEST_F(EventsOfCalls, BytesAreNotReadable_EventShowsThemInHexadecimal) {
    ShowData();
    const std::pair<std::string, std::string> cases[] = {
        {"a\nb", "610a62"},                // a control character
        {"\x7F", "7f"},                    // delete
        {"\xC2\x85", "c285"},              // a control character of two bytes
        {"\xC0\xAF", "c0af"},              // a character in more bytes than it needs
        {"\xED\xA0\x80", "eda080"},        // half of a pair
        {"\xF4\x90\x80\x80", "f4908080"},  // above the last character
        {"abc\xE2\x82", "616263e282"},     // cut off
        {"\x80", "80"},                    // a rest
        {std::string("\0", 1), "00"},
    };
    for (const auto& [bytes, hex] : cases) {
        SCOPED_TRACE(hex);
        Restart();
        ClearEvents();
        EXPECT_EQ(
            R"({"kind":"ByteString","size":)" + std::to_string(bytes.size()) + R"(,"hex":")" + hex + R"("})",
            EndOfDigestUpdate(bytes));
    }
}

TEST_F(EventsOfCalls, DataAreHidden_EventDecodesDescribingAttributes) {
    CK_OBJECT_CLASS objectClass = CKO_SECRET_KEY;
    CK_BBOOL isToken = CK_TRUE;
    CK_BBOOL isPrivate = CK_FALSE;
    auto label = Bytes("Schl\xC3\xBCssel");
    auto id = Bytes("id");
    auto date = Bytes("20261121");
    CK_MECHANISM_TYPE allowed[] = {CKM_AES_CBC, 0x80FFFFFF};
    auto modulus = Bytes("\xB1\xB2");
    EXPECT_EQ(
        "{\"type\":\"CKA_CLASS\",\"number\":0,\"size\":8,\"value\":4},"
        "{\"type\":\"CKA_TOKEN\",\"number\":1,\"size\":1,\"value\":true},"
        "{\"type\":\"CKA_PRIVATE\",\"number\":2,\"size\":1,\"value\":false},"
        "{\"type\":\"CKA_LABEL\",\"number\":3,\"size\":10,\"text\":\"Schl\xC3\xBCssel\"},"
        "{\"type\":\"CKA_ID\",\"number\":258,\"size\":2,\"hex\":\"6964\"},"
        "{\"type\":\"CKA_START_DATE\",\"number\":272,\"size\":8,\"text\":\"20261121\"},"
        "{\"type\":\"CKA_END_DATE\",\"number\":273,\"size\":0},"
        "{\"type\":\"CKA_ALLOWED_MECHANISMS\",\"number\":1073743360,\"size\":16,\"value\":[{\"type\":\"CKM_"
        "AES_"
        "CBC\",\"number\":4226},{\"number\":2164260863}]},"
        "{\"type\":\"CKA_MODULUS\",\"number\":288,\"size\":2,\"hex\":\"b1b2\"}",
        EndOfSetAttributes({{CKA_CLASS, &objectClass, sizeof objectClass},
                            {CKA_TOKEN, &isToken, 1},
                            {CKA_PRIVATE, &isPrivate, 1},
                            {CKA_LABEL, label.data(), label.size()},
                            {CKA_ID, id.data(), id.size()},
                            {CKA_START_DATE, date.data(), date.size()},
                            {CKA_END_DATE, nullptr, 0},
                            {CKA_ALLOWED_MECHANISMS, allowed, sizeof allowed},
                            {CKA_MODULUS, modulus.data(), modulus.size()}}));
}

TEST_F(EventsOfCalls, DataAreHidden_EventShowsTheSizeOfOtherAttributes) {
    auto value = Bytes("key material");
    EXPECT_EQ(
        R"({"type":"CKA_VALUE","number":17,"size":12},{"type":"CKA_URL","number":137,"size":12},{"number":2147487743,"size":12},{"type":"CKA_TOKEN","number":1,"size":2})",
        EndOfSetAttributes({{CKA_VALUE, value.data(), value.size()},
                            {CKA_URL, value.data(), value.size()},
                            {0x80000FFF, value.data(), value.size()},
                            {CKA_TOKEN, value.data(), 2}}));
}

TEST_F(EventsOfCalls, DataAreShown_EventShowsTheBytesOfOtherAttributes) {
    ShowData();
    Restart();
    auto value = Bytes("key material");
    auto bytes = Bytes("\xB1\xB2");
    EXPECT_EQ(
        R"({"type":"CKA_VALUE","number":17,"size":12,"text":"key material"},{"number":2147487743,"size":2,"hex":"b1b2"},{"type":"CKA_TOKEN","number":1,"size":2,"hex":"b1b2"})",
        EndOfSetAttributes({{CKA_VALUE, value.data(), value.size()},
                            {0x80000FFF, bytes.data(), bytes.size()},
                            {CKA_TOKEN, bytes.data(), bytes.size()}}));
}

TEST_F(EventsOfCalls, AttributeIsUnavailable_EventSaysIt) {
    CK_ATTRIBUTE attributes[] = {{CKA_LABEL, nullptr, 0}, {CKA_VALUE, nullptr, 0}};
    script.answer = [&] {
        attributes[0].ulValueLen = 9;
        attributes[1].ulValueLen = CK_UNAVAILABLE_INFORMATION;
    };
    api.C_GetAttributeValue(81, 98, attributes, 2);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"object":98,"in":[{"kind":"SessionHandle","value":81},{"kind":"ObjectHandle","value":98},{"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3},{"type":"CKA_VALUE","number":17}]}],"out":[{"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":9},{"type":"CKA_VALUE","number":17,"unavailable":true}]}]})",
        End());
}

TEST_F(EventsOfCalls, TargetChangesTheInput_EndEventShowsTheOriginalInput) {
    ShowData();
    Restart();
    auto data = Bytes("before");
    CK_ULONG length = 0;
    script.answer = [&] { std::copy_n("after!", 6, data.begin()); };
    api.C_Sign(81, data.data(), data.size(), nullptr, &length);
    EXPECT_EQ(
        R"("rv":0,"result":"CKR_OK","session":81,"in":[{"kind":"SessionHandle","value":81},{"kind":"ByteString","size":6,"text":"before"}],"out":[{"kind":"ByteString","size":0}]})",
        End());
}

TEST_F(EventsOfCalls, InputIsLong_EndEventRepeatsAllOfIt) {
    ShowData();
    Restart();
    for (const std::size_t size : {400U, 450U, 500U, 100'000U}) {
        SCOPED_TRACE(size);
        ClearEvents();
        EXPECT_EQ(R"({"kind":"ByteString","size":)" + std::to_string(size) + R"(,"text":")" +
                      std::string(size, 'x') + R"("})",
                  EndOfDigestUpdate(std::string(size, 'x')));
    }
}

TEST_F(EventsOfCalls, NestedCallsHaveLongInputs_EachEndEventShowsItsOwn) {
    ShowData();
    Restart();
    script.answer = [&, isOuter = true]() mutable {
        if (!isOuter) return;
        isOuter = false;
        auto inner = Bytes(std::string(2000, 'i'));
        api.C_DigestUpdate(82, inner.data(), inner.size());
    };
    auto outer = Bytes(std::string(3000, 'o'));
    api.C_DigestUpdate(81, outer.data(), outer.size());
    const std::string events = Events();
    const auto end = [](const char* call, const char* session, const std::string& text) {
        return R"("call":)" + std::string(call) +
               R"(,"function":"C_DigestUpdate","rv":0,"result":"CKR_OK","session":)" + session +
               R"(,"in":[{"kind":"SessionHandle","value":)" + session + R"(},{"kind":"ByteString","size":)" +
               std::to_string(text.size()) + R"(,"text":")" + text + R"("}],"out":[]})";
    };
    EXPECT_NE(events.npos, events.find(end("1", "81", std::string(3000, 'o'))));
    EXPECT_NE(events.npos, events.find(end("2", "82", std::string(2000, 'i'))));
}

// Output arguments hold after a failed call what happened to be there: parts of the application's memory.
TEST_F(EventsOfCalls, CallFails_EventWithoutDataShowsNothingOfTheOutputBuffers) {
    CK_TOKEN_INFO info;
    std::fill_n(reinterpret_cast<CK_BYTE*>(&info), sizeof info, CK_BYTE{'s'});
    CK_SLOT_ID slots[] = {0x7373737373737373, 0x7373737373737373};
    CK_ULONG count = 1;
    auto label = Bytes("stale label");
    CK_ATTRIBUTE attribute = {CKA_LABEL, label.data(), label.size()};
    for (const char* const hideData : {"", "1"}) {
        Set("HideData", hideData);
        if (*hideData == '\0') Unset("HideData");
        for (const CK_RV result : {CKR_SESSION_HANDLE_INVALID, CKR_BUFFER_TOO_SMALL}) {
            SCOPED_TRACE(result);
            Restart();
            ClearEvents();
            script.result = result;
            script.answer = [&] { count = 2; };
            api.C_GetTokenInfo(7, &info);
            count = 1;
            api.C_GetSlotList(CK_TRUE, slots, &count);
            api.C_GetAttributeValue(81, 98, &attribute, 1);
            const std::string events = Events();
            EXPECT_NE(events.npos, events.find(R"(,{"kind":"TokenInfo"}]})"));
            EXPECT_NE(events.npos, events.find(R"("out":[{"kind":"SlotIDList","count":2}]})"));
            EXPECT_NE(
                events.npos,
                events.find(
                    R"("out":[{"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":11}]}]})"));
            EXPECT_EQ(events.npos, events.find("ssss"));
            EXPECT_EQ(events.npos, events.find("73737373"));
            EXPECT_EQ(events.npos, events.find(std::to_string(slots[0])));
            EXPECT_EQ(events.npos, events.find("stale"));
        }
    }
}

TEST_F(EventsOfCalls, SomeAttributesAreNotGivenOut_EventShowsTheOthers) {
    auto label = Bytes("my key");
    for (const CK_RV result : {CKR_ATTRIBUTE_SENSITIVE, CKR_ATTRIBUTE_TYPE_INVALID}) {
        SCOPED_TRACE(result);
        CK_ATTRIBUTE attributes[] = {{CKA_LABEL, label.data(), label.size()}, {CKA_VALUE, nullptr, 0}};
        script.result = result;
        script.answer = [&] { attributes[1].ulValueLen = CK_UNAVAILABLE_INFORMATION; };
        ClearEvents();
        api.C_GetAttributeValue(81, 98, attributes, 2);
        const std::string end = End();
        EXPECT_EQ(
            R"([{"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":6,"text":"my key"},{"type":"CKA_VALUE","number":17,"unavailable":true}]}]})",
            end.substr(end.find(R"("out":)") + 6));
    }
}

TEST_F(EventsOfCalls, LabelSeparatesLinesOrParagraphs_EventEscapesTheSeparators) {
    auto label = Bytes("a\xE2\x80\xA8z\xE2\x80\xA9");
    EXPECT_EQ(R"({"type":"CKA_LABEL","number":3,"size":8,"text":"a\u2028z\u2029"})",
              EndOfSetAttributes({{CKA_LABEL, label.data(), label.size()}}));
}
