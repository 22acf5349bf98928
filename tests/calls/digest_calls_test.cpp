#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_DigestInit) {
    CK_MECHANISM mechanism = {CKM_SHA256, nullptr, 0};
    Call(api.C_DigestInit, 0x51, &mechanism);
    NewLog(R"(

10:15:30 <id>:STRTDigest_Init {Sesn=81 Mech=(CKM_SHA256,"<null>") }
10:15:30 <id>:FINIDigest_Init <rv>12345clks {})");
    OldLog(R"(
Command(Digest, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_SHA256,Value(SimpleText"<null>"));
}
Command(Digest, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"mechanism":"CKM_SHA256","mechanism_number":592,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_SHA256","number":592,"parameter":{"size":0}})",
           "");
}

TEST_F(RecordedCall, C_Digest) {
    auto input = Bytes("to be digested");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xD1\xD2"), output, length); });
    Call(api.C_Digest, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDigest {Sesn=81 "to be digested" }
10:15:30 <id>:FINIDigest <rv>12345clks {"d1d2" })");
    OldLog(R"(
Command(Digest, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"to be digested");
}
Command(Digest, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"d1d2");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":14})",
                      R"(
        {"kind":"ByteString","size":2})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":14,"text":"to be digested"})",
                   R"(
        {"kind":"ByteString","size":2,"hex":"d1d2"})");
}

TEST_F(RecordedCall, C_DigestUpdate) {
    auto part = Bytes("part\tby part");
    Call(api.C_DigestUpdate, 0x51, part.data(), part.size());
    NewLog(R"(

10:15:30 <id>:STRTDigest_Update {Sesn=81 "part\9by part" }
10:15:30 <id>:FINIDigest_Update <rv>12345clks {})");
    OldLog(R"(
Command(Digest, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(RichText"part\9by part");
}
Command(Digest, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":12})",
                      "");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":12,"hex":"706172740962792070617274"})",
                   "");
}

TEST_F(RecordedCall, C_DigestKey) {
    Call(api.C_DigestKey, 0x51, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTDigest_Key {Sesn=81 Obj=98 }
10:15:30 <id>:FINIDigest_Key <rv>12345clks {})");
    OldLog(R"(
Command(Digest, Key, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
}
Command(Digest, Key, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ObjectHandle","value":98})",
           "");
}

TEST_F(RecordedCall, C_DigestFinal) {
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xD1\xD2\xD3"), output, length); });
    Call(api.C_DigestFinal, 0x51, output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDigest_Final {Sesn=81 }
10:15:30 <id>:FINIDigest_Final <rv>12345clks {"d1d2d3" })");
    OldLog(R"(
Command(Digest, Final, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(Digest, Final, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"d1d2d3");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                      R"(
        {"kind":"ByteString","size":3})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                   R"(
        {"kind":"ByteString","size":3,"hex":"d1d2d3"})");
}
