#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_DigestEncryptUpdate) {
    auto part = Bytes("plain part");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xE1\xE2"), output, length); });
    Call(api.C_DigestEncryptUpdate, 0x51, part.data(), part.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDigestEncrypt_Update {Sesn=81 "plain part" 32 }
10:15:30 <id>:FINIDigestEncrypt_Update <rv>12345clks {"e1e2" })");
    OldLog(R"(
Command(DigestEncrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x20);
}
Command(DigestEncrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"e1e2");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10},
        {"kind":"ULong","value":32})",
                      R"(
        {"kind":"ByteString","size":2})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10,"text":"plain part"},
        {"kind":"ULong","value":32})",
                   R"(
        {"kind":"ByteString","size":2,"hex":"e1e2"})");
}

TEST_F(RecordedCall, C_DecryptDigestUpdate) {
    auto input = Bytes("\xC1\xC2");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("plain part"), output, length); });
    Call(api.C_DecryptDigestUpdate, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDecryptDigest_Update {Sesn=81 "c1c2" }
10:15:30 <id>:FINIDecryptDigest_Update <rv>12345clks {"plain part" })");
    OldLog(R"(
Command(DecryptDigest, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(Numeric"c1c2");
}
Command(DecryptDigest, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"plain part");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":2})",
                      R"(
        {"kind":"ByteString","size":10})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":2,"hex":"c1c2"})",
                   R"(
        {"kind":"ByteString","size":10,"text":"plain part"})");
}

TEST_F(RecordedCall, C_SignEncryptUpdate) {
    auto part = Bytes("plain part");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xE1\xE2"), output, length); });
    Call(api.C_SignEncryptUpdate, 0x51, part.data(), part.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTSignEncrypt_Update {Sesn=81 "plain part" 32 }
10:15:30 <id>:FINISignEncrypt_Update <rv>12345clks {"e1e2" })");
    OldLog(R"(
Command(SignEncrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x20);
}
Command(SignEncrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"e1e2");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10},
        {"kind":"ULong","value":32})",
                      R"(
        {"kind":"ByteString","size":2})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10,"text":"plain part"},
        {"kind":"ULong","value":32})",
                   R"(
        {"kind":"ByteString","size":2,"hex":"e1e2"})");
}

TEST_F(RecordedCall, C_DecryptVerifyUpdate) {
    auto input = Bytes("\xC1\xC2\xC3");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("plain text"), output, length); });
    Call(api.C_DecryptVerifyUpdate, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDecryptVerify_Update {Sesn=81 "c1c2c3" }
10:15:30 <id>:FINIDecryptVerify_Update <rv>12345clks {"plain text" })");
    OldLog(R"(
Command(DecryptVerify, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(Numeric"c1c2c3");
}
Command(DecryptVerify, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"plain text");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":3})",
                      R"(
        {"kind":"ByteString","size":10})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":3,"hex":"c1c2c3"})",
                   R"(
        {"kind":"ByteString","size":10,"text":"plain text"})");
}
