#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_SeedRandom) {
    auto seed = Bytes("not random");
    Call(api.C_SeedRandom, 0x51, seed.data(), seed.size());
    NewLog(R"(

10:15:30 <id>:STRTSeedRandom {Sesn=81 "not random" }
10:15:30 <id>:FINISeedRandom <rv>12345clks {})");
    OldLog(R"(
Command(SeedRandom, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"not random");
}
Command(SeedRandom, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10})",
                      "");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10,"text":"not random"})",
                   "");
}

TEST_F(RecordedCall, C_GenerateRandom) {
    std::vector<CK_BYTE> output(4);
    CK_ULONG ignored = 0;
    Answer([&] { Put(Bytes("\xF1\xF2\xF3\xF4"), output, ignored); });
    Call(api.C_GenerateRandom, 0x51, output.data(), 3);
    NewLog(R"(

10:15:30 <id>:STRTGenerateRandom {Sesn=81 }
10:15:30 <id>:FINIGenerateRandom <rv>12345clks {"f1f2f3" })");
    OldLog(R"(
Command(GenerateRandom, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(GenerateRandom, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"f1f2f3");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                      R"(
        {"kind":"ByteString","size":3})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                   R"(
        {"kind":"ByteString","size":3,"hex":"f1f2f3"})");
}

// COMPAT: The target has this function, and the library does not call it.
TEST_F(RecordedCall, C_GetFunctionStatus) {
    NotForwarded();
    Results({{CKR_FUNCTION_NOT_SUPPORTED, "CKR_FUNCTION_NOT_SUPPORTED"}});
    Call(api.C_GetFunctionStatus, 0x51);
    NewLog(R"(

10:15:30 <id>:STRTUnknownType {Sesn=81 }
10:15:30 <id>:FINIUnknownType <rv>12345clks {})");
    OldLog(R"(
Command(UnknownType, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(UnknownType, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
           "");
}

TEST_F(RecordedCall, C_CancelFunction) {
    Call(api.C_CancelFunction, 0x51);
    NewLog(R"(

10:15:30 <id>:STRTUnknownType {Sesn=81 }
10:15:30 <id>:FINIUnknownType <rv>12345clks {})");
    OldLog(R"(
Command(UnknownType, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(UnknownType, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
           "");
}
