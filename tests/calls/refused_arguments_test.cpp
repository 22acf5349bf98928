// PKCS#11 forbids these arguments, and a target refuses them. The application gets the target's answer, and
// the records show what can be read.
#include "tests/calls/call_data.h"
#include "tests/calls/every_function.h"
#include "tests/calls/recorded_call.h"

using RefusedArguments = RecordedCall;

TEST_F(RefusedArguments, NoPlaceForASession_RecordShowsHandle0) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    Call(api.C_OpenSession, 0x7, CKF_SERIAL_SESSION, nullptr, nullptr, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTOpenSession {Slot=7 Flgs=4 }
10:15:30 <id>:FINIOpenSession <rv>12345clks {Sesn=0 })");
    OldLog(R"(
Command(OpenSession, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Flags(0x4);
}
Command(OpenSession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x0);
})");
}

TEST_F(RefusedArguments, NoPlaceForAnObject_RecordShowsHandle0) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    Call(api.C_CreateObject, 0x51, nullptr, 3, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTCreateObject {Sesn=81 AttrList={} }
10:15:30 <id>:FINICreateObject <rv>12345clks {Obj=0 })");
    OldLog(R"(
Command(CreateObject, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   AttributeList
   {
   };
}
Command(CreateObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x0);
})");
}

TEST_F(RefusedArguments, NoPlacesForAKeyPair_RecordShowsHandle0Twice) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    Call(api.C_GenerateKeyPair, 0x51, nullptr, nullptr, 1, nullptr, 2, nullptr, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGenerateKeyPair {Sesn=81 Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,"<null>") AttrList={} AttrList={} }
10:15:30 <id>:FINIGenerateKeyPair <rv>12345clks {Obj=0 Obj=0 })");
    OldLog(R"(
Command(GenerateKeyPair, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_PKCS_KEY_PAIR_GEN,Value(SimpleText"<null>"));
   AttributeList
   {
   };
   AttributeList
   {
   };
}
Command(GenerateKeyPair, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x0);
   ObjectHandle(0x0);
})");
}

TEST_F(RefusedArguments, NoPlaceForASize_RecordShows0) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    Call(api.C_GetObjectSize, 0x51, 0x62, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGetObjectSize {Sesn=81 Obj=98 }
10:15:30 <id>:FINIGetObjectSize <rv>12345clks {0 })");
    OldLog(R"(
Command(GetObjectSize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
}
Command(GetObjectSize, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   UShort(0x0);
})");
}

TEST_F(RefusedArguments, NoPlaceForTheCountOfSlots_RecordShowsNoSlot) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    CK_SLOT_ID slots[1] = {0x11};
    Call(api.C_GetSlotList, CK_TRUE, slots, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGetSlotList {tknPresent=true }
10:15:30 <id>:FINIGetSlotList <rv>12345clks {SlotLst={} })");
    OldLog(R"(
Command(GetSlotList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ByteBooleantrue;
}
Command(GetSlotList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotIDList
   {
   };
})");
}

TEST_F(RefusedArguments, NoPlaceForTheCountOfObjects_RecordShowsNoObject) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    CK_OBJECT_HANDLE objects[1] = {0x62};
    Call(api.C_FindObjects, 0x51, objects, 1, nullptr);
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

TEST_F(RefusedArguments, NoPlaceForTheLengthOfASignature_RecordShowsNoBytes) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    auto input = Bytes("to be signed");
    std::vector<CK_BYTE> output(4);
    Call(api.C_Sign, 0x51, input.data(), input.size(), output.data(), nullptr);
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

TEST_F(RefusedArguments, NoPlaceForTheLengthOfCipherText_RecordShowsNoBytes) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    std::vector<CK_BYTE> output(4);
    Call(api.C_Encrypt, 0x51, nullptr, 5, output.data(), nullptr);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt {Sesn=81 "<null>" pusEncryptedDataLen=0x0 *pusEncryptedDataLen=0 }
10:15:30 <id>:FINIEncrypt <rv>12345clks {"<null>" pusEncryptedDataLen=0x0 *pusEncryptedDataLen=0 })");
    OldLog(R"(
Command(Encrypt, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"<null>");
   ULong(0x0);
   ULong(0);
}
Command(Encrypt, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"<null>");
   ULong(0x0);
   ULong(0);
})");
}

TEST_F(RefusedArguments, NoPlaceForTheLengthOfAPartOfCipherText_RecordShowsNoBytes) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    Call(api.C_EncryptUpdate, 0x51, nullptr, 5, nullptr, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Update {Sesn=81 "<null>" pusEncryptedPartLen0x0 *pusEncryptedPartLen0 }
10:15:30 <id>:FINIEncrypt_Update <rv>12345clks {pusEncryptedPartLen0x0 *pusEncryptedPartLen0 })");
    OldLog(R"(
Command(Encrypt, Update, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"<null>");
   ULong(0x0);
   ULong(0);
}
Command(Encrypt, Update, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x0);
   ULong(0);
})");
}

TEST_F(RefusedArguments, NoPlaceForTheLengthOfAWrappedKey_RecordShowsNoBytes) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    Call(api.C_WrapKey, 0x51, nullptr, 0x62, 0x63, nullptr, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTWrapKey {Sesn=81 Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,"<null>") Obj=98 Obj=99 }
10:15:30 <id>:FINIWrapKey <rv>12345clks {"<null>" 0 })");
    OldLog(R"(
Command(WrapKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_PKCS_KEY_PAIR_GEN,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
   ObjectHandle(0x63);
}
Command(WrapKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"<null>");
   UShort(0x0);
})");
}

TEST_F(RefusedArguments, NoPlaceForInfo_RecordShowsAnEmptyStructure) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});
    Call(api.C_GetInfo, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGetInfo {}
10:15:30 <id>:FINIGetInfo <rv>12345clks {Info={} })");
    OldLog(R"(
Command(GetInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(GetInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   Info
   {
   };
})");
}

TEST_F(RefusedArguments, NoPlaceForSlotInfo_RecordShowsAnEmptyStructure) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});
    Call(api.C_GetSlotInfo, 0x7, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGetSlotInfo {Slot=7 }
10:15:30 <id>:FINIGetSlotInfo <rv>12345clks {SlotInfo={} })");
    OldLog(R"(
Command(GetSlotInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
}
Command(GetSlotInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotInfo
   {
   };
})");
}

TEST_F(RefusedArguments, NoPlaceForSessionInfo_RecordShowsZeros) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});
    Call(api.C_GetSessionInfo, 0x51, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGetSessionInfo {Sesn=81 }
10:15:30 <id>:FINIGetSessionInfo <rv>12345clks {SesInfo=(0,0,0x0,0x0) })");
    OldLog(R"(
Command(GetSessionInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(GetSessionInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionInfo(0x0,0x0,0x0,0x0);
})");
}

TEST_F(RefusedArguments, NoPlaceForMechanismInfo_RecordShowsZeros) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});
    Call(api.C_GetMechanismInfo, 0x7, 0x80000999, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTGetMechanismInfo {Slot=7 -2147481191 }
10:15:30 <id>:FINIGetMechanismInfo <rv>12345clks {MechInfo=(0,0,0x0) })");
    OldLog(R"(
Command(GetMechanismInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   MechanismType(0x80000999);
}
Command(GetMechanismInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   MechanismInfo(0,0,0x0);
})");
}

TEST_F(RefusedArguments, PlaceIsTooShortForInfo_RecordShowsAnEmptyStructure) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    Call(api.C_GetInfo, reinterpret_cast<CK_INFO_PTR>(memory.Last(Bytes("too short"))));
    NewLog(R"(

10:15:30 <id>:STRTGetInfo {}
10:15:30 <id>:FINIGetInfo <rv>12345clks {Info={} })");
    OldLog(R"(
Command(GetInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(GetInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   Info
   {
   };
})");
}

TEST_F(RefusedArguments, CountOfSlotsIsNotSet_RecordShowsWhatCanBeRead) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    CK_SLOT_ID_PTR const slots = memory.Last(std::vector<CK_SLOT_ID>{0x11, 0x22});
    CK_ULONG count = ~CK_ULONG{0};
    Call(api.C_GetSlotList, CK_TRUE, slots, &count);
    NewLog(R"(

10:15:30 <id>:STRTGetSlotList {tknPresent=true }
10:15:30 <id>:FINIGetSlotList <rv>12345clks {SlotLst={Slot=17 Slot=34 } })");
    OldLog(R"(
Command(GetSlotList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ByteBooleantrue;
}
Command(GetSlotList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotIDList
   {
      SlotID(0x11);
      SlotID(0x22);
   };
})");
}

TEST_F(RefusedArguments, CountOfMechanismsIsNotSet_RecordShowsWhatCanBeRead) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    CK_MECHANISM_TYPE_PTR const mechanisms = memory.Last(std::vector<CK_MECHANISM_TYPE>{1, 3});
    CK_ULONG count = 1000;
    Call(api.C_GetMechanismList, 0x7, mechanisms, &count);
    NewLog(R"(

10:15:30 <id>:STRTGetMechanismList {Slot=7 }
10:15:30 <id>:FINIGetMechanismList <rv>12345clks {MechTypeLst={1 3 } })");
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
      MechanismType(0x1);
      MechanismType(0x3);
   };
})");
}

TEST_F(RefusedArguments, CountOfObjectsIsNotSet_RecordShowsWhatCanBeRead) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    CK_OBJECT_HANDLE_PTR const objects = memory.Last(std::vector<CK_OBJECT_HANDLE>{0x62, 0x63});
    CK_ULONG count = ~CK_ULONG{0};
    Call(api.C_FindObjects, 0x51, objects, 2, &count);
    NewLog(R"(

10:15:30 <id>:STRTFindObjects {Sesn=81 2 }
10:15:30 <id>:FINIFindObjects <rv>12345clks {ObjHndLst={Obj=98 Obj=99 } -1 })");
    OldLog(R"(
Command(FindObjects, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UShort(0x2);
}
Command(FindObjects, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandleList
   {
      ObjectHandle(0x62);
      ObjectHandle(0x63);
   };
   UShort(0xffffffff);
})");
}

TEST_F(RefusedArguments, CountOfObjectsIsNotSet_RecordShowsNoMoreThanTheArrayHolds) {
    Results({{CKR_OPERATION_NOT_INITIALIZED, "CKR_OPERATION_NOT_INITIALIZED"}, {CKR_OK, "CKR_OK"}});

    CK_OBJECT_HANDLE objects[] = {0x62, 0x63, 0x64, 0x65};  // the last two are the application's own
    CK_ULONG count = ~CK_ULONG{0};
    Call(api.C_FindObjects, 0x51, objects, 2, &count);
    NewLog(R"(

10:15:30 <id>:STRTFindObjects {Sesn=81 2 }
10:15:30 <id>:FINIFindObjects <rv>12345clks {ObjHndLst={Obj=98 Obj=99 } -1 })");
    OldLog(R"(
Command(FindObjects, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UShort(0x2);
}
Command(FindObjects, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandleList
   {
      ObjectHandle(0x62);
      ObjectHandle(0x63);
   };
   UShort(0xffffffff);
})");
}

TEST_F(RefusedArguments, LengthsAreTooLarge_RecordShowsWhatCanBeRead) {
    Results({{CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"}});

    MemoryBeforeAGap memory;
    MemoryBeforeAGap otherMemory;
    CK_BYTE_PTR const input = memory.Last(Bytes("to be signed"));
    CK_BYTE_PTR const output = otherMemory.Last(Bytes("\xA1\xA2\xA3"));
    CK_ULONG length = 0;
    Before([&] { length = 3; });
    Answer([&] { length = 100000; });
    Call(api.C_Sign, 0x51, input, 100000, output, &length);
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
}

TEST_F(RefusedArguments, LengthIsUnavailable_RecordShowsSixteenF) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    auto input = Bytes("to be signed");
    auto output = Bytes("not signed");
    CK_ULONG length = CK_UNAVAILABLE_INFORMATION;
    Call(api.C_Sign, 0x51, input.data(), input.size(), output.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTSign {Sesn=81 "to be signed" }
10:15:30 <id>:FINISign <rv>12345clks {"ffffffffffffffff" })");
    OldLog(R"(
Command(Sign, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"to be signed");
}
Command(Sign, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"ffffffffffffffff");
})");
}

TEST_F(RefusedArguments, BufferCannotBeRead_RecordShowsNoBytes) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    const auto buffer = static_cast<CK_BYTE_PTR>(memory.Gap());
    CK_ULONG length = 10;
    Call(api.C_Digest, 0x51, buffer, 20, buffer, &length);
    NewLog(R"(

10:15:30 <id>:STRTDigest {Sesn=81 "<null>" }
10:15:30 <id>:FINIDigest <rv>12345clks {"<null>" })");
    OldLog(R"(
Command(Digest, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"<null>");
}
Command(Digest, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"<null>");
})");
}

TEST_F(RefusedArguments, LengthCannotBeRead_RecordShowsNoBytes) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    auto input = Bytes("to be digested");
    std::vector<CK_BYTE> output(4);
    Call(api.C_Digest, 0x51, input.data(), input.size(), output.data(),
         static_cast<CK_ULONG_PTR>(memory.Gap()));
    NewLog(R"(

10:15:30 <id>:STRTDigest {Sesn=81 "to be digested" }
10:15:30 <id>:FINIDigest <rv>12345clks {"<null>" })");
    OldLog(R"(
Command(Digest, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"to be digested");
}
Command(Digest, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"<null>");
})");
}

TEST_F(RefusedArguments, TemplateIsShorterThanItsCount_RecordShowsWhatCanBeRead) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    MemoryBeforeAGap otherMemory;
    CK_BYTE_PTR const label = otherMemory.Last(Bytes("my object"));
    CK_ATTRIBUTE_PTR const attributes = memory.Last(std::vector<CK_ATTRIBUTE>{
        {CKA_LABEL, label, 100000},
        {CKA_ID, otherMemory.Gap(), 3},
    });
    CK_OBJECT_HANDLE object = 0x62;
    Call(api.C_CreateObject, 0x51, attributes, ~CK_ULONG{0}, &object);
    NewLog(R"(

10:15:30 <id>:STRTCreateObject {Sesn=81 AttrList={CKA_LABEL="my object" CKA_ID="<null>" } }
10:15:30 <id>:FINICreateObject <rv>12345clks {Obj=98 })");
    OldLog(R"(
Command(CreateObject, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"my object"));
      Attribute(CKA_ID,Value(SimpleText"<null>"));
   };
}
Command(CreateObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x62);
})");
}

TEST_F(RefusedArguments, ParameterIsShorterThanItsLength_RecordShowsWhatCanBeRead) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    CK_MECHANISM mechanism = {CKM_AES_CBC, memory.Last(Bytes("\xF1\xF2")), 16};
    Call(api.C_EncryptInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Init {Sesn=81 Mech=(CKM_AES_CBC,"f1f2") Obj=98 }
10:15:30 <id>:FINIEncrypt_Init <rv>12345clks {})");
    OldLog(R"(
Command(Encrypt, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_AES_CBC,Value(Numeric"f1f2"));
   ObjectHandle(0x62);
}
Command(Encrypt, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RefusedArguments, MechanismCannotBeRead_RecordShowsType0) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    Call(api.C_SignInit, 0x51, static_cast<CK_MECHANISM_PTR>(memory.Gap()), 0x62);
    NewLog(R"(

10:15:30 <id>:STRTSign_Init {Sesn=81 Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,"<null>") Obj=98 }
10:15:30 <id>:FINISign_Init <rv>12345clks {})");
    OldLog(R"(
Command(Sign, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_PKCS_KEY_PAIR_GEN,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
}
Command(Sign, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RefusedArguments, LabelIsTooShort_RecordShowsWhatCanBeRead) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    MemoryBeforeAGap memory;
    Call(api.C_InitToken, 0x7, nullptr, 0, memory.Last(Bytes("short label")));
    NewLog(R"(

10:15:30 <id>:STRTInitToken {Slot=7 PIN="<null>" label="short label" }
10:15:30 <id>:FINIInitToken <rv>12345clks {})");
    OldLog(R"(
Command(InitToken, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ByteString(SimpleText"<null>");
   ByteString(SimpleText"short label");
}
Command(InitToken, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RefusedArguments, NoParameterForTheKeysOfAConnection_RecordShowsHandles0) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    CK_MECHANISM mechanism = {CKM_SSL3_KEY_AND_MAC_DERIVE, nullptr, 0};
    CK_OBJECT_HANDLE key = 0x63;
    Call(api.C_DeriveKey, 0x51, &mechanism, 0x62, nullptr, 0, &key);
    NewLog(R"(

10:15:30 <id>:STRTDeriveKey {Sesn=81 Mech=(CKM_SSL3_KEY_AND_MAC_DERIVE,"<null>") Obj=98 AttrList={} }
10:15:30 <id>:FINIDeriveKey <rv>12345clks {Obj=99 Obj=0 Obj=0 Obj=0 Obj=0 })");
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
   ObjectHandle(0x0);
   ObjectHandle(0x0);
   ObjectHandle(0x0);
   ObjectHandle(0x0);
})");
}

TEST_F(RefusedArguments, NoPlaceForADerivedKey_RecordShowsHandle0) {
    Results({{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"}});

    Call(api.C_DeriveKey, 0x51, nullptr, 0x62, nullptr, 0, nullptr);
    NewLog(R"(

10:15:30 <id>:STRTDeriveKey {Sesn=81 Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,"<null>") Obj=98 AttrList={} }
10:15:30 <id>:FINIDeriveKey <rv>12345clks {Obj=0 })");
    OldLog(R"(
Command(DeriveKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   MechanismCKM_RSA_PKCS_KEY_PAIR_GEN,Value(SimpleText"<null>"));
   ObjectHandle(0x62);
   AttributeList
   {
   };
}
Command(DeriveKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x0);
})");
}

namespace {

class RefusedWords : public EveryFunction {
protected:
    // Calls every function with this word for each of its arguments. Expects that the result comes back and
    // that there are two records.
    void ExpectTwoRecords(TargetWord word) {
        script.result = CKR_ARGUMENTS_BAD;
        for (const char* format : {"0", "1"}) {
            Set("NewFormat", format);
            Restart();
            for (const Names& functions :
                 {Without(kStandardFunctions, {"C_GetFunctionList", "C_GetFunctionStatus"}),
                  Without(kVendorFunctions, {"CA_GetFunctionList"})}) {
                for (const std::string& function : functions) {
                    SCOPED_TRACE(function);
                    const std::size_t before = LogSize();
                    EXPECT_EQ(CKR_ARGUMENTS_BAD, CallWith(function, word));
                    const std::string log = LogSince(before);
                    EXPECT_EQ(1, Count(log, *format == '1' ? ":STRT" : ", Start) PID:"));
                    EXPECT_EQ(1, Count(log, "CKR_ARGUMENTS_BAD"));
                    EXPECT_EQ('}', log.empty() ? '\0' : log.back());
                }
            }
        }
    }

    static int Count(const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
        return count;
    }

    MemoryBeforeAGap memory;
};

}  // namespace

TEST_F(RefusedWords, EveryWordIsZero_CallReturnsAndIsLogged) { ExpectTwoRecords(0); }

TEST_F(RefusedWords, EveryWordIsAllOnes_CallReturnsAndIsLogged) { ExpectTwoRecords(~TargetWord{0}); }

TEST_F(RefusedWords, EveryWordIsASmallNumber_CallReturnsAndIsLogged) { ExpectTwoRecords(1); }

TEST_F(RefusedWords, EveryWordIsAnUnreadableAddress_CallReturnsAndIsLogged) {
    ExpectTwoRecords(reinterpret_cast<TargetWord>(memory.Gap()));
}

TEST_F(RefusedWords, EveryWordIsNoAddress_CallReturnsAndIsLogged) { ExpectTwoRecords(0x8000000000000000); }

TEST_F(RefusedWords, EveryWordIsTheAddressOfTheLastByte_CallReturnsAndIsLogged) {
    ExpectTwoRecords(reinterpret_cast<TargetWord>(memory.Last(Bytes("x"))));
}

TEST_F(RefusedWords, EveryWordIsTheAddressOfOnesAtTheEndOfMemory_CallReturnsAndIsLogged) {
    const std::vector<TargetWord> ones(200, ~TargetWord{0});
    ExpectTwoRecords(reinterpret_cast<TargetWord>(memory.Last(ones)));
}
