#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_SignInit) {
    CK_MECHANISM mechanism = {CKM_SHA256_RSA_PKCS, nullptr, 0};
    Call(api.C_SignInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTSign_Init {Sesn=81 Mech=(CKM_SHA256_RSA_PKCS,"<null>") Obj=98 }
10:15:30 <id>:FINISign_Init <rv>12345clks {})");
    OldLog(R"(
Command(Sign, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_SHA256_RSA_PKCS,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
}
Command(Sign, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"object":98,"mechanism":"CKM_SHA256_RSA_PKCS","mechanism_number":64,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_SHA256_RSA_PKCS","number":64,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98})",
           "");
}

TEST_F(RecordedCall, C_Sign) {
    auto input = Bytes("to be signed");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xA1\xA2\xA3"), output, length); });
    Call(api.C_Sign, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTSign {Sesn=81 "to be signed" }
10:15:30 <id>:FINISign <rv>12345clks {"a1a2a3" })");
    OldLog(R"(
Command(Sign, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"to be signed");
}
Command(Sign, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"a1a2a3");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":12})",
                      R"(
        {"kind":"ByteString","size":3})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":12,"text":"to be signed"})",
                   R"(
        {"kind":"ByteString","size":3,"hex":"a1a2a3"})");
}

TEST_F(RecordedCall, C_SignUpdate) {
    auto part = Bytes("signed part");
    Call(api.C_SignUpdate, 0x51, part.data(), part.size());
    NewLog(R"(

10:15:30 <id>:STRTSign_Update {Sesn=81 "signed part" }
10:15:30 <id>:FINISign_Update <rv>12345clks {})");
    OldLog(R"(
Command(Sign, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"signed part");
}
Command(Sign, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":11})",
                      "");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":11,"text":"signed part"})",
                   "");
}

TEST_F(RecordedCall, C_SignFinal) {
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xA1\xA2"), output, length); });
    Call(api.C_SignFinal, 0x51, output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTSign_Final {Sesn=81 }
10:15:30 <id>:FINISign_Final <rv>12345clks {"a1a2" })");
    OldLog(R"(
Command(Sign, Final, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(Sign, Final, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"a1a2");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                      R"(
        {"kind":"ByteString","size":2})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                   R"(
        {"kind":"ByteString","size":2,"hex":"a1a2"})");
}

TEST_F(RecordedCall, C_SignRecoverInit) {
    CK_MECHANISM mechanism = {CKM_RSA_9796, nullptr, 0};
    Call(api.C_SignRecoverInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTSignRecover_Init {Sesn=81 Mech=(CKM_RSA_9796,"<null>") Obj=98 }
10:15:30 <id>:FINISignRecover_Init <rv>12345clks {})");
    OldLog(R"(
Command(SignRecover, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_9796,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
}
Command(SignRecover, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"object":98,"mechanism":"CKM_RSA_9796","mechanism_number":2,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_RSA_9796","number":2,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98})",
           "");
}

TEST_F(RecordedCall, C_SignRecover) {
    auto input = Bytes("to be recovered");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xA1\xA2\xA3\xA4"), output, length); });
    Call(api.C_SignRecover, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTSignRecover {Sesn=81 "to be recovered" }
10:15:30 <id>:FINISignRecover <rv>12345clks {"a1a2a3a4" })");
    OldLog(R"(
Command(SignRecover, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"to be recovered");
}
Command(SignRecover, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"a1a2a3a4");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":15})",
                      R"(
        {"kind":"ByteString","size":4})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":15,"text":"to be recovered"})",
                   R"(
        {"kind":"ByteString","size":4,"hex":"a1a2a3a4"})");
}

TEST_F(RecordedCall, C_VerifyInit) {
    auto parameter = Bytes({"\x0C\0\0\0\0\0\0\0", 8});
    CK_MECHANISM mechanism = {CKM_AES_MAC_GENERAL, parameter.data(), parameter.size()};
    Call(api.C_VerifyInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTVerify_Init {Sesn=81 Mech=(CKM_AES_MAC_GENERAL,"0c00000000000000") Obj=98 }
10:15:30 <id>:FINIVerify_Init <rv>12345clks {})");
    OldLog(R"(
Command(Verify, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_AES_MAC_GENERAL,Value(Numeric"0c00000000000000"));
   ObjectHandle(0x62);
}
Command(Verify, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(
        R"("session":81,"object":98,"mechanism":"CKM_AES_MAC_GENERAL","mechanism_number":4228,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_AES_MAC_GENERAL","number":4228,"parameter":{"size":8}},
        {"kind":"ObjectHandle","value":98})",
        "");
    EventsWithData(R"("session":81,"object":98,"mechanism":"CKM_AES_MAC_GENERAL","mechanism_number":4228,)",
                   R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_AES_MAC_GENERAL","number":4228,"parameter":{"size":8,"hex":"0c00000000000000"}},
        {"kind":"ObjectHandle","value":98})",
                   "");
}

TEST_F(RecordedCall, C_Verify) {
    auto text = Bytes("was signed");
    auto signature = Bytes("\xA1\xA2");
    Call(api.C_Verify, 0x51, text.data(), text.size(), signature.data(), signature.size());
    NewLog(R"(

10:15:30 <id>:STRTVerify {Sesn=81 "was signed" "a1a2" }
10:15:30 <id>:FINIVerify <rv>12345clks {})");
    OldLog(R"(
Command(Verify, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"was signed");
   ByteString(Numeric"a1a2");
}
Command(Verify, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10},
        {"kind":"ByteString","size":2})",
                      "");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10,"text":"was signed"},
        {"kind":"ByteString","size":2,"hex":"a1a2"})",
                   "");
}

TEST_F(RecordedCall, C_VerifyUpdate) {
    auto part = Bytes("signed part");
    Call(api.C_VerifyUpdate, 0x51, part.data(), part.size());
    NewLog(R"(

10:15:30 <id>:STRTVerify_Update {Sesn=81 "signed part" }
10:15:30 <id>:FINIVerify_Update <rv>12345clks {})");
    OldLog(R"(
Command(Verify, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"signed part");
}
Command(Verify, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":11})",
                      "");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":11,"text":"signed part"})",
                   "");
}

TEST_F(RecordedCall, C_VerifyFinal) {
    auto signature = Bytes("\xA1\xA2\xA3");
    Call(api.C_VerifyFinal, 0x51, signature.data(), signature.size());
    NewLog(R"(

10:15:30 <id>:STRTVerify_Final {Sesn=81 "a1a2a3" }
10:15:30 <id>:FINIVerify_Final <rv>12345clks {})");
    OldLog(R"(
Command(Verify, Final, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(Numeric"a1a2a3");
}
Command(Verify, Final, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":3})",
                      "");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":3,"hex":"a1a2a3"})",
                   "");
}

TEST_F(RecordedCall, C_VerifyRecoverInit) {
    CK_MECHANISM mechanism = {CKM_RSA_X_509, nullptr, 0};
    Call(api.C_VerifyRecoverInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTVerifyRecover_Init {Sesn=81 Mech=(CKM_RSA_X_509,"<null>") Obj=98 }
10:15:30 <id>:FINIVerifyRecover_Init <rv>12345clks {})");
    OldLog(R"(
Command(VerifyRecover, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_X_509,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
}
Command(VerifyRecover, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"object":98,"mechanism":"CKM_RSA_X_509","mechanism_number":3,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_RSA_X_509","number":3,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98})",
           "");
}

TEST_F(RecordedCall, C_VerifyRecover) {
    auto input = Bytes("\xA1\xA2\xA3\xA4");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("recovered"), output, length); });
    Call(api.C_VerifyRecover, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTVerifyRecover {Sesn=81 "a1a2a3a4" }
10:15:30 <id>:FINIVerifyRecover <rv>12345clks {"recovered" })");
    OldLog(R"(
Command(VerifyRecover, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(Numeric"a1a2a3a4");
}
Command(VerifyRecover, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"recovered");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":4})",
                      R"(
        {"kind":"ByteString","size":9})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":4,"hex":"a1a2a3a4"})",
                   R"(
        {"kind":"ByteString","size":9,"text":"recovered"})");
}
