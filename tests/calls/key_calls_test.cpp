#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_GenerateKey) {
    CK_MECHANISM mechanism = {CKM_AES_KEY_GEN, nullptr, 0};
    CK_ULONG valueLength = 32;
    CK_ATTRIBUTE attributes[] = {{CKA_VALUE_LEN, &valueLength, sizeof valueLength}};
    CK_OBJECT_HANDLE key = 0;
    Answer([&] { key = 0x62; });
    Call(api.C_GenerateKey, 0x51, &mechanism, attributes, 1, &key);
    NewLog(R"(

10:15:30 <id>:STRTGenerateKey {Sesn=81 Mech=(CKM_AES_KEY_GEN,"<null>") AttrList={CKA_VALUE_LEN="2000000000000000" } }
10:15:30 <id>:FINIGenerateKey <rv>12345clks {Obj=98 })");
    OldLog(R"(
Command(GenerateKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_AES_KEY_GEN,Value(SimpleText"<null>"));
   AttributeList
   {
      Attribute(CKA_VALUE_LEN,Value(Numeric"2000000000000000"));
   };
}
Command(GenerateKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x62);
})");
    Events(R"("session":81,"mechanism":"CKM_AES_KEY_GEN","mechanism_number":4224,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_AES_KEY_GEN","number":4224,"parameter":{"size":0}},
        {"kind":"AttributeList","attributes":[{"type":"CKA_VALUE_LEN","number":353,"size":8,"value":32}]})",
           R"(
        {"kind":"ObjectHandle","value":98})",
           R"("session":81,"object":98,"mechanism":"CKM_AES_KEY_GEN","mechanism_number":4224,)");
}

TEST_F(RecordedCall, C_GenerateKeyPair) {
    CK_MECHANISM mechanism = {CKM_RSA_PKCS_KEY_PAIR_GEN, nullptr, 0};
    CK_ULONG bits = 2048;
    CK_BBOOL isPrivate = CK_TRUE;
    auto id = Bytes("id");
    CK_ATTRIBUTE publicKey[] = {{CKA_MODULUS_BITS, &bits, sizeof bits}};
    CK_ATTRIBUTE privateKey[] = {
        {CKA_PRIVATE, &isPrivate, sizeof isPrivate},
        {CKA_ID, id.data(), id.size()},
    };
    CK_OBJECT_HANDLE handles[2] = {};
    Answer([&] {
        handles[0] = 0x62;
        handles[1] = 0x63;
    });
    Call(api.C_GenerateKeyPair, 0x51, &mechanism, publicKey, 1, privateKey, 2, &handles[0], &handles[1]);
    NewLog(R"(

10:15:30 <id>:STRTGenerateKeyPair {Sesn=81 Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,"<null>") AttrList={CKA_MODULUS_BITS="0008000000000000" } AttrList={CKA_PRIVATE="01" CKA_ID="id" } }
10:15:30 <id>:FINIGenerateKeyPair <rv>12345clks {Obj=98 Obj=99 })");
    OldLog(R"(
Command(GenerateKeyPair, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_PKCS_KEY_PAIR_GEN,Value(SimpleText"<null>"));
   AttributeList
   {
      Attribute(CKA_MODULUS_BITS,Value(Numeric"0008000000000000"));
   };
   AttributeList
   {
      Attribute(CKA_PRIVATE,Value(Numeric"01"));
      Attribute(CKA_ID,Value(SimpleText"id"));
   };
}
Command(GenerateKeyPair, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x62);
   ObjectHandle(0x63);
})");
    Events(R"("session":81,"mechanism":"CKM_RSA_PKCS_KEY_PAIR_GEN","mechanism_number":0,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_RSA_PKCS_KEY_PAIR_GEN","number":0,"parameter":{"size":0}},
        {"kind":"AttributeList","attributes":[{"type":"CKA_MODULUS_BITS","number":289,"size":8,"value":2048}]},
        {"kind":"AttributeList","attributes":[{"type":"CKA_PRIVATE","number":2,"size":1,"value":true},{"type":"CKA_ID","number":258,"size":2,"hex":"6964"}]})",
           R"(
        {"kind":"ObjectHandle","value":98},
        {"kind":"ObjectHandle","value":99})",
           R"("session":81,"object":98,"mechanism":"CKM_RSA_PKCS_KEY_PAIR_GEN","mechanism_number":0,)");
}

TEST_F(RecordedCall, C_WrapKey) {
    CK_MECHANISM mechanism = {CKM_AES_ECB, nullptr, 0};
    std::vector<CK_BYTE> wrapped(32);
    CK_ULONG length = 0;
    Before([&] { length = wrapped.size(); });
    Answer([&] { Put(Bytes("\xB1\xB2\xB3"), wrapped, length); });
    Call(api.C_WrapKey, 0x51, &mechanism, 0x62, 0x63, wrapped.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTWrapKey {Sesn=81 Mech=(CKM_AES_ECB,"<null>") Obj=98 Obj=99 }
10:15:30 <id>:FINIWrapKey <rv>12345clks {"b1b2b3" 3 })");
    OldLog(R"(
Command(WrapKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_AES_ECB,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
   ObjectHandle(0x63);
}
Command(WrapKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"b1b2b3");
   UShort(0x3);
})");
    EventsWithoutData(R"("session":81,"object":98,"mechanism":"CKM_AES_ECB","mechanism_number":4225,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_AES_ECB","number":4225,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98},
        {"kind":"ObjectHandle","value":99})",
                      R"(
        {"kind":"ByteString","size":3},
        {"kind":"UShort","value":3})");
    EventsWithData(R"("session":81,"object":98,"mechanism":"CKM_AES_ECB","mechanism_number":4225,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_AES_ECB","number":4225,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98},
        {"kind":"ObjectHandle","value":99})",
                   R"(
        {"kind":"ByteString","size":3,"hex":"b1b2b3"},
        {"kind":"UShort","value":3})");
}

TEST_F(RecordedCall, C_UnwrapKey) {
    CK_MECHANISM mechanism = {CKM_DES3_ECB, nullptr, 0};
    auto wrapped = Bytes("\xB1\xB2");
    auto label = Bytes("unwrapped");
    CK_ATTRIBUTE attributes[] = {{CKA_LABEL, label.data(), label.size()}};
    CK_OBJECT_HANDLE key = 0;
    Answer([&] { key = 0x63; });
    Call(api.C_UnwrapKey, 0x51, &mechanism, 0x62, wrapped.data(), wrapped.size(), attributes, 1, &key);
    NewLog(R"(

10:15:30 <id>:STRTUnwrapKey {Sesn=81 Mech=(CKM_DES3_ECB,"<null>") Obj=98 "b1b2" AttrList={CKA_LABEL="unwrapped" } }
10:15:30 <id>:FINIUnwrapKey <rv>12345clks {Obj=99 })");
    OldLog(R"(
Command(UnwrapKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_DES3_ECB,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
   ByteString(Numeric"b1b2");
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"unwrapped"));
   };
}
Command(UnwrapKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x63);
})");
    EventsWithoutData(R"("session":81,"object":98,"mechanism":"CKM_DES3_ECB","mechanism_number":306,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_DES3_ECB","number":306,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98},
        {"kind":"ByteString","size":2},
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":9,"text":"unwrapped"}]})",
                      R"(
        {"kind":"ObjectHandle","value":99})");
    EventsWithData(R"("session":81,"object":98,"mechanism":"CKM_DES3_ECB","mechanism_number":306,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_DES3_ECB","number":306,"parameter":{"size":0}},
        {"kind":"ObjectHandle","value":98},
        {"kind":"ByteString","size":2,"hex":"b1b2"},
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":9,"text":"unwrapped"}]})",
                   R"(
        {"kind":"ObjectHandle","value":99})");
}

TEST_F(RecordedCall, C_DeriveKey) {
    auto value = Bytes("public value");
    CK_MECHANISM mechanism = {CKM_DH_PKCS_DERIVE, value.data(), value.size()};
    auto label = Bytes("derived");
    CK_ATTRIBUTE attributes[] = {{CKA_LABEL, label.data(), label.size()}};
    CK_OBJECT_HANDLE key = 0;
    Answer([&] { key = 0x63; });
    Call(api.C_DeriveKey, 0x51, &mechanism, 0x62, attributes, 1, &key);
    NewLog(R"(

10:15:30 <id>:STRTDeriveKey {Sesn=81 Mech=(CKM_DH_PKCS_DERIVE,"public value") Obj=98 AttrList={CKA_LABEL="derived" } }
10:15:30 <id>:FINIDeriveKey <rv>12345clks {Obj=99 })");
    OldLog(R"(
Command(DeriveKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_DH_PKCS_DERIVE,Value(SimpleText"public value"));
   ObjectHandle(0x62);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"derived"));
   };
}
Command(DeriveKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x63);
})");
    EventsWithoutData(R"("session":81,"object":98,"mechanism":"CKM_DH_PKCS_DERIVE","mechanism_number":33,)",
                      R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_DH_PKCS_DERIVE","number":33,"parameter":{"size":12}},
        {"kind":"ObjectHandle","value":98},
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":7,"text":"derived"}]})",
                      R"(
        {"kind":"ObjectHandle","value":99})");
    EventsWithData(R"("session":81,"object":98,"mechanism":"CKM_DH_PKCS_DERIVE","mechanism_number":33,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"Mechanism","type":"CKM_DH_PKCS_DERIVE","number":33,"parameter":{"size":12,"text":"public value"}},
        {"kind":"ObjectHandle","value":98},
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":7,"text":"derived"}]})",
                   R"(
        {"kind":"ObjectHandle","value":99})");
}
