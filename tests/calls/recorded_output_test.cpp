// These tests have outputs that are missing, that are too small, or that a record must not read.
#include "records/ssl3_structures.h"
#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

using RecordedOutput = RecordedCall;

TEST_F(RecordedOutput, LengthQueryOfEncrypt_EndRecordShowsTheLength) {
    MemoryAtFixedAddress memory;
    CK_ULONG& length = memory.At<CK_ULONG>(0x12345678);

    auto input = Bytes("plain text");
    Before([&] { length = 0; });
    Answer([&] { length = 48; });
    Call(api.C_Encrypt, 0x51, input.data(), input.size(), nullptr, &length);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt {Sesn=81 "plain text" pusEncryptedDataLen=0x12345678 *pusEncryptedDataLen=0 }
10:15:30 <id>:FINIEncrypt <rv>12345clks {"<null>" pusEncryptedDataLen=0x12345678 *pusEncryptedDataLen=48 })");
    OldLog(R"(
Command(Encrypt, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain text");
   ULong(0x12345678);
   ULong(0);
}
Command(Encrypt, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"<null>");
   ULong(0x12345678);
   ULong(48);
})");
}

TEST_F(RecordedOutput, BufferOfEncryptIsTooSmall_EndRecordShowsBufferAndLength) {
    Results({{CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"}});
    MemoryAtFixedAddress memory;
    CK_ULONG& length = memory.At<CK_ULONG>(0x12345678);

    auto input = Bytes("plain text");
    MemoryBeforeAGap end;
    CK_BYTE_PTR const output = end.Last(Bytes("full"));
    Before([&] { length = 4; });
    Answer([&] { length = 48; });
    Call(api.C_Encrypt, 0x51, input.data(), input.size(), output, &length);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt {Sesn=81 "plain text" pusEncryptedDataLen=0x12345678 *pusEncryptedDataLen=4 }
10:15:30 <id>:FINIEncrypt <rv>12345clks {"full" pusEncryptedDataLen=0x12345678 *pusEncryptedDataLen=48 })");
    OldLog(R"(
Command(Encrypt, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain text");
   ULong(0x12345678);
   ULong(4);
}
Command(Encrypt, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"full");
   ULong(0x12345678);
   ULong(48);
})");
}

TEST_F(RecordedOutput, LengthQueryOfEncryptUpdate_EndRecordShowsTheLength) {
    MemoryAtFixedAddress memory;
    CK_ULONG& length = memory.At<CK_ULONG>(0x12345678);

    auto input = Bytes("plain part");
    Before([&] { length = 0; });
    Answer([&] { length = 48; });
    Call(api.C_EncryptUpdate, 0x51, input.data(), input.size(), nullptr, &length);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Update {Sesn=81 "plain part" pusEncryptedPartLen0x12345678 *pusEncryptedPartLen0 }
10:15:30 <id>:FINIEncrypt_Update <rv>12345clks {pusEncryptedPartLen0x12345678 *pusEncryptedPartLen48 })");
    OldLog(R"(
Command(Encrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x12345678);
   ULong(0);
}
Command(Encrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x12345678);
   ULong(48);
})");
}

TEST_F(RecordedOutput, BufferOfEncryptUpdateIsTooSmall_EndRecordShowsOnlyTheLength) {
    Results({{CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"}});
    MemoryAtFixedAddress memory;
    CK_ULONG& length = memory.At<CK_ULONG>(0x12345678);

    auto input = Bytes("plain part");
    std::vector<CK_BYTE> output(4);
    Before([&] { length = output.size(); });
    Answer([&] { length = 48; });
    Call(api.C_EncryptUpdate, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Update {Sesn=81 "plain part" pusEncryptedPartLen0x12345678 *pusEncryptedPartLen4 }
10:15:30 <id>:FINIEncrypt_Update <rv>12345clks {pusEncryptedPartLen0x12345678 *pusEncryptedPartLen48 })");
    OldLog(R"(
Command(Encrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x12345678);
   ULong(4);
}
Command(Encrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x12345678);
   ULong(48);
})");
}

TEST_F(RecordedOutput, LengthQueryOfDigestEncryptUpdate_EndRecordShowsTheLength) {
    auto part = Bytes("plain part");
    CK_ULONG length = 0;
    Before([&] { length = 7; });
    Answer([&] { length = 48; });
    Call(api.C_DigestEncryptUpdate, 0x51, part.data(), part.size(), nullptr, &length);
    NewLog(R"(

10:15:30 <id>:STRTDigestEncrypt_Update {Sesn=81 "plain part" 7 }
10:15:30 <id>:FINIDigestEncrypt_Update <rv>12345clks {48 })");
    OldLog(R"(
Command(DigestEncrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x7);
}
Command(DigestEncrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x30);
})");
}

TEST_F(RecordedOutput, BufferOfDigestEncryptUpdateIsTooSmall_EndRecordShowsOnlyTheLength) {
    Results({{CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"}});

    auto part = Bytes("plain part");
    std::vector<CK_BYTE> output(4);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { length = 48; });
    Call(api.C_DigestEncryptUpdate, 0x51, part.data(), part.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTDigestEncrypt_Update {Sesn=81 "plain part" 4 }
10:15:30 <id>:FINIDigestEncrypt_Update <rv>12345clks {48 })");
    OldLog(R"(
Command(DigestEncrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x4);
}
Command(DigestEncrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x30);
})");
}

TEST_F(RecordedOutput, LengthQueryOfSignEncryptUpdate_EndRecordShowsTheLength) {
    auto part = Bytes("plain part");
    CK_ULONG length = 0;
    Before([&] { length = 7; });
    Answer([&] { length = 48; });
    Call(api.C_SignEncryptUpdate, 0x51, part.data(), part.size(), nullptr, &length);
    NewLog(R"(

10:15:30 <id>:STRTSignEncrypt_Update {Sesn=81 "plain part" 7 }
10:15:30 <id>:FINISignEncrypt_Update <rv>12345clks {48 })");
    OldLog(R"(
Command(SignEncrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x7);
}
Command(SignEncrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x30);
})");
}

TEST_F(RecordedOutput, BufferOfSignEncryptUpdateIsTooSmall_EndRecordShowsOnlyTheLength) {
    Results({{CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"}});

    auto part = Bytes("plain part");
    std::vector<CK_BYTE> output(4);
    CK_ULONG length = 0;
    Before([&] { length = output.size(); });
    Answer([&] { length = 48; });
    Call(api.C_SignEncryptUpdate, 0x51, part.data(), part.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTSignEncrypt_Update {Sesn=81 "plain part" 4 }
10:15:30 <id>:FINISignEncrypt_Update <rv>12345clks {48 })");
    OldLog(R"(
Command(SignEncrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"plain part");
   ULong(0x4);
}
Command(SignEncrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x30);
})");
}

TEST_F(RecordedOutput, LengthQueryOfSign_EndRecordShowsNoBytes) {
    auto input = Bytes("to be signed");
    CK_ULONG length = 0;
    Answer([&] { length = 256; });
    Call(api.C_Sign, 0x51, input.data(), input.size(), nullptr, &length);
    NewLog(R"(

10:15:30 <id>:STRTSign {Sesn=81 "to be signed" }
10:15:30 <id>:FINISign <rv>12345clks {"<null>" })");
    OldLog(R"(
Command(Sign, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"to be signed");
}
Command(Sign, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"<null>");
})");
}

TEST_F(RecordedOutput, LengthQueryOfWrapKey_EndRecordShowsTheLength) {
    CK_MECHANISM mechanism = {CKM_AES_ECB, nullptr, 0};
    CK_ULONG length = 0;
    Answer([&] { length = 40; });
    Call(api.C_WrapKey, 0x51, &mechanism, 0x62, 0x63, nullptr, &length);
    NewLog(R"(

10:15:30 <id>:STRTWrapKey {Sesn=81 Mech=(CKM_AES_ECB,"<null>") Obj=98 Obj=99 }
10:15:30 <id>:FINIWrapKey <rv>12345clks {"<null>" 40 })");
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
   ByteString(SimpleText"<null>");
   UShort(0x28);
})");
}

TEST_F(RecordedOutput, CountQueryOfSlots_EndRecordShowsNoSlot) {
    CK_ULONG count = 0;
    Answer([&] { count = 2; });
    Call(api.C_GetSlotList, CK_FALSE, nullptr, &count);
    NewLog(R"(

10:15:30 <id>:STRTGetSlotList {tknPresent=false }
10:15:30 <id>:FINIGetSlotList <rv>12345clks {SlotLst={} })");
    OldLog(R"(
Command(GetSlotList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ByteBooleanfalse;
}
Command(GetSlotList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotIDList
   {
   };
})");
}

TEST_F(RecordedOutput, CountQueryOfMechanisms_EndRecordShowsNoMechanism) {
    CK_ULONG count = 0;
    Answer([&] { count = 2; });
    Call(api.C_GetMechanismList, 0x7, nullptr, &count);
    NewLog(R"(

10:15:30 <id>:STRTGetMechanismList {Slot=7 }
10:15:30 <id>:FINIGetMechanismList <rv>12345clks {MechTypeLst={} })");
    OldLog(R"(
Command(GetMechanismList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
}
Command(GetMechanismList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   MechTypeList
   {
   };
})");
}

TEST_F(RecordedOutput, SearchFindsNothing_EndRecordShowsAnEmptyList) {
    CK_OBJECT_HANDLE object = 0x62;
    CK_ULONG count = 0;
    Before([&] { count = 5; });
    Answer([&] { count = 0; });
    Call(api.C_FindObjects, 0x51, &object, 1, &count);
    NewLog(R"(

10:15:30 <id>:STRTFindObjects {Sesn=81 1 }
10:15:30 <id>:FINIFindObjects <rv>12345clks {ObjHndLst={} 0 })");
    OldLog(R"(
Command(FindObjects, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UShort(0x1);
}
Command(FindObjects, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandleList
   {
   };
   UShort(0x0);
})");
}

TEST_F(RecordedOutput, FirstAttributeIsUnavailable_EndRecordShowsNoAttribute) {
    std::vector<CK_BYTE> label(16);
    CK_ATTRIBUTE attributes[2];
    Before([&] {
        attributes[0] = {CKA_PRIVATE_EXPONENT, nullptr, 0};
        attributes[1] = {CKA_LABEL, label.data(), label.size()};
    });
    Answer([&] {
        attributes[0].ulValueLen = CK_UNAVAILABLE_INFORMATION;
        Put(Bytes("my key"), label, attributes[1].ulValueLen);
    });
    Call(api.C_GetAttributeValue, 0x51, 0x62, attributes, 2);
    NewLog(R"(

10:15:30 <id>:STRTGetAttributeValue {Sesn=81 Obj=98 AttrList={CKA_PRIVATE_EXPONENT CKA_LABEL } }
10:15:30 <id>:FINIGetAttributeValue <rv>12345clks {})");
    OldLog(R"(
Command(GetAttributeValue, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
   AttributeList
   {
      Attribute(CKA_PRIVATE_EXPONENT);
      Attribute(CKA_LABEL);
   };
}
Command(GetAttributeValue, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedOutput, LengthQueryOfAttributes_EndRecordShowsNoValue) {
    CK_ATTRIBUTE attributes[1];
    Before([&] { attributes[0] = {CKA_LABEL, nullptr, 0}; });
    Answer([&] { attributes[0].ulValueLen = 6; });
    Call(api.C_GetAttributeValue, 0x51, 0x62, attributes, 1);
    NewLog(R"(

10:15:30 <id>:STRTGetAttributeValue {Sesn=81 Obj=98 AttrList={CKA_LABEL } }
10:15:30 <id>:FINIGetAttributeValue <rv>12345clks {AttrList={CKA_LABEL="<null>" } })");
    OldLog(R"(
Command(GetAttributeValue, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
   AttributeList
   {
      Attribute(CKA_LABEL);
   };
}
Command(GetAttributeValue, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"<null>"));
   };
})");
}

TEST_F(RecordedOutput, TemplateIsNull_EndRecordShowsNoTemplate) {
    Call(api.C_GetAttributeValue, 0x51, 0x62, nullptr, 0);
    NewLog(R"(

10:15:30 <id>:STRTGetAttributeValue {Sesn=81 Obj=98 AttrList={} }
10:15:30 <id>:FINIGetAttributeValue <rv>12345clks {})");
    OldLog(R"(
Command(GetAttributeValue, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
   AttributeList
   {
   };
}
Command(GetAttributeValue, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedOutput, AddressOfTokenInfoIsNull_EndRecordShowsOnlyTheAddress) {
    Call(api.C_GetTokenInfo, 0x7, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGetTokenInfo {Slot=7 Ptr=0x0 }
10:15:30 <id>:FINIGetTokenInfo <rv>12345clks {Ptr=0x0 })");
    OldLog(R"(
Command(GetTokenInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
}
Command(GetTokenInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   Pointer(0x0);
})");
}

TEST_F(RecordedOutput, WaitForASlot_EndRecordShowsTheAddressOfTheSlot) {
    // The record does not read what `slot` points to.
    const auto slot = reinterpret_cast<CK_SLOT_ID_PTR>(0x123456789ABC);
    Call(api.C_WaitForSlotEvent, 0, slot, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTWaitForSlotEvent {Flgs=0 }
10:15:30 <id>:FINIWaitForSlotEvent <rv>12345clks {Slot=20015998343868 })");
    OldLog(R"(
Command(WaitForSlotEvent, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   Flags(0x0);
}
Command(WaitForSlotEvent, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x56789abc);
})");
}

TEST_F(RecordedOutput, KeysOfAConnectionAreDerived_EndRecordShowsTheirHandles) {
    ckscribe::CK_SSL3_KEY_MAT_OUT keys = {};
    ckscribe::CK_SSL3_KEY_MAT_PARAMS parameter = {};
    parameter.pReturnedKeyMaterial = &keys;
    CK_MECHANISM mechanism = {CKM_SSL3_KEY_AND_MAC_DERIVE, &parameter, 0};
    CK_OBJECT_HANDLE key = 0;
    Answer([&] {
        key = 0x63;
        keys.hClientMacSecret = 0x64;
        keys.hServerMacSecret = 0x65;
        keys.hClientKey = 0x66;
        keys.hServerKey = 0x67;
    });
    Call(api.C_DeriveKey, 0x51, &mechanism, 0x62, nullptr, 0, &key);
    NewLog(R"(

10:15:30 <id>:STRTDeriveKey {Sesn=81 Mech=(CKM_SSL3_KEY_AND_MAC_DERIVE,"<null>") Obj=98 AttrList={} }
10:15:30 <id>:FINIDeriveKey <rv>12345clks {Obj=99 Obj=100 Obj=101 Obj=102 Obj=103 })");
    OldLog(R"(
Command(DeriveKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_SSL3_KEY_AND_MAC_DERIVE,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
   AttributeList
   {
   };
}
Command(DeriveKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x63);
   ObjectHandle(0x64);
   ObjectHandle(0x65);
   ObjectHandle(0x66);
   ObjectHandle(0x67);
})");
}
