#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_EncryptInit) {
    auto parameter = Bytes("\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF7\xF8\xF9\xFA\xFB\xFC\xFD\xFE\xFF");
    CK_MECHANISM mechanism = {CKM_AES_CBC, parameter.data(), parameter.size()};
    Call(api.C_EncryptInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Init {Sesn=81 Mech=(CKM_AES_CBC,"f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff") Obj=98 }
10:15:30 <id>:FINIEncrypt_Init <rv>12345clks {})");
    OldLog(R"(
Command(Encrypt, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_AES_CBC,Value(Numeric"f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff"));
   ObjectHandle(0x62);
}
Command(Encrypt, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,"object":98,"mechanism":"CKM_AES_CBC","mechanism_number":4226,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_AES_CBC","number":4226,"parameter":{"size":16}},
        {"kind":"ObjectHandle","value":98})",
                      "");
    EventsWithData(R"("session":81,"object":98,"mechanism":"CKM_AES_CBC","mechanism_number":4226,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_AES_CBC","number":4226,"parameter":{"size":16,"hex":"f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff"}},
        {"kind":"ObjectHandle","value":98})",
                   "");
}

TEST_F(RecordedCall, C_Encrypt) {
    MemoryAtFixedAddress memory;
    CK_ULONG& length = memory.At<CK_ULONG>(0x12345678);
    auto input = Bytes("plain text");
    std::vector<CK_BYTE> output(32);
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xE1\xE2\xE3"), output, length); });
    Call(api.C_Encrypt, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt {Sesn=81 "plain text" pusEncryptedDataLen=0x12345678 *pusEncryptedDataLen=32 }
10:15:30 <id>:FINIEncrypt <rv>12345clks {"e1e2e3" pusEncryptedDataLen=0x12345678 *pusEncryptedDataLen=3 })");
    OldLog(R"(
Command(Encrypt, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain text");
   ULong(0x12345678);
   ULong(32);
}
Command(Encrypt, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"e1e2e3");
   ULong(0x12345678);
   ULong(3);
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10},
        {"kind":"ULong","name":"pusEncryptedDataLen","value":305419896},
        {"kind":"ULong","name":"*pusEncryptedDataLen","value":32})",
                      R"(
        {"kind":"ByteString","size":3},
        {"kind":"ULong","name":"pusEncryptedDataLen","value":305419896},
        {"kind":"ULong","name":"*pusEncryptedDataLen","value":3})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10,"text":"plain text"},
        {"kind":"ULong","name":"pusEncryptedDataLen","value":305419896},
        {"kind":"ULong","name":"*pusEncryptedDataLen","value":32})",
                   R"(
        {"kind":"ByteString","size":3,"hex":"e1e2e3"},
        {"kind":"ULong","name":"pusEncryptedDataLen","value":305419896},
        {"kind":"ULong","name":"*pusEncryptedDataLen","value":3})");
}

TEST_F(RecordedCall, C_EncryptUpdate) {
    MemoryAtFixedAddress memory;
    CK_ULONG& length = memory.At<CK_ULONG>(0x12345678);
    auto input = Bytes("plain part");
    std::vector<CK_BYTE> output(32);
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xE1\xE2\xE3\xE4"), output, length); });
    Call(api.C_EncryptUpdate, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Update {Sesn=81 "plain part" pusEncryptedPartLen0x12345678 *pusEncryptedPartLen32 }
10:15:30 <id>:FINIEncrypt_Update <rv>12345clks {"e1e2e3e4" })");
    OldLog(R"(
Command(Encrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x12345678);
   ULong(32);
}
Command(Encrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"e1e2e3e4");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10},
        {"kind":"ULong","name":"pusEncryptedPartLen","value":305419896},
        {"kind":"ULong","name":"*pusEncryptedPartLen","value":32})",
                      R"(
        {"kind":"ByteString","size":4})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":10,"text":"plain part"},
        {"kind":"ULong","name":"pusEncryptedPartLen","value":305419896},
        {"kind":"ULong","name":"*pusEncryptedPartLen","value":32})",
                   R"(
        {"kind":"ByteString","size":4,"hex":"e1e2e3e4"})");
}

TEST_F(RecordedCall, C_EncryptFinal) {
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("\xE1\xE2"), output, length); });
    Call(api.C_EncryptFinal, 0x51, output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Final {Sesn=81 }
10:15:30 <id>:FINIEncrypt_Final <rv>12345clks {"e1e2" })");
    OldLog(R"(
Command(Encrypt, Final, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(Encrypt, Final, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"e1e2");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                      R"(
        {"kind":"ByteString","size":2})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                   R"(
        {"kind":"ByteString","size":2,"hex":"e1e2"})");
}

TEST_F(RecordedCall, C_DecryptInit) {
    CK_MECHANISM mechanism = {CKM_RSA_PKCS, nullptr, 0};
    Call(api.C_DecryptInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTDecrypt_Init {Sesn=81 Mech=(CKM_RSA_PKCS,"<null>") Obj=98 }
10:15:30 <id>:FINIDecrypt_Init <rv>12345clks {})");
    OldLog(R"(
Command(Decrypt, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_PKCS,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
}
Command(Decrypt, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"object":98,"mechanism":"CKM_RSA_PKCS","mechanism_number":1,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_RSA_PKCS","number":1,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98})",
           "");
}

TEST_F(RecordedCall, C_Decrypt) {
    auto input = Bytes("\xC1\xC2\xC3");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("plain text"), output, length); });
    Call(api.C_Decrypt, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDecrypt {Sesn=81 "c1c2c3" }
10:15:30 <id>:FINIDecrypt <rv>12345clks {"plain text" })");
    OldLog(R"(
Command(Decrypt, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(Numeric"c1c2c3");
}
Command(Decrypt, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
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

TEST_F(RecordedCall, C_DecryptUpdate) {
    auto input = Bytes("\xC1\xC2\xC3\xC4");
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("plain part"), output, length); });
    Call(api.C_DecryptUpdate, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDecrypt_Update {Sesn=81 "c1c2c3c4" }
10:15:30 <id>:FINIDecrypt_Update <rv>12345clks {"plain part" })");
    OldLog(R"(
Command(Decrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(Numeric"c1c2c3c4");
}
Command(Decrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"plain part");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":4})",
                      R"(
        {"kind":"ByteString","size":10})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":4,"hex":"c1c2c3c4"})",
                   R"(
        {"kind":"ByteString","size":10,"text":"plain part"})");
}

TEST_F(RecordedCall, C_DecryptFinal) {
    std::vector<CK_BYTE> output(32);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { Put(Bytes("last part"), output, length); });
    Call(api.C_DecryptFinal, 0x51, output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDecrypt_Final {Sesn=81 }
10:15:30 <id>:FINIDecrypt_Final <rv>12345clks {"last part" })");
    OldLog(R"(
Command(Decrypt, Final, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(Decrypt, Final, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"last part");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                      R"(
        {"kind":"ByteString","size":9})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                   R"(
        {"kind":"ByteString","size":9,"text":"last part"})");
}
