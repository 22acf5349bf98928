#include "tool/call_line.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "tests/tool/read_calls.h"

namespace ckscribe {

namespace {

// Returns an end event of C_Sign at 12:33:45.123456789 UTC with these members behind "result".
std::string EndEvent(const std::string& members, const std::string& function = "C_Sign",
                     const std::string& result = R"("rv":0,"result":"CKR_OK")",
                     const std::string& nanoseconds = "181234") {
    return R"({"event":"end","time":"2026-11-21T12:33:45.123456789Z","ns":)" + nanoseconds +
           R"(,"run":"18a3f1c2d4e5f607-3e63","pid":15971,"tid":15972,"call":17,"function":")" + function +
           R"(",)" + result + ',' + members + "}\n";
}

// Returns the line of the only call in a log, in UTC.
std::string LineOf(std::string_view log) {
    const std::vector<KeptCall> calls = CallsIn(log);
    EXPECT_EQ(calls.size(), 1U);
    return calls.empty() ? "" : CallLine(calls.front().Get(), {Palette(false), true});
}

std::string ValuesOf(const std::string& members) {
    const std::vector<KeptCall> calls = CallsIn(EndEvent(members + R"(,"out":[])"));
    EXPECT_EQ(calls.size(), 1U);
    return calls.empty() ? "" : ValuesText(calls.front().Get().In());
}

std::string In(const std::string& child) { return ValuesOf(R"("in":[)" + child + "]"); }

}  // namespace

TEST(CallLine, EndedCall_HasTimeThreadArgumentsResultOutputAndSeconds) {
    EXPECT_EQ(LineOf(EndEvent(
                  R"("session":1,"in":[{"kind":"SessionHandle","value":1},{"kind":"ByteString","size":32}],)"
                  R"("out":[{"kind":"ByteString","size":256}])")),
              "12:33:45.123 15972 C_Sign(session=1, <32 bytes>) = CKR_OK {<256 bytes>} <0.000181>");
}

TEST(CallLine, CallWithoutArgumentsAndOutput_HasEmptyParenthesesAndNoBraces) {
    EXPECT_EQ(
        LineOf(EndEvent(R"("in":[],"out":[])", "C_Initialize", R"("rv":0,"result":"CKR_OK")", "1000000210")),
        "12:33:45.123 15972 C_Initialize() = CKR_OK <1.000000>");
}

TEST(CallLine, ListOfWhichOnlyTheLengthWasAsked_ShowsTheCount) {
    EXPECT_EQ(LineOf(EndEvent(R"("in":[{"kind":"ByteBoolean","name":"tknPresent","value":false}],)"
                              R"("out":[{"kind":"SlotIDList","count":2}])",
                              "C_GetSlotList")),
              "12:33:45.123 15972 C_GetSlotList(tknPresent=false) = CKR_OK {count=2} <0.000181>");
}

TEST(CallLine, OneStructureThatComesBack_HasOnePairOfBraces) {
    EXPECT_EQ(
        LineOf(EndEvent(R"("in":[],"out":[{"kind":"SlotInfo","slotDescription":"a slot","flags":5}])",
                        "C_GetSlotInfo")),
        R"(12:33:45.123 15972 C_GetSlotInfo() = CKR_OK {slotDescription="a slot" flags=0x5} <0.000181>)");
}

TEST(CallLine, AddressInACallOfTheStandard_IsLeftOutUnlessItIsNull) {
    EXPECT_EQ(
        LineOf(EndEvent(R"("in":[{"kind":"SlotID","value":3},{"kind":"Pointer","value":140733193388032}],)"
                        R"("out":[{"kind":"Pointer","value":140733193388032},)"
                        R"({"kind":"TokenInfo","label":"a token","flags":5}])",
                        "C_GetTokenInfo")),
        R"(12:33:45.123 15972 C_GetTokenInfo(slot=3) = CKR_OK {label="a token" flags=0x5} <0.000181>)");
    EXPECT_EQ(LineOf(EndEvent(R"("in":[{"kind":"SlotID","value":3},{"kind":"Pointer","value":0}],)"
                              R"("out":[{"kind":"Pointer","value":0}])",
                              "C_GetTokenInfo", R"("rv":7,"result":"CKR_ARGUMENTS_BAD")")),
              "12:33:45.123 15972 C_GetTokenInfo(slot=3, pointer=0x0) = CKR_ARGUMENTS_BAD {pointer=0x0} "
              "<0.000181>");
}

TEST(CallLine, AddressInACallOfTheVendor_IsShown) {
    EXPECT_EQ(
        LineOf(EndEvent(R"("in":[{"kind":"Pointer","value":4096},{"kind":"SlotID","value":3}],"out":[])",
                        "CA_TokenInsertNoAuth")),
        "12:33:45.123 15972 CA_TokenInsertNoAuth(pointer=0x1000, slot=3) = CKR_OK <0.000181>");
}

TEST(CallLine, FailedCall_ShowsTheNameOfItsResult) {
    EXPECT_EQ(LineOf(EndEvent(R"("in":[{"kind":"PIN","name":"PIN"}],"out":[])", "C_Login",
                              R"("rv":160,"result":"CKR_PIN_INCORRECT")")),
              "12:33:45.123 15972 C_Login(PIN=********) = CKR_PIN_INCORRECT <0.000181>");
}

TEST(CallLine, ResultWithoutName_ShowsItsNumber) {
    EXPECT_EQ(LineOf(EndEvent(R"("in":[],"out":[])", "C_Sign", R"("rv":2147486105,"result":"CKR_UNKNOWN")")),
              "12:33:45.123 15972 C_Sign() = CKR_UNKNOWN 0x80000999 <0.000181>");
}

TEST(CallLine, CallWithoutEnd_HasAQuestionMarkForItsResult) {
    EXPECT_EQ(
        LineOf(
            R"({"event":"start","time":"2026-11-21T02:03:04.005999999Z","run":"1-2","pid":7,"tid":8,"call":1,)"
            R"("function":"C_WaitForSlotEvent","in":[{"kind":"Flags","value":1}]})"
            "\n"),
        "02:03:04.005 8 C_WaitForSlotEvent(flags=0x1) = ?");
}

TEST(CallLine, CallOfATextLog_HasNeitherFractionsOfASecondNorADuration) {
    EXPECT_EQ(LineOf("\n12:33:45 15971--2096527296:STRTLogin {Sesn=1 User=1 PIN=\"********\" }\n"
                     "12:33:45 15971--2096527296:FINILogin CKR_OK7288clks {}\n"),
              "12:33:45 -2096527296 C_Login(session=1, user=1, PIN=********) = CKR_OK");
}

TEST(CallLine, LocalTime_IsTheTimeOfTheTimeZone) {
    setenv("TZ", "XXX-05:30", 1);
    tzset();
    const std::vector<KeptCall> calls = CallsIn(EndEvent(R"("in":[],"out":[])"));
    EXPECT_EQ(TimeText(calls.front().Get().Time(), false), "18:03:45.123");
    unsetenv("TZ");
    tzset();
}

TEST(CallLine, Mechanism_ShowsItsNameAndParameter) {
    EXPECT_EQ(In(R"({"kind":"Mechanism","type":"CKM_RSA_PKCS","number":1})"), "CKM_RSA_PKCS");
    EXPECT_EQ(
        In(R"({"kind":"Mechanism","type":"CKM_AES_CBC","number":4226,"parameter":{"kind":"ByteString","size":16}})"),
        "CKM_AES_CBC(parameter=<16 bytes>)");
    EXPECT_EQ(In(R"({"kind":"Mechanism","number":2147483939})"), "0x80000123");
}

TEST(CallLine, Template_ShowsItsAttributes) {
    EXPECT_EQ(
        In(R"({"kind":"AttributeList","attributes":[{"type":"CKA_TOKEN","number":1,"size":1,"value":true},)"
           R"({"type":"CKA_LABEL","number":3,"size":2,"text":"a\"b"},{"type":"CKA_ID","number":258,"size":2,"hex":"0a0b"},)"
           R"({"type":"CKA_VALUE","number":17,"size":24},{"type":"CKA_MODULUS","number":288,"unavailable":true}]})"),
        R"({CKA_TOKEN=true CKA_LABEL="a\"b" CKA_ID=0a0b CKA_VALUE=<24 bytes> CKA_MODULUS=<unavailable>})");
}

TEST(CallLine, NumbersAboveAllDoubles_KeepAllBits) {
    EXPECT_EQ(In(R"({"kind":"ULong","name":"length","value":"18446744073709551615"})"),
              "length=18446744073709551615");
}

TEST(CallLine, LongValues_ShowTheirBeginningAndSize) {
    const std::string hexadecimal(2 * 300, 'a');
    std::string beginning(2 * 256, 'a');
    beginning.append("... <300 bytes>");
    EXPECT_EQ(In(R"({"kind":"ByteString","size":300,"hex":")" + hexadecimal + R"("})"), beginning);
    std::string list;
    std::string shown;
    for (int i = 1; i <= 40; ++i) list += (i == 1 ? "" : ",") + std::to_string(i);
    for (int i = 1; i <= 32; ++i) shown += (i == 1 ? "" : " ") + std::to_string(i);
    EXPECT_EQ(In(R"({"kind":"ObjectHandleList","values":[)" + list + "]}"),
              "objects=[" + shown + " ... 40 in all]");
}

TEST(CallLine, TextThatCommandsATerminal_IsWrittenAsEscapes) {
    EXPECT_EQ(In(R"({"kind":"ByteString","size":9,"text":"\u001b[2J\n\u009b\u202eé"})"),
              R"("\x1b[2J\x0a\xc2\x9b\xe2\x80\xaeé")");
}

TEST(CallLine, ColouredLine_HasTheSameText) {
    const std::vector<KeptCall> calls =
        CallsIn(EndEvent(R"("in":[],"out":[])", "C_Sign", R"("rv":48,"result":"CKR_DEVICE_ERROR")"));
    EXPECT_EQ(CallLine(calls.front().Get(), {Palette(true), true}),
              "\033[2m12:33:45.123\033[0m 15972 \033[1mC_Sign\033[0m() = \033[31mCKR_DEVICE_ERROR\033[0m "
              "\033[2m<0.000181>\033[0m");
}

}  // namespace ckscribe
